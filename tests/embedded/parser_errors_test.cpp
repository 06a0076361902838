// Texts that are wrong: SQL Server's number, its words, and the line.

#include <gtest/gtest.h>

#include "platform/embedded/Parser.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

struct Wrong {
    const char* text;
    int number;
    int line;
    const char* words;  ///< a part of the message
};

const Wrong kWrong[] = {
    // words out of place
    {"select top 3 from t", 156, 1, "the keyword 'from'"},
    {"select a,\nfrom t", 156, 2, "'from'"},
    {"select a from t where", 156, 1, "'where'"},
    {"selec a from t", 156, 1, "'from'"},
    {"begin\n  foo 1\nend", 102, 2, "'foo'"},
    {"select a from t order a", 102, 1, "'a'"},
    {"select (1 + 2", 102, 1, "'2'"},
    {"select 1)", 102, 1, "')'"},
    {"update t a = 1", 102, 1, "'a'"},
    {"insert into t (a values (1)", 156, 1, "'values'"},
    {"select a from select", 156, 1, "'select'"},
    {"create table t (a int, primary int)", 102, 1, "'int'"},
    {"create table t (a int, constraint d default (0), b int)", 102, 1, "','"},
    {"create table t (a int, foreign key references b (c))", 156, 1, "'references'"},
    {"create table t (a int check not for x (a > 0))", 156, 1, "'not'"},
    {"declare c blue cursor for select 1", 102, 1, "'blue'"},
    {"declare a cursor x declare c cursor for select 4", 102, 1, "'x'"},
    {"if 1 = 1", 102, 1, "'1'"},
    {"begin select 1", 102, 1, "'1'"},
    {"begin end", 156, 1, "'end'"},
    {"select a.b.c.d.e from t", 117, 1, "maximum number of prefixes"},
    {"select cast(1 int)", 1035, 1, "expected 'AS'"},
    {"select 'a' 'b' 'c'", 102, 1, "'c'"},
    {"declare @a", 102, 1, "'@a'"},
    {"select * from (select 1 as x)", 102, 1, "')'"},
    {"select `a`", 102, 1, "'`'"},
    // texts that do not end
    {"select 1\nselect 'abc\nd", 105, 2, "after the character string 'abc\nd'"},
    {"select [abc", 105, 1, "'abc'"},
    {"select 1\nfrom []", 1038, 2, "missing or empty"},
    {"exec \"\" 1", 1038, 1, "missing or empty"},
    {"select 1 /* a\n/* b */", 113, 1, "Missing end comment mark"},
    // conditions and values
    {"select a from t where a", 4145, 1, "near 'a'"},
    {"if 1 select 2", 4145, 1, "near 'select'"},
    {"while (1) set @a = 1", 4145, 1, "near 'set'"},
    {"select a = 1 = 2 from t", 102, 1, "'='"},
    {"select (a = 1) from t", 102, 1, "'='"},
    {"select a from t where (a = 1) + 1 > 0", 102, 1, "'+'"},
    {"select case when 1 then 2 end", 4145, 1, "near 'then'"},
    // what may not stand where it stands
    {"select 1\ncreate view v as select 1 as a", 111, 2, "'CREATE VIEW' must be the first statement"},
    {"if 1 = 1 create procedure p as select 1", 111, 1, "'CREATE/ALTER PROCEDURE'"},
    {"return 5", 178, 1, "RETURN statement with a return value"},
    {"if 1 = 1 break", 135, 1, "BREAK"},
    {"continue", 136, 1, "CONTINUE"},
    {"select 1 with a as (select 1 as x) select * from a", 319, 1, "'with'"},
    {"set @a = 1\nwith a as (select 1 as x) select x from a", 319, 2, "must be terminated with a semicolon"},
    {"begin try select 1 end try select 2", 156, 1, "'select'"},
    {"rollback transaction throw", 102, 1, "'throw'"},
    {"select @a = 1, b from t", 141, 1, "must not be combined"},
    {"select @a = 1 union select 2", 10734, 1, "Variable assignment is not allowed"},
    {"select a from (select a from t order by a) as x", 1033, 1, "ORDER BY clause is invalid"},
    {"create view v as select a from t order by a", 1033, 1, "ORDER BY clause is invalid"},
    {"p 1, @b = 2, 3", 119, 1, "parameter number 3"},
    {"exec p 1 output", 179, 1, "OUTPUT option"},
    {"insert into t (a, b) values (1)", 109, 1, "more columns"},
    {"insert into t (a) values (1, 2)", 110, 1, "fewer columns"},
    {"insert into t values (1, 2), (3)", 10709, 1, "table value constructor"},
    // functions
    {"create function f () returns int as begin declare @a int end", 455, 1, "return statement"},
    {"create function f () returns int as begin return end", 455, 1, "return statement"},
    {"create function f () returns int as\nbegin\nselect 1\nreturn 1 end", 444, 3, "cannot return data"},
    {"create function f () returns int as begin delete t return 1 end", 443, 1, "'DELETE'"},
    {"create function f () returns @r table (a int) as begin return 1 end", 178, 1, "return value"},
};

TEST(ParserErrors, NumberWordsAndLine) {
    for (const Wrong& wrong : kWrong) {
        SCOPED_TRACE(wrong.text);
        try {
            parseBatch(wrong.text);
            ADD_FAILURE() << "parsed";
        } catch (const SqlError& e) {
            EXPECT_EQ(e.number, wrong.number) << e.text;
            EXPECT_EQ(e.line, wrong.line);
            EXPECT_NE(e.text.find(wrong.words), std::string::npos) << e.text;
        }
    }
}

TEST(ParserErrors, NamesHave128CharactersAtMost) {
    const std::string most(128, 'n');
    for (const std::string& name : {most, "[" + most + "]", "\"" + most + "\"", "[" + most.substr(1) + "]]]"})
        EXPECT_NO_THROW(parseBatch("select 1 as " + name)) << name;
    for (const std::string& name : {most + "n", "[" + most + "n]", "[" + most + "]]]", "'" + most + "n'"}) {
        try {
            parseBatch("select 1 as " + name);
            ADD_FAILURE() << name;
        } catch (const SqlError& e) {
            EXPECT_EQ(e.number, 103) << e.text;
        }
    }
}

TEST(ParserErrors, DeepNestingIsAnErrorAndNoCrash) {
    const std::size_t depth = 200'000;
    const std::string texts[] = {
        "select " + std::string(depth, '(') + "1" + std::string(depth, ')'),
        "select " + std::string(depth, '-') + "1",
        "select * from " + std::string(depth, '(') + "t",
    };
    for (std::string text : texts) {
        if (text.find("--") != std::string::npos)
            for (std::size_t i = 0; i < text.size(); ++i)
                if (text[i] == '-' && i % 2 == 0) text[i] = '~';
        EXPECT_THROW(parseBatch(text), SqlError);
    }
    std::string nots = "select 1 where ";
    for (std::size_t i = 0; i < depth; ++i) nots += "not ";
    EXPECT_THROW(parseBatch(nots + "1 = 1"), SqlError);
}

TEST(ParserErrors, NoPrefixOfAStatementCrashes) {
    const std::string text =
        "WITH a (x) AS (SELECT TOP (5) CASE WHEN b IN (1, 'two') THEN CAST(c AS decimal(9, 2)) ELSE -1.5 END FROM t AS "
        "u "
        "LEFT JOIN (VALUES (1)) AS v (n) ON u.n = v.n WHERE EXISTS (SELECT * FROM w)) UPDATE t SET @v = c = 1 FROM a; "
        "BEGIN TRY EXEC @r = p 1, @x = 'y', @z = @w OUTPUT END TRY BEGIN CATCH THROW END CATCH "
        "CREATE TABLE q (a int NOT NULL DEFAULT (0) CHECK (a > 0), FOREIGN KEY (a) REFERENCES b (c) ON DELETE CASCADE)";
    EXPECT_NO_THROW(parseBatch(text));
    for (std::size_t length = 0; length < text.size(); ++length) {
        try {
            parseBatch(std::string_view(text).substr(0, length));
        } catch (const SqlError& e) {
            EXPECT_GE(e.line, 1) << length;
        }
    }
}

}  // namespace
}  // namespace kv::tsql
