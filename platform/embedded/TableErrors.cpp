// What a constraint error of SQLite means: the constraint's name and the table's, from the catalogue.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Ddl.h"

namespace kv::tsql {
namespace {

/// "UNIQUE constraint failed: db.t.a, db.t.b" gives a and b.
std::vector<std::string> columnsIn(const Object& table, const std::string& message) {
    std::vector<std::string> columns;
    const std::size_t colon = message.find(": ");
    if (colon == std::string::npos) return columns;
    for (std::string part : split(message.substr(colon + 2), ',')) {
        part = trimBlanks(part);
        const std::string prefix = table.physical + ".";
        if (startsNoCase(part, prefix)) part = part.substr(prefix.size());
        columns.push_back(part);
    }
    return columns;
}

std::string shownTable(const Object& table) { return table.temporary ? table.name : "dbo." + table.name; }

std::string fullTable(const Object& table) {
    return table.temporary ? "tempdb.dbo." + table.name : table.database + ".dbo." + table.name;
}

/// The key's values are not known here: the sentence about them is left out.
SqlError withoutValue(SqlError error) {
    const std::size_t at = error.text.find(" The duplicate key value");
    if (at != std::string::npos) error.text.resize(at);
    return error;
}

SqlError duplicateKey(const Object& table, const std::string& message) {
    const std::vector<std::string> columns = columnsIn(table, message);
    for (const IndexInfo& index : table.indexes) {
        const bool named = message.find("index '") != std::string::npos && containsNoCase(message, index.name);
        const bool same =
            index.unique && index.columns.size() == columns.size() &&
            std::equal(columns.begin(), columns.end(), index.columns.begin(),
                       [](const std::string& a, const IndexColumn& b) { return equalsNoCase(a, b.name); });
        if (!named && !same) continue;
        if (!index.constraint) return withoutValue(sqlError(2601, {shownTable(table), index.name, ""}));
        return withoutValue(
            sqlError(2627, {index.primary ? "PRIMARY KEY" : "UNIQUE KEY", index.name, shownTable(table), ""}));
    }
    return withoutValue(sqlError(2627, {"PRIMARY KEY", join(columns, ", "), shownTable(table), ""}));
}

std::string columnNote(const std::vector<std::string>& columns) {
    return columns.size() == 1 ? ", column '" + columns[0] + "'" : "";
}

SqlError foreignKey(const Catalog& catalog, const Object& table, const std::string& verb) {
    // SQLite does not say which key failed. Inserts fail in the table's own keys, deletes in those that refer to it.
    const auto referring = catalog.referencesTo(table);
    const bool own = verb != "DELETE" && !table.foreignKeys.empty();
    std::vector<std::string> names;
    if (own) {
        for (const ForeignKeyInfo& key : table.foreignKeys) names.push_back(key.name);
        const ForeignKeyInfo& first = table.foreignKeys.front();
        return sqlError(547, {verb, "FOREIGN KEY", join(names, "\" or \""), first.refDatabase, "dbo." + first.refTable,
                              names.size() == 1 ? columnNote(first.refColumns) : ""});
    }
    for (const auto& [other, key] : referring) names.push_back(key->name);
    const std::string where = referring.empty() ? table.name : referring.front().first->name;
    return sqlError(547, {verb, "REFERENCE", join(names, "\" or \""), table.database, "dbo." + where, ""});
}

}  // namespace

SqlError constraintError(const Catalog& catalog, const Object& table, const char* verb, int code,
                         const std::string& message) {
    switch (code) {
        case SQLITE_CONSTRAINT_PRIMARYKEY:
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_ROWID:
            return duplicateKey(table, message);
        case SQLITE_CONSTRAINT_NOTNULL: {
            const std::vector<std::string> columns = columnsIn(table, message);
            return sqlError(515, {columns.empty() ? message : columns[0], fullTable(table), verb});
        }
        case SQLITE_CONSTRAINT_CHECK: {
            const std::size_t colon = message.find(": ");
            const std::string name = colon == std::string::npos ? message : message.substr(colon + 2);
            std::string column;
            for (const CheckInfo& check : table.checks) {
                if (equalsNoCase(check.name, name) && !check.column.empty()) column = ", column '" + check.column + "'";
            }
            return sqlError(
                547, {verb, "CHECK", name, table.temporary ? "tempdb" : table.database, shownTable(table), column});
        }
        case SQLITE_CONSTRAINT_FOREIGNKEY:
            return foreignKey(catalog, table, verb);
        default:
            return fromSqlite(code, message);
    }
}

}  // namespace kv::tsql
