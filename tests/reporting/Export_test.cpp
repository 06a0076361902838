// The exports as a user works them: what stands in the file, byte by byte, and which questions come first.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmExportGrid.h"
#include "reporting/frmExportTextFile.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

class Export : public testing::Test {
protected:
    void SetUp() override {
        before = dialogHooks();
        std::filesystem::remove(file);
        dialogHooks().file = [this](const std::string&, const std::string& proposed, bool) {
            proposals.push_back(proposed);
            return chosen;
        };
        dialogHooks().message = [this](const MessageBox& box) {
            boxes.push_back(box.text);
            defaults.push_back(box.defaultAnswer.value_or(Answer::Ok));
            return answer;
        };
    }
    void TearDown() override { dialogHooks() = before; }

    void downloadText(const std::string& statement, int times = 1) {
        frmExportTextFile dialog(desk.session());
        dialogHooks().modal = [&](Form& form) {
            for (int i = 0; i < times; ++i) dialog.cmdDownload.press();
            form.Unload();
        };
        dialog.ShowDialog(statement, "1601EQ.dat");
    }

    DialogHooks before;
    std::string file = scratchFolder() + "/export.txt";
    std::optional<std::string> chosen = file;
    Answer answer = Answer::Ok;
    std::vector<std::string> proposals, boxes;
    std::vector<Answer> defaults;
    Desk desk{freshHospital(scratchFolder(), "export.db")};
};

TEST_F(Export, ATextFileHoldsTheGluedRowsAndNothingElse) {
    downloadText("SELECT 'H,' AS A, NULL AS B, 7 AS C UNION ALL SELECT 'D', ' \"x\" ', 8");
    EXPECT_EQ(readTextFile(file), "H,7\r\nD \"x\" 8\r\n");
    EXPECT_EQ(boxes, std::vector<std::string>{"The report has been saved to " + file + "."});
    // there is a file now: kept unless the user says Yes, which is not the default
    boxes.clear();
    defaults.clear();
    answer = Answer::No;
    downloadText("SELECT 'new' AS A");
    EXPECT_EQ(boxes, std::vector<std::string>{
                         "A file has already been created for this report. Overwrite the existing file?"});
    EXPECT_EQ(defaults, std::vector<Answer>{Answer::No});
    EXPECT_EQ(readTextFile(file).substr(0, 2), "H,");
    answer = Answer::Yes;
    downloadText("SELECT 'new' AS A WHERE 1 = 0");
    EXPECT_EQ(readTextFile(file), "");
    // cancelled: nothing happens
    boxes.clear();
    chosen.reset();
    downloadText("SELECT 'new' AS A");
    EXPECT_TRUE(boxes.empty());
}

TEST_F(Export, AFailedStatementLeavesNothingToSave) {
    frmExportTextFile dialog(desk.session());
    bool able = true;
    dialogHooks().modal = [&](Form& form) {
        able = dialog.cmdDownload.enabled();
        form.Unload();
    };
    dialog.ShowDialog("SELECT * FROM NoSuchTable", "x.dat");
    EXPECT_FALSE(able);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_NE(boxes[0].find("NoSuchTable"), std::string::npos);
}

TEST_F(Export, TheDesktopIsProposedWhereThereIsOne) {
    const std::string home = scratchFolder() + "/home";
    const char* old = std::getenv("HOME");
    const std::string kept = old ? old : "";
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home + "/.config").c_str(), 1);
    std::filesystem::create_directories(home);
    EXPECT_EQ(Module3::getPathToDesktop(), "");
    downloadText("SELECT 1 AS A");
    std::filesystem::create_directories(home + "/Desktop");
    EXPECT_EQ(Module3::getPathToDesktop(), home + "/Desktop");
    downloadText("SELECT 1 AS A");
    EXPECT_EQ(proposals, std::vector<std::string>({"1601EQ.dat", home + "/Desktop/1601EQ.dat"}));
    setenv("HOME", kept.c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
}

TEST_F(Export, AGridGoesToAFileAndToTheClipboard) {
    frmExportGrid dialog(desk.session());
    dialogHooks().modal = [&](Form& form) {
        dialog.cmdSaveAs.press();
        dialog.cmdCopy.press();
        chosen.reset();
        dialog.cmdSaveAs.press();
        form.Unload();
    };
    dialog.ShowDialog("Remittance",
                      "SELECT 'A, \"B\"' AS Payee, CAST(1250.5 AS money) AS Amount, CAST('2024-03-15' AS "
                      "datetime) AS Day, NULL AS Note UNION ALL SELECT 'two' + CHAR(13) + CHAR(10) + "
                      "'lines', 2, NULL, 'x'");
    EXPECT_EQ(readTextFile(file), "Payee,Amount,Day,Note\r\n\"A, B\",1250.50,3/15/2024,\r\ntwo_lines,2.00,,x");
    EXPECT_EQ(clipboard(), "Payee\tAmount\tDay\tNote\r\nA, B\t1250.50\t3/15/2024\t\r\ntwo_lines\t2.00\t\tx");
    EXPECT_EQ(proposals.front(), "Remittance.csv");
    EXPECT_EQ(boxes,
              std::vector<std::string>({"You saved the data into " + file,
                                        "Data copied to clipboard. Paste this into your spreadsheet application.",
                                        "Dialog Cancelled"}));
}

TEST(SendKeys, MovesTheFocusAndTypes) {
    class frmTwo : public Form {
    public:
        frmTwo() : Form("frmTwo", "Two") { setLayout(column({txtA, txtB})); }
        TextBox txtA{*this, "txtA"}, txtB{*this, "txtB"};
    };
    frmTwo form;
    form.Show();
    form.txtA.setFocus();
    Module3::SendKeys("ab{Tab}cd", true);
    EXPECT_EQ(form.txtA.text() + "|" + form.txtB.text(), "ab|cd");
    EXPECT_TRUE(form.txtB.hasFocus());
    form.Unload();
}

}  // namespace
}  // namespace kv
