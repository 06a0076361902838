#include "platform/embedded/SessionFunctions.h"

#include <memory>

#include "platform/base/Text.h"
#include "platform/embedded/Interp.h"
#include "platform/embedded/Lexer.h"

namespace kv::tsql {
namespace {

using Body = void (*)(Interp&, sqlite3_context*, int, sqlite3_value**);

std::string textOf(sqlite3_value* value) { return valueDatum(value).text; }

/// Keeps exceptions away from SQLite's frames: the error waits in the shared context.
template <class Work>
void guardedBy(Interp& interp, sqlite3_context* context, Work&& work) {
    try {
        work();
    } catch (const SqlError& error) {
        interp.session().functions.pending = error;
        sqlite3_result_error(context, error.text.c_str(), -1);
    } catch (const BatchAborted&) {
        interp.session().functions.pending = sqlError(3609);
        sqlite3_result_error(context, "aborted", -1);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

/// The object of a name like "DB..T", "dbo.T", "[T]".
ObjectPtr namedObject(Interp& interp, const std::string& database, const std::string& text) {
    std::vector<std::string> parts;
    std::string part;
    bool bracket = false;
    for (const char c : text) {
        if (c == '[' && !bracket) {
            bracket = true;
        } else if (c == ']' && bracket) {
            bracket = false;
        } else if (c == '.' && !bracket) {
            parts.push_back(std::exchange(part, {}));
        } else {
            part += c;
        }
    }
    parts.push_back(part);
    std::string name{trimBlanks(parts.back())};
    std::string where = parts.size() >= 3 ? std::string(trimBlanks(parts[parts.size() - 3])) : database;
    if (where.empty()) where = database;
    if (!name.empty() && name[0] == '#') return interp.localTable(name);
    return interp.catalog().find(where, name);
}

bool fitsType(const Object& object, const std::string& code) {
    const std::string wanted = lowered(std::string(trimBlanks(code)));
    return wanted.empty() || wanted == lowered(objectTypeCode(object.type));
}

void objectId(Interp& interp, sqlite3_context* context, int count, sqlite3_value** values) {
    std::string name = textOf(values[1]);
    const std::string code = count > 2 ? textOf(values[2]) : "";
    // tempdb..#t names a temporary table of the session.
    if (startsNoCase(name, "tempdb..")) name = name.substr(8);
    if (const ObjectPtr object = namedObject(interp, textOf(values[0]), name); object && fitsType(*object, code)) {
        return sqlite3_result_int64(context, object->id);
    }
    // Constraints have ids too; only whether they exist matters.
    const std::size_t dot = name.rfind('.');
    const std::string bare = unquoteName(dot == std::string::npos ? name : name.substr(dot + 1));
    for (const ObjectPtr& object : interp.catalog().all()) {
        if (!equalsNoCase(object->database, textOf(values[0]))) continue;
        for (const IndexInfo& i : object->indexes) {
            if (i.constraint && equalsNoCase(i.name, bare))
                return sqlite3_result_int64(context, object->id + 1'000'000);
        }
        for (const CheckInfo& c : object->checks) {
            if (equalsNoCase(c.name, bare)) return sqlite3_result_int64(context, object->id + 2'000'000);
        }
        for (const ForeignKeyInfo& f : object->foreignKeys) {
            if (equalsNoCase(f.name, bare)) return sqlite3_result_int64(context, object->id + 3'000'000);
        }
        for (const ColumnInfo& c : object->columns) {
            if (!c.defaultName.empty() && equalsNoCase(c.defaultName, bare)) {
                return sqlite3_result_int64(context, object->id + 4'000'000);
            }
        }
    }
    sqlite3_result_null(context);
}

void objectName(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = interp.catalog().byId(sqlite3_value_int64(values[1]));
    resultDatum(context, object ? Datum::of(object->name) : Datum::null());
}

void objectDefinition(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = interp.catalog().byId(sqlite3_value_int64(values[1]));
    resultDatum(context, object && !object->source.empty() ? Datum::of(object->source) : Datum::null());
}

/// Bytes that a column may hold, as COL_LENGTH counts.
std::int64_t byteLength(const Type& type) {
    if (type.length == kMaxLength && (type.isText() || type.isBinary())) return -1;
    if (type.isText()) return type.isUnicode() ? type.length * 2 : type.length;
    if (type.isBinary()) return type.length;
    switch (type.kind) {
        case Kind::Bit:
        case Kind::TinyInt:
            return 1;
        case Kind::SmallInt:
            return 2;
        case Kind::Int:
        case Kind::SmallMoney:
        case Kind::Real:
        case Kind::SmallDateTime:
            return 4;
        case Kind::Date:
            return 3;
        case Kind::Decimal:
            return type.precision <= 9 ? 5 : type.precision <= 19 ? 9 : type.precision <= 28 ? 13 : 17;
        case Kind::UniqueIdentifier:
            return 16;
        default:
            return 8;
    }
}

void colLength(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = namedObject(interp, textOf(values[0]), textOf(values[1]));
    const int index = object ? object->columnIndex(unquoteName(textOf(values[2]))) : -1;
    if (index < 0) return sqlite3_result_null(context);
    sqlite3_result_int64(context, byteLength(object->columns[static_cast<std::size_t>(index)].type));
}

void colName(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = interp.catalog().byId(sqlite3_value_int64(values[1]));
    const std::int64_t index = sqlite3_value_int64(values[2]) - 1;
    const bool there = object && index >= 0 && index < static_cast<std::int64_t>(object->columns.size());
    resultDatum(context, there ? Datum::of(object->columns[static_cast<std::size_t>(index)].name) : Datum::null());
}

void columnProperty(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = interp.catalog().byId(sqlite3_value_int64(values[1]));
    const int index = object ? object->columnIndex(textOf(values[2])) : -1;
    if (index < 0) return sqlite3_result_null(context);
    const ColumnInfo& column = object->columns[static_cast<std::size_t>(index)];
    const std::string property = lowered(textOf(values[3]));
    if (property == "isidentity") return sqlite3_result_int(context, column.identity);
    if (property == "allowsnull") return sqlite3_result_int(context, column.nullable);
    if (property == "columnid") return sqlite3_result_int(context, index + 1);
    sqlite3_result_null(context);
}

void databaseId(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const std::int64_t id = interp.catalog().databaseId(textOf(values[1]));
    if (id) return sqlite3_result_int64(context, id);
    sqlite3_result_null(context);
}

void databaseName(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    for (const std::string& name : interp.catalog().databaseNames()) {
        if (interp.catalog().databaseId(name) == sqlite3_value_int64(values[1])) {
            return resultDatum(context, Datum::of(name));
        }
    }
    sqlite3_result_null(context);
}

std::optional<std::int64_t> lastIdentityOf(Interp& interp, const Object& table) {
    const ColumnInfo* identity = table.identityColumn();
    const bool plain = identity->plainIdentity();
    Statement look(interp.session().db(),
                   plain ? "SELECT seq FROM main.sqlite_sequence WHERE name = ?1"
                         : "SELECT last FROM kv_identity WHERE object = CAST(?1 AS INTEGER)",
                   false);
    look.bind(1, plain ? table.physical : std::to_string(table.id));
    if (!look.step()) return std::nullopt;
    return look.integer(0);
}

void identCurrent(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = namedObject(interp, textOf(values[0]), textOf(values[1]));
    if (!object || !object->identityColumn()) return sqlite3_result_null(context);
    sqlite3_result_int64(context, lastIdentityOf(interp, *object).value_or(object->identityColumn()->seed));
}

void identSeed(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = namedObject(interp, textOf(values[0]), textOf(values[1]));
    if (!object || !object->identityColumn()) return sqlite3_result_null(context);
    sqlite3_result_int64(context, object->identityColumn()->seed);
}

void identIncrement(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const ObjectPtr object = namedObject(interp, textOf(values[0]), textOf(values[1]));
    if (!object || !object->identityColumn()) return sqlite3_result_null(context);
    sqlite3_result_int64(context, object->identityColumn()->increment);
}

void nextIdentity(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    const std::int64_t id = sqlite3_value_int64(values[0]);
    if (id < 0) {
        return sqlite3_result_int64(context, interp.session().temps.nextIdentity(*interp.session().temps.byId(id)));
    }
    const ObjectPtr table = interp.catalog().byId(id);
    const ColumnInfo& column = *table->identityColumn();
    const std::optional<std::int64_t> last = lastIdentityOf(interp, *table);
    const std::int64_t next = last ? *last + column.increment : column.seed;
    Statement(interp.session().db(), "INSERT OR REPLACE INTO kv_identity VALUES(?1, ?2)", false)
        .bind(1, id)
        .bind(2, next)
        .run();
    sqlite3_result_int64(context, next);
}

void variableNow(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    resultDatum(context, interp.liveVariable(sqlite3_value_int(values[0])));
}

void captureNow(Interp& interp, sqlite3_context* context, int, sqlite3_value** values) {
    sqlite3_result_int(context, interp.capturing(sqlite3_value_int64(values[0])));
}

/// The row count of TOP: NULL is an error, not "all".
void rowLimit(Interp&, sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) throw sqlError(1014);
    const std::int64_t rows = sqlite3_value_int64(values[0]);
    if (rows < 0) throw sqlError(127);
    sqlite3_result_int64(context, rows);
}

void kindNameOf(Interp&, sqlite3_context* context, int, sqlite3_value** values) {
    resultDatum(context, Datum::of(std::string(kindName(static_cast<Kind>(sqlite3_value_int(values[0]))))));
}

void kindPrecision(Interp&, sqlite3_context* context, int, sqlite3_value** values) {
    const Type type = Type::of(static_cast<Kind>(sqlite3_value_int(values[0])));
    if (type.kind == Kind::Bit) return sqlite3_result_null(context);
    if (type.isFloat()) return sqlite3_result_int(context, type.kind == Kind::Real ? 24 : 53);
    sqlite3_result_int(context, decimalShape(type).precision);
}

void schemaId(Interp&, sqlite3_context* context, int count, sqlite3_value** values) {
    if (count > 1 && !equalsNoCase(textOf(values[1]), "dbo")) return sqlite3_result_null(context);
    sqlite3_result_int(context, 1);
}

void schemaName(Interp&, sqlite3_context* context, int count, sqlite3_value** values) {
    if (count > 1 && sqlite3_value_int64(values[1]) != 1) return sqlite3_result_null(context);
    resultDatum(context, Datum::of(std::string("dbo")));
}

struct FunctionRow {
    const char* name;
    int arguments;
    Body body;
};

constexpr FunctionRow kFunctions[] = {
    {"kv_object_id", -1, objectId},
    {"kv_object_name", -1, objectName},
    {"kv_object_definition", 2, objectDefinition},
    {"kv_col_length", 3, colLength},
    {"kv_col_name", 3, colName},
    {"kv_columnproperty", 4, columnProperty},
    {"kv_db_id", 2, databaseId},
    {"kv_db_name", 2, databaseName},
    {"kv_ident_current", 2, identCurrent},
    {"kv_ident_seed", 2, identSeed},
    {"kv_ident_incr", 2, identIncrement},
    {"kv_schema_id", -1, schemaId},
    {"kv_schema_name", -1, schemaName},
    {"kv_next_identity", 1, nextIdentity},
    {"kv_variable", 1, variableNow},
    {"kv_capture", 1, captureNow},
    {"kv_rows", 1, rowLimit},
    {"kv_kind_name", 1, kindNameOf},
    {"kv_kind_precision", 1, kindPrecision},
};

struct Bound {
    Interp* interp;
    Body body;
};

void callBound(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto* bound = static_cast<const Bound*>(sqlite3_user_data(context));
    guardedBy(*bound->interp, context, [&] { bound->body(*bound->interp, context, count, values); });
}

/// kv_single: the one value of a subquery; a second row is error 512.
struct Single {
    sqlite3_value* value;
    int rows;
};

void singleStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, sizeof(Single)));
    if (!single) return sqlite3_result_error_nomem(context);
    if (++single->rows == 1) {
        single->value = sqlite3_value_dup(values[0]);
    } else if (single->rows == 2) {
        auto* interp = static_cast<Interp*>(sqlite3_user_data(context));
        interp->session().functions.pending = sqlError(512);
        sqlite3_result_error(context, "512", -1);
    }
}

void singleFinal(sqlite3_context* context) {
    auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, 0));
    if (!single || !single->value) return sqlite3_result_null(context);
    if (single->rows == 1) sqlite3_result_value(context, single->value);
    if (single->rows > 1) sqlite3_result_error(context, "512", -1);
    sqlite3_value_free(single->value);
}

/// The object is looked up again when the catalogue has changed. SQLite keeps this until the file is closed, and the
/// object's own statements keep the file open: so it must not own the object.
struct UserFunction {
    Interp* interp;
    std::string key;
    std::weak_ptr<ObjectPtr::element_type> object = {};
    std::int64_t version = -1;
};

ObjectPtr currentObject(UserFunction& function) {
    const Catalog& catalog = function.interp->catalog();
    if (function.version == catalog.version()) {
        if (ObjectPtr known = function.object.lock()) return known;
    }
    const std::size_t dot = function.key.find('.');
    ObjectPtr found = catalog.find(function.key.substr(0, dot), function.key.substr(dot + 1));
    if (!found) throw sqlError(208, {function.key});
    function.object = found;
    function.version = catalog.version();
    return found;
}

void callUser(sqlite3_context* context, int count, sqlite3_value** values) {
    auto* function = static_cast<UserFunction*>(sqlite3_user_data(context));
    guardedBy(*function->interp, context, [&] {
        std::vector<Datum> arguments;
        arguments.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) arguments.push_back(valueDatum(values[i]));
        resultDatum(context, function->interp->callFunction(currentObject(*function), std::move(arguments)));
    });
}

}  // namespace

void registerSessionFunctions(sqlite3* db, Interp& interp) {
    for (const FunctionRow& row : kFunctions) {
        sqlite3_create_function_v2(db, row.name, row.arguments, SQLITE_UTF8, new Bound{&interp, row.body}, callBound,
                                   nullptr, nullptr, [](void* p) { delete static_cast<Bound*>(p); });
    }
    sqlite3_create_function_v2(db, "kv_single", 1, SQLITE_UTF8, &interp, nullptr, singleStep, singleFinal, nullptr);
}

void registerScalarFunction(sqlite3* db, Interp& interp, const std::string& name, const std::string& key) {
    // the emitter has counted the arguments
    sqlite3_create_function_v2(db, name.c_str(), -1, SQLITE_UTF8, new UserFunction{&interp, key, {}, -1}, callUser,
                               nullptr, nullptr, [](void* p) { delete static_cast<UserFunction*>(p); });
}

}  // namespace kv::tsql
