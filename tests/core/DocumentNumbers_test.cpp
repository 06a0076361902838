// Masks and forms of printed numbers.

#include "core/DocumentNumbers.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(NumberMask, ReplacesItsTokensInTheirOrder) {
    const auto four = SeriesDigits::ThreeOrFour;
    const auto three = SeriesDigits::Three;
    struct {
        const char* mask;
        int series;
        SeriesDigits digits;
        const char* number;
    } rows[] = {
        {"JVDMM-###-YY", 7, four, "JVD03-007-24"},
        {"JVDMM-####-YY", 7, four, "JVD03-0007-24"},
        {"YYYYMM###", 1000, four, "2024031000"},
        {"JVDMM-####", 10000, four, "JVD03-10000"},
        {"########", 3, four, "00030003"},
        {"#####", 3, four, "0003#"},
        {"APDMM-###-YY", 7, three, "APD03-007-24"},
        {"APDMM-###-YY", 1000, three, "APD03-1000-24"},
        {"DMM-###-YY", 12, three, "D03-012-24"},
        {"APMM-####", 7, three, "AP03-007#"},
        {"######", 7, three, "007007"},
        // nothing to count in: the same number all month
        {"APDMM-YY", 7, three, "APD03-24"},
        {"AP##MM", 7, three, "AP##03"},
        {"YYYY-YY", 1, four, "2024-24"},
        {"YYYYY", 1, four, "2024Y"},
        {"MMMM", 1, four, "0303"},
        {"", 5, four, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(maskSeries(maskDate(row.mask, Date(2024, 3, 15)), row.series, row.digits), row.number) << row.mask;
    }
}

TEST(NumberForm, ItsZerosStandForTheInternalNumber) {
    struct {
        const char* form;
        const char* number;
        const char* shown;
    } rows[] = {
        {"0", "12", "12"},
        {"000000", "12", "000012"},
        {"000000", "000012", "000012"},
        {"0", "000012", "12"},
        {"0000", "12345", "12345"},
        {"YYYY-0000", "7", "2024-0007"},
        {"YYMM-000-000", "7", "2403-007-000"},
        {"000000", "2024030001", "2024030001"},
        {"000000", "PF000007", "PF000007"},
        {"0000", "0", "0000"},
        {"NONE", "7", "NONE"},
        {"", "7", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(maskDate(maskNumber(row.form, row.number), Date(2024, 3, 15)), row.shown)
            << row.form << " " << row.number;
    }
}

}  // namespace
}  // namespace kv
