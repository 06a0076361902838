#pragma once
// Types: the static types of T-SQL, the values that carry them, and the rules by which types meet.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/data/Value.h"

namespace kv::tsql {

enum class Kind : std::uint8_t {
    Null,  ///< the untyped NULL literal: fits everywhere
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Decimal,
    SmallMoney,
    Money,
    Real,
    Float,
    Char,
    VarChar,
    NChar,
    NVarChar,
    Binary,
    VarBinary,
    UniqueIdentifier,
    Date,
    SmallDateTime,
    DateTime,
    DateTime2,
};

/// How SQLite keeps a value of a type.
enum class Storage : std::uint8_t { Null, Integer, Real, Text, Blob };

constexpr int kMaxLength = -1;  ///< the length of varchar(max) and its like

/// One static type. `length` counts characters of text and bytes of binary; `precision` and `scale` belong to decimal
/// (and `scale` to datetime2); an integer literal carries its digits in `precision`, 0 otherwise.
struct Type {
    Kind kind = Kind::Null;
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
    std::int32_t length = 0;

    bool operator==(const Type&) const = default;

    static constexpr Type of(Kind kind) { return Type{kind, 0, 0, 0}; }
    static constexpr Type decimal(int p, int s) {
        return Type{Kind::Decimal, static_cast<std::uint8_t>(p), static_cast<std::uint8_t>(s), 0};
    }
    static constexpr Type text(Kind kind, int length) { return Type{kind, 0, 0, length}; }
    static constexpr Type varchar(int length) { return text(Kind::VarChar, length); }
    static constexpr Type nvarchar(int length) { return text(Kind::NVarChar, length); }
    static constexpr Type integer() { return of(Kind::Int); }
    static constexpr Type bigint() { return of(Kind::BigInt); }
    static constexpr Type bit() { return of(Kind::Bit); }
    static constexpr Type money() { return of(Kind::Money); }
    static constexpr Type floating() { return of(Kind::Float); }
    static constexpr Type datetime() { return of(Kind::DateTime); }
    static constexpr Type date() { return of(Kind::Date); }

    bool isNull() const { return kind == Kind::Null; }
    bool isInteger() const { return kind >= Kind::Bit && kind <= Kind::BigInt; }
    bool isMoney() const { return kind == Kind::Money || kind == Kind::SmallMoney; }
    bool isDecimal() const { return kind == Kind::Decimal; }
    bool isFloat() const { return kind == Kind::Float || kind == Kind::Real; }
    bool isExact() const { return isDecimal() || isMoney(); }
    bool isNumber() const { return kind >= Kind::Bit && kind <= Kind::Float; }
    bool isText() const { return kind >= Kind::Char && kind <= Kind::NVarChar; }
    bool isUnicode() const { return kind == Kind::NChar || kind == Kind::NVarChar; }
    bool isFixedText() const { return kind == Kind::Char || kind == Kind::NChar; }
    bool isBinary() const { return kind == Kind::Binary || kind == Kind::VarBinary; }
    bool isDate() const { return kind >= Kind::Date; }
};

/// Where a type is written: the default length of text is 1 in a declaration, 30 in CAST and CONVERT.
enum class TypePlace { Declaration, Cast };

/// The type of a name with its optional arguments ("varchar" 10, "decimal" 9 2, "nvarchar" max). Letter case is
/// ignored; synonyms are taken (numeric, integer, double precision, sysname, rowversion not). Empty for an unknown
/// name. Raises 2715-like errors not here but 1002, 1001, 2750, 131 for arguments out of range.
std::optional<Type> typeByName(std::string_view name, std::optional<int> first, std::optional<int> second,
                               TypePlace place);

std::string typeName(const Type& type);           ///< "varchar(10)", "decimal(9, 2)", "int"
std::string_view kindName(Kind kind);             ///< "varchar", "decimal", "int"
int precedence(Kind kind);                        ///< the higher one wins where two types meet
Storage storageOf(const Type& type);              ///< decimal of scale 0 is Integer, other decimals and money are Real
std::string_view sqliteTypeOf(const Type& type);  ///< "INTEGER", "REAL", "TEXT", "BLOB" for a STRICT table
DataType dataTypeOf(const Type& type);            ///< code of a client's field
int displaySize(const Type& type);                ///< characters that a value takes as text (the field's size)

/// Digits and decimals a number counts with where it meets a decimal: int is (10,0), money (19,4).
struct DecimalShape {
    int precision = 0;
    int scale = 0;
};
DecimalShape decimalShape(const Type& number);

/// The type of CASE, COALESCE, UNION and comparison of two types, by precedence.
/// Raises 206 where the two do not go together.
Type commonType(const Type& a, const Type& b);
/// The type of `a op b` for + - * / %. Raises 402, 8117 or 206 where the operator does not take them.
Type arithmeticType(char op, const Type& a, const Type& b);
/// The type of an integer literal: int with its digits, or decimal(n,0) beyond 2^31-1.
Type integerLiteralType(std::string_view digits);
/// The type of a decimal literal such as "12.50": decimal(4,2).
Type decimalLiteralType(std::string_view text);

/// May `from` become `to` without CAST (assignment, comparison, parameter)?
bool convertsImplicitly(const Type& from, const Type& to);
bool convertsExplicitly(const Type& from, const Type& to);

/// A value as the engine keeps it in a variable or slot: the storage of its static type.
/// Dates are text of 23 characters, decimals the nearest double of n / 10^scale, binary bytes in `text`.
struct Datum {
    Storage storage = Storage::Null;
    std::int64_t integer = 0;
    double real = 0;
    std::string text;

    static Datum null() { return {}; }
    static Datum of(std::int64_t v) { return Datum{Storage::Integer, v, 0, {}}; }
    static Datum of(double v) { return Datum{Storage::Real, 0, v, {}}; }
    static Datum of(std::string v) { return Datum{Storage::Text, 0, 0, std::move(v)}; }
    static Datum bytes(std::string v) { return Datum{Storage::Blob, 0, 0, std::move(v)}; }
    bool isNull() const { return storage == Storage::Null; }
    bool operator==(const Datum&) const = default;
};

/// The value for a client: bit, integer, float, money, text or date by the static type. Decimals with at most four
/// decimals become money, others float; binary becomes hexadecimal text "0x..".
Value clientValue(const Datum& datum, const Type& type);

}  // namespace kv::tsql
