#include "ledger/frmBegBalanceYear.h"

#include "core/Session.h"
#include "ledger/YearTasks.h"
#include "ledger/frmBegBalance.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

enum { kMarker, kCode, kTitle, kDebit, kCredit };

}  // namespace

frmBegBalanceYear::frmBegBalanceYear(Session& session)
    : BalanceEntryForm(session, "frmBegBalanceYear", {kCode, 0, kTitle, kDebit, kCredit, 0}) {
    txtYear.chars("0123456789").maxLength(4).width(8);
    txtYear.setHelp("The year that opens with these balances.");
    txtYear.onValidate = [this](bool& cancel) { txtYear_Validate(cancel); };
    grdAccounts.setHelp(
        "Debit or credit of each account; F4 shows one account by itself. Paste account, debit and credit from a "
        "spreadsheet into the column of the codes; Ctrl+S saves.");
    grdAccounts.onDblClick = [this] { cmdOption3_Click(); };
    cmdOption3.onClick = [this] { cmdOption3_Click(); };
    cmdOption3.setHelp("F4");
    shortcut("F4", "cmdOption3_Click", [this] { cmdOption3_Click(); });
    setLayout(column({
        fields({{"&Year:", {txtYear, gap(), expand(lblPosted)}}}),
        expand(grdAccounts),
        totals(),
        row({cmdOption3, stretch(), cmdOption0, cmdOption1, cmdOption2}),
    }));
    setSize(900, 680);
    setFirstFocus(txtYear);
}

void frmBegBalanceYear::Form_Load() {
    InitGrid("|<Code|<Description|>Debit|>Credit", {420, 1300, 5000, 2100, 2100});
    ClearLines();
    DisplayTotals();
    markUnchanged();
}

std::string frmBegBalanceYear::titleOf(const std::string& /*code*/, const std::string& title) const { return title; }

void frmBegBalanceYear::txtYear_Validate(bool& Cancel) {
    const std::string year = txtYear.text();
    if (year.empty() || (year == year_ && !changed())) return;
    if (year == year_) return;
    if (!isYear(year)) {
        MsgBox("Invalid Year!", Icon::Exclamation);
        Cancel = true;
        return;
    }
    if (!YearMayBeEdited(session_, year, Today())) {
        MsgBox("You cannot edit beginning balance for this year", Icon::Exclamation, "Warning");
        Cancel = true;
        return;
    }
    if (changed() && !Ask("Changes will be ignored! Do you wish to ignore?", "Warning!", Icon::Exclamation)) {
        txtYear.setText(year_);
        return;
    }
    year_ = year;
    LoadAccountDetails();
}

void frmBegBalanceYear::LoadAccountDetails() {
    const Hourglass busy;
    ClearLines();
    if (!year_.empty()) {
        Recordset rows = session_.cn().Open(sql("sp_Load_BegBalance '{}',''").text(year_));
        grdAccounts.SetRows(static_cast<int>(rows.recordCount()) + 1);
        for (int row = 1; !rows.eof(); rows.moveNext(), ++row) {
            AppendLine(row, {rows["Code"].text(), "", rows["Debit"].money(), rows["Credit"].money()},
                       rows["Description"].text());
        }
        if (grdAccounts.Rows() < 2) ClearLines();
        grdAccounts.Refresh();
        grdAccounts.moveTo(1, kDebit);
    }
    DisplayTotals();
    ShowPosted();
    markUnchanged();
}

/// Says when the balances stand in the ledger, since what is saved here must be posted again then.
void frmBegBalanceYear::ShowPosted() {
    lblPosted.setText(!year_.empty() && YearIsOpened(session_, year_)
                          ? "These balances stand in the ledger. Post them again after a change."
                          : "");
}

bool frmBegBalanceYear::mayBeSaved() {
    if (year_.empty() || txtYear.text() != year_) {
        MsgBox("Invalid Year!", Icon::Exclamation);
        txtYear.setFocus();
        return false;
    }
    if (YearMayBeEdited(session_, year_, Today())) return true;
    MsgBox("You cannot edit beginning balance for this year", Icon::Exclamation, "Warning");
    return false;
}

void frmBegBalanceYear::SaveRoutine() {
    {
        const Hourglass busy;
        SaveYearBalances(session_, year_, lines());
    }
    markUnchanged();
    ShowPosted();
    MsgBox("Data for the year " + year_ + " successfully saved.", Icon::Information);
}

void frmBegBalanceYear::cmdOption3_Click() {
    const std::string code = grdAccounts.GetText(grdAccounts.Row(), kCode);
    if (year_.empty() || code.empty()) return;
    if (changed()) {
        MsgBox("Please save the changes first.", Icon::Information);
        return;
    }
    const int row = grdAccounts.Row();
    frmBegBalance account(session_);
    account.Edit(year_, code);
    account.ShowModal();
    LoadAccountDetails();
    grdAccounts.moveTo(std::min(row, grdAccounts.Rows() - 1), kDebit);
    grdAccounts.setFocus();
}

}  // namespace kv
