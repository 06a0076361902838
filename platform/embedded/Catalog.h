#pragma once
// Catalog: what stands in the database file: databases, tables with columns and constraints, views, routines, triggers.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/embedded/Ast.h"
#include "platform/embedded/Sqlite.h"
#include "platform/embedded/Types.h"

namespace kv::tsql {

enum class ObjectType : std::uint8_t { Table, View, Procedure, ScalarFunction, InlineFunction, TableFunction, Trigger };

/// The letters of sys.objects: "U", "V", "P", "FN", "IF", "TF", "TR".
std::string_view objectTypeCode(ObjectType type);

struct ColumnInfo {
    std::string name;
    Type type;
    bool nullable = true;
    bool identity = false;
    std::int64_t seed = 1;
    std::int64_t increment = 1;
    std::string defaultText;  ///< T-SQL of the DEFAULT; empty when there is none
    std::string defaultName;

    /// A counter that SQLite's own AUTOINCREMENT keeps; other identities count in kv_identity.
    bool plainIdentity() const { return identity && increment == 1 && seed >= 1; }
};

/// A key or an index: each is one SQLite index.
struct IndexInfo {
    std::string name;
    bool primary = false;
    bool constraint = false;  ///< PRIMARY KEY or UNIQUE: error 2627, otherwise 2601
    bool unique = false;
    std::vector<IndexColumn> columns;
    std::vector<std::string> include;
    std::string filter;     ///< T-SQL of WHERE
    std::string filterSql;  ///< the same for SQLite; made by the DDL when it is needed
};

struct CheckInfo {
    std::string name;
    std::string text;    ///< T-SQL of the condition
    std::string column;  ///< of a column constraint
    bool enabled = true;
    std::string sql;  ///< the same for SQLite; made by the DDL when it is needed
};

struct ForeignKeyInfo {
    std::string name;
    std::vector<std::string> columns;
    std::string refDatabase;
    std::string refTable;
    std::vector<std::string> refColumns;
    int onDelete = 0;  ///< ReferenceAction
    int onUpdate = 0;
    bool enabled = true;
};

/// One object of the catalogue. Shared: a running routine keeps its object while it is replaced.
struct Object {
    std::int64_t id = 0;
    ObjectType type = ObjectType::Table;
    std::string database;  ///< as created
    std::string name;      ///< as created
    std::string physical;  ///< SQLite's name of a table, without quotation marks
    std::string source;    ///< T-SQL of a view, routine or trigger
    bool temporary = false;
    bool clustered = false;   ///< the rows stand in the order of the primary key, without row ids
    bool disabled = false;    ///< of a trigger
    std::int64_t parent = 0;  ///< the table of a trigger
    std::string created;
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;
    std::vector<CheckInfo> checks;
    std::vector<ForeignKeyInfo> foreignKeys;

    /// What the engine made of the source (parsed body); made at first use.
    mutable std::shared_ptr<Attachment> compiled;

    int columnIndex(std::string_view column) const;  ///< -1 when there is none; letter case ignored
    const ColumnInfo* identityColumn() const;
    const IndexInfo* primaryKey() const;
    /// Is this key the order of the rows themselves (their row id or clustered key), so that it has no index?
    bool isRowOrder(const IndexInfo& index) const;
};
using ObjectPtr = std::shared_ptr<Object>;

class Catalog {
public:
    /// Makes the catalogue's tables in an empty file, with `database` as its first database.
    static void install(sqlite3* db, std::string_view database);
    /// True when the file has a catalogue.
    static bool present(sqlite3* db);

    explicit Catalog(sqlite3* db) : db_(db) {}

    /// Reads everything; the version counts the changes of the catalogue in the file.
    void load();
    std::int64_t version() const { return version_; }
    std::int64_t storedVersion() const;

    bool hasDatabase(std::string_view name) const { return databases_.count(lowered(name)) > 0; }
    const std::string* databaseName(std::string_view name) const;
    std::int64_t databaseId(std::string_view name) const;
    std::vector<std::string> databaseNames() const;
    void addDatabase(std::string_view name);
    void dropDatabase(std::string_view name);

    ObjectPtr find(std::string_view database, std::string_view name) const;
    ObjectPtr byId(std::int64_t id) const;
    /// Enabled triggers of a table, in the order of their creation.
    const std::vector<ObjectPtr>& triggersOf(const Object& table) const;
    /// Foreign keys of other tables that refer to this one.
    std::vector<std::pair<ObjectPtr, const ForeignKeyInfo*>> referencesTo(const Object& table) const;
    std::vector<ObjectPtr> all() const;

    /// Writes an object (new, or replaced by its id) and counts the version up. Gives the stored object.
    ObjectPtr put(Object object);
    void remove(const Object& object);

    static std::string physicalName(std::string_view database, std::string_view name);

private:
    static std::string key(std::string_view database, std::string_view name);
    void enlist(const ObjectPtr& object);
    void loadColumns(std::unordered_map<std::int64_t, ObjectPtr>& objects);
    void loadConstraints(std::unordered_map<std::int64_t, ObjectPtr>& objects);
    void writeParts(const Object& object);
    void bump();
    void enlistTriggers();

    sqlite3* db_;
    std::int64_t version_ = 0;
    std::map<std::string, std::pair<std::string, std::int64_t>> databases_;  ///< lower case to name and id
    std::unordered_map<std::string, ObjectPtr> objects_;
    std::unordered_map<std::int64_t, ObjectPtr> byId_;
    std::unordered_map<std::int64_t, std::vector<ObjectPtr>> triggers_;  ///< enabled ones by their table
};

}  // namespace kv::tsql
