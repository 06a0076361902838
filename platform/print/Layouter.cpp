#include "platform/print/Layouter.h"

#include <algorithm>

#include "platform/print/CellFormat.h"

namespace kv {

Layouter::Layouter(std::shared_ptr<const Prepared> data, SubreportRows subreportRows)
    : data_(std::move(data)),
      flow_(data_->report().page, document_),
      producer_(data_, flow_, document_, measure_, std::move(subreportRows), 0, data_->report().page.columnWidth(),
                true) {
    document_.title = data_->report().title;
    document_.width = data_->report().page.width;
    document_.height = data_->report().page.height;
    flow_.onPageStart = [this] { pageStart(); };
    flow_.onPageEnd = [this] { pageEnd(); };
    producer_.onRestartPages = [this] { restart_ = true; };
}

void Layouter::pageStart() {
    const int page = flow_.page();
    if (restart_) sectionStarts_.push_back(page);
    restart_ = false;
    PageFacts& facts = producer_.facts;
    facts.number = page - sectionStarts_.back() + 1;
    const std::size_t row = producer_.laying();
    facts.rows = {row, row};
    const Template& report = data_->report();
    if (page == 0 && report.reportHeader.given) {
        flow_.place(producer_.composer().band(report.reportHeader, producer_.context(row), kScopeReport), 0);
        if (report.reportHeader.newPage == NewPage::After) {
            flow_.headerDone();
            return flow_.newPage();
        }
    }
    flow_.place(producer_.composer().band(report.pageHeader, producer_.context(row), kScopeReport), 0);
    const Band& foot = report.pageFooter;
    flow_.footHeight = producer_.composer().band(foot, producer_.context(row), kScopePage, true).height;
}

void Layouter::pageEnd() {
    const PageFacts& facts = producer_.facts;
    const std::size_t row = facts.rows.size() > 0 ? facts.rows.last - 1 : facts.rows.first;
    const PageBlock foot = producer_.composer().band(data_->report().pageFooter, producer_.context(row), kScopePage);
    const double paper = data_->report().page.height - data_->report().page.bottom;
    flow_.placeAt(foot, 0, paper - foot.height);
}

bool Layouter::step() {
    if (complete_) return false;
    if (!begun_) {
        begun_ = true;
        flow_.begin();
    }
    if (producer_.step()) return true;
    flow_.finish();
    resolveLate();
    complete_ = true;
    return false;
}

/// Fills in what had to wait for the number of pages.
void Layouter::resolveLate() {
    const int all = static_cast<int>(document_.pages.size());
    for (std::size_t i = 0; i < flow_.late.size(); ++i) {
        LateText& text = flow_.late[i];
        const auto [page, index] = flow_.latePlaces[i];
        TextRun& run = document_.pages[static_cast<std::size_t>(page)].runs[index];
        const auto next = std::upper_bound(sectionStarts_.begin(), sectionStarts_.end(), page);
        text.context.page.pages = (next == sectionStarts_.end() ? all : *next) - *(next - 1);
        run.hidden = !text.item->when.empty() && !truthOf(text.item->when.evaluate(text.context));
        const Value value = text.item->value.evaluate(text.context);
        const std::string& format = text.item->format;
        run.text = formatCell(value, format);
    }
    flow_.late.clear();
    flow_.latePlaces.clear();
}

int Layouter::finishedPages() const {
    const int pages = static_cast<int>(document_.pages.size());
    return complete_ ? pages : std::max(0, pages - 1);
}

double Layouter::progress() const {
    return complete_ ? 1.0 : static_cast<double>(producer_.row()) / static_cast<double>(producer_.rows());
}

}  // namespace kv
