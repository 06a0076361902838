// The commands of a play that work controls.
#include <QComboBox>
#include <QDateTimeEdit>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QTabBar>
#include <QTreeWidget>

#include "platform/base/Date.h"
#include "platform/base/Text.h"
#include "platform/forms/Grid.h"
#include "platform/forms/GridView.h"
#include "platform/forms/ListTable.h"
#include "platform/forms/Lists.h"
#include "platform/forms/player/Hands.h"
#include "platform/forms/player/Performance.h"

namespace kv {

int findListRow(const ListView& list, const PlayLine& line, std::size_t word) {
    if (const int row = line.ordinal(word); row >= 0) return row < list.count() ? row : -1;
    const std::string& text = line.pattern(word, "the row");
    for (int row = 0; row < list.count(); ++row) {
        for (const std::string& cell : list.item(row).cells) {
            if (matches(text, cell)) return row;
        }
    }
    return -1;
}

std::optional<std::pair<int, int>> findGridRow(const Grid& grid, const PlayLine& line, std::size_t word) {
    const auto shown = [&](int col) { return grid.columnWidth(col) > 0 && !(col == 0 && grid.heading(0).empty()); };
    if (const int row = line.ordinal(word); row >= 0) {
        for (int col = 0; row >= 1 && row < grid.rows() && col < grid.cols(); ++col) {
            if (shown(col)) return std::pair(row, col);
        }
        return std::nullopt;
    }
    const std::string& text = line.pattern(word, "the row");
    for (int row = 1; row < grid.rows(); ++row) {
        for (int col = 0; col < grid.cols(); ++col) {
            if (shown(col) && matches(text, grid.cell(row, col))) return std::pair(row, col);
        }
    }
    return std::nullopt;
}

namespace {

const Stage::Kinds kButtons{"CommandButton", "OptionButton", "CheckBox"};
const Stage::Kinds kFields{"TextBox", "ComboBox", "RichText", "DatePicker", "Grid"};
const Stage::Kinds kRows{"ListView", "Grid"};
const Stage::Kinds kTicks{"CheckBox", "OptionButton"};

void press(Performance& show, const PlayLine& line) {
    line.atMost(2);
    clickControl(show.stage.usable(line.word(1, "the name of a button"), kButtons));
}

void menu(Performance& show, const PlayLine& line) {
    line.atMost(2);
    Control& entry = show.stage.usable(line.word(1, "the name of a menu entry"), {"Menu"});
    dynamic_cast<MenuItem&>(entry).pick();
}

void toolbar(Performance& show, const PlayLine& line) {
    line.atMost(2);
    const std::string& key = line.word(1, "the key of a button");
    Toolbar* bar = show.stage.toolbarWith(key);
    if (!bar) throw Failure("there is no toolbar button " + key + " on " + show.stage.form().name());
    if (!bar->press(key)) throw Failure("the toolbar button " + key + " is hidden or disabled");
}

void type(Performance& show, const PlayLine& line) {
    line.atMost(3);
    Control& field = show.stage.usable(line.word(1, "the name of a field"), kFields);
    const std::string text = line.text(2, "the text to type");
    focusOn(field);
    typeOver(fieldOf(field), text);
}

void paste(Performance& show, const PlayLine& line) {
    line.atMost(3);
    Control& field = show.stage.usable(line.word(1, "the name of a field"), kFields);
    const std::string text = line.text(2, "the text to paste");
    focusOn(field);
    pasteOver(fieldOf(field), text);
}

void leave(Performance& show, const PlayLine& line) {
    line.atMost(1);
    show.stage.form();
    pressKey(show.stage.keyTarget(), "Tab");
}

void key(Performance& show, const PlayLine& line) {
    line.atMost(2);
    pressKey(show.stage.keyTarget(), line.text(1, "the key"));
}

void date(Performance& show, const PlayLine& line) {
    line.atMost(3);
    auto& picker = dynamic_cast<DatePicker&>(show.stage.usable(line.word(1, "the name of a date"), {"DatePicker"}));
    const auto day = Date::fromIso(line.text(2, "the day"));
    if (!day) throw Failure("the day must be written yyyy-MM-dd");
    if (picker.locked()) throw Failure(picker.name() + " is locked");
    focusOn(picker);
    const bool month = picker.shown().find('/') == std::string::npos;  // "March 2024"
    typeOver(fieldOf(picker), Format(*day, month ? "MM/yyyy" : "MM/dd/yyyy"));
    settle();
    pressKey(show.stage.keyTarget(), "Tab");
}

void choose(Performance& show, const PlayLine& line) {
    line.atMost(3);
    auto& box = dynamic_cast<ComboBox&>(show.stage.usable(line.word(1, "the name of a list"), {"ComboBox"}));
    int index = line.ordinal(2);
    const std::string& text = line.pattern(2, "the entry");
    for (int i = 0; index < 0 && i < box.count(); ++i) {
        if (matches(text, box.item(i))) index = i;
    }
    if (index < 0 || index >= box.count()) {
        std::vector<std::string> items;
        for (int i = 0; i < box.count(); ++i) items.push_back(inQuotes(box.item(i)));
        throw Failure("expected an entry " + inQuotes(text) + " in " + box.name() + ", found " + join(items, ", "));
    }
    if (box.locked()) throw Failure(box.name() + " is locked");
    focusOn(box);
    auto* combo = qobject_cast<QComboBox*>(box.widget());
    combo->setCurrentIndex(index);
    emit combo->activated(index);
}

void tab(Performance& show, const PlayLine& line) {
    line.atMost(3);
    auto& strip = dynamic_cast<TabStrip&>(show.stage.usable(line.word(1, "the name of the tabs"), {"TabStrip"}));
    auto* bar = strip.widget()->findChild<QTabBar*>();
    const std::string& page = line.word(2, "the page");
    int index = -1;
    for (int i = 0; i < strip.pages(); ++i) {
        const bool meant = line.quoted(2) ? matches(page, strip.pageCaption(i)) : page == std::to_string(i);
        if (index < 0 && (meant || matches(page, strip.pageCaption(i)))) index = i;
    }
    if (index < 0) throw Failure("there is no page " + inQuotes(page) + " in " + strip.name());
    if (!bar->isTabVisible(index) || !bar->isTabEnabled(index)) {
        throw Failure("the page " + strip.pageCaption(index) + " is hidden or disabled");
    }
    click(bar, bar->tabRect(index).center());
}

// ---- rows --------------------------------------------------------------------------------------------------------

Failure noRow(const Control& control, const PlayLine& line, std::size_t word) {
    return Failure("expected a row " + inQuotes(line.word(word, "the row")) + " in " + control.name() + ", found " +
                   std::to_string(rowsOf(control)) + " rows without it");
}

QPoint pointOf(ListView& list, int row, int column) {
    auto& table = *dynamic_cast<ListTable*>(list.widget());
    const auto& model = *static_cast<ListModel*>(table.model());
    const int line = model.lineOf(row);
    if (line < 0) throw Failure("the row is hidden by the filter of " + list.name());
    const QModelIndex index = model.index(line, column);
    table.scrollTo(index);
    if (column == 0 && table.checks) return table.checkBox(index).center();
    return table.visualRect(index).intersected(table.viewport()->rect()).center();
}

/// A column of the list whose click does nothing but choose the row.
int quietColumn(const ListView& list) {
    const bool checks = dynamic_cast<ListTable*>(list.widget())->checks;
    return checks && list.columns().size() > 1 ? 1 : 0;
}

void pointAtRow(Performance& show, const PlayLine& line, void (*with)(QWidget*, QPoint)) {
    line.atMost(3);
    Control& control = show.stage.usable(line.word(1, "the name of a list"), kRows);
    if (auto* list = dynamic_cast<ListView*>(&control)) {
        const int row = findListRow(*list, line, 2);
        if (row < 0) throw noRow(control, line, 2);
        focusOn(control);
        const QPoint at = pointOf(*list, row, quietColumn(*list));
        return with(dynamic_cast<ListTable*>(list->widget())->viewport(), at);
    }
    auto& grid = dynamic_cast<Grid&>(control);
    const auto found = findGridRow(grid, line, 2);
    if (!found) throw noRow(control, line, 2);
    focusOn(control);
    GridView& view = viewOf(grid);
    goToCell(view, found->first, found->second);
    if (with == &click) return;
    with(view.viewport(), view.cellRect(found->first, found->second).intersected(view.viewport()->rect()).center());
}

void row(Performance& show, const PlayLine& line) { pointAtRow(show, line, &click); }
void open(Performance& show, const PlayLine& line) { pointAtRow(show, line, &doubleClick); }

void tick(Performance& show, const PlayLine& line, bool wanted) {
    const Stage::Kinds kinds = line.has(2) ? Stage::Kinds{"ListView"} : kTicks;
    Control& control = show.stage.usable(line.word(1, "the name of a list or check box"), kinds);
    auto* list = dynamic_cast<ListView*>(&control);
    if (!list) {
        line.atMost(2);
        if (isChecked(control) != wanted) clickControl(control);
        if (isChecked(control) != wanted) throw Failure(control.name() + " did not take the click");
        return;
    }
    line.atMost(3);
    if (!dynamic_cast<ListTable*>(list->widget())->checks) throw Failure(list->name() + " has no check boxes");
    const int at = findListRow(*list, line, 2);
    if (at < 0) throw noRow(control, line, 2);
    if (list->checked(at) == wanted) return;
    focusOn(control);
    click(dynamic_cast<ListTable*>(list->widget())->viewport(), pointOf(*list, at, 0));
}

void check(Performance& show, const PlayLine& line) { tick(show, line, true); }
void uncheck(Performance& show, const PlayLine& line) { tick(show, line, false); }

QTreeWidgetItem& findNode(TreeView& view, const PlayLine& line, std::size_t word) {
    const std::string& text = line.pattern(word, "the node");
    for (QTreeWidgetItemIterator it(dynamic_cast<QTreeWidget*>(view.widget())); *it; ++it) {
        const bool meant =
            toStd((*it)->data(0, Qt::UserRole).toString()) == plainText(text) || matches(text, toStd((*it)->text(0)));
        if (meant) return **it;
    }
    throw Failure("there is no node " + inQuotes(text) + " in " + view.name());
}

/// The middle of a node, scrolled into sight.
QPoint pointOf(TreeView& view, QTreeWidgetItem& node) {
    auto* tree = dynamic_cast<QTreeWidget*>(view.widget());
    for (auto* above = node.parent(); above; above = above->parent()) above->setExpanded(true);
    tree->scrollToItem(&node);
    return tree->visualItemRect(&node).center();
}

void node(Performance& show, const PlayLine& line) {
    line.atMost(3);
    auto& view = dynamic_cast<TreeView&>(show.stage.usable(line.word(1, "the name of a tree"), {"TreeView"}));
    QTreeWidgetItem& found = findNode(view, line, 2);
    focusOn(view);
    const QPoint at = pointOf(view, found);
    click(dynamic_cast<QTreeWidget*>(view.widget())->viewport(), at);
}

/// Drags a row of a list onto a node of a tree.
void drag(Performance& show, const PlayLine& line) {
    line.atMost(5);
    auto& list = dynamic_cast<ListView&>(show.stage.usable(line.word(1, "the name of a list"), {"ListView"}));
    const int row = findListRow(list, line, 2);
    if (row < 0) throw noRow(list, line, 2);
    auto& view = dynamic_cast<TreeView&>(show.stage.usable(line.word(3, "the name of a tree"), {"TreeView"}));
    auto& table = *dynamic_cast<ListTable*>(list.widget());
    if (!table.dragEnabled()) throw Failure("no row can be dragged from " + list.name());
    focusOn(list);
    click(table.viewport(), pointOf(list, row, quietColumn(list)));
    QTreeWidgetItem& target = findNode(view, line, 4);
    const QPoint at = pointOf(view, target);
    const std::unique_ptr<QMimeData> data(table.model()->mimeData({table.currentIndex()}));
    dropOn(*dynamic_cast<QTreeWidget*>(view.widget())->viewport(), at, *data);
}

// ---- cells -------------------------------------------------------------------------------------------------------

struct CellPlace {
    Grid& grid;
    int row;
    int col;
    std::string name() const {
        return "the cell " + std::to_string(row) + " " + std::to_string(col) + " of " + grid.name();
    }
};

CellPlace openCell(Performance& show, const PlayLine& line, std::size_t word) {
    auto& grid = dynamic_cast<Grid&>(show.stage.usable(line.word(word, "the name of a grid"), {"Grid"}));
    const CellPlace place{grid, line.number(word + 1, "the row"), line.number(word + 2, "the column")};
    focusOn(grid);
    goToCell(viewOf(grid), place.row, place.col);
    if (!grid.editorOpen()) throw Failure(place.name() + " cannot be edited");
    return place;
}

bool typeInCell(const CellPlace& place, const std::string& text) {
    GridView& view = viewOf(place.grid);
    QPointer<GridView> alive = &view;
    typeOver(view.editor(), text);
    // to the next cell of the row, whatever Enter would pass over; behind the last one Enter opens a row
    const bool more = view.openColumn(place.col + 1, 1) >= 0;
    pressKey(view.editor(), more ? "Right" : "Enter");
    settle();
    return !alive || !view.refused();
}

void cell(Performance& show, const PlayLine& line) {
    line.atMost(5);
    const std::string text = line.text(4, "the text of the cell");
    const CellPlace place = openCell(show, line, 1);
    if (!typeInCell(place, text)) {
        throw Failure("expected that " + place.name() + " takes " + inQuotes(text) + ", found that it refuses");
    }
}

void refusedCell(Performance& show, const PlayLine& line) {
    line.atMost(6);
    const std::string text = line.text(5, "the text of the cell");
    const CellPlace place = openCell(show, line, 2);
    if (typeInCell(place, text)) {
        throw Failure("expected that " + place.name() + " refuses " + inQuotes(text) + ", found that it takes it as " +
                      inQuotes(place.grid.cell(place.row, place.col)));
    }
    const bool kept =
        viewOf(place.grid).isCurrent(place.row, place.col) && place.grid.editorOpen() && holdsFocus(place.grid);
    if (!kept) throw Failure("expected that " + place.name() + " keeps the focus, found that it has gone");
}

void browse(Performance& show, const PlayLine& line) {
    line.atMost(4);
    const CellPlace place = openCell(show, line, 1);
    QToolButton* button = viewOf(place.grid).browseButton();
    if (!button->isVisible()) throw Failure(place.name() + " has no browse button");
    click(button, button->rect().center());
}

constexpr CommandEntry kCommands[] = {
    {"press", press},   {"menu", menu},   {"toolbar", toolbar},
    {"type", type},     {"paste", paste}, {"leave", leave},
    {"key", key},       {"date", date},   {"choose", choose},
    {"tab", tab},       {"row", row},     {"open", open},
    {"check", check},   {"node", node},   {"uncheck", uncheck},
    {"browse", browse}, {"cell", cell},   {"refused cell", refusedCell},
    {"drag", drag},
};

}  // namespace

std::span<const CommandEntry> actionCommands() { return kCommands; }

}  // namespace kv
