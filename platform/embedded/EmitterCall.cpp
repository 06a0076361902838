// The emitter's calls: built-in functions, aggregates, window functions, user functions and what the session answers.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Emitter.h"

namespace kv::tsql {
namespace {

struct SessionValueRow {
    const char* name;
    SystemValue value;
    Type type;
};

/// Functions without arguments whose value is a slot.
const SessionValueRow kSessionValues[] = {
    {"scope_identity", SystemValue::ScopeIdentity, Type::decimal(38, 0)},
    {"xact_state", SystemValue::XactState, Type::of(Kind::SmallInt)},
    {"error_number", SystemValue::ErrorNumber, Type::integer()},
    {"error_message", SystemValue::ErrorMessage, Type::nvarchar(4000)},
    {"error_severity", SystemValue::ErrorSeverity, Type::integer()},
    {"error_state", SystemValue::ErrorState, Type::integer()},
    {"error_line", SystemValue::ErrorLine, Type::integer()},
    {"error_procedure", SystemValue::ErrorProcedure, Type::nvarchar(128)},
    {"db_name", SystemValue::DatabaseName, Type::nvarchar(128)},
    {"db_id", SystemValue::DatabaseId, Type::integer()},
};

struct CatalogFunctionRow {
    const char* name;
    const char* udf;
    int argsMin;
    int argsMax;
    Type first;
    Type second;
    Type result;
};

/// Functions that look into the catalogue: UDFs of the session that get the current database first.
const CatalogFunctionRow kCatalogFunctions[] = {
    {"object_id", "kv_object_id", 1, 2, Type::nvarchar(500), Type::nvarchar(10), Type::integer()},
    {"object_name", "kv_object_name", 1, 2, Type::integer(), Type::integer(), Type::nvarchar(128)},
    {"object_definition", "kv_object_definition", 1, 1, Type::integer(), {}, Type::nvarchar(kMaxLength)},
    {"col_length", "kv_col_length", 2, 2, Type::nvarchar(500), Type::nvarchar(128), Type::of(Kind::SmallInt)},
    {"col_name", "kv_col_name", 2, 2, Type::integer(), Type::integer(), Type::nvarchar(128)},
    {"columnproperty", "kv_columnproperty", 3, 3, Type::integer(), Type::nvarchar(128), Type::integer()},
    {"db_id", "kv_db_id", 1, 1, Type::nvarchar(128), {}, Type::of(Kind::SmallInt)},
    {"db_name", "kv_db_name", 1, 1, Type::integer(), {}, Type::nvarchar(128)},
    {"ident_current", "kv_ident_current", 1, 1, Type::nvarchar(500), {}, Type::decimal(38, 0)},
    {"ident_seed", "kv_ident_seed", 1, 1, Type::nvarchar(500), {}, Type::decimal(38, 0)},
    {"ident_incr", "kv_ident_incr", 1, 1, Type::nvarchar(500), {}, Type::decimal(38, 0)},
    {"schema_id", "kv_schema_id", 0, 1, Type::nvarchar(128), {}, Type::integer()},
    {"schema_name", "kv_schema_name", 0, 1, Type::integer(), {}, Type::nvarchar(128)},
};

const std::pair<const char*, Type> kRankFunctions[] = {
    {"row_number", Type::bigint()},
    {"rank", Type::bigint()},
    {"dense_rank", Type::bigint()},
    {"ntile", Type::bigint()},
};

const char* boundText(FrameBound bound) {
    switch (bound) {
        case FrameBound::UnboundedPreceding:
            return "UNBOUNDED PRECEDING";
        case FrameBound::Preceding:
            return "PRECEDING";
        case FrameBound::CurrentRow:
            return "CURRENT ROW";
        case FrameBound::Following:
            return "FOLLOWING";
        case FrameBound::UnboundedFollowing:
            return "UNBOUNDED FOLLOWING";
    }
    return "";
}

constexpr int kExpansionMax = 4;  ///< functions inside functions that are expanded

/// The value that a function without statements of its own returns: RETURN expression.
const Expr* returnedAlone(const Module& module) {
    const StmtList* list = &module.body();
    while (list->size() == 1) {
        const auto* block = as<BlockStmt>(list->front());
        if (!block) break;
        list = &block->body;
    }
    const auto* last = list->size() == 1 ? as<ReturnStmt>(list->front()) : nullptr;
    return last ? last->value.get() : nullptr;
}

}  // namespace

CallArgument Emitter::argumentOf(const Em& em) const {
    CallArgument arg;
    arg.sql = em.sql;
    arg.type = em.type;
    arg.dirty = em.dirty;
    if (em.literal && em.constant) {
        arg.isLiteral = true;
        arg.literal = em.constant->storage == Storage::Text ? em.constant->text : em.sql;
    }
    return arg;
}

ArgumentAs Emitter::converter(std::vector<Em>& ems) {
    return [this, &ems](std::size_t index, const Type& wanted) {
        Em& em = ems[index];
        return wanted.isNull() ? settle(em).sql : to(em, wanted, ConvertMode::Cast).sql;
    };
}

std::vector<CallArgument> Emitter::arguments(const ExprList& list, std::vector<Em>& ems) {
    std::vector<CallArgument> args;
    for (const ExprPtr& expr : list) {
        if (const auto* part = as<DatePartExpr>(expr)) {
            ems.emplace_back();
            CallArgument arg;
            arg.literal = part->part;
            arg.isLiteral = true;
            args.push_back(std::move(arg));
            continue;
        }
        // Numbers among the arguments are lengths, places and styles: results depend on them, and they vary little.
        const auto* negated = as<UnaryExpr>(expr);
        const auto* number = as<LiteralExpr>(negated ? negated->operand : expr);
        const bool keep = number && number->literal != LiteralKind::String && number->literal != LiteralKind::NString;
        if (keep) ++inline_;
        ems.push_back(ex(*expr));
        if (keep) --inline_;
        args.push_back(argumentOf(ems.back()));
    }
    return args;
}

Em Emitter::call(const CallExpr& expr) {
    const int line = static_cast<int>(expr.pos.line);
    const bool system = expr.name.schema.empty() || equalsNoCase(expr.name.schema, "sys");
    const std::string name = lowered(expr.name.name);
    if (!system || !expr.name.database.empty()) {
        const ObjectPtr function =
            host_.catalog().find(expr.name.database.empty() ? database_ : expr.name.database, expr.name.name);
        if (!function || function->type != ObjectType::ScalarFunction) {
            throw sqlErrorAt(line, 4121, {expr.name.schema, expr.name.text()});
        }
        return userFunction(expr, function);
    }
    if (!expr.withinGroup.empty()) throw refuse("WITHIN GROUP", expr.pos);
    for (const auto& [rank, type] : kRankFunctions) {
        if (name == rank) return windowRank(expr, name);
    }
    if (name == "lag" || name == "lead" || name == "first_value" || name == "last_value")
        return windowValue(expr, name);
    if (isAggregate(name)) return aggregate(expr);
    if (expr.over) throw refuse("the window function " + expr.name.name, expr.pos);
    if (name == "iif") return iif(expr);
    if (std::optional<Em> em = sessionFunction(expr, name)) return *em;
    const FunctionInfo* info = findFunction(name);
    if (!info) throw sqlErrorAt(line, 195, {expr.name.name});
    if (isStatementClock(*info)) {
        const CallResult made = emitCall(*info, {}, [](std::size_t, const Type&) { return std::string(); });
        if (made.type.kind == Kind::DateTime && inline_ == 0) return systemValue(SystemValue::Now, made.type);
        Em em;
        em.sql = made.sql;
        em.type = made.type;
        return em;
    }
    const bool branches = name == "coalesce" || name == "isnull" || name == "choose";
    if (branches) ++conditional_;
    std::vector<Em> ems;
    const std::vector<CallArgument> args = arguments(expr.args, ems);
    CallResult made = emitCall(*info, args, converter(ems));
    if (branches) --conditional_;
    Em em;
    em.sql = std::move(made.sql);
    em.type = made.type;
    em.dirty = made.dirty;
    em.collated = !made.type.isText();
    if (name == "isnull" && ems.size() == 2) em.nullable = ems[0].nullable && ems[1].nullable;
    return em;
}

Em Emitter::iif(const CallExpr& expr) {
    if (expr.args.size() != 3) throw sqlErrorAt(static_cast<int>(expr.pos.line), 174, {"iif", 3});
    const std::string test = cond(*expr.args[0]);
    ++conditional_;
    const Em yes = ex(*expr.args[1]);
    const Em no = ex(*expr.args[2]);
    Em em;
    em.type = commonType(yes.type, no.type);
    em.collated = !em.type.isText();
    em.sql = "CASE WHEN " + test + " THEN " + to(yes, em.type, ConvertMode::Cast).sql + " ELSE " +
             to(no, em.type, ConvertMode::Cast).sql + " END";
    --conditional_;
    return em;
}

std::optional<Em> Emitter::sessionFunction(const CallExpr& expr, const std::string& name) {
    for (const SessionValueRow& row : kSessionValues) {
        if (name == row.name && expr.args.empty()) return systemValue(row.value, row.type);
    }
    for (const CatalogFunctionRow& row : kCatalogFunctions) {
        if (name != row.name) continue;
        const int count = static_cast<int>(expr.args.size());
        if (count < row.argsMin || count > row.argsMax) {
            throw sqlErrorAt(static_cast<int>(expr.pos.line), 174, {name, row.argsMin});
        }
        Em em;
        em.sql = std::string(row.udf) + "(" + quotedText(database_);
        for (int i = 0; i < count; ++i) {
            const Type type = i == 0 ? row.first : i == 1 ? row.second : Type::nvarchar(128);
            em.sql += ", " + to(ex(*expr.args[static_cast<std::size_t>(i)]), type, ConvertMode::Cast).sql;
        }
        em.sql += ")";
        em.type = row.result;
        em.collated = !em.type.isText();
        return em;
    }
    return std::nullopt;
}

Em Emitter::aggregate(const CallExpr& expr) {
    const int line = static_cast<int>(expr.pos.line);
    if (scope_ && !expr.over) {
        if (!scope_->grouping.active) throw sqlErrorAt(line, 147);
        if (scope_->grouping.aggregateDepth > 0) throw sqlErrorAt(line, 130);
    }
    if (!scope_ && !expr.over) throw sqlErrorAt(line, 147);
    std::vector<Em> ems;
    if (!expr.over) ++scope_->grouping.aggregateDepth;
    std::vector<CallArgument> args = arguments(expr.args, ems);
    for (std::size_t i = 0; i < args.size(); ++i) {
        // MIN, MAX and COUNT(DISTINCT) compare: the text must say how.
        if (ems[i].type.isText() && !(ems[i].column && ems[i].collated)) {
            ems[i].sql = "(" + ems[i].sql + ") COLLATE CI";
            args[i].sql = ems[i].sql;
        }
    }
    const AggregateSql made = emitAggregate(expr.name.name, expr.distinct, expr.star, args, converter(ems));
    if (!expr.over) --scope_->grouping.aggregateDepth;
    Em em;
    em.sql = made.before + (expr.over ? over(*expr.over) : "") + made.after;
    em.type = made.type;
    em.collated = !made.type.isText();
    em.nullable = lowered(expr.name.name) != "count";
    return em;
}

Em Emitter::windowRank(const CallExpr& expr, const std::string& name) {
    const int line = static_cast<int>(expr.pos.line);
    if (!expr.over) throw sqlErrorAt(line, 10753, {name});
    if (expr.over->order.empty()) throw sqlErrorAt(line, 4112, {name});
    Em em;
    em.type = Type::bigint();
    em.nullable = false;
    std::string argument;
    if (name == "ntile") {
        if (expr.args.size() != 1) throw sqlErrorAt(line, 174, {name, 1});
        argument = to(ex(*expr.args[0]), Type::bigint(), ConvertMode::Cast).sql;
    } else if (!expr.args.empty()) {
        throw sqlErrorAt(line, 174, {name, 0});
    }
    em.sql = name + "(" + argument + ")" + over(*expr.over);
    return em;
}

/// LAG, LEAD, FIRST_VALUE, LAST_VALUE: a value of another row, by the type of their first argument.
Em Emitter::windowValue(const CallExpr& expr, const std::string& name) {
    const int line = static_cast<int>(expr.pos.line);
    if (!expr.over) throw sqlErrorAt(line, 10753, {name});
    if (expr.over->order.empty()) throw sqlErrorAt(line, 4112, {name});
    const bool shifted = name == "lag" || name == "lead";
    if (expr.args.empty() || expr.args.size() > (shifted ? 3u : 1u)) throw sqlErrorAt(line, 174, {name, 1});
    ++inline_;
    const Em value = settle(ex(*expr.args[0]));
    Em em;
    em.type = value.type;
    em.collated = !em.type.isText();
    em.sql = name + "(" + value.sql;
    if (expr.args.size() > 1) em.sql += ", " + to(ex(*expr.args[1]), Type::bigint(), ConvertMode::Cast).sql;
    if (expr.args.size() > 2) em.sql += ", " + to(ex(*expr.args[2]), em.type, ConvertMode::Cast).sql;
    --inline_;
    em.sql += ")" + over(*expr.over);
    return em;
}

std::string Emitter::over(const Window& window) {
    std::string sql = " OVER (";
    ++inline_;
    for (std::size_t i = 0; i < window.partition.size(); ++i) {
        sql += (i ? ", " : "PARTITION BY ") + collatedSql(settle(ex(*window.partition[i])));
    }
    for (std::size_t i = 0; i < window.order.size(); ++i) {
        if (i == 0 && !window.partition.empty()) sql += " ";
        const Expr& key = *window.order[i].expr;
        // ORDER BY (SELECT NULL): no order is wanted, and a constant says so to SQLite.
        sql += (i ? ", " : "ORDER BY ") + (key.kind == ExprKind::Subquery ? "NULL" : collatedSql(settle(ex(key))));
        if (window.order[i].descending) sql += " DESC";
    }
    if (window.hasFrame) {
        const auto bound = [&](FrameBound kind, const ExprPtr& count) {
            return (count ? to(ex(*count), Type::bigint(), ConvertMode::Cast).sql + " " : "") + boundText(kind);
        };
        sql += window.isRange ? " RANGE BETWEEN " : " ROWS BETWEEN ";
        sql += bound(window.from, window.fromCount) + " AND " + bound(window.to, window.toCount);
    }
    --inline_;
    return sql + ")";
}

std::vector<std::string> Emitter::userArguments(const ObjectPtr& function, const ExprList& args) {
    const Module& module = host_.moduleOf(*function);
    const std::string shown = "dbo." + function->name;
    if (args.size() < module.parameterCount()) throw sqlError(313, {shown});
    if (args.size() > module.parameterCount()) throw sqlError(8144, {shown});
    std::vector<std::string> list;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const Type& type = module.variables.at(static_cast<int>(i)).type;
        if (args[i]->kind == ExprKind::Default) {
            const ExprPtr& value = (*module.parameters)[i].defaultValue;
            if (!value) throw sqlError(201, {function->name, (*module.parameters)[i].name});
            list.push_back(constantValue(*value, type).sql);
            continue;
        }
        list.push_back(to(ex(*args[i]), type, ConvertMode::Variable).sql);
    }
    return list;
}

/// What stands for a parameter inside a function's text: a value like any other.
Em Emitter::asArgument(Em em) {
    em.slot = -1;
    em.column = false;
    em.collated = !em.type.isText();
    em.literal = nullptr;
    return em;
}

/// A call with constants of a function that only returns an expression becomes that expression: SQLite then plans it
/// with the statement around it. Null where the call stays a call.
std::optional<Em> Emitter::expanded(const CallExpr& expr, const ObjectPtr& function) {
    const Module& module = host_.moduleOf(*function);
    const Expr* value = returnedAlone(module);
    const bool plain = std::all_of(expr.args.begin(), expr.args.end(), [](const ExprPtr& arg) {
        return arg->kind == ExprKind::Literal || arg->kind == ExprKind::Variable;
    });
    if (!value || !plain || !expansion_ || viewDepth_ >= kExpansionMax) return std::nullopt;
    if (expr.args.size() != module.parameterCount()) return std::nullopt;
    InlineCall frame;
    for (std::size_t i = 0; i < expr.args.size(); ++i) {
        const VariableInfo& parameter = module.variables.at(static_cast<int>(i));
        frame.arguments[lowered(parameter.name)] =
            asArgument(to(ex(*expr.args[i]), parameter.type, ConvertMode::Variable));
    }
    std::string database = function->database;
    std::vector<CteEntry> outerCtes;
    std::swap(database_, database);
    std::swap(ctes_, outerCtes);
    inlineCalls_.push_back(std::move(frame));
    Scope* saved = std::exchange(scope_, nullptr);
    ++viewDepth_;
    ++inline_;
    Em em = to(ex(*value), module.returns, ConvertMode::Variable);
    --inline_;
    --viewDepth_;
    scope_ = saved;
    inlineCalls_.pop_back();
    std::swap(ctes_, outerCtes);
    std::swap(database_, database);
    em = asArgument(std::move(em));
    em.sql = "(" + em.sql + ")";
    em.constant.reset();
    em.nullable = true;
    return em;
}

Em Emitter::userFunction(const CallExpr& expr, const ObjectPtr& function) {
    if (std::optional<Em> em = expanded(expr, function)) return *em;
    const std::vector<std::string> list = userArguments(function, expr.args);
    callsUser_ = true;
    Em em;
    em.sql = quoted(host_.scalarFunction(function)) + "(";
    for (std::size_t i = 0; i < list.size(); ++i) em.sql += (i ? ", " : "") + list[i];
    em.sql += ")";
    em.type = host_.moduleOf(*function).returns;
    em.collated = !em.type.isText();
    return em;
}

}  // namespace kv::tsql
