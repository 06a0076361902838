// bench_ledger: journal batches saved as the screen saves them beside the same rows in raw SQLite in the same run: the
// lines, the header, the printed number and the last number of the series, in tables with the same keys and indexes.
// Prints batches a second, their ratio, the slowest percent, and what an empty durable write costs on this disk.

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "bench/ledger/LedgerBench.h"

namespace {

using kv::bench::percentile;
using kv::bench::Raw;
using kv::bench::timed;

constexpr int kBatches = 300;
constexpr int kLines = 6;

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
    sqlite3_stmt* series = raw.prepare("UPDATE series SET LastNo = ?1 WHERE Series = 'JV'");
    std::vector<double> seconds;
    for (int b = from; b < from + kBatches; ++b) {
        seconds.push_back(timed([&] {
            const std::string number = std::to_string(b);
            raw.run("BEGIN IMMEDIATE");
            bind(series, {number});
            for (int i = 1; i <= kLines; ++i) {
                bind(line, {number, i % 2 ? "1101" : "1201", "CASH ON HAND", "100.00", "0.00", std::to_string(i)});
            }
            bind(head, {number, "300.00"});
            bind(printed, {number});
            raw.run("COMMIT");
        }));
    }
    for (sqlite3_stmt* statement : {line, head, printed, series}) sqlite3_finalize(statement);
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

/// The median of a durable write of one page over a file that is there, in seconds: the least that a commit can cost.
double durableWrite(const std::string& file) {
    const std::vector<char> page(4096, 'x');
    const int fd = ::open(file.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    std::vector<double> seconds;
    for (int i = 0; i < kBatches; ++i) {
        seconds.push_back(timed([&] {
            if (::pwrite(fd, page.data(), page.size(), 0) < 0 || ::fdatasync(fd) < 0) std::perror("durableWrite");
        }));
    }
    ::close(fd);
    return percentile(seconds, 0.5);
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
    std::printf("%-44s %8.2f ms\n", "a durable write of one page on this disk", 1000 * durableWrite(folder + "/page"));
    return 0;
}
