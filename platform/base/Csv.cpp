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
    int line() const { return line_; }

    std::vector<std::string> record() {
        std::vector<std::string> fields(1);
        while (more()) {
            const char c = text_[at_];
            if (c == '"') {
                quoted(fields.back());
                continue;
            }
            ++at_;
            if (c == ',') {
                fields.emplace_back();
            } else if (c == '\n') {
                ++line_;
                break;
            } else if (c != '\r') {
                fields.back() += c;
            }
        }
        return fields;
    }

private:
    void quoted(std::string& field) {
        const int opened = line_;
        for (++at_; more(); ++at_) {
            if (text_[at_] == '\n') ++line_;
            if (text_[at_] != '"') {
                field += text_[at_];
            } else if (at_ + 1 < text_.size() && text_[at_ + 1] == '"') {
                field += text_[++at_];
            } else {
                ++at_;
                return;
            }
        }
        throw Error(5, "CsvTable", "Line " + std::to_string(opened) + ": a quote is never closed.");
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
};

}  // namespace

CsvTable CsvTable::parse(std::string_view text) {
    CsvTable table;
    Reader reader(text);
    while (reader.more()) {
        const int line = reader.line();
        std::vector<std::string> fields = reader.record();
        if (fields.size() == 1 && fields[0].empty()) continue;
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
