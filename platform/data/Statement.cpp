#include "platform/data/Statement.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr long kErrInvalidArgument = 5;
constexpr std::string_view kPlace = "{}";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

/// Bytes of the well-formed UTF-8 character at `at`; 0 when there is none.
std::size_t utf8Length(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(i < text.size() ? text[i] : 0); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) return 0;
    }
    const unsigned char second = byte(at + 1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool outside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return overlong || outside ? 0 : length;
}

std::string shortest(double value) {
    if (!std::isfinite(value)) throw Error(kErrOverflow, "Statement", "Overflow");
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end.ptr};
}

std::string dateText(const Date& date) {
    return Format(date, date == date.dayOnly() ? "yyyy-MM-dd" : "yyyy-MM-ddTHH:nn:ss.fff");
}

std::string quotedText(std::string_view fit) { return "'" + std::string(fit) + "'"; }

/// Whether a point behind `text` is between apostrophes. Comments and brackets do not occur in our templates.
bool endsInText(std::string_view text, bool inText) {
    for (const char c : text) inText ^= c == '\'';
    return inText;
}

struct Literal {
    std::string operator()(Null) const { return "NULL"; }
    std::string operator()(bool bit) const { return bit ? "1" : "0"; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return shortest(number); }
    std::string operator()(Money amount) const { return Format(amount, "0.00##"); }
    std::string operator()(const std::string& text) const { return quotedText(escaped(text)); }
    std::string operator()(const Date& date) const { return quotedText(dateText(date)); }
};

}  // namespace

std::string SQLString(std::string_view text) { return escaped(trimBlanks(text)); }

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size() + 2);
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = utf8Length(text, i);
        if (length == 0) {
            out += kReplacement;
        } else if (text[i] == '\'') {
            out += "''";
        } else if (text[i] != '\0') {
            out.append(text.substr(i, length));
        }
        i += length == 0 ? 1 : length;
    }
    return out;
}

std::string sqlLiteral(const Value& value) { return std::visit(Literal{}, value.raw()); }

std::string sqlName(std::string_view name) {
    bool bracketed = false;
    bool good = !name.empty();
    for (const char c : name) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                           c == '#' || c == '@' || c == '$' || c == '.';
        if (bracketed) {
            if (c == ']') bracketed = false;
            good = good && c != '[' && static_cast<unsigned char>(c) >= ' ';
        } else if (c == '[') {
            bracketed = true;
        } else {
            good = good && plain;
        }
    }
    if (!good || bracketed) {
        throw Error(kErrInvalidArgument, "Statement", "Not a name of the database: " + std::string(name));
    }
    return std::string(name);
}

Statement call(std::string_view procedure) { return {sqlName(procedure), true}; }

Statement sql(std::string_view pieces) {
    Statement made("", false);
    made.rest_ = pieces;
    return made;
}

bool Statement::openPlace() {
    const std::size_t place = rest_.find(kPlace);
    if (place == std::string::npos) {
        throw Error(kErrInvalidArgument, "Statement", "No place left for a value in: " + text_ + rest_);
    }
    inText_ = endsInText(std::string_view(rest_).substr(0, place), inText_);
    text_.append(rest_, 0, place);
    rest_.erase(0, place + kPlace.size());
    return inText_;
}

Statement& Statement::put(std::string_view bare, bool quoted) {
    bool inText = false;
    if (call_) {
        text_ += hasArgument_ ? separator_ : " ";
        hasArgument_ = true;
    } else {
        inText = openPlace();
    }
    if (quoted && !inText) {
        text_ += quotedText(bare);
    } else {
        text_ += bare;
    }
    return *this;
}

Statement& Statement::text(std::string_view value) { return put(SQLString(value), true); }
Statement& Statement::exact(std::string_view value) { return put(escaped(value), true); }
Statement& Statement::amount(Money value) { return put(Format(value, "0.00"), false); }
Statement& Statement::number(double value) { return put(shortest(value), false); }
Statement& Statement::flag(bool value) { return put(value ? "1" : "0", false); }
Statement& Statement::null() { return put("NULL", false); }
Statement& Statement::name(std::string_view name) { return put(sqlName(name), false); }

Statement& Statement::date(const Date& value, std::string_view pattern) {
    return put(escaped(Format(value, pattern)), true);
}

Statement& Statement::value(const Value& value) {
    if (value.isText()) return exact(value.text());
    if (value.isDate()) return put(dateText(value.date()), true);
    return put(sqlLiteral(value), false);
}

Statement& Statement::separator(std::string_view separator) {
    separator_ = separator;
    return *this;
}

Statement& Statement::more(std::string_view piece) {
    if (call_) {
        text_ += piece;
    } else {
        rest_ += piece;
    }
    return *this;
}

std::string Statement::str() const {
    if (rest_.find(kPlace) != std::string::npos) {
        throw Error(kErrInvalidArgument, "Statement", "A place is left open in: " + text_ + rest_);
    }
    return text_ + rest_;
}

}  // namespace kv
