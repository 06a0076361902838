#include "platform/embedded/Sqlite.h"

#include <charconv>
#include <cstdio>

namespace kv::tsql {
namespace {

constexpr int kInternalError = 50001;

SqlError internalError(sqlite3* db, std::string_view sql) {
    SqlError error = fromSqlite(sqlite3_extended_errcode(db), sqlite3_errmsg(db));
    const int code = sqlite3_errcode(db);
    if (code == SQLITE_ERROR) {
        error.number = kInternalError;
        error.text = "Internal: " + std::string(sqlite3_errmsg(db)) + " in: " + std::string(sql);
    }
    return error;
}

}  // namespace

Statement::Statement(sqlite3* db, std::string_view sql, bool keep) {
    const unsigned flags = keep ? SQLITE_PREPARE_PERSISTENT : 0;
    if (sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()), flags, &stmt_, nullptr) != SQLITE_OK) {
        throw internalError(db, sql);
    }
}

Statement& Statement::bind(int index, std::string_view text) {
    sqlite3_bind_text(stmt_, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    return *this;
}

Statement& Statement::bind(int index, std::int64_t number) {
    sqlite3_bind_int64(stmt_, index, number);
    return *this;
}

Statement& Statement::bindNull(int index) {
    sqlite3_bind_null(stmt_, index);
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(stmt_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    sqlite3* db = sqlite3_db_handle(stmt_);
    SqlError error = fromSqlite(sqlite3_extended_errcode(db), sqlite3_errmsg(db));
    sqlite3_reset(stmt_);
    throw error;
}

void Statement::run() {
    while (step()) {
    }
    reset();
}

std::string Statement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
    return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(stmt_, column))) : std::string();
}

void execSql(sqlite3* db, const std::string& sql) {
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) throw internalError(db, sql);
}

std::string quoted(std::string_view name) {
    std::string out = "\"";
    for (const char c : name) {
        if (c == '"') out += '"';
        out += c;
    }
    return out + '"';
}

std::string quotedText(std::string_view text) {
    std::string out = "'";
    for (const char c : text) {
        if (c == '\'') out += '\'';
        out += c;
    }
    return out + '\'';
}

std::string lowered(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return out;
}

Datum columnDatum(sqlite3_stmt* stmt, int column) {
    switch (sqlite3_column_type(stmt, column)) {
        case SQLITE_INTEGER:
            return Datum::of(static_cast<std::int64_t>(sqlite3_column_int64(stmt, column)));
        case SQLITE_FLOAT:
            return Datum::of(sqlite3_column_double(stmt, column));
        case SQLITE_TEXT: {
            const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
            return Datum::of(std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(stmt, column))));
        }
        case SQLITE_BLOB: {
            const auto* bytes = static_cast<const char*>(sqlite3_column_blob(stmt, column));
            const auto size = static_cast<std::size_t>(sqlite3_column_bytes(stmt, column));
            return Datum::bytes(bytes ? std::string(bytes, size) : std::string());
        }
        default:
            return Datum::null();
    }
}

Datum valueDatum(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            return Datum::of(static_cast<std::int64_t>(sqlite3_value_int64(value)));
        case SQLITE_FLOAT:
            return Datum::of(sqlite3_value_double(value));
        case SQLITE_TEXT: {
            const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
            return Datum::of(std::string(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))));
        }
        case SQLITE_BLOB: {
            const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
            const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
            return Datum::bytes(bytes ? std::string(bytes, size) : std::string());
        }
        default:
            return Datum::null();
    }
}

void bindDatum(sqlite3_stmt* stmt, int index, const Datum& value) {
    switch (value.storage) {
        case Storage::Null:
            sqlite3_bind_null(stmt, index);
            return;
        case Storage::Integer:
            sqlite3_bind_int64(stmt, index, value.integer);
            return;
        case Storage::Real:
            sqlite3_bind_double(stmt, index, value.real);
            return;
        case Storage::Text:
            sqlite3_bind_text(stmt, index, value.text.data(), static_cast<int>(value.text.size()), SQLITE_TRANSIENT);
            return;
        case Storage::Blob:
            sqlite3_bind_blob(stmt, index, value.text.data(), static_cast<int>(value.text.size()), SQLITE_TRANSIENT);
            return;
    }
}

void resultDatum(sqlite3_context* context, const Datum& value) {
    switch (value.storage) {
        case Storage::Null:
            sqlite3_result_null(context);
            return;
        case Storage::Integer:
            sqlite3_result_int64(context, value.integer);
            return;
        case Storage::Real:
            sqlite3_result_double(context, value.real);
            return;
        case Storage::Text:
            sqlite3_result_text(context, value.text.data(), static_cast<int>(value.text.size()), SQLITE_TRANSIENT);
            return;
        case Storage::Blob:
            sqlite3_result_blob(context, value.text.data(), static_cast<int>(value.text.size()), SQLITE_TRANSIENT);
            return;
    }
}

std::string datumSql(const Datum& value) {
    char buffer[40];
    switch (value.storage) {
        case Storage::Null:
            return "NULL";
        case Storage::Integer:
            return std::to_string(value.integer);
        case Storage::Real: {
            const auto end = std::to_chars(buffer, buffer + sizeof buffer, value.real).ptr;
            std::string out(buffer, end);
            if (out.find_first_of(".eEn") == std::string::npos) out += ".0";
            return out;
        }
        case Storage::Text:
            return quotedText(value.text);
        case Storage::Blob: {
            std::string out = "x'";
            for (const unsigned char c : value.text) {
                std::snprintf(buffer, sizeof buffer, "%02X", c);
                out += buffer;
            }
            return out + '\'';
        }
    }
    return "NULL";
}

}  // namespace kv::tsql
