#include "tools/sqlconsole/Csv.h"

#include <cstdio>
#include <ostream>

#include "platform/base/Text.h"

namespace kv::console {

namespace {

constexpr std::string_view kNull = "NULL";

std::string quoted(std::string_view text) { return "\"" + replaceAll(text, "\"", "\"\"") + "\""; }

bool needsQuotes(std::string_view text) {
    return text == kNull || text.find_first_of(",\"\r\n") != std::string_view::npos;
}

std::string moneyText(Money amount, const Field& field) {
    const int places = field.type == DataType::Decimal ? field.scale : 4;
    return Format(amount, places > 0 ? "0." + std::string(static_cast<std::size_t>(places), '0') : "0");
}

std::string floatText(double number, const Field& field) {
    if (field.type != DataType::Decimal) return plainText(number);
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", field.scale, number);
    return text;
}

}  // namespace

std::string csvCell(const Value& value, const Field& field, bool alone) {
    if (value.isNull()) return std::string(kNull);
    const auto& raw = value.raw();
    if (const auto* bit = std::get_if<bool>(&raw)) return *bit ? "1" : "0";
    if (const auto* money = std::get_if<Money>(&raw)) return moneyText(*money, field);
    if (const auto* number = std::get_if<double>(&raw)) return floatText(*number, field);
    if (const auto* date = std::get_if<Date>(&raw))
        return Format(*date, field.type == DataType::Date ? "yyyy-MM-dd" : "yyyy-MM-dd HH:mm:ss.fff");
    const std::string text = value.text();
    if (text.empty() && alone && value.isText()) return "\"\"";
    return value.isText() && needsQuotes(text) ? quoted(text) : text;
}

void writeCsv(std::ostream& out, const ResultSet& result) {
    const bool alone = result.fields.size() == 1;
    for (std::size_t i = 0; i < result.fields.size(); ++i) {
        const std::string& name = result.fields[i].name;
        out << (i > 0 ? "," : "") << (needsQuotes(name) ? quoted(name) : name);
    }
    out << '\n';
    for (const Row& row : result.rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            out << (i > 0 ? "," : "") << csvCell(row[i], result.fields[i], alone);
        out << '\n';
    }
    out << '\n';
}

}  // namespace kv::console
