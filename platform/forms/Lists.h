#pragma once
// Lists: ListView (rows with sub-items, checks and keys) and TreeView.

#include <vector>

#include "platform/forms/Control.h"

namespace kv {

struct ListColumn {
    std::string heading;
    int width_chars = 12;
    Align align = Align::Left;
    bool stretch = false;  ///< takes the room that is left
};

/// A list of rows. Column 0 is the item's text, sub-items count from 1; rows count from 0 and may have a key.
/// 50,000 rows scroll at once. A click on a heading sorts: numbers as numbers, dates as dates.
class ListView : public Control {
public:
    ListView(Form& form, std::string name);
    ~ListView() override;
    std::string kind() const override { return "ListView"; }
    std::string text() const override;  ///< text of the selected row's first column

    void setColumns(std::vector<ListColumn> columns);
    const std::vector<ListColumn>& columns() const;
    ListView& checkBoxes();
    ListView& multiSelect();
    ListView& rows(int visibleRows);  ///< the height asked for

    void clear();
    /// Many rows at once; `key` may be empty.
    struct Item {
        Item() = default;
        Item(std::string itemKey, std::vector<std::string> itemCells)
            : key(std::move(itemKey)), cells(std::move(itemCells)) {}
        std::string key;
        std::vector<std::string> cells;
        bool checked = false;
        std::string icon;
        bool dim = false;
    };
    void setItems(std::vector<Item> items);
    int addItem(Item item);
    void removeItem(int row);
    int count() const;
    int shown() const;  ///< rows that the filter shows
    const Item& item(int row) const;
    std::string cell(int row, int column) const;
    void setCell(int row, int column, std::string_view text);
    int find(std::string_view key) const;  ///< row with this key, -1 without
    int findText(std::string_view text) const;

    int selected() const;  ///< -1 without a selection
    std::string selectedKey() const;
    void select(int row);  ///< also scrolls to it
    bool checked(int row) const;
    void setChecked(int row, bool checked);
    void checkAll(bool checked);
    std::vector<int> checkedRows() const;

    void sortBy(int column, bool descending = false);
    /// Shows only rows that hold the text in any column; empty shows all. Row numbers stay those of all rows. Where the
    /// selected row is hidden, the first one shown is selected.
    void filter(std::string_view text);
    /// What stands in the middle of the list while it has no row.
    ListView& emptyText(std::string_view text);
    void setDragging(bool on);  ///< rows can be dragged onto the nodes of a tree, which tells it by their keys
    /// Shows where a text stands in the cells; empty marks nothing.
    void mark(std::string_view text);

    Event<int> onItemClick;  ///< the selected row changed by the user
    Event<int> onDblClick;   ///< double click, or Enter on a row
    Event<int> onItemCheck;  ///< a check was set or cleared by the user
    Event<int> onColumnClick;

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
    friend struct Impl;
};

class TreeView : public Control {
public:
    TreeView(Form& form, std::string name);
    ~TreeView() override;
    std::string kind() const override { return "TreeView"; }
    std::string text() const override;  ///< text of the selected node

    void clear();
    /// `parent` is a key, empty for a root.
    void addNode(std::string_view parent, std::string_view key, std::string_view text, std::string_view icon = {});
    void setNodeText(std::string_view key, std::string_view text);
    void removeNode(std::string_view key);
    bool has(std::string_view key) const;
    std::string nodeText(std::string_view key) const;
    std::string parentOf(std::string_view key) const;
    std::vector<std::string> childrenOf(std::string_view key) const;
    std::string selectedKey() const;
    void select(std::string_view key);
    void expand(std::string_view key, bool open = true);
    std::string keyOfText(std::string_view text) const;  ///< empty when no node has it
    void setDragging(bool on);

    Event<std::string> onNodeClick;
    Event<std::string> onDblClick;
    Event<std::string, std::string> onDrop;  ///< key of the dragged node or row, key of the node it was dropped on

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace kv
