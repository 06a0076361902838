#include "platform/embedded/Utf8.h"

#include <algorithm>
#include <array>

namespace kv::tsql {
namespace {

/// Characters 0x80 to 0x9F of code page 1252; 0 where it has none.
constexpr std::array<char32_t, 32> kWestern = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                               0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                               0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                               0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

bool between(char32_t code, char32_t low, char32_t high) { return code >= low && code <= high; }

}  // namespace

bool sameWord(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if ((a[i] | 32) != (b[i] | 32)) return false;
    }
    return true;
}

std::size_t charactersOf(std::string_view text) {
    std::size_t count = 0;
    for (const char c : text) count += !isContinuation(c);
    return count;
}

std::size_t byteOffset(std::string_view text, std::size_t index) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isContinuation(text[i])) continue;
        if (seen++ == index) return i;
    }
    return text.size();
}

char32_t nextCodePoint(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at++]);
    if (first < 0xC0) return first;
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    char32_t code = first & (0x3F >> more);
    for (int i = 0; i < more && at < text.size() && isContinuation(text[at]); ++i) {
        code = code << 6 | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    return code;
}

void appendCodePoint(std::string& out, char32_t code) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18 & 7));
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

char32_t upperOf(char32_t code) {
    if (code < 0x80) return between(code, 'a', 'z') ? code - 32 : code;
    if (between(code, 0xE0, 0xFE) && code != 0xF7) return code - 32;
    if (code == 0xFF) return 0x178;
    const bool evenUpper = between(code, 0x100, 0x137) || between(code, 0x14A, 0x177);
    const bool oddUpper = between(code, 0x139, 0x148) || between(code, 0x179, 0x17E);
    if (code == 0x131 || code == 0x138 || code == 0x130) return code;
    if (evenUpper && code % 2 == 1) return code - 1;
    if (oddUpper && code % 2 == 0) return code - 1;
    if (between(code, 0x3B1, 0x3C9) && code != 0x3C2) return code - 32;
    if (between(code, 0x430, 0x44F)) return code - 32;
    if (between(code, 0x450, 0x45F)) return code - 80;
    return code;
}

char32_t lowerOf(char32_t code) {
    if (code < 0x80) return between(code, 'A', 'Z') ? code + 32 : code;
    if (between(code, 0xC0, 0xDE) && code != 0xD7) return code + 32;
    if (code == 0x178) return 0xFF;
    const bool evenUpper = between(code, 0x100, 0x137) || between(code, 0x14A, 0x177);
    const bool oddUpper = between(code, 0x139, 0x148) || between(code, 0x179, 0x17E);
    if (code == 0x131 || code == 0x138 || code == 0x130) return code;
    if (evenUpper && code % 2 == 0) return code + 1;
    if (oddUpper && code % 2 == 1) return code + 1;
    if (between(code, 0x391, 0x3A9) && code != 0x3A2) return code + 32;
    if (between(code, 0x410, 0x42F)) return code + 32;
    if (between(code, 0x400, 0x40F)) return code + 80;
    return code;
}

std::string upperText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (static_cast<unsigned char>(c) < 0x80) {
            out += c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
            ++at;
        } else {
            appendCodePoint(out, upperOf(nextCodePoint(text, at)));
        }
    }
    return out;
}

std::string lowerText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (static_cast<unsigned char>(c) < 0x80) {
            out += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
            ++at;
        } else {
            appendCodePoint(out, lowerOf(nextCodePoint(text, at)));
        }
    }
    return out;
}

std::string latinOfUtf8(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = nextCodePoint(text, at);
        if (code < 0x80 || between(code, 0xA0, 0xFF)) {
            out += static_cast<char>(static_cast<unsigned char>(code));
            continue;
        }
        const auto found = std::find(kWestern.begin(), kWestern.end(), code);
        out += found == kWestern.end() ? '?' : static_cast<char>(0x80 + (found - kWestern.begin()));
    }
    return out;
}

std::string utf8OfLatin(std::string_view bytes) {
    std::string out;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const char32_t western = between(byte, 0x80, 0x9F) ? kWestern[byte - 0x80U] : byte;
        appendCodePoint(out, western == 0 && byte != 0 ? byte : western);
    }
    return out;
}

std::string utf16OfUtf8(std::string_view text) {
    std::string out;
    const auto unit = [&](char32_t value) {
        out += static_cast<char>(value & 0xFF);
        out += static_cast<char>(value >> 8 & 0xFF);
    };
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = nextCodePoint(text, at);
        if (code < 0x10000) {
            unit(code);
        } else {
            unit(0xD800 + ((code - 0x10000) >> 10));
            unit(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return out;
}

}  // namespace kv::tsql
