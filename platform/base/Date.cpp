#include "platform/base/Date.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr std::int64_t kDayMs = 86'400'000;
constexpr std::array<const char*, 12> kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> kDays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                              "Thursday", "Friday", "Saturday"};

/// Days from 1900-01-01 of a proleptic Gregorian day.
std::int64_t daysOf(int year, int month, int day) {
    const std::chrono::sys_days epoch = std::chrono::year{1900} / 1 / 1;
    const std::chrono::sys_days that =
        std::chrono::year{year} / static_cast<unsigned>(month) / static_cast<unsigned>(day);
    return (that - epoch).count();
}

std::chrono::year_month_day civil(std::int64_t ms) {
    const std::int64_t days = ms >= 0 ? ms / kDayMs : -((-ms + kDayMs - 1) / kDayMs);
    const std::chrono::sys_days epoch = std::chrono::year{1900} / 1 / 1;
    return std::chrono::year_month_day{epoch + std::chrono::days{days}};
}

std::optional<Date> makeIfReal(int year, int month, int day, std::int64_t timeMs) {
    if (!isRealDay(year, month, day)) return std::nullopt;
    return Date(year, month, day).addMs(timeMs);
}

/// A cursor over a date text: numbers, words and separators.
struct Reader {
    std::string_view text;
    std::size_t at = 0;

    bool done() const { return at >= text.size(); }
    void blanks() {
        while (!done() && (text[at] == ' ' || text[at] == ',')) ++at;
    }
    bool take(char c) {
        if (done() || text[at] != c) return false;
        ++at;
        return true;
    }
    std::optional<int> number(int digitsMax, int* digits = nullptr) {
        int value = 0;
        int count = 0;
        while (!done() && text[at] >= '0' && text[at] <= '9' && count < digitsMax) {
            value = value * 10 + (text[at++] - '0');
            ++count;
        }
        if (digits) *digits = count;
        if (count == 0) return std::nullopt;
        return value;
    }
    std::string word() {
        std::string found;
        while (!done() && ((text[at] | 32) >= 'a' && (text[at] | 32) <= 'z')) found += text[at++];
        return found;
    }
};

int monthOfName(std::string_view word) {
    for (std::size_t m = 0; m < kMonths.size(); ++m) {
        const std::string_view full = kMonths[m];
        if (equalsNoCase(word, full) || equalsNoCase(word, full.substr(0, 3))) return static_cast<int>(m) + 1;
    }
    return 0;
}

int fullYear(int year, int digits) {
    if (digits > 2) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

/// Time of day in milliseconds: "H[:mm[:ss[.fff]]] [AM|PM]"; nothing left over may follow.
std::optional<std::int64_t> readTime(Reader& in) {
    auto hour = in.number(2);
    if (!hour) return std::nullopt;
    int minute = 0;
    int second = 0;
    int milli = 0;
    const bool colon = in.take(':');
    if (colon) {
        auto m = in.number(2);
        if (!m) return std::nullopt;
        minute = *m;
        if (in.take(':')) {
            auto s = in.number(2);
            if (!s) return std::nullopt;
            second = *s;
            if (in.take('.')) {
                int digits = 0;
                auto f = in.number(3, &digits);
                if (!f) return std::nullopt;
                milli = *f * (digits == 1 ? 100 : digits == 2 ? 10 : 1);
                while (!in.done() && in.text[in.at] >= '0' && in.text[in.at] <= '9') ++in.at;
            }
        }
    }
    in.blanks();
    const std::string half = in.word();
    if (!half.empty()) {
        if (*hour < 1 || *hour > 12) return std::nullopt;
        if (equalsNoCase(half, "PM")) {
            *hour = *hour % 12 + 12;
        } else if (equalsNoCase(half, "AM")) {
            *hour %= 12;
        } else {
            return std::nullopt;
        }
    } else if (!colon) {
        return std::nullopt;
    }
    in.blanks();
    if (!in.done() || *hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return ((*hour * 60LL + minute) * 60 + second) * 1000 + milli;
}

struct DayParts {
    int year = 0, month = 0, day = 0;
};

std::optional<DayParts> readNamedMonth(Reader& in, std::optional<int> dayFirst) {
    const int month = monthOfName(in.word());
    if (month == 0) return std::nullopt;
    in.take('-');
    in.blanks();
    int day = dayFirst.value_or(0);
    if (!dayFirst) {
        auto d = in.number(2);
        if (!d) return std::nullopt;
        day = *d;
        in.blanks();
    }
    int digits = 0;
    auto year = in.number(4, &digits);
    if (!year) return std::nullopt;
    return DayParts{fullYear(*year, digits), month, day};
}

std::optional<DayParts> readDay(Reader& in) {
    const bool nameFirst = !in.done() && (in.text[in.at] | 32) >= 'a' && (in.text[in.at] | 32) <= 'z';
    if (nameFirst) return readNamedMonth(in, std::nullopt);
    int digits = 0;
    auto first = in.number(4, &digits);
    if (!first) return std::nullopt;
    const char mark = in.done() ? '\0' : in.text[in.at];
    if (mark == ' ' || (mark == '-' && in.at + 1 < in.text.size() && (in.text[in.at + 1] | 32) >= 'a')) {
        in.take('-');
        in.blanks();
        return readNamedMonth(in, *first);
    }
    if (mark != '/' && mark != '-') return std::nullopt;
    in.take(mark);
    auto second = in.number(2);
    if (!second || !in.take(mark)) return std::nullopt;
    if (digits == 4) {
        auto day = in.number(2);
        if (!day) return std::nullopt;
        return DayParts{*first, *second, *day};
    }
    int yearDigits = 0;
    auto year = in.number(4, &yearDigits);
    if (!year || digits > 2 || yearDigits == 3 || yearDigits == 1) return std::nullopt;
    return DayParts{fullYear(*year, yearDigits), *first, *second};
}

std::optional<std::int64_t>& fixedOffset() {
    static std::optional<std::int64_t> offset;  // fixed clock minus the real one, in ms
    return offset;
}

std::int64_t realNowMs() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&seconds, &local);
    const auto milli = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    return Date(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                local.tm_sec > 59 ? 59 : local.tm_sec, static_cast<int>(milli))
        .msSince1900();
}

std::string padded(int value, int width) {
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%0*d", width, value);
    return buffer.data();
}

}  // namespace

int daysInMonth(int year, int month) {
    const auto last = std::chrono::year{year} / static_cast<unsigned>(month) / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(std::chrono::year_month_day{last}.day()));
}

bool isRealDay(int year, int month, int day) {
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= daysInMonth(year, month);
}

Date::Date(int year, int month, int day, int hour, int minute, int second, int millisecond) {
    if (!isRealDay(year, month, day) || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
        second > 59 || millisecond < 0 || millisecond > 999) {
        throw Error(5, "Date", "Invalid procedure call or argument");
    }
    ms_ = daysOf(year, month, day) * kDayMs + ((hour * 60LL + minute) * 60 + second) * 1000 + millisecond;
}

Date Date::serial(int year, int month, int day) {
    const int months = year * 12 + (month - 1);
    const int y = months >= 0 ? months / 12 : (months - 11) / 12;
    return Date(y, months - y * 12 + 1, 1).addDays(day - 1);
}

std::optional<Date> Date::fromIso(std::string_view text) {
    if (text.size() < 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    return parseDate(text);
}

int Date::year() const { return static_cast<int>(civil(ms_).year()); }
int Date::month() const { return static_cast<int>(static_cast<unsigned>(civil(ms_).month())); }
int Date::day() const { return static_cast<int>(static_cast<unsigned>(civil(ms_).day())); }

int Date::weekday() const {
    const std::int64_t days = (ms_ - msOfDay()) / kDayMs;
    return static_cast<int>(((days + 1) % 7 + 7) % 7);  // 1900-01-01 was a Monday
}

Date Date::addDays(int days) const { return addMs(days * kDayMs); }

Date Date::addMonths(int months) const {
    const int count = year() * 12 + month() - 1 + months;
    const int y = count / 12;
    const int m = count % 12 + 1;
    const int d = day() < daysInMonth(y, m) ? day() : daysInMonth(y, m);
    return Date(y, m, d).addMs(msOfDay());
}

Date Date::addMs(std::int64_t ms) const {
    Date result;
    result.ms_ = ms_ + ms;
    return result;
}

Date Date::dayOnly() const { return addMs(-msOfDay()); }

std::optional<Date> parseDate(std::string_view text) {
    Reader in{trimBlanks(text)};
    if (in.done()) return std::nullopt;
    auto parts = readDay(in);
    if (!parts) return std::nullopt;
    std::int64_t time = 0;
    if (!in.done()) {
        if (!in.take('T') && !in.take(' ')) return std::nullopt;
        in.blanks();
        auto t = readTime(in);
        if (!t) return std::nullopt;
        time = *t;
    }
    return makeIfReal(parts->year, parts->month, parts->day, time);
}

bool IsDate(std::string_view text) { return parseDate(text).has_value(); }

Date CDate(std::string_view text) {
    auto date = parseDate(text);
    if (!date) throw Error(kErrTypeMismatch, "Date", "Type mismatch");
    return *date;
}

std::string Format(const Date& date, std::string_view pattern) {
    std::string out;
    const bool halfDay = pattern.find("AM/PM") != std::string_view::npos;
    char previous = 0;  // the last time letter written, to tell minutes from months
    for (std::size_t i = 0; i < pattern.size();) {
        const char letter = static_cast<char>(pattern[i] | 32);
        std::size_t run = 1;
        while (i + run < pattern.size() && (pattern[i + run] | 32) == letter) ++run;
        if (pattern.substr(i, 5) == "AM/PM") {
            out += date.hour() < 12 ? "AM" : "PM";
            i += 5;
            continue;
        }
        const bool minutes = letter == 'n' || (letter == 'm' && pattern[i] == 'm' && previous == 'h');
        const int hour = halfDay ? (date.hour() % 12 == 0 ? 12 : date.hour() % 12) : date.hour();
        if (letter == 'y') {
            out += run >= 3 ? padded(date.year(), 4) : padded(date.year() % 100, 2);
        } else if (minutes) {
            out += padded(date.minute(), run >= 2 ? 2 : 1);
        } else if (letter == 'm') {
            const std::string_view name = kMonths[static_cast<std::size_t>(date.month() - 1)];
            out += run >= 4   ? std::string(name)
                   : run == 3 ? std::string(name.substr(0, 3))
                              : padded(date.month(), run >= 2 ? 2 : 1);
        } else if (letter == 'd') {
            const std::string_view name = kDays[static_cast<std::size_t>(date.weekday())];
            out += run >= 4   ? std::string(name)
                   : run == 3 ? std::string(name.substr(0, 3))
                              : padded(date.day(), run >= 2 ? 2 : 1);
        } else if (letter == 'h') {
            out += padded(hour, run >= 2 ? 2 : 1);
        } else if (letter == 's') {
            out += padded(date.second(), run >= 2 ? 2 : 1);
        } else if (letter == 'f') {
            out += padded(date.millisecond(), 3).substr(0, run);
        } else {
            out.append(pattern.substr(i, run));
            if (pattern[i] == ' ') previous = 0;
            i += run;
            continue;
        }
        previous = letter;
        i += run;
    }
    return out;
}

std::string defaultText(const Date& date) {
    return Format(date, date == date.dayOnly() ? "M/d/yyyy" : "M/d/yyyy h:nn:ss AM/PM");
}

Date Now() { return Date().addMs(realNowMs() + fixedOffset().value_or(0)); }
Date Today() { return Now().dayOnly(); }
void fixClock(const Date& now) { fixedOffset() = now.msSince1900() - realNowMs(); }
void releaseClock() { fixedOffset().reset(); }

}  // namespace kv
