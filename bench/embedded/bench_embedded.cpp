// bench_embedded: the program's own statements through the engine against the same work in raw prepared SQLite, in one
// run and on one file. Prints microseconds per execution and their ratio, and the geometric mean of the ratios.

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Embedded.h"
#include "platform/embedded/Functions.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 7;
constexpr double kRoundSeconds = 0.04;
constexpr int kProfiledRuns = 500'000;

/// A raw connection to the file, with the collation and functions of the engine (a raw program would have its own).
class Raw {
public:
    explicit Raw(const std::string& file) {
        sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        kv::tsql::registerFunctions(db_, context_);
        run("PRAGMA cache_size=-65536");
        run("PRAGMA temp_store=MEMORY");
        sqlite3_wal_autocheckpoint(db_, 0);
    }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;
    ~Raw() {
        for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
        sqlite3_close(db_);
    }
    void run(const char* sql) {
        if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw kv::Error(1, "raw", std::string(sqlite3_errmsg(db_)) + " in " + sql);
        }
    }
    sqlite3_stmt* prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v3(db_, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
            throw kv::Error(1, "raw", std::string(sqlite3_errmsg(db_)) + " in " + sql);
        }
        statements_.push_back(statement);
        return statement;
    }

private:
    kv::tsql::FunctionContext context_;
    sqlite3* db_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

/// One parameter of a raw statement.
struct Bind {
    const char* text = nullptr;
    double number = 0;
};
Bind text(const char* value) { return {value, 0}; }
Bind number(double value) { return {nullptr, value}; }

/// Binds, steps and copies all rows as the engine's client gets them.
std::size_t rows(sqlite3_stmt* statement, const std::vector<Bind>& binds) {
    int index = 0;
    for (const Bind& b : binds) {
        ++index;
        if (b.text) {
            sqlite3_bind_text(statement, index, b.text, -1, SQLITE_STATIC);
        } else {
            sqlite3_bind_double(statement, index, b.number);
        }
    }
    std::vector<kv::Row> copied;
    const int columns = sqlite3_column_count(statement);
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        kv::Row row;
        row.reserve(static_cast<std::size_t>(columns));
        for (int c = 0; c < columns; ++c) {
            switch (sqlite3_column_type(statement, c)) {
                case SQLITE_INTEGER:
                    row.emplace_back(std::int64_t{sqlite3_column_int64(statement, c)});
                    break;
                case SQLITE_FLOAT:
                    row.emplace_back(kv::Money::fromUnits(std::llround(sqlite3_column_double(statement, c) * 1e4)));
                    break;
                case SQLITE_TEXT:
                    row.emplace_back(std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, c)),
                                                 static_cast<std::size_t>(sqlite3_column_bytes(statement, c))));
                    break;
                default:
                    row.emplace_back();
                    break;
            }
        }
        copied.push_back(std::move(row));
    }
    if (code != SQLITE_DONE) throw kv::Error(code, "raw", sqlite3_sql(statement));
    sqlite3_reset(statement);
    return copied.size();
}

struct RawStep {
    std::string sql;
    std::vector<Bind> binds;
};

struct Case {
    std::string client;
    std::vector<RawStep> raw;
};

const char* const kGuardPeriod = "SELECT MIN(Period) FROM \"accounting.gl\" WHERE BatchType = 'JV' AND Period = ?1";
const char* const kGuardCancelled = "SELECT MIN(Batch) FROM \"accounting.jv\" WHERE Cancelled = 1 AND Batch = ?1";

std::vector<Case> cases() {
    const std::string jvdt = "\"accounting.jvdt\"";
    return {
        {"select * from JV where Batch = '500'", {{"SELECT * FROM \"accounting.jv\" WHERE Batch = ?1", {text("500")}}}},
        {"Select * from Periods where period = '202403'",
         {{"SELECT * FROM \"accounting.periods\" WHERE Period = ?1", {text("202403")}}}},
        {"select top 1 * from GL where Period = '202402' and BatchType = 'JV'",
         {{"SELECT * FROM \"accounting.gl\" WHERE Period = ?1 AND BatchType = ?2 LIMIT 1",
           {text("202402"), text("JV")}}}},
        {"select glgroup from acctcode where code = '1101'",
         {{"SELECT GLGroup FROM \"accounting.acctcode\" WHERE Code = ?1", {text("1101")}}}},
        {"select dbo.fn_NewJVNum() as Voucher from sys",
         {{"SELECT Number FROM \"accounting.numberreserved\" WHERE SessionID = 1 AND Series = ?1 AND Year = '' AND "
           "Month = ''",
           {text("JV")}},
          {"SELECT ifnull(LastNo, 0) + 1 FROM \"accounting.numberseries\" WHERE Series = ?1 AND Year = '' AND Month = "
           "''",
           {text("JV")}},
          {"SELECT 1 FROM \"accounting.sys\"", {}}}},
        {"sp_Load_BatchDT 'JV', '500'",
         {{"SELECT D.Code, D.Dept, D.Description, D.Debit, D.Credit, L.ApVoucher, D.SubCode, D.SeqNo FROM " + jvdt +
               " AS D LEFT JOIN \"accounting.apcdb\" AS L ON L.CVNo = D.Batch AND L.BookCode = 'JV' AND L.SeqNo = "
               "D.SeqNo WHERE D.Batch = ?1 ORDER BY D.SeqNo",
           {text("500")}}}},
        {"INSERT INTO JVDT (Batch, SeqNo, Period, Code, Dept, BatchDate, Description, Debit, Credit) VALUES ('new', 1, "
         "'202403', '1101', '', '2024-03-05', 'cash', 125.50, 0) DELETE FROM JVDT WHERE Batch = 'new'",
         {{"SAVEPOINT s", {}},
          {"INSERT INTO " + jvdt +
               "(Batch, SeqNo, Period, Code, Dept, BatchDate, Description, Debit, Credit, Posted) VALUES "
               "(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, 0)",
           {text("new"), number(1), text("202403"), text("1101"), text(""), text("2024-03-05 00:00:00.000"),
            text("cash"), number(125.5), number(0)}},
          {kGuardPeriod, {text("202403")}},
          {kGuardCancelled, {text("new")}},
          {"RELEASE s", {}},
          {"SAVEPOINT s", {}},
          {"DELETE FROM " + jvdt + " WHERE Batch = ?1 RETURNING Period", {text("new")}},
          {kGuardPeriod, {text("202403")}},
          {kGuardCancelled, {text("new")}},
          {"RELEASE s", {}}}},
        {"UPDATE SYS SET rptpdStart = '202401' , rptpdEnd = '202403'",
         {{"UPDATE \"accounting.sys\" SET rptpdStart = ?1, rptpdEnd = ?2", {text("202401"), text("202403")}}}},
        {"DELETE FROM ACCESS WHERE UserID = 'bench' INSERT INTO ACCESS (UserID, AccessID, CanAccess) VALUES ('bench', "
         "'mnuEnter', 1)",
         {{"DELETE FROM \"accounting.access\" WHERE UserID = ?1", {text("bench")}},
          {"INSERT INTO \"accounting.access\"(UserID, AccessID, CanAccess) VALUES (?1, ?2, ?3)",
           {text("bench"), text("mnuEnter"), number(1)}}}},
        {"IF NOT EXISTS (SELECT 1 FROM PERIODS WHERE Period = '202403') INSERT INTO PERIODS (Period) VALUES ('202403')",
         {{"SELECT EXISTS (SELECT 1 FROM \"accounting.periods\" WHERE Period = ?1)", {text("202403")}}}},
        {"SELECT Code, CONVERT(varchar, BatchDate, 101) AS D, Debit - Credit AS Net FROM JVDT WHERE Batch = '500'",
         {{"SELECT Code, substr(BatchDate, 6, 2) || '/' || substr(BatchDate, 9, 2) || '/' || substr(BatchDate, 1, 4), "
           "round(Debit - Credit, 4) FROM " +
               jvdt + " WHERE Batch = ?1",
           {text("500")}}}},
        {"SELECT Description, Code FROM AcctCode WHERE Description LIKE 'Cash%' ORDER BY Description",
         {{"SELECT Description, Code FROM \"accounting.acctcode\" WHERE Description LIKE ?1 ORDER BY Description",
           {text("Cash%")}}}},
        {"SELECT TOP 200 Batch, DisplayBatch, BatchDate, Particular, Total, Posted, Cancelled FROM dbo.vwBookBatch "
         "WHERE Book = 'JV' AND Period = '202403' ORDER BY BatchDate, Batch",
         {{"SELECT A.Batch, ifnull(nullif(B.PrintJVBatch, ''), A.Batch), A.BatchDate, A.Particular, A.Total, A.Posted, "
           "A.Cancelled FROM \"accounting.jv\" AS A LEFT JOIN \"accounting.jv2\" AS B ON B.Batch = A.Batch WHERE "
           "A.Period = ?1 ORDER BY A.BatchDate, A.Batch LIMIT 200",
           {text("202403")}}}},
        {"SELECT Code, SUM(Debit) AS D, SUM(Credit) AS C FROM GL WHERE Period <= '202403' GROUP BY Code ORDER BY Code",
         {{"SELECT Code, sum(Debit), sum(Credit) FROM \"accounting.gl\" WHERE Period <= ?1 GROUP BY Code ORDER BY Code",
           {text("202403")}}}},
        {"SELECT 1 FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_NAME = 'GL' AND COLUMN_NAME = 'Code'",
         {{"SELECT 1 FROM kv_column c JOIN kv_object o ON o.id = c.object WHERE o.name = ?1 COLLATE CI AND c.name = ?2 "
           "COLLATE CI AND o.db = 'ACCOUNTING' AND o.type IN (0, 1)",
           {text("GL"), text("Code")}}}},
    };
}

double microseconds(const std::function<void()>& work) {
    work();
    double best = 1e12;
    for (int round = 0; round < kRounds; ++round) {
        int count = 0;
        const auto begin = Clock::now();
        double seconds = 0;
        do {
            work();
            ++count;
            seconds = std::chrono::duration<double>(Clock::now() - begin).count();
        } while (seconds < kRoundSeconds);
        best = std::min(best, seconds / count * 1e6);
    }
    return best;
}

void fill(kv::Connection& cn) {
    kv::Transaction scope(cn);
    for (int batch = 1; batch <= 1000; ++batch) {
        const std::string name = "'" + std::to_string(batch) + "'";
        cn.Execute("INSERT INTO JV (Batch, BatchDate, BatchType, Period, Particular, Total) VALUES (" + name +
                   ", '2024-03-05', 'JV', '202403', 'bench', 100)");
        for (int line = 1; line <= 6; ++line) {
            cn.Execute(
                "INSERT INTO JVDT (Batch, SeqNo, Period, Code, Dept, BatchDate, Description, Debit, Credit) VALUES (" +
                name + ", " + std::to_string(line) + ", '202403', '" + std::to_string(1100 + line) +
                "', '', '2024-03-05', 'line', 10.25, 0)");
        }
    }
    cn.Execute(
        "INSERT INTO GL (Period, BatchType, Batch, SeqNo, Code, Dept, Debit, Credit) SELECT '202402', 'JV', D.Batch, "
        "D.SeqNo, D.Code, '', D.Debit, D.Credit FROM JVDT AS D");
    scope.commit();
}

/// The engine alone, for a profiler.
void profile(kv::Connection& cn, const std::string& client, int runs) {
    const kv::Transaction scope(cn);
    for (int i = 0; i < runs; ++i) cn.OpenAll(client);
}

/// With the number of a case, or a statement, only the engine runs it, `runs` times.
int bench(const std::string& file, const std::string& only, int runs) {
    kv::EmbeddedOptions options;
    options.file = file;
    const auto cn = kv::openEmbedded(options);
    kv::installDatabase(*cn, kv::buildPath(kv::programFolder(), "server"));
    kv::loadDemoHospital(*cn, kv::buildPath(kv::programFolder(), "demo/data"));
    fill(*cn);
    if (!only.empty()) {
        const bool number = only.find_first_not_of("0123456789") == std::string::npos;
        profile(*cn, number ? cases().at(std::stoul(only)).client : only, runs);
        return 0;
    }
    Raw raw(file);
    std::printf("%10s %10s %7s  %s\n", "engine us", "raw us", "ratio", "statement");
    double logs = 0;
    int count = 0;
    for (const Case& c : cases()) {
        std::vector<std::pair<sqlite3_stmt*, const RawStep*>> steps;
        for (const RawStep& step : c.raw) steps.emplace_back(raw.prepare(step.sql), &step);
        // Each side holds one open transaction: the disk is not what is measured here.
        cn->BeginTrans();
        const double engine = microseconds([&] { cn->OpenAll(c.client); });
        cn->RollbackTrans();
        raw.run("BEGIN IMMEDIATE");
        const double direct = microseconds([&] {
            for (const auto& [statement, step] : steps) rows(statement, step->binds);
        });
        raw.run("ROLLBACK");
        logs += std::log(engine / direct);
        ++count;
        std::printf("%10.2f %10.2f %7.2f  %.90s\n", engine, direct, engine / direct, c.client.c_str());
    }
    std::printf("%10s %10s %7.2f  geometric mean of %d\n", "", "", std::exp(logs / count), count);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const auto folder = std::filesystem::temp_directory_path() / ("kv_bench_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    int result = 1;
    try {
        result = bench((folder / "bench.db").string(), argc > 1 ? argv[1] : "",
                       argc > 2 ? std::atoi(argv[2]) : kProfiledRuns);
    } catch (const kv::Error& error) {
        std::fprintf(stderr, "%ld %s\n", error.number, error.description.c_str());
    }
    std::filesystem::remove_all(folder);
    return result;
}
