// bench_ledger: journal batches saved as the screen saves them, a month closed and prepared, a trial balance, each
// beside the same rows in raw SQLite in the same run. Prints seconds, counts and ratios.

#include <sqlite3.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "core/module1.h"
#include "tests/desk/Desk.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBatches = 300;
constexpr int kLines = 6;
constexpr int kMonthLines = 100'000;
constexpr int kMonths = 10;
constexpr int kAccounts = 180;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

template <class Work>
double timed(Work&& work) {
    const auto start = Clock::now();
    work();
    return secondsSince(start);
}

double percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

/// Raw SQLite on a file of its own, with the journal mode and durability of the engine.
class Raw {
public:
    explicit Raw(const std::string& file) {
        std::filesystem::remove(file);
        sqlite3_open(file.c_str(), &db_);
        run("PRAGMA journal_mode=WAL");
        run("PRAGMA synchronous=FULL");
        run("CREATE TABLE dt (Batch TEXT, Period TEXT, Code TEXT, Dept TEXT, BatchDate TEXT, Description TEXT, Debit "
            "REAL, "
            "Credit REAL, SubCode TEXT, SeqNo INTEGER, Posted INTEGER, PRIMARY KEY (Batch, SeqNo))");
        run("CREATE INDEX dt_code ON dt (Code, Period)");
        run("CREATE TABLE hd (Batch TEXT PRIMARY KEY, BatchDate TEXT, BatchType TEXT, Total REAL, Debits REAL, Credits "
            "REAL, "
            "Period TEXT, Particular TEXT, Encoder TEXT)");
        run("CREATE INDEX hd_period ON hd (Period)");
        run("CREATE TABLE hd2 (Batch TEXT PRIMARY KEY, PrintJVBatch TEXT)");
        run("CREATE TABLE gl (Period TEXT, BatchType TEXT, Batch TEXT, SeqNo INTEGER, Code TEXT, Dept TEXT, BatchDate "
            "TEXT, "
            "Description TEXT, Debit REAL, Credit REAL, PRIMARY KEY (Period, BatchType, Batch, SeqNo))");
        run("CREATE INDEX gl_code ON gl (Code, Period)");
    }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;
    ~Raw() { sqlite3_close(db_); }
    void run(const std::string& text) {
        char* message = nullptr;
        if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
            std::fprintf(stderr, "%s in %s\n", message, text.c_str());
            std::exit(1);
        }
    }
    sqlite3_stmt* prepare(const char* text) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db_, text, -1, &statement, nullptr);
        return statement;
    }

private:
    sqlite3* db_ = nullptr;
};

void bind(sqlite3_stmt* statement, std::initializer_list<std::string> texts) {
    int at = 0;
    for (const std::string& text : texts) sqlite3_bind_text(statement, ++at, text.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_step(statement);
    sqlite3_reset(statement);
}

/// Saves each batch in a transaction; seconds of each.
std::vector<double> saveRaw(Raw& raw, int from) {
    sqlite3_stmt* line = raw.prepare("INSERT INTO dt VALUES (?1,'202403',?2,'','2024-03-15',?3,?4,?5,'',?6,0)");
    sqlite3_stmt* head =
        raw.prepare("INSERT INTO hd VALUES (?1,'2024-03-15','JV',?2,?2,?2,'202403','Lines of a test','E001')");
    sqlite3_stmt* printed = raw.prepare("INSERT INTO hd2 VALUES (?1,'0')");
    std::vector<double> seconds;
    for (int b = from; b < from + kBatches; ++b) {
        seconds.push_back(timed([&] {
            const std::string number = std::to_string(b);
            raw.run("BEGIN IMMEDIATE");
            for (int i = 1; i <= kLines; ++i) {
                bind(line, {number, i % 2 ? "1101" : "1201", "CASH ON HAND", "100.00", "0.00", std::to_string(i)});
            }
            bind(head, {number, "300.00"});
            bind(printed, {number});
            raw.run("COMMIT");
        }));
    }
    for (sqlite3_stmt* statement : {line, head, printed}) sqlite3_finalize(statement);
    return seconds;
}

std::vector<double> saveScreen(kv::Desk& desk) {
    std::vector<double> seconds;
    for (int b = 0; b < kBatches; ++b) {
        kv::JournalBatch batch = kv::balancedBatch("JV", kLines);
        seconds.push_back(timed([&] { kv::SaveJournalBatch(desk.session(), batch); }));
    }
    return seconds;
}

void tell(const char* what, const std::vector<double>& ours, const std::vector<double>& raw) {
    double sumOurs = 0;
    double sumRaw = 0;
    for (const double s : ours) sumOurs += s;
    for (const double s : raw) sumRaw += s;
    std::printf("%-44s %8.0f/s  raw %8.0f/s  %5.0f %% of raw   p99 %.1f ms (raw %.1f ms)\n", what,
                static_cast<double>(ours.size()) / sumOurs, static_cast<double>(raw.size()) / sumRaw,
                100 * (sumRaw / static_cast<double>(raw.size())) / (sumOurs / static_cast<double>(ours.size())),
                1000 * percentile(ours, 0.99), 1000 * percentile(raw, 0.99));
}

/// Fills a month of the JV book with balanced batches over 180 accounts, set by set.
void fillMonth(kv::Desk& desk, const std::string& period) {
    const std::string day = period + "01";
    desk.cn().Execute("CREATE TABLE #N (N int NOT NULL, Code varchar(15) NOT NULL)");
    desk.cn().Execute(
        "INSERT INTO #N (N, Code) SELECT TOP 180 ROW_NUMBER() OVER (ORDER BY Code), Code FROM AcctCode "
        "WHERE ISNULL(Mast_Dept, '') <> 'MAS' ORDER BY Code");
    for (int b = 0; b < kMonthLines / kAccounts; ++b) {
        const std::string batch = period.substr(2) + std::to_string(b);
        desk.cn().Execute(
            "INSERT INTO JVDT (Batch, SeqNo, Period, Code, Dept, BatchDate, Description, Debit, Credit, Posted) "
            "SELECT '" +
            batch + "', N, '" + period + "', Code, '', '" + day +
            "', 'BENCH', CASE WHEN N % 2 = 1 THEN 12.50 ELSE 0 END, "
            "CASE WHEN N % 2 = 1 THEN 0 ELSE 12.50 END, 0 FROM #N");
        desk.cn().Execute("sp_Insert_JV '" + batch + "', '" + day + "', 'JV', 1125, 1125, 1125, '" + period +
                          "', 'BENCH', 'E001'");
    }
    desk.cn().Execute("DROP TABLE #N");
}

double closeRaw(Raw& raw) {
    raw.run("BEGIN");
    raw.run(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) INSERT INTO dt SELECT "
        "'R' || (i / 100), '202404', CASE WHEN i % 2 THEN '1101' ELSE '1201' END, '', '2024-04-01', 'BENCH', 12.5, 0, "
        "'', i, 0 "
        "FROM n");
    raw.run("COMMIT");
    return timed([&] {
        raw.run("BEGIN IMMEDIATE");
        raw.run(
            "INSERT INTO gl SELECT Period, 'JV', Batch, SeqNo, Code, Dept, BatchDate, Description, Debit, Credit FROM "
            "dt "
            "WHERE Period = '202404'");
        raw.run("COMMIT");
    });
}

}  // namespace

int main() {
    const std::string& folder = kv::scratchFolder();
    kv::Desk desk(kv::freshHospital(folder, "bench.db"));
    desk.openBook("JV");
    Raw raw(folder + "/raw.db");
    // a first round of each compiles the statements and lets both logs grow to their size
    saveRaw(raw, 1);
    saveScreen(desk);
    std::vector<double> rawSaves;
    std::vector<double> saves;
    for (int round = 1; round <= 3; ++round) {
        const std::vector<double> other = saveRaw(raw, round * kBatches + 1);
        const std::vector<double> own = saveScreen(desk);
        rawSaves.insert(rawSaves.end(), other.begin(), other.end());
        saves.insert(saves.end(), own.begin(), own.end());
    }
    tell("journal batches of 6 lines, durable", saves, rawSaves);

    const double rawClose = closeRaw(raw);
    double close = 0;
    double prepare = 0;
    for (int m = 0; m < kMonths; ++m) {
        const std::string period = kv::module1::GetPeriod(kv::Date(2024, 4, 1).addMonths(m));
        fillMonth(desk, period);
        close = timed([&] { desk.cn().Execute("sp_PostGLtoGL '" + period + "','JV'"); });
        prepare = timed([&] { desk.cn().Execute("sp_PrepareFinance '" + period + "'"); });
        if (m == 0) {
            std::printf("%-44s %8.2f s   raw %8.2f s   %5.0f %% of raw\n", "closing a month of 100,000 lines", close,
                        rawClose, 100 * rawClose / close);
            std::printf("%-44s %8.2f s\n", "preparing it", prepare);
        }
    }
    std::printf("%-44s %8.2f s, preparing %.2f s\n", "closing the month that makes 1,000,000 lines", close, prepare);
    const std::string last = kv::module1::GetPeriod(kv::Date(2024, 4, 1).addMonths(kMonths - 1));
    std::vector<double> balances;
    std::size_t accounts = 0;
    for (int i = 0; i < 20; ++i) {
        balances.push_back(
            timed([&] { accounts = desk.cn().Open("sp_Report_TrialBalance '" + last + "'").recordCount(); }));
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%-44s %8.2f ms (median), %zu accounts, peak memory of the run %ld MB\n",
                "trial balance over 1,000,000 ledger lines", 1000 * percentile(balances, 0.5), accounts,
                usage.ru_maxrss / 1024);
    return 0;
}
