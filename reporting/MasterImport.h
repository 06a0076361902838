#pragma once
// MasterImport: rows of a master file from a CSV file: checked one by one before anything is written, stored together.
//
// What may be imported is data (ImportKind). The preview names each fault by line, column and reason; a file with a
// fault is not stored.

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Connection.h"

namespace kv {

class Session;

/// The fields of a row by the headings of the import, complete: what the file does not have is what is stored.
using ImportValues = std::map<std::string, std::string, std::less<>>;

enum class ImportType { Code, Text, Flag, Percent };

struct ImportColumn {
    std::string heading;
    std::vector<std::string> aliases;
    ImportType type = ImportType::Text;
    int length = 100;
    bool needed = false;
    std::string reference;             ///< statement whose first column holds the values that may stand here
    std::string refers;                ///< what such a value is, "group"
    std::vector<std::string> choices;  ///< all that may stand here, beside nothing
    bool mayReferToFile = false;       ///< also a key that stands further up in the file
};

struct ImportKind {
    std::string title;
    std::string name;                   ///< in the user log
    std::string right;                  ///< access code
    std::vector<ImportColumn> columns;  ///< the first one is the key, the second one names the row in the preview
    std::string keys;                   ///< statement of the keys that are stored
    std::string row;                    ///< statement of a stored row by "{key}", its columns named as the headings
    /// What is wrong with a whole row: column and reason; an empty reason when nothing is.
    std::function<std::pair<std::string, std::string>(Connection&, const ImportValues&, bool exists)> check;
    std::function<void(Connection&, const ImportValues&, bool exists)> store;
};

struct ImportFault {
    int line = 0;
    std::string column;
    std::string reason;
};

struct ImportRow {
    int line = 0;
    bool exists = false;  ///< a stored row has this key
    bool bad = false;     ///< it has a fault
    ImportValues values;
};

struct ImportPreview {
    std::vector<ImportRow> rows;       ///< in the order of the file, also those with a fault
    std::vector<ImportFault> faults;   ///< by line; with any of them nothing is stored
    std::vector<std::string> ignored;  ///< headings that the import does not know
    int added() const;                 ///< rows without a fault that are new
    int replaced() const;
    /// The same rows with the same faults.
    bool sameAs(const ImportPreview& other) const;
};

/// Looks at the bytes of a file. `replace`: rows whose key is stored already replace it, else they are faults.
ImportPreview previewImport(Connection& cn, const ImportKind& kind, std::string_view bytes, bool replace);
/// Stores the rows of a preview without a fault, with a log, all or none. `progress` counts them. False when the
/// preview no longer holds, because the database changed since: nothing is written then.
bool storeImport(Session& session, const ImportKind& kind, std::string_view bytes, bool replace,
                 const ImportPreview& seen, const std::function<void(int done)>& progress = {});

}  // namespace kv
