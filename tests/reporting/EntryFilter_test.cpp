// What the columns of the editable grid take and write back.

#include "reporting/EntryFilter.h"

#include <gtest/gtest.h>

#include "reporting/SearchDialog.h"

namespace kv {
namespace {

TEST(EntryFilter, TakesOnlyTheKeysOfItsKind) {
    using enum EntryFilter;
    struct {
        EntryFilter filter;
        const char* typed;
        const char* kept;
        const char* taken;
    } rows[] = {
        {Free, "aB'1", "", "aB'1"},
        {UpperCase,
         "pe\xC3\xB1"
         "a",
         "",
         "PE\xC3\x91"
         "A"},
        {SignedNumber, "-12.5", "", "-12.5"},
        {SignedNumber, "1.2.3", "", "1.23"},
        {SignedNumber, ".", "12.5", ""},
        {SignedNumber, "1a,2", "", "12"},
        {PositiveNumber, "-5", "", "5"},
        {PositiveNumber, "+.5", "", "+.5"},
        {DateText, "3/15/2024x", "", "3/15/2024"},
        {DateText, "3-15", "", "315"},
        {SignedNumber, "\t", "", "\t"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(filterKeys(row.filter, row.typed, row.kept), row.taken) << row.typed << " beside " << row.kept;
    }
}

TEST(EntryFilter, WritesNumbersAndDatesBackInTheirForm) {
    using enum EntryFilter;
    struct {
        EntryFilter filter;
        const char* typed;
        const char* written;
    } rows[] = {
        {SignedNumber, "1234.5", "1,234.50"},
        {SignedNumber, "100.004", "100.004"},
        {SignedNumber, "-", "-"},
        {PositiveNumber, "+7", "7.00"},
        {DateText, "03/05/2024", "3/5/2024"},
        {DateText, "13/45/2024", "13/45/2024"},
        {UpperCase, "ABC", "ABC"},
        {Free, "1234.5", "1234.5"},
    };
    for (const auto& row : rows) EXPECT_EQ(writtenBack(row.filter, row.typed), row.written) << row.typed;
}

TEST(EntryFilter, RefusesNumbersThatWouldLoseTheirCentavos) {
    using enum EntryFilter;
    EXPECT_EQ(entryFault(SignedNumber, "999999999999.99"), "");
    EXPECT_EQ(writtenBack(SignedNumber, "999999999999.99"), "999,999,999,999.99");
    EXPECT_NE(entryFault(SignedNumber, "1000000000000"), "");
    EXPECT_NE(entryFault(SignedNumber, "-99999999999999999999"), "");
    EXPECT_NE(entryFault(PositiveNumber, "1000000000000"), "");
    EXPECT_EQ(entryFault(UpperCase, "1000000000000"), "");
    EXPECT_EQ(entryFault(SignedNumber, ""), "");
}

TEST(EntryFilter, TakesTheWaysInWhichSpreadsheetsWriteFigures) {
    using enum EntryFilter;
    struct {
        EntryFilter filter;
        const char* pasted;
        const char* entry;
    } rows[] = {
        {SignedNumber, " 1,250.50 ", "1250.50"},
        {SignedNumber, "(1,250.50)", "-1250.50"},
        {SignedNumber, "12.5-", "-12.5"},
        {SignedNumber, " -   ", ""},
        {SignedNumber, "()", "()"},
        {DateText, "2024-03-15", "3/15/2024"},
        {DateText, "15 Mar 2024", "3/15/2024"},
        {DateText, "soon", "soon"},
        {Free, " A, B ", "A, B"},
        {UpperCase, "(a)", "(a)"},
    };
    for (const auto& row : rows) EXPECT_EQ(pastedEntry(row.filter, row.pasted), row.entry) << row.pasted;
}

TEST(SearchStatement, ReplacesEveryMarkAndCannotBeBrokenOutOf) {
    EXPECT_EQ(searchStatement("select Code from T where a like '##%' or b like '##%'", " and Status = 'A'", "x"),
              "select Code from T where a like 'x%' or b like 'x%' and Status = 'A'");
    EXPECT_EQ(searchStatement("select 1 where a like '##%'", "", "'; drop table GL --"),
              "select 1 where a like '''; drop table GL --%'");
}

}  // namespace
}  // namespace kv
