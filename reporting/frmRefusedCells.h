#pragma once
// frmRefusedCells: the pasted cells that a grid refused, as a list that can be copied back to the spreadsheet.

#include <string>
#include <vector>

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

struct RefusedCell {
    int row = 0;
    std::string column;  ///< its heading
    std::string text;
    std::string reason;
};
/// One line each: Line 3, Debit "abc": not a number
std::string refusalText(const std::vector<RefusedCell>& cells);

class frmRefusedCells : public Form {
public:
    explicit frmRefusedCells(std::vector<RefusedCell> cells);
    void ShowDialog() { ShowModal(); }

    Label lblCount{*this, "lblCount"};
    ListView lvwRefused{*this, "lvwRefused"};
    CommandButton cmdCopy{*this, "cmdCopy", "C&opy"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

private:
    void cmdCopy_Click();
    std::vector<RefusedCell> cells_;
};

/// Tells the user what was refused: a box for a few cells, the list for many.
void tellRefusedCells(std::vector<RefusedCell> cells);

}  // namespace kv
