// The player: plays that hold, and plays that must fail with the right line and words.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include "platform/base/Date.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/player/Player.h"
#include "tests/forms_grid/PlayForms.h"

namespace kv::test {
namespace {

struct Played {
    bool held = false;
    std::string errors;  ///< first line of standard error
    std::string output;
    std::string folder;
};

Played play(const std::string& text) {
    static int count = 0;
    Played result;
    result.folder = testing::TempDir() + "play" + std::to_string(++count);
    const std::string file = testing::TempDir() + "the.play";
    writeTextFile(file, text);
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    {
        PlayForms program;
        CounterConnection().Execute("ADD 0");
        Player player(program, {.outFolder = result.folder, .hang_s = 20, .stationCommand = {}});
        result.held = player.play(file);
    }
    result.output = testing::internal::GetCapturedStdout();
    result.errors = testing::internal::GetCapturedStderr();
    return result;
}

const std::string kSignIn = "signin E001 \"secret\"\n";
const std::string kVoucher = kSignIn + "menu mnuFileVoucher\n";

/// A play that closes its voucher at the end.
Played playInVoucher(const std::string& lines) {
    return play(kVoucher + lines + "close\nmessage \"Changes will be ignored!*\" Yes\n");
}

TEST(Player, WorksEachKindOfControl) {
    const Played result = playInVoucher(R"(
expect form frmVoucher
expect caption "Edit Voucher"
expect focus txtVendorID
type txtVendorID "o'brien 1"
expect txtVendorID "OBRIEN 1"
expect not txtVendorID "ACME"
paste txtVendorID "d'arc"
expect txtVendorID "DARC"
leave
expect focus txtName
type txtName "Peñaflor * \"x\" \* \\"
expect txtName "Pe*aflor \* \"x\" \* \\"
type txtName ""
expect txtName ""
key A
key b
key Shift+c
expect txtName "AbC"
expect locked txtLocked
expect not locked txtName
date dtpDate 2024-03-15
expect dtpDate "2024-03-15"
choose cboType "PETTY*"
expect cboType "PETTY CASH"
expect lblLast "type PETTY CASH"
choose cboType #2
expect cboType "ADVANCE"
check chkRush
check chkRush
expect checked chkRush
uncheck chkRush
expect unchecked chkRush
press optKind1
expect lblLast "cash"
expect checked optKind_1
expect unchecked optKind(0)
expect disabled cmdOff
expect enabled cmdOption0
expect cmdOption0 "Save Voucher"
expect cmdOption0 "&Save Voucher"
tab tabVoucher 1
expect visible lvwList
expect hidden grdAccounts
row lvwList "V0002"
expect lblLast "click V2"
row lvwList #0
expect lvwList "V0001"
open lvwList "CLINIC"
expect lblLast "open V3"
check * "BAKER \* SONS"
expect lblLast "check V2"
expect checked lvwList "V0002"
expect unchecked lvwList "V0001"
uncheck lvwList "V0002"
expect not checked lvwList "V0002"
expect lvwList "V0001" 2 "1,100.00"
expect lvwList #1 1 "BAKER*"
expect not lvwList "V0009" 2 "1"
expect rows lvwList 3
node tvwChart "G-101"
expect lblLast "node G-101"
node tvwChart "Liab*"
expect tvwChart "Liabilities"
tab tabVoucher "Lines"
)");
    EXPECT_TRUE(result.held) << result.errors;
}

TEST(Player, WorksCellsOfAGrid) {
    const Played result = playInVoucher(R"(
cell grdAccounts 1 1 "abc"
expect grdAccounts 1 1 "ABC"
expect grdAccounts 1 2 "Account ABC"
cell grdAccounts 1 3 "1234.5"
expect grdAccounts 1 3 "1,234.50"
expect lblTotal "1,234.50"
expect rows grdAccounts 2
refused cell grdAccounts 2 1 "bad"
expect focus grdAccounts
expect grdAccounts 2 1 "BAD"
cell grdAccounts 2 1 ""
cell grdAccounts 2 1 "CASH"
expect grdAccounts 2 1 "1101"
cell * 2 3 "x"
message "Type mismatch" OK
)");
    EXPECT_FALSE(result.held);
    EXPECT_NE(
        result.errors.find("the.play:17: expected that the cell 2 3 of grdAccounts takes \"x\", found that it ref"),
        std::string::npos)
        << result.errors;

    const Played others = playInVoucher(R"(
browse grdAccounts 1 1
expect form frmPick
pick "ON HAND"
message "no" OK
)");
    EXPECT_FALSE(others.held) << "a search that begins with the text finds no row that only holds it";
    const Played picked = playInVoucher(R"(
browse grdAccounts 1 1
pick "CASH ON"
expect grdAccounts 1 1 "1102"
key Enter
key 7
expect grdAccounts 1 3 "7"
key Escape
expect grdAccounts 1 3 ""
clipboard "2001\t\t5\n2002\t\t6\n"
row grdAccounts #1
refused cell grdAccounts 1 3 "x"
message "Type mismatch" OK
key Escape
row grdAccounts "1102"
key Ctrl+V
expect grdAccounts 1 1 "2001"
expect grdAccounts 2 3 "6"
)");
    EXPECT_TRUE(picked.held) << picked.errors;
}

TEST(Player, AnswersBoxesAndDialogs) {
    const Played result = play(kVoucher + R"(
expect not form message
maybe message "nothing here" OK
type txtVendorID "bad1"
press cmdOption0
expect form message
message "Item does not*" OK title "Korvane*" icon exclamation default OK
expect focus txtVendorID
type txtVendorID "ok"
press cmdAmount
expect form input
input "Enter amount*" "40.00"
expect lblLast "amount 40.00"
press cmdAmount
input "Enter amount*" cancel
expect lblLast "amount none"
press cmdPrint
printer choose
expect lblLast "printed"
press cmdPrint
printer cancel
expect lblLast "not printed"
press cmdExport
choosefile "sub/x.csv"
expect file "sub/x.csv" contains "1101,100"
expect not file "y.csv"
press cmdExport
choosefile cancel
expect lblLast "not exported"
press cmdPick
pick "SALARIES"
expect lblLast "picked 6101"
press cmdBroken
message "It fails*in Korvane.frmVoucher.cmdBroken_Click*" OK title "Application Error" icon stop
close
message "Changes will*" No default No
expect form frmVoucher
press cmdOption0
maybe message "Voucher is*" OK
expect form frmShell
)");
    EXPECT_TRUE(result.held) << result.errors;
}

TEST(Player, SignsInAndWorksTheShell) {
    const Played result = play(R"(
clock 2024-03-15 09:30
refused signin E001 "wrong"
message "Wrong password." OK
refused signin E009 "secret"
message "Wrong password." OK
signin E001 "secret"
expect form frmShell
press cmdHello
expect lblHello "hello"
toolbar POST
expect lblHello "tool POST"
expect disabled VOID
expect disabled mnuOff
expect hidden mnuHidden
expect visible mnuFileVoucher
menu mnuFileVoucher
expect dtpDate "2024-03-15"
close
message "*" Yes
)");
    EXPECT_TRUE(result.held) << result.errors;
    EXPECT_TRUE(play("refused signin E001 \"x\"\nmessage \"Wrong*\" OK\npress cmdCancel\n").held);
}

TEST(Player, LooksAtDataStatementsReportsAndFiles) {
    const Played result = play(kVoucher + R"(
sql "ADD 5"
expect not sql "COUNT" "4"
expect sql "NULL" NULL
expect not sql "NULL" "NULL"
expect sql "NONE" none
expect sql "TYPED 0" "1"
expect sql "TYPED 1" "100.00"
expect sql "TYPED 1" "100.0000"
expect sql "TYPED 2" "2024-03-15"
expect sql "TYPED 3" "t*t"
expect not sql "TYPED 3" "t"
expect refused sql "FAIL 50000" 50000
expect refused sql "FAIL 1"
expect not refused sql "ADD 100"
forget
expect unsent "ADD*"
press cmdOption0
message "*" OK
expect sent "ADD 1"
expect sent "ADD 10"
expect not sent "ADD 1"
expect unsent "ADD 2"
expect report "Trial*" contains "CASH IN BANK"
expect not report "Trial*" contains "SALARIES"
save report "tb.txt"
expect file "tb.txt" contains "1101"
clipboard "a\tb"
expect clipboard contains "a*b"
shot "deep/shell.png"
controls
say "Done: 3 * 4"
)");
    EXPECT_TRUE(result.held) << result.errors;
    EXPECT_NE(result.output.find("Done: 3 * 4\n"), std::string::npos);
    EXPECT_NE(result.output.find("CommandButton cmdHello \"Hello\""), std::string::npos) << result.output;
    EXPECT_EQ(QImage(QString::fromStdString(result.folder + "/deep/shell.png")).size(), QSize(1000, 730));
}

struct Wrong {
    const char* lines;  ///< played in the open voucher; the last line of them fails
    const char* words;
};

/// Every kind of line fails at its own number, with words that say what was expected and found.
const Wrong kWrong[] = {
    {"dance", "there is no command \"dance\""},
    {"press", "lacks the name of a button"},
    {"press cmdNone", "there is no control cmdNone on frmVoucher"},
    {"press cmdOff", "cmdOff is disabled"},
    {"press txtName", "txtName is a TextBox"},
    {"press *", "more than one visible control for *"},
    {"press cmdOption0 now", "a word too many"},
    {"type lvwList \"x\"", "lvwList is a ListView"},
    {"type txtLocked \"x\"", "txtLocked is locked"},
    {"tab tabVoucher 0\nrow lvwList \"V0001\"", "lvwList is not visible"},
    {"type txtVendorID \"bad\"\ntype txtName \"x\"\nmessage \"Item*\" OK", "the focus could not move to txtName"},
    {"key Dance", "there is no key Dance"},
    {"date dtpDate 15.3.2024", "yyyy-MM-dd"},
    {"choose cboType \"NONE\"", "found \"REGULAR\", \"PETTY CASH\", \"ADVANCE\""},
    {"choose cboType #3", "expected an entry"},
    {"tab tabVoucher 2", "there is no page"},
    {"tab tabVoucher 1\nrow lvwList \"V9\"", "found 3 rows without it"},
    {"tab tabVoucher 1\ncheck lvwList #9", "expected a row"},
    {"tab tabVoucher 1\nnode tvwChart \"x\"", "there is no node"},
    {"cell grdAccounts 9 1 \"x\"", "there is no row 9, the grid has 1"},
    {"cell grdAccounts 1 9 \"x\"", "there is no column 9"},
    {"cell grdAccounts 1 4 \"x\"", "column 4 is hidden"},
    {"cell grdAccounts 1 2 \"x\"", "cannot be edited"},
    {"cell grdAccounts 1 3 \"x\"", "cannot be edited"},
    {"cell grdAccounts 1 1 \"bad\"", "found that it refuses"},
    {"refused cell grdAccounts 1 1 \"1101\"", "found that it takes it"},
    {"browse grdAccounts 1 3", "cannot be edited"},
    {"message \"x\" OK", "expected the box \"x\", found the form frmVoucher"},
    {"input \"x\" \"1\"", "expected the input box"},
    {"printer choose", "expected the printer dialog"},
    {"choosefile \"x\"", "expected the file dialog"},
    {"pick \"x\"", "there is no control txtSearchStr"},
    {"menu mnuFileVoucher", "there is no control mnuFileVoucher on frmVoucher"},
    {"toolbar POST", "there is no toolbar button POST"},
    {"signin E001 \"secret\"", "somebody is signed in already"},
    {"expect form frmShell", "expected the form frmShell, found the form frmVoucher"},
    {"expect caption \"x\"", "expected the caption \"x\", found \"Edit Voucher\""},
    {"expect txtName \"x\"", "expected txtName to be \"x\", found \"\""},
    {"expect not txtName \"\"", "expected anything but txtName to be"},
    {"expect grdAccounts 1 1 \"x\"", "expected cell 1 1 of grdAccounts to be \"x\""},
    {"expect grdAccounts 7 1 \"\"", "no such cell"},
    {"tab tabVoucher 1\nexpect lvwList \"V0001\" 1 \"x\"", "found \"ACME SUPPLY\""},
    {"expect rows lvwList 4", "expected 4 rows in lvwList, found 3"},
    {"expect enabled cmdOff", "found disabled"},
    {"expect checked chkRush", "found unchecked"},
    {"expect checked txtName", "it has no check"},
    {"expect focus txtName", "found the focus in txtVendorID"},
    {"expect hidden txtNone", "there is no control txtNone"},
    {"expect sql \"NULL\" \"NULL\"", "found NULL"},
    {"expect sql \"COUNT\" \"x\"", "from the statement"},
    {"expect sql \"FAIL 208\" \"1\"", "found 208 It fails"},
    {"sql \"FAIL 515\"", "found 515 It fails"},
    {"expect refused sql \"FAIL 1\" 2", "found 1 It fails"},
    {"expect refused sql \"ADD 1\"", "it went through"},
    {"expect sent \"ADD*\"", "expected the statement \"ADD*\""},
    {"expect report \"Other\"", "found \"Trial Balance\""},
    {"expect report \"Trial*\" contains \"x9\"", "found \"1101 CASH"},
    {"expect file \"none.txt\"", "no such file"},
    {"expect clipboard contains \"zzz\"", "a clipboard that contains"},
    {"expect report \"Trial*\" with \"x\"", "lacks the word contains"},
    {"clock yesterday", "the clock is written"},
    {"workstation B", "there are no other workstations here"},
    {"say \"open", "the text in quotes has no end"},
};

TEST(Player, FailsAtTheLineThatDoesNotHold) {
    for (const Wrong& one : kWrong) {
        const Played result = play(kVoucher + one.lines + "\n");
        const auto lines = static_cast<int>(split(one.lines, '\n').size());
        const bool boxBehind = std::string(one.lines).find("message \"Item*\"") != std::string::npos;
        const std::string place = "the.play:" + std::to_string(2 + lines - (boxBehind ? 1 : 0)) + ": ";
        EXPECT_FALSE(result.held) << one.lines;
        EXPECT_NE(result.errors.find(place), std::string::npos) << one.lines << "\n" << result.errors;
        EXPECT_NE(split(result.errors, '\n')[0].find(one.words), std::string::npos) << one.lines << "\n"
                                                                                    << result.errors;
    }
}

TEST(Player, FailsAtOnceForAnUnexpectedBox) {
    const Played result = play(kVoucher + "press cmdBroken\ntype txtName \"x\"\n");
    EXPECT_FALSE(result.held);
    EXPECT_NE(result.errors.find("the.play:4: the active window is the box \"It fails"), std::string::npos)
        << result.errors;
    const Played other = play(kVoucher + "press cmdBroken\nmessage \"Saved\" OK\n");
    EXPECT_NE(other.errors.find("the.play:4: expected the box \"Saved\", found the box \"It fails"), std::string::npos);
}

TEST(Player, FailsWhenTheBoxLooksOtherwise) {
    const std::string asked = kVoucher + "close\nmessage \"Changes*\" ";
    EXPECT_NE(play(asked + "OK\n").errors.find(":4: the box has no button OK"), std::string::npos);
    EXPECT_NE(play(asked + "Yes icon stop\n").errors.find("expected the icon stop, found question"), std::string::npos);
    EXPECT_NE(play(asked + "Yes default Yes\n").errors.find("expected the default button Yes, found No"),
              std::string::npos);
    EXPECT_NE(play(asked + "Yes title \"x\"\n").errors.find("expected the title \"x\", found \"Warning\""),
              std::string::npos);
    EXPECT_NE(play(asked + "Maybe\n").errors.find("there is no button \"Maybe\""), std::string::npos);
}

TEST(Player, FailsForWindowsLeftOpenAtTheEnd) {
    const Played form = play(kVoucher + "expect form frmVoucher\n");
    EXPECT_FALSE(form.held);
    EXPECT_NE(form.errors.find("the.play:3: expected the play to end with every window closed, found the form frmV"),
              std::string::npos)
        << form.errors;
    const Played box = play(kVoucher + "close\n");
    EXPECT_FALSE(box.held);
    EXPECT_NE(box.errors.find("the.play:3: "), std::string::npos) << box.errors;
    EXPECT_NE(box.errors.find("found the box \"Changes will be ignored!"), std::string::npos) << box.errors;
}

TEST(Player, FailsForAnUnexpectedSignIn) {
    const Played refused = play("signin E001 \"wrong\"\nmessage \"Wrong*\" OK\n");
    EXPECT_NE(refused.errors.find("the.play:1: expected the shell after the sign-in, found the sign-in refused"),
              std::string::npos)
        << refused.errors;
    const Played accepted = play("refused signin E001 \"secret\"\n");
    EXPECT_FALSE(accepted.held);
    EXPECT_NE(accepted.errors.find("the.play:1: expected a refused sign-in, found"), std::string::npos)
        << accepted.errors;
}

TEST(Player, LeavesAPictureAndTheControlsOfAFailure) {
    const Played result = play(kVoucher + "type txtName \"Ana\"\nexpect txtName \"Eva\"\n");
    EXPECT_EQ(QImage(QString::fromStdString(result.folder + "/the-4.png")).height(), 640 + 30);
    const std::string controls = readTextFile(result.folder + "/the-4.txt");
    EXPECT_NE(controls.find("TextBox txtName \"Ana\" focus"), std::string::npos) << controls;
    EXPECT_NE(controls.find("CommandButton cmdOff \"Off\" disabled"), std::string::npos);
    EXPECT_NE(controls.find("#0  V0001 | ACME SUPPLY | 1,100.00"), std::string::npos);
    EXPECT_NE(result.errors.find("TextBox txtName \"Ana\" focus"), std::string::npos);
}

TEST(Player, ReleasesTheClockAndTheHooks) {
    EXPECT_TRUE(play("clock 2001-02-03 04:05\n" + kSignIn).held);
    EXPECT_NE(Today(), Date(2001, 2, 3));
    EXPECT_FALSE(dialogHooks().message);
    EXPECT_FALSE(dialogHooks().modal);
    EXPECT_TRUE(Form::openForms().empty());
}

}  // namespace
}  // namespace kv::test
