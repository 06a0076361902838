#pragma once
// ListTable: the widget of a ListView and how its rows look.

#include <QStyledItemDelegate>
#include <QTableView>
#include <functional>

#include "platform/forms/ListModel.h"

namespace kv {

class ListTable : public QTableView {
public:
    explicit ListTable(ListModel& model);

    bool checks = false;
    QString marked;                           ///< a text that is shown where it stands in the cells
    QString emptyText;                        ///< stands in the middle while there is no row
    std::function<void(int row)> rowClicked;  ///< the user came to a row
    std::function<bool(int row)> rowOpened;   ///< double click or Enter; false: the key goes on to the form
    std::function<void(int row)> rowChecked;  ///< the check box or the blank key
    int currentRow() const;                   ///< -1 without
    QRect checkBox(const QModelIndex& index) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool tick(const QMouseEvent& event);
    ListModel& rows_;
};

class ListPaint : public QStyledItemDelegate {
public:
    explicit ListPaint(ListTable& table, ListModel& rows) : QStyledItemDelegate(&table), table_(table), rows_(rows) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintCheck(QPainter& painter, const QRect& box, bool checked) const;
    void paintMarks(QPainter& painter, const QRect& inside, const QString& text, int left) const;
    ListTable& table_;
    ListModel& rows_;
};

}  // namespace kv
