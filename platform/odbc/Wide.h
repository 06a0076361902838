#pragma once
// UTF-16, in which ODBC carries text, from and to the UTF-8 of the rest of the system.

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

namespace kv::odbc {

static_assert(sizeof(SQLWCHAR) == 2, "unixODBC is built with two-byte characters");

/// How a driver takes text. For a driver without wide calls the driver manager would cut every character to one byte,
/// which makes an apostrophe of "\xC4\xA7" (U+0127): such a driver gets UTF-8 through the narrow calls.
enum class Carrier { Utf16, Utf8 };

SQLRETURN execute(SQLHSTMT statement, std::string_view text, Carrier carrier);

/// Without a closing zero; what is no UTF-8 becomes U+FFFD.
std::vector<SQLWCHAR> toWide(std::string_view text);
/// Lone halves of a pair become U+FFFD.
std::string fromWide(const SQLWCHAR* text, std::size_t length);

}  // namespace kv::odbc
