#pragma once
// DateTime: moments as the engine keeps them (text of 23 characters), their parts, their arithmetic and the reading of
// date texts.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/embedded/Types.h"

namespace kv::tsql {

/// A moment: days from 1900-01-01 (negative before) and milliseconds of the day.
struct Moment {
    std::int32_t days = 0;
    std::int32_t ms = 0;  ///< 0 to 86,399,999

    auto operator<=>(const Moment&) const = default;
    std::int64_t total() const { return days * std::int64_t{86'400'000} + ms; }
    static Moment ofTotal(std::int64_t ms);
};

struct CivilDay {
    int year = 1900;
    int month = 1;
    int day = 1;
};

std::int32_t daysOf(int year, int month, int day);  ///< the day must exist
CivilDay civilOf(std::int32_t days);
int lastDayOf(int year, int month);
bool dayExists(int year, int month, int day);  ///< years 1 to 9999
int weekdayOf(std::int32_t days);              ///< 0 Sunday to 6 Saturday

constexpr std::int32_t kDaysMin = -693595;         ///< 0001-01-01
constexpr std::int32_t kDaysMinDateTime = -53690;  ///< 1753-01-01
constexpr std::int32_t kDaysMax = 2958463;         ///< 9999-12-31
constexpr std::int32_t kDaysMaxSmall = 65536 - 1;  ///< 2079-06-06

/// "YYYY-MM-DD HH:MM:SS.mmm"
std::string momentText(Moment moment);
/// Reads a stored text of that shape; trusts its digits. Shorter texts ("YYYY-MM-DD") are midnight.
Moment storedMoment(std::string_view text);

/// Rounds to the grain of a type: 1/300 s, a minute, a day, or decimals of a second (datetime2).
/// Raises 242 where the moment is outside of the type's range; `fromType` names the source in the text.
Moment fitted(Moment moment, const Type& type, std::string_view fromType);
Moment roundedTo300(Moment moment);

enum class DayOrder : std::uint8_t { Mdy, Dmy, Ymd };

enum class ReadFault : std::uint8_t { None, Syntax, Range };
/// A text read as date, time or both. Fraction digits beyond milliseconds round half up.
struct ReadMoment {
    Moment moment;
    ReadFault fault = ReadFault::None;
    int fractionDigits = 0;
    bool hasDay = false;
};
ReadMoment readMoment(std::string_view text, DayOrder order = DayOrder::Mdy);

/// Client text as a stored text of `type`. Raises 241, 242, 295.
std::string dateFromText(std::string_view text, const Type& type, DayOrder order = DayOrder::Mdy,
                         std::string_view fromType = "varchar");

enum class DatePart : std::uint8_t {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    IsoWeek,
    Weekday,
    Hour,
    Minute,
    Second,
    Millisecond,
    Microsecond,
    Nanosecond,
};
/// Full names and the short ones ("yy", "mi", "dw"), any letter case.
std::optional<DatePart> datePartOf(std::string_view name);
std::string_view datePartName(DatePart part);

int datePart(DatePart part, Moment moment);
std::string dateName(DatePart part, Moment moment);
std::string_view monthName(int month);      ///< 1 to 12
std::string_view weekdayName(int weekday);  ///< 0 Sunday
/// Raises 517 where the result leaves the type's range, 155 never (parts are checked before).
Moment dateAdd(DatePart part, std::int64_t number, Moment moment, const Type& type);
/// Boundaries crossed from a to b. Raises 535 beyond int.
std::int32_t dateDiff(DatePart part, Moment a, Moment b);
Moment endOfMonth(Moment moment, std::int64_t monthsToAdd);

/// Days with their fraction from 1900-01-01, as dates count when they become numbers.
double dayNumber(Moment moment);
Moment momentOfDays(double days);

}  // namespace kv::tsql
