#include "platform/embedded/ClientSink.h"

#include <cmath>

namespace kv::tsql {
namespace {

constexpr int kStoredDateLength = 23;

int digits(const unsigned char* text, int count) {
    int value = 0;
    for (int i = 0; i < count; ++i) value = value * 10 + (text[i] - '0');
    return value;
}

/// A stored date: "yyyy-mm-dd hh:mm:ss.mmm".
Value storedDate(const unsigned char* t) {
    return Value(Date(digits(t, 4), digits(t + 5, 2), digits(t + 8, 2), digits(t + 11, 2), digits(t + 14, 2),
                      digits(t + 17, 2), digits(t + 20, 3)));
}

/// The common kinds without a detour over Datum.
Value clientColumn(sqlite3_stmt* stmt, int index, const Type& type) {
    const int stored = sqlite3_column_type(stmt, index);
    if (stored == SQLITE_NULL) return {};
    if (stored == SQLITE_INTEGER && type.isInteger() && type.kind != Kind::Bit) {
        return Value(static_cast<std::int64_t>(sqlite3_column_int64(stmt, index)));
    }
    if (stored == SQLITE_TEXT && type.isText()) {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(stmt, index));
        return Value(std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(stmt, index))));
    }
    if (stored == SQLITE_FLOAT && type.isMoney()) {
        return Value(Money::fromUnits(std::llround(sqlite3_column_double(stmt, index) * Money::kUnitsPerOne)));
    }
    if (stored == SQLITE_TEXT && type.isDate() && sqlite3_column_bytes(stmt, index) == kStoredDateLength) {
        return storedDate(sqlite3_column_text(stmt, index));
    }
    return clientValue(columnDatum(stmt, index), type);
}

std::vector<Field> shownFields(const std::vector<OutColumn>& columns) {
    std::vector<Field> fields;
    fields.reserve(columns.size());
    for (const OutColumn& column : columns) {
        Field field;
        field.name = column.name;
        field.type = dataTypeOf(column.type);
        field.size = column.type.isText() ? displaySize(column.type) : 0;
        field.scale = column.type.isDecimal() ? column.type.scale : 0;
        fields.push_back(std::move(field));
    }
    return fields;
}

}  // namespace

void ClientSink::begin(const std::vector<OutColumn>& columns, FieldList& shown) {
    if (shown.empty()) shown = shownFields(columns);
    results_.emplace_back().fields = shown;
}

void ClientSink::row(sqlite3_stmt* stmt, const std::vector<OutColumn>& columns) {
    Row row;
    row.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        row.push_back(clientColumn(stmt, static_cast<int>(i), columns[i].type));
    }
    results_.back().rows.push_back(std::move(row));
}

void DatumSink::row(sqlite3_stmt* stmt, const std::vector<OutColumn>& columns) {
    std::vector<Datum> row;
    row.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) row.push_back(columnDatum(stmt, static_cast<int>(i)));
    sets.back().rows.push_back(std::move(row));
}

}  // namespace kv::tsql
