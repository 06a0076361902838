#include "platform/embedded/Scope.h"

#include <algorithm>

#include "platform/base/Text.h"

namespace kv::tsql {

int Source::columnIndex(std::string_view name) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (equalsNoCase(columns[i].name, name)) return static_cast<int>(i);
    }
    return -1;
}

bool Grouping::isKey(const std::string& sql) const { return std::find(keys.begin(), keys.end(), sql) != keys.end(); }

bool namesSource(const Source& source, const ObjectName& qualifier) {
    if (!equalsNoCase(source.alias, qualifier.name)) return false;
    if (qualifier.schema.empty() && qualifier.database.empty()) return true;
    if (source.database.empty()) return false;
    return qualifier.database.empty() || equalsNoCase(qualifier.database, source.database);
}

FoundColumn findColumn(Scope* scope, const ColumnExpr& column) {
    const int line = static_cast<int>(column.pos.line);
    bool qualifierKnown = false;
    for (Scope* at = scope; at; at = at->outer) {
        FoundColumn found;
        bool matched = false;
        for (const Source& source : at->sources) {
            if (!column.qualifier.empty() && !namesSource(source, column.qualifier)) continue;
            matched = true;
            const int index = source.columnIndex(column.column);
            if (index < 0) continue;
            if (found.column) throw sqlErrorAt(line, 209, {column.column});
            found = {&source, &source.columns[static_cast<std::size_t>(index)], at};
        }
        if (found.column) return found;
        if (!column.qualifier.empty() && matched) {
            qualifierKnown = true;
            break;
        }
    }
    if (!column.qualifier.empty() && !qualifierKnown) throw sqlErrorAt(line, 4104, {column.text()});
    throw sqlErrorAt(line, 207, {column.column});
}

}  // namespace kv::tsql
