#pragma once
// frmBegBalance: one account's beginning balance of a year, and its figures by book and month.

#include "ledger/Balances.h"
#include "platform/forms/Form.h"
#include "reporting/ctlGrid.h"

namespace kv {

class Session;

class frmBegBalance : public Form {
public:
    explicit frmBegBalance(Session& session);

    /// Shows this account of this year when the screen appears.
    void Edit(std::string_view Year, std::string_view Acct);

    TextBox txtYear{*this, "txtYear"};
    TextBox txtAcct{*this, "txtAcct"};
    CommandButton cmdAcct{*this, "cmdAcct", "..."};
    TextBox txtAcctName{*this, "txtAcctName"};
    TextBox txtBegDR{*this, "txtBegDR"};
    TextBox txtBegCr{*this, "txtBegCr"};
    TextBox txtTotDebit{*this, "txtTotDebit"};
    TextBox txtTotCredit{*this, "txtTotCredit"};
    ctlGrid grdAccounts{*this, "grdAccounts"};
    CommandButton cmdSave{*this, "cmdSave", "&Save", "document-save"};
    CommandButton cmdExit{*this, "cmdExit", "E&xit"};

protected:
    void Form_Load() override;
    void Form_QueryUnload(bool& Cancel) override;

private:
    void txtYear_Validate(bool& Cancel);
    void txtAcct_Validate(bool& Cancel);
    void cmdAcct_Click();
    void Amount_Validate(TextBox& box, bool& Cancel);
    void grdAccounts_EnterCell(bool& refused);
    void grdAccounts_ValidateEntry(bool& Cancel);
    bool checkLines();
    void LoadAccount();
    void ClearValues();
    void DisplayTotals();
    std::vector<AccountBalanceLine> lines() const;
    void cmdSave_Click();

    Session& session_;
    std::string loaded_;   ///< year and account whose figures are shown
    bool chosen_ = false;  ///< the account was given by the caller
};

}  // namespace kv
