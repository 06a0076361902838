#pragma once
// Session: one open database file: SQLite's handle, the catalogue, the caches, and the transaction of T-SQL.

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

#include "platform/embedded/Catalog.h"
#include "platform/embedded/Checkpointer.h"
#include "platform/embedded/Embedded.h"
#include "platform/embedded/Functions.h"
#include "platform/embedded/Plan.h"
#include "platform/embedded/Routines.h"
#include "platform/embedded/TempTables.h"

namespace kv::tsql {

class Interp;

/// SQLite's handle, closed when it goes.
class Handle {
public:
    explicit Handle(const EmbeddedOptions& options);
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { sqlite3_close_v2(db_); }
    sqlite3* get() const { return db_; }

private:
    static int busy(void* self, int tries);
    sqlite3* db_ = nullptr;
    int waitMs_ = 0;
    std::int64_t waitedUs_ = 0;
};

/// The temporary tables that hold what a statement put in and took out of a table with triggers.
struct Capture {
    ObjectPtr inserted;
    ObjectPtr deleted;
    std::string clearInserted;  ///< statements that empty them
    std::string clearDeleted;
};

class Session {
    // First in, last out: everything below holds statements of this handle.
    EmbeddedOptions options_;
    Handle handle_;

public:
    explicit Session(const EmbeddedOptions& options);
    ~Session();

    sqlite3* db() const { return handle_.get(); }
    Interp& interp() { return *interp_; }
    const EmbeddedOptions& options() const { return options_; }

    // ---- transaction
    int tranCount() const { return tranCount_; }
    bool doomed() const { return doomed_; }
    void doom() { doomed_ = tranCount_ > 0; }
    void undoom() { doomed_ = false; }
    /// Runs a statement without parameters and keeps it prepared: BEGIN, COMMIT, savepoints.
    void runKept(const std::string& sql);
    void begin(const std::string& name);
    void commit();
    void rollback(const std::string& name);
    void save(const std::string& name);
    /// Before a statement that writes: 3930 when doomed; begins the batch's own transaction unless the statement is
    /// atomic by itself (`alone`).
    void beforeWrite(bool alone);
    /// At the end of a batch: commits its own transaction, or rolls back a doomed one (gives false then).
    bool endBatch();
    /// After an error of SQLite: it may have rolled back by itself.
    void noteLostTransaction();
    /// A trigger's body runs inside a transaction, even when the statement stands alone.
    void setTranCount(int count) { tranCount_ = count; }
    void rollbackAll();
    bool inImplicit() const { return implicit_; }

    /// At the start of a batch: another process may have changed the catalogue.
    bool refreshCatalog();  ///< true when it had changed
    void definitionsChanged();
    /// Replaces everything that the file holds by a sound backup, in one transaction.
    void takeOver(const std::string& backup);
    /// Undoes everything since a savepoint of the engine's own and ends it; never raises.
    void undoTo(const std::string& savepoint) noexcept;
    /// Forgets what a compile without running had made.
    void afterLint();

    Catalog catalog;
    FunctionContext functions;
    BatchCache cache;
    TempTables temps;
    std::string database;
    bool xactAbort = false;
    std::string identityInsert;  ///< physical name of the table with IDENTITY_INSERT ON
    std::optional<std::int64_t> lastIdentity;
    EmbeddedServices::CacheCounts counts;
    std::map<std::string, ExprPtr> expressions;  ///< parsed DEFAULTs and CHECKs by their text
    std::set<std::string> registered;            ///< functions and modules that SQLite knows already
    std::map<std::string, Capture> captures;     ///< tables whose changes are captured for triggers

private:
    void open();
    void afterRollback(const std::vector<std::pair<LocalTable*, TempTables::Rows>>& saved);
    std::int64_t dataVersion();
    void reloadCatalog();

    std::unique_ptr<Checkpointer> checkpointer_;
    std::unique_ptr<Interp> interp_;
    Statement dataVersion_;
    std::unordered_map<std::string, Statement> kept_;
    std::int64_t seenVersion_ = -1;
    int tranCount_ = 0;
    bool implicit_ = false;
    bool doomed_ = false;
    bool ddlInTransaction_ = false;
    std::int64_t changesAtBegin_ = 0;
    std::string tranName_;
    std::vector<std::string> savepoints_;
};

}  // namespace kv::tsql
