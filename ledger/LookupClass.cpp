#include "ledger/LookupClass.h"

#include "core/Session.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSearch.h"

namespace kv {

LookupClass::LookupClass(Session& session, const char* className, Table table, const char* caption)
    : SearchCaption(caption), session_(session), className_(className), table_(table) {}

void LookupClass::take(const Recordset& row) {
    Code = row[table_.key].text();
    Description = row["Description"].text();
}

std::string LookupClass::rowStatement(std::string_view key) const {
    return sql("select * from {} where {} = '{}'").name(table_.name).name(table_.key).text(key).str();
}

bool LookupClass::Validate(std::string_view Text, Place at) {
    return traced(className_ + ".Validate", at, [&] {
        const Recordset row = session_.cn().Open(rowStatement(Text));
        if (row.recordCount() == 1) {
            take(row);
            return true;
        }
        const Recordset matches = session_.cn().Open(
            sql("select Count(*) RecCount from {} where Description like '{}%'").name(table_.name).text(Text).str());
        if (!matches.eof() && matches["RecCount"].integer() > 0) return pick(Text);
        MsgBox("Item does not exists.", Icon::Exclamation);
        return false;
    });
}

bool LookupClass::pick(std::string_view Text) {
    frmSearch dialog(session_);
    dialog.SearchCaption = SearchCaption;
    dialog.Query = sql("select Description, {} [Code]  from {} where Description like '##%' order by Description")
                       .name(table_.key)
                       .name(table_.name)
                       .str();
    if (!dialog.ShowDialog(Text)) return false;
    const Recordset row = session_.cn().Open(rowStatement(dialog.Code()));
    if (row.eof()) return false;
    take(row);
    return true;
}

}  // namespace kv
