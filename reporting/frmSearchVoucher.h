#pragma once
// frmSearchVoucher: the search for an AP voucher.

#include "reporting/SearchDialog.h"

namespace kv {

class frmSearchVoucher : public SearchDialog {
public:
    explicit frmSearchVoucher(Session& session);

protected:
    int codeColumn(const Recordset& rows) const override;
};

}  // namespace kv
