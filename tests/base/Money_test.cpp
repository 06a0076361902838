#include "platform/base/Money.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

TEST(Money, FloatingPointRoundsHalfToEvenAtTheFourthDecimal) {
    struct Row {
        double value;
        std::int64_t units;
    };
    constexpr Row kRows[] = {
        {0.0, 0},           {1.0, 10000},
        {0.1, 1000},        {1234.5678, 12345678},
        {0.00005, 0},       {0.00015, 2},
        {0.00025, 2},       {-0.00015, -2},
        {-0.00025, -2},     {99999999.9999, 999999999999},
        {-1.23456, -12346}, {0.30000000000000004, 3000},
    };
    for (const Row& row : kRows) EXPECT_EQ(Money::fromDouble(row.value).units(), row.units) << row.value;
    for (const double bad :
         {1e15, -1e16, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(Money::fromDouble(bad), Error) << bad;
    }
}

TEST(Money, ParsesExactlyOrNotAtAll) {
    struct Row {
        const char* text;
        std::int64_t units;
    };
    constexpr Row kRows[] = {
        {"0", 0},
        {"-0", 0},
        {"12", 120000},
        {".5", 5000},
        {"5.", 50000},
        {"-1.2345", -12345},
        {"1.23455", 12346},       // 5 after an odd digit goes up
        {"1.23465", 12346},       // after an even one it stays
        {"1.2346500001", 12347},  // more than a half
        {"1.23449999", 12345},
        {"922337203685477.5807", kMost},
        {"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()},
        {"0000000000000000000000012.5", 125000},
    };
    for (const Row& row : kRows) {
        const auto money = Money::parse(row.text);
        ASSERT_TRUE(money) << row.text;
        EXPECT_EQ(money->units(), row.units) << row.text;
    }
    for (const char* text : {"", "-", ".", "1,000", "1.2.3", "1e3", " 1", "1 ", "P5", "--1", "1-"}) {
        EXPECT_FALSE(Money::parse(text)) << text;
    }
    EXPECT_THROW(Money::parse("922337203685477.5808"), Error);
    EXPECT_THROW(Money::parse("99999999999999999999999999999999999999999999"), Error);
}

TEST(Money, OverflowIsErrorSixAndNeverWraps) {
    const Money most = Money::fromUnits(kMost);
    const auto numberOf = [](auto&& body) {
        try {
            body();
        } catch (const Error& e) {
            return e.number;
        }
        return 0L;
    };
    EXPECT_EQ(numberOf([&] { return most + Money::fromUnits(1); }), kErrOverflow);
    EXPECT_EQ(numberOf([&] { return -most - Money::fromUnits(2); }), kErrOverflow);
    EXPECT_EQ(numberOf([&] { return -Money::fromUnits(std::numeric_limits<std::int64_t>::min()); }), kErrOverflow);
    EXPECT_EQ(numberOf([&] { return Round(most, 0); }), kErrOverflow);
    Money sum;
    for (int i = 0; i < 1000; ++i) sum += Money::fromDouble(0.1);
    EXPECT_EQ(sum, Money::whole(100));
}

TEST(Money, RoundsTiesToEvenAtEachPlace) {
    struct Row {
        std::int64_t units;
        int places;
        std::int64_t rounded;
    };
    constexpr Row kRows[] = {
        {10050, 2, 10000},   {10150, 2, 10200}, {10250, 2, 10200}, {-10050, 2, -10000}, {-10150, 2, -10200},
        {10051, 2, 10100},   {10049, 2, 10000}, {5000, 0, 0},      {15000, 0, 20000},   {25000, 0, 20000},
        {-15000, 0, -20000}, {12345, 4, 12345}, {12345, 3, 12340}, {12355, 3, 12360},   {99999, 1, 100000},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Round(Money::fromUnits(row.units), row.places).units(), row.rounded)
            << row.units << " to " << row.places;
    }
}

TEST(Money, TextOfAnyAmountReadsBack) {
    std::mt19937_64 random(20240301);
    for (int i = 0; i < 20000; ++i) {
        const auto units = static_cast<std::int64_t>(random()) >> (random() % 63);
        const Money money = Money::fromUnits(units);
        const std::string text = Format(money, "0.0000");
        ASSERT_EQ(Money::parse(text), money) << text;
        if (units > -(1LL << 50) && units < (1LL << 50)) {
            ASSERT_EQ(Money::fromDouble(money.toDouble()), money) << text;
        }
    }
}

}  // namespace
}  // namespace kv
