// The demo year: the same from the same seed, sound, believable, and going on from year to year.

#include <gtest/gtest.h>

#include "YearDesk.h"
#include "platform/base/Error.h"

namespace kv {

namespace {

constexpr const char* kEveryLine =
    "SELECT L.Book, L.Batch, L.SeqNo, L.Code, L.Dept, L.BatchDate, L.Debit, L.Credit FROM vwBookLine AS L "
    "ORDER BY L.Book, L.Batch, L.SeqNo";

class DemoYearTest : public ::testing::Test {
protected:
    /// One year with all its months, written once for the tests that only look.
    static Desk& year() {
        static const std::unique_ptr<Desk> desk = deskOfYear("year.db", {.batches = 600});
        return *desk;
    }
};

}  // namespace

TEST_F(DemoYearTest, TheSameSeedWritesTheSameBooks) {
    const DemoYearPlan plan{.batches = 600, .months = 2, .closed = 1};
    DemoYearPlan other = plan;
    other.seed = 2;
    const auto first = rowsOf(*deskOfYear("a.db", plan), kEveryLine);
    ASSERT_GT(first.size(), 500U);
    EXPECT_EQ(first, rowsOf(*deskOfYear("b.db", plan), kEveryLine));
    EXPECT_NE(first, rowsOf(*deskOfYear("c.db", other), kEveryLine));
}

TEST_F(DemoYearTest, EveryCheckIsSilentAndEveryMonthStands) {
    EXPECT_EQ(findingsOf(year()), std::vector<std::string>{});
    EXPECT_EQ(year().ask("SELECT COUNT(*) AS N FROM PreparedPeriod WHERE StaleSince IS NULL AND Period LIKE '2024%'"),
              "12");
    EXPECT_EQ(year().ask("SELECT COUNT(*) AS N FROM (SELECT Period, BatchType FROM GL WHERE BatchType <> 'BB' AND "
                         "Code <> '' GROUP BY Period, BatchType) AS B"),
              "60")
        << "five books a month, none without lines";
    EXPECT_EQ(year().ask("SELECT COUNT(*) AS N FROM vwBookBatch WHERE Posted = 0"), "0");
}

TEST_F(DemoYearTest, FiguresAreBelievable) {
    // what a hospital has is never less than nothing, what it owes never turns around
    EXPECT_EQ(rowsOf(year(),
                     "SELECT B.Period, B.Code, SUM(B.Ending) AS Ending FROM PeriodBalance AS B "
                     "WHERE (B.Code < '2' AND B.Code NOT IN ('1219', '1319') AND B.Code NOT LIKE '17%') "
                     "GROUP BY B.Period, B.Code HAVING SUM(B.Ending) < 0"),
              std::vector<std::string>{});
    EXPECT_EQ(rowsOf(year(),
                     "SELECT B.Period, B.Code, SUM(B.Ending) AS Ending FROM PeriodBalance AS B "
                     "WHERE B.Code LIKE '2%' GROUP BY B.Period, B.Code HAVING SUM(B.Ending) > 0"),
              std::vector<std::string>{});
    const auto revenue = [&](const char* from, const char* to) {
        return std::stod(
            year().ask("SELECT SUM(B.Credit) - SUM(B.Debit) AS R FROM PeriodBalance AS B WHERE B.Code LIKE "
                       "'4[1-3]%' AND B.Period BETWEEN '" +
                       std::string(from) + "' AND '" + to + "'"));
    };
    EXPECT_GT(revenue("202410", "202412"), revenue("202401", "202403") * 1.03) << "business grows through the year";
    EXPECT_EQ(year().ask("SELECT COUNT(*) AS N FROM vwBookLine WHERE ROUND(Debit, 2) <> Debit OR ROUND(Credit, 2) <> "
                         "Credit"),
              "0");
    const std::string cents = "SELECT COUNT(*) AS N FROM vwBookLine WHERE Debit + Credit <> FLOOR(Debit + Credit)";
    EXPECT_GT(std::stoi(year().ask(cents)), 4000) << "amounts of a clerk's day, not round ones";
}

TEST_F(DemoYearTest, TheNextYearGoesOnFromTheYearBefore) {
    const auto desk = deskOfYear("next.db", {.year = 2023, .batches = 600});
    DemoYear(desk->session(), {.year = 2024, .batches = 600, .months = 1, .closed = 1}).write();
    const auto ending = [&](const std::string& period, const std::string& column, const std::string& code) {
        return desk->ask("SELECT SUM(" + column + ") AS S FROM PeriodBalance WHERE Period = '" + period +
                         "' AND Code " + code);
    };
    EXPECT_EQ(ending("202401", "Beginning", "< '3201'"), ending("202312", "Ending", "< '3201'"));
    EXPECT_EQ(ending("202401", "Beginning", "= '3201'"), ending("202312", "Ending", ">= '3201'")) << "with its result";
    EXPECT_EQ(ending("202401", "Beginning", "> '3201'"), "0.00");
    EXPECT_EQ(findingsOf(*desk), std::vector<std::string>{});
    EXPECT_THROW(DemoYear(desk->session(), {.year = 2024}).write(), Error) << "a year is written once";
}

}  // namespace kv
