#include "platform/print/AmountInWords.h"

#include <array>

namespace kv {
namespace {

constexpr std::array<const char*, 20> kSmall = {
    "ZERO", "ONE",    "TWO",    "THREE",    "FOUR",     "FIVE",    "SIX",     "SEVEN",     "EIGHT",    "NINE",
    "TEN",  "ELEVEN", "TWELVE", "THIRTEEN", "FOURTEEN", "FIFTEEN", "SIXTEEN", "SEVENTEEN", "EIGHTEEN", "NINETEEN"};
constexpr std::array<const char*, 10> kTens = {"",      "",      "TWENTY",  "THIRTY", "FORTY",
                                               "FIFTY", "SIXTY", "SEVENTY", "EIGHTY", "NINETY"};
struct Step {
    unsigned long long size;
    const char* name;
};
constexpr std::array<Step, 6> kSteps = {{{1'000'000'000'000'000'000ULL, "QUINTILLION"},
                                         {1'000'000'000'000'000ULL, "QUADRILLION"},
                                         {1'000'000'000'000ULL, "TRILLION"},
                                         {1'000'000'000ULL, "BILLION"},
                                         {1'000'000ULL, "MILLION"},
                                         {1'000ULL, "THOUSAND"}}};

void add(std::string& out, const std::string& word) { out += (out.empty() ? "" : " ") + word; }

std::string belowThousand(unsigned number) {
    std::string out;
    if (number >= 100) add(out, std::string(kSmall[number / 100]) + " HUNDRED");
    number %= 100;
    if (number >= 20) {
        std::string tens = kTens[number / 10];
        if (number % 10 != 0) tens += std::string("-") + kSmall[number % 10];
        add(out, tens);
    } else if (number > 0) {
        add(out, kSmall[number]);
    }
    return out;
}

std::string spelled(unsigned long long number) {
    if (number == 0) return kSmall[0];
    std::string out;
    for (const Step& step : kSteps) {
        if (number >= step.size) add(out, belowThousand(static_cast<unsigned>(number / step.size)) + " " + step.name);
        number %= step.size;
    }
    if (number > 0) add(out, belowThousand(static_cast<unsigned>(number)));
    return out;
}

unsigned long long sizeOf(long long number) {
    return number < 0 ? 0ULL - static_cast<unsigned long long>(number) : static_cast<unsigned long long>(number);
}

}  // namespace

std::string numberInWords(long long number) { return (number < 0 ? "MINUS " : "") + spelled(sizeOf(number)); }

std::string amountInWords(Money amount, Centavos centavos) {
    const Money rounded = Round(amount, 2);
    const unsigned long long cents = sizeOf(rounded.units()) / 100;
    const unsigned long long pesos = cents / 100;
    const auto rest = static_cast<unsigned>(cents % 100);
    std::string out = rounded.units() < 0 ? "MINUS " : "";
    out += spelled(pesos) + (pesos == 1 ? " PESO" : " PESOS");
    if (rest > 0 && centavos == Centavos::Fraction) {
        out += std::string(" AND ") + (rest < 10 ? "0" : "") + std::to_string(rest) + "/100";
    } else if (rest > 0) {
        out += " AND " + spelled(rest) + (rest == 1 ? " CENTAVO" : " CENTAVOS");
    }
    return out + " ONLY";
}

}  // namespace kv
