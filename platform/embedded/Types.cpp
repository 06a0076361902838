#include "platform/embedded/Types.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

struct KindRow {
    Kind kind;
    std::string_view name;
    int rank;  ///< precedence
    Storage storage;
    DataType code;
    int display;  ///< characters as text; 0 where the length says it
};

constexpr std::array<KindRow, 22> kKinds = {{
    {Kind::Null, "int", 0, Storage::Null, DataType::Integer, 11},
    {Kind::Bit, "bit", 12, Storage::Integer, DataType::Boolean, 1},
    {Kind::TinyInt, "tinyint", 13, Storage::Integer, DataType::SmallInt, 3},
    {Kind::SmallInt, "smallint", 14, Storage::Integer, DataType::SmallInt, 6},
    {Kind::Int, "int", 15, Storage::Integer, DataType::Integer, 11},
    {Kind::BigInt, "bigint", 16, Storage::Integer, DataType::BigInt, 20},
    {Kind::Decimal, "numeric", 19, Storage::Real, DataType::Decimal, 40},
    {Kind::SmallMoney, "smallmoney", 17, Storage::Real, DataType::Currency, 12},
    {Kind::Money, "money", 18, Storage::Real, DataType::Currency, 21},
    {Kind::Real, "real", 20, Storage::Real, DataType::Double, 24},
    {Kind::Float, "float", 21, Storage::Real, DataType::Double, 24},
    {Kind::Char, "char", 5, Storage::Text, DataType::Char, 0},
    {Kind::VarChar, "varchar", 6, Storage::Text, DataType::VarChar, 0},
    {Kind::NChar, "nchar", 7, Storage::Text, DataType::VarWChar, 0},
    {Kind::NVarChar, "nvarchar", 8, Storage::Text, DataType::VarWChar, 0},
    {Kind::Binary, "binary", 3, Storage::Blob, DataType::VarChar, 0},
    {Kind::VarBinary, "varbinary", 4, Storage::Blob, DataType::VarChar, 0},
    {Kind::UniqueIdentifier, "uniqueidentifier", 10, Storage::Text, DataType::Guid, 36},
    {Kind::Date, "date", 24, Storage::Text, DataType::Date, 10},
    {Kind::SmallDateTime, "smalldatetime", 25, Storage::Text, DataType::DateTime, 19},
    {Kind::DateTime, "datetime", 26, Storage::Text, DataType::DateTime, 23},
    {Kind::DateTime2, "datetime2", 27, Storage::Text, DataType::DateTime, 27},
}};

const KindRow& rowOf(Kind kind) { return kKinds[static_cast<std::size_t>(kind)]; }

enum class Arguments { None, Length, Decimal, Float, Scale };

struct NameRow {
    std::string_view name;
    Kind kind;
    Arguments arguments;
    int lengthMax;  ///< largest explicit length; negative means the type is always (max)
};

constexpr std::array<NameRow, 34> kNames = {{
    {"bit", Kind::Bit, Arguments::None, 0},
    {"tinyint", Kind::TinyInt, Arguments::None, 0},
    {"smallint", Kind::SmallInt, Arguments::None, 0},
    {"int", Kind::Int, Arguments::None, 0},
    {"integer", Kind::Int, Arguments::None, 0},
    {"bigint", Kind::BigInt, Arguments::None, 0},
    {"decimal", Kind::Decimal, Arguments::Decimal, 0},
    {"dec", Kind::Decimal, Arguments::Decimal, 0},
    {"numeric", Kind::Decimal, Arguments::Decimal, 0},
    {"smallmoney", Kind::SmallMoney, Arguments::None, 0},
    {"money", Kind::Money, Arguments::None, 0},
    {"real", Kind::Real, Arguments::None, 0},
    {"float", Kind::Float, Arguments::Float, 0},
    {"double precision", Kind::Float, Arguments::None, 0},
    {"char", Kind::Char, Arguments::Length, 8000},
    {"character", Kind::Char, Arguments::Length, 8000},
    {"varchar", Kind::VarChar, Arguments::Length, 8000},
    {"char varying", Kind::VarChar, Arguments::Length, 8000},
    {"character varying", Kind::VarChar, Arguments::Length, 8000},
    {"nchar", Kind::NChar, Arguments::Length, 4000},
    {"national char", Kind::NChar, Arguments::Length, 4000},
    {"nvarchar", Kind::NVarChar, Arguments::Length, 4000},
    {"national char varying", Kind::NVarChar, Arguments::Length, 4000},
    {"text", Kind::VarChar, Arguments::None, kMaxLength},
    {"ntext", Kind::NVarChar, Arguments::None, kMaxLength},
    {"sysname", Kind::NVarChar, Arguments::None, 128},
    {"binary", Kind::Binary, Arguments::Length, 8000},
    {"varbinary", Kind::VarBinary, Arguments::Length, 8000},
    {"image", Kind::VarBinary, Arguments::None, kMaxLength},
    {"uniqueidentifier", Kind::UniqueIdentifier, Arguments::None, 0},
    {"date", Kind::Date, Arguments::None, 0},
    {"smalldatetime", Kind::SmallDateTime, Arguments::None, 0},
    {"datetime", Kind::DateTime, Arguments::None, 0},
    {"datetime2", Kind::DateTime2, Arguments::Scale, 7},
}};

std::string lowered(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    }
    return out;
}

Type lengthType(const NameRow& row, std::optional<int> first, std::optional<int> second, TypePlace place) {
    if (second) raise(1001, {*second});
    const int length = first.value_or(place == TypePlace::Cast ? 30 : 1);
    const bool variable = row.kind == Kind::VarChar || row.kind == Kind::NVarChar || row.kind == Kind::VarBinary;
    if (length == kMaxLength && variable) return Type::text(row.kind, kMaxLength);
    if (length < 1) raise(1001, {length});
    if (length > row.lengthMax) raise(131, {length, row.name, row.lengthMax});
    return Type::text(row.kind, length);
}

Type decimalType(std::optional<int> first, std::optional<int> second) {
    const int precision = first.value_or(18);
    const int scale = second.value_or(0);
    if (precision > 38) raise(2750, {precision, 38});
    if (precision < 1) raise(1001, {precision});
    if (scale < 0 || scale > precision) raise(1002, {scale});
    return Type::decimal(precision, scale);
}

/// Cuts a result that passed 38 digits; the whole part is kept as far as possible.
Type fitted(int precision, int scale, int scaleMin) {
    if (precision <= 38) return Type::decimal(precision, scale);
    const int whole = precision - scale;
    const int cut = std::max(38 - whole, std::min(scale, scaleMin));
    return Type::decimal(38, std::min(scale, std::max(0, cut)));
}

Type decimalResult(char op, const Type& left, const Type& right) {
    const DecimalShape a = decimalShape(left);
    const DecimalShape b = decimalShape(right);
    const int wholeA = a.precision - a.scale;
    const int wholeB = b.precision - b.scale;
    const int scaleMax = std::max(a.scale, b.scale);
    if (op == '*') return fitted(a.precision + b.precision + 1, a.scale + b.scale, 6);
    if (op == '/') {
        const int scale = std::max(6, a.scale + b.precision + 1);
        return fitted(wholeA + b.scale + scale, scale, 6);
    }
    if (op == '%') return fitted(std::max(1, std::min(wholeA, wholeB) + scaleMax), scaleMax, 0);
    return fitted(std::max(wholeA, wholeB) + scaleMax + 1, scaleMax, 0);
}

/// The double that prints as the real does: 0.1, not 0.10000000149011612.
double shownReal(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), static_cast<float>(value)).ptr;
    std::from_chars(text.data(), end, value);
    return value;
}

std::string_view operatorName(char op) {
    switch (op) {
        case '+':
            return "add";
        case '-':
            return "subtract";
        case '*':
            return "multiply";
        case '/':
            return "divide";
        case '%':
            return "modulo";
        case '&':
            return "boolean AND";
        case '|':
            return "boolean OR";
        default:
            return "boolean XOR";
    }
}

int summedLength(const Type& a, const Type& b, bool unicode) {
    if (a.length == kMaxLength || b.length == kMaxLength) return kMaxLength;
    return std::min(a.length + b.length, unicode ? 4000 : 8000);
}

Type joined(const Type& a, const Type& b) {
    const bool unicode = a.isUnicode() || b.isUnicode();
    const bool fixed = a.isFixedText() && b.isFixedText();
    const Kind kind = unicode ? (fixed ? Kind::NChar : Kind::NVarChar) : (fixed ? Kind::Char : Kind::VarChar);
    return Type::text(kind, summedLength(a, b, unicode));
}

Type commonText(const Type& a, const Type& b) {
    const bool unicode = a.isUnicode() || b.isUnicode();
    const bool fixed = a.isFixedText() && b.isFixedText();
    const Kind kind = unicode ? (fixed ? Kind::NChar : Kind::NVarChar) : (fixed ? Kind::Char : Kind::VarChar);
    const bool unbounded = a.length == kMaxLength || b.length == kMaxLength;
    return Type::text(kind, unbounded ? kMaxLength : std::max(a.length, b.length));
}

Type commonDecimal(const Type& a, const Type& b) {
    const DecimalShape x = decimalShape(a);
    const DecimalShape y = decimalShape(b);
    const int scale = std::max(x.scale, y.scale);
    return fitted(std::max(x.precision - x.scale, y.precision - y.scale) + scale, scale, 0);
}

bool takesDayNumbers(Kind kind) { return kind == Kind::DateTime || kind == Kind::SmallDateTime; }

Type dateArithmetic(char op, const Type& a, const Type& b) {
    const Type& date = a.isDate() ? a : b;
    const Type& other = a.isDate() ? b : a;
    if (op != '+' && op != '-') raise(8117, {kindName(date.kind), operatorName(op)});
    if (!takesDayNumbers(date.kind)) {
        if (other.isDate() || other.isText()) {
            raise(402, {kindName(a.kind), kindName(b.kind), operatorName(op)});
        }
        if (!other.isNull()) raise(206, {kindName(date.kind), kindName(other.kind)});
        return date;
    }
    if (other.isBinary() || other.kind == Kind::UniqueIdentifier || (other.isDate() && !takesDayNumbers(other.kind))) {
        raise(402, {kindName(a.kind), kindName(b.kind), operatorName(op)});
    }
    return other.isDate() ? Type::datetime() : date;
}

}  // namespace

std::optional<Type> typeByName(std::string_view name, std::optional<int> first, std::optional<int> second,
                               TypePlace place) {
    const std::string wanted = lowered(name);
    const auto row = std::find_if(kNames.begin(), kNames.end(), [&](const NameRow& r) { return r.name == wanted; });
    if (row == kNames.end()) return std::nullopt;
    switch (row->arguments) {
        case Arguments::None:
            if (first) raise(2716, {*first, row->name});
            return Type::text(row->kind, row->lengthMax);
        case Arguments::Length:
            return lengthType(*row, first, second, place);
        case Arguments::Decimal:
            return decimalType(first, second);
        case Arguments::Float:
            if (second || (first && (*first < 1 || *first > 53))) raise(1001, {first.value_or(0)});
            return Type::of(first && *first <= 24 ? Kind::Real : Kind::Float);
        case Arguments::Scale:
            if (second || (first && (*first < 0 || *first > 7))) raise(1002, {first.value_or(0)});
            return Type{row->kind, 0, static_cast<std::uint8_t>(first.value_or(7)), 0};
    }
    return std::nullopt;
}

std::string typeName(const Type& type) {
    std::string name(kindName(type.kind));
    if (type.isDecimal()) {
        return "decimal(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    }
    if (type.isText() || type.isBinary()) {
        name += type.length == kMaxLength ? "(max)" : "(" + std::to_string(type.length) + ")";
    }
    if (type.kind == Kind::DateTime2) name += "(" + std::to_string(type.scale) + ")";
    return name;
}

std::string_view kindName(Kind kind) { return rowOf(kind).name; }
int precedence(Kind kind) { return rowOf(kind).rank; }

Storage storageOf(const Type& type) {
    if (type.isDecimal() && type.scale == 0) return Storage::Integer;
    return rowOf(type.kind).storage;
}

std::string_view sqliteTypeOf(const Type& type) {
    switch (storageOf(type)) {
        case Storage::Integer:
            return "INTEGER";
        case Storage::Real:
            return "REAL";
        case Storage::Blob:
            return "BLOB";
        default:
            return "TEXT";
    }
}

DataType dataTypeOf(const Type& type) { return rowOf(type.kind).code; }

int displaySize(const Type& type) {
    const int fixed = rowOf(type.kind).display;
    if (type.isDecimal()) return type.precision + 2;
    return fixed > 0 ? fixed : (type.length == kMaxLength ? 0 : type.length);
}

DecimalShape decimalShape(const Type& number) {
    switch (number.kind) {
        case Kind::Bit:
            return {1, 0};
        case Kind::TinyInt:
            return {3, 0};
        case Kind::SmallInt:
            return {5, 0};
        case Kind::Int:
            return {number.precision > 0 ? number.precision : 10, 0};
        case Kind::BigInt:
            return {19, 0};
        case Kind::SmallMoney:
            return {10, 4};
        case Kind::Money:
            return {19, 4};
        case Kind::Decimal:
            return {number.precision, number.scale};
        default:
            return {10, 0};
    }
}

Type commonType(const Type& a, const Type& b) {
    if (a.isNull()) return b;
    if (b.isNull()) return a;
    if (a == b) return a;
    if (a.isText() && b.isText()) return commonText(a, b);
    const Type& high = precedence(a.kind) >= precedence(b.kind) ? a : b;
    const Type& low = precedence(a.kind) >= precedence(b.kind) ? b : a;
    if (!convertsImplicitly(low, high)) raise(206, {kindName(low.kind), kindName(high.kind)});
    if (high.isDecimal() && low.isNumber()) return commonDecimal(a, b);
    if (high.isBinary()) {
        const bool unbounded = a.length == kMaxLength || b.length == kMaxLength;
        return Type::text(high.kind, unbounded ? kMaxLength : std::max(a.length, b.length));
    }
    if (high.kind == Kind::DateTime2 && low.kind == Kind::DateTime2) return a.scale >= b.scale ? a : b;
    if (high.isInteger()) return Type::of(high.kind);
    return high;
}

Type arithmeticType(char op, const Type& a, const Type& b) {
    if (a.isNull() && b.isNull()) return Type::integer();
    if (a.isNull()) return arithmeticType(op, b, b.isDate() ? Type::integer() : b);
    if (b.isNull()) return arithmeticType(op, a, a.isDate() ? Type::integer() : a);
    if (a.isDate() || b.isDate()) return dateArithmetic(op, a, b);
    if (a.isText() && b.isText()) {
        if (op == '+') return joined(a, b);
        raise(8117, {kindName(a.kind), operatorName(op)});
    }
    if (a.kind == Kind::Bit && b.kind == Kind::Bit && op != '&' && op != '|' && op != '^') {
        raise(402, {"bit", "bit", operatorName(op)});
    }
    for (const Type* side : {&a, &b}) {
        if (side->isBinary() || side->kind == Kind::UniqueIdentifier) {
            raise(402, {kindName(a.kind), kindName(b.kind), operatorName(op)});
        }
    }
    const Type left = a.isText() ? Type::of(b.kind) : a;
    const Type right = b.isText() ? Type::of(a.kind) : b;
    if (a.isText() && b.isDecimal()) return decimalResult(op, b, b);
    if (b.isText() && a.isDecimal()) return decimalResult(op, a, a);
    const Kind kind = precedence(left.kind) >= precedence(right.kind) ? left.kind : right.kind;
    if (op == '&' || op == '|' || op == '^') {
        if (!left.isInteger() || !right.isInteger()) {
            raise(402, {kindName(a.kind), kindName(b.kind), operatorName(op)});
        }
        return Type::of(kind);
    }
    if (op == '%' && (left.isFloat() || right.isFloat())) {
        raise(402, {kindName(a.kind), kindName(b.kind), operatorName(op)});
    }
    return kind == Kind::Decimal ? decimalResult(op, left, right) : Type::of(kind);
}

Type integerLiteralType(std::string_view digits) {
    const std::size_t start = std::min(digits.find_first_not_of('0'), digits.size());
    const std::string_view kept = digits.substr(start);
    const int count = std::max<int>(1, static_cast<int>(kept.size()));
    if (count > 38) raise(1007, {digits});
    if (count < 10 || (count == 10 && kept <= "2147483647")) {
        return Type{Kind::Int, static_cast<std::uint8_t>(count), 0, 0};
    }
    return Type::decimal(count, 0);
}

Type decimalLiteralType(std::string_view text) {
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const std::size_t start = std::min(whole.find_first_not_of('0'), whole.size());
    const int scale = point == std::string_view::npos ? 0 : static_cast<int>(text.size() - point - 1);
    const int digits = static_cast<int>(whole.size() - start) + scale;
    if (digits > 38) raise(1007, {text});
    return Type::decimal(std::max(1, digits), scale);
}

bool convertsImplicitly(const Type& from, const Type& to) {
    if (from.isNull() || from.kind == to.kind) return true;
    if (from.isNumber()) {
        if (to.isText()) return !from.isMoney();
        return to.isNumber() || takesDayNumbers(to.kind);
    }
    if (from.isText()) return !to.isBinary();
    if (from.isDate()) return to.isDate() || to.isText();
    if (from.isBinary()) return to.isBinary();
    return to.isText();  // uniqueidentifier
}

bool convertsExplicitly(const Type& from, const Type& to) {
    if (convertsImplicitly(from, to)) return true;
    if (from.isNumber()) return to.isText() || (to.isBinary() && from.isInteger());
    if (from.isText()) return true;
    if (from.isDate()) return to.isNumber() && takesDayNumbers(from.kind);
    return from.isBinary() && (to.isText() || to.isInteger());
}

Value clientValue(const Datum& datum, const Type& type) {
    if (datum.isNull()) return {};
    switch (type.kind) {
        case Kind::Bit:
            return Value(datum.integer != 0);
        case Kind::Decimal:
            if (datum.storage == Storage::Integer) return Value(datum.integer);
            return type.scale <= 4 ? Value(Money::fromDouble(datum.real)) : Value(datum.real);
        case Kind::SmallMoney:
        case Kind::Money:
            return Value(
                Money::fromDouble(datum.storage == Storage::Integer ? static_cast<double>(datum.integer) : datum.real));
        default:
            break;
    }
    if (type.isDate()) {
        if (auto date = Date::fromIso(datum.text)) return Value(*date);
    }
    if (datum.storage == Storage::Integer) return Value(datum.integer);
    if (type.kind == Kind::Real) return Value(shownReal(datum.real));
    if (datum.storage == Storage::Real) return Value(datum.real);
    if (datum.storage == Storage::Blob) {
        std::string hex = "0x";
        for (const char c : datum.text) {
            const auto byte = static_cast<unsigned char>(c);
            hex += "0123456789ABCDEF"[byte >> 4];
            hex += "0123456789ABCDEF"[byte & 15];
        }
        return Value(std::move(hex));
    }
    return Value(datum.text);
}

}  // namespace kv::tsql
