#include "ledger/HospitalSettings.h"

#include <algorithm>

#include "core/DocumentNumbers.h"
#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

using Store = Setting::Store;

constexpr long kErrUnknownSetting = 5;
constexpr std::size_t kLongestNumber = 30;  ///< characters that a printed number may have
constexpr std::size_t kLongestLog = 500;
constexpr int kSampleSeries = 7;
constexpr const char* kSampleNumber = "12";

constexpr CodeSetting sys(const char* key, bool mayBeGroup = false) { return {Store::Sys, key, mayBeGroup}; }
constexpr CodeSetting parameter(const char* key) { return {Store::Parameter, key}; }

}  // namespace

// clang-format off
const std::vector<Setting>& hospitalSettings() {
    static const std::vector<Setting> settings = {
        {Store::Sys, "Company", "Hospital"},
        {Store::Sys, "Address1", "Address"},
        {Store::Sys, "PreparedBy", "Prepared by"},
        {Store::Sys, "PostedBy", "Posted by"},
        {Store::Sys, "VerifiedBy", "Verified by"},
        {Store::Sys, "ApprovedBy", "Approved by"},
        {Store::Sys, "CDBClerk", "Disbursement clerk"},
        {Store::Sys, "CDBClerkName", "Name of the disbursement clerk"},
        {Store::Sys, "CSHAcct", "GL Bank Code"},
        {Store::Sys, "APAcct", "Voucher Payable"},
        {Store::Sys, "WTax", "Withholding Tax"},
        {Store::Sys, "EWTax", "Expanded Tax"},
        {Store::Sys, "VATCode", "Input Tax Code"},
        {Store::Sys, "Vatable", "Vatable Code"},
        {Store::Sys, "ARAcct", "A/R Closing Acct"},
        {Store::Sys, "CRBAcct", "CRB Closing Acct"},
        {Store::Sys, "ProfitLoss", "Income Acct"},
        {Store::Sys, "RetainedEarning", "Retained Earnings"},
        {Store::Sys, "FixedAsset", "Fixed Assets"},
        {Store::Sys, "AEAcct", "Accrued Expense"},
        {Store::Sys, "payAcct", "Payroll"},
        {Store::Sys, "CashInBank", "Cash In Bank"},
        {Store::Sys, "YearType", "Year", "", &kYearPair},
        {Store::Sys, "sw_CheckNo", "Check numbers", "", &kSequencePair},
        {Store::Sys, "sw_ChkPrint", "Checks print on", "", &kPaperPair},
        {Store::Sys, "sw_APVPrint", "AP vouchers print on", "", &kPaperPair},
        {Store::Sys, "sw_APVNo", "Internal number of AP vouchers", "", &kVoucherKeyPair},
        {Store::Sys, "sw_Compare", "Statements compare with", "", &kComparePair},
        {Store::Sys, "sw_wDirect", "Disbursement", "", &kDirectPair},
        {Store::Sys, "SW_CV", "Check vouchers", "", &kSequencePair},
        {Store::Parameter, "PurchaseDiscountCode", "Purchase Discount", "Purchase Discount account code."},
        {Store::Parameter, "FreeGoodsCode", "Free Goods", "Free Goods account code"},
        {Store::Parameter, "DonationCode", "Donations", "Donations account code"},
        {Store::Parameter, "DischargeCode", "A/R Discharge", "Default GL used for receivables of discharged patients"},
        {Store::Parameter, "DrPayableCode", "Dr. Payable", "Doctor payable code"},
        {Store::Parameter, "DrWTaxCode", "Dr. W/Tax", "Doctor withholding tax code"},
        {Store::Parameter, "ReadersFeeCode", "Readers Fee Payable", "Readers Fee payable code"},
        {Store::Parameter, "CostOfServiceCode", "Cost of Service", "Cost of Service code"},
        {Store::Parameter, "ReadersFeeAPCode", "Readers Fee AP", "Readers Fee AP code"},
        {Store::Parameter, "AdvancesToSupplierCode", "Advances to Supplier", "Advances to Supplier code"},
        {Store::Parameter, "AdvancesToEmployeeCode", "Advances to Employee", "Advances to Employee code"},
        {Store::Parameter, "StaleChecksAPCode", "Stale Checks AP", "Stale Checks AP account code"},
        {Store::Parameter, "PFHandlingCode", "PF Handling", "Professional fee handling account code"},
        {Store::Parameter, "PFBankChargeCode", "PF Bank Charge", "Professional fee bank charge account code"},
        {Store::Parameter, "PFHouseCaseCode", "PF House Case", "Professional fee house case account code"},
        {Store::Parameter, "DepreciationCode", "Depreciation Code", "Depreciation code"},
        {Store::Parameter, "CapitalGoodsInputTaxCode", "Input Tax Code (Capital Goods)",
         "Input tax account for capital goods"},
        {Store::Parameter, "UsePrintVoucher", "AP voucher numbers",
         "Use formatted number for AP Voucher", &kNumberingPair},
        {Store::Parameter, "PrintVoucherFormat", "AP voucher mask", "AP voucher number format"},
        {Store::Parameter, "VoucherPrefix", "AP voucher prefix", "Prefix for AP voucher number - sequential"},
        {Store::Parameter, "VoucherFormat", "AP voucher form", "AP voucher number format - sequential"},
        {Store::Parameter, "UsePrintCVNo", "Check voucher numbers",
         "Use formatted number for Check Voucher", &kNumberingPair},
        {Store::Parameter, "PrintCVNoFormat", "Check voucher mask", "Check voucher number format"},
        {Store::Parameter, "CVPrefix", "Check voucher prefix", "Prefix for CV number - sequential"},
        {Store::Parameter, "CVFormat", "Check voucher form", "CV number format - sequential"},
        {Store::Parameter, "UsePrintJVBatch", "Journal voucher numbers",
         "Use formatted number for JV", &kNumberingPair},
        {Store::Parameter, "PrintJVBatchFormat", "Journal voucher mask", "JV batch format"},
        {Store::Parameter, "JVPrefix", "Journal voucher prefix", "Prefix for JV number - sequential"},
        {Store::Parameter, "JVFormat", "Journal voucher form", "JV number format - sequential"},
        {Store::Parameter, "VerifiedByPosition", "Position of who verifies", "Position of person to verify"},
        {Store::Parameter, "NotedBy", "Noted by", "Person to note"},
        {Store::Parameter, "NotedByPosition", "Position of who notes", "Position of person to note"},
        {Store::Parameter, "ReviewName", "Reviewed by", "Person to review"},
        {Store::Parameter, "ReviewedByPosition", "Position of who reviews", "Postion of person to review"},
        {Store::Parameter, "ApprovedByPosition", "Position of who approves", "Postion of person to approve"},
        {Store::Parameter, "DrPayablePHIC", "Dr. Payable (PHIC)", "Doctor payable code for PHIC"},
        {Store::Registration, "TIN", "TIN"},
        {Store::Registration, "RegisteredName", "Registered name"},
        {Store::Registration, "LastName", "Last name of the registered"},
        {Store::Registration, "FirstName", "First name of the registered"},
        {Store::Registration, "MiddleName", "Middle name of the registered"},
        {Store::Registration, "TradeName", "Trade name"},
        {Store::Registration, "Address1", "Registered address"},
        {Store::Registration, "Address2", "Registered address, second line"},
        {Store::Registration, "RDOCode", "RDO code"},
        {Store::Registration, "Representative", "Representative"},
        {Store::Registration, "RepresentativeTitle", "Title of the representative"},
        {Store::Registration, "RepresentativeTIN", "TIN of the representative"},
        {Store::Registration, "ZipCode", "ZIP code"},
        {Store::Parameter, "BIRVendorID", "Vendor of the tax bureau", "Vendor ID for BIR"},
    };
    return settings;
}

const std::vector<CodeSetting>& codeSettings() {
    static const std::vector<CodeSetting> rows = {
        sys("CSHAcct"),
        sys("APAcct"),
        sys("WTax"),
        sys("VATCode"),
        parameter("CapitalGoodsInputTaxCode"),
        sys("Vatable"),
        sys("CashInBank"),
        sys("ARAcct"),
        sys("CRBAcct"),
        sys("RetainedEarning"),
        sys("FixedAsset", true),
        sys("ProfitLoss"),
        sys("EWTax"),
        sys("AEAcct"),
        parameter("PurchaseDiscountCode"),
        parameter("FreeGoodsCode"),
        parameter("DonationCode"),
        sys("payAcct"),
        parameter("DischargeCode"),
        parameter("DrPayableCode"),
        parameter("DrPayablePHIC"),
        parameter("DrWTaxCode"),
        parameter("ReadersFeeCode"),
        parameter("CostOfServiceCode"),
        parameter("ReadersFeeAPCode"),
        parameter("AdvancesToSupplierCode"),
        parameter("AdvancesToEmployeeCode"),
        parameter("StaleChecksAPCode"),
        parameter("PFHandlingCode"),
        parameter("PFBankChargeCode"),
        parameter("PFHouseCaseCode"),
        parameter("DepreciationCode"),
    };
    return rows;
}
// clang-format on

bool SettingPair::isFirst(std::string_view stored) const {
    return elseFirst ? !equalsNoCase(stored, second.stored) : stored == first.stored;
}

std::size_t settingAt(Setting::Store store, std::string_view key) {
    const std::vector<Setting>& all = hospitalSettings();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Setting& s) { return s.store == store && key == s.key; });
    if (found == all.end()) throw Error(kErrUnknownSetting, "HospitalSettings", "No setting " + std::string(key) + ".");
    return static_cast<std::size_t>(found - all.begin());
}

const Setting& settingOf(Setting::Store store, std::string_view key) {
    return hospitalSettings()[settingAt(store, key)];
}

namespace {

std::string optionOf(const SettingPair& pair, std::string_view stored) {
    return pair.isFirst(stored) ? pair.first.stored : pair.second.stored;
}

std::string shown(const Setting& setting, const std::string& value) {
    if (!setting.pair) return value;
    return setting.pair->isFirst(value) ? setting.pair->first.caption : setting.pair->second.caption;
}

/// A statement of the save: sent, then the connection's errors are looked at.
void send(Session& session, std::string_view statement) {
    session.cn().Execute(statement);
    module1::CheckErrors(session.cn());
}

void saveSys(Session& session, const SettingValues& values) {
    Recordset row = session.cn().OpenTable("Sys", "", {});
    if (row.eof()) return;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Setting& setting = hospitalSettings()[i];
        if (setting.store == Store::Sys) row.set(setting.key, Value(values[i]));
    }
    row.update();
    module1::CheckErrors(session.cn());
}

void saveParameter(Session& session, const Setting& setting, const std::string& value) {
    session.Parameters.UpdateParameters(setting.key, value, setting.description);
    module1::CheckErrors(session.cn());
}

/// The registration and the vendor that goes with it.
void saveRegistration(Session& session, const SettingValues& values) {
    traced("frmHospitalInfo.Save_BIRRegistration", std::source_location::current(), [&] {
        std::string columns;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Setting& setting = hospitalSettings()[i];
            if (setting.store != Store::Registration) continue;
            columns +=
                (columns.empty() ? "" : ", ") + sqlName(setting.key) + " = '" + module1::SQLString(values[i]) + "'";
        }
        send(session, "UPDATE tbBIRRegistration SET " + columns);
        const std::size_t vendor = settingAt(Store::Parameter, "BIRVendorID");
        saveParameter(session, hospitalSettings()[vendor], values[vendor]);
    });
}

void logChanges(Session& session, const std::vector<Change>& changes) {
    for (const Change& change : changes) {
        std::string text = "Edited Program Settings | " + change.What + " : " + change.Before + " > " + change.After;
        module1::Save_AuditLog_Err(session, "SYS", escaped(change.What), "", escaped(midChars(text, 0, kLongestLog)));
    }
}

Recordset LoadBIRRegistration(Session& session) {
    return traced("frmHospitalInfo.LoadBIRRegistration", std::source_location::current(),
                  [&] { return session.cn().Open("select * from tbBIRRegistration"); });
}

bool has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

}  // namespace

SettingValues StoredSettings(Session& session, std::source_location at) {
    return traced("frmHospitalInfo.StoredSettings", at, [&] {
        // the session's own parameters stay as they were loaded
        clsParameters parameters(session.cn());
        parameters.LoadParameters(session.ClientCode());
        const Recordset sysRow = session.cn().Open("Select * from Sys");
        const Recordset registration = LoadBIRRegistration(session);
        SettingValues values;
        for (const Setting& setting : hospitalSettings()) {
            const Recordset& row = setting.store == Store::Sys ? sysRow : registration;
            std::string value = setting.store == Store::Parameter ? parameters.textOf(setting.key)
                                : row.eof()                       ? std::string()
                                                                  : row[setting.key].text();
            values.push_back(setting.pair ? optionOf(*setting.pair, value) : std::move(value));
        }
        return values;
    });
}

std::vector<Change> ChangesOf(const SettingValues& before, const SettingValues& after) {
    std::vector<Change> changes;
    for (std::size_t i = 0; i < hospitalSettings().size(); ++i) {
        if (before.at(i) == after.at(i)) continue;
        const Setting& setting = hospitalSettings()[i];
        changes.push_back({setting.label, shown(setting, before[i]), shown(setting, after[i])});
    }
    return changes;
}

void SaveSettings(Session& session, const SettingValues& values, std::source_location at) {
    traced("frmHospitalInfo.Save_Routine", at, [&] {
        Transaction save(session.cn());
        const std::vector<Change> changes = ChangesOf(StoredSettings(session), values);
        saveSys(session, values);
        const std::size_t vendor = settingAt(Store::Parameter, "BIRVendorID");
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Setting& setting = hospitalSettings()[i];
            if (setting.store == Store::Parameter && i != vendor) saveParameter(session, setting, values[i]);
        }
        saveRegistration(session, values);
        logChanges(session, changes);
        save.commit();
        ResetGlobalVariables(session);
    });
}

std::string taxNumber(std::string_view typed) {
    const std::string digits = replaceAll(trimBlanks(typed), "-", "");
    if (digits.find_first_not_of("0123456789") != std::string::npos) return {};
    if (digits.size() == 9) return digits.substr(0, 3) + "-" + digits.substr(3, 3) + "-" + digits.substr(6);
    return digits.size() >= 12 && digits.size() <= 14 ? module1::FormatTin(digits) : std::string();
}

NumberSample maskSample(std::string_view mask, bool fourDigits, const Date& day) {
    NumberSample sample;
    sample.text =
        maskSeries(maskDate(mask, day), kSampleSeries, fourDigits ? SeriesDigits::ThreeOrFour : SeriesDigits::Three);
    if (!has(mask, "###")) {
        sample.warning = "no ###: one number for the whole month";
    } else if (!has(mask, "MM") || !has(mask, "YY")) {
        sample.warning = has(mask, "YY") ? "no MM: comes again each month" : "no YY: comes again each year";
    }
    sample.tooLong = charCount(sample.text) > kLongestNumber;
    return sample;
}

NumberSample formSample(std::string_view prefix, std::string_view form, const Date& day) {
    NumberSample sample;
    sample.text = std::string(prefix) + maskDate(maskNumber(form, kSampleNumber), day);
    if (!has(form, "0")) sample.warning = "no 0: one number for all";
    sample.tooLong = charCount(sample.text) > kLongestNumber;
    return sample;
}

}  // namespace kv
