#pragma once
// frmSearch: the search dialog over a caller's statement. It returns a code.

#include "reporting/SearchDialog.h"

namespace kv {

class frmSearch : public SearchDialog {
public:
    explicit frmSearch(Session& session);

    /// Shown only where a caller offers to enter a new payable from the search.
    CommandButton cmdNewPay{*this, "cmdNewPay", "&New Payable"};
    bool NewPayableAsked() const { return newPayable_; }

protected:
    Layout buttonRow() override;

private:
    bool newPayable_ = false;
};

}  // namespace kv
