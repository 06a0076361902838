#pragma once
// Layouter: lays a prepared report out on pages, row by row, so that the first page is there at once.

#include "platform/print/Composer.h"

namespace kv {

/// Gives the rows of a sub-report for one place of the outer report.
using SubreportRows =
    std::function<std::shared_ptr<const Prepared>(const BandItem&, const RowContext&, const Prepared& outer)>;

/// The growing document: where the next block goes, and what happens at the end of a page.
class PageFlow {
public:
    PageFlow(const PageSetup& setup, Document& document) : setup_(setup), document_(document) {}

    std::function<void()> onPageStart;  ///< draws the page header
    std::function<void()> onPageEnd;    ///< draws the page footer
    double footHeight = 0;              ///< kept free for the footer

    void begin();
    void newPage();
    void finish();
    /// Places a block at the current height and moves on. `x` counts from the left margin of the column.
    void place(const PageBlock& block, double x);
    void placeAt(const PageBlock& block, double x, double y);
    bool fits(double height) const { return y_ + height <= bottom() + 0.01; }
    double wholeRoom() const { return bottom() - top_; }
    bool atTop() const { return y_ <= top_ + 0.01; }
    /// Counts pages, and columns of pages; changes whenever a block would stand at a new place's top.
    int frame() const { return frame_; }
    int page() const { return static_cast<int>(document_.pages.size()) - 1; }
    double y() const { return y_; }
    double bottom() const { return setup_.height - setup_.bottom - footHeight; }
    void pushToBottom(double height);
    void headerDone() { top_ = y_; }
    std::vector<LateText> late;
    std::vector<std::pair<int, std::size_t>> latePlaces;  ///< page and run of each late text

private:
    const PageSetup setup_;
    Document& document_;
    double y_ = 0;
    double top_ = 0;
    int column_ = 0;
    int frame_ = 0;
};

/// Feeds the blocks of one report, main or sub, to the flow in the order of its rows.
class Producer {
public:
    Producer(std::shared_ptr<const Prepared> data, PageFlow& flow, Document& document, TextMeasure& measure,
             SubreportRows subreportRows, double x, double width, bool main);

    /// One row with the headers before it and the footers after it. False when there is nothing left.
    bool step();
    std::size_t row() const { return row_ + set_ * data_->rowCount(); }
    std::size_t laying() const { return laying_; }  ///< the row whose blocks are being placed
    std::size_t rows() const { return std::max<std::size_t>(1, data_->rowCount() * composer_.columnSets()); }

    RowContext context(std::size_t row) const;
    Composer& composer() { return composer_; }
    PageFacts facts;  ///< of the page that is being filled; kept by the layouter for the main report
    std::function<void()> onRestartPages;

private:
    struct RowBlocks {
        std::vector<PageBlock> headers;
        PageBlock detail;
        std::vector<PageBlock> footers;
        double height = 0;
    };

    void begin();
    void foot();
    void footBand(const Band& band, std::size_t row);
    void layRow(std::size_t row);
    RowBlocks blocksOf(std::size_t row);
    std::vector<PageBlock> continuation(std::size_t row);
    PageBlock detailOf(std::size_t row);
    bool breaksBefore(std::size_t row) const;
    bool groupNeedsNewPage(std::size_t row);
    double groupHeight(int level, std::size_t row);
    void turnPage(std::size_t row);
    void headersDone(std::size_t row);
    bool carriesInto(std::size_t row) const;
    RowRange carriedRange(std::size_t row) const;
    int carriedScope() const;
    double reserveAfter(std::size_t row);
    void place(const PageBlock& block, std::size_t row);
    void placeOrTurn(const PageBlock& block, std::size_t row);
    void subreport(const BandItem& item, std::size_t row);
    int startingLevel(std::size_t row) const;
    int levels() const { return static_cast<int>(data_->report().groups.size()); }

    std::shared_ptr<const Prepared> data_;
    PageFlow& flow_;
    Document& document_;
    TextMeasure& measure_;
    SubreportRows subreportRows_;
    Composer composer_;
    double x_;
    bool main_;
    bool begun_ = false;
    bool ended_ = false;
    std::size_t set_ = 0;
    std::size_t row_ = 0;
    std::size_t laying_ = 0;
    int frame_ = -1;  ///< where the headings stand already
    std::size_t frameRow_ = 0;
    double carryHeight_ = 0;
};

class Layouter {
public:
    /// Sub-reports are laid out with the rows that `subreportRows` gives.
    Layouter(std::shared_ptr<const Prepared> data, SubreportRows subreportRows);
    Layouter(const Layouter&) = delete;
    Layouter& operator=(const Layouter&) = delete;

    bool step();
    bool complete() const { return complete_; }
    const Document& document() const { return document_; }
    /// Pages that are filled; the one being filled counts only at the end.
    int finishedPages() const;
    double progress() const;

private:
    void pageStart();
    void pageEnd();
    void resolveLate();

    std::shared_ptr<const Prepared> data_;
    Document document_;
    TextMeasure measure_;
    PageFlow flow_;
    Producer producer_;
    bool begun_ = false;
    bool complete_ = false;
    bool restart_ = false;
    std::vector<int> sectionStarts_{0};
};

}  // namespace kv
