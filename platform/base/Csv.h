#pragma once
// Csv: tables in comma-separated text with one heading row, as spreadsheets write them.

#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// One record as it stands in the text, with the line it begins in, from 1. `open`: a quote in it is never closed.
struct CsvRecord {
    int line = 1;
    bool open = false;
    std::vector<std::string> fields;
};
/// The records of such a text, whatever their number of fields; lines without any character are left out.
std::vector<CsvRecord> csvRecords(std::string_view text);
/// The text of a file in UTF-8: a text that is no UTF-8 is taken for Windows-1252, as spreadsheets write it.
std::string csvText(std::string_view bytes);

class CsvTable {
public:
    /// Reads UTF-8 text: "," between fields, quotes around a field that holds one, doubled quotes inside it, lines
    /// ending in LF or CR LF, a byte order mark at the start. Raises Error 5 with the line where a row has more or
    /// fewer fields than the heading, or a quote is never closed. Empty lines are skipped.
    static CsvTable parse(std::string_view text);

    const std::vector<std::string>& heading() const { return heading_; }
    std::size_t size() const { return rows_.size(); }
    /// Field of a row by its heading, letter case ignored. Raises Error 9 for an unknown heading.
    const std::string& at(std::size_t row, std::string_view column) const;
    bool has(std::string_view column) const { return indexOf(column) >= 0; }

private:
    int indexOf(std::string_view column) const;
    std::vector<std::string> heading_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace kv
