#include "reporting/frmSearch.h"

namespace kv {

frmSearch::frmSearch(Session& session) : SearchDialog(session, "frmSearch", "Search") {
    cmdNewPay.setVisible(false);
    cmdNewPay.onClick = [this] {
        newPayable_ = true;
        Unload();
    };
}

Layout frmSearch::buttonRow() { return row({lblTotal, cmdNewPay, stretch(), cmdSelect, cmdCancel}); }

}  // namespace kv
