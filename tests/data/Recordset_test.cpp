// Updatable recordsets: what they send, and that it does in an engine what it says.
#include "platform/data/Recordset.h"

#include <gtest/gtest.h>

#include "tests/data/Engines.h"

namespace kv {
namespace {

class UpdatableRecordset : public testing::TestWithParam<test::Engine> {
protected:
    void SetUp() override {
        connection = GetParam().open();
        if (!connection) GTEST_SKIP() << test::kNoSqliteOdbc;
        connection->Execute(
            "CREATE TABLE VEND (VendorID VARCHAR(15), Dept VARCHAR(9), Company VARCHAR(50), Rate FLOAT, "
            "Since DATETIME, [Tax Class] INT DEFAULT 3, UNIQUE (VendorID, Dept))");
    }
    std::string all() {
        std::string text;
        for (Recordset r = connection->Open("SELECT * FROM VEND ORDER BY VendorID, Dept"); !r.eof(); r.moveNext()) {
            for (std::size_t i = 0; i < r.fields().size(); ++i) text += (r.at(i).isNull() ? "-" : r.at(i).text()) + "|";
            text += "\n";
        }
        return text;
    }
    Recordset open(std::string_view condition = "") {
        return connection->OpenTable("VEND", condition, {"VendorID", "Dept"});
    }
    void add(const char* vendor, const Value& dept, const char* company) {
        Recordset rows = open("1 = 0");
        rows.addNew();
        rows.set("VendorID", vendor);
        rows.set("Dept", dept);
        rows.set("Company", company);
        rows.update();
    }
    static long errorOf(const std::function<void()>& body) {
        try {
            body();
        } catch (const Error& e) {
            return e.number;
        }
        return 0;
    }
    std::unique_ptr<Connection> connection;
};

TEST_P(UpdatableRecordset, InsertsAndUpdatesByKey) {
    Recordset rows = open();
    rows.addNew();
    rows.set("vendorid", "V1");
    rows.set("Dept", "ER");
    rows.set("Company", " O'Brien's; -- ");
    rows.set("Rate", 0.012345);
    rows.set("Since", Date(2024, 2, 29, 8, 30));
    EXPECT_EQ(rows["Company"].text(), " O'Brien's; -- ");  // what is pending can be read
    EXPECT_TRUE(rows["Tax Class"].isNull());
    rows.update();
    EXPECT_EQ(rows["Company"].text(), " O'Brien's; -- ");
    add("V1", "OR", "other");
    EXPECT_EQ(all(), "V1|ER| O'Brien's; -- |0.012345|2/29/2024 8:30:00 AM|3|\nV1|OR|other|-|-|3|\n");

    rows = open("Dept = 'ER'");
    ASSERT_EQ(rows.recordCount(), 1u);
    std::string sent;
    connection->observe([&](std::string_view statement) { sent = statement; });
    rows.set("Tax Class", 5);
    rows.set("Company", Value());
    rows.set("Tax Class", 6);
    rows.update();
    EXPECT_EQ(sent, "UPDATE VEND SET [Tax Class] = 6, [Company] = NULL WHERE [VendorID] = 'V1' AND [Dept] = 'ER'");
    EXPECT_EQ(all(), "V1|ER|-|0.012345|2/29/2024 8:30:00 AM|6|\nV1|OR|other|-|-|3|\n");
    sent.clear();
    rows.update();  // nothing is pending
    EXPECT_EQ(sent, "");
}

TEST_P(UpdatableRecordset, AKeyCanChangeAndMayBeNull) {
    add("V1", Value(), "a");
    add("V2", "ER", "b");
    Recordset rows = open("VendorID = 'V1'");
    rows.set("VendorID", "V9");
    rows.update();
    rows.set("Company", "c");  // by the new key
    rows.update();
    EXPECT_EQ(all(), "V2|ER|b|-|-|3|\nV9|-|c|-|-|3|\n");
}

TEST_P(UpdatableRecordset, WithoutKeysTheWholeTableIsWritten) {
    add("V1", "ER", "a");
    Recordset rows = connection->OpenTable("VEND", "", {});
    rows.set("Company", "all");
    rows.update();
    EXPECT_EQ(all(), "V1|ER|all|-|-|3|\n");
}

TEST_P(UpdatableRecordset, ARefusedUpdateKeepsTheChangesUntilTheyAreCancelled) {
    add("V1", "ER", "a");
    add("V2", "ER", "b");
    Recordset rows = open("VendorID = 'V2'");
    rows.set("VendorID", "V1");
    EXPECT_NE(errorOf([&] { rows.update(); }), 0);
    EXPECT_EQ(rows["VendorID"].text(), "V1");
    EXPECT_EQ(errorOf([&] { rows.moveNext(); }), 3219);
    EXPECT_EQ(errorOf([&] { rows.addNew(); }), 3219);
    rows.cancelUpdate();
    EXPECT_EQ(rows["VendorID"].text(), "V2");
    rows.moveNext();
    EXPECT_EQ(errorOf([&] { rows.set("Company", "x"); }), 3021);
}

TEST_P(UpdatableRecordset, ARowThatAnotherUserRemovedIsTold) {
    add("V1", "ER", "a");
    Recordset rows = open();
    connection->Execute("DELETE FROM VEND");
    rows.set("Company", "b");
    EXPECT_EQ(errorOf([&] { rows.update(); }), 3197);
}

INSTANTIATE_TEST_SUITE_P(Engines, UpdatableRecordset, testing::ValuesIn(test::kEngines), test::engineName);

}  // namespace
}  // namespace kv
