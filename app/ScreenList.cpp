// The map of the house: every screen with its room, title, menu path, right and factory, sorted by name.

#include "app/Program.h"
#include "core/frmBooksCheck.h"
#include "core/frmCenter.h"
#include "core/frmFind.h"
#include "core/frmMain.h"
#include "core/frmPassword.h"
#include "core/frmUserSettings.h"
#include "ledger/BatchDocument.h"
#include "ledger/MasterFiles.h"
#include "ledger/Statements.h"
#include "ledger/frmAPVRange.h"
#include "ledger/frmBegBalance.h"
#include "ledger/frmBegBalancePeriod.h"
#include "ledger/frmBegBalanceYear.h"
#include "ledger/frmBuildAcct.h"
#include "ledger/frmBuildAcct_2.h"
#include "ledger/frmChecklistBatch.h"
#include "ledger/frmCloseCockpit.h"
#include "ledger/frmEntPeriod.h"
#include "ledger/frmGL.h"
#include "ledger/frmGeneral.h"
#include "ledger/frmHospitalInfo.h"
#include "ledger/frmImportMasters.h"
#include "ledger/frmJournEntry.h"
#include "ledger/frmListBatch.h"
#include "ledger/frmRepYear.h"
#include "reporting/MasterForm.h"
#include "reporting/UserLogs.h"

namespace kv {
namespace {

template <class Screen>
std::unique_ptr<Form> make(Session& session) {
    return std::make_unique<Screen>(session);
}

template <MasterFile (*File)()>
std::unique_ptr<Form> master(Session& session) {
    return std::make_unique<MasterForm>(session, File());
}

}  // namespace

void registerScreens(Screens& screens) {
    screens.add(
        {"frmAPVRange", "ledger", "Batch Number Range", "Batch Entries > View/Print Batch", "", make<frmAPVRange>});
    screens.add({"frmBegBalance", "ledger", "Beginning Balances", "Balances > Beginning Balances of a Year > Account",
                 "GL", make<frmBegBalance>});
    screens.add({"frmBegBalancePeriod", "ledger", "Beginning Balances of a Period",
                 "Balances > Beginning Balances of a Period", "GL", make<frmBegBalancePeriod>});
    screens.add({"frmBegBalanceYear", "ledger", "Beginning Balances of a Year",
                 "Balances > Beginning Balances of a Year", "GL", make<frmBegBalanceYear>});
    screens.add({"frmBooksCheck", "core", "Books Check", "File > Books Check", "GL", make<frmBooksCheck>});
    screens.add({"frmBuildAcct", "ledger", "Chart of Accounts", "File Maintenance > Chart of Accounts", "COA",
                 make<frmBuildAcct>});
    screens.add({"frmBuildAcctClass", "ledger", "Account Classification",
                 "File Maintenance > Chart of Accounts > Classification", "", master<classificationFile>});
    screens.add({"frmBuildAcct_2", "ledger", "GL Accounts", "File Maintenance > Chart of Accounts > New Account", "COA",
                 make<frmBuildAcct_2>, OpenAccountDocument});
    screens.add(
        {"frmBuildCstCtr", "ledger", "Cost Centers", "File Maintenance > Cost Centers", "CC", master<costCenterFile>});
    screens.add(
        {"frmBuildDept", "ledger", "Departments", "File Maintenance > Departments", "", master<departmentFile>});
    screens.add({"frmBuildEquity", "ledger", "Equity", "File Maintenance > Equity", "EQ", master<equityFile>});
    screens.add({"frmBuildGLGroup_2", "ledger", "GL Groups", "File Maintenance > Chart of Accounts > New Group", "COA",
                 master<glGroupFile>});
    screens.add({"frmBuildRevenue", "ledger", "Revenue Centers", "File Maintenance > Revenue Centers", "",
                 master<revenueCenterFile>});
    screens.add({"frmBuildTerms", "ledger", "Terms", "File Maintenance > Terms", "", master<termsFile>});
    screens.add({"frmCenter", "core", "Home", "", "", make<frmCenter>});
    screens.add(
        {"frmChecklistBatch", "ledger", "Post Batches", "Batch Entries > Post Batches", "", make<frmChecklistBatch>});
    screens.add(
        {"frmCloseCockpit", "ledger", "Close Cockpit", "General Ledger > Close Cockpit", "GL", make<frmCloseCockpit>});
    screens.add({"frmEntPeriod", "ledger", "Period", "Batch Entries > Close Period", "", make<frmEntPeriod>});
    screens.add({"frmFind", "core", "Find Anything", "File > Find Anything", "", make<frmFind>});
    screens.add(
        {"frmFiscalYear", "ledger", "Fiscal Years", "File Maintenance > Fiscal Years", "", master<fiscalYearFile>});
    screens.add({"frmGL", "ledger", "General Ledger", "Books > General Ledger", "GL", make<frmGL>, OpenLedgerDocument});
    screens.add({"frmGeneral", "ledger", "Journal Vouchers, Accounts Receivable, Cash Receipts", "Books", "",
                 make<frmGeneral>});
    screens.add({"frmHospitalInfo", "ledger", "Program Settings Maintenance", "File > Program Settings", "",
                 make<frmHospitalInfo>});
    screens.add({"frmImportMasters", "ledger", "Import from CSV", "File Maintenance > Import from CSV", "",
                 make<frmImportMasters>});
    screens.add({"frmJournEntry", "ledger", "Journal Entry", "Batch Entries > Enter/Edit Batch > New", "",
                 make<frmJournEntry>, OpenBatchDocument});
    screens.add(
        {"frmListBatch", "ledger", "List of Vouchers", "Batch Entries > Enter/Edit Batch", "", make<frmListBatch>});
    screens.add({"frmMain", "core", "Main Shell", "", "", make<frmMain>});
    screens.add({"frmPassword", "core", "Password", "File > Program Settings", "", make<frmPassword>});
    screens.add({"frmPeriod", "ledger", "Periods", "File Maintenance > Periods", "PER", master<periodFile>});
    screens.add({"frmRepYear", "ledger", "Year", "Balances > Year End Closing", "GL", make<frmRepYear>});
    screens.add(
        {"frmUserSettings", "core", "User Settings Maintenance", "File > User Settings", "", make<frmUserSettings>});
    screens.addCommand("UserLogs", [](Session& session) { ShowUserLogs(session); });
}

}  // namespace kv
