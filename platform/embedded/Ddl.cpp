#include "platform/embedded/Ddl.h"

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/TableSql.h"

namespace kv::tsql {
namespace {

const char* kindWord(ObjectKind kind) {
    switch (kind) {
        case ObjectKind::Table:
            return "table";
        case ObjectKind::View:
            return "view";
        case ObjectKind::Procedure:
            return "procedure";
        case ObjectKind::Function:
            return "function";
        case ObjectKind::Trigger:
            return "trigger";
        case ObjectKind::Index:
            return "index";
        case ObjectKind::Database:
            return "database";
        default:
            return "object";
    }
}

bool isOfKind(const Object& object, ObjectKind kind) {
    switch (kind) {
        case ObjectKind::Table:
            return object.type == ObjectType::Table;
        case ObjectKind::View:
            return object.type == ObjectType::View;
        case ObjectKind::Procedure:
            return object.type == ObjectType::Procedure;
        case ObjectKind::Trigger:
            return object.type == ObjectType::Trigger;
        case ObjectKind::Function:
            return object.type == ObjectType::ScalarFunction || object.type == ObjectType::InlineFunction ||
                   object.type == ObjectType::TableFunction;
        default:
            return false;
    }
}

ObjectType typeOf(const ModuleStmt& stmt) {
    switch (stmt.kind) {
        case StmtKind::CreateView:
            return ObjectType::View;
        case StmtKind::CreateProcedure:
            return ObjectType::Procedure;
        case StmtKind::CreateTrigger:
            return ObjectType::Trigger;
        default:
            break;
    }
    switch (static_cast<const CreateFunctionStmt&>(stmt).form) {
        case FunctionForm::Scalar:
            return ObjectType::ScalarFunction;
        case FunctionForm::Inline:
            return ObjectType::InlineFunction;
        default:
            return ObjectType::TableFunction;
    }
}

class LocalFinder : public Walker {
public:
    bool found = false;

protected:
    bool enter(const TableRef& ref) override {
        const auto* named = as<NamedRef>(&ref);
        found = found || (named && named->name.isTemporary());
        return true;
    }
};

}  // namespace

std::string Ddl::databaseOf(const ObjectName& name) const {
    if (name.database.empty()) return interp_.frame().database;
    const std::string* known = session_.catalog.databaseName(name.database);
    if (!known) throw sqlErrorAt(static_cast<int>(name.pos.line), 911, {name.database});
    return *known;
}

void Ddl::run(const Stmt& stmt) {
    switch (stmt.kind) {
        case StmtKind::CreateTable:
            return createTable(static_cast<const CreateTableStmt&>(stmt));
        case StmtKind::AlterTable:
            return alterTable(static_cast<const AlterTableStmt&>(stmt));
        case StmtKind::CreateIndex:
            return createIndex(static_cast<const CreateIndexStmt&>(stmt));
        case StmtKind::CreateView:
        case StmtKind::CreateProcedure:
        case StmtKind::CreateFunction:
        case StmtKind::CreateTrigger:
            return createModule(static_cast<const ModuleStmt&>(stmt));
        case StmtKind::Drop:
            return drop(static_cast<const DropStmt&>(stmt));
        case StmtKind::CreateDatabase:
            return createDatabase(static_cast<const CreateDatabaseStmt&>(stmt));
        case StmtKind::SetIdentityInsert:
            return identityInsert(static_cast<const SetIdentityInsertStmt&>(stmt));
        case StmtKind::Dbcc:
            return dbcc(static_cast<const DbccStmt&>(stmt));
        default:
            throw notSupported("this statement", static_cast<int>(stmt.pos.line), static_cast<int>(stmt.pos.column));
    }
}

void Ddl::createModule(const ModuleStmt& stmt) {
    const int line = static_cast<int>(stmt.pos.line);
    checkModule(stmt);
    session_.beforeWrite(false);
    Object object;
    object.type = typeOf(stmt);
    object.database = databaseOf(stmt.name);
    object.name = stmt.name.name;
    object.source = stmt.source;
    const ObjectPtr old = session_.catalog.find(object.database, object.name);
    if (old && stmt.mode == ModuleMode::Create) throw sqlErrorAt(line, 2714, {object.name});
    if (!old && stmt.mode == ModuleMode::Alter) throw sqlErrorAt(line, 208, {stmt.name.text()});
    if (old) {
        const bool functions = isOfKind(*old, ObjectKind::Function) && isOfKind(object, ObjectKind::Function);
        if (old->type != object.type && !functions) throw sqlErrorAt(line, 2010, {object.name});
        object.id = old->id;
        object.created = old->created;
    }
    fillModule(stmt, object);
    session_.catalog.put(std::move(object));
    changed();
}

void Ddl::fillModule(const ModuleStmt& stmt, Object& object) {
    const auto columnsOf = [&](const Query& query, const VariableScope* variables) {
        Plan plan;
        Emitter emitter(interp_, object.database, variables, plan);
        Wish wish;
        wish.subquery = true;
        for (const OutColumn& column : emitter.query(query, wish).columns) {
            if (column.name.empty() && object.type == ObjectType::InlineFunction) {
                throw sqlError(4511, {static_cast<int>(object.columns.size() + 1)});
            }
            ColumnInfo info;
            info.name = column.name;
            info.type = column.type;
            info.nullable = column.nullable;
            object.columns.push_back(std::move(info));
        }
    };
    if (const auto* view = as<CreateViewStmt>(static_cast<const Stmt*>(&stmt))) {
        LocalFinder locals;
        locals.walk(*view->query);
        if (locals.found) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 4508);
        columnsOf(*view->query, nullptr);
        if (!view->columns.empty() && view->columns.size() != object.columns.size()) {
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 8158, {object.name});
        }
        for (std::size_t i = 0; i < object.columns.size(); ++i) {
            if (!view->columns.empty()) object.columns[i].name = view->columns[i];
            if (object.columns[i].name.empty()) {
                throw sqlErrorAt(static_cast<int>(stmt.pos.line), 4511, {static_cast<int>(i + 1)});
            }
        }
        return;
    }
    if (const auto* function = as<CreateFunctionStmt>(static_cast<const Stmt*>(&stmt))) {
        if (function->form == FunctionForm::Inline) {
            VariableScope scope;
            for (const Parameter& p : function->parameters) {
                VariableInfo info;
                info.name = p.name;
                info.type = resolveType(p.type, TypePlace::Declaration);
                scope.add(std::move(info));
            }
            columnsOf(*function->query, &scope);
        } else if (function->form == FunctionForm::Table) {
            object.columns = build(*function->table, object.database, function->returnVariable, true).columns;
        }
        return;
    }
    if (const auto* trigger = as<CreateTriggerStmt>(static_cast<const Stmt*>(&stmt))) {
        const ObjectPtr table = session_.catalog.find(
            trigger->table.database.empty() ? object.database : trigger->table.database, trigger->table.name);
        if (!table || table->type != ObjectType::Table) {
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 8197, {trigger->table.text()});
        }
        object.parent = table->id;
    }
}

void Ddl::drop(const DropStmt& stmt) {
    for (std::size_t i = 0; i < stmt.names.size(); ++i) {
        const bool local = stmt.names[i].isTemporary();
        if (!local) session_.beforeWrite(false);
        if (stmt.object == ObjectKind::Index) {
            dropIndex(stmt, i);
        } else {
            dropOne(stmt, stmt.names[i]);
        }
        if (!local) changed();
    }
}

void Ddl::dropOne(const DropStmt& stmt, const ObjectName& name) {
    const int line = static_cast<int>(stmt.pos.line);
    const SqlError missing = sqlErrorAt(line, 3701, {"drop", kindWord(stmt.object), name.text()});
    if (stmt.object == ObjectKind::Database) {
        if (session_.catalog.hasDatabase(name.name)) {
            for (const ObjectPtr& object : session_.catalog.all()) {
                if (equalsNoCase(object->database, name.name)) {
                    throw notSupported("dropping a database that has objects", line, static_cast<int>(stmt.pos.column));
                }
            }
            session_.catalog.dropDatabase(name.name);
        } else if (!stmt.ifExists) {
            throw missing;
        }
        return;
    }
    if (name.isTemporary()) {
        LocalTable* table = interp_.findLocal(name.name);
        if (table) {
            interp_.dropLocal(table);
        } else if (!stmt.ifExists) {
            throw missing;
        }
        return;
    }
    const std::string& database = name.database.empty() ? interp_.frame().database : name.database;
    const ObjectPtr object = session_.catalog.find(database, name.name);
    if (!object || !isOfKind(*object, stmt.object)) {
        if (stmt.ifExists && !object) return;
        throw missing;
    }
    if (object->type == ObjectType::Table) {
        for (const auto& [other, key] : session_.catalog.referencesTo(*object)) {
            if (other->id != object->id) throw sqlErrorAt(line, 3726, {object->name});
        }
        for (const ObjectPtr& trigger : session_.catalog.all()) {
            if (trigger->type == ObjectType::Trigger && trigger->parent == object->id)
                session_.catalog.remove(*trigger);
        }
        execSql(session_.db(), "DROP TABLE main." + quoted(object->physical));
    }
    session_.catalog.remove(*object);
}

void Ddl::dropIndex(const DropStmt& stmt, std::size_t item) {
    ObjectName table = item < stmt.tables.size() ? stmt.tables[item] : ObjectName();
    const ObjectName& name = stmt.names[item];
    if (table.empty()) {
        // The old form: DROP INDEX table.index
        table.name = name.schema;
        table.database = name.database;
    }
    const std::string& database = table.database.empty() ? interp_.frame().database : table.database;
    const ObjectPtr found = session_.catalog.find(database, table.name);
    Object object = found ? *found : Object();
    const auto at = std::find_if(object.indexes.begin(), object.indexes.end(),
                                 [&](const IndexInfo& i) { return equalsNoCase(i.name, name.name); });
    if (at == object.indexes.end()) {
        if (stmt.ifExists) return;
        throw sqlErrorAt(static_cast<int>(stmt.pos.line), 3701, {"drop", "index", table.name + "." + name.name});
    }
    if (at->constraint) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 3723, {table.name + "." + name.name});
    for (const std::string& sql : dropIndexSql(object, *at)) execSql(session_.db(), sql);
    object.indexes.erase(at);
    session_.catalog.put(std::move(object));
}

void Ddl::createDatabase(const CreateDatabaseStmt& stmt) {
    if (session_.catalog.hasDatabase(stmt.name)) {
        throw sqlErrorAt(static_cast<int>(stmt.pos.line), 1801, {stmt.name});
    }
    session_.beforeWrite(false);
    session_.catalog.addDatabase(stmt.name);
    changed();
}

void Ddl::identityInsert(const SetIdentityInsertStmt& stmt) {
    Plan plan;
    Emitter emitter(interp_, interp_.frame().database, nullptr, plan);
    const ObjectPtr table = emitter.target(stmt.table);
    if (!table->identityColumn()) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 8106, {table->name});
    if (!stmt.on) {
        if (session_.identityInsert == table->physical) session_.identityInsert.clear();
        return;
    }
    if (!session_.identityInsert.empty() && session_.identityInsert != table->physical) {
        throw sqlErrorAt(static_cast<int>(stmt.pos.line), 8107, {session_.identityInsert, table->name});
    }
    session_.identityInsert = table->physical;
}

void Ddl::dbcc(const DbccStmt& stmt) {
    const SqlError refused =
        notSupported("DBCC " + stmt.command, static_cast<int>(stmt.pos.line), static_cast<int>(stmt.pos.column));
    if (stmt.command != "CHECKIDENT" || stmt.args.size() < 2) throw refused;
    const std::string word = UCase(interp_.evaluate(*stmt.args[1], Type::nvarchar(20)).text);
    if (word == "NORESEED") return;
    if (word != "RESEED" || stmt.args.size() != 3) throw refused;
    const Datum name = interp_.evaluate(*stmt.args[0], Type::nvarchar(500));
    const std::vector<std::string> parts = split(name.text, '.');
    const std::string database = parts.size() > 2 ? unquoteName(parts[0]) : interp_.frame().database;
    const ObjectPtr table = session_.catalog.find(database, unquoteName(parts.back()));
    if (!table || table->type != ObjectType::Table) throw sqlError(2501, {name.text});
    const ColumnInfo* identity = table->identityColumn();
    if (!identity) throw sqlError(7997, {table->name});
    session_.beforeWrite(false);
    const std::int64_t last = interp_.evaluate(*stmt.args[2], Type::bigint()).integer;
    Statement empty(session_.db(), "SELECT 1 FROM main." + quoted(table->physical) + " LIMIT 1", false);
    const bool rows = empty.step();
    empty.reset();
    // On a table that never had rows the next number is the new seed itself.
    const std::int64_t stored = rows ? last : last - identity->increment;
    if (identity->plainIdentity()) {
        execSql(session_.db(), "DELETE FROM main.sqlite_sequence WHERE name = " + quotedText(table->physical));
        execSql(session_.db(), "INSERT INTO main.sqlite_sequence(name, seq) VALUES(" + quotedText(table->physical) +
                                   ", " + std::to_string(stored) + ")");
    } else {
        Statement(session_.db(), "INSERT OR REPLACE INTO kv_identity VALUES(?1, ?2)")
            .bind(1, table->id)
            .bind(2, stored)
            .run();
    }
}

}  // namespace kv::tsql
