#pragma once
// LayoutImpl: the tree behind a Layout and its making into the toolkit's layouts.

#include <QBoxLayout>
#include <QStackedWidget>
#include <QTabBar>
#include <vector>

#include "platform/forms/Control.h"
#include "platform/forms/Layout.h"

namespace kv {

struct LayoutNode {
    enum class Kind {
        Control,
        Column,
        Row,
        Fields,
        Group,
        Card,
        Tabs,
        Expand,
        Stretch,
        Gap,
        Buttons,
        Split,
        Width,
        Line,
        Mdi,
        Totals
    };
    Kind kind = Kind::Column;
    Control* control = nullptr;
    std::vector<Layout> parts;
    std::vector<FieldRow> rows;         ///< Fields
    Control* note = nullptr;            ///< Totals: at the left
    std::vector<ColumnTotal> totals;    ///< Totals: below the grid
    std::vector<std::string> captions;  ///< Tabs: of the pages; Group: of the frame
    int number = 0;                     ///< Fields: columns; Width: characters
};

/// The heads of pages with the pages below: what a TabStrip adopts.
class TabBox : public QWidget {
public:
    explicit TabBox(QWidget* parent);
    QTabBar* bar() const { return bar_; }
    QStackedWidget* pages() const { return pages_; }
    void addPage(const QString& caption, QWidget* page);

private:
    QTabBar* bar_;
    QStackedWidget* pages_;
};

/// Makes the layout of a form inside `target`, and notes the way of Tab and the captions of controls in the form.
void buildLayout(Form& form, const Layout& layout, QWidget* target, int margin_px);

}  // namespace kv
