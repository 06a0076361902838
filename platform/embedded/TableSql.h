#pragma once
// TableSql: a table of the catalogue as SQLite's CREATE statements.

#include <string>
#include <vector>

#include "platform/embedded/Catalog.h"

namespace kv::tsql {

/// CREATE TABLE and what follows (indexes, the counter's start). CHECKs and filters must have been translated
/// (CheckInfo::sql, IndexInfo::filterSql).
std::vector<std::string> tableSql(const Object& table);
/// The CREATE TABLE alone, as sqlite_schema keeps it.
std::string createTableSql(const Object& table);
/// CREATE INDEX; for a unique key over columns that may be NULL a second one, since to SQLite no NULL equals another.
std::vector<std::string> createIndexSql(const Object& table, const IndexInfo& index);
std::vector<std::string> dropIndexSql(const Object& table, const IndexInfo& index);
std::string indexPhysicalName(const Object& table, const IndexInfo& index);

}  // namespace kv::tsql
