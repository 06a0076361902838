#include "platform/forms/Layout.h"

#include "platform/forms/Grid.h"
#include "platform/forms/LayoutImpl.h"

namespace kv {

namespace {

using Kind = LayoutNode::Kind;

Layout make(Kind kind, std::vector<Layout> parts = {}, int number = 0) {
    auto node = std::make_shared<LayoutNode>();
    node->kind = kind;
    node->parts = std::move(parts);
    node->number = number;
    return Layout(node);
}

}  // namespace

Layout::Layout(Control& control) : node_(std::make_shared<LayoutNode>()) {
    node_->kind = Kind::Control;
    node_->control = &control;
}

Layout column(std::initializer_list<Layout> parts) { return make(Kind::Column, parts); }
Layout row(std::initializer_list<Layout> parts) { return make(Kind::Row, parts); }
Layout column(const std::vector<Layout>& parts) { return make(Kind::Column, parts); }
Layout row(const std::vector<Layout>& parts) { return make(Kind::Row, parts); }

Layout fields(const std::vector<FieldRow>& rows, int columns) {
    Layout layout = make(Kind::Fields, {}, columns);
    layout.node()->rows = rows;
    return layout;
}

Layout fields(std::initializer_list<FieldRow> rows, int columns) { return fields(std::vector(rows), columns); }

Layout group(std::string caption, Layout content) {
    Layout layout = make(Kind::Group, {std::move(content)});
    layout.node()->captions = {std::move(caption)};
    return layout;
}

Layout card(Layout content) { return make(Kind::Card, {std::move(content)}); }

Layout tabs(TabStrip& strip, std::initializer_list<Page> pages) {
    Layout layout = make(Kind::Tabs);
    layout.node()->control = &strip;
    for (const Page& page : pages) {
        layout.node()->captions.push_back(page.caption);
        layout.node()->parts.push_back(page.content);
    }
    return layout;
}

Layout expand(Layout content) { return make(Kind::Expand, {std::move(content)}); }
Layout totals(Grid& grid, std::initializer_list<ColumnTotal> cells, Control* note) {
    Layout layout = make(Kind::Totals);
    layout.node()->control = &grid;
    layout.node()->totals = cells;
    layout.node()->note = note;
    return layout;
}

Layout stretch() { return make(Kind::Stretch); }
Layout gap() { return make(Kind::Gap); }
Layout buttons(std::initializer_list<Layout> parts) { return make(Kind::Buttons, parts); }
Layout split(Layout left, Layout right) { return make(Kind::Split, {std::move(left), std::move(right)}); }
Layout width(Layout content, int chars) { return make(Kind::Width, {std::move(content)}, chars); }
Layout line() { return make(Kind::Line); }
Layout mdiArea() { return make(Kind::Mdi); }

}  // namespace kv
