#pragma once
// SystemViews: sys.* and INFORMATION_SCHEMA.* as queries over the engine's own catalogue tables.

#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/Types.h"

namespace kv::tsql {

struct SystemColumn {
    std::string name;
    std::string sql;
    Type type;
};

struct SystemView {
    std::string schema;
    std::string name;
    std::vector<SystemColumn> columns;
    std::string from;  ///< FROM and WHERE; {db} stands for the database's name as a text
};

/// "sys" or "INFORMATION_SCHEMA" in any letter case.
bool isSystemSchema(std::string_view schema);
/// An old system table that is named without a schema: sysobjects, syscolumns.
bool isSystemTable(std::string_view name);
const SystemView* findSystemView(std::string_view schema, std::string_view name);
std::string systemViewSql(const SystemView& view, const std::string& database);

}  // namespace kv::tsql
