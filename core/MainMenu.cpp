#include "core/MainMenu.h"

namespace kv {

const std::vector<BookEntry>& bookEntries() {
    static const std::vector<BookEntry> books = {
        {"cmdAP", "mnuAP", "AP", "Accounts Payable", "AP", "APDT", "Accounts\n&Payable", "book-ap", "frmAP", "Open AP",
         "frmAPVEntry"},
        {"cmdCDB", "mnuCDB", "CD", "Cash Disbursement Book", "CDB", "CDBDT", "Cash\n&Disbursements", "book-cdb",
         "frmCDB", "Open CDB", "frmChkVoucherEntry"},
        {"cmdCRB", "mnuCRB", "CR", "Cash Receipts Book", "CRB", "CRBDT", "Cash\n&Receipts", "book-crb", "frmGeneral",
         "Open CRB", "frmJournEntry"},
        {"cmdAR", "mnuAR", "AR", "Accounts Receivable Book", "AR", "ARDT", "&Accounts\nReceivable", "book-ar",
         "frmGeneral", "Open A/R", "frmJournEntry"},
        {"cmdJV", "mnuJV", "JV", "Journal Vouchers Book", "JV", "JVDT", "&Journal\nVouchers", "book-jv", "frmGeneral",
         "Open JV", "frmJournEntry"},
        {"cmdGL", "mnuGL", "GL", "General Ledger", "GLBatch", "Batchdet", "&General\nLedger", "book-gl", "frmGL",
         "Open GL", "frmJournEntry"},
    };
    return books;
}

const BookEntry* findBook(std::string_view code) {
    for (const BookEntry& book : bookEntries()) {
        if (book.code == code) return &book;
    }
    return nullptr;
}

const std::vector<std::vector<MaintenanceEntry>>& maintenanceSections() {
    static const std::vector<std::vector<MaintenanceEntry>> sections = {
        {
            {"mnuFileAccounts", "&Chart of Accounts", "frmBuildAcct", "Open File Maintenance | Chart of Accounts"},
            {"mnuFileDepartment", "C&ost Centers", "frmBuildCstCtr", "Open File Maintenance | Cost Centers"},
            {"mnuFileDept", "&Departments", "frmBuildDept", "Open File Maintenance | Department"},
            {"mnuFileRevenue", "&Revenue Centers", "frmBuildRevenue", "Open File Maintenance | Revenue Centers"},
            {"mnuFilePeriod", "P&eriods", "frmPeriod", "Open File Maintenance | Periods"},
            {"mnuFiscalYears", "&Fiscal Years", "frmFiscalYear", "Open File Maintenance | Fiscal Years"},
        },
        {
            {"mnuFileVendors", "&Vendors", "frmBuildVendors", "Open File Maintenance | Vendors"},
            {"mnuFileTerms", "&Terms", "frmBuildTerms", "Open File Maintenance | Terms"},
            {"mnuFilePayable", "P&ayable Types", "frmBuildPayables", "Open File Maintenance | Payable Type"},
            {"mnuFileBank", "&Bank Accounts", "frmBuildBank", "Open File Maintenance | Bank Accounts"},
            {"mnuFileEquity", "E&quity", "frmBuildEquity", "Open File Maintenance | Equity"},
            {"mnuWTax", "Ta&x Account Codes", "frmTaxAccountCode", "Open Tax Account Code"},
            {"mnuPCmaitenance", "Pett&y Cash", "frmBuildPCFundings", "Open File Maintenance Petty Cash"},
            {"mnuModeOfPayment", "&Mode of Payment", "frmBuildMOP", "Open File Maintenance | Mode of Payment"},
        },
        {
            {"mnuImportMasters", "&Import from CSV...", "frmImportMasters", "Open File Maintenance | Import"},
        },
    };
    return sections;
}

const std::vector<MaintenanceEntry>& hospitalLinkEntries() {
    static const std::vector<MaintenanceEntry> links = {
        {"mnuPayroll", "&Payroll Links", "frmBuildPayroll", "Open File Maintenance HL > Payroll Links"},
        {"mnuLinkAR", "&A/R Company Codes", "frmBuildCompanyClass", "Open File Maintenance HL > AR Company Codes"},
        {"mnuLinkRevenue", "&Revenue Codes", "frmRevenueCodes", "Open File Maintenance HL > Revenue Codes"},
        {"mnuLinkSupplier", "&Suppliers", "frmBuildSupplier", "Open File Maintenance HL > Suppliers"},
        {"mnuLinkSupplierFA", "&Fixed Asset Suppliers", "frmBuildSupplierFA",
         "Open File Maintenance HL > Fixed Asset Supplier"},
        {"mnuFileDoctors", "&Doctors", "frmBuildDoctor", "Open File Maintenance HL > Doctors"},
        {"mnuLinkBank", "Depository &Banks", "frmBuildBankDeposit", "Open File Maintenance HL > Depository Banks"},
        {"mnuLinkInvLocation", "&Inventory Locations", "frmBuildInvLocation", "Open File Maintenance HL > InvLocation"},
        {"mnuLinkInvClassification", "Inventory &Classifications", "frmBuildInvClass",
         "Open File Maintenance HL > InvClass"},
        {"mnuLinkInvClassificationLocation", "Classifications by &Location", "frmBuildInvClassMatrix",
         "Open File Maintenance HL > InvClassMatrix"},
        {"mnuBuildFixedAssetDepartment", "Fixed Asset D&epartments", "frmBuildFixedAssetDepartment",
         "Open File Maintenance HL > FixedAsset Department"},
        {"mnuBuildFixedAssetCategory", "Fixed Asset Ca&tegories", "frmBuildFixedAssetCategory",
         "Open File Maintenance HL > FixedAssetCategory"},
        {"mnuLinkChargeSlipSuffix", "Charge Slip Suffi&xes", "frmBuildChargeSlip",
         "Open File Maintenance HL > Charge Slip Suffix"},
        {"mnuLinkCards", "Car&ds", "frmBuildCard", "Open File Maintenance HL > Cards"},
    };
    return links;
}

const std::vector<RightEntry>& rightEntries() {
    static const std::vector<RightEntry> rights = {
        {"AP", {"mnuAP", "cmdAP"}},
        {"CDB", {"mnuCDB", "cmdCDB"}},
        {"AR", {"mnuAR", "cmdAR"}},
        {"CRB", {"mnuCRB", "cmdCRB"}},
        {"JV", {"mnuJV", "cmdJV"}},
        {"GL", {"mnuGL", "cmdGL"}},
        {"COA", {"mnuFileAccounts"}},
        {"PER", {"mnuFilePeriod"}},
        {"CC", {"mnuFileDepartment"}},
        {"VEND", {"mnuFileVendors"}},
        {"EQ", {"mnuFileEquity"}},
        {"LINK3", {"mnuPayroll"}},
        {"LINK7", {"mnuLinkInvClassification"}},
        {"HLINK", {"cmdHospital"}},
        {"UL", {"mnuUserLogs"}},
    };
    return rights;
}

std::string_view rightOf(std::string_view control) {
    for (const RightEntry& entry : rightEntries()) {
        for (const char* name : entry.controls) {
            if (name == control) return entry.right;
        }
    }
    return {};
}

}  // namespace kv
