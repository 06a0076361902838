// ALTER TABLE: columns and constraints come and go without copying rows where SQLite's schema text can be rewritten.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Ddl.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/TableSql.h"

namespace kv::tsql {
namespace {

template <class T>
auto named(std::vector<T>& list, const std::string& name) {
    return std::find_if(list.begin(), list.end(), [&](const T& item) { return equalsNoCase(item.name, name); });
}

bool hasRows(sqlite3* db, const Object& object) {
    Statement look(
        db, "SELECT 1 FROM " + std::string(object.temporary ? "temp." : "main.") + quoted(object.physical) + " LIMIT 1",
        false);
    return look.step();
}

}  // namespace

void Ddl::alterTable(const AlterTableStmt& stmt) {
    if (stmt.table.isTemporary()) return alterLocal(stmt);
    Plan plan;
    Emitter emitter(interp_, interp_.frame().database, nullptr, plan);
    const ObjectPtr table = emitter.target(stmt.table);
    session_.beforeWrite(false);
    Object object = *table;
    translate(object);
    // Several changes of one statement are all or nothing.
    execSql(session_.db(), "SAVEPOINT kv_alter");
    try {
        switch (stmt.action) {
            case AlterAction::Add:
                alterAdd(stmt, object);
                break;
            case AlterAction::DropColumn:
                dropColumns(stmt, object);
                break;
            case AlterAction::DropConstraint:
                dropConstraints(stmt, object);
                break;
            case AlterAction::AlterColumn:
                alterColumn(stmt, object);
                break;
            default:
                enable(stmt, object);
                break;
        }
        session_.catalog.put(std::move(object));
        execSql(session_.db(), "RELEASE kv_alter");
    } catch (...) {
        session_.undoTo("kv_alter");
        session_.catalog.load();
        throw;
    }
    changed();
}

void Ddl::alterLocal(const AlterTableStmt& stmt) {
    const int line = static_cast<int>(stmt.pos.line);
    LocalTable* local = interp_.findLocal(stmt.table.name);
    if (!local) throw sqlErrorAt(line, 208, {stmt.table.name});
    if (stmt.action != AlterAction::Add || !stmt.added.constraints.empty()) {
        throw notSupported("this ALTER TABLE of a temporary table", line, static_cast<int>(stmt.pos.column));
    }
    local->altered = true;
    Object object = *local->object;
    for (const ColumnDef& def : stmt.added.columns) {
        addColumn(def, object);
        for (const Constraint& constraint : def.constraints) addConstraint(constraint, def.name, object);
        addSqlColumn(object, object.columns.back());
    }
    // Plans know a local table by its id: a changed one gets a new id.
    object.id = object.id * 1000 - static_cast<std::int64_t>(object.columns.size());
    *local->object = object;
}

/// The value that existing rows get comes from the DEFAULT; a column that may be NULL stays NULL.
void Ddl::addSqlColumn(const Object& object, const ColumnInfo& column) {
    const std::string schema = object.temporary ? "temp." : "main.";
    std::string sql = "ALTER TABLE " + schema + quoted(object.physical) + " ADD COLUMN " + quoted(column.name) + " " +
                      std::string(sqliteTypeOf(column.type));
    if (column.identity) throw notSupported("adding an identity column", 1, 1);
    std::string value;
    if (!column.nullable && !column.defaultText.empty()) {
        Plan plan;
        Emitter emitter(interp_, object.database, nullptr, plan);
        const Em em = emitter.constantValue(interp_.expressionOf(column.defaultText, false), column.type);
        Statement evaluate(session_.db(), "SELECT " + em.sql, false);
        if (evaluate.step()) value = datumSql(columnDatum(evaluate.get(), 0));
    }
    if (!column.nullable && value.empty()) {
        if (hasRows(session_.db(), object)) throw sqlError(4901, {column.name, object.name});
        value = storageOf(column.type) == Storage::Text ? "''" : storageOf(column.type) == Storage::Real ? "0.0" : "0";
        if (storageOf(column.type) == Storage::Blob) value = "x''";
    }
    if (!column.nullable) sql += " NOT NULL DEFAULT " + value;
    if (column.type.isText()) sql += " COLLATE CI";
    execSql(session_.db(), sql);
    // The rows take the value now: the table's text may later be written without this default.
    if (!column.nullable)
        execSql(session_.db(),
                "UPDATE " + schema + quoted(object.physical) + " SET " + quoted(column.name) + " = " + value);
}

void Ddl::alterAdd(const AlterTableStmt& stmt, Object& object) {
    const std::size_t checks = object.checks.size();
    const std::size_t keys = object.foreignKeys.size();
    const std::size_t indexes = object.indexes.size();
    for (const ColumnDef& def : stmt.added.columns) {
        addColumn(def, object);
        for (const Constraint& constraint : def.constraints) addConstraint(constraint, def.name, object);
        const ColumnInfo& column = object.columns.back();
        addSqlColumn(object, column);
    }
    for (const Constraint& constraint : stmt.added.constraints) {
        addConstraint(constraint, "", object);
    }
    translate(object);
    for (std::size_t i = indexes; i < object.indexes.size(); ++i) {
        const IndexInfo& index = object.indexes[i];
        if (index.primary) {
            for (const IndexColumn& c : index.columns) {
                Statement look(
                    session_.db(),
                    "SELECT 1 FROM main." + quoted(object.physical) + " WHERE " + quoted(c.name) + " IS NULL LIMIT 1",
                    false);
                if (look.step()) throw sqlError(8111, {object.name});
            }
        }
        if (object.isRowOrder(index)) continue;
        try {
            for (const std::string& sql : createIndexSql(object, index)) execSql(session_.db(), sql);
        } catch (const SqlError& error) {
            if (error.number != 2601 && error.number != 2627) throw;
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 1505, {"dbo." + object.name, index.name});
        }
    }
    const bool constrained = object.checks.size() > checks || object.foreignKeys.size() > keys;
    const bool primary = object.indexes.size() > indexes && object.indexes.back().primary;
    if (constrained || primary) rewriteTable(object);
    if (stmt.noCheck) return;
    for (std::size_t i = checks; i < object.checks.size(); ++i) checkRows(object, object.checks[i]);
    for (std::size_t i = keys; i < object.foreignKeys.size(); ++i) checkRows(object, object.foreignKeys[i]);
}

void Ddl::checkRows(const Object& object, const CheckInfo& check) {
    Statement look(session_.db(),
                   "SELECT 1 FROM main." + quoted(object.physical) + " WHERE NOT (" + check.sql + ") LIMIT 1", false);
    if (look.step()) {
        throw sqlError(547, {"ALTER TABLE", "CHECK", check.name, object.database, "dbo." + object.name, ""});
    }
}

void Ddl::checkRows(const Object& object, const ForeignKeyInfo& key) {
    std::string match;
    std::string present;
    for (std::size_t i = 0; i < key.columns.size(); ++i) {
        match += (i ? " AND p." : "p.") + quoted(key.refColumns[i]) + " = c." + quoted(key.columns[i]);
        present += (i ? " AND c." : "c.") + quoted(key.columns[i]) + " IS NOT NULL";
    }
    Statement look(session_.db(),
                   "SELECT 1 FROM main." + quoted(object.physical) + " AS c WHERE " + present +
                       " AND NOT EXISTS (SELECT 1 FROM main." +
                       quoted(Catalog::physicalName(key.refDatabase, key.refTable)) + " AS p WHERE " + match +
                       ") LIMIT 1",
                   false);
    if (look.step()) {
        throw sqlError(547, {"ALTER TABLE", "FOREIGN KEY", key.name, key.refDatabase, "dbo." + key.refTable, ""});
    }
}

/// Writes the table's new text over the old one: rows stay where they are, since their storage does not change.
void Ddl::rewriteTable(Object& object) {
    translate(object);
    sqlite3* db = session_.db();
    Statement version(db, "PRAGMA schema_version", false);
    const std::int64_t now = version.step() ? version.integer(0) : 0;
    version.reset();
    execSql(db, "PRAGMA writable_schema=ON");
    try {
        Statement(db, "UPDATE main.sqlite_schema SET sql = ?1 WHERE type = 'table' AND name = ?2", false)
            .bind(1, createTableSql(object))
            .bind(2, object.physical)
            .run();
        execSql(db, "PRAGMA schema_version=" + std::to_string(now + 1));
    } catch (...) {
        sqlite3_exec(db, "PRAGMA writable_schema=RESET", nullptr, nullptr, nullptr);
        throw;
    }
    execSql(db, "PRAGMA writable_schema=RESET");
}

void Ddl::alterColumn(const AlterTableStmt& stmt, Object& object) {
    const int line = static_cast<int>(stmt.pos.line);
    const int index = object.columnIndex(stmt.column.name);
    if (index < 0) throw sqlErrorAt(line, 4924, {"ALTER TABLE ALTER COLUMN", stmt.column.name, object.name});
    ColumnInfo& column = object.columns[static_cast<std::size_t>(index)];
    const Type type = resolveType(stmt.column.type, TypePlace::Declaration);
    const Type old = column.type;
    const bool nullable = stmt.column.nullable.value_or(true);
    if (column.identity) throw notSupported("ALTER COLUMN of an identity", line, static_cast<int>(stmt.pos.column));
    if (object.primaryKey() && nullable) {
        for (const IndexColumn& c : object.primaryKey()->columns) {
            if (equalsNoCase(c.name, column.name))
                throw sqlErrorAt(line, 5074, {object.primaryKey()->name, column.name});
        }
    }
    const std::string name = "main." + quoted(object.physical);
    const std::string field = quoted(column.name);
    if (!nullable) {
        Statement look(session_.db(), "SELECT 1 FROM " + name + " WHERE " + field + " IS NULL LIMIT 1", false);
        if (look.step()) throw sqlErrorAt(line, 515, {column.name, object.database + ".dbo." + object.name, "UPDATE"});
    }
    const bool sameStorage = sqliteTypeOf(type) == sqliteTypeOf(old);
    if (!sameStorage && hasRows(session_.db(), object)) {
        throw notSupported("ALTER COLUMN from " + typeName(old) + " to " + typeName(type) + " on a table with rows",
                           line, static_cast<int>(stmt.pos.column));
    }
    if (sameStorage && needsConversion(old, type, ConvertMode::Column)) {
        const std::string where = object.database + ".dbo." + object.name + "." + column.name;
        execSql(session_.db(), "UPDATE " + name + " SET " + field + " = " +
                                   conversionSql(field, old, type, ConvertMode::Column, where) + " WHERE " + field +
                                   " IS NOT NULL");
    }
    column.type = type;
    column.nullable = nullable;
    rewriteTable(object);
    for (const IndexInfo& i : object.indexes) {
        // Whether a key counts NULLs depends on its columns.
        const bool uses = std::any_of(i.columns.begin(), i.columns.end(),
                                      [&](const IndexColumn& c) { return equalsNoCase(c.name, stmt.column.name); });
        if (!uses || !i.unique || object.isRowOrder(i)) continue;
        for (const std::string& sql : dropIndexSql(object, i)) execSql(session_.db(), sql);
        for (const std::string& sql : createIndexSql(object, i)) execSql(session_.db(), sql);
    }
}

void Ddl::dropColumns(const AlterTableStmt& stmt, Object& object) {
    for (const std::string& name : stmt.names) {
        const int index = object.columnIndex(name);
        if (index < 0) {
            if (stmt.ifExists) continue;
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 4924, {"ALTER TABLE DROP COLUMN", name, object.name});
        }
        const ColumnInfo& column = object.columns[static_cast<std::size_t>(index)];
        const auto uses = [&](const std::string& constraint) {
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 5074, {constraint, name});
        };
        if (!column.defaultName.empty()) uses(column.defaultName);
        for (const IndexInfo& i : object.indexes) {
            for (const IndexColumn& c : i.columns) {
                if (equalsNoCase(c.name, name)) uses(i.name);
            }
        }
        for (const CheckInfo& c : object.checks) {
            if (containsNoCase(c.text, name)) uses(c.name);
        }
        for (const ForeignKeyInfo& f : object.foreignKeys) {
            for (const std::string& c : f.columns) {
                if (equalsNoCase(c, name)) uses(f.name);
            }
        }
        execSql(session_.db(), "ALTER TABLE main." + quoted(object.physical) + " DROP COLUMN " + quoted(column.name));
        object.columns.erase(object.columns.begin() + index);
    }
}

void Ddl::dropConstraints(const AlterTableStmt& stmt, Object& object) {
    bool rewrite = false;
    for (const std::string& name : stmt.names) {
        const auto index = named(object.indexes, name);
        const auto check = named(object.checks, name);
        const auto key = named(object.foreignKeys, name);
        const auto column = std::find_if(object.columns.begin(), object.columns.end(), [&](const ColumnInfo& c) {
            return !c.defaultName.empty() && equalsNoCase(c.defaultName, name);
        });
        if (index != object.indexes.end() && index->constraint) {
            for (const auto& [other, foreign] : session_.catalog.referencesTo(object)) {
                throw sqlErrorAt(static_cast<int>(stmt.pos.line), 3725, {name, other->name, foreign->name});
            }
            if (index->primary && object.clustered) {
                throw notSupported("dropping a clustered primary key", static_cast<int>(stmt.pos.line),
                                   static_cast<int>(stmt.pos.column));
            }
            if (!object.isRowOrder(*index)) {
                for (const std::string& sql : dropIndexSql(object, *index)) execSql(session_.db(), sql);
            }
            object.indexes.erase(index);
        } else if (check != object.checks.end()) {
            object.checks.erase(check);
            rewrite = true;
        } else if (key != object.foreignKeys.end()) {
            object.foreignKeys.erase(key);
            rewrite = true;
        } else if (column != object.columns.end()) {
            column->defaultText.clear();
            column->defaultName.clear();
        } else if (!stmt.ifExists) {
            throw sqlErrorAt(static_cast<int>(stmt.pos.line), 3728, {name});
        }
    }
    if (rewrite) rewriteTable(object);
}

void Ddl::enable(const AlterTableStmt& stmt, Object& object) {
    const bool all = stmt.names.size() == 1 && equalsNoCase(stmt.names[0], "ALL");
    const bool on = stmt.action == AlterAction::EnableConstraint || stmt.action == AlterAction::EnableTrigger;
    const auto meant = [&](const std::string& name) {
        return all || std::any_of(stmt.names.begin(), stmt.names.end(),
                                  [&](const std::string& n) { return equalsNoCase(n, name); });
    };
    if (stmt.action == AlterAction::EnableTrigger || stmt.action == AlterAction::DisableTrigger) {
        for (const ObjectPtr& trigger : session_.catalog.all()) {
            if (trigger->type != ObjectType::Trigger || trigger->parent != object.id || !meant(trigger->name)) continue;
            Object changedTrigger = *trigger;
            changedTrigger.disabled = !on;
            session_.catalog.put(std::move(changedTrigger));
        }
        return;
    }
    for (CheckInfo& check : object.checks) {
        if (meant(check.name)) check.enabled = on;
    }
    for (ForeignKeyInfo& key : object.foreignKeys) {
        if (meant(key.name)) key.enabled = on;
    }
    rewriteTable(object);
}

}  // namespace kv::tsql
