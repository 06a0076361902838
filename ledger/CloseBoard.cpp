#include "ledger/CloseBoard.h"

#include <algorithm>

#include "core/MainMenu.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "reporting/SelectDialog.h"

namespace kv {
namespace {

struct StateLook {
    MonthState state;
    Tint tint;
    const char* text;  ///< "{}" takes the count that matters
};
constexpr StateLook kLooks[] = {
    {MonthState::Idle, Tint::Idle, "-"},
    {MonthState::Open, Tint::Noted, "open"},
    {MonthState::Unposted, Tint::Waiting, "{} unposted"},
    {MonthState::Unbalanced, Tint::Bad, "{} unbalanced"},
    {MonthState::Closed, Tint::Good, "closed"},
    {MonthState::Reopened, Tint::Waiting, "reopened"},
    {MonthState::Prepared, Tint::Good, "prepared"},
    {MonthState::Stale, Tint::Bad, "stale"},
    {MonthState::Unprepared, Tint::Idle, "unprepared"},
};

const StateLook& lookOf(MonthState state) {
    return *std::find_if(std::begin(kLooks), std::end(kLooks), [&](const StateLook& l) { return l.state == state; });
}

std::string stamp(const Value& at) { return at.isNull() ? std::string() : Format(at.date(), "MM/dd/yyyy HH:nn"); }

std::vector<std::string> periodsFrom(std::string_view first, int months) {
    std::vector<std::string> periods;
    for (int i = 0; i < months; ++i) periods.push_back(module1::GetPeriod(dateOfPeriod(first).addMonths(i)));
    return periods;
}

BoardRow readStatements(Connection& cn, const std::vector<std::string>& periods, std::string_view thisMonth) {
    BoardRow row{"GL", "Statements", {}};
    for (const std::string& period : periods) {
        BoardCell cell;
        cell.book = "GL";
        cell.period = period;
        cell.state = period > thisMonth ? MonthState::Idle : MonthState::Unprepared;
        row.months.push_back(std::move(cell));
    }
    Recordset rows = cn.Open(sql("SELECT Period, PreparedAt, PreparedBy, StaleSince FROM dbo.PreparedPeriod"
                                 " WHERE Period BETWEEN '{}' AND '{}' ORDER BY Period")
                                 .text(periods.front())
                                 .text(periods.back()));
    for (; !rows.eof(); rows.moveNext()) {
        for (BoardCell& cell : row.months) {
            if (cell.period != rows["Period"].text()) continue;
            cell.state = rows["StaleSince"].isNull() ? MonthState::Prepared : MonthState::Stale;
            cell.lastAt = stamp(rows["PreparedAt"]);
            cell.lastBy = rows["PreparedBy"].text();
        }
    }
    return row;
}

}  // namespace

MonthState monthState(const MonthFacts& facts, bool posting, bool later) {
    if (facts.closed) return MonthState::Closed;
    if (facts.unbalanced > 0) return MonthState::Unbalanced;
    if (posting && facts.unposted > 0) return MonthState::Unposted;
    if (facts.reopened) return MonthState::Reopened;
    return facts.batches == 0 && later ? MonthState::Idle : MonthState::Open;
}

std::string cellText(const BoardCell& cell) {
    const int count = cell.state == MonthState::Unbalanced ? cell.facts.unbalanced : cell.facts.unposted;
    return replaceAll(lookOf(cell.state).text, "{}", Format(count, "#,##0"));
}

Tint cellTint(MonthState state) { return lookOf(state).tint; }

std::string cellStory(const BoardCell& cell) {
    const std::string when = cell.lastAt + " by " + cell.lastBy;
    switch (cell.state) {
        case MonthState::Closed:
            return cell.lastAt.empty() ? "Closed." : "Closed on " + when + ".";
        case MonthState::Prepared:
            return "Prepared on " + when + ".";
        case MonthState::Stale:
            return "Prepared on " + when + "; the ledger has changed since. Prepare the statements again.";
        case MonthState::Unprepared:
            return "The statements of this month have not been prepared.";
        default:
            break;
    }
    if (cell.book == "GL") return "";
    if (!cell.facts.reopened) return cell.facts.batches == 0 ? "There are no batches yet." : "Not closed yet.";
    return "Opened again on " + when + (cell.lastReason.empty() ? "." : ": " + cell.lastReason);
}

std::vector<BoardRow> readCloseBoard(Connection& cn, std::string_view first, int months, bool posting,
                                     const Date& today) {
    const std::vector<std::string> periods = periodsFrom(first, months);
    std::vector<BoardRow> board;
    for (const BookEntry& book : bookEntries()) {
        if (std::string_view(book.code) != "GL") board.push_back({book.code, book.name, {}});
    }
    Recordset rows = cn.Open(call("sp_Load_CloseCockpit").separator(",").text(periods.front()).text(periods.back()));
    const std::string thisMonth = module1::GetPeriod(today);
    for (; !rows.eof(); rows.moveNext()) {
        BoardCell cell;
        cell.book = rows["Book"].text();
        cell.period = rows["Period"].text();
        cell.facts.batches = static_cast<int>(rows["Batches"].integer());
        cell.facts.unposted = static_cast<int>(rows["Unposted"].integer());
        cell.facts.unbalanced = static_cast<int>(rows["Unbalanced"].integer());
        cell.facts.closed = rows["Closed"].boolean();
        cell.facts.reopened = rows["LastAction"].text() == "REOPEN";
        cell.lastAt = stamp(rows["LastAt"]);
        cell.lastBy = rows["LastBy"].text();
        cell.lastReason = rows["LastReason"].text();
        cell.state = monthState(cell.facts, posting, cell.period >= thisMonth);
        for (BoardRow& row : board) {
            if (row.book == cell.book) row.months.push_back(cell);
        }
    }
    board.push_back(readStatements(cn, periods, thisMonth));
    return board;
}

std::vector<ChangedBatch> readChangedBatches(Connection& cn, std::string_view book, std::string_view period) {
    std::vector<ChangedBatch> changed;
    Recordset rows = cn.Open(call("sp_Load_ReopenedChanges").separator(",").text(book).text(period));
    for (; !rows.eof(); rows.moveNext()) {
        const Value& day = rows["BatchDate"];
        changed.push_back({rows["Batch"].text(), rows["DisplayBatch"].text(),
                           day.isNull() ? "" : Format(day.date(), "yyyy-MM-dd"), rows["Particular"].text(),
                           rows["Change"].text(), rows["WasDebit"].money(), rows["NowDebit"].money()});
    }
    return changed;
}

}  // namespace kv
