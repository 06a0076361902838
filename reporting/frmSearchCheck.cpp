#include "reporting/frmSearchCheck.h"

#include <algorithm>

namespace kv {

frmSearchCheck::frmSearchCheck(Session& session) : SearchDialog(session, "frmSearchCheck", "Checks") {
    txtSearchStr.placeholder("Check number or part of the payee");
    Query = "sp_SearchChecks '##'";
}

int frmSearchCheck::codeColumn(const Recordset& rows) const { return std::max(rows.indexOf("CheckNo"), 0); }

}  // namespace kv
