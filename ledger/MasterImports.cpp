#include "ledger/MasterImports.h"

#include <algorithm>

#include "ledger/AccountRecord.h"
#include "ledger/MasterFiles.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

using Wrong = std::pair<std::string, std::string>;

// ---- groups ------------------------------------------------------------------------------------------------------

Wrong checkGroup(Connection&, const ImportValues& row, bool) {
    if (row.at("MainGroup") == row.at("GLGroup")) return {"MainGroup", "A group cannot stand below itself."};
    const std::string& group = row.at("Class");
    const auto classes = groupClasses(row.at("Type"));
    const bool known = group.empty() || std::any_of(classes.begin(), classes.end(),
                                                    [&](const MasterChoice& c) { return c.value == group; });
    return known ? Wrong{} : Wrong{"Class", "The type " + row.at("Type") + " has no class '" + group + "'."};
}

void storeGroup(Connection& cn, const ImportValues& row, bool) {
    cn.Execute(call("sp_Update_GLGroup")
                   .text(row.at("GLGroup"))
                   .text(row.at("Description"))
                   .text(row.at("Type"))
                   .text(row.at("Class"))
                   .text(row.at("MainGroup")));
}

// ---- accounts ----------------------------------------------------------------------------------------------------

Wrong checkAccount(Connection& cn, const ImportValues& row, bool exists) {
    const Recordset group = cn.Open(sql("select Type from glgroup where GLGroup = '{}'").text(row.at("GLGroup")));
    const std::string type = group.eof() ? std::string() : group["Type"].text();
    if (!row.at("Type").empty() && !exists && row.at("Type") != type) {
        return {"Type", "The group " + row.at("GLGroup") + " is of type " + type + "."};
    }
    if (row.at("Subsidiary") == "1" && type != "IN" && type != "EX") {
        return {"Subsidiary", "Departments belong to income and expense accounts only."};
    }
    if (exists && row.at("Mast") == "MAS" && !cn.Open(call("sp_VerifyAcct").text(row.at("Code"))).eof()) {
        return {"Mast", "The account is in use and cannot become a reporting account."};
    }
    return {};
}

void storeAccount(Connection& cn, const ImportValues& row, bool) {
    AccountRecord account;
    account.code = row.at("Code");
    account.description = row.at("Description");
    account.group = row.at("GLGroup");
    account.subsidiary = row.at("Subsidiary") == "1" ? 1 : 0;
    account.mast = row.at("Mast");
    account.budget = row.at("Budget");
    account.defaultDept = row.at("DefaultDept");
    account.classification = row.at("Classification");
    cn.Execute(updateStatement(account));
}

// ---- cost centres ------------------------------------------------------------------------------------------------

void storeCostCenter(Connection& cn, const ImportValues& row, bool) {
    cn.Execute(masterUpdate(costCenterFile(), {{"txtCode", row.at("CstCtr")},
                                               {"txtDescription", row.at("Description")},
                                               {"txtDivision", row.at("Division")},
                                               {"txtDept", row.at("DeptCode")}}));
}

// ---- vendors -----------------------------------------------------------------------------------------------------

Wrong checkVendor(Connection&, const ImportValues& row, bool) {
    if (!row.at("Company").empty() || !row.at("LastName").empty()) return {};
    return {"Company", "Neither a company nor a last name stands here."};
}

void storeVendor(Connection& cn, const ImportValues& row, bool exists) {
    Recordset vendor = cn.OpenTable("VEND", sql("VendorID = '{}'").text(row.at("VendorID")).str(), {"VendorID"});
    if (!exists) vendor.addNew();
    for (const auto& [column, text] : row) {
        if (column == "VendorID" && exists) continue;
        if (column == "Active") {
            vendor.set(column, Value(text.empty() || text == "1"));
        } else {
            vendor.set(column, text.empty() ? Value() : Value(text));
        }
    }
    vendor.update();
}

// ---- the kinds ---------------------------------------------------------------------------------------------------

ImportColumn code(std::string heading, int length, std::string reference = {}, std::string refers = {}) {
    ImportColumn column{.heading = std::move(heading), .type = ImportType::Code, .length = length};
    column.reference = std::move(reference);
    column.refers = std::move(refers);
    return column;
}

ImportColumn needed(ImportColumn column, std::vector<std::string> aliases = {}) {
    column.needed = true;
    column.aliases = std::move(aliases);
    return column;
}

ImportColumn text(std::string heading, int length) { return {.heading = std::move(heading), .length = length}; }

ImportColumn flag(std::string heading) {
    return {.heading = std::move(heading), .type = ImportType::Flag, .length = 5};
}

ImportColumn percent(std::string heading) {
    return {.heading = std::move(heading), .type = ImportType::Percent, .length = 12};
}

ImportColumn oneOf(std::string heading, std::vector<std::string> choices) {
    ImportColumn column{.heading = std::move(heading), .type = ImportType::Code, .length = 3};
    column.choices = std::move(choices);
    return column;
}

ImportKind groupKind() {
    ImportKind kind{.title = "GL groups", .name = "GL Group", .right = "COA"};
    ImportColumn above = code("MainGroup", 10, "select GLGroup from GLGROUP", "group");
    above.mayReferToFile = true;
    kind.columns = {needed(code("GLGroup", 10), {"Group", "Code"}), needed(text("Description", 100), {"Title"}),
                    needed(oneOf("Type", {"AS", "LI", "EQ", "IN", "EX"})), code("Class", 2), above};
    kind.keys = "select GLGroup from GLGROUP";
    kind.row = "select GLGroup, Description, Type, Class, MainGroup from GLGROUP where GLGroup = '{key}'";
    kind.check = checkGroup;
    kind.store = storeGroup;
    return kind;
}

ImportKind accountKind() {
    ImportKind kind{.title = "Chart of accounts", .name = "Acct Code", .right = "COA"};
    ImportColumn mast = oneOf("Mast", {"MAS"});
    mast.aliases = {"Mast_Dept"};
    kind.columns = {needed(code("Code", 15), {"Account", "AcctCode"}),
                    needed(text("Description", 100), {"Title", "Account Title"}),
                    needed(code("GLGroup", 10, "select GLGroup from GLGROUP", "group"), {"Group"}),
                    oneOf("Type", {"AS", "LI", "EQ", "IN", "EX"}),
                    flag("Subsidiary"),
                    mast,
                    code("Budget", 10),
                    code("DefaultDept", 10, "select CstCtr from CstCtr", "cost center"),
                    code("Classification", 10, "select ClassID from AcctCodeClass", "classification")};
    kind.keys = "select Code from AcctCode";
    kind.row =
        "select Code, Description, GLGroup, Type, Subsidiary, Mast_Dept Mast, BudgetClassID Budget, DefaultDept, "
        "Classification from AcctCode where Code = '{key}'";
    kind.check = checkAccount;
    kind.store = storeAccount;
    return kind;
}

ImportKind costCenterKind() {
    ImportKind kind{.title = "Cost centers", .name = "Cost Center", .right = "CC"};
    kind.columns = {needed(code("CstCtr", 10), {"Code", "Cost Center"}), needed(text("Description", 100), {"Name"}),
                    code("Division", 10), code("DeptCode", 10, "select CODE from DEPARTMENTS", "department")};
    kind.keys = "select CstCtr from CstCtr";
    kind.row = "select CstCtr, Description, Division, DeptCode from CstCtr where CstCtr = '{key}'";
    kind.store = storeCostCenter;
    return kind;
}

ImportKind vendorKind() {
    ImportKind kind{.title = "Vendors", .name = "Vendor", .right = "VEND"};
    kind.columns = {needed(code("VendorID", 15), {"Code", "Vendor"}),
                    text("Company", 100),
                    text("LastName", 50),
                    text("FirstName", 50),
                    text("MiddleName", 50),
                    code("Class", 5, "select ClassCode from VendClass", "vendor class"),
                    text("TIN", 20),
                    text("Addr1", 100),
                    text("Addr2", 100),
                    text("City", 60),
                    text("PROV", 60),
                    text("ZIP", 10),
                    text("Phone", 40),
                    text("Fax", 40),
                    text("Contact", 80),
                    text("VAT", 20),
                    code("ACCT", 15, "select Code from AcctCode where Mast_Dept <> 'MAS'", "account that takes lines"),
                    code("WTax", 15),
                    percent("VatRate"),
                    percent("WTXRate"),
                    percent("INRate"),
                    code("ATC", 10, "select TaxCode from WTaxCode", "tax code"),
                    code("APType", 5, "select Code from APTYPE", "payable type"),
                    code("APTerm", 5, "select TermsID from TERMS", "terms"),
                    flag("Active")};
    std::vector<std::string> names;
    for (const ImportColumn& column : kind.columns) names.push_back(column.heading);
    kind.keys = "select VendorID from VEND";
    kind.row = "select " + join(names, ", ") + " from VEND where VendorID = '{key}'";
    kind.check = checkVendor;
    kind.store = storeVendor;
    return kind;
}

}  // namespace

const std::vector<ImportKind>& importKinds() {
    static const std::vector<ImportKind> kinds = {accountKind(), groupKind(), costCenterKind(), vendorKind()};
    return kinds;
}

}  // namespace kv
