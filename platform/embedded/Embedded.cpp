#include "platform/embedded/Embedded.h"

#include <cstdio>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Interp.h"
#include "platform/embedded/Session.h"

namespace kv {
namespace {

constexpr const char* kSource = "Embedded";
constexpr int kBackupPages = 256;

/// A database file behind the face that screens know.
class EmbeddedConnection : public Connection, public EmbeddedServices {
public:
    explicit EmbeddedConnection(const EmbeddedOptions& options)
        : file_(options.file), session_(std::make_unique<tsql::Session>(options)) {}

    int transactionDepth() const override { return session_ ? session_->tranCount() : 0; }
    std::string connectionString() const override {
        return "Provider=KorvaneEmbedded;Server=This computer;Data Source=" + file_ + ";Database=" + defaultDatabase() +
               ";";
    }
    void setDefaultDatabase(const std::string& name) override {
        const std::string* known = live().catalog.databaseName(name);
        if (!known) throw Error(911, kSource, "Database '" + name + "' does not exist.");
        live().database = *known;
    }
    std::string defaultDatabase() const override { return session_ ? session_->database : ""; }
    void setCommandTimeout(int) override {
        // Statements run on this thread to their end: the wait for other processes has its own limit.
    }
    bool isOpen() const override { return session_ != nullptr; }
    void close() override { session_.reset(); }

    bool runBatch(std::string_view batch, std::vector<ResultSet>& results, std::vector<DbError>& messages) override {
        return run(batch, results, messages);
    }
    std::vector<DbError> compileOnly(std::string_view batch) override { return live().interp().compileOnly(batch); }
    void backupTo(const std::string& target) override;
    std::vector<std::string> checkIntegrity() override;
    void checkpoint() override {
        sqlite3_wal_checkpoint_v2(live().db(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }
    CacheCounts cacheCounts() const override { return session_ ? session_->counts : CacheCounts(); }

protected:
    bool run(std::string_view statement, std::vector<ResultSet>& results, std::vector<DbError>& messages) override {
        if (!session_) throw Error(3709, kSource, "The connection is closed.");
        const bool good = session_->interp().runBatch(statement, results, messages);
        setAffected(session_->interp().affected());
        return good;
    }

private:
    tsql::Session& live() {
        if (!session_) throw Error(3709, kSource, "The connection is closed.");
        return *session_;
    }
    std::string file_;
    std::unique_ptr<tsql::Session> session_;
};

/// Problems that SQLite finds in an open file; one "ok" is none.
std::vector<std::string> problemsOf(sqlite3* db) {
    std::vector<std::string> problems;
    try {
        for (const char* pragma : {"PRAGMA integrity_check", "PRAGMA foreign_key_check"}) {
            tsql::Statement check(db, pragma, false);
            while (check.step()) {
                const std::string text = check.text(0);
                if (text != "ok") problems.push_back(std::string(pragma).substr(7) + ": " + text);
            }
        }
    } catch (const tsql::SqlError& error) {
        problems.push_back(error.text);
    }
    return problems;
}

void EmbeddedConnection::backupTo(const std::string& target) {
    const std::string fresh = target + ".new";
    std::remove(fresh.c_str());
    sqlite3* copy = nullptr;
    const auto fail = [&](const std::string& why) {
        sqlite3_close(copy);
        std::remove(fresh.c_str());
        throw Error(3201, kSource, "The copy " + target + " cannot be written: " + why);
    };
    if (sqlite3_open_v2(fresh.c_str(), &copy, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
        fail(copy ? sqlite3_errmsg(copy) : "out of memory");
    }
    sqlite3_backup* backup = sqlite3_backup_init(copy, "main", live().db(), "main");
    if (!backup) fail(sqlite3_errmsg(copy));
    int code = SQLITE_OK;
    do {
        code = sqlite3_backup_step(backup, kBackupPages);
    } while (code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED);
    sqlite3_backup_finish(backup);
    if (code != SQLITE_DONE) fail(sqlite3_errstr(code));
    tsql::FunctionContext context;
    tsql::registerFunctions(copy, context);
    // The copy stands alone: no log beside it.
    sqlite3_exec(copy, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    const std::vector<std::string> problems = problemsOf(copy);
    sqlite3_close(copy);
    copy = nullptr;
    if (!problems.empty()) {
        std::remove(fresh.c_str());
        throw Error(824, kSource, "The copy " + target + " is damaged: " + problems.front());
    }
    if (std::rename(fresh.c_str(), target.c_str()) != 0) fail("it cannot be moved into place");
}

std::vector<std::string> EmbeddedConnection::checkIntegrity() { return problemsOf(live().db()); }

}  // namespace

std::unique_ptr<Connection> openEmbedded(const EmbeddedOptions& options) {
    return std::make_unique<EmbeddedConnection>(options);
}

EmbeddedServices* embeddedOf(Connection& connection) { return dynamic_cast<EmbeddedServices*>(&connection); }

}  // namespace kv
