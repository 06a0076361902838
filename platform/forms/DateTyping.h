#pragma once
// DateTyping: what a person types in a date or period field, read forgivingly.

#include <optional>
#include <string>
#include <string_view>

#include "platform/base/Date.h"

namespace kv {

/// The day in a typed text, month first. What is left out comes from `current`: "15" is a day of its month, "3/15" of
/// its year. Without separators: d, dd, MMdd, MMddyy, MMddyyyy, yyyyMMdd. Nothing for a day that does not exist.
std::optional<Date> readTypedDay(std::string_view text, const Date& current);

/// The first day of the month in a typed text: "3", "03/2024", "3/24", "202403", "032024", "March 2024", "mar".
std::optional<Date> readTypedMonth(std::string_view text, const Date& current);

/// True for a format that shows no day, as "MMMM yyyy".
bool isMonthFormat(std::string_view format);

}  // namespace kv
