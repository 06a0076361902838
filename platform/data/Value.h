#pragma once
// Value: one typed field value of a database row: null, bit, integer, float, money, text or date.

#include <cstdint>
#include <string>
#include <variant>

#include "platform/base/Date.h"
#include "platform/base/Money.h"

namespace kv {

struct Null {
    auto operator<=>(const Null&) const = default;
};

/// Type codes of fields, by the numbers that database clients of this kind use.
enum class DataType : int {
    Empty = 0,
    SmallInt = 2,
    Integer = 3,
    Double = 5,
    Currency = 6,
    Boolean = 11,
    BigInt = 20,
    Guid = 72,
    Char = 129,
    Decimal = 131,
    Date = 7,
    DateTime = 135,
    VarChar = 200,
    VarWChar = 202,
};

class Value {
public:
    Value() = default;
    Value(Null) {}
    Value(bool bit) : data_(bit) {}
    Value(int number) : data_(std::int64_t{number}) {}
    Value(std::int64_t number) : data_(number) {}
    Value(double number) : data_(number) {}
    Value(Money amount) : data_(amount) {}
    Value(std::string text) : data_(std::move(text)) {}
    Value(const char* text) : data_(std::string(text)) {}
    Value(Date date) : data_(date) {}

    bool isNull() const { return std::holds_alternative<Null>(data_); }
    bool isText() const { return std::holds_alternative<std::string>(data_); }
    bool isDate() const { return std::holds_alternative<Date>(data_); }
    bool isMoney() const { return std::holds_alternative<Money>(data_); }
    bool isNumber() const;

    /// NULL as the empty text; money with 4 decimals cut to those in use, at least 2; dates as defaultText.
    std::string text() const;
    /// NULL and text that is no number give 0.
    std::int64_t integer() const;
    double number() const;
    Money money() const;
    bool boolean() const;
    /// Raises Error 94 on NULL, 13 on what is no date.
    Date date() const;

    const std::variant<Null, bool, std::int64_t, double, Money, std::string, Date>& raw() const { return data_; }
    bool operator==(const Value&) const = default;

private:
    std::variant<Null, bool, std::int64_t, double, Money, std::string, Date> data_;
};

}  // namespace kv
