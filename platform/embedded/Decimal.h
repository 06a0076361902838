#pragma once
// Decimal: exact arithmetic on numbers of fixed scale that SQLite keeps as doubles. A double stands for the decimal
// number of its shortest text; within 2^50 units of its scale that number is exact.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kv::tsql {

using Int128 = __int128;

/// Largest amount of units (value * 10^scale) that a double keeps apart from its neighbours: 1.1259e15.
constexpr std::int64_t kUnitsMax = std::int64_t{1} << 50;

Int128 powerOfTen(int exponent);  ///< 0 to 38
double doublePowerOfTen(int exponent);

/// value * 10^scale as a whole number, halves away from zero. Raises 8115 beyond 38 digits or for no number.
Int128 unitsOf(double value, int scale);
/// units / 10^scale as the nearest double.
double fromUnits(Int128 units, int scale);
/// The same, raising 8115 (numeric) where the double would not give the units back.
double exactFromUnits(Int128 units, int scale);

/// units at `from` decimals as units at `to` decimals, halves away from zero.
Int128 rescaled(Int128 units, int from, int to);
Int128 rescaledDown(Int128 units, int from, int to);  ///< the same, cut toward zero

/// Nearest value of `scale` decimals; the fast path of every exact sum. Never gives -0.
double roundedTo(double value, int scale);

/// a * b with `scale` decimals, a and b having scaleA and scaleB; halves away from zero. Raises 8115 on overflow.
double decimalProduct(double a, double b, int scaleA, int scaleB, int scale);
/// a / b cut to `scale` decimals. Raises 8134, 8115.
double decimalQuotient(double a, double b, int scaleA, int scaleB, int scale);
/// a modulo b with the sign of a. Raises 8134.
double decimalRemainder(double a, double b, int scaleA, int scaleB);

/// ROUND: `places` may be negative; `cut` truncates. The units keep their scale.
Int128 roundedUnits(Int128 units, int scale, int places, bool cut);

/// "-12.50" for -1250 units of scale 2.
std::string unitsText(Int128 units, int scale);

/// A decimal text: blanks around, sign, digits, one point. `scale` decimals are kept, the rest rounds half away from
/// zero. Empty where it is no such number; raises 8115 beyond 38 digits.
std::optional<Int128> parseUnits(std::string_view text, int scale);

/// Decimal digits of the whole part and the fraction that units of a scale have at most for a precision: |units| <
/// 10^p.
bool fitsPrecision(Int128 units, int precision);

}  // namespace kv::tsql
