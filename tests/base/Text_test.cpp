#include "platform/base/Text.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/base/Error.h"

namespace kv {
namespace {

TEST(Text, FormatsNumbersByPattern) {
    struct Row {
        double value;
        const char* pattern;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {1234.5, "0.00", "1234.50"},
        {1234.5, "#,##0.00", "1,234.50"},
        {0, "#,##0.00", "0.00"},
        {0, "#", ""},
        {999.995, "#,##0.00", "1,000.00"},
        {1.005, "0.00", "1.01"},
        {0.285, "0.00", "0.29"},
        {-2.345, "0.00", "-2.35"},
        {-0.001, "0.00", "0.00"},
        {0.5, "0", "1"},
        {0.4999999, "0", "0"},
        {1234567.891, "#,##0", "1,234,568"},
        {-1234567.891, "#,##0.0", "-1,234,567.9"},
        {7, "000000", "000007"},
        {1234567, "000000", "1234567"},
        {12.5, "0.00########", "12.50"},
        {12.123456789, "0.00########", "12.123456789"},
        {0.25, "#.##", ".25"},
        {1234, "#,##0", "1,234"},
        {123, "#,##0", "123"},
        {100, "0.00 kg", "100.00 kg"},
        {5, "P #,##0.00", "P 5.00"},
        {-5, "P #,##0.00", "-P 5.00"},
        {1e15, "0.00", "1000000000000000.00"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Format(row.value, row.pattern), row.expected) << row.value << " " << row.pattern;
    EXPECT_EQ(Format(Money::fromUnits(-123450), "#,##0.00"), "-12.35");  // halves away from zero
    EXPECT_EQ(Format(Money::fromUnits(-9223372036854775807LL - 1), "0.0000"), "-922337203685477.5808");
    EXPECT_EQ(Format(std::numeric_limits<long long>::min(), "0"), "-9223372036854775808");
    EXPECT_THROW(Format(std::numeric_limits<double>::infinity(), "0"), Error);
}

TEST(Text, KnowsNumbersByTheLocale) {
    struct Row {
        const char* text;
        bool numeric;
        double value;
    };
    constexpr Row kRows[] = {
        {"12", true, 12},    {" 12 ", true, 12}, {"1,234.50", true, 1234.5},
        {"-5", true, -5},    {"5-", true, -5},   {"+5", true, 5},
        {".5", true, .5},    {"5.", true, 5},    {"-.25", true, -.25},
        {"- 5", true, -5},   {"", false, 0},     {" ", false, 0},
        {"-", false, 0},     {".", false, 0},    {"1.2.3", false, 0},
        {"12a", false, 0},   {"1 2", false, 0},  {",5", false, 0},
        {"1.2,3", false, 0}, {"--5", false, 0},  {"-5-", false, 0},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(IsNumeric(row.text), row.numeric) << '"' << row.text << '"';
        EXPECT_DOUBLE_EQ(numberOf(row.text), row.value) << '"' << row.text << '"';
    }
}

TEST(Text, FoldsLatinLetters) {
    EXPECT_EQ(UCase("peña josé über ÷×"), "PEÑA JOSÉ ÜBER ÷×");
    EXPECT_EQ(LCase("PEÑA JOSÉ ÜBER"), "peña josé über");
    EXPECT_EQ(properCase("DELA PEÑA, ÁNGEL o'neil"), "Dela Peña, Ángel O'neil");
    EXPECT_TRUE(equalsNoCase("Peña", "PEÑA"));
    EXPECT_FALSE(equalsNoCase("Pena", "Peña"));
    EXPECT_TRUE(containsNoCase("Accounts Receivable", "RECEIV"));
    EXPECT_FALSE(containsNoCase("Cash", "cashier"));
    EXPECT_TRUE(startsNoCase("Cash in bank", "CASH"));
    EXPECT_FALSE(startsNoCase("Cash", "cash in"));
}

TEST(Text, CutsAndCountsByCharacters) {
    EXPECT_EQ(charCount("Peña₱"), 5u);
    EXPECT_EQ(midChars("Peña₱1", 2, 2), "ña");
    EXPECT_EQ(midChars("Peña₱1", 4), "₱1");
    EXPECT_EQ(midChars("abc", 5), "");
    EXPECT_EQ(trimBlanks("  a b  "), "a b");
    EXPECT_EQ(trimBlanks("   "), "");
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("a'b'", "'", "''"), "a''b''");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(join(split("a,,b,", ','), "|"), "a||b|");
    EXPECT_EQ(split("", ',').size(), 1u);
}

TEST(Text, PlainNumberTextReadsBack) {
    EXPECT_EQ(plainText(0.1), "0.1");
    EXPECT_EQ(plainText(1234567.25), "1234567.25");
    EXPECT_EQ(plainText(-0.000125), "-0.000125");
    EXPECT_EQ(plainText(1e14), "100000000000000");
}

}  // namespace
}  // namespace kv
