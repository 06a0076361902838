#include "platform/embedded/Collation.h"

#include <array>
#include <cstring>

#include "platform/embedded/Udf.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

/// Letters without their accents, for the characters 0xC0 to 0xFF; 0 stands for itself.
constexpr char kBase[] =
    "aaaaaaaceeeeiiii"
    "\0nooooo\0ouuuuy\0\0"
    "aaaaaaaceeeeiiii"
    "\0nooooo\0ouuuuy\0y";

/// Places of the ASCII characters in the order: control characters and blank, marks, digits, letters without their
/// case.
constexpr auto kFold = [] {
    std::array<unsigned char, 128> fold{};
    unsigned char place = 0;
    const auto isDigit = [](std::size_t c) { return c >= '0' && c <= '9'; };
    const auto isLetter = [](std::size_t c) { return (c | 32) >= 'a' && (c | 32) <= 'z'; };
    for (std::size_t c = 0; c < fold.size(); ++c) {
        if (!isDigit(c) && !isLetter(c)) fold[c] = place++;
    }
    for (std::size_t c = '0'; c <= '9'; ++c) fold[c] = place++;
    for (std::size_t c = 'a'; c <= 'z'; ++c) fold[c] = fold[c - 32] = place++;
    return fold;
}();

bool isPlain(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// The rest of the longer text against blanks.
int againstBlanks(std::string_view rest) {
    for (const char c : rest) {
        if (c != ' ') return static_cast<unsigned char>(c) < ' ' ? -1 : 1;
    }
    return 0;
}

/// From a place where at least one text has a character beyond ASCII.
int compareRanked(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    int accents = 0;
    while (i < a.size() && j < b.size()) {
        const CharacterRank x = rankOf(nextCodePoint(a, i));
        const CharacterRank y = rankOf(nextCodePoint(b, j));
        if (x.primary != y.primary) return x.primary < y.primary ? -1 : 1;
        if (accents == 0 && x.secondary != y.secondary) accents = x.secondary < y.secondary ? -1 : 1;
    }
    const int tail = i < a.size() ? againstBlanks(a.substr(i)) : -againstBlanks(b.substr(j));
    return tail != 0 ? tail : accents;
}

int collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return compareTexts({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                        {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

}  // namespace

CharacterRank rankOf(char32_t code) {
    if (code < 0x80) return {kFold[code], 0};
    if (code >= 0xC0 && code <= 0xFF) {
        const char base = kBase[code - 0xC0];
        if (base != 0) return {kFold[static_cast<unsigned char>(base)], lowerOf(code)};
    }
    return {0x10000 + lowerOf(code), 0};
}

int compareTexts(std::string_view a, std::string_view b) {
    const std::size_t shorter = a.size() < b.size() ? a.size() : b.size();
    std::size_t i = 0;
    while (i + 8 <= shorter && std::memcmp(a.data() + i, b.data() + i, 8) == 0) i += 8;
    while (i > 0 && i < a.size() && isContinuation(a[i])) --i;  // the equal part ended inside a character
    for (; i < shorter; ++i) {
        if (!isPlain(a[i]) || !isPlain(b[i])) return compareRanked(a.substr(i), b.substr(i));
        const unsigned char x = kFold[static_cast<unsigned char>(a[i])];
        const unsigned char y = kFold[static_cast<unsigned char>(b[i])];
        if (x != y) return x < y ? -1 : 1;
    }
    return i < a.size() ? againstBlanks(a.substr(i)) : -againstBlanks(b.substr(i));
}

void registerCollation(sqlite3* db) {
    sqlite3_create_collation_v2(db, "CI", SQLITE_UTF8, nullptr, collate, nullptr);
    // SQLite's Bloom filters hash a text with its length, so that a join would lose 'x' = 'x ' before the collation
    // is asked. The mask is the one of SQLITE_TESTCTRL_OPTIMIZATIONS for them.
    constexpr unsigned kBloomFilter = 0x0008'0000;
    sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, kBloomFilter);
}

}  // namespace kv::tsql
