// EXEC in all its forms, and cursors.

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

StmtPtr Parser::execStatement() {
    const Pos pos = here();
    ++at_;
    if (isSymbol('(')) {
        auto stmt = std::make_unique<ExecStringStmt>();
        stmt->pos = pos;
        ++at_;
        stmt->text = value();
        if (isSymbol(',')) refuse("EXEC (text, argument)");
        needSymbol(')');
        if (isWord("AT")) refuse("EXEC ... AT a linked server");
        if (isWord("AS")) refuse("EXEC ... AS");
        return stmt;
    }
    if (isWord("AS")) refuse("EXECUTE AS");
    auto stmt = std::make_unique<ExecStmt>();
    stmt->pos = pos;
    if (token().kind == TokenKind::Variable && isSymbol('=', 1)) {
        stmt->resultVariable = variable();
        needSymbol('=');
    }
    if (token().kind == TokenKind::Variable) {
        stmt->procedureVariable = variable();
        execArguments(*stmt);
        return stmt;
    }
    return execCall(std::move(stmt));
}

/// At the procedure's name.
StmtPtr Parser::execCall(std::unique_ptr<ExecStmt> stmt) {
    stmt->procedure = objectName();
    if (isSymbol(';') && isLiteral(LiteralKind::Int, 1)) refuse("a numbered procedure");
    execArguments(*stmt);
    if (isWord("WITH") && isWord("RECOMPILE", 1)) at_ += 2;
    if (isWord("WITH") && isWord("RESULT", 1)) refuse("WITH RESULT SETS");
    return stmt;
}

void Parser::execArguments(ExecStmt& exec) {
    const TokenKind kind = token().kind;
    const bool starts = kind == TokenKind::Literal || kind == TokenKind::Variable || kind == TokenKind::System ||
                        isSymbol('-') || isSymbol('+') || isName() || isAnyWord({"NULL", "DEFAULT"});
    if (!starts) return;
    bool named = false;
    do {
        ExecArg arg = execArgument();
        if (named && arg.name.empty()) throw sqlErrorAt(static_cast<int>(arg.pos.line), 119, {exec.args.size() + 1});
        named = named || !arg.name.empty();
        exec.args.push_back(std::move(arg));
    } while (takeSymbol(','));
}

ExecArg Parser::execArgument() {
    ExecArg arg;
    arg.pos = here();
    if (token().kind == TokenKind::Variable && isSymbol('=', 1)) {
        arg.name = variable();
        needSymbol('=');
    }
    arg.value = execValue();
    if (isAnyWord({"OUTPUT", "OUT"})) {
        const bool toVariable = arg.value->kind == ExprKind::Variable;
        if (!toVariable) throw sqlErrorAt(static_cast<int>(here().line), 179);
        ++at_;
        arg.output = true;
    }
    return arg;
}

/// A literal, a variable, NULL, DEFAULT, or a bare word, which stands for its own text.
ExprPtr Parser::execValue() {
    if (isWord("DEFAULT")) {
        auto node = make<DefaultExpr>();
        ++at_;
        return node;
    }
    const TokenKind kind = token().kind;
    if (kind == TokenKind::Literal) return literal();
    if (kind == TokenKind::Variable || kind == TokenKind::System || isWord("NULL")) return primary();
    if (isSymbol('-') || isSymbol('+')) {
        auto node = make<UnaryExpr>();
        node->op = isSymbol('-') ? UnaryOp::Minus : UnaryOp::Plus;
        ++at_;
        node->operand = literal();
        return node;
    }
    if (!isName()) fail();
    auto text = make<LiteralExpr>();
    text->literal = LiteralKind::String;
    text->pinned = true;
    text->text = identifier();
    if (isSymbol('.') || isSymbol('(')) fail();
    return text;
}

// ------------------------------------------------------------------------------------------------ cursors

std::string Parser::cursorName() {
    take("GLOBAL");
    return token().kind == TokenKind::Variable ? variable() : identifier();
}

/// After the name: [options] CURSOR [options] FOR query [FOR READ ONLY | FOR UPDATE [OF columns]].
StmtPtr Parser::declareCursor(std::string name) {
    auto stmt = make<DeclareCursorStmt>();
    stmt->name = std::move(name);
    while (isAnyWord({"INSENSITIVE", "SCROLL"})) stmt->options.push_back(word());
    need("CURSOR");
    // INSENSITIVE is taken behind the word too: there our own printing puts it.
    while (isAnyWord({"LOCAL", "GLOBAL", "FORWARD_ONLY", "SCROLL", "STATIC", "KEYSET", "DYNAMIC", "FAST_FORWARD",
                      "READ_ONLY", "SCROLL_LOCKS", "OPTIMISTIC", "TYPE_WARNING", "INSENSITIVE"})) {
        stmt->options.push_back(word());
    }
    need("FOR");
    std::vector<Cte> with;
    if (isWord("WITH")) with = ctes();
    stmt->query = query(QueryPlace::Statement);
    stmt->query->with = std::move(with);
    if (take("FOR")) {
        if (take("READ")) {
            need("ONLY");
            stmt->options.push_back("READ_ONLY");
        } else {
            need("UPDATE");
            if (take("OF")) nameList();
            stmt->options.push_back("UPDATE");
        }
    }
    return stmt;
}

StmtPtr Parser::openStatement() {
    auto stmt = make<OpenCursorStmt>();
    need("OPEN");
    stmt->name = cursorName();
    return stmt;
}

StmtPtr Parser::closeStatement() {
    auto stmt = make<CloseCursorStmt>();
    need("CLOSE");
    stmt->name = cursorName();
    return stmt;
}

StmtPtr Parser::deallocateStatement() {
    auto stmt = make<DeallocateCursorStmt>();
    need("DEALLOCATE");
    stmt->name = cursorName();
    return stmt;
}

StmtPtr Parser::fetchStatement() {
    static constexpr std::pair<std::string_view, FetchDirection> kDirections[] = {
        {"NEXT", FetchDirection::Next}, {"PRIOR", FetchDirection::Prior},       {"FIRST", FetchDirection::First},
        {"LAST", FetchDirection::Last}, {"ABSOLUTE", FetchDirection::Absolute}, {"RELATIVE", FetchDirection::Relative}};
    auto stmt = make<FetchCursorStmt>();
    need("FETCH");
    for (const auto& [text, direction] : kDirections) {
        if (!isWord(text) || isWord("INTO", 1)) continue;
        ++at_;
        stmt->direction = direction;
        if (direction == FetchDirection::Absolute || direction == FetchDirection::Relative) stmt->count = value();
        break;
    }
    take("FROM");
    stmt->name = cursorName();
    if (take("INTO")) {
        do {
            stmt->into.push_back(variable());
        } while (takeSymbol(','));
    }
    return stmt;
}

}  // namespace kv::tsql
