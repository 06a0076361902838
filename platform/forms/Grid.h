#pragma once
// Grid: a table of text cells that is edited in place by an editor of its own laid over the current cell.
// Row 0 is the heading, data rows count from 1; columns count from 0 (the row marker, usually).
// What may be typed and accepted is decided by its owner through hooks; leaving a cell that refuses keeps text and
// focus.

#include <vector>

#include "platform/forms/Control.h"

namespace kv {

/// A quiet colour of a cell that says how it stands, in every theme.
enum class Tint { None, Good, Waiting, Bad, Noted, Idle };

struct GridColumn {
    std::string heading;
    int width_px = 100;  ///< 0 hides the column
    Align align = Align::Left;
    bool stretch = false;
};

class Grid : public Control {
public:
    Grid(Form& form, std::string name);
    ~Grid() override;
    std::string kind() const override { return "Grid"; }
    std::string text() const override;  ///< the current cell's text, as the editor shows it

    void setColumns(std::vector<GridColumn> columns);
    int cols() const;
    int rows() const;  ///< heading included, so data rows are 1 to rows()-1
    void setRows(int rows);
    void insertRow(int before);
    void removeRow(int row);

    std::string cell(int row, int col) const;
    void setCell(int row, int col, std::string_view text);
    std::string heading(int col) const;
    int row() const;
    int col() const;
    /// Moves the current cell by code: no validation. Opens the editor when the grid has the focus.
    void moveTo(int row, int col);
    void setCellBackColor(int row, int col, unsigned rgb);
    void setRowBackColor(int row, unsigned rgb);
    void setCellTint(int row, int col, Tint tint);
    int columnWidth(int col) const;
    void setColumnWidth(int col, int width_px);  ///< 0 hides
    void setStretchColumn(int col);              ///< takes the room that is left
    bool rowIsVisible(int row) const;
    int columnX(int col) const;  ///< px from the grid's left edge
    int rowY(int row) const;
    int cellHeight() const;
    Grid& rowsShown(int rows);

    std::string editorText() const;
    void setEditorText(std::string_view text);
    bool editorOpen() const;
    void closeEditor();
    void openEditor();
    /// Validates and commits the open cell as leaving it does. True: the cell is clean.
    bool commit();

    // hooks of the owner; all but the last are asked while the user works in the grid
    std::function<bool(int row, int col)> canEnter;  ///< false: the cell is shown, not edited; also for locked columns
    std::function<bool(int col)> isLocked;           ///< skipped by Enter and never edited
    std::function<bool(int col)> hasBrowse;
    std::function<std::string(int col, std::string key, std::string editor)>
        filterKeys;                                                     ///< typed or pasted text -> text taken
    std::function<bool(int row, int col, std::string& text)> validate;  ///< false refuses; may change the text
    std::function<std::string(int col, std::string text)> display;      ///< text written back on leaving (formats)
    std::function<void(int row, int col)> committed;
    std::function<void(int row, int col)> browse;
    std::function<void(int row, int col)> entered;  ///< the current cell changed
    /// Entry begins at the current cell, the editor not being there yet; also where the column is locked.
    std::function<void(int row, int col)> focusEntry;
    /// Where Enter goes; may add a row; a row below 1: on to the next control.
    std::function<std::pair<int, int>(int row, int col)> next;
    std::function<bool(std::string key)> keyDown;   ///< F-keys by name; true: handled
    std::function<void(int row, int col)> clicked;  ///< a pointer came to the cell, row marker included
    std::function<void(int row, int col)> doubleClicked;
    std::function<void(int col)> columnClicked;
    /// A block of rows pasted from a spreadsheet at the current cell: tab-separated cells, lines per row.
    std::function<void(int row, int col, std::vector<std::vector<std::string>>)> pasted;

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace kv
