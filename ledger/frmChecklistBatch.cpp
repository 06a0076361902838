#include "ledger/frmChecklistBatch.h"

#include "core/Session.h"
#include "ledger/BatchQueries.h"
#include "platform/forms/Dialogs.h"

namespace kv {

frmChecklistBatch::frmChecklistBatch(Session& session)
    : Form("frmChecklistBatch", "List of Vouchers"), session_(session) {
    lvwList.checkBoxes().rows(16);
    lvwList.emptyText("No batch here.");
    lvwList.setColumns({{"Batch", 16}, {"Date", 12}, {"Particulars", 60, Align::Left, true}});
    lvwList.setHelp("Space ticks a batch.");
    chkAll.onClick = [this] { lvwList.checkAll(chkAll.checked()); };
    cmdPost.primary();
    cmdPost.onClick = [this] { cmdPost_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({expand(lvwList), row({chkAll, stretch(), cmdPost, cmdClose})}));
    setSize(860, 580);
    setFirstFocus(lvwList);
}

void frmChecklistBatch::PostBatches() {
    period_.clear();
    cmdPost.setCaption("&Post");
    ShowModal();
}

void frmChecklistBatch::UnpostBatches(std::string_view Period) {
    period_ = Period;
    cmdPost.setCaption("Un&post");
    ShowModal();
}

void frmChecklistBatch::LoadList() {
    Recordset rows = session_.cn().Open(Query_Posting(session_.BookCode(), period_));
    std::vector<ListView::Item> items;
    for (; !rows.eof(); rows.moveNext()) {
        const Value& day = rows["BATCHDATE"];
        items.push_back({batchKey(rows["BATCH"].text()),
                         {rows["DisplayBatch"].text(), day.isNull() ? "" : Format(day.date(), "yyyy-MM-dd"),
                          rows["PARTICULAR"].text()}});
    }
    lvwList.setItems(std::move(items));
    chkAll.setChecked(false);
}

void frmChecklistBatch::cmdPost_Click() {
    const std::vector<int> ticked = lvwList.checkedRows();
    if (ticked.empty()) {
        MsgBox("Please tick the vouchers first.", Icon::Information);
        return;
    }
    {
        Transaction post(session_.cn());
        for (const int row : ticked) {
            session_.cn().Execute(Query_SetPosted(session_.BookCode(), batchOfKey(lvwList.item(row).key),
                                                  period_.empty() ? session_.EmployeeCode : std::string()));
        }
        post.commit();
    }
    MsgBox(std::string("Selected vouchers have been ") + (period_.empty() ? "posted" : "unposted") + " successfully.",
           Icon::Information);
    LoadList();
}

}  // namespace kv
