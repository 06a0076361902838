// The ODBC driver over a real driver of a real engine: SQLite's.
#include "platform/odbc/Odbc.h"

#include <gtest/gtest.h>

#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "tests/odbc/SqliteDesk.h"

namespace kv {
namespace {

class SqliteOdbc : public testing::Test {
protected:
    void SetUp() override {
        connection = test::openSqliteDesk();
        if (!connection) GTEST_SKIP() << test::kNoSqliteOdbc;
    }

    Value one(std::string_view statement) { return connection->Open(statement).at(0); }
    long errorOf(std::string_view statement) {
        try {
            connection->Execute(statement);
        } catch (const Error& e) {
            return e.number;
        }
        return 0;
    }

    std::unique_ptr<Connection> connection;
};

TEST_F(SqliteOdbc, DeliversTypedValuesAndNulls) {
    connection->Execute(
        "CREATE TABLE T (n INTEGER, big BIGINT, b BIT, f DOUBLE, t VARCHAR(20), d DATE, ts TIMESTAMP, x BLOB)");
    connection->Execute(
        "INSERT INTO T VALUES (7, 9007199254740993, 1, 2.5, 'Peña 🏥', '2024-03-31', "
        "'2024-03-31 08:30:15.250', x'00FF10')");
    connection->Execute("INSERT INTO T VALUES (NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)");
    EXPECT_EQ(connection->recordsAffected(), 1);
    Recordset rows = connection->Open("SELECT * FROM T ORDER BY n DESC");
    ASSERT_EQ(rows.recordCount(), 2u);
    EXPECT_EQ(rows["N"], Value(7));
    EXPECT_EQ(rows["big"], Value(std::int64_t{9007199254740993}));
    EXPECT_EQ(rows["b"], Value(true));
    EXPECT_EQ(rows["f"], Value(2.5));
    EXPECT_EQ(rows["t"], Value("Peña 🏥"));
    EXPECT_EQ(rows["d"], Value(Date(2024, 3, 31)));
    EXPECT_EQ(rows["ts"], Value(Date(2024, 3, 31, 8, 30, 15, 250)));
    EXPECT_EQ(rows["x"], Value("0x00FF10"));
    EXPECT_EQ(rows.fields()[5].type, DataType::Date);
    EXPECT_EQ(rows.fields()[4].size, 20);
    rows.moveNext();
    for (std::size_t i = 0; i < rows.fields().size(); ++i) EXPECT_TRUE(rows.at(i).isNull()) << i;
}

TEST_F(SqliteOdbc, FetchesLongTextsWhole) {
    connection->Execute("CREATE TABLE L (t TEXT)");
    // lengths around the size of the parts in which texts are fetched, with characters of one, two and four bytes
    for (const int length : {0, 1, 4094, 4095, 4096, 4097, 8190, 8191, 100'000}) {
        std::string text;
        for (int i = 0; i < length; ++i) text += length % 2 == 0 ? "a" : "ñ";
        text += "🏥";
        connection->Execute("DELETE FROM L");
        connection->Execute(sql("INSERT INTO L VALUES ('{}')").exact(text));
        const std::string back = one("SELECT t FROM L").text();
        EXPECT_TRUE(back == text) << "of " << length << " characters came back " << charCount(back);
    }
}

TEST_F(SqliteOdbc, RaisesTheErrorAtTheCallersLineAndStaysUsable) {
    try {
        connection->Execute("SELECT * FROM Missing");
        const unsigned here = __LINE__;
        FAIL() << here;
    } catch (const Error& e) {
        EXPECT_EQ(e.line, static_cast<unsigned>(__LINE__ - 4));
        EXPECT_NE(e.description.find("no such table: Missing"), std::string::npos) << e.description;
        EXPECT_EQ(e.description.find('['), std::string::npos) << e.description;
        EXPECT_EQ(e.source, "Korvane ODBC");
    }
    EXPECT_EQ(connection->errors().size(), 1u);
    EXPECT_EQ(one("SELECT 5").integer(), 5);
    EXPECT_TRUE(connection->errors().empty());
}

TEST_F(SqliteOdbc, TransactionsNestByCountAndRollBackWhole) {
    connection->Execute("CREATE TABLE T (n INTEGER)");
    connection->BeginTrans();
    connection->Execute("INSERT INTO T VALUES (1)");
    connection->BeginTrans();
    EXPECT_EQ(connection->transactionDepth(), 2);
    connection->Execute("INSERT INTO T VALUES (2)");
    connection->CommitTrans();
    EXPECT_EQ(connection->transactionDepth(), 1);
    connection->RollbackTrans();
    EXPECT_EQ(connection->transactionDepth(), 0);
    EXPECT_EQ(one("SELECT COUNT(*) FROM T").integer(), 0);
    {
        Transaction transaction(*connection);
        connection->Execute("INSERT INTO T VALUES (3)");
        transaction.commit();
    }
    {
        const Transaction left(*connection);
        connection->Execute("INSERT INTO T VALUES (4)");
    }
    EXPECT_EQ(one("SELECT SUM(n) FROM T").integer(), 3);
    EXPECT_EQ(errorOf("COMMIT TRAN"), 3902);
    EXPECT_EQ(errorOf("ROLLBACK TRAN"), 3903);
    connection->RollbackTrans();  // with nothing open it does nothing
    EXPECT_EQ(connection->transactionDepth(), 0);
}

TEST_F(SqliteOdbc, TextsOfUsersAreNoMarkersOfOdbc) {
    connection->Execute("CREATE TABLE T (t VARCHAR(200))");
    for (const std::string text : {"{fn now()} {d '2024-01-01'}", "what? who?", "a'; DROP TABLE T; --", "C:\\x\\"}) {
        connection->Execute(sql("INSERT INTO T VALUES ('{}')").exact(text));
        EXPECT_EQ(one(sql("SELECT t FROM T WHERE t = '{}'").exact(text).str()).text(), text);
    }
}

TEST_F(SqliteOdbc, ConnectionStringShowsNoPassword) {
    const std::string text = connection->connectionString();
    EXPECT_EQ(text.find("hidden"), std::string::npos);
    const std::size_t key = text.find("Server") + 7;
    EXPECT_EQ(text.substr(key, text.find(';', key) - key), "desk");
}

TEST_F(SqliteOdbc, AClosedConnectionRefusesWithoutFalling) {
    connection->close();
    connection->close();
    EXPECT_FALSE(connection->isOpen());
    EXPECT_EQ(errorOf("SELECT 1"), kErrServerLost);
    connection->RollbackTrans();
    EXPECT_EQ(connection->transactionDepth(), 0);
}

TEST(OdbcText, DriverNamesAreTakenOffAndNothingElse) {
    EXPECT_EQ(withoutDriverNames("[Microsoft][ODBC Driver 18 for SQL Server][SQL Server][JV] is closed."),
              "[JV] is closed.");
    EXPECT_EQ(withoutDriverNames("[FreeTDS][SQL Server]Invalid object name 'X'."), "Invalid object name 'X'.");
    EXPECT_EQ(withoutDriverNames("[unixODBC][Driver Manager]Can't open lib"), "Can't open lib");
    EXPECT_EQ(withoutDriverNames("plain [text]"), "plain [text]");
    EXPECT_EQ(withoutDriverNames("[open"), "[open");
}

TEST(OdbcText, NoValueOfALogonBringsInAnotherSetting) {
    SqlServerLogon logon;
    logon.driver = "ODBC Driver 18 for SQL Server";
    logon.server = "books\\MAIN;Database=master";
    logon.user = "clerk";
    logon.password = "a;UID=sa;PWD={x}";
    const std::string text = odbcConnectionString(logon);
    EXPECT_NE(text.find("Server={books\\MAIN;Database=master};"), std::string::npos) << text;
    EXPECT_NE(text.find("PWD={a;UID=sa;PWD={x}}};"), std::string::npos) << text;
    logon.server = "10.0.0.5,1444";
    EXPECT_NE(odbcConnectionString(logon).find("Server={tcp:10.0.0.5,1444};"), std::string::npos);
    logon.driver = "FreeTDS";
    EXPECT_NE(odbcConnectionString(logon).find("Server=10.0.0.5;Port=1444;"), std::string::npos);
    logon.server = "books\\MAIN";
    EXPECT_EQ(odbcConnectionString(logon).find("Port="), std::string::npos);
    logon.user.clear();
    EXPECT_NE(odbcConnectionString(logon).find("Trusted_Connection=yes;"), std::string::npos);
    EXPECT_EQ(odbcConnectionString(logon).find("PWD="), std::string::npos);
}

TEST(OdbcText, AServerThatIsNotThereIsNamedAsSuch) {
    if (test::odbcDriverFile("libtdsodbc.so").empty()) GTEST_SKIP() << "install tdsodbc to run this test";
    OdbcOptions options;
    options.loginTimeout_s = 2;
    options.connectionString =
        odbcConnectionString({"127.0.0.1,1", "sa", "none", "ACCOUNTING", test::odbcDriverFile("libtdsodbc.so"), ""});
    try {
        openOdbc(options);
        FAIL() << "no server listens there";
    } catch (const Error& e) {
        EXPECT_EQ(e.number, kErrServerLost);
        EXPECT_NE(e.description.find("The server does not answer"), std::string::npos) << e.description;
        EXPECT_EQ(e.description.find("none"), std::string::npos) << "a password in a message: " << e.description;
    }
}

}  // namespace
}  // namespace kv
