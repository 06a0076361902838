// Expressions, queries and table sources as text.

#include "platform/base/Text.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/PrinterCore.h"

namespace kv::tsql {

std::string_view symbolOf(BinaryOp op) {
    static constexpr std::string_view kSymbols[] = {"+", "-", "*", "/", "%", "&", "|", "^"};
    return kSymbols[static_cast<int>(op)];
}

namespace {

std::string_view symbolOf(CompareOp op) {
    static constexpr std::string_view kSymbols[] = {"=", "<>", "<", "<=", ">", ">="};
    return kSymbols[static_cast<int>(op)];
}

}  // namespace

void TreePrinter::type(const TypeName& type) {
    if (!type.userSchema.empty()) {
        name(type.userSchema);
        add(".");
    }
    if (type.name == "cursor") {
        add("cursor");
        return;
    }
    name(type.name);
    if (type.length == TypeName::kNone) return;
    add(type.length == TypeName::kMax ? "(max" : "(" + std::to_string(type.length));
    if (type.scale != TypeName::kNone) add(", " + std::to_string(type.scale));
    add(")");
}

void TreePrinter::literal(const LiteralExpr& e) {
    switch (e.literal) {
        case LiteralKind::Null:
            add("NULL");
            return;
        case LiteralKind::String:
            add("'" + replaceAll(e.text, "'", "''") + "'");
            return;
        case LiteralKind::NString:
            add("N'" + replaceAll(e.text, "'", "''") + "'");
            return;
        case LiteralKind::Money:
            add("$" + e.text);
            return;
        default:
            add(e.text);
    }
}

/// An operand in parentheses, unless it stands for itself.
void TreePrinter::operand(const Expr& e) {
    switch (e.kind) {
        case ExprKind::Literal:
        case ExprKind::Column:
        case ExprKind::Variable:
        case ExprKind::SystemVariable:
        case ExprKind::Cast:
        case ExprKind::Case:
        case ExprKind::Call:
        case ExprKind::Subquery:
            return expr(e);
        default:
            break;
    }
    add("(");
    expr(e);
    add(")");
}

void TreePrinter::exprs(const ExprList& list) {
    commas(list, [&](const ExprPtr& e) { expr(*e); });
}

void TreePrinter::expr(const Expr& e) {
    if (const auto* value = as<LiteralExpr>(&e)) {
        literal(*value);
    } else if (const auto* column = as<ColumnExpr>(&e)) {
        if (!column->qualifier.empty()) {
            object(column->qualifier);
            add(".");
        }
        name(column->column);
    } else if (const auto* variable = as<VariableExpr>(&e)) {
        add(variable->name);
    } else if (const auto* system = as<SystemVariableExpr>(&e)) {
        add(system->name);
    } else if (const auto* part = as<DatePartExpr>(&e)) {
        add(part->part);
    } else if (const auto* unary = as<UnaryExpr>(&e)) {
        add(unary->op == UnaryOp::Minus ? "-" : unary->op == UnaryOp::Plus ? "+" : "~");
        operand(*unary->operand);
    } else if (const auto* binary = as<BinaryExpr>(&e)) {
        operand(*binary->left);
        add(" " + std::string(symbolOf(binary->op)) + " ");
        operand(*binary->right);
    } else if (const auto* collate = as<CollateExpr>(&e)) {
        operand(*collate->operand);
        add(" COLLATE " + collate->collation);
    } else if (const auto* subquery = as<SubqueryExpr>(&e)) {
        add("(");
        query(*subquery->query);
        add(")");
    } else if (const auto* star = as<StarExpr>(&e)) {
        if (!star->qualifier.empty()) object(star->qualifier);
        add(star->qualifier.empty() ? "*" : ".*");
    } else if (e.kind == ExprKind::Default) {
        add("DEFAULT");
    } else if (const auto* choice = as<CaseExpr>(&e)) {
        caseExpr(*choice);
    } else if (const auto* converted = as<CastExpr>(&e)) {
        cast(*converted);
    } else if (const auto* called = as<CallExpr>(&e)) {
        call(*called);
    } else {
        condition(e);
    }
}

void TreePrinter::condition(const Expr& e) {
    const auto negation = [](bool negated) { return negated ? " NOT " : " "; };
    if (const auto* comparison = as<ComparisonExpr>(&e)) {
        operand(*comparison->left);
        add(" " + std::string(symbolOf(comparison->op)) + " ");
        operand(*comparison->right);
    } else if (const auto* quantified = as<QuantifiedExpr>(&e)) {
        operand(*quantified->left);
        add(" " + std::string(symbolOf(quantified->op)) + (quantified->all ? " ALL (" : " ANY ("));
        query(*quantified->query);
        add(")");
    } else if (const auto* logical = as<LogicalExpr>(&e)) {
        operand(*logical->left);
        add(logical->isAnd ? " AND " : " OR ");
        operand(*logical->right);
    } else if (const auto* negated = as<NotExpr>(&e)) {
        add("NOT ");
        operand(*negated->operand);
    } else if (const auto* like = as<LikeExpr>(&e)) {
        operand(*like->value);
        add(negation(like->negated));
        add("LIKE ");
        operand(*like->pattern);
        if (like->escape) {
            add(" ESCAPE ");
            operand(*like->escape);
        }
    } else if (const auto* in = as<InExpr>(&e)) {
        operand(*in->value);
        add(negation(in->negated));
        add("IN (");
        if (in->query) query(*in->query);
        exprs(in->list);
        add(")");
    } else if (const auto* between = as<BetweenExpr>(&e)) {
        operand(*between->value);
        add(negation(between->negated));
        add("BETWEEN ");
        operand(*between->low);
        add(" AND ");
        operand(*between->high);
    } else if (const auto* isNull = as<IsNullExpr>(&e)) {
        operand(*isNull->operand);
        add(isNull->negated ? " IS NOT NULL" : " IS NULL");
    } else if (const auto* exists = as<ExistsExpr>(&e)) {
        add("EXISTS (");
        query(*exists->query);
        add(")");
    }
}

void TreePrinter::caseExpr(const CaseExpr& e) {
    add("CASE");
    if (e.operand) {
        add(" ");
        expr(*e.operand);
    }
    for (const CaseExpr::Arm& a : e.arms) {
        add(" WHEN ");
        expr(*a.when);
        add(" THEN ");
        expr(*a.then);
    }
    if (e.otherwise) {
        add(" ELSE ");
        expr(*e.otherwise);
    }
    add(" END");
}

void TreePrinter::cast(const CastExpr& e) {
    if (e.isTry) add("TRY_");
    if (!e.isConvert) {
        add("CAST(");
        expr(*e.value);
        add(" AS ");
        type(e.type);
        add(")");
        return;
    }
    add("CONVERT(");
    type(e.type);
    add(", ");
    expr(*e.value);
    if (e.style) {
        add(", ");
        expr(*e.style);
    }
    add(")");
}

void TreePrinter::call(const CallExpr& e) {
    // Functions that are reserved words stand without brackets.
    if (e.name.schema.empty()) {
        add(e.name.name);
    } else {
        object(e.name);
    }
    if (e.noParentheses) return;
    add("(");
    if (e.star) add("*");
    if (e.distinct) add("DISTINCT ");
    const bool trimFrom = e.name.schema.empty() && equalsNoCase(e.name.name, "TRIM") && e.args.size() == 2;
    if (trimFrom) {
        expr(*e.args[1]);
        add(" FROM ");
        expr(*e.args[0]);
    } else {
        exprs(e.args);
    }
    add(")");
    if (!e.withinGroup.empty()) {
        add(" WITHIN GROUP (");
        order(e.withinGroup);
        add(")");
    }
    if (e.over) window(*e.over);
}

void TreePrinter::window(const Window& w) {
    add(" OVER (");
    if (!w.partition.empty()) {
        add("PARTITION BY ");
        exprs(w.partition);
        add(" ");
    }
    if (!w.order.empty()) order(w.order);
    if (w.hasFrame) {
        add(w.isRange ? " RANGE BETWEEN " : " ROWS BETWEEN ");
        bound(w.from, w.fromCount);
        add(" AND ");
        bound(w.to, w.toCount);
    }
    add(")");
}

void TreePrinter::bound(FrameBound frame, const ExprPtr& count) {
    if (count) expr(*count);
    switch (frame) {
        case FrameBound::UnboundedPreceding:
            add("UNBOUNDED PRECEDING");
            return;
        case FrameBound::Preceding:
            add(" PRECEDING");
            return;
        case FrameBound::CurrentRow:
            add("CURRENT ROW");
            return;
        case FrameBound::Following:
            add(" FOLLOWING");
            return;
        case FrameBound::UnboundedFollowing:
            add("UNBOUNDED FOLLOWING");
            return;
    }
}

void TreePrinter::order(const std::vector<OrderItem>& items) {
    add("ORDER BY ");
    commas(items, [&](const OrderItem& o) {
        expr(*o.expr);
        if (o.descending) add(" DESC");
    });
}

// ------------------------------------------------------------------------------------------------ queries

void TreePrinter::ctes(const std::vector<Cte>& with) {
    if (with.empty()) return;
    add("WITH ");
    commas(with, [&](const Cte& cte) {
        name(cte.name);
        if (!cte.columns.empty()) names(cte.columns);
        add(" AS (");
        query(*cte.query);
        add(")");
    });
    add(" ");
}

void TreePrinter::query(const Query& q) {
    ctes(q.with);
    body(*q.body);
    if (!q.orderBy.empty()) {
        add(" ");
        order(q.orderBy);
    }
    if (q.offset) {
        add(" OFFSET ");
        operand(*q.offset);
        add(" ROWS");
    }
    if (q.fetch) {
        add(" FETCH NEXT ");
        operand(*q.fetch);
        add(" ROWS ONLY");
    }
    if (!q.forClause.empty()) add(" FOR " + q.forClause);
}

void TreePrinter::body(const QueryBody& queryBody) {
    const auto* set = as<SetBody>(&queryBody);
    if (!set) return select(*as<SelectBody>(&queryBody));
    static constexpr std::string_view kWords[] = {" UNION ", " UNION ALL ", " EXCEPT ", " INTERSECT "};
    arm(*set->left);
    add(kWords[static_cast<int>(set->op)]);
    arm(*set->right);
}

void TreePrinter::arm(const QueryBody& queryBody) {
    if (queryBody.kind == QueryBodyKind::Select) return body(queryBody);
    add("(");
    body(queryBody);
    add(")");
}

void TreePrinter::top(const Top& t) {
    if (!t) return;
    add("TOP (");
    expr(*t.count);
    add(t.percent ? ") PERCENT " : ") ");
    if (t.withTies) add("WITH TIES ");
}

void TreePrinter::item(const SelectItem& i) {
    if (!i.variable.empty()) {
        add(i.variable + " ");
        if (i.compoundOp) add(symbolOf(*i.compoundOp));
        add("= ");
    }
    expr(*i.expr);
    if (i.alias.empty()) return;
    add(" AS ");
    name(i.alias);
}

void TreePrinter::select(const SelectBody& s) {
    add(s.distinct ? "SELECT DISTINCT " : "SELECT ");
    top(s.top);
    commas(s.items, [&](const SelectItem& i) { item(i); });
    if (!s.into.empty()) {
        add(" INTO ");
        object(s.into);
    }
    from(s.from);
    if (s.where) {
        add(" WHERE ");
        expr(*s.where);
    }
    if (!s.groupBy.empty()) {
        add(" GROUP BY ");
        exprs(s.groupBy);
    }
    if (s.having) {
        add(" HAVING ");
        expr(*s.having);
    }
}

void TreePrinter::from(const std::vector<TableRefPtr>& list) {
    if (list.empty()) return;
    add(" FROM ");
    commas(list, [&](const TableRefPtr& r) { ref(*r); });
}

void TreePrinter::ref(const TableRef& r) {
    if (const auto* named = as<NamedRef>(&r)) {
        object(named->name);
        alias(*named);
        if (!named->hints.empty()) {
            add(" WITH (");
            words(named->hints);
            add(")");
        }
    } else if (const auto* variable = as<VariableRef>(&r)) {
        add(variable->name);
        alias(*variable);
    } else if (const auto* function = as<FunctionRef>(&r)) {
        object(function->name);
        add("(");
        exprs(function->args);
        add(")");
        alias(*function);
    } else if (const auto* derived = as<DerivedRef>(&r)) {
        add("(");
        query(*derived->query);
        add(")");
        alias(*derived);
    } else if (const auto* values = as<ValuesRef>(&r)) {
        add("(VALUES ");
        rows(values->rows);
        add(")");
        alias(*values);
    } else if (const auto* joined = as<JoinRef>(&r)) {
        join(*joined);
    }
}

void TreePrinter::alias(const AliasedRef& r) {
    if (r.alias.empty()) return;
    add(" AS ");
    name(r.alias);
    if (!r.columns.empty()) names(r.columns);
}

void TreePrinter::join(const JoinRef& r) {
    static constexpr std::string_view kWords[] = {" INNER JOIN ", " LEFT JOIN ",   " RIGHT JOIN ", " FULL JOIN ",
                                                  " CROSS JOIN ", " CROSS APPLY ", " OUTER APPLY "};
    ref(*r.left);
    add(kWords[static_cast<int>(r.join)]);
    const bool nested = r.right->kind == TableRefKind::Join;
    if (nested) add("(");
    ref(*r.right);
    if (nested) add(")");
    if (!r.on) return;
    add(" ON ");
    expr(*r.on);
}

void TreePrinter::rows(const std::vector<ExprList>& list) {
    commas(list, [&](const ExprList& row) {
        add("(");
        exprs(row);
        add(")");
    });
}

}  // namespace kv::tsql
