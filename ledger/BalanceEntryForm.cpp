#include "ledger/BalanceEntryForm.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/LookupClass.h"
#include "ledger/clsAccount.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/QuietDialogs.h"

namespace kv {
namespace {

constexpr std::size_t kRefusalsShown = 10;

std::string amountText(Money amount) { return amount.isZero() ? std::string() : Format(amount, "#,##0.00##"); }

bool sameLine(const BalanceLine& a, const BalanceLine& b) {
    return a.Code == b.Code && a.Dept == b.Dept && a.Debit == b.Debit && a.Credit == b.Credit;
}

std::string cellAt(const std::vector<std::string>& cells, std::size_t at) {
    return at < cells.size() ? std::string(trimBlanks(cells[at])) : std::string();
}

/// The amount in a spreadsheet's cell; nothing where it is no amount.
std::optional<Money> pastedAmount(std::string text) {
    text = std::string(trimBlanks(replaceAll(text, ",", "")));
    if (text.empty() || text == "-") return Money();
    return Money::parse(text);
}

}  // namespace

BalanceEntryForm::BalanceEntryForm(Session& session, std::string name, Columns columns)
    : Form(std::move(name), "Data Entry"), session_(session), columns_(columns) {
    grdAccounts.onShowEntry = [this](bool& refused) { grdAccounts_EnterCell(refused); };
    grdAccounts.onPassOver = [this](int row, int col, bool& pass) { grdAccounts_PassOver(row, col, pass); };
    grdAccounts.onValidateEntry = [this](bool& cancel) { grdAccounts_ValidateEntry(cancel); };
    grdAccounts.onBrowse = [this] { grdAccounts_Browse(); };
    grdAccounts.onAfterValidate = [this] { DisplayTotals(); };
    grdAccounts.onRowColChange = [this] { lblAccount.setText(grdAccounts.GetText(grdAccounts.Row(), columns_.Title)); };
    const auto usual = grdAccounts.pasted;
    grdAccounts.pasted = [this, usual](int row, int col, const Block& block) {
        if (col == columns_.Code) {
            run("PasteByAccount", [&] { PasteByAccount(block); });
        } else {
            usual(row, col, block);
        }
    };
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.onClick = [this] { cmdOption1_Click(); };
    cmdOption2.onClick = [this] { Unload(); };
    shortcut("F7", "AddRow", [this] { AddRow(); });
    shortcut("F8", "DeleteRow", [this] { DeleteRow(); });
    shortcut("Ctrl+S", "cmdOption0_Click", [this] {
        if (validateActive()) cmdOption0_Click();
    });
    cmdOption0.primary();
    cmdOption2.cancels();
    for (TextBox* total : {&txtDebits, &txtCredits, &txtDifference}) {
        total->setLocked(true);
        total->align(Align::Right);
        total->width(18);
    }
    lblAccount.look(Label::Look::FigureBold);
    lblAccount.setAlign(Align::Left);
    lblPosted.look(Label::Look::Hint);
    lblTally.setAlert(true);
}

Layout BalanceEntryForm::totals() {
    return column(
        {row({expand(lblAccount), lblTally}),
         row({stretch(), fields({{"Debits", txtDebits}, {"Credits", txtCredits}, {"Difference", txtDifference}}, 3)})});
}

void BalanceEntryForm::InitGrid(std::string_view format, const std::vector<int>& widths_twips) {
    grdAccounts.FormatString(format);
    for (int col = 0; col < grdAccounts.Cols(); ++col) {
        grdAccounts.SetColWidth(col, widths_twips[static_cast<std::size_t>(col)]);
        const bool open = col == columns_.Code || (col == columns_.Dept && columns_.Dept > 0) ||
                          col == columns_.Debit || col == columns_.Credit;
        grdAccounts.SetColumnLock(col, !open);
    }
    grdAccounts.setStretchColumn(columns_.Title);
    grdAccounts.SetColumnBrowse(columns_.Code, true);
    grdAccounts.SetColumnFilter(columns_.Code, EntryFilter::UpperCase);
    if (columns_.Dept > 0) {
        grdAccounts.SetColumnBrowse(columns_.Dept, true);
        grdAccounts.SetColumnFilter(columns_.Dept, EntryFilter::UpperCase);
    }
    grdAccounts.SetColumnFilter(columns_.Debit, EntryFilter::PositiveNumber);
    grdAccounts.SetColumnFilter(columns_.Credit, EntryFilter::PositiveNumber);
}

void BalanceEntryForm::ClearLines() {
    grdAccounts.SetRows(1);
    grdAccounts.SetRows(2);
    grdAccounts.Refresh();
}

void BalanceEntryForm::AppendLine(int row, const BalanceLine& line, const std::string& title) {
    while (row >= grdAccounts.Rows()) grdAccounts.InsertRow(grdAccounts.Rows());
    grdAccounts.SetText(row, columns_.Code, line.Code);
    if (columns_.Dept > 0) {
        clsAccount account(session_);
        account.Search(line.Code, "ALL");
        grdAccounts.SetText(row, columns_.Dept, line.Dept);
        grdAccounts.SetText(row, columns_.Subsidiary, account.Found ? account.Subsidiary : std::string());
    }
    grdAccounts.SetText(row, columns_.Title, titleOf(line.Code, title));
    grdAccounts.SetText(row, columns_.Debit, amountText(line.Debit));
    grdAccounts.SetText(row, columns_.Credit, amountText(line.Credit));
}

std::vector<BalanceLine> BalanceEntryForm::lines() const {
    std::vector<BalanceLine> found;
    for (int row = 1; row < grdAccounts.Rows(); ++row) {
        BalanceLine line;
        line.Code = module1::ATrim(grdAccounts.GetText(row, columns_.Code));
        if (columns_.Dept > 0) line.Dept = module1::ATrim(grdAccounts.GetText(row, columns_.Dept));
        line.Debit = module1::Value(grdAccounts.GetText(row, columns_.Debit));
        line.Credit = module1::Value(grdAccounts.GetText(row, columns_.Credit));
        found.push_back(std::move(line));
    }
    return found;
}

void BalanceEntryForm::DisplayTotals() {
    Money debits;
    Money credits;
    for (const BalanceLine& line : lines()) {
        debits += line.Debit;
        credits += line.Credit;
    }
    txtDebits.setText(Format(debits, "#,##0.00"));
    txtCredits.setText(Format(credits, "#,##0.00"));
    txtDifference.setText(Format(debits - credits, "#,##0.00##"));
    lblTally.setText(debits == credits ? "" : "Debits and credits do not tally");
}

bool BalanceEntryForm::changed() const {
    const std::vector<BalanceLine> now = lines();
    return !std::equal(now.begin(), now.end(), stored_.begin(), stored_.end(), sameLine);
}

void BalanceEntryForm::markUnchanged() { stored_ = lines(); }

void BalanceEntryForm::grdAccounts_EnterCell(bool& refused) {
    refused = closedForEntry(grdAccounts.Row(), grdAccounts.Col());
}

bool BalanceEntryForm::closedForEntry(int row, int col) const {
    const bool noAccount = col != columns_.Code && grdAccounts.GetText(row, columns_.Code).empty();
    const bool noDept =
        columns_.Dept > 0 && col == columns_.Dept && grdAccounts.GetText(row, columns_.Subsidiary) != "1";
    return noAccount || noDept;
}

/// Enter goes from amount to amount: past accounts that stand and past the side whose other side holds the amount.
void BalanceEntryForm::grdAccounts_PassOver(int row, int col, bool& pass) const {
    const auto filled = [&](int column) { return !grdAccounts.GetText(row, column).empty(); };
    pass = closedForEntry(row, col) || (col == columns_.Code && filled(col)) ||
           (col == columns_.Debit && !filled(col) && filled(columns_.Credit)) ||
           (col == columns_.Credit && !filled(col) && filled(columns_.Debit));
}

void BalanceEntryForm::grdAccounts_ValidateEntry(bool& Cancel) {
    if (grdAccounts.Col() == columns_.Code) {
        ValidateAccount(Cancel);
    } else if (columns_.Dept > 0 && grdAccounts.Col() == columns_.Dept) {
        ValidateDept(Cancel);
    }
}

int BalanceEntryForm::rowOf(const std::string& code, const std::string& dept, int except) const {
    for (int row = 1; row < grdAccounts.Rows(); ++row) {
        if (row == except || grdAccounts.GetText(row, columns_.Code) != code) continue;
        if (onePerAccount() || grdAccounts.GetText(row, columns_.Dept) == dept) return row;
    }
    return 0;
}

void BalanceEntryForm::ValidateAccount(bool& Cancel) {
    clsAccount account(session_);
    Cancel = !account.Validate(grdAccounts.TextEntry(), "ALL") || !TakeAccount(grdAccounts.Row(), account);
    if (!Cancel) grdAccounts.SetTextEntry(account.AccountCode);
}

/// Fills what stands beside the code of an account. False, after a message: another line has the account already.
bool BalanceEntryForm::TakeAccount(int row, const clsAccount& account) {
    const int other = onePerAccount() ? rowOf(account.AccountCode, "", row) : 0;
    if (other > 0) {
        MsgBox("Account " + account.AccountCode + " stands in line " + std::to_string(other) + " already.",
               Icon::Exclamation);
        return false;
    }
    grdAccounts.SetText(row, columns_.Title, titleOf(account.AccountCode, account.AccountTitle));
    if (columns_.Dept == 0) return true;
    grdAccounts.SetText(row, columns_.Subsidiary, account.Subsidiary);
    if (account.Subsidiary != "1") grdAccounts.SetText(row, columns_.Dept, "");
    return true;
}

void BalanceEntryForm::ValidateDept(bool& Cancel) {
    clsCostCenter center(session_);
    Cancel = !center.Validate(grdAccounts.TextEntry());
    if (!Cancel) grdAccounts.SetTextEntry(center.Code);
}

void BalanceEntryForm::grdAccounts_Browse() {
    const int row = grdAccounts.Row();
    if (grdAccounts.Col() == columns_.Code) {
        clsAccount account(session_);
        if (!account.Validate("", "ALL") || !TakeAccount(row, account)) return;
        grdAccounts.SetText(row, columns_.Code, account.AccountCode);
    } else if (columns_.Dept > 0 && grdAccounts.Col() == columns_.Dept) {
        clsCostCenter center(session_);
        if (center.Validate("")) grdAccounts.SetText(row, columns_.Dept, center.Code);
    }
    DisplayTotals();
}

void BalanceEntryForm::AddRow() {
    const int row = grdAccounts.Row() < 1 ? 1 : grdAccounts.Row();
    grdAccounts.InsertRow(row);
    grdAccounts.moveTo(row, columns_.Code);
    grdAccounts.setFocus();
}

void BalanceEntryForm::DeleteRow() {
    if (!Ask("Are you sure you want to delete this row ?", " Warning", Icon::Question)) return;
    const int row = grdAccounts.Row();
    grdAccounts.RemoveRow(row);
    grdAccounts.moveTo(row < grdAccounts.Rows() ? row : grdAccounts.Rows() - 1, columns_.Code);
    grdAccounts.setFocus();
    DisplayTotals();
}

/// The line of an account: the one that has it, else an empty one, else a new one.
int BalanceEntryForm::rowForPaste(const std::string& code, const std::string& dept) {
    if (const int row = rowOf(code, dept); row > 0) return row;
    for (int row = 1; row < grdAccounts.Rows(); ++row) {
        if (grdAccounts.GetText(row, columns_.Code).empty()) return row;
    }
    grdAccounts.InsertRow(grdAccounts.Rows());
    return grdAccounts.Rows() - 1;
}

/// One pasted line: account, department where the screen has them, any number of titles, debit and credit at the end.
/// The reason where it is refused, and nothing of it is taken then.
std::string BalanceEntryForm::PasteLine(const std::vector<std::string>& cells) {
    const std::string code = UCase(cellAt(cells, 0));
    if (code.empty()) return {};
    clsAccount account(session_);
    account.Search(code, "ALL");
    if (!account.Found) return "there is no such account";
    std::size_t from = 1;
    std::string dept;
    if (columns_.Dept > 0 && cells.size() > 3) {
        dept = UCase(cellAt(cells, from++));
        QuietDialogs quiet;
        clsCostCenter center(session_);
        if (!dept.empty() && (account.Subsidiary != "1" || !center.Validate(dept)))
            return "no department \"" + dept + "\"";
    }
    // a title may stand before the two amounts
    if (cells.size() > from + 2) from = cells.size() - 2;
    const std::optional<Money> debit = pastedAmount(cellAt(cells, from));
    const std::optional<Money> credit = pastedAmount(cellAt(cells, from + 1));
    if (!debit || !credit) return "\"" + cellAt(cells, debit ? from + 1 : from) + "\" is no amount";
    if (*debit < Money() || *credit < Money()) return "an amount is less than nothing";
    AppendLine(rowForPaste(code, dept), {code, dept, *debit, *credit}, account.AccountTitle);
    return {};
}

/// A spreadsheet's lines find their accounts by themselves, in whatever order they come.
void BalanceEntryForm::PasteByAccount(const Block& block) {
    grdAccounts.closeEditor();
    std::vector<std::string> refusals;
    for (const std::vector<std::string>& cells : block) {
        const std::string reason = PasteLine(cells);
        if (!reason.empty()) refusals.push_back(cellAt(cells, 0) + ": " + reason);
    }
    DisplayTotals();
    if (refusals.empty()) return;
    const std::size_t count = refusals.size();
    if (count > kRefusalsShown) refusals.resize(kRefusalsShown);
    MsgBox(std::to_string(count) + " pasted line" + (count == 1 ? " was" : "s were") + " refused:\n" +
               join(refusals, "\n") + (count > kRefusalsShown ? "\n..." : ""),
           Icon::Exclamation);
}

void BalanceEntryForm::cmdOption0_Click() {
    if (!mayBeSaved()) return;
    DisplayTotals();
    int number = 0;
    for (const BalanceLine& line : lines()) {
        ++number;
        if (line.Code.empty() && !(line.Debit.isZero() && line.Credit.isZero())) {
            MsgBox("Please enter an account for line #" + std::to_string(number) + ".", Icon::Exclamation);
            grdAccounts.moveTo(number, columns_.Code);
            grdAccounts.setFocus();
            return;
        }
    }
    if (module1::Value(txtDebits.text()) != module1::Value(txtCredits.text())) {
        MsgBox("Total Debit and and Total Credit do not tally!", Icon::Exclamation);
        grdAccounts.setFocus();
        return;
    }
    if (!Ask("Do you want to save details?")) return;
    run("SaveRoutine", [this] { SaveRoutine(); });
}

void BalanceEntryForm::cmdOption1_Click() {
    if (!Ask("Changes will be ignored! Do you wish to ignore?", "Warning!", Icon::Exclamation)) return;
    LoadAccountDetails();
}

void BalanceEntryForm::Form_QueryUnload(bool& Cancel) {
    if (leaving_) return;
    Cancel = !Ask("Changes will not be saved! Do you wish to close?", "Warning!", Icon::Exclamation);
}

}  // namespace kv
