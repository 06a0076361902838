// Lines of plays and the comparing of texts.
#include <gtest/gtest.h>

#include "platform/base/Paths.h"
#include "platform/forms/player/Play.h"

namespace kv::test {
namespace {

TEST(Play, ComparesWithStars) {
    struct Case {
        const char* pattern;
        const char* found;
        bool held;
    };
    const Case cases[] = {
        {"CASH", "CASH", true},
        {"CASH", "cash", false},
        {"", "", true},
        {"", "x", false},
        {"*", "", true},
        {"C*H", "CASH", true},
        {"C*H", "CASHIER", false},
        {"*a*b*", "xxaxxbxx", true},
        {"a*ab", "aab", true},
        {"a*ab", "aaba", false},
        {R"(3 \* 4)", "3 * 4", true},
        {R"(3 \* 4)", "3 x 4", false},
        {R"(a\\b)", R"(a\b)", true},
        {R"(a\b)", R"(a\b)", true},
        {R"(\**)", "*anything", true},
        {R"(\**)", "anything", false},
        {"two\nlines*", "two\nlines\nmore", true},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(matches(one.pattern, one.found), one.held) << one.pattern << " against " << one.found;
    }
    EXPECT_TRUE(holds("1101", "the 1101 CASH"));
    EXPECT_FALSE(holds("1102", "the 1101 CASH"));
    EXPECT_EQ(plainText(R"(a\*b\\c*)"), R"(a*b\c*)");
}

TEST(Play, ReadsWordsAndComments) {
    const PlayLine line("a.play", 7, R"(  cell grd 1 5 "say \"so\"\n" #2 # the rest " )");
    ASSERT_EQ(line.size(), 6u);
    EXPECT_EQ(line.text(4, ""), "say \"so\"\n");
    EXPECT_TRUE(line.quoted(4));
    EXPECT_EQ(line.ordinal(5), 2);
    EXPECT_EQ(line.number(2, ""), 1);
    EXPECT_EQ(line.place(), "a.play:7");
    EXPECT_TRUE(PlayLine("a.play", 1, "#2 is a comment at the start").empty());
    EXPECT_EQ(PlayLine("a.play", 1, "press x #2nd").size(), 2u);
    EXPECT_EQ(PlayLine("a.play", 1, "choose x \"#2\"").ordinal(2), -1);
    EXPECT_THROW(PlayLine("a.play", 1, "say \"open"), Failure);
    EXPECT_THROW(line.number(0, "a number"), Failure);
    EXPECT_THROW(line.word(9, "a word"), Failure);
    EXPECT_THROW(line.atMost(5), Failure);
}

TEST(Play, IncludesFilesInTheirPlaces) {
    const std::string folder = testing::TempDir();
    writeTextFile(folder + "outer.play", "say \"1\"\ninclude \"inner.play\"\nsay \"3\"\n");
    writeTextFile(folder + "inner.play", "\n# nothing\nsay \"2\"\r\n");
    const auto lines = readPlay(folder + "outer.play");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].place(), folder + "inner.play:3");
    EXPECT_EQ(lines[1].text(1, ""), "2");

    writeTextFile(folder + "ring.play", "include \"ring.play\"\n");
    EXPECT_THROW(readPlay(folder + "ring.play"), Failure);
    writeTextFile(folder + "lost.play", "say \"1\"\ninclude \"nowhere.play\"\n");
    try {
        readPlay(folder + "lost.play");
        FAIL() << "a lost file was included";
    } catch (const Failure& failure) {
        EXPECT_NE(std::string(failure.what()).find("lost.play:2"), std::string::npos) << failure.what();
    }
}

}  // namespace
}  // namespace kv::test
