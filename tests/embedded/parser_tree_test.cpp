// What the tree says: precedence, the readings of doubtful texts, literals that are pinned, and refusals by name.

#include <gtest/gtest.h>

#include "platform/embedded/Parser.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/Refusals.h"

namespace kv::tsql {
namespace {

std::string reprint(std::string_view text) {
    std::string printed = print(parseBatch(text).statements);
    while (!printed.empty() && (printed.back() == '\n' || printed.back() == ';')) printed.pop_back();
    return printed;
}

TEST(ParserTree, PrecedenceAndAssociation) {
    struct Case {
        const char* text;
        const char* printed;
    };
    const Case cases[] = {
        {"select a + b * c - d", "SELECT (a + (b * c)) - d"},
        {"select a % b / c", "SELECT (a % b) / c"},
        {"select a & b + c | d", "SELECT ((a & b) + c) | d"},
        {"select -a * b", "SELECT (-a) * b"},
        {"select a where x = 1 or y = 2 and not z = 3", "SELECT a WHERE (x = 1) OR ((y = 2) AND (NOT (z = 3)))"},
        {"select a where not x = 1 and y = 2", "SELECT a WHERE (NOT (x = 1)) AND (y = 2)"},
        {"select a where x between 1 and 2 and y = 3", "SELECT a WHERE (x BETWEEN 1 AND 2) AND (y = 3)"},
        {"select 1 union select 2 intersect select 3", "SELECT 1 UNION (SELECT 2 INTERSECT SELECT 3)"},
        {"select 1 union select 2 except select 3", "(SELECT 1 UNION SELECT 2) EXCEPT SELECT 3"},
        {"select * from a join b on a.x = b.x left join c on c.x = b.x",
         "SELECT * FROM a INNER JOIN b ON a.x = b.x LEFT JOIN c ON c.x = b.x"},
        {"select * from a join b join c on b.x = c.x on a.x = b.x",
         "SELECT * FROM a INNER JOIN (b INNER JOIN c ON b.x = c.x) ON a.x = b.x"},
        {"if a = 1 if b = 2 print 1 else print 2", "IF a = 1\nIF b = 2\nPRINT 1;\nELSE\nPRINT 2"},
    };
    for (const Case& c : cases) EXPECT_EQ(reprint(c.text), c.printed) << c.text;
}

TEST(ParserTree, DoubtfulTextsReadAsOnTheServer) {
    struct Case {
        const char* why;
        const char* text;
        const char* printed;
    };
    const Case cases[] = {
        {"a word that is not reserved is an alias", "select 1 throw", "SELECT 1 AS throw"},
        {"no comma: an alias", "select a b from t", "SELECT a AS b FROM t"},
        {"LEFT is a function before a parenthesis", "select left(a, 1) from t left join u on a = b",
         "SELECT left(a, 1) FROM t LEFT JOIN u ON a = b"},
        {"a hint after a table", "select * from t (nolock)", "SELECT * FROM t WITH (NOLOCK)"},
        {"an argument after a function", "select * from f (nolocks)", "SELECT * FROM f(nolocks)"},
        {"the first name of a batch is a procedure", "sp_help GL", "EXEC sp_help 'GL'"},
        {"a negative argument", "exec p -5", "EXEC p -5"},
        {"ELSE belongs to the nearest IF after a semicolon", "if a = 1 print 1; else print 2",
         "IF a = 1\nPRINT 1;\nELSE\nPRINT 2"},
        {"a comparison apart", "select a where b < = 1", "SELECT a WHERE b <= 1"},
        {"a query in doubled parentheses", "select ((select 1)), ((select 2) + 3)",
         "SELECT (SELECT 1), (SELECT 2) + 3"},
        {"an arm in parentheses", "select a where b in ((select 1) union (select 2))",
         "SELECT a WHERE b IN (SELECT 1 UNION SELECT 2)"},
        {"a variable takes a column's new value", "update t set @a = b = c", "UPDATE t SET @a = b = c"},
        {"or an expression", "update t set @a = b + c", "UPDATE t SET @a = b + c"},
        {"a database without a schema", "select * from A..b, sys.objects", "SELECT * FROM A..b, sys.objects"},
        {"COMMIT does not take the next statement", "commit select 1", "COMMIT TRANSACTION;\nSELECT 1"},
        {"RETURN does not take the next statement", "return select 1", "RETURN;\nSELECT 1"},
        {"permissions and what only tunes a server are passed over",
         "grant select on t to [public], u with grant option select 1 from t with (index (ix)) option (maxrecursion 9) "
         "revoke execute on p from u create index ix on t (a) with (fillfactor = 90) on [primary]",
         "CHECKPOINT;\nSELECT 1 FROM t WITH (INDEX);\nCHECKPOINT;\nCREATE INDEX ix ON t (a)"},
        {"a named foreign key behind a column without a comma is the table's",
         "create table t (a int constraint f foreign key (b) references u (c), b int)",
         "CREATE TABLE t (a int, b int, CONSTRAINT f FOREIGN KEY (b) REFERENCES u(c))"},
        {"IIF is CASE", "select iif(a = 1, 2, 3)", "SELECT CASE WHEN a = 1 THEN 2 ELSE 3 END"},
    };
    for (const Case& c : cases) EXPECT_EQ(reprint(c.text), c.printed) << c.why;
}

TEST(ParserTree, PinsTheLiteralsThatItReads) {
    const Batch batch = parseBatch(
        "select cast(a as varchar(50)), convert(varchar, d, 101), 'x' as 'head', 7 from t where b = 5 order by 2");
    const std::vector<Pin> wanted = {{0, "50"}, {1, "101"}, {3, "head"}, {6, "2"}};
    EXPECT_EQ(batch.pins, wanted);
    EXPECT_EQ(batch.literalCount, 7);
    EXPECT_TRUE(batch.cacheable);
    EXPECT_EQ(parseBatch("create table #t (a varchar(10) default 'x', b int check (b > 3))").pins.size(), 3u);
}

TEST(ParserTree, AModuleKeepsItsSourceAndNoParameters) {
    const std::string source = "-- what it does\ncreate proc p @a int = 5 as\nselect 'x', @a";
    const Batch batch = parseBatch(source);
    EXPECT_FALSE(batch.cacheable);
    const auto* procedure = as<CreateProcedureStmt>(batch.statements.at(0));
    ASSERT_TRUE(procedure);
    EXPECT_EQ(procedure->source, source);
    EXPECT_EQ(procedure->body.at(0)->pos.line, 3u);
    const auto* select = as<SelectStmt>(procedure->body.at(0));
    EXPECT_EQ(as<LiteralExpr>(select->query->first().items.at(0).expr)->index, -1);
}

TEST(ParserTree, StatementsKnowWhereTheyBeginAndEnd) {
    const std::string text = "select 1;\n  delete t where a = 2 print 'x'";
    const Batch batch = parseBatch(text);
    const char* const wanted[] = {"select 1", "delete t where a = 2", "print 'x'"};
    ASSERT_EQ(batch.statements.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const Stmt& s = *batch.statements[i];
        EXPECT_EQ(text.substr(s.pos.offset, s.endOffset - s.pos.offset), wanted[i]);
    }
}

TEST(Refusals, NamesEachConstructWithItsPlace) {
    struct Case {
        const char* text;
        const char* construct;
        unsigned line, column;
    };
    const Case cases[] = {
        {"select 1\nmerge t using u on t.a = u.a when matched then delete;", "MERGE", 2, 1},
        {"waitfor delay '00:00:01'", "WAITFOR", 1, 1},
        {"goto done", "GOTO", 1, 1},
        {"select a from t for xml path('x')", "FOR XML", 1, 21},
        {"select top 10 percent a from t", "TOP ... PERCENT", 1, 8},
        {"select top 1 with ties a from t order by a", "TOP ... WITH TIES", 1, 8},
        {"create table t (a int, b as a + 1)", "a computed column", 1, 24},
        {"declare @x xml", "the type xml", 1, 12},
        {"select cast(a as time) from t", "the type time", 1, 18},
        {"create procedure p @t dbo.Rows readonly as select 1", "a table-valued parameter", 1, 20},
        {"select a collate Latin1_General_BIN from t", "the collation Latin1_General_BIN", 1, 10},
        {"select * from other.A.dbo.t", "a linked server", 1, 15},
        {"create procedure p as use A", "USE inside a module", 1, 23},
        {"set rowcount 5", "SET ROWCOUNT", 1, 1},
        {"set dateformat dmy", "SET DATEFORMAT DMY", 1, 1},
        {"create sequence s", "CREATE SEQUENCE", 1, 1},
        {"bulk insert t from 'x'", "BULK INSERT", 1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const std::vector<Refusal> found = findRefusals(parseBatch(c.text).statements);
        ASSERT_FALSE(found.empty());
        EXPECT_EQ(found[0].construct, c.construct);
        EXPECT_EQ(found[0].pos.line, c.line);
        EXPECT_EQ(found[0].pos.column, c.column);
        EXPECT_THROW(refuseUnsupported(parseBatch(c.text).statements), SqlError);
    }
}

TEST(Refusals, RefusesWhatTheTreeHasNoPlaceForWhileParsing) {
    for (const char* text :
         {"select * from t pivot (sum(a) for b in ([1])) p", "select next value for s",
          "select a from t group by rollup (a)", "select * from openquery(x, 'y')", "exec ('x') at other",
          "select @x.value('.', 'int')", "select a from [@t]", "set language '=+ b'", "exec \"@p\" 1"}) {
        SCOPED_TRACE(text);
        try {
            parseBatch(text);
            ADD_FAILURE() << "parsed";
        } catch (const SqlError& e) {
            EXPECT_GE(e.number, 40000) << e.text;
        }
    }
}

TEST(Refusals, TakesWhatOnlyLooksLikeIt) {
    for (const char* text : {"select top 100 percent a from t order by a", "set dateformat mdy", "set rowcount 0",
                             "select a collate database_default from t", "set ansi_nulls on"})
        EXPECT_TRUE(findRefusals(parseBatch(text).statements).empty()) << text;
}

}  // namespace
}  // namespace kv::tsql
