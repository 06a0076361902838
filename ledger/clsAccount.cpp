#include "ledger/clsAccount.h"

#include "core/Session.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSearchAcct.h"

namespace kv {

std::string clsAccount::sp_Search(int Flag, std::string_view Text, std::string_view Mode) {
    return call("sp_Search_Acct").separator(",").exact(Format(Flag, "0")).text(Text).text(Mode).str();
}

void clsAccount::take(const Recordset& row) {
    const auto read = [&](const char* column) { return row.has(column) ? row[column].text() : std::string(); };
    Found = true;
    AccountCode = read("Code");
    AccountTitle = read("Description");
    AccountType = read("Type");
    Subsidiary = read("Subsidiary");
    IsBankAcct = read("IsBankAcct");
    AccountClass = read("Class");
    GLGroup = read("GLGroup");
}

void clsAccount::Search(std::string_view Code, std::string_view Mode, Place at) {
    traced("clsAccount.Search", at, [&] {
        const Recordset row = session_->cn().Open(sp_Search(1, Code, Mode));
        Found = !row.eof();
        if (Found) take(row);
    });
}

bool clsAccount::Validate(std::string_view Text, std::string_view Mode, Place at) {
    return traced("clsAccount.Validate", at, [&] {
        if (Text == "MAS") return pickMaster();
        const Recordset row = session_->cn().Open(sp_Search(1, Text, Mode));
        if (row.recordCount() == 1) {
            take(row);
            return true;
        }
        const Recordset matches = session_->cn().Open(sp_Search(2, Text, Mode));
        if (!matches.eof() && matches["RecCount"].integer() > 0) return pick(Text, Mode);
        MsgBox("Item does not exists.", Icon::Exclamation);
        return false;
    });
}

bool clsAccount::pickMaster() {
    frmSearchAcct dialog(*session_);
    dialog.SearchCaption = frmSearchAcct::kMasterCaption;
    dialog.Query = sp_Search(3, "%", "ALL");
    if (!dialog.ShowDialog()) return false;
    AccountCode = dialog.Code();
    AccountDesc = dialog.Title();
    return true;
}

bool clsAccount::pick(std::string_view Text, std::string_view Mode) {
    frmSearchAcct dialog(*session_);
    dialog.Query = sp_Search(0, "##", Mode);
    if (!dialog.ShowDialog(Text)) return false;
    take(session_->cn().Open(sp_Search(1, dialog.Code(), Mode)));
    return true;
}

}  // namespace kv
