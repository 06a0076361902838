// Conversions between types: values, errors, texts of numbers and dates, one row a line.

#include <gtest/gtest.h>

#include "platform/embedded/ConvertStyles.h"
#include "platform/embedded/NumberText.h"
#include "tests/embedded/functions_support.h"

namespace kv::tsql {
namespace {

Type typed(const std::string& spec) { return conversionOfSpec("null>" + spec + ">x>>").to; }

/// A value of a type from its text, by the engine's own rules.
Datum valueOf(const std::string& text, const Type& type) {
    if (text == "NULL") return {};
    if (type.isText()) return Datum::of(text);
    return convertDatum(Datum::of(text), Type::varchar(kMaxLength), type, ConvertMode::Cast);
}

struct Row {
    const char* from;
    const char* value;
    const char* to;
    const char* expected;  ///< as the console prints it, or the number of an error after #
};

std::string outcome(const Row& row, ConvertMode mode, const std::string& where = {}) {
    const Type from = typed(row.from);
    const Type to = typed(row.to);
    try {
        const Datum out = convertDatum(valueOf(row.value, from), from, to, mode, where);
        if (out.isNull()) return "NULL";
        return to.isText() ? out.text : consoleText(out, to);
    } catch (const SqlError& error) {
        return "#" + std::to_string(error.number);
    }
}

TEST(Conversions, NumbersAndTexts) {
    constexpr Row kRows[] = {
        {"varchar(20)", "123", "int", "123"},
        {"varchar(20)", " -12 ", "int", "-12"},
        {"varchar(20)", "", "int", "0"},
        {"varchar(20)", "12.5", "int", "#245"},
        {"varchar(20)", "abc", "int", "#245"},
        {"varchar(20)", "99999999999", "int", "#248"},
        {"varchar(20)", "300", "tinyint", "#244"},
        {"varchar(20)", "abc", "bigint", "#8114"},
        {"varchar(20)", "true", "bit", "1"},
        {"varchar(20)", "FALSE", "bit", "0"},
        {"varchar(20)", "7", "bit", "1"},
        {"varchar(20)", "yes", "bit", "#245"},
        {"varchar(20)", "94.564", "decimal(3,1)", "94.6"},
        {"varchar(20)", "-12.1246", "decimal(3,1)", "-12.1"},
        {"varchar(20)", "999.96", "decimal(4,1)", "#8115"},
        {"varchar(20)", "", "decimal(4,1)", "#8114"},
        {"varchar(20)", "1e3", "decimal(9,1)", "#8114"},
        {"varchar(20)", "1e3", "float", "1000"},
        {"varchar(20)", "x", "float", "#8114"},
        {"varchar(20)", "$2.56789", "money", "2.5679"},
        {"varchar(20)", "-$1,234.5", "money", "-1234.5000"},
        {"varchar(20)", "₱10", "money", "10.0000"},
        {"varchar(20)", "", "money", "0.0000"},
        {"varchar(20)", "ten", "money", "#235"},
        {"varchar(20)", "5e2", "money", "#235"},
        {"varchar(30)", "922337203685477.58", "money", "#8115"},
        {"decimal(5,1)", "99.9", "int", "99"},
        {"decimal(5,1)", "-99.9", "int", "-99"},
        {"float", "99.9", "int", "99"},
        {"money", "1.56", "int", "2"},
        {"money", "-1.56", "int", "-2"},
        {"money", "-0.5", "int", "-1"},
        {"smallmoney", "214748.3647", "int", "214748"},
        {"smallmoney", "214748.3648", "int", "#8115"},
        {"int", "300", "tinyint", "#220"},
        {"int", "-1", "tinyint", "#220"},
        {"int", "40000", "smallint", "#220"},
        {"bigint", "3000000000", "int", "#8115"},
        {"float", "3e9", "int", "#232"},
        {"float", "1e30", "bigint", "#232"},
        {"decimal(12,0)", "3000000000", "int", "#8115"},
        {"int", "5", "bit", "1"},
        {"int", "123", "decimal(4,2)", "#8115"},
        {"int", "12", "decimal(4,2)", "12.00"},
        {"money", "23.12", "decimal(18,0)", "23"},
        {"money", "23.12", "decimal(10,4)", "23.1200"},
        {"decimal(9,6)", "1.234567", "money", "1.2346"},
        {"decimal(9,5)", "1.23455", "money", "1.2346"},
        {"float", "1.005", "decimal(9,2)", "1.01"},
        {"int", "123456", "varchar(3)", "*"},
        {"int", "123456", "nvarchar(3)", "#8115"},
        {"bigint", "123456", "varchar(3)", "#8115"},
        {"decimal(9,2)", "1234.50", "varchar(20)", "1234.50"},
        {"decimal(9,2)", "1234.50", "varchar(4)", "#8115"},
        {"decimal(9,2)", "-0.05", "varchar(20)", "-0.05"},
        {"money", "1234.565", "varchar(20)", "1234.57"},
        {"money", "1234.56", "varchar(3)", "#234"},
        {"float", "1234567", "varchar(20)", "1.23457e+006"},
        {"float", "123456.7", "varchar(20)", "123457"},
        {"float", "0.0001", "varchar(20)", "0.0001"},
        {"float", "0.00001", "varchar(20)", "1e-005"},
        {"float", "0.1", "varchar(20)", "0.1"},
        {"float", "1.79E+30", "float", "1.79E+30"},
        {"real", "0.1", "real", "0.1"},
        {"bit", "1", "varchar(5)", "1"},
        {"int", "-7", "char(4)", "-7  "},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(outcome(row, ConvertMode::Cast), row.expected) << row.from << " '" << row.value << "' to " << row.to;
    }
}

TEST(Conversions, TextKeepsToItsLength) {
    EXPECT_EQ(outcome({"varchar(20)", "abcdef", "varchar(3)", ""}, ConvertMode::Cast), "abc");
    EXPECT_EQ(outcome({"varchar(20)", "abcdef", "varchar(3)", ""}, ConvertMode::Variable), "abc");
    EXPECT_EQ(outcome({"varchar(20)", "abcdef", "varchar(3)", ""}, ConvertMode::Column, "JV.Name"), "#2628");
    EXPECT_EQ(outcome({"varchar(20)", "abcdef", "varchar(3)", ""}, ConvertMode::Column), "#8152");
    EXPECT_EQ(outcome({"varchar(20)", "abc   ", "varchar(3)", ""}, ConvertMode::Column, "JV.Name"), "abc");
    EXPECT_EQ(outcome({"varchar(20)", "Peña₱", "varchar(4)", ""}, ConvertMode::Cast), "Peña");
    EXPECT_EQ(outcome({"varchar(20)", "Peñ", "char(5)", ""}, ConvertMode::Column, "T.C"), "Peñ  ");
    EXPECT_EQ(outcome({"varchar(20)", "abc", "varchar(max)", ""}, ConvertMode::Column, "T.C"), "abc");
    try {
        convertDatum(Datum::of(std::string("abcdef")), Type::varchar(9), Type::varchar(3), ConvertMode::Column,
                     "JV.Name");
        FAIL();
    } catch (const SqlError& error) {
        EXPECT_EQ(error.text,
                  "String or binary data would be truncated in table 'JV', column 'Name'. Truncated value: 'abc'.");
    }
}

TEST(Conversions, DatesAndTexts) {
    constexpr Row kRows[] = {
        {"varchar(40)", "2024-03-01", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "20240301", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "240301", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "03/01/2024", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "3-1-24", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "3.1.1950", "datetime", "1950-03-01 00:00:00.000"},
        {"varchar(40)", "3/1/49", "datetime", "2049-03-01 00:00:00.000"},
        {"varchar(40)", "3/1/50", "datetime", "1950-03-01 00:00:00.000"},
        {"varchar(40)", "Mar 1 2024 1:05PM", "datetime", "2024-03-01 13:05:00.000"},
        {"varchar(40)", "March 1, 2024", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "1 March 2024", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "01-Mar-24", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "2024 Mar 1", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "Mar 2024", "datetime", "2024-03-01 00:00:00.000"},
        {"varchar(40)", "2024-03-01T10:20:30.123", "datetime", "2024-03-01 10:20:30.123"},
        {"varchar(40)", "2024-03-01 10:20:30.999", "datetime", "2024-03-01 10:20:31.000"},
        {"varchar(40)", "2024-12-31 23:59:59.999", "datetime", "2025-01-01 00:00:00.000"},
        {"varchar(40)", "2024-12-31 23:59:59.998", "datetime", "2024-12-31 23:59:59.997"},
        {"varchar(40)", "2024-03-01 10:20:30:5", "datetime", "2024-03-01 10:20:30.007"},
        {"varchar(40)", "10:20", "datetime", "1900-01-01 10:20:00.000"},
        {"varchar(40)", "4 pm", "datetime", "1900-01-01 16:00:00.000"},
        {"varchar(40)", "10:20 2024-03-01", "datetime", "2024-03-01 10:20:00.000"},
        {"varchar(40)", "12:30:00AM", "datetime", "1900-01-01 00:30:00.000"},
        {"varchar(40)", "", "datetime", "1900-01-01 00:00:00.000"},
        {"varchar(40)", "2024", "datetime", "2024-01-01 00:00:00.000"},
        {"varchar(40)", "1752-12-31", "datetime", "#242"},
        {"varchar(40)", "2024-13-45", "datetime", "#242"},
        {"varchar(40)", "2024-02-30", "datetime", "#242"},
        {"varchar(40)", "2024-03-01 25:00", "datetime", "#242"},
        {"varchar(40)", "9999-12-31 23:59:59.999", "datetime", "#242"},
        {"varchar(40)", "10000-00-00", "datetime", "#241"},
        {"varchar(40)", "2024-03-01 10:20:30.1234", "datetime", "#241"},
        {"varchar(40)", "yesterday", "datetime", "#241"},
        {"varchar(40)", "2024-03-01 2024-03-01", "datetime", "#241"},
        {"varchar(40)", "2024-3-1x", "datetime", "#241"},
        {"varchar(40)", "3/1-2024", "datetime", "#241"},
        {"varchar(40)", "2024-02-30", "date", "#241"},
        {"varchar(40)", "1752-12-31", "date", "1752-12-31"},
        {"varchar(40)", "08/25/2017", "date", "2017-08-25"},
        {"varchar(40)", "2024-03-01 10:20:30", "date", "2024-03-01"},
        {"varchar(40)", "2024-03-01 10:20:29.998", "smalldatetime", "2024-03-01 10:20:00"},
        {"varchar(40)", "2024-03-01 10:20:29.999", "smalldatetime", "2024-03-01 10:21:00"},
        {"varchar(40)", "x", "smalldatetime", "#295"},
        {"varchar(40)", "1899-12-31", "smalldatetime", "#242"},
        {"varchar(40)", "2024-03-01 10:20:30.1", "datetime2(7)", "2024-03-01 10:20:30.1000000"},
        {"varchar(40)", "2024-03-01 10:20:30.16", "datetime2(1)", "2024-03-01 10:20:30.2"},
        {"datetime", "2024-03-01 10:20:30", "date", "2024-03-01"},
        {"date", "2024-03-01", "datetime", "2024-03-01 00:00:00.000"},
        {"datetime", "2017-08-05 13:01:59", "varchar(30)", "Aug  5 2017  1:01PM"},
        {"datetime", "2017-08-25 00:00:00", "varchar(11)", "Aug 25 2017"},
        {"date", "2017-08-25", "varchar(30)", "2017-08-25"},
        {"datetime", "1900-01-02 12:00:00", "float", "1.5"},
        {"datetime", "1900-01-02 12:00:00", "int", "2"},
        {"datetime", "1900-01-02 11:59:59", "int", "1"},
        {"float", "1.5", "datetime", "1900-01-02 12:00:00.000"},
        {"varchar(40)", "6f9619ff-8b86-d011-b42d-00c04fc964ff", "uniqueidentifier",
         "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
        {"varchar(40)", "6f9619ff-8b86", "uniqueidentifier", "#8169"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(outcome(row, ConvertMode::Cast), row.expected) << row.from << " '" << row.value << "' to " << row.to;
    }
}

TEST(Conversions, StylesOfDates) {
    struct StyleRow {
        int style;
        const char* text;
    };
    constexpr StyleRow kRows[] = {
        {0, "Aug  5 2017  1:01PM"},
        {1, "08/05/17"},
        {2, "17.08.05"},
        {3, "05/08/17"},
        {4, "05.08.17"},
        {5, "05-08-17"},
        {6, "05 Aug 17"},
        {7, "Aug 05, 17"},
        {8, "13:01:59"},
        {10, "08-05-17"},
        {11, "17/08/05"},
        {12, "170805"},
        {100, "Aug  5 2017  1:01PM"},
        {101, "08/05/2017"},
        {102, "2017.08.05"},
        {103, "05/08/2017"},
        {104, "05.08.2017"},
        {105, "05-08-2017"},
        {106, "05 Aug 2017"},
        {107, "Aug 05, 2017"},
        {108, "13:01:59"},
        {109, "Aug  5 2017  1:01:59:007PM"},
        {110, "08-05-2017"},
        {111, "2017/08/05"},
        {112, "20170805"},
        {113, "05 Aug 2017 13:01:59:007"},
        {114, "13:01:59:007"},
        {120, "2017-08-05 13:01:59"},
        {121, "2017-08-05 13:01:59.007"},
        {126, "2017-08-05T13:01:59.007"},
        {23, "2017-08-05"},
    };
    const Moment moment{daysOf(2017, 8, 5), ((13 * 60 + 1) * 60 + 59) * 1000 + 7};
    for (const StyleRow& row : kRows)
        EXPECT_EQ(momentInStyle(moment, Type::datetime(), row.style), row.text) << row.style;
    EXPECT_EQ(momentInStyle({moment.days, 0}, Type::datetime(), 126), "2017-08-05T00:00:00");
    EXPECT_EQ(momentInStyle({moment.days, 0}, Type::datetime(), 100), "Aug  5 2017 12:00AM");
    EXPECT_EQ(momentInStyle(moment, Type::date(), 100), "Aug  5 2017");
    EXPECT_EQ(momentInStyle(moment, Type::date(), 120), "2017-08-05");
    EXPECT_EQ(errorOf([&] { momentInStyle(moment, Type::datetime(), 99); }), 281);
    EXPECT_EQ(errorOf([&] { momentInStyle(moment, Type::date(), 108); }), 9809);
}

TEST(Conversions, ConvertWritesStyleAndTypeIntoTheStatement) {
    FunctionBench bench;
    const auto convert = [&](const char* to, const char* sql, const char* from, const char* style,
                             bool tryOnly = false) {
        const std::vector<CallArgument> args = {FunctionBench::argument(sql, typed(from))};
        std::optional<CallArgument> styleArg;
        if (*style) styleArg = FunctionBench::argument(style, Type::integer(), style[0] == '(' ? "" : style);
        const CallResult made = emitConvert(typed(to), args[0], FunctionBench::plain(args), styleArg, tryOnly);
        return consoleText(bench.value(made.sql), made.type);
    };
    EXPECT_EQ(convert("varchar(30)", "1234567.891", "money", "1"), "1,234,567.89");
    EXPECT_EQ(convert("varchar(30)", "-1234.5", "money", "1"), "-1,234.50");
    EXPECT_EQ(convert("varchar(30)", "-123.5", "money", "1"), "-123.50");
    EXPECT_EQ(convert("varchar(30)", "1234567.891", "money", "2"), "1234567.8910");
    EXPECT_EQ(convert("varchar(30)", "1234567.891", "money", "0"), "1234567.89");
    EXPECT_EQ(convert("varchar(30)", "1234567.891", "money", "(1)"), "1,234,567.89");
    EXPECT_EQ(convert("date", "'25/08/2017'", "varchar(10)", "103"), "2017-08-25");
    EXPECT_EQ(convert("varchar(64)", "x'00ff10'", "varbinary(3)", "2"), "00FF10");
    EXPECT_EQ(convert("varchar(64)", "x'00ff10'", "varbinary(3)", "1"), "0x00FF10");
    EXPECT_EQ(convert("varbinary(8)", "'0x00ff'", "varchar(8)", "1"), "0x00FF");
    EXPECT_EQ(convert("varbinary(8)", "258", "int", ""), "0x00000102");
    EXPECT_EQ(convert("int", "'x'", "varchar(1)", "", true), "NULL");
    EXPECT_EQ(convert("int", "'12'", "varchar(2)", "", true), "12");
    EXPECT_EQ(errorOf([&] { convert("varchar(30)", "'2017-08-25 00:00:00.000'", "datetime", "99"); }), 281);
    EXPECT_EQ(errorOf([&] { convert("date", "5", "int", ""); }), 529);
}

TEST(Conversions, ImplicitOnesAreRefusedByNumber) {
    EXPECT_EQ(errorOf([] { conversionSql("x", Type::money(), Type::varchar(10), ConvertMode::Column, "T.C"); }), 257);
    EXPECT_EQ(errorOf([] { conversionSql("x", Type::datetime(), Type::integer(), ConvertMode::Column, "T.C"); }), 257);
    EXPECT_EQ(errorOf([] { conversionSql("x", Type::integer(), Type::date(), ConvertMode::Column, "T.C"); }), 206);
    EXPECT_EQ(conversionSql("x", Type::varchar(5), Type::varchar(10), ConvertMode::Column, "T.C"), "x");
    EXPECT_EQ(conversionSql("x", Type::integer(), Type::money(), ConvertMode::Column, "T.C"), "CAST(x AS REAL)");
    EXPECT_EQ(conversionSql("x", Type::of(Kind::SmallMoney), Type::money(), ConvertMode::Cast), "x");
    const Conversion kept{Type::decimal(9, 2), Type::varchar(kMaxLength), ConvertMode::Column, 3, true, "A>B.C'D"};
    const Conversion back = conversionOfSpec(conversionSpec(kept));
    EXPECT_EQ(back.from, kept.from);
    EXPECT_EQ(back.to, kept.to);
    EXPECT_EQ(back.mode, kept.mode);
    EXPECT_EQ(back.style, kept.style);
    EXPECT_EQ(back.tryOnly, kept.tryOnly);
    EXPECT_EQ(back.where, kept.where);
}

TEST(Types, NamesAndRulesOfArguments) {
    EXPECT_EQ(typeName(*typeByName("VARCHAR", {}, {}, TypePlace::Cast)), "varchar(30)");
    EXPECT_EQ(typeName(*typeByName("varchar", {}, {}, TypePlace::Declaration)), "varchar(1)");
    EXPECT_EQ(typeName(*typeByName("varchar", kMaxLength, {}, TypePlace::Cast)), "varchar(max)");
    EXPECT_EQ(typeName(*typeByName("numeric", {}, {}, TypePlace::Cast)), "decimal(18,0)");
    EXPECT_EQ(typeName(*typeByName("float", 24, {}, TypePlace::Cast)), "real");
    EXPECT_FALSE(typeByName("xml", {}, {}, TypePlace::Cast));
    EXPECT_EQ(errorOf([] { typeByName("numeric", 39, 10, TypePlace::Cast); }), 2750);
    EXPECT_EQ(errorOf([] { typeByName("numeric", 5, 6, TypePlace::Cast); }), 1002);
    EXPECT_EQ(errorOf([] { typeByName("varchar", 8001, {}, TypePlace::Cast); }), 131);
    EXPECT_EQ(errorOf([] { typeByName("int", 4, {}, TypePlace::Cast); }), 2716);
    EXPECT_EQ(typeName(commonType(Type::money(), Type::decimal(9, 6))), "decimal(21,6)");
    EXPECT_EQ(typeName(commonType(Type::decimal(7, 2), Type::decimal(18, 4))), "decimal(18,4)");
    EXPECT_EQ(typeName(commonType(Type::varchar(5), Type::integer())), "int");
    EXPECT_EQ(typeName(commonType(Type::text(Kind::Char, 5), Type::nvarchar(3))), "nvarchar(5)");
    EXPECT_EQ(typeName(commonType(Type::date(), Type::datetime())), "datetime");
    EXPECT_EQ(errorOf([] { commonType(Type::date(), Type::integer()); }), 206);
    EXPECT_EQ(typeName(arithmeticType('/', Type::decimal(38, 10), Type::decimal(38, 10))), "decimal(38,6)");
    EXPECT_EQ(typeName(arithmeticType('*', Type::decimal(38, 10), Type::decimal(38, 10))), "decimal(38,6)");
    EXPECT_EQ(typeName(integerLiteralType("2147483647")), "int");
    EXPECT_EQ(typeName(integerLiteralType("2147483648")), "decimal(10,0)");
    EXPECT_EQ(typeName(decimalLiteralType("0.05")), "decimal(2,2)");
}

}  // namespace
}  // namespace kv::tsql
