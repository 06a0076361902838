// sqlconsole as scripts and people meet it: what goes to which stream, in which form, and how it ends.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/base/Paths.h"

namespace kv {
namespace {

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

class ConsoleTest : public testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() / ("kv-console-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string path(const char* name) const { return (folder_ / name).string(); }

    Outcome run(const std::string& script, const std::string& arguments) {
        writeTextFile(path("in.sql"), script);
        const char* bin = std::getenv("KV_BIN");
        const std::string command = std::string(bin ? bin : "build/release/bin") + "/sqlconsole " + arguments + " <" +
                                    path("in.sql") + " >" + path("out") + " 2>" + path("err");
        Outcome result;
        const int status = std::system(command.c_str());
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.out = readTextFile(path("out"));
        result.err = readTextFile(path("err"));
        return result;
    }

    std::filesystem::path folder_;
};

TEST_F(ConsoleTest, ResultSetsAreCsv) {
    const Outcome result =
        run("SELECT 1 AS a, NULL AS b, '' AS c, 'x,\"y\"' AS d, CAST('20240301' AS datetime) AS e, CAST(1.5 AS money) "
            "AS f\n"
            "SELECT '' AS alone\nSELECT 'NULL' AS word\nSELECT 1 AS never WHERE 1 = 2\n",
            "--csv");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out,
              "a,b,c,d,e,f\n1,NULL,,\"x,\"\"y\"\"\",2024-03-01 00:00:00.000,1.5000\n\n"
              "alone\n\"\"\n\nword\n\"NULL\"\n\nnever\n\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ConsoleTest, ErrorsGoToTheOtherStreamAndTheSessionGoesOn) {
    const Outcome result =
        run("CREATE TABLE #t (a int)\nINSERT #t VALUES (7)\nGO\nSELECT 1\nSELECT nope\nFROM #t\nGO\nSELECT a FROM #t\n",
            "");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "Msg 207, Level 16, State 1, Line 5\nInvalid column name 'nope'.\n");
    EXPECT_NE(result.out.find("a\n7\n\n"), std::string::npos) << result.out;
}

TEST_F(ConsoleTest, AProcedureIsNamedWithItsOwnLine) {
    const Outcome result = run("CREATE PROCEDURE p AS\nTHROW 50001, 'no', 1\nGO\n\nEXEC p\n", "");
    EXPECT_EQ(result.err, "Msg 50001, Level 16, State 1, Procedure p, Line 2\nno\n");
}

TEST_F(ConsoleTest, GoRepeats) {
    const Outcome result =
        run("CREATE TABLE t (id int IDENTITY(1, 1), v int)\nGO\nINSERT t (v) VALUES (1)\nGO 3\n"
            "SELECT MAX(id) AS n FROM t\n",
            "");
    EXPECT_EQ(result.out, "n\n3\n\n");
}

TEST_F(ConsoleTest, AMissingFileStartsEmptyAndStays) {
    const std::string data = "--data " + path("new.db");
    EXPECT_EQ(run("CREATE TABLE t (a int)\nINSERT t VALUES (5)\n", data).status, 0);
    EXPECT_EQ(run("SELECT a FROM t\n", data).out, "a\n5\n\n");
}

TEST_F(ConsoleTest, AFileThatIsNoDatabaseIsToldAndLeftAlone) {
    writeTextFile(path("letter.txt"),
                  "Dear Sir,\nthis is no database, but it is long enough to look like something.\n");
    const Outcome result = run("SELECT 1\n", "--data " + path("letter.txt"));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("Msg "), std::string::npos) << result.err;
    EXPECT_EQ(readTextFile(path("letter.txt")).substr(0, 9), "Dear Sir,");
}

TEST_F(ConsoleTest, WrongArgumentsShowTheUsage) {
    for (const char* arguments : {"--nonsense", "--data", "--source mysql:x"}) {
        const Outcome result = run("", arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_NE(result.err.find("usage: sqlconsole"), std::string::npos) << arguments;
    }
}

TEST_F(ConsoleTest, ABackupIsPutBackAlsoOverAFileThatIsDamaged) {
    run("CREATE TABLE t (a int)\nINSERT t VALUES (7)\n", "--data " + path("x.db"));
    EXPECT_EQ(run("", "--data " + path("x.db") + " --backup " + path("copy.db")).status, 0);
    run("DELETE FROM t", "--data " + path("x.db"));
    const Outcome restored = run("", "--data " + path("x.db") + " --restore " + path("copy.db"));
    EXPECT_EQ(restored.status, 0) << restored.err;
    EXPECT_NE(restored.out.find("Restored and verified: " + path("x.db")), std::string::npos) << restored.out;
    EXPECT_NE(restored.out.find(path("x.db") + ".before-restore-"), std::string::npos) << restored.out;
    EXPECT_EQ(run("SELECT a FROM t", "--data " + path("x.db")).out, "a\n7\n\n");

    writeTextFile(path("x.db"), "no database at all");
    const Outcome refused = run("", "--data " + path("copy.db") + " --restore " + path("x.db"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("x.db is not a database."), std::string::npos) << refused.err;
    const Outcome replaced = run("", "--data " + path("x.db") + " --restore " + path("copy.db"));
    EXPECT_EQ(replaced.status, 0) << replaced.err;
    EXPECT_NE(replaced.out.find(path("x.db") + ".damaged-"), std::string::npos) << replaced.out;
    EXPECT_EQ(run("SELECT a FROM t", "--data " + path("x.db")).out, "a\n7\n\n");
    EXPECT_EQ(run("", "--restore " + path("copy.db")).status, 2);
}

}  // namespace
}  // namespace kv
