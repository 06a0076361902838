#pragma once
// Connection: all that the system knows of a database. Drivers implement `run`; everything else stands on it.

#include <functional>
#include <memory>
#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Error.h"
#include "platform/data/Recordset.h"

namespace kv {

/// One message of the server about a statement. Severity above 10 is an error.
struct DbError {
    long number = 0;
    int severity = 16;
    int state = 1;
    int line = 1;
    std::string procedure;
    std::string source;
    std::string description;
};

class Connection {
public:
    using Place = std::source_location;

    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    /// Sends a statement and drops its rows. Raises the first error of the server; `errors` keeps all.
    void Execute(std::string_view statement, Place at = Place::current());
    /// Sends a statement and gives its first result set (empty and without fields when there is none).
    Recordset Open(std::string_view statement, Place at = Place::current());
    /// All result sets of a statement.
    std::vector<ResultSet> OpenAll(std::string_view statement, Place at = Place::current());
    /// The result sets of a statement, also those that came before an error; raises nothing that the server says, which
    /// stands in `errors` instead. For consoles, where every statement has its say.
    std::vector<ResultSet> Attempt(std::string_view statement);
    /// "select * from <table> [where <condition>]" as an updatable recordset; `keys` name a row for the UPDATE.
    /// Without keys the statement writes the whole table (tables of one row).
    Recordset OpenTable(std::string_view table, std::string_view condition, std::vector<std::string> keys,
                        Place at = Place::current());

    void BeginTrans(Place at = Place::current());
    void CommitTrans(Place at = Place::current());
    /// Rolls back when a transaction is open; never raises.
    void RollbackTrans() noexcept;
    virtual int transactionDepth() const = 0;

    /// Every message of the last statement, information too.
    const std::vector<DbError>& errors() const { return errors_; }
    /// Rows that the last statement changed; -1 when the driver does not know.
    long long recordsAffected() const { return affected_; }
    void clearErrors() { errors_.clear(); }

    /// Connection string in the form "Provider=...;Server=...;Database=...;".
    virtual std::string connectionString() const = 0;
    virtual void setDefaultDatabase(const std::string& name) = 0;
    virtual std::string defaultDatabase() const = 0;
    virtual void setCommandTimeout(int seconds) = 0;
    virtual bool isOpen() const = 0;
    virtual void close() = 0;

    /// Called with every statement before it goes out (plays and tests listen).
    void observe(std::function<void(std::string_view)> listener) { observer_ = std::move(listener); }

protected:
    /// Runs one batch: fills `results`; every message of the server goes to `messages`, an error is the last of them.
    /// Must leave the connection usable. Returns false when an error occurred.
    virtual bool run(std::string_view statement, std::vector<ResultSet>& results, std::vector<DbError>& messages) = 0;
    /// Drivers say here, from inside `run`, how many rows the statement changed.
    void setAffected(long long rows) { affected_ = rows; }

private:
    bool begin(std::string_view statement, std::vector<ResultSet>& results);
    std::vector<ResultSet> send(std::string_view statement, const Place& at);
    std::function<void(std::string_view)> observer_;
    std::vector<DbError> errors_;
    long long affected_ = -1;
};

/// Opens a transaction, commits it when `commit` is called, rolls back when it is left without that.
class Transaction {
public:
    explicit Transaction(Connection& connection, Connection::Place at = Connection::Place::current())
        : connection_(connection) {
        connection_.BeginTrans(at);
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        if (open_) connection_.RollbackTrans();
    }
    void commit(Connection::Place at = Connection::Place::current()) {
        connection_.CommitTrans(at);
        open_ = false;
    }

private:
    Connection& connection_;
    bool open_ = true;
};

}  // namespace kv
