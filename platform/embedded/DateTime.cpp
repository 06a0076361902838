#include "platform/embedded/DateTime.h"

#include <array>
#include <cmath>

#include "platform/embedded/SqlError.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

constexpr std::int64_t kDayMs = 86'400'000;
constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

struct PartRow {
    std::string_view name;
    DatePart part;
};
constexpr PartRow kParts[] = {
    {"year", DatePart::Year},
    {"yyyy", DatePart::Year},
    {"yy", DatePart::Year},
    {"quarter", DatePart::Quarter},
    {"qq", DatePart::Quarter},
    {"q", DatePart::Quarter},
    {"month", DatePart::Month},
    {"mm", DatePart::Month},
    {"m", DatePart::Month},
    {"dayofyear", DatePart::DayOfYear},
    {"dy", DatePart::DayOfYear},
    {"y", DatePart::DayOfYear},
    {"day", DatePart::Day},
    {"dd", DatePart::Day},
    {"d", DatePart::Day},
    {"week", DatePart::Week},
    {"wk", DatePart::Week},
    {"ww", DatePart::Week},
    {"iso_week", DatePart::IsoWeek},
    {"isowk", DatePart::IsoWeek},
    {"isoww", DatePart::IsoWeek},
    {"weekday", DatePart::Weekday},
    {"dw", DatePart::Weekday},
    {"w", DatePart::Weekday},
    {"hour", DatePart::Hour},
    {"hh", DatePart::Hour},
    {"minute", DatePart::Minute},
    {"mi", DatePart::Minute},
    {"n", DatePart::Minute},
    {"second", DatePart::Second},
    {"ss", DatePart::Second},
    {"s", DatePart::Second},
    {"millisecond", DatePart::Millisecond},
    {"ms", DatePart::Millisecond},
    {"microsecond", DatePart::Microsecond},
    {"mcs", DatePart::Microsecond},
    {"nanosecond", DatePart::Nanosecond},
    {"ns", DatePart::Nanosecond},
};

void putDigits(char* at, int value, int width) {
    for (int i = width - 1; i >= 0; --i) {
        at[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
}

int digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int value = 0;
    for (std::size_t i = at; i < at + count; ++i) value = value * 10 + (text[i] - '0');
    return value;
}

/// Week of ISO 8601: the week that holds the year's first Thursday is week 1.
int isoWeek(std::int32_t days) {
    const std::int32_t mondayBased = (weekdayOf(days) + 6) % 7;
    const std::int32_t thursday = days - mondayBased + 3;
    const int year = civilOf(thursday).year;
    return (thursday - daysOf(year, 1, 1)) / 7 + 1;
}

std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
    const std::int64_t q = a / b;
    return (a % b != 0 && (a < 0) != (b < 0)) ? q - 1 : q;
}

/// Days of the type's first day; datetime begins with 1753.
std::int32_t firstDay(const Type& type) {
    switch (type.kind) {
        case Kind::DateTime:
            return kDaysMinDateTime;
        case Kind::SmallDateTime:
            return 0;
        default:
            return kDaysMin;
    }
}

bool inRange(Moment moment, const Type& type) {
    const std::int32_t last = type.kind == Kind::SmallDateTime ? kDaysMaxSmall : kDaysMax;
    return moment.days >= firstDay(type) && moment.days <= last;
}

}  // namespace

Moment Moment::ofTotal(std::int64_t totalMs) {
    const std::int64_t days = floorDivide(totalMs, kDayMs);
    return Moment{static_cast<std::int32_t>(days), static_cast<std::int32_t>(totalMs - days * kDayMs)};
}

std::int32_t daysOf(int year, int month, int day) {
    const int y = month <= 2 ? year - 1 : year;
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 693901;  // 693901 days from 0000-03-01 to 1900-01-01
}

CivilDay civilOf(std::int32_t days) {
    const int shifted = days + 693901;
    const int era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    const int dayOfEra = shifted - era * 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfYear - (153 * shiftedMonth + 2) / 5 + 1};
}

int lastDayOf(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

bool dayExists(int year, int month, int day) {
    return year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= lastDayOf(year, month);
}

int weekdayOf(std::int32_t days) { return ((days % 7) + 8) % 7; }  // 1900-01-01 was a Monday

std::string momentText(Moment moment) {
    const CivilDay day = civilOf(moment.days);
    std::string text = "0000-00-00 00:00:00.000";
    putDigits(text.data(), day.year, 4);
    putDigits(text.data() + 5, day.month, 2);
    putDigits(text.data() + 8, day.day, 2);
    if (moment.ms != 0) {
        putDigits(text.data() + 11, moment.ms / 3'600'000, 2);
        putDigits(text.data() + 14, moment.ms / 60'000 % 60, 2);
        putDigits(text.data() + 17, moment.ms / 1'000 % 60, 2);
        putDigits(text.data() + 20, moment.ms % 1'000, 3);
    }
    return text;
}

Moment storedMoment(std::string_view text) {
    if (text.size() < 10) return {};
    Moment out{daysOf(digitsAt(text, 0, 4), digitsAt(text, 5, 2), digitsAt(text, 8, 2)), 0};
    if (text.size() >= 19) {
        out.ms = ((digitsAt(text, 11, 2) * 60 + digitsAt(text, 14, 2)) * 60 + digitsAt(text, 17, 2)) * 1000;
    }
    if (text.size() >= 23) out.ms += digitsAt(text, 20, 3);
    return out;
}

Moment roundedTo300(Moment moment) {
    const std::int32_t ticks = (moment.ms * 3 + 5) / 10;  // of 1/300 s
    const std::int32_t ms = (ticks * 10 + 1) / 3;
    if (ms >= kDayMs) return {moment.days + 1, 0};
    return {moment.days, ms};
}

Moment fitted(Moment moment, const Type& type, std::string_view fromType) {
    switch (type.kind) {
        case Kind::Date:
            moment.ms = 0;
            break;
        case Kind::DateTime:
            moment = roundedTo300(moment);
            break;
        case Kind::SmallDateTime:
            // SQL Server rounds what a datetime shows: 29.998 s and less go down
            moment = Moment::ofTotal((moment.total() + 30'001) / 60'000 * 60'000);
            break;
        default:
            if (type.scale < 3) {
                const std::int64_t grain = type.scale == 0 ? 1000 : type.scale == 1 ? 100 : 10;
                moment = Moment::ofTotal(floorDivide(moment.total() + grain / 2, grain) * grain);
            }
    }
    if (!inRange(moment, type)) raise(242, {fromType, kindName(type.kind)});
    return moment;
}

std::optional<DatePart> datePartOf(std::string_view name) {
    for (const PartRow& row : kParts) {
        if (sameWord(row.name, name)) return row.part;
    }
    return std::nullopt;
}

std::string_view datePartName(DatePart part) {
    for (const PartRow& row : kParts) {
        if (row.part == part) return row.name;
    }
    return "";
}

std::string_view monthName(int month) { return kMonths[static_cast<std::size_t>(month - 1)]; }
std::string_view weekdayName(int weekday) { return kWeekdays[static_cast<std::size_t>(weekday)]; }

int datePart(DatePart part, Moment moment) {
    const CivilDay day = civilOf(moment.days);
    switch (part) {
        case DatePart::Year:
            return day.year;
        case DatePart::Quarter:
            return (day.month + 2) / 3;
        case DatePart::Month:
            return day.month;
        case DatePart::DayOfYear:
            return moment.days - daysOf(day.year, 1, 1) + 1;
        case DatePart::Day:
            return day.day;
        case DatePart::Week: {
            const std::int32_t first = daysOf(day.year, 1, 1);
            return (moment.days - first + weekdayOf(first)) / 7 + 1;
        }
        case DatePart::IsoWeek:
            return isoWeek(moment.days);
        case DatePart::Weekday:
            return weekdayOf(moment.days) + 1;
        case DatePart::Hour:
            return moment.ms / 3'600'000;
        case DatePart::Minute:
            return moment.ms / 60'000 % 60;
        case DatePart::Second:
            return moment.ms / 1'000 % 60;
        case DatePart::Millisecond:
            return moment.ms % 1'000;
        case DatePart::Microsecond:
            return moment.ms % 1'000 * 1'000;
        case DatePart::Nanosecond:
            return moment.ms % 1'000 * 1'000'000;
    }
    return 0;
}

std::string dateName(DatePart part, Moment moment) {
    if (part == DatePart::Month) return std::string(monthName(civilOf(moment.days).month));
    if (part == DatePart::Weekday) return std::string(weekdayName(weekdayOf(moment.days)));
    return std::to_string(datePart(part, moment));
}

Moment dateAdd(DatePart part, std::int64_t number, Moment moment, const Type& type) {
    const auto out = [&]() -> Moment { raise(517, {kindName(type.kind)}); };
    constexpr std::int64_t kTooMany = std::int64_t{1} << 40;
    if (number > kTooMany || number < -kTooMany) return out();
    Moment result = moment;
    const auto addMonths = [&](std::int64_t months) {
        const CivilDay day = civilOf(moment.days);
        const std::int64_t count = day.year * std::int64_t{12} + day.month - 1 + months;
        const std::int64_t year = floorDivide(count, 12);
        if (year < 1 || year > 9999) out();
        const int month = static_cast<int>(count - year * 12) + 1;
        result.days =
            daysOf(static_cast<int>(year), month, std::min(day.day, lastDayOf(static_cast<int>(year), month)));
    };
    const auto addMs = [&](std::int64_t ms) {
        const std::int64_t total = moment.total() + ms;
        if (floorDivide(total, kDayMs) > kDaysMax || floorDivide(total, kDayMs) < kDaysMin) out();
        result = Moment::ofTotal(total);
    };
    switch (part) {
        case DatePart::Year:
            addMonths(number * 12);
            break;
        case DatePart::Quarter:
            addMonths(number * 3);
            break;
        case DatePart::Month:
            addMonths(number);
            break;
        case DatePart::Week:
        case DatePart::IsoWeek:
            addMs(number * 7 * kDayMs);
            break;
        case DatePart::DayOfYear:
        case DatePart::Day:
        case DatePart::Weekday:
            addMs(number * kDayMs);
            break;
        case DatePart::Hour:
            addMs(number * 3'600'000);
            break;
        case DatePart::Minute:
            addMs(number * 60'000);
            break;
        case DatePart::Second:
            addMs(number * 1'000);
            break;
        case DatePart::Millisecond:
            addMs(number);
            break;
        case DatePart::Microsecond:
            addMs(number / 1'000);
            break;
        case DatePart::Nanosecond:
            addMs(number / 1'000'000);
            break;
    }
    if (type.kind == Kind::DateTime) result = roundedTo300(result);
    if (type.kind == Kind::SmallDateTime)
        result = Moment::ofTotal(floorDivide(result.total() + 30'000, 60'000) * 60'000);
    if (!inRange(result, type)) return out();
    return result;
}

std::int32_t dateDiff(DatePart part, Moment a, Moment b) {
    const CivilDay from = civilOf(a.days);
    const CivilDay to = civilOf(b.days);
    const auto quarter = [](const CivilDay& day) { return day.year * 4 + (day.month - 1) / 3; };
    const auto boundaries = [&](std::int64_t unit) {
        return floorDivide(b.total(), unit) - floorDivide(a.total(), unit);
    };
    std::int64_t count = 0;
    switch (part) {
        case DatePart::Year:
            count = to.year - from.year;
            break;
        case DatePart::Quarter:
            count = quarter(to) - quarter(from);
            break;
        case DatePart::Month:
            count = (to.year * 12 + to.month) - (from.year * 12 + from.month);
            break;
        case DatePart::Week:
        case DatePart::IsoWeek:
            count = floorDivide(b.days + 1, 7) - floorDivide(a.days + 1, 7);  // weeks begin with Sunday
            break;
        case DatePart::DayOfYear:
        case DatePart::Day:
        case DatePart::Weekday:
            count = b.days - a.days;
            break;
        case DatePart::Hour:
            count = boundaries(3'600'000);
            break;
        case DatePart::Minute:
            count = boundaries(60'000);
            break;
        case DatePart::Second:
            count = boundaries(1'000);
            break;
        case DatePart::Millisecond:
            count = boundaries(1);
            break;
        case DatePart::Microsecond:
            count = boundaries(1) * 1'000;
            break;
        case DatePart::Nanosecond:
            count = boundaries(1);
            if (count > INT32_MAX || count < INT32_MIN) raise(535);
            count *= 1'000'000;
            break;
    }
    if (count > INT32_MAX || count < INT32_MIN) raise(535);
    return static_cast<std::int32_t>(count);
}

Moment endOfMonth(Moment moment, std::int64_t monthsToAdd) {
    const Moment moved = dateAdd(DatePart::Month, monthsToAdd, Moment{moment.days, 0}, Type::date());
    const CivilDay day = civilOf(moved.days);
    return Moment{daysOf(day.year, day.month, lastDayOf(day.year, day.month)), 0};
}

double dayNumber(Moment moment) { return moment.days + static_cast<double>(moment.ms) / static_cast<double>(kDayMs); }

Moment momentOfDays(double days) {
    if (!(days >= kDaysMinDateTime && days < kDaysMax + 1)) raise(8115, {"expression", "datetime"});
    return Moment::ofTotal(std::llround(days * static_cast<double>(kDayMs)));
}

}  // namespace kv::tsql
