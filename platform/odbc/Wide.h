#pragma once
// UTF-16, in which ODBC carries text, from and to the UTF-8 of the rest of the system.

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

namespace kv::odbc {

static_assert(sizeof(SQLWCHAR) == 2, "unixODBC is built with two-byte characters");

/// Without a closing zero; what is no UTF-8 becomes U+FFFD.
std::vector<SQLWCHAR> toWide(std::string_view text);
/// Lone halves of a pair become U+FFFD.
std::string fromWide(const SQLWCHAR* text, std::size_t length);

}  // namespace kv::odbc
