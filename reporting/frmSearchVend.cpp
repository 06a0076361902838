#include "reporting/frmSearchVend.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr const char* kVendorMaster = "frmBuildVendors";

}  // namespace

frmSearchVend::frmSearchVend(Session& session) : SearchDialog(session, "frmSearchVend", "Vendors") {
    txtSearchStr.placeholder("Beginning of the name");
    cmdBuild.setVisible(session.screens.find(kVendorMaster) && session.UserAccess.CanAccess("VEND"));
    cmdBuild.onClick = [this] { cmdBuild_Click(); };
}

Layout frmSearchVend::buttonRow() { return row({lblTotal, cmdBuild, stretch(), cmdSelect, cmdCancel}); }

std::vector<ListColumn> frmSearchVend::columnsOf(const Recordset& rows) const {
    std::vector<ListColumn> columns = SearchDialog::columnsOf(rows);
    for (ListColumn& column : columns) {
        if (equalsNoCase(column.heading, "SUPPLIERNAME")) column.heading = "Supplier";
        if (equalsNoCase(column.heading, "SUPPLIERID")) column.heading = "Code";
    }
    return columns;
}

void frmSearchVend::SetMode(std::string_view Mode, bool ActiveList) {
    if (Mode != "I") return;
    Query = "SELECT  SUPPLIERNAME,SUPPLIERID FROM INVENTORY..tbInvSupplier where suppliername like '##%'";
    Criteria = ActiveList ? " and Status  = 'A'" : "";
}

void frmSearchVend::cmdBuild_Click() {
    session().screens.showModal(session(), kVendorMaster);
    module1::SaveUserLog(session(), "Open File Maintenance | Vendors");
    RefreshGrid();
    txtSearchStr.setFocus();
}

}  // namespace kv
