// The editable grid: where moves go, rows and their markers, what leaving a cell does, blocks from and to spreadsheets.

#include "reporting/ctlGrid.h"

#include <gtest/gtest.h>

#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/GridView.h"
#include "reporting/frmRefusedCells.h"

namespace kv {
namespace {

enum Column { kCode = 1, kTitle = 2, kAmount = 3, kDay = 4 };

class frmLines : public Form {
public:
    frmLines() : Form("frmLines", "Lines") {
        grd.FormatString("|<Code|<Title|>Amount|<Day");
        grd.SetColumnLock(kTitle, true);
        grd.SetColumnFilter(kCode, EntryFilter::UpperCase);
        grd.SetColumnFilter(kAmount, EntryFilter::SignedNumber);
        grd.SetColumnFilter(kDay, EntryFilter::DateText);
        grd.onShowEntry = [this](bool& off) {
            events.emplace_back("ShowEntry");
            off = shut;
        };
        grd.onFocusEntry = [this] { events.emplace_back(grd.editorOpen() ? "FocusEntry late" : "FocusEntry"); };
        grd.onValidateEntry = [this](bool& cancel) {
            events.push_back("Validate " + grd.TextEntry());
            cancel = grd.TextEntry() == "BAD";
            if (cancel) MsgBox("There is no BAD.");
            if (grd.TextEntry() == "ASK") cancel = !InputBox("Which?").has_value();
            if (grd.TextEntry() == "OLD") grd.SetTextEntry("NEW");
        };
        grd.onAfterValidate = [this] { events.emplace_back("AfterValidate"); };
        grd.onClick = [this] { events.push_back("Click " + std::to_string(grd.Col())); };
        setLayout(column({expand(grd), txtAfter}));
        setSize(700, 400);
    }
    void fill(int lines) {
        grd.SetRows(lines + 1);
        for (int r = 1; r <= lines; ++r) grd.SetText(r, kCode, "A" + std::to_string(r));
        grd.Refresh();
    }
    /// Code cells from row 1 on, with the mark of the row before each.
    std::string codes() const {
        std::string all;
        for (int r = 1; r < grd.Rows(); ++r) all += grd.GetText(r, 0) + grd.GetText(r, kCode) + " ";
        return all;
    }
    void at(int row, int col) {
        grd.setFocus();
        grd.moveTo(row, col);
        sendKeys("", true);
        events.clear();
    }
    void enter(int row, int col, const std::string& text) {
        at(row, col);
        grd.setEditorText(text);
        sendKeys("{Enter}", true);
    }

    ctlGrid grd{*this, "grd"};
    TextBox txtAfter{*this, "txtAfter"};
    bool shut = false;
    std::vector<std::string> events;
};

class CtlGrid : public testing::Test {
protected:
    void SetUp() override {
        before = dialogHooks();
        dialogHooks().message = [this](const MessageBox& box) {
            boxes.push_back(box.text);
            return Answer::Ok;
        };
        form.fill(2);
        form.Show();
    }
    void TearDown() override {
        form.Unload();
        dialogHooks() = before;
    }
    DialogHooks before;
    std::vector<std::string> boxes;
    frmLines form;
    ctlGrid& grd = form.grd;
};

TEST_F(CtlGrid, MovesStepRightPastLockedColumnsAndOpenARowAtTheEnd) {
    using Cell = std::pair<int, int>;
    EXPECT_EQ(grd.NextCell(1, kCode), Cell(1, kAmount));
    EXPECT_EQ(grd.NextCell(1, kDay), Cell(2, kCode));  // never the row marker
    grd.SetNextColumn(kAmount);
    EXPECT_EQ(grd.NextCell(1, kCode), Cell(1, kDay));
    EXPECT_EQ(grd.NextCell(1, kCode), Cell(1, kAmount));  // a named start holds for one move
    grd.SetPrevColumn(kDay);
    EXPECT_EQ(grd.NextCell(1, kCode), Cell(1, kDay));
    grd.SetPrevColumn(0);
    EXPECT_EQ(grd.NextCell(1, kDay), Cell(1, kCode));
    EXPECT_EQ(form.codes(), "A1 #A2 ");
    EXPECT_EQ(grd.NextCell(2, kDay), Cell(3, kCode));
    EXPECT_EQ(form.codes(), "A1 A2 # ");
    EXPECT_EQ(grd.NextCell(3, kDay), Cell(-1, -1));  // an empty last line is where they end
    EXPECT_EQ(grd.Rows(), 4);
}

TEST_F(CtlGrid, EnterPassesOverWhatTheScreenNamesAndTellsTheEnd) {
    using Cell = std::pair<int, int>;
    grd.onPassOver = [](int row, int col, bool& pass) { pass = col == kAmount || (col == kDay && row > 1); };
    EXPECT_EQ(grd.NextCell(1, kCode), Cell(1, kDay));
    EXPECT_EQ(grd.NextCell(1, kDay), Cell(2, kCode));
    EXPECT_EQ(grd.NextCell(2, kCode), Cell(3, kCode));  // a new row
    int ends = 0;
    grd.onEndOfLines = [&] { ++ends; };
    form.at(3, kCode);
    sendKeys("{Enter}", true);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(grd.Rows(), 4);
    EXPECT_EQ(Cell(grd.Row(), grd.Col()), Cell(3, kCode));
}

TEST_F(CtlGrid, TheCellAboveIsTakenByOneKeyAndValidatedAsTyped) {
    grd.SetText(1, kCode, "OLD");
    form.at(2, kCode);
    sendKeys("{Ctrl+D}", true);
    EXPECT_EQ(grd.TextEntry(), "OLD");
    sendKeys("{Enter}", true);
    EXPECT_EQ(grd.GetText(2, kCode), "NEW");
    form.at(1, kCode);
    sendKeys("{Ctrl+D}", true);
    EXPECT_EQ(grd.TextEntry(), "OLD");  // above the first line stands the heading
}

TEST_F(CtlGrid, ANumberThatIsTooLargeKeepsTheCell) {
    form.enter(1, kAmount, "1000000000000");
    EXPECT_EQ(boxes, std::vector<std::string>{"The number is too large."});
    EXPECT_EQ(std::pair(grd.Row(), grd.Col()), std::pair(1, int(kAmount)));
    EXPECT_EQ(grd.GetText(1, kAmount), "");
}

TEST_F(CtlGrid, RowsComeAndGoUnderTheMarkOfTheOpenOne) {
    grd.InsertRow(2);
    EXPECT_EQ(form.codes(), "A1  #A2 ");
    grd.InsertRow(0);
    EXPECT_EQ(form.codes(), " A1  #A2 ");
    grd.RemoveRow(0);
    grd.RemoveRow(grd.Rows());
    EXPECT_EQ(grd.Rows(), 5);
    grd.RemoveRow(4);
    EXPECT_EQ(form.codes(), " A1 # ");
    grd.RemoveRow(1);
    grd.RemoveRow(2);
    EXPECT_EQ(form.codes(), "#A1 ");
    grd.SetText(1, kAmount, "5.00");
    grd.RemoveRow(1);
    EXPECT_EQ(form.codes(), "# ");
    EXPECT_EQ(grd.GetText(1, kAmount), "");
    EXPECT_EQ(grd.Rows(), 2);
}

TEST_F(CtlGrid, ColoursOnlyRowsThatAreThere) {
    auto& model = dynamic_cast<GridView*>(grd.widget())->model();
    form.at(2, kAmount);
    grd.SetRowBackColor(0, 0xff0000);
    grd.SetRowBackColor(grd.Rows(), 0xff0000);
    grd.SetRowBackColor(-1, 0xff0000);
    for (int r = 0; r < 2; ++r) EXPECT_FALSE(model.back(r, kCode).isValid()) << r;
    grd.SetRowBackColor(1, 0xff0000);
    for (int c = 0; c < grd.Cols(); ++c) EXPECT_EQ(model.back(0, c), QColor(0xff, 0, 0)) << c;
    EXPECT_FALSE(model.back(1, kCode).isValid());
    EXPECT_EQ(std::pair(grd.Row(), grd.Col()), std::pair(2, int(kAmount)));  // the selection stays
}

TEST_F(CtlGrid, EntryBeginsWithItsEventsAndEndsAtALock) {
    using Events = std::vector<std::string>;
    form.at(1, kCode);
    grd.closeEditor();
    form.events.clear();
    grd.ShowEntry();
    EXPECT_EQ(form.events, Events({"ShowEntry", "FocusEntry"}));
    EXPECT_TRUE(grd.editorOpen());
    form.at(2, kAmount);
    form.events.clear();
    grd.moveTo(2, kTitle);
    EXPECT_EQ(form.events, Events({"ShowEntry", "FocusEntry"}));
    EXPECT_FALSE(grd.editorOpen());
    form.shut = true;
    form.events.clear();
    grd.moveTo(1, kCode);
    EXPECT_EQ(form.events, Events({"ShowEntry"}));
    EXPECT_FALSE(grd.editorOpen());
}

TEST_F(CtlGrid, LeavingACellValidatesItAndWritesItBack) {
    struct {
        int col;
        const char* typed;
        const char* written;
        const char* validated;  ///< what ValidateEntry saw; nothing: it was not raised
    } rows[] = {
        {kAmount, "1234.5", "1,234.50", "1234.5"},
        {kAmount, "-", "-", "-"},
        {kDay, "03/05/2024", "3/5/2024", "03/05/2024"},
        {kDay, "13/45/2024", "13/45/2024", "13/45/2024"},
        {kCode, "OLD", "NEW", "OLD"},
        {kCode, "", "", nullptr},
    };
    for (const auto& row : rows) {
        form.enter(1, row.col, row.typed);
        EXPECT_EQ(grd.GetText(1, row.col), row.written) << row.typed;
        const bool raised = !form.events.empty() && form.events.front() == "Validate " + std::string(row.typed);
        EXPECT_EQ(raised, row.validated != nullptr) << row.typed;
        EXPECT_EQ(std::count(form.events.begin(), form.events.end(), "AfterValidate"), 1) << row.typed;
    }
    grd.ValidateBlank(kCode);
    grd.SetText(1, kCode, "A1");
    form.enter(1, kCode, "");
    EXPECT_EQ(form.events.front(), "Validate ");
    form.enter(2, kCode, "BAD");
    EXPECT_EQ(std::pair(grd.Row(), grd.Col()), std::pair(2, int(kCode)));
    EXPECT_EQ(grd.TextEntry(), "BAD");
    EXPECT_EQ(grd.GetText(2, kCode), "A2");
    grd.SkipValidation();
    sendKeys("{Enter}", true);
    EXPECT_EQ(grd.GetText(2, kCode), "BAD");
}

TEST_F(CtlGrid, ABlockIsValidatedCellByCellAndKeepsWhatIsGood) {
    grd.SetText(1, kAmount, "7.00");
    form.at(1, kCode);
    // lines as wide as the grid carry the locked title; the second one lacks a good code
    setClipboard("x1\tignored\t(1,250.50)\t2024-03-15\nbad\t\tabc\t3/1/2024\nask\t\t-\tsoon\nx4\t\t\t\n");
    sendKeys("{Ctrl+V}", true);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0],
              "4 pasted cells were refused:\n"
              "Line 2, Code \"bad\": There is no BAD.\n"
              "Line 2, Amount \"abc\": not taken in this column\n"
              "Line 3, Code \"ask\": it has to be chosen by a search\n"
              "Line 3, Day \"soon\": not taken in this column");
    EXPECT_EQ(form.codes(), "X1 A2  #X4 ");
    EXPECT_EQ(grd.GetText(1, kTitle), "");
    EXPECT_EQ(grd.GetText(1, kAmount), "-1,250.50");
    EXPECT_EQ(grd.GetText(1, kDay), "3/15/2024");
    EXPECT_EQ(grd.GetText(2, kDay), "3/1/2024");
    EXPECT_EQ(std::count(form.events.begin(), form.events.end(), "AfterValidate"), 1);
    // an empty cell of the block empties the one below it
    boxes.clear();
    form.at(1, kCode);
    setClipboard("x9\t\t\t\n");
    sendKeys("{Ctrl+V}", true);
    EXPECT_EQ(grd.GetText(1, kCode) + "|" + grd.GetText(1, kAmount) + "|" + grd.GetText(1, kDay), "X9||");
    EXPECT_TRUE(boxes.empty());
}

TEST_F(CtlGrid, ALongBlockRearrangesTheTableOnceAndEntersNoCell) {
    std::string block;
    for (int i = 0; i < 3000; ++i) block += "x" + std::to_string(i) + "\t\t1\t\n";
    int entered = 0;
    int added = 0;
    GridModel& model = dynamic_cast<GridView*>(grd.widget())->model();
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, [&] { ++added; });
    form.at(1, kCode);
    grd.onRowColChange = [&] { ++entered; };
    setClipboard(block);
    sendKeys("{Ctrl+V}", true);
    EXPECT_EQ(grd.Rows(), 3001);
    EXPECT_EQ(grd.GetText(3000, kCode) + "|" + grd.GetText(3000, kAmount), "X2999|1.00");
    EXPECT_EQ(grd.GetText(3, 0) + "|" + grd.GetText(3000, 0), "|#");
    EXPECT_LE(entered, 1);
    EXPECT_EQ(added, 1);
    EXPECT_EQ(std::count(form.events.begin(), form.events.end(), "AfterValidate"), 1);
}

TEST_F(CtlGrid, ManyRefusedCellsAreAListThatGoesBackToTheSpreadsheet) {
    std::string block;
    for (int i = 0; i < 12; ++i) block += "bad\t\t1\t\n";
    std::string copied;
    int rows = 0;
    dialogHooks().modal = [&](Form& shown) {
        auto& list = dynamic_cast<frmRefusedCells&>(shown);
        rows = list.lvwRefused.count();
        list.cmdCopy.press();
        copied = clipboard();
        list.Unload();
    };
    form.at(1, kCode);
    setClipboard(block);
    sendKeys("{Ctrl+V}", true);
    EXPECT_EQ(rows, 12);
    EXPECT_TRUE(boxes.empty());
    EXPECT_EQ(copied.substr(0, copied.find("2\tCode")), "Line\tColumn\tText\tReason\n1\tCode\tbad\tThere is no BAD.\n");
    EXPECT_EQ(grd.GetText(12, kAmount), "1.00");
}

TEST_F(CtlGrid, MarkedRowsAreCopiedAsASpreadsheetTakesThem) {
    grd.SetText(1, kTitle, "the \"first\"");
    grd.SetText(1, kAmount, "1,000.00");
    form.at(1, kCode);
    sendKeys("{Shift+Down}", true);
    sendKeys("{Shift+Down}", true);
    sendKeys("{Ctrl+C}", true);
    EXPECT_EQ(clipboard(), "A1\t\"the \"\"first\"\"\"\t1,000.00\t\nA2\t\t\t");
}

}  // namespace
}  // namespace kv
