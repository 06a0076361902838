// Tokens, names, types and literals: what all other parts of the parser stand on.

#include "platform/embedded/ParserCore.h"

#include <algorithm>
#include <charconv>

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

namespace {

constexpr int kDepthMax = 400;

/// `upper` is in capitals.
bool sameWord(std::string_view text, std::string_view upper) {
    if (text.size() != upper.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 32) : text[i];
        if (c != upper[i]) return false;
    }
    return true;
}

}  // namespace

DepthGuard::DepthGuard(Parser& parser) : parser_(parser) {
    if (++parser.depth_ <= kDepthMax) return;
    --parser.depth_;
    throw sqlErrorAt(static_cast<int>(parser.here().line), 191);
}

bool Parser::isWord(std::string_view word, std::size_t ahead) const {
    const Token& t = token(ahead);
    return t.kind == TokenKind::Word && sameWord(t.text, word);
}

bool Parser::isAnyWord(std::initializer_list<std::string_view> words, std::size_t ahead) const {
    return std::any_of(words.begin(), words.end(), [&](std::string_view w) { return isWord(w, ahead); });
}

bool Parser::isPair(char first, char second, std::size_t ahead) const {
    const Token& t = token(ahead);
    return t.kind == TokenKind::Symbol && t.symbol == static_cast<unsigned char>(first) &&
           t.second == static_cast<unsigned char>(second);
}

bool Parser::isName(std::size_t ahead) const {
    const Token& t = token(ahead);
    return t.kind == TokenKind::Quoted || (t.kind == TokenKind::Word && !isReservedWord(t.text));
}

bool Parser::isLiteral(LiteralKind kind, std::size_t ahead) const {
    const Token& t = token(ahead);
    return t.kind == TokenKind::Literal && lexed_.literals[static_cast<std::size_t>(t.literal)].kind == kind;
}

bool Parser::isString(std::size_t ahead) const {
    return isLiteral(LiteralKind::String, ahead) || isLiteral(LiteralKind::NString, ahead);
}

bool Parser::take(std::string_view word) {
    if (!isWord(word)) return false;
    ++at_;
    return true;
}

bool Parser::takeSymbol(char c) {
    if (!isSymbol(c)) return false;
    ++at_;
    return true;
}

/// A pair may stand apart: "< =" is "<=".
bool Parser::takePair(char first, char second) {
    if (isPair(first, second)) {
        ++at_;
        return true;
    }
    if (!isSymbol(first) || !isSymbol(second, 1)) return false;
    at_ += 2;
    return true;
}

void Parser::need(std::string_view word) {
    if (!take(word)) fail();
}

void Parser::needSymbol(char c) {
    if (!takeSymbol(c)) fail();
}

std::string Parser::word() {
    if (token().kind != TokenKind::Word) fail();
    return UCase(tokens_[at_++].text);
}

std::string Parser::identifier() {
    if (!isName()) fail();
    std::string name = unquoteName(token().text);
    // Behind the parser a name that begins so is a variable's.
    if (name.starts_with('@')) refuse("a name in brackets or quotation marks that begins with @");
    ++at_;
    return name;
}

std::string Parser::variable() {
    if (token().kind != TokenKind::Variable) fail();
    return std::string(tokens_[at_++].text);
}

std::size_t Parser::closing(std::size_t open) const {
    int depth = 0;
    for (std::size_t i = open; i < tokens_.size(); ++i) {
        if (tokens_[i].kind != TokenKind::Symbol) continue;
        if (tokens_[i].symbol == '(') ++depth;
        if (tokens_[i].symbol == ')' && --depth == 0) return i;
    }
    return tokens_.size() - 1;
}

void Parser::failAt(std::size_t index) const {
    // At the end of the batch the message names the last thing that was written.
    const std::size_t at = tokens_[index].kind == TokenKind::End && index > 0 ? index - 1 : index;
    const Token& t = tokens_[at];
    const int line = static_cast<int>(t.pos.line);
    if (t.kind == TokenKind::Word && isReservedWord(t.text)) throw sqlErrorAt(line, 156, {t.text});
    if (t.kind == TokenKind::Quoted) throw sqlErrorAt(line, 102, {unquoteName(t.text)});
    if (t.kind == TokenKind::Literal)
        throw sqlErrorAt(line, 102, {lexed_.literals[static_cast<std::size_t>(t.literal)].text});
    throw sqlErrorAt(line, 102, {t.text});
}

void Parser::refuse(std::string_view construct, Pos pos) const {
    throw notSupported(construct, static_cast<int>(pos.line), static_cast<int>(pos.column));
}

// ------------------------------------------------------------------------------------------------ names and types

/// name[.name]...; an empty part stands between two points ("DB..T").
std::vector<std::string> Parser::nameParts() {
    const std::size_t start = at_;
    std::vector<std::string> parts{identifier()};
    while (isSymbol('.')) {
        ++at_;
        if (isSymbol('.')) {
            parts.emplace_back();
        } else if (isSymbol('*') || (isSymbol('(') && parts.size() > 1)) {
            --at_;
            break;
        } else {
            parts.push_back(identifier());
        }
    }
    if (parts.size() > 4)
        throw sqlErrorAt(static_cast<int>(tokens_[start].pos.line), 117, {"object", tokens_[start].text, 3});
    return parts;
}

ObjectName Parser::nameOf(std::vector<std::string> parts, Pos pos) {
    ObjectName name;
    name.pos = pos;
    std::string* const targets[] = {&name.name, &name.schema, &name.database, &name.server};
    for (std::size_t i = 0; i < parts.size(); ++i) *targets[i] = std::move(parts[parts.size() - 1 - i]);
    return name;
}

ObjectName Parser::objectName() {
    const Pos pos = here();
    return nameOf(nameParts(), pos);
}

std::vector<std::string> Parser::nameList() {
    std::vector<std::string> names;
    do {
        names.push_back(identifier());
    } while (takeSymbol(','));
    return names;
}

std::vector<std::string> Parser::bracketedNameList() {
    needSymbol('(');
    std::vector<std::string> names = nameList();
    needSymbol(')');
    return names;
}

TypeName Parser::typeName() {
    TypeName type;
    type.pos = here();
    if (isWord("NATIONAL") || isWord("DOUBLE") || isWord("CURSOR")) {
        type.name = LCase(tokens_[at_++].text);
        if (type.name == "double" && take("PRECISION")) type.name = "float";
        if (type.name == "national") type.name = "n" + LCase(identifier());
    } else {
        type.name = LCase(identifier());
    }
    if (takeSymbol('.')) {
        type.userSchema = type.name;
        type.name = LCase(identifier());
        if (type.userSchema == "sys") type.userSchema.clear();
    }
    if (type.name == "character") type.name = "char";
    if (type.name == "char" || type.name == "nchar") {
        if (take("VARYING")) type.name = type.name == "char" ? "varchar" : "nvarchar";
    }
    if (takeSymbol('(')) {
        type.length = take("MAX") ? TypeName::kMax : typeNumber();
        if (takeSymbol(',')) type.scale = typeNumber();
        needSymbol(')');
    }
    return type;
}

int Parser::typeNumber() {
    const std::int64_t number = wholeNumber();
    if (number < 0 || number > 1'000'000'000) failAt(at_ - 1);
    return static_cast<int>(number);
}

// ------------------------------------------------------------------------------------------------ literals

std::unique_ptr<LiteralExpr> Parser::literal() {
    if (token().kind != TokenKind::Literal) fail();
    auto node = make<LiteralExpr>();
    const int index = tokens_[at_++].literal;
    const Literal& source = lexed_.literals[static_cast<std::size_t>(index)];
    node->literal = source.kind;
    node->text = std::string(source.text);
    node->precision = source.precision;
    node->scale = source.scale;
    node->index = module_ ? -1 : index;
    if (pinAll_ > 0) pin(*node);
    return node;
}

void Parser::pin(LiteralExpr& node) {
    node.pinned = true;
    batch_.pin(node);
}

std::string Parser::pinnedText() {
    const auto node = literal();
    pin(*node);
    return node->text;
}

std::string Parser::textAsName() {
    constexpr std::size_t kNameMax = 128;
    const int line = static_cast<int>(here().line);
    std::string name = pinnedText();
    if (charCount(name) > kNameMax) throw sqlErrorAt(line, 103, {midChars(name, 0, kNameMax)});
    return name;
}

std::int64_t Parser::wholeNumber() {
    const bool negative = takeSymbol('-');
    if (!negative) takeSymbol('+');
    if (!isLiteral(LiteralKind::Int) && !isLiteral(LiteralKind::BigInt)) fail();
    const std::size_t start = at_;
    const std::string text = pinnedText();
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) failAt(start);
    return negative ? -number : number;
}

// ------------------------------------------------------------------------------------------------ entry points

Batch Parser::batch() {
    batch_.literalCount = static_cast<int>(lexed_.literals.size());
    batch_.statements = statements();
    if (!atEnd()) fail();
    std::sort(batch_.pins.begin(), batch_.pins.end(), [](const Pin& a, const Pin& b) { return a.index < b.index; });
    return std::move(batch_);
}

ExprPtr Parser::wholeCondition() {
    module_ = true;
    ExprPtr expr = condition();
    if (!atEnd()) fail();
    return expr;
}

ExprPtr Parser::wholeExpression() {
    module_ = true;
    ExprPtr expr = value();
    if (!atEnd()) fail();
    return expr;
}

Batch parseBatch(const LexedBatch& lexed) { return Parser(lexed).batch(); }
Batch parseBatch(std::string_view text) { return parseBatch(lex(text)); }

ExprPtr parseCondition(std::string_view text) {
    const LexedBatch lexed = lex(text);
    return Parser(lexed).wholeCondition();
}

ExprPtr parseExpression(std::string_view text) {
    const LexedBatch lexed = lex(text);
    return Parser(lexed).wholeExpression();
}

}  // namespace kv::tsql
