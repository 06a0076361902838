// Beginning balances, forwarded balances and the year-end closing.

#include "Books.h"

namespace kv::server_test {

class YearEnd : public Books {
protected:
    /// A year with a result of 70: income 100 in February, expense 30 in December.
    void yearOf2024() {
        enter("JV", "1", "2024-02-15", {{"1101", "100.00", "0", ""}, {"4101", "0", "100.00", ""}});
        enter("JV", "2", "2024-12-31", {{"6101", "30.00", "0", "1010"}, {"1101", "0", "30.00", ""}}, "YE");
        run("sp_PostGLtoGL '202402','JV'");
        run("sp_PostGLtoGL '202412','JV'");
        run("sp_PrepareFinance '202412'");
    }
    std::vector<std::string> opening(const std::string& year) {
        return rows("SELECT Acct, Debit, Credit FROM BegBalance WHERE Year = '" + year + "' ORDER BY Acct");
    }
    std::string ending(const std::string& period, const std::string& code) {
        return one("SELECT SUM(Ending) AS S FROM PeriodBalance WHERE Period = '" + period + "' AND Code = '" + code +
                   "'");
    }
};

TEST_F(YearEnd, ClosesIncomeAndExpenseIntoRetainedEarnings) {
    yearOf2024();
    run("sp_YearEndClose '3201','2025'");
    EXPECT_EQ(opening("2025"), (std::vector<std::string>{"1101|70.00|0.00", "3201|0.00|70.00"}));
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM GL WHERE BatchType = 'BB'"), "0");
    run("sp_PostForwardedBal '2025'");
    EXPECT_EQ(rows("SELECT Period, BatchType, Code, Debit, Credit FROM GL WHERE BatchType = 'BB' ORDER BY SeqNo"),
              (std::vector<std::string>{"202501|BB|1101|70.00|0.00", "202501|BB|3201|0.00|70.00"}));
    run("sp_PrepareFinance '202501'");
    EXPECT_EQ(ending("202501", "1101"), "70.00");
    EXPECT_EQ(ending("202501", "3201"), "-70.00");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM PeriodBalance WHERE Period = '202501' AND Code IN ('4101', '6101')"), "0");
    EXPECT_EQ(ending("202412", "4101"), "-100.00") << "the closed year keeps its income";
    EXPECT_EQ(
        rows("SELECT B.BatchType, B.Period, B.Total, D.Code, D.Dept, D.Debit, D.Credit FROM GLBatch AS B INNER JOIN "
             "Batchdet AS D ON D.Batch = B.Batch WHERE B.Batch = 'YE2024' ORDER BY D.SeqNo"),
        (std::vector<std::string>{"YE|202412|100.00|4101||100.00|0.00", "YE|202412|100.00|6101|1010|0.00|30.00",
                                  "YE|202412|100.00|3201||0.00|70.00"}))
        << "the closing entry is a batch that an auditor can read";
    EXPECT_EQ(one("sp_Report_BatchJournal 'GL','YE2024','YE2024'"), "YE2024");
}

TEST_F(YearEnd, RunAgainItGivesTheSameOrTheNewFigures) {
    yearOf2024();
    run("sp_YearEndClose '3201','2025'");
    run("sp_PostForwardedBal '2025'");
    const std::vector<std::string> first = opening("2025");
    run("sp_YearEndClose '3201','2025'");
    run("sp_PostForwardedBal '2025'");
    EXPECT_EQ(opening("2025"), first);
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM Batchdet"), "3");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM GL WHERE BatchType = 'BB'"), "2");
    // the auditor's late entry: December is opened, closed, prepared, and the year closed again
    run("sp_UnpostBook 'JV','202412'");
    enter("JV", "3", "2024-12-31", {{"6101", "15.00", "0", "1010"}, {"2501", "0", "15.00", ""}}, "YE");
    EXPECT_EQ(refused("sp_YearEndClose '3201','2025'"),
              "50015 Book JV is not closed for period 202412. Close every month of the year first.");
    run("sp_PostGLtoGL '202412','JV'");
    run("sp_PrepareFinance '202412'");
    run("sp_YearEndClose '3201','2025'");
    EXPECT_EQ(opening("2025"), (std::vector<std::string>{"1101|70.00|0.00", "2501|0.00|15.00", "3201|0.00|55.00"}));
    EXPECT_EQ(one("SELECT Credit FROM GL WHERE BatchType = 'BB' AND Code = '3201'"), "55.00") << "and in the ledger";
    enter("AR", "1", "2024-03-15", simple("1.00"));
    enter("AR", "2", "2024-05-15", simple("1.00"));
    EXPECT_EQ(refused("sp_YearEndClose '3201','2025'"),
              "50015 Book AR is not closed for period 202403 (and 1 more). Close every month of the year first.");
    EXPECT_EQ(cn->transactionDepth(), 0);
}

TEST_F(YearEnd, BalancesRunOnUntilTheYearIsOpened) {
    yearOf2024();
    run("sp_PrepareFinance '202501'");
    EXPECT_EQ(ending("202501", "4101"), "-100.00");
    run("sp_PostForwardedBal '2025'");
    EXPECT_EQ(opening("2025"), (std::vector<std::string>{"1101|70.00|0.00", "3203|0.00|70.00"}))
        << "income summary first";
    run("sp_PrepareFinance '202501'");
    EXPECT_EQ(ending("202501", "3203"), "-70.00");
    run("sp_YearEndClose '3201','2025'");
    EXPECT_EQ(one("SELECT Code FROM GL WHERE BatchType = 'BB' AND Credit = 70"), "3201") << "a posted opening follows";
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM PreparedPeriod WHERE Period = '202501' AND StaleSince IS NOT NULL"), "1");
}

TEST_F(YearEnd, NeedsFiguresThatAreNotOlderThanTheLedger) {
    EXPECT_EQ(refused("sp_YearEndClose '3201','2025'").substr(0, 5), "50030");
    yearOf2024();
    EXPECT_EQ(refused("sp_YearEndClose '9999','2025'").substr(0, 5), "50002");
    EXPECT_EQ(refused("sp_YearEndClose '3000','2025'").substr(0, 5), "50002") << "a master account takes nothing";
    run("sp_UnpostBook 'JV','202412'");
    run("sp_PostGLtoGL '202412','JV'");
    EXPECT_EQ(refused("sp_YearEndClose '3201','2025'"),
              "50031 The figures of period 202412 are older than the ledger. Run the financial preparation again.");
    EXPECT_EQ(refused("sp_PostForwardedBal '20'").substr(0, 5), "50001");
    EXPECT_EQ(opening("2025"), std::vector<std::string>{});
    EXPECT_EQ(cn->transactionDepth(), 0);
}

TEST_F(YearEnd, AFiscalYearOpensInItsOwnMonth) {
    run("UPDATE SYS SET YearType = 'Fiscal'");
    run("INSERT INTO FiscalYears (FiscalYear, StartDate, EndDate) VALUES ('2024', '20230701', '20240630')");
    run("INSERT INTO FiscalYears (FiscalYear, StartDate, EndDate) VALUES ('2025', '20240701', '20250630')");
    EXPECT_EQ(one("SELECT dbo.fn_YearOf('202407') + dbo.fn_YearOf('202406') + dbo.fn_FirstPeriodOf('2025') AS X"),
              "20252024202407");
    enter("JV", "1", "2024-06-15", {{"1101", "9.00", "0", ""}, {"4101", "0", "9.00", ""}});
    run("sp_PostGLtoGL '202406','JV'");
    run("sp_PrepareFinance '202406'");
    run("sp_YearEndClose '3201','2025'");
    run("sp_PostForwardedBal '2025'");
    EXPECT_EQ(one("SELECT MIN(Period) AS P FROM GL WHERE BatchType = 'BB'"), "202407");
}

TEST_F(YearEnd, OpeningBalancesAreTypedInLoadedAndForwarded) {
    run("sp_Init_BegBalance '2024',''");
    run("sp_Insert_BegBalance '2024','1101',500.00,0.00,''");
    run("sp_Insert_BegBalance '2024','3101',0.00,300.00,''");
    run("sp_Insert_BegBalance '2024','3101',0.00,100.00,''");
    run("sp_Insert_BegBalance '2024','1201',0.00,0.00,''");
    EXPECT_EQ(opening("2024"), (std::vector<std::string>{"1101|500.00|0.00", "3101|0.00|400.00"}));
    EXPECT_EQ(refused("sp_PostForwardedBal '2024'"), "50011 The opening balances of 2024 do not balance.");
    run("sp_Insert_BegBalance '2024','3201',0.00,100.00,''");
    run("sp_PostForwardedBal '2024'");
    run("sp_PostForwardedBal '2024'");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM GL"), "3");

    Recordset loaded = cn->Open("sp_Load_BegBalance '2024',''");
    EXPECT_EQ(loaded.recordCount(), std::stoul(one("SELECT COUNT(*) AS N FROM AcctCode WHERE Mast_Dept <> 'MAS'")));
    EXPECT_EQ(loaded["Code"].text() + "|" + loaded["Debit"].text(), "1101|500.00");
}

TEST_F(YearEnd, FiguresOfABookAndMonthGoToTheLedgerOnce) {
    run("insert into BegBalDT ( Year, Acct, Period, BatchType, Debit, Credit ) values ( '2024', '1101', '202401', "
        "'CR', 80.00, 0.00) ");
    run("insert into BEGBALDT (Year, Period, BatchType, Acct, Dept, Debit, Credit) values "
        "('2024','202401','AR','4101','',0.00,80.00)");
    EXPECT_EQ(rows("sp_Load_BegBalDT '202401','CR'"), (std::vector<std::string>{"1101||CASH ON HAND|80.00|0.00"}));
    run("sp_PostBegBaltoGL '202401'");
    run("sp_PostBegBaltoGL '202401'");
    EXPECT_EQ(rows("SELECT BatchType, Code, Debit, Credit FROM GL ORDER BY BatchType"),
              (std::vector<std::string>{"AR|4101|0.00|80.00", "CR|1101|80.00|0.00"}));
    EXPECT_THROW(enter("CR", "1", "2024-01-15", simple("1.00")), Error) << "the month of the book counts as closed";
    EXPECT_EQ(refused("sp_PostBegBaltoGL '202402'").substr(0, 5), "50009");
    run("UPDATE BegBalDT SET Debit = 81 WHERE BatchType = 'CR'");
    EXPECT_EQ(refused("sp_PostBegBaltoGL '202401'").substr(0, 5), "50011");
    run("insert into BegBalDT ( Year, Acct, Period, BatchType, Debit, Credit ) values ( '2024', '1101', '202405', "
        "'JV', 0.00, 0.00) ");
    enter("JV", "1", "2024-05-15", simple("1.00"));
    EXPECT_EQ(refused("sp_PostBegBaltoGL '202405'").substr(0, 5), "50013");
}

}  // namespace kv::server_test
