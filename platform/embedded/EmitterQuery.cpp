// The emitter's queries: common table expressions, set operations, and SELECT from its list to its ORDER BY.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Emitter.h"
#include "platform/embedded/Printer.h"

namespace kv::tsql {
namespace {

/// Does an expression call an aggregate of its own level (not one inside a subquery or with OVER)?
class AggregateFinder : public Walker {
public:
    bool found = false;

protected:
    bool enter(const Expr& expr) override {
        const auto* call = as<CallExpr>(&expr);
        if (call && !call->over && call->name.schema.empty() && isAggregate(call->name.name)) found = true;
        return !found;
    }
    bool enter(const Query&) override { return false; }
};

bool hasAggregate(const SelectBody& body, const Query* whole) {
    AggregateFinder finder;
    for (const SelectItem& item : body.items) finder.walk(*item.expr);
    if (body.having) finder.walk(*body.having);
    if (whole) {
        for (const OrderItem& item : whole->orderBy) finder.walk(*item.expr);
    }
    return finder.found;
}

class NameFinder : public Walker {
public:
    explicit NameFinder(const std::string& name) : name_(name) {}
    bool found = false;

protected:
    bool enter(const TableRef& ref) override {
        const auto* named = as<NamedRef>(&ref);
        if (named && named->name.schema.empty() && named->name.database.empty() &&
            equalsNoCase(named->name.name, name_)) {
            found = true;
        }
        return true;
    }

private:
    const std::string& name_;
};

bool mentions(const QueryBody& body, const std::string& name) {
    if (const auto* set = as<SetBody>(&body)) return mentions(*set->left, name) || mentions(*set->right, name);
    NameFinder finder(name);
    for (const TableRefPtr& ref : static_cast<const SelectBody&>(body).from) finder.walk(*ref);
    return finder.found;
}

const char* setText(SetOperator op) {
    switch (op) {
        case SetOperator::Union:
            return " UNION ";
        case SetOperator::UnionAll:
            return " UNION ALL ";
        case SetOperator::Except:
            return " EXCEPT ";
        case SetOperator::Intersect:
            return " INTERSECT ";
    }
    return "";
}

const SelectBody& firstSelect(const QueryBody& body) {
    const QueryBody* at = &body;
    while (const auto* set = as<SetBody>(at)) at = set->left.get();
    return static_cast<const SelectBody&>(*at);
}

std::string nameOf(const SelectItem& item) {
    if (!item.alias.empty()) return item.alias;
    if (const auto* column = as<ColumnExpr>(item.expr)) return column->column;
    return "";
}

}  // namespace

QueryOut Emitter::query(const Query& query, const Wish& wish) {
    QueryOut out = queryIn(query, nullptr, wish);
    out.callsUser = callsUser_;
    plan_.sql = out.sql;
    plan_.columns = out.columns;
    return out;
}

QueryOut Emitter::queryIn(const Query& query, Scope* outer, const Wish& wish) {
    if (!query.forClause.empty()) throw refuse("FOR " + query.forClause, query.pos);
    const auto* plain = as<SelectBody>(query.body.get());
    if (wish.subquery && !query.orderBy.empty() && !query.offset && !(plain && plain->top)) {
        throw sqlErrorAt(static_cast<int>(query.pos.line), 1033);
    }
    const std::size_t ctesBefore = ctes_.size();
    std::string with = ctes(query.with);
    Scope* saved = scope_;
    QueryOut out = body(*query.body, &query, outer, wish);
    scope_ = saved;
    ctes_.resize(ctesBefore);
    out.sql = with + out.sql;
    return out;
}

std::string Emitter::ctes(const std::vector<Cte>& list) {
    std::string sql;
    for (const Cte& entry : list) sql += (sql.empty() ? "WITH RECURSIVE " : ", ") + cte(entry);
    return sql.empty() ? sql : sql + " ";
}

std::string Emitter::cte(const Cte& entry) {
    CteEntry known;
    known.name = entry.name;
    known.sqlName = newAlias("cte");
    const auto learn = [&](const std::vector<OutColumn>& columns) {
        known.columns.clear();
        if (!entry.columns.empty() && entry.columns.size() != columns.size()) {
            throw sqlErrorAt(static_cast<int>(entry.pos.line), entry.columns.size() < columns.size() ? 8158 : 8159,
                             {entry.name});
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::string& name = entry.columns.empty() ? columns[i].name : entry.columns[i];
            if (name.empty()) {
                throw sqlErrorAt(static_cast<int>(entry.pos.line), 8155, {static_cast<int>(i + 1), entry.name});
            }
            known.columns.push_back(
                {name, "c" + std::to_string(i + 1), columns[i].type, true, columns[i].nullable, false});
        }
    };
    Wish wish;
    wish.subquery = true;
    std::string sql;
    const auto* set = as<SetBody>(entry.query->body.get());
    if (set && set->op == SetOperator::UnionAll && !mentions(*set->left, entry.name) &&
        mentions(*set->right, entry.name)) {
        const QueryOut anchor = body(*set->left, nullptr, nullptr, wish);
        learn(anchor.columns);
        ctes_.push_back(known);
        std::vector<Type> types;
        for (const OutColumn& column : anchor.columns) types.push_back(column.type);
        Wish typed = wish;
        typed.types = &types;
        const QueryOut step = body(*set->right, nullptr, nullptr, typed);
        if (step.columns.size() != anchor.columns.size()) {
            throw sqlErrorAt(static_cast<int>(entry.pos.line), 205);
        }
        sql = anchor.sql + " UNION ALL " + step.sql;
    } else {
        const QueryOut out = queryIn(*entry.query, nullptr, wish);
        learn(out.columns);
        ctes_.push_back(known);
        sql = out.sql;
    }
    std::string names;
    for (std::size_t i = 0; i < known.columns.size(); ++i) names += (i ? ", " : "") + known.columns[i].sql;
    return known.sqlName + "(" + names + ") AS (" + sql + ")";
}

QueryOut Emitter::body(const QueryBody& queryBody, const Query* whole, Scope* outer, const Wish& wish) {
    if (const auto* set = as<SetBody>(&queryBody)) return setBody(*set, whole, outer, wish);
    return selectBody(static_cast<const SelectBody&>(queryBody), whole, outer, wish);
}

QueryOut Emitter::setBody(const SetBody& set, const Query* whole, Scope* outer, const Wish& wish) {
    // The left spine is one flat compound for SQLite; set operations on the right stand in parentheses.
    std::vector<std::pair<const QueryBody*, SetOperator>> arms;
    const QueryBody* at = &set;
    while (const auto* inner = as<SetBody>(at)) {
        arms.insert(arms.begin(), {inner->right.get(), inner->op});
        at = inner->left.get();
    }
    arms.insert(arms.begin(), {at, SetOperator::Union});
    // A compound sorts by columns of its list only, and SQLite compares parameters by number: literals stay literal.
    ++inline_;
    Wish plain;
    plain.mayAssign = false;
    const std::size_t slots = plan_.slots.size();
    std::vector<QueryOut> outs;
    for (const auto& [arm, op] : arms) outs.push_back(body(*arm, nullptr, outer, plain));
    std::vector<Type> types;
    for (const OutColumn& column : outs[0].columns) types.push_back(column.type);
    for (const QueryOut& out : outs) {
        if (out.columns.size() != types.size()) throw sqlErrorAt(static_cast<int>(set.pos.line), 205);
        for (std::size_t i = 0; i < types.size(); ++i) types[i] = commonType(types[i], out.columns[i].type);
    }
    if (wish.types && wish.types->size() == types.size()) types = *wish.types;
    plan_.slots.resize(slots);
    Wish typed;
    typed.types = &types;
    typed.mode = wish.mode;
    typed.where = wish.where;
    QueryOut result;
    for (std::size_t i = 0; i < arms.size(); ++i) {
        QueryOut out = body(*arms[i].first, nullptr, outer, typed);
        const auto* select = as<SelectBody>(arms[i].first);
        const bool wrap = !select || select->top;
        if (i) result.sql += setText(arms[i].second);
        result.sql += wrap ? "SELECT * FROM (" + out.sql + ")" : out.sql;
        for (std::size_t c = 0; c < out.columns.size(); ++c) {
            if (i == 0) {
                result.columns.push_back(out.columns[c]);
            } else {
                result.columns[c].nullable = result.columns[c].nullable || out.columns[c].nullable;
            }
            result.columns[c].identity = false;
            result.columns[c].type = types[c];
        }
    }
    --inline_;
    if (whole) {
        std::vector<ItemOut> list;
        const SelectBody& first = firstSelect(set);
        for (std::size_t i = 0; i < result.columns.size(); ++i) {
            ItemOut item;
            item.name = result.columns[i].name;
            item.expr = i < first.items.size() ? first.items[i].expr.get() : nullptr;
            list.push_back(std::move(item));
        }
        result.sql += orderBy(*whole, nullptr, list, nullptr);
        result.sql += limit(Top(), whole);
    }
    return result;
}

void Emitter::star(const StarExpr& expr, Scope& scope, std::vector<ItemOut>& out) {
    bool matched = false;
    for (const Source& source : scope.sources) {
        if (!expr.qualifier.empty() && !namesSource(source, expr.qualifier)) continue;
        matched = true;
        for (const SourceColumn& column : source.columns) {
            ItemOut item;
            item.name = column.name;
            item.em.sql = source.sqlAlias + "." + column.sql;
            item.em.type = column.type;
            item.em.column = true;
            item.em.collated = column.collated;
            item.em.nullable = column.nullable;
            item.em.identity = column.identity;
            if (scope.grouping.active && !scope.grouping.isKey(item.em.sql)) {
                scope.grouping.loose.push_back(source.alias + "." + column.name);
            }
            out.push_back(std::move(item));
        }
    }
    if (!matched) {
        const int line = static_cast<int>(expr.pos.line);
        if (expr.qualifier.empty()) throw sqlErrorAt(line, 263);
        throw sqlErrorAt(line, 107, {expr.qualifier.text()});
    }
}

std::vector<Emitter::ItemOut> Emitter::items(const SelectBody& select, Scope& scope, const Wish& wish) {
    std::vector<ItemOut> list;
    const bool assigns = !select.items.empty() && !select.items[0].variable.empty();
    if (assigns) {
        for (const SelectItem& item : select.items) liveVariables_.push_back(item.variable);
    }
    for (const SelectItem& item : select.items) {
        const int line = static_cast<int>(item.pos.line);
        if (assigns != !item.variable.empty() || (assigns && !wish.mayAssign)) throw sqlErrorAt(line, 141);
        if (const auto* all = as<StarExpr>(item.expr)) {
            star(*all, scope, list);
        } else {
            ItemOut out;
            out.name = nameOf(item);
            out.expr = item.expr.get();
            out.em = ex(*item.expr);
            if (assigns) {
                const int index = variables_ ? variables_->find(item.variable) : -1;
                if (index < 0) throw sqlErrorAt(line, 137, {item.variable});
                out.name = item.variable;
                if (item.compoundOp) out.em = compound(item, index, std::move(out.em));
                out.em = to(out.em, variables_->at(index).type, ConvertMode::Variable);
            }
            list.push_back(std::move(out));
        }
        checkLoose(scope, 8120);
    }
    if (assigns) liveVariables_.clear();
    for (std::size_t i = 0; i < list.size(); ++i) {
        Em& em = list[i].em;
        if (wish.types && i < wish.types->size()) {
            const std::string where = wish.where ? (*wish.where)[i] : std::string();
            em = to(em, (*wish.types)[i], wish.mode, where);
        } else {
            em = settle(em);
        }
    }
    return list;
}

/// @variable += expression: the variable's value of the row before and the expression.
Em Emitter::compound(const SelectItem& item, int index, Em value) {
    Em old;
    old.sql = "kv_variable(" + std::to_string(index) + ")";
    readsLive_ = true;
    old.type = variables_->at(index).type;
    old.collated = false;
    std::vector<Em> ems{std::move(old), std::move(value)};
    const std::vector<CallArgument> args{argumentOf(ems[0]), argumentOf(ems[1])};
    CallResult made = emitArithmetic(operatorChar(*item.compoundOp), args, converter(ems));
    Em em;
    em.sql = std::move(made.sql);
    em.type = made.type;
    em.dirty = made.dirty;
    em.collated = !made.type.isText();
    return em;
}

void Emitter::checkLoose(Scope& scope, int error) {
    if (!scope.grouping.active || scope.grouping.loose.empty()) return;
    const std::string name = scope.grouping.loose.front();
    scope.grouping.loose.clear();
    throw sqlError(error, {name});
}

void Emitter::groupKeys(const SelectBody& select, Scope& scope, std::string& sql) {
    for (std::size_t i = 0; i < select.groupBy.size(); ++i) {
        const Expr& key = *select.groupBy[i];
        if (key.kind == ExprKind::Subquery) throw sqlErrorAt(static_cast<int>(key.pos.line), 144);
        const Em em = settle(ex(key));
        sql += (i ? ", " : " GROUP BY ") + collatedSql(em);
        scope.grouping.keys.push_back(em.sql);
    }
}

QueryOut Emitter::selectBody(const SelectBody& select, const Query* whole, Scope* outer, const Wish& wish) {
    Scope scope;
    scope.outer = outer;
    const std::string fromSql = from(select.from, scope);
    Scope* saved = std::exchange(scope_, &scope);
    const bool aggregates = hasAggregate(select, whole);
    const bool grouped = aggregates || !select.groupBy.empty() || select.having;
    const bool plainKeys = std::all_of(select.groupBy.begin(), select.groupBy.end(),
                                       [](const ExprPtr& key) { return key->kind == ExprKind::Column; });
    // Keys are told from other columns by their text, so that literals inside keys must not be parameters.
    const bool sorted = whole && std::any_of(whole->orderBy.begin(), whole->orderBy.end(), [](const OrderItem& item) {
                            return item.expr->kind != ExprKind::Column && item.expr->kind != ExprKind::Literal;
                        });
    const bool literal = (grouped && !plainKeys) || (select.distinct && sorted);
    if (literal) ++inline_;
    std::string where;
    if (select.where) where = " WHERE " + cond(*select.where);
    std::string groupSql;
    groupKeys(select, scope, groupSql);
    scope.grouping.active = grouped;
    const std::vector<ItemOut> list = items(select, scope, wish);
    std::string having;
    if (select.having) {
        having = (groupSql.empty() ? " GROUP BY NULL HAVING " : " HAVING ") + cond(*select.having);
        checkLoose(scope, 8121);
    }
    QueryOut out;
    out.sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    for (std::size_t i = 0; i < list.size(); ++i) {
        const Em& em = list[i].em;
        if (!wish.exists || grouped) {
            out.sql += (i ? ", " : "") + collatedSql(em) + " AS c" + std::to_string(i + 1);
        }
        out.columns.push_back({list[i].name, em.type, em.nullable, em.identity});
        if (!select.items.empty() && !select.items[0].variable.empty()) out.variables.push_back(list[i].name);
    }
    if (wish.exists && !grouped) out.sql += "1";
    if (std::exchange(readsLive_, false) && whole && !whole->orderBy.empty() && !grouped) {
        out.sql += sortedFirst(select, *whole, scope, fromSql + where);
    } else {
        if (!fromSql.empty()) out.sql += " FROM " + fromSql;
        out.sql += where + groupSql + having;
        if (whole) out.sql += orderBy(*whole, &select, list, &scope);
        out.sql += limit(select.top, whole);
    }
    out.oneRow = (aggregates && select.groupBy.empty()) || (select.from.empty() && !select.where);
    if (const auto* top = as<LiteralExpr>(select.top.count)) out.oneRow = out.oneRow || top->text == "1";
    if (literal) --inline_;
    scope_ = saved;
    return out;
}

/// FROM for a SELECT that goes on from row to row (@v = @v + column): SQLite computes a select list before it sorts,
/// so that the rows are sorted in a query of their own; its LIMIT and the WHERE outside keep SQLite from merging them.
std::string Emitter::sortedFirst(const SelectBody& select, const Query& whole, Scope& scope, const std::string& tail) {
    if (scope.sources.size() != 1 || select.distinct)
        throw refuse("ORDER BY with @variable = @variable + ... over several tables", select.pos);
    const std::string& alias = scope.sources[0].sqlAlias;
    const std::string rows = limit(select.top, &whole);
    return " FROM (SELECT " + alias + ".* FROM " + tail + orderBy(whole, &select, {}, &scope) +
           (rows.empty() ? " LIMIT -1" : rows) + ") AS " + alias + " WHERE kv_rows(1)";
}

std::string Emitter::orderBy(const Query& whole, const SelectBody* select, const std::vector<ItemOut>& list,
                             Scope* scope) {
    std::string sql;
    for (const OrderItem& item : whole.orderBy) {
        const int line = static_cast<int>(item.expr->pos.line);
        std::string key;
        if (const auto* number = as<LiteralExpr>(item.expr); number && number->literal == LiteralKind::Int) {
            const std::string text = literalNow(*number, true);
            const long place = std::stol(text);
            if (place < 1 || place > static_cast<long>(list.size())) throw sqlErrorAt(line, 108, {place});
            key = text;
        }
        const auto* column = as<ColumnExpr>(item.expr);
        for (std::size_t i = 0; key.empty() && column && column->qualifier.empty() && i < list.size(); ++i) {
            if (equalsNoCase(list[i].name, column->column)) key = std::to_string(i + 1);
        }
        if (key.empty() && !scope) {
            const std::string text = print(*item.expr);
            for (std::size_t i = 0; i < list.size() && key.empty(); ++i) {
                if (list[i].expr && equalsNoCase(print(*list[i].expr), text)) key = std::to_string(i + 1);
            }
            if (!key.empty()) pinLiterals(*item.expr);
        }
        if (key.empty() && scope) {
            const Em em = settle(ex(*item.expr));
            for (std::size_t i = 0; i < list.size() && key.empty(); ++i) {
                if (list[i].em.sql == em.sql) key = std::to_string(i + 1);
            }
            checkLoose(*scope, 8127);
            if (key.empty() && select && select->distinct) throw sqlErrorAt(line, 145);
            if (key.empty()) key = collatedSql(em);
        }
        if (key.empty()) throw sqlErrorAt(line, 104);
        sql += (sql.empty() ? " ORDER BY " : ", ") + key + (item.descending ? " DESC" : "");
    }
    return sql;
}

void Emitter::pinLiterals(const Expr& expr) {
    class Pinner : public Walker {
    public:
        explicit Pinner(EmitHost& host) : host_(host) {}

    protected:
        bool enter(const Expr& node) override {
            const auto* literal = as<LiteralExpr>(&node);
            if (literal && literal->index >= 0 && !literal->pinned) host_.pin(literal->index);
            return true;
        }

    private:
        EmitHost& host_;
    };
    Pinner(host_).walk(expr);
}

std::string Emitter::limit(const Top& top, const Query* whole) {
    const Pos& pos = top.pos;
    if (top.withTies) throw refuse("TOP ... WITH TIES", pos);
    const auto count = [&](const Expr& expr) {
        const auto* number = as<LiteralExpr>(&expr);
        Scope* saved = std::exchange(scope_, nullptr);
        Em em = to(ex(expr), Type::bigint(), ConvertMode::Cast);
        scope_ = saved;
        return number ? em.sql : "kv_rows(" + em.sql + ")";
    };
    if (top) {
        const auto* number = as<LiteralExpr>(top.count);
        if (top.percent) {
            if (!number || literalNow(*number, true) != "100") throw refuse("TOP ... PERCENT", pos);
            return "";
        }
        return " LIMIT " + count(*top.count);
    }
    if (whole && whole->offset) {
        const std::string rows = whole->fetch ? count(*whole->fetch) : "-1";
        return " LIMIT " + rows + " OFFSET " + count(*whole->offset);
    }
    return "";
}

}  // namespace kv::tsql
