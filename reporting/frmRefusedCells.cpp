#include "reporting/frmRefusedCells.h"

#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

constexpr std::size_t kInBox_max = 10;

std::string countText(std::size_t count) {
    return std::to_string(count) + " pasted cell" + (count == 1 ? " was" : "s were") + " refused:";
}

}  // namespace

std::string refusalText(const std::vector<RefusedCell>& cells) {
    std::vector<std::string> lines;
    for (const RefusedCell& cell : cells) {
        lines.push_back("Line " + std::to_string(cell.row) + ", " + cell.column + " \"" + cell.text +
                        "\": " + cell.reason);
    }
    return join(lines, "\n");
}

frmRefusedCells::frmRefusedCells(std::vector<RefusedCell> cells)
    : Form("frmRefusedCells", "Refused Cells"), cells_(std::move(cells)) {
    lblCount.setText(countText(cells_.size()));
    lvwRefused.rows(12);
    lvwRefused.setColumns({{"Line", 7, Align::Right}, {"Column", 18}, {"Text", 24}, {"Reason", 40, Align::Left, true}});
    std::vector<ListView::Item> items;
    for (const RefusedCell& cell : cells_) {
        items.push_back({"", {std::to_string(cell.row), cell.column, cell.text, cell.reason}});
    }
    lvwRefused.setItems(std::move(items));
    cmdCopy.onClick = [this] { cmdCopy_Click(); };
    cmdCopy.setHelp("Puts the list on the clipboard, for a spreadsheet.");
    cmdClose.primary().cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({lblCount, expand(lvwRefused), buttons({cmdCopy, cmdClose})}));
    setSize(720, 420);
    setFirstFocus(lvwRefused);
}

void frmRefusedCells::cmdCopy_Click() {
    std::vector<std::string> lines{"Line\tColumn\tText\tReason"};
    for (const RefusedCell& cell : cells_) {
        lines.push_back(join({std::to_string(cell.row), spreadsheetCell(cell.column), spreadsheetCell(cell.text),
                              spreadsheetCell(cell.reason)},
                             "\t"));
    }
    setClipboard(join(lines, "\n"));
}

void tellRefusedCells(std::vector<RefusedCell> cells) {
    if (cells.empty()) return;
    if (cells.size() > kInBox_max) return frmRefusedCells(std::move(cells)).ShowDialog();
    MsgBox(countText(cells.size()) + "\n" + refusalText(cells), Icon::Exclamation);
}

}  // namespace kv
