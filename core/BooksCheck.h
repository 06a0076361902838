#pragma once
// BooksCheck: the checks of the books: queries with a title and an explanation, each without a row while the books are
// sound.

#include <string>
#include <vector>

#include "platform/data/Connection.h"

namespace kv {

struct BooksCheck {
    std::string name;         ///< "batch-balances"
    std::string title;        ///< "Every batch balances"
    std::string explanation;  ///< what a row means, and what to do
    std::string query;
};

/// The checks in the folder `server/checks` below the program's, by title. Raises Error 76 when there are none.
std::vector<BooksCheck> booksChecks();
/// A check from its text; lines of a comment that begins with Title or Explanation go on until the query.
BooksCheck readCheck(std::string name, const std::string& text);

/// The document that a row of a check is about; both empty when it is about none.
struct RowDocument {
    std::string screen;
    std::string key;
};
RowDocument documentOf(const Recordset& rows, const Row& row);

}  // namespace kv
