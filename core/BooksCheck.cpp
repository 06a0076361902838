#include "core/BooksCheck.h"

#include <algorithm>
#include <filesystem>

#include "core/MainMenu.h"
#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr long kErrPathMissing = 76;

std::string cellOf(const Recordset& rows, const Row& row, const char* field) {
    const int column = rows.indexOf(field);
    return column < 0 ? std::string() : row[static_cast<std::size_t>(column)].text();
}

}  // namespace

BooksCheck readCheck(std::string name, const std::string& text) {
    BooksCheck check;
    check.name = std::move(name);
    std::string* part = nullptr;
    for (const std::string& line : split(text, '\n')) {
        if (!line.starts_with("--")) break;
        std::string said(trimBlanks(std::string_view(line).substr(2)));
        for (const auto& [head, target] :
             {std::pair{"Title:", &check.title}, std::pair{"Explanation:", &check.explanation}}) {
            if (!startsNoCase(said, head)) continue;
            part = target;
            said = trimBlanks(said.substr(std::string_view(head).size()));
        }
        if (part) *part += (part->empty() ? "" : " ") + said;
    }
    check.query = text;
    return check;
}

std::vector<BooksCheck> booksChecks() {
    const std::string folder = buildPath(programFolder(), "server/checks");
    std::vector<BooksCheck> checks;
    if (folderExists(folder)) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() != ".sql") continue;
            checks.push_back(readCheck(entry.path().stem().string(), readTextFile(entry.path().string())));
        }
    }
    if (checks.empty()) throw Error(kErrPathMissing, "BooksCheck", "There are no checks in " + folder + ".");
    std::sort(checks.begin(), checks.end(), [](const BooksCheck& a, const BooksCheck& b) { return a.title < b.title; });
    return checks;
}

RowDocument documentOf(const Recordset& rows, const Row& row) {
    std::string book = cellOf(rows, row, "Book");
    if (book.empty()) book = cellOf(rows, row, "BatchType");
    const std::string batch = cellOf(rows, row, "Batch");
    const BookEntry* entry = findBook(book == "YE" ? "JV" : book);
    if (entry && !batch.empty()) return {entry->documents, book + " " + batch};
    const std::string code = cellOf(rows, row, "Code");
    return code.empty() ? RowDocument() : RowDocument{"frmBuildAcct_2", code};
}

}  // namespace kv
