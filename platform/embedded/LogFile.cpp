#include "platform/embedded/LogFile.h"

#include <sqlite3.h>

#include <mutex>
#include <new>
#include <vector>

namespace kv::tsql {
namespace {

constexpr const char* kName = "kv-gathering";
constexpr std::size_t kGatheredMax = 120 << 10;  ///< SQLite's own file layer writes less than 128 kB at once

/// An open log. SQLite allocates it with room for the file of the layer below behind it.
struct LogFile {
    sqlite3_file base;
    std::vector<char>* gathered;
    sqlite3_int64 offset;    ///< of the first gathered byte
    sqlite3_file* database;  ///< the file that this is the log of

    sqlite3_file* below() { return reinterpret_cast<sqlite3_file*>(this + 1); }
    sqlite3_int64 end() const { return offset + static_cast<sqlite3_int64>(gathered->size()); }

    /// What could not be written stays: it may be tried again, and no sync succeeds without it.
    int flush() {
        if (gathered->empty()) return SQLITE_OK;
        const int size = static_cast<int>(gathered->size());
        const int code = below()->pMethods->xWrite(below(), gathered->data(), size, offset);
        if (code == SQLITE_OK) gathered->clear();
        return code;
    }
};

LogFile& logOf(sqlite3_file* file) { return *reinterpret_cast<LogFile*>(file); }

sqlite3_vfs* plainFiles() { return sqlite3_vfs_find(nullptr); }

/// The log of an open database file, kept behind what SQLite's own layer keeps of the file; null while there is none.
LogFile*& logSlot(sqlite3_file* database) {
    return *reinterpret_cast<LogFile**>(reinterpret_cast<char*>(database) + plainFiles()->szOsFile);
}

/// Writes what is gathered, then lets the file below do the work.
template <class Work>
int flushed(sqlite3_file* file, Work&& work) {
    LogFile& log = logOf(file);
    const int code = log.flush();
    return code == SQLITE_OK ? work(log.below()) : code;
}

int closeLog(sqlite3_file* file) {
    LogFile& log = logOf(file);
    const int code = log.flush();
    const int closed = log.below()->pMethods->xClose(log.below());
    logSlot(log.database) = nullptr;
    delete log.gathered;
    log.gathered = nullptr;
    return code == SQLITE_OK ? closed : code;
}

int readLog(sqlite3_file* file, void* to, int bytes, sqlite3_int64 offset) {
    return flushed(file, [&](sqlite3_file* below) { return below->pMethods->xRead(below, to, bytes, offset); });
}

int writeLog(sqlite3_file* file, const void* from, int bytes, sqlite3_int64 offset) {
    LogFile& log = logOf(file);
    const auto* first = static_cast<const char*>(from);
    const bool full = log.gathered->size() + static_cast<std::size_t>(bytes) > kGatheredMax;
    if (!log.gathered->empty() && (offset != log.end() || full)) {
        const int code = log.flush();
        if (code != SQLITE_OK) return code;
    }
    if (log.gathered->empty()) log.offset = offset;
    try {
        log.gathered->insert(log.gathered->end(), first, first + bytes);
    } catch (const std::bad_alloc&) {
        return SQLITE_IOERR_NOMEM;
    }
    return SQLITE_OK;
}

int truncateLog(sqlite3_file* file, sqlite3_int64 size) {
    return flushed(file, [&](sqlite3_file* below) { return below->pMethods->xTruncate(below, size); });
}

int syncLog(sqlite3_file* file, int flags) {
    return flushed(file, [&](sqlite3_file* below) { return below->pMethods->xSync(below, flags); });
}

int sizeOfLog(sqlite3_file* file, sqlite3_int64* size) {
    return flushed(file, [&](sqlite3_file* below) { return below->pMethods->xFileSize(below, size); });
}

int lockLog(sqlite3_file* file, int level) { return logOf(file).below()->pMethods->xLock(logOf(file).below(), level); }

int unlockLog(sqlite3_file* file, int level) {
    return logOf(file).below()->pMethods->xUnlock(logOf(file).below(), level);
}

int reservedLog(sqlite3_file* file, int* held) {
    return logOf(file).below()->pMethods->xCheckReservedLock(logOf(file).below(), held);
}

int controlLog(sqlite3_file* file, int what, void* with) {
    return logOf(file).below()->pMethods->xFileControl(logOf(file).below(), what, with);
}

int sectorOfLog(sqlite3_file* file) { return logOf(file).below()->pMethods->xSectorSize(logOf(file).below()); }

int traitsOfLog(sqlite3_file* file) {
    return logOf(file).below()->pMethods->xDeviceCharacteristics(logOf(file).below());
}

/// Version 1: a log is never mapped into memory and has no shared memory of its own.
const sqlite3_io_methods kLogMethods = {
    1,          closeLog,    readLog,     writeLog, truncateLog, syncLog, sizeOfLog, lockLog, unlockLog, reservedLog,
    controlLog, sectorOfLog, traitsOfLog, nullptr,  nullptr,     nullptr, nullptr,   nullptr, nullptr,
};

/// SQLite's own methods of a database file, and ours: the same but for two.
const sqlite3_io_methods* plainMethods = nullptr;
sqlite3_io_methods databaseMethods;

/// Before the right to write (the first lock) is given away: pages of a transaction that was rolled back must not be
/// written over those of the next writer. They belong to nobody, so that a failure does no harm.
int lockShared(sqlite3_file* file, int offset, int count, int flags) {
    LogFile* log = logSlot(file);
    const bool gives = offset == 0 && (flags & SQLITE_SHM_UNLOCK) != 0 && (flags & SQLITE_SHM_EXCLUSIVE) != 0;
    if (log && gives && log->flush() != SQLITE_OK) log->gathered->clear();
    return plainMethods->xShmLock(file, offset, count, flags);
}

/// Before the index of the log tells of pages.
void showShared(sqlite3_file* file) {
    LogFile* log = logSlot(file);
    if (log) log->flush();
    plainMethods->xShmBarrier(file);
}

int openDatabase(const char* name, sqlite3_file* file, int flags, int* outFlags) {
    sqlite3_vfs* plain = plainFiles();
    const int code = plain->xOpen(plain, name, file, flags, outFlags);
    if (code != SQLITE_OK) return code;
    logSlot(file) = nullptr;
    static std::once_flag once;
    std::call_once(once, [&] {
        plainMethods = file->pMethods;
        databaseMethods = *plainMethods;
        databaseMethods.xShmLock = lockShared;
        databaseMethods.xShmBarrier = showShared;
    });
    // Another way of locking (a network file system's) is left alone; its log is then not gathered either.
    if (file->pMethods == plainMethods) file->pMethods = &databaseMethods;
    return SQLITE_OK;
}

int openLog(const char* name, sqlite3_file* file, int flags, int* outFlags) {
    sqlite3_vfs* plain = plainFiles();
    sqlite3_file* database = sqlite3_database_file_object(name);
    if (!database || database->pMethods != &databaseMethods) return plain->xOpen(plain, name, file, flags, outFlags);
    LogFile& log = logOf(file);
    log.base.pMethods = nullptr;
    const int code = plain->xOpen(plain, name, log.below(), flags, outFlags);
    if (code != SQLITE_OK) return code;
    log.gathered = new (std::nothrow) std::vector<char>();
    if (!log.gathered) {
        log.below()->pMethods->xClose(log.below());
        return SQLITE_NOMEM;
    }
    log.offset = 0;
    log.database = database;
    logSlot(database) = &log;
    log.base.pMethods = &kLogMethods;
    return SQLITE_OK;
}

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    if ((flags & SQLITE_OPEN_WAL) != 0) return openLog(name, file, flags, outFlags);
    if ((flags & SQLITE_OPEN_MAIN_DB) != 0) return openDatabase(name, file, flags, outFlags);
    sqlite3_vfs* plain = plainFiles();
    return plain->xOpen(plain, name, file, flags, outFlags);
}

}  // namespace

const char* gatheringFiles() {
    static std::once_flag once;
    std::call_once(once, [] {
        static sqlite3_vfs files = *plainFiles();
        files.pNext = nullptr;
        files.zName = kName;
        files.szOsFile += static_cast<int>(sizeof(LogFile));
        files.xOpen = openFile;
        sqlite3_vfs_register(&files, 0);
    });
    return kName;
}

}  // namespace kv::tsql
