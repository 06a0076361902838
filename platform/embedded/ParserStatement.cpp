// Statements: dispatch by the first word, control of flow, variables, transactions.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

const Parser::StatementWord Parser::kStatementWords[] = {
    {"ALTER", &Parser::alterStatement},
    {"BACKUP", &Parser::unsupportedStatement},
    {"BEGIN", &Parser::beginStatement},
    {"BREAK", &Parser::breakStatement},
    {"BULK", &Parser::unsupportedStatement},
    {"CHECKPOINT", &Parser::ignored},
    {"CLOSE", &Parser::closeStatement},
    {"COMMIT", &Parser::commitStatement},
    {"CONTINUE", &Parser::continueStatement},
    {"CREATE", &Parser::createStatement},
    {"DBCC", &Parser::dbccStatement},
    {"DEALLOCATE", &Parser::deallocateStatement},
    {"DECLARE", &Parser::declareStatement},
    {"DELETE", &Parser::deleteStatement},
    {"DENY", &Parser::permissionStatement},
    {"DROP", &Parser::dropStatement},
    {"EXEC", &Parser::execStatement},
    {"EXECUTE", &Parser::execStatement},
    {"FETCH", &Parser::fetchStatement},
    {"GOTO", &Parser::unsupportedStatement},
    {"GRANT", &Parser::permissionStatement},
    {"IF", &Parser::ifStatement},
    {"INSERT", &Parser::insertStatement},
    {"KILL", &Parser::unsupportedStatement},
    {"MERGE", &Parser::unsupportedStatement},
    {"OPEN", &Parser::openStatement},
    {"PRINT", &Parser::printStatement},
    {"RAISERROR", &Parser::raisErrorStatement},
    {"RECONFIGURE", &Parser::unsupportedStatement},
    {"RESTORE", &Parser::unsupportedStatement},
    {"RETURN", &Parser::returnStatement},
    {"REVERT", &Parser::unsupportedStatement},
    {"REVOKE", &Parser::permissionStatement},
    {"ROLLBACK", &Parser::rollbackStatement},
    {"SAVE", &Parser::saveStatement},
    {"SELECT", &Parser::selectStatement},
    {"SET", &Parser::setStatement},
    {"SETUSER", &Parser::unsupportedStatement},
    {"SHUTDOWN", &Parser::unsupportedStatement},
    {"THROW", &Parser::throwStatement},
    {"TRUNCATE", &Parser::truncateStatement},
    {"UPDATE", &Parser::updateStatement},
    {"USE", &Parser::useStatement},
    {"WAITFOR", &Parser::unsupportedStatement},
    {"WHILE", &Parser::whileStatement},
    {"WITH", &Parser::withStatement},
};

StmtList Parser::statements() {
    StmtList list;
    bool separated = true;
    for (;;) {
        while (takeSymbol(';')) separated = true;
        if (atEnd() || isWord("END")) return list;
        if (!separated && isWord("WITH")) throw sqlErrorAt(static_cast<int>(here().line), 319);
        list.push_back(statement());
        separated = false;
    }
}

/// One statement with the semicolon behind it.
StmtPtr Parser::statement() {
    const DepthGuard guard(*this);
    const Pos pos = here();
    const bool first = at_ == 0;
    StmtPtr result;
    if (first && isName() && !isWord("THROW") && !isAnyWord({"ENABLE", "DISABLE"})) {
        // A batch may start with a procedure's name: EXEC is implied.
        if (isSymbol(':', 1)) return unsupported("a label");
        result = execCall(make<ExecStmt>());
    } else {
        result = statementCore();
    }
    result->pos = pos;
    const Token& last = tokens_[at_ - 1];
    result->endOffset = last.pos.offset + static_cast<std::uint32_t>(last.text.size());
    return result;
}

StmtPtr Parser::statementCore() {
    if (isSymbol('(') && queryAhead()) return selectStatement();
    if (token().kind != TokenKind::Word) fail();
    const std::string_view text = token().text;
    for (const StatementWord& entry : kStatementWords)
        if (entry.word.size() == text.size() && isWord(entry.word)) return (this->*entry.parse)();
    if (isAnyWord({"ENABLE", "DISABLE"}) && isWord("TRIGGER", 1)) return triggerSwitch();
    if (isSymbol(':', 1) && isName()) return unsupported("a label");
    fail();
}

StmtPtr Parser::selectStatement() {
    auto stmt = make<SelectStmt>();
    stmt->query = query(QueryPlace::Statement);
    const bool function = body_ == Body::ScalarFunction || body_ == Body::TableFunction;
    if (function && !stmt->assigns()) throw sqlErrorAt(static_cast<int>(stmt->pos.line), 444);
    return stmt;
}

StmtPtr Parser::withStatement() {
    std::vector<Cte> with = ctes();
    if (isWord("INSERT")) return insert(std::move(with));
    if (isWord("UPDATE")) return update(std::move(with));
    if (isWord("DELETE")) return deletion(std::move(with));
    if (isWord("MERGE")) return unsupportedStatement();
    StmtPtr stmt = selectStatement();
    as<SelectStmt>(stmt)->query->with = std::move(with);
    return stmt;
}

StmtPtr Parser::ifStatement() {
    auto stmt = make<IfStmt>();
    need("IF");
    stmt->condition = condition();
    stmt->then = statement();
    std::size_t ahead = 0;
    while (isSymbol(';', ahead)) ++ahead;
    if (isWord("ELSE", ahead)) {
        at_ += ahead + 1;
        stmt->otherwise = statement();
    }
    return stmt;
}

StmtPtr Parser::whileStatement() {
    auto stmt = make<WhileStmt>();
    need("WHILE");
    stmt->condition = condition();
    ++loops_;
    stmt->body = statement();
    --loops_;
    return stmt;
}

StmtPtr Parser::breakStatement() {
    auto stmt = make<BreakStmt>();
    need("BREAK");
    if (loops_ == 0) throw sqlErrorAt(static_cast<int>(stmt->pos.line), 135);
    return stmt;
}

StmtPtr Parser::continueStatement() {
    auto stmt = make<ContinueStmt>();
    need("CONTINUE");
    if (loops_ == 0) throw sqlErrorAt(static_cast<int>(stmt->pos.line), 136);
    return stmt;
}

StmtPtr Parser::beginStatement() {
    if (isAnyWord({"TRAN", "TRANSACTION"}, 1)) {
        need("BEGIN");
        StmtPtr stmt = transaction<BeginTransactionStmt>();
        if (take("WITH")) {
            need("MARK");
            if (isString()) pinnedText();
        }
        return stmt;
    }
    if (isWord("TRY", 1)) return tryStatement();
    if (isWord("DISTRIBUTED", 1)) return unsupportedStatement();
    auto stmt = make<BlockStmt>();
    need("BEGIN");
    if (isWord("CATCH")) fail();
    stmt->body = statements();
    if (stmt->body.empty()) fail();
    need("END");
    return stmt;
}

StmtPtr Parser::tryStatement() {
    auto stmt = make<TryCatchStmt>();
    need("BEGIN");
    need("TRY");
    stmt->body = statements();
    need("END");
    need("TRY");
    takeSymbol(';');
    need("BEGIN");
    need("CATCH");
    stmt->handler = statements();
    need("END");
    need("CATCH");
    return stmt;
}

StmtPtr Parser::returnStatement() {
    auto stmt = make<ReturnStmt>();
    need("RETURN");
    const TokenKind kind = token().kind;
    const bool valueWord = isAnyWord({"CASE", "CAST", "CONVERT", "NULL", "COALESCE", "NULLIF", "LEFT", "RIGHT",
                                      "TRY_CONVERT", "CURRENT_TIMESTAMP", "CURRENT_USER", "SYSTEM_USER", "USER"});
    const bool sign = isSymbol('-') || isSymbol('+') || isSymbol('~') || isSymbol('(');
    if (kind == TokenKind::Literal || kind == TokenKind::Variable || kind == TokenKind::System || sign || valueWord ||
        (isName() && !isWord("THROW")))
        stmt->value = value();
    checkReturn(*stmt);
    return stmt;
}

void Parser::checkReturn(const ReturnStmt& stmt) const {
    const int line = static_cast<int>(stmt.pos.line);
    const bool valueWanted = body_ == Body::ScalarFunction;
    const bool valueAllowed = valueWanted || body_ == Body::Procedure;
    if (stmt.value && !valueAllowed) throw sqlErrorAt(line, 178);
    if (!stmt.value && valueWanted) throw sqlErrorAt(line, 455);
}

StmtPtr Parser::printStatement() {
    auto stmt = make<PrintStmt>();
    need("PRINT");
    stmt->value = value();
    return stmt;
}

StmtPtr Parser::raisErrorStatement() {
    auto stmt = make<RaisErrorStmt>();
    need("RAISERROR");
    needSymbol('(');
    stmt->message = value();
    needSymbol(',');
    stmt->severity = value();
    needSymbol(',');
    stmt->state = value();
    if (takeSymbol(',')) stmt->args = valueList();
    needSymbol(')');
    if (take("WITH")) {
        do {
            stmt->options.push_back(word());
        } while (takeSymbol(','));
    }
    return stmt;
}

StmtPtr Parser::throwStatement() {
    auto stmt = make<ThrowStmt>();
    need("THROW");
    const TokenKind kind = token().kind;
    if (kind != TokenKind::Literal && kind != TokenKind::Variable) return stmt;
    stmt->number = value();
    needSymbol(',');
    stmt->message = value();
    needSymbol(',');
    stmt->state = value();
    return stmt;
}

// ------------------------------------------------------------------------------------------------ transactions

/// TRAN[SACTION] [name]. THROW there is the statement that someone forgot to separate by a semicolon.
template <class T>
StmtPtr Parser::transaction() {
    auto stmt = make<T>();
    const bool worded = take("TRAN") || take("TRANSACTION");
    if (!worded) {
        take("WORK");
        return stmt;
    }
    if (isWord("THROW")) fail();
    if (token().kind == TokenKind::Variable) {
        stmt->name = variable();
    } else if (isName() && !isWord("WORK")) {
        stmt->name = identifier();
    }
    return stmt;
}

StmtPtr Parser::commitStatement() {
    need("COMMIT");
    StmtPtr stmt = transaction<CommitStmt>();
    if (isWord("WITH") && isSymbol('(', 1)) {
        ++at_;
        skipBrackets();
    }
    return stmt;
}

StmtPtr Parser::rollbackStatement() {
    need("ROLLBACK");
    return transaction<RollbackStmt>();
}

StmtPtr Parser::saveStatement() {
    need("SAVE");
    if (!isAnyWord({"TRAN", "TRANSACTION"})) fail();
    StmtPtr stmt = transaction<SaveTransactionStmt>();
    if (as<SaveTransactionStmt>(stmt)->name.empty()) fail();
    return stmt;
}

// ------------------------------------------------------------------------------------------------ variables, options

StmtPtr Parser::declareStatement() {
    const Pos pos = here();
    need("DECLARE");
    if (isName()) {
        StmtPtr cursor = declareCursor(identifier());
        cursor->pos = pos;
        return cursor;
    }
    auto stmt = make<DeclareStmt>();
    do {
        stmt->items.push_back(declaration());
    } while (takeSymbol(','));
    return stmt;
}

Declaration Parser::declaration() {
    Declaration item;
    item.pos = here();
    item.name = variable();
    take("AS");
    if (take("TABLE")) {
        ++pinAll_;
        item.table = std::make_unique<TableDef>(tableDef());
        --pinAll_;
        return item;
    }
    item.type = typeName();
    if (takeSymbol('=')) item.value = value();
    return item;
}

StmtPtr Parser::setStatement() {
    if (token(1).kind == TokenKind::Variable) return setVariable();
    return setOption();
}

StmtPtr Parser::setVariable() {
    auto stmt = make<SetVariableStmt>();
    need("SET");
    stmt->name = variable();
    if (isSymbol('.')) refuse("a method of a variable");
    if (!takeCompoundAssignment(stmt->op)) fail();
    if (!stmt->op && isWord("CURSOR")) return declareCursor(stmt->name);
    stmt->value = value();
    return stmt;
}

/// Options change nothing here, except those that the executor looks at; their values are words or numbers.
StmtPtr Parser::setOption() {
    auto stmt = make<SetOptionStmt>();
    need("SET");
    if (isWord("IDENTITY_INSERT")) {
        auto identity = make<SetIdentityInsertStmt>();
        ++at_;
        identity->table = objectName();
        identity->on = take("ON");
        if (!identity->on) need("OFF");
        return identity;
    }
    const bool compound = isAnyWord({"TRANSACTION", "STATISTICS"});
    stmt->options.push_back(word());
    if (stmt->options.front() == "STATISTICS") stmt->options.front() += " " + word();
    while (!compound && takeSymbol(',')) stmt->options.push_back(word());
    if (stmt->options.front() == "TRANSACTION") {
        need("ISOLATION");
        need("LEVEL");
        stmt->options.front() = "TRANSACTION ISOLATION LEVEL";
        stmt->value = word();
        if (stmt->value == "READ" || stmt->value == "REPEATABLE") stmt->value += " " + word();
        return stmt;
    }
    if (token().kind == TokenKind::Variable) {
        stmt->value = variable();
    } else if (isString()) {
        const Pos pos = here();
        stmt->value = pinnedText();
        const bool digit = stmt->value.size() == 1 && IsNumeric(stmt->value);
        const bool letters =
            stmt->value.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_") == std::string::npos;
        if (stmt->value.empty() || !(digit || letters)) refuse("SET with a text that is not one word", pos);
    } else if (token().kind == TokenKind::Literal || isSymbol('-')) {
        stmt->value = std::to_string(wholeNumber());
    } else {
        stmt->value = word();
    }
    return stmt;
}

StmtPtr Parser::useStatement() {
    auto stmt = make<UseStmt>();
    need("USE");
    stmt->database = identifier();
    return stmt;
}

StmtPtr Parser::dbccStatement() {
    auto stmt = make<DbccStmt>();
    need("DBCC");
    stmt->command = word();
    if (takeSymbol('(')) {
        while (!isSymbol(')')) {
            if (isName()) {
                auto text = make<LiteralExpr>();
                text->literal = LiteralKind::String;
                text->pinned = true;
                text->text = objectName().text();
                stmt->args.push_back(std::move(text));
            } else {
                stmt->args.push_back(value());
            }
            if (!isSymbol(')')) needSymbol(',');
        }
        needSymbol(')');
    }
    if (take("WITH")) {
        do {
            word();
        } while (takeSymbol(','));
    }
    return stmt;
}

/// GRANT, DENY, REVOKE: permissions belong to the server; a file has none.
StmtPtr Parser::permissionStatement() {
    auto stmt = make<IgnoredStmt>();
    stmt->what = word();
    while (!isAnyWord({"TO", "FROM"})) {
        if (atEnd() || isSymbol(';')) fail();
        ++at_;
    }
    ++at_;
    do {
        if (!take("PUBLIC")) identifier();
    } while (takeSymbol(','));
    if (isWord("WITH") && isWord("GRANT", 1) && isWord("OPTION", 2)) at_ += 3;
    take("CASCADE");
    if (take("AS")) identifier();
    return stmt;
}

StmtPtr Parser::ignored() {
    auto stmt = make<IgnoredStmt>();
    stmt->what = word();
    return stmt;
}

/// CREATE and DROP of logons and users: they belong to the server; a file has none.
StmtPtr Parser::skipped() {
    auto stmt = make<IgnoredStmt>();
    stmt->what = UCase(token().text);
    skipStatement();
    return stmt;
}

StmtPtr Parser::unsupportedStatement() {
    std::string construct = UCase(token().text);
    if (isWord("BULK") || isWord("BEGIN")) construct += " " + UCase(token(1).text);
    return unsupported(std::move(construct));
}

StmtPtr Parser::unsupported(std::string construct) {
    auto stmt = make<UnsupportedStmt>();
    stmt->construct = std::move(construct);
    skipStatement();
    return stmt;
}

/// Skips the rest of a statement that is not understood.
void Parser::skipStatement() {
    do {
        if (isSymbol('(')) {
            skipBrackets();
        } else {
            ++at_;
        }
    } while (!atEnd() && !isSymbol(';') && !isWord("END"));
}

}  // namespace kv::tsql
