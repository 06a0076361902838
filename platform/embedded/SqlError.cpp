#include "platform/embedded/SqlError.h"

#include <sqlite3.h>

#include "platform/embedded/Errors.h"

namespace kv::tsql {
namespace {

std::string filled(std::string_view format, const std::initializer_list<ErrorArg>& args) {
    std::string out;
    auto next = args.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        const bool mark = format[i] == '%' && i + 1 < format.size() && (format[i + 1] == 's' || format[i + 1] == 'd');
        if (!mark) {
            out += format[i];
            continue;
        }
        if (next != args.end()) out += (next++)->text();
        ++i;
    }
    return out;
}

struct CodeRow {
    int code;
    int number;
};

/// SQLite's extended result codes; the primary code decides where the extended one is not listed.
constexpr CodeRow kCodes[] = {
    {SQLITE_CONSTRAINT_PRIMARYKEY, 2627},
    {SQLITE_CONSTRAINT_UNIQUE, 2627},
    {SQLITE_CONSTRAINT_ROWID, 2627},
    {SQLITE_CONSTRAINT_NOTNULL, 515},
    {SQLITE_CONSTRAINT_FOREIGNKEY, 547},
    {SQLITE_CONSTRAINT_CHECK, 547},
    {SQLITE_CONSTRAINT_DATATYPE, 8114},
    {SQLITE_BUSY_SNAPSHOT, 1205},
    {SQLITE_BUSY, 1222},
    {SQLITE_LOCKED, 1222},
    {SQLITE_FULL, 1105},
    {SQLITE_IOERR, 823},
    {SQLITE_READONLY, 3906},
    {SQLITE_CANTOPEN, 945},
    {SQLITE_CORRUPT, 824},
    {SQLITE_NOTADB, 824},
    {SQLITE_MISMATCH, 8114},
    {SQLITE_NOMEM, 701},
    {SQLITE_INTERRUPT, 3617},
    {SQLITE_TOOBIG, 511},
};

int numberFor(int code) {
    for (const CodeRow& row : kCodes) {
        if (row.code == code) return row.number;
    }
    return (code & ~0xFF) != 0 ? numberFor(code & 0xFF) : 0;
}

}  // namespace

SqlError sqlError(int number, std::initializer_list<ErrorArg> args) {
    const ErrorText* row = findErrorText(number);
    if (!row) return SqlError(number, "Error " + std::to_string(number));
    return SqlError(number, filled(row->text, args), row->severity);
}

SqlError sqlErrorAt(int line, int number, std::initializer_list<ErrorArg> args) {
    SqlError error = sqlError(number, args);
    error.line = line;
    return error;
}

void raise(int number, std::initializer_list<ErrorArg> args) { throw sqlError(number, args); }

SqlError notSupported(std::string_view construct, int line, int column) {
    return sqlErrorAt(line, 40000, {construct, line, column});
}

SqlError fromSqlite(int code, std::string_view message) {
    if (message.find("integer overflow") != std::string_view::npos) {
        return sqlError(8115, {"expression", "int"});
    }
    const int number = numberFor(code);
    if (number == 0) return sqlError(50001, {code, message});
    return sqlError(number, {message, message});
}

}  // namespace kv::tsql
