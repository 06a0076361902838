#pragma once
// Scope: the sources that a FROM clause brings into sight, and how column names find their source.

#include <string>
#include <vector>

#include "platform/embedded/Ast.h"
#include "platform/embedded/Catalog.h"

namespace kv::tsql {

struct SourceColumn {
    std::string name;  ///< as T-SQL knows it
    std::string sql;   ///< as SQLite knows it inside the source, quoted
    Type type;
    bool collated = true;  ///< SQLite knows its collation
    bool nullable = true;
    bool identity = false;
};

struct Source {
    std::string alias;     ///< the exposed name
    std::string database;  ///< of a table that has no alias; empty otherwise
    std::string sqlAlias;  ///< unique in the statement
    std::vector<SourceColumn> columns;
    ObjectPtr table;                  ///< of a table (not a view): the target of UPDATE and DELETE
    std::vector<std::string> rowKey;  ///< of a table: what tells its rows apart, the row id or the clustered key
    int columnIndex(std::string_view name) const;
};

/// What a grouped SELECT lets out of its list: the texts of its keys, and columns that are neither keys nor inside an
/// aggregate.
struct Grouping {
    bool active = false;
    int aggregateDepth = 0;
    std::vector<std::string> keys;
    std::vector<std::string> loose;  ///< columns found outside of aggregates, as error 8120 names them
    bool isKey(const std::string& sql) const;
};

struct Scope {
    Scope* outer = nullptr;
    std::vector<Source> sources;
    Grouping grouping;
};

struct FoundColumn {
    const Source* source = nullptr;
    const SourceColumn* column = nullptr;
    Scope* scope = nullptr;
};

/// Finds a column from the innermost scope outwards. Raises 207, 209 and 4104.
FoundColumn findColumn(Scope* scope, const ColumnExpr& column);
/// Does `qualifier` (its last part and those before it) name this source?
bool namesSource(const Source& source, const ObjectName& qualifier);

}  // namespace kv::tsql
