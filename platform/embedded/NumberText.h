#pragma once
// NumberText: numbers as SQL Server prints and reads them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/embedded/Decimal.h"

namespace kv::tsql {

/// Style 0: six significant digits, "1.23457e+006"; 1: eight, always with exponent; 2: sixteen; 3: seventeen.
std::string floatText(double value, int style);
/// Shortest text that reads back as the same float(53) or real, "1.79E+30", for results shown to people.
std::string shortestFloat(double value, bool single);
/// Style 0: two decimals; 1: two decimals and commas; 2 and 126: four decimals. `units` are ten-thousandths.
std::string moneyText(Int128 units, int style);

enum class NumberFault : std::uint8_t { None, Syntax, Overflow };
struct ReadInteger {
    std::int64_t value = 0;
    NumberFault fault = NumberFault::None;
};
/// Blanks around, a sign, digits; an empty text is 0.
ReadInteger readInteger(std::string_view text);
/// A float with optional exponent; an empty text is 0. Empty where it is no number.
std::optional<double> readFloat(std::string_view text);
/// Ten-thousandths of a money text: sign, currency sign, commas in the whole part; an empty text is 0.
std::optional<Int128> readMoney(std::string_view text);
/// ISNUMERIC of a text: anything that one of int, decimal, money or float would take, and a lone sign or currency mark.
bool looksNumeric(std::string_view text);

std::string hexText(std::string_view bytes);                        ///< upper case, without 0x
std::optional<std::string> bytesOfHex(std::string_view hexDigits);  ///< empty on a foreign character or an odd count

std::string_view trimmed(std::string_view text);  ///< without blanks at both ends

}  // namespace kv::tsql
