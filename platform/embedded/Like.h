#pragma once
// Like: the patterns of LIKE and PATINDEX: % _ [set] [^set] and an escape character, letter case ignored.

#include <optional>
#include <string>
#include <string_view>

namespace kv::tsql {

/// `escape` is a code point, 0 for none. Trailing blanks of the text do not matter, those of the pattern do.
bool likeMatches(std::string_view text, std::string_view pattern, char32_t escape = 0);
/// Place (from 1) where the pattern first matches, 0 for nowhere.
std::size_t patternIndex(std::string_view pattern, std::string_view text);

/// The fixed start of a pattern, up to its first wildcard.
std::string_view fixedPrefix(std::string_view pattern);

}  // namespace kv::tsql
