// CREATE TABLE and CREATE INDEX, and what a table's definition means.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Ddl.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/TableSql.h"

namespace kv::tsql {
namespace {

struct LocalDefinition : Attachment {
    struct Made {
        Object object;
        std::string key;
        std::int64_t version = -1;
    };
    std::vector<Made> made;
};

LocalDefinition& definitionsAt(const Node& node, std::size_t count) {
    auto* found = dynamic_cast<LocalDefinition*>(node.attachment.get());
    if (!found) {
        auto fresh = std::make_unique<LocalDefinition>();
        found = fresh.get();
        node.attachment = std::move(fresh);
    }
    if (found->made.size() < count) found->made.resize(count);
    return *found;
}

/// What makes two temporary tables of one name interchangeable.
std::string definitionKey(const Object& object) {
    Object plain = object;
    plain.temporary = true;
    plain.physical = lowered(object.name);
    std::string key;
    for (const std::string& sql : tableSql(plain)) key += sql + ";";
    for (const ColumnInfo& column : object.columns)
        key += column.name + typeName(column.type) + column.defaultText + ",";
    return key;
}

bool hasColumn(const std::vector<IndexColumn>& columns, std::string_view name) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const IndexColumn& c) { return equalsNoCase(c.name, name); });
}

/// Was PRIMARY KEY CLUSTERED written?
bool clusteredKey(const TableDef& def) {
    const auto is = [](const Constraint& c) { return c.kind == ConstraintKind::PrimaryKey && c.clustered; };
    return std::any_of(def.constraints.begin(), def.constraints.end(), is) ||
           std::any_of(def.columns.begin(), def.columns.end(), [&](const ColumnDef& column) {
               return std::any_of(column.constraints.begin(), column.constraints.end(), is);
           });
}

}  // namespace

std::string Ddl::madeName(const char* prefix, const Object& object, const std::string& rest) const {
    // Names that nobody wrote: stable for one definition, and different between tables.
    std::uint32_t hash = 2166136261u;
    for (const char c : lowered(object.database + "." + object.name + "." + rest)) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    }
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08X", hash);
    return std::string(prefix) + "__" + object.name.substr(0, 20) + "__" + digits;
}

Object Ddl::build(const TableDef& def, const std::string& database, const std::string& name, bool temporary) {
    Object object;
    object.database = database;
    object.name = name;
    object.temporary = temporary;
    object.physical = temporary ? lowered(name) : Catalog::physicalName(database, name);
    for (const ColumnDef& column : def.columns) addColumn(column, object);
    for (const ColumnDef& column : def.columns) {
        for (const Constraint& constraint : column.constraints) addConstraint(constraint, column.name, object);
    }
    for (const Constraint& constraint : def.constraints) addConstraint(constraint, "", object);
    object.clustered = !temporary && !object.identityColumn() && clusteredKey(def);
    for (const ColumnDef& column : def.columns) {
        const IndexInfo* key = object.primaryKey();
        if (column.nullable.value_or(false) && key && hasColumn(key->columns, column.name))
            throw sqlErrorAt(static_cast<int>(column.pos.line), 8111, {object.name});
    }
    for (const InlineIndex& index : def.indexes) {
        IndexInfo info;
        info.name = index.name;
        info.unique = index.unique;
        info.columns = index.columns;
        addIndex(std::move(info), object, index.pos);
    }
    return object;
}

void Ddl::addColumn(const ColumnDef& def, Object& object) {
    const int line = static_cast<int>(def.pos.line);
    ColumnInfo column;
    column.name = def.name;
    if (object.columnIndex(def.name) >= 0) throw sqlErrorAt(line, 2705, {def.name, object.name});
    column.type = resolveType(def.type, TypePlace::Declaration, static_cast<int>(object.columns.size() + 1));
    column.nullable = def.nullable.value_or(true);
    if (def.identity) {
        if (object.identityColumn()) throw sqlErrorAt(line, 2744, {object.name});
        if (def.nullable && *def.nullable) throw sqlErrorAt(line, 8147, {def.name, object.name});
        if (storageOf(column.type) != Storage::Integer || column.type.kind == Kind::Bit) {
            throw sqlErrorAt(line, 2749, {def.name});
        }
        column.identity = true;
        column.nullable = false;
        column.seed = def.identitySeed;
        column.increment = def.identityIncrement;
    }
    object.columns.push_back(std::move(column));
}

void Ddl::addConstraint(const Constraint& constraint, const std::string& column, Object& object) {
    const int line = static_cast<int>(constraint.pos.line);
    const auto columnAt = [&](const std::string& name) -> ColumnInfo& {
        const int index = object.columnIndex(name);
        if (index < 0) throw sqlErrorAt(line, 1911, {name});
        return object.columns[static_cast<std::size_t>(index)];
    };
    if (!constraint.name.empty() && !object.temporary && constraintExists(object.database, constraint.name, object)) {
        throw sqlErrorAt(line, 2714, {constraint.name});
    }
    switch (constraint.kind) {
        case ConstraintKind::Default: {
            ColumnInfo& target = columnAt(column.empty() ? constraint.columns.front().name : column);
            if (!target.defaultText.empty()) throw sqlErrorAt(line, 1781);
            target.defaultText = print(*constraint.expr);
            target.defaultName = constraint.name.empty() ? madeName("DF", object, target.name) : constraint.name;
            break;
        }
        case ConstraintKind::PrimaryKey:
        case ConstraintKind::Unique: {
            IndexInfo info;
            info.primary = constraint.kind == ConstraintKind::PrimaryKey;
            info.constraint = true;
            info.unique = true;
            info.columns = constraint.columns;
            if (info.primary && object.primaryKey()) throw sqlErrorAt(line, 1779, {object.name});
            std::string names;
            for (const IndexColumn& c : info.columns) {
                ColumnInfo& target = columnAt(c.name);
                if (info.primary) target.nullable = false;
                names += c.name + ",";
            }
            info.name = constraint.name.empty() ? madeName(info.primary ? "PK" : "UQ", object, names) : constraint.name;
            addIndex(std::move(info), object, constraint.pos);
            break;
        }
        case ConstraintKind::Check: {
            CheckInfo info;
            info.text = print(*constraint.expr);
            info.column = column;
            info.name = constraint.name.empty() ? madeName("CK", object, info.text) : constraint.name;
            object.checks.push_back(std::move(info));
            break;
        }
        case ConstraintKind::ForeignKey:
            addForeignKey(constraint, object);
            break;
    }
}

/// Constraints share one name space in a database.
bool Ddl::constraintExists(const std::string& database, const std::string& name, const Object& fresh) const {
    const auto has = [&](const Object& object) {
        const auto is = [&](const auto& item) { return equalsNoCase(item.name, name); };
        return std::any_of(object.checks.begin(), object.checks.end(), is) ||
               std::any_of(object.foreignKeys.begin(), object.foreignKeys.end(), is) ||
               std::any_of(object.indexes.begin(), object.indexes.end(),
                           [&](const IndexInfo& i) { return i.constraint && is(i); }) ||
               std::any_of(object.columns.begin(), object.columns.end(),
                           [&](const ColumnInfo& c) { return equalsNoCase(c.defaultName, name); });
    };
    if (has(fresh)) return true;
    const std::vector<ObjectPtr> all = session_.catalog.all();
    return std::any_of(all.begin(), all.end(), [&](const ObjectPtr& object) {
        return equalsNoCase(object->database, database) && has(*object);
    });
}

void Ddl::addForeignKey(const Constraint& constraint, Object& object) {
    const int line = static_cast<int>(constraint.pos.line);
    if (object.temporary) return;  // as on SQL Server: accepted and not enforced
    ForeignKeyInfo info;
    std::string names;
    for (const IndexColumn& c : constraint.columns) {
        if (object.columnIndex(c.name) < 0) throw sqlErrorAt(line, 1769, {constraint.name, c.name, object.name});
        info.columns.push_back(object.columns[static_cast<std::size_t>(object.columnIndex(c.name))].name);
        names += c.name + ",";
    }
    info.name =
        constraint.name.empty() ? madeName("FK", object, names + constraint.references.text()) : constraint.name;
    const std::string database =
        constraint.references.database.empty() ? object.database : constraint.references.database;
    const bool self = Catalog::physicalName(database, constraint.references.name) == object.physical;
    const ObjectPtr found =
        self ? std::make_shared<Object>(object) : session_.catalog.find(database, constraint.references.name);
    if (!found || found->type != ObjectType::Table) {
        throw sqlErrorAt(line, 1767, {info.name, constraint.references.text()});
    }
    info.refDatabase = found->database;
    info.refTable = found->name;
    info.refColumns = constraint.referenceColumns;
    if (info.refColumns.empty() && found->primaryKey()) {
        for (const IndexColumn& c : found->primaryKey()->columns) info.refColumns.push_back(c.name);
    }
    const bool keyed = std::any_of(found->indexes.begin(), found->indexes.end(), [&](const IndexInfo& index) {
        return index.unique && index.filter.empty() && index.columns.size() == info.refColumns.size() &&
               std::all_of(info.refColumns.begin(), info.refColumns.end(),
                           [&](const std::string& name) { return hasColumn(index.columns, name); });
    });
    if (!keyed || info.refColumns.size() != info.columns.size()) {
        throw sqlErrorAt(line, 1776, {found->name, info.name});
    }
    for (std::size_t i = 0; i < info.columns.size(); ++i) {
        const int there = found->columnIndex(info.refColumns[i]);
        if (there < 0) throw sqlErrorAt(line, 1770, {info.name, info.refColumns[i], found->name});
        const Type& own = object.columns[static_cast<std::size_t>(object.columnIndex(info.columns[i]))].type;
        if (own.kind != found->columns[static_cast<std::size_t>(there)].type.kind) {
            throw sqlErrorAt(line, 1778, {found->name + "." + info.refColumns[i], info.columns[i], info.name});
        }
    }
    info.onDelete = static_cast<int>(constraint.onDelete);
    info.onUpdate = static_cast<int>(constraint.onUpdate);
    object.foreignKeys.push_back(std::move(info));
}

void Ddl::addIndex(IndexInfo index, Object& object, const Pos& pos) {
    const int line = static_cast<int>(pos.line);
    for (const IndexInfo& other : object.indexes) {
        if (equalsNoCase(other.name, index.name)) throw sqlErrorAt(line, 1913, {index.name, object.name});
    }
    for (IndexColumn& c : index.columns) {
        const int at = object.columnIndex(c.name);
        if (at < 0) throw sqlErrorAt(line, 1911, {c.name});
        c.name = object.columns[static_cast<std::size_t>(at)].name;
    }
    object.indexes.push_back(std::move(index));
}

/// CHECKs and filters as SQLite's text.
void Ddl::translate(Object& object) {
    for (CheckInfo& check : object.checks) {
        Plan plan;
        Emitter emitter(interp_, object.database, nullptr, plan);
        check.sql = emitter.tableCondition(interp_.expressionOf(check.text, true), object);
    }
    for (IndexInfo& index : object.indexes) {
        if (index.filter.empty()) continue;
        Plan plan;
        Emitter emitter(interp_, object.database, nullptr, plan);
        index.filterSql = emitter.tableCondition(interp_.expressionOf(index.filter, true), object);
    }
}

ObjectPtr Ddl::makeTable(Object object) {
    session_.beforeWrite(false);
    if (session_.catalog.find(object.database, object.name)) throw sqlError(2714, {object.name});
    translate(object);
    for (const std::string& sql : tableSql(object)) execSql(session_.db(), sql);
    ObjectPtr stored = session_.catalog.put(std::move(object));
    changed();
    return stored;
}

void Ddl::createTable(const CreateTableStmt& stmt) {
    const int line = static_cast<int>(stmt.pos.line);
    if (!stmt.name.isTemporary()) {
        makeTable(build(stmt.def, databaseOf(stmt.name), stmt.name.name, false));
        return;
    }
    for (const auto& [name, table] : interp_.frame().locals) {
        if (name == lowered(stmt.name.name)) throw sqlErrorAt(line, 2714, {stmt.name.name});
    }
    auto& made = definitionsAt(stmt, 1).made[0];
    if (made.version != session_.catalog.version()) {
        made.object = build(stmt.def, interp_.frame().database, stmt.name.name, true);
        translate(made.object);
        made.key = definitionKey(made.object);
        made.version = session_.catalog.version();
    }
    interp_.addLocal(stmt.name.name, session_.temps.acquire(made.object, made.key, false));
}

void Ddl::declareTable(const DeclareStmt& stmt, std::size_t item) {
    const Declaration& declaration = stmt.items[item];
    auto& made = definitionsAt(stmt, stmt.items.size()).made[item];
    if (made.version != session_.catalog.version()) {
        made.object = build(*declaration.table, interp_.frame().database, declaration.name, true);
        translate(made.object);
        made.key = definitionKey(made.object);
        made.version = session_.catalog.version();
    }
    interp_.addLocal(declaration.name, session_.temps.acquire(made.object, made.key, true));
}

void Ddl::declareResult(const Object& function, const Module& module) {
    const CreateFunctionStmt& stmt = *module.function;
    auto& made = definitionsAt(stmt, 1).made[0];
    if (made.version != session_.catalog.version()) {
        made.object = build(*stmt.table, function.database, stmt.returnVariable, true);
        translate(made.object);
        made.key = definitionKey(made.object);
        made.version = session_.catalog.version();
    }
    interp_.addLocal(stmt.returnVariable, session_.temps.acquire(made.object, made.key, true));
}

ObjectPtr Ddl::tableOfQuery(const ObjectName& name, const std::vector<OutColumn>& columns) {
    const int line = static_cast<int>(name.pos.line);
    Object object;
    object.database = name.isTemporary() ? interp_.frame().database : databaseOf(name);
    object.name = name.name;
    object.temporary = name.isTemporary();
    for (const OutColumn& column : columns) {
        ColumnInfo info;
        info.name = column.name;
        if (info.name.empty()) throw sqlErrorAt(line, 1038);
        if (object.columnIndex(info.name) >= 0) throw sqlErrorAt(line, 2705, {info.name, object.name});
        info.type = column.type.isNull() ? Type::integer() : column.type;
        info.nullable = column.nullable;
        info.identity = column.identity && !object.identityColumn();
        object.columns.push_back(std::move(info));
    }
    object.physical = object.temporary ? lowered(object.name) : Catalog::physicalName(object.database, object.name);
    if (!object.temporary) return makeTable(std::move(object));
    for (const auto& [local, table] : interp_.frame().locals) {
        if (local == lowered(name.name)) throw sqlErrorAt(line, 2714, {name.name});
    }
    LocalTable* table = session_.temps.acquire(object, definitionKey(object), false);
    interp_.addLocal(name.name, table);
    return table->object;
}

void Ddl::createIndex(const CreateIndexStmt& stmt) {
    IndexInfo index;
    index.name = stmt.name;
    index.unique = stmt.unique;
    index.columns = stmt.columns;
    index.include = stmt.include;
    if (stmt.where) index.filter = print(*stmt.where);
    Plan plan;
    Emitter emitter(interp_, interp_.frame().database, nullptr, plan);
    const ObjectPtr table = emitter.target(stmt.table);
    if (table->temporary) {
        // The table is now unlike others of its definition.
        interp_.findLocal(stmt.table.name)->altered = true;
        Object object = *table;
        addIndex(index, object, stmt.pos);
        translate(object);
        for (const std::string& sql : createIndexSql(object, object.indexes.back())) execSql(session_.db(), sql);
        *table = object;
        return;
    }
    session_.beforeWrite(false);
    Object object = *table;
    addIndex(std::move(index), object, stmt.pos);
    for (const std::string& name : object.indexes.back().include) {
        if (object.columnIndex(name) < 0) throw sqlErrorAt(static_cast<int>(stmt.pos.line), 1911, {name});
    }
    translate(object);
    try {
        for (const std::string& sql : createIndexSql(object, object.indexes.back())) execSql(session_.db(), sql);
    } catch (const SqlError& error) {
        if (error.number != 2601 && error.number != 2627) throw;
        throw sqlErrorAt(static_cast<int>(stmt.pos.line), 1505, {"dbo." + object.name, stmt.name});
    }
    session_.catalog.put(std::move(object));
    changed();
}

}  // namespace kv::tsql
