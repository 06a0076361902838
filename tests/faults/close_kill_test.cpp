// A workstation that dies in the midst of a close, a preparation or a year end leaves all of it or nothing; of two that
// close one book at once, one does and the other is told.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>

#include "platform/embedded/Embedded.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBatches = 40;
constexpr int kLines = 50;
constexpr int kKills = 24;

/// Runs `statement` in a process that is killed after `delay_us`, or comes to its end. True when it was killed.
bool diesAfter(const std::string& file, int delay_us, const std::string& statement) {
    int ready[2];
    EXPECT_EQ(::pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        int status = 3;
        try {
            Desk desk(file);
            desk.ask("SELECT COUNT(*) FROM GL");
            const char go = 1;
            if (::write(ready[1], &go, 1) == 1) {
                desk.cn().Execute(statement);
                status = 0;
            }
        } catch (const Error& error) {
            std::fprintf(stderr, "child: %s\n", error.description.c_str());
        }
        ::_exit(status);
    }
    char go = 0;
    EXPECT_EQ(::read(ready[0], &go, 1), 1);
    ::usleep(static_cast<useconds_t>(delay_us));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0);
    return WIFSIGNALED(status);
}

/// A copy of a database file that nobody has open, its log included.
std::string copyOf(const std::string& file, const char* ending) {
    embeddedOf(Desk(file).cn())->checkpoint();
    const std::string copy = file + ending;
    for (const char* tail : {"", "-wal", "-shm"}) std::filesystem::remove(copy + tail);
    std::filesystem::copy_file(file, copy);
    return copy;
}

/// How long a statement takes.
int microsecondsOf(const std::string& file, const std::string& statement) {
    Desk desk(file);
    desk.ask("SELECT COUNT(*) FROM GL");
    const auto start = Clock::now();
    desk.cn().Execute(statement);
    return static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count());
}

struct Killed {
    const char* name;
    std::vector<const char*> before;  ///< what has been done
    const char* statement;
    const char* traces;  ///< one text that tells everything the statement writes
};

class KilledClosing : public testing::Test {
protected:
    void SetUp() override {
        file = freshHospital(scratchFolder(), "closing.db");
        Desk desk(file);
        desk.openBook("JV");
        for (int b = 0; b < kBatches; ++b) {
            JournalBatch batch = balancedBatch("JV", kLines);
            SaveJournalBatch(desk.session(), batch);
        }
    }

    /// Kills the statement at moments spread over its whole course; each time all or nothing stands.
    void tryIt(const Killed& one) {
        std::string expected;
        std::string untouched;
        {
            Desk desk(file);
            for (const char* statement : one.before) desk.cn().Execute(statement);
            untouched = desk.ask(one.traces);
        }
        const std::string whole = copyOf(file, ".whole");
        const int whole_us = microsecondsOf(whole, one.statement);
        expected = Desk(whole).ask(one.traces);
        ASSERT_NE(expected, untouched) << one.name << " leaves no trace";
        int killed = 0;
        for (int i = 0; i < kKills; ++i) {
            const std::string copy = copyOf(file, ".killed");
            const bool died = diesAfter(copy, whole_us * i / (kKills - 4), one.statement);
            Desk after(copy);
            const std::string traces = after.ask(one.traces);
            // it may die between its commit and its end
            EXPECT_TRUE(traces == expected || (died && traces == untouched))
                << one.name << " killed at moment " << i << ": " << traces;
            EXPECT_EQ(after.ask("SELECT COUNT(*) FROM (SELECT Period FROM GL GROUP BY Period, BatchType"
                                " HAVING SUM(Debit) <> SUM(Credit)) AS Torn"),
                      "0");
            killed += died ? 1 : 0;
            // what was cut off can be done again
            if (traces == untouched) {
                after.cn().Execute(one.statement);
                EXPECT_EQ(after.ask(one.traces), expected) << one.name;
            }
        }
        EXPECT_GE(killed, kKills / 4) << one.name << " was hardly ever cut off";
    }

    std::string file;
};

constexpr const char* kLedgerTraces =
    "SELECT CAST(COUNT(*) AS varchar(10)) + ' lines, ' + CAST((SELECT COUNT(*) FROM BookCloseLog WHERE Action = "
    "'CLOSE')"
    " AS varchar(10)) + ' logged, ' + CAST((SELECT ISNULL(SUM(Turn), 0) FROM BookTurn) AS varchar(10)) + ' turns, '"
    " + CAST((SELECT COUNT(*) FROM PreparedPeriod WHERE StaleSince IS NOT NULL) AS varchar(10)) + ' stale' FROM GL";

TEST_F(KilledClosing, OfABookLeavesAllOrNothing) {
    tryIt({"the close", {"sp_PrepareFinance '202403'"}, "sp_PostGLtoGL '202403','JV'", kLedgerTraces});
}

TEST_F(KilledClosing, OfABookOpenedAgainLeavesAllOrNothing) {
    tryIt(
        {"the reopening",
         {"sp_PostGLtoGL '202403','JV'"},
         "sp_UnpostBook 'JV','202403','killed'",
         "SELECT CAST(COUNT(*) AS varchar(10)) + ' lines, ' + CAST((SELECT COUNT(*) FROM ReopenedLine) AS varchar(10))"
         " + ' kept, ' + CAST((SELECT COUNT(*) FROM BookCloseLog) AS varchar(10)) + ' logged' FROM GL"});
}

TEST_F(KilledClosing, OfThePreparationLeavesAllOrNothing) {
    tryIt(
        {"the preparation",
         {"sp_PostGLtoGL '202403','JV'"},
         "sp_PrepareFinance '202412'",
         "SELECT CAST(COUNT(*) AS varchar(10)) + ' balances, ' + CAST(SUM(ISNULL(Ending, 0)) AS varchar(20)) + ' sum, '"
         " + CAST((SELECT COUNT(*) FROM PreparedPeriod) AS varchar(10)) + ' months' FROM PeriodBalance"});
}

TEST_F(KilledClosing, OfTheYearEndLeavesAllOrNothing) {
    tryIt(
        {"the year end",
         {"sp_PostGLtoGL '202403','JV'", "sp_PrepareFinance '202412'"},
         "sp_YearEndClose '3201','2025'",
         "SELECT CAST(COUNT(*) AS varchar(10)) + ' accounts, ' + CAST((SELECT COUNT(*) FROM BookCloseLog WHERE Action ="
         " 'YEAREND') AS varchar(10)) + ' logged, ' + CAST((SELECT COUNT(*) FROM GLBatch) + (SELECT COUNT(*) FROM"
         " Batchdet) AS varchar(10)) + ' of the entry' FROM BegBalance"});
}

/// Closes the month as soon as the pipe is closed; ends with 0, or with 14 when the other one was faster.
pid_t closesOnSignal(const std::string& file, const int (&gate)[2]) {
    const pid_t child = fork();
    if (child != 0) return child;
    ::close(gate[1]);
    int status = 99;
    try {
        Desk desk(file);
        desk.ask("SELECT COUNT(*) FROM GL");
        char none = 0;
        if (::read(gate[0], &none, 1) == 0) {
            desk.cn().Execute("sp_PostGLtoGL '202403','JV'");
            status = 0;
        }
    } catch (const Error& error) {
        status = error.number == 50014 ? 14 : 98;
    }
    ::_exit(status);
}

TEST_F(KilledClosing, OfTwoWorkstationsAtOnceOneClosesAndTheOtherIsTold) {
    for (int round = 0; round < 6; ++round) {
        const std::string copy = copyOf(file, ".both");
        int gate[2];
        ASSERT_EQ(::pipe(gate), 0);
        const pid_t first = closesOnSignal(copy, gate);
        const pid_t second = closesOnSignal(copy, gate);
        ::usleep(100'000);
        ::close(gate[0]);
        ::close(gate[1]);
        std::vector<int> ends;
        for (const pid_t child : {first, second}) {
            int status = 0;
            ::waitpid(child, &status, 0);
            ends.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
        }
        std::sort(ends.begin(), ends.end());
        EXPECT_EQ(ends, (std::vector<int>{0, 14})) << "round " << round;
        Desk after(copy);
        EXPECT_EQ(after.ask("SELECT COUNT(*) FROM GL"), std::to_string(kBatches * kLines));
        EXPECT_EQ(after.ask("SELECT COUNT(*) FROM BookCloseLog WHERE Action = 'CLOSE'"), "1");
    }
}

}  // namespace
}  // namespace kv
