#pragma once
// clsParameters: the rows of table PARAMETERS as typed properties, each with a default.

#include <map>
#include <source_location>
#include <string>
#include <string_view>

#include "platform/data/Connection.h"

namespace kv {

class clsParameters {
public:
    explicit clsParameters(Connection& connection) : connection_(connection) {}

    /// Sets every property to its default, then reads the rows of the client and those without one.
    void LoadParameters(std::string_view ClientCode, std::source_location at = std::source_location::current());
    /// Stores one row. The properties stay as they are until the next load.
    void UpdateParameters(std::string_view Code, std::string_view NewValue, std::string_view Description,
                          std::source_location at = std::source_location::current());
    /// Takes one stored row. Unknown keys are ignored.
    void take(std::string_view code, std::string_view stored);
    void reset();
    /// The value of a key as a text, a flag as "Y" or "N"; what is stored for a key that no property takes.
    std::string textOf(std::string_view code) const;

#define KV_FLAG(code, property, initial) \
    bool property() const { return values_.property; }
#define KV_NUMBER(code, property, initial) \
    int property() const { return values_.property; }
#define KV_TEXT(code, property, initial) \
    const std::string& property() const { return values_.property; }
#define KV_FORMAT(code, property, initial) KV_TEXT(code, property, initial)
#include "core/Parameters.def"
#undef KV_FLAG
#undef KV_NUMBER
#undef KV_TEXT
#undef KV_FORMAT

    // properties that take the client's code; two of them depend on it
    bool AlwaysShowPrintDialog(std::string_view ClientCode) const {
        return ClientCode == "RDPT" || AlwaysShowPrintDialog();
    }
    bool EnableHospitalBatchUpload(std::string_view ClientCode) const {
        return ClientCode == "BYQ" || EnableHospitalBatchUpload();
    }
    bool EnableFileDept(std::string_view /*ClientCode*/) const { return EnableFileDept(); }
    bool EnableModeOfPayment(std::string_view /*ClientCode*/) const { return EnableModeOfPayment(); }

    // from SYS
    const std::string& VerifiedBy() const { return values_.VerifiedBy; }
    const std::string& ApprovedBy() const { return values_.ApprovedBy; }
    /// No key sets it.
    bool EnableReportARSummaryPaymentAllocation() const { return false; }

    // written by code
    void setEnableCancelledChecksReport(bool on) { values_.EnableCancelledChecksReport = on; }
    void setAlwaysEnableTaxEntryInDisbursement(bool on) { values_.AlwaysEnableTaxEntryInDisbursement = on; }

private:
    void fillFromOtherTables();

    struct Values {
#define KV_FLAG(code, property, initial) bool property = initial;
#define KV_NUMBER(code, property, initial) int property = initial;
#define KV_TEXT(code, property, initial) std::string property = initial;
#define KV_FORMAT(code, property, initial) KV_TEXT(code, property, initial)
#include "core/Parameters.def"
#undef KV_FLAG
#undef KV_NUMBER
#undef KV_TEXT
#undef KV_FORMAT
        std::string VerifiedBy;
        std::string ApprovedBy;
    };
    Connection& connection_;
    Values values_;
    std::map<std::string, std::string> stored_;  ///< what was read, by code in upper case
};

}  // namespace kv
