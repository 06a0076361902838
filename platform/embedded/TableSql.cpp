#include "platform/embedded/TableSql.h"

#include <algorithm>

#include "platform/base/Text.h"

namespace kv::tsql {
namespace {

constexpr const char* kNullKeys = "$null";

const char* actionText(int action) {
    static constexpr const char* kTexts[] = {"NO ACTION", "CASCADE", "SET NULL", "SET DEFAULT"};
    return kTexts[action];
}

std::string nameList(const std::vector<std::string>& names) {
    std::string out;
    for (const std::string& name : names) out += (out.empty() ? "" : ", ") + quoted(name);
    return out;
}

/// A foreign key needs its columns as SQLite finds them in the referenced table: the same names, quoted.
std::string foreignKeySql(const ForeignKeyInfo& key) {
    std::string sql = "CONSTRAINT " + quoted(key.name) + " FOREIGN KEY (" + nameList(key.columns) + ") REFERENCES " +
                      quoted(Catalog::physicalName(key.refDatabase, key.refTable));
    if (!key.refColumns.empty()) sql += "(" + nameList(key.refColumns) + ")";
    return sql + " ON DELETE " + actionText(key.onDelete) + " ON UPDATE " + actionText(key.onUpdate);
}

std::string columnSql(const ColumnInfo& column) {
    std::string sql = quoted(column.name);
    if (column.identity) {
        return sql + (column.plainIdentity() ? " INTEGER PRIMARY KEY AUTOINCREMENT" : " INTEGER PRIMARY KEY");
    }
    sql += " " + std::string(sqliteTypeOf(column.type));
    if (!column.nullable) sql += " NOT NULL";
    if (column.type.isText()) sql += " COLLATE CI";
    return sql;
}

}  // namespace

std::string indexPhysicalName(const Object& table, const IndexInfo& index) {
    return table.physical + "." + lowered(index.name);
}

std::vector<std::string> createIndexSql(const Object& table, const IndexInfo& index) {
    std::string columns;
    for (const IndexColumn& column : index.columns) {
        columns += (columns.empty() ? "" : ", ") + quoted(column.name) + (column.descending ? " DESC" : "");
    }
    // Included columns make an index that answers alone: SQLite takes them as further keys, unless it is unique.
    for (const std::string& name : index.include) {
        if (!index.unique) columns += ", " + quoted(name);
    }
    std::string sql = index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
    sql += (table.temporary ? "temp." : "main.") + quoted(indexPhysicalName(table, index)) + " ON " +
           quoted(table.physical) + "(" + columns + ")";
    if (!index.filterSql.empty()) sql += " WHERE " + index.filterSql;
    std::vector<std::string> list{sql};
    if (!index.unique || !index.filterSql.empty()) return list;
    std::string keys;
    std::string some;
    for (const IndexColumn& column : index.columns) {
        const ColumnInfo& info = table.columns[static_cast<std::size_t>(table.columnIndex(column.name))];
        std::string key = quoted(info.name);
        if (info.nullable) {
            some += (some.empty() ? "" : " OR ") + key + " IS NULL";
            key = "ifnull(" + key + ", x'00')" + (info.type.isText() ? " COLLATE CI" : "");
        }
        keys += (keys.empty() ? "" : ", ") + key;
    }
    if (some.empty()) return list;
    list.push_back("CREATE UNIQUE INDEX " + std::string(table.temporary ? "temp." : "main.") +
                   quoted(indexPhysicalName(table, index) + kNullKeys) + " ON " + quoted(table.physical) + "(" + keys +
                   ") WHERE " + some);
    return list;
}

std::vector<std::string> dropIndexSql(const Object& table, const IndexInfo& index) {
    const std::string name = indexPhysicalName(table, index);
    return {"DROP INDEX main." + quoted(name), "DROP INDEX IF EXISTS main." + quoted(name + kNullKeys)};
}

std::string createTableSql(const Object& table) {
    std::string sql = "CREATE " + std::string(table.temporary ? "TEMP " : "") + "TABLE " + quoted(table.physical) + "(";
    for (std::size_t i = 0; i < table.columns.size(); ++i) sql += (i ? ", " : "") + columnSql(table.columns[i]);
    for (const CheckInfo& check : table.checks) {
        if (check.enabled) sql += ", CONSTRAINT " + quoted(check.name) + " CHECK (" + check.sql + ")";
    }
    if (!table.temporary) {
        for (const ForeignKeyInfo& key : table.foreignKeys) {
            if (key.enabled) sql += ", " + foreignKeySql(key);
        }
    }
    if (!table.clustered) return sql + ") STRICT";
    std::string key;
    for (const IndexColumn& column : table.primaryKey()->columns) {
        key += (key.empty() ? "" : ", ") + quoted(column.name) + (column.descending ? " DESC" : "");
    }
    return sql + ", PRIMARY KEY (" + key + ")) STRICT, WITHOUT ROWID";
}

std::vector<std::string> tableSql(const Object& table) {
    std::vector<std::string> list{createTableSql(table)};
    const ColumnInfo* identity = table.identityColumn();
    for (const IndexInfo& index : table.indexes) {
        if (table.isRowOrder(index)) continue;
        for (std::string& sql : createIndexSql(table, index)) list.push_back(std::move(sql));
    }
    if (identity && identity->plainIdentity() && identity->seed != 1) {
        list.push_back("INSERT INTO " + std::string(table.temporary ? "temp" : "main") +
                       ".sqlite_sequence(name, seq) VALUES(" + quotedText(table.physical) + ", " +
                       std::to_string(identity->seed - 1) + ")");
    }
    return list;
}

}  // namespace kv::tsql
