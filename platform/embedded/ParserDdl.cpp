// Definitions of tables, indexes, constraints, and DROP.

#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/ParserCore.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {

namespace {

/// Literals of a definition become part of the catalogue: none of them is a parameter.
class PinScope {
public:
    explicit PinScope(int& depth) : depth_(depth) { ++depth_; }
    PinScope(const PinScope&) = delete;
    PinScope& operator=(const PinScope&) = delete;
    ~PinScope() { --depth_; }

private:
    int& depth_;
};

}  // namespace

StmtPtr Parser::createStatement() {
    if (isWord("TABLE", 1)) return createTable();
    if (isAnyWord({"UNIQUE", "CLUSTERED", "NONCLUSTERED", "INDEX"}, 1)) return createIndex();
    if (isAnyWord({"DATABASE", "SCHEMA"}, 1)) return createNamed();
    if (isAnyWord({"USER", "LOGIN", "ROLE"}, 1)) return skipped();
    if (isWord("OR", 1) && isWord("ALTER", 2)) return module(ModuleMode::CreateOrAlter);
    if (isAnyWord({"VIEW", "PROC", "PROCEDURE", "FUNCTION", "TRIGGER"}, 1)) return module(ModuleMode::Create);
    if (token(1).kind != TokenKind::Word) failAt(at_ + 1);
    return unsupported("CREATE " + UCase(token(1).text));
}

StmtPtr Parser::createTable() {
    const PinScope pins(pinAll_);
    auto stmt = make<CreateTableStmt>();
    need("CREATE");
    need("TABLE");
    stmt->name = objectName();
    if (isWord("AS")) refuse("CREATE TABLE ... AS");
    stmt->def = tableDef();
    storageOptions();
    return stmt;
}

/// ON filegroup, TEXTIMAGE_ON, WITH (...): where a server keeps the rows.
void Parser::storageOptions() {
    for (;;) {
        if (isAnyWord({"ON", "TEXTIMAGE_ON", "FILESTREAM_ON"}) && (isName(1) || isWord("PRIMARY", 1))) {
            at_ += 2;
            if (isSymbol('(')) skipBrackets();
        } else if (isWord("WITH") && isSymbol('(', 1)) {
            ++at_;
            skipBrackets();
        } else if (isWord("WITH") && isWord("FILLFACTOR", 1) && isSymbol('=', 2)) {
            at_ += 4;
        } else {
            return;
        }
    }
}

TableDef Parser::tableDef() {
    TableDef def;
    needSymbol('(');
    while (!isSymbol(')')) {
        tableElement(def);
        // A comma after the last element is taken, as SQL Server does.
        if (!takeSymbol(',') && !isSymbol(')') && !constraintAhead()) fail();
    }
    needSymbol(')');
    if (def.columns.empty()) failAt(at_ - 1);
    return def;
}

bool Parser::constraintAhead() const { return isAnyWord({"CONSTRAINT", "PRIMARY", "UNIQUE", "CHECK", "FOREIGN"}); }

void Parser::tableElement(TableDef& def) {
    if (constraintAhead()) {
        def.constraints.push_back(constraint(nullptr));
        return;
    }
    if (isWord("INDEX") && isName(1)) {
        InlineIndex index;
        index.pos = here();
        ++at_;
        index.name = identifier();
        index.unique = take("UNIQUE");
        if (!take("CLUSTERED")) take("NONCLUSTERED");
        index.columns = indexColumns();
        def.indexes.push_back(std::move(index));
        return;
    }
    if (isWord("PERIOD") && isWord("FOR", 1)) refuse("PERIOD FOR SYSTEM_TIME");
    def.columns.push_back(columnDef());
}

ColumnDef Parser::columnDef() {
    ColumnDef column;
    column.pos = here();
    column.name = identifier();
    if (take("AS")) {
        column.computed = value();
        column.persisted = take("PERSISTED");
    } else {
        column.type = typeName();
    }
    while (columnOption(column)) {
    }
    return column;
}

bool Parser::columnOption(ColumnDef& column) {
    if (isWord("NULL") || (isWord("NOT") && isWord("NULL", 1))) {
        column.nullable = !take("NOT");
        need("NULL");
    } else if (take("COLLATE")) {
        column.collation = identifier();
    } else if (isWord("IDENTITY")) {
        identity(column);
    } else if (isWord("NOT") && isWord("FOR", 1) && isWord("REPLICATION", 2)) {
        at_ += 3;
    } else if (take("ROWGUIDCOL")) {
        // A mark for replication only.
    } else if (isWord("SPARSE")) {
        refuse("a SPARSE column");
    } else if (isWord("MASKED") || isWord("ENCRYPTED")) {
        refuse("a " + UCase(token().text) + " column");
    } else if (isWord("GENERATED")) {
        refuse("a GENERATED column");
    } else if (isWord("INDEX") && isName(1)) {
        refuse("an INDEX written at a column");
    } else if (constraintAhead() || isAnyWord({"DEFAULT", "REFERENCES"})) {
        // "FOREIGN KEY (a) ..." after a column without a comma is a constraint of the table.
        const int named = isWord("CONSTRAINT") ? 2 : 0;
        if (isWord("FOREIGN", named) && isSymbol('(', named + 2)) return false;
        column.constraints.push_back(constraint(&column));
    } else {
        return false;
    }
    return true;
}

void Parser::identity(ColumnDef& column) {
    need("IDENTITY");
    column.identity = true;
    if (!takeSymbol('(')) return;
    column.identitySeed = wholeNumber();
    needSymbol(',');
    column.identityIncrement = wholeNumber();
    needSymbol(')');
}

/// A constraint of a column, or of the table where `column` is null.
Constraint Parser::constraint(const ColumnDef* column) {
    Constraint result;
    result.pos = here();
    if (take("CONSTRAINT")) result.name = identifier();
    if (take("DEFAULT")) {
        result.kind = ConstraintKind::Default;
        result.expr = sum();
        if (result.expr->isCondition()) fail();
        if (take("FOR")) {
            result.columns.push_back({here(), identifier(), false});
        } else if (column) {
            result.columns.push_back({column->pos, column->name, false});
        } else {
            fail();
        }
        if (isWord("WITH") && isWord("VALUES", 1)) refuse("DEFAULT ... WITH VALUES");
    } else if (take("PRIMARY")) {
        need("KEY");
        result.kind = ConstraintKind::PrimaryKey;
        keyColumns(result, column);
    } else if (take("UNIQUE")) {
        result.kind = ConstraintKind::Unique;
        keyColumns(result, column);
    } else if (take("CHECK")) {
        if (isWord("NOT") && isWord("FOR", 1) && isWord("REPLICATION", 2)) at_ += 3;
        needSymbol('(');
        result.expr = condition();
        needSymbol(')');
    } else {
        result.kind = ConstraintKind::ForeignKey;
        if (column) result.columns = {{column->pos, column->name, false}};
        references(result);
    }
    return result;
}

void Parser::keyColumns(Constraint& constraint, const ColumnDef* column) {
    constraint.clustered = take("CLUSTERED");
    if (!constraint.clustered) take("NONCLUSTERED");
    if (isSymbol('(')) {
        constraint.columns = indexColumns();
    } else if (column) {
        constraint.columns = {{column->pos, column->name, false}};
    } else {
        fail();
    }
    storageOptions();
}

/// [FOREIGN KEY [(columns)]] REFERENCES table [(columns)] [ON DELETE ...] [ON UPDATE ...]
void Parser::references(Constraint& constraint) {
    if (take("FOREIGN")) {
        need("KEY");
        if (isSymbol('(')) constraint.columns = indexColumns();
    }
    if (constraint.columns.empty()) fail();
    need("REFERENCES");
    constraint.references = objectName();
    if (isSymbol('(')) constraint.referenceColumns = bracketedNameList();
    for (;;) {
        if (isWord("NOT") && isWord("FOR", 1) && isWord("REPLICATION", 2)) {
            at_ += 3;
            continue;
        }
        if (!isWord("ON") || !isAnyWord({"DELETE", "UPDATE"}, 1)) return;
        ++at_;
        ReferenceAction& action = word() == "DELETE" ? constraint.onDelete : constraint.onUpdate;
        if (take("CASCADE")) {
            action = ReferenceAction::Cascade;
        } else if (take("NO")) {
            need("ACTION");
        } else {
            need("SET");
            action = take("NULL") ? ReferenceAction::SetNull : ReferenceAction::SetDefault;
            if (action == ReferenceAction::SetDefault) need("DEFAULT");
        }
    }
}

std::vector<IndexColumn> Parser::indexColumns() {
    std::vector<IndexColumn> columns;
    needSymbol('(');
    do {
        IndexColumn column;
        column.pos = here();
        column.name = identifier();
        column.descending = take("DESC");
        if (!column.descending) take("ASC");
        columns.push_back(std::move(column));
    } while (takeSymbol(','));
    needSymbol(')');
    return columns;
}

StmtPtr Parser::createIndex() {
    const PinScope pins(pinAll_);
    auto stmt = make<CreateIndexStmt>();
    need("CREATE");
    stmt->unique = take("UNIQUE");
    stmt->clustered = take("CLUSTERED");
    if (!stmt->clustered) take("NONCLUSTERED");
    if (isAnyWord({"COLUMNSTORE", "XML", "SPATIAL"})) refuse("a " + UCase(token().text) + " index");
    need("INDEX");
    stmt->name = identifier();
    need("ON");
    stmt->table = objectName();
    stmt->columns = indexColumns();
    if (take("INCLUDE")) stmt->include = bracketedNameList();
    if (take("WHERE")) stmt->where = condition();
    storageOptions();
    return stmt;
}

/// CREATE DATABASE, CREATE SCHEMA.
StmtPtr Parser::createNamed() {
    const bool database = isWord("DATABASE", 1);
    const Pos pos = here();
    at_ += 2;
    if (!database && isWord("AUTHORIZATION")) refuse("CREATE SCHEMA AUTHORIZATION");
    std::string name = identifier();
    if (database) {
        auto stmt = make<CreateDatabaseStmt>();
        stmt->pos = pos;
        stmt->name = std::move(name);
        if (take("COLLATE")) identifier();
        if (!atEnd() && !isSymbol(';') && !isWord("END")) refuse("CREATE DATABASE with options");
        return stmt;
    }
    auto stmt = make<CreateSchemaStmt>();
    stmt->pos = pos;
    stmt->name = std::move(name);
    if (take("AUTHORIZATION")) identifier();
    return stmt;
}

StmtPtr Parser::alterStatement() {
    if (isWord("TABLE", 1)) return alterTable();
    if (isAnyWord({"VIEW", "PROC", "PROCEDURE", "FUNCTION", "TRIGGER"}, 1)) return module(ModuleMode::Alter);
    if (token(1).kind != TokenKind::Word) failAt(at_ + 1);
    return unsupported("ALTER " + UCase(token(1).text));
}

StmtPtr Parser::alterTable() {
    const PinScope pins(pinAll_);
    auto stmt = make<AlterTableStmt>();
    at_ += 2;
    stmt->table = objectName();
    if (isWord("WITH") && isAnyWord({"CHECK", "NOCHECK"}, 1)) {
        stmt->noCheck = isWord("NOCHECK", 1);
        at_ += 2;
    }
    if (take("ADD")) {
        const bool bracketed = isSymbol('(');
        if (bracketed) ++at_;
        do {
            if (isWord("DEFAULT") || (isWord("CONSTRAINT") && isWord("DEFAULT", 2))) {
                stmt->added.constraints.push_back(constraint(nullptr));
            } else {
                take("COLUMN");
                tableElement(stmt->added);
            }
        } while (takeSymbol(','));
        if (bracketed) needSymbol(')');
    } else if (take("DROP")) {
        alterTableDrop(*stmt);
    } else if (isWord("ALTER") && isWord("COLUMN", 1)) {
        at_ += 2;
        stmt->action = AlterAction::AlterColumn;
        stmt->column = columnDef();
    } else if (isAnyWord({"CHECK", "NOCHECK"}) && isWord("CONSTRAINT", 1)) {
        stmt->action = word() == "CHECK" ? AlterAction::EnableConstraint : AlterAction::DisableConstraint;
        need("CONSTRAINT");
        if (take("ALL")) {
            stmt->names.push_back("ALL");
        } else {
            stmt->names = nameList();
        }
    } else if (isAnyWord({"ENABLE", "DISABLE"}) && isWord("TRIGGER", 1)) {
        stmt->action = word() == "ENABLE" ? AlterAction::EnableTrigger : AlterAction::DisableTrigger;
        need("TRIGGER");
        if (take("ALL")) {
            stmt->names.push_back("ALL");
        } else {
            stmt->names = nameList();
        }
    } else if (isAnyWord({"SWITCH", "REBUILD", "SET"})) {
        refuse("ALTER TABLE ... " + UCase(token().text));
    } else {
        fail();
    }
    return stmt;
}

/// DROP COLUMN [IF EXISTS] a, b  |  DROP [CONSTRAINT] [IF EXISTS] a, b
void Parser::alterTableDrop(AlterTableStmt& stmt) {
    stmt.action = AlterAction::DropConstraint;
    if (take("COLUMN")) {
        stmt.action = AlterAction::DropColumn;
    } else {
        take("CONSTRAINT");
    }
    if (isWord("IF") && isWord("EXISTS", 1)) {
        at_ += 2;
        stmt.ifExists = true;
    }
    do {
        if (isAnyWord({"COLUMN", "CONSTRAINT"})) refuse("DROP of columns and constraints in one ALTER TABLE");
        stmt.names.push_back(identifier());
    } while (takeSymbol(','));
}

/// ENABLE | DISABLE TRIGGER names ON table
StmtPtr Parser::triggerSwitch() {
    auto stmt = make<AlterTableStmt>();
    stmt->action = word() == "ENABLE" ? AlterAction::EnableTrigger : AlterAction::DisableTrigger;
    need("TRIGGER");
    if (take("ALL")) {
        stmt->names.push_back("ALL");
    } else {
        stmt->names = nameList();
    }
    need("ON");
    stmt->table = objectName();
    return stmt;
}

StmtPtr Parser::dropStatement() {
    static constexpr std::pair<std::string_view, ObjectKind> kKinds[] = {
        {"TABLE", ObjectKind::Table},         {"VIEW", ObjectKind::View},         {"PROC", ObjectKind::Procedure},
        {"PROCEDURE", ObjectKind::Procedure}, {"FUNCTION", ObjectKind::Function}, {"TRIGGER", ObjectKind::Trigger},
        {"INDEX", ObjectKind::Index},         {"DATABASE", ObjectKind::Database}, {"SCHEMA", ObjectKind::Schema}};
    for (const auto& [text, kind] : kKinds) {
        if (!isWord(text, 1)) continue;
        auto stmt = make<DropStmt>();
        at_ += 2;
        stmt->object = kind;
        if (isWord("IF") && isWord("EXISTS", 1)) {
            at_ += 2;
            stmt->ifExists = true;
        }
        if (kind == ObjectKind::Index) {
            dropIndexes(*stmt);
            return stmt;
        }
        do {
            stmt->names.push_back(objectName());
        } while (takeSymbol(','));
        return stmt;
    }
    if (isAnyWord({"USER", "LOGIN", "ROLE"}, 1)) return skipped();
    if (token(1).kind != TokenKind::Word) failAt(at_ + 1);
    return unsupported("DROP " + UCase(token(1).text));
}

/// name ON table, or the older table.name.
void Parser::dropIndexes(DropStmt& stmt) {
    do {
        ObjectName name = objectName();
        ObjectName table;
        if (take("ON")) {
            table = objectName();
        } else {
            table.pos = name.pos;
            table.name = std::move(name.schema);
            table.schema = std::move(name.database);
            table.database = std::move(name.server);
            name.schema.clear();
            name.database.clear();
            name.server.clear();
            if (table.empty()) fail();
        }
        stmt.names.push_back(std::move(name));
        stmt.tables.push_back(std::move(table));
    } while (takeSymbol(','));
    storageOptions();
}

}  // namespace kv::tsql
