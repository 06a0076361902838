#include "ledger/frmBegBalance.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/PeriodTasks.h"
#include "ledger/clsAccount.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

enum { kMarker, kPeriod, kBatchType, kDebit, kCredit, kDept };

constexpr const char* kAmount = "#,##0.00##";
constexpr const char* kWrongPeriod = "Invalid Period!";
constexpr const char* kWrongBook = "Please enter AP, CD, CR, AR, or JV.";

}  // namespace

frmBegBalance::frmBegBalance(Session& session) : Form("frmBegBalance", "Beginning Balances"), session_(session) {
    txtYear.chars("0123456789").maxLength(4).width(8).required();
    txtYear.onValidate = [this](bool& cancel) { txtYear_Validate(cancel); };
    txtAcct.code().width(14).required();
    txtAcct.setHelp("Code of the account; the button beside it searches.");
    txtAcct.onValidate = [this](bool& cancel) { txtAcct_Validate(cancel); };
    cmdAcct.narrow();
    cmdAcct.onClick = [this] { cmdAcct_Click(); };
    for (TextBox* amount : {&txtBegDR, &txtBegCr}) {
        amount->align(Align::Right).width(20);
        amount->onValidate = [this, amount](bool& cancel) { Amount_Validate(*amount, cancel); };
    }
    for (TextBox* total : {&txtTotDebit, &txtTotCredit}) {
        total->setLocked(true);
        total->align(Align::Right).width(20);
    }
    txtAcctName.setLocked(true);
    grdAccounts.setHelp("Month as 202401, book, debit or credit. Lines without a month are not stored.");
    grdAccounts.onShowEntry = [this](bool& refused) { grdAccounts_EnterCell(refused); };
    grdAccounts.onValidateEntry = [this](bool& cancel) { grdAccounts_ValidateEntry(cancel); };
    grdAccounts.onAfterValidate = [this] { DisplayTotals(); };
    cmdSave.primary();
    cmdSave.onClick = [this] { cmdSave_Click(); };
    cmdExit.cancels();
    cmdExit.onClick = [this] { Unload(); };
    shortcut("Ctrl+S", "cmdSave_Click", [this] {
        if (validateActive()) cmdSave_Click();
    });
    setLayout(column({
        fields({{"&Year:", {txtYear, stretch()}},
                {"&Account:", {txtAcct, cmdAcct, expand(txtAcctName)}},
                {"Beginning &debit:", {txtBegDR, stretch()}},
                {"Beginning &credit:", {txtBegCr, stretch()}}}),
        expand(group("Figures by book and month", grdAccounts)),
        row({stretch(), fields({{"Debits", txtTotDebit}, {"Credits", txtTotCredit}}, 2)}),
        buttons({cmdSave, cmdExit}),
    }));
    setSize(720, 560);
    setFirstFocus(txtYear);
}

void frmBegBalance::Edit(std::string_view Year, std::string_view Acct) {
    txtYear.setText(Year);
    txtAcct.setText(Acct);
    chosen_ = true;
    setFirstFocus(txtBegDR);
}

void frmBegBalance::Form_Load() {
    grdAccounts.FormatString("|<Period|<BatchType|>Debit|>Credit|");
    constexpr int kWidths[] = {420, 1500, 1500, 2300, 2300, 0};
    for (int col = kMarker; col <= kDept; ++col) grdAccounts.SetColWidth(col, kWidths[col]);
    grdAccounts.SetColumnLock(kMarker, true);
    grdAccounts.SetColumnLock(kDept, true);
    grdAccounts.SetColumnFilter(kBatchType, EntryFilter::UpperCase);
    grdAccounts.SetColumnFilter(kDebit, EntryFilter::PositiveNumber);
    grdAccounts.SetColumnFilter(kCredit, EntryFilter::PositiveNumber);
    grdAccounts.setStretchColumn(kCredit);
    if (chosen_) {
        LoadAccount();
    } else {
        ClearValues();
    }
}

void frmBegBalance::txtYear_Validate(bool& Cancel) {
    if (txtYear.text().empty()) return;
    if (!isYear(txtYear.text())) {
        MsgBox("Invalid Year!", Icon::Exclamation);
        Cancel = true;
        return;
    }
    LoadAccount();
}

void frmBegBalance::txtAcct_Validate(bool& Cancel) {
    if (txtAcct.text().empty()) return;
    clsAccount account(session_);
    account.Search(txtAcct.text(), "ALL");
    if (!account.Found) {
        MsgBox("Invalid Account Code!", Icon::Exclamation);
        Cancel = true;
        return;
    }
    txtAcct.setText(account.AccountCode);
    LoadAccount();
}

void frmBegBalance::cmdAcct_Click() {
    clsAccount account(session_);
    if (!account.Validate("", "ALL")) return;
    txtAcct.setText(account.AccountCode);
    LoadAccount();
    txtBegDR.setFocus();
}

void frmBegBalance::Amount_Validate(TextBox& box, bool& Cancel) {
    const std::string typed = module1::ATrim(replaceAll(box.text(), ",", ""));
    if (typed.empty()) return;
    const auto amount = Money::parse(typed);
    if (!amount || *amount < Money()) {
        MsgBox("Invalid Input!", Icon::Exclamation);
        Cancel = true;
        return;
    }
    box.setText(Format(*amount, kAmount));
}

void frmBegBalance::LoadAccount() {
    const std::string wanted = txtYear.text() + " " + txtAcct.text();
    if (!isYear(txtYear.text()) || txtAcct.text().empty() || wanted == loaded_) return;
    loaded_ = wanted;
    Connection& cn = session_.cn();
    txtAcctName.setText(module1::GetAcctName(cn, txtAcct.text(), ""));
    const Recordset opening = cn.Open(sql("select Debit, Credit from BegBalance where Year = '{}' and Acct = '{}'")
                                          .text(txtYear.text())
                                          .text(txtAcct.text()));
    txtBegDR.setText(opening.eof() ? "" : Format(opening["Debit"].money(), kAmount));
    txtBegCr.setText(opening.eof() ? "" : Format(opening["Credit"].money(), kAmount));
    Recordset rows = cn.Open(sql("select Period, BatchType, Dept, Debit, Credit from BegBalDT where Year = '{}' and "
                                 "Acct = '{}' order by Period, EntryID")
                                 .text(txtYear.text())
                                 .text(txtAcct.text()));
    grdAccounts.SetRows(1);
    grdAccounts.SetRows(2);
    for (int row = 1; !rows.eof(); rows.moveNext(), ++row) {
        if (row >= grdAccounts.Rows()) grdAccounts.InsertRow(grdAccounts.Rows());
        grdAccounts.SetText(row, kPeriod, rows["Period"].text());
        grdAccounts.SetText(row, kBatchType, rows["BatchType"].text());
        grdAccounts.SetText(row, kDebit, Format(rows["Debit"].money(), kAmount));
        grdAccounts.SetText(row, kCredit, Format(rows["Credit"].money(), kAmount));
        grdAccounts.SetText(row, kDept, rows["Dept"].text());
    }
    grdAccounts.Refresh();
    DisplayTotals();
}

void frmBegBalance::ClearValues() {
    loaded_.clear();
    for (TextBox* box : {&txtAcct, &txtAcctName, &txtBegDR, &txtBegCr}) box->setText("");
    grdAccounts.SetRows(1);
    grdAccounts.SetRows(2);
    grdAccounts.Refresh();
    DisplayTotals();
}

std::vector<AccountBalanceLine> frmBegBalance::lines() const {
    std::vector<AccountBalanceLine> found;
    for (int row = 1; row < grdAccounts.Rows(); ++row) {
        found.push_back({module1::ATrim(grdAccounts.GetText(row, kPeriod)), grdAccounts.GetText(row, kBatchType),
                         grdAccounts.GetText(row, kDept), module1::Value(grdAccounts.GetText(row, kDebit)),
                         module1::Value(grdAccounts.GetText(row, kCredit))});
    }
    return found;
}

void frmBegBalance::DisplayTotals() {
    Money debits;
    Money credits;
    for (const AccountBalanceLine& line : lines()) {
        debits += line.Debit;
        credits += line.Credit;
    }
    txtTotDebit.setText(Format(debits, "#,##0.00"));
    txtTotCredit.setText(Format(credits, "#,##0.00"));
}

void frmBegBalance::grdAccounts_EnterCell(bool& refused) {
    refused = txtAcct.text().empty() ||
              (grdAccounts.Col() != kPeriod && grdAccounts.GetText(grdAccounts.Row(), kPeriod).empty());
}

void frmBegBalance::grdAccounts_ValidateEntry(bool& Cancel) {
    const std::string typed = module1::ATrim(grdAccounts.TextEntry());
    if (grdAccounts.Col() == kPeriod && !isPeriod(typed)) {
        MsgBox(kWrongPeriod, Icon::Exclamation);
        Cancel = true;
    }
    if (grdAccounts.Col() == kBatchType && !isBookCode(typed)) {
        MsgBox(kWrongBook, Icon::Exclamation);
        Cancel = true;
    }
}

/// A line with a month needs its book, too.
bool frmBegBalance::checkLines() {
    int row = 0;
    for (const AccountBalanceLine& line : lines()) {
        ++row;
        if (line.Period.empty() || isBookCode(line.BatchType)) continue;
        MsgBox(kWrongBook, Icon::Exclamation);
        grdAccounts.moveTo(row, kBatchType);
        grdAccounts.setFocus();
        return false;
    }
    return true;
}

void frmBegBalance::cmdSave_Click() {
    if (!isYear(txtYear.text())) {
        MsgBox("Invalid Year!", Icon::Exclamation);
        txtYear.setFocus();
        return;
    }
    if (txtAcct.text().empty()) {
        MsgBox("Invalid Account Code!", Icon::Exclamation);
        txtAcct.setFocus();
        return;
    }
    if (!checkLines()) return;
    const BalanceLine opening{txtAcct.text(), "", module1::Value(txtBegDR.text()), module1::Value(txtBegCr.text())};
    SaveAccountBalance(session_, txtYear.text(), opening, lines());
    ClearValues();
    txtAcct.setFocus();
}

void frmBegBalance::Form_QueryUnload(bool& Cancel) {
    Cancel = !Ask("Changes will be ignored! Do you wish to Exit?", "Warning", Icon::Exclamation);
}

}  // namespace kv
