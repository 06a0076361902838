#pragma once
// MasterFile: a file-maintenance screen as data: its list, its fields, how a row is saved and removed, what it says and
// what it logs. MasterForm works any of them.
//
// Texts and statements hold "{key}" where the key goes ("{key2}" for the second column of a key of two), in statements
// quoted as a value. Controls are named as plays, events and help pages know them.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

class Session;

/// What the entry tab holds, by the names of the controls.
using MasterValues = std::map<std::string, std::string, std::less<>>;
/// The columns of a key; one or two.
using MasterKey = std::vector<std::string>;

enum class MasterLook { Text, Date, Amount, Whole, Active };

/// A column of the list. Active shows "active" for A, 1 and True, else "inactive".
struct MasterColumn {
    std::string field;
    std::string heading;
    int width_chars = 12;
    MasterLook look = MasterLook::Text;
};

enum class MasterKind {
    Code,     ///< upper case, no apostrophe
    Digits,   ///< a code of digits
    Text,     ///< free text
    Whole,    ///< whole number, NULL when empty
    Decimal,  ///< number or amount, NULL when empty
    Date,     ///< shown as MM/dd/yyyy, NULL when empty
    Choice,   ///< one of a few values
    Tick,     ///< check box: the first choice's value when ticked, else the second's
    Lookup,   ///< a code with its name behind it and a button that searches
    Fixed     ///< no control: an argument that is always the standard value
};

struct MasterChoice {
    std::string value;
    std::string text;
};

struct FoundCode {
    std::string code;
    std::string description;
};
/// Takes what was typed (empty: search all). Nothing when no row was chosen; the user has been told.
using MasterLookup = std::function<std::optional<FoundCode>(Session&, std::string_view text)>;

struct MasterField {
    std::string control;
    std::string caption;
    std::string column;  ///< of the row statement
    MasterKind kind = MasterKind::Text;
    int length = 0;         ///< most characters
    std::string parameter;  ///< "@CODE" where the update procedure takes its arguments by name
    std::string needed;     ///< what is said when it is empty; without it the field may be empty
    std::string refusal;    ///< what is said to a value that is no number or date
    std::string standard;   ///< value of a new record
    std::vector<MasterChoice> choices;
    /// Choices that depend on the other fields, instead of `choices`.
    std::function<std::vector<MasterChoice>(const MasterValues&)> choicesFor;
    MasterLookup lookup;
    std::string button;       ///< name of the lookup's button
    std::string description;  ///< column of the row statement with the name of the code
    std::string help;
    bool refusesNow = false;  ///< `needed` and `refusal` are said at leaving the field, else at saving
};

/// How a row is stored: by a procedure with the fields as arguments, or into the table itself.
struct MasterSave {
    std::string procedure;
    std::string separator = ", ";
    std::vector<std::string> order;  ///< controls in the order of the arguments, where it is not that of the fields
    std::string table;
    std::vector<std::string> keyColumns;
};

/// What the screen asks and says.
struct MasterSays {
    std::string exists = "'{key}' already exists. Please select another code.";
    std::string saved = "Code updated.";
    std::string unsaved = "Changes to the previous record will not be saved!";
    std::string ignore = "Changes will be ignored! Do you wish to Cancel?";
    std::string used = "Cannot delete Code {key} because it was used.";
    std::string remove;
    std::string removeTitle;  ///< empty: the title of the screen
};
/// The usual texts around a name.
MasterSays masterSays(const std::string& name);

/// What goes to the user log; an empty text is not logged.
struct MasterLogs {
    std::string selected, created, edited, ignored, removed, retired, closed;
};
/// The usual spellings around a name.
MasterLogs masterLogs(const std::string& name);

struct MasterSort {
    std::string caption;
    std::string column;
};

struct MasterFile {
    std::string screen;
    std::string title;
    std::string icon;

    std::string listControl = "lvwList";
    std::string list;        ///< statement; "{sort}" takes the column of the sort option
    std::string searchList;  ///< statement of a search on the server, with "##"; without it the list itself is narrowed
    std::vector<MasterSort> sorts;
    std::vector<MasterColumn> columns;
    std::vector<std::string> listKeys;  ///< columns of the list statement that make the key

    std::string row;                  ///< statement of one row
    std::vector<MasterField> fields;  ///< the first ones, as many as listKeys, are the key
    std::string exists;               ///< statement of the check on a new key; empty: that of the row
    bool savesOverExisting = false;   ///< a new key that has a row already edits it
    std::string nextKey;              ///< statement of the key that a new record is proposed
    std::vector<std::string> seeds;   ///< statements sent on opening

    MasterSave save;
    std::string count;   ///< decides between created and edited; without it the row does
    std::string verify;  ///< a row means that the key is in use and stays
    std::string remove;  ///< statement; without it the screen has no Delete
    std::string retire;  ///< statement that makes a used key inactive instead
    /// Looks at all fields together at saving: what is wrong with them, empty when nothing is.
    std::function<std::string(Session&, const MasterValues&)> check;
    /// Fills other fields of a new record when its key was entered.
    std::function<void(MasterValues&)> onNewKey;

    MasterSays says;
    MasterLogs logs;
    std::string report;  ///< template of the list; without one it is made from the columns
};

/// "{key}" and "{key2}" in a statement, each quoted as a value.
std::string masterStatement(std::string_view pattern, const MasterKey& key);
/// The same in a text for people.
std::string masterText(std::string_view pattern, const MasterKey& key);
/// The same in a text of the log, fit to stand between apostrophes.
std::string masterLog(std::string_view pattern, const MasterKey& key);

/// Why the value of a field cannot be saved; empty when it can.
std::string masterRefusal(const MasterField& field, std::string_view value);
/// The value as an argument of a statement.
std::string masterArgument(const MasterField& field, std::string_view value);
/// The call of the update procedure.
std::string masterUpdate(const MasterFile& file, const MasterValues& values);

}  // namespace kv
