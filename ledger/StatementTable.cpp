#include "ledger/StatementTable.h"

#include <algorithm>

#include "ledger/StatementValues.h"

namespace kv {
namespace {

using Values = std::vector<StatementValue>;

const Values kMonth = {
    {"Company", "{company}"}, {"Address1", "{address}"}, {"@Period", "{period}"}, {"Range", "{range}"}};
const Values kMonthDivision = {{"Company", "{company}"},
                               {"Address1", "{address}"},
                               {"@Period", "{period}"},
                               {"Range", "{range}"},
                               {"@Division", "{entityOrAll}"}};
const Values kMonthDept = {{"Company", "{company}"},
                           {"Address1", "{address}"},
                           {"@Period", "{period}"},
                           {"Range", "{range}"},
                           {"@Dept", "{entityOrAll}"}};
const Values kMonthGroup = {{"Company", "{company}"},
                            {"Address1", "{address}"},
                            {"@Period", "{period}"},
                            {"Range", "{range}"},
                            {"@GLGroup", "{entity}"}};
const Values kTrialBalance = {
    {"@Period", "{period}"}, {"HospitalName", "{company}"}, {"HospAddress", "{address}"}, {"PdRange", "{range}"}};
const Values kNamedMonth = {
    {"@Period", "{period}"}, {"Hospital", "{company}"}, {"Address", "{address}"}, {"Range", "{range}"}};
const Values kNamedGroup = {{"@Period", "{period}"},
                            {"Hospital", "{company}"},
                            {"Address", "{address}"},
                            {"Range", "{range}"},
                            {"@GLGroup", "{entity}"}};
const Values kNamedMonths = {{"@Period1", "{period1}"},
                             {"@Period2", "{period2}"},
                             {"Hospital", "{company}"},
                             {"Address", "{address}"},
                             {"Range", "{range}"}};
const Values kMonths = {{"Company", "{company}"},
                        {"Address1", "{address}"},
                        {"@Period1", "{period1}"},
                        {"@Period2", "{period2}"},
                        {"Range", "{range}"}};
const Values kLedger = {{"@Code", "{entity}"},     {"Hospital", "{company}"}, {"Address", "{address}"},
                        {"@Period1", "{period1}"}, {"@Period2", "{period2}"}, {"Range", "{range}"}};
const Values kAccount = {{"Company", "{company}"},  {"Address1", "{address}"}, {"@Code", "{entity}"},
                         {"@Period1", "{period1}"}, {"@Period2", "{period2}"}, {"Range", "{range}"}};
const Values kAccountDept = {
    {"Company", "{company}"},  {"Address1", "{address}"}, {"@Code", "{entity}"}, {"@Period1", "{period1}"},
    {"@Period2", "{period2}"}, {"Range", "{range}"},      {"@Dept", "*"}};
const Values kAllDivision = {{"Company", "{company}"},      {"Address1", "{address}"}, {"@Code", ""},
                             {"@Period1", "{period1}"},     {"@Period2", "{period2}"}, {"Range", "{range}"},
                             {"@Division", "{entityOrAll}"}};
const Values kPatients = {{"Company", "{company}"},  {"Address1", "{address}"}, {"@Code", "{arAcct}"},
                          {"@Period1", "{period1}"}, {"@Period2", "{period2}"}, {"Range", "{range}"}};
const Values kIncome = {{"@Period", "{period}"}, {"@LYPeriod", "{lastYearPeriod}"}, {"@Compariod", "{lastPeriod}"},
                        {"@Division", ""},       {"HospitalName", "{company}"},     {"HospAddress", "{address}"},
                        {"Range", "{range}"}};
const Values kIncomeDivision = {{"@Period", "{period}"},
                                {"@LYPeriod", "{lastYearPeriod}"},
                                {"@Compariod", "{lastPeriod}"},
                                {"@Division", "{entityOrAll}"},
                                {"HospitalName", "{company}"},
                                {"HospAddress", "{address}"},
                                {"Range", "{range}"}};
const Values kDays = {{"Company", "{company}"},
                      {"Address1", "{address}"},
                      {"StartDate", "{date1}"},
                      {"EndDate", "{date2}"},
                      {"Range", "{range}"}};
const Values kSubsidiary = {
    {"@ReportDate1", "{date1}"}, {"@ReportDate2", "{date2}"}, {"Hospital", "{company}"}, {"Address", "{address}"}};

constexpr const char* kTrialBalances = "&Trial Balance";
constexpr const char* kLedgers = "&Ledgers and Schedules";
constexpr const char* kBalanceSheets = "&Balance Sheet";
constexpr const char* kIncomeStatements = "&Income Statement";
constexpr const char* kNonProfit = "&Non-profit Statements";
constexpr const char* kCash = "&Cash";
constexpr const char* kRevenue = "Income and &Revenue";
constexpr const char* kAnalysis = "&Analysis and Audit";

constexpr const char* kForMonth = "For the month ending {pdEnd|MMMM d, yyyy}";
constexpr const char* kEnded = "For Period Ended {pdEnd|MMMM d, yyyy}";
constexpr const char* kAsOfMonth = "As of {month|MMMM yyyy}";
constexpr const char* kAsOfDay = "As of {pdEnd|dd MMMM yyyy}";
constexpr const char* kMonthToMonth = "{month1|MMM yyyy} to {month2|MMM yyyy}";
constexpr const char* kDayToDay = "{day1|MMMM d, yyyy} to {day2|MMMM d, yyyy}";

std::vector<StatementRow> makeRows() {
    using D = StatementDialog;
    using E = StatementEntity;
    constexpr auto kPos = StatementBinding::Position;
    constexpr auto kName = StatementBinding::Name;
    return {
        {"mnuTrialBalance1", kTrialBalances, "&Trial Balance", "TrialBalance.rpt", "Trial Balance Report",
         "frmEntPeriod.rptTrialBalance", D::EntPeriod, 11, E::None, kName, &kTrialBalance,
         "For the month of {month|MMMM yyyy}"},
        {"mnuTrialBalance2", kTrialBalances, "Trial Balance by &Section", "TrialBalance_DRUE.rpt", "Trial Balance",
         "frmEntPeriod.rptTrialBalance_2", D::EntPeriod, 12, E::None, kPos, &kMonth, kAsOfDay},
        {"mnuTrialBalance2_1", kTrialBalances, "&Post-closing Trial Balance", "TrialBalance_DRUE_PC.rpt",
         "Trial Balance", "frmEntPeriod.rptTrialBalance_2", D::EntPeriod, 13, E::None, kPos, &kMonth, kAsOfDay},
        {"mnuTrialBalance2_2", kTrialBalances, "Post-closing Trial Balance by &Division",
         "TrialBalance_Post_Division.rpt", "Trial Balance", "frmEntPeriod.rptTrialBalance_2", D::EntPeriod, 14,
         E::Division, kPos, &kMonthDivision, kAsOfDay},
        {"mnuTrialBalance3", kTrialBalances, "Trial Balance by P&eriods", "ReportTrialBalancePeriodsCrossTab.rpt",
         "Trial Balance", "frmGL.mnuTrialBalance3_Click", D::RepPrd, 15, E::None, kName, &kNamedMonths, kMonthToMonth},
        {"mnuTrialBalance4", kTrialBalances, "Trial Balance by &Years", "ReportTrialBalanceYearsCrossTab.rpt",
         "Trial Balance", "frmGL.mnuTrialBalance4_Click", D::SelectPeriod, 0, E::None, kPos, &kMonth, kAsOfMonth},
        {"mnuTBperBook", kTrialBalances, "Trial Balance per &Book", "ReportTrialBalanceBookCrossTab.rpt",
         "Trial Balance", "frmGL.mnuTBperBook_Click", D::SelectPeriod, 0, E::None, kPos, &kMonth, kForMonth},

        {"mnuGLDetailed", kLedgers, "&General Ledger, Detailed", "ReportGLDetailed_Ver2.rpt",
         "General Ledger Detailed Report", "frmGL.mnuGLDetailed_Click", D::RepPrd, 21, E::Account, kName, &kLedger,
         kMonthToMonth},
        {"mnuSL", kLedgers, "&Subsidiary Ledger", "ReportSL.rpt", "Subsidiary Ledger", "frmGL.mnuSL_Click",
         D::SelectDate, 0, E::None, kName, &kSubsidiary, kDayToDay},
        {"mnuAcctDetail", kLedgers, "&Account Detail", "AcctDetail.rpt", "Account Detail", "frmRepPrd.rptAcctDetail",
         D::RepPrd, 22, E::Account, kPos, &kAccount, kMonthToMonth},
        {"mnuAcctDetail_1", kLedgers, "Account Detail by D&epartment", "AcctDetailDept.rpt", "Account Detail",
         "frmRepPrd.rptAcctDetail", D::RepPrd, 23, E::Account, kPos, &kAccountDept, kMonthToMonth},
        {"mnuAcctDetail_2", kLedgers, "Account Detail by &Division", "AcctDetail_Division.rpt", "Account Detail",
         "frmRepPrd.rptAcctDetail", D::RepPrd, 24, E::Division, kPos, &kAllDivision, kMonthToMonth},
        {"mnuGrpSchedule_0", kLedgers, "Group Schedule, &Balance Sheet", "GLGrpSchedule_BS.rpt", "GL Group Schedule",
         "frmEntPeriod.rptGLGrpSchedule", D::EntPeriod, 25, E::Group, kPos, &kMonthGroup, kAsOfDay},
        {"mnuGrpSchedule_1", kLedgers, "Group Schedule, &Income Statement", "GLGrpSchedule_IS.rpt", "GL Group Schedule",
         "frmEntPeriod.rptGLGrpSchedule", D::EntPeriod, 26, E::Group, kPos, &kMonthGroup, kEnded},

        {"mnuBS0", kBalanceSheets, "&Balance Sheet", "BS.rpt", " Balance Sheet", "frmGL.BSReport", D::EntPeriod, 31,
         E::None, kPos, &kMonth, kAsOfMonth, BSReport},
        {"mnuBS1", kBalanceSheets, "Balance Sheet, &Comparative", "BS_DRUE.rpt", "Balance Sheet", "frmGL.BSReport1",
         D::EntPeriod, 32, E::None, kPos, &kMonth, kAsOfMonth},
        {"mnuBS1_1", kBalanceSheets, "Balance Sheet by &Division", "BS_Division.rpt", "Balance Sheet",
         "frmGL.BSReport1", D::EntPeriod, 33, E::Division, kPos, &kMonthDivision, kAsOfMonth},
        {"mnuBS2", kBalanceSheets, "Balance Sheet with &Share Capital", "BS_OSQEL.rpt", "Balance Sheet",
         "frmGL.BSReport2", D::EntPeriod, 34, E::None, kPos, &kMonth, kAsOfMonth, BSReport2},
        {"mnuBS3", kBalanceSheets, "Balance Sheet, De&tailed", "BS_Detailed.rpt", "Balance Sheet", "frmGL.BSReport3",
         D::EntPeriod, 35, E::None, kPos, &kMonth, kAsOfMonth},
        {"mnuBS3_1", kBalanceSheets, "Balance Sheet, Detailed, by Di&vision", "BS_Detailed_Division.rpt",
         "Balance Sheet", "frmGL.BSReport3", D::EntPeriod, 36, E::Division, kPos, &kMonthDivision, kAsOfMonth},
        {"mnuISFinancePos", kBalanceSheets, "Statements of &Financial Position", "Report_GL_FinancialPOS.rpt",
         "Statements of Financial Position", "frmGL.mnuISFinancePos_Click", D::SelectPeriod, 0, E::None, kPos, &kMonth,
         kAsOfMonth},

        {"mnuISRep1", kIncomeStatements, "&Income Statement", "IS_DRUE.rpt", "Income Statement",
         "frmEntPeriod.rptIncomeStatement", D::EntPeriod, 41, E::None, kName, &kIncome, kEnded},
        {"mnuISRep1_1", kIncomeStatements, "Income Statement by &Division", "IS_Division.rpt", "Income Statement",
         "frmEntPeriod.rptIncomeStatement", D::EntPeriod, 42, E::Division, kName, &kIncomeDivision, kEnded},
        {"mnuISRep2", kIncomeStatements, "De&partmental Income Statement", "ISDeptal.rpt",
         "Departmental Income Statement", "frmEntPeriod.rptISDeptal", D::EntPeriod, 43, E::Department, kPos,
         &kMonthDept, kEnded},
        {"mnuISRep3", kIncomeStatements, "Income / &Expense Report of the Month", "ISIncExp.rpt",
         "Income / Expense Report", "frmEntPeriod.rptISIncExp", D::EntPeriod, 44, E::None, kPos, &kMonth,
         "For {month|MMMM yyyy}"},
        {"mnuISRep3_1", kIncomeStatements, "Income / Expense Report, &Year to Date", "ISIncExpAsOf.rpt",
         "Income / Expense Report", "frmEntPeriod.rptISIncExp", D::EntPeriod, 45, E::None, kPos, &kMonth, kAsOfMonth},
        {"mnuISRep4", kIncomeStatements, "Departmental Income / Expense &Schedule", "IncomeSched.rpt",
         "Departmental Income/Expense Report", "frmEntPeriod.rptIncomeSched", D::EntPeriod, 46, E::Department, kPos,
         &kMonthDept, kEnded},
        {"mnuISCompInc", kIncomeStatements, "&Comparative Income", "Report_GL_CompInc.rpt", "Trial Balance",
         "frmGL.mnuISCompInc_Click", D::SelectPeriod, 0, E::None, kPos, &kMonth, kForMonth},
        {"mnuISByMonth", kIncomeStatements, "Income Statement by &Month", "IS_OSQEL.rpt", "Income Statement",
         "frmGL.mnuISByMonth_Click", D::RepPrd, 47, E::None, kPos, &kMonths, kMonthToMonth, MonthHeadings},
        {"mnuISExpByMonth", kIncomeStatements, "Expenses by M&onth", "ISExp_OSQEL.rpt", "Expenses",
         "frmGL.mnuISExpByMonth_Click", D::RepPrd, 48, E::None, kPos, &kMonths, kMonthToMonth, MonthHeadings},
        {"mnuGLExpenses", kIncomeStatements, "&Ledger Expenses Report", "GLExpensesReport.rpt", "GL Expenses Report",
         "frmRepPrd.rptGLExpenses", D::RepPrd, 49, E::None, kPos, &kMonths, kMonthToMonth},

        {"mnuNP_FP", kNonProfit, "Statement of &Financial Position", "ReportStatementFinancialPosition.rpt",
         "Statement of Financial Position", "frmGL.mnuNP_FP_Click", D::SelectPeriod, 0, E::None, kName, &kNamedMonth,
         kAsOfDay},
        {"mnuNP_IEE", kNonProfit, "Statement of &Income, Expenses, and Expenditures",
         "ReportStatementIncomeExpensesExpenditures.rpt", "Statement of Income, Expenses, and Expenditures",
         "frmGL.mnuNP_IEE_Click", D::SelectPeriod, 0, E::None, kName, &kNamedMonth, kEnded},
        {"mnuNP_BSS", kNonProfit, "&Schedules to the Balance Sheet", "ReportBalanceSheetSchedule.rpt",
         "Schedules to the Balance Sheet", "frmGL.mnuNP_BSS_Click", D::EntPeriod, 53, E::Group, kName, &kNamedGroup,
         kAsOfDay},

        {"mnuCashFlow", kCash, "Cash &Flow", "ReportCashFlowStandard.rpt", "Cash Flow Report",
         "frmGL.mnuCashFlow_Click", D::SelectPeriod, 0, E::None, kPos, &kMonth,
         "{pdStart|MMMM d, yyyy} to {pdEnd|MMMM d, yyyy}"},
        {"mnuCashPayment", kCash, "Cash &Payments", "Report_Cash_Payments.rpt", "Cash Payments Report",
         "frmGL.mnuCashPayment_Click", D::SelectDate, 0, E::None, kPos, &kDays, kDayToDay},
        {"mnuReceiptsMonth", kCash, "&Receipts and Disbursements", "GLReceiptsDisbursement.rpt",
         "Monthly Receipts and Disbursement", "frmGL.mnuReceiptsMonth_Click", D::SelectPeriod, 0, E::None, kPos,
         &kMonth, kForMonth},
        {"mnuISCashRecon", kCash, "Cash Re&conciliation", "Report_GL_CashRecon.rpt", "Cash Reconciliation",
         "frmGL.mnuISCashRecon_Click", D::RepPrd, 61, E::None, kPos, &kMonths, kMonthToMonth, MonthHeadings},

        {"mnuIncomerep", kRevenue, "&Monthly Income", "Report_Monthly_Income.rpt", "Monthly of Income Report",
         "frmGL.mnuIncomerep_Click", D::SelectPeriod, 0, E::None, kPos, &kMonth, kEnded},
        {"mnuIncomerepDet", kRevenue, "Monthly Income, &Detailed", "Report_Monthly_Income_Detailed.rpt",
         "Monthly of Income Report - Detailed", "frmGL.mnuIncomerepDet_Click", D::SelectPeriod, 0, E::None, kPos,
         &kMonth, kEnded},
        {"mnuPackageRep", kRevenue, "&Package Income", "ReportPackageIncome.rpt", "Monthly of Package Income Report",
         "frmGL.mnuPackageRep_Click", D::SelectPeriod, 0, E::None, kPos, &kMonths, kForMonth},
        {"mnuPatientNotDischarged", kRevenue, "Patients &Not Discharged", "Report_PatientsNotDischarged.rpt",
         "Patients Not Discharged Accounts Report.rpt", "frmGL.mnuPatientNotDischarged_Click", D::SelectPeriod, 0,
         E::None, kPos, &kPatients, kForMonth},
        {"mnuISDailyRevReport", kRevenue, "Daily &Revenue", "Report_GL_DailyRev.rpt", "Daily Revenue Report",
         "frmGL.mnuISDailyRevReport_Click", D::SelectDate, 0, E::None, kPos, &kDays, kDayToDay},
        {"mnuCompDept", kRevenue, "Revenue and &Expense of Departments", "CompDeptRevenueExpense.rpt",
         "Comparative Departmental Revenue and Expense", "frmGL.mnuCompDept_Click", D::SelectPeriod, 0, E::None, kPos,
         &kMonth, kEnded},

        {"mnuMonthlyFlux", kAnalysis, "Monthly &Flux", "GLMonthlyFlux.rpt", "Monthly Flux Report",
         "frmGL.Report_MonthlyFlux", D::SelectPeriod, 0, E::None, kPos, &kMonth, kForMonth},
        {"mnuAudit", kAnalysis, "&Audit Trail Logs", "AuditTrailLogs.rpt", "Audit Trail Logs.rpt",
         "frmGL.mnuAudit_Click_Err", D::RepDate, 71, E::None, kPos, &kDays, kDayToDay},
    };
}

}  // namespace

const std::vector<StatementRow>& statementRows() {
    static const std::vector<StatementRow> rows = makeRows();
    return rows;
}

const StatementRow* findStatement(std::string_view entry) {
    const auto found = std::find_if(statementRows().begin(), statementRows().end(),
                                    [&](const StatementRow& row) { return row.entry == entry; });
    return found == statementRows().end() ? nullptr : &*found;
}

const StatementRow* findStatement(StatementDialog dialog, int mode) {
    const auto found = std::find_if(statementRows().begin(), statementRows().end(), [&](const StatementRow& row) {
        return row.dialog == dialog && row.mode == mode && mode != 0;
    });
    return found == statementRows().end() ? nullptr : &*found;
}

}  // namespace kv
