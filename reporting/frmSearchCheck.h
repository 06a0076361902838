#pragma once
// frmSearchCheck: the search for a check. It returns the check's number, its bank and its voucher.

#include "reporting/SearchDialog.h"

namespace kv {

class frmSearchCheck : public SearchDialog {
public:
    explicit frmSearchCheck(Session& session);

    std::string CheckNo() const { return Code(); }
    std::string BankId() const { return Cell("BankID"); }
    std::string CVNo() const { return Cell("CVNo"); }

protected:
    int codeColumn(const Recordset& rows) const override;
};

}  // namespace kv
