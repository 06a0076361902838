#include "ledger/frmJournEntry.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/AccountMemory.h"
#include "ledger/LookupClass.h"
#include "ledger/clsAccount.h"
#include "ledger/clsVoucher.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

// columns of the grid
enum { kMarker, kCode, kDept, kVoucher, kTitle, kDebit, kCredit, kOption, kSubCode, kSubsidiary };

constexpr const char* kClosedMonth = "This month is already closed. Please use a different date.";

}  // namespace

frmJournEntry::frmJournEntry(Session& session) : Form("frmJournEntry", "Journal Entry"), session_(session) {
    connect();
    arrange();
}

void frmJournEntry::connect() {
    dtpBatchDate.onValidate = [this](bool& cancel) { dtpBatchDate_Validate(cancel); };
    grdAccounts.onShowEntry = [this](bool& refused) { grdAccounts_EnterCell(refused); };
    grdAccounts.onValidateEntry = [this](bool& cancel) { grdAccounts_ValidateEntry(cancel); };
    grdAccounts.onBrowse = [this] { grdAccounts_Browse(); };
    grdAccounts.onAfterValidate = [this] { grdAccounts_AfterValidate(); };
    grdAccounts.onRowColChange = [this] { DisplayAccounts(); };
    grdAccounts.onPassOver = [this](int row, int col, bool& pass) { grdAccounts_PassOver(row, col, pass); };
    grdAccounts.onEndOfLines = [this] { cmdOption0.setFocus(); };
    grdAccounts.onGridKey = [this](const std::string& key, bool& handled) {
        handled = key == "F9";
        if (handled) BalanceLine();
    };
    txtParticular.onKeyDown = [this](const std::string& key, bool& handled) {
        handled = key == "Ctrl+D";
        if (handled) TakeLastParticular();
    };
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.onClick = [this] { Unload(); };
    cmdOption2.onClick = [this] { cmdOption2_Click(); };
    cmdOption3.onClick = [this] { cmdOption3_Click(); };
    cmdOption6.onClick = [this] { cmdOption6_Click(); };
    shortcut("F7", "cmdOption2_Click", [this] { cmdOption2_Click(); });
    shortcut("F8", "cmdOption3_Click", [this] { cmdOption3_Click(); });
    shortcut("Ctrl+S", "cmdOption0_Click", [this] {
        if (validateActive()) cmdOption0_Click();
    });
}

void frmJournEntry::arrange() {
    lblType.look(Label::Look::Heading);
    lblLabel14.look(Label::Look::Heading);
    dtpBatchDate.setHelp("Date of the batch. + and - move by a day. A closed month is refused.");
    txtParticular.maxLength(500);
    txtParticular.setHelp(
        "What the batch is about, as it shall stand in the books. Ctrl+D takes it from your last batch.");
    grdAccounts.setHelp(
        "Code or part of a title. F2 searches, F7 adds a row, F8 deletes it, F9 balances, Ctrl+D repeats, Ctrl+S "
        "saves.");
    lblAccount.look(Label::Look::FigureBold);
    lblAccount.setAlign(Align::Left);
    for (Label* total : {&lblTotals0, &lblTotals1, &lblTotals2}) total->look(Label::Look::FigureBold);
    cmdOption0.primary();
    cmdOption1.cancels();
    cmdOption2.setHelp("F7");
    cmdOption3.setHelp("F8");
    setLayout(column({
        row({lblType, stretch(), lblLabel14}),
        fields({{"Dat&e:", {dtpBatchDate, gap(), lblBatchType, width(cboBatchType, 26), stretch()}},
                {"&Particulars:", txtParticular}}),
        totals(grdAccounts, {{kTitle, &lblTotals2, "Difference"}, {kDebit, &lblTotals0}, {kCredit, &lblTotals1}},
               &lblAccount),
        row({cmdOption2, cmdOption3, gap(), cmdOption6, stretch(), cmdOption0, cmdOption1}),
    }));
    setSize(1080, 680);
    setFirstFocus(dtpBatchDate);
}

void frmJournEntry::Add() {
    FormMode_ = "NEW";
    CurrentBatch_.clear();
}

void frmJournEntry::Edit(std::string_view Batch) {
    CurrentBatch_ = Batch;
    FormMode_ = Batch;
    if (session_.BookCode() == "JV") {
        printed_ = GetInternalNumbersJV(session_, Batch);
        FormMode_ = printed_.Text;
    }
    session_.CurrentBatch = CurrentBatch_;
}

void frmJournEntry::Form_Load() {
    HasSubCode_ = module1::ColumnExists(session_.cn(), session_.BookDetailTable(), "SUBCODE");
    InitGrdAccounts();
    cboBatchType.setVisible(false);
    lblBatchType.setVisible(false);
    lblType.setText(session_.BookName());
    DailyTable_ = DailyTableOf(session_.BookCode());
    if (DailyTable_.empty()) {
        cmdOption6.setCaption("Cancel &Batch");
        InitBatchTypes();
    }
    dtpBatchDate.setValue(Today());
    lblLabel14.setText(FormMode_.empty() ? CurrentBatch_ : FormMode_);
    ClearValues();
    if (FormMode_ == "NEW") {
        cmdOption6.setEnabled(false);
    } else {
        LoadVoucher();
    }
    DisplayDebitCredit();
    DisplayAccounts();
}

std::string frmJournEntry::GetPeriod() const { return module1::GetPeriod(dtpBatchDate.value()); }
std::string frmJournEntry::GetBatchType() const { return cboBatchType.index() == 1 ? "YE" : "JV"; }
void frmJournEntry::SetBatchType(std::string_view Type) { cboBatchType.setIndex(Type == "YE" ? 1 : 0); }

void frmJournEntry::InitBatchTypes() {
    cboBatchType.clear();
    cboBatchType.addItem("GENERAL JOURNAL");
    cboBatchType.addItem("YEAR END ADJUSTMENT");
    cboBatchType.setIndex(0);
    cboBatchType.setVisible(true);
    lblBatchType.setVisible(true);
}

void frmJournEntry::InitGrdAccounts() {
    grdAccounts.FormatString("|<Code|<Dept.|<Voucher|<Description|>Debit|>Credit|||");
    constexpr int kWidths[] = {420, 1300, 1000, 0, 4420, 2100, 2100, 0, 0, 0};
    for (int col = kMarker; col <= kSubsidiary; ++col) {
        grdAccounts.SetColWidth(col, kWidths[col]);
        grdAccounts.SetColumnLock(col, col != kCode && col != kDept && col != kDebit && col != kCredit);
    }
    grdAccounts.setStretchColumn(kTitle);
    grdAccounts.SetColumnBrowse(kCode, true);
    grdAccounts.SetColumnBrowse(kDept, true);
    grdAccounts.SetColumnFilter(kCode, EntryFilter::UpperCase);
    grdAccounts.SetColumnFilter(kDept, EntryFilter::UpperCase);
    grdAccounts.SetColumnFilter(kDebit, EntryFilter::SignedNumber);
    grdAccounts.SetColumnFilter(kCredit, EntryFilter::SignedNumber);
}

void frmJournEntry::ClearValues() {
    txtParticular.setText("");
    grdAccounts.SetRows(1);
    grdAccounts.SetRows(2);
    grdAccounts.Refresh();
}

void frmJournEntry::LoadVoucher() {
    Recordset rows = session_.cn().Open(sql("sp_Load_BatchDT '{}','{}'").text(session_.BookCode()).text(CurrentBatch_));
    AccountMemory accounts(session_);
    const auto amount = [](const Value& value) {
        return value.isNull() ? std::string() : Format(value.money(), "#,##0.00##");
    };
    grdAccounts.SetRows(std::max(2, static_cast<int>(rows.recordCount()) + 1));
    grdAccounts.Refresh();
    for (int row = 1; !rows.eof(); rows.moveNext(), ++row) {
        grdAccounts.SetText(row, kCode, rows["Code"].text());
        grdAccounts.SetText(row, kDept, rows["Dept"].text());
        grdAccounts.SetText(row, kTitle, rows["Description"].text());
        grdAccounts.SetText(row, kDebit, amount(rows["Debit"]));
        grdAccounts.SetText(row, kCredit, amount(rows["Credit"]));
        grdAccounts.SetText(row, kVoucher, rows["Voucher"].text());
        grdAccounts.SetText(row, kSubCode, rows["SubCode"].text());
        const clsAccount* account = accounts.find(rows["Code"].text());
        grdAccounts.SetText(row, kSubsidiary, account ? account->Subsidiary : std::string());
    }
    const Recordset header =
        session_.cn().Open(sql("select * from {} WHERE Batch = '{}'").name(session_.BookTable()).text(CurrentBatch_));
    if (header.eof()) return;
    txtParticular.setText(header["Particular"].text());
    batchType_ = header["BatchType"].text();
    if (!header["BatchDate"].isNull()) dtpBatchDate.setValue(header["BatchDate"].date());
    if (session_.BookCode() == "JV") SetBatchType(batchType_);
}

JournalLine frmJournEntry::lineOf(int row) const {
    JournalLine line;
    line.Code = module1::ATrim(grdAccounts.GetText(row, kCode));
    line.Dept = module1::ATrim(grdAccounts.GetText(row, kDept));
    line.Voucher = module1::ATrim(grdAccounts.GetText(row, kVoucher));
    line.Description = grdAccounts.GetText(row, kTitle);
    line.SubCode = grdAccounts.GetText(row, kSubCode);
    line.Debit = module1::Value(grdAccounts.GetText(row, kDebit));
    line.Credit = module1::Value(grdAccounts.GetText(row, kCredit));
    line.NeedsDept = grdAccounts.GetText(row, kSubsidiary) == "1";
    return line;
}

std::vector<JournalLine> frmJournEntry::lines() const {
    std::vector<JournalLine> found;
    for (int row = 1; row < grdAccounts.Rows(); ++row) found.push_back(lineOf(row));
    return found;
}

/// Changes in the chart since the lines were typed are honoured at saving.
void frmJournEntry::FillSubsidiaryColumn() {
    AccountMemory accounts(session_);
    for (int row = 1; row < grdAccounts.Rows(); ++row) {
        const std::string code = grdAccounts.GetText(row, kCode);
        if (code.empty()) continue;
        if (const clsAccount* account = accounts.find(code)) grdAccounts.SetText(row, kSubsidiary, account->Subsidiary);
    }
}

void frmJournEntry::DisplayDebitCredit() {
    const JournalTotals totals = totalsOf(lines());
    lblTotals0.setText(Format(totals.Debit, "#,##0.00"));
    lblTotals1.setText(Format(totals.Credit, "#,##0.00"));
    // a difference below the centavo must show too
    lblTotals2.setText(Format(totals.difference(), "#,##0.00##"));
    lblTotals2.setAlert(!totals.difference().isZero());
}

void frmJournEntry::DisplayAccounts() {
    const int row = grdAccounts.Row();
    lblAccount.setText(row >= 1 && row < grdAccounts.Rows() ? grdAccounts.GetText(row, kTitle) : std::string());
}

void frmJournEntry::dtpBatchDate_Validate(bool& Cancel) { Cancel = !bookOpen(); }

bool frmJournEntry::bookOpen() {
    if (module1::IsBookOpen(session_.cn(), session_.BookCode(), GetPeriod())) return true;
    MsgBox(kClosedMonth, Icon::Information);
    return false;
}

void frmJournEntry::grdAccounts_EnterCell(bool& refused) {
    const int row = grdAccounts.Row();
    const int col = grdAccounts.Col();
    const bool noAccount = col != kCode && grdAccounts.GetText(row, kCode).empty();
    const bool noDept = col == kDept && grdAccounts.GetText(row, kSubsidiary) != "1";
    refused = noAccount || noDept;
}

/// Enter goes where something may be typed, and past the side of a line whose other side holds its amount.
void frmJournEntry::grdAccounts_PassOver(int row, int col, bool& pass) const {
    const JournalLine line = lineOf(row);
    if (col == kDept) pass = !line.NeedsDept;
    if (col == kDebit) pass = !line.hasAccount() || (line.Debit.isZero() && !line.Credit.isZero());
    if (col == kCredit) pass = !line.hasAccount() || (line.Credit.isZero() && !line.Debit.isZero());
}

/// Puts what the other lines lack into this one, on the side where it is missing.
void frmJournEntry::BalanceLine() {
    const int row = grdAccounts.Row();
    if (!grdAccounts.commit() || !lineOf(row).hasAccount()) return;
    const Money missing = totalsOf(lines()).difference() - lineOf(row).amount();
    if (missing.isZero()) return;
    const bool debit = missing < Money();
    grdAccounts.SetText(row, kDebit, debit ? Format(-missing, "#,##0.00##") : std::string());
    grdAccounts.SetText(row, kCredit, debit ? std::string() : Format(missing, "#,##0.00##"));
    grdAccounts.moveTo(row, debit ? kDebit : kCredit);
    grdAccounts_AfterValidate();
}

void frmJournEntry::TakeLastParticular() {
    const Recordset last = session_.cn().Open(
        sql("SELECT TOP 1 Particular FROM {} WHERE Encoder = '{}' ORDER BY LEN(Batch) DESC, Batch DESC")
            .name(session_.BookTable())
            .text(session_.EmployeeCode));
    if (!last.eof()) txtParticular.setText(last["Particular"].text());
}

void frmJournEntry::grdAccounts_ValidateEntry(bool& Cancel) {
    if (grdAccounts.Col() == kCode) {
        ValidateAccount(Cancel);
    } else if (grdAccounts.Col() == kDept && grdAccounts.GetText(grdAccounts.Row(), kSubsidiary) == "1") {
        ValidateDept(Cancel);
    } else if (grdAccounts.Col() == kDebit || grdAccounts.Col() == kCredit) {
        Cancel = !grdAccounts.TextEntry().empty() && !IsNumeric(grdAccounts.TextEntry());
        if (Cancel) MsgBox("This is not a number.", Icon::Exclamation);
    }
}

void frmJournEntry::ValidateAccount(bool& Cancel) {
    const int row = grdAccounts.Row();
    clsAccount account(session_);
    if (const clsAccount* known = pastedAccount(grdAccounts.TextEntry())) {
        account = *known;
    } else {
        Cancel = !account.Validate(grdAccounts.TextEntry(), "ALL");
    }
    if (!Cancel) {
        const std::string typed = grdAccounts.TextEntry();
        grdAccounts.SetTextEntry(account.AccountCode);
        grdAccounts.SetText(row, kTitle, account.AccountTitle);
        grdAccounts.SetText(row, kSubsidiary, account.Subsidiary);
        if (account.Subsidiary != "1") grdAccounts.SetText(row, kDept, "");
        if (account.AccountCode == session_.Sys.APAcct && !AskVoucher(row, account.AccountTitle)) {
            grdAccounts.SetTextEntry(typed);
            Cancel = true;
        }
    }
    if (Cancel) grdAccounts.SetText(row, kTitle, "");
}

/// A line of the AP control account belongs to a voucher. False: none was given.
bool frmJournEntry::AskVoucher(int row, const std::string& title) {
    clsVoucher voucher(session_);
    voucher.VoucherOption = grdAccounts.GetText(row, kOption);
    const std::string before = voucher.VoucherOption == "THIS" ? grdAccounts.GetText(row, kVoucher) : std::string();
    if (!voucher.InputVoucherInfo(before, grdAccounts.GetText(row, kSubCode), title)) return false;
    grdAccounts.SetText(row, kVoucher, voucher.VoucherOption == "THIS" ? "JV" + CurrentBatch_ : voucher.Voucher);
    if (HasSubCode_) grdAccounts.SetText(row, kSubCode, voucher.VendorID);
    if (!voucher.VendorID.empty()) {
        grdAccounts.SetText(row, kTitle, module1::GetVendorName(session_.cn(), voucher.VendorID) + " - " + title);
    }
    grdAccounts.SetText(row, kOption, voucher.VoucherOption);
    return true;
}

/// A pasted block names few accounts on many lines: each is asked for once.
const clsAccount* frmJournEntry::pastedAccount(const std::string& code) {
    if (!grdAccounts.Pasting()) return nullptr;
    if (!pasted_) pasted_.emplace(session_);
    return pasted_->find(code);
}

void frmJournEntry::ValidateDept(bool& Cancel) {
    const int row = grdAccounts.Row();
    if (grdAccounts.Pasting()) {
        if (!pasted_) pasted_.emplace(session_);
        const std::string* title = pasted_->titleWith(grdAccounts.GetText(row, kCode), grdAccounts.TextEntry());
        if (title) return grdAccounts.SetText(row, kTitle, *title);
    }
    clsCostCenter center(session_);
    Cancel = !center.Validate(grdAccounts.TextEntry());
    if (Cancel) return;
    grdAccounts.SetTextEntry(center.Code);
    grdAccounts.SetText(row, kTitle, module1::GetAcctName(session_.cn(), grdAccounts.GetText(row, kCode), center.Code));
}

void frmJournEntry::grdAccounts_Browse() {
    const int row = grdAccounts.Row();
    if (grdAccounts.Col() == kCode) {
        clsAccount account(session_);
        if (!account.Validate("", "ALL")) return;
        grdAccounts.SetText(row, kCode, account.AccountCode);
        grdAccounts.SetText(row, kTitle, account.AccountTitle);
        grdAccounts.SetText(row, kSubsidiary, account.Subsidiary);
    } else if (grdAccounts.Col() == kDept) {
        clsCostCenter center(session_);
        if (!center.Validate("")) return;
        grdAccounts.SetText(row, kDept, center.Code);
        grdAccounts.SetText(row, kTitle,
                            module1::GetAcctName(session_.cn(), grdAccounts.GetText(row, kCode), center.Code));
    }
    grdAccounts_AfterValidate();
}

void frmJournEntry::grdAccounts_AfterValidate() {
    pasted_.reset();
    DisplayDebitCredit();
    DisplayAccounts();
}

bool frmJournEntry::checkLines() {
    const auto fault = faultOf(lines());
    if (!fault) return true;
    switch (fault->kind) {
        case JournalFault::Kind::Unbalanced:
            MsgBox(fault->message, Icon::Stop, "Warning");
            grdAccounts.setFocus();
            break;
        case JournalFault::Kind::AccountMissing:
            MsgBox(fault->message, Icon::Exclamation);
            grdAccounts.moveTo(fault->line, kCode);
            grdAccounts.setFocus();
            break;
        case JournalFault::Kind::DepartmentMissing:
            MsgBox(fault->message, Icon::Exclamation);
            grdAccounts.moveTo(fault->line, kDept);
            grdAccounts.setFocus();
            break;
    }
    return false;
}

void frmJournEntry::cmdOption0_Click() {
    FillSubsidiaryColumn();
    if (!bookOpen()) return;
    DisplayDebitCredit();
    if (!checkLines()) return;
    run("Save_Routine", [this] { Save_Routine(); });
}

void frmJournEntry::Save_Routine() {
    const bool isNew = FormMode_ == "NEW";
    JournalBatch batch{.FormMode = FormMode_,
                       .Batch = CurrentBatch_,
                       .Printed = printed_,
                       .BatchDate = dtpBatchDate.value(),
                       .Particular = txtParticular.text(),
                       .BatchType = session_.BookCode() == "JV" ? GetBatchType() : session_.BookCode(),
                       .Lines = lines(),
                       .HasSubCode = HasSubCode_};
    SaveJournalBatch(session_, batch);
    CurrentBatch_ = batch.Batch;
    FormMode_ = batch.FormMode;
    session_.CurrentBatch = CurrentBatch_;
    leaving_ = true;
    Unload();
    const std::string number = isNew || FormMode_.empty() ? CurrentBatch_ : FormMode_;
    MsgBox("Batch " + number + " is successfully saved.", Icon::Information);
}

void frmJournEntry::Form_QueryUnload(bool& Cancel) {
    if (leaving_) return;
    Cancel = !Ask("Changes will be ignored! Do you really wish to Exit?", "Warning", Icon::Exclamation, false);
    if (Cancel) grdAccounts.setFocus();
}

void frmJournEntry::cmdOption2_Click() {
    const int row = grdAccounts.Row() < 1 ? 1 : grdAccounts.Row();
    grdAccounts.InsertRow(row);
    grdAccounts.moveTo(row, kCode);
    grdAccounts.setFocus();
}

void frmJournEntry::cmdOption3_Click() {
    if (!Ask("Are you sure you want to delete this row ?", " Warning", Icon::Question)) return;
    const int row = grdAccounts.Row();
    grdAccounts.RemoveRow(row);
    grdAccounts.moveTo(row < grdAccounts.Rows() ? row : grdAccounts.Rows() - 1, kCode);
    grdAccounts.setFocus();
    grdAccounts_AfterValidate();
}

void frmJournEntry::cmdOption6_Click() {
    const bool journal = session_.BookTable() == "JV";
    if (!Ask(std::string("Are you sure you want to ") + (journal ? "cancel" : "delete") + " this batch ?", "Warning",
             Icon::Exclamation, false)) {
        return;
    }
    // a closed month keeps its batches, here as at saving
    if (!bookOpen()) return;
    DropJournalBatch(session_, CurrentBatch_);
    leaving_ = true;
    Unload();
}

}  // namespace kv
