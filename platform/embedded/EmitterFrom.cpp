// The emitter's FROM clause: tables, views, derived tables, functions and joins become SQLite sources.

#include "platform/base/Text.h"
#include "platform/embedded/Emitter.h"
#include "platform/embedded/Lateral.h"
#include "platform/embedded/SystemViews.h"

namespace kv::tsql {
namespace {

constexpr int kNestingMax = 32;

bool hasOuterSide(const TableRef& ref) {
    const auto* join = as<JoinRef>(&ref);
    if (!join) return false;
    if (join->join == JoinKind::Right || join->join == JoinKind::Full) return true;
    return hasOuterSide(*join->left) || hasOuterSide(*join->right);
}

const char* joinText(JoinKind kind) {
    switch (kind) {
        case JoinKind::Left:
        case JoinKind::OuterApply:
            return " LEFT JOIN ";
        case JoinKind::Right:
            return " RIGHT JOIN ";
        case JoinKind::Full:
            return " FULL JOIN ";
        default:
            return " JOIN ";
    }
}

void checkExposed(const Scope& scope, const Source& source, const Pos& pos) {
    for (const Source& other : scope.sources) {
        if (!equalsNoCase(other.alias, source.alias)) continue;
        const bool bothTables = !other.database.empty() && !source.database.empty();
        if (bothTables && !equalsNoCase(other.database, source.database)) continue;
        if (bothTables || (other.database.empty() && source.database.empty())) {
            throw sqlErrorAt(static_cast<int>(pos.line), bothTables ? 1013 : 1011, {source.alias, other.alias});
        }
    }
}

}  // namespace

std::string Emitter::from(const std::vector<TableRefPtr>& refs, Scope& scope) {
    std::string sql;
    for (std::size_t i = 0; i < refs.size(); ++i) {
        // "a, b RIGHT JOIN c" joins b and c first.
        const bool nested = i > 0 && hasOuterSide(*refs[i]);
        if (i) sql += ", ";
        sql += nested ? "(" + ref(*refs[i], scope, true) + ")" : ref(*refs[i], scope, false);
    }
    return sql;
}

std::string Emitter::ref(const TableRef& ref, Scope& scope, bool nested) {
    const std::size_t before = scope.sources.size();
    std::string sql;
    switch (ref.kind) {
        case TableRefKind::Named:
            sql = namedRef(static_cast<const NamedRef&>(ref), scope, nested);
            break;
        case TableRefKind::Variable: {
            const auto& variable = static_cast<const VariableRef&>(ref);
            ObjectName name;
            name.pos = ref.pos;
            name.name = variable.name;
            const std::string alias = variable.alias.empty() ? variable.name : variable.alias;
            sql = tableSource(target(name), alias, "", scope, nested);
            break;
        }
        case TableRefKind::Function:
            sql = functionRef(static_cast<const FunctionRef&>(ref), scope, false, false);
            break;
        case TableRefKind::Derived:
            sql = derivedRef(static_cast<const DerivedRef&>(ref), scope);
            break;
        case TableRefKind::Values:
            sql = valuesRef(static_cast<const ValuesRef&>(ref), scope);
            break;
        case TableRefKind::Join:
            return joinRef(static_cast<const JoinRef&>(ref), scope, nested);
    }
    if (scope.sources.size() > before) {
        Scope others;
        others.sources.assign(scope.sources.begin(), scope.sources.begin() + static_cast<long>(before));
        checkExposed(others, scope.sources.back(), ref.pos);
    }
    return sql;
}

std::string Emitter::joinRef(const JoinRef& join, Scope& scope, bool nested) {
    const std::size_t first = scope.sources.size();
    std::string sql = ref(*join.left, scope, nested);
    if (join.join == JoinKind::CrossApply || join.join == JoinKind::OuterApply) {
        const bool keepsRow = join.join == JoinKind::OuterApply;
        if (const auto* derived = as<DerivedRef>(join.right.get()))
            return sql + joinText(join.join) + lateralRef(*derived, scope, keepsRow);
        const auto* function = as<FunctionRef>(join.right.get());
        if (!function) throw refuse("APPLY of a table or of VALUES", join.right->pos);
        return sql + joinText(join.join) + functionRef(*function, scope, true, join.join == JoinKind::OuterApply);
    }
    const std::size_t second = scope.sources.size();
    const bool inner = join.right->kind == TableRefKind::Join;
    const std::string right = ref(*join.right, scope, nested || inner);
    sql += joinText(join.join) + (inner ? "(" + right + ")" : right);
    if (join.on) {
        // ON sees what stands inside this join, not the other sources of the FROM.
        Scope inside;
        inside.outer = scope.outer;
        inside.sources.assign(scope.sources.begin() + static_cast<long>(first), scope.sources.end());
        Scope* saved = scope_;
        scope_ = &inside;
        sql += " ON " + cond(*join.on);
        scope_ = saved;
    }
    const auto nullable = [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            for (SourceColumn& column : scope.sources[i].columns) column.nullable = true;
        }
    };
    if (join.join == JoinKind::Left || join.join == JoinKind::Full) nullable(second, scope.sources.size());
    if (join.join == JoinKind::Right || join.join == JoinKind::Full) nullable(first, second);
    return sql;
}

Source Emitter::tableSourceColumns(const ObjectPtr& table) const {
    Source source;
    source.table = table;
    source.sqlAlias = quoted(table->physical);
    source.rowKey = {"rowid"};
    if (table->clustered) {
        source.rowKey.clear();
        for (const IndexColumn& column : table->primaryKey()->columns) source.rowKey.push_back(quoted(column.name));
    }
    for (const ColumnInfo& column : table->columns) {
        source.columns.push_back(
            {column.name, quoted(column.name), column.type, true, column.nullable, column.identity});
    }
    return source;
}

std::string Emitter::tableSource(const ObjectPtr& table, const std::string& alias, const std::string& database,
                                 Scope& scope, bool nested) {
    Source source = tableSourceColumns(table);
    source.alias = alias;
    source.database = database;
    source.sqlAlias = newAlias("s");
    const std::string name = (table->temporary ? "temp." : "main.") + quoted(table->physical);
    std::string sql = name + " AS " + source.sqlAlias;
    if (nested) {
        // Inside a parenthesized join SQLite does not show the row id: it is made a column.
        std::string columns;
        for (const SourceColumn& column : source.columns) columns += (columns.empty() ? "" : ", ") + column.sql;
        if (!table->clustered) {
            columns += ", rowid AS kv_rowid";
            source.rowKey = {"kv_rowid"};
        }
        sql = "(SELECT " + columns + " FROM " + name + ") AS " + source.sqlAlias;
    }
    scope.sources.push_back(std::move(source));
    return sql;
}

std::string Emitter::namedRef(const NamedRef& ref, Scope& scope, bool nested) {
    const ObjectName& name = ref.name;
    const int line = static_cast<int>(ref.pos.line);
    const std::string alias = ref.alias.empty() ? name.name : ref.alias;
    const bool bare = name.schema.empty() && name.database.empty() && name.server.empty();
    if (!name.server.empty()) throw refuse("a four-part name", name.pos);
    if (bare) {
        for (auto entry = ctes_.rbegin(); entry != ctes_.rend(); ++entry) {
            if (!equalsNoCase(entry->name, name.name)) continue;
            if (!laterals_.empty() && ctes_.rend() - entry <= static_cast<long>(laterals_.back().ctes))
                throw refuse("a common table expression from outside of APPLY", name.pos);
            Source source;
            source.alias = alias;
            source.sqlAlias = newAlias("s");
            source.columns = entry->columns;
            const std::string sql = entry->sqlName + " AS " + source.sqlAlias;
            scope.sources.push_back(std::move(source));
            return sql;
        }
    }
    if (name.isTemporary()) return tableSource(target(name), alias, "", scope, nested);
    if (bare) {
        if (ObjectPtr local = host_.localTable(name.name)) {
            plan_.locals.push_back({name.name, local->physical, local->id});
            return tableSource(local, alias, "", scope, nested);
        }
    }
    const std::string& database = name.database.empty() ? database_ : name.database;
    if (isSystemSchema(name.schema) ||
        (name.schema.empty() && isSystemTable(name.name) && !host_.catalog().find(database, name.name))) {
        return systemView(name, alias, scope);
    }
    const ObjectPtr object = host_.catalog().find(database, name.name);
    const bool known = object && (object->type == ObjectType::Table || object->type == ObjectType::View);
    const bool dbo = name.schema.empty() || equalsNoCase(name.schema, "dbo");
    if (!known || !dbo) throw sqlErrorAt(line, 208, {name.text()});
    const std::string exposed = ref.alias.empty() ? object->database : std::string();
    if (object->type == ObjectType::View) return viewSource(object, alias, exposed, scope);
    return tableSource(object, alias, exposed, scope, nested);
}

std::string Emitter::systemView(const ObjectName& name, const std::string& alias, Scope& scope) {
    const std::string& database = name.database.empty() ? database_ : name.database;
    const SystemView* view = findSystemView(name.schema, name.name);
    if (!view || !host_.catalog().hasDatabase(database)) {
        throw sqlErrorAt(static_cast<int>(name.pos.line), 208, {name.text()});
    }
    Source source;
    source.alias = alias;
    source.sqlAlias = newAlias("s");
    for (const SystemColumn& column : view->columns) {
        source.columns.push_back({column.name, quoted(column.name), column.type, false, true, false});
    }
    const std::string sql =
        "(" + systemViewSql(*view, *host_.catalog().databaseName(database)) + ") AS " + source.sqlAlias;
    scope.sources.push_back(std::move(source));
    return sql;
}

void Emitter::addDerived(Scope& scope, const AliasedRef& ref, const std::string& sqlAlias,
                         const std::vector<OutColumn>& columns) {
    if (!ref.columns.empty() && ref.columns.size() != columns.size()) {
        throw sqlErrorAt(static_cast<int>(ref.pos.line), ref.columns.size() < columns.size() ? 8158 : 8159,
                         {ref.alias});
    }
    Source source;
    source.alias = ref.alias;
    source.sqlAlias = sqlAlias;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string& name = ref.columns.empty() ? columns[i].name : ref.columns[i];
        if (name.empty()) {
            throw sqlErrorAt(static_cast<int>(ref.pos.line), 8155, {static_cast<int>(i + 1), ref.alias});
        }
        source.columns.push_back(
            {name, "c" + std::to_string(i + 1), columns[i].type, true, columns[i].nullable, columns[i].identity});
    }
    scope.sources.push_back(std::move(source));
}

std::string Emitter::derivedRef(const DerivedRef& ref, Scope& scope) {
    Wish wish;
    wish.subquery = true;
    const QueryOut out = queryIn(*ref.query, scope.outer, wish);
    const std::string alias = newAlias("s");
    addDerived(scope, ref, alias, out.columns);
    return "(" + out.sql + ") AS " + alias;
}

/// APPLY of a query. SQLite has no lateral queries: a virtual table runs the query's text for each row on the left,
/// and what the query takes from outside are its arguments.
std::string Emitter::lateralRef(const DerivedRef& ref, Scope& scope, bool outerApply) {
    Wish wish;
    wish.subquery = true;
    Lateral lateral;
    lateral.outside = &scope;
    lateral.ctes = ctes_.size();
    laterals_.push_back(lateral);
    std::vector<Slot> slots;
    std::swap(plan_.slots, slots);
    ++inline_;
    const QueryOut out = queryIn(*ref.query, &scope, wish);
    --inline_;
    std::swap(plan_.slots, slots);
    laterals_.pop_back();
    if (out.columns.size() > kLateralColumnsMax || slots.size() > kLateralArgumentsMax)
        throw refuse("APPLY of a query with so many columns", ref.pos);
    callsUser_ = true;
    std::string args = quotedText(out.sql);
    for (Slot& slot : slots) {
        args += ", ";
        args += slot.index == kCaptured ? slot.where : "?" + std::to_string(addSlot(std::move(slot)) + 1);
    }
    const std::string alias = newAlias("s");
    addDerived(scope, ref, alias, out.columns);
    for (SourceColumn& column : scope.sources.back().columns) {
        column.collated = !column.type.isText();
        column.nullable = column.nullable || outerApply;
    }
    return "kv_lateral(" + args + ") AS " + alias + (outerApply ? " ON 1" : "");
}

std::string Emitter::valuesRef(const ValuesRef& ref, Scope& scope) {
    std::vector<std::vector<Em>> rows;
    std::vector<OutColumn> columns(ref.rows.front().size());
    Scope* saved = scope_;
    scope_ = scope.outer;
    for (const ExprList& list : ref.rows) {
        if (list.size() != columns.size()) throw sqlErrorAt(static_cast<int>(ref.pos.line), 10709);
        std::vector<Em> row;
        for (std::size_t i = 0; i < list.size(); ++i) {
            row.push_back(ex(*list[i]));
            columns[i].type = commonType(columns[i].type, row.back().type);
        }
        rows.push_back(std::move(row));
    }
    std::string sql;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        sql += r ? " UNION ALL SELECT " : "SELECT ";
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const Em em = to(rows[r][i], columns[i].type, ConvertMode::Cast);
            sql += (i ? ", " : "") + collatedSql(em) + " AS c" + std::to_string(i + 1);
        }
    }
    scope_ = saved;
    const std::string alias = newAlias("s");
    addDerived(scope, ref, alias, columns);
    return "(" + sql + ") AS " + alias;
}

std::string Emitter::viewSource(const ObjectPtr& view, const std::string& alias, const std::string& database,
                                Scope& scope) {
    if (++viewDepth_ > kNestingMax) throw sqlError(217);
    const CreateViewStmt& definition = *host_.moduleOf(*view).view;
    // The view's names mean what they meant where it stands: its database, no variables, no CTEs of the user.
    std::string database2 = view->database;
    std::swap(database_, database2);
    const VariableScope* variables = std::exchange(variables_, nullptr);
    std::vector<CteEntry> outerCtes;
    std::swap(ctes_, outerCtes);
    std::vector<InlineCall> calls;
    std::swap(inlineCalls_, calls);
    Scope* saved = std::exchange(scope_, nullptr);
    ++inline_;
    Wish wish;
    wish.subquery = true;
    const QueryOut out = queryIn(*definition.query, nullptr, wish);
    --inline_;
    scope_ = saved;
    std::swap(inlineCalls_, calls);
    std::swap(ctes_, outerCtes);
    variables_ = variables;
    std::swap(database_, database2);
    --viewDepth_;
    Source source;
    source.alias = alias;
    source.database = database;
    source.sqlAlias = newAlias("s");
    for (std::size_t i = 0; i < view->columns.size() && i < out.columns.size(); ++i) {
        source.columns.push_back({view->columns[i].name, "c" + std::to_string(i + 1), out.columns[i].type, true,
                                  out.columns[i].nullable, false});
    }
    const std::string sql = "(" + out.sql + ") AS " + source.sqlAlias;
    scope.sources.push_back(std::move(source));
    return sql;
}

std::string Emitter::functionRef(const FunctionRef& ref, Scope& scope, bool lateral, bool outerApply) {
    const int line = static_cast<int>(ref.pos.line);
    const std::string& database = ref.name.database.empty() ? database_ : ref.name.database;
    const ObjectPtr function = host_.catalog().find(database, ref.name.name);
    const bool table =
        function && (function->type == ObjectType::TableFunction || function->type == ObjectType::InlineFunction);
    if (!table) throw sqlErrorAt(line, 208, {ref.name.text()});
    AliasedRef named(TableRefKind::Function);
    named.pos = ref.pos;
    named.alias = ref.alias.empty() ? ref.name.name : ref.alias;
    named.columns = ref.columns;
    Scope* saved = scope_;
    scope_ = lateral ? &scope : scope.outer;
    if (function->type == ObjectType::InlineFunction) {
        const std::size_t slots = plan_.slots.size();
        const bool usedBefore = std::exchange(usesColumns_, false);
        userArguments(function, ref.args);
        plan_.slots.resize(slots);
        const bool correlated = std::exchange(usesColumns_, usedBefore);
        if (!correlated) {
            std::string sql = inlineFunction(function, ref, scope);
            scope_ = saved;
            return outerApply ? sql + " ON 1" : sql;
        }
    }
    const std::vector<std::string> args = userArguments(function, ref.args);
    scope_ = saved;
    callsUser_ = true;
    const std::string alias = newAlias("s");
    std::string sql = quoted(host_.tableFunction(function)) + "(";
    for (std::size_t i = 0; i < args.size(); ++i) sql += (i ? ", " : "") + args[i];
    sql += ") AS " + alias;
    std::vector<OutColumn> columns;
    for (const ColumnInfo& column : function->columns) columns.push_back({column.name, column.type, true, false});
    addDerived(scope, named, alias, columns);
    for (SourceColumn& column : scope.sources.back().columns) column.collated = false;
    return outerApply ? sql + " ON 1" : sql;
}

std::string Emitter::inlineFunction(const ObjectPtr& function, const FunctionRef& ref, Scope& scope) {
    if (++viewDepth_ > kNestingMax) throw sqlError(217);
    const Module& module = host_.moduleOf(*function);
    InlineCall frame;
    for (std::size_t i = 0; i < module.parameterCount(); ++i) {
        const Parameter& parameter = (*module.parameters)[i];
        const Type& type = module.variables.at(static_cast<int>(i)).type;
        Em em = ref.args[i]->kind == ExprKind::Default ? constantValue(*parameter.defaultValue, type)
                                                       : to(ex(*ref.args[i]), type, ConvertMode::Variable);
        frame.arguments[lowered(parameter.name)] = asArgument(std::move(em));
    }
    std::string database = function->database;
    std::swap(database_, database);
    std::vector<CteEntry> outerCtes;
    std::swap(ctes_, outerCtes);
    inlineCalls_.push_back(std::move(frame));
    Scope* saved = std::exchange(scope_, nullptr);
    ++inline_;
    Wish wish;
    wish.subquery = true;
    const QueryOut out = queryIn(*module.function->query, nullptr, wish);
    --inline_;
    scope_ = saved;
    inlineCalls_.pop_back();
    std::swap(ctes_, outerCtes);
    std::swap(database_, database);
    --viewDepth_;
    AliasedRef named(TableRefKind::Function);
    named.pos = ref.pos;
    named.alias = ref.alias.empty() ? ref.name.name : ref.alias;
    named.columns = ref.columns;
    const std::string alias = newAlias("s");
    addDerived(scope, named, alias, out.columns);
    return "(" + out.sql + ") AS " + alias;
}

}  // namespace kv::tsql
