#pragma once
// Composer: turns bands and table rows of one report into blocks: things placed relative to an upper left corner.

#include "platform/print/Document.h"
#include "platform/print/Prepared.h"
#include "platform/print/TextMeasure.h"

namespace kv {

/// A text that waits for the number of pages.
struct LateText {
    std::size_t run = 0;
    const BandItem* item = nullptr;
    std::shared_ptr<const Prepared> data;
    RowContext context;
};

struct PageBlock {
    double height = 0;
    PaperPage content;
    std::vector<LateText> late;
    std::vector<const BandItem*> subreports;  ///< laid out below the block, in order
};

constexpr double kRowPad_mm = 0.5;  ///< a row's height above its lines
FontSpec fontOf(const PrintStyle& style);
double roomBelow(PrintRule rule);    ///< that a rule takes below a line of figures, mm
std::string flat(std::string text);  ///< on one line

class Composer {
public:
    Composer(std::shared_ptr<const Prepared> data, Document& document, TextMeasure& measure, double width_mm);

    /// The columns shown side by side; a cross-tab too wide for the page has several such sets.
    std::size_t columnSets() const { return sets_.size(); }
    void useColumnSet(std::size_t set);

    /// `full`: every line takes its room, shown or not (for reserving room at the page's foot).
    PageBlock band(const Band& band, const RowContext& context, int totalsScope, bool full = false);
    PageBlock headings(const RowContext& context);
    PageBlock row(const RowContext& context, bool afterSame, bool striped);
    PageBlock carried(const Expression& label, const RowContext& context, int scope);
    PageBlock note(const std::string& text);

private:
    struct Cell {
        double x = 0;
        double width = 0;
    };
    struct Drawn {
        std::string text;
        FontSpec font;
        TextAlign align = TextAlign::Left;
        bool number = false;
    };

    /// A column's part of a row, before the height of the row is known.
    struct RowPart {
        const ReportColumn* column = nullptr;
        const PrintStyle* look = nullptr;
        Cell cell;
        Drawn it;
        std::vector<std::string> lines;
        bool ruled = false;  ///< a figure whose style brings rules
    };
    std::optional<RowPart> rowPart(const ReportColumn& column, const RowContext& context, int rowStyle);
    void putPart(PageBlock& block, RowPart& part, double top, double box, std::int16_t band);

    double overHeadings(PageBlock& block, const RowContext& context, const PrintStyle& look, std::int16_t band,
                        double y);
    void splitColumns();
    void spreadColumns(const std::vector<std::size_t>& set);
    Cell cellOf(const ReportColumn& column) const;
    const std::string& formatOf(const ReportColumn& column) const;
    const ReportColumn* columnNamed(const std::string& name) const;
    const PrintStyle& style(int index, int otherwise = 0) const;
    int conditional(const std::vector<Condition>& conditions, const RowContext& context, int otherwise) const;

    double totalsRow(PageBlock& block, const Expression& label, const RowContext& context, int scope, int styleIndex,
                     std::int16_t band, double y);
    void textItem(PageBlock& block, const BandItem& item, const RowContext& context, std::int16_t band, double y,
                  double& height);
    double textHeight(const BandItem& item, const std::string& text, double width) const;
    void shapeItem(PageBlock& block, const BandItem& item, const RowContext& context, std::int16_t band, double y);
    void barcodeItem(PageBlock& block, const BandItem& item, const std::string& text, std::int16_t band, double y);
    void drillOf(PageBlock& block, const Drill& drill, const RowContext& context, double x, double y, double w,
                 double h);

    void put(PageBlock& block, const Drawn& drawn, int color, std::int16_t band, double x, double y, double w,
             double h);
    void rule(PageBlock& block, PrintRule kind, std::int16_t band, double x, double y, double w, int color);
    Drawn drawn(const Value& value, const std::string& format, const PrintStyle& style, TextAlign align,
                bool tabular) const;
    /// Makes the text fit: figures shrink, texts are cut.
    void fit(Drawn& drawn, double width);
    double boxWidth(const BandItem& item) const;
    double boxLeft(const BandItem& item) const;

    std::shared_ptr<const Prepared> data_;
    Document& document_;
    TextMeasure& measure_;
    double width_;
    std::vector<ReportColumn> columns_;  ///< with their places
    std::vector<std::vector<std::size_t>> sets_;
    std::vector<std::size_t> shown_;
};

}  // namespace kv
