// bench_statements: a month closed and prepared, and every statement's query, in ledgers of 10,000, 100,000 and
// 1,000,000 lines; beside them raw SQLite on the same rows and the trial balance of a plain text accounting program, in
// one run. Prints milliseconds by size and how they grow from the smallest to the largest.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>

#include "bench/ledger/LedgerBench.h"
#include "core/module1.h"
#include "ledger/StatementTable.h"
#include "ledger/StatementValues.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Application.h"
#include "platform/print/Report.h"

namespace {

using kv::bench::Raw;
using kv::bench::timed;

constexpr std::array kSizes{10'000, 100'000, 1'000'000};
constexpr int kMonths = 10;
constexpr int kRounds = 5;
constexpr const char* kFirst = "202401";
constexpr const char* kLast = "202410";

/// Milliseconds of each thing at each size, in the order in which they were first told.
class Results {
public:
    void add(const std::string& what, std::size_t size, double seconds) {
        if (!at_.contains(what)) order_.push_back(what);
        at_[what][size] = 1000 * seconds;
    }
    void print() const {
        std::printf("%-52s %10s %10s %10s %8s\n", "milliseconds", "10,000", "100,000", "1,000,000", "growth");
        for (const std::string& what : order_) {
            const auto& ms = at_.at(what);
            std::printf("%-52s %10.2f %10.2f %10.2f %7.1fx\n", what.c_str(), ms[0], ms[1], ms[2], ms[2] / ms[0]);
        }
    }

private:
    std::vector<std::string> order_;
    std::map<std::string, std::array<double, kSizes.size()>> at_;
};

/// The quickest of some rounds: what others did on the machine meanwhile counts least. `again` makes the next one
/// possible.
double best(const std::function<void()>& work, const std::function<void()>& again = {}) {
    double least = timed(work);
    for (int i = 1; i < kRounds; ++i) {
        if (again) again();
        least = std::min(least, timed(work));
    }
    return least;
}

std::string periodAt(int month) { return kv::module1::GetPeriod(kv::Date(2024, 1, 1).addMonths(month)); }

void closeAndPrepare(kv::Desk& desk, std::size_t size, Results& results) {
    for (int m = 0; m < kMonths; ++m) {
        const std::string period = periodAt(m);
        kv::bench::fillMonth(desk, period, kSizes[size] / kMonths);
        if (period == kLast) break;
        desk.cn().Execute("sp_PostGLtoGL '" + period + "','JV'");
        desk.cn().Execute("sp_PrepareFinance '" + period + "'");
    }
    const auto close = [&] { desk.cn().Execute("sp_PostGLtoGL '202410','JV'"); };
    const auto open = [&] { desk.cn().Execute("sp_UnpostBook 'JV','202410'"); };
    results.add("close of the last month, a tenth of the lines", size, best(close, open));
    results.add("preparation of that month", size, best([&] { desk.cn().Execute("sp_PrepareFinance '202410'"); }));
}

/// A statement's report with its sources run; the pages are not laid out.
void runStatement(kv::Desk& desk, const kv::StatementRow& row) {
    const auto report = kv::Report::load(kv::buildPath("Reports", row.file));
    const bool range = row.dialog == kv::StatementDialog::RepPrd;
    const std::string entity = row.entity == kv::StatementEntity::Account ? "1111" : "";
    const kv::StatementChoice choice{range ? kFirst : kLast, kLast, "2024-10-01", "2024-10-31", entity};
    const kv::ReportParamsDictionary values = kv::statementValues(desk.session(), row, choice);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (row.binding == kv::StatementBinding::Position) {
            report->setValue(i, values[i].second);
        } else {
            report->setValue(values[i].first, values[i].second);
        }
    }
    report->run(desk.cn());
}

void statements(kv::Desk& desk, std::size_t size, Results& results) {
    for (const kv::StatementRow& row : kv::statementRows()) {
        runStatement(desk, row);  // compiles its statements
        results.add(std::string(row.entry) + ", " + row.title, size, best([&] { runStatement(desk, row); }));
    }
}

/// The same lines in raw SQLite: the close as one INSERT ... SELECT, the month's balances from those of the month
/// before, and a trial balance that adds up every line.
void rawSqlite(const std::string& folder, std::size_t size, Results& results) {
    Raw raw(folder + "/raw.db");
    raw.run(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + std::to_string(kSizes[size]) +
        ") INSERT INTO dt SELECT 'R' || (i / 180), '2024' || substr('0' || (i * 10 / " + std::to_string(kSizes[size]) +
        " + 1), -2), 1000 + i % 180, '', '2024-04-01', 'BENCH', CASE WHEN i % 2 THEN 12.5 ELSE 0 END, CASE WHEN i % 2 "
        "THEN 0 ELSE 12.5 END, '', i % 180, 0 FROM n");
    const std::string copy =
        "INSERT INTO gl SELECT Period, 'JV', Batch, SeqNo, Code, Dept, BatchDate, Description, Debit, Credit FROM dt "
        "WHERE Period ";
    raw.run(copy + "< '202410'");
    results.add(
        "raw SQLite: close", size,
        best([&] { raw.run(copy + "= '202410'"); }, [&] { raw.run("DELETE FROM gl WHERE Period = '202410'"); }));
    raw.run(
        "CREATE TABLE pb (Period TEXT, Code TEXT, Dept TEXT, Debit REAL, Credit REAL, Ending REAL, PRIMARY KEY "
        "(Period, "
        "Code, Dept))");
    raw.run(
        "INSERT INTO pb SELECT '202409', Code, Dept, 0, 0, SUM(Debit - Credit) FROM gl WHERE Period < '202410' GROUP "
        "BY "
        "Code, Dept");
    results.add(
        "raw SQLite: preparation", size, timed([&] {
            raw.run(
                "INSERT INTO pb SELECT '202410', Code, Dept, SUM(Debit), SUM(Credit), SUM(Amount) FROM (SELECT "
                "Code, Dept, 0 AS Debit, 0 AS Credit, Ending AS Amount FROM pb WHERE Period = '202409' UNION "
                "ALL SELECT Code, Dept, Debit, Credit, Debit - Credit FROM gl WHERE Period = '202410') GROUP BY "
                "Code, Dept");
        }));
    results.add("raw SQLite: trial balance from prepared balances", size,
                best([&] { raw.readAll("SELECT * FROM pb WHERE Period = '202410' ORDER BY Code"); }));
    results.add("raw SQLite: trial balance from every line", size,
                best([&] { raw.readAll("SELECT Code, SUM(Debit), SUM(Credit) FROM gl GROUP BY Code ORDER BY Code"); }));
}

/// All lines as a plain text journal, added up by another program.
void otherProgram(kv::Desk& desk, const std::string& folder, std::size_t size, Results& results) {
    std::string text;
    std::string batch;
    kv::Recordset lines = desk.cn().Open(
        "SELECT G.Batch, G.BatchDate, G.Code, G.Debit - G.Credit AS Amount FROM GL AS G ORDER BY G.Period, G.Batch, "
        "G.SeqNo");
    for (; !lines.eof(); lines.moveNext()) {
        if (lines["Batch"].text() != batch) {
            batch = lines["Batch"].text();
            text += "\n" + kv::Format(lines["BatchDate"].date(), "yyyy-MM-dd") + " * " + batch + "\n";
        }
        text += "  " + lines["Code"].text() + "  " + kv::Format(lines["Amount"].money(), "0.00") + "\n";
    }
    const std::string file = folder + "/bench.dat";
    kv::writeTextFile(file, text);
    int failed = 0;
    const double seconds = best([&] {
        failed =
            std::system(("ledger --args-only --no-pager --file '" + file + "' balance --flat > /dev/null").c_str());
    });
    if (failed == 0) results.add("ledger bal: trial balance from every line", size, seconds);
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const kv::Application application(argc, argv);
    const std::string& folder = kv::scratchFolder();
    Results results;
    for (std::size_t size = 0; size < kSizes.size(); ++size) {
        kv::Desk desk(kv::freshHospital(folder, "bench.db"));
        closeAndPrepare(desk, size, results);
        statements(desk, size, results);
        rawSqlite(folder, size, results);
        otherProgram(desk, folder, size, results);
        std::fprintf(stderr, "%d lines measured\n", kSizes[size]);
    }
    results.print();
    std::printf("peak memory %ld MB\n", kv::bench::peakMemory_MB());
    return 0;
}
