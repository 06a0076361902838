#pragma once
// Lexer: one pass over a batch gives its tokens, its literals, and the key under which its compiled form is kept.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/Ast.h"

namespace kv::tsql {

enum class TokenKind : std::uint8_t {
    End,
    Word,      ///< identifier or keyword, not quoted
    Quoted,    ///< [name] or "name"; `text` still holds its marks
    Variable,  ///< @name
    System,    ///< @@name
    Literal,   ///< `literal` is its index
    Symbol,    ///< operator or punctuation of one or two characters
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::uint8_t symbol = 0;   ///< first character of a Symbol
    std::uint16_t second = 0;  ///< second character of a Symbol of two, else 0
    std::int32_t literal = -1;
    Pos pos;
    std::string_view text;  ///< as written, marks included
};

/// One literal of a batch. `text` is a view into the batch text, or into `LexedBatch::unescaped` where quotes were
/// doubled.
struct Literal {
    LiteralKind kind = LiteralKind::Null;
    std::uint8_t precision = 0;  ///< digits of a number
    std::uint8_t scale = 0;      ///< digits after the point
    std::string_view text;
};

/// A lexed batch; it must not outlive the text. The key is the batch without comments and blanks (line breaks stay,
/// since errors tell lines), each literal replaced by \1 and its kind: S text, P text that starts with a LIKE wildcard,
/// N and O the same for N'..', I int, L larger integer, D and a digit decimal of that scale, F float, M money, B
/// binary.
struct LexedBatch {
    std::string_view source;
    std::vector<Token> tokens;  ///< ends with an End token; empty where only the key was wanted
    std::vector<Literal> literals;
    std::deque<std::string> unescaped;

    std::string_view key() const { return {keyMemory.data(), keyLength}; }
    /// Makes keys of batches different by something that is not in their text.
    void addToKey(std::string_view mark);

    std::vector<char> keyMemory;  ///< only grows
    std::size_t keyLength = 0;
};

/// Lexes a batch into `out`, whose memory is used again. Raises 105 (unclosed quotation mark), 113 (unclosed comment),
/// 102 (a character that T-SQL does not know).
void lex(std::string_view text, LexedBatch& out);
LexedBatch lex(std::string_view text);
/// The same without the tokens: enough to find a batch that was compiled before.
void lexKey(std::string_view text, LexedBatch& out);

/// The name without its brackets or quotation marks.
std::string unquoteName(std::string_view text);

/// One batch of a script and the line of the script on which it starts.
struct ScriptBatch {
    std::string_view text;
    int firstLine = 1;
    int repeat = 1;  ///< of "GO n"
};

/// Splits a script at its GO lines; GO inside texts and comments does not count. Empty batches are left out.
std::vector<ScriptBatch> splitScript(std::string_view script);

}  // namespace kv::tsql
