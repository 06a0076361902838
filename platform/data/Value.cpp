#include "platform/data/Value.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr long kErrInvalidNull = 94;

std::int64_t roundedInteger(double value) {
    const double rounded = std::nearbyint(value);  // ties to even, as conversions to whole numbers do
    if (!std::isfinite(rounded) || rounded >= 9223372036854775808.0 || rounded < -9223372036854775808.0) {
        throw Error(kErrOverflow, "Value", "Overflow");
    }
    return static_cast<std::int64_t>(rounded);
}

/// A whole number read without the detour through a double; nothing when the text is anything else.
bool readWhole(std::string_view raw, std::int64_t& number) {
    const std::string_view text = trimBlanks(raw);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

struct ToText {
    std::string operator()(Null) const { return {}; }
    std::string operator()(bool bit) const { return bit ? "True" : "False"; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return plainText(number); }
    std::string operator()(Money amount) const { return Format(amount, "0.00##"); }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const Date& date) const { return defaultText(date); }
};

struct ToInteger {
    std::int64_t operator()(Null) const { return 0; }
    std::int64_t operator()(bool bit) const { return bit ? 1 : 0; }
    std::int64_t operator()(std::int64_t number) const { return number; }
    std::int64_t operator()(double number) const { return roundedInteger(number); }
    std::int64_t operator()(Money amount) const { return Round(amount, 0).units() / Money::kUnitsPerOne; }
    std::int64_t operator()(const std::string& text) const {
        std::int64_t whole = 0;
        return readWhole(text, whole) ? whole : roundedInteger(numberOf(text));
    }
    std::int64_t operator()(const Date&) const { throw Error(kErrTypeMismatch, "Value", "Type mismatch"); }
};

struct ToNumber {
    double operator()(Null) const { return 0; }
    double operator()(bool bit) const { return bit ? 1 : 0; }
    double operator()(std::int64_t number) const { return static_cast<double>(number); }
    double operator()(double number) const { return number; }
    double operator()(Money amount) const { return amount.toDouble(); }
    double operator()(const std::string& text) const { return numberOf(text); }
    double operator()(const Date&) const { throw Error(kErrTypeMismatch, "Value", "Type mismatch"); }
};

struct ToMoney {
    Money operator()(Null) const { return {}; }
    Money operator()(bool bit) const { return Money::whole(bit ? 1 : 0); }
    Money operator()(std::int64_t number) const {
        if (number > std::numeric_limits<std::int64_t>::max() / Money::kUnitsPerOne ||
            number < std::numeric_limits<std::int64_t>::min() / Money::kUnitsPerOne) {
            throw Error(kErrOverflow, "Value", "Overflow");
        }
        return Money::whole(number);
    }
    Money operator()(double number) const { return Money::fromDouble(number); }
    Money operator()(Money amount) const { return amount; }
    Money operator()(const std::string& text) const {
        const auto exact = Money::parse(trimBlanks(text));
        return exact ? *exact : Money::fromDouble(numberOf(text));
    }
    Money operator()(const Date&) const { throw Error(kErrTypeMismatch, "Value", "Type mismatch"); }
};

struct ToBoolean {
    bool operator()(Null) const { return false; }
    bool operator()(bool bit) const { return bit; }
    bool operator()(std::int64_t number) const { return number != 0; }
    bool operator()(double number) const { return number != 0; }
    bool operator()(Money amount) const { return !amount.isZero(); }
    bool operator()(const std::string& text) const { return equalsNoCase(text, "True") || numberOf(text) != 0; }
    bool operator()(const Date&) const { throw Error(kErrTypeMismatch, "Value", "Type mismatch"); }
};

}  // namespace

bool Value::isNumber() const {
    return std::holds_alternative<std::int64_t>(data_) || std::holds_alternative<double>(data_) ||
           std::holds_alternative<Money>(data_) || std::holds_alternative<bool>(data_);
}

std::string Value::text() const { return std::visit(ToText{}, data_); }
std::int64_t Value::integer() const { return std::visit(ToInteger{}, data_); }
double Value::number() const { return std::visit(ToNumber{}, data_); }
Money Value::money() const { return std::visit(ToMoney{}, data_); }
bool Value::boolean() const { return std::visit(ToBoolean{}, data_); }

Date Value::date() const {
    if (isNull()) throw Error(kErrInvalidNull, "Value", "Invalid use of Null");
    if (const auto* date = std::get_if<Date>(&data_)) return *date;
    if (const auto* text = std::get_if<std::string>(&data_)) return CDate(*text);
    throw Error(kErrTypeMismatch, "Value", "Type mismatch");
}

}  // namespace kv
