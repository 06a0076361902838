// bench_find: "find anything" over 100,000 documents: the list read when the window opens, and each key that is typed,
// beside the server's own search by LIKE in the same run. Prints milliseconds.

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "app/Program.h"
#include "core/FindSources.h"
#include "tests/desk/Desk.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 5;
constexpr std::size_t kShown = 60;

template <class Work>
double milliseconds(Work&& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// 100,000 batches of the JV book over ten years, 60 different words in their particulars.
void fill(kv::Desk& desk) {
    kv::Connection& cn = desk.cn();
    cn.Execute("CREATE TABLE #N (N int NOT NULL)");
    cn.Execute("INSERT INTO #N (N) VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)");
    cn.Execute(
        "INSERT INTO JV (Batch, BatchDate, BatchType, Period, Particular, Total, Encoder)"
        " SELECT CAST(S.N AS varchar(15)), DATEADD(DAY, S.N / 28, '2014-01-01'), 'JV',"
        " CONVERT(varchar(6), DATEADD(DAY, S.N / 28, '2014-01-01'), 112),"
        " CASE S.N % 5 WHEN 0 THEN 'Depreciation of equipment, ward ' WHEN 1 THEN 'Payroll of the department '"
        " WHEN 2 THEN 'Charges of patients, floor ' WHEN 3 THEN 'Bank charges and interest, account '"
        " ELSE 'Correction of the entry ' END + CAST(S.N % 97 AS varchar(5)) + ' by voucher ' + CAST(S.N * 7 AS "
        "varchar(10)),"
        " S.N * 1.25, 'E001'"
        " FROM (SELECT A.N * 10000 + B.N * 1000 + C.N * 100 + D.N * 10 + E.N AS N FROM #N AS A CROSS JOIN #N AS B"
        " CROSS JOIN #N AS C CROSS JOIN #N AS D CROSS JOIN #N AS E) AS S");
    cn.Execute("DROP TABLE #N");
}

/// Types a text letter by letter; the slowest key and the sum of all.
void type(kv::Finder& finder, kv::Desk& desk, const std::string& text) {
    double slowest = 0;
    double sum = 0;
    std::size_t found = 0;
    finder.search("", kShown);
    for (std::size_t length = 1; length <= text.size(); ++length) {
        const double key = milliseconds([&] { finder.search(text.substr(0, length), kShown); });
        slowest = std::max(slowest, key);
        sum += key;
        found = finder.found();
    }
    std::vector<double> like;
    for (int round = 0; round < kRounds; ++round) {
        like.push_back(milliseconds([&] {
            desk.cn().Open("SELECT TOP 60 Batch, Particular FROM dbo.vwBookBatch WHERE Book = 'JV' AND (Batch LIKE '" +
                           text + "%' OR Particular LIKE '%" + text + "%') ORDER BY BatchDate DESC, Batch DESC");
        }));
    }
    std::printf("%-32s %7zu found   slowest key %6.2f ms, mean %6.2f ms   LIKE on the server %6.2f ms\n", text.c_str(),
                found, slowest, sum / static_cast<double>(text.size()), median(like));
}

}  // namespace

int main() {
    kv::Desk desk(kv::freshHospital(kv::scratchFolder(), "find.db"));
    kv::registerScreens(desk.session().screens);
    desk.session().UserAccess.LoadSettings(desk.cn(), "E001");
    fill(desk);
    std::vector<double> opening;
    kv::Finder finder;
    for (int round = 0; round < kRounds; ++round) {
        finder = kv::Finder();
        opening.push_back(milliseconds([&] { kv::fillFinder(desk.session(), {}, finder); }));
    }
    std::printf("%-32s %7zu entries %6.1f ms\n", "list read at opening", finder.size(), median(opening));
    for (const char* text : {"depreciation", "ward 42", "charges floor 13", "77777", "1,250.00", "zzzz", "e"}) {
        type(finder, desk, text);
    }
    return 0;
}
