#pragma once
// frmJournEntry: enters one balanced batch of ledger lines for the open book: JV, AR or CR.

#include "ledger/AccountMemory.h"
#include "ledger/JournalBatch.h"
#include "platform/forms/Form.h"
#include "reporting/ctlGrid.h"

namespace kv {

class Session;

class frmJournEntry : public Form {
public:
    explicit frmJournEntry(Session& session);

    /// A new batch; Form_Load does the rest.
    void Add();
    void Edit(std::string_view Batch);

    Label lblType{*this, "lblType"};
    Label lblLabel14{*this, "lblLabel14"};
    DatePicker dtpBatchDate{*this, "dtpBatchDate"};
    TextBox txtParticular{*this, "txtParticular"};
    Label lblBatchType{*this, "lblBatchType", "&Type:"};
    ComboBox cboBatchType{*this, "cboBatchType"};
    ctlGrid grdAccounts{*this, "grdAccounts"};
    Label lblAccount{*this, "lblAccount"};
    Label lblTotals0{*this, "lblTotals0"};
    Label lblTotals1{*this, "lblTotals1"};
    Label lblTotals2{*this, "lblTotals2"};
    CommandButton cmdOption0{*this, "cmdOption0", "&Save Batch", "document-save"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Close"};
    CommandButton cmdOption2{*this, "cmdOption2", "&Add Row", "list-add"};
    CommandButton cmdOption3{*this, "cmdOption3", "&Delete Row", "list-remove"};
    CommandButton cmdOption6{*this, "cmdOption6", "Delete &Batch", "edit-delete"};

protected:
    void Form_Load() override;
    void Form_QueryUnload(bool& Cancel) override;

private:
    std::string GetPeriod() const;
    std::string GetBatchType() const;
    void SetBatchType(std::string_view Type);
    void InitBatchTypes();
    void InitGrdAccounts();
    void ClearValues();
    void LoadVoucher();
    void FillSubsidiaryColumn();
    void DisplayDebitCredit();
    void DisplayAccounts();
    std::vector<JournalLine> lines() const;
    JournalLine lineOf(int row) const;
    bool bookOpen();
    bool checkLines();
    void Save_Routine();

    void dtpBatchDate_Validate(bool& Cancel);
    void grdAccounts_EnterCell(bool& refused);
    void grdAccounts_ValidateEntry(bool& Cancel);
    void ValidateAccount(bool& Cancel);
    bool AskVoucher(int row, const std::string& title);
    void ValidateDept(bool& Cancel);
    const clsAccount* pastedAccount(const std::string& code);
    void grdAccounts_Browse();
    void grdAccounts_AfterValidate();
    void grdAccounts_PassOver(int row, int col, bool& pass) const;
    void BalanceLine();
    void TakeLastParticular();
    void cmdOption0_Click();
    void cmdOption2_Click();
    void cmdOption3_Click();
    void cmdOption6_Click();
    void arrange();
    void connect();

    Session& session_;
    std::string FormMode_;
    std::string CurrentBatch_;
    PrintedNumber printed_;
    std::optional<AccountMemory> pasted_;  ///< while a block is pasted
    std::string batchType_;
    std::string DailyTable_;
    bool HasSubCode_ = false;
    bool leaving_ = false;
};

}  // namespace kv
