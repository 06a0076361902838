#include "core/frmBooksCheck.h"

#include <algorithm>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

constexpr std::size_t kRowsShownMax = 5000;
constexpr int kColumnMin = 9;
constexpr int kColumnMax = 40;

bool isAmount(DataType type) { return type == DataType::Currency || type == DataType::Decimal; }

std::string shownValue(const Value& value, DataType type) {
    if (value.isNull()) return {};
    if (value.isDate()) return Format(value.date(), "MM/dd/yyyy");
    return isAmount(type) ? Format(value.money(), "#,##0.00") : value.text();
}

/// "LedgerAmount" as "Ledger Amount".
std::string spaced(const std::string& name) {
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool upper = name[i] >= 'A' && name[i] <= 'Z';
        if (upper && i > 0 && name[i - 1] >= 'a' && name[i - 1] <= 'z') out += ' ';
        out += name[i];
    }
    return out;
}

}  // namespace

frmBooksCheck::frmBooksCheck(Session& session) : Form("frmBooksCheck", "Books Check"), session_(session) {
    lvwChecks.setColumns({{"Check", 44, Align::Left, true}, {"Result", 9}});
    lvwChecks.rows(17);
    lvwChecks.setHelp("Each check finds nothing while the books are sound.");
    lvwChecks.onItemClick = [this](int) { ShowRows(); };
    lblTitle.look(Label::Look::Heading);
    lblExplanation.wrap(3);
    lblRows.look(Label::Look::Hint);
    lblResult.look(Label::Look::Hint);
    lvwRows.setHelp("Enter opens the document behind a row.");
    lvwRows.onDblClick = [this](int) { cmdOpen_Click(); };
    lvwRows.onItemClick = [this](int) { cmdOpen.setEnabled(lvwRows.selected() >= 0); };
    cmdRun.onClick = [this] { RunChecks(); };
    cmdOpen.onClick = [this] { cmdOpen_Click(); };
    cmdCopy.onClick = [this] { cmdCopy_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({
        expand(row({width(lvwChecks, 58), expand(column({lblTitle, lblExplanation, expand(lvwRows), lblRows}))})),
        prgRun,
        row({lblResult, stretch(), cmdRun, cmdOpen, cmdCopy, cmdClose}),
    }));
    setIcon("task-complete");
    setSize(1240, 620);
    setFirstFocus(lvwChecks);
}

void frmBooksCheck::Form_Load() {
    checks_ = booksChecks();
    RunChecks();
}

void frmBooksCheck::RunChecks() {
    const Hourglass busy;
    outcomes_.assign(checks_.size(), Outcome());
    ShowChecks();
    prgRun.setVisible(true);
    prgRun.setRange(static_cast<int>(checks_.size()));
    std::size_t faulty = 0;
    std::size_t first = checks_.size();
    for (std::size_t i = 0; i < checks_.size(); ++i) {
        RunCheck(i);
        if (!outcomes_[i].rows.empty() || !outcomes_[i].failure.empty()) {
            ++faulty;
            first = std::min(first, i);
        }
        prgRun.setValue(static_cast<int>(i) + 1);
    }
    prgRun.setVisible(false);
    ShowChecks();
    lvwChecks.select(static_cast<int>(first < checks_.size() ? first : 0));
    ShowRows();
    const std::string result =
        faulty == 0 ? "All " + std::to_string(checks_.size()) + " checks passed: the books are sound"
                    : std::to_string(faulty) + " of " + std::to_string(checks_.size()) + " checks found something";
    lblResult.setText(result);
    lblResult.setAlert(faulty > 0);
    module1::SaveUserLog(session_, "Books Check: " + result);
}

void frmBooksCheck::RunCheck(std::size_t index) {
    Outcome& outcome = outcomes_[index];
    try {
        outcome.rows = session_.cn().Open(checks_[index].query);
    } catch (const Error& failure) {
        outcome.failure = failure.description;
    }
    outcome.done = true;
}

void frmBooksCheck::ShowChecks() {
    std::vector<ListView::Item> items;
    for (std::size_t i = 0; i < checks_.size(); ++i) {
        const Outcome& outcome = outcomes_[i];
        const std::size_t count = outcome.rows.recordCount();
        const std::string result = !outcome.done              ? ""
                                   : !outcome.failure.empty() ? "not run"
                                   : count == 0               ? "sound"
                                                              : std::to_string(count) + (count == 1 ? " row" : " rows");
        ListView::Item item{checks_[i].name, {checks_[i].title, result}};
        item.icon = !outcome.done ? "" : count == 0 && outcome.failure.empty() ? "checkmark" : "flag";
        items.push_back(std::move(item));
    }
    lvwChecks.setItems(std::move(items));
}

const frmBooksCheck::Outcome* frmBooksCheck::shownOutcome() const {
    const std::string name = lvwChecks.selectedKey();
    for (std::size_t i = 0; i < checks_.size(); ++i) {
        if (checks_[i].name == name) return &outcomes_[i];
    }
    return nullptr;
}

void frmBooksCheck::ShowRows() {
    const Outcome* outcome = shownOutcome();
    if (!outcome) return;
    const BooksCheck& check = checks_[static_cast<std::size_t>(outcome - outcomes_.data())];
    lblTitle.setText(check.title);
    lblExplanation.setText(check.explanation);
    std::vector<ListColumn> columns;
    for (const Field& field : outcome->rows.fields()) {
        const int wide =
            std::clamp(std::max(field.size, static_cast<int>(field.name.size()) + 3), kColumnMin, kColumnMax);
        columns.push_back(
            {spaced(field.name), isAmount(field.type) ? 15 : wide, isAmount(field.type) ? Align::Right : Align::Left});
    }
    std::vector<ListView::Item> items;
    for (const Row& row : outcome->rows.rows()) {
        if (items.size() == kRowsShownMax) break;
        ListView::Item item;
        for (std::size_t c = 0; c < row.size(); ++c)
            item.cells.push_back(shownValue(row[c], outcome->rows.fields()[c].type));
        item.key = std::to_string(items.size());
        items.push_back(std::move(item));
    }
    const std::size_t count = outcome->rows.recordCount();
    lblRows.setText(!outcome->failure.empty() ? "The check could not be run: " + outcome->failure
                    : count == 0              ? "Nothing was found."
                    : count > kRowsShownMax
                        ? "The first " + std::to_string(kRowsShownMax) + " of " + std::to_string(count) + " rows"
                        : std::to_string(count) + (count == 1 ? " row" : " rows"));
    lblRows.setAlert(!outcome->failure.empty());
    lvwRows.setColumns(std::move(columns));
    lvwRows.setItems(std::move(items));
    if (count > 0) lvwRows.select(0);
    cmdOpen.setEnabled(count > 0);
    cmdCopy.setEnabled(count > 0);
}

void frmBooksCheck::cmdOpen_Click() {
    const Outcome* outcome = shownOutcome();
    if (!outcome || lvwRows.selected() < 0) return;
    const Row& row = outcome->rows.rows()[std::stoul(lvwRows.selectedKey())];
    const RowDocument document = documentOf(outcome->rows, row);
    if (document.screen.empty() || !session_.screens.hasDocuments(document.screen)) {
        MsgBox("This row stands for no single document that this version can open.", Icon::Information);
        return;
    }
    session_.screens.openDocument(session_, document.screen, document.key);
}

/// The rows as a table for a spreadsheet.
void frmBooksCheck::cmdCopy_Click() {
    std::vector<std::string> heads;
    for (const ListColumn& one : lvwRows.columns()) heads.push_back(one.heading);
    std::string text = join(heads, "\t") + "\n";
    for (int row = 0; row < lvwRows.count(); ++row) text += join(lvwRows.item(row).cells, "\t") + "\n";
    setClipboard(text);
}

}  // namespace kv
