#include "platform/forms/WidthMemory.h"

#include <QEvent>
#include <QHeaderView>

#include "platform/base/Text.h"
#include "platform/forms/Internal.h"

namespace kv {

namespace {

constexpr int kWidest_px = 5000;  ///< beyond it a remembered width is damage

}  // namespace

WidthMemory::WidthMemory(QTableView& table, std::string key)
    : QObject(&table), table_(table), key_(std::move(key) + ".columns") {
    table.horizontalHeader()->viewport()->installEventFilter(this);
}

std::vector<int> WidthMemory::shown() const {
    std::vector<int> widths;
    for (int column = 0; column < table_.horizontalHeader()->count(); ++column) {
        widths.push_back(table_.isColumnHidden(column) ? 0 : table_.columnWidth(column));
    }
    return widths;
}

int WidthMemory::width(int column, int asked) const {
    const std::vector<std::string> known = split(remembered(key_), ',');
    if (static_cast<int>(known.size()) != table_.horizontalHeader()->count()) return asked;
    const double width = numberOf(known[static_cast<std::size_t>(column)]);
    return width >= 1 && width <= kWidest_px ? static_cast<int>(width) : asked;
}

bool WidthMemory::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) before_ = shown();
    if (event->type() == QEvent::MouseButtonRelease && !before_.empty()) {
        const std::vector<int> now = shown();
        if (now != std::exchange(before_, {})) {
            std::vector<std::string> widths;
            for (const int width : now) widths.push_back(std::to_string(width));
            remember(key_, join(widths, ","));
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace kv
