#pragma once
// WidthMemory: keeps the widths that the user has given to the columns of a table, and gives them back.

#include <QTableView>
#include <string>
#include <vector>

namespace kv {

class WidthMemory : public QObject {
public:
    /// `key` names the table, as "frmX.lvwList".
    WidthMemory(QTableView& table, std::string key);
    /// The remembered width of a column, or `asked` where nothing is remembered for as many columns as there are.
    int width(int column, int asked) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<int> shown() const;
    QTableView& table_;
    std::string key_;
    std::vector<int> before_;  ///< when the mouse button went down
};

}  // namespace kv
