#include "reporting/EntryFilter.h"

#include <cmath>
#include <utility>

#include "platform/base/Date.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

std::string_view allowedKeys(EntryFilter filter) {
    switch (filter) {
        case EntryFilter::SignedNumber:
            return "1234567890.+-";
        case EntryFilter::PositiveNumber:
            return "1234567890.+";
        case EntryFilter::DateText:
            return "1234567890/";
        default:
            return {};
    }
}

bool isNumberFilter(EntryFilter filter) {
    return filter == EntryFilter::SignedNumber || filter == EntryFilter::PositiveNumber;
}

}  // namespace

std::string filterKeys(EntryFilter filter, std::string_view typed, std::string_view kept) {
    if (filter == EntryFilter::Free) return std::string(typed);
    if (filter == EntryFilter::UpperCase) return UCase(typed);
    const std::string_view allowed = allowedKeys(filter);
    bool pointUsed = isNumberFilter(filter) && kept.find('.') != std::string_view::npos;
    std::string taken;
    for (const char key : typed) {
        const bool control = static_cast<unsigned char>(key) < ' ';
        if (!control && allowed.find(key) == std::string_view::npos) continue;
        if (key == '.' && std::exchange(pointUsed, true)) continue;
        taken += key;
    }
    return taken;
}

std::string writtenBack(EntryFilter filter, const std::string& text) {
    if (isNumberFilter(filter) && IsNumeric(text)) {
        return Format(Money::fromDouble(numberOf(text)), "#,##0.00##");
    }
    if (filter == EntryFilter::DateText) {
        if (const auto date = parseDate(text)) return Format(*date, "M/d/yyyy");
    }
    return text;
}

std::string entryFault(EntryFilter filter, std::string_view text) {
    constexpr double kBound = 1e12;
    const bool number = isNumberFilter(filter) && IsNumeric(text);
    return number && std::abs(numberOf(text)) >= kBound ? "The number is too large." : "";
}

std::string pastedEntry(EntryFilter filter, std::string_view text) {
    std::string entry(trimBlanks(text));
    if (filter == EntryFilter::DateText) {
        const auto date = parseDate(entry);
        return date ? Format(*date, "M/d/yyyy") : entry;
    }
    if (!isNumberFilter(filter)) return entry;
    entry = replaceAll(entry, ",", "");
    if (entry == "-") return {};
    const bool bracketed = entry.size() > 2 && entry.front() == '(' && entry.back() == ')';
    const bool signedBehind = entry.size() > 1 && entry.back() == '-';
    if (bracketed) entry = "-" + entry.substr(1, entry.size() - 2);
    if (signedBehind) entry = "-" + entry.substr(0, entry.size() - 1);
    return entry;
}

}  // namespace kv
