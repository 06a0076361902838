#include "reporting/UserLogs.h"

#include "core/Session.h"
#include "reporting/ReportFrame.h"
#include "reporting/frmSelectDates.h"

namespace kv {

void ShowUserLogs(Session& session, std::source_location at) {
    traced("frmMain.mnuUserLogs_Click_Err", at, [&] {
        std::string start, end, user;
        if (!frmSelectDateMisc("&User :").ShowDialog(start, end, user)) return;
        const std::string path = module1::ReportPath(session, "UserLogs.rpt");
        const ReportParams params{session.Sys.Company, session.Sys.Address1, start, end, user};
        if (module1::OpenMainReport(session, path, params)) {
            module1::ShowReportViewer(session, {.ReportCaption = "User Logs.rpt"});
        }
    });
}

}  // namespace kv
