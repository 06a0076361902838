#pragma once
// DialogList: the dialogs that give values to the screen that opens them, so that each can be opened by its name alone.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

class Session;

/// What a dialog starts with and what it gives, in the order of its ShowDialog.
using DialogValues = std::vector<std::string>;

struct DialogEntry {
    std::string name;
    std::string room;
    std::string title;  ///< for people
    /// Shows the dialog; true when it was confirmed.
    std::function<bool(Session&, DialogValues&)> ask;
};

/// Sorted by name.
const std::vector<DialogEntry>& dialogs();
/// Raises Error for a dialog that is not in the list.
bool askDialog(Session& session, std::string_view name, DialogValues& values);

}  // namespace kv
