#include "platform/base/Money.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/base/Error.h"

namespace kv {
namespace {

[[noreturn]] void overflow() { throw Error(kErrOverflow, "Money", "Overflow"); }

/// Divides by `divisor` and rounds the quotient half to even.
std::int64_t divideHalfEven(std::int64_t value, std::int64_t divisor) {
    std::int64_t quotient = value / divisor;
    const std::int64_t rest = value % divisor;
    const std::int64_t twice = (rest < 0 ? -rest : rest) * 2;
    if (twice > divisor || (twice == divisor && quotient % 2 != 0)) {
        quotient += value < 0 ? -1 : 1;
    }
    return quotient;
}

/// Nearest whole number, ties to even. What the product of a decimal tie (0.00015 is stored a little below) misses by
/// its last bits still counts as the tie that it stands for.
double nearestHalfEven(double scaled) {
    const double below = std::floor(scaled);
    const double distance = std::fabs(scaled - below - 0.5);
    if (distance > std::min(std::fabs(scaled) * 0x1p-51, 0.2)) return std::nearbyint(scaled);
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

}  // namespace

Money Money::fromDouble(double value) {
    const double scaled = value * static_cast<double>(kUnitsPerOne);
    // 2^63 is exact as a double, so the comparison holds at the edge
    if (!std::isfinite(scaled) || scaled >= 9223372036854775808.0 || scaled < -9223372036854775808.0) overflow();
    return Money(static_cast<std::int64_t>(nearestHalfEven(scaled)));
}

std::optional<Money> Money::parse(std::string_view text) {
    std::size_t at = 0;
    bool negative = false;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) negative = text[at++] == '-';
    __int128 units = 0;
    int decimals = -1;  // -1 before the point
    bool anyDigit = false;
    int firstDropped = 0;
    bool laterDropped = false;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '.' && decimals < 0) {
            decimals = 0;
            continue;
        }
        if (c < '0' || c > '9') return std::nullopt;
        anyDigit = true;
        if (decimals < 4) {
            units = units * 10 + (c - '0');
            if (decimals >= 0) ++decimals;
        } else if (decimals++ == 4) {
            firstDropped = c - '0';
        } else if (c != '0') {
            laterDropped = true;
        }
        if (units > (static_cast<__int128>(1) << 80)) overflow();
    }
    if (!anyDigit) return std::nullopt;
    for (int d = decimals < 0 ? 0 : decimals; d < 4; ++d) units *= 10;
    if (firstDropped > 5 || (firstDropped == 5 && (laterDropped || units % 2 != 0))) ++units;
    if (negative) units = -units;
    if (units > std::numeric_limits<std::int64_t>::max() || units < std::numeric_limits<std::int64_t>::min())
        overflow();
    return Money(static_cast<std::int64_t>(units));
}

Money Money::operator+(Money other) const {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(units_, other.units_, &sum)) overflow();
    return Money(sum);
}

Money Money::operator-(Money other) const {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(units_, other.units_, &difference)) overflow();
    return Money(difference);
}

Money Money::operator-() const { return Money() - *this; }

Money Round(Money value, int places) {
    if (places >= 4) return value;
    std::int64_t step = 1;
    for (int p = places; p < 4; ++p) step *= 10;
    std::int64_t rounded = 0;
    if (__builtin_mul_overflow(divideHalfEven(value.units(), step), step, &rounded)) overflow();
    return Money::fromUnits(rounded);
}

}  // namespace kv
