#include "platform/embedded/Quick.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/base/Text.h"
#include "platform/embedded/Collation.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

enum class Family { Text, Number };

/// A variable, a literal, @@ROWCOUNT and its like, or ISNULL of a variable and a literal.
struct Operand {
    enum class From { Variable, BatchLiteral, Constant, System };
    From from = From::Constant;
    Family family = Family::Text;
    int index = -1;
    SystemValue system = SystemValue::RowCount;
    Datum constant;
    std::optional<Datum> otherwise;  ///< instead of NULL

    Cell value(const QuickValues& values) const {
        switch (from) {
            case From::Variable: {
                const Datum& datum = values.variable(index);
                return Cell::of(datum.isNull() && otherwise ? *otherwise : datum);
            }
            case From::BatchLiteral:
                return {Storage::Text, 0, 0, values.literal(index)};
            case From::Constant:
                return Cell::of(constant);
            case From::System:
                return {Storage::Integer, values.system(system), 0, {}};
        }
        return {};
    }
};

struct SystemRow {
    const char* name;
    SystemValue value;
};
const SystemRow kSystemNumbers[] = {
    {"@@rowcount", SystemValue::RowCount},
    {"@@error", SystemValue::Error},
    {"@@trancount", SystemValue::TranCount},
    {"@@fetch_status", SystemValue::FetchStatus},
};

bool isString(LiteralKind kind) { return kind == LiteralKind::String || kind == LiteralKind::NString; }

std::optional<Operand> literalOperand(const LiteralExpr& literal) {
    Operand operand;
    if (isString(literal.literal)) {
        if (literal.index >= 0) {
            operand.from = Operand::From::BatchLiteral;
            operand.index = literal.index;
        } else {
            operand.constant = Datum::of(literal.text);
        }
        return operand;
    }
    // Numbers of a batch change from run to run; those of a module are constants.
    if (literal.literal != LiteralKind::Int || literal.index >= 0) return std::nullopt;
    operand.family = Family::Number;
    operand.constant = literalDatum(literal.literal, literal.text);
    return operand;
}

std::optional<Operand> variableOperand(const VariableExpr& expr, const VariableScope& scope) {
    const int index = scope.find(expr.name);
    if (index < 0 || scope.at(index).table) return std::nullopt;
    const Type& type = scope.at(index).type;
    const bool number = type.isInteger() || type.isMoney();
    if (!number && !type.isText()) return std::nullopt;
    Operand operand;
    operand.from = Operand::From::Variable;
    operand.family = number ? Family::Number : Family::Text;
    operand.index = index;
    return operand;
}

/// ISNULL(@variable, constant), where the constant is a value of the variable's type as it stands.
std::optional<Operand> isNullOperand(const CallExpr& call, const VariableScope& scope) {
    if (!call.name.schema.empty() || !equalsNoCase(call.name.name, "isnull") || call.args.size() != 2) return {};
    const auto* variable = as<VariableExpr>(call.args[0]);
    const auto* literal = as<LiteralExpr>(call.args[1]);
    if (!variable || !literal) return {};
    std::optional<Operand> operand = variableOperand(*variable, scope);
    const std::optional<Operand> other = literalOperand(*literal);
    if (!operand || !other || operand->family != other->family || other->from != Operand::From::Constant) return {};
    const Type& type = scope.at(operand->index).type;
    const bool fits =
        type.isText() ? type.length == kMaxLength || static_cast<int>(charCount(other->constant.text)) <= type.length
                      : type.kind == Kind::Int || type.kind == Kind::BigInt || type.isMoney() ||
                            other->constant.integer == 0 || other->constant.integer == 1;
    if (!fits) return {};
    operand->otherwise = other->constant;
    return operand;
}

std::optional<Operand> operandOf(const Expr& expr, const VariableScope& scope) {
    if (const auto* literal = as<LiteralExpr>(&expr)) return literalOperand(*literal);
    if (const auto* variable = as<VariableExpr>(&expr)) return variableOperand(*variable, scope);
    if (const auto* call = as<CallExpr>(&expr)) return isNullOperand(*call, scope);
    if (const auto* system = as<SystemVariableExpr>(&expr)) {
        for (const SystemRow& row : kSystemNumbers) {
            if (system->name != row.name) continue;
            Operand operand;
            operand.from = Operand::From::System;
            operand.family = Family::Number;
            operand.system = row.value;
            return operand;
        }
    }
    return std::nullopt;
}

int ordered(const Cell& a, const Cell& b) {
    if (a.storage == Storage::Text) return compareTexts(a.text, b.text);
    if (a.storage == Storage::Integer && b.storage == Storage::Integer)
        return (a.integer > b.integer) - (a.integer < b.integer);
    // wide enough for every 64-bit integer and every double
    const auto wide = [](const Cell& cell) -> long double {
        return cell.storage == Storage::Integer ? static_cast<long double>(cell.integer) : cell.real;
    };
    return (wide(a) > wide(b)) - (wide(a) < wide(b));
}

bool holds(CompareOp op, int order) {
    switch (op) {
        case CompareOp::Equal:
            return order == 0;
        case CompareOp::NotEqual:
            return order != 0;
        case CompareOp::Less:
            return order < 0;
        case CompareOp::LessEqual:
            return order <= 0;
        case CompareOp::Greater:
            return order > 0;
        case CompareOp::GreaterEqual:
            return order >= 0;
    }
    return false;
}

Truth truthOf(bool value) { return value ? Truth::True : Truth::False; }
Truth opposite(Truth value) { return value == Truth::Unknown ? value : truthOf(value == Truth::False); }

class Comparison : public QuickCondition {
public:
    Comparison(CompareOp op, Operand left, Operand right) : op_(op), left_(std::move(left)), right_(std::move(right)) {}
    Truth test(const QuickValues& values) const override {
        const Cell left = left_.value(values);
        const Cell right = right_.value(values);
        if (left.storage == Storage::Null || right.storage == Storage::Null) return Truth::Unknown;
        return truthOf(holds(op_, ordered(left, right)));
    }

private:
    CompareOp op_;
    Operand left_;
    Operand right_;
};

class InList : public QuickCondition {
public:
    InList(bool negated, Operand value, std::vector<Operand> list)
        : negated_(negated), value_(std::move(value)), list_(std::move(list)) {}
    Truth test(const QuickValues& values) const override {
        const Cell value = value_.value(values);
        if (value.storage == Storage::Null) return Truth::Unknown;
        bool unknown = false;
        for (const Operand& item : list_) {
            const Cell other = item.value(values);
            if (other.storage == Storage::Null) {
                unknown = true;
            } else if (ordered(value, other) == 0) {
                return truthOf(!negated_);
            }
        }
        return unknown ? Truth::Unknown : truthOf(negated_);
    }

private:
    bool negated_;
    Operand value_;
    std::vector<Operand> list_;
};

class NullTest : public QuickCondition {
public:
    NullTest(bool negated, Operand value) : negated_(negated), value_(std::move(value)) {}
    Truth test(const QuickValues& values) const override {
        return truthOf((value_.value(values).storage == Storage::Null) != negated_);
    }

private:
    bool negated_;
    Operand value_;
};

class Negation : public QuickCondition {
public:
    explicit Negation(std::unique_ptr<QuickCondition> inner) : inner_(std::move(inner)) {}
    Truth test(const QuickValues& values) const override { return opposite(inner_->test(values)); }

private:
    std::unique_ptr<QuickCondition> inner_;
};

class Asked : public QuickCondition {
public:
    explicit Asked(const Expr& condition) : condition_(condition) {}
    Truth test(const QuickValues& values) const override { return values.ask(condition_); }

private:
    const Expr& condition_;  ///< of the tree that this form is kept at
};

class Pair : public QuickCondition {
public:
    Pair(bool isAnd, std::unique_ptr<QuickCondition> left, std::unique_ptr<QuickCondition> right)
        : decisive_(isAnd ? Truth::False : Truth::True), left_(std::move(left)), right_(std::move(right)) {}
    Truth test(const QuickValues& values) const override {
        const Truth left = left_->test(values);
        if (left == decisive_) return left;
        const Truth right = right_->test(values);
        if (right == decisive_) return right;
        return left == Truth::Unknown ? left : right;
    }

private:
    Truth decisive_;  ///< this one alone decides
    std::unique_ptr<QuickCondition> left_;
    std::unique_ptr<QuickCondition> right_;
};

std::unique_ptr<QuickCondition> listTest(const InExpr& expr, const VariableScope& scope) {
    std::optional<Operand> value = expr.query ? std::nullopt : operandOf(*expr.value, scope);
    if (!value) return nullptr;
    std::vector<Operand> list;
    for (const ExprPtr& item : expr.list) {
        std::optional<Operand> operand = operandOf(*item, scope);
        if (!operand || operand->family != value->family) return nullptr;
        list.push_back(std::move(*operand));
    }
    return std::make_unique<InList>(expr.negated, std::move(*value), std::move(list));
}

}  // namespace

std::unique_ptr<QuickCondition> quickCondition(const Expr& condition, const VariableScope& scope) {
    if (const auto* test = as<ComparisonExpr>(&condition)) {
        std::optional<Operand> left = operandOf(*test->left, scope);
        std::optional<Operand> right = operandOf(*test->right, scope);
        if (!left || !right || left->family != right->family) return nullptr;
        return std::make_unique<Comparison>(test->op, std::move(*left), std::move(*right));
    }
    if (const auto* list = as<InExpr>(&condition)) return listTest(*list, scope);
    if (const auto* null = as<IsNullExpr>(&condition)) {
        std::optional<Operand> value = operandOf(*null->operand, scope);
        return value ? std::make_unique<NullTest>(null->negated, std::move(*value)) : nullptr;
    }
    if (const auto* negation = as<NotExpr>(&condition)) {
        std::unique_ptr<QuickCondition> inner = quickCondition(*negation->operand, scope);
        return inner ? std::make_unique<Negation>(std::move(inner)) : nullptr;
    }
    if (const auto* pair = as<LogicalExpr>(&condition)) {
        std::unique_ptr<QuickCondition> left = quickCondition(*pair->left, scope);
        std::unique_ptr<QuickCondition> right = quickCondition(*pair->right, scope);
        if (!left && !right) return nullptr;
        if (!left) left = std::exchange(right, std::make_unique<Asked>(*pair->left));
        if (!right) right = std::make_unique<Asked>(*pair->right);
        return std::make_unique<Pair>(pair->isAnd, std::move(left), std::move(right));
    }
    return nullptr;
}

}  // namespace kv::tsql
