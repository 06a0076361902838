#include "ledger/LedgerReports.h"

#include "core/BookState.h"
#include "core/Session.h"
#include "reporting/ReportFrame.h"

namespace kv {

void rptTrialBalance(Session& session, std::string_view Period, std::source_location at) {
    traced("frmEntPeriod.rptTrialBalance", at, [&] {
        const std::string path = module1::ReportPath(session, "TrialBalance.rpt");
        const bool opened = module1::OpenMainReport2(session, path,
                                                     {{"@Period", std::string(Period)},
                                                      {"HospitalName", session.Sys.Company},
                                                      {"HospAddress", session.Sys.Address1},
                                                      {"PdRange", "For the month of " + periodName(Period)}});
        if (opened) module1::ShowReportViewer(session, {.ReportCaption = "Trial Balance Report"});
    });
}

}  // namespace kv
