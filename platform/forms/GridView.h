#pragma once
// GridView: the widget of a Grid: a table with an editor of its own laid over the current cell.
//
// The editor is no delegate of the toolkit's: those close and lose the text when a value is refused. Ours stays open
// over the cell until the cell is clean, whichever way the user tries to leave. Rows and columns here count as the
// Grid's do: row 0 is the heading.

#include <QFrame>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>
#include <QValidator>

#include "platform/forms/Grid.h"
#include "platform/forms/GridModel.h"
#include "platform/forms/Internal.h"

namespace kv {

/// Lets the grid's filter decide over each text that comes into the editor, whichever way it comes.
class GridFilter : public QValidator {
public:
    using Take = std::function<QString(const QString& typed, const QString& rest)>;
    GridFilter(QObject* parent, Take take) : QValidator(parent), take_(std::move(take)) {}
    State validate(QString& text, int& cursor) const override;
    /// The text that typing starts from; set before the code puts a text of its own in place.
    void startFrom(const QString& text) { before_ = text; }

private:
    Take take_;
    mutable QString before_;
};

class GridView : public QTableView, public Leavable {
public:
    /// Runs a hook of the owner in the common error path.
    using Guard = std::function<void(std::string_view event, const std::function<void()>& body)>;
    GridView(Grid& grid, Guard guard);

    GridModel& model() { return model_; }
    const GridModel& model() const { return model_; }
    int currentRow() const { return row_; }
    int currentCol() const { return col_; }

    bool canLeave() override { return commit(); }
    bool commit();
    bool refused() const { return refused_; }  ///< the last commit kept its cell
    /// Moves as the user does: the cell that is left has to be clean. False when it refused.
    bool go(int row, int col);
    /// Moves by code: nothing is validated.
    void place(int row, int col);
    void structureChanged();

    bool editorOpen() const { return open_; }
    QString editorText() const { return editor_->text(); }
    void setEditorText(const QString& text);
    QLineEdit* editor() const { return editor_; }
    QToolButton* browseButton() const { return browse_; }
    void openEditor();
    void hideEditor();
    /// The grid goes before its widget: nothing is asked or told any more.
    void release();
    void browse();

    bool isLocked(int col) const;
    int openColumn(int from, int step) const;  ///< from there on that way; -1 without
    bool isCurrent(int row, int col) const { return row == row_ && col == col_; }
    /// Rows that are marked for copying.
    bool rowMarked(int row) const;
    /// The focus of the window is here; it may be away for a box.
    bool focusInside() const;
    QRect cellRect(int row, int col) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;

private:
    void buildEditor();
    bool editorKey(QKeyEvent& event);
    bool moveKey(const QKeyEvent& event);
    bool sideKey(const QKeyEvent& event);
    bool blockKey(const QKeyEvent& event);
    bool ownerKey(const QKeyEvent& event);
    void editorFocusOut(Qt::FocusReason reason);
    void enter();
    void moveOn();
    std::pair<int, int> following() const;
    void markRows(int from, int to);
    void copyRows() const;
    bool paste();
    void layEditor();
    void show(const QString& text);
    int pageRows() const;
    int lastRow() const { return model_.rowCount(); }

    Grid& grid_;
    Guard guard_;
    GridModel model_;
    QFrame* box_ = nullptr;
    QLineEdit* editor_ = nullptr;
    QToolButton* browse_ = nullptr;
    GridFilter* filter_ = nullptr;
    int row_ = 0;
    int col_ = 0;
    bool open_ = false;
    bool validating_ = false;
    bool committed_ = false;  ///< Enter has committed the cell that it is about to leave
    int opened_ = 0;        ///< counts the openings, so that a commit notices that the owner changed the cell under it
    bool refused_ = false;  ///< the last commit
    bool passing_ = false;  ///< the focus goes from a closing editor to the table, which must not open it again
    int markFrom_ = 0;      ///< marked rows; 0 without
    int markTo_ = 0;
};

}  // namespace kv
