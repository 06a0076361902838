// The part of the composer that places the items of bands.
#include <algorithm>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/print/Composer.h"

namespace kv {
namespace {

constexpr double kBaseline = 1.05;  // of a text's size, below the top of its line

bool late(const BandItem& item) { return item.value.uses(Fact::Pages) || item.when.uses(Fact::Pages); }

}  // namespace

double Composer::boxLeft(const BandItem& item) const {
    const ReportColumn* column = item.column.empty() ? nullptr : columnNamed(item.column);
    return column == nullptr ? item.x : cellOf(*column).x + item.x;
}

double Composer::boxWidth(const BandItem& item) const {
    if (item.width) return *item.width;
    const ReportColumn* column = item.column.empty() ? nullptr : columnNamed(item.column);
    return column == nullptr ? std::max(1.0, width_ - item.x) : cellOf(*column).width - item.x;
}

double Composer::textHeight(const BandItem& item, const std::string& text, double width) const {
    if (item.height) return *item.height;
    const PrintStyle& look = style(item.style);
    const double line = lineHeight_mm(look.size_pt);
    if (!item.wrap) return line;
    return line * static_cast<double>(measure_.lines(fontOf(look), text, width).size());
}

void Composer::textItem(PageBlock& block, const BandItem& item, const RowContext& context, std::int16_t band, double y,
                        double& height) {
    const PrintStyle& look = style(conditional(item.conditions, context, item.style));
    const Value value = item.value.evaluate(context);
    Drawn it = drawn(value, item.format, look, item.align, !item.column.empty());
    const double x = boxLeft(item), w = boxWidth(item);
    const double line = lineHeight_mm(look.size_pt);
    height = textHeight(item, it.text, w);
    rule(block, look.above, band, x, y, w, look.color);
    rule(block, look.below, band, x, y + height, w, look.color);
    if (look.fill != kNoColor) {
        block.content.shapes.push_back({static_cast<float>(x), static_cast<float>(y), static_cast<float>(w),
                                        static_cast<float>(height), look.fill, kNoColor, 0, band});
    }
    drillOf(block, item.drill, context, x, y, w, height);
    if (item.wrap) {
        for (std::string& text : measure_.lines(it.font, it.text, w)) {
            put(block, {std::move(text), it.font, it.align, false}, look.color, band, x, y, w, line);
            y += line;
        }
        return;
    }
    const bool waits = late(item);
    if (!waits) fit(it, w);
    if (waits && it.text.empty()) it.text = " ";
    put(block, it, look.color, band, x, y, w, item.height.value_or(line));
    if (waits) block.late.push_back({block.content.runs.size() - 1, &item, data_, context});
}

void Composer::barcodeItem(PageBlock& block, const BandItem& item, const std::string& text, std::int16_t band,
                           double y) {
    if (text.empty()) return;
    const Barcode code = encodeBarcode(item.barcode, text);
    const double module = *item.width / code.modules();
    double x = boxLeft(item);
    for (std::size_t i = 0; i < code.widths.size(); ++i) {
        const double w = module * code.widths[i];
        if (i % 2 == 0) {
            block.content.shapes.push_back({static_cast<float>(x), static_cast<float>(y), static_cast<float>(w),
                                            static_cast<float>(*item.height), 0, kNoColor, 0, band});
        }
        x += w;
    }
}

void Composer::shapeItem(PageBlock& block, const BandItem& item, const RowContext& context, std::int16_t band,
                         double y) {
    const auto x = static_cast<float>(boxLeft(item));
    const auto top = static_cast<float>(y);
    const auto weight = static_cast<float>(item.weight);
    if (item.kind == BandItem::Kind::Line) {
        // a line runs along its width, or down its height
        const float w = item.height ? weight : static_cast<float>(boxWidth(item));
        const float h = item.height ? static_cast<float>(*item.height) : weight;
        block.content.shapes.push_back({x, top, w, h, item.color, kNoColor, 0, band});
    } else if (item.kind == BandItem::Kind::Box) {
        const int stroke = item.weight > 0 ? item.color : kNoColor;
        block.content.shapes.push_back({x, top, static_cast<float>(*item.width), static_cast<float>(*item.height),
                                        item.fill, stroke, weight, band});
    } else if (item.kind == BandItem::Kind::Image) {
        const std::string name = item.value.evaluate(context).text();
        if (name.empty()) return;
        const std::string path = pathFromTemplate(data_->report().folder, name);
        block.content.pictures.push_back(
            {x, top, static_cast<float>(*item.width), static_cast<float>(*item.height), path, band});
    } else if (item.kind == BandItem::Kind::Barcode) {
        barcodeItem(block, item, item.value.evaluate(context).text(), band, y);
    }
}

PageBlock Composer::band(const Band& band, const RowContext& context, int totalsScope, bool full) {
    PageBlock block;
    if (!band.given || (!full && !band.when.empty() && !truthOf(band.when.evaluate(context)))) return block;
    const std::int16_t name = document_.bandIndex(band.name);
    double top = band.before;
    if (!band.totals.empty()) {
        top += totalsRow(block, band.totals, context, totalsScope, band.totalsStyle, name, top);
    }
    // lines of text that show nothing take no room
    std::map<int, double> lines;
    std::map<int, double> sizes;
    std::vector<bool> shown(band.items.size(), true);
    for (std::size_t i = 0; i < band.items.size(); ++i) {
        const BandItem& item = band.items[i];
        const bool placed = item.column.empty() || columnNamed(item.column) != nullptr;
        const bool waits = late(item);
        shown[i] = placed && (full || waits || item.when.empty() || truthOf(item.when.evaluate(context)));
        if (!shown[i] || item.kind != BandItem::Kind::Text || item.line <= 0) continue;
        const std::string text = item.value.evaluate(context).text();
        if (text.empty() && !full && !waits) continue;
        double& size = sizes[item.line];
        size = std::max(size, style(item.style).size_pt);
        double& height = lines[item.line];
        height = std::max(height, textHeight(item, text, boxWidth(item)));
    }
    std::map<int, double> tops;
    double flow = top;
    for (const auto& [line, height] : lines) {
        tops[line] = flow;
        flow += height;
    }
    double bottom = flow;
    for (std::size_t i = 0; i < band.items.size(); ++i) {
        const BandItem& item = band.items[i];
        if (!shown[i]) continue;
        if (item.kind == BandItem::Kind::SubReport) {
            block.subreports.push_back(&item);
            continue;
        }
        if (item.line > 0 && !tops.contains(item.line)) continue;
        double y = item.line > 0 ? tops[item.line] : top + item.y;
        // texts of different sizes on one line stand on one baseline
        if (item.line > 0) y += (sizes[item.line] - style(item.style).size_pt) * kMmPerPoint * kBaseline;
        double height = item.height.value_or(item.kind == BandItem::Kind::Line ? item.weight : 0);
        if (item.kind == BandItem::Kind::Text) {
            textItem(block, item, context, name, y, height);
        } else {
            shapeItem(block, item, context, name, y);
        }
        bottom = std::max(bottom, y + height);
    }
    block.height = std::max(bottom - band.before, band.height) + band.before + band.after;
    drillOf(block, band.drill, context, 0, 0, width_, block.height);
    return block;
}

}  // namespace kv
