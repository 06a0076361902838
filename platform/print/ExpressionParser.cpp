#include <array>
#include <optional>

#include "platform/base/Text.h"
#include "platform/print/Expression.h"

namespace kv {
namespace {

using Op = ExprNode::Op;

constexpr int kDepthMost = 200;

struct Token {
    enum class Kind { End, Name, Parameter, Number, Text, Symbol };
    Kind kind = Kind::End;
    std::string text;
    std::size_t at = 0;
    bool bracketed = false;
};

bool nameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool digit(char c) { return c >= '0' && c <= '9'; }
bool namePart(char c) { return nameStart(c) || digit(c) || c == '#' || c == '$'; }

[[noreturn]] void fail(std::size_t at, std::string text) { throw ExpressionError{at, std::move(text)}; }

class Lexer {
public:
    Lexer(std::string_view text, std::size_t offset) : text_(text), offset_(offset) {}

    Token next() {
        while (at_ < text_.size() &&
               (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\n' || text_[at_] == '\r'))
            ++at_;
        Token token;
        token.at = offset_ + at_;
        if (at_ >= text_.size()) return token;
        const char c = text_[at_];
        if (nameStart(c)) return name(token, Token::Kind::Name);
        if (c == ':') {
            ++at_;
            if (at_ >= text_.size() || !nameStart(text_[at_])) fail(token.at, "a parameter's name must follow ':'");
            return name(token, Token::Kind::Parameter);
        }
        if (digit(c) || (c == '.' && at_ + 1 < text_.size() && digit(text_[at_ + 1]))) return number(token);
        if (c == '\'' || c == '"') return quoted(token, c);
        if (c == '[') return bracketed(token);
        return symbol(token);
    }

private:
    Token name(Token token, Token::Kind kind) {
        const std::size_t from = at_;
        while (at_ < text_.size() && namePart(text_[at_])) ++at_;
        token.kind = kind;
        token.text = text_.substr(from, at_ - from);
        return token;
    }
    Token number(Token token) {
        const std::size_t from = at_;
        while (at_ < text_.size() && (digit(text_[at_]) || text_[at_] == '.')) ++at_;
        token.kind = Token::Kind::Number;
        token.text = text_.substr(from, at_ - from);
        if (!Money::parse(token.text).has_value()) fail(token.at, "'" + token.text + "' is no number");
        return token;
    }
    Token quoted(Token token, char mark) {
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == mark) {
                if (at_ + 1 >= text_.size() || text_[at_ + 1] != mark) break;
                ++at_;
            }
            token.text += text_[at_];
        }
        if (at_ >= text_.size()) fail(token.at, "the text has no closing quote");
        ++at_;
        token.kind = Token::Kind::Text;
        return token;
    }
    Token bracketed(Token token) {
        const std::size_t close = text_.find(']', at_);
        if (close == std::string_view::npos) fail(token.at, "'[' has no ']'");
        token.kind = Token::Kind::Name;
        token.bracketed = true;
        token.text = text_.substr(at_ + 1, close - at_ - 1);
        at_ = close + 1;
        return token;
    }
    Token symbol(Token token) {
        constexpr std::array<std::string_view, 17> kSymbols = {"<>", "<=", ">=", "!=", "+", "-", "*", "/", "%",
                                                               "&",  "=",  "<",  ">",  "(", ")", ",", "."};
        for (const std::string_view s : kSymbols) {
            if (text_.substr(at_).starts_with(s)) {
                token.kind = Token::Kind::Symbol;
                token.text = s == "!=" ? "<>" : s;
                at_ += s.size();
                return token;
            }
        }
        std::string message = "the character '";
        message += text_[at_];
        fail(token.at, message + "' has no meaning here");
    }

    std::string_view text_;
    std::size_t offset_;
    std::size_t at_ = 0;
};

struct TotalName {
    const char* name;
    TotalKind kind;
};
constexpr std::array<TotalName, 9> kTotals = {{{"sum", TotalKind::Sum},
                                               {"count", TotalKind::Count},
                                               {"countDistinct", TotalKind::CountDistinct},
                                               {"average", TotalKind::Average},
                                               {"min", TotalKind::Min},
                                               {"max", TotalKind::Max},
                                               {"running", TotalKind::Running},
                                               {"first", TotalKind::First},
                                               {"last", TotalKind::Last}}};
struct FactName {
    const char* name;
    Fact fact;
};
constexpr std::array<FactName, 10> kFacts = {{{"pageNumber", Fact::PageNumber},
                                              {"pages", Fact::Pages},
                                              {"rowNumber", Fact::RowNumber},
                                              {"groupRow", Fact::GroupRow},
                                              {"reportTitle", Fact::ReportTitle},
                                              {"description", Fact::Description},
                                              {"fileName", Fact::FileName},
                                              {"now", Fact::Now},
                                              {"today", Fact::Today},
                                              {"rows", Fact::Rows}}};

class Parser {
public:
    explicit Parser(std::string_view text, std::size_t offset = 0) : lexer_(text, offset) { advance(); }

    ExprNode whole() {
        ExprNode node = either();
        if (token_.kind != Token::Kind::End) fail(token_.at, "'" + token_.text + "' was not expected here");
        return node;
    }

private:
    void advance() { token_ = lexer_.next(); }
    bool isSymbol(std::string_view s) const { return token_.kind == Token::Kind::Symbol && token_.text == s; }
    bool isWord(std::string_view w) const {
        return token_.kind == Token::Kind::Name && !token_.bracketed && equalsNoCase(token_.text, w);
    }
    void expect(std::string_view s) {
        if (!isSymbol(s)) {
            fail(token_.at,
                 "'" + std::string(s) + "' was expected" +
                     (token_.kind == Token::Kind::End ? std::string(" at the end") : " before '" + token_.text + "'"));
        }
        advance();
    }
    static ExprNode pair(Op op, std::size_t at, ExprNode left, ExprNode right) {
        ExprNode node;
        node.op = op;
        node.at = at;
        node.args.push_back(std::move(left));
        node.args.push_back(std::move(right));
        return node;
    }
    static ExprNode single(Op op, std::size_t at, ExprNode arg) {
        ExprNode node;
        node.op = op;
        node.at = at;
        node.args.push_back(std::move(arg));
        return node;
    }

    struct Deeper {
        explicit Deeper(Parser& p) : parser(p) {
            if (++parser.depth_ > kDepthMost) fail(parser.token_.at, "the expression is nested too deeply");
        }
        Deeper(const Deeper&) = delete;
        Deeper& operator=(const Deeper&) = delete;
        ~Deeper() { --parser.depth_; }
        Parser& parser;
    };

    ExprNode either() {
        const Deeper guard(*this);
        ExprNode left = both();
        while (isWord("or")) {
            const std::size_t at = token_.at;
            advance();
            left = pair(Op::Or, at, std::move(left), both());
        }
        return left;
    }
    ExprNode both() {
        ExprNode left = negation();
        while (isWord("and")) {
            const std::size_t at = token_.at;
            advance();
            left = pair(Op::And, at, std::move(left), negation());
        }
        return left;
    }
    ExprNode negation() {
        if (!isWord("not")) return comparison();
        const Deeper guard(*this);
        const std::size_t at = token_.at;
        advance();
        return single(Op::Not, at, negation());
    }
    ExprNode comparison() {
        struct Entry {
            std::string_view symbol;
            Op op;
        };
        constexpr std::array<Entry, 6> kOps = {{{"=", Op::Equal},
                                                {"<>", Op::Unequal},
                                                {"<=", Op::LessEqual},
                                                {">=", Op::GreaterEqual},
                                                {"<", Op::Less},
                                                {">", Op::Greater}}};
        ExprNode left = joined();
        const std::size_t at = token_.at;
        for (const Entry& entry : kOps) {
            if (isSymbol(entry.symbol)) {
                advance();
                return pair(entry.op, at, std::move(left), joined());
            }
        }
        if (!isWord("in")) return left;
        advance();
        ExprNode node = single(Op::In, at, std::move(left));
        arguments(node);
        if (node.args.size() < 2) fail(at, "'in' needs at least one value");
        return node;
    }
    ExprNode joined() {
        ExprNode left = sum();
        while (isSymbol("&")) {
            const std::size_t at = token_.at;
            advance();
            left = pair(Op::Join, at, std::move(left), sum());
        }
        return left;
    }
    ExprNode sum() {
        ExprNode left = product();
        while (isSymbol("+") || isSymbol("-")) {
            const Op op = token_.text == "+" ? Op::Add : Op::Subtract;
            const std::size_t at = token_.at;
            advance();
            left = pair(op, at, std::move(left), product());
        }
        return left;
    }
    ExprNode product() {
        ExprNode left = sign();
        while (isSymbol("*") || isSymbol("/") || isSymbol("%")) {
            const Op op = token_.text == "*" ? Op::Multiply : token_.text == "/" ? Op::Divide : Op::Remainder;
            const std::size_t at = token_.at;
            advance();
            left = pair(op, at, std::move(left), sign());
        }
        return left;
    }
    ExprNode sign() {
        if (!isSymbol("-") && !isSymbol("+")) return primary();
        const Deeper guard(*this);
        const bool minus = token_.text == "-";
        const std::size_t at = token_.at;
        advance();
        return minus ? single(Op::Negate, at, sign()) : sign();
    }
    /// "(a, b, ...)" after a name; the arguments are added to the node.
    void arguments(ExprNode& node) {
        expect("(");
        if (isSymbol(")")) {
            advance();
            return;
        }
        for (;;) {
            node.args.push_back(either());
            if (isSymbol(")")) break;
            expect(",");
        }
        advance();
    }
    ExprNode primary() {
        ExprNode node;
        node.at = token_.at;
        const Token token = token_;
        switch (token.kind) {
            case Token::Kind::End:
                fail(token.at, "the expression ends too early");
            case Token::Kind::Text:
                node.constant = token.text;
                advance();
                return node;
            case Token::Kind::Number:
                node.constant = numberConstant(token.text);
                advance();
                return node;
            case Token::Kind::Parameter:
                node.op = Op::Parameter;
                node.name = token.text;
                advance();
                return node;
            case Token::Kind::Symbol:
                if (!isSymbol("(")) fail(token.at, "'" + token.text + "' was not expected here");
                advance();
                node = either();
                expect(")");
                return node;
            case Token::Kind::Name:
                break;
        }
        advance();
        if (!token.bracketed && isSymbol("(")) return call(token);
        return nameNode(token);
    }
    static Value numberConstant(const std::string& text) {
        const std::size_t point = text.find('.');
        if (point == std::string::npos && text.size() <= 18) return static_cast<std::int64_t>(std::stoll(text));
        if (point != std::string::npos && text.size() - point - 1 <= 4) return *Money::parse(text);
        return numberOf(text);
    }
    ExprNode nameNode(const Token& token) {
        ExprNode node;
        node.at = token.at;
        if (!token.bracketed && (equalsNoCase(token.text, "true") || equalsNoCase(token.text, "false"))) {
            node.constant = equalsNoCase(token.text, "true");
            return node;
        }
        if (!token.bracketed && equalsNoCase(token.text, "null")) return node;
        node.op = Op::Name;
        node.name = token.text;
        if (isSymbol(".")) {
            advance();
            if (token_.kind != Token::Kind::Name) fail(token_.at, "a field's name must follow '.'");
            node.name += "." + token_.text;
            advance();
        }
        return node;
    }
    ExprNode call(const Token& name) {
        ExprNode node;
        node.at = name.at;
        node.name = name.text;
        arguments(node);
        const int given = static_cast<int>(node.args.size());
        if (equalsNoCase(name.text, "if")) {
            if (given != 3) fail(name.at, "if() takes a condition and two values");
            node.op = Op::If;
            return node;
        }
        if (equalsNoCase(name.text, "case")) {
            if (given < 3 || given % 2 == 0)
                fail(name.at, "case() takes pairs of condition and value, and a last value");
            node.op = Op::Case;
            return node;
        }
        for (const FactName& entry : kFacts) {
            if (!equalsNoCase(name.text, entry.name)) continue;
            if (given != 0) fail(name.at, std::string(entry.name) + "() takes nothing");
            node.op = Op::FactOf;
            node.fact = entry.fact;
            return node;
        }
        for (const TotalName& entry : kTotals) {
            if (equalsNoCase(name.text, entry.name)) return total(std::move(node), entry);
        }
        return plainCall(std::move(node), name);
    }
    /// sum(expression [, 'scope']); count() alone counts rows.
    static ExprNode total(ExprNode node, const TotalName& entry) {
        const bool counts = entry.kind == TotalKind::Count;
        if (node.args.size() > 2 || (node.args.empty() && !counts)) {
            fail(node.at,
                 std::string(entry.name) + "() takes an expression and the name of a group, 'page' or 'report'");
        }
        node.op = Op::Total;
        node.total = entry.kind;
        node.name.clear();
        if (node.args.size() == 2) {
            const ExprNode& scope = node.args[1];
            if (scope.op != Op::Constant || !scope.constant.isText()) {
                fail(scope.at, "the reach of a total is a quoted name of a group, 'page' or 'report'");
            }
            node.name = scope.constant.text();
            node.args.pop_back();
        }
        if (node.args.empty()) {
            ExprNode one;
            one.at = node.at;
            one.constant = 1;
            node.args.push_back(one);
        }
        return node;
    }
    static ExprNode plainCall(ExprNode node, const Token& name) {
        const ExprFunction* function = findFunction(name.text);
        if (function == nullptr) fail(name.at, "there is no function '" + name.text + "'");
        const int given = static_cast<int>(node.args.size());
        if (given < function->least || (function->most >= 0 && given > function->most)) {
            fail(name.at, std::string("wrong number of values: ") + function->help);
        }
        node.op = Op::Call;
        node.function = function;
        return node;
    }

    Lexer lexer_;
    Token token_;
    int depth_ = 0;
};

ExprNode textNode(std::string text, std::size_t at) {
    ExprNode node;
    node.constant = std::move(text);
    node.at = at;
    return node;
}

/// The end of a "{...}" part: the brace outside quotes. `bar` is the place of a "|" that begins a format, or the end.
std::size_t closingBrace(std::string_view text, std::size_t from, std::size_t& bar) {
    char quote = 0;
    bar = std::string_view::npos;
    for (std::size_t i = from; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if ((c == '\'' || c == '"') && bar == std::string_view::npos) {
            quote = c;
        } else if (c == '|' && bar == std::string_view::npos) {
            bar = i;
        } else if (c == '}') {
            if (bar == std::string_view::npos) bar = i;
            return i;
        }
    }
    fail(from - 1, "'{' has no '}'");
}

ExprNode partNode(std::string_view text, std::size_t from, std::size_t bar, std::size_t close) {
    ExprNode value = Parser(text.substr(from, bar - from), from).whole();
    ExprNode call;
    call.op = Op::Call;
    call.at = from;
    call.function = findFunction("format");
    call.args.push_back(std::move(value));
    call.args.push_back(textNode(bar < close ? std::string(text.substr(bar + 1, close - bar - 1)) : "", bar));
    return call;
}

}  // namespace

Expression Expression::parse(std::string_view text) {
    Expression expression;
    expression.text_ = text;
    expression.root_ = Parser(text).whole();
    return expression;
}

Expression Expression::parseText(std::string_view text) {
    Expression expression;
    expression.text_ = text;
    std::vector<ExprNode> parts;
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool doubled = i + 1 < text.size() && text[i + 1] == text[i];
        if ((text[i] == '{' || text[i] == '}') && doubled) {
            plain += text[i++];
        } else if (text[i] == '{') {
            std::size_t bar = 0;
            const std::size_t close = closingBrace(text, i + 1, bar);
            if (!plain.empty()) parts.push_back(textNode(std::exchange(plain, {}), i));
            parts.push_back(partNode(text, i + 1, bar, close));
            i = close;
        } else {
            plain += text[i];
        }
    }
    if (!plain.empty() || parts.empty()) parts.push_back(textNode(plain, 0));
    ExprNode whole = std::move(parts.front());
    for (std::size_t i = 1; i < parts.size(); ++i) {
        ExprNode join;
        join.op = Op::Join;
        join.args.push_back(std::move(whole));
        join.args.push_back(std::move(parts[i]));
        whole = std::move(join);
    }
    expression.root_ = std::move(whole);
    return expression;
}

Expression Expression::ofNode(ExprNode node) {
    Expression expression;
    expression.root_ = std::move(node);
    return expression;
}

Expression Expression::constant(Value value) {
    ExprNode node;
    node.constant = std::move(value);
    return ofNode(std::move(node));
}

}  // namespace kv
