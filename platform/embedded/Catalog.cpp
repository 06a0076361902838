#include "platform/embedded/Catalog.h"

#include <algorithm>
#include <set>

#include "platform/base/Date.h"
#include "platform/base/Text.h"

namespace kv::tsql {
namespace {

constexpr const char* kTables = R"(
CREATE TABLE kv_meta(name TEXT PRIMARY KEY, value TEXT) STRICT;
CREATE TABLE kv_database(id INTEGER PRIMARY KEY, name TEXT NOT NULL, key TEXT NOT NULL UNIQUE) STRICT;
CREATE TABLE kv_object(id INTEGER PRIMARY KEY AUTOINCREMENT, db TEXT NOT NULL, name TEXT NOT NULL,
  key TEXT NOT NULL UNIQUE, type INTEGER NOT NULL, parent INTEGER NOT NULL, disabled INTEGER NOT NULL,
  source TEXT NOT NULL, created TEXT NOT NULL, modified TEXT NOT NULL) STRICT;
CREATE TABLE kv_column(object INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL, kind INTEGER NOT NULL,
  precision INTEGER NOT NULL, scale INTEGER NOT NULL, length INTEGER NOT NULL, nullable INTEGER NOT NULL,
  is_identity INTEGER NOT NULL, seed INTEGER NOT NULL, step INTEGER NOT NULL, default_text TEXT NOT NULL,
  default_name TEXT NOT NULL, PRIMARY KEY(object, position)) STRICT;
CREATE TABLE kv_index(object INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL,
  is_primary INTEGER NOT NULL, is_constraint INTEGER NOT NULL, is_unique INTEGER NOT NULL, columns TEXT NOT NULL,
  included TEXT NOT NULL, filter TEXT NOT NULL, PRIMARY KEY(object, position)) STRICT;
CREATE TABLE kv_check(object INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL, text TEXT NOT NULL,
  column_name TEXT NOT NULL, enabled INTEGER NOT NULL, PRIMARY KEY(object, position)) STRICT;
CREATE TABLE kv_foreign_key(object INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL,
  columns TEXT NOT NULL, ref_db TEXT NOT NULL, ref_table TEXT NOT NULL, ref_columns TEXT NOT NULL,
  on_delete INTEGER NOT NULL, on_update INTEGER NOT NULL, enabled INTEGER NOT NULL,
  PRIMARY KEY(object, position)) STRICT;
CREATE TABLE kv_identity(object INTEGER PRIMARY KEY, last INTEGER NOT NULL) STRICT;
INSERT INTO kv_meta VALUES('format','1'),('collation','1'),('version','1');
)";

/// Names in one text, one a line (a name cannot hold a line break here).
std::string joined(const std::vector<std::string>& names) { return join(names, "\n"); }
std::vector<std::string> parted(const std::string& text) {
    return text.empty() ? std::vector<std::string>() : split(text, '\n');
}

std::string joinedColumns(const std::vector<IndexColumn>& columns) {
    std::vector<std::string> names;
    for (const IndexColumn& c : columns) names.push_back((c.descending ? "-" : "+") + c.name);
    return joined(names);
}

std::vector<IndexColumn> partedColumns(const std::string& text) {
    std::vector<IndexColumn> columns;
    for (const std::string& name : parted(text)) columns.push_back({{}, name.substr(1), name[0] == '-'});
    return columns;
}

std::string nowText() { return Format(Now(), "yyyy-mm-dd hh:nn:ss") + ".000"; }

}  // namespace

std::string_view objectTypeCode(ObjectType type) {
    switch (type) {
        case ObjectType::Table:
            return "U";
        case ObjectType::View:
            return "V";
        case ObjectType::Procedure:
            return "P";
        case ObjectType::ScalarFunction:
            return "FN";
        case ObjectType::InlineFunction:
            return "IF";
        case ObjectType::TableFunction:
            return "TF";
        case ObjectType::Trigger:
            return "TR";
    }
    return "";
}

int Object::columnIndex(std::string_view column) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (equalsNoCase(columns[i].name, column)) return static_cast<int>(i);
    }
    return -1;
}

const ColumnInfo* Object::identityColumn() const {
    const auto at = std::find_if(columns.begin(), columns.end(), [](const ColumnInfo& c) { return c.identity; });
    return at == columns.end() ? nullptr : &*at;
}

bool Object::isRowOrder(const IndexInfo& index) const {
    if (index.primary && clustered) return true;
    const ColumnInfo* identity = identityColumn();
    return identity && index.columns.size() == 1 && equalsNoCase(index.columns[0].name, identity->name);
}

const IndexInfo* Object::primaryKey() const {
    const auto at = std::find_if(indexes.begin(), indexes.end(), [](const IndexInfo& i) { return i.primary; });
    return at == indexes.end() ? nullptr : &*at;
}

void Catalog::install(sqlite3* db, std::string_view database) {
    execSql(db, kTables);
    Statement(db, "INSERT INTO kv_database(name, key) VALUES(?1, ?2)")
        .bind(1, database)
        .bind(2, lowered(database))
        .run();
}

bool Catalog::present(sqlite3* db) {
    Statement look(db, "SELECT 1 FROM sqlite_schema WHERE name = 'kv_meta'", false);
    return look.step();
}

std::string Catalog::key(std::string_view database, std::string_view name) {
    return lowered(database) + "." + lowered(name);
}

std::string Catalog::physicalName(std::string_view database, std::string_view name) { return key(database, name); }

std::int64_t Catalog::storedVersion() const {
    Statement look(db_, "SELECT CAST(value AS INTEGER) FROM kv_meta WHERE name = 'version'", false);
    return look.step() ? look.integer(0) : 0;
}

void Catalog::load() {
    databases_.clear();
    objects_.clear();
    byId_.clear();
    version_ = storedVersion();
    Statement bases(db_, "SELECT id, name FROM kv_database", false);
    while (bases.step()) databases_[lowered(bases.text(1))] = {bases.text(1), bases.integer(0)};
    std::unordered_map<std::int64_t, ObjectPtr> objects;
    Statement rows(db_, "SELECT id, db, name, type, parent, disabled, source, created FROM kv_object", false);
    while (rows.step()) {
        auto object = std::make_shared<Object>();
        object->id = rows.integer(0);
        object->database = rows.text(1);
        object->name = rows.text(2);
        object->type = static_cast<ObjectType>(rows.integer(3));
        object->parent = rows.integer(4);
        object->disabled = rows.integer(5) != 0;
        object->source = rows.text(6);
        object->created = rows.text(7);
        object->physical = physicalName(object->database, object->name);
        objects[object->id] = object;
    }
    loadColumns(objects);
    loadConstraints(objects);
    std::set<std::string> clustered;
    Statement tables(db_, "SELECT name FROM main.sqlite_schema WHERE type = 'table' AND sql LIKE '% WITHOUT ROWID'",
                     false);
    while (tables.step()) clustered.insert(tables.text(0));
    for (const auto& [id, object] : objects) object->clustered = clustered.count(object->physical) > 0;
    for (const auto& [id, object] : objects) enlist(object);
    enlistTriggers();
}

void Catalog::loadColumns(std::unordered_map<std::int64_t, ObjectPtr>& objects) {
    Statement rows(db_,
                   "SELECT object, name, kind, precision, scale, length, nullable, is_identity, seed, step, "
                   "default_text, default_name FROM kv_column ORDER BY object, position",
                   false);
    while (rows.step()) {
        const auto at = objects.find(rows.integer(0));
        if (at == objects.end()) continue;
        ColumnInfo column;
        column.name = rows.text(1);
        column.type.kind = static_cast<Kind>(rows.integer(2));
        column.type.precision = static_cast<std::uint8_t>(rows.integer(3));
        column.type.scale = static_cast<std::uint8_t>(rows.integer(4));
        column.type.length = static_cast<std::int32_t>(rows.integer(5));
        column.nullable = rows.integer(6) != 0;
        column.identity = rows.integer(7) != 0;
        column.seed = rows.integer(8);
        column.increment = rows.integer(9);
        column.defaultText = rows.text(10);
        column.defaultName = rows.text(11);
        at->second->columns.push_back(std::move(column));
    }
}

void Catalog::loadConstraints(std::unordered_map<std::int64_t, ObjectPtr>& objects) {
    Statement keys(db_,
                   "SELECT object, name, is_primary, is_constraint, is_unique, columns, included, filter FROM kv_index "
                   "ORDER BY object, position",
                   false);
    while (keys.step()) {
        const auto at = objects.find(keys.integer(0));
        if (at == objects.end()) continue;
        at->second->indexes.push_back({keys.text(1),
                                       keys.integer(2) != 0,
                                       keys.integer(3) != 0,
                                       keys.integer(4) != 0,
                                       partedColumns(keys.text(5)),
                                       parted(keys.text(6)),
                                       keys.text(7),
                                       {}});
    }
    Statement checks(db_, "SELECT object, name, text, column_name, enabled FROM kv_check ORDER BY object, position",
                     false);
    while (checks.step()) {
        const auto at = objects.find(checks.integer(0));
        if (at == objects.end()) continue;
        at->second->checks.push_back({checks.text(1), checks.text(2), checks.text(3), checks.integer(4) != 0, {}});
    }
    Statement foreign(db_,
                      "SELECT object, name, columns, ref_db, ref_table, ref_columns, on_delete, on_update, enabled "
                      "FROM kv_foreign_key ORDER BY object, position",
                      false);
    while (foreign.step()) {
        const auto at = objects.find(foreign.integer(0));
        if (at == objects.end()) continue;
        at->second->foreignKeys.push_back({foreign.text(1), parted(foreign.text(2)), foreign.text(3), foreign.text(4),
                                           parted(foreign.text(5)), static_cast<int>(foreign.integer(6)),
                                           static_cast<int>(foreign.integer(7)), foreign.integer(8) != 0});
    }
}

void Catalog::enlist(const ObjectPtr& object) {
    objects_[key(object->database, object->name)] = object;
    byId_[object->id] = object;
}

const std::string* Catalog::databaseName(std::string_view name) const {
    const auto at = databases_.find(lowered(name));
    return at == databases_.end() ? nullptr : &at->second.first;
}

std::int64_t Catalog::databaseId(std::string_view name) const {
    const auto at = databases_.find(lowered(name));
    return at == databases_.end() ? 0 : at->second.second;
}

std::vector<std::string> Catalog::databaseNames() const {
    std::vector<std::string> names;
    for (const auto& [lower, entry] : databases_) names.push_back(entry.first);
    return names;
}

void Catalog::addDatabase(std::string_view name) {
    Statement(db_, "INSERT INTO kv_database(name, key) VALUES(?1, ?2)").bind(1, name).bind(2, lowered(name)).run();
    databases_[lowered(name)] = {std::string(name), sqlite3_last_insert_rowid(db_)};
    bump();
}

void Catalog::dropDatabase(std::string_view name) {
    Statement(db_, "DELETE FROM kv_database WHERE key = ?1").bind(1, lowered(name)).run();
    databases_.erase(lowered(name));
    bump();
}

ObjectPtr Catalog::find(std::string_view database, std::string_view name) const {
    const auto at = objects_.find(key(database, name));
    return at == objects_.end() ? nullptr : at->second;
}

ObjectPtr Catalog::byId(std::int64_t id) const {
    const auto at = byId_.find(id);
    return at == byId_.end() ? nullptr : at->second;
}

const std::vector<ObjectPtr>& Catalog::triggersOf(const Object& table) const {
    static const std::vector<ObjectPtr> none;
    const auto at = triggers_.find(table.id);
    return at == triggers_.end() ? none : at->second;
}

void Catalog::enlistTriggers() {
    triggers_.clear();
    for (const ObjectPtr& object : all()) {
        if (object->type == ObjectType::Trigger && !object->disabled) triggers_[object->parent].push_back(object);
    }
}

std::vector<std::pair<ObjectPtr, const ForeignKeyInfo*>> Catalog::referencesTo(const Object& table) const {
    std::vector<std::pair<ObjectPtr, const ForeignKeyInfo*>> found;
    for (const auto& [id, object] : byId_) {
        for (const ForeignKeyInfo& fk : object->foreignKeys) {
            if (physicalName(fk.refDatabase, fk.refTable) == table.physical) found.emplace_back(object, &fk);
        }
    }
    return found;
}

std::vector<ObjectPtr> Catalog::all() const {
    std::vector<ObjectPtr> list;
    for (const auto& [id, object] : byId_) list.push_back(object);
    std::sort(list.begin(), list.end(), [](const ObjectPtr& a, const ObjectPtr& b) { return a->id < b->id; });
    return list;
}

void Catalog::bump() {
    execSql(db_, "UPDATE kv_meta SET value = CAST(value AS INTEGER) + 1 WHERE name = 'version'");
    version_ = storedVersion();
}

ObjectPtr Catalog::put(Object object) {
    object.physical = physicalName(object.database, object.name);
    const std::string now = nowText();
    if (object.id == 0) {
        object.created = now;
        Statement add(db_,
                      "INSERT INTO kv_object(db, name, key, type, parent, disabled, source, created, modified) "
                      "VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?8)");
        add.bind(1, object.database).bind(2, object.name).bind(3, key(object.database, object.name));
        add.bind(4, static_cast<std::int64_t>(object.type)).bind(5, object.parent);
        add.bind(6, std::int64_t{object.disabled}).bind(7, object.source).bind(8, now).run();
        object.id = sqlite3_last_insert_rowid(db_);
    } else {
        Statement change(db_,
                         "UPDATE kv_object SET type = ?1, disabled = ?2, source = ?3, modified = ?4, name = ?6, "
                         "parent = ?7 WHERE id = ?5");
        change.bind(1, static_cast<std::int64_t>(object.type)).bind(2, std::int64_t{object.disabled});
        change.bind(3, object.source).bind(4, now).bind(5, object.id).bind(6, object.name).bind(7, object.parent).run();
    }
    writeParts(object);
    bump();
    object.compiled.reset();
    auto stored = std::make_shared<Object>(std::move(object));
    enlist(stored);
    enlistTriggers();
    return stored;
}

void Catalog::writeParts(const Object& object) {
    for (const char* table : {"kv_column", "kv_index", "kv_check", "kv_foreign_key"}) {
        Statement(db_, "DELETE FROM " + std::string(table) + " WHERE object = ?1").bind(1, object.id).run();
    }
    std::int64_t position = 0;
    Statement column(db_, "INSERT INTO kv_column VALUES(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12,?13)");
    for (const ColumnInfo& c : object.columns) {
        column.bind(1, object.id).bind(2, ++position).bind(3, c.name).bind(4, static_cast<std::int64_t>(c.type.kind));
        column.bind(5, std::int64_t{c.type.precision}).bind(6, std::int64_t{c.type.scale});
        column.bind(7, std::int64_t{c.type.length}).bind(8, std::int64_t{c.nullable});
        column.bind(9, std::int64_t{c.identity}).bind(10, c.seed).bind(11, c.increment);
        column.bind(12, c.defaultText).bind(13, c.defaultName).run();
    }
    position = 0;
    Statement index(db_, "INSERT INTO kv_index VALUES(?1,?2,?3,?4,?5,?6,?7,?8,?9)");
    for (const IndexInfo& i : object.indexes) {
        index.bind(1, object.id).bind(2, ++position).bind(3, i.name).bind(4, std::int64_t{i.primary});
        index.bind(5, std::int64_t{i.constraint}).bind(6, std::int64_t{i.unique}).bind(7, joinedColumns(i.columns));
        index.bind(8, joined(i.include)).bind(9, i.filter).run();
    }
    position = 0;
    Statement check(db_, "INSERT INTO kv_check VALUES(?1,?2,?3,?4,?5,?6)");
    for (const CheckInfo& c : object.checks) {
        check.bind(1, object.id).bind(2, ++position).bind(3, c.name).bind(4, c.text).bind(5, c.column);
        check.bind(6, std::int64_t{c.enabled}).run();
    }
    position = 0;
    Statement foreign(db_, "INSERT INTO kv_foreign_key VALUES(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10)");
    for (const ForeignKeyInfo& f : object.foreignKeys) {
        foreign.bind(1, object.id).bind(2, ++position).bind(3, f.name).bind(4, joined(f.columns));
        foreign.bind(5, f.refDatabase).bind(6, f.refTable).bind(7, joined(f.refColumns));
        foreign.bind(8, std::int64_t{f.onDelete}).bind(9, std::int64_t{f.onUpdate});
        foreign.bind(10, std::int64_t{f.enabled}).run();
    }
}

void Catalog::remove(const Object& object) {
    for (const char* table : {"kv_column", "kv_index", "kv_check", "kv_foreign_key"}) {
        Statement(db_, "DELETE FROM " + std::string(table) + " WHERE object = ?1").bind(1, object.id).run();
    }
    Statement(db_, "DELETE FROM kv_object WHERE id = ?1").bind(1, object.id).run();
    Statement(db_, "DELETE FROM kv_identity WHERE object = ?1").bind(1, object.id).run();
    objects_.erase(key(object.database, object.name));
    byId_.erase(object.id);
    enlistTriggers();
    bump();
}

}  // namespace kv::tsql
