#include "reporting/MasterImport.h"

#include <algorithm>
#include <optional>
#include <set>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Csv.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

constexpr double kMostPercent = 100;

using Keys = std::set<std::string>;

Keys keysOf(Connection& cn, const std::string& statement) {
    Keys keys;
    const Recordset rows = cn.Open(statement);
    for (const Row& row : rows.rows()) keys.insert(UCase(trimBlanks(row.front().text())));
    return keys;
}

std::string plainHeading(std::string_view text) {
    std::string plain;
    for (const char c : UCase(text)) {
        if (c != ' ' && c != '_' && c != '.') plain += c;
    }
    return plain;
}

bool isCalled(const ImportColumn& column, std::string_view heading) {
    const std::string plain = plainHeading(heading);
    if (plainHeading(column.heading) == plain) return true;
    return std::any_of(column.aliases.begin(), column.aliases.end(),
                       [&](const std::string& alias) { return plainHeading(alias) == plain; });
}

/// Reads a file against a kind, row by row.
class ImportReader {
public:
    ImportReader(Connection& cn, const ImportKind& kind, bool replace)
        : cn_(cn), kind_(kind), replace_(replace), stored_(keysOf(cn, kind.keys)) {
        for (const ImportColumn& column : kind.columns) {
            if (!column.reference.empty()) references_[column.heading] = keysOf(cn, column.reference);
        }
    }

    ImportPreview read(std::string_view bytes) {
        if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
            fault(1, "", "The file is UTF-16. Save it as CSV UTF-8.");
            return std::move(preview_);
        }
        const std::vector<CsvRecord> records = csvRecords(csvText(bytes));
        if (records.empty()) {
            fault(1, "", "The file is empty.");
        } else if (heading(records.front())) {
            for (std::size_t i = 1; i < records.size(); ++i) record(records[i]);
            if (records.size() == 1) fault(1, "", "The file has no row below its heading.");
        }
        return std::move(preview_);
    }

private:
    void fault(int line, std::string column, std::string reason) {
        preview_.faults.push_back({line, std::move(column), std::move(reason)});
    }

    /// Finds the columns; false when the rows cannot be read by them.
    bool heading(const CsvRecord& first) {
        places_.assign(kind_.columns.size(), std::nullopt);
        width_ = first.fields.size();
        for (std::size_t f = 0; f < first.fields.size(); ++f) {
            const auto column = std::find_if(kind_.columns.begin(), kind_.columns.end(),
                                             [&](const ImportColumn& c) { return isCalled(c, first.fields[f]); });
            if (column == kind_.columns.end()) {
                preview_.ignored.push_back(first.fields[f]);
                continue;
            }
            auto& place = places_[static_cast<std::size_t>(column - kind_.columns.begin())];
            if (place) fault(first.line, column->heading, "The heading has this column twice.");
            place = f;
        }
        for (std::size_t c = 0; c < kind_.columns.size(); ++c) {
            if (kind_.columns[c].needed && !places_[c]) {
                fault(first.line, kind_.columns[c].heading, "The heading lacks this column.");
            }
        }
        return preview_.faults.empty();
    }

    void record(const CsvRecord& from) {
        if (std::all_of(from.fields.begin(), from.fields.end(),
                        [](const std::string& field) { return trimBlanks(field).empty(); })) {
            return;  // what spreadsheets leave of a cleared row
        }
        if (from.open) return fault(from.line, "", "A quote is never closed.");
        if (from.fields.size() != width_) {
            return fault(from.line, "",
                         "The row has " + std::to_string(from.fields.size()) + " fields, the heading has " +
                             std::to_string(width_) + ".");
        }
        ImportRow row{.line = from.line};
        const std::size_t before = preview_.faults.size();
        for (std::size_t c = 0; c < kind_.columns.size(); ++c) {
            if (places_[c]) field(row, kind_.columns[c], from.fields[*places_[c]]);
        }
        key(row);
        if (preview_.faults.size() == before) complete(row);
        row.bad = preview_.faults.size() != before;
        preview_.rows.push_back(std::move(row));
    }

    void field(ImportRow& row, const ImportColumn& column, std::string_view text) {
        std::string value(trimBlanks(text));
        if (column.type == ImportType::Code) value = UCase(value);
        const std::string reason = reasonAgainst(column, value);
        if (!reason.empty()) fault(row.line, column.heading, reason);
        row.values[column.heading] = std::move(value);
    }

    std::string reasonAgainst(const ImportColumn& column, std::string& value) const {
        if (value.empty()) return column.needed ? "Nothing stands here." : "";
        const std::size_t length = charCount(value);
        if (length > static_cast<std::size_t>(column.length)) {
            return "The text has " + std::to_string(length) + " characters, " + std::to_string(column.length) +
                   " are possible.";
        }
        if (value.find('\n') != std::string::npos) return "The text has more than one line.";
        if (column.type == ImportType::Code && value.find('\'') != std::string::npos) {
            return "A code cannot hold an apostrophe.";
        }
        if (column.type == ImportType::Flag && !takeFlag(value)) return "0 or 1 is expected.";
        if (column.type == ImportType::Percent &&
            (!IsNumeric(value) || numberOf(value) < 0 || numberOf(value) > kMostPercent)) {
            return "A percentage from 0 to 100 is expected.";
        }
        if (!column.choices.empty() &&
            std::find(column.choices.begin(), column.choices.end(), UCase(value)) == column.choices.end()) {
            return "'" + value + "' is none of " + join(column.choices, ", ") + ".";
        }
        return referenceReason(column, value);
    }

    static bool takeFlag(std::string& value) {
        const std::string upper = UCase(value);
        if (upper == "Y" || upper == "YES" || upper == "TRUE") value = "1";
        if (upper == "N" || upper == "NO" || upper == "FALSE") value = "0";
        return value == "0" || value == "1";
    }

    std::string referenceReason(const ImportColumn& column, const std::string& value) const {
        if (column.reference.empty() || references_.at(column.heading).contains(UCase(value))) return {};
        if (column.mayReferToFile && seen_.contains(UCase(value))) return {};
        return "There is no " + column.refers + " '" + value + "'.";
    }

    void key(ImportRow& row) {
        const ImportColumn& column = kind_.columns.front();
        const std::string key = UCase(row.values[column.heading]);
        if (key.empty()) return;
        const auto [earlier, first] = seen_.emplace(key, row.line);
        if (!first) {
            fault(row.line, column.heading,
                  "'" + key + "' stands in line " + std::to_string(earlier->second) + " already.");
        }
        row.exists = stored_.contains(key);
        if (row.exists && !replace_) fault(row.line, column.heading, "'" + key + "' already exists.");
    }

    /// Fills what the file does not have and looks at the row as a whole.
    void complete(ImportRow& row) {
        const std::string key = row.values[kind_.columns.front().heading];
        std::optional<Recordset> stored;
        if (row.exists) stored = cn_.Open(replaceAll(kind_.row, "{key}", SQLString(key)));
        for (const ImportColumn& column : kind_.columns) {
            if (row.values.contains(column.heading)) continue;
            row.values[column.heading] = stored && !stored->eof() ? (*stored)[column.heading].text() : std::string();
        }
        if (!kind_.check) return;
        const auto [column, reason] = kind_.check(cn_, row.values, row.exists);
        if (!reason.empty()) fault(row.line, column, reason);
    }

    Connection& cn_;
    const ImportKind& kind_;
    bool replace_;
    Keys stored_;
    std::map<std::string, Keys> references_;
    std::map<std::string, int> seen_;
    std::vector<std::optional<std::size_t>> places_;
    std::size_t width_ = 0;
    ImportPreview preview_;
};

}  // namespace

int ImportPreview::added() const {
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const ImportRow& row) { return !row.bad && !row.exists; }));
}

int ImportPreview::replaced() const {
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const ImportRow& row) { return !row.bad && row.exists; }));
}

bool ImportPreview::sameAs(const ImportPreview& other) const {
    return faults.size() == other.faults.size() &&
           std::equal(rows.begin(), rows.end(), other.rows.begin(), other.rows.end(),
                      [](const ImportRow& a, const ImportRow& b) {
                          return a.line == b.line && a.exists == b.exists && a.values == b.values;
                      });
}

ImportPreview previewImport(Connection& cn, const ImportKind& kind, std::string_view bytes, bool replace) {
    return ImportReader(cn, kind, replace).read(bytes);
}

bool storeImport(Session& session, const ImportKind& kind, std::string_view bytes, bool replace,
                 const ImportPreview& seen, const std::function<void(int done)>& progress) {
    Connection& cn = session.cn();
    Transaction import(cn);
    const ImportPreview now = previewImport(cn, kind, bytes, replace);
    if (!now.faults.empty() || !now.sameAs(seen)) return false;
    int done = 0;
    for (const ImportRow& row : now.rows) {
        kind.store(cn, row.values, row.exists);
        if (progress) progress(++done);
    }
    module1::SaveUserLog(session, "Imported File Maintenance | " + kind.name + " : " + std::to_string(now.added()) +
                                      " added, " + std::to_string(now.replaced()) + " replaced");
    import.commit();
    return true;
}

}  // namespace kv
