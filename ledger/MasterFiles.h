#pragma once
// MasterFiles: the master files of the ledger as data for the one master-file screen.

#include "reporting/MasterFile.h"

namespace kv {

MasterFile costCenterFile();      ///< frmBuildCstCtr
MasterFile revenueCenterFile();   ///< frmBuildRevenue
MasterFile departmentFile();      ///< frmBuildDept
MasterFile equityFile();          ///< frmBuildEquity
MasterFile termsFile();           ///< frmBuildTerms
MasterFile classificationFile();  ///< frmBuildAcctClass
MasterFile glGroupFile();         ///< frmBuildGLGroup_2
MasterFile periodFile();          ///< frmPeriod
MasterFile fiscalYearFile();      ///< frmFiscalYear

/// A lookup class as the lookup of a field.
template <class Class>
std::optional<FoundCode> lookUpMaster(Session& session, std::string_view text) {
    Class found(session);
    if (!found.Validate(text)) return std::nullopt;
    return FoundCode{found.Code, found.Description};
}

/// The classes into which a type of account is divided, and what the chart calls them.
std::vector<MasterChoice> groupClasses(std::string_view type);
const std::vector<MasterChoice>& accountTypes();

}  // namespace kv
