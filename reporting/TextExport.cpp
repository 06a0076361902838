#include "reporting/TextExport.h"

#include "platform/base/Text.h"

namespace kv {
namespace {

std::string cellText(std::string text, bool ForFile) {
    for (const char* lineEnd : {"\r\n", "\r", "\n"}) text = replaceAll(text, lineEnd, "_");
    text = replaceAll(text, "\"", "");
    if (!ForFile) return replaceAll(text, "\t", " ");
    return text.find(',') == std::string::npos ? text : '"' + text + '"';
}

}  // namespace

std::string gluedText(const Recordset& rows) {
    std::string text;
    for (const Row& row : rows.rows()) {
        for (const Value& value : row) text += value.text();
        text += "\r\n";
    }
    return text;
}

std::string cellsText(const std::vector<std::vector<std::string>>& rows, bool ForFile) {
    std::vector<std::string> lines;
    lines.reserve(rows.size());
    for (const auto& row : rows) {
        std::vector<std::string> cells;
        cells.reserve(row.size());
        for (const std::string& cell : row) cells.push_back(cellText(cell, ForFile));
        lines.push_back(join(cells, ForFile ? "," : "\t"));
    }
    return join(lines, "\r\n");
}

}  // namespace kv
