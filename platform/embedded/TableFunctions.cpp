// Table functions of the user as eponymous virtual tables: the result's columns, then one hidden column per argument.

#include "platform/embedded/Interp.h"
#include "platform/embedded/SessionFunctions.h"

namespace kv::tsql {
namespace {

struct Definition {
    Interp* interp;
    std::string key;
    std::string schema;  ///< the CREATE TABLE that SQLite is told
    int columns;
    int arguments;
};

struct Table : sqlite3_vtab {
    const Definition* definition;
};

struct Cursor : sqlite3_vtab_cursor {
    std::vector<std::vector<Datum>> rows;
    std::size_t at = 0;
};

const Definition& definitionOf(const sqlite3_vtab_cursor* cursor) {
    return *static_cast<const Table*>(cursor->pVtab)->definition;
}

int connectTable(sqlite3* db, void* aux, int, const char* const*, sqlite3_vtab** out, char**) {
    const auto* definition = static_cast<const Definition*>(aux);
    const int code = sqlite3_declare_vtab(db, definition->schema.c_str());
    if (code != SQLITE_OK) return code;
    auto* table = new Table();
    table->definition = definition;
    *out = table;
    return SQLITE_OK;
}

int disconnectTable(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

/// Every argument must be there as an equality; anything less is no plan.
int bestIndex(sqlite3_vtab* vtab, sqlite3_index_info* info) {
    const Definition& definition = *static_cast<Table*>(vtab)->definition;
    int found = 0;
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        const int argument = constraint.iColumn - definition.columns;
        if (argument < 0 || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
        if (!constraint.usable) return SQLITE_CONSTRAINT;
        info->aConstraintUsage[i].argvIndex = argument + 1;
        info->aConstraintUsage[i].omit = 1;
        ++found;
    }
    if (found != definition.arguments) return SQLITE_CONSTRAINT;
    info->estimatedCost = 1000;
    info->estimatedRows = 100;
    return SQLITE_OK;
}

int openCursor(sqlite3_vtab*, sqlite3_vtab_cursor** out) {
    *out = new Cursor();
    return SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor* cursor) {
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* base, int, const char*, int count, sqlite3_value** values) {
    auto* cursor = static_cast<Cursor*>(base);
    const Definition& definition = definitionOf(base);
    cursor->at = 0;
    cursor->rows.clear();
    std::vector<Datum> arguments;
    for (int i = 0; i < count; ++i) arguments.push_back(valueDatum(values[i]));
    try {
        cursor->rows = definition.interp->callTableFunction(definition.key, std::move(arguments));
        return SQLITE_OK;
    } catch (const SqlError& error) {
        definition.interp->session().functions.pending = error;
    } catch (const BatchAborted&) {
        definition.interp->session().functions.pending = sqlError(3609);
    }
    return SQLITE_ERROR;
}

int next(sqlite3_vtab_cursor* cursor) {
    ++static_cast<Cursor*>(cursor)->at;
    return SQLITE_OK;
}

int atEnd(sqlite3_vtab_cursor* base) {
    const auto* cursor = static_cast<Cursor*>(base);
    return cursor->at >= cursor->rows.size();
}

int columnValue(sqlite3_vtab_cursor* base, sqlite3_context* context, int index) {
    const auto* cursor = static_cast<Cursor*>(base);
    const std::vector<Datum>& row = cursor->rows[cursor->at];
    if (index < static_cast<int>(row.size())) {
        resultDatum(context, row[static_cast<std::size_t>(index)]);
    } else {
        sqlite3_result_null(context);
    }
    return SQLITE_OK;
}

int rowId(sqlite3_vtab_cursor* base, sqlite3_int64* id) {
    *id = static_cast<sqlite3_int64>(static_cast<Cursor*>(base)->at);
    return SQLITE_OK;
}

const sqlite3_module& tableModule() {
    static const sqlite3_module module = [] {
        sqlite3_module m{};
        m.xConnect = connectTable;
        m.xBestIndex = bestIndex;
        m.xDisconnect = disconnectTable;
        m.xOpen = openCursor;
        m.xClose = closeCursor;
        m.xFilter = filter;
        m.xNext = next;
        m.xEof = atEnd;
        m.xColumn = columnValue;
        m.xRowid = rowId;
        return m;
    }();
    return module;
}

}  // namespace

void registerTableFunction(sqlite3* db, Interp& interp, const std::string& name, const Object& function,
                           int arguments) {
    std::string schema = "CREATE TABLE t(";
    for (std::size_t i = 0; i < function.columns.size(); ++i) {
        schema += (i ? ", c" : "c") + std::to_string(i + 1);
    }
    for (int i = 0; i < arguments; ++i) schema += ", a" + std::to_string(i + 1) + " HIDDEN";
    auto* definition = new Definition{&interp, function.database + "." + function.name, schema + ")",
                                      static_cast<int>(function.columns.size()), arguments};
    sqlite3_create_module_v2(db, name.c_str(), &tableModule(), definition,
                             [](void* p) { delete static_cast<Definition*>(p); });
}

}  // namespace kv::tsql
