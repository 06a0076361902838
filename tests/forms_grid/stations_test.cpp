// Plays on two workstations, and plays that hang: the player as a process of its own.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <cstdlib>

#include "platform/base/Paths.h"

namespace kv::test {
namespace {

struct Outcome {
    int code = -1;
    std::string errors;
    std::string output;
    qint64 took_ms = 0;
};

Outcome playAlone(const std::string& text, int limit_s = 60) {
    const std::string folder = testing::TempDir() + "stations/";
    std::system(("rm -rf " + folder + " && mkdir -p " + folder).c_str());
    writeTextFile(folder + "two.play", text);
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    const char* bin = std::getenv("KV_BIN");
    process.start(QString(bin ? bin : "build/player/bin") + "/playforms",
                  {QString::fromStdString(folder + "counter"), QString::fromStdString(folder + "out"),
                   QString::number(limit_s), QString::fromStdString(folder + "two.play")});
    process.waitForFinished(120'000);
    Outcome outcome;
    outcome.took_ms = timer.elapsed();
    outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.errors = process.readAllStandardError().toStdString();
    outcome.output = process.readAllStandardOutput().toStdString();
    return outcome;
}

TEST(Stations, TwoClerksWorkInOpenFormsAtOnce) {
    const Outcome outcome = playAlone(R"(
clock 2024-03-15 09:30
signin E001 "secret"
menu mnuFileVoucher
type txtName "first"
workstation B
signin E001 "secret"
menu mnuFileVoucher
expect dtpDate "2024-03-15"
expect txtName ""
type txtName "second"
workstation A
expect txtName "first"
press cmdOption0
message "Voucher is*" OK
expect form frmShell
expect sql "COUNT" "11"
workstation B
expect txtName "second"
forget
press cmdOption0
message "Voucher is*" OK
expect sent "ADD 1"
expect sql "COUNT" "22"
say "both saved"
workstation A
expect sent "ADD 10"
expect not sent "ADD 1"
)");
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "both saved\n");
}

TEST(Stations, AFailureElsewhereIsToldOnceWithItsLine) {
    const Outcome outcome = playAlone(
        "signin E001 \"secret\"\nworkstation B\nsignin E001 \"secret\"\nexpect form frmNone\nworkstation A\n");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.errors.find("two.play:4: expected the form frmNone, found the form frmShell"), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(outcome.errors.find("two.play:"), outcome.errors.rfind("two.play:")) << outcome.errors;

    const Outcome left = playAlone("workstation B\nsignin E001 \"secret\"\nmenu mnuFileVoucher\nworkstation A\n");
    EXPECT_EQ(left.code, 1);
    EXPECT_NE(left.errors.find("two.play:3: expected the play to end with every window closed"), std::string::npos)
        << left.errors;
}

TEST(Stations, AStuckPlayFailsAtItsLine) {
    const Outcome outcome = playAlone("signin E001 \"secret\"\nmenu mnuFileVoucher\npress cmdStuck\nleave\n", 5);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.errors.find("two.play:3: expected the line to end, found it still running after 5 s"),
              std::string::npos)
        << outcome.errors;
    EXPECT_LT(outcome.took_ms, 60'000);
}

}  // namespace
}  // namespace kv::test
