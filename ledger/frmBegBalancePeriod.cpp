#include "ledger/frmBegBalancePeriod.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/PeriodTasks.h"
#include "platform/base/Paths.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSelectDates.h"

namespace kv {
namespace {

enum { kMarker, kCode, kDept, kTitle, kDebit, kCredit, kSubsidiary };

}  // namespace

frmBegBalancePeriod::frmBegBalancePeriod(Session& session)
    : BalanceEntryForm(session, "frmBegBalancePeriod", {kCode, kDept, kTitle, kDebit, kCredit, kSubsidiary}) {
    dtpPeriod.setHelp("Month: type 03/2024, or + and - to move by a month.");
    dtpPeriod.onValidate = [this](bool& cancel) { dtpPeriod_Validate(cancel); };
    txtBook.code().maxLength(2).width(6).required();
    txtBook.setHelp("AP, CD, CR, AR or JV.");
    txtBook.onValidate = [this](bool& cancel) { txtBook_Validate(cancel); };
    grdAccounts.setHelp(
        "Account, department where the account asks for one, debit or credit. Paste such lines from a spreadsheet into "
        "the column of the accounts; F7 adds a row, F8 deletes it, Ctrl+S saves.");
    cmdOption3.onClick = [this] { cmdOption3_Click(); };
    cmdOption3.setHelp("Saves the lines as a file for a spreadsheet.");
    setLayout(column({
        fields({{"&Period:", {dtpPeriod, gap(), stretch()}}, {"&Book:", {txtBook, gap(), expand(lblPosted)}}}),
        expand(grdAccounts),
        totals(),
        row({cmdOption3, stretch(), cmdOption0, cmdOption1, cmdOption2}),
    }));
    setSize(980, 680);
    setFirstFocus(dtpPeriod);
}

void frmBegBalancePeriod::Form_Load() {
    InitGrid("|<AccountCode|<Dept|<Description|>Debit|>Credit|", {420, 1700, 1000, 5000, 2100, 2100, 0});
    dtpPeriod.setValue(dateOfPeriod(session_.Sys.glperiod));
    LoadAccountDetails();
}

std::string frmBegBalancePeriod::GetPeriod() const { return module1::GetPeriod(dtpPeriod.value()); }

std::string frmBegBalancePeriod::titleOf(const std::string& code, const std::string& title) const {
    return code + " - " + title;
}

bool frmBegBalancePeriod::mayEdit() {
    if (PeriodMayBeEdited(session_, GetPeriod(), Today())) return true;
    MsgBox("You cannot edit beginning balance for this period!", Icon::Exclamation, "Warning");
    return false;
}

bool frmBegBalancePeriod::bookIsRight() {
    if (isBookCode(txtBook.text())) return true;
    MsgBox("Please enter AP, CD, CR, AR, or JV.", Icon::Exclamation);
    return false;
}

void frmBegBalancePeriod::dtpPeriod_Validate(bool& Cancel) {
    if (GetPeriod() == period_) return;
    Cancel = !mayEdit();
    if (!Cancel) LoadChosen();
}

void frmBegBalancePeriod::txtBook_Validate(bool& Cancel) {
    if (txtBook.text() == book_ && !book_.empty()) return;
    Cancel = !bookIsRight();
    if (!Cancel) LoadChosen();
}

void frmBegBalancePeriod::LoadChosen() {
    if (!isBookCode(txtBook.text())) return;
    if (changed() && !Ask("Changes will be ignored! Do you wish to ignore?", "Warning!", Icon::Exclamation)) {
        dtpPeriod.setValue(dateOfPeriod(period_));
        txtBook.setText(book_);
        return;
    }
    LoadAccountDetails();
}

void frmBegBalancePeriod::LoadAccountDetails() {
    const Hourglass busy;
    ClearLines();
    period_.clear();
    book_.clear();
    if (isBookCode(txtBook.text())) {
        period_ = GetPeriod();
        book_ = txtBook.text();
        Recordset rows = session_.cn().Open(sql("sp_Load_BegBalDT '{}','{}'").text(period_).text(book_));
        for (int row = 1; !rows.eof(); rows.moveNext(), ++row) {
            AppendLine(row,
                       {rows["AccountCode"].text(), rows["Dept"].text(), rows["Debit"].money(), rows["Credit"].money()},
                       rows["Description"].text());
        }
        lblPosted.setText(module1::IsBookOpen(session_.cn(), book_, period_)
                              ? ""
                              : "This month of the book stands in the ledger. Post the figures again after a change.");
    }
    DisplayTotals();
    markUnchanged();
}

bool frmBegBalancePeriod::mayBeSaved() {
    if (!bookIsRight()) {
        txtBook.setFocus();
        return false;
    }
    return mayEdit();
}

void frmBegBalancePeriod::SaveRoutine() {
    const std::string period = GetPeriod();
    {
        const Hourglass busy;
        SavePeriodBalances(session_, period, txtBook.text(), lines());
    }
    markUnchanged();
    MsgBox("Data for the period " + period + " successfully saved.", Icon::Information);
}

/// Lines of tab-separated cells, which spreadsheets open by this name and which paste back into the grid.
void frmBegBalancePeriod::cmdOption3_Click() {
    const auto path = askSaveFile("Save File", "BegBalance " + GetPeriod() + " " + txtBook.text() + ".xls",
                                  {"Excel 97 (*.xls)|*.xls", "xls"});
    if (!path) return;
    std::string text = "AccountCode\tDept\tDescription\tDebit\tCredit\r\n";
    for (int row = 1; row < grdAccounts.Rows(); ++row) {
        if (grdAccounts.GetText(row, kCode).empty()) continue;
        for (const int col : {kCode, kDept, kTitle, kDebit, kCredit}) {
            text += grdAccounts.GetText(row, col) + (col == kCredit ? "\r\n" : "\t");
        }
    }
    writeTextFile(*path, text);
    MsgBox("The lines have been saved to " + *path + ".", Icon::Information);
}

}  // namespace kv
