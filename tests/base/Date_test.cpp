#include "platform/base/Date.h"

#include <gtest/gtest.h>

#include "platform/base/Error.h"

namespace kv {
namespace {

std::string iso(const Date& date) { return Format(date, "yyyy-MM-dd HH:nn:ss.fff"); }

TEST(Date, ReadsTheTextsThatUsersType) {
    struct Row {
        const char* text;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"3/1/2024", "2024-03-01 00:00:00.000"},
        {"03/01/2024", "2024-03-01 00:00:00.000"},
        {"3-1-2024", "2024-03-01 00:00:00.000"},
        {"2/29/2024", "2024-02-29 00:00:00.000"},
        {"2024-03-01", "2024-03-01 00:00:00.000"},
        {"2024/3/1", "2024-03-01 00:00:00.000"},
        {"1 Mar 2024", "2024-03-01 00:00:00.000"},
        {"01-Mar-2024", "2024-03-01 00:00:00.000"},
        {"March 1, 2024", "2024-03-01 00:00:00.000"},
        {"Mar 1 2024", "2024-03-01 00:00:00.000"},
        {"3/1/29", "2029-03-01 00:00:00.000"},
        {"3/1/30", "1930-03-01 00:00:00.000"},
        {"  3/1/2024  ", "2024-03-01 00:00:00.000"},
        {"3/1/2024 13:05", "2024-03-01 13:05:00.000"},
        {"3/1/2024 1:05 PM", "2024-03-01 13:05:00.000"},
        {"3/1/2024 1:05:07pm", "2024-03-01 13:05:07.000"},
        {"3/1/2024 12:00 AM", "2024-03-01 00:00:00.000"},
        {"3/1/2024 12:00 PM", "2024-03-01 12:00:00.000"},
        {"3/1/2024 5 PM", "2024-03-01 17:00:00.000"},
        {"2024-03-01T23:59:59.997", "2024-03-01 23:59:59.997"},
        {"2024-03-01 00:00:00.5", "2024-03-01 00:00:00.500"},
        {"2024-03-01 00:00:00.1234567", "2024-03-01 00:00:00.123"},
    };
    for (const Row& row : kRows) {
        const auto date = parseDate(row.text);
        ASSERT_TRUE(date) << row.text;
        EXPECT_EQ(iso(*date), row.expected) << row.text;
        EXPECT_TRUE(IsDate(row.text));
        EXPECT_EQ(CDate(row.text), *date);
    }
}

TEST(Date, RefusesWhatIsNoDate) {
    for (const char* text : {"",
                             " ",
                             "3",
                             "3/1",
                             "13/1/2024",
                             "2/30/2024",
                             "2/29/2023",
                             "0/1/2024",
                             "1/0/2024",
                             "3/1/202",
                             "3/1/2",
                             "3/1/20245",
                             "2024-13-01",
                             "2024-00-10",
                             "20240301",
                             "Foo 1 2024",
                             "3/1-2024",
                             "3/1/2024x",
                             "3/1/2024 25:00",
                             "3/1/2024 10:60",
                             "3/1/2024 13:00 PM",
                             "3/1/2024 0:30 AM",
                             "3/1/2024 10",
                             "3/1/2024 10:30 XM",
                             "12:30",
                             "3/1/2024 10:30 PM 5",
                             "1.000",
                             "abc"}) {
        EXPECT_FALSE(IsDate(text)) << text;
    }
    try {
        CDate("tomorrow");
        ADD_FAILURE();
    } catch (const Error& e) {
        EXPECT_EQ(e.number, kErrTypeMismatch);
    }
}

TEST(Date, ArithmeticKeepsTheCalendar) {
    EXPECT_EQ(Date(2024, 1, 31).addMonths(1), Date(2024, 2, 29));
    EXPECT_EQ(Date(2023, 1, 31).addMonths(1), Date(2023, 2, 28));
    EXPECT_EQ(Date(2024, 3, 31).addMonths(-1), Date(2024, 2, 29));
    EXPECT_EQ(Date(2024, 1, 15).addMonths(-13), Date(2022, 12, 15));
    EXPECT_EQ(Date(2024, 2, 29, 10, 30).addMonths(12), Date(2025, 2, 28, 10, 30));
    EXPECT_EQ(Date(2024, 2, 28).addDays(2), Date(2024, 3, 1));
    EXPECT_EQ(Date(1900, 1, 1).addDays(-1), Date(1899, 12, 31));
    EXPECT_EQ(Date(1899, 12, 31, 23, 59).dayOnly(), Date(1899, 12, 31));
    EXPECT_EQ(Date(1899, 12, 31, 23, 59).hour(), 23);
    EXPECT_EQ(Date::serial(2024, 3, 0), Date(2024, 2, 29));
    EXPECT_EQ(Date::serial(2024, 13, 1), Date(2025, 1, 1));
    EXPECT_EQ(Date::serial(2024, 0, 1), Date(2023, 12, 1));
    EXPECT_EQ(Date::serial(2024, -11, 1), Date(2023, 1, 1));
    EXPECT_EQ(Date::serial(2024, 1, 366), Date(2024, 12, 31));
    EXPECT_EQ(Date(1900, 1, 1).weekday(), 1);
    EXPECT_EQ(Date(2024, 3, 1).weekday(), 5);
    EXPECT_EQ(Date(1753, 1, 1).weekday(), 1);
    EXPECT_EQ(daysInMonth(1900, 2), 28);
    EXPECT_EQ(daysInMonth(2000, 2), 29);
    EXPECT_THROW(Date(2023, 2, 29), Error);
    EXPECT_THROW(Date(99, 1, 1), Error);
    EXPECT_THROW(Date(9999, 12, 31).addMonths(1), Error);
    EXPECT_THROW(Date(2024, 1, 1, 24), Error);
    EXPECT_THROW(Date(2024, 1, 1, 0, 0, 0, 1000), Error);
}

TEST(Date, EveryDayGivesItsPartsBack) {
    Date date(1752, 12, 31);
    int weekday = date.weekday();
    for (int i = 0; i < 200000; ++i) {
        const Date next = date.addDays(1);
        weekday = (weekday + 1) % 7;
        ASSERT_EQ(next.weekday(), weekday);
        ASSERT_EQ(Date(next.year(), next.month(), next.day()), next);
        ASSERT_TRUE(next.day() == date.day() + 1 || next.day() == 1);
        date = next;
    }
}

TEST(Date, FormatsByPattern) {
    const Date date(2024, 3, 5, 14, 7, 9, 45);
    struct Row {
        const char* pattern;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"M/d/yyyy", "3/5/2024"},
        {"MM/dd/yyyy", "03/05/2024"},
        {"mm/dd/yyyy", "03/05/2024"},
        {"MM/DD/YYYY", "03/05/2024"},
        {"yy", "24"},
        {"yyyymmdd", "20240305"},
        {"yyyy-MM-dd", "2024-03-05"},
        {"MMMM d, yyyy", "March 5, 2024"},
        {"dd MMM yyyy", "05 Mar 2024"},
        {"dddd", "Tuesday"},
        {"ddd", "Tue"},
        {"HH:mm:ss", "14:07:09"},
        {"h:nn AM/PM", "2:07 PM"},
        {"hh:mm AM/PM", "02:07 PM"},
        {"HH:nn:ss.fff", "14:07:09.045"},
        {"MM/dd/yyyy hh:mm:ss AM/PM", "03/05/2024 02:07:09 PM"},
        {"mm/yyyy", "03/2024"},
    };
    for (const Row& row : kRows) EXPECT_EQ(Format(date, row.pattern), row.expected) << row.pattern;
    EXPECT_EQ(Format(Date(2024, 3, 5), "h:nn AM/PM"), "12:00 AM");
    EXPECT_EQ(defaultText(date), "3/5/2024 2:07:09 PM");
    EXPECT_EQ(defaultText(date.dayOnly()), "3/5/2024");
}

TEST(Date, IsoTextOfTheDataLayer) {
    EXPECT_EQ(Date::fromIso("2024-03-05 14:07:09.043"), Date(2024, 3, 5, 14, 7, 9, 43));
    EXPECT_EQ(Date::fromIso("2024-03-05"), Date(2024, 3, 5));
    EXPECT_EQ(Date::fromIso("1753-01-01 00:00:00.000"), Date(1753, 1, 1));
    EXPECT_FALSE(Date::fromIso("3/5/2024"));
    EXPECT_FALSE(Date::fromIso("2024-02-30 00:00:00.000"));
    EXPECT_FALSE(Date::fromIso(""));
}

TEST(Date, TheClockCanBeFixedAndGoesOn) {
    fixClock(Date(2024, 3, 31, 23, 0));
    const Date first = Now();
    EXPECT_EQ(Today(), Date(2024, 3, 31));
    EXPECT_GE(first, Date(2024, 3, 31, 23, 0));
    EXPECT_LT(first, Date(2024, 3, 31, 23, 1));
    EXPECT_LE(first, Now());
    releaseClock();
    EXPECT_GT(Now(), Date(2024, 6, 1));
}

}  // namespace
}  // namespace kv
