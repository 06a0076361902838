#pragma once
// Money: a fixed-point amount of four decimals in 64 bits. Addition is exact; overflow raises Error 6.

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

class Money {
public:
    static constexpr std::int64_t kUnitsPerOne = 10'000;

    constexpr Money() = default;
    static constexpr Money fromUnits(std::int64_t tenThousandths) { return Money(tenThousandths); }
    static constexpr Money whole(std::int64_t amount) { return Money(amount * kUnitsPerOne); }
    /// Rounds half to even at the fourth decimal. Raises 6 when out of range or not finite.
    static Money fromDouble(double value);
    /// Reads "[-]digits[.digits]" exactly; more than four decimals round half to even. Nothing else is taken.
    static std::optional<Money> parse(std::string_view text);

    constexpr std::int64_t units() const { return units_; }
    double toDouble() const { return static_cast<double>(units_) / kUnitsPerOne; }
    constexpr bool isZero() const { return units_ == 0; }

    Money operator+(Money other) const;
    Money operator-(Money other) const;
    Money operator-() const;
    Money& operator+=(Money other) { return *this = *this + other; }
    Money& operator-=(Money other) { return *this = *this - other; }
    constexpr auto operator<=>(const Money&) const = default;

private:
    explicit constexpr Money(std::int64_t units) : units_(units) {}
    std::int64_t units_ = 0;
};

/// Rounds to `places` (0 to 4) decimals, ties to even.
Money Round(Money value, int places);

}  // namespace kv
