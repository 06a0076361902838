#include "platform/embedded/Decimal.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

constexpr int kDigitsMax = 38;

constexpr auto kPowers = [] {
    std::array<Int128, kDigitsMax + 1> powers{};
    Int128 value = 1;
    for (auto& power : powers) {
        power = value;
        value = static_cast<Int128>(static_cast<unsigned __int128>(value) * 10);
    }
    return powers;
}();

constexpr std::array<double, 23> kExactDoubles = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                  1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

[[noreturn]] void overflow() { raise(8115, {"expression", "numeric"}); }

/// How far a product may lie from a whole number and still belong to it. The product of a value and a power of ten is
/// wrong by at most 2^-52 of itself, so a decimal tie sits near .5: what is farther away goes through the text.
double clearDistance(double scaled) { return std::fabs(scaled) < 0x1p41 ? 0.499 : 0.3; }

Int128 magnitude(Int128 value) { return value < 0 ? -value : value; }

Int128 checkedProduct(Int128 a, Int128 b) {
    Int128 out = 0;
    if (__builtin_mul_overflow(a, b, &out)) overflow();
    return out;
}

/// Units of a number with a sign, its digits and the decimal exponent of the digit string as an integer.
Int128 unitsOfDigits(bool negative, std::string_view digits, int exponent, int scale) {
    const int shift = exponent + scale;  // digits * 10^shift are the units
    Int128 units = 0;
    const int kept = shift >= 0 ? static_cast<int>(digits.size()) : static_cast<int>(digits.size()) + shift;
    if (kept + std::max(0, shift) > kDigitsMax) overflow();
    for (int i = 0; i < kept; ++i) units = units * 10 + (digits[static_cast<std::size_t>(i)] - '0');
    if (shift > 0) units *= kPowers[static_cast<std::size_t>(shift)];
    if (shift < 0 && kept >= 0 && digits[static_cast<std::size_t>(kept)] >= '5') ++units;
    return negative ? -units : units;
}

/// The slow way: through the shortest text that reads back as the same double.
Int128 unitsByText(double value, int scale) {
    std::array<char, 64> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific).ptr;
    std::string digits;
    int exponent = 0;
    bool negative = false;
    const char* at = buffer.data();
    if (*at == '-') {
        negative = true;
        ++at;
    }
    for (; at != end && *at != 'e'; ++at) {
        if (*at != '.') digits += *at;
    }
    if (at != end) std::from_chars(at[1] == '+' ? at + 2 : at + 1, end, exponent);
    exponent -= static_cast<int>(digits.size()) - 1;
    while (digits.size() > 1 && digits.back() == '0') {
        digits.pop_back();
        ++exponent;
    }
    if (digits == "0" || exponent < -400) return 0;
    return unitsOfDigits(negative, digits, exponent, scale);
}

/// (a * 10^shift) / b cut toward zero, digit by digit where the product would pass 128 bits.
Int128 shiftedQuotient(Int128 a, Int128 b, int shift) {
    Int128 wide = 0;
    if (shift <= kDigitsMax && !__builtin_mul_overflow(a, kPowers[static_cast<std::size_t>(shift)], &wide)) {
        return wide / b;
    }
    Int128 quotient = a / b;
    Int128 rest = a % b;
    for (int i = 0; i < shift; ++i) {
        rest = checkedProduct(rest, 10);
        quotient = checkedProduct(quotient, 10) + rest / b;
        rest %= b;
    }
    return quotient;
}

}  // namespace

Int128 powerOfTen(int exponent) { return kPowers[static_cast<std::size_t>(exponent)]; }

double doublePowerOfTen(int exponent) {
    const auto index = static_cast<std::size_t>(exponent);
    return index < kExactDoubles.size() ? kExactDoubles[index] : std::pow(10.0, exponent);
}

Int128 unitsOf(double value, int scale) {
    const double scaled = value * doublePowerOfTen(scale);
    if (std::fabs(scaled) < static_cast<double>(kUnitsMax)) {
        const double nearest = std::nearbyint(scaled);
        if (std::fabs(scaled - nearest) < clearDistance(scaled)) return static_cast<std::int64_t>(nearest);
    }
    if (!std::isfinite(value)) overflow();
    return unitsByText(value, scale);
}

double fromUnits(Int128 units, int scale) {
    const Int128 size = magnitude(units);
    if (size < (Int128{1} << 53) && scale <= 22) {
        return static_cast<double>(static_cast<std::int64_t>(units)) / kExactDoubles[static_cast<std::size_t>(scale)];
    }
    // Beyond 53 bits two roundings would follow each other; the text has one.
    const std::string text = unitsText(units, scale);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

double exactFromUnits(Int128 units, int scale) {
    const double value = fromUnits(units, scale);
    if (magnitude(units) >= kUnitsMax && unitsOf(value, scale) != units) overflow();
    return value;
}

Int128 rescaled(Int128 units, int from, int to) {
    if (to >= from) return checkedProduct(units, powerOfTen(to - from));
    const Int128 divisor = powerOfTen(from - to);
    Int128 quotient = units / divisor;
    if (magnitude(units % divisor) * 2 >= divisor) quotient += units < 0 ? -1 : 1;
    return quotient;
}

Int128 rescaledDown(Int128 units, int from, int to) {
    if (to >= from) return checkedProduct(units, powerOfTen(to - from));
    return units / powerOfTen(from - to);
}

double roundedTo(double value, int scale) {
    if (scale <= 22) {
        const double power = kExactDoubles[static_cast<std::size_t>(scale)];
        const double scaled = value * power;
        if (std::fabs(scaled) < static_cast<double>(kUnitsMax)) {
            const double nearest = std::nearbyint(scaled);
            if (std::fabs(scaled - nearest) < clearDistance(scaled)) return nearest / power + 0.0;
        }
    }
    return fromUnits(unitsOf(value, scale), scale) + 0.0;
}

double decimalProduct(double a, double b, int scaleA, int scaleB, int scale) {
    const Int128 product = checkedProduct(unitsOf(a, scaleA), unitsOf(b, scaleB));
    return fromUnits(rescaled(product, scaleA + scaleB, scale), scale);
}

double decimalQuotient(double a, double b, int scaleA, int scaleB, int scale) {
    Int128 divisor = unitsOf(b, scaleB);
    if (divisor == 0) raise(8134);
    const Int128 dividend = unitsOf(a, scaleA);
    int shift = scale + scaleB - scaleA;
    if (shift < 0) {
        divisor = checkedProduct(divisor, powerOfTen(-shift));
        shift = 0;
    }
    return fromUnits(shiftedQuotient(dividend, divisor, shift), scale);
}

double decimalRemainder(double a, double b, int scaleA, int scaleB) {
    const int scale = std::max(scaleA, scaleB);
    const Int128 divisor = rescaled(unitsOf(b, scaleB), scaleB, scale);
    if (divisor == 0) raise(8134);
    return fromUnits(rescaled(unitsOf(a, scaleA), scaleA, scale) % divisor, scale);
}

Int128 roundedUnits(Int128 units, int scale, int places, bool cut) {
    if (places >= scale) return units;
    const int drop = scale - places;
    if (drop > kDigitsMax) return 0;
    const Int128 divisor = powerOfTen(drop);
    Int128 quotient = units / divisor;
    const Int128 rest = magnitude(units % divisor);
    if (!cut && rest >= divisor - rest) quotient += units < 0 ? -1 : 1;
    return quotient * divisor;
}

std::string unitsText(Int128 units, int scale) {
    std::array<char, 48> buffer{};
    auto at = buffer.size();
    auto size = static_cast<unsigned __int128>(units < 0 ? -units : units);
    int count = 0;
    while (size != 0 || count <= scale) {
        if (count == scale && scale > 0) buffer[--at] = '.';
        buffer[--at] = static_cast<char>('0' + static_cast<int>(size % 10));
        size /= 10;
        ++count;
    }
    if (units < 0) buffer[--at] = '-';
    return std::string(buffer.data() + at, buffer.size() - at);
}

std::optional<Int128> parseUnits(std::string_view text, int scale) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    std::string digits;
    int decimals = -1;
    bool any = false;
    for (const char c : text) {
        if (c == '.' && decimals < 0) {
            decimals = 0;
            continue;
        }
        if (c < '0' || c > '9') return std::nullopt;
        any = true;
        if (decimals >= 0) ++decimals;
        if (c != '0' || !digits.empty()) digits += c;
    }
    if (!any) return std::nullopt;
    if (digits.empty()) return Int128{0};
    return unitsOfDigits(negative, digits, -std::max(0, decimals), scale);
}

bool fitsPrecision(Int128 units, int precision) { return magnitude(units) < powerOfTen(precision); }

}  // namespace kv::tsql
