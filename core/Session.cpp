#include "core/Session.h"

#include <array>

#include "core/MainMenu.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

struct SysColumn {
    const char* name;
    std::string SysCopies::*copy;
};

// in the order in which they are read
constexpr auto kSysColumns = std::to_array<SysColumn>({
    {"Company", &SysCopies::Company},
    {"Address1", &SysCopies::Address1},
    {"APAcct", &SysCopies::APAcct},
    {"VATCode", &SysCopies::VATCode},
    {"Vatable", &SysCopies::Vatable},
    {"SW_CVNO", &SysCopies::SW_CVNO},
    {"sw_CheckNo", &SysCopies::sw_CheckNo},
    {"sw_ChkPrint", &SysCopies::sw_ChkPrint},
    {"sw_APVPrint", &SysCopies::sw_APVPrint},
    {"sw_APVNo", &SysCopies::sw_APVNo},
    {"Client", &SysCopies::Client},
    {"YearType", &SysCopies::YearType},
    {"ProfitLoss", &SysCopies::ProfitLoss},
    {"CashInBank", &SysCopies::CashInBank},
    {"CSHAcct", &SysCopies::CSHAcct},
    {"sw_Compare", &SysCopies::sw_Compare},
    {"SW_BegPage", &SysCopies::SW_BegPage},
    {"sw_link", &SysCopies::sw_link},
    {"sw_wDirect", &SysCopies::sw_wDirect},
    {"SW_CV", &SysCopies::SW_CV},
    {"ApprovedBy", &SysCopies::ApprovedBy},
    {"CDBClerk", &SysCopies::CDBClerk},
    {"CDBClerkName", &SysCopies::CDBClerkName},
    {"PostedBy", &SysCopies::PostedBy},
    {"VerifiedBy", &SysCopies::VerifiedBy},
    {"WTax", &SysCopies::WTax},
    {"EWTax", &SysCopies::EWTax},
    {"MonthEnd", &SysCopies::MonthEnd},
    {"CRBAcct", &SysCopies::CRBAcct},
    {"ARAcct", &SysCopies::ARAcct},
    {"APPERIOD", &SysCopies::APPERIOD},
    {"glperiod", &SysCopies::glperiod},
    {"CDBPERIOD", &SysCopies::CDBPERIOD},
    {"PreparedBy", &SysCopies::PreparedBy},
    {"apnontrade", &SysCopies::apnontrade},
    {"rptpdstart", &SysCopies::rptpdstart},
    {"rptpdEnd", &SysCopies::rptpdEnd},
    {"RetainedEarning", &SysCopies::RetainedEarning},
    {"AEAcct", &SysCopies::AEAcct},
    {"payAcct", &SysCopies::payAcct},
    {"FixedAsset", &SysCopies::FixedAsset},
});

}  // namespace

Book bookOf(const Session& session, const BookEntry& entry) {
    const std::string_view code = entry.code;
    const SysCopies& sys = session.Sys;
    return {entry.code, entry.name, entry.table, entry.detailTable,
            code == "AP"   ? sys.APPERIOD
            : code == "CD" ? sys.CDBPERIOD
                           : sys.glperiod};
}

void ResetGlobalVariables(Session& session, std::source_location at) {
    traced("module1.ResetGlobalVariables", at, [&] {
        const Recordset row = session.cn().Open("SELECT * FROM Sys");
        if (row.eof()) return;
        for (const SysColumn& column : kSysColumns) session.Sys.*column.copy = row[column.name].text();
    });
}

std::string GetServerName(std::string_view ConnectionString, std::source_location at) {
    return traced("module1.GetServerName", at, [&]() -> std::string {
        constexpr std::size_t kKeyLength = 7;  // "Server="
        const std::size_t key = UCase(ConnectionString).find("SERVER");
        if (key == std::string::npos || key + kKeyLength > ConnectionString.size()) {
            throw Error(5, "module1", "Invalid procedure call or argument");
        }
        const std::string_view rest = ConnectionString.substr(key + kKeyLength);
        const std::size_t end = rest.find(';');
        if (end == std::string_view::npos) throw Error(5, "module1", "Invalid procedure call or argument");
        return std::string(rest.substr(0, end));
    });
}

std::string ResourcesFolder(const std::string& programFolder, const std::string& clientCode) {
    for (const std::string& name : {"Resources_" + clientCode, std::string("Resources")}) {
        const std::string folder = buildPath(programFolder, name);
        if (folderExists(folder)) return folder;
    }
    return programFolder;
}

namespace modGeneral {

void MainHospitalSettings(Session& session, std::source_location at) {
    traced("modGeneral.MainHospitalSettings", at, [&] {
        session.Parameters.LoadParameters(session.ClientCode());
        session.CheckFormat = session.Parameters.CheckFormat();
        session.CVFormat = session.Parameters.CVFormat();
    });
}

}  // namespace modGeneral
}  // namespace kv
