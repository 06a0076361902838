#pragma once
// Layout: how a form looks, declared with rows, columns and fields; no pixel positions.
//
//     setLayout(column({
//         fields({{"&Date:", dtpBatchDate}, {"&Particulars:", txtParticular}}),
//         expand(grdAccounts),
//         row({lblAccount, stretch(), lblTotals0, lblTotals1, lblTotals2}),
//         buttons({cmdOption0, cmdOption1}),
//     }));

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kv {

class Control;
class TabStrip;
class Grid;

struct LayoutNode;

/// A part of a layout: a control by itself, or rows and columns of parts.
class Layout {
public:
    Layout(Control& control);  // NOLINT: a control is a layout
    explicit Layout(std::shared_ptr<LayoutNode> node) : node_(std::move(node)) {}
    const std::shared_ptr<LayoutNode>& node() const { return node_; }

private:
    std::shared_ptr<LayoutNode> node_;
};

/// A caption with its field; several controls share the field's room from left to right.
struct FieldRow {
    std::string caption;
    std::vector<Layout> controls;
    FieldRow(std::string text, Control& control) : caption(std::move(text)), controls{Layout(control)} {}
    FieldRow(std::string text, std::initializer_list<Layout> parts) : caption(std::move(text)), controls(parts) {}
};

struct Page {
    std::string caption;
    Layout content;
};

Layout column(std::initializer_list<Layout> parts);
Layout row(std::initializer_list<Layout> parts);
/// Aligned captions and fields, filled in `columns` columns from left to right.
Layout fields(std::initializer_list<FieldRow> rows, int columns = 1);
Layout group(std::string caption, Layout content);  ///< a titled frame
Layout card(Layout content);                        ///< a quiet panel
Layout tabs(TabStrip& strip, std::initializer_list<Page> pages);
Layout expand(Layout content);  ///< takes the room that is left
/// A total below the column of a grid that it sums, and what is written at its left.
struct ColumnTotal {
    int column;
    Control* total;
    std::string caption = {};
};
/// A grid that takes the room that is left, with a last line of totals that is always in sight; `note` at its left.
Layout totals(Grid& grid, std::initializer_list<ColumnTotal> cells, Control* note = nullptr);
Layout stretch();                                     ///< empty room that grows
Layout gap();                                         ///< one step of the spacing scale
Layout buttons(std::initializer_list<Layout> parts);  ///< the row at the bottom right
Layout split(Layout left, Layout right);              ///< two parts with a movable border, remembered
Layout width(Layout content, int chars);              ///< fixed width in characters
Layout line();                                        ///< a separating line
/// The shell's middle: child forms, or the home form while no other child is open.
Layout mdiArea();
/// The same with a list made at run time.
Layout column(const std::vector<Layout>& parts);
Layout row(const std::vector<Layout>& parts);
Layout fields(const std::vector<FieldRow>& rows, int columns = 1);

}  // namespace kv
