// Definitions: constraints and their errors, ALTER TABLE, identities, and what other connections notice of a change.

#include "tests/embedded/core_support.h"

namespace kv {
namespace {

TEST(Schema, ConstraintErrorsNameWhatWasViolated) {
    Engine db;
    db.run("CREATE TABLE p (code varchar(5) CONSTRAINT PK_p PRIMARY KEY)");
    db.run(
        "CREATE TABLE t (id int CONSTRAINT PK_t PRIMARY KEY, u int CONSTRAINT UQ_t UNIQUE, n varchar(3) NOT NULL, "
        "q int CONSTRAINT CK_q CHECK (q > 0), code varchar(5) CONSTRAINT FK_p REFERENCES p(code))");
    db.run("CREATE UNIQUE INDEX UX_q ON t(q) WHERE q IS NOT NULL");
    db.run("INSERT p VALUES ('A') INSERT t VALUES (1, 1, 'x', 5, 'a')");
    struct Case {
        const char* statement;
        int number;
        const char* part;
    };
    const Case cases[] = {
        {"INSERT t VALUES (1, 2, 'x', 6, 'A')", 2627, "PRIMARY KEY constraint 'PK_t'"},
        {"INSERT t VALUES (2, 1, 'x', 6, 'A')", 2627, "UNIQUE KEY constraint 'UQ_t'"},
        {"INSERT t VALUES (2, 2, 'x', 5, 'A')", 2601, "unique index 'UX_q'"},
        {"INSERT t VALUES (2, 2, NULL, 6, 'A')", 515, "column 'n', table 'ACCOUNTING.dbo.t'"},
        {"INSERT t VALUES (2, 2, 'x', 0, 'A')", 547, "CHECK constraint \"CK_q\""},
        {"INSERT t VALUES (2, 2, 'x', 6, 'B')", 547, "FOREIGN KEY constraint \"FK_p\""},
        {"UPDATE t SET code = 'B'", 547, "The UPDATE statement"},
        {"DELETE p", 547, "REFERENCE constraint \"FK_p\""},
        {"DROP TABLE p", 3726, "'p'"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(db.errors(c.statement), std::to_string(c.number)) << c.statement;
        EXPECT_NE(db.messages().back().description.find(c.part), std::string::npos)
            << c.statement << ": " << db.messages().back().description;
    }
    EXPECT_EQ(db.ask("SELECT COUNT(*) FROM t"), "1");
}

TEST(Schema, AUniqueKeyTakesOneNull) {
    Engine db;
    db.run("CREATE TABLE one (a int NULL UNIQUE) INSERT one VALUES (NULL), (1)");
    EXPECT_EQ(db.errors("INSERT one VALUES (NULL)"), "2627");
    db.run(
        "CREATE TABLE two (a int NULL, b varchar(5) NULL, CONSTRAINT UQ UNIQUE (a, b)) INSERT two VALUES (1, NULL), "
        "(2, NULL), (NULL, 'x'), (NULL, NULL)");
    EXPECT_EQ(db.errors("INSERT two VALUES (2, NULL)"), "2627");
    EXPECT_EQ(db.errors("INSERT two VALUES (NULL, 'X ')"), "2627");
    EXPECT_EQ(db.errors("INSERT two VALUES (NULL, NULL)"), "2627");
    db.run("ALTER TABLE two DROP CONSTRAINT UQ INSERT two VALUES (NULL, NULL)");
    EXPECT_EQ(db.errors("ALTER TABLE two ADD CONSTRAINT UQ UNIQUE (a, b)"), "1505");
}

TEST(Schema, DefinitionsThatCannotBe) {
    Engine db;
    db.run("CREATE TABLE p (code varchar(5), n int)");
    struct Case {
        const char* statement;
        const char* number;
    };
    const Case cases[] = {
        {"CREATE TABLE p (a int)", "2714"},
        {"CREATE TABLE x (a int, A int)", "2705"},
        {"CREATE TABLE x (a int REFERENCES nowhere(a))", "1767"},
        {"CREATE TABLE x (a varchar(5) REFERENCES p(code))", "1776"},
        {"CREATE TABLE x (a nosuchtype)", "2715"},
        {"CREATE TABLE x (a int PRIMARY KEY, b int PRIMARY KEY)", "1779"},
        {"CREATE INDEX i ON p(nowhere)", "1911"},
        {"CREATE VIEW v AS SELECT nowhere FROM p", "207"},
        {"CREATE VIEW v AS SELECT n + 1 FROM p", "4511"},
        {"ALTER PROCEDURE nowhere AS SELECT 1", "208"},
        {"DROP VIEW p", "3701"},
        {"ALTER TABLE p DROP CONSTRAINT nowhere", "3728"},
    };
    for (const Case& c : cases) EXPECT_EQ(db.errors(c.statement), c.number) << c.statement;
}

TEST(Schema, AlterTableKeepsRowsAndHoldsThemToNewRules) {
    Scratch scratch;
    {
        Engine db(scratch.file());
        db.run("CREATE TABLE p (code varchar(5) PRIMARY KEY) INSERT p VALUES ('A')");
        db.run("CREATE TABLE t (id int IDENTITY, v varchar(3) NULL, m money) INSERT t VALUES ('a', 1), ('b', -1)");
        db.run("ALTER TABLE t ADD note varchar(10) NOT NULL CONSTRAINT DF_note DEFAULT 'none', more int");
        EXPECT_EQ(db.ask("SELECT * FROM t"), "1|a|1.00|none|NULL,2|b|-1.00|none|NULL");
        EXPECT_EQ(db.errors("ALTER TABLE t ADD CONSTRAINT CK_m CHECK (m > 0)"), "547");
        db.run("UPDATE t SET m = 2 WHERE m < 0 ALTER TABLE t ADD CONSTRAINT CK_m CHECK (m > 0)");
        EXPECT_EQ(db.errors("UPDATE t SET m = 0"), "547");
        EXPECT_EQ(db.errors("ALTER TABLE t ADD CONSTRAINT FK_v FOREIGN KEY (v) REFERENCES p(code)"), "547");
        db.run("DELETE t WHERE v = 'b' ALTER TABLE t ADD CONSTRAINT FK_v FOREIGN KEY (v) REFERENCES p(code)");
        EXPECT_EQ(db.errors("INSERT t(v) VALUES ('B')"), "547");
        db.run("ALTER TABLE t DROP CONSTRAINT FK_v INSERT t(v) VALUES ('B')");
        db.run("ALTER TABLE t ALTER COLUMN v varchar(20) NULL UPDATE t SET v = 'longer than three'");
        EXPECT_EQ(db.errors("ALTER TABLE t ALTER COLUMN v varchar(4) NULL"), "2628");
        EXPECT_EQ(db.errors("ALTER TABLE t DROP COLUMN note"), "5074");
        db.run("ALTER TABLE t DROP CONSTRAINT DF_note ALTER TABLE t DROP COLUMN note");
        EXPECT_EQ(db.ask("SELECT * FROM t"), "1|longer than three|1.00|NULL,3|longer than three|NULL|NULL");
    }
    Engine again(scratch.file());
    EXPECT_EQ(again.errors("UPDATE t SET m = 0"), "547");
    EXPECT_TRUE(again.services().checkIntegrity().empty());
}

TEST(Schema, IdentitiesGoOnAfterGapsAndReopening) {
    Scratch scratch;
    {
        Engine db(scratch.file());
        db.run("CREATE TABLE up (id int IDENTITY(100, 1), v int) CREATE TABLE down (id int IDENTITY(-5, -5), v int)");
        db.run("INSERT up VALUES (1), (2) INSERT down VALUES (1), (2) DELETE up WHERE id = 101 DELETE down");
        EXPECT_EQ(db.errors("INSERT up(id, v) VALUES (7, 7)"), "544");
        EXPECT_EQ(db.errors("UPDATE up SET id = 7"), "8102");
    }
    Engine db(scratch.file());
    EXPECT_EQ(db.ask("INSERT up VALUES (3) SELECT SCOPE_IDENTITY() INSERT down VALUES (3) SELECT @@IDENTITY"),
              "102;-15");
    EXPECT_EQ(db.ask("SET IDENTITY_INSERT up ON INSERT up(id, v) VALUES (500, 4) SET IDENTITY_INSERT up OFF INSERT up "
                     "VALUES (5) SELECT IDENT_CURRENT('up')"),
              "501");
    EXPECT_EQ(db.ask("DBCC CHECKIDENT ('up', RESEED, 1000) INSERT up VALUES (6) SELECT MAX(id) FROM up"), "1001");
}

TEST(Schema, OtherConnectionsNoticeChanges) {
    Scratch scratch;
    Engine one(scratch.file());
    Engine two(scratch.file());
    one.run("CREATE TABLE t (a int) INSERT t VALUES (1)");
    one.run("CREATE PROCEDURE p AS SELECT * FROM t");
    EXPECT_EQ(two.ask("EXEC p SELECT * FROM t"), "1;1");
    one.run("ALTER TABLE t ADD b varchar(5) NOT NULL DEFAULT 'x'");
    EXPECT_EQ(two.ask("EXEC p SELECT * FROM t"), "1|x;1|x");
    one.run("ALTER PROCEDURE p AS SELECT COUNT(*) FROM t");
    EXPECT_EQ(two.ask("EXEC p"), "1");
    one.run("DROP TABLE t CREATE TABLE t (other varchar(10)) INSERT t VALUES ('new')");
    EXPECT_EQ(two.ask("SELECT * FROM t"), "new");
    one.run("DROP PROCEDURE p");
    EXPECT_EQ(two.errors("EXEC p"), "2812");
}

TEST(Schema, NamesOfSeveralDatabases) {
    Engine db;
    db.run("CREATE DATABASE INVENTORY");
    db.run("CREATE TABLE INVENTORY.dbo.item (code varchar(5)) INSERT inventory..ITEM VALUES ('i')");
    db.run("CREATE TABLE sys (company varchar(20)) INSERT sys VALUES ('hospital')");
    EXPECT_EQ(db.ask("SELECT company FROM sys SELECT COUNT(*) FROM sys.tables SELECT name FROM INVENTORY.sys.objects"),
              "hospital;1;item");
    EXPECT_EQ(db.errors("SELECT * FROM item"), "208");
    EXPECT_EQ(db.errors("SELECT * FROM nowhere..item"), "208");
    EXPECT_EQ(db.errors("USE nowhere"), "911");
    db.connection().setDefaultDatabase("inventory");
    EXPECT_EQ(db.ask("SELECT code, DB_NAME() FROM item"), "i|INVENTORY");
    db.run("CREATE PROCEDURE p AS SELECT code FROM item");
    db.connection().setDefaultDatabase("ACCOUNTING");
    EXPECT_EQ(db.ask("EXEC INVENTORY..p"), "i");
    EXPECT_EQ(
        db.ask("SELECT OBJECT_ID('INVENTORY..item') IS_1, OBJECT_ID('item') WHERE OBJECT_ID('INVENTORY..item') IS "
               "NOT NULL")
            .substr(1),
        "|NULL");
}

TEST(Schema, CompileOnlyFindsFaultsAndLeavesNothing) {
    Engine db;
    db.run("CREATE TABLE t (a int)");
    const auto numbers = [&](const std::string& batch) {
        std::string out;
        for (const DbError& e : db.services().compileOnly(batch))
            out += std::to_string(e.number) + "@" + std::to_string(e.line) + " ";
        return out;
    };
    EXPECT_EQ(
        numbers("CREATE PROCEDURE p @x int AS\nDECLARE @y int\nCREATE TABLE #w (k int)\nINSERT #w SELECT a FROM t\n"
                "IF @x > 1\n  SELECT nowhere FROM #w\nELSE\n  UPDATE missing SET a = 1\nEXEC nobody"),
        "207@6 208@8 2812@9 ");
    EXPECT_EQ(numbers("CREATE TABLE n (a int) INSERT n SELECT a FROM t SELECT b FROM n"), "207@1 ");
    EXPECT_EQ(numbers("SELECT FROM"), "156@1 ");
    EXPECT_EQ(numbers("SELECT @nobody"), "137@1 ");
    EXPECT_EQ(db.ask("SELECT COUNT(*) FROM sys.objects"), "1");
    EXPECT_EQ(db.errors("EXEC p 1"), "2812");
}

}  // namespace
}  // namespace kv
