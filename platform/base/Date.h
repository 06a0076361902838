#pragma once
// Date: a day and a time of day to the millisecond, without a zone. The locale is fixed: month/day/year.

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

class Date {
public:
    constexpr Date() = default;  ///< 1900-01-01 00:00
    /// Raises Error 5 when the day does not exist (year 100 to 9999).
    Date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int millisecond = 0);
    /// Months and days beyond their range roll over into the next month or year, as date arithmetic does.
    static Date serial(int year, int month, int day);
    /// ISO text "yyyy-MM-dd[( |T)HH:mm[:ss[.fff]]]" as the data layer delivers it.
    static std::optional<Date> fromIso(std::string_view text);

    int year() const;
    int month() const;
    int day() const;
    int hour() const { return static_cast<int>(msOfDay() / 3'600'000); }
    int minute() const { return static_cast<int>(msOfDay() / 60'000 % 60); }
    int second() const { return static_cast<int>(msOfDay() / 1'000 % 60); }
    int millisecond() const { return static_cast<int>(msOfDay() % 1'000); }
    int weekday() const;  ///< 0 Sunday to 6 Saturday

    Date addDays(int days) const;
    /// Adds months; a day beyond the month's end becomes the month's last day.
    Date addMonths(int months) const;
    Date addMs(std::int64_t ms) const;
    Date dayOnly() const;
    std::int64_t msSince1900() const { return ms_; }

    constexpr auto operator<=>(const Date&) const = default;

private:
    std::int64_t msOfDay() const { return ((ms_ % 86'400'000) + 86'400'000) % 86'400'000; }
    std::int64_t ms_ = 0;
};

bool isRealDay(int year, int month, int day);
int daysInMonth(int year, int month);

/// True for a text that reads as a date: M/d/yyyy, M-d-yyyy, yyyy-MM-dd, yyyy/MM/dd, "dd MMM yyyy",
/// "MMM dd, yyyy", each with an optional time of day. Two-digit years: 00 to 29 are 20xx.
bool IsDate(std::string_view text);
std::optional<Date> parseDate(std::string_view text);
/// The date in a text; raises Error 13 when there is none.
Date CDate(std::string_view text);

/// Patterns: y, M, d, H or h, m or n (minutes), s, f runs in the usual lengths (MMM, MMMM, ddd, dddd named);
/// letter case of Y and D does not matter; anything else stands for itself.
std::string Format(const Date& date, std::string_view pattern);
/// The locale's default text of a date: "M/d/yyyy", with the time when it is not midnight.
std::string defaultText(const Date& date);

/// Now by the workstation's clock, which a test or a screenplay may fix. The time of day goes on from there.
Date Now();
Date Today();
void fixClock(const Date& now);
void releaseClock();

}  // namespace kv
