#include "ledger/frmGeneral.h"

#include "core/BookState.h"
#include "core/Session.h"
#include "core/module1.h"
#include "ledger/BatchDocument.h"
#include "ledger/BatchQueries.h"

#include "ledger/frmAPVRange.h"
#include "ledger/frmChecklistBatch.h"
#include "ledger/frmEntPeriod.h"
#include "ledger/frmJournEntry.h"
#include "ledger/frmListBatch.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/ReportFrame.h"
#include "reporting/frmSelectDates.h"

namespace kv {
namespace {

/// Entries that start hidden, and the book or the parameter that shows them. What they do belongs to rooms above, which
/// register it as a command of the entry's name; without it the entry is greyed.
struct BookMenuEntry {
    MenuItem frmGeneral::*item;
    const char* book;  ///< empty: shown in no book
    bool (*shown)(const clsParameters& parameters);
};

bool always(const clsParameters& /*parameters*/) { return true; }

const BookMenuEntry kBookMenu[] = {
    {&frmGeneral::mnuHospitalAR, "AR", always},
    {&frmGeneral::mnuHospitalCR, "CR", always},
    {&frmGeneral::mnuReportAdjustmentAP, "JV", always},
    {&frmGeneral::mnuARPrelim, "", always},
    {&frmGeneral::mnuReportARPatients, "AR", [](const clsParameters& p) { return p.EnableReportARPatients(); }},
    {&frmGeneral::mnuReportARSummaryCharges, "AR", always},
    {&frmGeneral::mnuReportARSummaryDischarges, "AR", always},
    {&frmGeneral::mnuSep3, "JV", always},
    {&frmGeneral::mnuReportJournalBook, "JV", always},
    {&frmGeneral::mnuVerify_Cash, "CR", always},
};

}  // namespace

frmGeneral::frmGeneral(Session& session)
    : Form("frmGeneral", "Journal Vouchers Book", Window::Child), session_(session) {
    setKeyPreview(true);
    Label1.look(Label::Look::Heading);
    lblPeriod.look(Label::Look::Hint);
    lblBatches.look(Label::Look::Hint);
    tbrGeneral.button("ENTER", "Enter", "document-edit", "Enter or edit a batch")
        .button("PRINT", "Print", "document-print", "View or print a batch")
        .button("POST", "Close Period", "object-locked", "Close the month of this book")
        .button("DEPOSIT", "Deposit", "wallet-open", "Enter a deposit")
        .separator()
        .button("CLOSE", "Close", "document-close", "Leave this book");
    tbrGeneral.onButtonClick = [this](const std::string& key) { tbrGeneral_ButtonClick(key); };
    mnuEnter_0.onClick = [this] { mnuEnter_0_Click(); };
    mnuEnter_1.onClick = [this] { mnuEnter_1_Click(); };
    mnuEnter_2.onClick = [this] { mnuEnter_0_Click(); };
    mnuEnter_4.onClick = [this] { mnuEnter_4_Click(); };
    mnuEnter_5.onClick = [this] { Unload(); };
    mnuPost.onClick = [this] { mnuPost_Click(); };
    mnuUnpost.onClick = [this] { mnuUnpost_Click(); };
    lvwBatches.setColumns({{"Batch", 12},
                           {"Date", 12},
                           {"Particulars", 48, Align::Left, true},
                           {"Amount", 16, Align::Right},
                           {"State", 12},
                           {"Printed No.", 16}});
    lvwBatches.setHelp("Enter opens a batch, Ctrl+N begins one, Ctrl+E lists what can be edited.");
    lvwBatches.onDblClick = [this](int) { OpenBatch(); };
    shortcut("Ctrl+N", "mnuEnter_0_Click", [this] { NewBatch(); });
    for (const BookMenuEntry& entry : kBookMenu) {
        MenuItem& item = this->*entry.item;
        item.onClick = [this, &item] { RunCommand(item); };
    }
    setMenu({{"&Batch Entries",
              {mnuEnter_0, mnuEnter_1, mnuEnter_2, mnuEnter_3, mnuPost, mnuUnpost, nullptr, mnuEnter_4, nullptr,
               mnuEnter_5}},
             {"&Reports",
              {mnuARPrelim, mnuReportARPatients, mnuReportARSummaryCharges, mnuReportARSummaryDischarges,
               mnuReportAdjustmentAP, mnuSep3, mnuReportJournalBook, mnuVerify_Cash, mnuHospitalAR, mnuHospitalCR}}});
    setToolbar(tbrGeneral);
    setLayout(column({row({Label1, stretch(), lblPeriod}), expand(lvwBatches), lblBatches}));
    setSize(1040, 620);
    setFirstFocus(lvwBatches);
}

void frmGeneral::Form_Load() {
    ShowBook();
    Form_Rights();
    reportDate_ = Format(Today().addDays(-1), "yyyy-MM-dd");
    LoadBatches();
}

void frmGeneral::Form_Rights() {
    for (const BookMenuEntry& entry : kBookMenu) {
        MenuItem& item = this->*entry.item;
        item.setVisible(session_.BookCode() == entry.book && entry.shown(session_.Parameters));
        item.setEnabled(session_.screens.hasCommand(item.name()));
    }
    tbrGeneral.setButtonVisible("DEPOSIT", session_.BookCode() == "CR");
    tbrGeneral.setButtonEnabled("DEPOSIT", session_.screens.hasCommand("DepositEntry"));
    const bool posting = session_.Parameters.EnableTransactionPosting();
    mnuEnter_3.setVisible(posting);
    mnuPost.setVisible(posting);
    mnuUnpost.setVisible(posting);
}

void frmGeneral::ShowBook() {
    if (session_.BookCode() == "CR") Label1.setText("Cash Receipts Book");
    if (session_.BookCode() == "AR") Label1.setText("Accounts Receivable Book");
    setCaption(Label1.text());
}

/// The batches of the book's working month and later, with their state.
void frmGeneral::LoadBatches() {
    const std::string period = session_.Sys.glperiod;
    const bool closed = !module1::IsBookOpen(session_.cn(), session_.BookCode(), period);
    lblPeriod.setText(periodName(period) + (closed ? "  closed" : "  open"));
    Recordset rows = session_.cn().Open(
        sql("SELECT TOP 2000 Batch, DisplayBatch, BatchDate, Particular, Total, Posted, Cancelled FROM dbo.vwBookBatch"
            " WHERE Book = '{}' AND Period >= '{}' ORDER BY BatchDate DESC, Batch DESC")
            .text(session_.BookCode())
            .text(period));
    std::vector<ListView::Item> items;
    Money total;
    for (; !rows.eof(); rows.moveNext()) {
        const bool cancelled = rows["Cancelled"].boolean();
        if (!cancelled) total += rows["Total"].money();
        const Value& day = rows["BatchDate"];
        ListView::Item item{batchKey(rows["Batch"].text()),
                            {rows["Batch"].text(), day.isNull() ? "" : Format(day.date(), "yyyy-MM-dd"),
                             rows["Particular"].text(), Format(rows["Total"].money(), "#,##0.00"),
                             cancelled                  ? "cancelled"
                             : rows["Posted"].boolean() ? "posted"
                                                        : "entered",
                             rows["DisplayBatch"].text()}};
        item.dim = cancelled;
        items.push_back(std::move(item));
    }
    lblBatches.setText(std::to_string(items.size()) + (items.size() == 1 ? " batch" : " batches") + " from " +
                       periodName(period) + " on, " + Format(total, "#,##0.00"));
    const std::string before = lvwBatches.selectedKey();
    lvwBatches.setItems(std::move(items));
    lvwBatches.emptyText("No batch from " + periodName(period) + " on. Ctrl+N begins one.");
    lvwBatches.select(std::max(lvwBatches.find(before), 0));
}

void frmGeneral::Form_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13) {
        // a list opens its row by Enter
        if (activeControl() == &lvwBatches) return;
        Module3::SendKeys("{Tab}");
        KeyAscii = 0;
    } else if (KeyAscii == '\'') {
        KeyAscii = 0;
    } else if (KeyAscii >= 'a' && KeyAscii <= 'z') {
        KeyAscii -= 32;
    }
}

void frmGeneral::tbrGeneral_ButtonClick(const std::string& key) {
    if (key == "ENTER") mnuEnter_0_Click();
    if (key == "PRINT") mnuEnter_1_Click();
    if (key == "POST") mnuEnter_4_Click();
    if (key == "DEPOSIT") session_.screens.runCommand(session_, "DepositEntry");
    if (key == "CLOSE") Unload();
}

void frmGeneral::mnuEnter_0_Click() {
    frmListBatch list(session_);
    list.ShowModal();
    LoadBatches();
}

void frmGeneral::NewBatch() {
    frmJournEntry entry(session_);
    entry.Add();
    entry.ShowModal();
    LoadBatches();
}

/// Opens the batch of the row: to edit while it is entered and open, else as a page.
void frmGeneral::OpenBatch() {
    const int row = lvwBatches.selected();
    if (row < 0) return;
    const std::string batch = batchOfKey(lvwBatches.selectedKey());
    OpenBatchDocument(session_, session_.BookCode() + " " + batch);
    LoadBatches();
}

void frmGeneral::RunCommand(const MenuItem& entry) { session_.screens.runCommand(session_, entry.name()); }

/// The range starts with the batch of the row, by the number that it prints.
void frmGeneral::mnuEnter_1_Click() {
    const int row = lvwBatches.selected();
    std::string start;
    if (row >= 0) {
        const bool printed = session_.BookCode() == "JV" && session_.Parameters.UsePrintJVBatch();
        start = printed ? lvwBatches.cell(row, 5) : lvwBatches.cell(row, 0);
    }
    frmAPVRange range(session_);
    range.ShowDialog(start);
}

void frmGeneral::mnuEnter_4_Click() {
    frmEntPeriod dialog(session_);
    std::string entity;
    dialog.ShowDialog(static_cast<int>(PeriodMode::ClosePeriod), 0, "", entity);
    LoadBatches();
}

void frmGeneral::mnuPost_Click() {
    frmChecklistBatch list(session_);
    list.PostBatches();
    LoadBatches();
}

void frmGeneral::mnuUnpost_Click() {
    frmSelectPeriod dialog;
    std::string period = session_.CurrentPeriod;
    if (!dialog.ShowDialog(period)) return;
    session_.CurrentPeriod = period;
    if (!module1::IsBookOpen(session_.cn(), session_.BookCode(), period)) {
        MsgBox("Book is already closed.", Icon::Information);
        return;
    }
    frmChecklistBatch list(session_);
    list.UnpostBatches(period);
    LoadBatches();
}

}  // namespace kv
