// The map of the house: every screen with its room, title, menu path, right and factory, sorted by name.

#include "app/Program.h"
#include "core/frmCenter.h"
#include "core/frmMain.h"
#include "core/frmPassword.h"
#include "core/frmUserSettings.h"
#include "ledger/BatchDocument.h"
#include "ledger/frmChecklistBatch.h"
#include "ledger/frmEntPeriod.h"
#include "ledger/frmGL.h"
#include "ledger/frmGeneral.h"
#include "ledger/frmJournEntry.h"
#include "ledger/frmListBatch.h"

namespace kv {
namespace {

template <class Screen>
std::unique_ptr<Form> make(Session& session) {
    return std::make_unique<Screen>(session);
}

}  // namespace

void registerScreens(Screens& screens) {
    screens.add({"frmCenter", "core", "Home", "", "", make<frmCenter>});
    screens.add(
        {"frmChecklistBatch", "ledger", "Post Batches", "Batch Entries > Post Batches", "", make<frmChecklistBatch>});
    screens.add({"frmEntPeriod", "ledger", "Period", "Batch Entries > Close Period", "", make<frmEntPeriod>});
    screens.add({"frmGL", "ledger", "General Ledger", "Books > General Ledger", "GL", make<frmGL>});
    screens.add({"frmGeneral", "ledger", "Journal Vouchers, Accounts Receivable, Cash Receipts", "Books", "",
                 make<frmGeneral>});
    screens.add({"frmJournEntry", "ledger", "Journal Entry", "Batch Entries > Enter/Edit Batch > New", "",
                 make<frmJournEntry>, OpenBatchDocument});
    screens.add(
        {"frmListBatch", "ledger", "List of Vouchers", "Batch Entries > Enter/Edit Batch", "", make<frmListBatch>});
    screens.add({"frmMain", "core", "Main Shell", "", "", make<frmMain>});
    screens.add({"frmPassword", "core", "Password", "File > Program Settings", "", make<frmPassword>});
    screens.add(
        {"frmUserSettings", "core", "User Settings Maintenance", "File > User Settings", "", make<frmUserSettings>});
}

}  // namespace kv
