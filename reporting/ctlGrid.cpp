#include "reporting/ctlGrid.h"

#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Form.h"
#include "platform/forms/QuietDialogs.h"
#include "reporting/frmRefusedCells.h"

namespace kv {

ctlGrid::ctlGrid(Form& form, std::string name) : Grid(form, std::move(name)) { connectHooks(); }

void ctlGrid::connectHooks() {
    canEnter = [this](int, int) { return !pasting_ && entryIsOn(); };
    isLocked = [this](int c) { return rules(c).lock; };
    hasBrowse = [this](int c) { return rules(c).browse; };
    filterKeys = [this](int c, const std::string& key, const std::string& kept) {
        return kv::filterKeys(rules(c).filter, key, kept);
    };
    validate = [this](int r, int c, std::string& text) { return validateEntry(r, c, text); };
    display = [this](int c, const std::string& text) { return writtenBack(rules(c).filter, text); };
    committed = [this](int, int) { raise(onAfterValidate, "AfterValidate"); };
    browse = [this](int, int) { raise(onBrowse, "Browse"); };
    entered = [this](int, int) {
        if (pasting_) return;  // the cells of a block are not where the user goes
        raise(onEnterCell, "EnterCell");
        raise(onRowColChange, "RowColChange");
    };
    focusEntry = [this](int, int) { raise(onFocusEntry, "FocusEntry"); };
    next = [this](int r, int c) {
        const std::pair<int, int> to = NextCell(r, c);
        if (to.first >= 1 || !onEndOfLines) return to;
        raise(onEndOfLines, "EndOfLines");
        return std::pair(r, c);
    };
    keyDown = [this](const std::string& key) {
        bool handled = false;
        raise(onGridKey, "KeyDown", key, handled);
        if (handled || key != "Ctrl+D") return handled;
        takeFromAbove();
        return true;
    };
    clicked = [this](int, int) { raise(onClick, "Click"); };
    doubleClicked = [this](int, int) { raise(onDblClick, "DblClick"); };
    columnClicked = [this](int c) { raise(onColumnClick, "ColumnClick", c); };
    pasted = [this](int r, int c, const std::vector<std::vector<std::string>>& block) { pasteBlock(r, c, block); };
}

void ctlGrid::FormatString(std::string_view format) {
    std::vector<GridColumn> columns;
    for (const std::string& part : split(format, '|')) {
        GridColumn column;
        const char mark = part.empty() ? '\0' : part.front();
        column.align = mark == '>' ? Align::Right : mark == '^' ? Align::Center : Align::Left;
        column.heading = mark == '<' || mark == '>' || mark == '^' ? part.substr(1) : part;
        columns.push_back(std::move(column));
    }
    rules_.assign(columns.size(), ColumnRules());
    setColumns(std::move(columns));
    markOpenRow();
}

ctlGrid::ColumnRules& ctlGrid::rules(int col) {
    const auto at = static_cast<std::size_t>(col < 0 ? 0 : col);
    if (at >= rules_.size()) rules_.resize(at + 1);
    return rules_[at];
}

bool ctlGrid::entryIsOn() const {
    bool off = false;
    raise(onShowEntry, "ShowEntry", off);
    return !off;
}

void ctlGrid::SetTextEntry(std::string text) {
    if (validating_) {
        entry_ = std::move(text);
    } else {
        setEditorText(text);
    }
}

int ctlGrid::GetColWidth(int Col) const { return columnWidth(Col) * kTwipsPerPixel; }
void ctlGrid::SetColWidth(int Col, int twips) { setColumnWidth(Col, twips / kTwipsPerPixel); }

void ctlGrid::SetText(int Row, int Col, std::string_view Text) { setCell(Row, Col, Text); }

void ctlGrid::SetRowBackColor(int Row, unsigned rgb) {
    if (Row > 0 && Row < rows()) setRowBackColor(Row, rgb);
}

void ctlGrid::SetColumnBrowse(int Col, bool Browse) { rules(Col).browse = Browse; }
void ctlGrid::SetColumnLock(int Col, bool Locked) { rules(Col).lock = Locked; }
void ctlGrid::SetColumnFilter(int Col, EntryFilter Filter) { rules(Col).filter = Filter; }
void ctlGrid::ValidateBlank(int Col, bool on) { rules(Col).blankCheck = on; }

void ctlGrid::Refresh() { markOpenRow(); }

/// "#" in column 0 marks the last, open row.
void ctlGrid::markOpenRow(int from) {
    for (int r = std::max(from, 1); r < rows(); ++r) {
        const bool open = r == rows() - 1;
        const std::string mark = cell(r, 0);
        if (open && mark.empty()) setCell(r, 0, "#");
        if (!open && mark == "#") setCell(r, 0, "");
    }
}

void ctlGrid::RemoveRow(int Row) {
    if (Row < 1 || Row >= rows()) return;
    closeEditor();
    if (rows() > 2) {
        removeRow(Row);
    } else {
        for (int c = 0; c < cols(); ++c) setCell(Row, c, "");
    }
    markOpenRow();
}

void ctlGrid::InsertRow(int Row) {
    closeEditor();
    insertRow(Row < 1 ? 1 : Row);
    markOpenRow(rows() - 2);
}

bool ctlGrid::usable(int col) const {
    return col > 0 && columnWidth(col) > 0 &&  // column 0 holds the row marker
           !(static_cast<std::size_t>(col) < rules_.size() && rules_[static_cast<std::size_t>(col)].lock);
}

bool ctlGrid::rowIsBlank(int row) const {
    for (int c = 1; c < cols(); ++c) {
        if (!cell(row, c).empty()) return false;
    }
    return true;
}

bool ctlGrid::passedOver(int row, int col) const {
    bool pass = false;
    raise(onPassOver, "PassOver", row, col, pass);
    return pass;
}

void ctlGrid::takeFromAbove() {
    if (row() > 1 && editorOpen()) setEditorText(cell(row() - 1, col()));
}

std::pair<int, int> ctlGrid::NextCell(int Row, int Col) {
    int c = std::exchange(nextStart_, std::nullopt).value_or(Col);
    int r = Row;
    for (int step = 0; step < 2 * cols(); ++step) {
        if (++c >= cols()) {
            c = 0;
            if (r == rows() - 1) {
                // an empty last row is where the lines end: no further one is opened behind it
                if (rowIsBlank(r)) return {-1, -1};
                InsertRow(rows());
            }
            ++r;
        }
        if (usable(c) && !passedOver(r, c)) return {r, c};
    }
    return {Row, Col};
}

bool ctlGrid::validateEntry(int row, int col, std::string& text) {
    if (std::exchange(skipOnce_, false)) return true;
    if (text.empty() && !rules(col).blankCheck) return true;
    if (!text.empty() && text == cell(row, col)) return true;  // nothing was changed
    if (const std::string fault = entryFault(rules(col).filter, text); !fault.empty()) {
        MsgBox(fault, Icon::Exclamation);
        return false;
    }
    bool cancel = false;
    bool finished = !onValidateEntry;
    entry_ = text;
    validating_ = true;
    guard("ValidateEntry", [&] {
        onValidateEntry.callUnguarded(cancel);
        finished = true;
    });
    validating_ = false;
    text = entry_;
    return finished && !cancel;  // a handler that failed has not accepted anything
}

/// Which columns a pasted row of `width` cells fills: the visible ones from `col` when it has one cell for each of
/// them (locked ones are passed over), else the editable ones.
std::vector<int> ctlGrid::pasteColumns(int col, std::size_t width) const {
    std::vector<int> visible;
    std::vector<int> editable;
    for (int c = col; c < cols(); ++c) {
        if (columnWidth(c) > 0) visible.push_back(c);
        if (usable(c)) editable.push_back(c);
    }
    return width >= visible.size() ? visible : editable;
}

/// Puts one pasted cell through the column's filter and the screen's validation. The reason when it is refused.
std::string ctlGrid::pasteCell(int row, int col, const std::string& text) {
    if (!usable(col)) return {};
    const EntryFilter filter = rules(col).filter;
    const std::string entry = pastedEntry(filter, text);
    const std::string taken = kv::filterKeys(filter, entry, "");
    if (taken != entry && filter != EntryFilter::UpperCase) return "not taken in this column";
    if (taken.empty() && cell(row, col).empty()) return {};
    moveTo(row, col);
    if (!entryIsOn()) return taken.empty() ? std::string() : "not open for entry";
    QuietDialogs quiet;
    std::string written = taken;
    if (!validateEntry(row, col, written)) {
        if (!quiet.texts().empty()) return quiet.texts().front();
        return quiet.asked() ? "it has to be chosen by a search" : "refused";
    }
    setCell(row, col, writtenBack(filter, written));
    return {};
}

void ctlGrid::pasteBlock(int row, int col, const std::vector<std::vector<std::string>>& block) {
    const Hourglass busy;
    closeEditor();
    std::vector<RefusedCell> refused;
    const int end = row + static_cast<int>(block.size());
    if (end > rows()) {  // all at once: row by row the table is rearranged each time
        setRows(end);
        markOpenRow();
    }
    pasting_ = true;
    int r = row;
    for (const auto& line : block) {
        const std::vector<int> columns = pasteColumns(col, line.size());
        for (std::size_t i = 0; i < line.size() && i < columns.size(); ++i) {
            const std::string reason = pasteCell(r, columns[i], line[i]);
            if (!reason.empty()) refused.push_back({r, heading(columns[i]), line[i], reason});
        }
        ++r;
    }
    pasting_ = false;
    moveTo(row, col);
    raise(onAfterValidate, "AfterValidate");
    tellRefusedCells(std::move(refused));
}

}  // namespace kv
