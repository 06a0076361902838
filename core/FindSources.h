#pragma once
// FindSources: where the things that can be found come from: the menus of the shell and of the books, the documents,
// the accounts and the vendors, each by the rights of the user.

#include <string>
#include <vector>

#include "core/Finder.h"

namespace kv {

class Form;
class Session;
struct BookEntry;

/// Records of one kind in the database: the documents of a book, or what a statement gives as FindKey, Code, Title and
/// Detail.
struct RecordSource {
    const char* kind;
    const char* screen;   ///< opens them; without it in this version they are not listed
    const char* control;  ///< the control of the shell whose right opens them
    const char* book;     ///< its documents; empty: the statement's rows
    const char* statement;
};
const std::vector<RecordSource>& recordSources();

/// An entry of a menu that can be picked.
struct MenuSource {
    const BookEntry* book = nullptr;  ///< whose window has it; nullptr: the shell itself
    std::string item;                 ///< name of the entry
    std::string title;
    std::string path;  ///< "Journal Vouchers Book > Batch Entries"
    bool report = false;
};
/// The entries that a user may pick now: of the shell, and of the windows of the books whether they are open or not.
std::vector<MenuSource> menuSources(Session& session, const Form& shell);

/// Fills a finder: source i of `menus` (weight above records), then the records, whose source is their place in
/// recordSources(), counted from kFirstRecordSource.
constexpr int kMenuFindSource = 0;
constexpr int kFirstRecordSource = 1;
void fillFinder(Session& session, const std::vector<MenuSource>& menus, Finder& finder);

}  // namespace kv
