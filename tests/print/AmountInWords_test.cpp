// Amounts in words as they stand on checks.
#include "platform/print/AmountInWords.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(AmountInWords, SpellsPesosAndCentavos) {
    const std::pair<const char*, const char*> rows[] = {
        {"0", "ZERO PESOS ONLY"},
        {"0.50", "ZERO PESOS AND 50/100 ONLY"},
        {"1", "ONE PESO ONLY"},
        {"1.01", "ONE PESO AND 01/100 ONLY"},
        {"10", "TEN PESOS ONLY"},
        {"19.99", "NINETEEN PESOS AND 99/100 ONLY"},
        {"20", "TWENTY PESOS ONLY"},
        {"21.10", "TWENTY-ONE PESOS AND 10/100 ONLY"},
        {"100", "ONE HUNDRED PESOS ONLY"},
        {"115", "ONE HUNDRED FIFTEEN PESOS ONLY"},
        {"1000", "ONE THOUSAND PESOS ONLY"},
        {"1200.50", "ONE THOUSAND TWO HUNDRED PESOS AND 50/100 ONLY"},
        {"10001", "TEN THOUSAND ONE PESOS ONLY"},
        {"1000000", "ONE MILLION PESOS ONLY"},
        {"1002003.04", "ONE MILLION TWO THOUSAND THREE PESOS AND 04/100 ONLY"},
        {"999999999999.99",
         "NINE HUNDRED NINETY-NINE BILLION NINE HUNDRED NINETY-NINE MILLION NINE HUNDRED NINETY-NINE THOUSAND "
         "NINE HUNDRED NINETY-NINE PESOS AND 99/100 ONLY"},
        {"-45.20", "MINUS FORTY-FIVE PESOS AND 20/100 ONLY"},
        {"0.005", "ZERO PESOS ONLY"},             // half to even, downwards
        {"0.015", "ZERO PESOS AND 02/100 ONLY"},  // and upwards
        {"99.9999", "ONE HUNDRED PESOS ONLY"},    // carries into the pesos
    };
    for (const auto& [amount, words] : rows) EXPECT_EQ(amountInWords(*Money::parse(amount)), words) << amount;
}

TEST(AmountInWords, SpellsCentavosWhenAsked) {
    EXPECT_EQ(amountInWords(*Money::parse("12.01"), Centavos::Words), "TWELVE PESOS AND ONE CENTAVO ONLY");
    EXPECT_EQ(amountInWords(*Money::parse("1.45"), Centavos::Words), "ONE PESO AND FORTY-FIVE CENTAVOS ONLY");
    EXPECT_EQ(amountInWords(*Money::parse("7"), Centavos::Words), "SEVEN PESOS ONLY");
}

TEST(AmountInWords, HoldsTheLargestNumbers) {
    EXPECT_EQ(numberInWords(INT64_MIN).substr(0, 22), "MINUS NINE QUINTILLION");
    EXPECT_EQ(amountInWords(Money::fromUnits(INT64_MAX)).substr(0, 39), "NINE HUNDRED TWENTY-TWO TRILLION THREE ");
}

}  // namespace
}  // namespace kv
