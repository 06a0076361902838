// Spreadsheets: the table of a report as an .xlsx file, row by row, with numbers as numbers and dates as dates.
#include <xlsxwriter.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

#include "platform/base/Text.h"
#include "platform/print/CellFormat.h"
#include "platform/print/TableOutput.h"

namespace kv {
namespace {

constexpr double kMmPerCharacter = 2.0;
constexpr double kWidthLeast = 8, kWidthMost = 60, kWidthFree = 42;
constexpr std::size_t kRowsMost = 1'048'576;
constexpr std::size_t kSheetNameMost = 31;
constexpr std::int64_t kExactWhole = 999'999'999'999'999;  // cells are floating point: fifteen digits

/// A sheet's name may not hold some characters and has 31 at most.
std::string sheetName(const std::string& title) {
    std::string name;
    for (const char c : title) name += std::string_view("[]:*?/\\").find(c) == std::string_view::npos ? c : ' ';
    name = midChars(trimBlanks(name), 0, kSheetNameMost);
    while (!name.empty() && (name.front() == '\'' || name.back() == '\'')) name = midChars(name, 1);
    return name.empty() ? "Report" : name;
}

class XlsxSink : public TableSink {
public:
    XlsxSink(const std::string& path, const Template& report, XlsxKind kind) : kind_(kind) {
        lxw_workbook_options options{};
        options.constant_memory = 1;
        book_ = workbook_new_opt(path.c_str(), &options);
        if (book_ == nullptr) throw Error(75, "Report", "The file cannot be written: " + path);
        sheet_ = workbook_add_worksheet(book_, sheetName(report.title).c_str());
        lxw_doc_properties about{};
        title_ = report.title;
        about.title = title_.data();
        workbook_set_properties(book_, &about);
        if (report.page.width > report.page.height) worksheet_set_landscape(sheet_);
        worksheet_set_paper(sheet_, 9);
        worksheet_fit_to_pages(sheet_, 1, 0);
    }
    ~XlsxSink() override {
        if (book_ != nullptr) workbook_close(book_);
    }

    lxw_error close() {
        if (kind_ == XlsxKind::Tabular && !columns_.empty() && line_ > 1) {
            worksheet_autofilter(sheet_, 0, 0, line_ - 1, static_cast<lxw_col_t>(columns_.size() - 1));
        }
        return workbook_close(std::exchange(book_, nullptr));
    }

    void title(const std::string& line, int index) override {
        worksheet_write_string(sheet_, next(), 0, line.c_str(), format({index == 0 ? 14.0 : 11.0, index < 2, "", 0}));
    }

    void head(const std::vector<TableColumn>& columns) override {
        columns_ = columns;
        for (std::size_t c = 0; c < columns.size(); ++c) {
            const double mm = columns[c].width_mm;
            const double chars = mm > 0 ? std::clamp(mm / kMmPerCharacter, kWidthLeast, kWidthMost) : kWidthFree;
            const auto at = static_cast<lxw_col_t>(c);
            worksheet_set_column(sheet_, at, at, chars, nullptr);
        }
        if (line_ > 0) next();
        const lxw_row_t row = next();
        for (std::size_t c = 0; c < columns.size(); ++c) {
            lxw_format* look = format({11, true, "", columns[c].right ? 2 : 1});
            worksheet_write_string(sheet_, row, static_cast<lxw_col_t>(c), columns[c].heading.c_str(), look);
        }
        worksheet_freeze_panes(sheet_, row + 1, 0);
        worksheet_repeat_rows(sheet_, row, row);
    }

    void groupHead(const std::string& text, int) override {
        worksheet_write_string(sheet_, next(), 0, text.c_str(), format({11, true, "", 0}));
    }

    void row(const std::vector<Value>& values) override {
        const lxw_row_t row = next();
        for (std::size_t c = 0; c < values.size(); ++c) cell(row, c, values[c], false, 0);
    }

    void totals(const std::string& label, const std::vector<Value>& values, int level) override {
        const lxw_row_t row = next();
        worksheet_write_string(sheet_, row, 0, label.c_str(), format({11, true, "", 0}));
        for (std::size_t c = 0; c < values.size(); ++c) {
            if (!values[c].isNull() && (c > 0 || label.empty())) cell(row, c, values[c], true, level < 0 ? 4 : 3);
        }
    }

private:
    struct Look {
        double size;
        bool bold;
        std::string number;
        int edge;  ///< 1 heading left, 2 heading right, 3 sum, 4 grand sum
        auto operator<=>(const Look&) const = default;
    };

    lxw_row_t next() {
        if (line_ >= kRowsMost) throw Error(75, "Report", "A spreadsheet holds 1,048,576 rows at most; use csv");
        return line_++;
    }

    lxw_format* format(const Look& look) {
        lxw_format*& known = formats_[look];
        if (known != nullptr) return known;
        known = workbook_add_format(book_);
        format_set_font_size(known, look.size);
        if (look.bold) format_set_bold(known);
        if (!look.number.empty()) format_set_num_format(known, look.number.c_str());
        if (look.edge == 1 || look.edge == 2) {
            format_set_bottom(known, LXW_BORDER_THIN);
            format_set_align(known, LXW_ALIGN_VERTICAL_BOTTOM);
            format_set_align(known, look.edge == 2 ? LXW_ALIGN_RIGHT : LXW_ALIGN_LEFT);
            format_set_text_wrap(known);
        }
        if (look.edge >= 3) format_set_top(known, LXW_BORDER_THIN);
        if (look.edge == 4) format_set_bottom(known, LXW_BORDER_DOUBLE);
        return known;
    }

    void cell(lxw_row_t row, std::size_t c, const Value& value, bool bold, int edge) {
        const auto at = static_cast<lxw_col_t>(c);
        const std::string number = spreadsheetFormat(value, columns_[c].format);
        lxw_format* look = number.empty() && !bold && edge == 0 ? nullptr : format({11, bold, number, edge});
        if (value.isNull()) return;
        if (value.isDate() && value.date().year() >= 1900) {
            const Date d = value.date();
            lxw_datetime moment{d.year(), d.month(),  d.day(),
                                d.hour(), d.minute(), d.second() + d.millisecond() / 1000.0};
            worksheet_write_datetime(sheet_, row, at, &moment, look);
        } else if (auto* bit = std::get_if<bool>(&value.raw())) {
            worksheet_write_boolean(sheet_, row, at, *bit ? 1 : 0, look);
        } else if (value.isNumber() && exact(value)) {
            worksheet_write_number(sheet_, row, at, value.number(), look);
        } else {
            const std::string text = midChars(value.text(), 0, 32'767);
            worksheet_write_string(sheet_, row, at, text.c_str(), look);
        }
    }

    static bool exact(const Value& value) {
        const auto* whole = std::get_if<std::int64_t>(&value.raw());
        return whole == nullptr || (*whole <= kExactWhole && *whole >= -kExactWhole);
    }

    XlsxKind kind_;
    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    std::string title_;
    lxw_row_t line_ = 0;
    std::vector<TableColumn> columns_;
    std::map<Look, lxw_format*> formats_;
};

}  // namespace

bool writeXlsx(const Prepared& data, const std::string& path, XlsxKind kind, const Progress& progress) {
    const std::string beside = path + ".writing";
    std::error_code none;
    try {
        XlsxSink sink(beside, data.report(), kind);
        const bool whole = walkTable(data, sink, kind == XlsxKind::Report, progress);
        const bool closed = sink.close() == LXW_NO_ERROR;
        std::error_code failed;
        if (!whole) {
            std::filesystem::remove(beside, none);
            return false;
        }
        if (closed) std::filesystem::rename(beside, path, failed);
        if (!closed || failed) throw Error(75, "Report", "The file cannot be written: " + path);
        return true;
    } catch (...) {
        std::filesystem::remove(beside, none);
        throw;
    }
}

}  // namespace kv
