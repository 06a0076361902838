// Exact numbers: rounding, products, quotients and sums held against whole-number arithmetic.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "platform/embedded/Decimal.h"
#include "tests/embedded/functions_support.h"

namespace kv::tsql {
namespace {

TEST(Decimal, EveryAmountUpToTheLimitComesBack) {
    std::mt19937_64 random(1);
    for (const int scale : {0, 2, 4, 6, 9}) {
        for (int i = 0; i < 200000; ++i) {
            const auto units = static_cast<std::int64_t>(random() % kUnitsMax) * (i % 2 == 0 ? 1 : -1);
            const double value = fromUnits(units, scale);
            ASSERT_EQ(static_cast<std::int64_t>(unitsOf(value, scale)), units) << scale;
            ASSERT_EQ(roundedTo(value, scale), value);
        }
        EXPECT_EQ(static_cast<std::int64_t>(unitsOf(fromUnits(kUnitsMax, scale), scale)), kUnitsMax);
    }
}

/// r4 of the double sum of two amounts is the sum of their units, also where the double sum is off.
TEST(Decimal, SumsOfDoublesRoundToTheSumOfUnits) {
    std::mt19937_64 random(2);
    long noisy = 0;
    for (int i = 0; i < 300000; ++i) {
        const auto a = static_cast<std::int64_t>(random() % 1'000'000'000'000);
        const auto b = static_cast<std::int64_t>(random() % 1'000'000'000'000);
        const auto c = static_cast<std::int64_t>(random() % 1'000'000'000'000);
        const double sum = fromUnits(a, 4) + fromUnits(b, 4) - fromUnits(c, 4);
        const double wanted = fromUnits(Int128{a} + b - c, 4);
        noisy += sum != wanted;
        ASSERT_EQ(roundedTo(sum, 4), wanted);
    }
    EXPECT_GT(noisy, 1000);  // else the test would hold nothing
    EXPECT_FALSE(std::signbit(roundedTo(-0.00001, 4)));
}

TEST(Decimal, TiesGoAwayFromZeroByTheDecimalValue) {
    struct Row {
        double value;
        int scale;
        const char* text;
    };
    constexpr Row kRows[] = {
        {1.005, 2, "1.01"},           {0.285, 2, "0.29"},
        {1.115, 2, "1.12"},           {2.675, 2, "2.68"},
        {-1.005, 2, "-1.01"},         {10.235, 2, "10.24"},
        {123.00015, 4, "123.0002"},   {123.000149, 4, "123.0001"},
        {-123.00025, 4, "-123.0003"}, {0.5, 0, "1"},
        {0.49999999, 0, "0"},         {1e9 + 0.005, 2, "1000000000.01"},
        {8.345, 2, "8.35"},           {99999999.995, 2, "100000000.00"},
    };
    for (const Row& row : kRows) EXPECT_EQ(unitsText(unitsOf(row.value, row.scale), row.scale), row.text) << row.value;
    std::mt19937_64 random(3);
    for (int i = 0; i < 100000; ++i) {  // x.xx5 in a double, read from its text
        const auto cents = static_cast<std::int64_t>(random() % 10'000'000'000);
        const double tie = fromUnits(Int128{cents} * 10 + 5, 3);
        ASSERT_EQ(static_cast<std::int64_t>(unitsOf(tie, 2)), cents + 1) << cents;
    }
}

TEST(Decimal, ProductsAndQuotientsFollowWholeNumbers) {
    std::mt19937_64 random(4);
    for (int i = 0; i < 200000; ++i) {
        const auto a = static_cast<std::int64_t>(random() % 40'000'000'000) - 20'000'000'000;
        const auto b = static_cast<std::int64_t>(random() % 2'000'000) - 1'000'000;
        const double x = fromUnits(a, 4);
        const double y = fromUnits(b, 4);
        const Int128 product = Int128{a} * b;
        const Int128 size = product < 0 ? -product : product;
        const Int128 rounded = (size + 5000) / 10000 * (product < 0 ? -1 : 1);
        ASSERT_EQ(static_cast<std::int64_t>(unitsOf(decimalProduct(x, y, 4, 4, 4), 4)),
                  static_cast<std::int64_t>(rounded));
        if (b == 0) continue;
        const Int128 quotient = Int128{a} * 10000 / b;
        if (quotient < kUnitsMax && quotient > -kUnitsMax) {
            ASSERT_EQ(static_cast<std::int64_t>(unitsOf(decimalQuotient(x, y, 4, 4, 4), 4)),
                      static_cast<std::int64_t>(quotient))
                << a << " / " << b;
        }
        ASSERT_EQ(static_cast<std::int64_t>(unitsOf(decimalRemainder(x, y, 4, 4), 4)), a % b);
    }
    EXPECT_EQ(errorOf([] { decimalQuotient(1, 0, 4, 4, 4); }), 8134);
    EXPECT_EQ(errorOf([] { decimalProduct(1e18, 1e18, 4, 4, 4); }), 8115);
}

TEST(Decimal, TextsAreReadToTheScale) {
    struct Row {
        const char* text;
        int scale;
        const char* expected;  ///< nullptr where it is no number
    };
    constexpr Row kRows[] = {
        {"1.123", 10, "1.1230000000"},
        {"123456789012345678", 0, "123456789012345678"},
        {" -12.5 ", 1, "-12.5"},
        {"0.05", 1, "0.1"},
        {"0.049999", 1, "0.0"},
        {"+7", 2, "7.00"},
        {".5", 0, "1"},
        {"99999999999999999999999999999999999999", 0, "99999999999999999999999999999999999999"},
        {"1e5", 2, nullptr},
        {"", 2, nullptr},
        {"-", 2, nullptr},
        {"1,000", 2, nullptr},
        {"1.2.3", 2, nullptr},
    };
    for (const Row& row : kRows) {
        const auto units = parseUnits(row.text, row.scale);
        ASSERT_EQ(units.has_value(), row.expected != nullptr) << row.text;
        if (units) {
            EXPECT_EQ(unitsText(*units, row.scale), row.expected) << row.text;
        }
    }
    EXPECT_EQ(errorOf([] { parseUnits("999999999999999999999999999999999999999", 0); }), 8115);
    EXPECT_EQ(errorOf([] { exactFromUnits(Int128{999999999999999999}, 2); }), 8115);
}

// ------------------------------------------------------------------------------------ the same, as SQL writes it

TEST(Operators, ResultTypesAndValues) {
    const Type money = Type::money();
    const auto lit = [](const char* text) { return FunctionBench::argument(text, decimalLiteralType(text), text); };
    const auto num = [](const char* text) { return FunctionBench::argument(text, integerLiteralType(text), text); };
    const auto of = [](const char* sql, Type type) { return FunctionBench::argument(sql, type); };
    struct Row {
        CallArgument left;
        char op;
        CallArgument right;
        const char* type;
        const char* value;
    };
    const Row kRows[] = {
        {of("0.1", money), '+', of("0.2", money), "money", "0.3000"},
        {of("100.0", money), '/', of("339.0", money), "money", "0.2949"},
        {of("1.0", money), '/', of("18.4172", money), "money", "0.0542"},
        {of("18.4172", money), '*', of("1.1562", money), "money", "21.2940"},
        {of("2.0", money), '/', num("5"), "money", "0.4000"},
        {num("5"), '/', of("2.0", Type::of(Kind::SmallMoney)), "smallmoney", "2.5000"},
        {of("10.1234", Type::decimal(6, 4)), '/', of("10.123", Type::decimal(6, 3)), "decimal(16,11)", "1.00003951397"},
        {of("10.1234", Type::decimal(6, 4)), '*', of("10.123", Type::decimal(6, 3)), "decimal(13,7)", "102.4791782"},
        {of("10.1234", Type::decimal(6, 4)), '-', of("10.123", Type::decimal(6, 3)), "decimal(8,4)", "0.0004"},
        {lit("2.0"), '/', num("3"), "decimal(7,6)", "0.666666"},
        {of("1000.0", money), '*', lit("0.12"), "decimal(22,6)", "120.000000"},
        {lit("7.5"), '%', num("2"), "decimal(2,1)", "1.5"},
        {num("7"), '/', num("2"), "int", "3"},
        {num("-7"), '/', num("2"), "int", "-3"},
        {num("-7"), '%', num("2"), "int", "-1"},
        {num("7"), '^', num("2"), "int", "5"},
        {of("7.0", Type::floating()), '/', num("2"), "float", "3.5"},
        {of("'3'", Type::varchar(1)), '+', num("4"), "int", "7"},
        {of("'3'", Type::varchar(1)), '+', of("'4'", Type::varchar(1)), "varchar(2)", "34"},
        {of("NULL", Type{}), '+', of("'x'", Type::varchar(1)), "varchar(2)", "NULL"},
        {of("'2000-10-10 12:34:56.790'", Type::datetime()), '-', lit("1.5"), "datetime", "2000-10-09 00:34:56.790"},
        {num("100"), '+', of("'2000-10-10 12:34:56.790'", Type::datetime()), "datetime", "2001-01-18 12:34:56.790"},
        {of("123456789012345678", Type::decimal(18, 0)), '+', num("1"), "decimal(19,0)", "123456789012345679"},
    };
    FunctionBench bench;
    for (const Row& row : kRows) {
        const std::string shown = row.left.sql + " " + row.op + " " + row.right.sql;
        EXPECT_EQ(typeName(arithmeticType(row.op, row.left.type, row.right.type)), row.type) << shown;
        EXPECT_EQ(bench.arithmetic(row.op, {row.left, row.right}), row.value) << shown;
    }
}

TEST(Operators, RefuseAndOverflowByNumber) {
    const auto of = [](const char* sql, Type type) { return FunctionBench::argument(sql, type); };
    struct Row {
        CallArgument left;
        char op;
        CallArgument right;
        int error;
    };
    const Row kRows[] = {
        {of("2147483647", Type::integer()), '+', of("1", Type::integer()), 8115},
        {of("9223372036854775807", Type::bigint()), '+', of("1", Type::bigint()), 8115},
        {of("255", Type::of(Kind::TinyInt)), '+', of("1", Type::of(Kind::TinyInt)), 8115},
        {of("112589990684.0", Type::money()), '+', of("1.0", Type::money()), 8115},
        {of("1", Type::integer()), '/', of("0", Type::integer()), 8134},
        {of("1", Type::integer()), '%', of("0", Type::integer()), 8134},
        {of("1.0", Type::money()), '/', of("0.0", Type::money()), 8134},
        {of("1.0", Type::floating()), '/', of("0.0", Type::floating()), 8134},
        {of("1.5", Type::decimal(2, 1)), '%', of("0.0", Type::decimal(2, 1)), 8134},
        {of("'x'", Type::varchar(1)), '+', of("1", Type::integer()), 245},
        {of("'x'", Type::varchar(1)), '-', of("'y'", Type::varchar(1)), 8117},
        {of("1", Type::bit()), '+', of("1", Type::bit()), 402},
        {of("'2000-10-10 00:00:00.000'", Type::date()), '+', of("1", Type::integer()), 206},
        {of("'2000-10-10 00:00:00.000'", Type::datetime()), '*', of("1", Type::integer()), 8117},
        {of("1.0", Type::floating()), '%', of("1", Type::integer()), 402},
    };
    FunctionBench bench;
    for (const Row& row : kRows) {
        EXPECT_EQ(errorOf([&] {
                      bench.arithmetic(row.op, {row.left, row.right});
                  }),
                  row.error)
            << row.left.sql << " " << row.op << " " << row.right.sql;
    }
}

TEST(Aggregates, SumsAndAveragesAreExactAlsoInWindows) {
    FunctionBench bench;
    bench.run("CREATE TABLE t (m REAL, i INTEGER, g INTEGER)");
    bench.run(
        "WITH RECURSIVE n(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM n WHERE k < 100000)"
        " INSERT INTO t SELECT (k % 997) / 100.0, k, k % 7 FROM n");
    std::int64_t cents = 0;
    for (int k = 1; k <= 100000; ++k) cents += k % 997;
    const auto exact = [&](const std::string& sql) {
        return static_cast<std::int64_t>(unitsOf(bench.value(sql).real, 4));
    };
    EXPECT_EQ(exact("dsum(m,4) FROM t"), cents * 100);
    EXPECT_EQ(exact("davg(m,4,4) FROM t"), cents * 100 / 100000);
    EXPECT_EQ(bench.value("davg(i,0,0) FROM t").integer, 50000);
    EXPECT_TRUE(bench.value("dsum(m,4) FROM t WHERE i < 0").isNull());
    EXPECT_EQ(bench
                  .value("count(*) FROM (SELECT dsum(m,4) OVER (ORDER BY i ROWS 2 PRECEDING) AS w, m + lag(m,1,0.0) "
                         "OVER (ORDER BY i) + lag(m,2,0.0) OVER (ORDER BY i) AS s FROM t) WHERE w <> r4(s)")
                  .integer,
              0);
    const std::vector<CallArgument> arg = {FunctionBench::argument("m", Type::money())};
    const AggregateSql once = emitAggregate("SUM", true, false, arg, FunctionBench::plain(arg));
    EXPECT_EQ(exact(once.before + once.after + " FROM t"), 996 * 997 / 2 * 100);
    EXPECT_EQ(
        errorOf([&] { emitAggregate("sum", false, false, {FunctionBench::argument("'x'", Type::varchar(1))}, {}); }),
        8117);
}

}  // namespace
}  // namespace kv::tsql
