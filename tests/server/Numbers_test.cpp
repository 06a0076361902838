// Number series: drawing, using up and giving back, by one connection, by several, and by several processes.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

#include "Books.h"

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
        {"sp_Init_BatchNumbers '202403','', 'JV'", "dbo.fn_NewSeriesNum('JV', '', '2024', '03')", "1", "2"},
        {"sp_Init_BatchNumbers '202404','', 'JV'", "dbo.fn_NewSeriesNum('JV', '', '2024', '04')", "1", "2"},
        {"sp_Init_BatchNumbers '202403','', 'AP'", "dbo.fn_NewSeriesNum('AP', '', '2024', '03')", "1", "2"},
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
    EXPECT_EQ(one("select dbo.fn_NextPFVoucher() as Voucher from sys"), "000001");
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
}

/// Four processes draw 1,000 numbers each; every number comes once and none is left out.
TEST_F(Numbers, FourProcessesNeverShareANumber) {
    constexpr int kProcesses = 4;
    constexpr int kDraws = 1000;
    const char* bin = std::getenv("KV_BIN");
    ASSERT_NE(bin, nullptr);
    const std::string script = file() + ".sql";
    {
        std::ofstream out(script);
        for (int i = 0; i < kDraws; ++i)
            out << "sp_Reserve_Number 'JV'\nGO\nselect dbo.fn_NewJVNum() as Drawn from sys\nGO\n";
    }
    const std::string command = std::string(bin) + "/sqlconsole --data " + file() + " < " + script;
    std::vector<std::FILE*> pipes;
    for (int i = 0; i < kProcesses; ++i) pipes.push_back(popen(command.c_str(), "r"));
    std::multiset<int> drawn;
    for (std::FILE* pipe : pipes) {
        char line[64];
        bool asked = false;
        while (std::fgets(line, sizeof line, pipe)) {
            if (std::string_view(line) == "Drawn\n") {
                asked = true;
            } else if (asked) {
                drawn.insert(std::atoi(line));
                asked = false;
            }
        }
        EXPECT_EQ(pclose(pipe), 0);
    }
    std::remove(script.c_str());
    ASSERT_EQ(drawn.size(), static_cast<std::size_t>(kProcesses * kDraws));
    EXPECT_EQ(std::set<int>(drawn.begin(), drawn.end()).size(), drawn.size());
    EXPECT_EQ(*drawn.rbegin(), kProcesses * kDraws);
}

}  // namespace kv::server_test
