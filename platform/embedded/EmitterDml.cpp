// The emitter's INSERT: columns, values, defaults and counters of identity columns.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Emitter.h"

namespace kv::tsql {

std::string Emitter::columnWhere(const Object& table, const ColumnInfo& column) {
    const std::string name = table.temporary ? table.name : table.database + ".dbo." + table.name;
    return name + "." + column.name;
}

Em Emitter::defaultOf(const ColumnInfo& column, const Object& table) {
    // A default is the table's own text: no variables and no columns of the statement around it.
    const VariableScope* variables = std::exchange(variables_, nullptr);
    Scope* scope = std::exchange(scope_, nullptr);
    std::vector<InlineCall> calls;
    std::swap(calls, inlineCalls_);
    ++inline_;
    Em em = to(ex(host_.expressionOf(column.defaultText, false)), column.type, ConvertMode::Column,
               columnWhere(table, column));
    --inline_;
    std::swap(calls, inlineCalls_);
    scope_ = scope;
    variables_ = variables;
    return em;
}

Em Emitter::columnValue(const Expr& expr, const Object& table, const ColumnInfo& column) {
    if (expr.kind == ExprKind::Default) {
        if (!column.defaultText.empty()) return defaultOf(column, table);
        Em em;
        em.sql = "NULL";
        return em;
    }
    return to(ex(expr), column.type, ConvertMode::Column, columnWhere(table, column));
}

Emitter::Target Emitter::insertTarget(const InsertStmt& statement, DmlPlan& out) {
    Target result;
    result.table = target(statement.target, true);
    if (result.table->type == ObjectType::View) result.table = baseOfView(*result.table, statement.target);
    out.target = result.table;
    const Object& table = *result.table;
    if (statement.defaultValues) return result;
    if (statement.columns.empty()) {
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            if (!table.columns[i].identity) result.columns.push_back(static_cast<int>(i));
        }
        return result;
    }
    result.listed = true;
    for (std::size_t i = 0; i < statement.columns.size(); ++i) {
        const int line =
            static_cast<int>(statement.columnPos.empty() ? statement.pos.line : statement.columnPos[i].line);
        const int index = table.columnIndex(statement.columns[i]);
        if (index < 0) throw sqlErrorAt(line, 207, {statement.columns[i]});
        if (std::find(result.columns.begin(), result.columns.end(), index) != result.columns.end()) {
            throw sqlErrorAt(line, 264, {statement.columns[i]});
        }
        if (table.columns[static_cast<std::size_t>(index)].identity) out.explicitIdentity = true;
        result.columns.push_back(index);
    }
    return result;
}

std::vector<std::pair<std::string, Em>> Emitter::missing(const Target& insertTarget) {
    std::vector<std::pair<std::string, Em>> list;
    const Object& table = *insertTarget.table;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const ColumnInfo& column = table.columns[i];
        const auto at = std::find(insertTarget.columns.begin(), insertTarget.columns.end(), static_cast<int>(i));
        if (at != insertTarget.columns.end()) continue;
        if (column.identity && !column.plainIdentity()) {
            Em em;
            em.sql = "kv_next_identity(" + std::to_string(table.id) + ")";
            list.emplace_back(quoted(column.name), std::move(em));
        } else if (!column.identity && !column.defaultText.empty()) {
            list.emplace_back(quoted(column.name), defaultOf(column, table));
        }
    }
    return list;
}

std::string Emitter::insertValues(const InsertStmt& statement, const Target& insertTarget) {
    const int line = static_cast<int>(statement.pos.line);
    const Object& table = *insertTarget.table;
    std::string sql;
    for (std::size_t r = 0; r < statement.rows.size(); ++r) {
        const ExprList& row = statement.rows[r];
        if (row.size() != insertTarget.columns.size()) {
            const bool withIdentity = table.identityColumn() && row.size() == table.columns.size();
            if (!insertTarget.listed && withIdentity) throw sqlErrorAt(line, 8101, {table.name});
            if (!insertTarget.listed) throw sqlErrorAt(line, 213);
            throw sqlErrorAt(line, row.size() < insertTarget.columns.size() ? 109 : 110);
        }
        sql += r ? ", (" : "(";
        for (std::size_t i = 0; i < row.size(); ++i) {
            const ColumnInfo& column = table.columns[static_cast<std::size_t>(insertTarget.columns[i])];
            sql += (i ? ", " : "") + columnValue(*row[i], table, column).sql;
        }
        sql += "\1)";
    }
    return sql;
}

std::string Emitter::insertQuery(const InsertStmt& statement, const Target& insertTarget) {
    const int line = static_cast<int>(statement.pos.line);
    const Object& table = *insertTarget.table;
    std::vector<Type> types;
    std::vector<std::string> where;
    for (const int index : insertTarget.columns) {
        const ColumnInfo& column = table.columns[static_cast<std::size_t>(index)];
        types.push_back(column.type);
        where.push_back(columnWhere(table, column));
    }
    Wish wish;
    wish.types = &types;
    wish.where = &where;
    wish.mode = ConvertMode::Column;
    QueryOut out = queryIn(*statement.query, nullptr, wish);
    if (out.columns.size() != types.size()) {
        if (!insertTarget.listed) throw sqlErrorAt(line, 213);
        throw sqlErrorAt(line, out.columns.size() < types.size() ? 120 : 121);
    }
    return out.sql;
}

void Emitter::insert(const InsertStmt& statement, DmlPlan& out) {
    if (statement.top) throw refuse("TOP in INSERT", statement.pos);
    const std::string with = ctes(statement.with);
    const Target insertTarget = this->insertTarget(statement, out);
    const Object& table = *insertTarget.table;
    std::string columns;
    for (const int index : insertTarget.columns) {
        columns += (columns.empty() ? "" : ", ") + quoted(table.columns[static_cast<std::size_t>(index)].name);
    }
    const auto others = missing(insertTarget);
    std::string extra;
    for (const auto& [name, em] : others) {
        columns += (columns.empty() ? "" : ", ") + name;
        extra += ", " + em.sql;
    }
    const std::string name = (table.temporary ? "temp." : "main.") + quoted(table.physical);
    std::string sql = "INSERT INTO " + name;
    if (statement.defaultValues || (!statement.rows.empty() && columns.empty())) {
        sql += others.empty() ? " DEFAULT VALUES" : "(" + columnNames(others) + ") VALUES (" + extra.substr(2) + ")";
    } else if (!statement.rows.empty()) {
        sql += "(" + columns + ") VALUES " + replaceAll(insertValues(statement, insertTarget), "\1", extra);
    } else {
        std::string query = insertQuery(statement, insertTarget);
        if (callsUser_) {
            // A function that reads the table must not see the rows that this statement adds.
            sql = (with.empty() ? "WITH " : with.substr(0, with.size() - 1) + ", ") + "kv_rows_in AS MATERIALIZED (" +
                  query + ") " + sql + "(" + columns + ") SELECT *" + extra + " FROM kv_rows_in";
            out.main.sql = sql;
            finishInsert(statement, out);
            return;
        }
        if (!extra.empty()) query = "SELECT q.*" + extra + " FROM (" + query + ") AS q";
        sql += "(" + columns + ") " + query;
    }
    out.main.sql = with + sql;
    finishInsert(statement, out);
}

void Emitter::finishInsert(const InsertStmt& statement, DmlPlan& out) {
    if (statement.output) out.main.sql += outputClause(*statement.output, out.target, "inserted", out);
}

std::string Emitter::columnNames(const std::vector<std::pair<std::string, Em>>& list) {
    std::string names;
    for (const auto& [name, em] : list) names += (names.empty() ? "" : ", ") + name;
    return names;
}

void Emitter::insertRows(const InsertStmt& statement, std::size_t columns, DmlPlan& out) {
    const Target insertTarget = this->insertTarget(statement, out);
    if (insertTarget.columns.size() != columns) throw sqlErrorAt(static_cast<int>(statement.pos.line), 213);
    const Object& table = *insertTarget.table;
    std::string names;
    std::string values;
    for (std::size_t i = 0; i < columns; ++i) {
        const ColumnInfo& column = table.columns[static_cast<std::size_t>(insertTarget.columns[i])];
        names += (i ? ", " : "") + quoted(column.name);
        values += (i ? ", ?" : "?") + std::to_string(i + 1);
        out.main.columns.push_back({columnWhere(table, column), column.type, column.nullable, false});
    }
    for (const auto& [name, em] : missing(insertTarget)) {
        names += ", " + name;
        values += ", " + em.sql;
    }
    out.main.sql = "INSERT INTO " + std::string(table.temporary ? "temp." : "main.") + quoted(table.physical) + "(" +
                   names + ") VALUES (" + values + ")";
}

}  // namespace kv::tsql
