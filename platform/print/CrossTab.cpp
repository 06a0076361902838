// Cross-tabs: rows become a table with a column for each value of one expression.
#include <algorithm>

#include "platform/base/Text.h"
#include "platform/print/CellFormat.h"
#include "platform/print/Prepared.h"

namespace kv {
namespace {

constexpr std::size_t kColumnsMost = 500;

/// A key as a text by which equal values meet, letter case ignored.
std::string keyText(const Value& value) {
    if (value.isDate()) return Format(value.date(), "yyyy-MM-dd HH:mm:ss");
    return value.isNumber() ? plainText(value.number()) : UCase(value.text());
}

struct Head {
    Value key;
    std::string heading;
};

/// The distinct columns in order, with the place of each row's.
std::vector<Head> columnsOf(const CrossTab& tab, std::size_t rows,
                            const std::function<Value(const Expression&, std::size_t)>& at) {
    std::map<std::string, Head> found;
    for (std::size_t r = 0; r < rows; ++r) {
        Value key = at(tab.columns, r);
        const std::string text = keyText(key);
        if (!found.contains(text)) found[text] = {key, formatCell(at(tab.heading, r), "")};
    }
    std::vector<Head> heads;
    for (auto& [text, head] : found) heads.push_back(std::move(head));
    std::stable_sort(heads.begin(), heads.end(), [&](const Head& a, const Head& b) {
        const int order = compareValues(a.key, b.key);
        return tab.descending ? order > 0 : order < 0;
    });
    return heads;
}

ReportColumn generated(const CrossTab& tab, const std::string& field, const std::string& heading, bool bold,
                       const Template& report) {
    ReportColumn column;
    column.name = field;
    column.place = tab.place;
    column.heading = Expression::constant(heading);
    column.value = Expression::parse("[" + field + "]");
    column.value.place = tab.place;
    column.width = tab.width;
    column.align = TextAlign::Right;
    column.format = tab.format;
    column.generated = !bold;
    const bool adds = tab.total == TotalKind::Sum || tab.total == TotalKind::Count;
    if (adds) column.total = Expression::parse("sum([" + field + "])");
    column.total.place = tab.place;
    if (bold) column.style = report.styleIndex("bold");
    return column;
}

}  // namespace

ResultSet pivot(Template& report, const ResultSet& rows,
                const std::function<Value(const Expression&, std::size_t)>& at) {
    const CrossTab& tab = report.crosstab;
    const std::vector<Head> heads = columnsOf(tab, rows.rows.size(), at);
    if (heads.size() > kColumnsMost) {
        throw TemplateError({{tab.place, "the cross-tab would have " + std::to_string(heads.size()) + " columns"}});
    }
    std::map<std::string, std::size_t> headAt;
    for (std::size_t h = 0; h < heads.size(); ++h) headAt[keyText(heads[h].key)] = h;

    ResultSet out;
    out.fields = rows.fields;
    std::map<std::string, std::size_t> rowAt;
    std::vector<std::vector<Series>> cells;
    std::vector<Series> across;
    for (std::size_t r = 0; r < rows.rows.size(); ++r) {
        std::string key;
        for (const Expression& part : tab.rows) key += keyText(at(part, r)) + '\x1f';
        const auto [known, fresh] = rowAt.try_emplace(key, out.rows.size());
        if (fresh) {
            out.rows.push_back(rows.rows[r]);
            cells.emplace_back(heads.size());
            across.emplace_back();
        }
        const Value value = at(tab.value, r);
        cells[known->second][headAt[keyText(at(tab.columns, r))]].add(value);
        across[known->second].add(value);
    }
    const auto add = [&](const std::string& heading, bool total) {
        const std::string field = total ? "~total" : "~" + std::to_string(out.fields.size() - rows.fields.size() + 1);
        out.fields.push_back({field, DataType::Currency, 0, 0});
        report.columns.push_back(generated(tab, field, heading, total, report));
    };
    for (const Head& head : heads) add(head.heading, false);
    if (!tab.rowTotal.empty()) add(tab.rowTotal, true);
    constexpr std::size_t kAll = static_cast<std::size_t>(-1);
    for (std::size_t r = 0; r < out.rows.size(); ++r) {
        for (const Series& cell : cells[r]) {
            const bool empty = cell.total(TotalKind::Count, 0, kAll).integer() == 0;
            out.rows[r].push_back(empty ? Value() : cell.total(tab.total, 0, kAll));
        }
        if (!tab.rowTotal.empty()) out.rows[r].push_back(across[r].total(tab.total, 0, kAll));
    }
    return out;
}

}  // namespace kv
