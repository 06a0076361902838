#include "reporting/frmExportGrid.h"

#include <algorithm>

#include "core/Session.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "reporting/TextExport.h"

namespace kv {
namespace {

constexpr int kNarrowestColumn = 10;
constexpr int kWidestColumn = 50;

ListColumn columnOf(const Field& field) {
    const int heading = static_cast<int>(charCount(field.name)) + 2;
    ListColumn column{field.name, std::clamp(field.size, std::max(kNarrowestColumn, heading), kWidestColumn)};
    const bool figure = field.type == DataType::Currency || field.type == DataType::Decimal ||
                        field.type == DataType::Double || field.type == DataType::Integer ||
                        field.type == DataType::SmallInt || field.type == DataType::BigInt;
    if (figure) column.align = Align::Right;
    return column;
}

}  // namespace

frmExportGrid::frmExportGrid(Session& session) : Form("frmExportGrid", "Export"), session_(session) {
    lblReportCaption.look(Label::Look::Heading);
    lblTotal.look(Label::Look::Hint);
    grdData.rows(16);
    cmdCopy.onClick = [this] { cmdCopy_Click(); };
    cmdSaveAs.primary();
    cmdSaveAs.onClick = [this] { cmdSaveAs_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({lblReportCaption, expand(grdData), row({lblTotal, stretch(), cmdCopy, cmdSaveAs, cmdClose})}));
    setSize(900, 560);
    setFirstFocus(cmdSaveAs);
}

void frmExportGrid::ShowDialog(std::string_view ReportCaption, std::string_view Query) {
    query_ = Query;
    caption_ = ReportCaption;
    lblReportCaption.setText(caption_);
    ShowModal();
}

void frmExportGrid::Form_Load() {
    const Hourglass busy;
    cmdCopy.setEnabled(false);  // until the statement has gone through
    cmdSaveAs.setEnabled(false);
    const Recordset data = session_.cn().Open(query_);
    std::vector<ListColumn> columns;
    for (const Field& field : data.fields()) columns.push_back(columnOf(field));
    std::vector<ListView::Item> items;
    items.reserve(data.recordCount());
    for (const Row& values : data.rows()) {
        ListView::Item item;
        for (const Value& value : values) item.cells.push_back(value.text());
        items.push_back(std::move(item));
    }
    grdData.setColumns(std::move(columns));
    grdData.setItems(std::move(items));
    lblTotal.setText(Format(static_cast<long long>(data.recordCount()), "#,##0") + " rows");
    cmdCopy.setEnabled(true);
    cmdSaveAs.setEnabled(true);
}

std::string frmExportGrid::GetTextFromGrid(bool ForFile) const {
    std::vector<std::vector<std::string>> rows(1);
    for (const ListColumn& column : grdData.columns()) rows.front().push_back(column.heading);
    for (int i = 0; i < grdData.count(); ++i) rows.push_back(grdData.item(i).cells);
    return cellsText(rows, ForFile);
}

void frmExportGrid::cmdCopy_Click() {
    setClipboard(GetTextFromGrid(false));
    MsgBox("Data copied to clipboard. Paste this into your spreadsheet application.");
}

void frmExportGrid::cmdSaveAs_Click() {
    const auto path = askSaveFile("Save File", caption_ + ".csv", {"Comma Delimited File (*.csv)|*.csv", "csv"});
    if (!path) return MsgBox("Dialog Cancelled");
    SaveFile(*path);
}

void frmExportGrid::SaveFile(const std::string& Path) {
    writeTextFile(Path, GetTextFromGrid(true));
    MsgBox("You saved the data into " + Path);
}

}  // namespace kv
