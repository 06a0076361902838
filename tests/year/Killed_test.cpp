// A workstation that dies while a month is closed or prepared, while a year ends, or while balances are saved leaves
// all of it or nothing.

#include <gtest/gtest.h>

#include <filesystem>

#include "YearDesk.h"
#include "ledger/Balances.h"
#include "platform/base/Paths.h"
#include "tests/desk/Killed.h"

namespace kv {

namespace {

constexpr int kKills = 12;
constexpr int kLongest_us = 40'000;

/// All that closing, preparing and the year end write.
std::string tracesOf(const std::string& file) {
    Desk desk(file);
    std::string out;
    for (const char* statement : {"SELECT COUNT(*) AS N, SUM(Debit) AS S FROM GL",
                                  "SELECT COUNT(*) AS N, SUM(ABS(Ending)) AS S FROM PeriodBalance",
                                  "SELECT COUNT(*) AS N, COUNT(StaleSince) AS S FROM PreparedPeriod",
                                  "SELECT COUNT(*) AS N, SUM(Debit) AS S FROM BegBalance",
                                  "SELECT COUNT(*) AS N, SUM(Debit) AS S FROM Batchdet",
                                  "SELECT COUNT(*) AS N FROM GLBatch", "SELECT COUNT(*) AS N FROM BookCloseLog"}) {
        out += rowsOf(desk, statement).front() + "; ";
    }
    return out;
}

struct Step {
    const char* name;
    const char* statement;
};

/// What stands after a step that nothing disturbs, done on a copy.
std::string tracesAfter(const std::string& file, const std::string& statement) {
    const std::string copy = file + ".copy";
    for (const char* part : {"", "-wal", "-shm"}) {
        std::filesystem::remove(copy + part);
        if (fileExists(file + part)) std::filesystem::copy_file(file + part, copy + part);
    }
    Desk(copy).cn().Execute(statement);
    return tracesOf(copy);
}

}  // namespace

/// Each step is killed at up to twelve moments, early ones closer together, then done, and the next one follows.
TEST(KilledProcedure, LeavesAllOrNothingOfACloseAPreparationAndAYearEnd) {
    deskOfYear("killed.db", {.batches = 2000, .closed = 11});
    const std::string file = scratchFolder() + "/killed.db";
    const Step steps[] = {
        {"closing AP", "sp_PostAPtoGL '202412'"},      {"closing CD", "sp_PostCDBtoGL '202412'"},
        {"closing AR", "sp_PostGLtoGL '202412','AR'"}, {"closing CR", "sp_PostGLtoGL '202412','CR'"},
        {"closing JV", "sp_PostGLtoGL '202412','JV'"}, {"preparing", "sp_PrepareFinance '202412'"},
        {"year end", "sp_YearEndClose '3201','2025'"}, {"forwarding", "sp_PostForwardedBal '2025'"},
    };
    int killed = 0;
    for (const Step& step : steps) {
        const std::string nothing = tracesOf(file);
        const std::string all = tracesAfter(file, step.statement);
        ASSERT_NE(nothing, all) << step.name;
        bool done = false;
        for (int kill = 1; kill <= kKills && !done; ++kill) {
            killed += diesAfter(file, kLongest_us * kill * kill / (kKills * kKills), step.statement) ? 1 : 0;
            const std::string now = tracesOf(file);
            done = now == all;
            ASSERT_TRUE(done || now == nothing) << step.name << " left " << now;
        }
        if (!done) Desk(file).cn().Execute(step.statement);
    }
    EXPECT_GE(killed, 12) << "the blows must fall within the work";
    Desk desk(file);
    EXPECT_EQ(findingsOf(desk), std::vector<std::string>{});
}

TEST(KilledSave, OfAYearsBalancesLeavesTheOldOnesOrTheNewOnes) {
    const std::string file = freshHospital(scratchFolder(), "balances.db");
    const auto save = [](Desk& desk, int pesos) {
        const Money amount = Money::whole(pesos);
        SaveYearBalances(desk.session(), "2024",
                         {{"1101", "", amount, Money()}, {"", "", Money(), Money()}, {"3101", "", Money(), amount}});
    };
    {
        Desk desk(file);
        save(desk, 100);
    }
    bool changed = false;
    int died = 0;
    for (int point = 1; !changed && point < 30; ++point) {
        changed = !diesAt(
            file, point, [](Desk&) {}, [&](Desk& desk) { save(desk, 250); });
        died += changed ? 0 : 1;
        Desk after(file);
        const auto rows = rowsOf(after, "SELECT Acct, Debit, Credit FROM BegBalance ORDER BY Acct");
        const bool done = rows.front() == "1101|250.00|0.00";
        EXPECT_EQ(rows, (done ? std::vector<std::string>{"1101|250.00|0.00", "3101|0.00|250.00"}
                              : std::vector<std::string>{"1101|100.00|0.00", "3101|0.00|100.00"}))
            << "killed before statement " << point;
        EXPECT_EQ(after.ask("SELECT COUNT(*) FROM AuditLog"), done ? "2" : "1");
    }
    EXPECT_TRUE(changed);
    EXPECT_GE(died, 5);
}

}  // namespace kv
