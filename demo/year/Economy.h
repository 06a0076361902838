#pragma once
// Economy: chance and money of the demo year: a seeded dice that rolls alike on every machine, growth through a year,
// and amounts split to the centavo.

#include <cstdint>
#include <vector>

namespace kv {

/// Whole centavos; a debit is positive.
using Centavos = std::int64_t;

constexpr Centavos pesos(std::int64_t amount) { return amount * 100; }

class Dice {
public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}

    /// From 0 to below `limit`.
    std::int64_t below(std::int64_t limit);
    std::int64_t between(std::int64_t least, std::int64_t most) { return least + below(most - least + 1); }
    /// The amount, up to so many percent more or less.
    Centavos around(Centavos amount, int percent);
    template <class Item>
    const Item& oneOf(const std::vector<Item>& items) {
        return items[static_cast<std::size_t>(below(static_cast<std::int64_t>(items.size())))];
    }

private:
    std::uint64_t next();
    std::uint64_t state_;
};

/// So many thousandths of an amount, to the centavo.
constexpr Centavos permille(Centavos amount, std::int64_t thousandths) { return amount * thousandths / 1000; }

/// What of a balance moves after so many days, when half of it would after `halfDays`.
constexpr Centavos settled(Centavos balance, std::int64_t days, std::int64_t halfDays) {
    return balance * days / (days + halfDays);
}

/// The size of a month's business in thousandths of that of the first January: it grows by a percent a month and
/// follows the seasons.
int monthSize(int year, int month);

/// Splits an amount by weights, each part up to 15 percent off its share; the parts sum to the amount exactly.
std::vector<Centavos> splitAmount(Centavos amount, const std::vector<int>& weights, Dice& dice);

}  // namespace kv
