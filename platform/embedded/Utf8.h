#pragma once
// Utf8: counting, cutting, folding and recoding of UTF-8 text, by characters as T-SQL counts them.

#include <cstdint>
#include <string>
#include <string_view>

namespace kv::tsql {

inline bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::size_t charactersOf(std::string_view text);
/// Byte at which character `index` (from 0) begins; the size of the text where there are fewer.
std::size_t byteOffset(std::string_view text, std::size_t index);
/// Names that differ in the case of ASCII letters only.
bool sameWord(std::string_view a, std::string_view b);

/// The code point at `at`, which moves past it; a broken sequence gives its byte.
char32_t nextCodePoint(std::string_view text, std::size_t& at);
void appendCodePoint(std::string& out, char32_t code);

/// Letters of ASCII, Latin-1 and Latin Extended-A, Greek and Cyrillic in the other case.
char32_t upperOf(char32_t code);
char32_t lowerOf(char32_t code);
std::string upperText(std::string_view text);
std::string lowerText(std::string_view text);

/// Code page 1252 and UTF-16LE, as varchar and nvarchar count their bytes.
std::string latinOfUtf8(std::string_view text);
std::string utf8OfLatin(std::string_view bytes);
std::string utf16OfUtf8(std::string_view text);

}  // namespace kv::tsql
