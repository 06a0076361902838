#pragma once
// An SQLite connection with the engine's functions, for tests that look at one expression.

#include <sqlite3.h>

#include <string>

#include "platform/embedded/Functions.h"

namespace kv::tsql {

class FunctionBench {
public:
    FunctionBench() {
        sqlite3_open(":memory:", &db_);
        registerFunctions(db_, context_);
    }
    FunctionBench(const FunctionBench&) = delete;
    FunctionBench& operator=(const FunctionBench&) = delete;
    ~FunctionBench() { sqlite3_close(db_); }

    FunctionContext& context() { return context_; }
    sqlite3* db() { return db_; }

    void run(const std::string& sql) {
        char* message = nullptr;
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
            const std::string text = message;
            sqlite3_free(message);
            throw SqlError(50001, text + " in " + sql);
        }
    }

    /// Value of one SQL expression of SQLite; raises the pending error.
    Datum value(const std::string& expression) {
        sqlite3_stmt* stmt = nullptr;
        const std::string sql = "SELECT " + expression;
        if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
            throw SqlError(50001, std::string(sqlite3_errmsg(db_)) + " in " + sql);
        }
        const int code = sqlite3_step(stmt);
        Datum out;
        if (code == SQLITE_ROW) {
            switch (sqlite3_column_type(stmt, 0)) {
                case SQLITE_INTEGER:
                    out = Datum::of(static_cast<std::int64_t>(sqlite3_column_int64(stmt, 0)));
                    break;
                case SQLITE_FLOAT:
                    out = Datum::of(sqlite3_column_double(stmt, 0));
                    break;
                case SQLITE_TEXT:
                    out = Datum::of(bytes(stmt));
                    break;
                case SQLITE_BLOB:
                    out = Datum::bytes(bytes(stmt));
                    break;
                default:
                    break;
            }
        }
        const std::string text = sqlite3_errmsg(db_);
        sqlite3_finalize(stmt);
        if (code == SQLITE_ROW || code == SQLITE_DONE) return out;
        if (context_.pending) {
            SqlError error = *context_.pending;
            context_.pending.reset();
            throw error;
        }
        throw fromSqlite(code, text);
    }

    /// A typed argument for the functions that write calls.
    static CallArgument argument(std::string sql, Type type, std::string literal = {}) {
        CallArgument out;
        out.sql = std::move(sql);
        out.type = type;
        out.isLiteral = !literal.empty();
        out.literal = std::move(literal);
        return out;
    }

    /// The emitter's rule for arguments, without slots.
    static ArgumentAs plain(const std::vector<CallArgument>& args) {
        return [&args](std::size_t i, const Type& wanted) {
            const std::string sql = args[i].dirty ? settled(args[i].sql, args[i].type) : args[i].sql;
            return wanted.isNull() ? sql : conversionSql(sql, args[i].type, wanted, ConvertMode::Cast);
        };
    }

    /// A built-in function called with typed arguments, as the console would print its value.
    std::string call(const std::string& name, const std::vector<CallArgument>& args) {
        const CallResult made = emitCall(*findFunction(name), args, plain(args));
        return consoleText(value(made.dirty ? settled(made.sql, made.type) : made.sql), made.type);
    }

    std::string arithmetic(char op, const std::vector<CallArgument>& args) {
        const CallResult made = emitArithmetic(op, args, plain(args));
        return consoleText(value(made.dirty ? settled(made.sql, made.type) : made.sql), made.type);
    }

private:
    static std::string bytes(sqlite3_stmt* stmt) {
        const auto* data = static_cast<const char*>(sqlite3_column_blob(stmt, 0));
        return data ? std::string(data, static_cast<std::size_t>(sqlite3_column_bytes(stmt, 0))) : std::string();
    }

    FunctionContext context_;
    sqlite3* db_ = nullptr;
};

/// The number of the error that a call raises, 0 for none.
template <class Body>
int errorOf(Body&& body) {
    try {
        body();
    } catch (const SqlError& error) {
        return error.number;
    }
    return 0;
}

}  // namespace kv::tsql
