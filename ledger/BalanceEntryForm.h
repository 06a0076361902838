#pragma once
// BalanceEntryForm: what the two balance screens share: a grid of accounts with debit and credit, their totals, paste
// from a spreadsheet by account, saving when the totals tally, leaving with a question.

#include "ledger/Balances.h"
#include "platform/forms/Form.h"
#include "reporting/ctlGrid.h"

namespace kv {

class Session;
class clsAccount;

class BalanceEntryForm : public Form {
public:
    ctlGrid grdAccounts{*this, "grdAccounts"};
    Label lblAccount{*this, "lblAccount"};
    Label lblPosted{*this, "lblPosted"};
    Label lblTally{*this, "lblTally"};
    TextBox txtDebits{*this, "txtDebits"};
    TextBox txtCredits{*this, "txtCredits"};
    TextBox txtDifference{*this, "txtDifference"};
    CommandButton cmdOption0{*this, "cmdOption0", "&Save", "document-save"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Ignore", "edit-undo"};
    CommandButton cmdOption2{*this, "cmdOption2", "&Close"};

protected:
    /// Where the screen keeps its columns; a Dept of 0: it has none.
    struct Columns {
        int Code, Dept, Title, Debit, Credit, Subsidiary;
    };
    BalanceEntryForm(Session& session, std::string name, Columns columns);

    /// Loads the lines of what is chosen above the grid and shows them.
    virtual void LoadAccountDetails() = 0;
    /// Stores the lines and tells so.
    virtual void SaveRoutine() = 0;
    /// False, after a message: what is chosen above the grid cannot be stored.
    virtual bool mayBeSaved() = 0;
    /// The title of an account as the screen shows it.
    virtual std::string titleOf(const std::string& code, const std::string& title) const = 0;

    void InitGrid(std::string_view format, const std::vector<int>& widths_twips);
    Layout totals();
    void ClearLines();
    /// Adds a line behind the others; the account tells whether it takes a department.
    void AppendLine(int row, const BalanceLine& line, const std::string& title);
    std::vector<BalanceLine> lines() const;
    void DisplayTotals();
    /// Something was typed that is not stored.
    bool changed() const;
    void markUnchanged();
    void Form_QueryUnload(bool& Cancel) override;

    Session& session_;
    bool leaving_ = false;

private:
    using Block = std::vector<std::vector<std::string>>;

    void grdAccounts_EnterCell(bool& refused);
    bool closedForEntry(int row, int col) const;
    void grdAccounts_PassOver(int row, int col, bool& pass) const;
    void grdAccounts_ValidateEntry(bool& Cancel);
    void ValidateAccount(bool& Cancel);
    bool TakeAccount(int row, const clsAccount& account);
    void ValidateDept(bool& Cancel);
    void grdAccounts_Browse();
    void PasteByAccount(const Block& block);
    std::string PasteLine(const std::vector<std::string>& cells);
    int rowOf(const std::string& code, const std::string& dept, int except = 0) const;
    int rowForPaste(const std::string& code, const std::string& dept);
    bool onePerAccount() const { return columns_.Dept == 0; }
    void AddRow();
    void DeleteRow();
    void cmdOption0_Click();
    void cmdOption1_Click();

    Columns columns_;
    std::vector<BalanceLine> stored_;
};

}  // namespace kv
