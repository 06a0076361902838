#include "ledger/MasterFiles.h"

#include "core/module1.h"
#include "ledger/LookupClass.h"
#include "ledger/clsAccount.h"
#include "platform/base/Date.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

std::optional<FoundCode> lookUpEquityAccount(Session& session, std::string_view text) {
    clsAccount account(session);
    if (!account.Validate(text, "EQ")) return std::nullopt;
    return FoundCode{account.AccountCode, account.AccountTitle};
}

const std::vector<MasterChoice>& activeOrNot() {
    static const std::vector<MasterChoice> choices = {{"A", "Active"}, {"I", "Inactive"}};
    return choices;
}

/// A period's own dates where nothing was typed yet.
void proposeMonth(MasterValues& values) {
    const std::string& period = values["txtPeriod"];
    if (period.size() != 6 || !values["txtStart"].empty() || !values["txtEnd"].empty()) return;
    values["txtStart"] = Format(module1::GetPeriodStartDate(period), "MM/dd/yyyy");
    values["txtEnd"] = Format(module1::GetPeriodEndDate(period), "MM/dd/yyyy");
}

std::string checkRange(const MasterValues& values) {
    const auto first = parseDate(values.at("txtStart"));
    const auto last = parseDate(values.at("txtEnd"));
    return first && last && *last < *first ? "The last day lies before the first." : "";
}

std::string checkPeriod(Session&, const MasterValues& values) {
    const std::string& period = values.at("txtPeriod");
    if (period.size() != 6 ||
        !isRealDay(static_cast<int>(numberOf(period.substr(0, 4))), static_cast<int>(numberOf(period.substr(4))), 1)) {
        return "Period «" + period + "» is not valid.";
    }
    return checkRange(values);
}

}  // namespace

const std::vector<MasterChoice>& accountTypes() {
    static const std::vector<MasterChoice> types = {
        {"AS", "AS - ASSET"},   {"LI", "LI - LIABILITY"}, {"IN", "IN - INCOME"},
        {"EX", "EX - EXPENSE"}, {"EQ", "EQ - EQUITY"},
    };
    return types;
}

std::vector<MasterChoice> groupClasses(std::string_view type) {
    if (type == "AS" || type == "LI") return {{"C", "C - CURRENT"}, {"O", "O - NON-CURRENT"}};
    if (type == "IN") {
        return {{"R", "R - OPERATIONS / ROUTINE"}, {"S", "S - NON-OPERATIONS / SPECIAL"}, {"O", "O - OTHER"}};
    }
    if (type == "EX") {
        return {{"C", "C - GENERAL"}, {"D", "D - DISCOUNT"}, {"P", "P - OPERATING"}, {"O", "O - OTHER"}};
    }
    return {{"", "(none)"}};
}

MasterFile costCenterFile() {
    MasterFile file{.screen = "frmBuildCstCtr", .title = "Cost Centers", .icon = "view-list-tree"};
    file.list =
        "SELECT C.CstCtr, C.Description, C.Division, C.DeptCode, D.CODE, D.DEPARTMENT FROM CstCtr C LEFT JOIN "
        "DEPARTMENTS D ON C.DeptCode = D.CODE ORDER BY C.CstCtr";
    file.columns = {{"CstCtr", "Code", 10}, {"Description", "Description", 40}, {"DEPARTMENT", "Department", 30}};
    file.listKeys = {"CstCtr"};
    file.row =
        "select C.CstCtr, C.Description, C.Division, C.DeptCode, D.DEPARTMENT from CstCtr C left join DEPARTMENTS D on "
        "C.DeptCode = D.CODE where C.CstCtr = '{key}'";
    file.fields = {
        {.control = "txtCode",
         .caption = "C&ode:",
         .column = "CstCtr",
         .kind = MasterKind::Code,
         .length = 10,
         .parameter = "@CODE",
         .needed = "Please enter the code."},
        {.control = "txtDescription",
         .caption = "Descript&ion:",
         .column = "Description",
         .length = 100,
         .parameter = "@DESCRIPTION",
         .needed = "Please enter the description."},
        {.control = "txtDivision",
         .caption = "Di&vision:",
         .column = "Division",
         .kind = MasterKind::Code,
         .length = 10,
         .parameter = "@DIVISION"},
        {.control = "txtDept",
         .caption = "Depart&ment:",
         .column = "DeptCode",
         .kind = MasterKind::Lookup,
         .length = 10,
         .parameter = "@DEPTCODE",
         .lookup = lookUpMaster<clsDepartment>,
         .button = "cmdDept",
         .description = "DEPARTMENT",
         .help = "The department above. F2 searches."},
    };
    file.save.procedure = "sp_Update_CstCtr";
    file.count = "SELECT COUNT(*) AS CstCtrCount FROM CstCtr WHERE CstCtr = '{key}'";
    file.verify = "sp_VerifyCstCtr '{key}'";
    file.remove = "delete from cstctr where cstctr = '{key}'";
    file.says = masterSays("Cost Center");
    file.logs = masterLogs("Cost Center");
    file.report = "CostCenters.rpt";
    return file;
}

MasterFile revenueCenterFile() {
    MasterFile file{.screen = "frmBuildRevenue", .title = "Revenue Centers", .icon = "view-currency-list"};
    file.list = "SELECT RevCtr, Description FROM RevCtr ORDER BY RevCtr";
    file.columns = {{"RevCtr", "Code", 12}, {"Description", "Description", 50}};
    file.listKeys = {"RevCtr"};
    file.row = "select * from RevCtr where RevCtr = '{key}'";
    file.fields = {
        {.control = "txtCode",
         .caption = "C&ode:",
         .column = "RevCtr",
         .kind = MasterKind::Code,
         .length = 10,
         .needed = "Please enter the code."},
        {.control = "txtDescription",
         .caption = "Descript&ion:",
         .column = "Description",
         .length = 100,
         .needed = "Please enter the description."},
    };
    file.save.procedure = "sp_Update_RevCtr";
    file.count = "SELECT COUNT(*) AS RevCtrCount FROM RevCtr WHERE RevCtr = '{key}'";
    file.remove = "delete from revctr where revctr = '{key}'";
    file.says = masterSays("Revenue Center");
    file.logs = masterLogs("Revenue Center");
    file.report = "RevenueCenters.rpt";
    return file;
}

MasterFile departmentFile() {
    MasterFile file{.screen = "frmBuildDept", .title = "Departments", .icon = "view-institution"};
    for (const auto& [code, name] :
         {std::pair{"1", "ANCILLIARY SERVICES"}, std::pair{"2", "ADMINISTRATION & OPERATIONS"},
          std::pair{"3", "NURSING SERVICES"}}) {
        file.seeds.push_back(std::string("IF NOT EXISTS ( SELECT * FROM DEPARTMENTS WHERE CODE = '") + code +
                             "' ) BEGIN INSERT INTO DEPARTMENTS ( CODE, DEPARTMENT ) VALUES ( '" + code + "', '" +
                             name + "' ) END;");
    }
    file.list = "SELECT CODE, DEPARTMENT FROM DEPARTMENTS ORDER BY CODE";
    file.columns = {{"CODE", "Code", 12}, {"DEPARTMENT", "Department", 50}};
    file.listKeys = {"CODE"};
    file.row = "select * from DEPARTMENTS where CODE = '{key}'";
    file.fields = {
        {.control = "txtCode",
         .caption = "C&ode:",
         .column = "CODE",
         .kind = MasterKind::Code,
         .length = 10,
         .needed = "Please enter the code."},
        {.control = "txtDescription",
         .caption = "Depart&ment:",
         .column = "DEPARTMENT",
         .length = 100,
         .needed = "Please enter the description."},
    };
    file.save.procedure = "sp_Update_Departments";
    file.count = "SELECT COUNT(*) AS DEPARTMENTSCount FROM DEPARTMENTS WHERE CODE = '{key}'";
    file.says = masterSays("Department");
    file.logs = masterLogs("Department");
    return file;
}

MasterFile equityFile() {
    MasterFile file{.screen = "frmBuildEquity", .title = "Equity", .icon = "wallet-open"};
    file.list = "SELECT Code, Description, Kind, Shares, ParValue FROM EQUITY ORDER BY Code, Kind";
    file.columns = {{"Code", "Account", 12},
                    {"Description", "Description", 36},
                    {"Kind", "Kind", 14},
                    {"Shares", "Shares", 16, MasterLook::Amount},
                    {"ParValue", "Par Value", 14, MasterLook::Amount}};
    file.listKeys = {"Code", "Kind"};
    file.row =
        "select E.*, A.Description AcctDescription from EQUITY E left join AcctCode A on A.Code = E.Code where E.Code "
        "= "
        "'{key}' and E.Kind = '{key2}'";
    file.fields = {
        {.control = "txtCode",
         .caption = "Acc&ount:",
         .column = "Code",
         .kind = MasterKind::Lookup,
         .length = 15,
         .needed = "Please enter the account.",
         .lookup = lookUpEquityAccount,
         .button = "cmdCode",
         .description = "AcctDescription",
         .help = "An account of the equity section. F2 searches."},
        {.control = "cboKind",
         .caption = "&Kind:",
         .column = "Kind",
         .kind = MasterKind::Choice,
         .standard = "ISSUED",
         .choices = {{"AUTHORIZED", "AUTHORIZED"},
                     {"ISSUED", "ISSUED"},
                     {"SUBSCRIBED", "SUBSCRIBED"},
                     {"RECEIVABLE", "RECEIVABLE"},
                     {"TREASURY", "TREASURY"},
                     {"RETAINED", "RETAINED"}}},
        {.control = "txtDescription",
         .caption = "Descript&ion:",
         .column = "Description",
         .length = 100,
         .needed = "Please enter the description."},
        {.control = "txtShares", .caption = "S&hares:", .column = "Shares", .kind = MasterKind::Decimal, .length = 16},
        {.control = "txtParValue",
         .caption = "Par &Value:",
         .column = "ParValue",
         .kind = MasterKind::Decimal,
         .length = 16},
    };
    file.save.procedure = "sp_Update_Equity";
    file.save.order = {"txtCode", "txtDescription", "cboKind", "txtShares", "txtParValue"};
    file.count = "SELECT COUNT(*) AS EQUITYCount FROM EQUITY WHERE Code = '{key}' AND Kind = '{key2}'";
    file.says = masterSays("Equity");
    file.logs = masterLogs("Equity");
    return file;
}

MasterFile termsFile() {
    MasterFile file{.screen = "frmBuildTerms", .title = "Terms", .icon = "clock"};
    file.list = "SELECT TermsID, Terms, NoDays, Status FROM TERMS ORDER BY TermsID";
    file.columns = {{"TermsID", "Code", 8, MasterLook::Whole},
                    {"Terms", "Terms", 40},
                    {"NoDays", "Days", 8, MasterLook::Whole},
                    {"Status", "Status", 10, MasterLook::Active}};
    file.listKeys = {"TermsID"};
    file.row = "select * from TERMS where TermsID = '{key}'";
    file.nextKey = "SELECT ISNULL(MAX(TermsID), 0) + 1 AS NextID FROM TERMS";
    file.fields = {
        {.control = "txtCode",
         .caption = "C&ode:",
         .column = "TermsID",
         .kind = MasterKind::Digits,
         .length = 4,
         .needed = "Please enter the code."},
        {.control = "txtDescription",
         .caption = "&Terms:",
         .column = "Terms",
         .length = 60,
         .needed = "Please enter the description."},
        {.control = "txtNoDays",
         .caption = "Da&ys to the due date:",
         .column = "NoDays",
         .kind = MasterKind::Whole,
         .length = 4,
         .needed = "Please enter the number of days.",
         .standard = "0"},
        {.control = "chkStatus",
         .caption = "Acti&ve",
         .column = "Status",
         .kind = MasterKind::Tick,
         .standard = "A",
         .choices = activeOrNot()},
    };
    file.check = [](Session&, const MasterValues& values) {
        return values.at("txtNoDays").starts_with("-") ? "The number of days cannot be below zero." : std::string();
    };
    file.save.procedure = "sp_Update_Terms";
    file.count = "SELECT COUNT(*) AS TERMSCount FROM TERMS WHERE TermsID = '{key}'";
    file.verify = "sp_VerifyTerms '{key}'";
    file.remove = "Delete from TERMS where TermsID = '{key}'";
    file.retire = "UPDATE TERMS SET Status = 'I' WHERE TermsID = '{key}'";
    file.says = masterSays("Terms");
    file.logs = masterLogs("Terms");
    return file;
}

MasterFile classificationFile() {
    MasterFile file{.screen = "frmBuildAcctClass", .title = "Classification", .icon = "view-list-details"};
    file.list = "SELECT ClassID, Classification, Status FROM AcctCodeClass ORDER BY CAST(ClassID as int)";
    file.columns = {{"ClassID", "Code", 10, MasterLook::Whole},
                    {"Classification", "Classification", 50},
                    {"Status", "Status", 10, MasterLook::Active}};
    file.listKeys = {"ClassID"};
    file.row = "select * from AcctCodeClass where ClassID = '{key}'";
    file.nextKey = "SELECT ISNULL(MAX(CAST(ClassID as int)), 0) + 1 AS NextID FROM AcctCodeClass";
    file.fields = {
        {.control = "txtCode",
         .caption = "C&ode:",
         .column = "ClassID",
         .kind = MasterKind::Digits,
         .length = 6,
         .needed = "Please enter the code."},
        {.control = "txtDescription",
         .caption = "Classi&fication:",
         .column = "Classification",
         .length = 100,
         .needed = "Please enter the description."},
        {.control = "chkStatus",
         .caption = "Acti&ve",
         .column = "Status",
         .kind = MasterKind::Tick,
         .standard = "A",
         .choices = activeOrNot()},
        {.control = "txtPaymentID",
         .caption = "Mode of pa&yment:",
         .column = "PaymentID",
         .kind = MasterKind::Digits,
         .length = 6,
         .help = "Code of the mode of payment that this classification goes with, or nothing."},
    };
    file.save.procedure = "sp_Update_AcctClass";
    file.count = "SELECT COUNT(*) AS AcctCodeClassCount FROM AcctCodeClass WHERE ClassID = '{key}'";
    file.remove = "UPDATE AcctCodeClass SET STATUS = 'I' WHERE ClassID = '{key}'";
    file.says = masterSays("Classification");
    file.says.remove = "Classification : {key} will be set as inactive. Are you sure you want to do this?";
    file.logs = masterLogs("Classification");
    file.logs.removed = file.logs.retired;
    return file;
}

MasterFile glGroupFile() {
    MasterFile file{.screen = "frmBuildGLGroup_2", .title = "GL Groups", .icon = "folder"};
    file.list = "SELECT G.GLGroup, G.Description, G.Type, G.Class, G.MainGroup FROM GLGROUP G ORDER BY G.GLGroup";
    file.columns = {{"GLGroup", "Group", 10},
                    {"Description", "Description", 44},
                    {"Type", "Type", 8},
                    {"Class", "Class", 8},
                    {"MainGroup", "Main Group", 12}};
    file.listKeys = {"GLGroup"};
    file.row =
        "select G.*, M.Description MainDescription from GLGROUP G left join GLGROUP M on M.GLGroup = G.MainGroup where "
        "G.GLGroup = '{key}'";
    file.fields = {
        {.control = "txtCode",
         .caption = "&Group:",
         .column = "GLGroup",
         .kind = MasterKind::Code,
         .length = 10,
         .needed = "Please enter the code."},
        {.control = "txtDescription",
         .caption = "Descript&ion:",
         .column = "Description",
         .length = 100,
         .needed = "Please enter the description."},
        {.control = "cboType",
         .caption = "&Type:",
         .column = "Type",
         .kind = MasterKind::Choice,
         .standard = "AS",
         .choices = accountTypes()},
        {.control = "cboClass",
         .caption = "Class:",
         .column = "Class",
         .kind = MasterKind::Choice,
         .choicesFor = [](const MasterValues& values) { return groupClasses(values.at("cboType")); }},
        {.control = "txtMainGroup",
         .caption = "&Main group:",
         .column = "MainGroup",
         .kind = MasterKind::Lookup,
         .length = 10,
         .lookup = lookUpMaster<clsGLGroup>,
         .button = "cmdMainGroup",
         .description = "MainDescription",
         .help = "The group above this one, or nothing. F2 searches."},
    };
    file.save.procedure = "sp_Update_GLGroup";
    file.count = "SELECT COUNT(*) AS GLGROUPCount FROM GLGROUP WHERE GLGroup = '{key}'";
    file.verify = "sp_VerifyGLGroup '{key}'";
    file.remove = "Delete from GLGROUP where GLGroup = '{key}'";
    file.says = masterSays("GL Group");
    file.logs = masterLogs("GL Group");
    return file;
}

MasterFile periodFile() {
    MasterFile file{.screen = "frmPeriod", .title = "Periods", .icon = "view-calendar"};
    file.listControl = "grdAccts";
    const std::string select =
        "Select Period as PERIOD,PD_Start as [PERIOD START],PD_End as [PERIOD END],APVoucher as [AP VOUCHER] from "
        "PERIODS ";
    file.list = select + "order by {sort}";
    file.searchList =
        select + "where Description like '%##%' or Period like '##%' or APVoucher like '##%' order by {sort}";
    file.sorts = {{"By pe&riod", "Period"}, {"By s&tart", "PD_Start"}};
    file.columns = {{"PERIOD", "PERIOD", 12},
                    {"PERIOD START", "PERIOD START", 16, MasterLook::Date},
                    {"PERIOD END", "PERIOD END", 16, MasterLook::Date},
                    {"AP VOUCHER", "AP VOUCHER", 20}};
    file.listKeys = {"PERIOD"};
    file.row = "Select * from PERIODS where PERIOD = '{key}'";
    file.exists = "Select Period from Periods where Period = '{key}'";
    file.fields = {
        {.control = "txtPeriod",
         .caption = "Peri&od:",
         .column = "Period",
         .kind = MasterKind::Digits,
         .length = 6,
         .needed = "Please enter the period.",
         .help = "Year and month, such as 202403."},
        {.control = "txtStart",
         .caption = "S&tart:",
         .column = "PD_Start",
         .kind = MasterKind::Date,
         .length = 20,
         .refusal = "Invalid date!"},
        {.control = "txtEnd",
         .caption = "End:",
         .column = "PD_END",
         .kind = MasterKind::Date,
         .length = 20,
         .refusal = "Invalid date!"},
        {.control = "txtAPVoucher",
         .caption = "AP &voucher:",
         .column = "APVoucher",
         .kind = MasterKind::Code,
         .length = 20,
         .help = "The last AP voucher of the period."},
    };
    file.onNewKey = proposeMonth;
    file.check = checkPeriod;
    file.save.table = "PERIODS";
    file.save.keyColumns = {"Period"};
    file.remove = "Delete from Periods where Period = '{key}'";
    file.says.exists = "Code already exists!";
    file.says.unsaved = "Changes to the previuos record will not be saved!";
    file.says.remove = "Are you sure you want to delete Period '{key}' ?";
    file.says.removeTitle = "Warning!";
    file.logs = {.selected = "Selected Period: {key}",
                 .created = "Created File Maintenance | Period : {key}",
                 .edited = "Edited File Maintenance | Period : {key}",
                 .ignored = "Ignore changes in File Maintenance | Period: {key}",
                 .removed = "Deleted File Maintenance | Period : {key}",
                 .closed = "Closed File Maintenance | Period"};
    return file;
}

/// Its check of a new key and its delete work on the table of periods, as they were carried over from there: an
/// existing year is edited when it is entered as a new one, and no year goes.
MasterFile fiscalYearFile() {
    MasterFile file{.screen = "frmFiscalYear", .title = "Fiscal Years", .icon = "view-calendar"};
    file.listControl = "grdAccts";
    file.list =
        "Select FiscalYear as [Year],StartDate as [Start Date],EndDate as [End Date] from FiscalYears order by "
        "StartDate";
    file.columns = {{"Year", "Year", 12},
                    {"Start Date", "Start Date", 16, MasterLook::Date},
                    {"End Date", "End Date", 16, MasterLook::Date}};
    file.listKeys = {"Year"};
    file.row = "Select * from FiscalYears where FiscalYear = '{key}'";
    file.exists = "Select Period from Periods where Period = '{key}'";
    file.savesOverExisting = true;
    file.fields = {
        {.control = "txtPeriod",
         .caption = "&Year:",
         .column = "FiscalYear",
         .kind = MasterKind::Digits,
         .length = 4,
         .needed = "Please enter the year."},
        {.control = "txtStart",
         .caption = "S&tart:",
         .column = "StartDate",
         .kind = MasterKind::Date,
         .length = 20,
         .needed = "Please enter a valid date.",
         .refusal = "Please enter a valid date.",
         .refusesNow = true},
        {.control = "txtEnd",
         .caption = "End:",
         .column = "EndDate",
         .kind = MasterKind::Date,
         .length = 20,
         .needed = "Please enter a valid date.",
         .refusal = "Please enter a valid date.",
         .refusesNow = true},
    };
    file.check = [](Session&, const MasterValues& values) { return checkRange(values); };
    file.save.table = "FiscalYears";
    file.save.keyColumns = {"FiscalYear"};
    file.remove = "Delete from Periods where Period = '{key}'";
    file.says.exists = "Code already exists!";
    file.says.unsaved = "Changes to the previuos record will not be saved!";
    file.says.remove = "Are you sure you want to delete Period '{key}' ?";
    file.says.removeTitle = "Warning!";
    file.logs = {.selected = "Selected Fiscal Year: {key}",
                 .created = "Created Fiscal Year : {key}",
                 .edited = "Edited Fiscal Year : {key}",
                 .ignored = "Ignore changes in File Maintenance | Fiscal Yeart : {key}",
                 .removed = "Deleted File Maintenance | Fiscal Year: {key}",
                 .closed = "Ignore changes in File Maintenance | Fiscal Year"};
    return file;
}

}  // namespace kv
