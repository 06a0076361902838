// The emitter's expressions: operands, operators and conditions.

#include "platform/base/Text.h"
#include "platform/embedded/Emitter.h"

namespace kv::tsql {
namespace {

constexpr int kLongText = 8000;  ///< a text literal that is bound may have any length up to this
constexpr int kLongUnicode = 4000;

const char* operatorText(CompareOp op) {
    switch (op) {
        case CompareOp::Equal:
            return "=";
        case CompareOp::NotEqual:
            return "<>";
        case CompareOp::Less:
            return "<";
        case CompareOp::LessEqual:
            return "<=";
        case CompareOp::Greater:
            return ">";
        case CompareOp::GreaterEqual:
            return ">=";
    }
    return "=";
}

struct SystemVariableRow {
    const char* name;
    SystemValue value;
    Type type;
};

const SystemVariableRow kSystemVariables[] = {
    {"@@rowcount", SystemValue::RowCount, Type::integer()},
    {"@@error", SystemValue::Error, Type::integer()},
    {"@@trancount", SystemValue::TranCount, Type::integer()},
    {"@@identity", SystemValue::Identity, Type::decimal(38, 0)},
    {"@@fetch_status", SystemValue::FetchStatus, Type::integer()},
    {"@@nestlevel", SystemValue::NestLevel, Type::integer()},
    {"@@procid", SystemValue::ProcId, Type::integer()},
};

struct ConstantRow {
    const char* name;
    const char* sql;
    Type type;
};

const ConstantRow kSystemConstants[] = {
    {"@@datefirst", "7", Type::integer()},
    {"@@spid", "t_spid()", Type::integer()},
    {"@@servername", "'EMBEDDED'", Type::nvarchar(128)},
    {"@@servicename", "'EMBEDDED'", Type::nvarchar(128)},
    {"@@language", "'us_english'", Type::nvarchar(128)},
    {"@@version", "'Korvane embedded T-SQL engine'", Type::nvarchar(300)},
    {"@@max_precision", "38", Type::of(Kind::TinyInt)},
    {"@@options", "5496", Type::integer()},
    {"@@dbts", "0", Type::bigint()},
};

}  // namespace

Em Emitter::ex(const Expr& expr) {
    // What is a key of the GROUP BY may hold columns that are no keys by themselves.
    const std::size_t looseBefore = scope_ && scope_->grouping.active ? scope_->grouping.loose.size() : 0;
    Em em = exNode(expr);
    if (scope_ && scope_->grouping.active && scope_->grouping.loose.size() > looseBefore &&
        scope_->grouping.isKey(settle(em).sql)) {
        scope_->grouping.loose.resize(looseBefore);
    }
    return em;
}

Em Emitter::exNode(const Expr& expr) {
    switch (expr.kind) {
        case ExprKind::Literal:
            return literal(static_cast<const LiteralExpr&>(expr));
        case ExprKind::Column:
            return column(static_cast<const ColumnExpr&>(expr));
        case ExprKind::Variable:
            return variable(static_cast<const VariableExpr&>(expr));
        case ExprKind::SystemVariable:
            return systemVariable(static_cast<const SystemVariableExpr&>(expr));
        case ExprKind::Unary:
            return unary(static_cast<const UnaryExpr&>(expr));
        case ExprKind::Binary:
            return binary(static_cast<const BinaryExpr&>(expr));
        case ExprKind::Case:
            return caseOf(static_cast<const CaseExpr&>(expr));
        case ExprKind::Cast:
            return cast(static_cast<const CastExpr&>(expr));
        case ExprKind::Call:
            return call(static_cast<const CallExpr&>(expr));
        case ExprKind::Subquery:
            return subquery(static_cast<const SubqueryExpr&>(expr));
        case ExprKind::Collate:
            return ex(*static_cast<const CollateExpr&>(expr).operand);
        case ExprKind::Star:
            throw sqlErrorAt(static_cast<int>(expr.pos.line), 102, {"*"});
        case ExprKind::Default:
            throw sqlErrorAt(static_cast<int>(expr.pos.line), 156, {"DEFAULT"});
        default:
            throw sqlErrorAt(static_cast<int>(expr.pos.line), 102, {"="});
    }
}

Em Emitter::literal(const LiteralExpr& expr) {
    Em em;
    em.literal = &expr;
    if (expr.literal == LiteralKind::Null) {
        em.sql = "NULL";
        return em;
    }
    em.nullable = false;
    const bool text = expr.literal == LiteralKind::String || expr.literal == LiteralKind::NString;
    if (expr.index >= 0 && !expr.pinned && inline_ == 0) {
        em.type = literalType(expr.literal, expr.text);
        if (text) {
            em.type = expr.literal == LiteralKind::NString ? Type::nvarchar(kLongUnicode) : Type::varchar(kLongText);
            em.collated = false;
        }
        Slot slot;
        slot.from = Slot::From::Literal;
        slot.index = expr.index;
        slot.is = em.type;
        em.slot = addSlot(std::move(slot));
        em.sql = "?" + std::to_string(em.slot + 1);
        return em;
    }
    const std::string value = literalNow(expr, true);
    em.type = literalType(expr.literal, value);
    em.constant = literalDatum(expr.literal, value);
    em.sql = datumSql(*em.constant);
    em.collated = !text;
    return em;
}

Em Emitter::column(const ColumnExpr& expr) {
    const FoundColumn found = findColumn(scope_, expr);
    usesColumns_ = true;
    Em em;
    em.sql = found.source->sqlAlias.empty() ? found.column->sql : found.source->sqlAlias + "." + found.column->sql;
    em.type = found.column->type;
    em.column = true;
    em.collated = found.column->collated;
    em.nullable = found.column->nullable;
    em.identity = found.column->identity;
    if (!laterals_.empty()) {
        for (const Scope* s = laterals_.back().outside; s; s = s->outer) {
            if (s == found.scope) return captured(expr, std::move(em));
        }
    }
    Grouping& grouping = found.scope->grouping;
    if (grouping.active && grouping.aggregateDepth == 0 && !grouping.isKey(em.sql)) {
        grouping.loose.push_back(found.source->alias + "." + found.column->name);
    }
    return em;
}

/// A column from outside of a query of APPLY: a parameter, for which the row on the left gives the value.
Em Emitter::captured(const ColumnExpr& expr, Em em) {
    if (laterals_.size() > 1) throw refuse("APPLY inside APPLY with columns from outside", expr.pos);
    std::size_t at = 0;
    while (at < plan_.slots.size() && (plan_.slots[at].index != kCaptured || plan_.slots[at].where != em.sql)) ++at;
    if (at == plan_.slots.size()) {
        Slot slot;
        slot.index = kCaptured;
        slot.where = em.sql;
        addSlot(std::move(slot));
    }
    em.sql = "?" + std::to_string(at + 1);
    em.column = false;
    em.collated = !em.type.isText();
    return em;
}

Em Emitter::variable(const VariableExpr& expr) {
    const int line = static_cast<int>(expr.pos.line);
    if (!inlineCalls_.empty()) {
        const auto& arguments = inlineCalls_.back().arguments;
        const auto at = arguments.find(lowered(expr.name));
        if (at == arguments.end()) throw sqlErrorAt(line, 137, {expr.name});
        return at->second;
    }
    const int index = variables_ ? variables_->find(expr.name) : -1;
    if (index < 0 || variables_->at(index).table) throw sqlErrorAt(line, 137, {expr.name});
    Em em;
    em.type = variables_->at(index).type;
    em.collated = !em.type.isText();
    for (const std::string& live : liveVariables_) {
        if (equalsNoCase(live, expr.name)) {
            em.sql = "kv_variable(" + std::to_string(index) + ")";
            readsLive_ = true;
            return em;
        }
    }
    Slot slot;
    slot.from = Slot::From::Variable;
    slot.index = index;
    slot.is = em.type;
    em.slot = addSlot(std::move(slot));
    em.sql = "?" + std::to_string(em.slot + 1);
    return em;
}

Em Emitter::systemValue(SystemValue value, const Type& type) {
    Em em;
    em.type = type;
    em.collated = !type.isText();
    Slot slot;
    slot.from = Slot::From::System;
    slot.index = static_cast<int>(value);
    slot.is = type;
    em.sql = "?" + std::to_string(addSlot(std::move(slot)) + 1);
    return em;
}

Em Emitter::systemVariable(const SystemVariableExpr& expr) {
    for (const SystemVariableRow& row : kSystemVariables) {
        if (expr.name == row.name) return systemValue(row.value, row.type);
    }
    for (const ConstantRow& row : kSystemConstants) {
        if (expr.name != row.name) continue;
        Em em;
        em.sql = row.sql;
        em.type = row.type;
        em.collated = !row.type.isText();
        return em;
    }
    throw sqlErrorAt(static_cast<int>(expr.pos.line), 137, {expr.name});
}

Em Emitter::unary(const UnaryExpr& expr) {
    const auto* number = as<LiteralExpr>(expr.operand);
    Em operand = ex(*expr.operand);
    if (expr.op == UnaryOp::Plus) return operand;
    if (expr.op == UnaryOp::Minus && number && operand.constant && operand.type.isNumber()) {
        operand.constant->integer = -operand.constant->integer;
        operand.constant->real = -operand.constant->real;
        operand.sql = "(" + datumSql(*operand.constant) + ")";
        return operand;
    }
    std::vector<Em> ems{operand};
    if (expr.op == UnaryOp::Minus) {
        const CallResult made = emitNegation(argumentOf(ems[0]), converter(ems));
        Em em;
        em.sql = made.sql;
        em.type = made.type;
        em.dirty = made.dirty;
        em.nullable = operand.nullable;
        return em;
    }
    if (!operand.type.isInteger()) {
        throw sqlErrorAt(static_cast<int>(expr.pos.line), 8117, {kindName(operand.type.kind), "'~'"});
    }
    Em em;
    em.type = operand.type;
    em.sql = operand.type.kind == Kind::Bit ? "(1 - " + operand.sql + ")" : "(~" + operand.sql + ")";
    return em;
}

Em Emitter::binary(const BinaryExpr& expr) {
    std::vector<Em> ems;
    const bool scaled = expr.op == BinaryOp::Multiply || expr.op == BinaryOp::Divide;
    ems.push_back(ex(*expr.left));
    ems.push_back(ex(*expr.right));
    // The scale of a product or quotient of exact numbers depends on the digits of its literals: they are kept.
    if (scaled && (ems[0].type.isExact() || ems[1].type.isExact())) {
        ++inline_;
        if (ems[0].literal && !ems[0].constant) ems[0] = ex(*expr.left);
        if (ems[1].literal && !ems[1].constant) ems[1] = ex(*expr.right);
        --inline_;
    }
    std::vector<CallArgument> args{argumentOf(ems[0]), argumentOf(ems[1])};
    CallResult made = emitArithmetic(operatorChar(expr.op), args, converter(ems));
    Em em;
    em.sql = std::move(made.sql);
    em.type = made.type;
    em.dirty = made.dirty;
    em.collated = !made.type.isText();
    em.nullable = ems[0].nullable || ems[1].nullable;
    return em;
}

Em Emitter::caseOf(const CaseExpr& expr) {
    std::vector<Em> results;
    std::string head = "CASE";
    std::vector<std::string> whens;
    std::optional<Em> operand;
    Type whenType;
    if (expr.operand) {
        operand = settle(ex(*expr.operand));
        whenType = operand->type;
        std::vector<Em> values;
        for (const CaseExpr::Arm& arm : expr.arms) {
            values.push_back(settle(ex(*arm.when)));
            whenType = commonType(whenType, values.back().type);
        }
        const bool same = whenType.isText() || whenType.isNumber();
        if (!same || operand->type.isText() != whenType.isText()) operand = to(*operand, whenType, ConvertMode::Cast);
        head += " " + collatedSql(*operand);
        for (Em& value : values) {
            const bool fits = value.type.isNull() || (same && value.type.isText() == whenType.isText());
            whens.push_back(fits ? value.sql : to(value, whenType, ConvertMode::Cast).sql);
        }
    } else {
        for (const CaseExpr::Arm& arm : expr.arms) whens.push_back(cond(*arm.when));
    }
    ++conditional_;
    Type type;
    bool nullable = !expr.otherwise;
    for (const CaseExpr::Arm& arm : expr.arms) results.push_back(ex(*arm.then));
    if (expr.otherwise) results.push_back(ex(*expr.otherwise));
    for (const Em& result : results) {
        type = commonType(type, result.type);
        nullable = nullable || result.nullable;
    }
    Em em;
    em.sql = head;
    for (std::size_t i = 0; i < expr.arms.size(); ++i) {
        em.sql += " WHEN " + whens[i] + " THEN " + to(results[i], type, ConvertMode::Cast).sql;
    }
    if (expr.otherwise) em.sql += " ELSE " + to(results.back(), type, ConvertMode::Cast).sql;
    em.sql += " END";
    --conditional_;
    em.type = type;
    em.collated = !type.isText();
    em.nullable = nullable;
    return em;
}

Em Emitter::cast(const CastExpr& expr) {
    const Type target = resolveType(expr.type, TypePlace::Cast);
    std::vector<Em> ems{ex(*expr.value)};
    std::optional<CallArgument> style;
    if (expr.style) {
        ++inline_;
        style = argumentOf(settle(ex(*expr.style)));
        --inline_;
    }
    CallResult made = emitConvert(target, argumentOf(ems[0]), converter(ems), style, expr.isTry);
    Em em;
    em.sql = std::move(made.sql);
    em.type = made.type;
    em.dirty = made.dirty;
    em.collated = !made.type.isText();
    em.nullable = ems[0].nullable || expr.isTry;
    return em;
}

Em Emitter::subquery(const SubqueryExpr& expr) {
    Wish wish;
    wish.subquery = true;
    QueryOut out = queryIn(*expr.query, scope_, wish);
    if (out.columns.size() != 1) throw sqlErrorAt(static_cast<int>(expr.pos.line), 116);
    Em em;
    em.type = out.columns[0].type;
    em.collated = !em.type.isText();
    em.sql = out.oneRow ? "(" + out.sql + ")" : "(SELECT kv_single(c1) FROM (" + out.sql + "))";
    return em;
}

std::string Emitter::cond(const Expr& expr) {
    switch (expr.kind) {
        case ExprKind::Comparison:
            return comparison(static_cast<const ComparisonExpr&>(expr));
        case ExprKind::Logical: {
            const auto& logical = static_cast<const LogicalExpr&>(expr);
            const std::string left = cond(*logical.left);
            return "(" + left + (logical.isAnd ? " AND " : " OR ") + cond(*logical.right) + ")";
        }
        case ExprKind::Not:
            return "(NOT " + cond(*static_cast<const NotExpr&>(expr).operand) + ")";
        case ExprKind::Like:
            return like(static_cast<const LikeExpr&>(expr));
        case ExprKind::In:
            return inList(static_cast<const InExpr&>(expr));
        case ExprKind::Between:
            return between(static_cast<const BetweenExpr&>(expr));
        case ExprKind::IsNull: {
            const auto& test = static_cast<const IsNullExpr&>(expr);
            return "(" + settle(ex(*test.operand)).sql + (test.negated ? " IS NOT NULL)" : " IS NULL)");
        }
        case ExprKind::Exists: {
            Wish wish;
            wish.subquery = true;
            wish.exists = true;
            return "EXISTS (" + queryIn(*static_cast<const ExistsExpr&>(expr).query, scope_, wish).sql + ")";
        }
        case ExprKind::Quantified:
            return quantified(static_cast<const QuantifiedExpr&>(expr));
        default:
            throw sqlErrorAt(static_cast<int>(expr.pos.line), 4145, {"="});
    }
}

std::string Emitter::comparison(const ComparisonExpr& expr) {
    Em left = ex(*expr.left);
    Em right = ex(*expr.right);
    return compare(expr.op, std::move(left), std::move(right));
}

std::string Emitter::compare(CompareOp op, Em left, Em right) {
    left = settle(std::move(left));
    right = settle(std::move(right));
    const bool numbers = left.type.isNumber() && right.type.isNumber();
    const bool texts = left.type.isText() && right.type.isText();
    const bool dates = left.type.isDate() && right.type.isDate();
    if (!numbers && !texts && !dates && !left.type.isNull() && !right.type.isNull()) {
        const Type common = commonType(left.type, right.type);
        left = to(std::move(left), common, ConvertMode::Cast);
        right = to(std::move(right), common, ConvertMode::Cast);
    }
    std::string collation;
    if (left.type.isText() && !(left.column && left.collated) && !(right.column && right.collated)) {
        collation = " COLLATE CI";
    }
    // SQLite takes the left operand's collation first: a column without one must not hide the other's.
    return "(" + left.sql + collation + " " + operatorText(op) + " " + right.sql + ")";
}

std::string Emitter::inList(const InExpr& expr) {
    Em value = settle(ex(*expr.value));
    if (expr.query) return inQuery(value, *expr.query, expr.negated);
    std::vector<Em> list;
    Type common = value.type;
    for (const ExprPtr& item : expr.list) {
        list.push_back(settle(ex(*item)));
        common = commonType(common, list.back().type);
    }
    const auto adapt = [&](const Em& em) {
        const bool alike = (em.type.isNumber() && common.isNumber()) || (em.type.isText() && common.isText());
        return alike ? em : to(em, common, ConvertMode::Cast);
    };
    value = adapt(value);
    std::string sql = "(" + collatedSql(value) + (expr.negated ? " NOT IN (" : " IN (");
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i) sql += ", ";
        sql += adapt(list[i]).sql;
    }
    return sql + "))";
}

std::string Emitter::inQuery(const Em& value, const Query& query, bool negated) {
    Wish wish;
    wish.subquery = true;
    const std::size_t slots = plan_.slots.size();
    QueryOut out = queryIn(query, scope_, wish);
    if (out.columns.size() != 1) throw sqlErrorAt(static_cast<int>(query.pos.line), 116);
    Em left = value;
    const Type& right = out.columns[0].type;
    const bool alike = (left.type.isNumber() && right.isNumber()) || (left.type.isText() && right.isText());
    if (!alike && !left.type.isNull() && !right.isNull()) {
        const std::vector<Type> types{commonType(left.type, right)};
        left = to(left, types[0], ConvertMode::Cast);
        if (needsConversion(right, types[0], ConvertMode::Cast)) {
            plan_.slots.resize(slots);
            wish.types = &types;
            out = queryIn(query, scope_, wish);
        }
    }
    return "(" + collatedSql(left) + (negated ? " NOT IN (" : " IN (") + out.sql + "))";
}

std::string Emitter::between(const BetweenExpr& expr) {
    const Em value = ex(*expr.value);
    Em again = value;
    if (value.slot >= 0) again = ex(*expr.value);
    const std::string low = compare(CompareOp::GreaterEqual, value, ex(*expr.low));
    const std::string high = compare(CompareOp::LessEqual, again, ex(*expr.high));
    return (expr.negated ? "(NOT (" : "((") + low + " AND " + high + "))";
}

std::string Emitter::like(const LikeExpr& expr) {
    std::vector<Em> ems{ex(*expr.value), ex(*expr.pattern)};
    std::vector<CallArgument> args{argumentOf(ems[0]), argumentOf(ems[1])};
    args[1].isLiteral = ems[1].literal != nullptr;
    if (ems[1].literal) args[1].literal = literalNow(*ems[1].literal, false);
    std::optional<CallArgument> escape;
    if (expr.escape) {
        ems.push_back(ex(*expr.escape));
        escape = argumentOf(ems[2]);
    }
    const bool plain = ems[0].column && ems[0].collated;
    const std::string sql = emitLike(args[0], plain, args[1], converter(ems), escape ? &*escape : nullptr);
    return expr.negated ? "(NOT " + sql + ")" : "(" + sql + ")";
}

std::string Emitter::quantified(const QuantifiedExpr& expr) {
    const Em value = settle(ex(*expr.left));
    if (expr.op == CompareOp::Equal && !expr.all) return inQuery(value, *expr.query, false);
    if (expr.op == CompareOp::NotEqual && expr.all) return inQuery(value, *expr.query, true);
    Wish wish;
    wish.subquery = true;
    const QueryOut out = queryIn(*expr.query, scope_, wish);
    if (out.columns.size() != 1) throw sqlErrorAt(static_cast<int>(expr.query->pos.line), 116);
    const std::string alias = newAlias("q");
    Em row;
    row.sql = alias + ".c1";
    row.type = out.columns[0].type;
    row.collated = !row.type.isText();
    // False (of ALL) or true (of ANY) decides alone; then an unknown row; no row at all decides for the other.
    const std::string tests =
        "SELECT " + compare(expr.op, value, std::move(row)) + " AS v FROM (" + out.sql + ") AS " + alias;
    return std::string("(SELECT CASE WHEN ") + (expr.all ? "min(v) = 0 THEN 0" : "max(v) = 1 THEN 1") +
           " WHEN count(*) > count(v) THEN NULL ELSE " + (expr.all ? "1" : "0") + " END FROM (" + tests + "))";
}

}  // namespace kv::tsql
