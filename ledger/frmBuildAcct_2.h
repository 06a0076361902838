#pragma once
// frmBuildAcct_2: the editor of one account.

#include <memory>
#include <vector>

#include "ledger/AccountRecord.h"
#include "reporting/MasterInput.h"
#include "reporting/RowWatch.h"

namespace kv {

class frmBuildAcct_2 : public Form {
public:
    explicit frmBuildAcct_2(Session& session);

    /// A new account, proposed for a group.
    void Add(std::string_view Group);
    /// Loads an account. False when it is gone, and the user has been told.
    bool Edit(std::string_view Code);
    /// The code that was saved; empty when nothing was.
    const std::string& SavedCode() const { return savedCode_; }

    OptionButton optPosting{*this, "optPosting", "P&osting", "use"};
    OptionButton optReportingOnly{*this, "optReportingOnly", "&Reporting Only", "use"};
    CommandButton cmdDelete{*this, "cmdDelete", "&Delete", "edit-delete"};
    CommandButton cmdOpt_0{*this, "cmdOpt_0", "&Save", "document-save"};
    CommandButton cmdOpt_1{*this, "cmdOpt_1", "Cance&l", "dialog-cancel"};

private:
    void Form_QueryUnload(bool& Cancel) override;

    void makeInputs();
    void LoadAcct(const AccountRecord& account);
    AccountRecord entered() const;
    bool changed() const;
    bool askToIgnore();
    void txtAcctCode_Validate(bool& Cancel);
    void cboSubsidiary_Validate(bool& Cancel);
    bool mayHaveDepartments() const;
    void cmdOpt_0_Click();
    void cmdOpt_1_Click();
    void cmdDelete_Click();
    bool complete();
    std::string value(std::string_view control) const;
    MasterInput& input(std::string_view control) const;

    Session& session_;
    const std::vector<MasterField> fields_;
    std::vector<std::unique_ptr<MasterInput>> inputs_;
    RowWatch watch_;
    std::string loaded_;  ///< the update as it stood after loading: what is changed is told by it
    std::string loadedVendor_;
    std::string savedCode_;
    bool leaving_ = false;
};

/// Opens an account from a search, a report's figure or a check, by its code.
void OpenAccountDocument(Session& session, std::string_view key);

}  // namespace kv
