#pragma once
// FormatFunction: the value of FORMAT(value, pattern) in the en-US culture.

#include <string>
#include <string_view>

#include "platform/embedded/Conversions.h"

namespace kv::tsql {

/// Dates: y M d h H m s f t runs and the single letters d D; numbers: N, F, C, P, D with a count of digits, and
/// patterns of 0 # , . % with literal text. Raises 40001 for anything else, 8116 for types that FORMAT does not take.
std::string formatted(const Cell& value, const Type& type, std::string_view pattern);

}  // namespace kv::tsql
