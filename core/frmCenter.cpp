#include "core/frmCenter.h"

#include "core/BookState.h"
#include "core/Session.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr int kMonthsShown = 6;

std::string counted(int count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// What waits in a book: batches of open months, and months before today's that are not closed.
void addWaiting(std::vector<ListView::Item>& items, const BookState& book, const std::string& today) {
    if (book.pending > 0) {
        items.push_back(
            {book.code,
             {book.name, counted(book.pending, "batch waits for its close", "batches wait for their close")}});
    }
    for (const BookMonth& month : book.months) {
        if (month.closed || month.period >= today || month.period < book.workingPeriod) continue;
        items.push_back({book.code + month.period, {book.name, periodName(month.period) + " is not closed"}});
    }
}

}  // namespace

frmCenter::frmCenter(Session& session) : Form("frmCenter", "Home", Window::Child), session_(session) {
    lblCompany.look(Label::Look::Heading);
    lblUser.look(Label::Look::Hint);
    lblPrepared.look(Label::Look::Hint);
    lvwBooks.rows(5);
    lvwWaiting.rows(4);
    lvwWaiting.emptyText("Nothing waits.");
    lvwWaiting.setColumns({{"Book", 26}, {"What waits", 40, Align::Left, true}});
    cmdRefresh.onClick = [this] { ShowState(); };
    shortcut("F5", "cmdRefresh_Click", [this] { ShowState(); });
    setLayout(column({
        row({column({lblCompany, lblUser}), stretch(), cmdRefresh}),
        group("Books", lvwBooks),
        expand(group("Waiting", lvwWaiting)),
        lblPrepared,
    }));
    setHome();
}

void frmCenter::Form_Load() {
    lblCompany.setText(session_.Sys.Company);
    ShowState();
}

void frmCenter::ShowState() {
    lblUser.setText(properCase(session_.CurrentUser.EmployeeName()) + "  |  " + Format(Today(), "dddd, MMMM d, yyyy"));
    const std::vector<BookState> books = readBookStates(session_.cn(), Today(), kMonthsShown);
    std::vector<ListColumn> columns{{"Book", 26, Align::Left, true}, {"Working month", 14}};
    if (!books.empty()) {
        for (const BookMonth& month : books.front().months)
            columns.push_back({shortPeriodName(month.period), 10, Align::Center});
    }
    columns.push_back({"Waiting", 9, Align::Right});
    lvwBooks.setColumns(std::move(columns));
    std::vector<ListView::Item> rows;
    std::vector<ListView::Item> waiting;
    const std::string today = Format(Today(), "yyyyMM");
    for (const BookState& book : books) {
        ListView::Item item{book.code, {book.name, shortPeriodName(book.workingPeriod)}};
        for (const BookMonth& month : book.months) item.cells.emplace_back(month.closed ? "closed" : "open");
        item.cells.push_back(std::to_string(book.pending));
        rows.push_back(std::move(item));
        addWaiting(waiting, book, today);
    }
    const Preparation prepared = readPreparation(session_.cn());
    if (prepared.any && prepared.stale) {
        waiting.push_back({"stale",
                           {"Financial statements",
                            "Prepared figures of " + periodName(prepared.period) + " are older than the ledger"}});
    }
    lvwBooks.setItems(std::move(rows));
    lvwWaiting.setItems(std::move(waiting));
    lblPrepared.setText(prepared.any ? "Statements prepared for " + periodName(prepared.period) + " on " +
                                           Format(prepared.at, "MM/dd/yyyy HH:nn") + " by " + prepared.by
                                     : "Statements have not been prepared yet");
}

}  // namespace kv
