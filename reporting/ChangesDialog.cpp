#include "reporting/ChangesDialog.h"

namespace kv {
namespace {

std::string shown(const std::string& value) { return value.empty() ? "(nothing)" : value; }

}  // namespace

frmChanges::frmChanges(const std::string& subject) : Form("frmChanges", "Changes of " + subject) {
    lblCount.look(Label::Look::Heading);
    lvwChanges.setColumns({{"Setting", 30}, {"Now", 28}, {"After the save", 28, Align::Left, true}});
    lvwChanges.rows(12);
    lvwChanges.setHelp("What the save will change. Enter saves, Escape goes back.");
    lvwChanges.onDblClick = [this](int) { cmdOption0.press(); };
    cmdOption0.primary();
    cmdOption0.onClick = [this] {
        confirmed_ = true;
        Unload();
    };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
    setLayout(column({lblCount, expand(lvwChanges), buttons({cmdOption0, cmdOption1})}));
    setSize(760, 440);
}

bool frmChanges::ShowDialog(const std::vector<Change>& changes) {
    std::vector<ListView::Item> items;
    items.reserve(changes.size());
    for (const Change& change : changes) {
        items.emplace_back(change.What,
                           std::vector<std::string>{change.What, shown(change.Before), shown(change.After)});
    }
    lvwChanges.setItems(std::move(items));
    lblCount.setText(changes.empty()       ? "Nothing was changed."
                     : changes.size() == 1 ? "1 setting will change."
                                           : std::to_string(changes.size()) + " settings will change.");
    if (changes.empty()) {
        setFirstFocus(cmdOption0);
    } else {
        lvwChanges.select(0);
        setFirstFocus(lvwChanges);
    }
    confirmed_ = false;
    ShowModal();
    return confirmed_;
}

}  // namespace kv
