#include "platform/embedded/Functions.h"

#include <algorithm>

#include "platform/embedded/ConvertStyles.h"
#include "platform/embedded/DateTime.h"

namespace kv::tsql {
namespace {

/// What a call is written from.
struct Site {
    const FunctionInfo& info;
    const std::vector<CallArgument>& args;
    const ArgumentAs& as;

    std::string asIs(std::size_t i) const { return as(i, Type{}); }
    const Type& type(std::size_t i) const { return args[i].type; }
    std::string lowerName() const;
    [[noreturn]] void badType(std::size_t i) const {
        raise(8116, {kindName(type(i).kind), static_cast<int>(i) + 1, lowerName()});
    }
};

using Builder = CallResult (*)(const Site& site);

}  // namespace

/// One function: how many arguments, what they are converted to, what comes out. `rules` has a letter for each argument
/// (the last one counts for all that follow): t text, i int, b bigint, f float, d date of any kind, a as it is, p date
/// part. `udf` is called with the arguments in order, unless a builder writes the call.
struct FunctionInfo {
    std::string_view name;
    int argsMin;
    int argsMax;  ///< -1: any
    std::string_view rules;
    std::string_view udf;
    Type result;  ///< Null: the text type of argument 0
    Builder builder;
    bool deterministic = true;
};

namespace {

std::string Site::lowerName() const {
    std::string name(info.name);
    for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return name;
}

char ruleOf(std::string_view rules, std::size_t i) { return i < rules.size() ? rules[i] : rules.back(); }

/// Text of a result: of the same alphabet as the argument, never padded.
Type textLike(const Type& arg, int length) {
    const bool unicode = arg.isUnicode();
    if (arg.length == kMaxLength && arg.isText() && length > 0) length = std::min(length, 8000);
    return Type::text(unicode ? Kind::NVarChar : Kind::VarChar,
                      length == kMaxLength ? kMaxLength : std::clamp(length, 1, unicode ? 4000 : 8000));
}

/// Text that an argument becomes: numbers and dates by their default style.
Type textFor(const Type& arg) {
    if (arg.isText()) return arg;
    const int size = displaySize(arg);
    return Type::varchar(arg.isNull() ? 1 : std::max(size, arg.isDate() ? 30 : 40));
}

Type dateFor(const Type& arg) { return arg.isDate() ? arg : Type::datetime(); }

std::string argument(const Site& site, std::size_t i) {
    const Type& type = site.type(i);
    switch (ruleOf(site.info.rules, i)) {
        case 't':
            if (type.isBinary()) site.badType(i);
            if (type.isText() || type.isNull() || type.kind == Kind::UniqueIdentifier) return site.asIs(i);
            return site.as(i, textFor(type));
        case 'i':
            return site.as(i, Type::integer());
        case 'b':
            return site.as(i, Type::bigint());
        case 'f':
            if (type.isDate() || type.isBinary()) site.badType(i);
            return site.as(i, Type::floating());
        case 'd':
            if (type.isBinary() || type.kind == Kind::UniqueIdentifier) site.badType(i);
            return type.isDate() || type.isNull() ? site.asIs(i) : site.as(i, Type::datetime());
        default:
            return site.asIs(i);
    }
}

std::string callOf(const Site& site, std::string_view udf, std::string_view more = {}) {
    std::string sql(udf);
    sql += '(';
    for (std::size_t i = 0; i < site.args.size(); ++i) {
        if (i > 0) sql += ',';
        sql += argument(site, i);
    }
    sql += more;
    sql += ')';
    return sql;
}

/// The whole number of a literal argument, where it is one.
std::optional<int> literalNumber(const CallArgument& arg) {
    if (!arg.isLiteral || arg.literal.empty() || arg.literal.size() > 9) return std::nullopt;
    int value = 0;
    for (const char c : arg.literal) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

// ------------------------------------------------------------------------------------------------------ text

CallResult buildDataLength(const Site& site) {
    const Type& type = site.type(0);
    const auto constant = [&](int bytes) {
        return CallResult{"(CASE WHEN " + site.asIs(0) + " IS NOT NULL THEN " + std::to_string(bytes) + " END)",
                          Type::integer(), false};
    };
    switch (type.kind) {
        case Kind::Bit:
        case Kind::TinyInt:
            return constant(1);
        case Kind::SmallInt:
            return constant(2);
        case Kind::Int:
        case Kind::Real:
        case Kind::SmallMoney:
        case Kind::SmallDateTime:
            return constant(4);
        case Kind::BigInt:
        case Kind::Money:
        case Kind::Float:
        case Kind::DateTime:
        case Kind::DateTime2:
            return constant(8);
        case Kind::Date:
            return constant(3);
        case Kind::UniqueIdentifier:
            return constant(16);
        case Kind::Decimal:
            return constant(type.precision <= 9 ? 5 : type.precision <= 19 ? 9 : type.precision <= 28 ? 13 : 17);
        case Kind::Binary:
        case Kind::VarBinary:
            return {"length(" + site.asIs(0) + ")", Type::integer(), false};
        default:
            return {"t_datalength(" + site.asIs(0) + (type.isUnicode() ? ",2)" : ",1)"), Type::integer(), false};
    }
}

/// LEFT, RIGHT, SUBSTRING: as long as the literal count, else as the text.
CallResult buildPiece(const Site& site) {
    const std::size_t counted = site.args.size() - 1;
    const Type text = textFor(site.type(0));
    int length = text.length;
    if (const auto count = literalNumber(site.args[counted])) {
        length = length == kMaxLength ? *count : std::min(length, *count);
    }
    return {callOf(site, site.info.udf), textLike(text, length), false};
}

CallResult buildReplicate(const Site& site) {
    const Type text = textFor(site.type(0));
    const bool unbounded = text.length == kMaxLength;
    return {callOf(site, site.info.udf, unbounded ? ",1" : ",0"), textLike(text, unbounded ? kMaxLength : 8000), false};
}

/// REPLACE and STUFF: no length is known beforehand.
CallResult buildLongText(const Site& site) {
    const Type text = textFor(site.type(0));
    return {callOf(site, site.info.udf), textLike(text, text.length == kMaxLength ? kMaxLength : 8000), false};
}

CallResult buildStr(const Site& site) {
    const std::string value = argument(site, 0);
    const std::string length = site.args.size() > 1 ? site.as(1, Type::integer()) : "10";
    const std::string decimals = site.args.size() > 2 ? site.as(2, Type::integer()) : "0";
    const auto width = site.args.size() > 1 ? literalNumber(site.args[1]) : std::optional<int>(10);
    return {"t_str(" + value + "," + length + "," + decimals + ")",
            Type::varchar(std::clamp(width.value_or(8000), 1, 8000)), false};
}

CallResult buildConcat(const Site& site) {
    Type type = textFor(site.type(0));
    bool unicode = false;
    int length = 0;
    for (std::size_t i = 0; i < site.args.size(); ++i) {
        type = textFor(site.type(i));
        unicode = unicode || type.isUnicode();
        length = length == kMaxLength || type.length == kMaxLength ? kMaxLength : length + type.length;
    }
    if (length != kMaxLength) length = std::min(length, unicode ? 4000 : 8000);
    return {callOf(site, site.info.udf), Type::text(unicode ? Kind::NVarChar : Kind::VarChar, std::max(length, -1)),
            false};
}

CallResult buildQuoteName(const Site& site) { return {callOf(site, site.info.udf), Type::nvarchar(258), false}; }

CallResult buildIsNumeric(const Site& site) {
    const Type& type = site.type(0);
    if (type.isText() || type.isNull()) return {"t_isnumeric(" + site.asIs(0) + ")", Type::integer(), false};
    if (!type.isNumber()) return {"0", Type::integer(), false};
    return {"(" + site.asIs(0) + " IS NOT NULL)", Type::integer(), false};
}

// --------------------------------------------------------------------------------------------------- numbers

/// The number type that a function of one number works in: text counts as float, small integers as int.
Type numberFor(const Site& site, std::size_t i) {
    const Type& type = site.type(i);
    if (type.isText()) return Type::floating();
    if (type.isNull()) return Type::integer();
    if (!type.isNumber()) site.badType(i);
    if (type.isInteger() && type.kind != Kind::BigInt) return Type::integer();
    if (type.kind == Kind::Real) return Type::floating();
    if (type.kind == Kind::SmallMoney) return Type::money();
    return type;
}

std::string numberArgument(const Site& site, const Type& type) {
    return site.type(0).isText() ? site.as(0, type) : site.asIs(0);
}

CallResult buildAbs(const Site& site) {
    const Type type = numberFor(site, 0);
    return {"abs(" + numberArgument(site, type) + ")", type, type.isInteger()};
}

CallResult buildSign(const Site& site) {
    const Type type = numberFor(site, 0);
    return {"t_sign(" + numberArgument(site, type) + ")", type, false};
}

CallResult buildFloor(const Site& site) {
    const Type type = numberFor(site, 0);
    const std::string sql = numberArgument(site, type);
    if (type.isInteger()) return {sql, type, false};
    const std::string udf(site.info.udf);
    if (type.isDecimal()) {
        const int precision = std::max(1, type.precision - type.scale + (type.scale > 0 ? 1 : 0));
        return {udf + "d(" + sql + "," + std::to_string(type.scale) + ")", Type::decimal(std::min(38, precision), 0),
                false};
    }
    return {udf + "(" + sql + ")", type, false};
}

CallResult buildRound(const Site& site) {
    const Type type = numberFor(site, 0);
    const std::string sql = numberArgument(site, type);
    const std::string places = site.as(1, Type::integer());
    const std::string cut = site.args.size() > 2 ? site.as(2, Type::integer()) : "0";
    if (type.isFloat()) return {"t_roundf(" + sql + "," + places + "," + cut + ")", type, false};
    const DecimalShape shape = decimalShape(type.isInteger() ? Type::of(type.kind) : type);
    const std::string call = "t_roundd(" + sql + "," + std::to_string(shape.precision) + "," +
                             std::to_string(shape.scale) + "," + places + "," + cut + ")";
    return {call, type, type.isInteger()};
}

CallResult buildPower(const Site& site) {
    const Type type = numberFor(site, 0);
    const std::string sql = "t_power(" + site.as(0, Type::floating()) + "," + site.as(1, Type::floating()) + ")";
    if (type.isFloat()) return {sql, type, false};
    const Type result = type.isDecimal() ? Type::decimal(38, type.scale) : type;
    return {conversionSql(sql, Type::floating(), result, ConvertMode::Cast), result, false};
}

CallResult buildPi(const Site&) { return {"3.141592653589793", Type::floating(), false}; }

// ----------------------------------------------------------------------------------------------------- dates

DatePart partOf(const Site& site) {
    const std::string& word = site.args[0].literal;
    const auto part = datePartOf(word);
    if (!part) raise(155, {word, site.lowerName()});
    return *part;
}

bool isTimePart(DatePart part) { return part >= DatePart::Hour; }

/// Kinds of dates as numbers, the same in DateFunctions.cpp.
int kindCode(const Type& type) { return static_cast<int>(type.kind) - static_cast<int>(Kind::Date); }

std::string dateArgument(const Site& site, std::size_t i) {
    const Type& type = site.type(i);
    if (type.isBinary() || type.kind == Kind::UniqueIdentifier) site.badType(i);
    return type.isDate() || type.isNull() ? site.asIs(i) : site.as(i, Type::datetime());
}

void refuseTimeOfDate(const Site& site, DatePart part, std::size_t i) {
    if (isTimePart(part) && site.type(i).kind == Kind::Date) {
        raise(9810, {datePartName(part), site.lowerName(), "date"});
    }
}

CallResult buildDateAdd(const Site& site) {
    const DatePart part = partOf(site);
    if (part == DatePart::IsoWeek) raise(9810, {"iso_week", "dateadd", kindName(dateFor(site.type(2)).kind)});
    refuseTimeOfDate(site, part, 2);
    const Type type = dateFor(site.type(2));
    const Type& number = site.type(1);
    const std::string count = number.kind == Kind::BigInt ? site.as(1, Type::bigint()) : site.as(1, Type::integer());
    return {"t_dateadd(" + std::to_string(static_cast<int>(part)) + "," + count + "," + dateArgument(site, 2) + "," +
                std::to_string(kindCode(type)) + ")",
            type, false};
}

CallResult buildDateDiff(const Site& site) {
    const DatePart part = partOf(site);
    return {"t_datediff(" + std::to_string(static_cast<int>(part)) + "," + dateArgument(site, 1) + "," +
                dateArgument(site, 2) + ")",
            Type::integer(), false};
}

CallResult buildDatePart(const Site& site) {
    const DatePart part = partOf(site);
    refuseTimeOfDate(site, part, 1);
    const bool named = site.info.udf == "t_datename";
    return {
        std::string(site.info.udf) + "(" + std::to_string(static_cast<int>(part)) + "," + dateArgument(site, 1) + ")",
        named ? Type::nvarchar(30) : Type::integer(), false};
}

/// YEAR, MONTH, DAY
CallResult buildYear(const Site& site) {
    const DatePart part = *datePartOf(site.info.name);
    return {"t_datepart(" + std::to_string(static_cast<int>(part)) + "," + dateArgument(site, 0) + ")", Type::integer(),
            false};
}

CallResult buildEndOfMonth(const Site& site) {
    std::string sql = "t_eomonth(" + dateArgument(site, 0);
    if (site.args.size() > 1) sql += "," + site.as(1, Type::integer());
    return {sql + ")", Type::date(), false};
}

CallResult buildIsDate(const Site& site) {
    const Type& type = site.type(0);
    if (type.isDate()) return {"(" + site.asIs(0) + " IS NOT NULL)", Type::integer(), false};
    if (type.isText() || type.isNull()) return {"t_isdate(" + site.asIs(0) + ")", Type::integer(), false};
    if (!type.isInteger()) return {"0", Type::integer(), false};
    return {"t_isdate(" + site.as(0, Type::varchar(30)) + ")", Type::integer(), false};
}

// -------------------------------------------------------------------------------------------- choosing a value

CallResult buildIsNull(const Site& site) {
    Type type = site.type(0).isNull() ? site.type(1) : site.type(0);
    if (type.isInteger()) type = Type::of(type.kind);
    return {"ifnull(" + site.as(0, type) + "," + site.as(1, type) + ")", type, false};
}

Type commonOf(const Site& site, std::size_t first) {
    Type type = site.type(first);
    for (std::size_t i = first + 1; i < site.args.size(); ++i) type = commonType(type, site.type(i));
    return type.isInteger() ? Type::of(type.kind) : type;
}

CallResult buildCoalesce(const Site& site) {
    const Type type = commonOf(site, 0);
    std::string sql = "coalesce(";
    for (std::size_t i = 0; i < site.args.size(); ++i) sql += (i > 0 ? "," : "") + site.as(i, type);
    return {sql + ")", type, false};
}

CallResult buildNullIf(const Site& site) {
    const Type type = site.type(0);
    const Type common = commonType(type, site.type(1));
    if (type.isNull()) raise(4151);
    if (!needsConversion(type, common, ConvertMode::Cast)) {
        const std::string first = type.isText() ? "(" + site.asIs(0) + ") COLLATE CI" : site.asIs(0);
        return {"nullif(" + first + "," + site.as(1, common) + ")", type, false};
    }
    return {"(CASE WHEN " + site.as(0, common) + "=" + site.as(1, common) + " THEN NULL ELSE " + site.asIs(0) + " END)",
            type, false};
}

CallResult buildChoose(const Site& site) {
    const Type type = commonOf(site, 1);
    std::string sql = "(CASE " + site.as(0, Type::integer());
    for (std::size_t i = 1; i < site.args.size(); ++i) {
        sql += " WHEN " + std::to_string(i) + " THEN " + site.as(i, type);
    }
    return {sql + " END)", type, false};
}

// ------------------------------------------------------------------------------------------------------ others

CallResult buildHash(const Site& site) {
    const Type& type = site.type(1);
    if (!type.isText() && !type.isBinary() && !type.isNull()) site.badType(1);
    const char* form = type.isUnicode() ? "2" : type.isText() ? "1" : "0";
    return {"t_hash(" + site.asIs(0) + "," + form + "," + site.asIs(1) + ")", Type::text(Kind::VarBinary, 8000), false};
}

CallResult buildFormat(const Site& site) {
    if (site.args.size() > 2 && site.args[2].isLiteral && site.args[2].literal != "en-US" &&
        site.args[2].literal != "en-us" && site.args[2].literal != "en-PH") {
        raise(40001, {"FORMAT with the culture " + site.args[2].literal});
    }
    const Type type = site.type(0).isInteger() ? Type::of(site.type(0).kind) : site.type(0);
    if (!type.isNumber() && !type.isDate()) site.badType(0);
    const Conversion kept{type, type, ConvertMode::Cast, Conversion::kNoStyle, false, {}};
    return {"t_format(" + site.asIs(0) + "," + site.asIs(1) + ",'" + conversionSpec(kept) + "')", Type::nvarchar(4000),
            false};
}

CallResult buildClock(const Site& site) {
    return {"getdate()", site.info.name == "SYSDATETIME" ? Type{Kind::DateTime2, 0, 7, 0} : Type::datetime(), false};
}

CallResult buildFormatMessage(const Site& site) {
    for (std::size_t i = 1; i < site.args.size(); ++i) {
        const Type& type = site.type(i);
        if (!type.isText() && !type.isInteger() && !type.isNull()) raise(2786, {static_cast<int>(i)});
    }
    return {callOf(site, site.info.udf), Type::nvarchar(2047), false};
}

/// Names of the program and the user of the database, which are the same for everybody.
CallResult buildApplicationName(const Site&) { return {"'Korvane Accounting'", Type::nvarchar(128), false}; }
CallResult buildOwner(const Site&) { return {"'dbo'", Type::nvarchar(128), false}; }

/// What SQL Server knows and the engine does not: refused by name, so that nobody takes it for a misspelling.
CallResult refuseFunction(const Site& site) { raise(40001, {"The function " + std::string(site.info.name)}); }

constexpr Type kInt = Type::integer();
constexpr Type kName = Type::nvarchar(128);
constexpr Type kFloat = Type::floating();
constexpr Type kLikeFirst{};

// clang-format off
/// Sorted by name.
constexpr FunctionInfo kFunctions[] = {
    {"ABS", 1, 1, "a", "", kInt, buildAbs},
    {"ACOS", 1, 1, "f", "t_acos", kFloat, nullptr},
    {"APP_NAME", 0, 0, "a", "", kName, buildApplicationName},
    {"ASCII", 1, 1, "t", "t_ascii", kInt, nullptr},
    {"ASIN", 1, 1, "f", "t_asin", kFloat, nullptr},
    {"ATAN", 1, 1, "f", "t_atan", kFloat, nullptr},
    {"ATN2", 2, 2, "ff", "t_atn2", kFloat, nullptr},
    {"BINARY_CHECKSUM", 0, -1, "a", "", kInt, refuseFunction},
    {"CEILING", 1, 1, "a", "t_ceiling", kInt, buildFloor},
    {"CHAR", 1, 1, "i", "t_char", Type::text(Kind::Char, 1), nullptr},
    {"CHARINDEX", 2, 3, "ttb", "t_charindex", kInt, nullptr},
    {"CHECKSUM", 0, -1, "a", "", kInt, refuseFunction},
    {"CHOOSE", 2, -1, "ia", "", kInt, buildChoose},
    {"COALESCE", 2, -1, "a", "", kInt, buildCoalesce},
    {"COMPRESS", 0, -1, "a", "", kInt, refuseFunction},
    {"CONCAT", 2, 254, "t", "t_concat", kLikeFirst, buildConcat},
    {"CONCAT_WS", 3, 254, "t", "t_concat_ws", kLikeFirst, buildConcat},
    {"CONTEXT_INFO", 0, -1, "a", "", kInt, refuseFunction},
    {"COS", 1, 1, "f", "t_cos", kFloat, nullptr},
    {"COT", 1, 1, "f", "t_cot", kFloat, nullptr},
    {"CRYPT_GEN_RANDOM", 0, -1, "a", "", kInt, refuseFunction},
    {"CURRENT_TIMESTAMP", 0, 0, "a", "", Type::datetime(), buildClock, false},
    {"CURSOR_STATUS", 0, -1, "a", "", kInt, refuseFunction},
    {"DATABASEPROPERTYEX", 0, -1, "a", "", kInt, refuseFunction},
    {"DATALENGTH", 1, 1, "a", "", kInt, buildDataLength},
    {"DATEADD", 3, 3, "pid", "", Type::datetime(), buildDateAdd},
    {"DATEDIFF", 3, 3, "pdd", "", kInt, buildDateDiff},
    {"DATEDIFF_BIG", 0, -1, "a", "", kInt, refuseFunction},
    {"DATEFROMPARTS", 3, 3, "i", "t_datefromparts", Type::date(), nullptr},
    {"DATENAME", 2, 2, "pd", "t_datename", kInt, buildDatePart},
    {"DATEPART", 2, 2, "pd", "t_datepart", kInt, buildDatePart},
    {"DATETIME2FROMPARTS", 0, -1, "a", "", kInt, refuseFunction},
    {"DATETIMEFROMPARTS", 7, 7, "i", "t_datetimefromparts", Type::datetime(), nullptr},
    {"DATETIMEOFFSETFROMPARTS", 0, -1, "a", "", kInt, refuseFunction},
    {"DAY", 1, 1, "d", "", kInt, buildYear},
    {"DECOMPRESS", 0, -1, "a", "", kInt, refuseFunction},
    {"DEGREES", 1, 1, "f", "t_degrees", kFloat, nullptr},
    {"DIFFERENCE", 0, -1, "a", "", kInt, refuseFunction},
    {"EOMONTH", 1, 2, "di", "", Type::date(), buildEndOfMonth},
    {"EXP", 1, 1, "f", "t_exp", kFloat, nullptr},
    {"FLOOR", 1, 1, "a", "t_floor", kInt, buildFloor},
    {"FORMAT", 2, 3, "a", "", kInt, buildFormat},
    {"FORMATMESSAGE", 1, 21, "a", "t_formatmessage", kName, buildFormatMessage},
    {"GETDATE", 0, 0, "a", "", Type::datetime(), buildClock, false},
    {"GETUTCDATE", 0, 0, "a", "t_getutcdate", Type::datetime(), nullptr, false},
    {"GREATEST", 0, -1, "a", "", kInt, refuseFunction},
    {"GROUPING", 0, -1, "a", "", kInt, refuseFunction},
    {"GROUPING_ID", 0, -1, "a", "", kInt, refuseFunction},
    {"HASHBYTES", 2, 2, "a", "", kInt, buildHash},
    {"HAS_PERMS_BY_NAME", 0, -1, "a", "", kInt, refuseFunction},
    {"HOST_NAME", 0, 0, "a", "t_hostname", kName, nullptr, false},
    {"ISDATE", 1, 1, "a", "", kInt, buildIsDate},
    {"ISJSON", 0, -1, "a", "", kInt, refuseFunction},
    {"ISNULL", 2, 2, "a", "", kInt, buildIsNull},
    {"ISNUMERIC", 1, 1, "a", "", kInt, buildIsNumeric},
    {"IS_MEMBER", 0, -1, "a", "", kInt, refuseFunction},
    {"IS_SRVROLEMEMBER", 0, -1, "a", "", kInt, refuseFunction},
    {"JSON_MODIFY", 0, -1, "a", "", kInt, refuseFunction},
    {"JSON_QUERY", 0, -1, "a", "", kInt, refuseFunction},
    {"JSON_VALUE", 0, -1, "a", "", kInt, refuseFunction},
    {"LEAST", 0, -1, "a", "", kInt, refuseFunction},
    {"LEFT", 2, 2, "tb", "t_left", kLikeFirst, buildPiece},
    {"LEN", 1, 1, "t", "t_len", kInt, nullptr},
    {"LOG", 1, 2, "f", "t_log", kFloat, nullptr},
    {"LOG10", 1, 1, "f", "t_log10", kFloat, nullptr},
    {"LOWER", 1, 1, "t", "t_lower", kLikeFirst, nullptr},
    {"LTRIM", 1, 1, "t", "t_ltrim", kLikeFirst, nullptr},
    {"MONTH", 1, 1, "d", "", kInt, buildYear},
    {"NCHAR", 1, 1, "i", "t_nchar", Type::text(Kind::NChar, 1), nullptr},
    {"NEWID", 0, 0, "a", "newid", Type::of(Kind::UniqueIdentifier), nullptr, false},
    {"NEWSEQUENTIALID", 0, -1, "a", "", kInt, refuseFunction},
    {"NULLIF", 2, 2, "a", "", kInt, buildNullIf},
    {"OBJECTPROPERTYEX", 0, -1, "a", "", kInt, refuseFunction},
    {"ORIGINAL_LOGIN", 0, 0, "a", "t_username", kName, nullptr, false},
    {"PARSENAME", 0, -1, "a", "", kInt, refuseFunction},
    {"PATINDEX", 2, 2, "tt", "t_patindex", kInt, nullptr},
    {"PI", 0, 0, "a", "", kFloat, buildPi},
    {"POWER", 2, 2, "ff", "", kFloat, buildPower},
    {"PWDCOMPARE", 0, -1, "a", "", kInt, refuseFunction},
    {"PWDENCRYPT", 0, -1, "a", "", kInt, refuseFunction},
    {"QUOTENAME", 1, 2, "tt", "t_quotename", kLikeFirst, buildQuoteName},
    {"RADIANS", 1, 1, "f", "t_radians", kFloat, nullptr},
    {"RAND", 0, -1, "a", "", kInt, refuseFunction},
    {"REPLACE", 3, 3, "ttt", "t_replace", kLikeFirst, buildLongText},
    {"REPLICATE", 2, 2, "tb", "t_replicate", kLikeFirst, buildReplicate},
    {"REVERSE", 1, 1, "t", "t_reverse", kLikeFirst, nullptr},
    {"RIGHT", 2, 2, "tb", "t_right", kLikeFirst, buildPiece},
    {"ROUND", 2, 3, "aii", "", kInt, buildRound},
    {"RTRIM", 1, 1, "t", "t_rtrim", kLikeFirst, nullptr},
    {"SESSION_CONTEXT", 0, -1, "a", "", kInt, refuseFunction},
    {"SIGN", 1, 1, "a", "", kInt, buildSign},
    {"SIN", 1, 1, "f", "t_sin", kFloat, nullptr},
    {"SMALLDATETIMEFROMPARTS", 0, -1, "a", "", kInt, refuseFunction},
    {"SOUNDEX", 0, -1, "a", "", kInt, refuseFunction},
    {"SPACE", 1, 1, "b", "t_space", Type::varchar(8000), nullptr},
    {"SQRT", 1, 1, "f", "t_sqrt", kFloat, nullptr},
    {"SQUARE", 1, 1, "f", "t_square", kFloat, nullptr},
    {"STR", 1, 3, "fii", "", kInt, buildStr},
    {"STRING_ESCAPE", 0, -1, "a", "", kInt, refuseFunction},
    {"STUFF", 4, 4, "tbbt", "t_stuff", kLikeFirst, buildLongText},
    {"SUBSTRING", 3, 3, "tbb", "t_substring", kLikeFirst, buildPiece},
    {"SUSER_NAME", 0, 0, "a", "t_username", kName, nullptr, false},
    {"SUSER_SNAME", 0, 0, "a", "t_username", kName, nullptr, false},
    {"SWITCHOFFSET", 0, -1, "a", "", kInt, refuseFunction},
    {"SYSDATETIME", 0, 0, "a", "", Type{Kind::DateTime2, 0, 7, 0}, buildClock, false},
    {"SYSDATETIMEOFFSET", 0, -1, "a", "", kInt, refuseFunction},
    {"SYSUTCDATETIME", 0, -1, "a", "", kInt, refuseFunction},
    {"TAN", 1, 1, "f", "t_tan", kFloat, nullptr},
    {"TIMEFROMPARTS", 0, -1, "a", "", kInt, refuseFunction},
    {"TODATETIMEOFFSET", 0, -1, "a", "", kInt, refuseFunction},
    {"TRANSLATE", 3, 3, "t", "t_translate", kLikeFirst, nullptr},
    {"TRIM", 1, 1, "t", "t_trim", kLikeFirst, nullptr},
    {"TYPE_ID", 0, -1, "a", "", kInt, refuseFunction},
    {"TYPE_NAME", 0, -1, "a", "", kInt, refuseFunction},
    {"UNICODE", 1, 1, "t", "t_unicode", kInt, nullptr},
    {"UPPER", 1, 1, "t", "t_upper", kLikeFirst, nullptr},
    {"USER_NAME", 0, 0, "a", "", kName, buildOwner},
    {"YEAR", 1, 1, "d", "", kInt, buildYear},
};
// clang-format on

void requireCount(const FunctionInfo& info, std::size_t count, const std::string& name) {
    const int given = static_cast<int>(count);
    if (given >= info.argsMin && (info.argsMax < 0 || given <= info.argsMax)) return;
    if (info.argsMin == info.argsMax) raise(174, {name, info.argsMin});
    raise(189, {name, info.argsMin, info.argsMax < 0 ? 254 : info.argsMax});
}

}  // namespace

const FunctionInfo* findFunction(std::string_view name) {
    std::string wanted(name);
    for (char& c : wanted) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    const auto* end = std::end(kFunctions);
    const auto* row = std::lower_bound(std::begin(kFunctions), end, wanted,
                                       [](const FunctionInfo& info, const std::string& w) { return info.name < w; });
    return row != end && row->name == wanted ? row : nullptr;
}

std::string_view functionName(const FunctionInfo& info) { return info.name; }
bool isDeterministic(const FunctionInfo& info) { return info.deterministic; }
bool takesDatePart(const FunctionInfo& info) { return info.rules[0] == 'p'; }
bool isStatementClock(const FunctionInfo& info) { return info.builder == buildClock; }

CallResult emitCall(const FunctionInfo& info, const std::vector<CallArgument>& args, const ArgumentAs& as) {
    const Site site{info, args, as};
    requireCount(info, args.size(), site.lowerName());
    if (info.builder) return info.builder(site);
    Type type = info.result;
    if (type.isNull()) {
        const Type text = textFor(site.type(0));
        type = textLike(text, text.length);
    }
    return {callOf(site, info.udf), type, false};
}

}  // namespace kv::tsql
