#include "platform/embedded/Embedded.h"

#include "platform/base/Error.h"
#include "platform/embedded/Backup.h"
#include "platform/embedded/Interp.h"
#include "platform/embedded/Session.h"

namespace kv {
namespace {

constexpr const char* kSource = "Embedded";

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
    std::string restoreFrom(const std::string& backup) override;
    const std::string& file() const override { return file_; }
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

void EmbeddedConnection::backupTo(const std::string& target) { tsql::copyToFile(live().db(), target); }

std::string EmbeddedConnection::restoreFrom(const std::string& backup) {
    if (live().tranCount() > 0) throw Error(226, kSource, "A restore is not possible inside a transaction.");
    tsql::examineFile(backup);
    const std::string kept = nameBeforeRestore(file_);
    backupTo(kept);
    live().takeOver(backup);
    return kept;
}

std::vector<std::string> EmbeddedConnection::checkIntegrity() { return tsql::problemsOf(live().db()); }

}  // namespace

std::unique_ptr<Connection> openEmbedded(const EmbeddedOptions& options) {
    return std::make_unique<EmbeddedConnection>(options);
}

EmbeddedServices* embeddedOf(Connection& connection) { return dynamic_cast<EmbeddedServices*>(&connection); }

}  // namespace kv
