// Number series: drawing, using up and giving back, by one connection, by several, and by several processes.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

#include "Books.h"
#include "platform/data/Statement.h"

namespace kv::server_test {

using Numbers = Books;

TEST_F(Numbers, TheFunctionGivesWhatThisConnectionDrew) {
    const auto other = connect();
    cn->Execute("sp_Reserve_Number 'JV'");
    other->Execute("sp_Reserve_Number 'JV'");
    EXPECT_EQ(one("select dbo.fn_NewJVNum() as Voucher from sys"), "1");
    EXPECT_EQ(other->Open("select dbo.fn_NewJVNum() as Voucher from sys").at(0).text(), "2");
    EXPECT_EQ(one("select dbo.fn_NewJVNum() as Voucher from sys"), "1") << "asking again draws nothing";
    const auto third = connect();
    EXPECT_EQ(third->Open("select dbo.fn_NewJVNum() as Voucher from sys").at(0).text(), "3") << "what would be next";
}

TEST_F(Numbers, EachSeriesHasItsOwnForm) {
    struct Series {
        const char* draw;
        const char* ask;
        const char* first;
        const char* second;
    };
    const Series table[] = {
        {"sp_Reserve_Number 'JV'", "dbo.fn_NewJVNum()", "1", "2"},
        {"sp_Reserve_Number 'AR'", "dbo.fn_NewARNum()", "1", "2"},
        {"sp_Reserve_Number 'CR'", "dbo.fn_NewCRBNum()", "1", "2"},
        {"sp_Reserve_Number 'AP'", "dbo.fn_NewAPNum()", "000001", "000002"},
        {"sp_Reserve_Number 'CV'", "dbo.fn_NewCVNum('0000')", "0001", "0002"},
        {"sp_Reserve_Number 'DM'", "dbo.fn_NewDMNum()", "DM000001", "DM000002"},
        {"sp_Reserve_Number 'PF'", "dbo.fn_NextPFVoucher()", "000003", "000004"},  // one series with vouchers
        {"sp_Init_BatchNumbers '202403','', 'JV'", "dbo.fn_NewSeriesNum('JV', '', '2024', '03')", "1", "2"},
        {"sp_Init_BatchNumbers '202404','', 'JV'", "dbo.fn_NewSeriesNum('JV', '', '2024', '04')", "1", "2"},
        {"sp_Init_BatchNumbers '202403','', 'AP'", "dbo.fn_NewSeriesNum('AP', '', '2024', '03')", "1", "2"},
        {"sp_Init_BatchNumbers '202403','', 'CV'", "dbo.fn_NewSeriesNum('CV', '', '2024', '03')", "1", "2"},
    };
    for (const Series& series : table) {
        const std::string ask = "select " + std::string(series.ask) + " as Voucher from sys";
        run(series.draw);
        EXPECT_EQ(one(ask), series.first) << series.draw;
        run(series.draw);
        EXPECT_EQ(one(ask), series.second) << series.draw;
    }
    EXPECT_EQ(refused("sp_Reserve_Number 'XX'"), "50020 There is no number series \"XX\".");
    EXPECT_EQ(refused("sp_Init_BatchNumbers '2024','', 'JV'").substr(0, 5), "50006");
}

TEST_F(Numbers, FeesHaveTheirOwnSeriesOnlyWhenToldSo) {
    run("sp_Reserve_Number 'AP'");
    EXPECT_EQ(one("sp_Reserve_Number 'PF'"), "2") << "one series";
    EXPECT_EQ(one("select dbo.fn_NextPFVoucher() as Voucher from sys"), "000002");
    run("sp_Update_Parameters 'UseSeparatePFSeries','Y',''");
    run("sp_Reserve_Number 'PF'");
    EXPECT_EQ(one("select dbo.fn_NextPFVoucher() as Voucher from sys"), "PF000001");
}

TEST_F(Numbers, ASaveUsesTheNumberUpAndANumberFromElsewhereRaisesTheSeries) {
    run("sp_Reserve_Number 'JV'");
    enter("JV", "1", "2024-03-15", simple("1.00"));
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM NumberReserved"), "0");
    EXPECT_EQ(one("select dbo.fn_NewJVNum() as Voucher from sys"), "2");
    enter("JV", "500", "2024-03-15", simple("1.00"));
    enter("JV", "UP-7", "2024-03-15", simple("1.00"));
    EXPECT_EQ(one("sp_Reserve_Number 'JV'"), "501");
    run("sp_Insert_JV2 '500', 'JVD03-030-24', '', '2024', '03', '030' ");
    run("sp_Init_BatchNumbers '202403','', 'JV'");
    EXPECT_EQ(one("select dbo.fn_NewSeriesNum('JV', '', '2024', '03') as Voucher from sys"), "31");
}

TEST_F(Numbers, ARolledBackSaveKeepsItsNumberFromOthers) {
    const auto other = connect();
    run("sp_Reserve_Number 'AR'");
    cn->BeginTrans();
    run("sp_Insert_AR '1', '2024-03-15', 'AR', 1.00, 1.00, 1.00, '202403', '', 'E001'");
    cn->RollbackTrans();
    EXPECT_EQ(other->Open("sp_Reserve_Number 'AR'").at(0).text(), "2");
    EXPECT_EQ(one("select dbo.fn_NewARNum() as Voucher from sys"), "1") << "the save may be repeated with it";
}

TEST_F(Numbers, ADrawInsideTheSaveIsUndoneWithItAndLeavesNoGap) {
    const auto other = connect();
    cn->BeginTrans();
    EXPECT_EQ(one("sp_Reserve_Number 'JV'"), "1");
    cn->RollbackTrans();
    EXPECT_EQ(other->Open("sp_Reserve_Number 'JV'").at(0).text(), "1");
    EXPECT_EQ(one("sp_Reserve_Number 'JV'"), "2") << "the repeated save draws anew";
}

TEST_F(Numbers, ANumberGoesBackOnlyWhenItWasTheLast) {
    const auto other = connect();
    run("sp_Reserve_Number 'JV'");
    run("sp_Release_Number 'JV'");
    EXPECT_EQ(one("sp_Reserve_Number 'JV'"), "1");
    other->Execute("sp_Reserve_Number 'JV'");
    run("sp_Release_Number 'JV'");
    EXPECT_EQ(one("sp_Reserve_Number 'JV'"), "3") << "2 belongs to the other, 1 stays a gap";
    run("sp_Release_Number 'JV'");
    run("sp_Release_Number 'JV'");
    EXPECT_EQ(one("SELECT LastNo FROM NumberSeries WHERE Series = 'JV'"), "2");
}

TEST_F(Numbers, ASeriesStartsBehindWhatTheBooksHold) {
    enter("CR", "41", "2024-03-15", simple("1.00"));
    run("DELETE FROM NumberSeries");
    EXPECT_EQ(one("sp_Reserve_Number 'CR'"), "42");
    // The hospital menus count on the settings row.
    run("UPDATE SYS SET CRBBatch = 60");
    EXPECT_EQ(one("sp_Reserve_Number 'CR'"), "61");
    EXPECT_EQ(one("SELECT CRBBatch FROM SYS"), "61");

    for (const char* voucher : {"000017", "CM000005", "PF000008", "2024030009", "MANUAL"})
        run(sql("INSERT INTO AP (Voucher, VoucherDate, Period) VALUES ('{}', '2024-03-01', '202403')").text(voucher));
    run("INSERT INTO CDB (CVNo, CVDate, Period) VALUES ('000031', '2024-03-01', '202403')");
    run("INSERT INTO CDB (CVNo, CVDate, Period) VALUES ('DM000004', '2024-03-01', '202403')");
    run("INSERT INTO AP2 (Voucher, APYear, APMonth, APSeries) VALUES ('000017', '2024', '03', '012')");
    run("INSERT INTO CDB2 (CVNo, CVYear, CVMonth, CVSeries) VALUES ('000031', '2024', '03', '021')");
    run("sp_Update_Parameters 'UseSeparatePFSeries','Y',''");
    const std::pair<const char*, const char*> next[] = {
        {"sp_Reserve_Number 'AP'", "18"},
        {"sp_Reserve_Number 'PF'", "9"},
        {"sp_Reserve_Number 'CM'", "6"},
        {"sp_Reserve_Number 'CV'", "32"},
        {"sp_Reserve_Number 'DM'", "5"},
        {"sp_Reserve_Number 'AP', '2024', '03'", "13"},
        {"sp_Reserve_Number 'CV', '2024', '03'", "22"},
    };
    for (const auto& [draw, number] : next) EXPECT_EQ(one(draw), number) << draw;
}

/// Four processes draw from every series in turn; each number comes once and none is left out.
TEST_F(Numbers, FourProcessesNeverShareANumber) {
    constexpr int kProcesses = 4;
    constexpr int kRounds = 150;
    const char* const series[][2] = {
        {"sp_Reserve_Number 'JV'", "dbo.fn_NewJVNum()"},
        {"sp_Reserve_Number 'AR'", "dbo.fn_NewARNum()"},
        {"sp_Reserve_Number 'AP'", "dbo.fn_NewAPNum()"},
        {"sp_Reserve_Number 'PF'", "dbo.fn_NextPFVoucher()"},
        {"sp_Reserve_Number 'CV'", "dbo.fn_NewCVNum('000000')"},
        {"sp_Reserve_Number 'DM'", "dbo.fn_NewDMNum()"},
        {"sp_Init_BatchNumbers '202403','', 'JV'", "dbo.fn_NewSeriesNum('JV', '', '2024', '03')"},
        {"sp_Init_BatchNumbers '202403','', 'AP'", "dbo.fn_NewSeriesNum('AP', '', '2024', '03')"},
        {"sp_Init_BatchNumbers '202403','', 'CV'", "dbo.fn_NewSeriesNum('CV', '', '2024', '03')"},
    };
    run("sp_Update_Parameters 'UseSeparatePFSeries','Y',''");
    const char* bin = std::getenv("KV_BIN");
    ASSERT_NE(bin, nullptr);
    const std::string script = file() + ".sql";
    {
        std::ofstream out(script);
        for (int i = 0; i < kRounds; ++i)
            for (const auto& [draw, ask] : series) out << draw << "\nGO\nselect " << ask << " as Drawn from sys\nGO\n";
    }
    const std::string command = std::string(bin) + "/sqlconsole --data " + file() + " < " + script;
    std::vector<std::FILE*> pipes;
    for (int i = 0; i < kProcesses; ++i) pipes.push_back(popen(command.c_str(), "r"));
    std::multiset<std::string> drawn[std::size(series)];
    for (std::FILE* pipe : pipes) {
        char line[64];
        bool asked = false;
        std::size_t at = 0;
        while (std::fgets(line, sizeof line, pipe)) {
            if (asked) drawn[at++ % std::size(series)].insert(line);
            asked = std::string_view(line) == "Drawn\n";
        }
        EXPECT_EQ(pclose(pipe), 0);
    }
    std::remove(script.c_str());
    for (std::size_t i = 0; i < std::size(series); ++i) {
        EXPECT_EQ(drawn[i].size(), static_cast<std::size_t>(kProcesses * kRounds)) << series[i][1];
        EXPECT_EQ(std::set(drawn[i].begin(), drawn[i].end()).size(), drawn[i].size()) << series[i][1];
    }
    EXPECT_EQ(one("SELECT COUNT(*) FROM NumberSeries WHERE LastNo = " + std::to_string(kProcesses * kRounds)),
              std::to_string(std::size(series)))
        << "a number was left out";
}

}  // namespace kv::server_test
