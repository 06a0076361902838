#include "platform/embedded/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace kv::tsql {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Length in bytes of the currency sign at the start of a text, 0 where there is none.
std::size_t currencySign(std::string_view text) {
    constexpr std::array<std::string_view, 6> kSigns = {"$", "₱", "€", "£", "¥", "¢"};
    for (const std::string_view sign : kSigns) {
        if (text.substr(0, sign.size()) == sign) return sign.size();
    }
    return 0;
}

std::string signedExponent(int exponent, int digitsMin) {
    std::string digits = std::to_string(exponent < 0 ? -exponent : exponent);
    while (static_cast<int>(digits.size()) < digitsMin) digits.insert(digits.begin(), '0');
    return (exponent < 0 ? "-" : "+") + digits;
}

struct Scientific {
    bool negative = false;
    std::string digits;  ///< at least one
    int exponent = 0;    ///< of the first digit
};

Scientific scientificOf(const char* begin, const char* end) {
    Scientific out;
    const char* at = begin;
    if (at != end && *at == '-') {
        out.negative = true;
        ++at;
    }
    for (; at != end && *at != 'e'; ++at) {
        if (isDigit(*at)) out.digits += *at;
    }
    if (at != end) {
        ++at;
        if (*at == '+') ++at;
        std::from_chars(at, end, out.exponent);
    }
    return out;
}

Scientific scientificOf(double value, int significant) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific,
                                   significant - 1)
                         .ptr;
    return scientificOf(buffer.data(), end);
}

/// Digits with a point before digit `whole` (which may lie outside of the digits).
std::string placed(const std::string& digits, int whole) {
    if (whole <= 0) return "0." + std::string(static_cast<std::size_t>(-whole), '0') + digits;
    const auto count = static_cast<std::size_t>(whole);
    if (count >= digits.size()) return digits + std::string(count - digits.size(), '0');
    return digits.substr(0, count) + "." + digits.substr(count);
}

void dropZeros(std::string& digits) {
    while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
}

std::string withGroups(std::string whole) {
    const std::size_t start = !whole.empty() && whole[0] == '-' ? 1 : 0;
    for (std::size_t at = whole.size(); at > start + 3; at -= 3) whole.insert(at - 3, 1, ',');
    return whole;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    while (!text.empty() &&
           (text.front() == ' ' || text.front() == '\t' || text.front() == '\n' || text.front() == '\r')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::string floatText(double value, int style) {
    if (style < 1 || style > 3) {
        if (value == 0) return "0";
        Scientific s = scientificOf(value, 6);
        dropZeros(s.digits);
        const std::string sign = s.negative ? "-" : "";
        if (s.exponent >= -4 && s.exponent < 6) return sign + placed(s.digits, s.exponent + 1);
        return sign + placed(s.digits, 1) + "e" + signedExponent(s.exponent, 3);
    }
    const Scientific s = scientificOf(value, style == 1 ? 8 : style == 2 ? 16 : 17);
    return (s.negative ? "-" : "") + placed(s.digits, 1) + "e" + signedExponent(s.exponent, 3);
}

std::string shortestFloat(double value, bool single) {
    if (value == 0) return "0";
    std::array<char, 64> buffer{};
    const auto result =
        single ? std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<float>(value),
                               std::chars_format::scientific)
               : std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific);
    Scientific s = scientificOf(buffer.data(), result.ptr);
    dropZeros(s.digits);
    const std::string sign = s.negative ? "-" : "";
    if (s.exponent >= -5 && s.exponent < 15) return sign + placed(s.digits, s.exponent + 1);
    return sign + placed(s.digits, 1) + "E" + signedExponent(s.exponent, 2);
}

std::string moneyText(Int128 units, int style) {
    if (style == 2 || style == 126) return unitsText(units, 4);
    std::string text = unitsText(rescaled(units, 4, 2), 2);
    if (style != 1) return text;
    const std::size_t point = text.find('.');
    return withGroups(text.substr(0, point)) + text.substr(point);
}

ReadInteger readInteger(std::string_view raw) {
    std::string_view text = trimmed(raw);
    if (text.empty()) return {};
    bool negative = false;
    if (text.front() == '-' || text.front() == '+') {
        negative = text.front() == '-';
        text = trimmed(text.substr(1));
    }
    if (text.empty()) return {0, NumberFault::Syntax};
    Int128 value = 0;
    bool overflow = false;
    for (const char c : text) {
        if (!isDigit(c)) return {0, NumberFault::Syntax};
        if (!overflow) value = value * 10 + (c - '0');
        overflow = overflow || value > (Int128{1} << 64);
    }
    if (negative) value = -value;
    if (overflow || value > INT64_MAX || value < INT64_MIN) return {0, NumberFault::Overflow};
    return {static_cast<std::int64_t>(value), NumberFault::None};
}

std::optional<double> readFloat(std::string_view raw) {
    std::string_view text = trimmed(raw);
    if (text.empty()) return 0.0;
    bool negative = false;
    if (text.front() == '-' || text.front() == '+') {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty() || (!isDigit(text.front()) && text.front() != '.')) return std::nullopt;
    double value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (fault != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return negative ? -value : value;
}

std::optional<Int128> readMoney(std::string_view raw) {
    std::string_view text = trimmed(raw);
    if (text.empty()) return Int128{0};
    bool negative = false;
    bool sign = false;
    bool currency = false;
    for (;;) {
        if (!sign && !text.empty() && (text.front() == '-' || text.front() == '+')) {
            sign = true;
            negative = text.front() == '-';
            text.remove_prefix(1);
        } else if (const std::size_t length = currencySign(text); !currency && length > 0) {
            currency = true;
            text.remove_prefix(length);
        } else {
            break;
        }
        text = trimmed(text);
    }
    std::string digits;
    bool point = false;
    for (const char c : text) {
        if (c == ',' && !point) continue;
        if (c == '.') point = true;
        digits += c;
    }
    if (digits.empty()) return (sign || currency) ? std::optional<Int128>(0) : std::nullopt;
    if (!isDigit(digits[0]) && digits[0] != '.') return std::nullopt;
    const auto units = parseUnits(digits, 4);
    if (!units) return std::nullopt;
    return negative ? -*units : *units;
}

bool looksNumeric(std::string_view text) {
    const std::string_view inner = trimmed(text);
    if (inner.empty()) return false;
    if (inner == "." || inner == ",") return true;
    if (inner.find_first_not_of("0123456789") == std::string_view::npos) return true;
    if (inner.size() > 300) return false;
    if (readFloat(inner)) return true;
    // beyond 38 digits no money is left to read
    if (inner.size() > 30) return false;
    return readMoney(inner).has_value();
}

std::string hexText(std::string_view bytes) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += kHex[byte >> 4];
        out += kHex[byte & 15];
    }
    return out;
}

std::optional<std::string> bytesOfHex(std::string_view hexDigits) {
    if (hexDigits.size() % 2 != 0) return std::nullopt;
    const auto valueOf = [](char c) {
        if (isDigit(c)) return c - '0';
        const char low = static_cast<char>(c | 32);
        return low >= 'a' && low <= 'f' ? low - 'a' + 10 : -1;
    };
    std::string out;
    for (std::size_t i = 0; i < hexDigits.size(); i += 2) {
        const int high = valueOf(hexDigits[i]);
        const int low = valueOf(hexDigits[i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        out += static_cast<char>(high * 16 + low);
    }
    return out;
}

}  // namespace kv::tsql
