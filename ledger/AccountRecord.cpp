#include "ledger/AccountRecord.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/data/Statement.h"

namespace kv {

std::string loadStatement(std::string_view code) { return call("sp_Load_Acct").text(code).str(); }

AccountRecord accountOfRow(const Recordset& row) {
    AccountRecord account;
    if (row.eof()) return account;
    account.code = row["Code"].text();
    account.description = row["Description"].text();
    account.type = row["Type"].text();
    account.budget = row["BudgetClassID"].text();
    account.mast = row["Mast_Dept"].text();
    account.group = row["GLGroup"].text();
    account.groupName = row["GLDescription"].text();
    account.subsidiary = static_cast<int>(row["Subsidiary"].integer());
    account.defaultDept = row["DefaultDept"].text();
    account.deptName = row["DefaultDeptDesc"].text();
    account.classification = row["ClassID"].text();
    account.vendor = row["VendorID"].text();
    account.vendorName = row["Company"].text();
    return account;
}

AccountRecord loadAccount(Connection& cn, std::string_view code) { return accountOfRow(cn.Open(loadStatement(code))); }

std::string updateStatement(const AccountRecord& account) {
    return call("sp_Update_AcctCode")
        .text(account.code)
        .text(account.description)
        .text("")
        .text("")
        .text(account.budget)
        .text(account.mast)
        .text(account.group)
        .number(account.subsidiary)
        .text(account.defaultDept)
        .text(account.classification)
        .str();
}

void logAccount(Session& session, std::string_view code, std::source_location at) {
    const Recordset count =
        session.cn().Open(sql("SELECT COUNT(*) AS AcctCodeCount FROM AcctCode WHERE Code = '{}'").text(code), at);
    const bool edited = !count.eof() && count["AcctCodeCount"].integer() > 0;
    module1::SaveUserLog(session, (edited ? "Edited Acct Code : " : "Created Acct Code : ") + escaped(code), at);
}

}  // namespace kv
