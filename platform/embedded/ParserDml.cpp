// INSERT, UPDATE, DELETE, TRUNCATE.

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

/// A table, a view, an alias, or a table variable. A function changes table variables only.
ObjectName Parser::targetName(std::string_view verb) {
    ObjectName name;
    if (token().kind == TokenKind::Variable) {
        name.pos = here();
        name.name = variable();
    } else {
        for (const std::string_view source : {"OPENQUERY", "OPENROWSET"})
            if (isWord(source)) refuse(source);
        name = objectName();
    }
    const bool function = body_ == Body::ScalarFunction || body_ == Body::TableFunction;
    if (function && !name.isVariable()) throw sqlErrorAt(static_cast<int>(name.pos.line), 443, {verb});
    std::vector<std::string> hints;
    tableHints(hints);
    return name;
}

std::unique_ptr<OutputClause> Parser::output() {
    if (!isWord("OUTPUT")) return nullptr;
    auto clause = std::make_unique<OutputClause>();
    clause->pos = here();
    ++at_;
    do {
        clause->items.push_back(selectItem());
    } while (takeSymbol(','));
    if (take("INTO")) {
        if (token().kind == TokenKind::Variable) {
            clause->into.pos = here();
            clause->into.name = variable();
        } else {
            clause->into = objectName();
        }
        if (isSymbol('(')) clause->columns = bracketedNameList();
    }
    return clause;
}

StmtPtr Parser::insert(std::vector<Cte> with) {
    auto stmt = make<InsertStmt>();
    stmt->with = std::move(with);
    need("INSERT");
    stmt->top = top();
    take("INTO");
    stmt->target = targetName("INSERT");
    if (isSymbol('(') && !queryAhead()) {
        needSymbol('(');
        do {
            stmt->columnPos.push_back(here());
            std::vector<std::string> parts = nameParts();
            stmt->columns.push_back(std::move(parts.back()));
        } while (takeSymbol(','));
        needSymbol(')');
    }
    stmt->output = output();
    insertSource(*stmt);
    return stmt;
}

void Parser::insertSource(InsertStmt& stmt) {
    if (take("DEFAULT")) {
        need("VALUES");
        stmt.defaultValues = true;
    } else if (take("VALUES")) {
        stmt.rows = valueRows();
        if (!stmt.columns.empty() && stmt.rows.front().size() != stmt.columns.size())
            throw sqlErrorAt(static_cast<int>(stmt.pos.line),
                             stmt.rows.front().size() > stmt.columns.size() ? 110 : 109);
    } else if (isAnyWord({"EXEC", "EXECUTE"})) {
        const Pos pos = here();
        stmt.exec = execStatement();
        stmt.exec->pos = pos;
    } else if (isWord("SELECT") || isSymbol('(')) {
        stmt.query = query(QueryPlace::Statement);
    } else if (isWord("MERGE")) {
        refuse("MERGE");
    } else {
        fail();
    }
}

StmtPtr Parser::updateStatement() {
    if (isWord("STATISTICS", 1)) {
        StmtPtr stmt = ignored();
        ++at_;
        objectName();
        if (isSymbol('(')) {
            skipBrackets();
        } else if (isName()) {
            identifier();
        }
        if (take("WITH")) word();
        return stmt;
    }
    return update({});
}

StmtPtr Parser::update(std::vector<Cte> with) {
    auto stmt = make<UpdateStmt>();
    stmt->with = std::move(with);
    need("UPDATE");
    stmt->top = top();
    stmt->target = targetName("UPDATE");
    need("SET");
    do {
        stmt->assignments.push_back(assignment());
    } while (takeSymbol(','));
    stmt->output = output();
    if (take("FROM")) stmt->from = fromList();
    whereOrCurrent(stmt->where, stmt->currentOf);
    optionClause();
    return stmt;
}

Assignment Parser::assignment() {
    Assignment item;
    item.pos = here();
    if (token().kind == TokenKind::Variable) {
        item.variable = variable();
        if (!takeCompoundAssignment(item.op)) fail();
        // "@v = column = value": a name that is followed by an assignment.
        std::size_t ahead = 0;
        while (isName(ahead) && isSymbol('.', ahead + 1)) ahead += 2;
        if (item.op || !isName(ahead)) {
            item.value = value();
            return item;
        }
        const std::size_t start = at_;
        at_ += ahead + 1;
        const bool column = takeCompoundAssignment(item.op);
        at_ = start;
        item.op.reset();
        if (!column) {
            item.value = value();
            return item;
        }
    }
    const Pos pos = here();
    std::vector<std::string> parts = nameParts();
    item.column = std::move(parts.back());
    parts.pop_back();
    item.qualifier = nameOf(std::move(parts), pos);
    if (isSymbol('(')) refuse("a method in SET");
    if (!takeCompoundAssignment(item.op)) fail();
    if (isWord("DEFAULT")) {
        item.value = make<DefaultExpr>();
        ++at_;
    } else {
        item.value = value();
    }
    return item;
}

void Parser::whereOrCurrent(ExprPtr& where, std::string& cursor) {
    if (!take("WHERE")) return;
    if (isWord("CURRENT") && isWord("OF", 1)) {
        at_ += 2;
        cursor = cursorName();
        return;
    }
    where = condition();
}

StmtPtr Parser::deletion(std::vector<Cte> with) {
    auto stmt = make<DeleteStmt>();
    stmt->with = std::move(with);
    need("DELETE");
    stmt->top = top();
    take("FROM");
    stmt->target = targetName("DELETE");
    stmt->output = output();
    if (take("FROM")) stmt->from = fromList();
    whereOrCurrent(stmt->where, stmt->currentOf);
    optionClause();
    return stmt;
}

StmtPtr Parser::truncateStatement() {
    auto stmt = make<TruncateStmt>();
    need("TRUNCATE");
    need("TABLE");
    stmt->target = objectName();
    return stmt;
}

}  // namespace kv::tsql
