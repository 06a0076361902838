// Prepared balances and the trial balance, held against sums made here.

#include <map>
#include <random>

#include "Books.h"

namespace kv::server_test {

namespace {

const char* const kAccounts[] = {"1101", "1111", "1201", "2101", "3101", "4101", "4201", "6101", "6201"};
const char* const kDepts[] = {"", "1010", "1020"};

struct Figures {
    Money beginning, debit, credit;
};

std::string moneyText(std::int64_t cents) {
    return std::to_string(cents / 100) + "." + (cents % 100 < 10 ? "0" : "") + std::to_string(cents % 100);
}

}  // namespace

using Preparation = Books;

/// Random batches of three months in two books; each month's trial balance equals an independent sum.
TEST_F(Preparation, EqualsAnIndependentSum) {
    std::mt19937 random(20240315);
    const char* const months[] = {"2024-01", "2024-02", "2024-03"};
    std::map<std::string, Figures> running;
    std::vector<std::map<std::string, Figures>> expected;
    int number = 0;
    for (const char* month : months) {
        for (auto& [code, figures] : running) figures = {figures.beginning + figures.debit - figures.credit, {}, {}};
        for (int i = 0; i < 12; ++i) {
            std::vector<Line> lines;
            std::int64_t open = 0;
            for (int k = 0; k < 4; ++k) {
                const std::int64_t cents = static_cast<std::int64_t>(random() % 1'000'000) + 1;
                const std::string code = kAccounts[random() % std::size(kAccounts)];
                const std::string dept = kDepts[random() % std::size(kDepts)];
                lines.push_back({code, moneyText(cents), "0", dept});
                running[code].debit += Money::fromUnits(cents * 100);
                open += cents;
            }
            const std::string code = kAccounts[random() % std::size(kAccounts)];
            lines.push_back({code, "0", moneyText(open), ""});
            running[code].credit += Money::fromUnits(open * 100);
            enter(i % 2 == 0 ? "JV" : "AR", std::to_string(++number), std::string(month) + "-15", lines);
        }
        expected.push_back(running);
        const std::string period = std::string(month, 4) + std::string(month + 5, 2);
        run("sp_PostGLtoGL '" + period + "','JV'");
        run("sp_PostGLtoGL '" + period + "','AR'");
    }
    run("sp_PrepareFinance '202403'");
    for (std::size_t m = 0; m < expected.size(); ++m) {
        const std::string period = "20240" + std::to_string(m + 1);
        Recordset trial = cn->Open("sp_Report_TrialBalance '" + period + "'");
        ASSERT_EQ(trial.recordCount(), expected[m].size()) << period;
        for (; !trial.eof(); trial.moveNext()) {
            const Figures& figures = expected[m].at(trial["Code"].text());
            const Money ending = figures.beginning + figures.debit - figures.credit;
            EXPECT_EQ(trial["Beginning"].money(), figures.beginning) << period << trial["Code"].text();
            EXPECT_EQ(trial["Debit"].money(), figures.debit);
            EXPECT_EQ(trial["Credit"].money(), figures.credit);
            EXPECT_EQ(trial["Ending"].money(), ending);
            EXPECT_EQ(trial["EndDebit"].money() - trial["EndCredit"].money(), ending);
            EXPECT_TRUE(trial["EndDebit"].money().isZero() || trial["EndCredit"].money().isZero());
        }
    }
}

TEST_F(Preparation, KeepsDepartmentsApart) {
    enter("JV", "1", "2024-03-15",
          {{"6101", "10.00", "0", "1010"}, {"6101", "5.00", "0", "1020"}, {"1101", "0", "15.00", ""}});
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_PrepareFinance '202403'");
    EXPECT_EQ(rows("SELECT Code, Dept, Ending FROM PeriodBalance WHERE Period = '202403' ORDER BY Code, Dept"),
              (std::vector<std::string>{"1101||-15.00", "6101|1010|10.00", "6101|1020|5.00"}));
    EXPECT_EQ(cn->Open("sp_Report_TrialBalance '202403'").recordCount(), 2U);
}

TEST_F(Preparation, ShowsTheOldFiguresUntilItRunsAgainAndSaysSo) {
    EXPECT_EQ(refused("sp_Report_TrialBalance '202403'"),
              "50030 The figures of period 202403 are not prepared yet. Run the financial preparation first.");
    enter("JV", "1", "2024-03-15", simple("10.00"));
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_PrepareFinance '202403'");
    Recordset trial = cn->Open("sp_Report_TrialBalance '202403'");
    EXPECT_EQ(trial["Stale"].text() + "|" + trial["PreparedBy"].text() + "|" + trial["Description"].text(),
              "|MARIA SANTOS|CASH ON HAND");
    enter("AR", "1", "2024-03-15", simple("5.00"));
    run("sp_PostGLtoGL '202403','AR'");
    trial = cn->Open("sp_Report_TrialBalance '202403'");
    EXPECT_EQ(trial["Debit"].text(), "10.00");
    EXPECT_EQ(trial["Stale"].text(), "Y");
    run("sp_PrepareFinance '202403'");
    trial = cn->Open("sp_Report_TrialBalance '202403'");
    EXPECT_EQ(trial["Debit"].text() + trial["Stale"].text(), "15.00");
}

TEST_F(Preparation, AChangeOfAnEarlierMonthReachesTheLaterOnes) {
    enter("JV", "1", "2024-01-15", simple("10.00"));
    enter("JV", "2", "2024-03-15", simple("1.00"));
    run("sp_PostGLtoGL '202401','JV'");
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_PrepareFinance '202403'");
    EXPECT_EQ(rows("SELECT Period, Ending FROM PeriodBalance WHERE Code = '1101' ORDER BY Period"),
              (std::vector<std::string>{"202401|10.00", "202402|10.00", "202403|11.00"}));
    run("sp_UnpostBook 'JV','202401'");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM PreparedPeriod WHERE StaleSince IS NOT NULL"), "3");
    enter("JV", "1", "2024-01-15", simple("40.00"));
    run("sp_PostGLtoGL '202401','JV'");
    run("sp_PrepareFinance '202402'");
    EXPECT_EQ(rows("SELECT B.Period, B.Ending, CASE WHEN P.StaleSince IS NULL THEN '' ELSE 'old' END AS Stale FROM "
                   "PeriodBalance B "
                   "JOIN PreparedPeriod P ON P.Period = B.Period WHERE B.Code = '1101' ORDER BY B.Period"),
              (std::vector<std::string>{"202401|40.00|", "202402|40.00|", "202403|11.00|old"}));
    run("sp_PrepareFinance '202403'");
    EXPECT_EQ(one("SELECT Ending FROM PeriodBalance WHERE Code = '1101' AND Period = '202403'"), "41.00");
}

TEST_F(Preparation, LinesThatRepeatTheirAccountTellTheirDocument) {
    enter("JV", "1", "2024-03-15", simple("100.00"));
    enter("CR", "1", "2024-03-16", simple("7.00"));
    run("UPDATE JV SET Particular = 'Opening of the fund' WHERE Batch = '1'");
    run("UPDATE CRB SET Particular = 'Collections' WHERE Batch = '1'");
    run("UPDATE JVDT SET Description = 'CASH ON HAND - ADMITTING' WHERE Batch = '1' AND Code = '1101'");
    run("UPDATE CRBDT SET Description = 'Slip 17' WHERE Batch = '1' AND Code = '1101'");
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_PostGLtoGL '202403','CR'");
    run("sp_PrepareFinance '202403'");
    std::vector<std::string> told;
    for (const Row& row : all("sp_Report_AccountLines '1101', '202403', '202403'"))
        told.push_back(row[9].text() + "|" + row[12].text());
    EXPECT_EQ(told, (std::vector<std::string>{"|Beginning balance", "JV|Opening of the fund", "CR|Slip 17"}));
}

TEST_F(Preparation, BalanceSheetTotalsComeFromIt) {
    enter("JV", "1", "2024-03-15",
          {{"1101", "100.00", "0", ""},
           {"1604", "50.00", "0", ""},
           {"2101", "0", "30.00", ""},
           {"3101", "0", "100.00", ""},
           {"4101", "0", "45.00", ""},
           {"6101", "25.00", "0", "1010"}});
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_PrepareFinance '202403'");
    const std::vector<std::string> totals{"ASC|100.00", "ASO|50.00", "EQ|100.00", "LIC|30.00", "NI|20.00"};
    EXPECT_EQ(rows("sp_BSTotals '202403'"), totals);
    run("UPDATE SYS SET rptpdStart = '202403' , rptpdEnd = '202403'");
    EXPECT_EQ(rows("sp_BSTotals"), totals);
    EXPECT_EQ(cn->Open("sp_BSLYTotals '202403'").recordCount(), 0U);
    EXPECT_EQ(rows("sp_BSLYTotals '202503'"), totals);
    run("sp_Update_Equity '3101', 'SHARE CAPITAL', 'ISSUED', 1000, 0.10");
    EXPECT_EQ(one("sp_BS_OSQEL '3202403'"), "100.00");
    EXPECT_EQ(one("sp_BS_OSQEL '4202503'"), "100.00");
}

}  // namespace kv::server_test
