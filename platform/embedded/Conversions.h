#pragma once
// Conversions: one value from one static type to another, natively for slots and variables and as SQL for expressions.

#include <optional>
#include <string>
#include <string_view>

#include "platform/embedded/Types.h"

namespace kv::tsql {

/// Cast and Variable cut text silently to the length; Column raises 2628 where more than blanks would be cut.
enum class ConvertMode : std::uint8_t { Cast, Variable, Column };

/// Does a value of `from` need work to become `to`? (False: the SQL may stand as it is.)
bool needsConversion(const Type& from, const Type& to, ConvertMode mode);

/// The value as `to`. `where` is "table.column" for 2628. Raises 241, 242, 245, 8114, 8115, 220, 235, 2628, 206, 529.
/// Style 0 is the default of the types.
Datum convertDatum(const Datum& value, const Type& from, const Type& to, ConvertMode mode, std::string_view where = {},
                   int style = 0);

/// SQL that converts `sql` (type `from`, settled) to `to`: the expression itself where nothing has to be done, else a
/// call of the function cv. `where` is "table.column" for 2628. Raises 206 or 529 for types that never convert.
std::string conversionSql(const std::string& sql, const Type& from, const Type& to, ConvertMode mode,
                          std::string_view where = {});

/// The value as SQL Server prints it when it becomes varchar by the default style.
std::string textOf(const Datum& value, const Type& type);
/// The value as the console and CSV print it: dates "YYYY-MM-DD HH:MM:SS.mmm", money with four decimals, NULL as
/// "NULL".
std::string consoleText(const Datum& value, const Type& type);

}  // namespace kv::tsql
