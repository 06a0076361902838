// Batches of the journal books: headers, lines, payable links, and what the server refuses of them.

#include "Books.h"
#include "platform/base/Text.h"

namespace kv::server_test {

using Journal = Books;

TEST_F(Journal, AHeaderThatExistsIsAnUpdate) {
    for (const char* book : {"JV", "AR", "CR"}) {
        const std::string table = std::string(book) == "CR" ? "CRB" : book;
        enter(book, "1", "2024-03-15", simple("100.00"));
        enter(book, "1", "2024-03-16", simple("250.50"));
        EXPECT_EQ(rows("SELECT Batch, Period, Total, Debits, Credits, Encoder, EditEncoder, Posted FROM " + table),
                  (std::vector<std::string>{"1|202403|250.50|250.50|250.50|E001|E001|False"}))
            << book;
        EXPECT_EQ(one("SELECT CONVERT(varchar(10), BatchDate, 120) AS D FROM " + table), "2024-03-16") << book;
    }
}

TEST_F(Journal, TheDateMayComeInTheLocalesOwnText) {
    run("sp_Insert_JV '1', '3/15/2024', 'JV', 1.00, 1.00, 1.00, '202403', 'O''Brien', 'E001'");
    EXPECT_EQ(rows("SELECT CONVERT(varchar(10), BatchDate, 120) AS D, Particular FROM JV"),
              (std::vector<std::string>{"2024-03-15|O'Brien"}));
}

TEST_F(Journal, PostedAndCancelledBatchesAreLeftAlone) {
    enter("JV", "1", "2024-03-15", simple("100.00"));
    run("UPDATE JV SET POSTED = 1 WHERE BATCH = '1'");
    EXPECT_EQ(refused("sp_Insert_JV '1', '2024-03-15', 'JV', 5.00, 5.00, 5.00, '202403', '', 'E001'"),
              "50004 Batch 1 of book JV is posted. Unpost it first.");
    run("UPDATE JV SET POSTED = 0 WHERE BATCH = '1'");
    run("UPDATE JV SET Cancelled = 1 WHERE Batch = '1'");
    const std::string cancelled = "50003 Batch 1 of book JV is cancelled.";
    EXPECT_EQ(refused("sp_Insert_JV '1', '2024-03-15', 'JV', 5.00, 5.00, 5.00, '202403', '', 'E001'"), cancelled);
    EXPECT_EQ(refused("UPDATE JV SET Cancelled = 0 WHERE Batch = '1'"), cancelled);
    EXPECT_EQ(refused("UPDATE JVDT SET Debit = 7 WHERE Batch = '1'"), cancelled);
    EXPECT_EQ(refused("DELETE FROM JVDT WHERE Batch = '1'"), cancelled);
    EXPECT_EQ(one("SELECT SUM(Debit) AS S FROM JVDT"), "100.00");
}

TEST_F(Journal, LinesComeInOrderWithTheirVoucher) {
    enter("JV", "4", "2024-03-15",
          {{"6101", "80.00", "0", "1010"}, {"2101", "20.00", "0", ""}, {"1101", "0", "100.00", ""}});
    run("sp_Init_APCDB '4','JV'");
    run("sp_Insert_APCDB 'JV4', '4', 20.00, '2101', 'JV', 2");
    run("sp_Insert_Vouchers 'JV4', 'JV', '4', '', '2024-03-15'");
    EXPECT_EQ(rows("sp_Load_BatchDT 'JV','4'"),
              (std::vector<std::string>{"6101|1010|test|80.00|0.00|||1", "2101||test|20.00|0.00|JV4||2",
                                        "1101||test|0.00|100.00|||3"}));
    EXPECT_EQ(rows("SELECT Voucher, Source, Reference, Debit, Credit FROM VouchersPayable"),
              (std::vector<std::string>{"JV4|JV|4|20.00|0.00"}));
    EXPECT_EQ(refused("sp_Load_BatchDT 'XX','4'").substr(0, 5), "50005");
}

TEST_F(Journal, WritingAgainReplacesWhatTheBatchRecordedAboutVouchers) {
    // Batch 4 of the AR book has the same number; its links stay.
    run("sp_Insert_APCDB 'AR4', '4', -30.00, '2101', 'AR', 1");
    run("sp_Insert_Vouchers 'AR4', 'JV', '4', '', '2024-03-15'");
    run("sp_Insert_APCDB 'JV4', '4', -20.00, '2101', 'JV', 1");
    run("sp_Insert_APCDB 'JV4', '4', -5.00, '2101', 'JV', 2");
    run("sp_Insert_Vouchers 'JV4', 'JV', '4', '', '2024-03-15'");
    EXPECT_EQ(one("SELECT Credit FROM VouchersPayable WHERE Voucher = 'JV4'"), "25.00");
    run("sp_Init_APCDB '4','JV'");
    EXPECT_EQ(rows("SELECT ApVoucher FROM APCDB"), (std::vector<std::string>{"AR4"}));
    EXPECT_EQ(rows("SELECT Voucher, Credit FROM VouchersPayable"), (std::vector<std::string>{"AR4|30.00"}));
}

TEST_F(Journal, AFailingSaveLeavesTheOldBatch) {
    enter("AR", "1", "2024-03-15", simple("100.00"));
    EXPECT_THROW(enter("AR", "1", "2024-03-15", {{"1101", "1.00", "0", "a department far too long"}}), Error);
    EXPECT_EQ(one("SELECT SUM(Debit) AS S FROM ARDT WHERE Batch = '1'"), "100.00");
    EXPECT_EQ(cn->transactionDepth(), 0);
}

TEST_F(Journal, ThePrintedNumberIsKeptOnce) {
    run("sp_Insert_JV2 '1', 'JVD03-001-24', '', '2024', '03', '001' ");
    run("sp_Insert_JV2 '1', 'JVD03-002-24', '', '2024', '03', '002' ");
    EXPECT_EQ(rows("select PrintJVBatch, JVYear, JVMonth, JVSeries from JV2 where Batch = '1'"),
              (std::vector<std::string>{"JVD03-002-24|2024|03|002"}));
}

TEST_F(Journal, TheJournalOfARangeTakesNumbersAsNumbers) {
    for (const char* batch : {"2", "9", "10", "11", "30"}) enter("JV", batch, "2024-03-15", simple("1.00"));
    run("sp_Insert_JV2 '30', 'JVD03-005-24', '', '2024', '03', '005' ");
    run("UPDATE JV SET Cancelled = 1 WHERE Batch = '11'");
    EXPECT_EQ(rows("SELECT Batch, Status FROM JV CROSS JOIN (SELECT '' AS Status) S WHERE 1 = 0"),
              std::vector<std::string>{});
    std::vector<std::string> seen;
    for (const Row& row : all("sp_Report_BatchJournal 'JV', '9', '11'"))
        seen.push_back(row[0].text() + "/" + row[7].text() + row[6].text());
    EXPECT_EQ(seen, (std::vector<std::string>{"9/1", "9/2", "10/1", "10/2", "11/Cancelled"}));
    run("UPDATE JV SET Encoder = 'E001' WHERE Batch = '9'");
    run("UPDATE JV SET Encoder = 'GONE' WHERE Batch = '10'");
    const auto encoder = [&](const char* batch) {
        return all("sp_Report_BatchJournal 'JV', '" + std::string(batch) + "', '" + batch + "'").front()[5].text();
    };
    EXPECT_TRUE(equalsNoCase(encoder("9"), "Maria Santos")) << encoder("9");
    EXPECT_EQ(encoder("10"), "GONE");  // no employee any more
    EXPECT_EQ(cn->Open("sp_Report_BatchJournal 'JV', 'JVD03-005-24', 'JVD03-005-24'").recordCount(), 2U);
    EXPECT_EQ(refused("sp_Report_BatchJournal 'ZZ', '1', '2'").substr(0, 5), "50005");
}

}  // namespace kv::server_test
