// The small routines of module1 at their edges.

#include "core/module1.h"

#include <gtest/gtest.h>

#include "platform/base/Error.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

Money money(const char* text) { return *Money::parse(text); }

TEST(Round2, AddsAThousandthThenTiesToEven) {
    struct {
        const char* amount;
        const char* rounded;
    } rows[] = {
        {"1.005", "1.01"}, {"1.004", "1.00"}, {"1.014", "1.02"},  {"-1.005", "-1.00"},
        {"2.675", "2.68"}, {"0", "0.00"},     {"-0.004", "0.00"}, {"1234567.8949", "1234567.90"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Format(module1::Round2(money(row.amount)), "0.00"), row.rounded) << row.amount;
    }
}

TEST(Value, TakesWhatTheLocaleTakesAndGivesZeroOtherwise) {
    struct {
        const char* text;
        const char* amount;
    } rows[] = {
        {"1,234.50", "1234.5"}, {"abc", "0"},   {"", "0"},    {"  -7 ", "-7"},  {"7-", "-7"},
        {"1.2.3", "0"},         {"+.5", "0.5"}, {"12a", "0"}, {"0.00005", "0"},
    };
    for (const auto& row : rows) EXPECT_EQ(module1::Value(row.text), money(row.amount)) << row.text;
}

TEST(Texts, FormatsAndQuotes) {
    EXPECT_EQ(module1::FormatCurrency(1234.5), "1234.50");
    EXPECT_EQ(module1::FormatCurrency(0.1234567891), "0.1234567891");
    EXPECT_EQ(module1::FormatMoney(1234567.125), "1,234,567.12");
    EXPECT_EQ(module1::FormatMoney(-0.375), "-0.38");
    EXPECT_EQ(module1::FormatTin("990000037000"), "990-000-037-000");
    EXPECT_EQ(module1::FormatTin("12345"), "123-45--");
    EXPECT_EQ(module1::FormatTin("990-000-037-00012"), "990-000-037-00012");
    EXPECT_EQ(module1::SQLString(" O'Brien "), "O''Brien");
    EXPECT_EQ(module1::ATrim("  a\t "), "a\t");
    EXPECT_EQ(module1::CountChars(" PE\xC3\x91"
                                  "A\r\n "),
              4);
}

TEST(Months, FirstAndLastDayAndRepairOfImpossibleDays) {
    EXPECT_EQ(module1::BOM("3/15/2024"), "03/01/2024");
    EXPECT_EQ(module1::EOM("2/1/2024"), "02/29/2024");
    EXPECT_EQ(module1::EOM("12/31/2023"), "12/31/2023");
    EXPECT_EQ(module1::BOM("02/31/2024"), "02/01/2024");
    EXPECT_EQ(module1::EOM("02/31/2023"), "02/28/2023");
    EXPECT_EQ(module1::BOM("13/45/2020"), "13/01/2020");
    EXPECT_THROW(module1::EOM("13/45/2020"), Error);
}

TEST(ValidDate, SpeaksOnlyWhenItRefuses) {
    std::vector<std::string> said;
    dialogHooks().message = [&](const MessageBox& box) {
        said.push_back(box.text);
        return Answer::Ok;
    };
    EXPECT_TRUE(module1::ValidDate("  "));
    EXPECT_TRUE(module1::ValidDate("1/1/2000"));
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(module1::ValidDate("12/31/1999"));
    EXPECT_FALSE(module1::ValidDate("31/31/2024"));
    EXPECT_EQ(said, (std::vector<std::string>{"Invalid date!", "Invalid date!"}));
    dialogHooks() = {};
}

TEST(Resizing, KeepsTheDistanceToTheEdge) {
    EXPECT_EQ(module1::NewControlSize(900, 800, 300), 400);
    EXPECT_EQ(module1::DockControlBottom(700, 600, 550), 650);
    EXPECT_EQ(module1::DockControlRight(500, 600, 550), 450);
}

TEST(WhenMissing, GivesTheDefaultForAbsentAndNull) {
    ResultSet set;
    set.fields = {{"VendorID"}, {"Rate"}};
    set.rows = {{Value("V0001"), Value()}};
    const Recordset rows(set);
    EXPECT_EQ(module1::WhenMissing(rows, "vendorid", Value("-")).text(), "V0001");
    EXPECT_EQ(module1::WhenMissing(rows, "Rate", Value("12")).text(), "12");
    EXPECT_EQ(module1::WhenMissing(rows, "Absent", Value("x")).text(), "x");
    EXPECT_TRUE(module1::IsFieldExists(rows, "RATE"));
}

TEST(Periods, ArithmeticAndItsRefusals) {
    struct {
        const char* period;
        const char* first;
        const char* last;
        const char* before;
        const char* yearBefore;
        const char* lenient;  // GetLastPeriod
    } rows[] = {
        {"202401", "2024-01-01", "2024-01-31", "202312", "202301", "202312"},
        {"202402", "2024-02-01", "2024-02-29", "202401", "202302", "202401"},
        {"202302", "2023-02-01", "2023-02-28", "202301", "202202", "202301"},
        {"202412", "2024-12-01", "2024-12-31", "202411", "202312", "202411"},
        {"202313", "2024-01-01", "2024-01-31", "202312", "202301", ""},  // a month too many rolls over
        {"202300", "2022-12-01", "2022-12-31", "202211", "202112", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Format(module1::GetPeriodStartDate(row.period), "yyyy-MM-dd"), row.first) << row.period;
        EXPECT_EQ(Format(module1::GetPeriodEndDate(row.period), "yyyy-MM-dd"), row.last) << row.period;
        EXPECT_EQ(module1::GetPreviousPeriod(row.period), row.before) << row.period;
        EXPECT_EQ(module1::GetLastYearPeriod(row.period), row.yearBefore) << row.period;
        EXPECT_EQ(module1::GetLastPeriod(row.period), row.lenient) << row.period;
    }
    using Routine = void (*)(const char*);
    const Routine routines[] = {
        [](const char* text) { module1::GetPeriodStartDate(text); },
        [](const char* text) { module1::GetPeriodEndDate(text); },
        [](const char* text) { module1::GetPreviousPeriod(text); },
        [](const char* text) { module1::GetLastYearPeriod(text); },
    };
    for (const char* bad : {"abcd", "20240", "2024011", "", "2024o1"}) {
        EXPECT_EQ(module1::GetLastPeriod(bad), "") << bad;
        for (const Routine& routine : routines) {
            try {
                routine(bad);
                ADD_FAILURE() << bad;
            } catch (const Error& failure) {
                EXPECT_EQ(failure.number, static_cast<long>(0x80040000));
                EXPECT_EQ(failure.source, "Korvane");
                EXPECT_EQ(failure.description, "Period «" + std::string(bad) + "» is not valid.");
            }
        }
    }
}

// a failure three calls deep lists its path, innermost first, each with the line of its own call
TEST(ErrorPath, ListsTheCallsInnermostFirst) {
    unsigned outerLine = 0;
    const auto inner = [](std::source_location at) {
        traced("module1.Inner", at, [] { throw Error(5, "test", "Broken"); });
    };
    const auto outer = [&](std::source_location at) {
        traced("module1.Outer", at, [&] {
            outerLine = std::source_location::current().line() + 1;
            inner(std::source_location::current());
        });
    };
    try {
        outer(std::source_location::current());
        FAIL();
    } catch (const Error& failure) {
        const std::string text = failure.description;
        EXPECT_EQ(text.find("Broken\r\nin Korvane.module1.Inner at line "), 0u) << text;
        EXPECT_NE(text.find("\r\nin Korvane.module1.Outer at line " + std::to_string(outerLine)), std::string::npos)
            << text;
        EXPECT_EQ(failure.source, "Korvane.module1.Outer");
        EXPECT_EQ(failure.number, 5);
    }
}

}  // namespace
}  // namespace kv
