#include "reporting/frmSearchAcct.h"

namespace kv {

frmSearchAcct::frmSearchAcct(Session& session) : SearchDialog(session, "frmSearchAcct", "Account Codes") {
    txtSearchStr.placeholder("Account code or part of its title");
}

void frmSearchAcct::SearchMasters() {
    SearchCaption = kMasterCaption;
    Query =
        "select Description [Account Title], Code, Type from acctcode where mast_dept = 'MAS' and description like "
        "'##%'";
}

}  // namespace kv
