#pragma once
// Text and number formats. Text is UTF-8; the locale is fixed: "," groups, "." decimals.

#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Money.h"

namespace kv {

std::string_view trimBlanks(std::string_view text);  ///< spaces only, both ends
std::string UCase(std::string_view text);            ///< ASCII and Latin letters (ñ becomes Ñ)
std::string LCase(std::string_view text);
std::string properCase(std::string_view text);  ///< first letter of each word upper, the rest lower
bool equalsNoCase(std::string_view a, std::string_view b);
bool containsNoCase(std::string_view text, std::string_view part);
bool startsNoCase(std::string_view text, std::string_view prefix);
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);
std::vector<std::string> split(std::string_view text, char separator);
std::string join(const std::vector<std::string>& parts, std::string_view separator);
/// A cell as spreadsheets take it from the clipboard: in quotes where it holds a tab, a line end or a quote.
std::string spreadsheetCell(std::string_view text);
/// Characters (code points) of a UTF-8 text.
std::size_t charCount(std::string_view text);
/// `count` characters from character `start` (from 0), as far as there are any.
std::string midChars(std::string_view text, std::size_t start, std::size_t count = std::string::npos);

/// True for a number by the locale: blanks around it, one sign before or after, "," groups, one ".".
bool IsNumeric(std::string_view text);
/// The number in such a text; 0 where there is none.
double numberOf(std::string_view text);

/// Number formats of the kind "0.00", "#,##0.00", "000000", "0.00########": zeros are kept digits, # optional ones,
/// a "," between digits groups by thousands. Halves round away from zero.
std::string Format(Money value, std::string_view pattern);
std::string Format(double value, std::string_view pattern);
std::string Format(long long value, std::string_view pattern);
inline std::string Format(int value, std::string_view pattern) {
    return Format(static_cast<long long>(value), pattern);
}
/// Shortest text that reads back as the same number, without an exponent up to 15 digits.
std::string plainText(double value);

}  // namespace kv
