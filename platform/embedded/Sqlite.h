#pragma once
// Sqlite: owned handles of the SQLite library and the small helpers that every file of the engine needs.

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/embedded/SqlError.h"
#include "platform/embedded/Types.h"

namespace kv::tsql {

/// One prepared statement, finalized when it goes.
class Statement {
public:
    Statement() = default;
    /// Prepares; raises what SQLite says (an internal error: the text of the statement is in it).
    Statement(sqlite3* db, std::string_view sql, bool keep = true);
    Statement(Statement&& other) noexcept : stmt_(std::exchange(other.stmt_, nullptr)) {}
    Statement& operator=(Statement&& other) noexcept {
        std::swap(stmt_, other.stmt_);
        return *this;
    }
    ~Statement() { sqlite3_finalize(stmt_); }

    sqlite3_stmt* get() const { return stmt_; }
    explicit operator bool() const { return stmt_ != nullptr; }

    Statement& bind(int index, std::string_view text);
    Statement& bind(int index, std::int64_t number);
    Statement& bindNull(int index);
    /// True for a row, false at the end; raises fromSqlite otherwise.
    bool step();
    void reset() { sqlite3_reset(stmt_); }
    /// Steps to the end.
    void run();

    std::string text(int column) const;
    std::int64_t integer(int column) const { return sqlite3_column_int64(stmt_, column); }
    bool isNull(int column) const { return sqlite3_column_type(stmt_, column) == SQLITE_NULL; }

private:
    sqlite3_stmt* stmt_ = nullptr;
};

/// Runs statements without rows; raises fromSqlite.
void execSql(sqlite3* db, const std::string& sql);

/// The name between quotation marks, doubled inside.
std::string quoted(std::string_view name);
/// The text as an SQL literal.
std::string quotedText(std::string_view text);
std::string lowered(std::string_view text);  ///< ASCII letters only, as names compare

Datum columnDatum(sqlite3_stmt* stmt, int column);
Datum valueDatum(sqlite3_value* value);
void bindDatum(sqlite3_stmt* stmt, int index, const Datum& value);
void resultDatum(sqlite3_context* context, const Datum& value);
/// A value as SQL text.
std::string datumSql(const Datum& value);

}  // namespace kv::tsql
