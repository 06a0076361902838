#include "reporting/frmSearchVoucher.h"

#include <algorithm>

namespace kv {

frmSearchVoucher::frmSearchVoucher(Session& session)
    : SearchDialog(session, "frmSearchVoucher", "Accounts Payable Vouchers") {
    txtSearchStr.placeholder("Voucher number or part of the payee");
    Query = "sp_SearchAP '##'";
}

int frmSearchVoucher::codeColumn(const Recordset& rows) const { return std::max(rows.indexOf("Voucher"), 0); }

}  // namespace kv
