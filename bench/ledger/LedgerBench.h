#pragma once
// LedgerBench: what the ledger's benchmarks share: a clock, months filled with lines, and the same tables in raw
// SQLite.

#include <sqlite3.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/desk/Desk.h"

namespace kv::bench {

constexpr int kAccounts = 180;  ///< lines of a filled batch, each on another account

template <class Work>
double timed(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double percentile(std::vector<double> values, double share);

/// Fills a month of the JV book with balanced batches over all accounts, set by set; about so many lines.
void fillMonth(Desk& desk, const std::string& period, int lines);

/// Raw SQLite on a file of its own, with the journal mode and durability of the engine. Exits on a failure.
class Raw {
public:
    explicit Raw(const std::string& file);
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;
    ~Raw() { sqlite3_close(db_); }
    void run(const std::string& text);
    /// Steps through all rows of a query.
    void readAll(const std::string& query);
    sqlite3_stmt* prepare(const char* text);

private:
    sqlite3* db_ = nullptr;
};

/// The peak memory of the process, in MB.
long peakMemory_MB();

}  // namespace kv::bench
