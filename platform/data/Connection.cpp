#include "platform/data/Connection.h"

namespace kv {
namespace {

constexpr int kSeverityInformationMax = 10;
constexpr const char* kUnknownSource = "Database";

const DbError* firstError(const std::vector<DbError>& messages) {
    for (const DbError& message : messages) {
        if (message.severity > kSeverityInformationMax) return &message;
    }
    return nullptr;
}

}  // namespace

bool Connection::begin(std::string_view statement, std::vector<ResultSet>& results) {
    errors_.clear();
    affected_ = -1;
    if (observer_) observer_(statement);
    return run(statement, results, errors_);
}

std::vector<ResultSet> Connection::send(std::string_view statement, const Place& at) {
    std::vector<ResultSet> results;
    const bool good = begin(statement, results);
    if (const DbError* error = firstError(errors_)) {
        throw Error(error->number, error->source.empty() ? kUnknownSource : error->source, error->description, at);
    }
    if (!good) throw Error(3704, kUnknownSource, "The statement failed without a message of the server.", at);
    return results;
}

void Connection::Execute(std::string_view statement, Place at) { send(statement, at); }

Recordset Connection::Open(std::string_view statement, Place at) {
    std::vector<ResultSet> results = send(statement, at);
    return results.empty() ? Recordset() : Recordset(std::move(results.front()));
}

std::vector<ResultSet> Connection::OpenAll(std::string_view statement, Place at) { return send(statement, at); }

std::vector<ResultSet> Connection::Attempt(std::string_view statement) {
    std::vector<ResultSet> results;
    begin(statement, results);
    return results;
}

Recordset Connection::OpenTable(std::string_view table, std::string_view condition, std::vector<std::string> keys,
                                Place at) {
    std::string statement = "select * from " + std::string(table);
    if (!condition.empty()) statement += " where " + std::string(condition);
    Recordset rows = Open(statement, at);
    rows.connection_ = this;
    rows.table_ = table;
    rows.keys_ = std::move(keys);
    return rows;
}

void Connection::BeginTrans(Place at) { send("BEGIN TRAN", at); }
void Connection::CommitTrans(Place at) { send("COMMIT TRAN", at); }

void Connection::RollbackTrans() noexcept {
    // The errors that led here stay readable, and nothing that goes wrong now may hide them: a lost server has rolled
    // back by itself, an open driver closes what is left.
    try {
        if (!isOpen() || transactionDepth() == 0) return;
        constexpr std::string_view kRollback = "ROLLBACK TRAN";
        if (observer_) observer_(kRollback);
        std::vector<ResultSet> dropped;
        run(kRollback, dropped, errors_);
    } catch (...) {
        return;
    }
}

}  // namespace kv
