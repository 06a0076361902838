// The driver's way to SQL Server through FreeTDS: session, types, errors, time-outs, a lost line.
#include <gtest/gtest.h>

#include "platform/base/Text.h"
#include "platform/odbc/Odbc.h"
#include "tests/data/Hostile.h"
#include "tests/odbc/SqliteDesk.h"
#include "tests/odbc/TdsServer.h"

namespace kv {
namespace {

using test::TdsAnswer;

/// What the stand-in's books answer to each batch; it counts transactions as the real one does.
class Books {
public:
    TdsAnswer answer(const std::string& batch) {
        if (batch == "BEGIN TRAN") ++depth;
        if (batch == "COMMIT TRAN") --depth;
        if (batch == "ROLLBACK TRAN") depth = 0;
        if (batch == "SELECT @@TRANCOUNT") return TdsAnswer().columns({{"", "int"}}).row().number(depth).done(false, 1);
        const auto known = answers.find(batch);
        return known == answers.end() ? TdsAnswer().done() : known->second;
    }
    std::map<std::string, TdsAnswer> answers;
    std::atomic<int> depth = 0;
};

class SqlServer : public testing::Test {
protected:
    void SetUp() override {
        const std::string driver = test::odbcDriverFile("libtdsodbc.so");
        if (driver.empty()) GTEST_SKIP() << "install tdsodbc to run this test";
        SqlServerLogon logon{
            "127.0.0.1," + std::to_string(server.port()), "clerk", "se;cret", "ACCOUNTING", driver, ""};
        options.connectionString = odbcConnectionString(logon);
        options.loginTimeout_s = 5;
        options.commandTimeout_s = 2;
        // the probe for letters: the letters themselves, as they travel
        books.answers["SELECT N'ħ₱' AS p"] =
            TdsAnswer().columns({{"p", "nvarchar(50)"}}).row().utf16("\x27\x01\xB1\x20").done(false, 1);
    }
    std::unique_ptr<Connection> open() const { return openOdbc(options); }
    static Error errorOf(const std::function<void()>& body) {
        try {
            body();
        } catch (const Error& e) {
            return e;
        }
        return {0, "", "no error"};
    }

    Books books;
    test::TdsServer server{[this](const std::string& batch) { return books.answer(batch); }};
    OdbcOptions options;
};

TEST_F(SqlServer, TheSessionIsSetUpTheSameForEveryLogon) {
    auto connection = open();
    const std::string all = join(server.batches(), "\n");
    for (const char* setting : {"SET DATEFORMAT mdy", "SET XACT_ABORT ON", "SET LANGUAGE us_english", "USE ACCOUNTING",
                                "SET QUOTED_IDENTIFIER ON", "SET LOCK_TIMEOUT 1800"}) {
        EXPECT_NE(all.find(setting), std::string::npos) << setting << " is not among\n" << all;
    }
    EXPECT_EQ(connection->connectionString(), "Provider=ODBC;Server=127.0.0.1;Database=ACCOUNTING;User ID=clerk;");
    connection->setDefaultDatabase("BUILD_FILE");
    EXPECT_EQ(server.batches().back(), "USE BUILD_FILE");
    EXPECT_EQ(errorOf([&] { connection->setDefaultDatabase("x; DROP TABLE y"); }).number, 5);
}

TEST_F(SqlServer, TypedValuesAndNulls) {
    const std::string longText(20'000, 'x');
    const std::vector<std::pair<std::string, std::string>> columns = {
        {"Qty", "int"},           {"Big", "bigint"},          {"Posted", "bit"},         {"Debit", "money"},
        {"Rate", "decimal(9,6)"}, {"No", "decimal(18,0)"},    {"BatchDate", "datetime"}, {"Day", "date"},
        {"Share", "float"},       {"Id", "uniqueidentifier"}, {"Title", "varchar(50)"},  {"Wide", "nvarchar(50)"},
        {"Note", "varchar(max)"}};
    TdsAnswer answer;
    answer.columns(columns).row().number(-5).number(9007199254740993).number(1).money(-9223372036854775807 - 1);
    answer.decimal(-12345).decimal(123456789012345678).datetime(45350, 25919999 - 1).day(738'944).floating(0.1);
    answer.guid(std::string("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF", 16));
    answer.text("cash in bank").text("wide").text(longText);
    answer.row();
    for (std::size_t i = 0; i < columns.size(); ++i) answer.nothing();
    books.answers["rows"] = answer.done(false, 2);
    auto connection = open();
    Recordset rows = connection->Open("rows");
    ASSERT_EQ(rows.recordCount(), 2u);
    EXPECT_EQ(rows["Qty"], Value(-5));
    EXPECT_EQ(rows["Big"], Value(std::int64_t{9007199254740993}));
    EXPECT_EQ(rows["Posted"], Value(true));
    EXPECT_EQ(rows["Debit"], Value(Money::fromUnits(-9223372036854775807 - 1)));
    EXPECT_EQ(rows["Rate"], Value(-0.012345));
    EXPECT_EQ(rows["No"], Value(std::int64_t{123456789012345678}));
    EXPECT_EQ(rows["BatchDate"], Value(Date(2024, 3, 1, 23, 59, 59, 993)));
    EXPECT_EQ(rows["Day"], Value(Date(2024, 2, 29)));
    EXPECT_EQ(rows["Share"], Value(0.1));
    EXPECT_EQ(rows["Id"].text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(rows["Title"].text(), "cash in bank");
    EXPECT_EQ(rows["Wide"].text(), "wide");
    EXPECT_TRUE(rows["Note"].text() == longText) << rows["Note"].text().size();
    const std::vector<DataType> types = {DataType::Integer, DataType::BigInt,  DataType::Boolean, DataType::Currency,
                                         DataType::Decimal, DataType::Decimal, DataType::DateTime};
    for (std::size_t i = 0; i < types.size(); ++i) EXPECT_EQ(rows.fields()[i].type, types[i]) << rows.fields()[i].name;
    EXPECT_EQ(rows.fields()[10].size, 50);
    EXPECT_EQ(rows.fields()[12].size, 0);
    rows.moveNext();
    for (std::size_t i = 0; i < columns.size(); ++i) EXPECT_TRUE(rows.at(i).isNull()) << columns[i].first;
}

TEST_F(SqlServer, EveryMessageIsKeptAndEveryResultReadBehindAnError) {
    TdsAnswer answer;
    answer.info(0, "working").columns({{"A", "int"}}).row().number(1).done(true, 1);
    answer.error(50000, 3, 16, "[JV] is closed.", "sp_Insert_JV", 12).done(true, -1, true);
    answer.error(515, 2, 16, "Cannot insert NULL.", "", 14).done(true, -1, true);
    answer.columns({{"B", "varchar(50)"}}).row().text("end").done(false, 1);
    books.answers["sp_Insert_JV"] = answer;
    auto connection = open();
    const Error error = errorOf([&] { connection->Execute("sp_Insert_JV"); });
    EXPECT_EQ(error.number, 50000);
    EXPECT_EQ(error.description, "[JV] is closed.");
    std::vector<long> numbers;
    for (const DbError& message : connection->errors()) {
        if (message.severity > 10) numbers.push_back(message.number);
    }
    EXPECT_EQ(numbers, (std::vector<long>{50000, 515}));
    EXPECT_EQ(connection->Open("SELECT @@TRANCOUNT").at(0).integer(), 0);  // the line is free again
}

TEST_F(SqlServer, EveryLetterOfAStatementArrivesAsItWasSent) {
    auto connection = open();
    for (const auto& [title, text] : test::hostileTexts()) {
        const std::string statement = call("sp_Note").exact(text).more(" /* {fn now()} ? */").str();
        connection->Execute(statement);
        EXPECT_EQ(server.batches().back(), statement) << title;
    }
}

TEST_F(SqlServer, InformationIsNoError) {
    books.answers["print"] = TdsAnswer().info(0, "hello").done();
    books.answers["update"] = TdsAnswer().done(true, 3).done(false, 7);
    auto connection = open();
    EXPECT_NO_THROW(connection->Execute("print"));
    ASSERT_EQ(connection->errors().size(), 1u);
    EXPECT_EQ(connection->errors()[0].description, "hello");
    connection->Execute("update");
    EXPECT_EQ(connection->recordsAffected(), 7);
}

TEST_F(SqlServer, TheServerCountsTheTransactions) {
    auto connection = open();
    connection->BeginTrans();
    connection->BeginTrans();
    EXPECT_EQ(connection->transactionDepth(), 2);
    books.depth = 0;  // a failed statement took all of it with it
    connection->RollbackTrans();
    EXPECT_EQ(join(server.batches(), ";").find("ROLLBACK"), std::string::npos);
    connection->BeginTrans();
    connection->RollbackTrans();
    EXPECT_EQ(server.batches().back(), "ROLLBACK TRAN");
    connection->BeginTrans();
    connection->close();
    EXPECT_EQ(server.batches().back(), "ROLLBACK TRAN");
}

TEST_F(SqlServer, AStatementThatHangsIsStoppedAndTheLineStaysUsable) {
    auto connection = open();
    const Error error = errorOf([&] { connection->Execute("hang"); });
    EXPECT_EQ(error.number, kErrTimeout) << error.description;
    EXPECT_NE(error.description.find("within 2 seconds"), std::string::npos) << error.description;
    EXPECT_TRUE(connection->isOpen());
    EXPECT_EQ(connection->transactionDepth(), 0);
    EXPECT_NO_THROW(connection->Execute("next"));
}

TEST_F(SqlServer, ALostLineIsNamedAndTheNextStatementSignsOnAgain) {
    auto connection = open();
    connection->BeginTrans();
    const Error error = errorOf([&] { connection->Execute("die"); });
    EXPECT_EQ(error.number, kErrServerLost) << error.description;
    EXPECT_FALSE(connection->isOpen());
    connection->RollbackTrans();
    books.depth = 0;
    const std::size_t before = server.batches().size();
    EXPECT_NO_THROW(connection->Execute("again"));
    const auto batches = server.batches();
    EXPECT_EQ(batches.back(), "again");
    const std::vector<std::string> since(batches.begin() + static_cast<std::ptrdiff_t>(before), batches.end());
    EXPECT_NE(join(since, "\n").find("SET DATEFORMAT mdy"), std::string::npos);
}

TEST_F(SqlServer, ARefusedLogonIsToldByItsNumber) {
    server.refuseLogons(true);
    const Error error = errorOf([&] { open(); });
    EXPECT_EQ(error.number, 18456) << error.description;
    EXPECT_EQ(error.description.find("se;cret"), std::string::npos);
}

TEST_F(SqlServer, AMissingDatabaseIsToldByItsNumber) {
    books.answers["USE ACCOUNTING"] =
        TdsAnswer().error(911, 1, 16, "Database 'ACCOUNTING' does not exist.", "", 1).done(false, -1, true);
    const Error error = errorOf([&] { open(); });
    EXPECT_EQ(error.number, 911) << error.description;
}

}  // namespace
}  // namespace kv
