#include "core/FindSources.h"

#include "core/MainMenu.h"
#include "core/Session.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Form.h"

namespace kv {
namespace {

constexpr int kMenuWeight = 80;
constexpr int kRecordWeight = 0;

// The newest documents of a book.
constexpr const char* kDocuments =
    "SELECT TOP 200000 Book + ' ' + Batch AS FindKey, DisplayBatch AS Code, Particular AS Title, Payee AS Detail,"
    " BatchDate AS DocDate, Total AS Amount, Cancelled FROM dbo.vwBookBatch WHERE Book = '{}'"
    " ORDER BY BatchDate DESC, Batch DESC";

/// Whether an entry of the shell leads to something that this version has.
bool inThisVersion(const Session& session, const std::string& item) {
    for (const BookEntry& book : bookEntries()) {
        if (item == book.menu) return session.screens.find(book.screen) != nullptr;
    }
    for (const auto& section : maintenanceSections()) {
        for (const MaintenanceEntry& entry : section) {
            if (item == entry.menu) return session.screens.find(entry.screen) != nullptr;
        }
    }
    for (const MaintenanceEntry& entry : hospitalLinkEntries()) {
        if (item == entry.menu) return session.screens.find(entry.screen) != nullptr;
    }
    if (item == "mnuHU") return session.screens.find("frmDataImport") != nullptr;
    return item != "mnuUserLogs" || session.screens.hasCommand("UserLogs");
}

void addMenus(const Form& form, const BookEntry* book, std::vector<MenuSource>& menus) {
    for (const Form::MenuEntry& entry : form.menuEntries()) {
        MenuSource menu;
        menu.book = book;
        menu.item = entry.item->name();
        menu.title = replaceAll(replaceAll(entry.item->text(), "&", ""), "...", "");
        if (menu.title == "Close" || menu.item == "mnuFind") continue;
        // the first menu of a book's window may be called as the book
        const bool same = book && entry.path.starts_with(book->name);
        menu.path = book && !same ? std::string(book->name) + " > " + entry.path : entry.path;
        menu.report = entry.path.find("Report") != std::string::npos;
        menus.push_back(std::move(menu));
    }
}

std::string detailOf(const Recordset& rows, bool dated) {
    std::string detail;
    if (dated) {
        if (!rows["DocDate"].isNull()) detail += Format(rows["DocDate"].date(), "MM/dd/yyyy");
        detail += "  " + Format(rows["Amount"].money(), "#,##0.00");
        if (rows["Cancelled"].boolean()) detail += "  cancelled";
    }
    const std::string more = rows["Detail"].text();
    if (!more.empty()) detail += (detail.empty() ? "" : "  ") + more;
    return detail;
}

void addRecords(Session& session, const RecordSource& source, Finder& finder) {
    Recordset rows =
        *source.book ? session.cn().Open(sql(kDocuments).text(source.book)) : session.cn().Open(source.statement);
    const bool dated = rows.has("DocDate");
    for (; !rows.eof(); rows.moveNext()) {
        const std::string key = rows["FindKey"].text();
        const std::string code = rows["Code"].text();
        const std::string title = rows["Title"].text();
        const std::string detail = detailOf(rows, dated);
        finder.add({key, code, title, detail});
    }
}

}  // namespace

const std::vector<RecordSource>& recordSources() {
    static const std::vector<RecordSource> sources = {
        {"Account", "frmBuildAcct_2", "mnuFileAccounts", "",
         "SELECT Code AS FindKey, Code, Description AS Title, Type AS Detail FROM dbo.AcctCode ORDER BY Code"},
        {"Vendor", "frmBuildVendors", "mnuFileVendors", "",
         "SELECT VendorID AS FindKey, VendorID AS Code, Vendor AS Title, ISNULL(TIN, '') AS Detail FROM dbo.vwVENDOR"
         " ORDER BY Vendor"},
        {"AP voucher", "frmAPVEntry", "cmdAP", "AP", ""},
        {"Check voucher", "frmChkVoucherEntry", "cmdCDB", "CD", ""},
        {"CR batch", "frmJournEntry", "cmdCRB", "CR", ""},
        {"AR batch", "frmJournEntry", "cmdAR", "AR", ""},
        {"JV batch", "frmJournEntry", "cmdJV", "JV", ""},
    };
    return sources;
}

std::vector<MenuSource> menuSources(Session& session, const Form& shell) {
    std::vector<MenuSource> menus;
    addMenus(shell, nullptr, menus);
    std::erase_if(menus, [&](const MenuSource& menu) { return !inThisVersion(session, menu.item); });
    for (const BookEntry& book : bookEntries()) {
        const ScreenEntry* screen = session.screens.find(book.screen);
        if (!screen || !session.UserAccess.CanAccess(rightOf(book.button))) continue;
        const BookForAWhile selected(session, book);
        const std::unique_ptr<Form> window = screen->make(session);
        window->Form_Rights();
        addMenus(*window, &book, menus);
    }
    return menus;
}

void fillFinder(Session& session, const std::vector<MenuSource>& menus, Finder& finder) {
    finder.beginSource(kMenuFindSource, kMenuWeight, true);
    for (std::size_t i = 0; i < menus.size(); ++i) {
        finder.add({std::to_string(i), {}, menus[i].title, menus[i].path});
    }
    const std::vector<RecordSource>& sources = recordSources();
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (!session.screens.hasDocuments(sources[i].screen)) continue;
        if (!session.UserAccess.CanAccess(rightOf(sources[i].control))) continue;
        finder.beginSource(kFirstRecordSource + static_cast<int>(i), kRecordWeight);
        addRecords(session, sources[i], finder);
    }
}

}  // namespace kv
