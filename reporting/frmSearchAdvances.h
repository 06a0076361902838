#pragma once
// frmSearchAdvances: advances to a vendor, of which some are marked to be applied, whole or in part.

#include <optional>
#include <string>
#include <vector>

#include "platform/base/Money.h"
#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

/// An advance, and how much of it is applied; nothing while it is not marked.
struct Advance {
    std::string CVNo, DisplayCVNo;
    std::optional<Date> CVDate;
    Money Amount, Balance, Applied;
    std::string Account, Particulars;
    bool earlier = false;  ///< was applied by the voucher before the dialog was opened

    bool marked() const { return Applied != Money(); }
    Money newBalance() const { return Balance - Applied; }
};
/// Marking applies the whole balance.
void markAdvance(Advance& advance, bool marked);
/// Applies the amount typed, none of it being no mark. What is wrong with it; empty when it was taken.
std::string changeAdvance(Advance& advance, std::string_view amount);

class frmSearchAdvances : public Form {
public:
    explicit frmSearchAdvances(Session& session);

    /// Shows what the vendor holds; a voucher that is edited brings what it had applied. True when it was confirmed:
    /// the advances marked are in `Applied`.
    bool ShowDialog(std::string_view VendorID, std::string_view Voucher, std::vector<Advance>& Applied);

    ListView grdAdvances{*this, "grdAdvances"};
    CommandButton cmdChangeAmount{*this, "cmdChangeAmount", "Change &Amount..."};
    Label lblTotal{*this, "lblTotal"};
    CommandButton cmdSelect{*this, "cmdSelect", "&Select"};
    CommandButton cmdCancel{*this, "cmdCancel", "&Cancel"};

private:
    void LoadAdvancesToApply(std::string_view VendorID, std::string_view Voucher);
    void cmdChangeAmount_Click();
    Advance& at(int row);
    void showRow(int row);
    void showTotal();

    Session& session_;
    std::vector<Advance> advances_;
    bool confirmed_ = false;
};

}  // namespace kv
