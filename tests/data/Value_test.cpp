// What a field value gives as text, number, money, date and yes or no.
#include "platform/data/Value.h"

#include <gtest/gtest.h>

#include "platform/base/Error.h"

namespace kv {
namespace {

constexpr std::int64_t kBig = 9007199254740993;  // not a double

struct Conversion {
    Value from;
    const char* text;
    std::int64_t integer;
    double number;
    std::int64_t units;  // of money
    bool boolean;
};

class Conversions : public testing::TestWithParam<Conversion> {};

TEST_P(Conversions, GiveEachForm) {
    const Conversion& c = GetParam();
    EXPECT_EQ(c.from.text(), c.text);
    EXPECT_EQ(c.from.integer(), c.integer);
    EXPECT_EQ(c.from.number(), c.number);
    EXPECT_EQ(c.from.money().units(), c.units);
    EXPECT_EQ(c.from.boolean(), c.boolean);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, Conversions, testing::Values(
    //         from                              text          integer  number      units      boolean
    Conversion{Value(),                          "",           0,       0,          0,         false},
    Conversion{Value(true),                      "True",       1,       1,          10'000,    true},
    Conversion{Value(false),                     "False",      0,       0,          0,         false},
    Conversion{Value(-7),                        "-7",         -7,      -7,         -70'000,   true},
    Conversion{Value(2.5),                       "2.5",        2,       2.5,        25'000,    true},
    Conversion{Value(3.5),                       "3.5",        4,       3.5,        35'000,    true},
    Conversion{Value(-0.00004),                  "-0.00004",   0,       -0.00004,   0,         true},
    Conversion{Value(Money::fromUnits(12'345)),  "1.2345",     1,       1.2345,     12'345,    true},
    Conversion{Value(Money::fromUnits(15'000)),  "1.50",       2,       1.5,        15'000,    true},
    Conversion{Value(Money::fromUnits(25'000)),  "2.50",       2,       2.5,        25'000,    true},
    Conversion{Value(Money::whole(-1000)),       "-1000.00",   -1000,   -1000,      -10'000'000, true},
    Conversion{Value("1,234.50"),                "1,234.50",   1234,    1234.5,     12'345'000, true},
    Conversion{Value(" 12 "),                    " 12 ",       12,      12,         120'000,   true},
    Conversion{Value("abc"),                     "abc",        0,       0,          0,         false},
    Conversion{Value("true"),                    "true",       0,       0,          0,         true},
    Conversion{Value("0"),                       "0",          0,       0,          0,         false}));
// clang-format on

TEST(Value, WholeNumbersAndMoneyAreExactBeyondADouble) {
    EXPECT_EQ(Value(kBig).text(), "9007199254740993");
    EXPECT_EQ(Value("9007199254740993").integer(), kBig);
    EXPECT_EQ(Value("922337203685477.5807").money().units(), 9223372036854775807);
    EXPECT_EQ(Value(Money::fromUnits(9223372036854775807)).text(), "922337203685477.5807");
}

TEST(Value, TooLargeNumbersAreAnErrorAndNotAnotherNumber) {
    const auto number = [](auto&& body) {
        try {
            body();
        } catch (const Error& e) {
            return e.number;
        }
        return 0L;
    };
    EXPECT_EQ(number([] { return Value(std::int64_t{922337203685478}).money(); }), 6);
    EXPECT_EQ(number([] { return Value(1e19).integer(); }), 6);
    EXPECT_EQ(number([] { return Value("9223372036854775808").integer(); }), 6);
    EXPECT_EQ(number([] { return Value().date(); }), 94);
    EXPECT_EQ(number([] { return Value("31/31/2024").date(); }), 13);
    EXPECT_EQ(number([] { return Value(5).date(); }), 13);
    EXPECT_EQ(number([] { return Value(Date(2024, 3, 1)).number(); }), 13);
}

TEST(Value, DatesComeFromDatesAndTexts) {
    EXPECT_EQ(Value(Date(2024, 2, 29)).text(), "2/29/2024");
    EXPECT_EQ(Value(Date(2024, 2, 29, 14, 5)).text(), "2/29/2024 2:05:00 PM");
    EXPECT_EQ(Value("2024-02-29").date(), Date(2024, 2, 29));
    EXPECT_EQ(Value("2/29/2024").date(), Date(2024, 2, 29));
}

TEST(Value, KnowsItsKind) {
    EXPECT_TRUE(Value().isNull());
    EXPECT_TRUE(Value("").isText());
    EXPECT_FALSE(Value("").isNull());
    EXPECT_TRUE(Value(Money()).isNumber());
    EXPECT_TRUE(Value(true).isNumber());
    EXPECT_FALSE(Value("5").isNumber());
    EXPECT_FALSE(Value(5) == Value("5"));
}

}  // namespace
}  // namespace kv
