#include "ledger/frmImportMasters.h"

#include <map>

#include "core/Session.h"
#include "ledger/MasterImports.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

std::string rows(int count, const char* what) {
    return std::to_string(count) + (count == 1 ? " row " : " rows ") + what;
}

}  // namespace

frmImportMasters::frmImportMasters(Session& session) : Form("frmImportMasters", "Import from CSV"), session_(session) {
    cboKind.onChange = [this] { cboKind_Change(); };
    cboKind.width(30);
    txtFile.setLocked(true);
    cmdFile.setHelp("A comma-separated file with a heading row, as spreadsheets save it.");
    cmdFile.onClick = [this] { cmdFile_Click(); };
    chkReplace.setHelp(
        "Without it a code that exists is a bad row. Columns that the file lacks stay as they are stored.");
    chkReplace.onClick = [this] {
        if (!bytes_.empty()) Preview();
    };
    chkBad.onClick = [this] { showPreview(); };
    lblColumns.look(Label::Look::Hint);
    lblSummary.look(Label::Look::Hint);
    lvwPreview.rows(14);
    lvwPreview.setColumns({{"Line", 7, Align::Right},
                           {"Code", 14},
                           {"Name", 30, Align::Left, true},
                           {"Row", 10},
                           {"Column", 14},
                           {"Reason", 52}});
    prgImport.setVisible(false);
    cmdImport.primary();
    cmdImport.onClick = [this] { cmdImport_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({
        fields(
            {{"&What:", {cboKind, stretch()}}, {"File:", {expand(txtFile), cmdFile}}, {"", {chkReplace, stretch()}}}),
        lblColumns,
        row({lblSummary, stretch(), chkBad}),
        expand(lvwPreview),
        row({expand(prgImport), stretch(), cmdImport, cmdClose}),
    }));
    setIcon("document-import");
    setSize(1000, 640);
    setFirstFocus(cboKind);
}

/// Only what the user may keep is offered.
void frmImportMasters::Form_Load() {
    for (const ImportKind& one : importKinds()) {
        if (session_.UserAccess.CanAccess(one.right)) cboKind.addItem(one.title, one.title);
    }
    if (cboKind.count() > 0) cboKind.setIndex(0);
    cmdFile.setEnabled(cboKind.count() > 0);
    cboKind_Change();
    if (cboKind.count() == 0) lblColumns.setText("You have no right to any of the master files that can be imported.");
}

const ImportKind* frmImportMasters::kind() const {
    for (const ImportKind& one : importKinds()) {
        if (one.title == cboKind.key()) return &one;
    }
    return nullptr;
}

void frmImportMasters::cboKind_Change() {
    clear();
    if (!kind()) return;
    std::vector<std::string> names;
    for (const ImportColumn& column : kind()->columns) names.push_back(column.heading + (column.needed ? "*" : ""));
    lblColumns.setText("Columns (* needed): " + join(names, ", "));
}

void frmImportMasters::clear() {
    bytes_.clear();
    preview_ = {};
    txtFile.setText("");
    showPreview();
}

void frmImportMasters::cmdFile_Click() {
    const auto path = askOpenFile("Import", {"Comma Separated Values (*.csv)|*.csv|All Files (*.*)|*.*", "csv"});
    if (!path) return;
    clear();
    bytes_ = readTextFile(*path);
    txtFile.setText(*path);
    Preview();
}

void frmImportMasters::Preview() {
    const Hourglass busy;
    preview_ = previewImport(session_.cn(), *kind(), bytes_, chkReplace.checked());
    showPreview();
}

void frmImportMasters::showPreview() {
    const bool any = !txtFile.text().empty();
    std::multimap<int, const ImportFault*> faults;
    for (const ImportFault& fault : preview_.faults) faults.emplace(fault.line, &fault);
    std::map<int, ListView::Item> lines;  // what the file says, by line
    for (const ImportRow& row : preview_.rows) {
        const auto value = [&](std::size_t column) {
            const auto found = row.values.find(kind()->columns.at(column).heading);
            return found == row.values.end() ? std::string() : found->second;
        };
        lines[row.line] = {"", {std::to_string(row.line), value(0), value(1), row.exists ? "replaces" : "new"}};
    }
    for (const ImportFault& fault : preview_.faults) {
        if (!lines.contains(fault.line)) lines[fault.line] = {"", {std::to_string(fault.line), "", "", ""}};
    }
    std::vector<ListView::Item> items;
    for (auto& [line, item] : lines) {
        const auto [from, to] = faults.equal_range(line);
        if (from == to && !chkBad.checked()) items.push_back(item);
        for (auto it = from; it != to; ++it) {
            ListView::Item bad = item;
            bad.cells[3] = "bad";
            bad.cells.push_back(it->second->column);
            bad.cells.push_back(it->second->reason);
            bad.icon = "dialog-cancel";
            items.push_back(std::move(bad));
        }
    }
    lvwPreview.setItems(std::move(items));
    const int bad = static_cast<int>(preview_.faults.size());
    std::string summary = rows(preview_.added(), "new") + ", " + rows(preview_.replaced(), "replaced") + ", " +
                          std::to_string(bad) + (bad == 1 ? " fault" : " faults");
    if (!preview_.ignored.empty()) summary += ". Ignored columns: " + join(preview_.ignored, ", ");
    lblSummary.setText(any ? summary : std::string());
    cmdImport.setEnabled(any && bad == 0 && !preview_.rows.empty());
}

void frmImportMasters::cmdImport_Click() {
    if (!Ask(rows(preview_.added(), "will be added") + " and " + rows(preview_.replaced(), "replaced") +
                 ". Do you wish to proceed?",
             caption(), Icon::Question)) {
        return;
    }
    prgImport.setRange(static_cast<int>(preview_.rows.size()));
    prgImport.setVisible(true);
    const bool stored = [&] {
        const Hourglass busy;
        return storeImport(session_, *kind(), bytes_, chkReplace.checked(), preview_,
                           [this](int done) { prgImport.setValue(done); });
    }();
    prgImport.setVisible(false);
    if (!stored) {
        MsgBox(
            "The master file was changed at another workstation since the preview. Please look at it again; nothing "
            "has been imported.",
            Icon::Exclamation);
        Preview();
        return;
    }
    MsgBox("The file has been imported.", Icon::Information);
    clear();
}

}  // namespace kv
