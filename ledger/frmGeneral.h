#pragma once
// frmGeneral: the shell of the AR, CR and JV books, by the session's book: entries, posting, closing, reports.

#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmGeneral : public Form {
public:
    explicit frmGeneral(Session& session);

    Label Label1{*this, "Label1", "Journal Vouchers Book"};
    Label lblPeriod{*this, "lblPeriod"};
    Toolbar tbrGeneral{*this, "tbrGeneral"};
    ListView lvwBatches{*this, "lvwBatches"};
    Label lblBatches{*this, "lblBatches"};

    MenuItem mnuEnter_0{*this, "mnuEnter_0", "&Enter/Edit Batch", "document-edit", "Ctrl+E"};
    MenuItem mnuEnter_1{*this, "mnuEnter_1", "&View/Print Batch", "document-print", "Ctrl+P"};
    MenuItem mnuEnter_2{*this, "mnuEnter_2", "&Cancel Batch", "edit-delete"};
    MenuItem mnuPost{*this, "mnuPost", "&Post Batches", "dialog-ok-apply"};
    MenuItem mnuUnpost{*this, "mnuUnpost", "Unpost Batches", "edit-undo"};
    MenuItem mnuEnter_4{*this, "mnuEnter_4", "Close Pe&riod", "object-locked"};
    MenuItem mnuEnter_3{*this, "mnuEnter_3", "-"};
    MenuItem mnuEnter_5{*this, "mnuEnter_5", "C&lose", "document-close"};

    void Form_Rights() override;

    MenuItem mnuARPrelim{*this, "mnuARPrelim", "Preliminary &A/R"};
    MenuItem mnuReportARPatients{*this, "mnuReportARPatients", "Accounts Receivable of &Patients", "office-report"};
    MenuItem mnuReportARSummaryCharges{*this, "mnuReportARSummaryCharges", "Summary of &Charges", "office-report"};
    MenuItem mnuReportARSummaryDischarges{*this, "mnuReportARSummaryDischarges", "Summary of &Discharges",
                                          "office-report"};
    MenuItem mnuReportAdjustmentAP{*this, "mnuReportAdjustmentAP", "A&P Adjustments", "office-report"};
    MenuItem mnuSep3{*this, "mnuSep3", "-"};
    MenuItem mnuReportJournalBook{*this, "mnuReportJournalBook", "&Journal Book", "office-report"};
    MenuItem mnuVerify_Cash{*this, "mnuVerify_Cash", "&Verification of Receipts", "task-complete"};
    MenuItem mnuHospitalAR{*this, "mnuHospitalAR", "&Hospital Charges", "book-upload"};
    MenuItem mnuHospitalCR{*this, "mnuHospitalCR", "&Hospital Collections", "book-upload"};

    /// The day that reports of the hospital's figures begin with: yesterday, "yyyy-MM-dd".
    const std::string& ReportDate() const { return reportDate_; }

protected:
    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;

private:
    void LoadBatches();
    void ShowBook();
    void mnuEnter_0_Click();
    void mnuEnter_1_Click();
    void mnuEnter_4_Click();
    void mnuPost_Click();
    void mnuUnpost_Click();
    void tbrGeneral_ButtonClick(const std::string& key);
    void NewBatch();
    void OpenBatch();

    void RunCommand(const MenuItem& entry);

    Session& session_;
    std::string reportDate_;
};

}  // namespace kv
