// Expressions and conditions, by T-SQL's order of precedence.

#include <algorithm>
#include <cstring>

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

namespace {

template <class List>
bool contains(const List& words, std::string_view word) {
    return std::any_of(std::begin(words), std::end(words), [&](auto w) { return equalsNoCase(w, word); });
}

/// Their first argument is a unit of time, written as a bare word.
constexpr std::string_view kDatePartFunctions[] = {"DATEADD", "DATEDIFF", "DATEDIFF_BIG", "DATENAME", "DATEPART"};

/// Functions that are called without parentheses.
constexpr std::string_view kBareFunctions[] = {"CURRENT_TIMESTAMP", "CURRENT_USER", "SESSION_USER", "SYSTEM_USER",
                                               "USER"};

/// Reserved words that are called like functions.
constexpr std::string_view kReservedFunctions[] = {"COALESCE", "LEFT", "NULLIF", "RIGHT"};

struct RefusedFunction {
    std::string_view word;
    std::string_view construct;
};
constexpr RefusedFunction kRefusedFunctions[] = {
    {"CONTAINS", "full-text search (CONTAINS)"},
    {"FREETEXT", "full-text search (FREETEXT)"},
    {"IDENTITY", "the IDENTITY function of SELECT INTO"},
};

}  // namespace

/// A condition where a value is wanted is an error at its operator.
ExprPtr Parser::checkValue(ExprPtr expr) const {
    if (!expr->isCondition()) return expr;
    const auto at = std::lower_bound(tokens_.begin(), tokens_.end(), expr->pos.offset,
                                     [](const Token& t, std::uint32_t offset) { return t.pos.offset < offset; });
    failAt(static_cast<std::size_t>(at - tokens_.begin()));
}

ExprPtr Parser::value() { return checkValue(disjunction()); }

ExprPtr Parser::condition() {
    ExprPtr expr = disjunction();
    if (expr->isCondition()) return expr;
    const Token& next = atEnd() && at_ > 0 ? tokens_[at_ - 1] : token();
    throw sqlErrorAt(static_cast<int>(next.pos.line), 4145, {next.text});
}

ExprPtr Parser::disjunction() {
    const DepthGuard guard(*this);
    ExprPtr left = conjunction();
    while (isWord("OR")) {
        if (!left->isCondition()) fail();
        auto node = make<LogicalExpr>();
        ++at_;
        node->isAnd = false;
        node->left = std::move(left);
        node->right = conjunction();
        if (!node->right->isCondition()) fail();
        left = std::move(node);
    }
    return left;
}

ExprPtr Parser::conjunction() {
    ExprPtr left = negation();
    while (isWord("AND")) {
        if (!left->isCondition()) fail();
        auto node = make<LogicalExpr>();
        ++at_;
        node->left = std::move(left);
        node->right = negation();
        if (!node->right->isCondition()) fail();
        left = std::move(node);
    }
    return left;
}

ExprPtr Parser::negation() {
    if (!isWord("NOT")) return predicate();
    const DepthGuard guard(*this);
    auto node = make<NotExpr>();
    ++at_;
    node->operand = negation();
    if (!node->operand->isCondition()) fail();
    return node;
}

ExprPtr Parser::predicate() {
    if (isWord("EXISTS") && isSymbol('(', 1)) {
        auto node = make<ExistsExpr>();
        ++at_;
        node->query = bracketedQuery();
        return node;
    }
    ExprPtr left = sum();
    CompareOp op;
    const std::size_t start = at_;
    if (takeCompare(op)) {
        if (left->isCondition()) failAt(start);
        at_ = start;
        return comparison(std::move(left));
    }
    const bool tail =
        isAnyWord({"IS", "IN", "LIKE", "BETWEEN"}) || (isWord("NOT") && isAnyWord({"IN", "LIKE", "BETWEEN"}, 1));
    if (!tail) return left;
    return predicateTail(checkValue(std::move(left)));
}

ExprPtr Parser::comparison(ExprPtr left) {
    const Pos pos = here();
    CompareOp op;
    takeCompare(op);
    if (isAnyWord({"ALL", "ANY", "SOME"}) && isSymbol('(', 1)) {
        auto node = make<QuantifiedExpr>();
        node->pos = pos;
        node->op = op;
        node->all = word() == "ALL";
        node->left = std::move(left);
        node->query = bracketedQuery();
        return node;
    }
    auto node = make<ComparisonExpr>();
    node->pos = pos;
    node->op = op;
    node->left = std::move(left);
    node->right = checkValue(sum());
    return node;
}

ExprPtr Parser::predicateTail(ExprPtr left) {
    const Pos pos = here();
    if (take("IS")) {
        auto node = make<IsNullExpr>();
        node->pos = pos;
        node->negated = take("NOT");
        need("NULL");
        node->operand = std::move(left);
        return node;
    }
    const bool negated = take("NOT");
    if (take("LIKE")) {
        auto node = make<LikeExpr>();
        node->pos = pos;
        node->negated = negated;
        node->value = std::move(left);
        node->pattern = checkValue(sum());
        if (take("ESCAPE")) node->escape = checkValue(sum());
        return node;
    }
    if (take("BETWEEN")) {
        auto node = make<BetweenExpr>();
        node->pos = pos;
        node->negated = negated;
        node->value = std::move(left);
        node->low = checkValue(sum());
        need("AND");
        node->high = checkValue(sum());
        return node;
    }
    need("IN");
    auto node = make<InExpr>();
    node->pos = pos;
    node->negated = negated;
    node->value = std::move(left);
    if (queryAhead()) {
        node->query = bracketedQuery();
        return node;
    }
    needSymbol('(');
    node->list = valueList();
    needSymbol(')');
    return node;
}

ExprList Parser::valueList() {
    ExprList list;
    do {
        list.push_back(value());
    } while (takeSymbol(','));
    return list;
}

bool Parser::takeCompare(CompareOp& op) {
    struct Pair {
        char first, second;
        CompareOp op;
    };
    static constexpr Pair kPairs[] = {
        {'<', '=', CompareOp::LessEqual}, {'>', '=', CompareOp::GreaterEqual}, {'<', '>', CompareOp::NotEqual},
        {'!', '=', CompareOp::NotEqual},  {'!', '<', CompareOp::GreaterEqual}, {'!', '>', CompareOp::LessEqual},
    };
    if (token().kind != TokenKind::Symbol) return false;
    for (const Pair& pair : kPairs) {
        if (!takePair(pair.first, pair.second)) continue;
        op = pair.op;
        return true;
    }
    if (takeSymbol('=')) {
        op = CompareOp::Equal;
    } else if (takeSymbol('<')) {
        op = CompareOp::Less;
    } else if (takeSymbol('>')) {
        op = CompareOp::Greater;
    } else {
        return false;
    }
    return true;
}

namespace {
struct BinarySymbol {
    char symbol;
    BinaryOp op;
};
constexpr BinarySymbol kBinarySymbols[] = {
    {'+', BinaryOp::Add},    {'-', BinaryOp::Subtract}, {'*', BinaryOp::Multiply}, {'/', BinaryOp::Divide},
    {'%', BinaryOp::Modulo}, {'&', BinaryOp::BitAnd},   {'|', BinaryOp::BitOr},    {'^', BinaryOp::BitXor},
};
}  // namespace

bool Parser::takeBinary(std::string_view symbols, BinaryOp& op) {
    for (const BinarySymbol& b : kBinarySymbols) {
        if (symbols.find(b.symbol) == std::string_view::npos || !takeSymbol(b.symbol)) continue;
        op = b.op;
        return true;
    }
    return false;
}

/// "=" or "+=" and its like.
bool Parser::takeCompoundAssignment(std::optional<BinaryOp>& op) {
    op.reset();
    if (takeSymbol('=')) return true;
    for (const BinarySymbol& b : kBinarySymbols) {
        if (!takePair(b.symbol, '=')) continue;
        op = b.op;
        return true;
    }
    return false;
}

ExprPtr Parser::sum() {
    ExprPtr left = product();
    for (;;) {
        const std::size_t start = at_;
        BinaryOp op;
        if (!takeBinary("+-&|^", op)) return left;
        if (left->isCondition()) failAt(start);
        auto node = std::make_unique<BinaryExpr>();
        node->pos = tokens_[start].pos;
        node->op = op;
        node->left = std::move(left);
        node->right = checkValue(product());
        left = std::move(node);
    }
}

ExprPtr Parser::product() {
    ExprPtr left = unary();
    for (;;) {
        const std::size_t start = at_;
        BinaryOp op;
        if (!takeBinary("*/%", op)) return left;
        if (left->isCondition()) failAt(start);
        auto node = std::make_unique<BinaryExpr>();
        node->pos = tokens_[start].pos;
        node->op = op;
        node->left = std::move(left);
        node->right = checkValue(unary());
        left = std::move(node);
    }
}

ExprPtr Parser::unary() {
    static constexpr std::pair<char, UnaryOp> kSigns[] = {
        {'-', UnaryOp::Minus}, {'+', UnaryOp::Plus}, {'~', UnaryOp::BitNot}};
    for (const auto& [symbol, op] : kSigns) {
        if (!isSymbol(symbol)) continue;
        const DepthGuard guard(*this);
        auto node = make<UnaryExpr>();
        ++at_;
        node->op = op;
        node->operand = checkValue(unary());
        return node;
    }
    return collated();
}

ExprPtr Parser::collated() {
    ExprPtr expr = primary();
    while (isWord("COLLATE")) {
        if (expr->isCondition()) fail();
        auto node = make<CollateExpr>();
        ++at_;
        node->collation = identifier();
        node->operand = std::move(expr);
        expr = std::move(node);
    }
    return expr;
}

ExprPtr Parser::primary() {
    switch (token().kind) {
        case TokenKind::Literal:
            return literal();
        case TokenKind::Variable: {
            auto node = make<VariableExpr>();
            node->name = variable();
            if (isSymbol('.')) refuse("a method of a variable");
            return node;
        }
        case TokenKind::System: {
            auto node = make<SystemVariableExpr>();
            node->name = LCase(tokens_[at_++].text);
            return node;
        }
        case TokenKind::Symbol:
            if (isSymbol('(')) return parenthesised();
            fail();
        case TokenKind::Word:
            return wordExpression();
        case TokenKind::Quoted:
            return nameExpression();
        case TokenKind::End:
            fail();
    }
    fail();
}

ExprPtr Parser::parenthesised() {
    const DepthGuard guard(*this);
    if (queryAhead()) {
        auto node = make<SubqueryExpr>();
        node->query = bracketedQuery();
        return node;
    }
    needSymbol('(');
    ExprPtr inner = anything();
    needSymbol(')');
    return inner;
}

ExprPtr Parser::wordExpression() {
    const std::string_view text = token().text;
    const Pos pos = here();
    if (isSymbol('(', 1)) {
        if (take("CAST")) return castExpression(false);
        if (take("TRY_CAST")) return castExpression(true);
        if (take("CONVERT")) return convertExpression(false);
        if (take("TRY_CONVERT")) return convertExpression(true);
        if (take("IIF")) return immediateIf();
        for (const RefusedFunction& refused : kRefusedFunctions)
            if (isWord(refused.word)) refuse(refused.construct);
        if (contains(kReservedFunctions, text) || isWord("UPDATE")) {
            ObjectName name;
            name.pos = pos;
            name.name = isWord("UPDATE") ? "UPDATE" : std::string(text);
            ++at_;
            return call(std::move(name), pos);
        }
    }
    if (isWord("CASE")) return caseExpression();
    if (isWord("NULL")) {
        auto node = make<LiteralExpr>();
        ++at_;
        return node;
    }
    if (contains(kBareFunctions, text)) {
        auto node = make<CallExpr>();
        node->name.pos = pos;
        node->name.name = text;
        node->noParentheses = true;
        ++at_;
        return node;
    }
    if (isWord("NEXT") && isWord("VALUE", 1) && isWord("FOR", 2)) refuse("NEXT VALUE FOR");
    return nameExpression();
}

ExprPtr Parser::nameExpression() {
    const Pos pos = here();
    std::vector<std::string> parts = nameParts();
    if (isSymbol('(')) return call(nameOf(std::move(parts), pos), pos);
    if (isPair(':', ':')) refuse("a static method (::)");
    auto node = std::make_unique<ColumnExpr>();
    node->pos = pos;
    node->column = std::move(parts.back());
    parts.pop_back();
    node->qualifier = nameOf(std::move(parts), pos);
    return node;
}

ExprPtr Parser::caseExpression() {
    const DepthGuard guard(*this);
    auto node = make<CaseExpr>();
    need("CASE");
    if (!isWord("WHEN")) node->operand = value();
    do {
        need("WHEN");
        CaseExpr::Arm arm;
        arm.when = node->operand ? value() : condition();
        need("THEN");
        arm.then = value();
        node->arms.push_back(std::move(arm));
    } while (isWord("WHEN"));
    if (take("ELSE")) node->otherwise = value();
    need("END");
    return node;
}

ExprPtr Parser::castExpression(bool isTry) {
    const DepthGuard guard(*this);
    auto node = make<CastExpr>();
    node->pos = tokens_[at_ - 1].pos;
    node->isTry = isTry;
    needSymbol('(');
    node->value = value();
    if (!take("AS")) {
        const Token& t = token();
        throw sqlErrorAt(static_cast<int>(t.pos.line), 1035, {t.text, "AS"});
    }
    node->type = typeName();
    needSymbol(')');
    return node;
}

ExprPtr Parser::convertExpression(bool isTry) {
    const DepthGuard guard(*this);
    auto node = make<CastExpr>();
    node->pos = tokens_[at_ - 1].pos;
    node->isConvert = true;
    node->isTry = isTry;
    needSymbol('(');
    node->type = typeName();
    needSymbol(',');
    node->value = value();
    if (takeSymbol(',')) {
        node->style = value();
        if (auto* style = as<LiteralExpr>(node->style)) pin(*style);
    }
    needSymbol(')');
    return node;
}

/// IIF(condition, a, b) is CASE WHEN condition THEN a ELSE b END.
ExprPtr Parser::immediateIf() {
    const DepthGuard guard(*this);
    auto node = make<CaseExpr>();
    node->pos = tokens_[at_ - 1].pos;
    needSymbol('(');
    CaseExpr::Arm arm;
    arm.when = condition();
    needSymbol(',');
    arm.then = value();
    node->arms.push_back(std::move(arm));
    needSymbol(',');
    node->otherwise = value();
    needSymbol(')');
    return node;
}

ExprPtr Parser::call(ObjectName name, Pos pos) {
    const DepthGuard guard(*this);
    auto node = std::make_unique<CallExpr>();
    node->pos = pos;
    node->name = std::move(name);
    needSymbol('(');
    if (!isSymbol(')')) callArguments(*node);
    needSymbol(')');
    callTail(*node);
    if (isSymbol('.')) refuse("a method of a value");
    return node;
}

void Parser::callArguments(CallExpr& call) {
    const bool builtIn = call.name.schema.empty();
    if (builtIn && isSymbol('*') && isSymbol(')', 1)) {
        ++at_;
        call.star = true;
        return;
    }
    if (take("DISTINCT")) {
        call.distinct = true;
    } else if (isWord("ALL")) {
        ++at_;
    }
    if (builtIn && contains(kDatePartFunctions, call.name.name) && token().kind == TokenKind::Word &&
        isSymbol(',', 1)) {
        auto part = make<DatePartExpr>();
        part->part = LCase(tokens_[at_++].text);
        call.args.push_back(std::move(part));
        needSymbol(',');
    }
    do {
        if (isWord("DEFAULT")) {
            call.args.push_back(make<DefaultExpr>());
            ++at_;
            continue;
        }
        call.args.push_back(value());
        if (builtIn && call.args.size() == 1 && equalsNoCase(call.name.name, "TRIM") && take("FROM")) {
            // TRIM(characters FROM text): the text stands first in the tree, as in the other functions.
            call.args.insert(call.args.begin(), value());
            return;
        }
    } while (takeSymbol(','));
    if (isWord("AS")) refuse("a cast inside a function call");
}

void Parser::callTail(CallExpr& call) {
    if (isWord("WITHIN") && isWord("GROUP", 1)) {
        at_ += 2;
        needSymbol('(');
        call.withinGroup = orderItems();
        needSymbol(')');
    }
    if (isWord("IGNORE") && isWord("NULLS", 1)) refuse("IGNORE NULLS");
    if (isWord("RESPECT") && isWord("NULLS", 1)) at_ += 2;
    if (isWord("OVER") && isSymbol('(', 1)) call.over = window();
    if (isWord("AT") && isWord("TIME", 1) && isWord("ZONE", 2)) refuse("AT TIME ZONE");
}

std::unique_ptr<Window> Parser::window() {
    auto window = std::make_unique<Window>();
    window->pos = here();
    need("OVER");
    needSymbol('(');
    if (take("PARTITION")) {
        need("BY");
        window->partition = valueList();
    }
    if (isWord("ORDER")) window->order = orderItems();
    if (isAnyWord({"ROWS", "RANGE"})) windowFrame(*window);
    needSymbol(')');
    return window;
}

void Parser::windowFrame(Window& window) {
    window.hasFrame = true;
    window.isRange = word() == "RANGE";
    if (take("BETWEEN")) {
        window.from = frameBound(window.fromCount);
        need("AND");
        window.to = frameBound(window.toCount);
    } else {
        window.from = frameBound(window.fromCount);
    }
}

FrameBound Parser::frameBound(ExprPtr& count) {
    if (take("CURRENT")) {
        need("ROW");
        return FrameBound::CurrentRow;
    }
    const bool unbounded = take("UNBOUNDED");
    if (!unbounded) {
        auto number = literal();
        pin(*number);
        count = std::move(number);
    }
    if (take("PRECEDING")) return unbounded ? FrameBound::UnboundedPreceding : FrameBound::Preceding;
    need("FOLLOWING");
    return unbounded ? FrameBound::UnboundedFollowing : FrameBound::Following;
}

/// ORDER BY item, item. A whole number alone is a column's place and is pinned.
std::vector<OrderItem> Parser::orderItems() {
    need("ORDER");
    need("BY");
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.expr = value();
        if (auto* number = as<LiteralExpr>(item.expr); number && number->literal == LiteralKind::Int) pin(*number);
        item.descending = take("DESC");
        if (!item.descending) take("ASC");
        items.push_back(std::move(item));
    } while (takeSymbol(','));
    return items;
}

}  // namespace kv::tsql
