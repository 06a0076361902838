#pragma once
// ListModel: the rows of a ListView, flat, sorted in place and filtered. Row numbers are those of all rows; the lines
// that are shown count apart from them while a filter is on.

#include <QAbstractTableModel>
#include <unordered_map>
#include <vector>

#include "platform/forms/Lists.h"

namespace kv {

class ListModel : public QAbstractTableModel {
public:
    void setColumns(std::vector<ListColumn> columns);
    const std::vector<ListColumn>& columns() const { return columns_; }

    void setItems(std::vector<ListView::Item> items);
    int add(ListView::Item item);
    void remove(int row);
    int count() const { return static_cast<int>(items_.size()); }
    const ListView::Item& item(int row) const { return items_[static_cast<std::size_t>(row)]; }
    bool has(int row) const { return row >= 0 && row < count(); }
    bool hasIcons() const { return icons_; }  ///< then every row keeps the room of one
    void setCell(int row, int column, std::string_view text);
    void setChecked(int row, bool checked);
    void checkAll(bool checked);

    int find(std::string_view key) const;
    int findText(std::string_view text) const;

    /// Numbers as numbers, dates as dates, else as text without regard to letter case; equal rows keep their order.
    void sort(int column, Qt::SortOrder order) override;
    void filter(std::string_view text);
    int rowOf(int line) const { return filtered_ ? lines_[static_cast<std::size_t>(line)] : line; }
    int lineOf(int row) const;  ///< -1 while the filter hides the row

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;  ///< the key of the row

private:
    const std::string& text(int row, int column) const;
    bool passes(const ListView::Item& item) const;
    void applyFilter();
    void changed(int row);

    std::vector<ListColumn> columns_;
    std::vector<ListView::Item> items_;
    bool icons_ = false;
    bool filtered_ = false;
    std::string filterText_;
    std::vector<int> lines_;  ///< rows that pass the filter
    mutable std::unordered_map<std::string, int> keys_;
    mutable bool keysKnown_ = false;
};

}  // namespace kv
