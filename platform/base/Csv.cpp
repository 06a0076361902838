#include "platform/base/Csv.h"

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {

namespace {

constexpr long kErrIndex = 9;

/// Cuts a text into records, one at a time.
class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {
        if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
    }

    bool more() const { return at_ < text_.size(); }

    CsvRecord record() {
        CsvRecord made{line_, false, std::vector<std::string>(1)};
        while (more()) {
            const char c = text_[at_];
            if (c == '"') {
                if (!quoted(made.fields.back())) made.open = true;
                continue;
            }
            ++at_;
            if (c == ',') {
                made.fields.emplace_back();
            } else if (c == '\n') {
                ++line_;
                break;
            } else if (c != '\r') {
                made.fields.back() += c;
            }
        }
        return made;
    }

private:
    /// False when the quote is never closed.
    bool quoted(std::string& field) {
        for (++at_; more(); ++at_) {
            if (text_[at_] == '\n') ++line_;
            if (text_[at_] != '"') {
                field += text_[at_];
            } else if (at_ + 1 < text_.size() && text_[at_ + 1] == '"') {
                field += text_[++at_];
            } else {
                ++at_;
                return true;
            }
        }
        return false;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
};

/// Length of the UTF-8 sequence at the beginning; 0 when it is none.
std::size_t sequenceLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80                    ? 1
                               : first >= 0xC2 && first < 0xE0 ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xF0 && first < 0xF5 ? 4
                                                               : 0;
    if (length == 0 || length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
    }
    return length;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string utf8Of(unsigned code) {
    if (code < 0x80) return {static_cast<char>(code)};
    if (code < 0x800) return {static_cast<char>(0xC0 | (code >> 6)), static_cast<char>(0x80 | (code & 0x3F))};
    return {static_cast<char>(0xE0 | (code >> 12)), static_cast<char>(0x80 | ((code >> 6) & 0x3F)),
            static_cast<char>(0x80 | (code & 0x3F))};
}

/// What Windows-1252 has at 0x80 to 0x9F; above it is as Unicode.
constexpr unsigned kWindows[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};

}  // namespace

std::vector<CsvRecord> csvRecords(std::string_view text) {
    std::vector<CsvRecord> records;
    Reader reader(text);
    while (reader.more()) {
        CsvRecord record = reader.record();
        if (record.fields.size() > 1 || !record.fields.front().empty() || record.open) {
            records.push_back(std::move(record));
        }
    }
    return records;
}

std::string csvText(std::string_view bytes) {
    if (isUtf8(bytes)) return std::string(bytes);
    std::string text;
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        text += utf8Of(code >= 0x80 && code < 0xA0 ? kWindows[code - 0x80] : code);
    }
    return text;
}

CsvTable CsvTable::parse(std::string_view text) {
    CsvTable table;
    for (auto& [line, open, fields] : csvRecords(text)) {
        if (open) throw Error(5, "CsvTable", "Line " + std::to_string(line) + ": a quote is never closed.");
        if (table.heading_.empty()) {
            table.heading_ = std::move(fields);
            continue;
        }
        if (fields.size() != table.heading_.size()) {
            throw Error(5, "CsvTable",
                        "Line " + std::to_string(line) + " has " + std::to_string(fields.size()) +
                            " fields, the heading has " + std::to_string(table.heading_.size()) + ".");
        }
        table.rows_.push_back(std::move(fields));
    }
    return table;
}

int CsvTable::indexOf(std::string_view column) const {
    for (std::size_t i = 0; i < heading_.size(); ++i) {
        if (equalsNoCase(heading_[i], column)) return static_cast<int>(i);
    }
    return -1;
}

const std::string& CsvTable::at(std::size_t row, std::string_view column) const {
    const int index = indexOf(column);
    if (index < 0) throw Error(kErrIndex, "CsvTable", "There is no column " + std::string(column) + ".");
    return rows_.at(row)[static_cast<std::size_t>(index)];
}

}  // namespace kv
