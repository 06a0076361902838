#include "reporting/SearchDialog.h"

#include <algorithm>

#include "core/Session.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

constexpr int kNarrowestColumn = 10;
constexpr int kWidestColumn = 60;

bool isAmount(DataType type) {
    return type == DataType::Currency || type == DataType::Decimal || type == DataType::Double;
}

}  // namespace

std::string searchStatement(std::string_view query, std::string_view criteria, std::string_view text) {
    return replaceAll(std::string(query) + std::string(criteria), "##", escaped(text));
}

SearchDialog::SearchDialog(Session& session, std::string name, std::string caption)
    : Form(std::move(name), caption), SearchCaption(std::move(caption)), session_(session) {
    txtSearchStr.placeholder("Type part of what you look for");
    txtSearchStr.setHelp("Type to narrow the list. Enter takes the row, Down goes to the list.");
    txtSearchStr.onChange = [this] {
        if (!settingText_ && chkAutoSearch.checked()) RefreshGrid();
    };
    txtSearchStr.onKeyDown = [this](const std::string& key, bool& handled) { txtSearchStr_KeyDown(key, handled); };
    chkAutoSearch.setChecked(true);
    grdDispWindow.rows(14);
    grdDispWindow.emptyText("Nothing found.");
    grdDispWindow.onDblClick = [this](int) { cmdSelect_Click(); };
    cmdSelect.primary();
    cmdSelect.onClick = [this] { cmdSelect_Click(); };
    cmdCancel.cancels();
    cmdCancel.onClick = [this] { Unload(); };
    lblTotal.look(Label::Look::Hint);
    setSize(720, 520);
    setFirstFocus(txtSearchStr);
}

Layout SearchDialog::buttonRow() { return row({lblTotal, stretch(), cmdSelect, cmdCancel}); }

bool SearchDialog::ShowDialog(std::string_view Text) {
    setLayout(column({row({txtSearchStr, chkAutoSearch}), expand(grdDispWindow), buttonRow()}));
    setCaption(SearchCaption);
    confirmed_ = false;
    settingText_ = true;
    txtSearchStr.setText(Text);
    settingText_ = false;
    ShowModal();
    return confirmed_;
}

void SearchDialog::Form_Load() { RefreshGrid(); }

void SearchDialog::RefreshGrid() {
    const std::string text = txtSearchStr.text();
    grdDispWindow.clear();  // rows that do not belong to the text must not be chosen when the statement fails
    lblTotal.setText("0");
    cmdSelect.setEnabled(false);
    showRows(session_.cn().Open(searchStatement(Query, Criteria, text)));
    shownFor_ = text;
}

std::string SearchDialog::Cell(std::string_view column) const {
    for (std::size_t c = 0; c < names_.size() && c < chosen_.size(); ++c) {
        if (equalsNoCase(names_[c], column)) return chosen_[c];
    }
    return {};
}

int SearchDialog::codeColumn(const Recordset& rows) const {
    const int named = rows.indexOf("Code");
    return named >= 0 ? named : static_cast<int>(rows.fields().size()) > 1 ? 1 : 0;
}

int SearchDialog::titleColumn(const Recordset& rows) const {
    for (const char* name : {"Description", "Account Title", "Title"}) {
        if (rows.has(name)) return rows.indexOf(name);
    }
    return codeColumn(rows) == 0 && rows.fields().size() > 1 ? 1 : 0;
}

std::string SearchDialog::shownText(std::size_t /*column*/, const Value& value, DataType type) const {
    if (value.isDate()) return Format(value.date(), "MM/dd/yyyy");
    return isAmount(type) && !value.isNull() ? Format(value.money(), "#,##0.00") : value.text();
}

std::vector<ListColumn> SearchDialog::columnsOf(const Recordset& rows) const {
    std::vector<ListColumn> columns;
    for (std::size_t c = 0; c < rows.fields().size(); ++c) {
        const Field& field = rows.fields()[c];
        const int heading = static_cast<int>(charCount(field.name)) + 2;
        ListColumn column{field.name, std::clamp(field.size, std::max(kNarrowestColumn, heading), kWidestColumn)};
        column.stretch = static_cast<int>(c) == titleColumn_;
        if (isAmount(field.type)) column.align = Align::Right;
        columns.push_back(std::move(column));
    }
    return columns;
}

void SearchDialog::showRows(const Recordset& rows) {
    codeColumn_ = codeColumn(rows);
    titleColumn_ = titleColumn(rows);
    if (names_.empty()) {
        for (const Field& field : rows.fields()) names_.push_back(field.name);
        grdDispWindow.setColumns(columnsOf(rows));
    }
    std::vector<ListView::Item> items;
    items.reserve(rows.recordCount());
    for (const Row& row : rows.rows()) {
        ListView::Item item;
        item.cells.reserve(row.size());
        for (std::size_t c = 0; c < row.size(); ++c) item.cells.push_back(shownText(c, row[c], rows.fields()[c].type));
        items.push_back(std::move(item));
    }
    const bool any = !items.empty();
    grdDispWindow.setItems(std::move(items));
    grdDispWindow.mark(trimBlanks(txtSearchStr.text()));
    if (any) grdDispWindow.select(0);
    lblTotal.setText(std::to_string(rows.recordCount()));
    cmdSelect.setEnabled(any);
}

void SearchDialog::txtSearchStr_KeyDown(const std::string& key, bool& handled) {
    if (key == "Down") {
        grdDispWindow.setFocus();
        handled = true;
    } else if (key == "Enter") {
        handled = true;
        if (txtSearchStr.text() != shownFor_) RefreshGrid();
        if (cmdSelect.enabled()) cmdSelect_Click();
    }
}

void SearchDialog::cmdSelect_Click() {
    const int row = grdDispWindow.selected();
    if (row < 0) return;
    chosen_ = grdDispWindow.item(row).cells;
    code_ = grdDispWindow.cell(row, codeColumn_);
    title_ = grdDispWindow.cell(row, titleColumn_);
    confirmed_ = true;
    Unload();
}

}  // namespace kv
