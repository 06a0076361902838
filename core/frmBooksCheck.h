#pragma once
// frmBooksCheck: runs the checks of the books, says what each means, lists what it found and opens what is behind a
// row.

#include "core/BooksCheck.h"
#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class frmBooksCheck : public Form {
public:
    explicit frmBooksCheck(Session& session);

    ListView lvwChecks{*this, "lvwChecks"};
    Label lblTitle{*this, "lblTitle"};
    Label lblExplanation{*this, "lblExplanation"};
    ListView lvwRows{*this, "lvwRows"};
    Label lblRows{*this, "lblRows"};
    Label lblResult{*this, "lblResult"};
    ProgressBar prgRun{*this, "prgRun"};
    CommandButton cmdRun{*this, "cmdRun", "&Run Again", "view-refresh"};
    CommandButton cmdOpen{*this, "cmdOpen", "&Open Document", "document-open"};
    CommandButton cmdCopy{*this, "cmdCopy", "Cop&y", "edit-copy"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    /// What a check found.
    struct Outcome {
        Recordset rows;
        std::string failure;  ///< why it could not be run
        bool done = false;
    };
    void RunChecks();
    void RunCheck(std::size_t index);
    void ShowChecks();
    void ShowRows();
    void cmdOpen_Click();
    void cmdCopy_Click();
    const Outcome* shownOutcome() const;

    Session& session_;
    std::vector<BooksCheck> checks_;
    std::vector<Outcome> outcomes_;
};

}  // namespace kv
