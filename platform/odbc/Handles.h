#pragma once
// Handles of ODBC that are given back by themselves, and the messages that stand at them.

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/data/Connection.h"

namespace kv::odbc {

template <SQLSMALLINT Kind>
class Handle {
public:
    Handle() = default;
    explicit Handle(SQLHANDLE parent) { SQLAllocHandle(Kind, parent, &handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, SQLHANDLE{})) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() {
        if (handle_) SQLFreeHandle(Kind, handle_);
    }
    SQLHANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    static constexpr SQLSMALLINT kind = Kind;

private:
    SQLHANDLE handle_ = nullptr;
};

using Environment = Handle<SQL_HANDLE_ENV>;
using Link = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// One record of the driver: the message with its five-letter state.
struct Diagnostic {
    DbError error;
    std::string state;

    bool tellsLostServer() const;
    bool tellsTimeout() const { return state == "HYT00" || state == "57014"; }
};

/// All records at a handle, in the driver's order.
std::vector<Diagnostic> diagnosticsOf(SQLSMALLINT kind, SQLHANDLE handle);

}  // namespace kv::odbc
