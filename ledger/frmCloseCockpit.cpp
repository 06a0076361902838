#include "ledger/frmCloseCockpit.h"

#include <algorithm>

#include "core/BookState.h"
#include "core/MainMenu.h"
#include "core/Session.h"
#include "core/module1.h"
#include "ledger/PeriodTasks.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "reporting/SelectDialog.h"

namespace kv {
namespace {

constexpr int kMonths = 12;
constexpr int kBookColumn_px = 190;
constexpr int kMonthColumn_px = 92;
constexpr int kReasonMax = 200;

}  // namespace

frmCloseCockpit::frmCloseCockpit(Session& session) : Form("frmCloseCockpit", "Close Cockpit"), session_(session) {
    lblYear.look(Label::Look::Heading);
    lblCell.look(Label::Look::Heading);
    lblTotals.look(Label::Look::Hint);
    lblTrouble.setAlert(true);
    grdBoard.rowsShown(6);
    grdBoard.setHelp("Arrows choose a book and month. Enter goes to what stands in its way.");
    lvwBatches.setColumns(previewColumns());
    lvwBatches.emptyText("The book has no batch in this month.");
    lvwChanged.emptyText("Nothing changed since the close.");
    lvwBatches.rows(7);
    lvwBatches.setHelp("Enter opens the batch.");
    lvwChanged.setColumns({{"Batch", 15},
                           {"Date", 11},
                           {"Particulars", 38, Align::Left, true},
                           {"Debit before", 15, Align::Right},
                           {"Debit now", 15, Align::Right},
                           {"Change", 12}});
    lvwChanged.setHelp("What is not as it was when the month was closed. Enter opens the batch.");
    wire();
    setLayout(column({
        row({lblYear, stretch(), cmdPrevious, cmdNext}),
        grdBoard,
        row({lblCell, stretch(), lblStory}),
        lblTrouble,
        expand(tabs(tabDetail, {{"&Batches", lvwBatches}, {"Changed &since the close", lvwChanged}})),
        row({lblTotals, stretch(), cmdCloseMonth, cmdReopen, cmdPrepare, cmdClose}),
    }));
    setIcon("view-calendar");
    setSize(1340, 700);
    setFirstFocus(grdBoard);
}

void frmCloseCockpit::wire() {
    grdBoard.canEnter = [](int, int) { return false; };
    grdBoard.entered = [this](int, int) { ShowCell(); };
    grdBoard.doubleClicked = [this](int, int) { GoToCell(); };
    grdBoard.keyDown = [this](const std::string& key) {
        if (key != "Enter") return false;
        GoToCell();
        return true;
    };
    lvwBatches.onDblClick = [this](int) { OpenDocument(lvwBatches); };
    lvwChanged.onDblClick = [this](int) { OpenDocument(lvwChanged); };
    cmdPrevious.onClick = [this] { moveYear(-1); };
    cmdNext.onClick = [this] { moveYear(1); };
    cmdCloseMonth.onClick = [this] { cmdCloseMonth_Click(); };
    cmdReopen.onClick = [this] { cmdReopen_Click(); };
    cmdPrepare.onClick = [this] { cmdPrepare_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    shortcut("F5", "LoadBoard", [this] { LoadBoard(); });
}

void frmCloseCockpit::Form_Load() {
    module1::SaveUserLog(session_, "Open Close Cockpit");
    const Date working = dateOfPeriod(session_.Sys.glperiod);
    year_ = working.year();
    LoadBoard();
    // the working month of the first book, to begin with
    grdBoard.moveTo(1, working.month());
    ShowCell();
}

bool frmCloseCockpit::maySee(std::string_view book) const {
    const BookEntry* entry = findBook(book);
    return entry && session_.UserAccess.CanAccess(rightOf(entry->button));
}

void frmCloseCockpit::LoadBoard() {
    const Hourglass busy;
    board_ = readCloseBoard(session_.cn(), std::to_string(year_) + "01", kMonths,
                            session_.Parameters.EnableTransactionPosting(), Today());
    std::vector<GridColumn> columns{{"Book", kBookColumn_px}};
    for (const BoardCell& month : board_.front().months) {
        columns.push_back({shortPeriodName(month.period), kMonthColumn_px, Align::Center});
    }
    const int row = grdBoard.row();
    const int col = grdBoard.col();
    grdBoard.setColumns(std::move(columns));
    grdBoard.setRows(static_cast<int>(board_.size()) + 1);
    for (int r = 1; r <= static_cast<int>(board_.size()); ++r) {
        const BoardRow& book = board_[static_cast<std::size_t>(r) - 1];
        grdBoard.setCell(r, 0, book.name);
        for (int c = 1; c <= kMonths; ++c) {
            const BoardCell& cell = book.months[static_cast<std::size_t>(c) - 1];
            grdBoard.setCell(r, c, cellText(cell));
            grdBoard.setCellTint(r, c, cellTint(cell.state));
        }
    }
    lblYear.setText("The books of " + std::to_string(year_));
    if (row > 0) grdBoard.moveTo(row, col);
    ShowCell();
}

const BoardCell* frmCloseCockpit::current() const {
    const int row = grdBoard.row();
    const int col = std::max(grdBoard.col(), 1);  // the book's name stands for its first month
    if (row < 1 || row > static_cast<int>(board_.size()) || col > kMonths) return nullptr;
    return &board_[static_cast<std::size_t>(row) - 1].months[static_cast<std::size_t>(col) - 1];
}

void frmCloseCockpit::ShowCell() {
    const BoardCell* cell = current();
    const bool book = cell && cell->book != "GL";
    const bool mine = book && maySee(cell->book);
    const bool closed = book && cell->facts.closed;
    const std::string rights = session_.CurrentUser.UserRights();
    cmdCloseMonth.setEnabled(mine && !closed);
    cmdReopen.setEnabled(mine && closed && rights.find_first_of("SA") != std::string::npos);
    cmdPrepare.setEnabled(cell != nullptr);
    lblCell.setText(cell ? board_[static_cast<std::size_t>(grdBoard.row()) - 1].name + ", " + periodName(cell->period)
                         : std::string("Choose a month"));
    lblStory.setText(cell ? cellStory(*cell) : std::string());
    lblTrouble.setText("");
    lblTotals.setText("");
    lvwBatches.clear();
    lvwChanged.clear();
    if (book && !mine) lblTrouble.setText("You have no right to this book.");
    if (!mine) return;
    ShowBatches(*cell);
    ShowChanged(*cell);
}

void frmCloseCockpit::ShowBatches(const BoardCell& cell) {
    const ClosePreview preview = readClosePreview(session_.cn(), cell.book, cell.period);
    std::vector<ListView::Item> items = previewItems(preview, cell.book);
    const bool any = !items.empty();
    lvwBatches.setItems(std::move(items));
    if (any) lvwBatches.select(0);
    if (!cell.facts.closed) lblTrouble.setText(troubleText(preview));
    lblTotals.setText(totalsText(preview));
}

void frmCloseCockpit::ShowChanged(const BoardCell& cell) {
    std::vector<ListView::Item> items;
    for (const ChangedBatch& one : readChangedBatches(session_.cn(), cell.book, cell.period)) {
        items.push_back({cell.book + " " + one.batch,
                         {one.display, one.date, one.particular, Format(one.before, "#,##0.00"),
                          Format(one.now, "#,##0.00"), one.change}});
    }
    const bool any = !items.empty();
    lvwChanged.setItems(std::move(items));
    if (any) lvwChanged.select(0);
    tabDetail.setIndex(any ? 1 : 0);
}

/// Enter on a month: to what stands in its way, or to the button that is next.
void frmCloseCockpit::GoToCell() {
    const BoardCell* cell = current();
    if (!cell) return;
    if (cell->book == "GL") return cmdPrepare.setFocus();
    if (lvwChanged.count() > 0) return lvwChanged.setFocus();
    const bool blocked = cell->state == MonthState::Unposted || cell->state == MonthState::Unbalanced;
    if (blocked || (cell->facts.closed && lvwBatches.count() > 0)) return lvwBatches.setFocus();
    if (cmdCloseMonth.enabled()) cmdCloseMonth.setFocus();
}

void frmCloseCockpit::moveYear(int years) {
    year_ += years;
    LoadBoard();
}

void frmCloseCockpit::OpenDocument(const ListView& list) {
    const BoardCell* cell = current();
    if (!cell || list.selected() < 0) return;
    const BookEntry* book = findBook(cell->book);
    if (!session_.screens.hasDocuments(book->documents)) {
        MsgBox(std::string("The documents of the ") + book->name + " are not part of this version.", Icon::Information);
        return;
    }
    session_.screens.openDocument(session_, book->documents, list.selectedKey());
    LoadBoard();
}

void frmCloseCockpit::cmdCloseMonth_Click() {
    const BoardCell* cell = current();
    if (!cell) return;
    const std::string book = cell->book;
    const std::string period = cell->period;
    const BookForAWhile selected(session_, *findBook(book));
    if (book == "AP" || book == "CD") {
        CloseThrough(session_, book == "AP" ? PeriodMode::CloseAP : PeriodMode::CloseCDB, period);
    } else {
        PostGLPeriod(session_, period);
    }
    LoadBoard();
}

void frmCloseCockpit::cmdReopen_Click() {
    const BoardCell* cell = current();
    if (!cell) return;
    const std::string book = cell->book;
    const std::string period = cell->period;
    const auto reason = InputBox("Why is the month to be opened again?", "Reopen " + periodName(period));
    if (!reason) return;
    if (module1::ATrim(*reason).empty()) {
        MsgBox("Please give a reason.", Icon::Exclamation);
        return;
    }
    UnPostBook(session_, book, period, midChars(module1::ATrim(*reason), 0, kReasonMax));
    LoadBoard();
}

void frmCloseCockpit::cmdPrepare_Click() {
    const BoardCell* cell = current();
    if (!cell) return;
    ReportPreparation(session_, cell->period);
    MsgBox("Financial Report Preparation Completed.", Icon::Information, "Message");
    LoadBoard();
}

}  // namespace kv
