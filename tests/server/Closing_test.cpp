// Closing and reopening a month of a book, and the guards of closed months.

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

#include "Books.h"

namespace kv::server_test {

using Closing = Books;

TEST_F(Closing, BringsTheUncancelledBatchesOfOneBookAndMonth) {
    enter("JV", "1", "2024-03-15", simple("100.00"));
    enter("JV", "2", "2024-03-31", simple("40.00"), "YE");
    enter("JV", "3", "2024-03-20", simple("999.00"));
    enter("JV", "4", "2024-04-01", simple("7.00"));
    enter("AR", "1", "2024-03-15", simple("55.00"));
    run("UPDATE JV SET Cancelled = 1 WHERE Batch = '3'");
    run("sp_PostGLtoGL '202403','JV'");
    EXPECT_EQ(
        rows("SELECT Period, BatchType, Batch, SeqNo, Code, Debit, Credit, DocType FROM GL ORDER BY Batch, SeqNo"),
        (std::vector<std::string>{"202403|JV|1|1|1101|100.00|0.00|JV", "202403|JV|1|2|1201|0.00|100.00|JV",
                                  "202403|JV|2|1|1101|40.00|0.00|YE", "202403|JV|2|2|1201|0.00|40.00|YE"}));
    EXPECT_EQ(rows("SELECT Book, Period, Action, ActionBy, Lines FROM BookCloseLog"),
              (std::vector<std::string>{"JV|202403|CLOSE|E001|4"}));
}

TEST_F(Closing, EachBookClosesFromItsOwnTables) {
    enter("AR", "1", "2024-03-15", simple("1.00"));
    enter("CR", "1", "2024-03-15", simple("2.00"));
    run("INSERT INTO AP (Voucher, VoucherDate, Amount, Period, Acct) VALUES ('000001', '20240310', 3, '202403', "
        "'2101')");
    run("INSERT INTO APDT (Voucher, SeqNo, Code, Debit, Credit, Period) VALUES ('000001', 1, '6201', 3, 0, '202403')");
    run("INSERT INTO APDT (Voucher, SeqNo, Code, Debit, Credit, Period) VALUES ('000001', 2, '2101', 0, 3, '202403')");
    run("INSERT INTO CDB (CVNo, CVDate, CVAmt, Period) VALUES ('000001', '20240311', 4, '202403')");
    run("INSERT INTO CDBDT (CVNo, SeqNo, Code, Dept, Debit, Credit, Period) VALUES ('000001', 1, '2101', NULL, 4, 0, "
        "'202403')");
    run("INSERT INTO CDBDT (CVNo, SeqNo, Code, Dept, Debit, Credit, Period) VALUES ('000001', 2, '1111', NULL, 0, 4, "
        "'202403')");
    run("sp_PostGLtoGL '202403','AR'");
    run("sp_PostGLtoGL '202403','CR'");
    run("sp_PostAPtoGL '202403'");
    run("sp_PostCDBtoGL '202403'");
    EXPECT_EQ(rows("SELECT BatchType, SUM(Debit) AS D, SUM(Credit) AS C, COUNT(*) AS N FROM GL GROUP BY BatchType "
                   "ORDER BY BatchType"),
              (std::vector<std::string>{"AP|3.00|3.00|2", "AR|1.00|1.00|2", "CD|4.00|4.00|2", "CR|2.00|2.00|2"}));
}

TEST_F(Closing, IsRefusedByNameAndLeavesTheEarlierClose) {
    enter("JV", "1", "2024-03-15", simple("100.00"));
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_UnpostBook 'JV','202403','typing error'");
    enter("JV", "7", "2024-03-16", {{"1101", "10.00", "0", ""}, {"1201", "0", "9.99", ""}});
    enter("JV", "8", "2024-03-16", {{"1101", "10.00", "0", ""}});
    run("sp_Insert_JV2 '8', 'JVD03-001-24', '', '2024', '03', '001' ");
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','JV'"),
              "50011 Book JV cannot be closed for period 202403. Batches that do not balance: 7, JVD03-001-24 (8).");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM GL"), "0");
    EXPECT_EQ(cn->transactionDepth(), 0);
    EXPECT_EQ(rows("SELECT Action, Lines, Reason FROM BookCloseLog ORDER BY LogID"),
              (std::vector<std::string>{"CLOSE|2|", "REOPEN|2|typing error"}));
}

TEST_F(Closing, NamesTenBatchesAndCountsTheRest) {
    for (int i = 10; i < 23; ++i) enter("AR", std::to_string(i), "2024-03-16", {{"1101", "1.00", "0", ""}});
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','AR'"),
              "50011 Book AR cannot be closed for period 202403. Batches that do not balance: "
              "10, 11, 12, 13, 14, 15, 16, 17, 18, 19 and 3 more.");
}

TEST_F(Closing, UnpostedBatchesCountOnlyWhereTransactionsArePosted) {
    enter("AR", "1", "2024-03-15", simple("1.00"));
    enter("AR", "2", "2024-03-15", simple("2.00"));
    run("UPDATE AR SET POSTED = 1 WHERE BATCH = '1'");
    run("sp_Update_Parameters 'EnableTransactionPosting','Y','Posting of batches'");
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','AR'"),
              "50012 Book AR cannot be closed for period 202403. Batches that are not posted: 2.");
    run("UPDATE AR SET POSTED = 1 WHERE BATCH = '2'");
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','AR'"), "");
    run("sp_UnpostBook 'AR','202403'");
    run("UPDATE AR SET POSTED = 0");
    run("sp_Update_Parameters 'EnableTransactionPosting','y','Posting of batches'");
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','AR'"), "") << "only a capital Y switches it on";
}

TEST_F(Closing, ASecondCloseReplacesTheFirst) {
    enter("CR", "1", "2024-03-15", simple("1.00"));
    run("sp_PostGLtoGL '202403','CR'");
    run("sp_PostGLtoGL '202403','CR'");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM GL"), "2");
    enter("CR", "2", "2024-04-15", simple("1.00"));
    run("sp_PostGLtoGL '202404','CR'");
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_UnpostBook 'CR','202403'");
    run("sp_UnpostBook 'CR','202403'");
    EXPECT_EQ(rows("SELECT DISTINCT Period, BatchType FROM GL ORDER BY Period"),
              (std::vector<std::string>{"202403|JV", "202404|CR"}))
        << "reopening takes out exactly the book and month";
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM BookCloseLog WHERE Action = 'REOPEN'"), "1");
}

/// What a close would bring, with what it would refuse, in the order in which one has to look at it.
TEST_F(Closing, ThePreviewNamesWhatWouldBeRefused) {
    enter("JV", "1", "2024-03-15", simple("5.00"));
    enter("JV", "2", "2024-03-10", {{"1101", "3.00", "0", ""}, {"1201", "0", "2.00", ""}});
    enter("JV", "3", "2024-03-12", simple("7.00"));
    enter("JV", "4", "2024-04-12", simple("9.00"));
    run("UPDATE JV SET Cancelled = 1 WHERE Batch = '3'");
    const char* preview = "sp_Load_ClosePreview 'JV','202403'";
    const auto told = [&] {
        std::vector<std::string> out;
        Recordset found = cn->Open(preview);
        for (; !found.eof(); found.moveNext()) {
            out.push_back(found["Batch"].text() + "|" + found["Debit"].text() + "|" + found["Credit"].text() + "|" +
                          found["Trouble"].text());
        }
        return out;
    };
    EXPECT_EQ(told(), (std::vector<std::string>{"2|3.00|2.00|unbalanced", "1|5.00|5.00|"}));
    run("sp_Update_Parameters 'ENABLETRANSACTIONPOSTING','Y',''");
    EXPECT_EQ(told(), (std::vector<std::string>{"2|3.00|2.00|unbalanced", "1|5.00|5.00|not posted"}));
    EXPECT_NE(refused("sp_PostGLtoGL '202403','JV'"), "");
    run("UPDATE JV SET Posted = 1 WHERE Cancelled = 0");
    run("DELETE FROM JVDT WHERE Batch = '2'");
    EXPECT_EQ(told(), (std::vector<std::string>{"2|0.00|0.00|", "1|5.00|5.00|"}));
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','JV'"), "") << "a preview without trouble closes";
    EXPECT_EQ(refused("sp_Load_ClosePreview 'JV','202413'"), "50006 Period \"202413\" is not valid.");
}

TEST_F(Closing, WhatChangedSinceTheCloseIsNamedBatchByBatch) {
    enter("AR", "1", "2024-03-15", simple("5.00"));
    enter("AR", "2", "2024-03-16", simple("6.00"));
    enter("AR", "3", "2024-03-17", simple("7.00"));
    run("sp_PostGLtoGL '202403','AR'");
    const char* changes = "sp_Load_ReopenedChanges 'AR','202403'";
    EXPECT_EQ(rows(changes), std::vector<std::string>{});
    run("sp_UnpostBook 'AR','202403','late charges'");
    EXPECT_EQ(rows(changes), std::vector<std::string>{}) << "nothing was changed yet";
    run("UPDATE ARDT SET Debit = 5.50 WHERE Batch = '1' AND SeqNo = 1");
    run("UPDATE ARDT SET Code = '1111' WHERE Batch = '2' AND SeqNo = 1");
    run("DELETE FROM ARDT WHERE Batch = '3'");
    run("DELETE FROM AR WHERE Batch = '3'");
    enter("AR", "4", "2024-03-18", simple("8.00"));
    const auto told = [&] {
        std::vector<std::string> out;
        Recordset found = cn->Open(changes);
        for (; !found.eof(); found.moveNext()) {
            out.push_back(found["Batch"].text() + " " + found["Change"].text() + " " + found["WasDebit"].text() + " " +
                          found["NowDebit"].text());
        }
        std::sort(out.begin(), out.end());
        return out;
    };
    const std::vector<std::string> all{"1 changed 5.00 5.50", "2 changed 6.00 6.00", "3 removed 7.00 0.00",
                                       "4 added 0.00 8.00"};
    EXPECT_EQ(told(), all);
    run("UPDATE ARDT SET Debit = 5 WHERE Batch = '1' AND SeqNo = 1");
    run("sp_PostGLtoGL '202403','AR'");
    EXPECT_EQ(told(), (std::vector<std::string>{all[1], all[2], all[3]})) << "it still stands after the next close";
    run("sp_UnpostBook 'AR','202403'");
    EXPECT_EQ(told(), std::vector<std::string>{}) << "the next reopening begins anew";
}

TEST_F(Closing, TheCockpitShowsEveryBookAndMonth) {
    enter("JV", "1", "2024-02-15", simple("5.00"));
    enter("JV", "2", "2024-03-15", {{"1101", "3.00", "0", ""}, {"1201", "0", "2.00", ""}});
    enter("CR", "1", "2024-02-15", simple("5.00"));
    run("sp_PostGLtoGL '202402','JV'");
    run("sp_PostGLtoGL '202402','CR'");
    run("sp_UnpostBook 'CR','202402','a slip'");
    std::vector<std::string> told;
    Recordset found = cn->Open("sp_Load_CloseCockpit '202402','202403'");
    EXPECT_EQ(found.recordCount(), 10u);
    for (; !found.eof(); found.moveNext()) {
        const std::string cell = found["Batches"].text() + found["Unposted"].text() + found["Unbalanced"].text() +
                                 (found["Closed"].boolean() ? "1" : "0") + found["LastAction"].text();
        if (cell != "0000") {
            told.push_back(found["Book"].text() + found["Period"].text() + " " + cell + found["LastReason"].text());
        }
    }
    EXPECT_EQ(told, (std::vector<std::string>{"CR202402 1100REOPENa slip", "JV202402 1101CLOSE", "JV202403 1110"}));
    EXPECT_EQ(refused("sp_Load_CloseCockpit '202402','202901'"), "50001 The cockpit shows at most 36 months.");
}

/// The second of two workstations waits for the first, then is told, and changes nothing.
TEST_F(Closing, TwoWorkstationsTakeTurns) {
    enter("JV", "1", "2024-03-15", simple("1.00"));
    const auto faster = connect();
    faster->BeginTrans();
    faster->Execute("sp_PostGLtoGL '202403','JV'");
    auto waiting = std::async(std::launch::async, [&] { return refused("sp_PostGLtoGL '202403','JV'"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    faster->CommitTrans();
    EXPECT_EQ(waiting.get(), "50014 Book JV was closed for period 202403 at another workstation a moment ago.");
    EXPECT_EQ(rows("SELECT Action, Lines FROM BookCloseLog"), (std::vector<std::string>{"CLOSE|2"}));
    run("sp_UnpostBook 'JV','202403'");
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','JV'"), "") << "after a reopening there is nothing to tell";
    run("UPDATE BookCloseLog SET ActionAt = DATEADD(MINUTE, -1, ActionAt)");
    EXPECT_NO_THROW(faster->Execute("sp_PostGLtoGL '202403','JV'")) << "a later close replaces an earlier one";
}

TEST_F(Closing, AMonthWithoutBatchesIsClosedToo) {
    run("sp_PostGLtoGL '202403','CR'");
    EXPECT_EQ(rows("SELECT Batch, Code, Debit, Credit FROM GL"), (std::vector<std::string>{"||0.00|0.00"}));
    EXPECT_THROW(enter("CR", "1", "2024-03-15", simple("1.00")), Error);
    run("sp_PrepareFinance '202403'");
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM PeriodBalance"), "0");
}

TEST_F(Closing, WrongArgumentsAreNamed) {
    EXPECT_EQ(refused("sp_PostGLtoGL '202403','AP'"), "50005 Book \"AP\" is not closed this way.");
    EXPECT_EQ(refused("sp_PostGLtoGL '202413','JV'"), "50006 Period \"202413\" is not valid.");
    EXPECT_EQ(refused("sp_PostAPtoGL '2024'"), "50006 Period \"2024\" is not valid.");
    EXPECT_EQ(refused("sp_UnpostBook 'GL','202403'"), "50005 There is no book \"GL\".");
    EXPECT_EQ(refused("sp_PrepareFinance ''"), "50006 Period \"\" is not valid.");
}

/// Every way to touch a closed month is refused, whoever sends it, and changes nothing.
TEST_F(Closing, GuardsTheTablesOfAClosedMonth) {
    enter("JV", "1", "2024-03-15", simple("1.00"));
    enter("JV", "2", "2024-04-15", simple("1.00"));
    enter("AR", "1", "2024-03-15", simple("1.00"));
    enter("CR", "1", "2024-03-15", simple("1.00"));
    run("INSERT INTO tbDailyCharges (Batch, Period, Code, Side, DRCR, Amount) VALUES ('1', '202403', '1101', 'D', 'D', "
        "1)");
    run("INSERT INTO AP (Voucher, VoucherDate, Amount, Period, Acct) VALUES ('1', '20240310', 0, '202403', '2101')");
    run("INSERT INTO CDB (CVNo, CVDate, CVAmt, Period) VALUES ('1', '20240311', 0, '202403')");
    for (const char* book : {"JV", "AR", "CR"}) run("sp_PostGLtoGL '202403','" + std::string(book) + "'");
    run("sp_PostAPtoGL '202403'");
    run("sp_PostCDBtoGL '202403'");

    struct Attempt {
        const char* book;
        const char* statement;
    };
    const Attempt attempts[] = {
        {"JV", "INSERT INTO JVDT (Batch, SeqNo, Period, Code) VALUES ('9', 1, '202403', '1101')"},
        {"JV", "UPDATE JVDT SET Debit = 2 WHERE Batch = '1'"},
        {"JV", "UPDATE JVDT SET Period = '202404' WHERE Batch = '1'"},
        {"JV", "UPDATE JVDT SET Period = '202403' WHERE Batch = '2'"},
        {"JV", "DELETE FROM JVDT"},
        {"JV", "UPDATE JV SET Cancelled = 1 WHERE Batch = '1'"},
        {"JV", "UPDATE JV SET POSTED = 1 WHERE Batch = '1'"},
        {"JV", "sp_Insert_JV '9', '2024-03-15', 'JV', 5.00, 5.00, 5.00, '202403', '', 'E001'"},
        {"JV", "DELETE FROM JV WHERE Batch = '1'"},
        {"AR", "DELETE FROM ARDT WHERE Batch = '1'"},
        {"AR", "DELETE FROM AR WHERE Batch = '1'"},
        {"AR", "DELETE FROM tbDailyCharges WHERE Batch = '1'"},
        {"CR", "UPDATE CRBDT SET Code = '1111'"},
        {"CR", "UPDATE CRB SET Particular = 'x'"},
        {"CR",
         "INSERT INTO tbDailyCollection (Batch, Period, Code, Side, DRCR, Amount) VALUES ('1', '202403', '1', 'D', "
         "'D', 1)"},
        {"AP", "INSERT INTO APDT (Voucher, SeqNo, Code, Period) VALUES ('1', 1, '2101', '202403')"},
        {"AP", "UPDATE AP SET Cancelled = 1 WHERE Voucher = '1'"},
        {"AP", "UPDATE AP SET Amount = 9 WHERE Voucher = '1'"},
        {"AP", "DELETE FROM AP WHERE Voucher = '1'"},
        {"CD", "INSERT INTO CDBDT (CVNo, SeqNo, Code, Period) VALUES ('1', 1, '2101', '202403')"},
        {"CD", "UPDATE CDB SET Cancelled = 1 WHERE CVNo = '1'"},
    };
    for (const Attempt& attempt : attempts) {
        EXPECT_EQ(refused(attempt.statement),
                  "50010 Book " + std::string(attempt.book) + " is closed for period 202403.")
            << attempt.statement;
    }
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM JVDT"), "4");
    EXPECT_EQ(one("SELECT SUM(Debit) AS N FROM JVDT"), "2.00");
}

TEST_F(Closing, OtherMonthsAndOtherColumnsStayOpen) {
    enter("JV", "1", "2024-03-15", simple("1.00"));
    run("INSERT INTO AP (Voucher, VoucherDate, Amount, Period, Acct) VALUES ('1', '20240310', 0, '202403', '2101')");
    run("sp_PostGLtoGL '202403','JV'");
    run("sp_PostAPtoGL '202403'");
    enter("JV", "2", "2024-04-15", simple("1.00"));
    enter("AR", "1", "2024-03-15", simple("1.00"));
    EXPECT_EQ(
        refused("UPDATE AP SET APPROVEDDATE = GETDATE(), Paid = 5, Date_Adjusted = GETDATE() WHERE VOUCHER = '1'"), "");
    run("sp_UnpostBook 'JV','202403'");
    enter("JV", "1", "2024-03-16", simple("3.00"));
    EXPECT_EQ(one("SELECT SUM(Debit) AS N FROM JVDT WHERE Batch = '1'"), "3.00");
}

TEST_F(Closing, TheListOfMonthsTellsWhatStandsInThem) {
    enter("JV", "1", "2024-03-15", simple("1.00"));
    enter("JV", "2", "2024-03-15", simple("1.00"));
    enter("JV", "3", "2024-04-15", simple("1.00"));
    run("UPDATE JV SET POSTED = 1 WHERE Batch = '2'");
    run("sp_PostGLtoGL '202403','JV'");
    EXPECT_EQ(rows("SELECT Book, Period, Batches, Unposted, Closed FROM vwBookPeriod ORDER BY Book, Period"),
              (std::vector<std::string>{"JV|202403|2|1|1", "JV|202404|1|1|0"}));
}

}  // namespace kv::server_test
