#include "platform/embedded/SystemViews.h"

#include "platform/base/Text.h"
#include "platform/embedded/Sqlite.h"

namespace kv::tsql {
namespace {

// The catalogue's numbers in SQL: object types by Catalog.h's ObjectType, column kinds by Types.h's Kind.
constexpr const char* kTypeCode =
    "CASE o.type WHEN 0 THEN 'U' WHEN 1 THEN 'V' WHEN 2 THEN 'P' WHEN 3 THEN 'FN' WHEN 4 THEN 'IF' WHEN 5 THEN 'TF' "
    "ELSE 'TR' END";
constexpr const char* kTypeText =
    "CASE o.type WHEN 0 THEN 'USER_TABLE' WHEN 1 THEN 'VIEW' WHEN 2 THEN 'SQL_STORED_PROCEDURE' WHEN 3 THEN "
    "'SQL_SCALAR_FUNCTION' WHEN 4 THEN 'SQL_INLINE_TABLE_VALUED_FUNCTION' WHEN 5 THEN 'SQL_TABLE_VALUED_FUNCTION' ELSE "
    "'SQL_TRIGGER' END";

const Type kName = Type::nvarchar(128);
const Type kInt = Type::integer();
const Type kBit = Type::bit();
const Type kDate = Type::datetime();

const std::string kObjectFrom = "kv_object o WHERE o.db = {db} COLLATE NOCASE";
const std::string kColumnFrom =
    "kv_column c JOIN kv_object o ON o.id = c.object WHERE o.type IN (0, 1, 4, 5) AND o.db = {db} COLLATE NOCASE";

std::vector<SystemColumn> objectColumns() {
    return {{"name", "o.name", kName},
            {"object_id", "o.id", kInt},
            {"schema_id", "1", kInt},
            {"parent_object_id", "o.parent", kInt},
            {"type", kTypeCode, Type::text(Kind::Char, 2)},
            {"type_desc", kTypeText, kName},
            {"create_date", "o.created", kDate},
            {"modify_date", "o.modified", kDate},
            {"is_ms_shipped", "0", kBit}};
}

SystemView objects(const char* name, const char* condition) {
    return {"sys", name, objectColumns(), kObjectFrom + condition};
}

const std::vector<SystemView>& views() {
    static const std::vector<SystemView> list = {
        objects("objects", ""),
        objects("all_objects", ""),
        objects("tables", " AND o.type = 0"),
        objects("views", " AND o.type = 1"),
        objects("procedures", " AND o.type = 2"),
        objects("triggers", " AND o.type = 6"),
        {"sys",
         "sysobjects",
         {{"name", "o.name", kName},
          {"id", "o.id", kInt},
          {"xtype", kTypeCode, Type::text(Kind::Char, 2)},
          {"type", kTypeCode, Type::text(Kind::Char, 2)},
          {"parent_obj", "o.parent", kInt},
          {"crdate", "o.created", kDate}},
         kObjectFrom},
        {"sys",
         "columns",
         {{"object_id", "c.object", kInt},
          {"name", "c.name", kName},
          {"column_id", "c.position", kInt},
          {"system_type_id", "c.kind", kInt},
          {"user_type_id", "c.kind", kInt},
          {"max_length", "c.length", kInt},
          {"precision", "c.precision", kInt},
          {"scale", "c.scale", kInt},
          {"is_nullable", "c.nullable", kBit},
          {"is_identity", "c.is_identity", kBit},
          {"is_computed", "0", kBit}},
         kColumnFrom},
        {"sys",
         "syscolumns",
         {{"id", "c.object", kInt},
          {"name", "c.name", kName},
          {"colid", "c.position", kInt},
          {"length", "c.length", kInt},
          {"isnullable", "c.nullable", kInt}},
         kColumnFrom},
        {"sys",
         "indexes",
         {{"object_id", "i.object", kInt},
          {"name", "i.name", kName},
          {"index_id", "i.position", kInt},
          {"is_unique", "i.is_unique", kBit},
          {"is_primary_key", "i.is_primary", kBit},
          {"is_unique_constraint", "(i.is_constraint AND NOT i.is_primary)", kBit}},
         "kv_index i JOIN kv_object o ON o.id = i.object WHERE o.db = {db} COLLATE NOCASE"},
        {"sys",
         "check_constraints",
         {{"name", "k.name", kName},
          {"parent_object_id", "k.object", kInt},
          {"definition", "k.text", Type::nvarchar(kMaxLength)}},
         "kv_check k JOIN kv_object o ON o.id = k.object WHERE o.db = {db} COLLATE NOCASE"},
        {"sys",
         "default_constraints",
         {{"name", "c.default_name", kName},
          {"parent_object_id", "c.object", kInt},
          {"parent_column_id", "c.position", kInt},
          {"definition", "c.default_text", Type::nvarchar(kMaxLength)}},
         kColumnFrom + " AND c.default_text <> ''"},
        {"sys",
         "foreign_keys",
         {{"name", "f.name", kName}, {"parent_object_id", "f.object", kInt}},
         "kv_foreign_key f JOIN kv_object o ON o.id = f.object WHERE o.db = {db} COLLATE NOCASE"},
        {"sys",
         "sql_modules",
         {{"object_id", "o.id", kInt}, {"definition", "o.source", Type::nvarchar(kMaxLength)}},
         kObjectFrom + " AND o.type <> 0"},
        {"sys",
         "databases",
         {{"name", "d.name", kName}, {"database_id", "d.id", kInt}, {"state", "0", kInt}},
         "kv_database d"},
        {"sys", "schemas", {{"name", "'dbo'", kName}, {"schema_id", "1", kInt}}, "(SELECT 1)"},
        {"information_schema",
         "tables",
         {{"TABLE_CATALOG", "o.db", kName},
          {"TABLE_SCHEMA", "'dbo'", kName},
          {"TABLE_NAME", "o.name", kName},
          {"TABLE_TYPE", "CASE o.type WHEN 0 THEN 'BASE TABLE' ELSE 'VIEW' END", Type::varchar(10)}},
         kObjectFrom + " AND o.type IN (0, 1)"},
        {"information_schema",
         "columns",
         {{"TABLE_CATALOG", "o.db", kName},
          {"TABLE_SCHEMA", "'dbo'", kName},
          {"TABLE_NAME", "o.name", kName},
          {"COLUMN_NAME", "c.name", kName},
          {"ORDINAL_POSITION", "c.position", kInt},
          {"COLUMN_DEFAULT", "nullif(c.default_text, '')", Type::nvarchar(4000)},
          {"IS_NULLABLE", "CASE c.nullable WHEN 1 THEN 'YES' ELSE 'NO' END", Type::varchar(3)},
          {"DATA_TYPE", "kv_kind_name(c.kind)", kName},
          {"CHARACTER_MAXIMUM_LENGTH", "CASE WHEN c.kind BETWEEN 11 AND 16 THEN c.length END", kInt},
          {"NUMERIC_PRECISION",
           "CASE WHEN c.kind = 6 THEN c.precision WHEN c.kind BETWEEN 1 AND 10 THEN "
           "kv_kind_precision(c.kind) END",
           kInt},
          {"NUMERIC_SCALE",
           "CASE WHEN c.kind = 6 THEN c.scale WHEN c.kind BETWEEN 7 AND 8 THEN 4 WHEN c.kind BETWEEN "
           "1 AND 5 THEN 0 END",
           kInt}},
         "kv_column c JOIN kv_object o ON o.id = c.object WHERE o.type IN (0, 1) AND o.db = {db} COLLATE NOCASE"},
        {"information_schema",
         "routines",
         {{"ROUTINE_CATALOG", "o.db", kName},
          {"ROUTINE_SCHEMA", "'dbo'", kName},
          {"ROUTINE_NAME", "o.name", kName},
          {"ROUTINE_TYPE", "CASE o.type WHEN 2 THEN 'PROCEDURE' ELSE 'FUNCTION' END", Type::nvarchar(20)},
          {"ROUTINE_DEFINITION", "o.source", Type::nvarchar(4000)}},
         kObjectFrom + " AND o.type BETWEEN 2 AND 5"},
        {"information_schema",
         "table_constraints",
         {{"CONSTRAINT_NAME", "i.name", kName},
          {"TABLE_NAME", "o.name", kName},
          {"CONSTRAINT_TYPE", "CASE i.is_primary WHEN 1 THEN 'PRIMARY KEY' ELSE 'UNIQUE' END", Type::varchar(11)}},
         "kv_index i JOIN kv_object o ON o.id = i.object WHERE i.is_constraint AND o.db = {db} COLLATE NOCASE"},
    };
    return list;
}

}  // namespace

bool isSystemSchema(std::string_view schema) {
    return equalsNoCase(schema, "sys") || equalsNoCase(schema, "information_schema");
}

bool isSystemTable(std::string_view name) {
    return equalsNoCase(name, "sysobjects") || equalsNoCase(name, "syscolumns");
}

const SystemView* findSystemView(std::string_view schema, std::string_view name) {
    const std::string_view where = schema.empty() ? "sys" : schema;
    for (const SystemView& view : views()) {
        if (equalsNoCase(view.schema, where) && equalsNoCase(view.name, name)) return &view;
    }
    return nullptr;
}

std::string systemViewSql(const SystemView& view, const std::string& database) {
    std::string sql = "SELECT ";
    for (std::size_t i = 0; i < view.columns.size(); ++i) {
        const SystemColumn& column = view.columns[i];
        sql += (i ? ", " : "") + std::string(column.sql) + " AS " + quoted(column.name);
    }
    return sql + " FROM " + replaceAll(view.from, "{db}", quotedText(database));
}

}  // namespace kv::tsql
