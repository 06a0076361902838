// The emitter's UPDATE and DELETE: simple ones stay simple, those with FROM find their rows by row id first.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Emitter.h"

namespace kv::tsql {

ObjectPtr Emitter::baseOfView(const Object& view, const ObjectName& name) {
    const Query& query = *host_.moduleOf(view).view->query;
    const auto* select = as<SelectBody>(query.body.get());
    const auto* base = select && select->from.size() == 1 ? as<NamedRef>(select->from[0].get()) : nullptr;
    if (!base || select->distinct || select->top || !select->groupBy.empty() || select->where) {
        throw refuse("a change through the view " + view.name, name.pos);
    }
    ObjectName of = base->name;
    if (of.database.empty()) of.database = view.database;
    ObjectPtr table = target(of);
    for (const SelectItem& item : select->items) {
        const bool plain = item.expr->kind == ExprKind::Star || item.expr->kind == ExprKind::Column;
        if (!plain || !item.alias.empty()) throw refuse("a change through the view " + view.name, name.pos);
    }
    if (table->columns.size() != view.columns.size()) throw refuse("a change through the view " + view.name, name.pos);
    return table;
}

int Emitter::findTarget(const ObjectName& name, Scope& scope) {
    // An exposed name first; then a table that is there under another name.
    int found = -1;
    for (std::size_t i = 0; i < scope.sources.size(); ++i) {
        if (namesSource(scope.sources[i], name)) return static_cast<int>(i);
    }
    const ObjectPtr object = name.isTemporary() || name.isVariable()
                                 ? host_.localTable(name.name)
                                 : host_.catalog().find(name.database.empty() ? database_ : name.database, name.name);
    if (!object) return -1;
    for (std::size_t i = 0; i < scope.sources.size(); ++i) {
        if (!scope.sources[i].table || scope.sources[i].table->physical != object->physical) continue;
        if (found >= 0) throw sqlErrorAt(static_cast<int>(name.pos.line), 8154, {name.name});
        found = static_cast<int>(i);
    }
    return found;
}

/// The FROM of an UPDATE or DELETE with its target among the sources; `at` is the target's place.
std::string Emitter::fullTarget(const ObjectName& name, const std::vector<TableRefPtr>& refs, Scope& scope, int& at) {
    std::string sql;
    if (!refs.empty()) {
        sql = from(refs, scope);
        at = findTarget(name, scope);
        if (at >= 0) return sql;
    }
    ObjectPtr table = target(name, true);
    const std::string exposed = table->temporary ? "" : table->database;
    if (table->type == ObjectType::View) table = baseOfView(*table, name);
    const std::string own = tableSource(table, name.name, exposed, scope, false);
    at = static_cast<int>(scope.sources.size()) - 1;
    return sql.empty() ? own : own + ", " + sql;
}

Em Emitter::assigned(const Assignment& assignment, const Source& source, const ColumnInfo& column) {
    const Object& table = *source.table;
    if (!assignment.op) return columnValue(*assignment.value, table, column);
    Em left;
    left.sql = source.sqlAlias + "." + quoted(column.name);
    left.type = column.type;
    left.column = true;
    std::vector<Em> ems{left, ex(*assignment.value)};
    const std::vector<CallArgument> args{argumentOf(ems[0]), argumentOf(ems[1])};
    const CallResult made = emitArithmetic(operatorChar(*assignment.op), args, converter(ems));
    Em em;
    em.sql = made.sql;
    em.type = made.type;
    em.dirty = made.dirty;
    em.collated = false;
    return to(em, column.type, ConvertMode::Column, columnWhere(table, column));
}

void Emitter::updateVariables(const UpdateStmt& statement, Scope&, const std::string& fromSql, const std::string& with,
                              DmlPlan& out) {
    // Values that variables take are read before the change; what a column gets at the same time comes back from it.
    std::string list;
    std::string returning;
    const Object& table = *out.target;
    for (const Assignment& a : statement.assignments) {
        if (a.variable.empty()) continue;
        const int index = variables_ ? variables_->find(a.variable) : -1;
        if (index < 0) throw sqlErrorAt(static_cast<int>(a.pos.line), 137, {a.variable});
        const Type& type = variables_->at(index).type;
        if (!a.column.empty()) {
            const ColumnInfo& column = table.columns[static_cast<std::size_t>(table.columnIndex(a.column))];
            Em em;
            em.sql = quoted(column.name);
            em.type = column.type;
            returning += (returning.empty() ? " RETURNING " : ", ") + to(em, type, ConvertMode::Variable).sql;
            out.returnVariables.push_back(index);
        } else {
            list += (list.empty() ? "" : ", ") + to(ex(*a.value), type, ConvertMode::Variable).sql;
            out.beforeVariables.push_back(index);
        }
    }
    if (!list.empty()) {
        out.before.sql = with + "SELECT " + list + " FROM " + fromSql;
        out.before.slots = plan_.slots;
        out.before.locals = plan_.locals;
        out.before.version = plan_.version;
        out.before.database = plan_.database;
    }
    out.main.sql += returning;
}

void Emitter::update(const UpdateStmt& statement, DmlPlan& out) {
    if (!statement.currentOf.empty()) throw refuse("WHERE CURRENT OF", statement.pos);
    const std::string with = ctes(statement.with);
    Scope scope;
    int at = -1;
    std::string fromSql = fullTarget(statement.target, statement.from, scope, at);
    const Source source = scope.sources[static_cast<std::size_t>(at)];
    if (!source.table) throw refuse("a change through a view or query", statement.pos);
    out.target = source.table;
    const Object& table = *source.table;
    scope_ = &scope;
    std::vector<std::pair<std::string, std::string>> sets;
    for (const Assignment& a : statement.assignments) {
        if (a.column.empty()) continue;
        const int line = static_cast<int>(a.pos.line);
        const int index = table.columnIndex(a.column);
        if (index < 0) throw sqlErrorAt(line, 207, {a.column});
        const ColumnInfo& column = table.columns[static_cast<std::size_t>(index)];
        if (column.identity) throw sqlErrorAt(line, 8102, {column.name});
        const std::string name = quoted(column.name);
        if (std::any_of(sets.begin(), sets.end(), [&](const auto& set) { return set.first == name; })) {
            throw sqlErrorAt(line, 264, {a.column});
        }
        sets.emplace_back(name, assigned(a, source, column).sql);
    }
    std::string where;
    if (statement.where) where = " WHERE " + cond(*statement.where);
    const std::string name = (table.temporary ? "temp." : "main.") + quoted(table.physical);
    const bool simple = statement.from.empty() && !statement.top;
    if (sets.empty()) {
        out.main.sql = "SELECT 1 FROM " + fromSql + where;
    } else if (simple) {
        out.main.sql = with + "UPDATE " + name + " AS " + source.sqlAlias + " SET ";
        for (std::size_t i = 0; i < sets.size(); ++i) {
            out.main.sql += (i ? ", " : "") + sets[i].first + " = " + sets[i].second;
        }
        out.main.sql += where;
    } else {
        std::string values;
        std::string match;
        const std::vector<std::string> keys = tableSourceColumns(source.table).rowKey;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const std::string k = "k" + std::to_string(i);
            values += (i ? ", " : "") + source.sqlAlias + "." + source.rowKey[i] + " AS " + k;
            match += (i ? " AND kv_u." : "kv_u.") + keys[i] + " = kv_j." + k;
        }
        out.main.sql = with + "UPDATE " + name + " AS kv_u SET ";
        for (std::size_t i = 0; i < sets.size(); ++i) {
            const std::string v = "v" + std::to_string(i);
            out.main.sql += (i ? ", " : "") + sets[i].first + " = kv_j." + v;
            values += ", " + sets[i].second + " AS " + v;
        }
        std::string rows = "SELECT " + values + " FROM " + fromSql + where;
        if (statement.top) rows += limit(statement.top, nullptr);
        out.main.sql += " FROM (" + rows + ") AS kv_j WHERE " + match;
    }
    updateVariables(statement, scope, fromSql + where, with, out);
    if (statement.output) out.main.sql += outputClause(*statement.output, source.table, "inserted", out);
    scope_ = nullptr;
}

void Emitter::remove(const DeleteStmt& statement, DmlPlan& out) {
    if (!statement.currentOf.empty()) throw refuse("WHERE CURRENT OF", statement.pos);
    const std::string with = ctes(statement.with);
    Scope scope;
    int at = -1;
    const std::string fromSql = fullTarget(statement.target, statement.from, scope, at);
    const Source source = scope.sources[static_cast<std::size_t>(at)];
    if (!source.table) throw refuse("a change through a view or query", statement.pos);
    out.target = source.table;
    scope_ = &scope;
    std::string where;
    if (statement.where) where = " WHERE " + cond(*statement.where);
    const std::string name = (source.table->temporary ? "temp." : "main.") + quoted(source.table->physical);
    if (statement.from.empty() && !statement.top) {
        out.main.sql = with + "DELETE FROM " + name + " AS " + source.sqlAlias + where;
    } else {
        std::string found;
        for (const std::string& key : source.rowKey) found += (found.empty() ? "" : ", ") + source.sqlAlias + "." + key;
        std::string rows = "SELECT " + found + " FROM " + fromSql + where;
        if (statement.top) rows += limit(statement.top, nullptr);
        out.main.sql = with + "DELETE FROM " + name + " WHERE (" + join(tableSourceColumns(source.table).rowKey, ", ") +
                       ") IN (" + rows + ")";
    }
    if (statement.output) out.main.sql += outputClause(*statement.output, source.table, "deleted", out);
    scope_ = nullptr;
}

/// OUTPUT without INTO: the columns of the one row image that RETURNING knows.
std::string Emitter::outputClause(const OutputClause& clause, const ObjectPtr& table, const std::string& image,
                                  DmlPlan& out) {
    if (!clause.into.empty()) throw refuse("OUTPUT INTO", clause.pos);
    if (!out.returnVariables.empty()) throw refuse("OUTPUT beside @variable = column", clause.pos);
    std::string sql;
    for (const SelectItem& item : clause.items) {
        const auto* column = as<ColumnExpr>(item.expr);
        const auto* star = as<StarExpr>(item.expr);
        const ObjectName* qualifier = column ? &column->qualifier : star ? &star->qualifier : nullptr;
        if (!qualifier || !equalsNoCase(qualifier->name, image)) {
            throw refuse("this item of an OUTPUT clause", clause.pos);
        }
        for (const ColumnInfo& info : table->columns) {
            if (column && !equalsNoCase(info.name, column->column)) continue;
            sql += (sql.empty() ? " RETURNING " : ", ") + quoted(info.name);
            out.output.push_back({item.alias.empty() ? info.name : item.alias, info.type, info.nullable, false});
        }
        if (column && table->columnIndex(column->column) < 0) {
            throw sqlErrorAt(static_cast<int>(item.pos.line), 207, {column->column});
        }
    }
    return sql;
}

}  // namespace kv::tsql
