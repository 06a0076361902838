#include "platform/embedded/Lateral.h"

#include "platform/embedded/Sqlite.h"

namespace kv::tsql {
namespace {

struct Owner {
    sqlite3* db;
    FunctionContext* context;
};

struct Table : sqlite3_vtab {
    const Owner* owner;
};

/// The query stays prepared while the statement around it runs.
struct Cursor : sqlite3_vtab_cursor {
    std::string sql;
    Statement statement;
    bool row = false;
    sqlite3_int64 id = 0;
};

int connectTable(sqlite3* db, void* aux, int, const char* const*, sqlite3_vtab** out, char**) {
    std::string schema = "CREATE TABLE t(";
    for (int i = 1; i <= kLateralColumnsMax; ++i) schema += "c" + std::to_string(i) + ", ";
    schema += "query HIDDEN";
    for (int i = 1; i <= kLateralArgumentsMax; ++i) schema += ", a" + std::to_string(i) + " HIDDEN";
    const int code = sqlite3_declare_vtab(db, (schema + ")").c_str());
    if (code != SQLITE_OK) return code;
    auto* table = new Table();
    table->owner = static_cast<const Owner*>(aux);
    *out = table;
    return SQLITE_OK;
}

int disconnectTable(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

/// The query and all its arguments must be known; that is what puts the left side's rows first.
int bestIndex(sqlite3_vtab*, sqlite3_index_info* info) {
    int found = 0;
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        const int argument = constraint.iColumn - kLateralColumnsMax;
        if (argument < 0 || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
        if (!constraint.usable) return SQLITE_CONSTRAINT;
        info->aConstraintUsage[i].argvIndex = argument + 1;
        info->aConstraintUsage[i].omit = 1;
        ++found;
    }
    if (found == 0) return SQLITE_CONSTRAINT;
    info->estimatedCost = 100;
    info->estimatedRows = 10;
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

/// Runs a part of the query; what it raises waits for the interpreter, since it must not cross SQLite's frames.
template <class Part>
int guarded(Cursor& cursor, const Owner& owner, Part&& part) {
    cursor.row = false;
    try {
        part();
        return SQLITE_OK;
    } catch (const SqlError& error) {
        if (!owner.context->pending) owner.context->pending = error;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
    return SQLITE_ERROR;
}

const Owner& ownerOf(const Cursor& cursor) { return *static_cast<const Table*>(cursor.pVtab)->owner; }

int filter(sqlite3_vtab_cursor* base, int, const char*, int count, sqlite3_value** values) {
    auto& cursor = *static_cast<Cursor*>(base);
    const Owner& owner = ownerOf(cursor);
    return guarded(cursor, owner, [&] {
        const std::string sql(reinterpret_cast<const char*>(sqlite3_value_text(values[0])),
                              static_cast<std::size_t>(sqlite3_value_bytes(values[0])));
        if (cursor.sql != sql) {
            cursor.statement = Statement(owner.db, sql);
            cursor.sql = sql;
        }
        cursor.statement.reset();
        for (int i = 1; i < count; ++i) sqlite3_bind_value(cursor.statement.get(), i, values[i]);
        cursor.id = 0;
        cursor.row = cursor.statement.step();
    });
}

int next(sqlite3_vtab_cursor* base) {
    auto& cursor = *static_cast<Cursor*>(base);
    return guarded(cursor, ownerOf(cursor), [&] {
        ++cursor.id;
        cursor.row = cursor.statement.step();
    });
}

int atEnd(sqlite3_vtab_cursor* base) { return static_cast<Cursor*>(base)->row ? 0 : 1; }

int columnValue(sqlite3_vtab_cursor* base, sqlite3_context* context, int index) {
    sqlite3_stmt* statement = static_cast<Cursor*>(base)->statement.get();
    if (index < sqlite3_column_count(statement)) sqlite3_result_value(context, sqlite3_column_value(statement, index));
    return SQLITE_OK;
}

int rowId(sqlite3_vtab_cursor* base, sqlite3_int64* id) {
    *id = static_cast<Cursor*>(base)->id;
    return SQLITE_OK;
}

const sqlite3_module& lateralModule() {
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

void registerLateral(sqlite3* db, FunctionContext& context) {
    sqlite3_create_module_v2(db, "kv_lateral", &lateralModule(), new Owner{db, &context},
                             [](void* p) { delete static_cast<Owner*>(p); });
}

}  // namespace kv::tsql
