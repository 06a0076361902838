// Built-in functions of text, numbers and dates, collation, LIKE and messages: worked values, one row a line.

#include <gtest/gtest.h>

#include "platform/base/Paths.h"
#include "platform/embedded/Collation.h"
#include "platform/embedded/DateTime.h"
#include "platform/embedded/Errors.h"
#include "platform/embedded/Like.h"
#include "tests/embedded/functions_support.h"

namespace kv::tsql {
namespace {

/// An argument written as a T-SQL constant: 'text', 12, 12.5, NULL, $5.25, a bare word (date part), or date'...'.
CallArgument constant(std::string_view text) {
    const std::string sql(text);
    if (text == "NULL") return FunctionBench::argument("NULL", Type{});
    if (text.substr(0, 2) == "N'") {
        return FunctionBench::argument(sql.substr(1), Type::nvarchar(static_cast<int>(text.size()) - 3),
                                       sql.substr(2, sql.size() - 3));
    }
    if (text[0] == '\'') {
        return FunctionBench::argument(sql, Type::varchar(std::max(1, static_cast<int>(text.size()) - 2)));
    }
    if (text.substr(0, 4) == "date") {
        const Type type = text.size() > 18 ? Type::datetime() : Type::date();
        return FunctionBench::argument("'" + dateFromText(text.substr(5, text.size() - 6), type) + "'", type);
    }
    if (text[0] == '$') return FunctionBench::argument(sql.substr(1), Type::money());
    if (text[0] == 'f') return FunctionBench::argument(sql.substr(1), Type::floating());
    if ((text[0] >= '0' && text[0] <= '9') || text[0] == '-') {
        const std::string_view digits = text[0] == '-' ? text.substr(1) : text;
        const bool whole = digits.find('.') == std::string_view::npos;
        return FunctionBench::argument(sql, whole ? integerLiteralType(digits) : decimalLiteralType(digits), sql);
    }
    CallArgument part;
    part.literal = sql;
    part.isLiteral = true;
    return part;
}

struct Row {
    const char* name;
    std::vector<const char*> args;
    const char* expected;  ///< or #number of an error
};

void hold(const std::vector<Row>& rows) {
    FunctionBench bench;
    bench.context().statementNow = "2024-03-05 14:07:09.043";
    for (const Row& row : rows) {
        std::vector<CallArgument> args;
        std::string shown = row.name;
        for (const char* arg : row.args) {
            args.push_back(constant(arg));
            shown += std::string(" ") + arg;
        }
        std::string got;
        try {
            got = bench.call(row.name, args);
        } catch (const SqlError& error) {
            got = "#" + std::to_string(error.number);
        }
        EXPECT_EQ(got, row.expected) << shown;
    }
}

TEST(TextFunctions, WorkedValues) {
    hold({
        {"LEN", {"'123   '"}, "3"},
        {"LEN", {"'   123   '"}, "6"},
        {"LEN", {"'Peña'"}, "4"},
        {"LEN", {"1234"}, "4"},
        {"LEN", {"NULL"}, "NULL"},
        {"LEN", {"'a'", "'b'"}, "#174"},
        {"DATALENGTH", {"'Peña '"}, "5"},
        {"DATALENGTH", {"N'Peña'"}, "8"},
        {"DATALENGTH", {"12"}, "4"},
        {"LEFT", {"'AbdefGhi'", "2"}, "Ab"},
        {"LEFT", {"'ñandú'", "1"}, "ñ"},
        {"LEFT", {"'abc'", "2147483646"}, "abc"},
        {"LEFT", {"'abc'", "-2"}, "#537"},
        {"RIGHT", {"'AbdefGhi'", "2"}, "hi"},
        {"RIGHT", {"'Peña'", "2"}, "ña"},
        {"RIGHT", {"'abc'", "-2"}, "#536"},
        {"SUBSTRING", {"'hello'", "0", "3"}, "he"},
        {"SUBSTRING", {"'hello'", "-1", "3"}, "h"},
        {"SUBSTRING", {"'hello'", "-10", "3"}, ""},
        {"SUBSTRING", {"'hello'", "-4", "7"}, "he"},
        {"SUBSTRING", {"'hello'", "2", "100"}, "ello"},
        {"SUBSTRING", {"'hello'", "100", "3"}, ""},
        {"SUBSTRING", {"'hello'", "1", "-3"}, "#537"},
        {"SUBSTRING", {"'Peñaloza'", "3", "2"}, "ña"},
        {"CHARINDEX", {"'WORLD'", "'hello world'"}, "7"},
        {"CHARINDEX", {"'is'", "'This is a string'", "4"}, "6"},
        {"CHARINDEX", {"'world'", "'hello world'", "8"}, "0"},
        {"CHARINDEX", {"'hello'", "'hello world'", "-1"}, "1"},
        {"CHARINDEX", {"'A'", "'ñÑa'"}, "3"},
        {"CHARINDEX", {"'Ñ'", "'peña'"}, "3"},
        {"CHARINDEX", {"''", "'abc'"}, "0"},
        {"PATINDEX", {"'%[0-9]%'", "'abc7d'"}, "4"},
        {"PATINDEX", {"'%end'", "'the end'"}, "5"},
        {"PATINDEX", {"'the%'", "'the end'"}, "1"},
        {"PATINDEX", {"'end'", "'the end'"}, "0"},
        {"REPLACE", {"'abcdedEDEabcd'", "'de'", "'##'"}, "abc######abcd"},
        {"REPLACE", {"'PEÑA peña'", "'ñ'", "'n'"}, "PEnA pena"},
        {"REPLACE", {"'abc'", "''", "'x'"}, "abc"},
        {"REPLACE", {"'abc'", "'b'", "NULL"}, "NULL"},
        {"UPPER", {"'peña ß é'"}, "PEÑA ß É"},
        {"LOWER", {"'PEÑA É'"}, "peña é"},
        {"LTRIM", {"'  a '"}, "a "},
        {"RTRIM", {"'  a '"}, "  a"},
        {"TRIM", {"'  a '"}, "a"},
        {"REPLICATE", {"'ab'", "3"}, "ababab"},
        {"REPLICATE", {"'ab'", "-1"}, "NULL"},
        {"REPLICATE", {"'ab'", "0"}, ""},
        {"SPACE", {"3"}, "   "},
        {"REVERSE", {"'Peña'"}, "añeP"},
        {"STUFF", {"'AbdefGhi'", "2", "9", "'xy'"}, "Axy"},
        {"STUFF", {"'AbdefGhi'", "8", "1", "'xy'"}, "AbdefGhxy"},
        {"STUFF", {"'AbdefGhi'", "9", "1", "'xy'"}, "NULL"},
        {"STUFF", {"'AbdefGhi'", "1", "0", "'xy'"}, "xyAbdefGhi"},
        {"STUFF", {"'ab'", "2", "1", "NULL"}, "a"},
        {"STR", {"1234.56", "8", "2"}, " 1234.56"},
        {"STR", {"1234.56", "6", "1"}, "1234.6"},
        {"STR", {"1234.56", "6", "2"}, "1234.6"},
        {"STR", {"1234.567", "10", "2"}, "   1234.57"},
        {"STR", {"-1234.56", "20", "10"}, "    -1234.5600000000"},
        {"STR", {"1234.56"}, "      1235"},
        {"STR", {"-123456", "6"}, "******"},
        {"ASCII", {"'A'"}, "65"},
        {"ASCII", {"'ñ'"}, "241"},
        {"CHAR", {"241"}, "ñ"},
        {"CHAR", {"256"}, "NULL"},
        {"UNICODE", {"N'₱'"}, "8369"},
        {"NCHAR", {"8369"}, "₱"},
        {"CONCAT", {"'a'", "NULL", "12"}, "a12"},
        {"CONCAT_WS", {"', '", "'a'", "NULL", "'b'"}, "a, b"},
        {"QUOTENAME", {"'a]b'"}, "[a]]b]"},
        {"QUOTENAME", {"'it''s'", "''''"}, "'it''s'"},
        {"ISNUMERIC", {"'28903'"}, "1"},
        {"ISNUMERIC", {"'$24,23.43'"}, "1"},
        {"ISNUMERIC", {"'+'"}, "1"},
        {"ISNUMERIC", {"'1e5'"}, "1"},
        {"ISNUMERIC", {"'23$'"}, "0"},
        {"ISNUMERIC", {"'24.89.43'"}, "0"},
        {"ISNUMERIC", {"''"}, "0"},
        {"ISNUMERIC", {"12.5"}, "1"},
        {"FORMAT", {"1234.5", "'#,##0.00'"}, "1,234.50"},
        {"FORMAT", {"1234.567", "'N2'"}, "1,234.57"},
        {"FORMAT", {"-1234.5", "'C'"}, "($1,234.50)"},
        {"FORMAT", {"0.125", "'P1'"}, "12.5%"},
        {"FORMAT", {"7", "'D5'"}, "00007"},
        {"FORMAT", {"7", "'000'"}, "007"},
        {"FORMAT", {"date'2024-03-05 14:07:09'", "'MMMM d, yyyy hh:mm tt'"}, "March 5, 2024 02:07 PM"},
        {"FORMAT", {"date'2024-03-05'", "'yyyyMMdd'"}, "20240305"},
    });
}

TEST(MathFunctions, WorkedValues) {
    hold({
        {"ABS", {"-5"}, "5"},
        {"ABS", {"$-12.4524"}, "12.4524"},
        {"ABS", {"'-2.5'"}, "2.5"},
        {"FLOOR", {"-12.45"}, "-13"},
        {"FLOOR", {"$-12.4524"}, "-13.0000"},
        {"CEILING", {"123.45"}, "124"},
        {"CEILING", {"-123.45"}, "-123"},
        {"CEILING", {"f1.2"}, "2"},
        {"FLOOR", {"7"}, "7"},
        {"ROUND", {"748.58", "-1"}, "750.00"},
        {"ROUND", {"748.58", "-4"}, "0.00"},
        {"ROUND", {"748.58", "-3"}, "#8115"},
        {"ROUND", {"-1548.1234", "-3"}, "-2000.0000"},
        {"ROUND", {"123.9995", "3"}, "124.0000"},
        {"ROUND", {"150.75", "0", "1"}, "150.00"},
        {"ROUND", {"-150.49", "0"}, "-150.00"},
        {"ROUND", {"$1.005", "2"}, "1.0100"},
        {"ROUND", {"f1.005", "2"}, "1.01"},
        {"ROUND", {"f2.675", "2"}, "2.68"},
        {"ROUND", {"f-1234.5678", "-2"}, "-1200"},
        {"ROUND", {"748", "-1"}, "750"},
        {"ROUND", {"748.58", "NULL"}, "NULL"},
        {"SIGN", {"-3"}, "-1"},
        {"SIGN", {"$2.5"}, "1.0000"},
        {"POWER", {"2", "10"}, "1024"},
        {"POWER", {"2", "40"}, "#232"},
        {"POWER", {"2.5", "2"}, "6.3"},
        {"POWER", {"f2.5", "2"}, "6.25"},
        {"SQRT", {"2.25"}, "1.5"},
        {"SQRT", {"-1"}, "#3623"},
        {"LOG", {"0"}, "#3623"},
        {"LOG", {"8", "2"}, "3"},
        {"SQUARE", {"1.5"}, "2.25"},
        {"ISNULL", {"NULL", "5"}, "5"},
        {"ISNULL", {"'Unassigned'", "1"}, "Unassigned"},
        {"ISNULL", {"1"}, "#174"},
        {"COALESCE", {"NULL", "NULL", "2.5"}, "2.5"},
        {"COALESCE", {"NULL", "1", "2.5"}, "1.0"},
        {"NULLIF", {"'ABC'", "'abc '"}, "NULL"},
        {"NULLIF", {"5", "''"}, "5"},
        {"NULLIF", {"0", "''"}, "NULL"},
        {"CHOOSE", {"2", "'a'", "'bb'"}, "bb"},
        {"CHOOSE", {"3", "'a'", "'bb'"}, "NULL"},
    });
}

TEST(DateFunctions, WorkedValues) {
    hold({
        {"DATEADD", {"month", "1", "date'2024-01-31'"}, "2024-02-29"},
        {"DATEADD", {"month", "1", "'20060831'"}, "2006-09-30 00:00:00.000"},
        {"DATEADD", {"quarter", "2", "'20060830'"}, "2007-02-28 00:00:00.000"},
        {"DATEADD", {"yy", "-2", "'20060830'"}, "2004-08-30 00:00:00.000"},
        {"DATEADD", {"wk", "2", "'20060830'"}, "2006-09-13 00:00:00.000"},
        {"DATEADD", {"ms", "56", "date'2016-12-26 23:29:29'"}, "2016-12-26 23:29:29.057"},
        {"DATEADD", {"ms", "1", "date'1999-12-31 23:59:59'"}, "1999-12-31 23:59:59.000"},
        {"DATEADD", {"s", "1", "date'1999-12-31 23:59:59'"}, "2000-01-01 00:00:00.000"},
        {"DATEADD", {"year", "150", "date'9900-12-26 00:00:00'"}, "#517"},
        {"DATEADD", {"hour", "1", "date'2024-01-31'"}, "#9810"},
        {"DATEADD", {"fake", "1", "date'2024-01-31'"}, "#155"},
        {"DATEDIFF", {"month", "'2024-01-31'", "'2024-02-01'"}, "1"},
        {"DATEDIFF", {"year", "'2024-12-31'", "'2025-01-01'"}, "1"},
        {"DATEDIFF", {"day", "'2037-03-01 23:30:05'", "'2036-02-28 23:30:05'"}, "-367"},
        {"DATEDIFF", {"hour", "'2037-03-01 23:30:05'", "'2036-02-28 23:30:05'"}, "-8808"},
        {"DATEDIFF", {"week", "'2024-03-02'", "'2024-03-03'"}, "1"},
        {"DATEDIFF", {"quarter", "'2020-01-01'", "'1990-01-02'"}, "-120"},
        {"DATEDIFF", {"minute", "'2024-01-01 00:59:59'", "'2024-01-01 01:00:00'"}, "1"},
        {"DATEDIFF", {"ms", "'1900-01-01'", "'2024-01-01'"}, "#535"},
        {"DATEPART", {"week", "date'2007-04-21'"}, "16"},
        {"DATEPART", {"wk", "'18 July 2022'"}, "30"},
        {"DATEPART", {"iso_week", "date'2021-01-03'"}, "53"},
        {"DATEPART", {"isowk", "date'2024-12-30'"}, "1"},
        {"DATEPART", {"dw", "date'2021-12-31'"}, "6"},
        {"DATEPART", {"dy", "date'2016-12-26'"}, "361"},
        {"DATEPART", {"ms", "date'2002-05-23 23:41:29.998'"}, "997"},
        {"DATEPART", {"hour", "date'2002-05-23'"}, "#9810"},
        {"DATENAME", {"month", "date'2002-05-23'"}, "May"},
        {"DATENAME", {"dw", "date'2002-05-23'"}, "Thursday"},
        {"YEAR", {"'12/1/2011'"}, "2011"},
        {"MONTH", {"date'2011-12-01'"}, "12"},
        {"DAY", {"date'2011-12-01 10:00:00'"}, "1"},
        {"EOMONTH", {"'1996-02-20'"}, "1996-02-29"},
        {"EOMONTH", {"'12/1/2011'", "2"}, "2012-02-29"},
        {"EOMONTH", {"'1996-01-01'", "NULL"}, "1996-01-31"},
        {"DATEFROMPARTS", {"2024", "2", "29"}, "2024-02-29"},
        {"DATEFROMPARTS", {"2023", "2", "29"}, "#289"},
        {"DATETIMEFROMPARTS", {"2024", "2", "29", "23", "59", "59", "999"}, "2024-03-01 00:00:00.000"},
        {"ISDATE", {"'12/26/2016'"}, "1"},
        {"ISDATE", {"'02/30/2016'"}, "0"},
        {"ISDATE", {"NULL"}, "0"},
        {"GETDATE", {}, "2024-03-05 14:07:09.043"},
        {"HASHBYTES", {"'SHA2_256'", "'abc'"}, "0xBA7816BF8F01CFEA414140DE5DAE2223B00361A396177A9CB410FF61F20015AD"},
        {"HASHBYTES", {"'sha2_256'", "N'abc'"}, "0x13E228567E8249FCE53337F25D7970DE3BD68AB2653424C7B8F9FD05E33CAEDF"},
        {"HASHBYTES", {"'MD5'", "'abc'"}, "#40001"},
        {"FORMATMESSAGE", {"'%s has %d'", "'JV'", "3"}, "JV has 3"},
        {"FORMATMESSAGE", {"'%d'", "2.5"}, "#2786"},
        {"USER_NAME", {}, "dbo"},
        {"RAND", {}, "#40001"},
        {"CHECKSUM", {"'a'"}, "#40001"},
    });
}

TEST(SystemFunctions, WhereAndWho) {
    FunctionBench bench;
    bench.context().clock = [] { return Date(2024, 3, 5, 14, 7, 9, 44); };
    EXPECT_EQ(bench.call("GETDATE", {}), "2024-03-05 14:07:09.043");
    const std::string universal = bench.call("GETUTCDATE", {});
    const Moment apart =
        Moment::ofTotal(storedMoment("2024-03-05 14:07:09.043").total() - storedMoment(universal).total());
    EXPECT_EQ(apart.ms % 900'000, 0) << universal;  // zones lie quarters of an hour apart
    EXPECT_FALSE(bench.call("HOST_NAME", {}).empty());
    EXPECT_FALSE(bench.call("SUSER_SNAME", {}).empty());
    for (const char* name : {"abs", "YEAR", "Char", "charindex", "DATEADD", "FORMAT", "FORMATMESSAGE", "SUBSTRING"}) {
        EXPECT_NE(findFunction(name), nullptr) << name;
    }
    EXPECT_EQ(findFunction("NOSUCH"), nullptr);
    EXPECT_EQ(findFunction(""), nullptr);
}

/// The names between backticks of one part of the page that are written in capitals.
std::vector<std::string> namesIn(const std::string& page, const std::string& from, const std::string& to) {
    const std::size_t start = page.find(from);
    const std::string part = page.substr(start, page.find(to, start) - start);
    std::vector<std::string> names;
    for (std::size_t at = part.find('`'); at != std::string::npos; at = part.find('`', at + 1)) {
        const std::size_t end = part.find('`', at + 1);
        names.push_back(part.substr(at + 1, end - at - 1));
        at = end;
    }
    return names;
}

TEST(SystemFunctions, ThePageNamesThemRightly) {
    const std::string page = readTextFile("docs/engine-functions.md");
    const auto taken = namesIn(page, "| group |", "`CAST`");
    const auto refused = namesIn(page, "error 40001:", "Random values");
    EXPECT_GT(taken.size(), 80u);
    EXPECT_GT(refused.size(), 35u);
    const ArgumentAs none = [](std::size_t, const Type&) { return std::string("NULL"); };
    for (const std::string& name : taken) {
        if (isAggregate(name)) continue;
        ASSERT_NE(findFunction(name), nullptr) << name;
        EXPECT_NE(errorOf([&] { emitCall(*findFunction(name), std::vector<CallArgument>(1), none); }), 40001) << name;
    }
    for (const std::string& name : refused) {
        ASSERT_NE(findFunction(name), nullptr) << name;
        EXPECT_EQ(errorOf([&] { emitCall(*findFunction(name), {}, none); }), 40001) << name;
    }
}

TEST(Dates, EveryDayOfTheCalendar) {
    CivilDay day{1, 1, 1};
    int weekday = 1;  // 0001-01-01 was a Monday
    for (std::int32_t days = kDaysMin; days <= kDaysMax; ++days) {
        const CivilDay got = civilOf(days);
        ASSERT_TRUE(got.year == day.year && got.month == day.month && got.day == day.day) << days;
        ASSERT_EQ(daysOf(day.year, day.month, day.day), days);
        ASSERT_EQ(weekdayOf(days), weekday);
        weekday = (weekday + 1) % 7;
        if (++day.day > lastDayOf(day.year, day.month)) {
            day.day = 1;
            if (++day.month > 12) {
                day.month = 1;
                ++day.year;
            }
        }
    }
}

TEST(Dates, EveryMillisecondRoundsToAThirdOfAHundredth) {
    for (std::int32_t ms = 0; ms < 1000; ++ms) {
        const std::int32_t rounded = roundedTo300({0, ms}).ms;
        ASSERT_TRUE(rounded % 10 == 0 || rounded % 10 == 3 || rounded % 10 == 7) << ms;
        ASSERT_LE(std::abs(rounded - ms), 2) << ms;
        ASSERT_EQ(roundedTo300({0, rounded}).ms, rounded);
    }
    EXPECT_EQ(roundedTo300({0, 86'399'999}), (Moment{1, 0}));
}

TEST(Collation, OrdersAndEquals) {
    EXPECT_TRUE(equalTexts("PEÑA", "Peña"));
    EXPECT_TRUE(equalTexts("abc", "ABC   "));
    EXPECT_TRUE(equalTexts("", "  "));
    EXPECT_FALSE(equalTexts("Pena", "Peña"));
    EXPECT_FALSE(equalTexts("abc", "ab c"));
    // sorted; each differs from the next
    constexpr const char* kSorted[] = {
        "",     "a\tb", "a",    "a b",  "A1", "aa", "ab", "B", "longprefix1", "longprefix2",
        "Pena", "Peña", "penb", "Peñz", "Z",  "₱"};
    for (std::size_t i = 0; i < std::size(kSorted); ++i) {
        for (std::size_t j = 0; j < std::size(kSorted); ++j) {
            const int wanted = i < j ? -1 : i > j ? 1 : 0;
            if (std::string_view(kSorted[i]) == "a\tb" || std::string_view(kSorted[j]) == "a\tb") continue;
            EXPECT_EQ(compareTexts(kSorted[i], kSorted[j]), wanted) << kSorted[i] << " with " << kSorted[j];
        }
    }
    EXPECT_LT(compareTexts("a\tb", "a"), 0);  // below the blank that fills the shorter text
    FunctionBench bench;
    bench.run("CREATE TABLE t (c TEXT COLLATE CI UNIQUE)");
    bench.run("INSERT INTO t VALUES ('Peña'), ('JONES')");
    EXPECT_EQ(bench.value("count(*) FROM t WHERE c = 'jones '").integer, 1);
    EXPECT_EQ(errorOf([&] { bench.run("INSERT INTO t VALUES ('PEÑA ')"); }), 50001);
}

TEST(Like, Patterns) {
    struct LikeRow {
        const char* text;
        const char* pattern;
        char escape;
        bool matches;
    };
    constexpr LikeRow kRows[] = {
        {"abc", "ABC", 0, true},
        {"abc", "a%", 0, true},
        {"abc", "%c", 0, true},
        {"abc", "a_c", 0, true},
        {"abc", "a_", 0, false},
        {"abc", "[a-c]bc", 0, true},
        {"=bc", "[a-c]bc", 0, false},
        {"bbc", "[^a]bc", 0, true},
        {"Abc", "[^a]bc", 0, false},
        {"a[bc", "[%", 0, false},
        {"[bc", "[[]bc", 0, true},
        {"]bc", "]bc", 0, true},
        {"%bc", "[%]bc", 0, true},
        {"abc", "[%]bc", 0, false},
        {"11.22", "[0-9][0-9].[0-9][0-9]", 0, true},
        {"15% off", "15/% %", '/', true},
        {"15 % /off", "15 [%] //off", '/', true},
        {"a ", "a", 0, true},
        {"a", "a ", 0, false},
        {"a  ", "a ", 0, true},
        {"a", "a%", 0, true},
        {"a ", "a_", 0, true},
        {"a", "", 0, false},
        {"", "", 0, true},
        {"  ", "", 0, true},
        {"aXbXc", "a%b%c", 0, true},
        {"mississippi", "m%iss%pi", 0, true},
        {"mississippi", "m%iss%pix", 0, false},
        {"Peña", "pe_a", 0, true},
        {"PEÑA", "%ña", 0, true},
        {"peña", "pe[m-o]a", 0, true},
        {"peña", "pen%", 0, false},
        {"a-b", "a[a-]b", 0, true},
        {"Goransson", "[A-BE-G]%", 0, true},
        {"Carlson", "[A-BE-G]%", 0, false},
        {"a]c", "a[]]c", 0, false},
        {"abc", "a[", 0, false},
    };
    for (const LikeRow& row : kRows) {
        EXPECT_EQ(likeMatches(row.text, row.pattern, static_cast<unsigned char>(row.escape)), row.matches)
            << row.text << " like " << row.pattern;
    }
}

/// The index range that stands beside LIKE must never lose a row.
TEST(Like, TheRangeOfAFixedStartHoldsEveryMatch) {
    FunctionBench bench;
    bench.run("CREATE TABLE t (c TEXT COLLATE CI)");
    for (const char* text :
         {"abc", "ABC", "ab", "abcd", "abc ", "abc\t", "abc\x7f", "abcñ", "abc₱", "abd", "ábc", "abb"}) {
        bench.run("INSERT INTO t VALUES ('" + std::string(text) + "')");
    }
    for (const char* pattern : {"abc%", "abc", "ab%", "abc_", "a[b]c%", "á%", "abc %"}) {
        const std::vector<CallArgument> args = {
            FunctionBench::argument("c", Type::varchar(20)),
            FunctionBench::argument("'" + std::string(pattern) + "'", Type::varchar(20), pattern)};
        const auto as = FunctionBench::plain(args);
        const std::string ranged = emitLike(args[0], true, args[1], as, nullptr);
        const std::string plain = emitLike(args[0], false, args[1], as, nullptr);
        EXPECT_NE(ranged, plain);
        EXPECT_EQ(bench.value("count(*) FROM t WHERE " + ranged), bench.value("count(*) FROM t WHERE " + plain))
            << pattern;
    }
}

TEST(Messages, FormatsLikeTheServer) {
    const auto text = [](const char* value) { return Datum::of(std::string(value)); };
    const auto number = [](std::int64_t value) { return Datum::of(value); };
    EXPECT_EQ(formatMessage("%s has %d of %i", {text("JV"), number(3), number(-4)}), "JV has 3 of -4");
    EXPECT_EQ(formatMessage("100%% %5d|%-5d|%05d|%+d", {number(42), number(42), number(42), number(42)}),
              "100%    42|42   |00042|+42");
    EXPECT_EQ(formatMessage("%x %X %#x %o %u", {number(255), number(255), number(255), number(8), number(-1)}),
              "ff FF 0xff 10 4294967295");
    EXPECT_EQ(formatMessage("%.3s|%10.2s|%-4s|", {text("abcdef"), text("xyz"), text("q")}), "abc|        xy|q   |");
    EXPECT_EQ(formatMessage("%s and %d", {}), "(null) and (null)");
    EXPECT_EQ(errorOf([&] { formatMessage("%d", {text("x")}); }), 2786);
    EXPECT_EQ(errorOf([&] { formatMessage("%z", {text("x")}); }), 2787);
    EXPECT_EQ(sqlError(208, {"dbo.GL"}).text, "Invalid object name 'dbo.GL'.");
    EXPECT_EQ(sqlError(2627, {"PRIMARY KEY", "PK_JV", "dbo.JV", "1"}).severity, 14);
    for (int n = 100, last = 0; n < 60000; ++n) {
        const ErrorText* row = findErrorText(n);
        if (!row) continue;
        EXPECT_GT(row->number, last);
        last = row->number;
    }
}

}  // namespace
}  // namespace kv::tsql
