#include "ledger/LookupClass.h"

#include "core/Session.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSearch.h"

namespace kv {

LookupClass::LookupClass(Session& session, const char* className, Table table, const char* caption)
    : SearchCaption(caption), session_(session), className_(className), table_(table) {}

void LookupClass::take(const Recordset& row) {
    Found = true;
    Code = row[table_.key].text();
    Description = row[table_.description].text();
}

std::string LookupClass::rowStatement(std::string_view key) const {
    return sql("select * from {} where {} = '{}'").name(table_.name).name(table_.key).text(key).str();
}

void LookupClass::Search(std::string_view Text, Place at) {
    traced(className_ + ".Search", at, [&] {
        const Recordset row = session_.cn().Open(rowStatement(Text));
        Found = !row.eof();
        if (Found) take(row);
    });
}

bool LookupClass::Validate(std::string_view Text, Place at) {
    return traced(className_ + ".Validate", at, [&] {
        const Recordset row = session_.cn().Open(rowStatement(Text));
        if (row.recordCount() == 1) {
            take(row);
            return true;
        }
        const Recordset matches = session_.cn().Open(sql("select Count(*) RecCount from {} where {} like '{}%'")
                                                         .name(table_.name)
                                                         .name(table_.description)
                                                         .text(Text));
        if (!matches.eof() && matches["RecCount"].integer() > 0) return pick(Text);
        MsgBox("Item does not exists.", Icon::Exclamation);
        return false;
    });
}

bool LookupClass::pick(std::string_view Text) {
    const std::string description = table_.description;
    const std::string shown = description == "Description" ? description : description + " [Description]";
    return pickFrom(SearchCaption,
                    "select " + shown + ", " + table_.key + " [Code]  from " + table_.name + " where " + description +
                        " like '##%' order by " + description,
                    Text);
}

bool LookupClass::pickFrom(std::string_view caption, std::string query, std::string_view Text) {
    frmSearch dialog(session_);
    dialog.SearchCaption = caption;
    dialog.Query = std::move(query);
    if (!dialog.ShowDialog(Text)) return false;
    const Recordset row = session_.cn().Open(rowStatement(dialog.Code()));
    if (row.eof()) return false;
    take(row);
    return true;
}

bool clsCostCenter::SearchInventory(std::string_view Text, Place at) {
    return traced("clsCostCenter.SearchInventory", at,
                  [&] { return pickFrom("Cost Centers Link to Inventory", "sp_Search_Inv_Location '##'", Text); });
}

std::string clsCostCenter::GetDescription(std::string_view CostCenter, Place at) {
    return traced("clsCostCenter.GetDescription", at, [&] {
        const Recordset row = session().cn().Open(
            sql("select isnull(Description,'') Description from cstctr where cstctr = '{}'").text(CostCenter));
        return row.eof() ? std::string() : row["Description"].text();
    });
}

void clsGLGroup::take(const Recordset& row) {
    LookupClass::take(row);
    GLGroup = row["GLGroup"].text();
    GroupType = row["Type"].text();
    GroupClass = row["Class"].text();
}

}  // namespace kv
