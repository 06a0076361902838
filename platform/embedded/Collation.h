#pragma once
// Collation: how texts compare: letter case and trailing blanks do not count, accents decide between equal letters.

#include <string_view>

namespace kv::tsql {

/// Below, equal or above 0.
int compareTexts(std::string_view a, std::string_view b);
inline bool equalTexts(std::string_view a, std::string_view b) { return compareTexts(a, b) == 0; }

/// Rank of one character: primary (letter without case and accent), then secondary (its accent).
struct CharacterRank {
    char32_t primary = 0;
    char32_t secondary = 0;
};
inline bool ordered(const CharacterRank& low, const CharacterRank& high) {
    return low.primary != high.primary ? low.primary < high.primary : low.secondary <= high.secondary;
}
CharacterRank rankOf(char32_t code);

}  // namespace kv::tsql
