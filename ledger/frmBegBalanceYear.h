#pragma once
// frmBegBalanceYear: the opening balances of a year, all accounts in one grid.

#include "ledger/BalanceEntryForm.h"

namespace kv {

class frmBegBalanceYear : public BalanceEntryForm {
public:
    explicit frmBegBalanceYear(Session& session);

    TextBox txtYear{*this, "txtYear"};
    CommandButton cmdOption3{*this, "cmdOption3", "&Account...", "document-edit"};

protected:
    void Form_Load() override;
    void LoadAccountDetails() override;
    void SaveRoutine() override;
    bool mayBeSaved() override;
    std::string titleOf(const std::string& code, const std::string& title) const override;

private:
    void txtYear_Validate(bool& Cancel);
    void cmdOption3_Click();
    void ShowPosted();

    std::string year_;
};

}  // namespace kv
