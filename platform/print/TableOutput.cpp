#include "platform/print/TableOutput.h"

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/print/CellFormat.h"

namespace kv {
namespace {

constexpr std::size_t kRowsAStep = 2000;  // between two calls of a task's progress

bool ofPage(const Expression& e) { return e.uses(Fact::PageNumber) || e.uses(Fact::Pages); }

/// The texts of a band, a line each, without what belongs to a page.
std::vector<std::string> bandLines(const Band& band, const RowContext& context) {
    std::map<double, std::string> lines;
    for (const BandItem& item : band.items) {
        if (item.kind != BandItem::Kind::Text || ofPage(item.value) || ofPage(item.when)) continue;
        if (!item.when.empty() && !truthOf(item.when.evaluate(context))) continue;
        const std::string text = formatCell(item.value.evaluate(context), item.format);
        std::string& line = lines[item.line > 0 ? item.line : 1000 + item.y];
        if (!text.empty()) line += (line.empty() ? "" : "  ") + text;
    }
    std::vector<std::string> out;
    for (auto& [at, text] : lines) {
        if (!text.empty()) out.push_back(std::move(text));
    }
    return out;
}

class Walk {
public:
    Walk(const Prepared& data, TableSink& sink, bool grouped)
        : data_(data), sink_(sink), grouped_(grouped), at_(data) {}

    bool run(const Progress& progress) {
        const Template& report = data_.report();
        for (const ReportColumn& c : report.columns) {
            if (c.when.empty() || truthOf(c.when.evaluate(at_)))
                shown_.push_back(static_cast<std::size_t>(&c - report.columns.data()));
        }
        plain_ = report.columns.empty();
        if (grouped_) titles();
        sink_.head(heads());
        const auto all = static_cast<int>(data_.rowCount());
        for (at_.row = 0; at_.row < data_.rowCount(); ++at_.row) {
            if (at_.row % kRowsAStep == 0 && progress && !progress(static_cast<int>(at_.row), all)) return false;
            row();
        }
        at_.row = data_.rowCount() == 0 ? 0 : data_.rowCount() - 1;
        if (grouped_) totals(report.reportFooter, -1);
        return true;
    }

private:
    void titles() {
        int index = 0;
        for (const Band* band : {&data_.report().reportHeader, &data_.report().pageHeader}) {
            for (const std::string& line : bandLines(*band, at_)) sink_.title(line, index++);
        }
    }

    std::vector<TableColumn> heads() const {
        std::vector<TableColumn> out;
        for (const std::size_t c : shown_) {
            const ReportColumn& column = data_.report().columns[c];
            std::string format = column.format;
            if (format.empty() && column.style >= 0)
                format = data_.report().styles[static_cast<std::size_t>(column.style)].format;
            // a heading that columns share is part of each one's own here
            const std::string over = column.over.evaluate(at_).text();
            const std::string heading = (over.empty() ? "" : over + " ") + column.heading.evaluate(at_).text();
            out.push_back({replaceAll(heading, "\n", " "), format, column.width,
                           column.align == TextAlign::Right || !column.total.empty()});
        }
        if (plain_) {
            for (const Field& field : data_.rows().fields) out.push_back({field.name, "", 0, false});
        }
        return out;
    }

    void row() {
        const Template& report = data_.report();
        const int levels = static_cast<int>(report.groups.size());
        for (int level = 0; grouped_ && level < levels; ++level) {
            if (!data_.groupStarts(level, at_.row)) continue;
            for (const std::string& line : bandLines(report.groups[static_cast<std::size_t>(level)].header, at_)) {
                sink_.groupHead(line, level);
            }
        }
        const Band& band = report.detail.band;
        if (band.when.empty() || truthOf(band.when.evaluate(at_))) {
            std::vector<Value> values;
            for (const std::size_t c : shown_) values.push_back(report.columns[c].value.evaluate(at_));
            sink_.row(plain_ ? data_.rows().rows[at_.row] : values);
        }
        for (int level = levels - 1; grouped_ && level >= 0 && data_.groupEnds(level, at_.row); --level) {
            totals(report.groups[static_cast<std::size_t>(level)].footer, level);
        }
    }

    void totals(const Band& band, int level) {
        if (!band.given || band.totals.empty()) return;
        if (!band.when.empty() && (ofPage(band.when) || !truthOf(band.when.evaluate(at_)))) return;
        const std::vector<Expression>& sums = data_.columnTotals(level);
        std::vector<Value> values;
        for (const std::size_t c : shown_) values.push_back(sums[c].evaluate(at_));
        sink_.totals(band.totals.evaluate(at_).text(), values, level);
    }

    const Prepared& data_;
    TableSink& sink_;
    bool grouped_;
    bool plain_ = false;
    RowContext at_;
    std::vector<std::size_t> shown_;
};

std::string csvCell(const Value& value) {
    if (value.isDate()) {
        const bool dayOnly = value.date() == value.date().dayOnly();
        return Format(value.date(), dayOnly ? "yyyy-MM-dd" : "yyyy-MM-dd HH:mm:ss");
    }
    const std::string text = value.text();
    if (!value.isText() || text.find_first_of(",\"\r\n") == std::string::npos) return text;
    return "\"" + replaceAll(text, "\"", "\"\"") + "\"";
}

class CsvSink : public TableSink {
public:
    std::string out;
    void title(const std::string&, int) override {}
    void groupHead(const std::string&, int) override {}
    void totals(const std::string&, const std::vector<Value>&, int) override {}
    void head(const std::vector<TableColumn>& columns) override {
        std::vector<Value> texts;
        for (const TableColumn& c : columns) texts.emplace_back(c.heading);
        row(texts);
    }
    void row(const std::vector<Value>& values) override {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i > 0) out += ',';
            out += csvCell(values[i]);
        }
        out += "\r\n";
    }
};

class TextSink : public TableSink {
public:
    void title(const std::string& line, int) override { lines_.push_back({Kind::Plain, {line}}); }
    void head(const std::vector<TableColumn>& columns) override {
        columns_ = columns;
        if (!lines_.empty()) lines_.push_back({Kind::Plain, {""}});
        std::vector<std::string> cells;
        widths_.assign(columns.size(), 0);
        for (const TableColumn& c : columns) {
            cells.push_back(c.heading);
            for (const std::string& word : split(c.heading, ' '))
                widths_[cells.size() - 1] = std::max(widths_[cells.size() - 1], charCount(word));
        }
        lines_.push_back({Kind::Head, cells});
        lines_.push_back({Kind::PrintRule, {}});
    }
    void groupHead(const std::string& text, int level) override {
        if (level == 0) lines_.push_back({Kind::Plain, {""}});
        lines_.push_back({Kind::Plain, {text}});
    }
    void row(const std::vector<Value>& values) override {
        std::vector<std::string> cells;
        for (std::size_t i = 0; i < values.size(); ++i) {
            cells.push_back(replaceAll(formatCell(values[i], columns_[i].format), "\n", " "));
            if (values[i].isNumber() && !std::holds_alternative<bool>(values[i].raw())) columns_[i].right = true;
        }
        add(Kind::Cells, cells);
    }
    void totals(const std::string& label, const std::vector<Value>& values, int) override {
        std::vector<std::string> cells;
        for (std::size_t i = 0; i < values.size(); ++i) cells.push_back(formatCell(values[i], columns_[i].format));
        lines_.push_back({Kind::TotalRule, cells});
        Line line{Kind::Total, cells};
        line.label = label;
        measure(cells);
        lines_.push_back(std::move(line));
    }

    std::string text() const {
        std::string out;
        for (const Line& line : lines_) {
            if (line.kind != Kind::Head) {
                put(line, out);
                continue;
            }
            for (const Line& part : headLines(line)) put(part, out);
        }
        return out;
    }

private:
    enum class Kind { Plain, Head, Cells, PrintRule, TotalRule, Total };
    struct Line {
        Kind kind;
        std::vector<std::string> cells;
        std::string label = {};
    };

    void measure(const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) widths_[i] = std::max(widths_[i], charCount(cells[i]));
    }
    void add(Kind kind, const std::vector<std::string>& cells) {
        measure(cells);
        lines_.push_back({kind, cells});
    }
    static std::string padded(const std::string& text, std::size_t width, bool right) {
        const std::string blanks(width - std::min(width, charCount(text)), ' ');
        return right ? blanks + text : text + blanks;
    }
    void put(const Line& line, std::string& out) const {
        std::string drawn = drawnLine(line);
        while (!drawn.empty() && drawn.back() == ' ') drawn.pop_back();
        out += drawn + "\n";
    }
    /// The words of a heading in lines no wider than its column.
    static std::vector<std::string> wrapped(const std::string& heading, std::size_t width) {
        std::vector<std::string> lines;
        for (const std::string& word : split(heading, ' ')) {
            if (!lines.empty() && charCount(lines.back()) + 1 + charCount(word) <= width)
                lines.back() += " " + word;
            else
                lines.push_back(word);
        }
        return lines;
    }
    /// A column is as wide as its figures, not as its heading: that goes over several lines, and ends at the lowest.
    std::vector<Line> headLines(const Line& head) const {
        std::vector<std::vector<std::string>> parts;
        std::size_t high = 1;
        for (std::size_t i = 0; i < head.cells.size(); ++i) {
            parts.push_back(wrapped(head.cells[i], widths_[i]));
            high = std::max(high, parts.back().size());
        }
        std::vector<Line> lines(high, {Kind::Cells, std::vector<std::string>(head.cells.size())});
        for (std::size_t i = 0; i < parts.size(); ++i)
            for (std::size_t k = 0; k < parts[i].size(); ++k) lines[high - parts[i].size() + k].cells[i] = parts[i][k];
        return lines;
    }
    std::string drawnLine(const Line& line) const {
        if (line.kind == Kind::Plain) return line.cells[0];
        std::string out;
        bool figure = false;
        for (std::size_t i = 0; i < widths_.size(); ++i) {
            const bool blank = line.kind != Kind::PrintRule && line.cells[i].empty();
            std::string cell = blank ? "" : line.cells.empty() ? "" : line.cells[i];
            const bool ruled = line.kind == Kind::PrintRule || (line.kind == Kind::TotalRule && !blank);
            if (ruled) cell = std::string(widths_[i], '-');
            figure = figure || !blank;
            if (i > 0) out += "  ";
            out += padded(cell, widths_[i], columns_[i].right);
            // the label may run over the empty cells before the first figure
            if (line.kind == Kind::Total && !figure) out = std::string(charCount(out), ' ');
        }
        if (line.kind != Kind::Total) return out;
        const std::size_t blanks = std::min(out.find_first_not_of(' '), out.size());
        const std::string label = midChars(line.label, 0, blanks > 2 ? blanks - 2 : 0);
        return label + out.substr(std::min(out.size(), charCount(label)));
    }

    std::vector<TableColumn> columns_;
    std::vector<std::size_t> widths_;
    std::vector<Line> lines_;
};

}  // namespace

bool walkTable(const Prepared& data, TableSink& sink, bool grouped, const Progress& progress) {
    return Walk(data, sink, grouped).run(progress);
}

std::string tableCsv(const Prepared& data) {
    CsvSink sink;
    walkTable(data, sink, false);
    return std::move(sink.out);
}

std::string tableText(const Prepared& data) {
    TextSink sink;
    walkTable(data, sink, true);
    return sink.text();
}

}  // namespace kv
