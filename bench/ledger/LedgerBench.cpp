#include "bench/ledger/LedgerBench.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace kv::bench {

double percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

Raw::Raw(const std::string& file) {
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
    run("CREATE INDEX hd_date ON hd (BatchDate, Batch)");
    run("CREATE TABLE hd2 (Batch TEXT PRIMARY KEY, PrintJVBatch TEXT)");
    run("CREATE INDEX hd2_print ON hd2 (PrintJVBatch)");
    run("CREATE TABLE series (Series TEXT PRIMARY KEY, LastNo INTEGER)");
    run("INSERT INTO series VALUES ('JV', 0)");
    run("CREATE TABLE gl (Period TEXT, BatchType TEXT, Batch TEXT, SeqNo INTEGER, Code TEXT, Dept TEXT, BatchDate "
        "TEXT, "
        "Description TEXT, Debit REAL, Credit REAL, PRIMARY KEY (Period, BatchType, Batch, SeqNo))");
    run("CREATE INDEX gl_code ON gl (Code, Period)");
}

void Raw::run(const std::string& text) {
    char* message = nullptr;
    if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        std::fprintf(stderr, "%s in %s\n", message, text.c_str());
        std::exit(1);
    }
}

sqlite3_stmt* Raw::prepare(const char* text) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db_, text, -1, &statement, nullptr);
    return statement;
}

void Raw::readAll(const std::string& query) {
    sqlite3_stmt* statement = prepare(query.c_str());
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) sqlite3_column_text(statement, i);
    }
    sqlite3_finalize(statement);
}

void fillMonth(Desk& desk, const std::string& period, int lines) {
    const std::string day = period + "01";
    desk.cn().Execute("CREATE TABLE #N (N int NOT NULL, Code varchar(15) NOT NULL)");
    desk.cn().Execute(
        "INSERT INTO #N (N, Code) SELECT TOP 180 ROW_NUMBER() OVER (ORDER BY Code), Code FROM AcctCode "
        "WHERE ISNULL(Mast_Dept, '') <> 'MAS' ORDER BY Code");
    for (int b = 0; b < lines / kAccounts; ++b) {
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

long peakMemory_MB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

}  // namespace kv::bench
