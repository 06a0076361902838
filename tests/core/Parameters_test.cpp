// Each key of the program parameters: the property that shows it, its kind, its default, and what a stored value makes
// of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "SilentConnection.h"
#include "core/clsParameters.h"

namespace kv {
namespace {

struct Key {
    const char* code;
    const char* property;  ///< empty where no property shows it
    const char* kind;
    const char* initial;
};

const std::vector<Key>& keys() {
    // clang-format off
    static const std::vector<Key> table = {
        {"ADVANCESTOEMPLOYEECODE", "AdvancesToEmployeeCode", "text", ""},
        {"ADVANCESTOSUPPLIERCODE", "AdvancesToSupplierCode", "text", ""},
        {"ALWAYSENABLETAXENTRYINDISBURSEMENT", "AlwaysEnableTaxEntryInDisbursement", "flag", "N"},
        {"ALWAYSSHOWPRINTDIALOG", "AlwaysShowPrintDialog", "flag", "N"},
        {"APPROVEDBYPOSITION", "ApprovedByPosition", "text", ""},
        {"APSUPPLIERSPARTICULARS", "APSuppliersParticulars", "text", ""},
        {"ARDETAILEDREPORTVERSION", "ARDetailedReportVersion", "text", "2"},
        {"BIRVENDORID", "BIRVendorID", "text", ""},
        {"BOTTREASNAME", "CheckedBy", "text", ""},
        {"CAPITALGOODSINPUTTAXCODE", "CapitalGoodsInputTaxCode", "text", ""},
        {"CHECKFORMAT", "CheckFormat", "text", "000000"},
        {"CHKREGISTERDATEVERSION", "ChkRegisterDateVersion", "text", "1"},
        {"CHKVOUCHERVERSION", "ChkVoucherVersion", "text", ""},
        {"CostOfServiceCode", "CostOfServiceCode", "text", ""},
        {"CRBDETAILEDREPORTVERSION", "CRBDetailedReportVersion", "text", "2"},
        {"CVFORMAT", "CVFormat", "text", "000000"},
        {"CVPARTICULARSFROMAP", "CVParticularsFromAP", "flag", "N"},
        {"CVPREFIX", "CVPrefix", "text", ""},
        {"DEPRECIATIONCODE", "DepreciationCode", "text", ""},
        {"DISCHARGECODE", "DischargeCode", "text", ""},
        {"DISPLAYINVOICEINCVENTRY", "DisplayInvoiceInCvEntry", "flag", "N"},
        {"DOCTORVENDCLASS", "DoctorVendClass", "text", "D"},
        {"DONATIONCODE", "DonationCode", "text", ""},
        {"DONATIONPURCHASETYPE", "DonationPurchaseType", "text", "4"},
        {"DRPAYABLECODE", "DrPayableCode", "text", ""},
        {"DRPAYABLEPHIC", "DrPayablePHICCode", "text", ""},
        {"DRWTAXCODE", "DrWTaxCode", "text", ""},
        {"EMERGENCYPURCHASETYPE", "EmergencyPurchaseType", "text", "2"},
        {"ENABLEAPAPPLYCREDITS", "EnableAPApplyCredits", "flag", "N"},
        {"ENABLEAPDETAILEDSUNDRY", "EnableAPDetailedSundry", "flag", "N"},
        {"ENABLEAPOTHERSENTRY", "EnableAPOthersEntry", "flag", "N"},
        {"ENABLEAPVENTRYREFERENCEFORM", "EnableAPVEntryReferenceForm", "flag", "N"},
        {"ENABLEBIR2307", "EnableBIR2307", "flag", "N"},
        {"ENABLECANCELLEDCHECKSREPORT", "EnableCancelledChecksReport", "flag", "N"},
        {"ENABLECDBDETAILEDSUNDRY", "EnableCDBDetailedSundry", "flag", "N"},
        {"ENABLECHECKENDORSEMENT", "EnableCheckEndorsement", "flag", "N"},
        {"ENABLECOLLECTIONGROUPUPLOAD", "EnableCollectionGroupUpload", "flag", "N"},
        {"ENABLECOLLECTIONUPLOAD", "EnableCollectionUpload", "flag", "Y"},
        {"ENABLECVTAXCOMPUTATIONOVERRIDE", "EnableCVTaxComputationOverride", "flag", "N"},
        {"ENABLEDAILYCHECKCLEARING", "EnableDailyCheckClearing", "flag", "N"},
        {"ENABLEDEBITMEMO", "EnableDebitMemo", "flag", "Y"},
        {"ENABLEDEPOSITENTRYDATEUSER", "EnableDepositEntryDateUser", "flag", "N"},
        {"ENABLEDISCOUNTACCOUNTSINAP", "EnableDiscountAccountsInAP", "flag", "Y"},
        {"ENABLEDUEDATEENTRYINAP", "EnableDueDateEntryInAP", "flag", "Y"},
        {"ENABLEDUPLICATEINVOICEINAPVENTRY", "EnableDuplicateInvoiceInAPVEntry", "flag", "N"},
        {"ENABLEENTRYDISCOUNTENTRYINAP", "EnableEntryDiscountEntryInAP", "flag", "N"},
        {"ENABLEFILEDEPT", "EnableFileDept", "flag", "N"},
        {"ENABLEGLACCTCLASS", "EnableGLAcctClass", "flag", "N"},
        {"ENABLEHOSPITALBATCHUPLOAD", "EnableHospitalBatchUpload", "flag", "N"},
        {"ENABLEMANUALENTRYAPVNUMBER", "EnableManualEntryApvNumber", "flag", "N"},
        {"ENABLEMANUALENTRYCVNUMBER", "EnableManualEntryCvNumber", "flag", "N"},
        {"ENABLEMODEOFPAYMENT", "EnableModeOfPayment", "flag", "N"},
        {"ENABLEMULTIPLERRINVOUCHER", "EnableMultipleRrInVoucher", "flag", "N"},
        {"ENABLEMULTIPLETAXCODES", "EnableMultipleTaxCodes", "flag", "N"},
        {"ENABLEPAYABLETYPEENTRYINAP", "EnablePayableTypeEntryInAP", "flag", "Y"},
        {"ENABLEPAYEEEDITING", "EnablePayeeEditing", "flag", "N"},
        {"ENABLEPFBANKCHARGE", "EnablePFBankCharge", "flag", "N"},
        {"ENABLEPFBANKREMITTANCEEXPORT", "EnablePFBankRemittanceExport", "flag", "N"},
        {"ENABLEPFHANDLING", "EnablePFHandling", "flag", "N"},
        {"ENABLEPFHOUSECASE", "EnablePFHouseCase", "flag", "N"},
        {"ENABLEPFPHIC", "EnablePFPHIC", "flag", "N"},
        {"ENABLEPFUPLOADDATERANGE", "EnablePFUploadDateRange", "flag", "N"},
        {"ENABLEPFVOUCHER", "EnablePFVoucher", "flag", "N"},
        {"ENABLEPHARMACYCOLLECTIONUPLOAD", "EnablePharmacyCollectionUpload", "flag", "N"},
        {"ENABLEREFUNDRATEENTRY", "EnableRefundRateEntry", "flag", "N"},
        {"ENABLEREPORTADJUSTMENTAP", "EnableReportAdjustmentAP", "flag", "N"},
        {"ENABLEREPORTARPATIENTS", "EnableReportARPatients", "flag", "N"},
        {"ENABLEREPORTARSUMMARYADJUSTMENTS", "EnableReportARSummaryAdjustments", "flag", "N"},
        {"ENABLEREPORTFIXEDASSETSCHEDULE", "EnableReportFixedAssetSchedule", "flag", "N"},
        {"ENABLEREPORTINVENTORYCSR", "EnableReportInventoryCSR", "flag", "N"},
        {"ENABLEREPORTPHARAMCYINVENTORY", "EnableReportPharamcyInventory", "flag", "N"},
        {"ENABLEREPORTREFVERIFICATION", "EnableReportRefVerification", "flag", "N"},
        {"ENABLEREVENUECLASS", "EnableRevenueClass", "flag", "N"},
        {"ENABLEREVENUEGROUPUPLOAD", "EnableRevenueGroupUpload", "flag", "N"},
        {"ENABLEREVENUEUPLOAD", "EnableRevenueUpload", "flag", "Y"},
        {"ENABLETERMSENTRYINAP", "EnableTermsEntryInAP", "flag", "Y"},
        {"ENABLETRADEREPORT", "EnableTradeReport", "flag", "N"},
        {"ENABLETRANSACTIONPOSTING", "EnableTransactionPosting", "flag", "N"},
        {"ENABLEVATINFIXEDASSETSAPJOURNALENTRY", "EnableVatInFixedAssetsApJournalEntry", "flag", "N"},
        {"ENABLEWTAXENTRYINAP", "EnableWTaxEntryinAP", "flag", "N"},
        {"ENABLE_GL_BS2", "Enable_GL_BS2", "flag", "Y"},
        {"ENABLE_GL_CASHRECON", "Enable_GL_CashRecon", "flag", "N"},
        {"ENABLE_GL_DAILYREVREPORT", "Enable_GL_DailyRevReport", "flag", "N"},
        {"ENABLE_GL_ISREP2", "Enable_GL_ISRep2", "flag", "Y"},
        {"ENABLE_GL_ISREP3", "Enable_GL_ISRep3", "flag", "Y"},
        {"ENABLE_GL_ISREP4", "Enable_GL_ISRep4", "flag", "Y"},
        {"FIXEDASSETCODELINK", "FixedAssetCodeLink", "text", "CAT"},
        {"FIXEDASSETCSTCTR", "FixedAssetCstCtr", "text", ""},
        {"FREEGOODSCODE", "FreeGoodsCode", "text", ""},
        {"FREEGOODSPURCHASETYPE", "FreeGoodsPurchaseType", "text", "3"},
        {"ISBANKDEPOSITINJV", "IsBankDepositInJV", "flag", "N"},
        {"ISCHECKMAINENTRY", "IsCheckMainEntry", "flag", "N"},
        {"ISDIRECTCHECKRELEASE", "IsDirectCheckRelease", "flag", "N"},
        {"ISINPUTTAXACCOUNTBASEDINPAYABLETYPE", "", "flag", "N"},
        {"ISINVENTORYBASEDONCLASSIFICATION", "IsInventoryBasedOnClassification", "flag", "N"},
        {"ISINVENTORYBASEDONLOCATION", "IsInventoryBasedOnLocation", "flag", "N"},
        {"JOINTVENTUREDISCOUNT", "EnableRevCodeDisc", "flag", "N"},
        {"JVFORMAT", "JVFormat", "text", "0"},
        {"JVPREFIX", "JVPrefix", "text", ""},
        {"mvarEnable_GL_ATL", "Enable_GL_ATL", "flag", "Y"},
        {"NOTEDBY", "NotedBy", "text", ""},
        {"NOTEDBYPOSITION", "NotedByPosition", "text", ""},
        {"PFBANKCHARGECODE", "PFBankChargeCode", "text", ""},
        {"PFHANDLINGCODE", "PFHandlingCode", "text", ""},
        {"PFHOUSECASECODE", "PFHouseCaseCode", "text", ""},
        {"PRINTCVNOFORMAT", "PrintCVNoFormat", "text", "DMM-###-YY"},
        {"PRINTJVBATCHFORMAT", "PrintJVBatchFormat", "text", "JVDMM-###-YY"},
        {"PRINTVOUCHERFORMAT", "PrintVoucherFormat", "text", "APDMM-###-YY"},
        {"PURCHASEDISCOUNTCODE", "PurchaseDiscountCode", "text", ""},
        {"ReadersFeeAPCode", "ReadersFeeAPCode", "text", ""},
        {"READERSFEECODE", "ReadersFeeCode", "text", ""},
        {"REGULARPURCHASETYPE", "RegularPurchaseType", "text", "1"},
        {"REPORTACCOUNTSPAYABLEAGING", "ReportAccountsPayableAging", "text", "ReportAccountsPayableAging.rpt"},
        {"REPORTAPDETAILEDPAGES", "ReportAPDetailedPages", "number", "1"},
        {"REPORTAPVOUCHER", "ReportAPVoucher", "text", "ReportAPVoucher.rpt"},
        {"REPORTARDETAILEDPAGES", "ReportARDetailedPages", "number", "0"},
        {"REPORTCDDETAILEDPAGES", "ReportCDDetailedPages", "number", "1"},
        {"REPORTVAT", "ReportVAT", "text", "VAT.rpt"},
        {"REVIEWEDBYPOSITION", "ReviewedByPosition", "text", ""},
        {"REVIEWNAME", "ReviewedBy", "text", ""},
        {"REVINOUT", "RevenueSeparateInOutMapping", "flag", "N"},
        {"STALECHECKSAPCODE", "StaleChecksAPCode", "text", ""},
        {"STOCKWDACCT", "StockWDAcct", "text", ""},
        {"USEINVOICEDATEASVOUCHERDATE", "UseInvoiceDateAsVoucherDate", "flag", "N"},
        {"USELISTCDB", "UseListCDB", "flag", "Y"},
        {"USEPRINTCVNO", "UsePrintCVNo", "flag", "N"},
        {"USEPRINTJVBATCH", "UsePrintJVBatch", "flag", "N"},
        {"USEPRINTVOUCHER", "UsePrintVoucher", "flag", "N"},
        {"USESEPARATEPFSERIES", "UseSeparatePFSeries", "flag", "N"},
        {"VERIFIEDBYPOSITION", "VerifiedByPosition", "text", ""},
        {"VOUCHERFORMAT", "VoucherFormat", "text", "000000"},
        {"VOUCHERPREFIX", "VoucherPrefix", "text", ""},
    };
    // clang-format on
    return table;
}

std::string textOf(bool value) { return value ? "Y" : "N"; }
std::string textOf(int value) { return std::to_string(value); }
std::string textOf(const std::string& value) { return value; }

/// The properties of the class by their names.
const std::map<std::string, std::function<std::string(const clsParameters&)>>& properties() {
    static const std::map<std::string, std::function<std::string(const clsParameters&)>> all = {
#define KV_FLAG(code, property, initial) {#property, [](const clsParameters& p) { return textOf(p.property()); }},
#define KV_NUMBER(code, property, initial) KV_FLAG(code, property, initial)
#define KV_TEXT(code, property, initial) KV_FLAG(code, property, initial)
#define KV_FORMAT(code, property, initial) KV_FLAG(code, property, initial)
#include "core/Parameters.def"
#undef KV_FLAG
#undef KV_NUMBER
#undef KV_TEXT
#undef KV_FORMAT
    };
    return all;
}

bool isMixed(std::string_view code) {
    return std::any_of(code.begin(), code.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

/// A stored value, and what the property then is.
using Stored = std::vector<std::pair<const char*, const char*>>;

Stored storedOf(const Key& key) {
    const std::string_view kind = key.kind;
    const std::string_view code = key.code;
    if (kind == "flag") return {{"Y", "Y"}, {"N", "N"}, {"Y", "Y"}, {"y", "N"}, {"", "N"}};
    if (kind == "number") return {{"7", "7"}, {"3.9", "3"}, {"x", "0"}, {"", "0"}};
    const bool keeps = code == "CHECKFORMAT" || code == "CVFORMAT" || code == "VOUCHERFORMAT" || code == "JVFORMAT";
    return {{" as it stands ", " as it stands "}, {"", keeps ? " as it stands " : ""}};
}

TEST(Parameters, EachKeyHasItsPropertyItsKindAndItsDefault) {
    for (const Key& key : keys()) {
        if (!*key.property) continue;
        const auto found = properties().find(key.property);
        ASSERT_NE(found, properties().end()) << key.property;
        SilentConnection connection;
        clsParameters p(connection);
        EXPECT_EQ(found->second(p), key.initial) << key.property;
        for (const auto& [stored, becomes] : storedOf(key)) {
            p.take(key.code, stored);
            const std::string wanted = isMixed(key.code) ? key.initial : becomes;
            EXPECT_EQ(found->second(p), wanted) << key.code << " stored as \"" << stored << '"';
            EXPECT_EQ(p.textOf(key.code), isMixed(key.code) ? stored : becomes) << key.code;
        }
        p.reset();
        EXPECT_EQ(found->second(p), key.initial) << key.property << " after a reload";
    }
    EXPECT_EQ(std::count_if(keys().begin(), keys().end(), [](const Key& key) { return isMixed(key.code); }), 3);
    EXPECT_EQ(properties().size(), keys().size()) << "a property that has no row here";
}

TEST(Parameters, CodesInAnyLetterCaseAreMetAndTheLaterRowWins) {
    SilentConnection connection;
    clsParameters p(connection);
    p.take("enabledebitmemo", "N");
    EXPECT_FALSE(p.EnableDebitMemo());
    p.take("PrintJVBatchFormat", "J#");
    p.take("PRINTJVBATCHFORMAT", "K#");
    EXPECT_EQ(p.PrintJVBatchFormat(), "K#");
    p.take("NOSUCHKEY", "Y");
    EXPECT_EQ(p.textOf("NoSuchKey"), "Y");
    EXPECT_EQ(p.textOf("NEITHERTHIS"), "");
    p.take("REPORTARDETAILEDPAGES", "70000");
    EXPECT_EQ(p.ReportARDetailedPages(), 4464) << "a small integer";
}

TEST(Parameters, TwoDependOnTheHospitalAndTwoAreSetByCode) {
    SilentConnection connection;
    clsParameters p(connection);
    EXPECT_TRUE(p.AlwaysShowPrintDialog("RDPT"));
    EXPECT_FALSE(p.AlwaysShowPrintDialog("DEMO"));
    EXPECT_TRUE(p.EnableHospitalBatchUpload("BYQ"));
    EXPECT_FALSE(p.EnableHospitalBatchUpload("RDPT"));
    EXPECT_FALSE(p.EnableFileDept("BYQ"));
    EXPECT_FALSE(p.EnableModeOfPayment("RDPT"));
    p.setEnableCancelledChecksReport(true);
    p.setAlwaysEnableTaxEntryInDisbursement(true);
    EXPECT_TRUE(p.EnableCancelledChecksReport() && p.AlwaysEnableTaxEntryInDisbursement());
    EXPECT_FALSE(p.EnableReportARSummaryPaymentAllocation());
}

}  // namespace
}  // namespace kv
