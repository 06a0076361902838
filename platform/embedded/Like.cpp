#include "platform/embedded/Like.h"

#include <array>

#include "platform/embedded/Collation.h"
#include "platform/embedded/Udf.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

/// One element of a pattern at a place: what it is and where the next one begins.
class PatternReader {
public:
    PatternReader(std::string_view pattern, char32_t escape) : pattern_(pattern), escape_(escape) {}

    enum class Element { End, Any, One, Literal, Set, Broken };

    Element elementAt(std::size_t at, std::size_t& next) {
        if (at >= pattern_.size()) return Element::End;
        next = at;
        char32_t code = nextCodePoint(pattern_, next);
        if (escape_ != 0 && code == escape_) {
            if (next >= pattern_.size()) return Element::Broken;
            literal_ = lowerOf(nextCodePoint(pattern_, next));
            return Element::Literal;
        }
        if (code == '%') return Element::Any;
        if (code == '_') return Element::One;
        if (code == '[') {
            setBegin_ = next;
            const std::size_t close = closingBracket(next);
            if (close == std::string_view::npos) return Element::Broken;
            setEnd_ = close;
            next = close + 1;
            return Element::Set;
        }
        literal_ = lowerOf(code);
        return Element::Literal;
    }

    char32_t literal() const { return literal_; }

    bool setHolds(char32_t code) const {
        std::size_t at = setBegin_;
        bool negated = false;
        if (at < setEnd_ && pattern_[at] == '^') {
            negated = true;
            ++at;
        }
        bool found = false;
        const CharacterRank rank = rankOf(code);
        while (at < setEnd_) {
            const char32_t low = member(at);
            if (at + 1 < setEnd_ && pattern_[at] == '-') {
                ++at;
                const char32_t high = member(at);
                found = found || (ordered(rankOf(low), rank) && ordered(rank, rankOf(high)));
            } else {
                found = found || lowerOf(low) == lowerOf(code);
            }
        }
        return found != negated;
    }

private:
    char32_t member(std::size_t& at) const {
        char32_t code = nextCodePoint(pattern_, at);
        if (escape_ != 0 && code == escape_ && at < setEnd_) code = nextCodePoint(pattern_, at);
        return code;
    }

    std::size_t closingBracket(std::size_t at) const {
        while (at < pattern_.size()) {
            const std::size_t start = at;
            const char32_t code = nextCodePoint(pattern_, at);
            if (code == ']') return start;
            if (escape_ != 0 && code == escape_ && at < pattern_.size()) nextCodePoint(pattern_, at);
        }
        return std::string_view::npos;
    }

    std::string_view pattern_;
    char32_t escape_;
    char32_t literal_ = 0;
    std::size_t setBegin_ = 0;
    std::size_t setEnd_ = 0;
};

bool onlyBlanks(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// The quick way: a letter or mark of ASCII on both sides that means itself.
bool plainPair(std::string_view pattern, std::size_t p, std::string_view text, std::size_t at, char32_t escape) {
    if (p >= pattern.size() || at >= text.size()) return false;
    const auto a = static_cast<unsigned char>(pattern[p]);
    const auto b = static_cast<unsigned char>(text[at]);
    return (a | b) < 0x80 && a != '%' && a != '_' && a != '[' && a != escape;
}

/// Does the text from byte `at` on match the whole pattern?
bool matchesAt(std::string_view text, std::size_t at, std::string_view pattern, char32_t escape) {
    using Element = PatternReader::Element;
    PatternReader reader(pattern, escape);
    std::size_t p = 0;
    std::size_t retryPattern = std::string_view::npos;  // after the last %
    std::size_t retryText = 0;
    for (;;) {
        std::size_t next = p;
        std::size_t textNext = at;
        bool same = false;
        if (plainPair(pattern, p, text, at, escape)) {
            same = folded(pattern[next++]) == folded(text[textNext++]);
        } else {
            const Element element = reader.elementAt(p, next);
            if (element == Element::Broken) return false;
            if (element == Element::Any) {
                p = next;
                if (p >= pattern.size()) return true;
                retryPattern = p;
                retryText = at;
                continue;
            }
            if (element == Element::End && onlyBlanks(text.substr(at))) return true;
            if (element != Element::End && at < text.size()) {
                const char32_t code = nextCodePoint(text, textNext);
                same = element == Element::One || (element == Element::Literal && lowerOf(code) == reader.literal()) ||
                       (element == Element::Set && reader.setHolds(code));
            }
        }
        if (same) {
            p = next;
            at = textNext;
            continue;
        }
        if (retryPattern == std::string_view::npos || retryText >= text.size()) return false;
        nextCodePoint(text, retryText);
        at = retryText;
        p = retryPattern;
    }
}

char32_t escapeOf(std::string_view text) {
    std::size_t at = 0;
    if (text.empty()) return 0;
    const char32_t code = nextCodePoint(text, at);
    if (at != text.size()) raise(506, {text, "LIKE"});
    return code;
}

// ------------------------------------------------------------------------------------------ called by SQLite

void likeCall(Call& call) {
    if (call.anyNull()) return call.null();
    const char32_t escape = call.count() > 2 ? escapeOf(call.text(2)) : 0;
    call.result(likeMatches(call.text(1), call.text(0), escape) ? 1 : 0);
}

/// The lowest and the highest text that a pattern with a fixed start can match.
void likeLow(Call& call) {
    if (call.anyNull()) return call.null();
    call.result(std::string(fixedPrefix(call.text(0))) + '\x01');
}

void likeHigh(Call& call) {
    if (call.anyNull()) return call.null();
    std::string high(fixedPrefix(call.text(0)));
    appendCodePoint(high, 0x10FFFF);
    call.result(std::string_view(high));
}

void patIndex(Call& call) {
    if (call.anyNull()) return call.null();
    call.result(static_cast<std::int64_t>(patternIndex(call.text(0), call.text(1))));
}

constexpr std::array<Udf, 5> kUdfs = {{
    {"t_like", 2, true, udf<likeCall>},
    {"t_like", 3, true, udf<likeCall>},
    {"t_likelow", 1, true, udf<likeLow>},
    {"t_likehigh", 1, true, udf<likeHigh>},
    {"t_patindex", 2, true, udf<patIndex>},
}};

}  // namespace

bool likeMatches(std::string_view text, std::string_view pattern, char32_t escape) {
    return matchesAt(text, 0, pattern, escape);
}

std::size_t patternIndex(std::string_view pattern, std::string_view text) {
    if (pattern.empty() || pattern[0] != '%') return matchesAt(text, 0, pattern, 0) ? 1 : 0;
    while (!pattern.empty() && pattern[0] == '%') pattern.remove_prefix(1);
    std::size_t place = 1;
    for (std::size_t at = 0; at < text.size(); ++place) {
        if (matchesAt(text, at, pattern, 0)) return place;
        nextCodePoint(text, at);
    }
    return pattern.empty() ? 1 : 0;
}

std::string_view fixedPrefix(std::string_view pattern) { return pattern.substr(0, pattern.find_first_of("%_[")); }

std::span<const Udf> likeUdfs() { return kUdfs; }

}  // namespace kv::tsql
