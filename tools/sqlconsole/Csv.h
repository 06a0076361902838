#pragma once
// Csv: result sets as comma-separated text, as scripts and tests read them.

#include <iosfwd>
#include <string>

#include "platform/data/Recordset.h"

namespace kv::console {

/// One value by the type of its field: NULL as the word, dates as yyyy-MM-dd [HH:mm:ss.fff], decimals with their scale,
/// bits as 1 and 0. A text is quoted where it would read as something else.
std::string csvCell(const Value& value, const Field& field, bool alone);

/// The header line, the rows, and an empty line. `alone` columns print an empty text as "".
void writeCsv(std::ostream& out, const ResultSet& result);

}  // namespace kv::console
