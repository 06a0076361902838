#pragma once
// AccountRecord: an account as the editor and the chart keep it, and the statements that read and store it.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/data/Connection.h"

namespace kv {

class Session;

struct AccountRecord {
    std::string code, description, type, budget, mast, group, defaultDept, classification, vendor;
    std::string groupName, deptName, vendorName;  ///< only read
    int subsidiary = 0;                           ///< 0 none, 1 departments
};

std::string loadStatement(std::string_view code);
/// An empty code when there is no such account.
AccountRecord loadAccount(Connection& cn, std::string_view code);
AccountRecord accountOfRow(const Recordset& row);
/// The call of sp_Update_AcctCode.
std::string updateStatement(const AccountRecord& account);
/// Logs that an account is about to be edited or created, by whether it is there.
void logAccount(Session& session, std::string_view code, std::source_location at = std::source_location::current());

}  // namespace kv
