#include "core/BookState.h"

#include <algorithm>

#include "core/MainMenu.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

std::vector<BookMonth> monthsUpTo(const Date& today, int count) {
    std::vector<BookMonth> months;
    const Date first(today.year(), today.month(), 1);
    for (int back = count - 1; back >= 0; --back) months.push_back({module1::GetPeriod(first.addMonths(-back)), false});
    return months;
}

void readPending(Connection& cn, std::vector<BookState>& books) {
    Recordset rows = cn.Open(
        "SELECT Book, Period, COUNT(*) AS Batches FROM dbo.vwBookBatch WHERE Posted = 0 AND Cancelled = 0"
        " GROUP BY Book, Period ORDER BY Book, Period");
    for (; !rows.eof(); rows.moveNext()) {
        const auto book =
            std::find_if(books.begin(), books.end(), [&](const BookState& b) { return b.code == rows["Book"].text(); });
        if (book == books.end()) continue;
        if (module1::IsBookOpen(cn, book->code, rows["Period"].text())) {
            book->pending += static_cast<int>(rows["Batches"].integer());
        }
    }
}

}  // namespace

std::vector<BookState> readBookStates(Connection& cn, const Date& today, int count) {
    std::vector<BookState> books;
    const Recordset sys = cn.Open("select APPERIOD, CDBPERIOD, glperiod from sys");
    for (const BookEntry& entry : bookEntries()) {
        if (std::string_view(entry.code) == "GL") continue;
        BookState book;
        book.code = entry.code;
        book.name = entry.name;
        if (!sys.eof()) {
            book.workingPeriod = sys[book.code == "AP"   ? "APPERIOD"
                                     : book.code == "CD" ? "CDBPERIOD"
                                                         : "glperiod"]
                                     .text();
        }
        book.months = monthsUpTo(today, count);
        for (BookMonth& month : book.months) month.closed = !module1::IsBookOpen(cn, book.code, month.period);
        books.push_back(std::move(book));
    }
    readPending(cn, books);
    return books;
}

Preparation readPreparation(Connection& cn) {
    const Recordset row = cn.Open(
        "SELECT TOP 1 Period, PreparedAt, PreparedBy, StaleSince FROM dbo.PreparedPeriod ORDER BY PreparedAt DESC, "
        "Period DESC");
    Preparation found;
    if (row.eof()) return found;
    found.any = true;
    found.period = row["Period"].text();
    found.at = row["PreparedAt"].date();
    found.by = row["PreparedBy"].text();
    found.stale = !row["StaleSince"].isNull();
    return found;
}

namespace {

std::string monthText(std::string_view period, const char* pattern) {
    const auto day = Date::fromIso(std::string(period.substr(0, 4)) + "-" +
                                   std::string(period.size() == 6 ? period.substr(4) : "") + "-01");
    return day ? Format(*day, pattern) : std::string(period);
}

}  // namespace

std::string periodName(std::string_view period) { return monthText(period, "MMMM yyyy"); }
std::string shortPeriodName(std::string_view period) { return monthText(period, "MMM yyyy"); }

}  // namespace kv
