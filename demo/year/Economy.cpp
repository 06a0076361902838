#include "demo/year/Economy.h"

#include <array>
#include <cstdlib>
#include <numeric>

namespace kv {

namespace {

constexpr int kFirstYear = 2023;
constexpr int kSpread_percent = 15;
/// Few patients in the holidays, many in the rains.
constexpr std::array<int, 12> kSeason{985, 960, 1000, 975, 990, 1015, 1050, 1060, 1035, 1010, 985, 940};

}  // namespace

std::uint64_t Dice::next() {
    state_ += 0x9e3779b97f4a7c15ULL;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
    return mixed ^ (mixed >> 31);
}

std::int64_t Dice::below(std::int64_t limit) {
    return static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(limit));
}

Centavos Dice::around(Centavos amount, int percent) {
    const Centavos reach = std::abs(amount) * percent / 100;
    return reach <= 0 ? amount : amount + between(-reach, reach);
}

int monthSize(int year, int month) {
    const int months = (year - kFirstYear) * 12 + month - 1;
    return kSeason[static_cast<std::size_t>(month - 1)] * (1000 + 10 * months) / 1000;
}

std::vector<Centavos> splitAmount(Centavos amount, const std::vector<int>& weights, Dice& dice) {
    std::vector<Centavos> parts;
    for (const int weight : weights) parts.push_back(dice.around(Centavos{weight} * 1000, kSpread_percent));
    const Centavos sum = std::accumulate(parts.begin(), parts.end(), Centavos{0});
    Centavos left = amount;
    for (Centavos& part : parts) {
        part = amount * part / sum;
        left -= part;
    }
    parts.front() += left;
    return parts;
}

}  // namespace kv
