// The part of the composer that makes the rows of the table.
#include <algorithm>

#include "platform/base/Text.h"
#include "platform/print/Composer.h"

namespace kv {
namespace {

constexpr double kRuledPad_mm = 0.5;     // between a rule and the figure below it
constexpr double kBelowFigure_mm = 0.3;  // between a figure and the rule below it
constexpr double kIndentMost_mm = 100;
constexpr int kRowRuleColor = 0xb8b8b8;

bool hasRules(const PrintStyle& look) { return look.above != PrintRule::None || look.below != PrintRule::None; }

double lengthOf(const Expression& expression, const RowContext& context) {
    return expression.empty() ? 0 : std::clamp(expression.evaluate(context).number(), 0.0, kIndentMost_mm);
}

}  // namespace

std::optional<Composer::RowPart> Composer::rowPart(const ReportColumn& column, const RowContext& context,
                                                   int rowStyle) {
    const Value value = column.value.evaluate(context);
    const bool ownRow = rowStyle != data_->report().detail.rowStyle || column.style < 0;
    const int styleIndex = conditional(column.conditions, context, ownRow ? rowStyle : column.style);
    const PrintStyle& look = style(styleIndex);
    TextAlign align = column.align;
    if (align == TextAlign::Auto && column.style >= 0) align = style(column.style).align;
    RowPart part{&column, &look, cellOf(column), drawn(value, formatOf(column), look, align, true), {}, false};
    part.ruled = part.it.number && hasRules(look);
    // between its rules a figure is never left empty, also where zero shows nothing
    if (part.ruled && part.it.text.empty()) part.it.text = "\xE2\x80\x93";
    if (part.it.text.empty()) return std::nullopt;
    const double indent = std::min(lengthOf(column.indent, context), part.cell.width / 2);
    part.cell.x += indent;
    part.cell.width -= indent;
    if (column.wrap && !part.it.number) {
        part.lines = measure_.lines(part.it.font, part.it.text, part.cell.width);
    } else {
        part.it.text = flat(std::move(part.it.text));
        fit(part.it, part.cell.width);
        part.lines = {part.it.text};
    }
    return part;
}

/// `box` is the height of the row's own line; a figure that shrank stays on its middle.
void Composer::putPart(PageBlock& block, RowPart& part, double top, double box, std::int16_t band) {
    const double line = lineHeight_mm(part.it.font.size_pt);
    if (part.lines.size() > 1) box = line;
    if (part.ruled) {
        rule(block, part.look->above, band, part.cell.x, top - kRuledPad_mm, part.cell.width, part.look->color);
        rule(block, part.look->below, band, part.cell.x, top + box + kBelowFigure_mm, part.cell.width,
             part.look->color);
    }
    double y = top;
    for (std::string& text : part.lines) {
        part.it.text = std::move(text);
        put(block, part.it, part.look->color, band, part.cell.x, y, part.cell.width, box);
        y += line;
    }
}

PageBlock Composer::row(const RowContext& context, bool afterSame, bool striped) {
    PageBlock block;
    if (shown_.empty()) return block;
    const Detail& detail = data_->report().detail;
    const std::int16_t band = document_.bandIndex("detail");
    const int rowStyle = conditional(detail.conditions, context, detail.rowStyle);
    std::vector<RowPart> parts;
    double height = lineHeight_mm(style(detail.rowStyle).size_pt), above = 0, below = 0;
    RowContext before = context;
    if (before.row > 0) --before.row;
    for (const std::size_t c : shown_) {
        const ReportColumn& column = columns_[c];
        const bool repeats = column.hideRepeated && afterSame &&
                             compareValues(column.value.evaluate(context), column.value.evaluate(before)) == 0;
        std::optional<RowPart> part = repeats ? std::nullopt : rowPart(column, context, rowStyle);
        if (!part) continue;
        height = std::max(height, static_cast<double>(part->lines.size()) * lineHeight_mm(part->look->size_pt));
        if (part->ruled && part->look->above != PrintRule::None) above = kRuledPad_mm - kRowPad_mm / 2;
        if (part->ruled) below = std::max(below, roomBelow(part->look->below));
        parts.push_back(std::move(*part));
    }
    const double space = lengthOf(detail.spaceBefore, context);
    block.height = space + above + height + kRowPad_mm + below;
    const ReportColumn& last = columns_[shown_.back()];
    const double wide = last.left + last.actual;
    const PrintStyle& rowLook = style(rowStyle);
    const int back = rowLook.fill != kNoColor ? rowLook.fill : striped ? detail.stripe : kNoColor;
    if (back != kNoColor) {
        block.content.shapes.push_back({0, static_cast<float>(space), static_cast<float>(wide),
                                        static_cast<float>(block.height - space), back, kNoColor, 0, band});
    }
    const double box = lineHeight_mm(rowLook.size_pt);
    for (RowPart& part : parts) {
        putPart(block, part, space + above + kRowPad_mm / 2, box, band);
        drillOf(block, part.column->drill, context, part.column->left, 0, part.column->actual, block.height);
    }
    drillOf(block, detail.band.drill, context, 0, 0, wide, block.height);
    rule(block, detail.rules, band, 0, block.height, wide, kRowRuleColor);
    return block;
}

}  // namespace kv
