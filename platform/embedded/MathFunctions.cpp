// The functions and operators of numbers as SQLite calls them: exact on money and decimals, errors where SQL Server has
// them.

#include <array>
#include <cmath>
#include <numbers>

#include "platform/embedded/Decimal.h"
#include "platform/embedded/NumberText.h"
#include "platform/embedded/Udf.h"

namespace kv::tsql {
namespace {

/// Decimals of scale 0 are integers in SQLite, the others doubles.
void resultUnits(Call& call, Int128 units, int scale) {
    if (scale > 0) return call.result(fromUnits(units, scale) + 0.0);
    if (units > INT64_MAX || units < INT64_MIN) raise(8115, {"expression", "numeric"});
    call.result(static_cast<std::int64_t>(units));
}

Int128 unitsArgument(const Call& call, int i, int scale) {
    return call.isInteger(i) ? rescaled(call.integer(i), 0, scale) : unitsOf(call.real(i), scale);
}

// ------------------------------------------------------------------------- results made canonical, operators

void roundMoney(Call& call) {
    if (call.isNull(0)) return call.null();
    const double value = call.real(0);
    if (std::fabs(value) >= static_cast<double>(kUnitsMax) / 1e4) raise(8115, {"expression", "money"});
    call.result(roundedTo(value, 4));
}

void roundDecimal(Call& call) {
    if (call.isNull(0)) return call.null();
    const int scale = call.small(1);
    if (scale > 0) return call.result(roundedTo(call.real(0), scale));
    if (!call.isInteger(0)) raise(8115, {"expression", "numeric"});
    call.same(0);
}

/// An integer result that must fit its type; SQLite turns what passes 64 bits into a double.
void checkInteger(Call& call) {
    if (call.isNull(0)) return call.null();
    struct Range {
        std::int64_t low;
        std::int64_t high;
        const char* name;
    };
    constexpr std::array<Range, 4> kRanges = {{{0, 255, "tinyint"},
                                               {-32768, 32767, "smallint"},
                                               {INT32_MIN, INT32_MAX, "int"},
                                               {INT64_MIN, INT64_MAX, "bigint"}}};
    const Range& range = kRanges[static_cast<std::size_t>(call.small(1)) & 3];
    const std::int64_t value = call.integer(0);
    if (!call.isInteger(0) || value < range.low || value > range.high) raise(8115, {"expression", range.name});
    call.result(value);
}

void multiply(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    const int scaleA = call.small(2);
    const int scaleB = call.small(3);
    const int scale = call.small(4);
    const Int128 a = unitsArgument(call, 0, scaleA);
    const Int128 b = unitsArgument(call, 1, scaleB);
    Int128 product = 0;
    if (__builtin_mul_overflow(a, b, &product)) raise(8115, {"expression", "numeric"});
    resultUnits(call, rescaled(product, scaleA + scaleB, scale), scale);
}

void divide(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    call.result(decimalQuotient(call.real(0), call.real(1), call.small(2), call.small(3), call.small(4)) + 0.0);
}

void remainder(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    const int scale = std::max(call.small(2), call.small(3));
    const Int128 divisor = unitsArgument(call, 1, scale);
    if (divisor == 0) raise(8134);
    resultUnits(call, unitsArgument(call, 0, scale) % divisor, scale);
}

void divideIntegers(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    const std::int64_t divisor = call.integer(1);
    if (divisor == 0) raise(8134);
    if (divisor == -1) {
        if (call.integer(0) == INT64_MIN) raise(8115, {"expression", "bigint"});
        return call.result(-call.integer(0));
    }
    call.result(call.integer(0) / divisor);
}

void remainderOfIntegers(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    const std::int64_t divisor = call.integer(1);
    if (divisor == 0) raise(8134);
    call.result(divisor == -1 ? 0 : call.integer(0) % divisor);
}

void divideFloats(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    if (call.real(1) == 0) raise(8134);
    call.result(call.real(0) / call.real(1));
}

void exclusiveOr(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    call.result(call.integer(0) ^ call.integer(1));
}

// ------------------------------------------------------------------------------------------------- functions

/// t_roundd(x, precision, scale, places, cut)
void roundExact(Call& call) {
    if (call.anyNull()) return call.null();
    const int scale = call.small(2);
    const std::int64_t places = call.integer(3);
    const int kept = places > 38 ? 38 : places < -38 ? -38 : static_cast<int>(places);
    const Int128 units = roundedUnits(unitsArgument(call, 0, scale), scale, kept, call.integer(4) != 0);
    if (!fitsPrecision(units, call.small(1))) raise(8115, {"expression", "numeric"});
    resultUnits(call, units, scale);
}

void roundFloat(Call& call) {
    if (call.anyNull()) return call.null();
    const double value = call.real(0);
    const std::int64_t places = call.integer(1);
    const bool cut = call.integer(2) != 0;
    if (value == 0 || places > 15 || std::fabs(value) >= 1e15) return call.result(value);
    if (places < -15) return call.result(0.0);
    constexpr int kScale = 17;
    const int scale = std::fabs(value) >= 1 ? kScale : 22;
    call.result(fromUnits(roundedUnits(unitsOf(value, scale), scale, static_cast<int>(places), cut), scale) + 0.0);
}

void floorExact(Call& call) {
    if (call.isNull(0)) return call.null();
    const int scale = call.small(1);
    const Int128 units = unitsArgument(call, 0, scale);
    const Int128 one = powerOfTen(scale);
    resultUnits(call, units / one - (units % one < 0 ? 1 : 0), 0);
}

void ceilingExact(Call& call) {
    if (call.isNull(0)) return call.null();
    const int scale = call.small(1);
    const Int128 units = unitsArgument(call, 0, scale);
    const Int128 one = powerOfTen(scale);
    resultUnits(call, units / one + (units % one > 0 ? 1 : 0), 0);
}

void sign(Call& call) {
    if (call.isNull(0)) return call.null();
    if (call.isInteger(0)) return call.result(call.integer(0) > 0 ? 1 : call.integer(0) < 0 ? -1 : 0);
    call.result(call.real(0) > 0 ? 1.0 : call.real(0) < 0 ? -1.0 : 0.0);
}

void finite(Call& call, double value) {
    if (std::isnan(value)) raise(3623);
    if (std::isinf(value)) raise(8115, {"expression", "float"});
    call.result(value);
}

void power(Call& call) {
    if (call.anyNull()) return call.null();
    if (call.real(0) == 0 && call.real(1) < 0) raise(8134);
    finite(call, std::pow(call.real(0), call.real(1)));
}

template <double (*F)(double)>
void floatFunction(Call& call) {
    if (call.anyNull()) return call.null();
    finite(call, F(call.real(0)));
}

double square(double x) { return x * x; }
double naturalLog(double x) {
    if (x <= 0) raise(3623);
    return std::log(x);
}
double log10Of(double x) {
    if (x <= 0) raise(3623);
    return std::log10(x);
}
double degrees(double x) { return x * 180.0 / std::numbers::pi; }
double radians(double x) { return x * std::numbers::pi / 180.0; }
double cotangent(double x) { return 1.0 / std::tan(x); }

void logOfBase(Call& call) {
    if (call.anyNull()) return call.null();
    if (call.real(0) <= 0 || call.real(1) <= 0 || call.real(1) == 1) raise(3623);
    finite(call, std::log(call.real(0)) / std::log(call.real(1)));
}

void arcTangent2(Call& call) {
    if (call.anyNull()) return call.null();
    finite(call, std::atan2(call.real(0), call.real(1)));
}

constexpr std::array<Udf, 34> kUdfs = {{
    {"r4", 1, true, udf<roundMoney>},
    {"rd", 2, true, udf<roundDecimal>},
    {"ck", 2, true, udf<checkInteger>},
    {"dmul", 5, true, udf<multiply>},
    {"ddiv", 5, true, udf<divide>},
    {"dmod", 4, true, udf<remainder>},
    {"idiv", 2, true, udf<divideIntegers>},
    {"imod", 2, true, udf<remainderOfIntegers>},
    {"fdiv", 2, true, udf<divideFloats>},
    {"t_xor", 2, true, udf<exclusiveOr>},
    {"t_roundd", 5, true, udf<roundExact>},
    {"t_roundf", 3, true, udf<roundFloat>},
    {"t_floord", 2, true, udf<floorExact>},
    {"t_ceilingd", 2, true, udf<ceilingExact>},
    {"t_sign", 1, true, udf<sign>},
    {"t_power", 2, true, udf<power>},
    {"t_floor", 1, true, udf<floatFunction<std::floor>>},
    {"t_ceiling", 1, true, udf<floatFunction<std::ceil>>},
    {"t_sqrt", 1, true, udf<floatFunction<std::sqrt>>},
    {"t_square", 1, true, udf<floatFunction<square>>},
    {"t_exp", 1, true, udf<floatFunction<std::exp>>},
    {"t_log", 1, true, udf<floatFunction<naturalLog>>},
    {"t_log", 2, true, udf<logOfBase>},
    {"t_log10", 1, true, udf<floatFunction<log10Of>>},
    {"t_sin", 1, true, udf<floatFunction<std::sin>>},
    {"t_cos", 1, true, udf<floatFunction<std::cos>>},
    {"t_tan", 1, true, udf<floatFunction<std::tan>>},
    {"t_cot", 1, true, udf<floatFunction<cotangent>>},
    {"t_asin", 1, true, udf<floatFunction<std::asin>>},
    {"t_acos", 1, true, udf<floatFunction<std::acos>>},
    {"t_atan", 1, true, udf<floatFunction<std::atan>>},
    {"t_degrees", 1, true, udf<floatFunction<degrees>>},
    {"t_radians", 1, true, udf<floatFunction<radians>>},
    {"t_atn2", 2, true, udf<arcTangent2>},
}};

}  // namespace

std::span<const Udf> mathUdfs() { return kUdfs; }

}  // namespace kv::tsql
