#include "ledger/frmListBatch.h"

#include "core/Session.h"
#include "ledger/BatchQueries.h"
#include "ledger/frmJournEntry.h"

namespace kv {

frmListBatch::frmListBatch(Session& session) : Form("frmListBatch", "List of Vouchers"), session_(session) {
    txtSearch.placeholder("Type to narrow the list");
    txtSearch.onChange = [this] {
        lvwList.filter(txtSearch.text());
        ShowCount();
    };
    lvwList.setColumns({{"Number", 16}, {"Date", 12}, {"Particulars", 60, Align::Left, true}, {"Batch", 10}});
    lvwList.rows(16);
    lvwList.setHelp("Enter opens the batch, Ctrl+N begins one. Type in the box above to narrow the list.");
    lvwList.onDblClick = [this](int) { cmdEdit_Click(); };
    lblTotal.look(Label::Look::Hint);
    lvwList.emptyText("No batch waits to be edited. Ctrl+N begins one.");
    shortcut("Ctrl+N", "cmdNew_Click", [this] { cmdNew_Click(); });
    cmdNew.primary();
    cmdNew.onClick = [this] { cmdNew_Click(); };
    cmdEdit.onClick = [this] { cmdEdit_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({txtSearch, expand(lvwList), row({lblTotal, stretch(), cmdNew, cmdEdit, cmdClose})}));
    setSize(860, 580);
    setFirstFocus(lvwList);
}

void frmListBatch::Form_Load() {
    setCaption("List of Vouchers");
    LoadList();
}

void frmListBatch::LoadList() {
    const std::string before = lvwList.selectedKey();
    Recordset rows = session_.cn().Open(Query_Pending(session_.BookCode()));
    std::vector<ListView::Item> items;
    items.reserve(rows.recordCount());
    for (; !rows.eof(); rows.moveNext()) {
        const Value& day = rows["BATCHDATE"];
        items.push_back({batchKey(rows["BATCH"].text()),
                         {rows["DisplayBatch"].text(), day.isNull() ? "" : Format(day.date(), "yyyy-MM-dd"),
                          rows["PARTICULAR"].text(), rows["BATCH"].text()}});
    }
    const bool any = !items.empty();
    lvwList.setItems(std::move(items));
    const int again = lvwList.find(before);
    if (any) lvwList.select(again >= 0 ? again : 0);
    lvwList.filter(txtSearch.text());
    ShowCount();
}

void frmListBatch::ShowCount() {
    const int all = lvwList.count();
    const std::string shown = lvwList.shown() < all ? std::to_string(lvwList.shown()) + " of " : std::string();
    lblTotal.setText(shown + std::to_string(all) + (all == 1 ? " batch" : " batches"));
    cmdEdit.setEnabled(lvwList.shown() > 0);
}

void frmListBatch::cmdNew_Click() {
    frmJournEntry entry(session_);
    entry.Add();
    entry.ShowModal();
    LoadList();
}

void frmListBatch::cmdEdit_Click() {
    if (lvwList.selected() < 0) return;
    frmJournEntry entry(session_);
    entry.Edit(batchOfKey(lvwList.selectedKey()));
    entry.ShowModal();
    LoadList();
}

}  // namespace kv
