#include <algorithm>

#include "platform/base/Text.h"
#include "platform/print/Layouter.h"

namespace kv {
namespace {

constexpr std::size_t kSubreportRowsMost = 100'000;
constexpr long kErrSubreport = 1004;

double heightOf(const std::vector<PageBlock>& blocks) {
    double sum = 0;
    for (const PageBlock& b : blocks) sum += b.height;
    return sum;
}

/// Puts `below` under `block`.
void stack(PageBlock& block, PageBlock below) {
    const auto dy = static_cast<float>(block.height);
    const std::size_t firstRun = block.content.runs.size();
    const auto append = [&](auto& to, auto& from) {
        for (auto& thing : from) {
            thing.y += dy;
            to.push_back(std::move(thing));
        }
    };
    append(block.content.shapes, below.content.shapes);
    append(block.content.pictures, below.content.pictures);
    append(block.content.runs, below.content.runs);
    append(block.content.links, below.content.links);
    for (LateText& text : below.late) {
        text.run += firstRun;
        block.late.push_back(std::move(text));
    }
    block.subreports.insert(block.subreports.end(), below.subreports.begin(), below.subreports.end());
    block.height += below.height;
}

}  // namespace

Producer::Producer(std::shared_ptr<const Prepared> data, PageFlow& flow, Document& document, TextMeasure& measure,
                   SubreportRows subreportRows, double x, double width, bool main)
    : data_(std::move(data)),
      flow_(flow),
      document_(document),
      measure_(measure),
      subreportRows_(std::move(subreportRows)),
      composer_(data_, document, measure, width),
      x_(x),
      main_(main) {}

RowContext Producer::context(std::size_t row) const {
    RowContext at(*data_, row);
    at.page = facts;
    return at;
}

void Producer::place(const PageBlock& block, std::size_t row) {
    flow_.place(block, x_);
    for (const BandItem* item : block.subreports) subreport(*item, row);
}

/// Room was found for the row as a whole; a sub-report in it may have used that up.
void Producer::placeOrTurn(const PageBlock& block, std::size_t row) {
    if (block.height > 0 && !flow_.atTop() && !flow_.fits(block.height)) flow_.newPage();
    place(block, row);
}

void Producer::begin() {
    begun_ = true;
    const Detail& detail = data_->report().detail;
    if (!detail.carriedTo.empty() && data_->rowCount() > 0) {
        carryHeight_ = composer_.carried(detail.carriedTo, context(0), carriedScope()).height;
    }
    if (main_) return;  // the main report's header stands above the first page's
    const PageBlock header = composer_.band(data_->report().reportHeader, context(0), kScopeReport);
    if (header.height > 0) place(header, 0);
}

/// A band below the rows, on a page where it has room as a whole.
void Producer::footBand(const Band& band, std::size_t row) {
    PageBlock block = composer_.band(band, context(row), kScopeReport);
    if (block.height <= 0) return;
    if (!flow_.atTop() && (band.newPage == NewPage::Before || !flow_.fits(block.height))) {
        flow_.newPage();
        block = composer_.band(band, context(row), kScopeReport);
    }
    if (band.atBottom) flow_.pushToBottom(block.height);
    place(block, row);
}

/// The report's foot; a cross-tab that goes on beside itself has one below each part.
void Producer::foot() {
    const std::size_t last = data_->rowCount() == 0 ? 0 : data_->rowCount() - 1;
    const std::string& empty = data_->report().detail.emptyText;
    if (data_->rowCount() == 0 && !empty.empty()) place(composer_.note(empty), 0);
    footBand(data_->report().reportFooter, last);
    if (set_ + 1 >= composer_.columnSets()) footBand(data_->report().signature, last);
}

bool Producer::step() {
    if (ended_) return false;
    if (!begun_) begin();
    if (row_ < data_->rowCount()) {
        laying_ = row_;
        layRow(row_++);
        if (row_ < data_->rowCount()) return true;
    }
    foot();
    ended_ = data_->rowCount() == 0 || set_ + 1 >= composer_.columnSets();
    if (ended_) return false;
    composer_.useColumnSet(++set_);
    row_ = laying_ = 0;
    flow_.newPage();
    return true;
}

int Producer::startingLevel(std::size_t row) const {
    for (int level = 0; level < levels(); ++level) {
        if (data_->groupStarts(level, row)) return level;
    }
    return levels();
}

PageBlock Producer::detailOf(std::size_t row) {
    const Detail& detail = data_->report().detail;
    const RowContext at = context(row);
    PageBlock block;
    if (!detail.band.when.empty() && !truthOf(detail.band.when.evaluate(at))) return block;
    const bool sameGroup = row > 0 && startingLevel(row) == levels();
    const bool afterSame = sameGroup && flow_.frame() == frame_ && row > frameRow_;
    const std::size_t within = levels() > 0 ? row - data_->groupRange(levels() - 1, row).first : row;
    block = composer_.row(at, afterSame, detail.stripe != kNoColor && within % 2 == 1);
    if (detail.band.items.empty() && detail.band.height <= 0) return block;
    stack(block, composer_.band(detail.band, at, kScopeReport));
    return block;
}

Producer::RowBlocks Producer::blocksOf(std::size_t row) {
    RowBlocks out;
    const Template& report = data_->report();
    const RowContext at = context(row);
    for (int level = startingLevel(row); level < levels(); ++level) {
        const ReportGroup& group = report.groups[static_cast<std::size_t>(level)];
        out.headers.push_back(composer_.band(group.header, at, level));
        if (report.detail.headings == group.name) out.headers.push_back(composer_.headings(at));
    }
    out.detail = detailOf(row);
    for (int level = levels() - 1; level >= 0 && data_->groupEnds(level, row); --level) {
        out.footers.push_back(composer_.band(report.groups[static_cast<std::size_t>(level)].footer, at, level));
    }
    out.height = heightOf(out.headers) + out.detail.height + heightOf(out.footers);
    return out;
}

/// What stands on top of a new page before the row: headings, headers of groups that go on, sums brought forward.
std::vector<PageBlock> Producer::continuation(std::size_t row) {
    std::vector<PageBlock> out;
    const Template& report = data_->report();
    const RowContext at = context(row);
    if (report.detail.headings == "page") out.push_back(composer_.headings(at));
    const int starting = startingLevel(row);
    for (int level = 0; level < starting; ++level) {
        const ReportGroup& group = report.groups[static_cast<std::size_t>(level)];
        if (group.repeatHeader) out.push_back(composer_.band(group.header, at, level));
        if (report.detail.headings == group.name) out.push_back(composer_.headings(at));
    }
    if (!report.detail.carriedFrom.empty() && carriesInto(row)) {
        RowContext before = context(row - 1);
        before.over = carriedRange(row);
        out.push_back(composer_.carried(report.detail.carriedFrom, before, carriedScope()));
    }
    return out;
}

int Producer::carriedScope() const {
    const std::string& over = data_->report().detail.carriedOver;
    return over == "report" ? kScopeReport : data_->report().groupIndex(over);
}

/// True when sums are carried from the row before into this one.
bool Producer::carriesInto(std::size_t row) const {
    if (row == 0 || data_->report().detail.carriedTo.empty()) return false;
    return carriedScope() == kScopeReport || !data_->groupStarts(carriedScope(), row);
}

RowRange Producer::carriedRange(std::size_t row) const {
    if (carriedScope() == kScopeReport) return {0, row};
    return {data_->groupRange(carriedScope(), row).first, row};
}

/// Room to keep free below a row so that a sum can still be carried from it.
double Producer::reserveAfter(std::size_t row) {
    return row + 1 < data_->rowCount() && carriesInto(row + 1) ? carryHeight_ : 0;
}

double Producer::groupHeight(int level, std::size_t row) {
    const RowRange range = data_->groupRange(level, row);
    double sum = 0;
    for (std::size_t r = range.first; r < range.last && sum <= flow_.wholeRoom(); ++r) sum += blocksOf(r).height;
    return sum;
}

bool Producer::breaksBefore(std::size_t row) const {
    for (int level = startingLevel(row); level < levels(); ++level) {
        if (data_->report().groups[static_cast<std::size_t>(level)].newPage) return true;
    }
    return data_->report().detail.band.newPage != NewPage::No;
}

bool Producer::groupNeedsNewPage(std::size_t row) {
    for (int level = startingLevel(row); level < levels(); ++level) {
        if (!data_->report().groups[static_cast<std::size_t>(level)].keepTogether) continue;
        const double height = groupHeight(level, row);
        return !flow_.fits(height) && height <= flow_.wholeRoom();
    }
    return false;
}

void Producer::turnPage(std::size_t row) {
    if (carriesInto(row) && !data_->report().detail.carriedTo.empty()) {
        RowContext before = context(row - 1);
        before.over = carriedRange(row);
        flow_.place(composer_.carried(data_->report().detail.carriedTo, before, carriedScope()), x_);
    }
    for (int level = startingLevel(row); main_ && level < levels(); ++level) {
        if (data_->report().groups[static_cast<std::size_t>(level)].restartPages && onRestartPages) onRestartPages();
    }
    flow_.newPage();
}

void Producer::headersDone(std::size_t row) {
    if (!main_ || set_ > 0) return;
    // groups without a label have no entry, and those below them move up
    int depth = 0;
    for (int level = 0; level < levels(); ++level) {
        const ReportGroup& group = data_->report().groups[static_cast<std::size_t>(level)];
        const std::string label = (group.label.empty() ? group.by : group.label).evaluate(context(row)).text();
        if (trimBlanks(label).empty()) continue;
        if (level >= startingLevel(row)) {
            document_.tree.push_back({depth, label, flow_.page(), static_cast<float>(flow_.y())});
        }
        ++depth;
    }
}

void Producer::layRow(std::size_t row) {
    RowBlocks blocks = blocksOf(row);
    const bool fresh = flow_.frame() != frame_;
    const double top = fresh ? heightOf(continuation(row)) : 0;
    // a header with a single row of many below it would look lost at the foot of a page
    const bool opens = startingLevel(row) < levels() && !data_->groupEnds(levels() - 1, row);
    const double next = opens ? detailOf(row + 1).height : 0;
    const bool full = !flow_.fits(top + blocks.height + next + reserveAfter(row));
    if ((!flow_.atTop() || (row > 0 && !fresh)) && (full || breaksBefore(row) || groupNeedsNewPage(row))) {
        if (row > 0 || full) {
            turnPage(row);
            blocks = blocksOf(row);
        }
    }
    if (flow_.frame() != frame_) {
        for (const PageBlock& block : continuation(row)) flow_.place(block, x_);
        frame_ = flow_.frame();
        frameRow_ = row;
        blocks.detail = detailOf(row);
    }
    headersDone(row);
    if (facts.rows.size() == 0) facts.rows.first = row;
    facts.rows.last = row + 1;
    for (const PageBlock& block : blocks.headers) placeOrTurn(block, row);
    placeOrTurn(blocks.detail, row);
    for (const PageBlock& block : blocks.footers) placeOrTurn(block, row);
}

void Producer::subreport(const BandItem& item, std::size_t row) {
    if (!subreportRows_) return;
    const auto rows = subreportRows_(item, context(row), *data_);
    if (!rows) return;
    if (rows->rowCount() > kSubreportRowsMost) {
        throw Error(kErrSubreport, "Report", "The sub-report '" + item.subreport + "' has more than 100,000 rows");
    }
    const double width = item.width.value_or(data_->report().page.columnWidth() - item.x);
    Producer inner(rows, flow_, document_, measure_, subreportRows_, x_ + item.x, width, false);
    inner.facts = facts;
    while (inner.step()) {
    }
}

}  // namespace kv
