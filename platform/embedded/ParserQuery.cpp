// Queries: SELECT with its clauses, set operations, common table expressions, and table sources.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

namespace {

/// Hints that may stand in parentheses without WITH; any other word there is an argument of a function.
constexpr std::string_view kHints[] = {
    "FORCESEEK", "FORCESCAN",     "HOLDLOCK", "INDEX",           "NOEXPAND",       "NOLOCK",       "NOWAIT",
    "PAGLOCK",   "READCOMMITTED", "READPAST", "READUNCOMMITTED", "REPEATABLEREAD", "ROWLOCK",      "SERIALIZABLE",
    "SNAPSHOT",  "TABLOCK",       "TABLOCKX", "UPDLOCK",         "XLOCK",          "FASTFIRSTROW", "READCOMMITTEDLOCK",
};

}  // namespace

bool Parser::queryAhead() const {
    std::size_t first = at_;
    while (tokens_[first].kind == TokenKind::Symbol && tokens_[first].symbol == '(') ++first;
    if (first == at_ || tokens_[first].kind != TokenKind::Word || !equalsNoCase(tokens_[first].text, "SELECT"))
        return false;
    // Of several parentheses the inner ones must hold a whole arm of the query, not an operand.
    for (std::size_t open = at_ + 1; open < first; ++open) {
        const Token& next = tokens_[std::min(closing(open) + 1, tokens_.size() - 1)];
        const bool goesOn =
            next.kind == TokenKind::Word && (equalsNoCase(next.text, "UNION") || equalsNoCase(next.text, "EXCEPT") ||
                                             equalsNoCase(next.text, "INTERSECT") || equalsNoCase(next.text, "ORDER"));
        if (!goesOn && !(next.kind == TokenKind::Symbol && next.symbol == ')')) return false;
    }
    return true;
}

QueryPtr Parser::bracketedQuery() {
    needSymbol('(');
    // "((SELECT ..))": parentheses around the whole query mean nothing.
    const bool doubled = isSymbol('(') && isSymbol(')', closing(at_) + 1 - at_);
    QueryPtr result = doubled ? bracketedQuery() : query(QueryPlace::Inner);
    needSymbol(')');
    return result;
}

QueryPtr Parser::query(QueryPlace place) {
    const DepthGuard guard(*this);
    auto result = make<Query>();
    result->body = queryBody();
    queryTail(*result, place);
    checkAssignments(*result);
    return result;
}

void Parser::queryTail(Query& query, QueryPlace place) {
    const Pos pos = here();
    if (isWord("ORDER")) query.orderBy = orderItems();
    if (isWord("OFFSET") && !query.orderBy.empty()) {
        ++at_;
        query.offset = value();
        if (!take("ROWS")) need("ROW");
        if (take("FETCH")) {
            if (!take("NEXT")) need("FIRST");
            query.fetch = value();
            if (!take("ROWS")) need("ROW");
            need("ONLY");
        }
    }
    if (isWord("FOR") && isAnyWord({"XML", "JSON"}, 1)) {
        ++at_;
        query.clausePos = here();
        query.forClause = word();
        while (!atEnd() && !isSymbol(')') && !isSymbol(';')) isSymbol('(') ? skipBrackets() : void(++at_);
    }
    const auto* select = as<SelectBody>(query.body.get());
    const bool limited = query.offset || !query.forClause.empty() || (select && select->top);
    if (place == QueryPlace::Inner && !query.orderBy.empty() && !limited)
        throw sqlErrorAt(static_cast<int>(pos.line), 1033);
    if (place == QueryPlace::Statement) optionClause();
}

/// Either all items of a select list set variables, or none; set operations take none.
void Parser::checkAssignments(const Query& query) const {
    const SelectBody& first = query.first();
    const auto assigns = [](const SelectItem& item) { return !item.variable.empty(); };
    const bool any = std::any_of(first.items.begin(), first.items.end(), assigns);
    if (!any) return;
    const int line = static_cast<int>(first.pos.line);
    if (!std::all_of(first.items.begin(), first.items.end(), assigns)) throw sqlErrorAt(line, 141);
    if (query.body->kind == QueryBodyKind::SetOperation) throw sqlErrorAt(line, 10734);
    if (!first.into.empty()) throw sqlErrorAt(line, 141);
}

std::unique_ptr<QueryBody> Parser::queryBody() {
    auto left = queryTerm();
    while (isAnyWord({"UNION", "EXCEPT"})) {
        const DepthGuard guard(*this);
        auto node = make<SetBody>();
        node->op = word() == "UNION" ? SetOperator::Union : SetOperator::Except;
        if (node->op == SetOperator::Union && take("ALL")) node->op = SetOperator::UnionAll;
        node->left = std::move(left);
        node->right = queryTerm();
        left = std::move(node);
    }
    return left;
}

std::unique_ptr<QueryBody> Parser::queryTerm() {
    auto left = queryPrimary();
    while (isWord("INTERSECT")) {
        auto node = make<SetBody>();
        ++at_;
        node->op = SetOperator::Intersect;
        node->left = std::move(left);
        node->right = queryPrimary();
        left = std::move(node);
    }
    return left;
}

std::unique_ptr<QueryBody> Parser::queryPrimary() {
    if (!isSymbol('(')) return selectBody();
    const DepthGuard guard(*this);
    ++at_;
    auto body = queryBody();
    needSymbol(')');
    return body;
}

std::unique_ptr<QueryBody> Parser::selectBody() {
    auto body = make<SelectBody>();
    need("SELECT");
    if (take("DISTINCT")) {
        body->distinct = true;
    } else {
        take("ALL");
    }
    body->top = top();
    do {
        body->items.push_back(selectItem());
    } while (takeSymbol(','));
    if (take("INTO")) {
        if (token().kind == TokenKind::Variable) fail();
        body->into = objectName();
    }
    if (take("FROM")) body->from = fromList();
    if (take("WHERE")) body->where = condition();
    if (isWord("GROUP")) groupBy(*body);
    if (take("HAVING")) body->having = condition();
    if (isWord("WINDOW") && isName(1) && isWord("AS", 2)) refuse("the WINDOW clause");
    return body;
}

void Parser::groupBy(SelectBody& body) {
    need("GROUP");
    need("BY");
    if (isWord("ALL")) refuse("GROUP BY ALL");
    if (isAnyWord({"ROLLUP", "CUBE"}) && isSymbol('(', 1)) refuse("GROUP BY " + UCase(token().text));
    if (isWord("GROUPING") && isWord("SETS", 1)) refuse("GROUPING SETS");
    body.groupBy = valueList();
    if (isWord("WITH") && isAnyWord({"ROLLUP", "CUBE"}, 1)) refuse("GROUP BY ... WITH " + UCase(token(1).text));
}

Top Parser::top() {
    Top result;
    result.pos = here();
    if (!take("TOP")) return result;
    if (isSymbol('(')) {
        ++at_;
        result.count = queryAhead() || isWord("SELECT") ? nullptr : value();
        if (!result.count) {
            auto subquery = make<SubqueryExpr>();
            subquery->query = query(QueryPlace::Inner);
            result.count = std::move(subquery);
        }
        needSymbol(')');
    } else if (token().kind == TokenKind::Literal) {
        result.count = literal();
    } else {
        fail();
    }
    if (isWord("PERCENT")) {
        ++at_;
        result.percent = true;
        // All the rows or a part of them are two different plans.
        if (auto* number = as<LiteralExpr>(result.count)) pin(*number);
    }
    if (isWord("WITH") && isWord("TIES", 1)) {
        at_ += 2;
        result.withTies = true;
    }
    return result;
}

/// At "@name" that takes a value: "@name =", "@name +=".
bool Parser::assignsVariable() const {
    if (token().kind != TokenKind::Variable) return false;
    if (isSymbol('=', 1)) return true;
    for (const char c : {'+', '-', '*', '/', '%', '&', '|', '^'})
        if (isPair(c, '=', 1)) return true;
    return false;
}

SelectItem Parser::selectItem() {
    SelectItem item;
    item.pos = here();
    if (isSymbol('*')) {
        item.expr = make<StarExpr>();
        ++at_;
        return item;
    }
    if (assignsVariable()) {
        item.variable = variable();
        takeCompoundAssignment(item.compoundOp);
        item.expr = value();
        return item;
    }
    if ((isName() || isString()) && isSymbol('=', 1)) {
        item.alias = isString() ? textAsName() : identifier();
        needSymbol('=');
        item.expr = value();
        return item;
    }
    if (isName()) {
        // name.* is the only place where a name ends in a star.
        std::size_t ahead = 1;
        while (isSymbol('.', ahead) && (isName(ahead + 1) || isSymbol('.', ahead + 1)))
            ahead += isSymbol('.', ahead + 1) ? 1 : 2;
        if (isSymbol('.', ahead) && isSymbol('*', ahead + 1)) {
            auto star = make<StarExpr>();
            star->qualifier = objectName();
            at_ += 2;
            item.expr = std::move(star);
            return item;
        }
    }
    item.expr = value();
    itemAlias(item);
    return item;
}

void Parser::itemAlias(SelectItem& item) {
    const bool announced = take("AS");
    if (isString()) {
        item.alias = textAsName();
    } else if (isName()) {
        item.alias = identifier();
    } else if (announced) {
        fail();
    }
}

std::vector<Cte> Parser::ctes() {
    std::vector<Cte> list;
    need("WITH");
    if (isWord("XMLNAMESPACES")) refuse("XMLNAMESPACES");
    do {
        Cte cte;
        cte.pos = here();
        cte.name = identifier();
        if (isSymbol('(')) cte.columns = bracketedNameList();
        need("AS");
        cte.query = bracketedQuery();
        list.push_back(std::move(cte));
    } while (takeSymbol(','));
    return list;
}

// ------------------------------------------------------------------------------------------------ table sources

std::vector<TableRefPtr> Parser::fromList() {
    std::vector<TableRefPtr> list;
    do {
        list.push_back(joinedTable());
    } while (takeSymbol(','));
    return list;
}

TableRefPtr Parser::joinedTable() {
    const DepthGuard guard(*this);
    TableRefPtr left = tableSource();
    for (;;) {
        const Pos pos = here();
        JoinKind kind;
        if (!takeJoin(kind)) return left;
        left = joinWith(std::move(left), kind, pos);
    }
}

/// The rest of a join whose kind was read: its right side and its condition.
TableRefPtr Parser::joinWith(TableRefPtr left, JoinKind kind, Pos pos) {
    const DepthGuard guard(*this);
    auto node = std::make_unique<JoinRef>();
    node->pos = pos;
    node->join = kind;
    node->left = std::move(left);
    if (kind == JoinKind::Cross || kind == JoinKind::CrossApply || kind == JoinKind::OuterApply) {
        node->right = tableSource();
        return node;
    }
    // "a JOIN b JOIN c ON .. ON ..": the right side takes joins until its own ON is reached.
    node->right = tableSource();
    while (!isWord("ON")) {
        const Pos innerPos = here();
        JoinKind inner;
        if (!takeJoin(inner)) fail();
        node->right = joinWith(std::move(node->right), inner, innerPos);
    }
    need("ON");
    node->on = condition();
    return node;
}

bool Parser::takeJoin(JoinKind& kind) {
    static constexpr std::pair<std::string_view, JoinKind> kOuter[] = {
        {"LEFT", JoinKind::Left}, {"RIGHT", JoinKind::Right}, {"FULL", JoinKind::Full}};
    const auto joinWord = [&] {
        for (const std::string_view hint : {"LOOP", "HASH", "MERGE", "REMOTE"})
            if (isWord(hint) && isWord("JOIN", 1)) ++at_;
        need("JOIN");
    };
    if (take("JOIN")) {
        kind = JoinKind::Inner;
        return true;
    }
    if (take("INNER")) {
        kind = JoinKind::Inner;
        joinWord();
        return true;
    }
    for (const auto& [word, outer] : kOuter) {
        if (!take(word)) continue;
        kind = outer;
        take("OUTER");
        joinWord();
        return true;
    }
    if (take("CROSS")) {
        kind = take("APPLY") ? JoinKind::CrossApply : JoinKind::Cross;
        if (kind == JoinKind::Cross) need("JOIN");
        return true;
    }
    if (isWord("OUTER") && isWord("APPLY", 1)) {
        at_ += 2;
        kind = JoinKind::OuterApply;
        return true;
    }
    return false;
}

TableRefPtr Parser::tableSource() {
    if (isSymbol('(')) return bracketedSource();
    if (token().kind == TokenKind::Variable) {
        auto node = make<VariableRef>();
        node->name = variable();
        sourceAlias(*node);
        return node;
    }
    for (const std::string_view source :
         {"OPENQUERY", "OPENROWSET", "OPENXML", "OPENDATASOURCE", "CONTAINSTABLE", "FREETEXTTABLE", "OPENJSON"})
        if (isWord(source) && isSymbol('(', 1)) refuse(source);
    return namedSource();
}

TableRefPtr Parser::namedSource() {
    const Pos pos = here();
    ObjectName name = objectName();
    if (isSymbol('(') && !hintAhead()) {
        auto node = std::make_unique<FunctionRef>();
        node->pos = pos;
        node->name = std::move(name);
        needSymbol('(');
        if (!isSymbol(')')) {
            do {
                if (isWord("DEFAULT")) {
                    node->args.push_back(make<DefaultExpr>());
                    ++at_;
                } else {
                    node->args.push_back(value());
                }
            } while (takeSymbol(','));
        }
        needSymbol(')');
        sourceAlias(*node);
        return node;
    }
    auto node = std::make_unique<NamedRef>();
    node->pos = pos;
    node->name = std::move(name);
    tableHints(node->hints);
    sourceAlias(*node);
    tableHints(node->hints);
    return node;
}

/// "(": a query, VALUES, or a join in parentheses.
TableRefPtr Parser::bracketedSource() {
    const DepthGuard guard(*this);
    if (isWord("VALUES", 1)) {
        auto node = make<ValuesRef>();
        needSymbol('(');
        ++at_;
        node->rows = valueRows();
        needSymbol(')');
        sourceAlias(*node);
        return node;
    }
    if (queryAhead()) {
        auto node = make<DerivedRef>();
        node->query = bracketedQuery();
        sourceAlias(*node);
        if (node->alias.empty()) fail();
        return node;
    }
    needSymbol('(');
    TableRefPtr inner = joinedTable();
    needSymbol(')');
    return inner;
}

void Parser::sourceAlias(AliasedRef& ref) {
    if (isAnyWord({"PIVOT", "UNPIVOT", "TABLESAMPLE"})) refuse(UCase(token().text));
    if (isWord("FOR") && isWord("SYSTEM_TIME", 1)) refuse("FOR SYSTEM_TIME");
    const bool announced = take("AS");
    if (isName()) {
        ref.alias = identifier();
        const bool takesColumns = ref.kind != TableRefKind::Named && ref.kind != TableRefKind::Variable;
        if (takesColumns && isSymbol('(')) ref.columns = bracketedNameList();
    } else if (announced) {
        fail();
    }
    if (isAnyWord({"PIVOT", "UNPIVOT", "TABLESAMPLE"})) refuse(UCase(token().text));
}

/// "(NOLOCK": a hint without WITH.
bool Parser::hintAhead() const {
    if (!isSymbol('(') || token(1).kind != TokenKind::Word || isSymbol('.', 2)) return false;
    return std::any_of(std::begin(kHints), std::end(kHints), [&](std::string_view hint) { return isWord(hint, 1); });
}

void Parser::tableHints(std::vector<std::string>& hints) {
    if (isWord("WITH") && isSymbol('(', 1)) {
        ++at_;
    } else if (!hintAhead()) {
        return;
    }
    needSymbol('(');
    while (!isSymbol(')')) {
        hints.push_back(word());
        if (isSymbol('(')) skipBrackets();
        if (takeSymbol('=')) {
            if (isSymbol('(')) {
                skipBrackets();
            } else {
                ++at_;
            }
        }
        takeSymbol(',');
    }
    needSymbol(')');
}

std::vector<ExprList> Parser::valueRows() {
    std::vector<ExprList> rows;
    do {
        needSymbol('(');
        ExprList row;
        do {
            if (isWord("DEFAULT")) {
                row.push_back(make<DefaultExpr>());
                ++at_;
            } else {
                row.push_back(value());
            }
        } while (takeSymbol(','));
        needSymbol(')');
        if (!rows.empty() && rows.front().size() != row.size()) throw sqlErrorAt(static_cast<int>(here().line), 10709);
        rows.push_back(std::move(row));
    } while (takeSymbol(','));
    return rows;
}

/// OPTION (RECOMPILE, MAXRECURSION 100, ...) changes no result.
void Parser::optionClause() {
    if (!isWord("OPTION") || !isSymbol('(', 1)) return;
    ++at_;
    skipBrackets();
}

void Parser::skipBrackets() {
    const std::size_t close = closing(at_);
    if (tokens_[close].kind == TokenKind::End) failAt(close);
    at_ = close + 1;
}

}  // namespace kv::tsql
