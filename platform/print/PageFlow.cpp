#include "platform/print/Layouter.h"

namespace kv {

void PageFlow::begin() {
    document_.pages.emplace_back();
    y_ = top_ = setup_.top;
    column_ = 0;
    ++frame_;
    if (onPageStart) onPageStart();
    top_ = y_;
}

void PageFlow::newPage() {
    if (column_ + 1 < setup_.columns) {
        ++column_;
        ++frame_;
        y_ = top_;
        return;
    }
    finish();
    begin();
}

void PageFlow::finish() {
    column_ = 0;
    if (onPageEnd) onPageEnd();
}

void PageFlow::pushToBottom(double height) { y_ = std::max(y_, bottom() - height); }

void PageFlow::placeAt(const PageBlock& block, double x, double y) {
    PaperPage& page = document_.pages.back();
    const auto dx = static_cast<float>(setup_.left + x + column_ * (setup_.columnWidth() + setup_.gap));
    const auto dy = static_cast<float>(y);
    const std::size_t firstRun = page.runs.size();
    const auto append = [&](auto& to, const auto& from) {
        for (auto thing : from) {
            thing.x += dx;
            thing.y += dy;
            to.push_back(std::move(thing));
        }
    };
    append(page.shapes, block.content.shapes);
    append(page.pictures, block.content.pictures);
    append(page.runs, block.content.runs);
    append(page.links, block.content.links);
    for (const LateText& text : block.late) {
        late.push_back(text);
        latePlaces.emplace_back(static_cast<int>(document_.pages.size()) - 1, firstRun + text.run);
    }
}

void PageFlow::place(const PageBlock& block, double x) {
    placeAt(block, x, y_);
    y_ += block.height;
}

}  // namespace kv
