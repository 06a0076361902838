#pragma once
// ctlGrid: the editable grid on which journal, voucher and deposit lines are typed. Each column has a lock, a browse
// button, a filter and a blank check; the screen validates entries and refuses them by Cancel.

#include <optional>
#include <string>
#include <vector>

#include "platform/forms/Grid.h"
#include "reporting/EntryFilter.h"

namespace kv {

class ctlGrid : public Grid {
public:
    ctlGrid(Form& form, std::string name);

    /// Heading and columns: cells joined by "|", each led by "<", ">" or "^" for its alignment.
    void FormatString(std::string_view format);
    int Cols() const { return cols(); }
    int Rows() const { return rows(); }
    void SetRows(int count) { setRows(count); }
    int Row() const { return row(); }
    int Col() const { return col(); }
    /// Move without validation, as code may.
    void SetRow(int Row) { moveTo(Row, col()); }
    void SetCol(int Col) { moveTo(row(), Col); }
    bool Enabled() const { return enabled(); }
    void SetEnabled(bool on) { setEnabled(on); }
    /// The text in the editor; during ValidateEntry what is about to be written.
    std::string TextEntry() const { return validating_ ? entry_ : editorText(); }
    void SetTextEntry(std::string text);

    // widths are in twips, 15 of them a pixel at 96 dots per inch; 0 hides a column
    int GetColWidth(int Col) const;
    void SetColWidth(int Col, int twips);
    std::string GetText(int Row, int Col) const { return cell(Row, Col); }
    void SetText(int Row, int Col, std::string_view Text);
    void SetCellBackColor(int Row, int Col, unsigned rgb) { setCellBackColor(Row, Col, rgb); }
    /// Only for a data row.
    void SetRowBackColor(int Row, unsigned rgb);
    void SetColumnBrowse(int Col, bool Browse);
    void SetColumnLock(int Col, bool Locked);
    void SetColumnFilter(int Col, EntryFilter Filter);
    /// The cell may be validated when it is empty.
    void ValidateBlank(int Col, bool on = true);
    void Refresh();
    bool RowIsVisible(int Row) const { return rowIsVisible(Row); }
    // places in twips from the grid's upper left corner
    int CellHeight() const { return cellHeight() * kTwipsPerPixel; }
    int ColPos(int Col) const { return columnX(Col) * kTwipsPerPixel; }
    int RowPos(int Row) const { return rowY(Row) * kTwipsPerPixel; }
    /// Removes the row, or blanks it when it is the only one.
    void RemoveRow(int Row);
    void InsertRow(int Row);
    /// Names the column where the next move starts; the move goes right from there.
    void SetNextColumn(int Col) { nextStart_ = Col; }
    void SetPrevColumn(int Col) { nextStart_ = Col - 1; }
    void ShowEntry() { openEditor(); }
    /// A block is being put in: many cells are validated, one after the other, before AfterValidate comes once.
    bool Pasting() const { return pasting_; }
    /// Skips one validation.
    void SkipValidation() { skipOnce_ = true; }
    /// The cell that follows by the rules of Enter; adds a row behind a last row that is filled. (-1, -1) behind an
    /// empty one.
    std::pair<int, int> NextCell(int Row, int Col);

    Event<bool&> onShowEntry;  ///< the screen may refuse entry by setting the flag
    Event<> onFocusEntry;      ///< entry begins; the editor is laid over the cell after it, unless the column is locked
    Event<bool&> onValidateEntry;
    Event<> onAfterValidate;
    Event<> onBrowse;
    Event<> onEnterCell;
    Event<> onRowColChange;
    Event<> onClick;
    Event<> onDblClick;
    Event<int> onColumnClick;
    /// Enter passes over the cell at row and column when the flag is set; the pointer and the arrows still come to it.
    Event<int, int, bool&> onPassOver;
    Event<> onEndOfLines;  ///< Enter in an empty last line; without a handler it goes on to the next control
    Event<std::string, bool&> onGridKey;  ///< F-keys and the like by name; the flag says it was handled

private:
    struct ColumnRules {
        bool lock = false;
        bool browse = false;
        EntryFilter filter = EntryFilter::Free;
        bool blankCheck = false;
    };
    ColumnRules& rules(int col);
    static constexpr int kTwipsPerPixel = 15;
    bool usable(int col) const;
    bool entryIsOn() const;
    bool rowIsBlank(int row) const;
    bool passedOver(int row, int col) const;
    void takeFromAbove();
    void markOpenRow(int from = 1);
    void connectHooks();
    bool validateEntry(int row, int col, std::string& text);
    void pasteBlock(int row, int col, const std::vector<std::vector<std::string>>& block);
    std::string pasteCell(int row, int col, const std::string& text);
    std::vector<int> pasteColumns(int col, std::size_t width) const;

    std::vector<ColumnRules> rules_;
    std::optional<int> nextStart_;
    bool skipOnce_ = false;
    bool validating_ = false;
    bool pasting_ = false;
    std::string entry_;
};

}  // namespace kv
