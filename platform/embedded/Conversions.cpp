#include "platform/embedded/Conversions.h"

#include <charconv>
#include <cmath>

#include "platform/embedded/ConvertStyles.h"
#include "platform/embedded/DateTime.h"
#include "platform/embedded/Decimal.h"
#include "platform/embedded/NumberText.h"
#include "platform/embedded/SqlError.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

[[noreturn]] void overflow(const Conversion& c) {
    const bool expression = c.from.isInteger() && c.to.isInteger();
    raise(8115, {expression ? std::string_view("expression") : kindName(c.from.kind), kindName(c.to.kind)});
}

int styleOf(const Conversion& c) { return c.style == Conversion::kNoStyle ? 0 : c.style; }

// ---------------------------------------------------------------------------------------------- to integers

struct IntegerRange {
    std::int64_t low;
    std::int64_t high;
};

IntegerRange rangeOf(Kind kind) {
    switch (kind) {
        case Kind::TinyInt:
            return {0, 255};
        case Kind::SmallInt:
            return {-32768, 32767};
        case Kind::Int:
            return {INT32_MIN, INT32_MAX};
        default:
            return {INT64_MIN, INT64_MAX};
    }
}

std::int64_t ranged(std::int64_t value, const Conversion& c) {
    const IntegerRange range = rangeOf(c.to.kind);
    if (value >= range.low && value <= range.high) return value;
    const bool small = c.to.kind == Kind::TinyInt || c.to.kind == Kind::SmallInt;
    if (small && c.from.isInteger()) raise(220, {kindName(c.to.kind), static_cast<long long>(value)});
    overflow(c);
}

std::int64_t integerFromText(std::string_view text, const Conversion& c) {
    const ReadInteger read = readInteger(text);
    if (read.fault == NumberFault::Syntax) {
        if (c.to.kind == Kind::BigInt) raise(8114, {kindName(c.from.kind), "bigint"});
        raise(245, {kindName(c.from.kind), trimmed(text), kindName(c.to.kind)});
    }
    const IntegerRange range = rangeOf(c.to.kind);
    if (read.fault == NumberFault::None && read.value >= range.low && read.value <= range.high) return read.value;
    switch (c.to.kind) {
        case Kind::TinyInt:
            raise(244, {kindName(c.from.kind), trimmed(text), "INT1"});
        case Kind::SmallInt:
            raise(244, {kindName(c.from.kind), trimmed(text), "INT2"});
        case Kind::Int:
            raise(248, {kindName(c.from.kind), trimmed(text)});
        default:
            raise(8115, {kindName(c.from.kind), "bigint"});
    }
}

bool bitFromText(std::string_view text, const Conversion& c) {
    std::string low(trimmed(text));
    for (char& ch : low) ch = static_cast<char>(ch | 32);
    if (low == "true") return true;
    if (low == "false") return false;
    const ReadInteger read = readInteger(text);
    if (read.fault == NumberFault::Syntax) raise(245, {kindName(c.from.kind), trimmed(text), "bit"});
    return read.value != 0 || read.fault == NumberFault::Overflow;
}

std::int64_t integerFromBytes(std::string_view bytes, const Conversion& c) {
    if (bytes.size() > 8) bytes.remove_prefix(bytes.size() - 8);
    std::uint64_t value = 0;
    for (const char b : bytes) value = value << 8 | static_cast<unsigned char>(b);
    switch (c.to.kind) {
        case Kind::TinyInt:
            return static_cast<std::uint8_t>(value);
        case Kind::SmallInt:
            return static_cast<std::int16_t>(value);
        case Kind::Int:
            return static_cast<std::int32_t>(value);
        default:
            return static_cast<std::int64_t>(value);
    }
}

Datum toInteger(const Cell& cell, const Conversion& c) {
    if (c.from.isText()) {
        if (c.to.kind == Kind::Bit) return Datum::of(std::int64_t{bitFromText(cell.text, c)});
        return Datum::of(integerFromText(cell.text, c));
    }
    if (c.to.kind == Kind::Bit) return Datum::of(std::int64_t{cell.number() != 0});
    if (c.from.isBinary()) return Datum::of(integerFromBytes(cell.text, c));
    if (c.from.isDate()) {
        const Moment moment = storedMoment(cell.text);
        return Datum::of(ranged(moment.days + (moment.ms >= 43'200'000 ? 1 : 0), c));
    }
    if (cell.storage == Storage::Integer) return Datum::of(ranged(cell.integer, c));
    if (c.from.isMoney()) return Datum::of(ranged(static_cast<std::int64_t>(rescaled(unitsOf(cell.real, 4), 4, 0)), c));
    const double cut = std::trunc(c.from.isDecimal() ? roundedTo(cell.real, c.from.scale) : cell.real);
    if (!(cut >= -0x1p63 && cut < 0x1p63)) {
        if (c.from.isFloat()) raise(232, {kindName(c.to.kind), floatText(cell.real, 0)});
        overflow(c);
    }
    const auto value = static_cast<std::int64_t>(cut);
    const IntegerRange range = rangeOf(c.to.kind);
    if (c.from.isFloat() && (value < range.low || value > range.high)) {
        raise(232, {kindName(c.to.kind), floatText(cell.real, 0)});
    }
    return Datum::of(ranged(value, c));
}

// ------------------------------------------------------------------------------- to decimal, money and float

/// The value as units of a scale, rounded half away from zero.
Int128 unitsFrom(const Cell& cell, const Conversion& c, int scale) {
    if (c.from.isText()) {
        const auto units = parseUnits(cell.text, scale);
        if (!units) raise(8114, {kindName(c.from.kind), "numeric"});
        return *units;
    }
    if (c.from.isDate()) return unitsOf(dayNumber(storedMoment(cell.text)), scale);
    if (cell.storage == Storage::Integer) return rescaled(cell.integer, 0, scale);
    if (!c.from.isExact()) return unitsOf(cell.real, scale);
    const int own = decimalShape(c.from).scale;
    // a value with more decimals than a double keeps apart must not be rounded twice
    return own <= 6 ? rescaled(unitsOf(cell.real, own), own, scale) : unitsOf(cell.real, scale);
}

Datum toDecimal(const Cell& cell, const Conversion& c) {
    const Int128 units = unitsFrom(cell, c, c.to.scale);
    if (!fitsPrecision(units, c.to.precision)) overflow(c);
    if (c.to.scale > 0) {
        return Datum::of((c.from.isFloat() ? fromUnits(units, c.to.scale) : exactFromUnits(units, c.to.scale)) + 0.0);
    }
    if (units > INT64_MAX || units < INT64_MIN) overflow(c);
    return Datum::of(static_cast<std::int64_t>(units));
}

Datum toMoney(const Cell& cell, const Conversion& c) {
    Int128 units = 0;
    if (c.from.isText()) {
        const auto read = readMoney(cell.text);
        if (!read) raise(235);
        units = *read;
    } else {
        units = unitsFrom(cell, c, 4);
    }
    const std::int64_t most = c.to.kind == Kind::SmallMoney ? INT32_MAX : kUnitsMax;
    if (units > most || units < -most - 1) overflow(c);
    return Datum::of(fromUnits(units, 4) + 0.0);
}

Datum toFloat(const Cell& cell, const Conversion& c) {
    double value = 0;
    if (c.from.isText()) {
        const auto read = readFloat(cell.text);
        if (!read) raise(8114, {kindName(c.from.kind), kindName(c.to.kind)});
        value = *read;
    } else {
        value = c.from.isDate() ? dayNumber(storedMoment(cell.text)) : cell.number();
    }
    if (c.to.kind == Kind::Real) {
        value = static_cast<double>(static_cast<float>(value));
        if (!std::isfinite(value)) raise(232, {"real", floatText(cell.number(), 0)});
    }
    return Datum::of(value);
}

// -------------------------------------------------------------------------------------------------- to text

std::string numberAsText(const Cell& cell, const Type& type, int style) {
    if (type.isMoney()) return moneyText(unitsOf(cell.number(), 4), style);
    if (type.isDecimal()) {
        return unitsText(
            cell.storage == Storage::Integer ? rescaled(cell.integer, 0, type.scale) : unitsOf(cell.real, type.scale),
            type.scale);
    }
    if (type.isFloat() || cell.storage == Storage::Real) return floatText(cell.number(), style);
    return std::to_string(cell.integer);
}

std::string plainTextOf(const Cell& cell, const Conversion& c) {
    const Type& type = c.from;
    if (type.isDate()) {
        const int style = c.style == Conversion::kNoStyle ? defaultStyle(type) : c.style;
        return momentInStyle(storedMoment(cell.text), type, style);
    }
    if (type.isBinary()) {
        const int style = styleOf(c);
        if (style == 0) return utf8OfLatin(cell.text);
        return (style == 1 ? "0x" : "") + hexText(cell.text);
    }
    if (type.isNumber()) return numberAsText(cell, type, styleOf(c));
    return std::string(cell.text);
}

/// What happens when a number does not fit the text: small integers print an asterisk, the others are errors.
std::string tooLong(const Conversion& c) {
    const Type& type = c.from;
    if (type.isInteger() && type.kind != Kind::BigInt && !c.to.isUnicode()) return "*";
    if (type.isMoney()) raise(234, {kindName(c.to.kind)});
    if (type.kind == Kind::UniqueIdentifier) raise(8170);
    raise(8115, {type.isInteger() ? std::string_view("expression") : kindName(type.kind), kindName(c.to.kind)});
}

[[noreturn]] void truncated(std::string_view text, const Conversion& c) {
    const std::size_t point = c.where.rfind('.');
    if (c.where.empty() || point == std::string::npos) raise(8152);
    raise(2628, {c.where.substr(0, point), c.where.substr(point + 1),
                 text.substr(0, byteOffset(text, static_cast<std::size_t>(c.to.length)))});
}

Datum toText(const Cell& cell, const Conversion& c) {
    std::string text = plainTextOf(cell, c);
    if (c.to.length == kMaxLength) return Datum::of(std::move(text));
    const auto wanted = static_cast<std::size_t>(c.to.length);
    if (text.size() > wanted) {
        const std::size_t end = byteOffset(text, wanted);
        if (end < text.size()) {
            const bool blanksOnly = text.find_first_not_of(' ', end) == std::string::npos;
            if (c.from.isNumber() || c.from.kind == Kind::UniqueIdentifier) {
                text = tooLong(c);
            } else if (c.mode == ConvertMode::Column && !blanksOnly) {
                truncated(text, c);
            } else {
                text.resize(end);
            }
        }
    }
    if (c.to.isFixedText()) {
        const std::size_t count = charactersOf(text);
        if (count < wanted) text.append(wanted - count, ' ');
    }
    return Datum::of(std::move(text));
}

// -------------------------------------------------------------------------------------- to dates and the rest

Datum toDate(const Cell& cell, const Conversion& c) {
    if (c.from.isText()) {
        DayOrder order = DayOrder::Mdy;
        if (c.style > 0) {
            const ConvertStyle* style = findStyle(c.style);
            if (!style) raise(281, {c.style, kindName(c.from.kind)});
            order = style->order;
        }
        return Datum::of(dateFromText(cell.text, c.to, order, kindName(c.from.kind)));
    }
    const Moment moment = c.from.isDate() ? storedMoment(cell.text) : momentOfDays(cell.number());
    return Datum::of(momentText(fitted(moment, c.to, kindName(c.from.kind))));
}

Datum toGuid(const Cell& cell) {
    std::string_view text = trimmed(cell.text);
    if (text.size() >= 38 && text.front() == '{' && text[37] == '}') text = text.substr(1, 36);
    if (text.size() < 36) raise(8169);
    std::string out(text.substr(0, 36));
    for (std::size_t i = 0; i < out.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        const char low = static_cast<char>(out[i] | 32);
        const bool digit = (out[i] >= '0' && out[i] <= '9') || (low >= 'a' && low <= 'f');
        if (dash ? out[i] != '-' : !digit) raise(8169);
        if (low >= 'a' && low <= 'f') out[i] = static_cast<char>(low - 32);
    }
    return Datum::of(std::move(out));
}

std::string bytesOf(const Cell& cell, const Conversion& c) {
    if (c.from.isText()) {
        const int style = styleOf(c);
        if (style == 0) return c.from.isUnicode() ? utf16OfUtf8(cell.text) : latinOfUtf8(cell.text);
        const bool prefixed = cell.text.substr(0, 2) == "0x";
        const auto bytes = bytesOfHex(style == 1 && prefixed ? cell.text.substr(2) : cell.text);
        if (!bytes || prefixed != (style == 1)) raise(8114, {kindName(c.from.kind), kindName(c.to.kind)});
        return *bytes;
    }
    if (c.from.isBinary()) return std::string(cell.text);
    const int width = c.from.kind == Kind::BigInt     ? 8
                      : c.from.kind == Kind::Int      ? 4
                      : c.from.kind == Kind::SmallInt ? 2
                                                      : 1;
    std::string bytes;
    for (int i = width - 1; i >= 0; --i) bytes += static_cast<char>(cell.integer >> (8 * i) & 0xFF);
    return bytes;
}

Datum toBinary(const Cell& cell, const Conversion& c) {
    std::string bytes = bytesOf(cell, c);
    if (c.to.length != kMaxLength && bytes.size() > static_cast<std::size_t>(c.to.length)) {
        if (c.mode == ConvertMode::Column) truncated("0x" + hexText(bytes), c);
        const auto length = static_cast<std::size_t>(c.to.length);
        bytes = c.from.isNumber() ? bytes.substr(bytes.size() - length) : bytes.substr(0, length);
    }
    if (c.to.kind == Kind::Binary) bytes.resize(static_cast<std::size_t>(c.to.length), '\0');
    return Datum::bytes(std::move(bytes));
}

Datum convertedStrictly(const Cell& cell, const Conversion& c) {
    const Type& to = c.to;
    if (to.isInteger()) return toInteger(cell, c);
    if (to.isMoney()) return toMoney(cell, c);
    if (to.isDecimal()) return toDecimal(cell, c);
    if (to.isFloat()) return toFloat(cell, c);
    if (to.isText()) return toText(cell, c);
    if (to.isDate()) return toDate(cell, c);
    if (to.isBinary()) return toBinary(cell, c);
    if (to.kind == Kind::UniqueIdentifier) return toGuid(cell);
    return Datum{cell.storage, cell.integer, cell.real, std::string(cell.text)};
}

// ----------------------------------------------------------------------------------------- what needs no work

bool textFits(const Type& from, const Type& to) {
    if (to.isFixedText()) return from.kind == to.kind && from.length == to.length;
    if (to.length == kMaxLength) return true;
    return from.length != kMaxLength && from.length <= to.length;
}

bool numberFits(const Type& from, const Type& to) {
    if (storageOf(from) != storageOf(to)) return false;
    if (from.isInteger() && to.isInteger()) {
        return to.kind >= from.kind && to.kind != Kind::Bit;
    }
    if (to.kind == Kind::Float) return true;
    if (to.kind == Kind::Real || from.isFloat()) return false;
    const DecimalShape a = decimalShape(from);
    if (to.kind == Kind::Money) return from.kind == Kind::SmallMoney || (a.scale <= 4 && a.precision - a.scale <= 11);
    if (to.isDecimal()) return a.scale <= to.scale && a.precision - a.scale <= to.precision - to.scale;
    return false;
}

bool dateFits(const Type& from, const Type& to, ConvertMode mode) {
    if (to.kind == Kind::DateTime2) return from.kind != Kind::DateTime2 ? to.scale >= 3 : from.scale <= to.scale;
    if (to.kind != Kind::DateTime) return false;
    // a date before 1753 is refused where it is stored; compared, its text sorts as it should
    return from.kind == Kind::SmallDateTime || (from.kind == Kind::Date && mode != ConvertMode::Column);
}

/// An integer that becomes money, a decimal with room for it or a float: the storage changes, the value does not.
bool onlyStorageChanges(const Type& from, const Type& to) {
    if (storageOf(from) != Storage::Integer || storageOf(to) != Storage::Real) return false;
    if (to.kind == Kind::Float) return true;
    const DecimalShape shape = decimalShape(from);
    const int digits = from.isInteger() ? decimalShape(Type::of(from.kind)).precision : shape.precision;
    if (to.kind == Kind::Money) return digits <= 10;
    return to.isDecimal() && digits <= to.precision - to.scale;
}

std::string_view nextField(std::string_view& rest, char mark) {
    const std::size_t end = rest.find(mark);
    const std::string_view field = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return field;
}

int numberIn(std::string_view text) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

Type typeOfSpec(std::string_view text) {
    if (text == "null") return {};
    const std::size_t open = text.find('(');
    if (open == std::string_view::npos) return typeByName(text, {}, {}, TypePlace::Cast).value();
    std::string_view arguments = text.substr(open + 1, text.size() - open - 2);
    if (arguments == "max") return typeByName(text.substr(0, open), kMaxLength, {}, TypePlace::Cast).value();
    const int first = numberIn(nextField(arguments, ','));
    std::optional<int> second;
    if (!arguments.empty()) second = numberIn(arguments);
    return typeByName(text.substr(0, open), first, second, TypePlace::Cast).value();
}

}  // namespace

bool needsConversion(const Type& from, const Type& to, ConvertMode mode) {
    if (from.isNull() || to.isNull() || from == to) return false;
    if (from.kind == Kind::Int && to.kind == Kind::Int) return false;  // a literal knows its digits
    if (from.isText() && to.isText()) return !textFits(from, to);
    if (from.isNumber() && to.isNumber()) return !numberFits(from, to);
    if (from.isDate() && to.isDate()) return !dateFits(from, to, mode);
    if (from.isBinary() && to.isBinary()) {
        if (to.kind == Kind::Binary) return true;
        return to.length != kMaxLength && (from.length == kMaxLength || from.length > to.length);
    }
    if (from.kind == Kind::UniqueIdentifier && to.isText()) {
        return to.isFixedText() || (to.length != kMaxLength && to.length < 36);
    }
    return true;
}

Datum converted(const Cell& cell, const Conversion& conversion) {
    if (cell.storage == Storage::Null) return {};
    if (!conversion.tryOnly) return convertedStrictly(cell, conversion);
    try {
        return convertedStrictly(cell, conversion);
    } catch (const SqlError&) {
        return {};
    }
}

Datum convertDatum(const Datum& value, const Type& from, const Type& to, ConvertMode mode, std::string_view where) {
    if (value.isNull() || !needsConversion(from, to, mode)) return value;
    return converted(Cell::of(value), Conversion{from, to, mode, Conversion::kNoStyle, false, std::string(where)});
}

Datum numberLiteral(std::string_view text, const Type& type) {
    if (type.isFloat()) {
        const auto value = readFloat(text);
        if (!value) raise(168, {text});
        return Datum::of(*value);
    }
    const int scale = type.isMoney() ? 4 : type.isDecimal() ? type.scale : 0;
    const auto units = type.isMoney() ? readMoney(text) : parseUnits(text, scale);
    if (!units) raise(102, {text});
    if (storageOf(type) == Storage::Integer) {
        if (*units > INT64_MAX || *units < INT64_MIN) raise(8115, {"expression", kindName(type.kind)});
        return Datum::of(static_cast<std::int64_t>(*units));
    }
    return Datum::of(exactFromUnits(*units, scale));
}

void requireConvertible(const Type& from, const Type& to, bool isExplicit) {
    if (isExplicit) {
        if (!convertsExplicitly(from, to)) raise(529, {kindName(from.kind), kindName(to.kind)});
        return;
    }
    if (convertsImplicitly(from, to)) return;
    if (convertsExplicitly(from, to)) raise(257, {kindName(from.kind), kindName(to.kind)});
    raise(206, {kindName(from.kind), kindName(to.kind)});
}

std::string conversionSql(const std::string& sql, const Type& from, const Type& to, ConvertMode mode,
                          std::string_view where) {
    requireConvertible(from, to, mode == ConvertMode::Cast);
    if (!needsConversion(from, to, mode)) return sql;
    if (onlyStorageChanges(from, to)) return "CAST(" + sql + " AS REAL)";
    return conversionSql(sql, Conversion{from, to, mode, Conversion::kNoStyle, false, std::string(where)});
}

std::string conversionSql(const std::string& sql, const Conversion& conversion) {
    std::string quoted;
    for (const char c : conversionSpec(conversion)) {
        quoted += c;
        if (c == '\'') quoted += c;
    }
    return "cv(" + sql + ",'" + quoted + "')";
}

std::string conversionSpec(const Conversion& c) {
    std::string spec = c.from.isNull() ? "null" : typeName(c.from);
    spec += '>';
    spec += typeName(c.to);
    spec += '>';
    spec += c.mode == ConvertMode::Column ? 'c' : c.mode == ConvertMode::Variable ? 'v' : 'x';
    if (c.tryOnly) spec += '?';
    spec += '>';
    if (c.style != Conversion::kNoStyle) spec += std::to_string(c.style);
    spec += '>';
    spec += c.where;
    return spec;
}

Conversion conversionOfSpec(std::string_view spec) {
    Conversion c;
    c.from = typeOfSpec(nextField(spec, '>'));
    c.to = typeOfSpec(nextField(spec, '>'));
    const std::string_view mode = nextField(spec, '>');
    c.mode = mode[0] == 'c' ? ConvertMode::Column : mode[0] == 'v' ? ConvertMode::Variable : ConvertMode::Cast;
    c.tryOnly = mode.size() > 1;
    const std::string_view style = nextField(spec, '>');
    if (!style.empty()) c.style = numberIn(style);
    c.where = spec;
    return c;
}

std::string textOf(const Datum& value, const Type& type) {
    if (value.isNull()) return {};
    return plainTextOf(Cell::of(value),
                       Conversion{type, Type::varchar(kMaxLength), {}, Conversion::kNoStyle, false, {}});
}

std::string consoleText(const Datum& value, const Type& type) {
    if (value.isNull()) return "NULL";
    const Cell cell = Cell::of(value);
    if (value.storage == Storage::Blob) return "0x" + hexText(value.text);
    if (type.isDate()) {
        const int style = type.kind == Kind::SmallDateTime ? 120 : 121;
        return momentInStyle(storedMoment(value.text), type, style);
    }
    if (type.isMoney()) return moneyText(unitsOf(cell.number(), 4), 2);
    if (type.isFloat() || (value.storage == Storage::Real && !type.isDecimal())) {
        return shortestFloat(cell.number(), type.kind == Kind::Real);
    }
    if (value.storage == Storage::Text) return value.text;
    return numberAsText(cell, type, 0);
}

}  // namespace kv::tsql
