#include "platform/print/Expression.h"

#include <cmath>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

using Op = ExprNode::Op;

bool whole(const Value& v) {
    return v.isNull() || std::holds_alternative<std::int64_t>(v.raw()) || std::holds_alternative<bool>(v.raw());
}
bool exact(const Value& v) { return whole(v) || v.isMoney(); }

std::int64_t checkedWide(__int128 units) {
    if (units > INT64_MAX || units < INT64_MIN) throw Error(kErrOverflow, "Expression", "Overflow");
    return static_cast<std::int64_t>(units);
}

__int128 divideEven(__int128 value, __int128 divisor) {
    __int128 quotient = value / divisor;
    const __int128 rest = value % divisor;
    const __int128 twice = (rest < 0 ? -rest : rest) * 2;
    const __int128 size = divisor < 0 ? -divisor : divisor;
    if (twice > size || (twice == size && quotient % 2 != 0)) quotient += (value < 0) == (divisor < 0) ? 1 : -1;
    return quotient;
}

Money moneyOf(const Value& v) {
    if (v.isMoney() || !whole(v)) return v.money();
    return Money::fromUnits(checkedWide(static_cast<__int128>(v.integer()) * Money::kUnitsPerOne));
}

/// Days and dates: a date plus a number of days.
std::optional<Value> datePlus(const Value& a, const Value& b, int sign) {
    if (a.isDate() && !b.isDate()) return Value(a.date().addDays(sign * static_cast<int>(b.integer())));
    if (a.isDate() && b.isDate() && sign < 0) {
        return Value((a.date().dayOnly().msSince1900() - b.date().dayOnly().msSince1900()) / 86'400'000);
    }
    return std::nullopt;
}

Value remainderOf(const Value& a, const Value& b) {
    if (b.number() == 0) throw Error(11, "Expression", "Division by zero");
    if (whole(a) && whole(b)) return b.integer() == -1 ? std::int64_t{0} : a.integer() % b.integer();
    if (exact(a) && exact(b)) return Money::fromUnits(moneyOf(a).units() % moneyOf(b).units());
    return std::fmod(a.number(), b.number());
}

Value negated(const Value& v) {
    if (v.isMoney()) return -v.money();
    if (whole(v)) return checkedWide(-static_cast<__int128>(v.integer()));
    return -v.number();
}

bool compared(Op op, int order) {
    switch (op) {
        case Op::Equal:
            return order == 0;
        case Op::Unequal:
            return order != 0;
        case Op::Less:
            return order < 0;
        case Op::LessEqual:
            return order <= 0;
        case Op::Greater:
            return order > 0;
        default:
            return order >= 0;
    }
}

Value valueOf(const ExprNode& node, const EvalContext& context);

Value branchOf(const ExprNode& node, const EvalContext& context) {
    std::size_t i = 0;
    for (; i + 1 < node.args.size(); i += 2) {
        if (truthOf(valueOf(node.args[i], context))) return valueOf(node.args[i + 1], context);
    }
    return valueOf(node.args[i], context);
}

bool contained(const ExprNode& node, const EvalContext& context) {
    const Value sought = valueOf(node.args[0], context);
    for (std::size_t i = 1; i < node.args.size(); ++i) {
        if (compareValues(sought, valueOf(node.args[i], context)) == 0) return true;
    }
    return false;
}

Value valueOf(const ExprNode& node, const EvalContext& context) {
    const auto arg = [&](std::size_t i) { return valueOf(node.args[i], context); };
    switch (node.op) {
        case Op::Constant:
            return node.constant;
        case Op::Name:
            throw Error(5, "Expression", "'" + node.name + "' is not bound");
        case Op::Parameter:
            return context.parameter(node.slot);
        case Op::Field:
            return context.field(node.source, node.slot);
        case Op::Total:
            return context.total(node.slot);
        case Op::FactOf:
            return context.fact(node.fact);
        case Op::Call: {
            std::vector<Value> values;
            values.reserve(node.args.size());
            for (const ExprNode& a : node.args) values.push_back(valueOf(a, context));
            return node.function->call(values);
        }
        case Op::If:
        case Op::Case:
            return branchOf(node, context);
        case Op::Negate:
            return negated(arg(0));
        case Op::Not:
            return !truthOf(arg(0));
        case Op::Add:
            return addValues(arg(0), arg(1));
        case Op::Subtract:
            return subtractValues(arg(0), arg(1));
        case Op::Multiply:
            return multiplyValues(arg(0), arg(1));
        case Op::Divide:
            return divideValues(arg(0), arg(1));
        case Op::Remainder:
            return remainderOf(arg(0), arg(1));
        case Op::Join:
            return arg(0).text() + arg(1).text();
        case Op::Equal:
        case Op::Unequal:
        case Op::Less:
        case Op::LessEqual:
        case Op::Greater:
        case Op::GreaterEqual:
            return compared(node.op, compareValues(arg(0), arg(1)));
        case Op::And:
            return truthOf(arg(0)) && truthOf(arg(1));
        case Op::Or:
            return truthOf(arg(0)) || truthOf(arg(1));
        case Op::In:
            return contained(node, context);
    }
    return {};
}

bool nodeUses(const ExprNode& node, Fact fact) {
    if (node.op == Op::FactOf && node.fact == fact) return true;
    for (const ExprNode& arg : node.args) {
        if (nodeUses(arg, fact)) return true;
    }
    return false;
}

}  // namespace

void Expression::bindTree(ExprNode& node, NameScope& scope) {
    for (ExprNode& arg : node.args) bindTree(arg, scope);
    switch (node.op) {
        case Op::Name:
            scope.bindName(node);
            break;
        case Op::Parameter:
            node.slot = scope.bindParameter(node);
            break;
        case Op::Total:
            node.slot = scope.bindTotal(node);
            break;
        case Op::FactOf:
            scope.checkFact(node);
            break;
        default:
            break;
    }
}

void Expression::bind(NameScope& scope) {
    if (root_) bindTree(*root_, scope);
}

Value Expression::evaluate(const EvalContext& context) const { return root_ ? valueOf(*root_, context) : Value(); }

std::string Expression::soleName() const { return root_ && root_->op == Op::Name ? root_->name : std::string(); }

bool Expression::uses(Fact fact) const { return root_ && nodeUses(*root_, fact); }

Value addValues(const Value& a, const Value& b) {
    if (auto date = datePlus(a, b, 1)) return *date;
    if (auto date = datePlus(b, a, 1)) return *date;
    if (a.isText() || b.isText()) return a.text() + b.text();
    if (whole(a) && whole(b)) return checkedWide(static_cast<__int128>(a.integer()) + b.integer());
    if (exact(a) && exact(b)) return moneyOf(a) + moneyOf(b);
    return a.number() + b.number();
}

Value subtractValues(const Value& a, const Value& b) {
    if (auto date = datePlus(a, b, -1)) return *date;
    if (whole(a) && whole(b)) return checkedWide(static_cast<__int128>(a.integer()) - b.integer());
    if (exact(a) && exact(b)) return moneyOf(a) - moneyOf(b);
    return a.number() - b.number();
}

Value multiplyValues(const Value& a, const Value& b) {
    if (whole(a) && whole(b)) return checkedWide(static_cast<__int128>(a.integer()) * b.integer());
    if (exact(a) && exact(b)) {
        const __int128 product = static_cast<__int128>(moneyOf(a).units()) * moneyOf(b).units();
        return Money::fromUnits(checkedWide(divideEven(product, Money::kUnitsPerOne)));
    }
    return a.number() * b.number();
}

Value divideValues(const Value& a, const Value& b) {
    if (b.number() == 0) throw Error(11, "Expression", "Division by zero");
    if (a.isMoney() && whole(b)) {
        return Money::fromUnits(checkedWide(divideEven(a.money().units(), b.integer())));
    }
    return a.number() / b.number();
}

int compareValues(const Value& a, const Value& b) {
    const auto order = [](const auto& x, const auto& y) { return x < y ? -1 : y < x ? 1 : 0; };
    if (a.isDate() || b.isDate()) {
        if (a.isNull() || b.isNull()) return order(!a.isNull(), !b.isNull());
        return order(a.date(), b.date());
    }
    if (a.isText() || b.isText()) return order(UCase(a.text()), UCase(b.text()));
    if (whole(a) && whole(b)) return order(a.integer(), b.integer());
    if (exact(a) && exact(b)) return order(moneyOf(a), moneyOf(b));
    return order(a.number(), b.number());
}

bool truthOf(const Value& value) {
    if (value.isText()) return !value.text().empty();
    return value.isDate() || value.number() != 0;
}

}  // namespace kv
