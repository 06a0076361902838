// The composer: texts as the server's contract has them, and values that stay values.
#include "platform/data/Statement.h"

#include <gtest/gtest.h>

#include "platform/base/Error.h"

namespace kv {
namespace {

using namespace std::string_literals;

long errorOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const Error& e) {
        return e.number;
    }
    return 0;
}

TEST(Statement, CallsHaveABlankAndTheirSeparator) {
    EXPECT_EQ(call("sp_Insert_JV2").text(" 1 ").text("JV-1").text("").text("2024").str(),
              "sp_Insert_JV2 '1', 'JV-1', '', '2024'");
    EXPECT_EQ(call("sp_Load_BatchDT").separator(",").text("JV").text("17").str(), "sp_Load_BatchDT 'JV','17'");
    EXPECT_EQ(call("ACCOUNTING..sp_X").number(5).amount(Money::fromUnits(10'050)).null().flag(true).more(" ").str(),
              "ACCOUNTING..sp_X 5, 1.01, NULL, 1 ");
    EXPECT_EQ(call("sp_Now").str(), "sp_Now");
    EXPECT_EQ(call("sp_D").date(Date(2024, 3, 31)).date(Date(2024, 3, 31), "M/d/yyyy").str(),
              "sp_D '2024-03-31', '3/31/2024'");
}

TEST(Statement, TemplatesKeepTheirBlanksAndTheirApostrophes) {
    EXPECT_EQ(sql("select dbo.fn_AccountTitle( '{}','{}') as Description from [SYS]").text("1101").text("").str(),
              "select dbo.fn_AccountTitle( '1101','') as Description from [SYS]");
    EXPECT_EQ(sql("Select Count(*) RecCount from {} where Description like '{}%'").name("GLGroup").text("it's").str(),
              "Select Count(*) RecCount from GLGroup where Description like 'it''s%'");
    // a place outside of apostrophes brings its own for what needs them
    EXPECT_EQ(sql("UPDATE T SET a = {}, b = {}, c = {}, d = {}")
                  .text("x'y")
                  .amount(Money::whole(-3))
                  .date(Date(2024, 1, 2))
                  .null()
                  .str(),
              "UPDATE T SET a = 'x''y', b = -3.00, c = '2024-01-02', d = NULL");
    // "{}" in a value is no place
    EXPECT_EQ(sql("'{}', '{}'").text("{}").text("b").str(), "'{}', 'b'");
    EXPECT_EQ(sql("({}").number(1).more(", {})").number(2).str(), "(1, 2)");
}

TEST(Statement, PlacesAndValuesMustMatch) {
    EXPECT_EQ(errorOf([] { sql("a = '{}'").text("1").text("2"); }), 5);
    EXPECT_EQ(errorOf([] { sql("a = '{}' and b = '{}'").text("1").str(); }), 5);
}

TEST(Statement, NamesAreNamesOnly) {
    for (const char* good : {"JV", "ACCOUNTING..SYS", "#Lines", "dbo.[Order Lines]", "tb_1"})
        EXPECT_EQ(sqlName(good), good);
    for (const char* bad : {"", "JV; DROP TABLE JV", "JV--", "a b", "JV'", "[a", "[a]]b", "x\n", "a/*", "[[a]"}) {
        EXPECT_EQ(errorOf([&] { sqlName(bad); }), 5) << bad;
    }
}

TEST(Statement, AmountsAndNumbersAreExact) {
    EXPECT_EQ(call("p").amount(Money::fromUnits(9223372036854775807)).str(), "p 922337203685477.58");
    EXPECT_EQ(call("p").amount(Money::fromUnits(-50)).str(), "p -0.01");  // halves away from zero
    EXPECT_EQ(call("p").number(0.1).number(1e300).number(-12).number(9007199254740993LL).str(),
              "p 0.1, 1e+300, -12, 9007199254740993");
    EXPECT_EQ(errorOf([] { call("p").number(1.0 / 0.0); }), 6);
}

TEST(SQLString, TrimsBlanksAndDoublesApostrophes) {
    EXPECT_EQ(SQLString(" O'Brien "), "O''Brien");
    EXPECT_EQ(SQLString("''"), "''''");
    EXPECT_EQ(SQLString("\tx\n"), "\tx\n");  // only spaces go
    EXPECT_EQ(SQLString("   "), "");
    EXPECT_EQ(SQLString("Peña “x” 🏥"), "Peña “x” 🏥");
}

TEST(SQLString, LeavesNothingThatADriverCouldMisread) {
    EXPECT_EQ(escaped("a\0b"s), "ab");
    EXPECT_EQ(escaped("\xC3'"), "\xEF\xBF\xBD''");  // half a character must not swallow the apostrophe
    EXPECT_EQ(escaped("\xE2\x80'"), "\xEF\xBF\xBD\xEF\xBF\xBD''");
    EXPECT_EQ(escaped("\xC0\xA7"), "\xEF\xBF\xBD\xEF\xBF\xBD");  // an apostrophe in a longer form than allowed
    EXPECT_EQ(escaped("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(escaped("\xF4\x90\x80\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(SqlLiteral, WritesEachTypeUnambiguously) {
    EXPECT_EQ(sqlLiteral(Value()), "NULL");
    EXPECT_EQ(sqlLiteral(Value(true)), "1");
    EXPECT_EQ(sqlLiteral(Value(-5)), "-5");
    EXPECT_EQ(sqlLiteral(Value(0.012345)), "0.012345");
    EXPECT_EQ(sqlLiteral(Value(Money::fromUnits(12'345))), "1.2345");
    EXPECT_EQ(sqlLiteral(Value(" a'b ")), "' a''b '");
    EXPECT_EQ(sqlLiteral(Value(Date(2024, 3, 1))), "'2024-03-01'");
    EXPECT_EQ(sqlLiteral(Value(Date(2024, 3, 1, 8, 5, 9, 7))), "'2024-03-01T08:05:09.007'");
}

}  // namespace
}  // namespace kv
