#pragma once
// SqlError: an error or message as SQL Server numbers and words it; what every part of the engine raises.

#include <exception>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kv::tsql {

class SqlError : public std::exception {
public:
    SqlError() = default;
    SqlError(int number_, std::string text_, int severity_ = 16, int state_ = 1)
        : number(number_), severity(severity_), state(state_), text(std::move(text_)) {}

    int number = 50000;
    int severity = 16;
    int state = 1;
    int line = 0;  ///< line in the batch or the routine; 0 until a statement has set it
    std::string procedure;
    std::string text;

    const char* what() const noexcept override { return text.c_str(); }
};

/// One argument of an error text: a text or a whole number.
class ErrorArg {
public:
    ErrorArg(std::string_view v) : text_(v) {}
    ErrorArg(const std::string& v) : text_(v) {}
    ErrorArg(const char* v) : text_(v) {}
    ErrorArg(int v) : text_(std::to_string(v)) {}
    ErrorArg(long v) : text_(std::to_string(v)) {}
    ErrorArg(long long v) : text_(std::to_string(v)) {}
    ErrorArg(unsigned long v) : text_(std::to_string(v)) {}
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// The error `number` with its text from the table (Errors.cpp), its %s, %d and %.*ls filled in order.
SqlError sqlError(int number, std::initializer_list<ErrorArg> args = {});
/// The same with the line of the statement or token.
SqlError sqlErrorAt(int line, int number, std::initializer_list<ErrorArg> args = {});
[[noreturn]] void raise(int number, std::initializer_list<ErrorArg> args = {});

/// "<construct> is not supported by the embedded engine (line L, column C)": number 40000 and severity 16.
SqlError notSupported(std::string_view construct, int line, int column);

/// What a failed SQLite call means: `code` is the extended result code, `message` sqlite3_errmsg.
/// Constraint names are filled in by the caller, who knows the catalogue: 2627, 2601, 515 and 547 carry the message.
SqlError fromSqlite(int code, std::string_view message);

}  // namespace kv::tsql
