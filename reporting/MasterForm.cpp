#include "reporting/MasterForm.h"

#include <algorithm>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Date.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/MasterPrint.h"
#include "reporting/ReportFrame.h"

namespace kv {
namespace {

constexpr int kListPage = 0;
constexpr int kEntryPage = 1;
constexpr const char* kNew = "NEW";
constexpr const char* kEdit = "EDIT";

bool isActive(const Value& value) { return value.text() == "A" || value.text() == "1" || value.text() == "True"; }

std::string shown(const Value& value, MasterLook look) {
    switch (look) {
        case MasterLook::Active:
            return isActive(value) ? "active" : "inactive";
        case MasterLook::Date:
            return value.isDate() ? Format(value.date(), "MM/dd/yyyy") : value.text();
        case MasterLook::Amount:
            return value.isNull() ? std::string() : Format(value.money(), "#,##0.00");
        default:
            return value.text();
    }
}

/// A key as the list keeps it; no code holds a tab.
std::string joined(const MasterKey& key) { return join(key, "\t"); }

}  // namespace

MasterForm::MasterForm(Session& session, MasterFile file)
    : Form(file.screen, file.title), session_(session), file_(std::move(file)), list_(*this, file_.listControl) {
    makeInputs();
    connect();
    lay();
    if (!file_.icon.empty()) setIcon(file_.icon);
    setSize(860, 600);
    setFirstFocus(txtSearch);
}

// ---- what the constructor builds ---------------------------------------------------------------------------------

void MasterForm::makeInputs() {
    for (const MasterField& field : file_.fields) {
        if (field.kind == MasterKind::Fixed) continue;
        inputs_.push_back(std::make_unique<MasterInput>(*this, session_, field));
        inputs_.back()->onChoice = [this] { choiceChanged(); };
    }
    const std::size_t lastOfKey = file_.listKeys.size() - 1;
    inputs_.at(lastOfKey)->onLeave = [this](bool& cancel) { txtCode_Validate(cancel); };
    for (std::size_t i = 0; i < file_.sorts.size(); ++i) {
        sorts_.push_back(std::make_unique<OptionButton>(*this, "optSort" + std::to_string(i), file_.sorts[i].caption));
        sorts_.back()->onClick = [this, i] {
            sort_ = i;
            RefreshList();
        };
    }
    if (!sorts_.empty()) sorts_.front()->choose();
}

void MasterForm::connect() {
    list_.rows(14);
    list_.onItemClick = [this](int) { lvwList_ItemClick(); };
    list_.onDblClick = [this](int row) { lvwList_DblClick(row); };
    list_.onColumnClick = [this](int column) { lvwList_ColumnClick(column); };
    list_.setHelp("Enter opens the row, Insert adds one, a heading sorts.");
    txtSearch.placeholder("Type to narrow the list").setHelp("Type to narrow the list. Down goes to it.");
    txtSearch.onChange = [this] { txtSearch_Change(); };
    txtSearch.onKeyDown = [this](const std::string& key, bool& handled) { txtSearch_KeyDown(key, handled); };
    lblCount.look(Label::Look::Hint);
    lblKey.look(Label::Look::Heading);
    lblMode.look(Label::Look::Hint);
    tabAcct.onClick = [this](int page) { tabAcct_Click(page); };
    cmdOption0.cancels();
    cmdOption0.onClick = [this] { cmdOption_0_Click(); };
    cmdOption1.setCausesValidation(false);
    cmdOption1.onClick = [this] { cmdOption_1_Click(); };
    cmdOption2.setCausesValidation(false);
    cmdOption2.onClick = [this] { cmdOption_2_Click(); };
    cmdOption2.setVisible(!file_.remove.empty());
    cmdOption3.onClick = [this] { cmdOption_3_Click(); };
    cmdExport.onClick = [this] { cmdExport_Click(); };
    cmdOpt0.primary();
    cmdOpt0.onClick = [this] { cmdOpt0_Click(); };
    cmdOpt1.cancels();
    cmdOpt1.onClick = [this] { cmdOpt1_Click(); };
    shortcut("Ctrl+S", "cmdOpt0_Click", [this] {
        if (tabAcct.index() == kEntryPage && validateActive()) cmdOpt0_Click();
    });
    shortcut("Ctrl+F", "txtSearch_GotFocus", [this] {
        showPage(kListPage);
        txtSearch.setFocus();
    });
    shortcut("Insert", "cmdOption_1_Click", [this] { cmdOption_1_Click(); });
}

void MasterForm::lay() {
    std::vector<Layout> head{expand(txtSearch)};
    for (const auto& sort : sorts_) head.emplace_back(*sort);
    head.emplace_back(lblCount);
    std::vector<FieldRow> rows;
    for (const auto& one : inputs_) rows.push_back(one->row());
    setLayout(column({
        expand(tabs(tabAcct, {{"&List", column({row(head), expand(list_)})},
                              {"D&etails", column({row({lblKey, stretch(), lblMode}), fields(rows), stretch(),
                                                   buttons({cmdOpt0, cmdOpt1})})}})),
        row({cmdOption1, cmdOption2, cmdOption3, cmdExport, stretch(), cmdOption0}),
    }));
}

void MasterForm::startWith(MasterKey key) { startKey_ = std::move(key); }

void MasterForm::startWithNew(MasterValues values) {
    startValues_ = std::move(values);
    startNew_ = true;
}

void MasterForm::Form_Load() {
    for (const std::string& statement : file_.seeds) session_.cn().Execute(statement);
    UpdateList();
    RefreshList();
    setMode("");
    if (startNew_) {
        beginNew(startValues_);
        showPage(kEntryPage);
    } else if (!startKey_.empty() && LoadFile(startKey_)) {
        showPage(kEntryPage);
    }
}

void MasterForm::Form_QueryUnload(bool& Cancel) {
    if (!mayLeave()) {
        Cancel = true;
        return;
    }
    setMode("");
    log(file_.logs.closed, {});
}

// ---- the list ----------------------------------------------------------------------------------------------------

void MasterForm::UpdateList() {
    std::vector<ListColumn> columns;
    for (const MasterColumn& column : file_.columns) {
        const bool right = column.look == MasterLook::Amount || column.look == MasterLook::Whole;
        columns.push_back({column.heading, column.width_chars, right ? Align::Right : Align::Left});
    }
    list_.setColumns(std::move(columns));
}

std::string MasterForm::listStatement() const {
    const bool searches = !file_.searchList.empty() && !txtSearch.text().empty();
    std::string statement = searches ? file_.searchList : file_.list;
    if (!file_.sorts.empty()) statement = replaceAll(statement, "{sort}", file_.sorts.at(sort_).column);
    return replaceAll(statement, "##", escaped(txtSearch.text()));
}

ListView::Item MasterForm::listItem(const Recordset& rows, const Row& row) const {
    const auto value = [&](const std::string& field) -> const Value& {
        return row.at(static_cast<std::size_t>(rows.indexOf(field)));
    };
    MasterKey key;
    for (const std::string& column : file_.listKeys) key.push_back(value(column).text());
    ListView::Item item{joined(key), {}};
    for (const MasterColumn& column : file_.columns) {
        item.cells.push_back(shown(value(column.field), column.look));
        if (column.look == MasterLook::Active) item.dim = item.dim || !isActive(value(column.field));
    }
    return item;
}

void MasterForm::RefreshList() {
    const std::string chosen = list_.selectedKey();
    const Recordset rows = session_.cn().Open(listStatement());
    std::vector<ListView::Item> items;
    items.reserve(rows.recordCount());
    for (const Row& row : rows.rows()) items.push_back(listItem(rows, row));
    list_.setItems(std::move(items));
    if (sortedColumn_ >= 0) list_.sortBy(sortedColumn_, sortedDown_);
    if (file_.searchList.empty()) list_.filter(txtSearch.text());
    if (const int row = list_.find(chosen); row >= 0) list_.select(row);
    lblCount.setText(std::to_string(rows.recordCount()) + (rows.recordCount() == 1 ? " entry" : " entries"));
    lvwList_ItemClick();
}

void MasterForm::lvwList_ItemClick() {
    cmdOption2.setEnabled(list_.selected() >= 0 || (tabAcct.index() == kEntryPage && mode_ == kEdit));
}

void MasterForm::lvwList_DblClick(int row) {
    const MasterKey key = split(list_.item(row).key, '\t');
    if (key == key_ && mode_ == kEdit) return showPage(kEntryPage);
    if (mayLeave() && LoadFile(key)) showPage(kEntryPage);
}

/// The list sorts itself; the column is kept for the next refresh and for the print.
void MasterForm::lvwList_ColumnClick(int column) {
    sortedDown_ = sortedColumn_ == column && !sortedDown_;
    sortedColumn_ = column;
}

void MasterForm::txtSearch_Change() {
    if (!file_.searchList.empty()) return RefreshList();
    list_.filter(txtSearch.text());
}

void MasterForm::txtSearch_KeyDown(const std::string& key, bool& handled) {
    if (key != "Down") return;
    if (list_.selected() < 0) list_.select(firstShownRow());
    list_.setFocus();
    lvwList_ItemClick();
    handled = true;
}

/// -1 when the search leaves no row.
int MasterForm::firstShownRow() const {
    for (int row = 0; row < list_.count(); ++row) {
        const std::vector<std::string>& cells = list_.item(row).cells;
        const auto holds = [this](const std::string& cell) { return containsNoCase(cell, txtSearch.text()); };
        if (!file_.searchList.empty() || std::any_of(cells.begin(), cells.end(), holds)) return row;
    }
    return -1;
}

/// A row that the search hides ends the search.
void MasterForm::selectKey(const MasterKey& key) {
    const int row = list_.find(joined(key));
    list_.select(row);
    if (list_.selected() >= 0 || txtSearch.text().empty() || key.empty()) return;
    txtSearch.setText("");
    RefreshList();
    list_.select(list_.find(joined(key)));
}

MasterKey MasterForm::selectedKey() const {
    return list_.selected() < 0 ? MasterKey{} : split(list_.selectedKey(), '\t');
}

// ---- the entry ---------------------------------------------------------------------------------------------------

/// Brings a page to the front without the event that a user's click raises.
void MasterForm::showPage(int page) {
    movingPage_ = true;
    tabAcct.setIndex(page);
    movingPage_ = false;
    lvwList_ItemClick();
    if (page == kListPage) return list_.setFocus();
    focusEntry();
}

/// To the key of a new record, else to the first field behind the key.
void MasterForm::focusEntry() const {
    const std::size_t behindKey = file_.listKeys.size() < inputs_.size() ? file_.listKeys.size() : 0;
    inputs_.at(isNew() ? 0 : behindKey)->control().setFocus();
}

void MasterForm::tabAcct_Click(int page) {
    if (movingPage_) return;
    lvwList_ItemClick();
    if (page != kEntryPage) return;
    const MasterKey key = selectedKey();
    if (key.empty() && mode_.empty()) {
        beginNew({});
        return showPage(kEntryPage);
    }
    const bool another = !key.empty() && (mode_ != kEdit || key != key_);
    if (!another) return;
    if (!mayLeave()) return selectKey(isNew() ? MasterKey{} : key_);
    if (!LoadFile(key)) showPage(kListPage);
}

bool MasterForm::LoadFile(const MasterKey& key) {
    const Recordset row = session_.cn().Open(masterStatement(file_.row, key));
    if (row.eof()) {
        MsgBox(said("'{key}' is no longer there: it was deleted at another workstation.", key), Icon::Exclamation);
        leaveEntry();
        RefreshList();
        return false;
    }
    key_ = key;
    watch_.watch(masterStatement(file_.row, key), row.rows().front());
    for (const auto& one : inputs_) {
        const MasterField& field = one->field();
        one->show(row[field.column], field.description.empty() ? std::string() : row[field.description].text());
    }
    choiceChanged();
    for (const auto& one : inputs_) {
        if (one->field().choicesFor) one->show(row[one->field().column], {});
    }
    setMode(kEdit);
    loadedValues_ = values();
    log(file_.logs.selected, key);
    return true;
}

void MasterForm::beginNew(const MasterValues& given) {
    key_.clear();
    watch_.watchNew(file_.savesOverExisting);
    list_.select(-1);
    for (const auto& one : inputs_) one->setValue(one->field().standard);
    if (!file_.nextKey.empty()) inputs_.front()->setValue(session_.cn().Open(file_.nextKey).at(0).text());
    choiceChanged();
    setMode(kNew);
    loadedValues_ = values();
    for (int pass = 0; pass < 2; ++pass) {  // a choice may depend on another one
        for (const auto& [control, value] : given) {
            if (MasterInput* one = input(control)) one->setValue(value);
        }
        choiceChanged();
    }
}

void MasterForm::setMode(const char* mode) {
    mode_ = mode;
    lblMode.setText(mode_);
    lblKey.setText(isNew() ? std::string("New entry") : key_.empty() ? std::string() : said("{key}", key_));
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        inputs_[i]->setLocked(mode_.empty() || (mode_ == kEdit && i < file_.listKeys.size()));
    }
    cmdOpt0.setEnabled(!mode_.empty());
    cmdOpt1.setEnabled(!mode_.empty());
}

/// Asks before changes are lost.
bool MasterForm::mayLeave() {
    if (!changed()) return true;
    return showBox({.text = file_.says.unsaved,
                    .title = "Warning",
                    .icon = Icon::Exclamation,
                    .buttons = Buttons::OkCancel}) == Answer::Ok;
}

/// Empties the entry and goes back to the list.
void MasterForm::leaveEntry() {
    for (const auto& one : inputs_) one->setValue("");
    key_.clear();
    setMode("");
    showPage(kListPage);
}

void MasterForm::txtCode_Validate(bool& Cancel) {
    const MasterKey key = entryKey();
    if (!isNew() || key.front().empty()) return;
    const Recordset row = session_.cn().Open(masterStatement(file_.exists.empty() ? file_.row : file_.exists, key));
    if (!row.eof()) {
        MsgBox(said(file_.says.exists, key), Icon::Exclamation);
        inputs_.front()->control().setRefused(said(file_.says.exists, key));
        Cancel = true;
        return;
    }
    if (!file_.onNewKey) return;
    MasterValues entered = values();
    const MasterValues before = entered;
    file_.onNewKey(entered);
    for (const auto& [control, value] : entered) {
        if (value != before.at(control)) input(control)->setValue(value);
    }
}

void MasterForm::choiceChanged() {
    const MasterValues now = values();
    for (const auto& one : inputs_) one->refreshChoices(now);
}

MasterValues MasterForm::values() const {
    MasterValues all;
    for (const auto& one : inputs_) all[one->field().control] = one->value();
    return all;
}

MasterKey MasterForm::entryKey() const {
    MasterKey key;
    for (std::size_t i = 0; i < file_.listKeys.size(); ++i) key.push_back(inputs_[i]->value());
    return key;
}

MasterInput* MasterForm::input(std::string_view control) const {
    for (const auto& one : inputs_) {
        if (one->field().control == control) return one.get();
    }
    return nullptr;
}

// ---- saving and removing -----------------------------------------------------------------------------------------

/// Every field as it must be; else says what is missing and goes there.
bool MasterForm::complete() {
    for (const auto& one : inputs_) {
        const std::string refusal = masterRefusal(one->field(), one->value());
        if (refusal.empty()) continue;
        MsgBox(refusal, Icon::Exclamation);
        one->control().setFocus();
        one->control().setRefused(refusal);
        return false;
    }
    const std::string wrong = file_.check ? file_.check(session_, values()) : std::string();
    if (!wrong.empty()) MsgBox(wrong, Icon::Exclamation);
    return wrong.empty();
}

void MasterForm::Save_Routine() {
    const MasterKey key = entryKey();
    if (!complete()) return;
    const bool stored =
        watch_.save(session_.cn(), masterStatement(file_.row, key), key.front(), said(file_.says.exists, key), [&] {
            logSave(key);
            saveRow(key);
        });
    if (!stored) return focusEntry();
    savedKey_ = key;
    MsgBox(file_.says.saved, Icon::Information);
    leaveEntry();
    RefreshList();
    selectKey(key);
    lvwList_ItemClick();
}

void MasterForm::logSave(const MasterKey& key) {
    const Recordset found = session_.cn().Open(masterStatement(file_.count.empty() ? file_.row : file_.count, key));
    const bool edited = file_.count.empty() ? !found.eof() : !found.eof() && found.at(0).integer() > 0;
    log(edited ? file_.logs.edited : file_.logs.created, key);
}

void MasterForm::saveRow(const MasterKey& key) {
    if (!file_.save.procedure.empty()) {
        session_.cn().Execute(masterUpdate(file_, values()));
        module1::CheckErrors(session_.cn());
        return;
    }
    std::string condition;
    for (std::size_t i = 0; i < file_.save.keyColumns.size(); ++i) {
        condition += (i == 0 ? "" : " and ") + file_.save.keyColumns[i] + " = '" + SQLString(key.at(i)) + "'";
    }
    Recordset row = session_.cn().OpenTable(file_.save.table, condition, file_.save.keyColumns);
    const bool adds = row.eof();
    if (adds) row.addNew();
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        if (!adds && i < file_.listKeys.size()) continue;
        const MasterField& field = inputs_[i]->field();
        const std::string text = inputs_[i]->value();
        const bool date = field.kind == MasterKind::Date;
        row.set(field.column, text.empty() ? Value() : date ? Value(CDate(text)) : Value(text));
    }
    row.update();
}

/// A key that something uses stays; where the screen knows how, it can be made inactive instead.
bool MasterForm::inUse(const MasterKey& key) {
    if (file_.verify.empty() || session_.cn().Open(masterStatement(file_.verify, key)).eof()) return false;
    if (file_.retire.empty()) {
        MsgBox(said(file_.says.used, key), Icon::Exclamation);
    } else if (Ask(said(file_.says.used, key) + " \r\nWould you like to set this code as inactive instead?", "Warning!",
                   Icon::Exclamation)) {
        Retire(key);
    }
    return true;
}

void MasterForm::Retire(const MasterKey& key) {
    Transaction save(session_.cn());
    session_.cn().Execute(masterStatement(file_.retire, key));
    log(file_.logs.retired, key);
    save.commit();
    leaveEntry();
    RefreshList();
}

void MasterForm::log(const std::string& pattern, const MasterKey& key) {
    if (!pattern.empty()) module1::SaveUserLog(session_, masterLog(pattern, key));
}

// ---- buttons -----------------------------------------------------------------------------------------------------

void MasterForm::cmdOption_0_Click() { Unload(); }

void MasterForm::cmdOption_1_Click() {
    if (!mayLeave()) return;
    beginNew({});
    showPage(kEntryPage);
}

void MasterForm::cmdOption_2_Click() {
    const bool onEntry = tabAcct.index() == kEntryPage && mode_ == kEdit;
    const MasterKey key = onEntry ? key_ : selectedKey();
    if (key.empty() || file_.remove.empty() || inUse(key)) return;
    const std::string title = file_.says.removeTitle.empty() ? file_.title : file_.says.removeTitle;
    if (!Ask(said(file_.says.remove, key), title, Icon::Exclamation, false)) return;
    {
        Transaction removal(session_.cn());
        session_.cn().Execute(masterStatement(file_.remove, key));
        log(file_.logs.removed, key);
        removal.commit();
    }
    leaveEntry();
    RefreshList();
}

void MasterForm::cmdOption_3_Click() {
    if (makeList()) module1::ShowReportViewer(session_, {.ReportCaption = file_.title});
}

/// Opens the report of the list; false when no printer was chosen.
bool MasterForm::makeList() {
    return openMasterList(session_, file_,
                          {.statement = listStatement(),
                           .filter = file_.searchList.empty() ? txtSearch.text() : std::string(),
                           .sortedColumn = sortedColumn_,
                           .descending = sortedDown_});
}

void MasterForm::cmdExport_Click() {
    const auto path = askSaveFile("Export", file_.title + ".xlsx",
                                  {"Excel Files (*.xlsx)|*.xlsx|Comma Separated Values (*.csv)|*.csv", "xlsx"});
    if (!path) return;
    const Hourglass busy;
    exportMasterList(session_, file_,
                     {.statement = listStatement(),
                      .filter = file_.searchList.empty() ? txtSearch.text() : std::string(),
                      .sortedColumn = sortedColumn_,
                      .descending = sortedDown_},
                     *path);
}

void MasterForm::cmdOpt0_Click() { Save_Routine(); }

void MasterForm::cmdOpt1_Click() {
    const MasterKey key = entryKey();
    if (!key.front().empty()) {
        if (!Ask(file_.says.ignore, "Warning", Icon::Exclamation)) return;
        log(file_.logs.ignored, key);
    }
    leaveEntry();
}

}  // namespace kv
