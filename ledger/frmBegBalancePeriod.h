#pragma once
// frmBegBalancePeriod: the figures of a book and month from before this system began, by account and department.

#include "ledger/BalanceEntryForm.h"

namespace kv {

class frmBegBalancePeriod : public BalanceEntryForm {
public:
    explicit frmBegBalancePeriod(Session& session);

    DatePicker dtpPeriod{*this, "dtpPeriod", "MMMM yyyy"};
    TextBox txtBook{*this, "txtBook"};
    CommandButton cmdOption3{*this, "cmdOption3", "&Export", "document-export"};

protected:
    void Form_Load() override;
    void LoadAccountDetails() override;
    void SaveRoutine() override;
    bool mayBeSaved() override;
    std::string titleOf(const std::string& code, const std::string& title) const override;

private:
    std::string GetPeriod() const;
    void dtpPeriod_Validate(bool& Cancel);
    void txtBook_Validate(bool& Cancel);
    bool mayEdit();
    bool bookIsRight();
    /// Loads what was chosen, unless it is there already; asks first where lines would be lost.
    void LoadChosen();
    void cmdOption3_Click();

    std::string period_, book_;
};

}  // namespace kv
