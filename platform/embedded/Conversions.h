#pragma once
// Conversions: one value from one static type to another, natively for slots and variables and as SQL for expressions.

#include <optional>
#include <string>
#include <string_view>

#include "platform/embedded/Types.h"

namespace kv::tsql {

/// Cast and Variable cut text silently to the length; Column raises 2628 where more than blanks would be cut.
enum class ConvertMode : std::uint8_t { Cast, Variable, Column };

/// A value that is only looked at: what SQLite hands to a function.
struct Cell {
    Storage storage = Storage::Null;
    std::int64_t integer = 0;
    double real = 0;
    std::string_view text;

    static Cell of(const Datum& datum) { return {datum.storage, datum.integer, datum.real, datum.text}; }
    double number() const { return storage == Storage::Integer ? static_cast<double>(integer) : real; }
};

/// One conversion: what it is from and to. `where` is "table.column" for 2628; style kNoStyle is the default of the
/// types.
struct Conversion {
    static constexpr int kNoStyle = -1;

    Type from;
    Type to;
    ConvertMode mode = ConvertMode::Cast;
    int style = kNoStyle;
    bool tryOnly = false;  ///< NULL in place of an error (TRY_CONVERT)
    std::string where;
};

/// Does a value of `from` need work to become `to`? (False: the SQL may stand as it is.)
bool needsConversion(const Type& from, const Type& to, ConvertMode mode);

/// Raises 241, 242, 245, 248, 8114, 8115, 220, 235, 2628, 8152, 8169, 281. NULL stays NULL.
Datum converted(const Cell& cell, const Conversion& conversion);
Datum convertDatum(const Datum& value, const Type& from, const Type& to, ConvertMode mode, std::string_view where = {});

/// The constant of a number literal as written: int and decimal(n,0) as integers, decimals as their canonical double.
/// Raises 8115 for a decimal that a double cannot keep apart from its neighbours.
Datum numberLiteral(std::string_view text, const Type& type);

/// SQL that converts `sql` (type `from`, settled) to `to`: the expression itself where nothing has to be done, else a
/// call of the function cv. Raises 206, 257 (`mode` not Cast) or 529 for types that do not convert.
std::string conversionSql(const std::string& sql, const Type& from, const Type& to, ConvertMode mode,
                          std::string_view where = {});
std::string conversionSql(const std::string& sql, const Conversion& conversion);

/// The text of a conversion inside SQL, and back: it is the same in every session, since views and constraints keep it.
std::string conversionSpec(const Conversion& conversion);
Conversion conversionOfSpec(std::string_view spec);

/// The value as SQL Server prints it when it becomes varchar by the default style.
std::string textOf(const Datum& value, const Type& type);
/// The value as the console and CSV print it: dates "YYYY-MM-DD HH:MM:SS.mmm", money with four decimals, NULL as
/// "NULL".
std::string consoleText(const Datum& value, const Type& type);

/// Raises 206, 257 or 529 where a value of `from` never becomes `to`; CAST may do more than an assignment.
void requireConvertible(const Type& from, const Type& to, bool isExplicit);

}  // namespace kv::tsql
