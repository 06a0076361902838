#pragma once
// Fetch: copies the result set at a statement handle into typed values.

#include "platform/data/Recordset.h"
#include "platform/odbc/Wide.h"

namespace kv::odbc {

/// Reads the columns and all rows of the current result. False when the driver failed; its records say why.
bool fetchResult(SQLHSTMT statement, ResultSet& result, Carrier carrier);

/// A decimal text as the value that keeps it exactly: whole numbers without decimals, Money up to four of them,
/// a floating number beyond that or beyond Money's range.
Value decimalValue(const std::string& text, int scale);

}  // namespace kv::odbc
