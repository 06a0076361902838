#include "platform/print/CellFormat.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr std::string_view kAmountPattern = "#,##0.00";
constexpr std::string_view kDatePattern = "MM/dd/yyyy";

bool holdsDigits(std::string_view pattern) { return pattern.find_first_of("0#") != std::string_view::npos; }

bool holdsDateParts(std::string_view pattern) {
    return pattern.find_first_of("yMdHhDY") != std::string_view::npos && !holdsDigits(pattern);
}

int signOf(const Value& value) {
    if (value.isMoney()) return value.money() < Money() ? -1 : value.money().isZero() ? 0 : 1;
    const double number = value.number();
    return number < 0 ? -1 : number > 0 ? 1 : 0;
}

Value turned(const Value& value) {
    if (value.isMoney()) return -value.money();
    if (auto* whole = std::get_if<std::int64_t>(&value.raw())) return -*whole;
    return -value.number();
}

std::string drawnNumber(const Value& value, std::string_view picture) {
    if (!holdsDigits(picture)) return std::string(picture);
    if (picture.find('%') != std::string_view::npos) return Format(value.number() * 100.0, picture);
    if (value.isMoney()) return Format(value.money(), picture);
    if (auto* whole = std::get_if<std::int64_t>(&value.raw())) return Format(static_cast<long long>(*whole), picture);
    return Format(value.number(), picture);
}

/// True when the text is zero as drawn: "0.00" of 0.001 takes the zero part too.
bool drawnAsZero(const std::string& text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return c >= '1' && c <= '9'; });
}

std::string formatNumber(const Value& value, std::string_view pattern) {
    const std::vector<std::string> parts = split(pattern, ';');
    const int sign = signOf(value);
    if (parts.size() >= 3 && (sign == 0 || drawnAsZero(drawnNumber(value, parts[0])))) {
        return drawnNumber(Value(0), parts[2]);
    }
    if (sign < 0 && parts.size() >= 2 && !drawnAsZero(drawnNumber(value, parts[0]))) {
        return drawnNumber(turned(value), parts[1]);
    }
    return drawnNumber(value, parts[0]);
}

}  // namespace

std::string formatCell(const Value& value, std::string_view pattern) {
    if (value.isNull()) return {};
    if (value.isText()) return value.text();
    if (value.isDate()) {
        if (pattern.empty() || holdsDigits(pattern)) pattern = kDatePattern;
        return Format(value.date(), pattern);
    }
    if (auto* bit = std::get_if<bool>(&value.raw())) {
        const std::vector<std::string> words = split(pattern.empty() ? "Yes;No" : pattern, ';');
        return *bit ? words[0] : words.size() > 1 ? words[1] : std::string();
    }
    if (pattern.empty() || holdsDateParts(pattern)) {
        if (value.isMoney()) return formatNumber(value, kAmountPattern);
        return value.text();
    }
    return formatNumber(value, pattern);
}

std::string spreadsheetFormat(const Value& value, std::string_view pattern) {
    if (value.isDate()) {
        std::string out(pattern.empty() || holdsDigits(pattern) ? kDatePattern : pattern);
        std::transform(out.begin(), out.end(), out.begin(), [](char c) {
            const char low = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            return low == 'n' ? 'm' : low;
        });
        return out;
    }
    if (value.isText() || value.isNull() || std::holds_alternative<bool>(value.raw())) return {};
    if (pattern.empty() || !holdsDigits(pattern)) return value.isMoney() ? std::string(kAmountPattern) : std::string();
    // a part without digits is a plain text there and must stand in quotes
    std::string out;
    for (const std::string& part : split(pattern, ';')) {
        if (!out.empty()) out += ';';
        out += holdsDigits(part) || part.empty() ? part : "\"" + part + "\"";
    }
    return out;
}

bool isCellFormat(std::string_view pattern, std::string& why) {
    if (pattern.empty()) return true;
    if (std::count(pattern.begin(), pattern.end(), ';') > 2) {
        why = "a number format has at most three parts (positive;negative;zero)";
        return false;
    }
    if (!holdsDigits(pattern) && !holdsDateParts(pattern) && pattern.find(';') == std::string_view::npos) {
        why = "'" + std::string(pattern) + "' is neither a number format nor a date format";
        return false;
    }
    return true;
}

}  // namespace kv
