#include "platform/print/Composer.h"

#include <algorithm>
#include <cmath>

#include "platform/base/Text.h"
#include "platform/print/CellFormat.h"

namespace kv {
namespace {

constexpr double kCellPad_mm = 1.0;      // beside the texts of neighbouring columns
constexpr double kHeadPad_mm = 1.0;      // between a heading's text and its rules
constexpr double kShareLeast_mm = 20.0;  // what a column without a width gets at least
constexpr double kShrinkMost = 0.6;      // figures may shrink so far before they become ####

double weightOf(PrintRule rule) { return rule == PrintRule::Hair ? 0.1 : rule == PrintRule::Medium ? 0.4 : 0.2; }

}  // namespace

FontSpec fontOf(const PrintStyle& style) { return {style.font, style.size_pt, style.bold, style.italic}; }

double roomBelow(PrintRule rule) { return rule == PrintRule::None ? 0 : rule == PrintRule::Double ? 1.2 : 0.6; }

std::string flat(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    }
    return text;
}

Composer::Composer(std::shared_ptr<const Prepared> data, Document& document, TextMeasure& measure, double width_mm)
    : data_(std::move(data)), document_(document), measure_(measure), width_(width_mm) {
    const RowContext context(*data_);
    for (const ReportColumn& column : data_->report().columns) {
        columns_.push_back(column);
        columns_.back().actual = column.when.empty() || truthOf(column.when.evaluate(context)) ? 0 : -1;
    }
    splitColumns();
    useColumnSet(0);
}

/// Columns of the template stand in every set, generated ones are dealt out as they fit.
void Composer::splitColumns() {
    std::vector<std::size_t> own, made;
    double fixed = 0;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        if (columns_[c].actual < 0) continue;
        (columns_[c].generated ? made : own).push_back(c);
        const bool total = columns_[c].name == "~total";
        if (!columns_[c].generated && !total) fixed += columns_[c].width > 0 ? columns_[c].width : kShareLeast_mm;
    }
    const bool totalLast = !own.empty() && columns_[own.back()].name == "~total";
    const auto total = totalLast ? std::optional<std::size_t>(own.back()) : std::nullopt;
    if (totalLast) own.pop_back();
    if (total) made.push_back(*total);
    std::size_t at = 0;
    do {
        std::vector<std::size_t> set = own;
        double left = width_ - fixed;
        do {
            if (at >= made.size()) break;
            set.push_back(made[at]);
            left -= columns_[made[at++]].width;
        } while (at < made.size() && columns_[made[at]].width <= left + 0.01);
        sets_.push_back(std::move(set));
    } while (at < made.size());
}

void Composer::useColumnSet(std::size_t set) {
    shown_ = sets_[set];
    spreadColumns(shown_);
}

void Composer::spreadColumns(const std::vector<std::size_t>& set) {
    double fixed = 0;
    int sharing = 0;
    for (const std::size_t c : set) {
        fixed += columns_[c].width;
        if (columns_[c].width <= 0) ++sharing;
    }
    const double share = sharing == 0 ? 0 : std::max(kShareLeast_mm, (width_ - fixed) / sharing);
    double x = 0;
    for (const std::size_t c : set) {
        columns_[c].left = x;
        columns_[c].actual = columns_[c].width > 0 ? columns_[c].width : share;
        x += columns_[c].actual;
    }
}

const std::string& Composer::formatOf(const ReportColumn& column) const {
    return column.format.empty() && column.style >= 0 ? style(column.style).format : column.format;
}

/// The outer columns are flush with the page's margins; figures in brackets keep room for the one that hangs out.
Composer::Cell Composer::cellOf(const ReportColumn& column) const {
    const bool first = column.left <= 0.001;
    const bool hangs = formatOf(column).find(')') != std::string::npos;
    const bool last = column.left + column.actual >= width_ - 0.01 && !hangs;
    const double from = column.left + (first ? 0 : kCellPad_mm);
    return {from, column.left + column.actual - (last ? 0 : kCellPad_mm) - from};
}

const ReportColumn* Composer::columnNamed(const std::string& name) const {
    for (const std::size_t c : shown_) {
        if (equalsNoCase(columns_[c].name, name)) return &columns_[c];
    }
    return nullptr;
}

const PrintStyle& Composer::style(int index, int otherwise) const {
    const std::vector<PrintStyle>& styles = data_->report().styles;
    return styles[static_cast<std::size_t>(index >= 0 ? index : std::max(otherwise, 0))];
}

int Composer::conditional(const std::vector<Condition>& conditions, const RowContext& context, int otherwise) const {
    for (const Condition& c : conditions) {
        if (truthOf(c.when.evaluate(context))) return c.style;
    }
    return otherwise;
}

Composer::Drawn Composer::drawn(const Value& value, const std::string& format, const PrintStyle& look, TextAlign align,
                                bool tabular) const {
    Drawn out;
    out.number = value.isNumber() && !std::holds_alternative<bool>(value.raw());
    out.text = formatCell(value, format.empty() ? look.format : format);
    out.font = fontOf(look);
    if (align == TextAlign::Auto) align = look.align;
    if (align == TextAlign::Auto) align = out.number && tabular ? TextAlign::Right : TextAlign::Left;
    out.align = align;
    return out;
}

void Composer::fit(Drawn& it, double width) {
    const double measured = measure_.width(it.font, it.text);
    if (measured <= width + 0.05 || width <= 0) return;
    if (!it.number) {
        it.text = measure_.elided(it.font, it.text, width);
        return;
    }
    const double scale = width / measured;
    if (scale >= kShrinkMost) {
        it.font.size_pt = std::floor(it.font.size_pt * scale * 10) / 10;
    } else {
        // a figure that is cut would be read as another figure
        const double mark = measure_.width(it.font, "#");
        it.text.assign(static_cast<std::size_t>(std::max(1.0, width / mark)), '#');
    }
}

void Composer::put(PageBlock& block, const Drawn& it, int color, std::int16_t band, double x, double y, double w,
                   double h) {
    if (it.text.empty()) return;
    TextRun run;
    run.x = static_cast<float>(x);
    run.y = static_cast<float>(y);
    run.width = static_cast<float>(w);
    run.height = static_cast<float>(h);
    run.text = it.text;
    run.font = document_.fontIndex(it.font);
    run.color = color;
    run.align = it.align;
    run.band = band;
    // the closing bracket of a negative figure hangs out, so that the digits stay in line
    const bool hangs = it.number && it.align == TextAlign::Right && it.text.back() == ')';
    if (hangs) run.width += static_cast<float>(measure_.width(it.font, ")"));
    block.content.runs.push_back(std::move(run));
}

void Composer::rule(PageBlock& block, PrintRule kind, std::int16_t band, double x, double y, double w, int color) {
    if (kind == PrintRule::None || w <= 0) return;
    const double weight = weightOf(kind);
    PageShape line;
    line.x = static_cast<float>(x);
    line.y = static_cast<float>(y - weight / 2);
    line.width = static_cast<float>(w);
    line.height = static_cast<float>(weight);
    line.fill = color;
    line.band = band;
    block.content.shapes.push_back(line);
    if (kind != PrintRule::Double) return;
    line.y += 0.6F;
    block.content.shapes.push_back(line);
}

void Composer::drillOf(PageBlock& block, const Drill& drill, const RowContext& context, double x, double y, double w,
                       double h) {
    if (drill.screen.empty()) return;
    PageLink link;
    link.x = static_cast<float>(x);
    link.y = static_cast<float>(y);
    link.width = static_cast<float>(w);
    link.height = static_cast<float>(h);
    link.screen = drill.screen;
    link.key = drill.key.evaluate(context).text();
    if (!link.key.empty()) block.content.links.push_back(std::move(link));
}

/// Headings that span several columns, each with a thin rule below it. Gives the height they take.
double Composer::overHeadings(PageBlock& block, const RowContext& context, const PrintStyle& look, std::int16_t band,
                              double y) {
    const double line = lineHeight_mm(look.size_pt);
    double taken = 0;
    for (std::size_t i = 0; i < shown_.size();) {
        const std::string text = columns_[shown_[i]].over.evaluate(context).text();
        std::size_t next = i + 1;
        while (next < shown_.size() && columns_[shown_[next]].over.evaluate(context).text() == text) ++next;
        if (!text.empty()) {
            const Cell first = cellOf(columns_[shown_[i]]);
            const Cell last = cellOf(columns_[shown_[next - 1]]);
            const double wide = last.x + last.width - first.x;
            put(block, {text, fontOf(look), TextAlign::Center, false}, look.color, band, first.x, y, wide, line);
            rule(block, PrintRule::Hair, band, first.x, y + line + 0.3, wide, look.color);
            taken = line + 0.6;
        }
        i = next;
    }
    return taken;
}

PageBlock Composer::headings(const RowContext& context) {
    PageBlock block;
    if (shown_.empty()) return block;
    const std::int16_t band = document_.bandIndex("headings");
    const PrintStyle& look = style(data_->report().detail.headingStyle);
    const FontSpec font = fontOf(look);
    const double line = lineHeight_mm(look.size_pt);
    std::vector<std::vector<std::string>> texts;
    std::size_t most = 1;
    for (const std::size_t c : shown_) {
        const std::string text = columns_[c].heading.evaluate(context).text();
        texts.push_back(measure_.lines(font, text, cellOf(columns_[c]).width));
        most = std::max(most, texts.back().size());
    }
    const double pad = look.above == PrintRule::None && look.below == PrintRule::None ? kRowPad_mm / 2 : kHeadPad_mm;
    const double over = overHeadings(block, context, look, band, pad);
    block.height = over + static_cast<double>(most) * line + 2 * pad + 0.6;
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const ReportColumn& column = columns_[shown_[i]];
        const Cell cell = cellOf(column);
        double y = pad + over + static_cast<double>(most - texts[i].size()) * line;
        for (const std::string& text : texts[i]) {
            Drawn it{text, font, column.align, false};
            if (it.align == TextAlign::Auto) it.align = style(column.style).align;
            if (it.align == TextAlign::Auto)
                it.align = !column.total.empty() || !column.format.empty() ? TextAlign::Right : TextAlign::Left;
            put(block, it, look.color, band, cell.x, y, cell.width, line);
            y += line;
        }
    }
    const ReportColumn& last = columns_[shown_.back()];
    const double wide = last.left + last.actual;
    if (look.fill != kNoColor) {
        PageShape back{0, 0,   static_cast<float>(wide), static_cast<float>(block.height - 0.6), look.fill, kNoColor,
                       0, band};
        block.content.shapes.insert(block.content.shapes.begin(), back);
    }
    rule(block, look.above, band, 0, 0, wide, look.color);
    rule(block, look.below, band, 0, block.height - 0.6, wide, look.color);
    return block;
}

double Composer::totalsRow(PageBlock& block, const Expression& label, const RowContext& context, int scope,
                           int styleIndex, std::int16_t band, double y) {
    const PrintStyle& look = style(styleIndex);
    const std::vector<Expression>& totals = data_->columnTotals(scope);
    const double line = lineHeight_mm(look.size_pt);
    const double pad = look.above == PrintRule::None ? kRowPad_mm / 2 : 0.5;
    double labelEnd = width_;
    for (const std::size_t c : shown_) {
        if (totals[c].empty()) continue;
        const ReportColumn& column = columns_[c];
        const Cell cell = cellOf(column);
        labelEnd = std::min(labelEnd, cell.x - kCellPad_mm);
        Drawn it = drawn(totals[c].evaluate(context), formatOf(column), look, column.align, true);
        if (column.align == TextAlign::Auto) it.align = TextAlign::Right;
        // a sum between its rules is never left empty, also where zero shows nothing in the rows
        if (it.number && it.text.empty()) it.text = "\xE2\x80\x93";
        fit(it, cell.width);
        rule(block, look.above, band, cell.x, y, cell.width, look.color);
        put(block, it, look.color, band, cell.x, y + pad, cell.width, line);
        rule(block, look.below, band, cell.x, y + pad + line + 0.3, cell.width, look.color);
    }
    Drawn it = drawn(flat(label.evaluate(context).text()), "", look, TextAlign::Left, false);
    fit(it, labelEnd);
    put(block, it, look.color, band, 0, y + pad, labelEnd, line);
    return pad + line + kRowPad_mm / 2 + roomBelow(look.below);
}

PageBlock Composer::carried(const Expression& label, const RowContext& context, int scope) {
    PageBlock block;
    const int look = data_->report().styleIndex("carried");
    block.height = totalsRow(block, label, context, scope, look, document_.bandIndex("carried"), 0);
    return block;
}

PageBlock Composer::note(const std::string& text) {
    PageBlock block;
    const PrintStyle& look = style(data_->report().detail.rowStyle);
    const double line = lineHeight_mm(look.size_pt);
    put(block, {text, fontOf(look), TextAlign::Left, false}, look.color, document_.bandIndex("detail"), 0, line, width_,
        line);
    block.height = 3 * line;
    return block;
}

}  // namespace kv
