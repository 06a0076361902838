#include "platform/embedded/Session.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <mutex>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Backup.h"
#include "platform/embedded/Interp.h"
#include "platform/embedded/LogFile.h"

namespace kv::tsql {
namespace {

constexpr const char* kSource = "Embedded";
constexpr int kFastTries = 10;
constexpr int kFastSleepUs = 50;
constexpr int kSlowSleepUs = 250;
constexpr int kIdentifierMax = 32;

/// SQLite takes and gives back its working memory with each statement: the allocator must not hand it to the kernel.
void keepMemory() {
    static std::once_flag once;
    std::call_once(once, [] {
        // Counting memory costs a lock at each allocation. Too late when SQLite runs already: then it goes on counting.
        sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
        mallopt(M_TRIM_THRESHOLD, 256 << 20);
        mallopt(M_TOP_PAD, 1 << 20);
        mallopt(M_MMAP_THRESHOLD, 64 << 20);
    });
}

std::string savepointName(const std::string& name) { return quoted("kv_" + lowered(name)); }

}  // namespace

Handle::Handle(const EmbeddedOptions& options) : waitMs_(options.busyWaitMs) {
    keepMemory();
    const bool memory = options.file == ":memory:";
    if (!memory && !options.create && !fileExists(options.file)) {
        throw Error(53, kSource, "The database file " + options.file + " does not exist.");
    }
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (options.create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(options.file.c_str(), &db_, flags, memory ? nullptr : gatheringFiles());
    if (code != SQLITE_OK) {
        const std::string why = db_ ? sqlite3_errmsg(db_) : "out of memory";
        sqlite3_close_v2(db_);
        throw Error(75, kSource, "The database file " + options.file + " cannot be opened: " + why);
    }
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_busy_handler(db_, &Handle::busy, this);
}

int Handle::busy(void* self, int tries) {
    // Short sleeps share the lock more fairly than SQLite's own growing ones.
    auto* handle = static_cast<Handle*>(self);
    if (tries == 0) handle->waitedUs_ = 0;
    if (handle->waitedUs_ / 1000 > handle->waitMs_) return 0;
    const int sleep = tries < kFastTries ? kFastSleepUs : kSlowSleepUs;
    usleep(static_cast<useconds_t>(sleep));
    handle->waitedUs_ += sleep;
    return 1;
}

Session::Session(const EmbeddedOptions& options)
    : options_(options), handle_(options), catalog(handle_.get()), temps(handle_.get()) {
    try {
        open();
    } catch (const SqlError& error) {
        if (error.number == 824) {
            throw Error(824, kSource, "The database file " + options.file + " is damaged: " + error.text);
        }
        throw Error(error.number, kSource, options.file + ": " + error.text);
    }
    interp_ = std::make_unique<Interp>(*this);
}

Session::~Session() {
    checkpointer_.reset();
    if (!sqlite3_get_autocommit(db())) sqlite3_exec(db(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Session::open() {
    const bool memory = options_.file == ":memory:";
    registerFunctions(db(), functions);
    if (!memory) execSql(db(), "PRAGMA journal_mode=WAL");
    execSql(db(), "PRAGMA synchronous=FULL");
    execSql(db(), "PRAGMA foreign_keys=ON");
    execSql(db(), "PRAGMA cache_size=-65536");
    execSql(db(), "PRAGMA temp_store=MEMORY");
    sqlite3_wal_autocheckpoint(db(), 0);
    if (!memory) {
        checkpointer_ = std::make_unique<Checkpointer>(options_.file);
        sqlite3_wal_hook(
            db(),
            [](void* self, sqlite3*, const char*, int pages) {
                static_cast<Checkpointer*>(self)->committed(pages);
                return SQLITE_OK;
            },
            checkpointer_.get());
    }
    if (!Catalog::present(db())) {
        execSql(db(), "BEGIN IMMEDIATE");
        if (!Catalog::present(db())) Catalog::install(db(), options_.defaultDatabase);
        execSql(db(), "COMMIT");
    }
    catalog.load();
    if (!catalog.hasDatabase(options_.defaultDatabase)) {
        execSql(db(), "BEGIN IMMEDIATE");
        catalog.addDatabase(options_.defaultDatabase);
        execSql(db(), "COMMIT");
    }
    database = *catalog.databaseName(options_.defaultDatabase);
    dataVersion_ = Statement(db(), "PRAGMA data_version");
    seenVersion_ = dataVersion();
}

std::int64_t Session::dataVersion() {
    dataVersion_.reset();
    const std::int64_t version = dataVersion_.step() ? dataVersion_.integer(0) : 0;
    dataVersion_.reset();
    return version;
}

void Session::runKept(const std::string& sql) {
    Statement& statement = kept_[sql];
    if (!statement) statement = Statement(db(), sql);
    statement.run();
}

bool Session::refreshCatalog() {
    const std::int64_t now = dataVersion();
    if (now == seenVersion_) return false;
    seenVersion_ = now;
    if (catalog.storedVersion() == catalog.version()) return false;
    reloadCatalog();
    return true;
}

void Session::reloadCatalog() {
    catalog.load();
    if (interp_) interp_->knowFunctions();
    cache.clear();
    captures.clear();
    if (const std::string* name = catalog.databaseName(database)) database = *name;
}

void Session::takeOver(const std::string& backup) {
    const std::string copy = options_.file + ".restoring";
    const auto clear = [&] {
        for (const char* ending : {"", "-wal", "-shm", "-journal"}) std::remove((copy + ending).c_str());
    };
    clear();
    {
        const PlainFile source(backup, SQLITE_OPEN_READONLY);
        copyToFile(source.get(), copy);
    }
    try {
        const PlainFile fresh(copy, SQLITE_OPEN_READWRITE);
        // Whoever has the file open notices by this count that the catalogue is another one.
        const std::int64_t count = std::max(catalog.storedVersion(), Catalog(fresh.get()).storedVersion()) + 1;
        Statement(fresh.get(), "UPDATE kv_meta SET value = ?1 WHERE name = 'version'").bind(1, count).run();
        const int code = copyPages(db(), fresh.get(), options_.busyWaitMs);
        if (code != SQLITE_OK) throw fromSqlite(code, sqlite3_errstr(code));
    } catch (const SqlError& error) {
        clear();
        throw Error(error.number, kSource, error.text);
    }
    clear();
    reloadCatalog();
}

void Session::definitionsChanged() {
    if (!sqlite3_get_autocommit(db())) ddlInTransaction_ = true;
    cache.clear();
    captures.clear();
}

void Session::undoTo(const std::string& savepoint) noexcept {
    if (sqlite3_get_autocommit(db())) return;
    try {
        const auto saved = temps.saveVariables();
        execSql(db(), "ROLLBACK TO " + savepoint);
        execSql(db(), "RELEASE " + savepoint);
        afterRollback(saved);
    } catch (const SqlError&) {
        // The error that led here is the one to tell.
        return;
    }
}

void Session::afterLint() {
    ddlInTransaction_ = true;
    afterRollback({});
    ddlInTransaction_ = false;
}

void Session::begin(const std::string& name) {
    if (doomed_) throw sqlError(3930);
    if (tranCount_ == 0) {
        if (implicit_) {
            // The batch's own transaction ends here: ROLLBACK must not undo what stood before BEGIN TRAN. One that has
            // changed nothing yet is taken over.
            const bool clean = sqlite3_total_changes64(db()) == changesAtBegin_ && !ddlInTransaction_;
            implicit_ = false;
            if (!clean) {
                runKept("COMMIT");
                ddlInTransaction_ = false;
                runKept("BEGIN IMMEDIATE");
            }
        } else {
            runKept("BEGIN IMMEDIATE");
        }
        refreshCatalog();
        tranName_ = lowered(name);
        savepoints_.clear();
    }
    ++tranCount_;
}

void Session::commit() {
    if (tranCount_ == 0) throw sqlError(3902);
    if (doomed_) throw sqlError(3930);
    if (tranCount_ == 1) {
        runKept("COMMIT");
        ddlInTransaction_ = false;
        savepoints_.clear();
    }
    --tranCount_;
}

void Session::rollback(const std::string& name) {
    if (tranCount_ == 0) throw sqlError(3903);
    const std::string wanted = lowered(name);
    if (!wanted.empty() && wanted != tranName_) {
        const auto at = std::find(savepoints_.rbegin(), savepoints_.rend(), wanted);
        if (at == savepoints_.rend()) throw sqlError(6401, {name});
        if (doomed_) throw sqlError(3931);
        const auto saved = temps.saveVariables();
        execSql(db(), "ROLLBACK TO " + savepointName(wanted));
        // Names may repeat: the innermost is used up, the one outside is there for the next ROLLBACK.
        execSql(db(), "RELEASE " + savepointName(wanted));
        savepoints_.erase(savepoints_.begin() + (savepoints_.rend() - at - 1), savepoints_.end());
        afterRollback(saved);
        return;
    }
    rollbackAll();
}

void Session::rollbackAll() {
    const auto saved = temps.saveVariables();
    if (!sqlite3_get_autocommit(db())) runKept("ROLLBACK");
    tranCount_ = 0;
    implicit_ = false;
    doomed_ = false;
    savepoints_.clear();
    afterRollback(saved);
}

void Session::afterRollback(const std::vector<std::pair<LocalTable*, TempTables::Rows>>& saved) {
    interp_->forgetLocals(temps.afterRollback(saved));
    captures.clear();
    // The tables that catch a trigger's rows may have been made inside what was rolled back.
    captures.clear();
    if (ddlInTransaction_) {
        ddlInTransaction_ = !sqlite3_get_autocommit(db());
        catalog.load();
        cache.clear();
    }
}

void Session::save(const std::string& name) {
    if (tranCount_ == 0) throw sqlError(628);
    if (doomed_) throw sqlError(3930);
    if (name.size() > kIdentifierMax) throw sqlError(103, {name.substr(0, kIdentifierMax)});
    execSql(db(), "SAVEPOINT " + savepointName(name));
    savepoints_.push_back(lowered(name));
}

void Session::beforeWrite(bool alone) {
    if (doomed_) throw sqlError(3930);
    if (alone || !sqlite3_get_autocommit(db())) return;
    runKept("BEGIN IMMEDIATE");
    implicit_ = true;
    changesAtBegin_ = sqlite3_total_changes64(db());
    refreshCatalog();
}

bool Session::endBatch() {
    if (doomed_) {
        rollbackAll();
        return false;
    }
    if (implicit_) {
        implicit_ = false;
        if (!sqlite3_get_autocommit(db())) runKept("COMMIT");
        ddlInTransaction_ = false;
    }
    return true;
}

void Session::noteLostTransaction() {
    if ((tranCount_ == 0 && !implicit_) || !sqlite3_get_autocommit(db())) return;
    const auto saved = temps.saveVariables();
    tranCount_ = 0;
    implicit_ = false;
    doomed_ = false;
    savepoints_.clear();
    afterRollback(saved);
}

}  // namespace kv::tsql
