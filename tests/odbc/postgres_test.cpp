// The ODBC driver over a server process of its own: PostgreSQL on a socket in a throwaway folder. Its server can be
// stopped and started, its statements take long, and a batch of it gives several results.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/odbc/Odbc.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

std::string found(const fs::path& folder, const std::string& below) {
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder, none)) {
        if (fs::exists(entry.path() / below, none)) return (entry.path() / below).string();
    }
    return {};
}

/// A database cluster that lives as long as the object.
class Cluster {
public:
    Cluster() : programs_(found("/usr/lib/postgresql", "bin")), driver_(found("/usr/lib", "odbc/psqlodbcw.so")) {
        if (programs_.empty() || driver_.empty()) return;
        std::string pattern = (fs::temp_directory_path() / "kv_pg_XXXXXX").string();
        if (!mkdtemp(pattern.data())) return;
        folder_ = pattern;
        if (geteuid() == 0) shell("chown postgres " + folder_);
        ready_ = as("initdb --no-sync -A trust -U postgres -E UTF8 --locale=C -D " + folder_ + "/db") && start();
    }
    Cluster(const Cluster&) = delete;
    Cluster& operator=(const Cluster&) = delete;
    ~Cluster() {
        if (folder_.empty()) return;
        stop();
        std::error_code none;
        fs::remove_all(folder_, none);
    }

    bool ready() const { return ready_; }
    bool start() { return as("pg_ctl -w -D " + folder_ + "/db -l " + folder_ + "/log -o '" + settings() + "' start"); }
    bool stop() { return as("pg_ctl -w -m immediate -D " + folder_ + "/db stop"); }
    std::unique_ptr<Connection> open(int timeout_s = 120) const {
        OdbcOptions options;
        options.commandTimeout_s = timeout_s;
        options.connectionString = "Driver=" + driver_ + ";Servername=" + folder_ +
                                   ";Port=5432;Database=postgres;UID=postgres;BoolsAsChar=0;MaxVarcharSize=4000;";
        return openOdbc(options);
    }

private:
    std::string settings() const { return "-c listen_addresses= -c fsync=off -k " + folder_; }
    static bool shell(const std::string& command) { return std::system((command + " >/dev/null 2>&1").c_str()) == 0; }
    bool as(const std::string& command) const {
        const std::string line = "cd / && " + programs_ + "/" + command;
        return shell(geteuid() == 0 ? "runuser -u postgres -- sh -c \"" + line + "\"" : line);
    }

    std::string programs_;
    std::string driver_;
    std::string folder_;
    bool ready_ = false;
};

class PostgresOdbc : public testing::Test {
protected:
    static void SetUpTestSuite() { cluster = new Cluster; }
    static void TearDownTestSuite() {
        delete cluster;
        cluster = nullptr;
    }
    void SetUp() override {
        if (!cluster->ready()) GTEST_SKIP() << "install postgresql and odbc-postgresql to run this test";
    }
    static Error errorOf(Connection& connection, std::string_view statement) {
        try {
            connection.Execute(statement);
        } catch (const Error& e) {
            return e;
        }
        return {0, "", "no error"};
    }
    static inline Cluster* cluster = nullptr;
};

TEST_F(PostgresOdbc, KeepsDecimalsExact) {
    auto connection = cluster->open();
    Recordset row = connection->Open(
        "SELECT 922337203685477.5807::numeric(19,4) AS m, -0.5::numeric(10,2) AS half, 0.012345::numeric(9,6) AS rate, "
        "123456789012345678::numeric(18,0) AS whole, true AS yes, 12345678901234567890.12::numeric(22,2) AS wide, "
        "'2024-02-29 23:59:59.997'::timestamp AS t, '0dc8bd2e-1f6e-4f0e-8f11-7ddc9c2f5a10'::uuid AS id, "
        "NULL::numeric(19,4) AS none, '0001-01-01'::date AS first");
    EXPECT_EQ(row["m"], Value(Money::fromUnits(9223372036854775807)));
    EXPECT_EQ(row.fields()[0].type, DataType::Currency);
    EXPECT_EQ(row["half"], Value(Money::fromUnits(-5000)));
    EXPECT_EQ(row["rate"], Value(0.012345));
    EXPECT_EQ(row["whole"], Value(std::int64_t{123456789012345678}));
    EXPECT_EQ(row["yes"], Value(true));
    EXPECT_DOUBLE_EQ(row["wide"].number(), 12345678901234567890.12);
    EXPECT_EQ(row["t"], Value(Date(2024, 2, 29, 23, 59, 59, 997)));
    EXPECT_EQ(row["id"].text(), "0DC8BD2E-1F6E-4F0E-8F11-7DDC9C2F5A10");
    EXPECT_TRUE(row["none"].isNull());
    EXPECT_EQ(row["first"].text(), "0001-01-01");
}

TEST_F(PostgresOdbc, CarriesEveryCharacter) {
    auto connection = cluster->open();
    const std::string text = "Niño’s “bill” 🏥 \xE2\x82\xB1 1,000";  // beyond two bytes and beyond 16 bits
    const std::string many = replaceAll(std::string(5000, 'x'), "x", "🏥");
    EXPECT_EQ(connection->Open(sql("SELECT '{}'::text").exact(text)).at(0).text(), text);
    EXPECT_TRUE(connection->Open(sql("SELECT '{}'::text").exact(many)).at(0).text() == many);
}

TEST_F(PostgresOdbc, GivesEveryResultOfABatch) {
    auto connection = cluster->open();
    const auto sets = connection->OpenAll(
        "CREATE TEMP TABLE b (n int); INSERT INTO b VALUES (1), (2), (3); SELECT n FROM b ORDER BY n; SELECT 'x' AS s");
    ASSERT_EQ(sets.size(), 2u);
    EXPECT_EQ(sets[0].rows.size(), 3u);
    EXPECT_EQ(sets[1].fields[0].name, "s");
    EXPECT_EQ(sets[1].rows[0][0], Value("x"));
    EXPECT_EQ(connection->recordsAffected(), 3);
    EXPECT_EQ(connection->Open("UPDATE b SET n = 0").fields().size(), 0u);
    EXPECT_EQ(connection->recordsAffected(), 3);
    connection->Execute("DELETE FROM b WHERE n = 99");
    EXPECT_EQ(connection->recordsAffected(), 0);
}

TEST_F(PostgresOdbc, AFailedStatementLeavesNothingAndTheConnectionUsable) {
    auto connection = cluster->open();
    connection->Execute("CREATE TABLE r (n int PRIMARY KEY)");
    connection->BeginTrans();
    connection->Execute("INSERT INTO r VALUES (1)");
    const Error error = errorOf(*connection, "INSERT INTO r VALUES (1)");
    EXPECT_NE(error.description.find("duplicate key"), std::string::npos) << error.description;
    connection->RollbackTrans();
    EXPECT_EQ(connection->transactionDepth(), 0);
    EXPECT_EQ(connection->Open("SELECT COUNT(*) FROM r").at(0).integer(), 0);
}

TEST_F(PostgresOdbc, ALongStatementIsStoppedAtTheTimeOut) {
    auto connection = cluster->open(1);
    const auto begin = std::chrono::steady_clock::now();
    const Error error = errorOf(*connection, "SELECT pg_sleep(30)");
    const auto took = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(took, std::chrono::seconds(10));
    EXPECT_EQ(error.number, kErrTimeout) << error.description;
    EXPECT_EQ(connection->Open("SELECT 5").at(0).integer(), 5);
}

TEST_F(PostgresOdbc, ALostServerIsNamedAndTheNextStatementSignsOnAgain) {
    auto connection = cluster->open();
    connection->BeginTrans();
    connection->Execute("CREATE TABLE lost (n int)");
    ASSERT_TRUE(cluster->stop());
    const Error lost = errorOf(*connection, "INSERT INTO lost VALUES (1)");
    EXPECT_EQ(lost.number, kErrServerLost) << lost.description;
    EXPECT_NE(lost.description.find("The connection to the server was lost"), std::string::npos) << lost.description;
    EXPECT_FALSE(connection->isOpen());
    EXPECT_EQ(connection->transactionDepth(), 0);
    connection->RollbackTrans();
    const Error still = errorOf(*connection, "SELECT 1");
    EXPECT_EQ(still.number, kErrServerLost) << still.description;
    ASSERT_TRUE(cluster->start());
    EXPECT_EQ(connection->Open("SELECT COUNT(*) FROM pg_tables WHERE tablename = 'lost'").at(0).integer(), 0);
    EXPECT_TRUE(connection->isOpen());
    EXPECT_EQ(connection->transactionDepth(), 0);
}

}  // namespace
}  // namespace kv
