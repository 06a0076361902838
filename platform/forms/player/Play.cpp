#include "platform/forms/player/Play.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"

namespace kv {

namespace {

constexpr int kIncludes_max = 20;
constexpr const char* kPlaced = ": the play cannot be read: ";

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

/// "#" starts a comment unless it begins a row number: "#2".
bool startsComment(std::string_view rest, bool firstWord) {
    if (rest.empty() || rest[0] != '#') return false;
    std::size_t i = 1;
    while (i < rest.size() && std::isdigit(static_cast<unsigned char>(rest[i]))) ++i;
    const bool ordinal = i > 1 && (i == rest.size() || isBlank(rest[i]));
    return firstWord || !ordinal;
}

std::size_t readQuoted(std::string_view source, std::size_t at, Word& word) {
    word.quoted = true;
    for (++at; at < source.size() && source[at] != '"'; ++at) {
        if (source[at] != '\\' || at + 1 == source.size()) {
            word.text += source[at];
            continue;
        }
        const char next = source[++at];
        switch (next) {
            case 'n':
                word.text += '\n';
                break;
            case 't':
                word.text += '\t';
                break;
            case '"':
                word.text += '"';
                break;
            default:
                (word.text += '\\') += next;
        }
    }
    if (at >= source.size()) throw Failure("the text in quotes has no end");
    return at + 1;
}

std::string folderOf(const std::string& file) {
    const auto slash = file.find_last_of('/');
    return slash == std::string::npos ? std::string() : file.substr(0, slash + 1);
}

/// keys "ab{Enter}" stands for a line `key` for each of them, so that a box may open between two.
void addStrokes(const PlayLine& line, std::vector<PlayLine>& lines) {
    line.atMost(2);
    const std::string keys = line.text(1, "the keys");
    for (std::size_t at = 0; at < keys.size();) {
        const std::size_t close = keys[at] == '{' ? keys.find('}', at + 2) : std::string::npos;
        std::size_t length = 1;
        while (at + length < keys.size() && (static_cast<unsigned char>(keys[at + length]) & 0xC0) == 0x80) ++length;
        std::string key = close != std::string::npos ? keys.substr(at + 1, close - at - 1) : keys.substr(at, length);
        at = close != std::string::npos ? close + 1 : at + length;
        if (key == " ") key = "Space";
        if (key == "\"" || key == "\\" || key == "*") key.insert(0, 1, '\\');
        lines.emplace_back(line.file(), line.number(), "key \"" + key + "\"");
    }
}

std::vector<PlayLine> readWithIncludes(const std::string& file, int depth) {
    std::string all;
    try {
        all = readTextFile(file);
    } catch (const Error& error) {
        throw Failure(error.description);
    }
    std::vector<PlayLine> lines;
    int number = 0;
    for (const std::string& source : split(all, '\n')) {
        ++number;
        try {
            PlayLine line(file, number, source);
            if (line.empty()) continue;
            if (line.bare(0) == "keys") {
                addStrokes(line, lines);
                continue;
            }
            if (line.bare(0) != "include") {
                lines.push_back(std::move(line));
                continue;
            }
            if (depth >= kIncludes_max) throw Failure("plays include each other without end");
            const std::string other = line.text(1, "the file to include");
            const auto inner = readWithIncludes(other[0] == '/' ? other : folderOf(file) + other, depth + 1);
            lines.insert(lines.end(), inner.begin(), inner.end());
        } catch (const Failure& failure) {
            const std::string text = failure.what();
            const bool placed = text.find(kPlaced) != std::string::npos;
            throw Failure(placed ? text : file + ":" + std::to_string(number) + kPlaced + text);
        }
    }
    return lines;
}

/// One step of the comparison: the next character of a pattern.
struct Sign {
    bool any = false;
    char c = 0;
    std::size_t length = 1;
};

Sign signAt(std::string_view pattern, std::size_t at) {
    if (pattern[at] == '*') return {.any = true};
    const bool escaped =
        pattern[at] == '\\' && at + 1 < pattern.size() && (pattern[at + 1] == '*' || pattern[at + 1] == '\\');
    return escaped ? Sign{.c = pattern[at + 1], .length = 2} : Sign{.c = pattern[at]};
}

}  // namespace

PlayLine::PlayLine(std::string file, int number, std::string source)
    : file_(std::move(file)), number_(number), source_(std::move(source)) {
    const std::string_view all = source_;
    for (std::size_t at = 0;;) {
        while (at < all.size() && isBlank(all[at])) ++at;
        if (at >= all.size() || startsComment(all.substr(at), words_.empty())) break;
        Word word;
        if (all[at] == '"')
            at = readQuoted(all, at, word);
        else
            while (at < all.size() && !isBlank(all[at])) word.text += all[at++];
        words_.push_back(std::move(word));
    }
}

std::string PlayLine::bare(std::size_t index) const {
    return has(index) && !words_[index].quoted ? words_[index].text : std::string();
}

const std::string& PlayLine::word(std::size_t index, std::string_view what) const {
    if (!has(index)) throw Failure("the line lacks " + std::string(what));
    return words_[index].text;
}

std::string PlayLine::text(std::size_t index, std::string_view what) const { return plainText(word(index, what)); }

const std::string& PlayLine::pattern(std::size_t index, std::string_view what) const { return word(index, what); }

int PlayLine::number(std::size_t index, std::string_view what) const {
    const std::string& digits = word(index, what);
    int value = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (code != std::errc() || end != digits.data() + digits.size()) {
        throw Failure(std::string(what) + " must be a whole number, not \"" + digits + "\"");
    }
    return value;
}

int PlayLine::ordinal(std::size_t index) const {
    const std::string digits = bare(index);
    if (digits.size() < 2 || digits[0] != '#') return -1;
    int value = -1;
    const auto [end, code] = std::from_chars(digits.data() + 1, digits.data() + digits.size(), value);
    return code == std::errc() && end == digits.data() + digits.size() ? value : -1;
}

void PlayLine::atMost(std::size_t words) const {
    if (words_.size() > words) throw Failure("the line has a word too many: \"" + words_[words].text + "\"");
}

std::vector<PlayLine> readPlay(const std::string& file) { return readWithIncludes(file, 0); }

bool matches(std::string_view pattern, std::string_view found) {
    std::size_t p = 0;
    std::size_t f = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (f < found.size()) {
        const Sign sign = p < pattern.size() ? signAt(pattern, p) : Sign{};
        if (p < pattern.size() && sign.any) {
            star = p++;
            resume = f;
        } else if (p < pattern.size() && sign.c == found[f]) {
            p += sign.length;
            ++f;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            f = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && signAt(pattern, p).any) ++p;
    return p == pattern.size();
}

bool holds(std::string_view pattern, std::string_view found) {
    return matches("*" + std::string(pattern) + "*", found);
}

std::string plainText(const std::string& word) {
    std::string plain;
    for (std::size_t at = 0; at < word.size();) {
        const Sign sign = signAt(word, at);
        plain += sign.any ? '*' : sign.c;
        at += sign.length;
    }
    return plain;
}

}  // namespace kv
