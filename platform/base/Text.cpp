#include "platform/base/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/base/Error.h"

namespace kv {
namespace {

/// A decimal number as digits and the place of its point: value = 0.d1d2d3... * 10^point.
struct Decimal {
    bool negative = false;
    std::string digits;  // without leading zeros; empty for zero
    int point = 0;
};

Decimal decimalOf(std::string_view plain) {
    Decimal result;
    bool seenPoint = false;
    for (const char c : plain) {
        if (c == '-') {
            result.negative = true;
        } else if (c == '.') {
            seenPoint = true;
        } else {
            if (!(result.digits.empty() && c == '0')) {
                result.digits += c;
                if (!seenPoint) ++result.point;
            } else if (seenPoint) {
                --result.point;
            }
        }
    }
    return result;
}

/// Rounds half away from zero to `decimals` places.
void roundAway(Decimal& number, int decimals) {
    const int keep = number.point + decimals;
    if (keep >= static_cast<int>(number.digits.size())) return;
    const bool up = keep >= 0 && number.digits[static_cast<std::size_t>(keep)] >= '5';
    number.digits.resize(static_cast<std::size_t>(std::max(keep, 0)));
    if (!up) return;
    int i = static_cast<int>(number.digits.size()) - 1;
    while (i >= 0 && number.digits[static_cast<std::size_t>(i)] == '9')
        number.digits[static_cast<std::size_t>(i--)] = '0';
    if (i >= 0) {
        ++number.digits[static_cast<std::size_t>(i)];
    } else {
        number.digits.insert(number.digits.begin(), '1');
        ++number.point;
    }
}

struct Picture {
    std::string before, after;  // plain text around the digits
    int wholeMin = 0, decimalsMin = 0, decimalsMax = 0;
    bool groups = false;
};

Picture pictureOf(std::string_view pattern) {
    Picture picture;
    bool point = false;
    bool digits = false;
    for (const char c : pattern) {
        if (c == '0' || c == '#') {
            digits = true;
            if (point) {
                ++picture.decimalsMax;
                if (c == '0') picture.decimalsMin = picture.decimalsMax;
            } else if (c == '0') {
                ++picture.wholeMin;
            }
        } else if (c == '.' && !point) {
            point = true;
            digits = true;
        } else if (c == ',' && digits) {
            picture.groups = true;
        } else {
            (digits ? picture.after : picture.before) += c;
        }
    }
    return picture;
}

std::string drawn(Decimal number, std::string_view pattern) {
    const Picture picture = pictureOf(pattern);
    roundAway(number, picture.decimalsMax);
    std::string whole;
    std::string decimals;
    for (int i = 0; i < number.point; ++i) {
        const auto at = static_cast<std::size_t>(i);
        whole += at < number.digits.size() ? number.digits[at] : '0';
    }
    for (int i = 0; i < picture.decimalsMax; ++i) {
        const int at = number.point + i;
        decimals +=
            at >= 0 && at < static_cast<int>(number.digits.size()) ? number.digits[static_cast<std::size_t>(at)] : '0';
    }
    while (static_cast<int>(decimals.size()) > picture.decimalsMin && decimals.back() == '0') decimals.pop_back();
    while (static_cast<int>(whole.size()) < picture.wholeMin) whole.insert(whole.begin(), '0');
    const bool zero = (whole + decimals).find_first_not_of('0') == std::string::npos;
    if (picture.groups) {
        for (int at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3)
            whole.insert(static_cast<std::size_t>(at), ",");
    }
    std::string out = number.negative && !zero ? "-" : "";
    out += picture.before + whole;
    if (!decimals.empty()) out += "." + decimals;
    return out + picture.after;
}

/// Folds a two-byte Latin-1 letter (U+00C0 to U+00FE) to the wanted case in place.
void foldLatin(std::string& text, std::size_t at, bool upper) {
    if (static_cast<unsigned char>(text[at]) != 0xC3 || at + 1 >= text.size()) return;
    const auto second = static_cast<unsigned char>(text[at + 1]);
    if (upper && second >= 0xA0 && second <= 0xBE && second != 0xB7) text[at + 1] = static_cast<char>(second - 0x20);
    if (!upper && second >= 0x80 && second <= 0x9E && second != 0x97) text[at + 1] = static_cast<char>(second + 0x20);
}

std::string folded(std::string_view text, bool upper) {
    std::string out(text);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const char c = out[i];
        if (upper && c >= 'a' && c <= 'z') out[i] = static_cast<char>(c - 32);
        if (!upper && c >= 'A' && c <= 'Z') out[i] = static_cast<char>(c + 32);
        foldLatin(out, i, upper);
    }
    return out;
}

bool continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// The digits of a number text by the locale without groups and blanks ("-1234.5"), or empty.
std::string numberDigits(std::string_view raw) {
    std::string_view text = trimBlanks(raw);
    bool negative = false;
    bool sign = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        sign = true;
        negative = text.front() == '-';
        text.remove_prefix(1);
    } else if (!text.empty() && (text.back() == '-' || text.back() == '+')) {
        sign = true;
        negative = text.back() == '-';
        text.remove_suffix(1);
    }
    if (sign) text = trimBlanks(text);
    std::string out = negative ? "-" : "";
    bool digit = false;
    bool point = false;
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            digit = true;
            out += c;
        } else if (c == '.' && !point) {
            point = true;
            out += c;
        } else if (c == ',' && digit && !point) {
            continue;
        } else {
            return {};
        }
    }
    return digit ? out : std::string();
}

}  // namespace

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::string UCase(std::string_view text) { return folded(text, true); }
std::string LCase(std::string_view text) { return folded(text, false); }

std::string properCase(std::string_view text) {
    std::string out = LCase(text);
    bool start = true;
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (start && out[i] >= 'a' && out[i] <= 'z') out[i] = static_cast<char>(out[i] - 32);
        if (start) foldLatin(out, i, true);
        start = out[i] == ' ' || out[i] == '\t' || out[i] == '\n';
    }
    return out;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[i]);
        if ((x | y) >= 0x80) return UCase(a.substr(i)) == UCase(b.substr(i));
        if (x == y) continue;
        const auto lower = static_cast<unsigned char>(x | 0x20);
        if (lower != (y | 0x20) || lower < 'a' || lower > 'z') return false;
    }
    return true;
}

bool containsNoCase(std::string_view text, std::string_view part) {
    return UCase(text).find(UCase(part)) != std::string::npos;
}

bool startsNoCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equalsNoCase(text.substr(0, prefix.size()), prefix);
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    if (from.empty()) return std::string(text);
    std::size_t at = 0;
    for (std::size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, at)) {
        out.append(text.substr(at, hit - at)).append(to);
        at = hit + from.size();
    }
    return out.append(text.substr(at));
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

std::string spreadsheetCell(std::string_view text) {
    if (text.find_first_of("\t\r\n\"") == std::string_view::npos) return std::string(text);
    return '"' + replaceAll(text, "\"", "\"\"") + '"';
}

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0) out += separator;
        out += parts[i];
    }
    return out;
}

std::size_t charCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !continuation(c); }));
}

std::string midChars(std::string_view text, std::size_t start, std::size_t count) {
    std::string out;
    std::size_t index = 0;
    for (std::size_t i = 0; i < text.size(); ++index) {
        std::size_t next = i + 1;
        while (next < text.size() && continuation(text[next])) ++next;
        if (index >= start && index - start < count) out.append(text.substr(i, next - i));
        i = next;
    }
    return out;
}

bool IsNumeric(std::string_view text) { return !numberDigits(text).empty(); }

double numberOf(std::string_view text) {
    const std::string digits = numberDigits(text);
    double value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

std::string Format(Money value, std::string_view pattern) {
    const std::int64_t units = value.units();
    const auto size = units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    std::string fraction = std::to_string(size % Money::kUnitsPerOne);
    fraction.insert(0, 4 - fraction.size(), '0');
    return drawn(decimalOf((units < 0 ? "-" : "") + std::to_string(size / Money::kUnitsPerOne) + "." + fraction),
                 pattern);
}

std::string Format(double value, std::string_view pattern) {
    if (!std::isfinite(value)) throw Error(kErrOverflow, "Format", "Overflow");
    return drawn(decimalOf(plainText(value)), pattern);
}

std::string Format(long long value, std::string_view pattern) {
    return drawn(decimalOf(std::to_string(value)), pattern);
}

std::string plainText(double value) {
    char buffer[512];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return std::string(buffer, end.ptr);
}

}  // namespace kv
