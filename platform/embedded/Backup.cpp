#include "platform/embedded/Backup.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Catalog.h"
#include "platform/embedded/Embedded.h"
#include "platform/embedded/Sqlite.h"

namespace fs = std::filesystem;

namespace kv::tsql {
namespace {

constexpr const char* kSource = "Embedded";
constexpr int kCopyPages = 256;
constexpr int kWait_us = 2000;
constexpr int kBusyWait_ms = 5000;
/// Up to here a whole check takes part of a second; beyond it the quick one looks at every page.
constexpr std::uintmax_t kWholeCheck_bytes = 64U << 20U;
constexpr std::size_t kHeader_bytes = 100;
constexpr std::array<const char*, 2> kBeside{"-wal", "-shm"};

[[noreturn]] void damaged(const std::string& file, const std::string& what) {
    throw Error(824, kSource, "The database file " + file + " " + what);
}

std::uint32_t bigEndian(const std::array<unsigned char, kHeader_bytes>& bytes, std::size_t at) {
    return std::uint32_t(bytes[at]) << 24 | std::uint32_t(bytes[at + 1]) << 16 | std::uint32_t(bytes[at + 2]) << 8 |
           bytes[at + 3];
}

std::uintmax_t sizeOf(const std::string& file) {
    std::error_code failed;
    const std::uintmax_t size = fs::file_size(file, failed);
    return failed ? 0 : size;
}

/// What the first bytes tell, without SQLite: it takes an empty file for a new database.
void examineHeader(const std::string& file) {
    const std::uintmax_t size = sizeOf(file);
    if (size == 0) damaged(file, "is empty: there is no database in it.");
    std::array<unsigned char, kHeader_bytes> head{};
    std::ifstream in(file, std::ios::binary);
    in.read(reinterpret_cast<char*>(head.data()), kHeader_bytes);
    constexpr std::string_view kMagic{"SQLite format 3\0", 16};
    if (!std::equal(kMagic.begin(), kMagic.end(), head.begin())) damaged(file, "is not a database.");
    if (in.gcount() < static_cast<std::streamsize>(kHeader_bytes)) damaged(file, "is cut off behind its first bytes.");
    std::uint32_t page = std::uint32_t(head[16]) << 8 | head[17];
    if (page == 1) page = 65536;
    const bool countHolds = bigEndian(head, 24) == bigEndian(head, 92);
    const std::uintmax_t wanted = std::uintmax_t(bigEndian(head, 28)) * page;
    // pages that the log still has need not be in the file yet
    if (countHolds && size < wanted && sizeOf(file + "-wal") == 0) {
        damaged(file, "is cut off: it has " + std::to_string(size) + " of " + std::to_string(wanted) + " bytes.");
    }
}

void removeWithLog(const std::string& file) {
    std::error_code none;
    fs::remove(file, none);
    for (const char* ending : kBeside) fs::remove(file + ending, none);
}

}  // namespace

PlainFile::PlainFile(const std::string& file, int flags) {
    if (sqlite3_open_v2(file.c_str(), &db_, flags, nullptr) != SQLITE_OK) {
        const std::string why = db_ ? sqlite3_errmsg(db_) : "out of memory";
        sqlite3_close(db_);
        throw Error(75, kSource, "The database file " + file + " cannot be opened: " + why);
    }
    registerFunctions(db_, context_);
    sqlite3_busy_timeout(db_, kBusyWait_ms);
}

std::vector<std::string> problemsOf(sqlite3* db, bool whole) {
    std::vector<std::string> problems;
    try {
        for (const char* check : {whole ? "integrity_check" : "quick_check", "foreign_key_check"}) {
            Statement look(db, std::string("PRAGMA ") + check, false);
            while (look.step()) {
                const std::string text = look.text(0);
                if (text != "ok") problems.push_back(std::string(check) + ": " + text);
            }
        }
    } catch (const SqlError& error) {
        problems.push_back(error.text);
    }
    return problems;
}

int copyPages(sqlite3* target, sqlite3* source, int busyWaitMs) {
    sqlite3_backup* backup = sqlite3_backup_init(target, "main", source, "main");
    if (!backup) return sqlite3_errcode(target);
    int code = SQLITE_OK;
    std::int64_t waited_us = 0;
    while (true) {
        code = sqlite3_backup_step(backup, kCopyPages);
        if (code == SQLITE_OK) continue;
        if ((code != SQLITE_BUSY && code != SQLITE_LOCKED) || waited_us / 1000 > busyWaitMs) break;
        usleep(kWait_us);
        waited_us += kWait_us;
    }
    const int finished = sqlite3_backup_finish(backup);
    return code == SQLITE_DONE ? finished : code;
}

void copyToFile(sqlite3* source, const std::string& target) {
    const std::string fresh = target + ".new";
    const auto fail = [&](const std::string& why) {
        removeWithLog(fresh);
        throw Error(3201, kSource, "The copy " + target + " cannot be written: " + why);
    };
    removeWithLog(fresh);
    std::vector<std::string> problems;
    try {
        const PlainFile copy(fresh, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        const int code = copyPages(copy.get(), source, EmbeddedOptions().busyWaitMs);
        if (code != SQLITE_OK) fail(sqlite3_errstr(code));
        // The copy stands alone: no log beside it.
        sqlite3_exec(copy.get(), "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
        problems = problemsOf(copy.get());
    } catch (const Error& error) {
        if (error.number != 75) throw;
        fail("the folder is not there or takes no file");
    }
    if (!problems.empty()) {
        removeWithLog(fresh);
        throw Error(824, kSource, "The copy " + target + " is damaged: " + problems.front());
    }
    if (std::rename(fresh.c_str(), target.c_str()) != 0) fail("it cannot be moved into place");
}

void examineFile(const std::string& file) {
    if (!fileExists(file)) throw Error(53, kSource, "The database file " + file + " does not exist.");
    examineHeader(file);
    const PlainFile look(file, SQLITE_OPEN_READONLY);
    const std::vector<std::string> problems = problemsOf(look.get(), sizeOf(file) <= kWholeCheck_bytes);
    if (!problems.empty()) damaged(file, "is damaged: " + problems.front());
    if (!Catalog::present(look.get())) damaged(file, "belongs to another program.");
}

}  // namespace kv::tsql

namespace kv {

void examineEmbedded(const std::string& file) { tsql::examineFile(file); }

std::string replaceEmbedded(const std::string& file, const std::string& backup) {
    tsql::examineFile(backup);
    std::string kept;
    if (fileExists(file)) {
        kept = freeNameBeside(file, "damaged");
        for (const char* ending : {"", "-wal", "-shm"}) {
            if (!fileExists(file + ending)) continue;
            if (std::rename((file + ending).c_str(), (kept + ending).c_str()) != 0) {
                throw Error(75, tsql::kSource, "The file " + file + ending + " cannot be moved away.");
            }
        }
    }
    const tsql::PlainFile source(backup, SQLITE_OPEN_READONLY);
    tsql::copyToFile(source.get(), file);
    return kept;
}

std::string nameBeforeRestore(const std::string& file) { return freeNameBeside(file, "before-restore"); }

}  // namespace kv
