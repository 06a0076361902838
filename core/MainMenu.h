#pragma once
// MainMenu: the entries of the shell's menus as tables: what each is called, opens and logs, and which right enables
// it.

#include <string_view>
#include <vector>

namespace kv {

/// One of the six books: its button, what it sets in the session, and what it opens.
struct BookEntry {
    const char* button;
    const char* menu;
    const char* code;
    const char* name;
    const char* table;
    const char* detailTable;
    const char* caption;  ///< of the button
    const char* icon;
    const char* screen;
    const char* log;
    const char* documents;  ///< the screen that opens one of its documents
};
const std::vector<BookEntry>& bookEntries();
/// The book of a code; nullptr when there is none.
const BookEntry* findBook(std::string_view code);

/// A file-maintenance entry: shows its screen modally, then logs.
struct MaintenanceEntry {
    const char* menu;
    const char* caption;
    const char* screen;
    const char* log;
};
/// The sections of the File Maintenance menu in order; a separator stands between them.
const std::vector<std::vector<MaintenanceEntry>>& maintenanceSections();
const std::vector<MaintenanceEntry>& hospitalLinkEntries();

/// Which entries a right enables.
struct RightEntry {
    const char* right;
    std::vector<const char*> controls;
};
const std::vector<RightEntry>& rightEntries();
/// The right that enables a control of the shell; empty when it needs none.
std::string_view rightOf(std::string_view control);

}  // namespace kv
