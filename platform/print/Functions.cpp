// The functions of the expression language, one row each.
#include <cmath>

#include "platform/base/Error.h"
#include "platform/base/Text.h"
#include "platform/print/AmountInWords.h"
#include "platform/print/CellFormat.h"
#include "platform/print/Expression.h"

namespace kv {
namespace {

using Args = std::vector<Value>;

constexpr std::int64_t kTextMost = 10'000;  // of repeat() and the pads

std::size_t countOf(const Value& v) {
    const std::int64_t n = v.integer();
    return static_cast<std::size_t>(n < 0 ? 0 : n > kTextMost ? kTextMost : n);
}
std::string padding(const Args& a, const std::string& text) {
    const std::size_t want = countOf(a[1]);
    const std::string with = a.size() > 2 ? midChars(a[2].text(), 0, 1) : " ";
    std::string out;
    for (std::size_t n = charCount(text); n < want; ++n) out += with;
    return out;
}
Date dateOf(const Value& v) { return v.isText() ? CDate(v.text()) : v.date(); }

/// "202403" as the first day of its month.
Date monthOf(const Value& v) {
    if (v.isDate()) return Date::serial(v.date().year(), v.date().month(), 1);
    const std::int64_t period = v.isText() ? static_cast<std::int64_t>(numberOf(v.text())) : v.integer();
    const auto month = static_cast<int>(period % 100);
    if (period < 10'000 || period > 999'999 || month < 1 || month > 13) {
        throw Error(5, "Expression", "'" + v.text() + "' is no period");
    }
    // the thirteenth month closes the year: its days are those of December
    return Date::serial(static_cast<int>(period / 100), month == 13 ? 12 : month, 1);
}

Value upper(const Args& a) { return UCase(a[0].text()); }
Value lower(const Args& a) { return LCase(a[0].text()); }
Value proper(const Args& a) { return properCase(a[0].text()); }
Value trim(const Args& a) { return std::string(trimBlanks(a[0].text())); }
Value left(const Args& a) { return midChars(a[0].text(), 0, countOf(a[1])); }
Value right(const Args& a) {
    const std::string text = a[0].text();
    const std::size_t all = charCount(text), want = countOf(a[1]);
    return want >= all ? text : midChars(text, all - want);
}
Value mid(const Args& a) {
    const std::size_t from = countOf(a[1]);
    return midChars(a[0].text(), from == 0 ? 0 : from - 1, a.size() > 2 ? countOf(a[2]) : std::string::npos);
}
Value len(const Args& a) { return static_cast<std::int64_t>(charCount(a[0].text())); }
Value replace(const Args& a) { return replaceAll(a[0].text(), a[1].text(), a[2].text()); }
Value contains(const Args& a) { return containsNoCase(a[0].text(), a[1].text()); }
Value startsWith(const Args& a) { return startsNoCase(a[0].text(), a[1].text()); }
Value repeat(const Args& a) {
    std::string out;
    const std::string part = a[0].text();
    for (std::size_t n = countOf(a[1]); n > 0 && out.size() < static_cast<std::size_t>(kTextMost); --n) out += part;
    return out;
}
Value padLeft(const Args& a) { return padding(a, a[0].text()) + a[0].text(); }
Value padRight(const Args& a) { return a[0].text() + padding(a, a[0].text()); }
Value joinWords(const Args& a) {
    std::string out;
    for (std::size_t i = 1; i < a.size(); ++i) {
        const std::string part = a[i].text();
        if (!part.empty()) out += (out.empty() ? "" : a[0].text()) + part;
    }
    return out;
}
Value text(const Args& a) { return a[0].text(); }
Value isNull(const Args& a) { return a[0].isNull(); }
Value isBlank(const Args& a) { return trimBlanks(a[0].text()).empty(); }
Value coalesce(const Args& a) {
    for (const Value& v : a) {
        if (!v.isNull() && !(v.isText() && v.text().empty())) return v;
    }
    return a.back();
}

Value number(const Args& a) { return a[0].isText() ? numberOf(a[0].text()) : a[0].number(); }
Value money(const Args& a) { return a[0].isText() ? Money::fromDouble(numberOf(a[0].text())) : a[0].money(); }
Value whole(const Args& a) {
    const double cut = std::trunc(a[0].number());
    if (!(std::fabs(cut) < 9.2e18)) throw Error(kErrOverflow, "Expression", "Overflow");
    return a[0].isMoney() ? a[0].money().units() / Money::kUnitsPerOne : static_cast<std::int64_t>(cut);
}
Value roundTo(const Args& a) {
    const int places = static_cast<int>(a.size() > 1 ? a[1].integer() : 0);
    if (places < 0 || places > 9) throw Error(5, "Expression", "round() takes 0 to 9 decimals");
    if (a[0].isMoney()) return Round(a[0].money(), places);
    const double step = std::pow(10.0, places);
    return std::nearbyint(a[0].number() * step) / step;
}
Value absolute(const Args& a) { return compareValues(a[0], Value(0)) < 0 ? subtractValues(Value(0), a[0]) : a[0]; }
Value signOf(const Args& a) { return compareValues(a[0], Value(0)); }
Value least(const Args& a) {
    Value best = a[0];
    for (const Value& v : a) best = compareValues(v, best) < 0 ? v : best;
    return best;
}
Value greatest(const Args& a) {
    Value best = a[0];
    for (const Value& v : a) best = compareValues(v, best) > 0 ? v : best;
    return best;
}
Value ratio(const Args& a) { return a[1].number() == 0 ? Value() : Value(a[0].number() / a[1].number()); }

Value date(const Args& a) {
    if (a.size() == 1) return a[0].isNull() ? Value() : Value(dateOf(a[0]));
    if (a.size() == 2) throw Error(5, "Expression", "date() takes a text, or year, month and day");
    const auto part = [&](std::size_t i) {
        return static_cast<int>(std::clamp<std::int64_t>(a[i].integer(), -9999, 9999));
    };
    return Date::serial(part(0), part(1), part(2));
}
Value year(const Args& a) { return dateOf(a[0]).year(); }
Value month(const Args& a) { return dateOf(a[0]).month(); }
Value day(const Args& a) { return dateOf(a[0]).day(); }
int daysOf(const Value& v) { return static_cast<int>(std::clamp<std::int64_t>(v.integer(), -3'000'000, 3'000'000)); }
Value addDays(const Args& a) { return dateOf(a[0]).addDays(daysOf(a[1])); }
Value addMonths(const Args& a) {
    return dateOf(a[0]).addMonths(static_cast<int>(std::clamp<std::int64_t>(a[1].integer(), -90'000, 90'000)));
}
Value periodStart(const Args& a) { return monthOf(a[0]); }
Value periodEnd(const Args& a) {
    const Date first = monthOf(a[0]);
    return Date(first.year(), first.month(), daysInMonth(first.year(), first.month()));
}
Value periodName(const Args& a) { return Format(monthOf(a[0]), a.size() > 1 ? a[1].text() : "MMMM yyyy"); }

Value format(const Args& a) { return formatCell(a[0], a[1].text()); }
Value inWords(const Args& a) {
    const bool spelled = a.size() > 1 && equalsNoCase(a[1].text(), "words");
    return amountInWords(a[0].money(), spelled ? Centavos::Words : Centavos::Fraction);
}
Value numberWords(const Args& a) { return numberInWords(a[0].integer()); }

}  // namespace

const std::vector<ExprFunction>& expressionFunctions() {
    // clang-format off
    static const std::vector<ExprFunction> kFunctions = {
        {"upper", 1, 1, upper, "upper(text): in capitals"},
        {"lower", 1, 1, lower, "lower(text): in small letters"},
        {"proper", 1, 1, proper, "proper(text): each word with a capital"},
        {"trim", 1, 1, trim, "trim(text): without blanks at both ends"},
        {"left", 2, 2, left, "left(text, n): the first n characters"},
        {"right", 2, 2, right, "right(text, n): the last n characters"},
        {"mid", 2, 3, mid, "mid(text, start, n): n characters from the start-th, counted from 1"},
        {"len", 1, 1, len, "len(text): the number of characters"},
        {"replace", 3, 3, replace, "replace(text, from, to): every from becomes to"},
        {"contains", 2, 2, contains, "contains(text, part): true when part stands in text, letter case ignored"},
        {"startsWith", 2, 2, startsWith, "startsWith(text, part): true when text begins with part"},
        {"repeat", 2, 2, repeat, "repeat(text, n): text n times"},
        {"padLeft", 2, 3, padLeft, "padLeft(text, n, with): filled on the left to n characters"},
        {"padRight", 2, 3, padRight, "padRight(text, n, with): filled on the right to n characters"},
        {"joinWords", 2, -1, joinWords, "joinWords(separator, a, b, ...): the texts that are not empty, joined"},
        {"text", 1, 1, text, "text(value): the value as a plain text"},
        {"isNull", 1, 1, isNull, "isNull(value): true for a field without a value"},
        {"isBlank", 1, 1, isBlank, "isBlank(value): true for no value and for blanks"},
        {"coalesce", 1, -1, coalesce, "coalesce(a, b, ...): the first that has a value"},
        {"number", 1, 1, number, "number(value): as a number"},
        {"money", 1, 1, money, "money(value): as an amount of four exact decimals"},
        {"int", 1, 1, whole, "int(number): without its decimals"},
        {"round", 1, 2, roundTo, "round(number, decimals): ties to the even digit"},
        {"abs", 1, 1, absolute, "abs(number): without its sign"},
        {"sign", 1, 1, signOf, "sign(number): -1, 0 or 1"},
        {"least", 1, -1, least, "least(a, b, ...): the smallest"},
        {"greatest", 1, -1, greatest, "greatest(a, b, ...): the largest"},
        {"ratio", 2, 2, ratio, "ratio(a, b): a / b, without a value when b is zero"},
        {"date", 1, 3, date, "date(text) or date(year, month, day): a date"},
        {"year", 1, 1, year, "year(date): its year"},
        {"month", 1, 1, month, "month(date): its month, 1 to 12"},
        {"day", 1, 1, day, "day(date): its day, 1 to 31"},
        {"addDays", 2, 2, addDays, "addDays(date, n): n days later"},
        {"addMonths", 2, 2, addMonths, "addMonths(date, n): n months later"},
        {"periodStart", 1, 1, periodStart, "periodStart('202403'): the period's first day"},
        {"periodEnd", 1, 1, periodEnd, "periodEnd('202403'): the period's last day"},
        {"periodName", 1, 2, periodName, "periodName('202403', format): the month in words, 'March 2024'"},
        {"format", 2, 2, format, "format(value, format): as a cell of that format shows it"},
        {"inWords", 1, 2, inWords, "inWords(amount) or inWords(amount, 'words'): pesos and centavos in words"},
        {"numberInWords", 1, 1, numberWords, "numberInWords(n): a whole number in words"},
    };
    // clang-format on
    return kFunctions;
}

const ExprFunction* findFunction(std::string_view name) {
    for (const ExprFunction& f : expressionFunctions()) {
        if (equalsNoCase(f.name, name)) return &f;
    }
    return nullptr;
}

}  // namespace kv
