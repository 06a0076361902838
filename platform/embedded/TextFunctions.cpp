// The functions of text as SQLite calls them: places and lengths count characters, comparisons ignore letter case.

#include <algorithm>
#include <array>

#include "platform/embedded/Collation.h"
#include "platform/embedded/NumberText.h"
#include "platform/embedded/Udf.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

constexpr std::size_t kTextMax = 8000;  ///< characters that a function makes of text that is not varchar(max)

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    return text;
}

/// `count` characters from character `start` (from 0).
std::string_view piece(std::string_view text, std::int64_t start, std::int64_t count) {
    if (count <= 0) return {};
    const std::size_t from = byteOffset(text, static_cast<std::size_t>(start));
    const std::string_view rest = text.substr(from);
    if (static_cast<std::uint64_t>(count) >= rest.size()) return rest;
    return rest.substr(0, byteOffset(rest, static_cast<std::size_t>(count)));
}

void length(Call& call) {
    if (call.anyNull()) return call.null();
    call.result(static_cast<std::int64_t>(charactersOf(withoutTrailingBlanks(call.text(0)))));
}

/// Bytes that the text takes as varchar (1) or nvarchar (2).
void dataLength(Call& call) {
    if (call.anyNull()) return call.null();
    const bool unicode = call.small(1) == 2;
    call.result(static_cast<std::int64_t>(unicode ? utf16OfUtf8(call.text(0)).size() : charactersOf(call.text(0))));
}

void left(Call& call) {
    if (call.anyNull()) return call.null();
    const std::int64_t count = call.integer(1);
    if (count < 0) raise(537);
    call.result(piece(call.text(0), 0, count));
}

void right(Call& call) {
    if (call.anyNull()) return call.null();
    const std::int64_t count = call.integer(1);
    if (count < 0) raise(536, {"right"});
    const auto total = static_cast<std::int64_t>(charactersOf(call.text(0)));
    call.result(piece(call.text(0), std::max<std::int64_t>(0, total - count), count));
}

void substring(Call& call) {
    if (call.anyNull()) return call.null();
    std::int64_t start = call.integer(1);
    std::int64_t count = call.integer(2);
    if (count < 0) raise(537);
    if (start < 1) {
        count += start - 1;
        start = 1;
    }
    call.result(piece(call.text(0), start - 1, count));
}

/// Places of `part` in `text` without regard to case. Folding keeps the count of bytes, so places agree.
class Finder {
public:
    Finder(std::string_view text, std::string_view part) : text_(lowerText(text)), part_(lowerText(part)) {}
    std::size_t from(std::size_t at) const { return text_.find(part_, at); }

private:
    std::string text_;
    std::string part_;
};

void charIndex(Call& call) {
    if (call.anyNull()) return call.null();
    const std::string_view part = call.text(0);
    const std::string_view text = call.text(1);
    const std::int64_t start = call.count() > 2 ? std::max<std::int64_t>(1, call.integer(2)) : 1;
    if (part.empty()) return call.result(0);
    const std::size_t from = byteOffset(text, static_cast<std::size_t>(start - 1));
    const std::size_t hit = Finder(text, part).from(from);
    call.result(hit == std::string::npos ? 0 : static_cast<std::int64_t>(charactersOf(text.substr(0, hit))) + 1);
}

void replace(Call& call) {
    if (call.anyNull()) return call.null();
    const std::string_view text = call.text(0);
    const std::string_view part = call.text(1);
    const std::string_view other = call.text(2);
    if (part.empty()) return call.same(0);
    const Finder finder(text, part);
    std::size_t hit = finder.from(0);
    if (hit == std::string::npos) return call.same(0);
    std::string out;
    std::size_t at = 0;
    for (; hit != std::string::npos; hit = finder.from(at)) {
        out.append(text.substr(at, hit - at)).append(other);
        at = hit + part.size();
    }
    out.append(text.substr(at));
    call.result(std::string_view(out));
}

void upper(Call& call) { call.anyNull() ? call.null() : call.result(std::string_view(upperText(call.text(0)))); }
void lower(Call& call) { call.anyNull() ? call.null() : call.result(std::string_view(lowerText(call.text(0)))); }
void trimLeft(Call& call) { call.anyNull() ? call.null() : call.result(withoutLeadingBlanks(call.text(0))); }
void trimRight(Call& call) { call.anyNull() ? call.null() : call.result(withoutTrailingBlanks(call.text(0))); }
void trimBoth(Call& call) {
    call.anyNull() ? call.null() : call.result(withoutLeadingBlanks(withoutTrailingBlanks(call.text(0))));
}

void repeat(Call& call, std::string_view text, std::int64_t count, bool unbounded) {
    if (count < 0) return call.null();
    const std::size_t characters = std::max<std::size_t>(1, charactersOf(text));
    const std::size_t most =
        unbounded ? std::size_t{100'000'000} / std::max<std::size_t>(1, text.size()) : kTextMax / characters + 1;
    std::string out;
    const std::size_t times = std::min(static_cast<std::size_t>(count), most);
    out.reserve(times * text.size());
    for (std::size_t i = 0; i < times; ++i) out += text;
    if (!unbounded && out.size() > kTextMax) out.resize(byteOffset(out, kTextMax));
    call.result(std::string_view(out));
}

void replicate(Call& call) {
    if (call.anyNull()) return call.null();
    repeat(call, call.text(0), call.integer(1), call.small(2) != 0);
}

void space(Call& call) {
    if (call.anyNull()) return call.null();
    repeat(call, " ", call.integer(0), false);
}

void reverse(Call& call) {
    if (call.anyNull()) return call.null();
    const std::string_view text = call.text(0);
    std::string out(text.size(), '\0');
    std::size_t end = out.size();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        nextCodePoint(text, at);
        end -= at - start;
        out.replace(end, at - start, text.substr(start, at - start));
    }
    call.result(std::string_view(out));
}

void stuff(Call& call) {
    if (call.isNull(0) || call.isNull(1) || call.isNull(2)) return call.null();
    const std::string_view text = call.text(0);
    const std::int64_t start = call.integer(1);
    const std::int64_t count = call.integer(2);
    const auto total = static_cast<std::int64_t>(charactersOf(text));
    if (start < 1 || count < 0 || start > total) return call.null();
    std::string out(piece(text, 0, start - 1));
    if (!call.isNull(3)) out += call.text(3);
    const std::int64_t after = start - 1 + std::min(count, total);
    if (after < total) out += piece(text, after, total - after);
    call.result(std::string_view(out));
}

/// STR(number, length, decimals): right-aligned, as many decimals as there is room for, asterisks without room.
void str(Call& call) {
    if (call.anyNull()) return call.null();
    const std::int64_t width = call.integer(1);
    const std::int64_t wanted = call.integer(2);
    if (width < 0 || wanted < 0) return call.null();
    if (width > static_cast<std::int64_t>(kTextMax)) return call.null();
    const auto room = static_cast<std::size_t>(width);
    int places = static_cast<int>(std::min<std::int64_t>(wanted, 16));
    std::string text;
    for (;; --places) {
        text = unitsText(unitsOf(call.real(0), places), places);
        if (text.size() <= room || places == 0) break;
    }
    if (text.size() > room) text.assign(room, '*');
    text.insert(0, room - text.size(), ' ');
    call.result(std::string_view(text));
}

void ascii(Call& call) {
    if (call.anyNull() || call.text(0).empty()) return call.null();
    const std::string byte = latinOfUtf8(piece(call.text(0), 0, 1));
    call.result(static_cast<int>(static_cast<unsigned char>(byte[0])));
}

void unicode(Call& call) {
    if (call.anyNull() || call.text(0).empty()) return call.null();
    std::size_t at = 0;
    call.result(static_cast<int>(nextCodePoint(call.text(0), at)));
}

void character(Call& call) {
    if (call.anyNull() || call.integer(0) < 0 || call.integer(0) > 255) return call.null();
    const char byte = static_cast<char>(static_cast<unsigned char>(call.integer(0)));
    call.result(std::string_view(utf8OfLatin(std::string_view(&byte, 1))));
}

void wideCharacter(Call& call) {
    const std::int64_t code = call.integer(0);
    if (call.anyNull() || code < 0 || code > 0xFFFF || (code >= 0xD800 && code < 0xE000)) return call.null();
    std::string out;
    appendCodePoint(out, static_cast<char32_t>(code));
    call.result(std::string_view(out));
}

void concat(Call& call) {
    std::string out;
    for (int i = 0; i < call.count(); ++i) out += call.text(i);
    call.result(std::string_view(out));
}

void concatWith(Call& call) {
    std::string out;
    bool first = true;
    for (int i = 1; i < call.count(); ++i) {
        if (call.isNull(i)) continue;
        if (!first) out += call.text(0);
        out += call.text(i);
        first = false;
    }
    call.result(std::string_view(out));
}

void quoteName(Call& call) {
    if (call.anyNull() || charactersOf(call.text(0)) > 128) return call.null();
    const std::string_view mark = call.count() > 1 ? call.text(1) : "[";
    struct Pair {
        std::string_view marks;
        char open;
        char close;
    };
    constexpr std::array<Pair, 6> kPairs = {
        {{"[]", '[', ']'}, {"'", '\'', '\''}, {"\"", '"', '"'}, {"()", '(', ')'}, {"<>", '<', '>'}, {"{}", '{', '}'}}};
    const auto pair = std::find_if(kPairs.begin(), kPairs.end(), [&](const Pair& p) {
        return !mark.empty() && p.marks.find(mark[0]) != std::string_view::npos;
    });
    if (pair == kPairs.end()) return call.null();
    std::string out(1, pair->open);
    for (const char c : call.text(0)) {
        out += c;
        if (c == pair->close) out += c;
    }
    out += pair->close;
    call.result(std::string_view(out));
}

void translate(Call& call) {
    if (call.anyNull()) return call.null();
    std::u32string from;
    std::u32string to;
    for (std::size_t at = 0; at < call.text(1).size();) from += lowerOf(nextCodePoint(call.text(1), at));
    for (std::size_t at = 0; at < call.text(2).size();) to += nextCodePoint(call.text(2), at);
    if (from.size() != to.size()) raise(9828);
    std::string out;
    for (std::size_t at = 0; at < call.text(0).size();) {
        const char32_t code = nextCodePoint(call.text(0), at);
        const std::size_t hit = from.find(lowerOf(code));
        appendCodePoint(out, hit == std::u32string::npos ? code : to[hit]);
    }
    call.result(std::string_view(out));
}

void isNumeric(Call& call) { call.result(!call.isNull(0) && looksNumeric(call.text(0)) ? 1 : 0); }

constexpr std::array<Udf, 28> kUdfs = {{
    {"t_len", 1, true, udf<length>},          {"t_datalength", 2, true, udf<dataLength>},
    {"t_left", 2, true, udf<left>},           {"t_right", 2, true, udf<right>},
    {"t_substring", 3, true, udf<substring>}, {"t_charindex", 2, true, udf<charIndex>},
    {"t_charindex", 3, true, udf<charIndex>}, {"t_replace", 3, true, udf<replace>},
    {"t_upper", 1, true, udf<upper>},         {"t_lower", 1, true, udf<lower>},
    {"t_ltrim", 1, true, udf<trimLeft>},      {"t_rtrim", 1, true, udf<trimRight>},
    {"t_trim", 1, true, udf<trimBoth>},       {"t_replicate", 3, true, udf<replicate>},
    {"t_space", 1, true, udf<space>},         {"t_reverse", 1, true, udf<reverse>},
    {"t_stuff", 4, true, udf<stuff>},         {"t_str", 3, true, udf<str>},
    {"t_ascii", 1, true, udf<ascii>},         {"t_unicode", 1, true, udf<unicode>},
    {"t_char", 1, true, udf<character>},      {"t_nchar", 1, true, udf<wideCharacter>},
    {"t_concat", -1, true, udf<concat>},      {"t_concat_ws", -1, true, udf<concatWith>},
    {"t_quotename", 1, true, udf<quoteName>}, {"t_quotename", 2, true, udf<quoteName>},
    {"t_translate", 3, true, udf<translate>}, {"t_isnumeric", 1, true, udf<isNumeric>},
}};

}  // namespace

std::span<const Udf> textUdfs() { return kUdfs; }

}  // namespace kv::tsql
