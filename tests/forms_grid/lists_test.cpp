// Lists and trees: keys, sorting by kind, filter, checks, selection, speed with 50,000 rows.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTest>
#include <QTreeWidget>
#include <cstdio>

#include "platform/base/Error.h"
#include "platform/forms/Internal.h"
#include "platform/forms/ListTable.h"
#include "tests/forms_grid/PlayForms.h"
#include "tests/forms_grid/Stopwatch.h"

namespace kv::test {
namespace {

class frmLists : public Form {
public:
    frmLists() : Form("frmLists", "Lists") {
        lvw.setColumns({{"Text", 12}, {"Amount", 12, Align::Right}, {"Date", 12}, {"Name", 20, Align::Left, true}});
        lvw.checkBoxes();
        lvw.onItemClick = [this](int row) { events += "click" + std::to_string(row) + " "; };
        lvw.onDblClick = [this](int row) { events += "open" + std::to_string(row) + " "; };
        lvw.onItemCheck = [this](int row) { events += "check" + std::to_string(row) + " "; };
        lvw.onColumnClick = [this](int column) { events += "column" + std::to_string(column) + " "; };
        tvw.onNodeClick = [this](const std::string& key) { events += key + " "; };
        setLayout(column({expand(lvw), expand(tvw)}));
        setSize(640, 480);
    }
    ListTable& table() { return *dynamic_cast<ListTable*>(lvw.widget()); }
    std::string cellsOf(int c) {
        std::string all;
        for (int row = 0; row < lvw.count(); ++row) all += lvw.cell(row, c) + "|";
        return all;
    }
    ListView lvw{*this, "lvw"};
    TreeView tvw{*this, "tvw"};
    std::string events;
};

class ListsTest : public testing::Test {
protected:
    void SetUp() override {
        form.Show();
        form.lvw.setItems({{"k1", {"b10", "1,000.00", "12/31/2023", "Ana"}},
                           {"k2", {"a9", "-5", "1/2/2024", "ñandu"}},
                           {"k3", {"B2", "", "2/1/2024", "carl"}},
                           {"k4", {"a10", "200.5", "", "BEN"}}});
        settle();
    }
    void TearDown() override { form.Unload(); }
    frmLists form;
};

TEST_F(ListsTest, MarksATextWhereItStandsInTheCells) {
    const auto bandsIn = [&](int row, int col) {
        const QImage cell = form.table()
                                .viewport()
                                ->grab(form.table().visualRect(form.table().model()->index(row, col)))
                                .toImage()
                                .convertToFormat(QImage::Format_RGB32);
        int bands = 0;  // along a line below the text
        const int y = cell.height() / 2 + form.table().fontMetrics().height() / 2 - 1;
        for (int x = 1; x < cell.width(); ++x) {
            bands += cell.pixelColor(x, y) == tones().mark && cell.pixelColor(x - 1, y) != tones().mark ? 1 : 0;
        }
        return bands;
    };
    form.lvw.mark("an");
    EXPECT_EQ(bandsIn(0, 3), 1) << "Ana, in any letter case";
    EXPECT_EQ(bandsIn(1, 3), 1) << "behind a letter of two bytes";
    EXPECT_EQ(bandsIn(2, 3), 0);
    form.lvw.mark("00");
    EXPECT_EQ(bandsIn(0, 1), 2) << "1,000.00, aligned right";
    form.lvw.mark("");
    EXPECT_EQ(bandsIn(0, 1), 0);
}

TEST_F(ListsTest, SortsNumbersAsNumbersAndDatesAsDates) {
    form.lvw.select(0);
    form.lvw.setChecked(1, true);
    form.lvw.sortBy(1);
    EXPECT_EQ(form.cellsOf(1), "|-5|200.5|1,000.00|");
    EXPECT_EQ(form.lvw.selectedKey(), "k1") << "the selection moves with its row";
    EXPECT_EQ(form.lvw.checkedRows(), std::vector<int>{1});
    EXPECT_EQ(form.lvw.find("k1"), 3);
    form.lvw.sortBy(1, true);
    EXPECT_EQ(form.cellsOf(1), "1,000.00|200.5|-5||");
    form.lvw.sortBy(2);
    EXPECT_EQ(form.cellsOf(2), "|12/31/2023|1/2/2024|2/1/2024|");
    form.lvw.sortBy(0);
    EXPECT_EQ(form.cellsOf(0), "a10|a9|b10|B2|") << "text without regard to letter case";
    QTest::mouseClick(form.table().horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_EQ(form.cellsOf(0), "B2|b10|a9|a10|") << "the second click turns the order";
    EXPECT_EQ(form.events, "column0 ");
}

TEST_F(ListsTest, FilterHidesRowsButNotTheirNumbers) {
    form.lvw.select(3);
    form.lvw.filter("B");
    EXPECT_EQ(form.table().model()->rowCount(), 3);
    EXPECT_EQ(form.lvw.count(), 4);
    EXPECT_EQ(form.lvw.selected(), 3);
    form.lvw.select(1);
    EXPECT_EQ(form.lvw.selected(), -1) << "a hidden row cannot be selected";
    form.lvw.addItem({"k5", {"xyz"}});
    form.lvw.addItem({"k6", {"abc"}});
    EXPECT_EQ(form.table().model()->rowCount(), 4);
    form.lvw.removeItem(0);
    EXPECT_EQ(form.lvw.find("k6"), 4);
    EXPECT_EQ(form.lvw.find("k1"), -1);
    form.lvw.filter("");
    EXPECT_EQ(form.table().model()->rowCount(), 5);
    EXPECT_EQ(form.lvw.findText("A9"), 0);
    EXPECT_EQ(form.lvw.findText("a"), -1);
}

TEST_F(ListsTest, AFilterThatHidesTheSelectedRowSelectsTheFirstShown) {
    form.lvw.select(1);
    form.lvw.filter("B");
    EXPECT_EQ(form.lvw.shown(), 3);
    EXPECT_EQ(form.lvw.selected(), 0);
    form.lvw.filter("no such text");
    EXPECT_EQ(form.lvw.selected(), -1) << "what is not seen cannot be opened";
    form.lvw.filter("");
    EXPECT_EQ(form.lvw.selected(), 0);
    form.lvw.select(-1);
    form.lvw.filter("B");
    EXPECT_EQ(form.lvw.selected(), -1) << "nothing was selected before";
}

TEST_F(ListsTest, KeysAndPointer) {
    form.lvw.setFocus();
    form.lvw.select(1);
    EXPECT_EQ(form.events, "") << "code raises nothing";
    QTest::keyClick(&form.table(), Qt::Key_Down);
    QTest::keyClick(&form.table(), Qt::Key_Space);
    QTest::keyClick(&form.table(), Qt::Key_Return);
    EXPECT_EQ(form.events, "click2 check2 open2 ");
    EXPECT_TRUE(form.lvw.checked(2));
    form.events.clear();
    const QModelIndex first = form.table().model()->index(0, 0);
    QTest::mouseClick(form.table().viewport(), Qt::LeftButton, {}, form.table().checkBox(first).center());
    EXPECT_EQ(form.events, "check0 ");
    EXPECT_TRUE(form.lvw.checked(0));
    EXPECT_EQ(form.lvw.selected(), 2) << "a tick does not move the selection";
    form.events.clear();
    const QPoint cell = form.table().visualRect(form.table().model()->index(3, 1)).center();
    QTest::mouseDClick(form.table().viewport(), Qt::LeftButton, {}, cell);
    EXPECT_NE(form.events.find("open3"), std::string::npos);
    form.lvw.clear();
    EXPECT_EQ(form.lvw.selected(), -1);
    EXPECT_EQ(form.lvw.text(), "");
}

TEST_F(ListsTest, TreeKeepsItsKeys) {
    TreeView& tree = form.tvw;
    tree.addNode("", "1", "Assets");
    tree.addNode("1", "11", "Cash");
    tree.addNode("1", "12", "Receivables");
    tree.addNode("11", "111", "Petty cash");
    EXPECT_THROW(tree.addNode("", "11", "Twice"), Error);
    EXPECT_THROW(tree.addNode("9", "91", "Lost"), Error);
    EXPECT_EQ(tree.childrenOf("1"), (std::vector<std::string>{"11", "12"}));
    EXPECT_EQ(tree.childrenOf(""), std::vector<std::string>{"1"});
    EXPECT_EQ(tree.parentOf("111"), "11");
    EXPECT_EQ(tree.keyOfText("Petty cash"), "111");
    tree.setNodeText("12", "Debtors");
    tree.select("12");
    EXPECT_EQ(tree.text(), "Debtors");
    EXPECT_EQ(form.events, "");
    tree.expand("1");
    auto* widget = dynamic_cast<QTreeWidget*>(tree.widget());
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, {},
                      widget->visualItemRect(widget->topLevelItem(0)->child(0)).center());
    EXPECT_EQ(form.events, "11 ");
    QTest::keyClick(widget, Qt::Key_Down);
    EXPECT_EQ(form.events, "11 12 ");
    tree.removeNode("11");
    EXPECT_FALSE(tree.has("111"));
    EXPECT_TRUE(tree.has("12"));
}

TEST_F(ListsTest, FiftyThousandRowsAtOnce) {
    std::vector<ListView::Item> items;
    for (int i = 0; i < 50'000; ++i) {
        const std::string number = std::to_string((i * 7919) % 50'000);
        items.push_back({"k" + number, {"V" + number, number + ".50", "3/15/2024", "Vendor " + number}});
    }
    const auto timed = [](const char* what, double limit_ms, const std::function<void()>& body) {
        const Stopwatch watch;
        body();
        const double took_ms = watch.cpu_ms();
        std::printf("50,000 rows, %s: %.0f ms of the processor\n", what, took_ms);
        EXPECT_LT(took_ms, limit_ms * kSlower) << what;
    };
    timed("fill and paint", 1000, [&] {
        form.lvw.setItems(std::move(items));
        form.widget()->grab();
    });
    timed("sort by number", 1000, [&] { form.lvw.sortBy(1); });
    EXPECT_EQ(form.lvw.cell(49'999, 0), "V49999");
    timed("filter", 1000, [&] { form.lvw.filter("vendor 4999"); });
    EXPECT_EQ(form.table().model()->rowCount(), 11);
    form.lvw.filter("");
    timed("check all", 500, [&] { form.lvw.checkAll(true); });
    timed("to the end and painted", 200, [&] {
        form.lvw.select(49'999);
        form.widget()->grab();
    });
    EXPECT_EQ(form.lvw.find("k0"), 0);
}

}  // namespace
}  // namespace kv::test
