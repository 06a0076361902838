// Hostile texts through the composer into an engine: a value stays a value.
#include "tests/data/Hostile.h"

#include <gtest/gtest.h>

#include "tests/data/Engines.h"

namespace kv {
namespace {

class Hostile : public testing::TestWithParam<test::Engine> {
protected:
    void SetUp() override {
        connection = GetParam().open();
        if (!connection) GTEST_SKIP() << test::kNoSqliteOdbc;
        test::makeVictim(*connection);
    }
    std::unique_ptr<Connection> connection;
};

TEST_P(Hostile, TextsAreStoredAsTheyAre) {
    for (const auto& [title, text] : test::hostileTexts()) {
        // what arrives: the text without zero bytes and with U+FFFD for what is no UTF-8
        const std::string kept = replaceAll(escaped(text), "''", "'");
        EXPECT_EQ(test::harmOf(*connection, kept,
                               [&, &t = text] {
                                   connection->Execute(
                                       sql("UPDATE Victim SET Note = '{}' WHERE Secret = 'untouched'").exact(t));
                               }),
                  "")
            << title;
        EXPECT_EQ(test::harmOf(*connection, std::string(trimBlanks(kept)),
                               [&, &t = text] { connection->Execute(sql("UPDATE Victim SET Note = {}").text(t)); }),
                  "")
            << title;
        EXPECT_EQ(test::harmOf(*connection, kept,
                               [&, &t = text] {
                                   Recordset row = connection->OpenTable("Victim", "", {"Secret"});
                                   row.set("Note", t);
                                   row.update();
                               }),
                  "")
            << title;
        EXPECT_EQ(connection->Open(sql("SELECT COUNT(*) FROM Victim WHERE Note = '{}'").exact(text)).at(0).integer(), 1)
            << title;
    }
}

TEST_P(Hostile, NoTextChangesTheStructureOfACall) {
    EXPECT_EQ(test::structureBreakers([](const std::string& text) {
                  return call("sp_Insert_JV2").text(text).exact(text).amount(Money()).value(Value(text)).str();
              }),
              std::vector<std::string>());
    EXPECT_EQ(test::structureBreakers([](const std::string& text) {
                  return sql("select * from T where a like '%{}%' and b = {}").text(text).text(text).str();
              }),
              std::vector<std::string>());
}

TEST_P(Hostile, TheHarnessSeesHarm) {
    // by plain concatenation the same texts do get out: a harness that cannot see it proves nothing
    const auto naive = [](const std::string& text) { return "UPDATE Victim SET Note = '" + text + "'"; };
    EXPECT_GT(test::structureBreakers(naive).size(), 8u);
    EXPECT_NE(test::harmOf(*connection, "x", [&] { connection->Execute(naive("x', Secret = 'gone")); }), "");
}

INSTANTIATE_TEST_SUITE_P(Engines, Hostile, testing::ValuesIn(test::kEngines), test::engineName);

}  // namespace
}  // namespace kv
