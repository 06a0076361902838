// The statement cache: one shape with other literals gives other answers, and a private one changes nothing.

#include "tests/embedded/core_support.h"

namespace kv {
namespace {

const char* const kSetup =
    "CREATE TABLE t (k int, code varchar(10), amount money, d datetime, f decimal(9, 4)) "
    "INSERT t VALUES (1, 'A', 10.25, '2024-03-01', 1.5), (2, 'b', 20, '2024-04-01 10:00', 2.25), "
    "(3, 'Ñ', -5, '20240501', 3)";

/// Pairs of one shape: the second must not answer as the first.
const char* const kShapes[] = {
    "SELECT k FROM t WHERE code = 'a'",
    "SELECT k FROM t WHERE code = 'B'",
    "SELECT TOP 1 k FROM t ORDER BY k DESC",
    "SELECT TOP 2 k FROM t ORDER BY k DESC",
    "SELECT k, amount FROM t ORDER BY 1",
    "SELECT k, amount FROM t ORDER BY 2",
    "SELECT CONVERT(varchar(10), d, 101) FROM t",
    "SELECT CONVERT(varchar(10), d, 112) FROM t",
    "SELECT CAST(code AS varchar(1)), CAST('xyz' AS varchar(2)) FROM t",
    "SELECT CAST(code AS varchar(2)), CAST('uvw' AS varchar(1)) FROM t",
    "SELECT f / 3, f * 10 FROM t",
    "SELECT f / 300, f * 1000 FROM t",
    "SELECT k FROM t WHERE code LIKE 'a%'",
    "SELECT k FROM t WHERE code LIKE '%a'",
    "SELECT k FROM t WHERE d >= '2024-04-01'",
    "SELECT k FROM t WHERE d >= '05/01/2024'",
    "SELECT k / 2, COUNT(*) FROM t GROUP BY k / 2 ORDER BY k / 2",
    "SELECT k / 3, COUNT(*) FROM t GROUP BY k / 3 ORDER BY k / 3",
    "SELECT 'x' AS 'name' UNION SELECT code FROM t ORDER BY 1",
    "SELECT 'y' AS 'name' UNION SELECT code FROM t ORDER BY 1",
    "SELECT ROUND(amount, 1), LEFT(code, 1), DATEADD(month, 1, d) FROM t",
    "SELECT ROUND(amount, 0), LEFT(code, 0), DATEADD(month, -1, d) FROM t",
    "SELECT CASE k WHEN 1 THEN 'one' WHEN 2 THEN 'two' END FROM t",
    "SELECT CASE k WHEN 3 THEN 'one' WHEN 1 THEN 'two' END FROM t",
    "SELECT ISNULL(NULLIF(code, 'A'), 'none') FROM t",
    "SELECT ISNULL(NULLIF(code, 'b'), 'void') FROM t",
    "DECLARE @x varchar(2) = 'abc' SELECT @x",
    "DECLARE @x varchar(3) = 'abc' SELECT @x",
};

TEST(Cache, EachTextAnswersAsIfAlone) {
    Engine cached;
    cached.run(kSetup);
    std::vector<std::string> first;
    for (int round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < std::size(kShapes); ++i) {
            Engine fresh(":memory:", false);
            if (round == 0) {
                fresh.run(kSetup);
                first.push_back(fresh.ask(kShapes[i]));
            }
            EXPECT_EQ(cached.ask(kShapes[i]), first[i]) << kShapes[i] << " round " << round;
        }
    }
}

TEST(Cache, OneShapeIsCompiledOnce) {
    Engine db;
    db.run(kSetup);
    const long before = db.services().cacheCounts().compiled;
    for (int i = 0; i < 50; ++i) {
        db.run("SELECT * FROM t WHERE code = 'c" + std::to_string(i) + "' AND k = " + std::to_string(i));
        db.run("UPDATE t SET amount = " + std::to_string(i) + ".50 /* " + std::to_string(i) + " */ WHERE k =   1");
    }
    EXPECT_EQ(db.services().cacheCounts().compiled, before + 2);
    EXPECT_EQ(db.ask("SELECT amount FROM t WHERE k = 1"), "49.50");
}

TEST(Cache, PlansFollowChangedTablesAndTemporaryTables) {
    Engine db;
    db.run("CREATE TABLE t (a int) INSERT t VALUES (1)");
    EXPECT_EQ(db.ask("SELECT * FROM t"), "1");
    db.run("ALTER TABLE t ADD b int");
    EXPECT_EQ(db.ask("SELECT * FROM t"), "1|NULL");
    db.run("CREATE PROCEDURE inner_p AS SELECT * FROM #w");
    db.run("CREATE PROCEDURE one AS CREATE TABLE #w (x int) INSERT #w VALUES (1) EXEC inner_p");
    db.run("CREATE PROCEDURE two AS CREATE TABLE #w (x int, y varchar(3)) INSERT #w VALUES (2, 'y') EXEC inner_p");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(db.ask("EXEC one EXEC two EXEC one"), "1;2|y;1");
    EXPECT_EQ(db.errors("EXEC inner_p"), "208");
}

TEST(Cache, RecursionAndReentryUseStatementsOfTheirOwn) {
    Engine db;
    db.run("CREATE FUNCTION f(@n int) RETURNS int AS BEGIN IF @n <= 1 RETURN 1 RETURN @n * dbo.f(@n - 1) END");
    EXPECT_EQ(db.ask("SELECT dbo.f(5), dbo.f(3)"), "120|6");
    EXPECT_EQ(db.errors("SELECT dbo.f(40)"), "217");
    EXPECT_EQ(db.ask("SELECT dbo.f(5)"), "120");
    db.run("CREATE PROCEDURE p @n int AS BEGIN IF @n > 0 BEGIN DECLARE @m int = @n - 1 EXEC p @m END SELECT @n END");
    EXPECT_EQ(db.ask("EXEC p 2"), "0;1;2");
    EXPECT_EQ(db.errors("EXEC p 40"), "217");
}

TEST(Cache, TheLastValuesOfAFunctionThatReadsItsTargetAreNotSeen) {
    Engine db;
    db.run("CREATE TABLE n (v int)");
    db.run("CREATE FUNCTION top_n() RETURNS int AS BEGIN RETURN (SELECT ISNULL(MAX(v), 0) FROM n) END");
    db.run("INSERT n SELECT dbo.top_n() + 1 FROM (VALUES (1), (2), (3)) AS x(i)");
    EXPECT_EQ(db.ask("SELECT v FROM n"), "1,1,1");
}

}  // namespace
}  // namespace kv
