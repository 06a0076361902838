#pragma once
// frmSearchAcct: the search for an account. It returns code and title; under the caption "Account Codes Master" it
// lists the master accounts.

#include "reporting/SearchDialog.h"

namespace kv {

class frmSearchAcct : public SearchDialog {
public:
    explicit frmSearchAcct(Session& session);

    static constexpr const char* kMasterCaption = "Account Codes Master";
    /// Looks among the master accounts, which take no postings.
    void SearchMasters();
};

}  // namespace kv
