#include "reporting/ReportExport.h"

#include "platform/base/Text.h"

namespace kv {
namespace {

std::string cellText(const Value& value, DataType type) {
    if (value.isNull()) return {};
    return type == DataType::VarChar ? "\"" + replaceAll(value.text(), "\"", "") + "\"" : value.text();
}

}  // namespace

std::string exportText(const Recordset& rows) {
    std::vector<std::string> names;
    for (const Field& field : rows.fields()) names.push_back("\"" + field.name + "\"");
    std::string text = join(names, ",") + "\r\n";
    std::string line;
    for (const Row& row : rows.rows()) {
        std::vector<std::string> cells;
        for (std::size_t c = 0; c < row.size(); ++c) cells.push_back(cellText(row[c], rows.fields()[c].type));
        line = join(cells, ",") + "\r\n";
        text += line;
    }
    return text + (line.empty() ? "\r\n" : line);
}

}  // namespace kv
