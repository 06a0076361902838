#include "platform/forms/DateTyping.h"

#include <array>
#include <cctype>
#include <vector>

#include "platform/base/Text.h"

namespace kv {

namespace {

constexpr int kPivot = 30;  // two-digit years below it are 20xx

/// Runs of digits and runs of letters; anything else separates them.
std::vector<std::string> partsOf(std::string_view text) {
    std::vector<std::string> parts;
    char last = 0;
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        const char kind = std::isdigit(u) ? '0' : std::isalpha(u) ? 'a' : ' ';
        if (kind != ' ') {
            if (kind != last) parts.emplace_back();
            parts.back() += c;
        }
        last = kind;
    }
    return parts;
}

bool isDigits(const std::string& part) { return std::isdigit(static_cast<unsigned char>(part.front())) != 0; }

int number(const std::string& digits) { return digits.size() > 8 ? -1 : std::stoi(digits); }

std::optional<int> yearOf(const std::string& digits) {
    const int year = number(digits);
    if (digits.size() == 4) return year;
    if (digits.size() <= 2) return year < kPivot ? 2000 + year : 1900 + year;
    return std::nullopt;
}

std::optional<int> monthNamed(const std::string& word) {
    static constexpr std::array names{"january", "february", "march",     "april",   "may",      "june",
                                      "july",    "august",   "september", "october", "november", "december"};
    if (word.size() < 3) return std::nullopt;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (startsNoCase(names[i], word)) return static_cast<int>(i) + 1;
    return std::nullopt;
}

std::optional<Date> dayIfReal(std::optional<int> year, int month, int day) {
    if (!year || *year < 100 || *year > 9999 || !isRealDay(*year, month, day)) return std::nullopt;
    return Date(*year, month, day);
}

std::optional<Date> monthIfReal(std::optional<int> year, int month) { return dayIfReal(year, month, 1); }

std::optional<Date> dayInDigits(const std::string& digits, const Date& current) {
    const auto cut = [&](std::size_t at, std::size_t count) { return number(digits.substr(at, count)); };
    switch (digits.size()) {
        case 1:
        case 2:
            return dayIfReal(current.year(), current.month(), number(digits));
        case 4:
            return dayIfReal(current.year(), cut(0, 2), cut(2, 2));
        case 6:
            return dayIfReal(yearOf(digits.substr(4)), cut(0, 2), cut(2, 2));
        case 8:
            if (const auto day = dayIfReal(cut(4, 4), cut(0, 2), cut(2, 2))) return day;
            return dayIfReal(cut(0, 4), cut(4, 2), cut(6, 2));
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<Date> readTypedDay(std::string_view text, const Date& current) {
    const auto parts = partsOf(text);
    if (parts.empty() || parts.size() > 3) return std::nullopt;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (isDigits(parts[i])) continue;
        // a named month: "15 Mar 2024", "March 15, 2024", "mar 15"
        const auto month = monthNamed(parts[i]);
        if (!month || i > 1 || parts.size() < 2 || !isDigits(parts[1 - i])) return std::nullopt;
        const auto year = parts.size() == 3 ? yearOf(parts[2]) : std::optional<int>(current.year());
        return dayIfReal(year, *month, number(parts[1 - i]));
    }
    if (parts.size() == 1) return dayInDigits(parts[0], current);
    if (parts.size() == 2) return dayIfReal(current.year(), number(parts[0]), number(parts[1]));
    if (parts[0].size() == 4) return dayIfReal(number(parts[0]), number(parts[1]), number(parts[2]));
    return dayIfReal(yearOf(parts[2]), number(parts[0]), number(parts[1]));
}

std::optional<Date> readTypedMonth(std::string_view text, const Date& current) {
    const auto parts = partsOf(text);
    if (parts.empty() || parts.size() > 3) return std::nullopt;
    if (!isDigits(parts[0])) {
        const auto month = monthNamed(parts[0]);
        if (!month || parts.size() > 2) return std::nullopt;
        const auto year = parts.size() == 2 ? (isDigits(parts[1]) ? yearOf(parts[1]) : std::nullopt)
                                            : std::optional<int>(current.year());
        return monthIfReal(year, *month);
    }
    if (parts.size() == 3) {
        const auto day = readTypedDay(text, current);  // a whole date stands for its month
        return day ? monthIfReal(day->year(), day->month()) : std::nullopt;
    }
    if (parts.size() == 2) {
        if (!isDigits(parts[1])) return std::nullopt;
        if (parts[0].size() == 4) return monthIfReal(number(parts[0]), number(parts[1]));
        return monthIfReal(yearOf(parts[1]), number(parts[0]));
    }
    const std::string& digits = parts[0];
    const auto cut = [&](std::size_t at, std::size_t count) { return number(digits.substr(at, count)); };
    if (digits.size() <= 2) return monthIfReal(current.year(), number(digits));
    if (digits.size() == 4) return monthIfReal(yearOf(digits.substr(2)), cut(0, 2));
    if (digits.size() != 6) return std::nullopt;
    if (const auto month = monthIfReal(cut(0, 4), cut(4, 2)); month && cut(0, 4) >= 1900) return month;
    return monthIfReal(cut(2, 4), cut(0, 2));
}

bool isMonthFormat(std::string_view format) { return format.find_first_of("dD") == std::string_view::npos; }

}  // namespace kv
