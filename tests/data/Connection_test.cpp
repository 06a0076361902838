// What every connection does over its driver: errors, messages, the observer, transactions.
#include "platform/data/Connection.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

/// A driver that answers from a script.
class Scripted : public Connection {
public:
    std::vector<DbError> say;
    std::vector<ResultSet> give;
    std::string failOn;
    std::vector<std::string> ran;
    int depth = 0;
    bool throwOnRollback = false;

    int transactionDepth() const override { return depth; }
    std::string connectionString() const override { return {}; }
    void setDefaultDatabase(const std::string&) override {}
    std::string defaultDatabase() const override { return {}; }
    void setCommandTimeout(int) override {}
    bool isOpen() const override { return true; }
    void close() override {}

protected:
    bool run(std::string_view statement, std::vector<ResultSet>& results, std::vector<DbError>& messages) override {
        ran.emplace_back(statement);
        if (statement == "BEGIN TRAN") ++depth;
        if (statement == "COMMIT TRAN") --depth;
        if (statement == "ROLLBACK TRAN" && throwOnRollback) throw std::runtime_error("the line is cut");
        if (statement == "ROLLBACK TRAN") depth = 0;
        messages.insert(messages.end(), say.begin(), say.end());
        results = give;
        return statement != failOn;
    }
};

DbError message(long number, int severity, std::string text) {
    DbError error;
    error.number = number;
    error.severity = severity;
    error.description = std::move(text);
    return error;
}

TEST(ConnectionErrors, RaisesTheFirstErrorWithTheCallersLineAndKeepsAll) {
    Scripted db;
    db.say = {message(5701, 10, "context"), message(547, 16, "first"), message(3621, 0, "terminated"),
              message(50000, 16, "second")};
    try {
        db.Execute("UPDATE x");
        FAIL() << "an error is raised";
    } catch (const Error& e) {
        EXPECT_EQ(e.number, 547);
        EXPECT_EQ(e.description, "first");
        EXPECT_FALSE(e.source.empty());
        EXPECT_EQ(e.line, static_cast<unsigned>(__LINE__ - 6));
    }
    EXPECT_EQ(db.errors().size(), 4u);
    db.say = {message(0, 10, "printed")};
    EXPECT_NO_THROW(db.Execute("PRINT 'printed'"));
    EXPECT_EQ(db.errors().size(), 1u);  // those of the statement before are gone
}

TEST(ConnectionErrors, AFailureWithoutAMessageIsOneToo) {
    Scripted db;
    db.failOn = "SELECT 1";
    EXPECT_THROW(db.Open("SELECT 1"), Error);
}

TEST(ConnectionResults, OpenGivesTheFirstSetAndOpenAllGivesAll) {
    Scripted db;
    EXPECT_TRUE(db.Open("none").fields().empty());
    EXPECT_TRUE(db.Open("none").eof());
    db.give = {{{{"A"}}, {{Value(1)}}}, {{{"B"}}, {{Value(2)}, {Value(3)}}}};
    EXPECT_EQ(db.Open("two")["a"], Value(1));
    ASSERT_EQ(db.OpenAll("two").size(), 2u);
    EXPECT_EQ(db.OpenAll("two")[1].rows.size(), 2u);
}

TEST(ConnectionTransactions, LeavingTheScopeRollsBackAndCommitDoesNot) {
    Scripted db;
    std::vector<std::string> seen;
    db.observe([&](std::string_view statement) { seen.emplace_back(statement); });
    {
        Transaction kept(db);
        db.Execute("INSERT 1");
        kept.commit();
    }
    {
        const Transaction left(db);
        db.Execute("INSERT 2");
    }
    const std::vector<std::string> wanted = {"BEGIN TRAN", "INSERT 1", "COMMIT TRAN",
                                             "BEGIN TRAN", "INSERT 2", "ROLLBACK TRAN"};
    EXPECT_EQ(db.ran, wanted);
    EXPECT_EQ(seen, wanted);
    EXPECT_EQ(db.depth, 0);
    db.RollbackTrans();  // with nothing open nothing is sent
    EXPECT_EQ(db.ran.size(), wanted.size());
}

TEST(ConnectionTransactions, RollbackNeverRaisesAndKeepsTheErrorsThatLedToIt) {
    Scripted db;
    db.throwOnRollback = true;
    db.BeginTrans();
    db.say = {message(2627, 14, "duplicate")};
    EXPECT_THROW(db.Execute("INSERT"), Error);
    db.say.clear();
    db.RollbackTrans();
    ASSERT_FALSE(db.errors().empty());
    EXPECT_EQ(db.errors()[0].number, 2627);
}

TEST(RecordsetReading, UnknownFieldsAndMissingRowsAreErrorsByNumber) {
    Recordset rows(ResultSet{{{"Batch"}, {"Debit"}}, {{Value("7"), Value(Money::whole(5))}}});
    const auto numberOf_ = [&](auto&& body) {
        try {
            body();
        } catch (const Error& e) {
            return e.number;
        }
        return 0L;
    };
    EXPECT_EQ(rows["BATCH"].text(), "7");
    EXPECT_EQ(rows.at(1).money(), Money::whole(5));
    EXPECT_FALSE(rows.has("Credit"));
    EXPECT_EQ(numberOf_([&] { return rows["Credit"]; }), 3265);
    EXPECT_EQ(numberOf_([&] { return rows.at(2); }), 3265);
    EXPECT_EQ(numberOf_([&] { rows.set("Debit", 1); }), 3251);
    EXPECT_EQ(numberOf_([&] { rows.addNew(); }), 3251);
    rows.moveNext();
    EXPECT_TRUE(rows.eof());
    EXPECT_EQ(numberOf_([&] { return rows["Batch"]; }), 3021);
    rows.moveFirst();
    EXPECT_EQ(rows["Batch"].text(), "7");
}

}  // namespace
}  // namespace kv
