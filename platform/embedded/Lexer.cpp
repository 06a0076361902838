#include "platform/embedded/Lexer.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/base/Text.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

namespace {

enum class Class : std::uint8_t { Bad, Blank, Break, Letter, Digit, Quote, Bracket, DoubleQuote, At, Dollar, Symbol };

constexpr std::array<Class, 256> makeClasses() {
    std::array<Class, 256> classes{};
    for (int c = 0; c < 256; ++c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' || c >= 0x80;
        classes[c] = letter ? Class::Letter : c >= '0' && c <= '9' ? Class::Digit : Class::Bad;
    }
    for (const char c : {' ', '\t', '\r', '\f', '\v', '\0'}) classes[static_cast<unsigned char>(c)] = Class::Blank;
    classes['\n'] = Class::Break;
    classes['\''] = Class::Quote;
    classes['['] = Class::Bracket;
    classes['"'] = Class::DoubleQuote;
    classes['@'] = Class::At;
    classes['$'] = Class::Dollar;
    for (const char c : {'(', ')', ',', ';', '.', '=', '<', '>', '!', '+', '-', '*', '/', '%', '&', '|', '^', '~', ':'})
        classes[static_cast<unsigned char>(c)] = Class::Symbol;
    return classes;
}
constexpr std::array<Class, 256> kClasses = makeClasses();

constexpr std::array<bool, 256> makeWordBytes() {
    std::array<bool, 256> word{};
    for (int c = 0; c < 256; ++c)
        word[c] = kClasses[c] == Class::Letter || kClasses[c] == Class::Digit || c == '@' || c == '$';
    return word;
}
constexpr std::array<bool, 256> kWordBytes = makeWordBytes();

Class classOf(char c) { return kClasses[static_cast<unsigned char>(c)]; }
bool isWordByte(char c) { return kWordBytes[static_cast<unsigned char>(c)]; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHex(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

constexpr std::size_t kKeyRoom = 64;  ///< for the marks that are added to a key

/// Walks the text once and writes literals and key, and the tokens where they are wanted, side by side.
template <bool kTokens>
class Scanner {
public:
    Scanner(std::string_view text, LexedBatch& out)
        : begin_(text.data()), end_(text.data() + text.size()), at_(begin_), lineStart_(begin_), out_(out) {}

    void run() {
        out_.source = {begin_, static_cast<std::size_t>(end_ - begin_)};
        out_.tokens.clear();
        out_.literals.clear();
        out_.unescaped.clear();
        // No token is longer in the key than twice its text.
        const std::size_t room = 2 * out_.source.size() + kKeyRoom;
        if (out_.keyMemory.size() < room) out_.keyMemory.resize(room);
        if (kTokens) out_.tokens.reserve(out_.source.size() / 4 + 8);
        keyBegin_ = key_ = out_.keyMemory.data();
        while (at_ < end_) step();
        push(TokenKind::End, at_, posOf(at_));
        out_.keyLength = static_cast<std::size_t>(key_ - keyBegin_);
    }

private:
    void step() {
        switch (classOf(*at_)) {
            case Class::Blank:
                ++at_;
                return;
            case Class::Break:
                lineBreak();
                return;
            case Class::Letter:
                word();
                return;
            case Class::Digit:
                number();
                return;
            case Class::Quote:
                text(at_, false);
                return;
            case Class::Bracket:
                quoted(']');
                return;
            case Class::DoubleQuote:
                quoted('"');
                return;
            case Class::At:
                variable();
                return;
            case Class::Dollar:
                dollar();
                return;
            case Class::Symbol:
                symbol();
                return;
            case Class::Bad:
                throw sqlErrorAt(static_cast<int>(line_), 102, {std::string_view(at_, 1)});
        }
    }

    char peek(std::size_t ahead = 1) const { return static_cast<std::size_t>(end_ - at_) > ahead ? at_[ahead] : '\0'; }

    Pos posOf(const char* start) const {
        return {line_, static_cast<std::uint32_t>(start - lineStart_) + 1, static_cast<std::uint32_t>(start - begin_)};
    }

    void push(TokenKind kind, const char* start, Pos pos) {
        last_ = kind;
        if constexpr (kTokens) {
            Token& token = out_.tokens.emplace_back();
            token.kind = kind;
            token.pos = pos;
            token.text = {start, static_cast<std::size_t>(at_ - start)};
        }
    }

    void lineBreak() {
        ++at_;
        ++line_;
        lineStart_ = at_;
        *key_++ = '\n';
    }

    void keyText(const char* start) {
        const auto length = static_cast<std::size_t>(at_ - start);
        std::memcpy(key_, start, length);
        key_ += length;
    }

    void word() {
        const char* start = at_;
        if ((*at_ == 'N' || *at_ == 'n') && peek() == '\'') {
            ++at_;
            text(start, true);
            return;
        }
        wordBytes();
        checkLength(start);
        push(TokenKind::Word, start, posOf(start));
    }

    /// Moves over a word and copies it to the key, apart from a word before it.
    void wordBytes() {
        if (key_ != keyBegin_ && isWordByte(key_[-1])) *key_++ = ' ';
        const char* at = at_;
        char* key = key_;
        while (at < end_ && isWordByte(*at)) *key++ = *at++;
        at_ = at;
        key_ = key;
    }

    /// Of a name, its marks left out: the bytes decide quickly that most are short enough.
    void checkLength(const char* start) const {
        constexpr std::size_t kNameMax = 128;
        const std::string_view written(start, static_cast<std::size_t>(at_ - start));
        if (written.size() <= kNameMax) return;
        const std::string name = unquoteName(written);
        if (charCount(name) > kNameMax) throw sqlErrorAt(static_cast<int>(line_), 103, {midChars(name, 0, kNameMax)});
    }

    void variable() {
        const char* start = at_;
        const bool system = peek() == '@';
        wordBytes();
        push(system ? TokenKind::System : TokenKind::Variable, start, posOf(start));
    }

    void quoted(char close) {
        const char* start = at_;
        const Pos pos = posOf(start);
        for (++at_; at_ < end_; ++at_) {
            if (*at_ == '\n') noteLine();
            if (*at_ != close) continue;
            if (peek() != close) break;
            ++at_;
        }
        if (at_ >= end_)
            throw sqlErrorAt(static_cast<int>(pos.line), 105, {std::string_view(start + 1, end_ - start - 1)});
        ++at_;
        if (at_ - start == 2) throw sqlErrorAt(static_cast<int>(pos.line), 1038);
        checkLength(start);
        push(TokenKind::Quoted, start, pos);
        keyText(start);
    }

    void noteLine() {
        ++line_;
        lineStart_ = at_ + 1;
    }

    /// A character string; `start` is its N or its quotation mark, `at_` the mark.
    void text(const char* start, bool national) {
        const Pos pos = posOf(start);
        const char* first = ++at_;
        bool doubled = false;
        for (;; ++at_) {
            const auto* mark = static_cast<const char*>(std::memchr(at_, '\'', static_cast<std::size_t>(end_ - at_)));
            if (!mark) throw sqlErrorAt(static_cast<int>(pos.line), 105, {std::string_view(first, end_ - first)});
            keyBreaks(mark);
            if (peek() != '\'') break;
            doubled = true;
            ++at_;
        }
        std::string_view value(first, static_cast<std::size_t>(at_ - first));
        ++at_;
        if (doubled) value = out_.unescaped.emplace_back(replaceAll(value, "''", "'"));
        const bool wild = !value.empty() && (value[0] == '%' || value[0] == '_' || value[0] == '[');
        literal(national ? LiteralKind::NString : LiteralKind::String, value, start, pos);
        keyLiteral(national ? (wild ? 'O' : 'N') : (wild ? 'P' : 'S'));
    }

    /// Moves to `mark` and keeps the line breaks on the way.
    void keyBreaks(const char* mark) {
        const auto rest = [&] { return static_cast<std::size_t>(mark - at_); };
        while (const void* found = rest() > 0 ? std::memchr(at_, '\n', rest()) : nullptr) {
            at_ = static_cast<const char*>(found);
            noteLine();
            *key_++ = '\n';
            ++at_;
        }
        at_ = mark;
    }

    Literal& literal(LiteralKind kind, std::string_view value, const char* start, Pos pos) {
        push(TokenKind::Literal, start, pos);
        if constexpr (kTokens) out_.tokens.back().literal = static_cast<std::int32_t>(out_.literals.size());
        Literal& item = out_.literals.emplace_back();
        item.kind = kind;
        item.text = value;
        return item;
    }

    void keyLiteral(char kind) {
        *key_++ = '\1';
        *key_++ = kind;
    }

    void number() {
        const char* start = at_;
        if (*at_ == '0' && (peek() == 'x' || peek() == 'X')) return binary();
        const Pos pos = posOf(start);
        const int whole = digits();
        int scale = 0;
        const bool point = at_ < end_ && *at_ == '.';
        if (point) {
            ++at_;
            scale = digits();
        }
        const bool exponent = skipExponent();
        const std::string_view value(start, static_cast<std::size_t>(at_ - start));
        if (exponent) {
            literal(LiteralKind::Float, value, start, pos);
            keyLiteral('F');
        } else if (point) {
            decimal(value, start, pos, whole, scale);
        } else {
            integer(value, start, pos);
        }
    }

    int digits() {
        const char* start = at_;
        while (at_ < end_ && isDigit(*at_)) ++at_;
        return static_cast<int>(at_ - start);
    }

    bool skipExponent() {
        if (at_ >= end_ || (*at_ != 'e' && *at_ != 'E')) return false;
        const bool sign = peek() == '+' || peek() == '-';
        at_ += sign ? 2 : 1;
        digits();
        return true;
    }

    void decimal(std::string_view value, const char* start, Pos pos, int whole, int scale) {
        std::size_t zeros = 0;
        while (zeros < value.size() && value[zeros] == '0') ++zeros;
        const int precision = std::max(1, whole - static_cast<int>(std::min<std::size_t>(zeros, whole)) + scale);
        if (precision > 38) throw sqlErrorAt(static_cast<int>(line_), 1007, {value});
        Literal& item = literal(LiteralKind::Decimal, value, start, pos);
        item.precision = static_cast<std::uint8_t>(precision);
        item.scale = static_cast<std::uint8_t>(scale);
        keyLiteral('D');
        *key_++ = static_cast<char>('0' + scale);
    }

    void integer(std::string_view value, const char* start, Pos pos) {
        std::string_view significant = value;
        while (significant.size() > 1 && significant[0] == '0') significant.remove_prefix(1);
        const std::size_t count = significant.size();
        if (count > 38) throw sqlErrorAt(static_cast<int>(line_), 1007, {value});
        const bool fits = count < 10 || (count == 10 && significant <= "2147483647");
        Literal& item = literal(fits ? LiteralKind::Int : LiteralKind::BigInt, value, start, pos);
        item.precision = static_cast<std::uint8_t>(count);
        keyLiteral(fits ? 'I' : 'L');
    }

    void binary() {
        const char* start = at_;
        const Pos pos = posOf(start);
        at_ += 2;
        while (at_ < end_ && isHex(*at_)) ++at_;
        literal(LiteralKind::Binary, {start, static_cast<std::size_t>(at_ - start)}, start, pos);
        keyLiteral('B');
    }

    /// $5.25 is money; $name is a word.
    void dollar() {
        const char* start = at_;
        if (classOf(peek()) == Class::Letter) return word();
        const Pos pos = posOf(start);
        ++at_;
        const char* first = at_;
        digits();
        if (at_ < end_ && *at_ == '.') {
            ++at_;
            digits();
        }
        literal(LiteralKind::Money, {first, static_cast<std::size_t>(at_ - first)}, start, pos);
        keyLiteral('M');
    }

    void symbol() {
        const char* start = at_;
        const char c = *at_;
        const char next = peek();
        if (c == '-' && next == '-') return lineComment();
        if (c == '/' && next == '*') return blockComment();
        if (c == '.' && isDigit(next) && !afterName()) return number();
        const bool pair = (next == '=' && std::strchr("<>!+-*/%&|^", c)) || (c == '<' && next == '>') ||
                          (c == '!' && (next == '<' || next == '>')) || (c == ':' && next == ':');
        at_ += pair ? 2 : 1;
        push(TokenKind::Symbol, start, posOf(start));
        if constexpr (kTokens) {
            out_.tokens.back().symbol = static_cast<std::uint8_t>(c);
            out_.tokens.back().second = pair ? static_cast<std::uint16_t>(next) : std::uint16_t{0};
        }
        *key_++ = c;
        if (pair) *key_++ = next;
    }

    bool afterName() const {
        return (last_ == TokenKind::Word || last_ == TokenKind::Quoted) && at_ > begin_ &&
               classOf(at_[-1]) != Class::Blank;
    }

    void lineComment() {
        while (at_ < end_ && *at_ != '\n') ++at_;
    }

    void blockComment() {
        const Pos pos = posOf(at_);
        int depth = 0;
        for (; at_ < end_; ++at_) {
            if (*at_ == '\n') {
                noteLine();
                *key_++ = '\n';
            } else if (*at_ == '/' && peek() == '*') {
                ++depth;
                ++at_;
            } else if (*at_ == '*' && peek() == '/') {
                ++at_;
                if (--depth == 0) break;
            }
        }
        if (at_ >= end_) throw sqlErrorAt(static_cast<int>(pos.line), 113);
        ++at_;
    }

    const char* begin_;
    const char* end_;
    const char* at_;
    const char* lineStart_;
    std::uint32_t line_ = 1;
    char* keyBegin_ = nullptr;
    char* key_ = nullptr;
    TokenKind last_ = TokenKind::End;
    LexedBatch& out_;
};

/// Finds GO lines: keeps track of texts, names and comments that run over lines.
class ScriptSplitter {
public:
    explicit ScriptSplitter(std::string_view script) : script_(script) {}

    std::vector<ScriptBatch> run() {
        while (at_ < script_.size()) {
            std::size_t stop = script_.find('\n', at_);
            if (stop == std::string_view::npos) stop = script_.size();
            const std::string_view line = script_.substr(at_, stop - at_);
            int repeat = 1;
            if (!open_ && isGo(line, repeat)) {
                close(at_, repeat);
                batchStart_ = std::min(stop + 1, script_.size());
                batchLine_ = line_ + 1;
            } else {
                follow(line);
            }
            at_ = stop + 1;
            ++line_;
        }
        close(script_.size(), 1);
        return std::move(batches_);
    }

private:
    static bool isGo(std::string_view line, int& repeat) {
        while (!line.empty() && classOf(line.front()) == Class::Blank) line.remove_prefix(1);
        if (!startsNoCase(line, "GO")) return false;
        line.remove_prefix(2);
        if (const std::size_t comment = line.find("--"); comment != std::string_view::npos)
            line = line.substr(0, comment);
        while (!line.empty() && (classOf(line.back()) == Class::Blank || line.back() == ';')) line.remove_suffix(1);
        if (line.empty()) return true;
        if (classOf(line.front()) != Class::Blank) return false;
        const std::string_view count = trimBlanks(line);
        if (count.empty() || count.size() > 6) return false;
        for (const char c : count)
            if (!isDigit(c)) return false;
        repeat = std::stoi(std::string(count));
        return true;
    }

    /// Moves through one line; `open_` is the mark that closes what is still open ('*' for a comment).
    void follow(std::string_view line) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            const char c = line[i];
            const char next = i + 1 < line.size() ? line[i + 1] : '\0';
            if (open_ == '*') {
                if (c == '*' && next == '/') {
                    ++i;
                    if (--depth_ == 0) open_ = 0;
                } else if (c == '/' && next == '*') {
                    ++i;
                    ++depth_;
                }
            } else if (open_) {
                if (c == open_) open_ = 0;
            } else if (c == '-' && next == '-') {
                return;
            } else if (c == '/' && next == '*') {
                open_ = '*';
                depth_ = 1;
                ++i;
            } else if (c == '\'' || c == '"' || c == '[') {
                open_ = c == '[' ? ']' : c;
            }
        }
    }

    void close(std::size_t stop, int repeat) {
        const std::string_view text = script_.substr(batchStart_, stop - batchStart_);
        for (const char c : text) {
            if (classOf(c) == Class::Blank || classOf(c) == Class::Break) continue;
            batches_.push_back({text, batchLine_, repeat});
            return;
        }
    }

    std::string_view script_;
    std::size_t at_ = 0;
    std::size_t batchStart_ = 0;
    int line_ = 1;
    int batchLine_ = 1;
    char open_ = 0;
    int depth_ = 0;
    std::vector<ScriptBatch> batches_;
};

}  // namespace

void lex(std::string_view text, LexedBatch& out) { Scanner<true>(text, out).run(); }
void lexKey(std::string_view text, LexedBatch& out) { Scanner<false>(text, out).run(); }

LexedBatch lex(std::string_view text) {
    LexedBatch out;
    lex(text, out);
    return out;
}

void LexedBatch::addToKey(std::string_view mark) {
    if (keyMemory.size() < keyLength + mark.size()) keyMemory.resize(keyLength + mark.size());
    std::copy(mark.begin(), mark.end(), keyMemory.begin() + static_cast<std::ptrdiff_t>(keyLength));
    keyLength += mark.size();
}

std::string unquoteName(std::string_view text) {
    if (text.size() < 2) return std::string(text);
    if (text.front() == '[') return replaceAll(text.substr(1, text.size() - 2), "]]", "]");
    if (text.front() == '"') return replaceAll(text.substr(1, text.size() - 2), "\"\"", "\"");
    return std::string(text);
}

std::vector<ScriptBatch> splitScript(std::string_view script) { return ScriptSplitter(script).run(); }

}  // namespace kv::tsql
