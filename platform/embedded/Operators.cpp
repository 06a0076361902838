// The operators, CONVERT, LIKE and the aggregates as the emitter writes them for SQLite.

#include <array>

#include "platform/embedded/ConvertStyles.h"
#include "platform/embedded/DateTime.h"
#include "platform/embedded/Functions.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

std::string call(std::string_view name, std::initializer_list<std::string> arguments) {
    std::string sql(name);
    sql += '(';
    bool first = true;
    for (const std::string& argument : arguments) {
        if (!first) sql += ',';
        sql += argument;
        first = false;
    }
    return sql + ")";
}

std::string number(int value) { return std::to_string(value); }

std::string infix(const std::string& left, std::string_view op, const std::string& right) {
    return "(" + left + " " + std::string(op) + " " + right + ")";  // "5--3" would begin a comment
}

/// An operand of arithmetic: text and NULL become numbers of the result's type, numbers stay as they are. Sums of sums
/// stay unrounded until the whole is consumed.
std::string operand(const std::vector<CallArgument>& args, std::size_t i, const ArgumentAs& as, const Type& type,
                    bool keepsDirty) {
    const CallArgument& arg = args[i];
    if (arg.type.isText()) return as(i, type);
    if (keepsDirty && arg.dirty) return arg.sql;
    return as(i, Type{});
}

/// Decimals an operand counts with: text took the type of the other side.
int scaleOf(const std::vector<CallArgument>& args, std::size_t i) {
    const Type& own = args[i].type;
    const Type& other = args[1 - i].type;
    return decimalShape(own.isText() || own.isNull() ? other : own).scale;
}

/// What a text operand becomes: the type of the other side.
Type textTarget(const std::vector<CallArgument>& args, const Type& result) {
    for (const CallArgument& arg : args) {
        if (arg.type.isNumber()) return arg.type.isInteger() ? Type::of(arg.type.kind) : arg.type;
    }
    return result;
}

CallResult exactArithmetic(char op, const std::vector<CallArgument>& args, const ArgumentAs& as, const Type& type) {
    const bool sum = op == '+' || op == '-';
    const Type target = textTarget(args, type);
    const std::string left = operand(args, 0, as, target, sum);
    const std::string right = operand(args, 1, as, target, sum);
    if (sum) return {infix(left, op == '+' ? "+" : "-", right), type, true};
    const std::string scaleA = number(scaleOf(args, 0));
    const std::string scaleB = number(scaleOf(args, 1));
    const std::string scale = number(type.isMoney() ? 4 : type.scale);
    if (op == '*') return {call("dmul", {left, right, scaleA, scaleB, scale}), type, false};
    if (op == '/') return {call("ddiv", {left, right, scaleA, scaleB, scale}), type, false};
    return {call("dmod", {left, right, scaleA, scaleB}), type, false};
}

CallResult integerArithmetic(char op, const std::vector<CallArgument>& args, const ArgumentAs& as, const Type& type) {
    const bool sum = op == '+' || op == '-' || op == '*';
    const std::string left = operand(args, 0, as, type, sum);
    const std::string right = operand(args, 1, as, type, sum);
    switch (op) {
        case '/':
            return {call("idiv", {left, right}), type, false};
        case '%':
            return {call("imod", {left, right}), type, false};
        case '&':
            return {infix(left, "&", right), type, false};
        case '|':
            return {infix(left, "|", right), type, false};
        case '^':
            return {call("t_xor", {left, right}), type, false};
        default:
            return {infix(left, std::string_view(&op, 1), right), type, true};
    }
}

CallResult floatArithmetic(char op, const ArgumentAs& as, const Type& type) {
    const std::string left = as(0, Type::floating());
    const std::string right = as(1, Type::floating());
    if (op == '/') return {call("fdiv", {left, right}), type, false};
    return {infix(left, std::string_view(&op, 1), right), type, false};
}

int dateCode(const Type& type) { return static_cast<int>(type.kind) - static_cast<int>(Kind::Date); }

CallResult dateArithmetic(char op, const std::vector<CallArgument>& args, const ArgumentAs& as, const Type& type) {
    const bool minus = op == '-';
    const auto isMoment = [&](std::size_t i) { return args[i].type.isDate() || args[i].type.isText(); };
    if (isMoment(0) && isMoment(1)) {
        return {call("t_dtsum", {as(0, Type::datetime()), as(1, Type::datetime()), minus ? "-1" : "1"}),
                Type::datetime(), false};
    }
    const std::size_t date = isMoment(0) ? 0 : 1;
    if (date == 1 && minus) {
        return {call("t_dtsum", {as(0, Type::datetime()), as(1, Type::datetime()), "-1"}), Type::datetime(), false};
    }
    const std::string days = as(1 - date, Type{});
    return {call("t_dtadd", {as(date, type), minus ? "-(" + days + ")" : days, number(dateCode(type))}), type, false};
}

CallResult joinTexts(const std::vector<CallArgument>& args, const ArgumentAs& as, const Type& type) {
    return {infix(args[0].type.isNull() ? "NULL" : as(0, Type{}), "||", args[1].type.isNull() ? "NULL" : as(1, Type{})),
            type, false};
}

}  // namespace

CallResult emitArithmetic(char op, const std::vector<CallArgument>& args, const ArgumentAs& as) {
    const Type type = arithmeticType(op, args[0].type, args[1].type);
    if (type.isText()) return joinTexts(args, as, type);
    if (type.isDate()) return dateArithmetic(op, args, as, type);
    if (type.isFloat()) return floatArithmetic(op, as, type);
    if (type.isExact()) return exactArithmetic(op, args, as, type);
    return integerArithmetic(op, args, as, type);
}

CallResult emitNegation(const CallArgument& arg, const ArgumentAs& as) {
    if (arg.type.isNull()) return {"NULL", Type::integer(), false};
    if (!arg.type.isNumber() || arg.type.kind == Kind::Bit) raise(8117, {kindName(arg.type.kind), "minus"});
    // a sum keeps its rounding for later; -0 must not be seen
    const std::string sql = arg.dirty ? arg.sql : as(0, Type{});
    if (arg.type.isExact() && storageOf(arg.type) == Storage::Real) return {"(0.0 - " + sql + ")", arg.type, arg.dirty};
    const Type type = arg.type.kind == Kind::TinyInt ? Type::of(Kind::SmallInt) : arg.type;
    return {"(- " + sql + ")", type, arg.dirty || (type.isInteger() && !arg.isLiteral)};
}

std::string settled(const std::string& sql, const Type& type) {
    if (type.isMoney()) return call("r4", {sql});
    if (type.isDecimal()) return call("rd", {sql, number(type.scale)});
    switch (type.kind) {
        case Kind::TinyInt:
            return call("ck", {sql, "0"});
        case Kind::SmallInt:
            return call("ck", {sql, "1"});
        case Kind::Int:
            return call("ck", {sql, "2"});
        case Kind::BigInt:
            return call("ck", {sql, "3"});
        default:
            return sql;
    }
}

CallResult emitConvert(const Type& target, const CallArgument& value, const ArgumentAs& as,
                       const std::optional<CallArgument>& style, bool tryOnly) {
    requireConvertible(value.type, target, true);
    const Type from = value.type;
    const bool styled = style && (from.isDate() || from.isMoney() || from.isFloat() || from.isBinary() ||
                                  (from.isText() && (target.isDate() || target.isBinary())));
    if (!styled && !tryOnly) return {as(0, target), target, false};
    const std::string sql = value.dirty ? settled(value.sql, from) : as(0, Type{});
    if (from.isNull()) return {"NULL", target, false};
    Conversion conversion{from, target, ConvertMode::Cast, Conversion::kNoStyle, tryOnly, {}};
    if (!styled) return {conversionSql(sql, conversion), target, false};
    if (style->isLiteral && !style->literal.empty()) {
        conversion.style = std::atoi(style->literal.c_str());
        const bool ofDate = (from.isDate() && target.isText()) || (from.isText() && target.isDate());
        if (ofDate && !findStyle(conversion.style)) raise(281, {conversion.style, kindName(from.kind)});
        return {conversionSql(sql, conversion), target, false};
    }
    std::string plain = conversionSql(sql, conversion);  // cv(sql,'spec')
    plain.back() = ',';
    return {"cvs" + plain.substr(2) + style->sql + ")", target, false};
}

std::string emitLike(const CallArgument& text, bool plainColumn, const CallArgument& pattern, const ArgumentAs& as,
                     const CallArgument* escape) {
    const auto side = [&](const CallArgument& arg, std::size_t i) {
        if (arg.type.isBinary()) raise(8116, {kindName(arg.type.kind), static_cast<int>(i) + 1, "like"});
        const bool stays = arg.type.isText() || arg.type.isNull() || arg.type.kind == Kind::UniqueIdentifier;
        return as(i, stays ? Type{} : Type::varchar(60));
    };
    const std::string value = side(text, 0);
    const std::string mask = side(pattern, 1);
    if (escape) return call("t_like", {mask, value, as(2, Type{})});
    const std::string test = call("t_like", {mask, value});
    const bool fixedStart = pattern.isLiteral && !pattern.literal.empty() &&
                            std::string_view("%_[").find(pattern.literal[0]) == std::string_view::npos;
    if (!plainColumn || !fixedStart || !text.type.isText()) return test;
    return "(" + value + ">=t_likelow(" + mask + ") AND " + value + "<t_likehigh(" + mask + ") AND " + test + ")";
}

// ----------------------------------------------------------------------------------------------- aggregates

namespace {

enum class AggregateKind { Count, Sum, Average, Least, Spread, Join };

struct AggregateRow {
    std::string_view name;
    AggregateKind kind;
    std::string_view udf;
};

constexpr std::array<AggregateRow, 11> kAggregates = {{
    {"COUNT", AggregateKind::Count, "count"},
    {"COUNT_BIG", AggregateKind::Count, "count"},
    {"SUM", AggregateKind::Sum, ""},
    {"AVG", AggregateKind::Average, ""},
    {"MIN", AggregateKind::Least, "min"},
    {"MAX", AggregateKind::Least, "max"},
    {"STDEV", AggregateKind::Spread, "t_stdev"},
    {"STDEVP", AggregateKind::Spread, "t_stdevp"},
    {"VAR", AggregateKind::Spread, "t_var"},
    {"VARP", AggregateKind::Spread, "t_varp"},
    {"STRING_AGG", AggregateKind::Join, "group_concat"},
}};

const AggregateRow* aggregateRow(std::string_view name) {
    for (const AggregateRow& row : kAggregates) {
        if (sameWord(row.name, name)) return &row;
    }
    return nullptr;
}

std::string lowerName(std::string_view name) {
    std::string out(name);
    for (char& c : out) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return out;
}

/// A sum takes a dirty sum as it is: its own rounding to units makes it canonical.
std::string summand(const CallArgument& arg, const ArgumentAs& as) {
    return arg.dirty && arg.type.isExact() && decimalShape(arg.type).scale > 0 ? arg.sql : as(0, Type{});
}

/// SUM(DISTINCT) of an exact number: SQLite takes DISTINCT with one argument only, so the sum is made with ten
/// decimals.
std::string distinctSum(const CallArgument& arg, const ArgumentAs& as) {
    const int scale = decimalShape(arg.type).scale;
    if (scale > 10) raise(40001, {"DISTINCT on " + typeName(arg.type)});
    return settled("dsum(DISTINCT " + as(0, Type{}) + ")", arg.type);
}

AggregateSql sumOf(bool distinct, const CallArgument& arg, const ArgumentAs& as) {
    const Type& type = arg.type;
    if (type.isExact() && decimalShape(type).scale > 0) {
        const int scale = decimalShape(type).scale;
        const Type result = type.isMoney() ? Type::money() : Type::decimal(38, scale);
        if (distinct) return {distinctSum(arg, as), "", result};
        return {"dsum(" + summand(arg, as) + "," + number(scale) + ")", "", result};
    }
    const std::string once = distinct ? "sum(DISTINCT " : "sum(";
    if (type.isFloat()) return {once + as(0, Type{}) + ")", "", Type::floating()};
    if (type.isDecimal()) return {"rd(" + once + as(0, Type{}) + ")", ",0)", Type::decimal(38, 0)};
    const bool big = type.kind == Kind::BigInt;
    return {"ck(" + once + as(0, Type{}) + ")", big ? ",3)" : ",2)", big ? Type::bigint() : Type::integer()};
}

AggregateSql averageOf(bool distinct, const CallArgument& arg, const ArgumentAs& as) {
    const Type& type = arg.type;
    if (type.isFloat()) return {(distinct ? "avg(DISTINCT " : "avg(") + as(0, Type{}) + ")", "", Type::floating()};
    int scale = 0;
    int out = 0;
    Type result = type.kind == Kind::BigInt ? Type::bigint() : Type::integer();
    if (type.isMoney()) {
        scale = out = 4;
        result = Type::money();
    } else if (type.isDecimal()) {
        scale = type.scale;
        out = std::max(6, scale);
        result = Type::decimal(38, out);
    }
    if (!distinct) {
        return {"davg(" + summand(arg, as) + "," + number(scale) + "," + number(out) + ")", "", result};
    }
    const std::string count = "count(DISTINCT " + as(0, Type{}) + ")";
    if (out == 0) return {call("idiv", {"sum(DISTINCT " + as(0, Type{}) + ")", count}), "", result};
    return {call("ddiv", {distinctSum(arg, as), count, number(scale), "0", number(out)}), "", result};
}

}  // namespace

bool isAggregate(std::string_view name) { return aggregateRow(name) != nullptr; }

AggregateSql emitAggregate(std::string_view name, bool distinct, bool star, const std::vector<CallArgument>& args,
                           const ArgumentAs& as) {
    const AggregateRow& row = *aggregateRow(name);
    const std::string lower = lowerName(name);
    const Type count = row.name == "COUNT_BIG" ? Type::bigint() : Type::integer();
    if (star) {
        if (row.kind != AggregateKind::Count) raise(102, {"*"});
        return {"count(*)", "", count};
    }
    const std::size_t wanted = row.kind == AggregateKind::Join ? 2 : 1;
    if (args.size() != wanted) raise(174, {lower, static_cast<int>(wanted)});
    const Type& type = args[0].type;
    const std::string once = distinct ? "DISTINCT " : "";
    const bool summed =
        row.kind == AggregateKind::Sum || row.kind == AggregateKind::Average || row.kind == AggregateKind::Spread;
    if (summed && (!type.isNumber() || type.kind == Kind::Bit)) raise(8117, {kindName(type.kind), lower});
    switch (row.kind) {
        case AggregateKind::Count:
            return {"count(" + once + as(0, Type{}) + ")", "", count};
        case AggregateKind::Sum:
            return sumOf(distinct, args[0], as);
        case AggregateKind::Average:
            return averageOf(distinct, args[0], as);
        case AggregateKind::Least:
            if (type.kind == Kind::Bit) raise(8117, {"bit", lower});
            return {std::string(row.udf) + "(" + as(0, Type{}) + ")", "",
                    type.isInteger() ? Type::of(type.kind) : type};
        case AggregateKind::Spread:
            return {std::string(row.udf) + "(" + once + as(0, Type::floating()) + ")", "", Type::floating()};
        case AggregateKind::Join:
            break;
    }
    const bool unicode = type.isUnicode() || !type.isText();
    const std::string text = type.isText() ? as(0, Type{}) : as(0, Type::nvarchar(4000));
    return {"group_concat(" + text + "," + as(1, Type{}) + ")", "",
            Type::text(unicode ? Kind::NVarChar : Kind::VarChar, type.isText() && type.length == kMaxLength ? kMaxLength
                                                                 : unicode                                  ? 4000
                                                                                                            : 8000)};
}

}  // namespace kv::tsql
