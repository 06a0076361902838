#pragma once
// Amounts in words, as they stand on checks and vouchers.

#include <string>

#include "platform/base/Money.h"

namespace kv {

/// How the centavos of an amount are spelled.
enum class Centavos {
    Fraction,  ///< "ONE THOUSAND TWO HUNDRED PESOS AND 50/100 ONLY"
    Words,     ///< "ONE THOUSAND TWO HUNDRED PESOS AND FIFTY CENTAVOS ONLY"
};

/// The amount rounded to centavos, in capitals. Without centavos "... PESOS ONLY"; below zero "MINUS ..." first.
std::string amountInWords(Money amount, Centavos centavos = Centavos::Fraction);
/// A whole number in capitals: "TWENTY-ONE".
std::string numberInWords(long long number);

}  // namespace kv
