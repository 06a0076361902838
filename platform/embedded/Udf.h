#pragma once
// Udf: how functions of the engine are called by SQLite: arguments, results, and errors that must not cross its C
// frames.

#include <sqlite3.h>

#include <new>
#include <span>
#include <string>
#include <string_view>

#include "platform/embedded/Conversions.h"
#include "platform/embedded/Functions.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

/// One call of a function: its arguments as SQLite gives them, and its result.
class Call {
public:
    Call(sqlite3_context* context, int count, sqlite3_value** values)
        : context_(context), values_(values), count_(count) {}

    int count() const { return count_; }
    bool isNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
    bool anyNull() const {
        for (int i = 0; i < count_; ++i) {
            if (isNull(i)) return true;
        }
        return false;
    }
    bool isInteger(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_INTEGER; }
    std::int64_t integer(int i) const { return sqlite3_value_int64(values_[i]); }
    int small(int i) const { return sqlite3_value_int(values_[i]); }
    double real(int i) const { return sqlite3_value_double(values_[i]); }
    std::string_view text(int i) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
        return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(values_[i])))
                     : std::string_view();
    }
    std::string_view blob(int i) const {
        const auto* bytes = static_cast<const char*>(sqlite3_value_blob(values_[i]));
        return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(values_[i])))
                     : std::string_view();
    }
    Cell cell(int i) const;

    sqlite3_context* context() const { return context_; }
    FunctionContext& shared() const { return *static_cast<FunctionContext*>(sqlite3_user_data(context_)); }

    void null() { sqlite3_result_null(context_); }
    void result(std::int64_t value) { sqlite3_result_int64(context_, value); }
    void result(int value) { sqlite3_result_int(context_, value); }
    void result(double value) { sqlite3_result_double(context_, value); }
    void result(std::string_view text) {
        // an empty view may have no address, which SQLite would take for NULL
        sqlite3_result_text(context_, text.empty() ? "" : text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    void resultBytes(std::string_view bytes) {
        sqlite3_result_blob(context_, bytes.empty() ? "" : bytes.data(), static_cast<int>(bytes.size()),
                            SQLITE_TRANSIENT);
    }
    void result(const Datum& datum);
    void same(int i) { sqlite3_result_value(context_, values_[i]); }

private:
    sqlite3_context* context_;
    sqlite3_value** values_;
    int count_;
};

using UdfBody = void (*)(Call& call);

/// One row of a function table: the name inside SQLite, its count of arguments (-1 any), what runs.
struct Udf {
    const char* name;
    int arguments;
    bool deterministic;
    void (*entry)(sqlite3_context*, int, sqlite3_value**);
};

/// Keeps an error for the interpreter and tells SQLite that the call failed.
void reportError(sqlite3_context* context, SqlError error);

/// Runs `body` so that no exception leaves it.
template <class Body>
void guarded(sqlite3_context* context, Body&& body) {
    try {
        body();
    } catch (SqlError& error) {
        reportError(context, std::move(error));
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& error) {
        reportError(context, sqlError(50001, {0, error.what()}));
    }
}

template <UdfBody Body>
void udf(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&] {
        Call call(context, count, values);
        Body(call);
    });
}

std::span<const Udf> likeUdfs();
std::span<const Udf> textUdfs();
std::span<const Udf> mathUdfs();
std::span<const Udf> dateUdfs();
std::span<const Udf> systemUdfs();
void registerAggregates(sqlite3* db, FunctionContext& context);
void registerCollation(sqlite3* db);

}  // namespace kv::tsql
