#include "platform/embedded/FormatFunction.h"

#include <algorithm>

#include "platform/embedded/DateTime.h"
#include "platform/embedded/Decimal.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

[[noreturn]] void refuse(std::string_view pattern) { raise(40001, {"FORMAT with '" + std::string(pattern) + "'"}); }

std::string digits(int value, std::size_t width) {
    std::string text = std::to_string(value);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

std::string dateRun(char letter, std::size_t run, Moment moment, std::string_view pattern) {
    const CivilDay day = civilOf(moment.days);
    const int hour = moment.ms / 3'600'000;
    switch (letter) {
        case 'y':
            return run <= 2 ? digits(day.year % 100, run) : digits(day.year, run);
        case 'M':
            if (run >= 4) return std::string(monthName(day.month));
            return run == 3 ? std::string(monthName(day.month).substr(0, 3)) : digits(day.month, run);
        case 'd': {
            const std::string_view name = weekdayName(weekdayOf(moment.days));
            if (run >= 4) return std::string(name);
            return run == 3 ? std::string(name.substr(0, 3)) : digits(day.day, run);
        }
        case 'H':
            return digits(hour, std::min<std::size_t>(run, 2));
        case 'h':
            return digits(hour % 12 == 0 ? 12 : hour % 12, std::min<std::size_t>(run, 2));
        case 'm':
            return digits(moment.ms / 60'000 % 60, std::min<std::size_t>(run, 2));
        case 's':
            return digits(moment.ms / 1'000 % 60, std::min<std::size_t>(run, 2));
        case 'f':
            if (run > 3) refuse(pattern);
            return digits(moment.ms % 1'000, 3).substr(0, run);
        case 't':
            return std::string(hour < 12 ? "AM" : "PM").substr(0, run);
        default:
            refuse(pattern);
    }
}

std::string formattedDate(Moment moment, std::string_view whole) {
    std::string_view pattern = whole;
    if (pattern == "d") pattern = "M/d/yyyy";
    if (pattern == "D") pattern = "dddd, MMMM d, yyyy";
    if (pattern.size() == 1) refuse(whole);
    std::string out;
    for (std::size_t i = 0; i < pattern.size();) {
        const char c = pattern[i];
        if (c == '\'') {
            const std::size_t end = pattern.find('\'', i + 1);
            if (end == std::string_view::npos) refuse(whole);
            out += pattern.substr(i + 1, end - i - 1);
            i = end + 1;
            continue;
        }
        if (c == '\\' && i + 1 < pattern.size()) {
            out += pattern[i + 1];
            i += 2;
            continue;
        }
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (!letter) {
            out += c;
            ++i;
            continue;
        }
        std::size_t run = 1;
        while (i + run < pattern.size() && pattern[i + run] == c) ++run;
        out += dateRun(c, run, moment, whole);
        i += run;
    }
    return out;
}

std::string grouped(std::string whole) {
    for (std::size_t at = whole.size(); at > 3; at -= 3) whole.insert(at - 3, 1, ',');
    return whole;
}

/// The size of a number with a count of decimals, halves away from zero.
struct Size {
    bool negative = false;
    std::string whole;
    std::string fraction;
};

Size sizeOf(const Cell& value, const Type& type, int places, int factorDigits) {
    const int scale = type.isFloat() ? 15 - std::min(15, factorDigits) : decimalShape(type).scale;
    Int128 units = value.storage == Storage::Integer ? rescaled(value.integer, 0, scale) : unitsOf(value.real, scale);
    units = rescaled(units, scale - factorDigits, places);
    const std::string text = unitsText(units < 0 ? -units : units, places);
    const std::size_t point = text.find('.');
    return {units < 0, text.substr(0, point), point == std::string::npos ? "" : text.substr(point + 1)};
}

std::string signedText(bool negative, const std::string& text) { return negative ? "-" + text : text; }

std::string standardNumber(const Cell& value, const Type& type, char letter, int places, std::string_view pattern) {
    const char kind = static_cast<char>(letter & ~32);
    const int decimals = places < 0 ? (kind == 'D' ? 0 : 2) : places;
    if (kind == 'D') {
        if (!type.isInteger()) refuse(pattern);
        Size size = sizeOf(value, type, 0, 0);
        if (places > static_cast<int>(size.whole.size())) {
            size.whole.insert(0, static_cast<std::size_t>(places) - size.whole.size(), '0');
        }
        return signedText(size.negative, size.whole);
    }
    const Size size = sizeOf(value, type, decimals, kind == 'P' ? 2 : 0);
    const std::string tail = decimals > 0 ? "." + size.fraction : "";
    switch (kind) {
        case 'N':
            return signedText(size.negative, grouped(size.whole) + tail);
        case 'F':
            return signedText(size.negative, size.whole + tail);
        case 'P':
            return signedText(size.negative, grouped(size.whole) + tail + "%");
        case 'C': {
            const std::string text = "$" + grouped(size.whole) + tail;
            return size.negative ? "(" + text + ")" : text;
        }
        default:
            refuse(pattern);
    }
}

/// A pattern such as "#,##0.00": text before and after the digits stands for itself.
std::string customNumber(const Cell& value, const Type& type, std::string_view pattern) {
    constexpr std::string_view kMarks = "0#,.";
    const std::size_t first = pattern.find_first_of(kMarks);
    const std::size_t last = pattern.find_last_of(kMarks);
    if (first == std::string_view::npos || pattern.find_first_of(";'\"\\eE") != std::string_view::npos) refuse(pattern);
    const std::string_view body = pattern.substr(first, last - first + 1);
    if (body.find_first_not_of(kMarks) != std::string_view::npos) refuse(pattern);
    const std::size_t point = body.find('.');
    const std::string_view wholeMarks = body.substr(0, point);
    const std::string_view fractionMarks = point == std::string_view::npos ? "" : body.substr(point + 1);
    if (fractionMarks.find_first_of(".,") != std::string_view::npos ||
        (!wholeMarks.empty() && wholeMarks.back() == ',')) {
        refuse(pattern);
    }
    const bool percent = pattern.find('%') != std::string_view::npos;
    const auto required = static_cast<std::size_t>(std::count(wholeMarks.begin(), wholeMarks.end(), '0'));
    Size size = sizeOf(value, type, static_cast<int>(fractionMarks.size()), percent ? 2 : 0);
    if (size.whole == "0") size.whole.clear();
    if (size.whole.size() < required) size.whole.insert(0, required - size.whole.size(), '0');
    if (wholeMarks.find(',') != std::string_view::npos) size.whole = grouped(size.whole);
    const std::size_t needed =
        fractionMarks.find_last_of('0') == std::string_view::npos ? 0 : fractionMarks.find_last_of('0') + 1;
    while (size.fraction.size() > needed && size.fraction.back() == '0') size.fraction.pop_back();
    std::string out(pattern.substr(0, first));
    out += size.whole;
    if (!size.fraction.empty()) out += "." + size.fraction;
    out += pattern.substr(last + 1);
    const bool zero = size.whole.find_first_of("123456789") == std::string::npos &&
                      size.fraction.find_first_of("123456789") == std::string::npos;
    return signedText(size.negative && !zero, out);
}

}  // namespace

std::string formatted(const Cell& value, const Type& type, std::string_view pattern) {
    if (type.isDate()) return formattedDate(storedMoment(value.text), pattern);
    if (!type.isNumber()) raise(8116, {kindName(type.kind), 1, "format"});
    const bool standard = !pattern.empty() &&
                          std::string_view("nNfFcCpPdD").find(pattern[0]) != std::string_view::npos &&
                          pattern.find_first_not_of("0123456789", 1) == std::string_view::npos && pattern.size() <= 3;
    if (!standard) return customNumber(value, type, pattern);
    int places = -1;
    for (const char c : pattern.substr(1)) places = (places < 0 ? 0 : places * 10) + (c - '0');
    if (places > 20) refuse(pattern);
    return standardNumber(value, type, pattern[0], places, pattern);
}

}  // namespace kv::tsql
