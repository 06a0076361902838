// Masks of printed numbers.

#include "ledger/BatchNumbers.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(NumberMask, ReplacesItsTokensInTheirOrder) {
    struct {
        const char* mask;
        int series;
        const char* number;
    } rows[] = {
        {"JVDMM-###-YY", 7, "JVD03-007-24"},
        {"JVDMM-####-YY", 7, "JVD03-0007-24"},
        {"YYYYMM###", 1000, "2024031000"},
        {"YYYY-YY", 1, "2024-24"},
        {"0", 9, "0"},
        {"DMM-###-YY", 12, "D03-012-24"},
        {"########", 3, "00030003"},
        {"#####", 3, "0003#"},
        {"MMMM", 1, "0303"},
        {"", 5, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(maskSeries(maskDate(row.mask, Date(2024, 3, 15)), row.series), row.number) << row.mask;
    }
}

}  // namespace
}  // namespace kv
