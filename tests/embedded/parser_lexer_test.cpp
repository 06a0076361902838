// The lexer: tokens with their places, literals by kind, and the key that two texts of one shape share.

#include <gtest/gtest.h>

#include "platform/embedded/Lexer.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

std::string keyOf(std::string_view text) {
    const LexedBatch lexed = lex(text);
    return std::string(lexed.key());
}

TEST(Lexer, KeyIsOneForTextsOfTheSameShape) {
    const std::string key = keyOf("select a from t where b='x' and c=5");
    EXPECT_EQ(key, keyOf("select  a from t  where b = 'longer ''text''' and c = 77 -- tail"));
    EXPECT_EQ(key, keyOf("select a /* why */ from t where b\t=\t'' and c=0"));
}

TEST(Lexer, KeyTellsApartWhatCompilesDifferently) {
    struct Case {
        const char* why;
        const char* one;
        const char* other;
    };
    const Case cases[] = {
        {"a text and a number", "select 'x'", "select 1"},
        {"scales of decimals", "select 1.5", "select 1.50"},
        {"integers beyond int", "select 2147483647", "select 2147483648"},
        {"decimals and floats", "select 1.5", "select 1.5e0"},
        {"money and decimals", "select $1.50", "select 1.50"},
        {"texts of the national kind", "select 'x'", "select N'x'"},
        {"patterns that start with a wildcard", "a like 'x%'", "a like '%x'"},
        {"lines, since errors tell them", "select 1\nselect 2", "select 1 select 2"},
        {"names in other letters, since columns are headed by them", "select A", "select a"},
        {"words that a blank parts", "select a b", "select ab"},
        {"a variable after a word", "exec p @a", "exec p@a"},
    };
    for (const Case& c : cases) EXPECT_NE(keyOf(c.one), keyOf(c.other)) << c.why;
}

TEST(Lexer, LiteralsKeepTheirValueAndDigits) {
    const LexedBatch lexed =
        lex("'it''s' N'Pe\xC3\xB1"
            "a' 007 99999999999 0012.340 .5 3. 1e-3 0xFf $5.25 $");
    const std::pair<LiteralKind, std::string_view> wanted[] = {
        {LiteralKind::String, "it's"},
        {LiteralKind::NString,
         "Pe\xC3\xB1"
         "a"},
        {LiteralKind::Int, "007"},
        {LiteralKind::BigInt, "99999999999"},
        {LiteralKind::Decimal, "0012.340"},
        {LiteralKind::Decimal, ".5"},
        {LiteralKind::Decimal, "3."},
        {LiteralKind::Float, "1e-3"},
        {LiteralKind::Binary, "0xFf"},
        {LiteralKind::Money, "5.25"},
        {LiteralKind::Money, ""},
    };
    ASSERT_EQ(lexed.literals.size(), std::size(wanted));
    for (std::size_t i = 0; i < std::size(wanted); ++i) {
        EXPECT_EQ(lexed.literals[i].kind, wanted[i].first) << i;
        EXPECT_EQ(lexed.literals[i].text, wanted[i].second) << i;
    }
    EXPECT_EQ(lexed.literals[2].precision, 1);
    EXPECT_EQ(lexed.literals[4].precision, 5);
    EXPECT_EQ(lexed.literals[4].scale, 3);
}

TEST(Lexer, TokensKnowTheirPlace) {
    const LexedBatch lexed = lex("/* two\nlines */ a\n  [b\nc] 'd\n' e");
    ASSERT_EQ(lexed.tokens.size(), 5u);
    const std::pair<unsigned, unsigned> places[] = {{2, 10}, {3, 3}, {4, 4}, {5, 3}, {5, 4}};
    for (std::size_t i = 0; i < std::size(places); ++i) {
        EXPECT_EQ(lexed.tokens[i].pos.line, places[i].first) << i;
        EXPECT_EQ(lexed.tokens[i].pos.column, places[i].second) << i;
    }
}

TEST(Lexer, APointAfterANameIsNoNumber) {
    const LexedBatch lexed = lex("t.5 a .5 b..c 1.5.2");
    EXPECT_EQ(lexed.literals.size(), 4u);
    EXPECT_EQ(lexed.literals[0].text, "5");
    EXPECT_EQ(lexed.literals[1].text, ".5");
}

TEST(Lexer, ReusesItsMemoryWithoutKeepingTheLastBatch) {
    LexedBatch lexed;
    lex("select 'it''s', 1, 2, 3", lexed);
    lex("select 4", lexed);
    EXPECT_EQ(lexed.literals.size(), 1u);
    EXPECT_EQ(lexed.tokens.size(), 3u);
    EXPECT_EQ(lexed.key(), keyOf("select 9"));
}

TEST(Lexer, NamesLoseTheirMarks) {
    EXPECT_EQ(unquoteName("[a]]b]"), "a]b");
    EXPECT_EQ(unquoteName("\"say \"\"x\"\"\""), "say \"x\"");
    EXPECT_EQ(unquoteName("plain"), "plain");
}

TEST(SplitScript, GoEndsABatchOnlyOnALineOfItsOwn) {
    const auto batches =
        splitScript("select 1\ngo\n\nSELECT 'x\nGO\n' go\n/* \nGO\n*/ select 2\n  Go 3 -- thrice\nGO;\n-- GO\nlast");
    ASSERT_EQ(batches.size(), 3u);
    EXPECT_EQ(batches[0].text, "select 1\n");
    EXPECT_EQ(batches[1].firstLine, 3);
    EXPECT_EQ(batches[1].repeat, 3);
    EXPECT_EQ(batches[2].text, "-- GO\nlast");
    EXPECT_EQ(batches[2].firstLine, 12);
}

}  // namespace
}  // namespace kv::tsql
