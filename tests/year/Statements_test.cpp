// The statements of the ledger on a demo year: each prints the figures that the prepared balances hold.

#include "ledger/Statements.h"

#include <gtest/gtest.h>

#include "YearDesk.h"
#include "core/module1.h"
#include "ledger/StatementValues.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/print/Report.h"

namespace kv {
namespace {

/// A line of a statement's pages: the words it begins with, and the figure that must stand in it, asked of the tables.
/// [M] is the month, [Y] the first of its year.
struct Tie {
    const char* entry;
    const char* entity;
    const char* label;
    const char* figure;
    int times = 1;  ///< in how many columns of the line it stands at least
};

constexpr const char* kDebits = "SELECT SUM(Debit) FROM PeriodBalance WHERE Period = '[M]'";
constexpr const char* kBalances =
    "SELECT SUM(CASE WHEN E.Ending > 0 THEN E.Ending ELSE 0 END) FROM (SELECT Code, SUM(Ending) AS Ending FROM "
    "PeriodBalance WHERE Period = '[M]' GROUP BY Code) AS E";
constexpr const char* kAssets =
    "SELECT SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND A.Type = "
    "'AS'";
constexpr const char* kEquities =
    "SELECT -SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND A.Type "
    "<> 'AS'";
constexpr const char* kResult =
    "SELECT SUM(P.Credit - P.Debit) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND "
    "A.Type IN ('IN', 'EX')";
constexpr const char* kYearResult =
    "SELECT -SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND A.Type "
    "IN ('IN', 'EX')";
constexpr const char* kYearIncome =
    "SELECT -SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND A.Type = "
    "'IN'";
constexpr const char* kIncome =
    "SELECT SUM(P.Credit - P.Debit) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND "
    "A.Type = 'IN'";
constexpr const char* kYearExpense =
    "SELECT SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND A.Type = "
    "'EX'";
constexpr const char* kBank = "SELECT SUM(Ending) FROM PeriodBalance WHERE Period = '[M]' AND Code = '1111'";
constexpr const char* kCash =
    "SELECT SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE P.Period = '[M]' AND A.GLGroup "
    "= "
    "'101'";
constexpr const char* kLabYear = "SELECT -SUM(Ending) FROM PeriodBalance WHERE Period = '[M]' AND Dept = '1010'";
constexpr const char* kPatients = "SELECT SUM(Ending) FROM PeriodBalance WHERE Period = '[M]' AND Code = '1201'";
constexpr const char* kPaid =
    "SELECT SUM(G.Credit) FROM GL G JOIN AcctCode A ON A.Code = G.Code WHERE G.Period = '[M]' AND A.GLGroup = '101'";
constexpr const char* kSalaries = "SELECT SUM(Ending) FROM PeriodBalance WHERE Period = '[M]' AND Code = '6101'";

constexpr Tie kTies[] = {
    {"mnuTrialBalance1", "", "Total", kDebits},
    {"mnuTrialBalance2", "", "Total", kBalances},
    {"mnuTrialBalance2_1", "", "3201",
     "SELECT -SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON A.Code = P.Code WHERE "
     "P.Period = '[M]' AND (A.Type IN ('IN', 'EX') OR P.Code = '3201')"},
    {"mnuTrialBalance3", "", "1111", kBank},
    {"mnuTrialBalance4", "", "1111", kBank},
    {"mnuTrialBalance4", "", "1111", "SELECT SUM(Ending) FROM PeriodBalance WHERE Period = '202303' AND Code = '1111'"},
    {"mnuTBperBook", "", "1111", kBank},
    {"mnuGLDetailed", "1111", "1111 ending balance", kBank},
    {"mnuAcctDetail", "1111", "1111 ending balance", kBank},
    {"mnuAcctDetail_1", "6101", "6101 ending balance", kSalaries},
    {"mnuGrpSchedule_0", "", "Total CASH ON HAND AND IN BANK", kCash},
    {"mnuGrpSchedule_1", "402", "Total ANCILLARY SERVICE REVENUE",
     "SELECT -SUM(P.Ending) FROM PeriodBalance P JOIN AcctCode A ON "
     "A.Code = P.Code WHERE P.Period = '[M]' AND A.GLGroup = '402'"},
    {"mnuBS0", "", "TOTAL ASSETS", kAssets},
    {"mnuBS0", "", "TOTAL LIABILITIES AND EQUITY", kEquities},
    {"mnuBS0", "", "Total assets", kAssets},
    {"mnuBS1", "", "TOTAL ASSETS", kAssets},
    {"mnuBS1", "", "TOTAL LIABILITIES AND EQUITY", kEquities},
    {"mnuBS2", "", "TOTAL LIABILITIES AND EQUITY", kEquities},
    {"mnuBS3", "", "TOTAL ASSETS", kAssets},
    {"mnuBS3", "", "NET INCOME FOR THE YEAR TO DATE", kYearResult},
    {"mnuISFinancePos", "", "TOTAL LIABILITIES AND EQUITY", kEquities},
    {"mnuNP_FP", "", "TOTAL ASSETS", kAssets},
    {"mnuISRep1", "", "NET INCOME (LOSS)", kResult},
    {"mnuISRep1", "", "NET INCOME (LOSS)", kYearResult},
    {"mnuISRep2", "1010", "NET INCOME (LOSS)", kLabYear},
    {"mnuISRep3", "", "NET INCOME (LOSS)", kResult},
    {"mnuISRep3_1", "", "NET INCOME (LOSS)", kYearResult},
    {"mnuISRep4", "", "Total 6101", kSalaries},
    {"mnuISCompInc", "", "NET INCOME (LOSS)", kResult},
    {"mnuISByMonth", "", "Net income (loss)", kYearResult},
    {"mnuISExpByMonth", "", "Total expenses", kYearExpense},
    {"mnuGLExpenses", "", "Total expenses", kYearExpense},
    {"mnuNP_IEE", "", "NET INCOME (LOSS)", kYearResult},
    {"mnuNP_BSS", "101", "Total CASH ON HAND AND IN BANK", kCash},
    {"mnuCashFlow", "", "CASH AND CASH EQUIVALENTS AT THE END", kCash, 2},
    {"mnuCashFlow", "", "Net income", kResult},
    {"mnuCashPayment", "", "Total of", kPaid},
    {"mnuReceiptsMonth", "", "All cash accounts", kCash},
    {"mnuISCashRecon", "", "Cash at the end", kCash},
    {"mnuIncomerep", "", "Total income", kYearIncome},
    {"mnuIncomerepDet", "", "Total income", kYearIncome},
    {"mnuPatientNotDischarged", "", "1201 still with admitted patients", kPatients},
    {"mnuISDailyRevReport", "", "Total", kIncome},
    {"mnuCompDept", "", "Whole hospital", kYearResult},
    {"mnuMonthlyFlux", "", "1111", kBank},
};

class StatementsOfAYear : public ::testing::Test {
protected:
    static Desk& year() {
        static const std::unique_ptr<Desk> desk = [] {
            auto made = deskOfYear("statements.db", {.year = 2023, .batches = 300});
            DemoYear(made->session(), {.year = 2024, .batches = 600, .months = 4, .closed = 4}).write();
            made->session().Sys.Company = "EXAMPLE GENERAL HOSPITAL";
            return made;
        }();
        return *desk;
    }
    static StatementChoice choice(const StatementRow& row, std::string entity) {
        const bool range = row.dialog == StatementDialog::RepPrd;
        return {.period1 = range ? "202401" : kMonth,
                .period2 = kMonth,
                .date1 = "2024-03-01",
                .date2 = "2024-03-31",
                .entity = std::move(entity)};
    }
    /// A row's report with its values, run and laid out.
    static std::unique_ptr<Report> shown(const StatementRow& row, const std::string& entity) {
        auto report = Report::load(buildPath("Reports", row.file));
        const ReportParamsDictionary values = statementValues(year().session(), row, choice(row, entity));
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (row.binding == StatementBinding::Position) {
                report->setValue(i, values[i].second);
            } else {
                report->setValue(values[i].first, values[i].second);
            }
        }
        report->run(year().cn());
        report->layout();
        return report;
    }
    /// The lines of all pages that begin with a text, each with its cells apart by tabs.
    static std::vector<std::string> lines(const Report& report, const std::string& label) {
        std::vector<std::string> found;
        for (const PaperPage& page : report.document().pages) {
            for (const std::string& line : split(joinedText(page, textLines(page)), '\n')) {
                if (line.starts_with(label)) found.push_back(line);
            }
        }
        return found;
    }
    static std::string figure(const Tie& tie) {
        const std::string statement = replaceAll(tie.figure, "[M]", kMonth);
        const Money amount = year().cn().Open(statement).at(0).money();
        return amount < Money() ? "(" + module1::FormatMoney(-amount) + ")" : module1::FormatMoney(amount);
    }
    static constexpr const char* kMonth = "202403";
};

/// A figure is only asked after where it cannot stand there by chance.
TEST_F(StatementsOfAYear, PrintTheFiguresOfThePreparedBalances) {
    for (const Tie& tie : kTies) {
        SCOPED_TRACE(std::string(tie.entry) + ": " + tie.label);
        const std::string wanted = figure(tie);
        ASSERT_GT(wanted.size(), 6U) << wanted;
        const StatementRow* row = findStatement(tie.entry);
        ASSERT_NE(row, nullptr);
        const std::vector<std::string> found = lines(*shown(*row, tie.entity), tie.label);
        const bool held = std::any_of(found.begin(), found.end(), [&](const std::string& line) {
            const std::vector<std::string> cells = split(line, '\t');
            return std::count(cells.begin(), cells.end(), wanted) >= tie.times;
        });
        EXPECT_TRUE(held) << "no such line holds " << wanted << ":\n" << join(found, "\n");
    }
}

/// Every entry of the menu: the template takes its values by their names or places, prints, and warns of nothing.
TEST_F(StatementsOfAYear, EveryEntryFitsItsTemplate) {
    for (const StatementRow& row : statementRows()) {
        SCOPED_TRACE(row.entry);
        const auto report = shown(row, "");
        const ReportParamsDictionary values = statementValues(year().session(), row, choice(row, ""));
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (row.binding == StatementBinding::Position) {
                EXPECT_EQ(values[i].first, report->parameters().at(i).name) << i;
            }
        }
        EXPECT_TRUE(report->find("Out of balance by").empty() && report->find("do not balance").empty());
        EXPECT_FALSE(report->find("EXAMPLE GENERAL HOSPITAL").empty());
        EXPECT_EQ(report->find("{").size(), 0U) << "a fact was left open";
    }
}

/// Divisions and departments, each by itself, make up the whole.
TEST_F(StatementsOfAYear, PartsMakeUpTheWhole) {
    for (const char* statement :
         {"sp_Report_IncomeStatement '202403','','','[D]'", "sp_Report_IncomeStatement '202403','','','','[D]'"}) {
        Money whole, parts;
        for (const auto& [division, sum] : {std::pair<const char*, Money*>{"", &whole}, {"*", &parts}}) {
            Recordset rows = year().cn().Open(replaceAll(statement, "[D]", division));
            for (; !rows.eof(); rows.moveNext()) {
                if (rows["Kind"].text() == "T") *sum += rows["A4"].money();
            }
        }
        EXPECT_EQ(whole, parts) << statement;
        EXPECT_FALSE(whole.isZero());
    }
    Recordset sheet = year().cn().Open("sp_Report_BalanceSheet '202403','*','A'");
    Money assets, equities;
    for (; !sheet.eof(); sheet.moveNext()) {
        if (sheet["Title"].text() == "TOTAL ASSETS") assets += sheet["A1"].money();
        if (sheet["Title"].text() == "TOTAL LIABILITIES AND EQUITY") equities += sheet["A1"].money();
    }
    EXPECT_EQ(assets, equities);
}

}  // namespace

TEST(StatementValues, HeadingsAndPeriods) {
    EXPECT_EQ(periodBefore("200101"), "200012");
    EXPECT_EQ(periodBefore("202403"), "202402");
    EXPECT_EQ(monthHeading(1, "202401"), "FOR THE FIRST MONTH ENDED January, 2024");
    EXPECT_EQ(monthHeading(4, "202404"), "FOR THE FORTH MONTH ENDED April, 2024");
    EXPECT_EQ(monthHeading(12, "202412"), "FOR THE TWELFTH MONTH ENDED December, 2024");
    EXPECT_THROW(monthHeading(13, "202501"), std::out_of_range);
}

TEST(StatementValues, FactsStandInBraces) {
    const StatementFacts facts = [](std::string_view name) -> StatementFact {
        return name == "day" ? StatementFact{{}, Date(2024, 3, 31)} : StatementFact{std::string(name), {}};
    };
    EXPECT_EQ(expandedText("As of {day|dd MMMM yyyy}, {a}{b}", facts), "As of 31 March 2024, ab");
    EXPECT_EQ(expandedText("plain", facts), "plain");
    EXPECT_EQ(expandedText("open {a", facts), "open {a");
}

}  // namespace kv
