#include "core/frmFind.h"

#include <algorithm>

#include "core/Session.h"

namespace kv {
namespace {

constexpr std::size_t kShownMax = 60;
constexpr std::size_t kRecentMax = 10;
constexpr int kPage = 12;

}  // namespace

frmFind::frmFind(Session& session) : Form("frmFind", "Find Anything"), session_(session) {
    txtFind.placeholder("Screen, report, batch, voucher, check, vendor or account: number, name, amount or date");
    txtFind.setHelp("Type parts of words in any order. Up and Down choose, Enter opens.");
    txtFind.onChange = [this] { Search(); };
    txtFind.onKeyDown = [this](const std::string& key, bool& handled) { txtFind_KeyDown(key, handled); };
    lvwFound.rows(kPage);
    lvwFound.setColumns({{"Kind", 13}, {"Number", 15}, {"Name", 40, Align::Left, true}, {"Where, when", 44}});
    lvwFound.onDblClick = [this](int) { cmdOpen_Click(); };
    lblFound.look(Label::Look::Hint);
    cmdOpen.primary();
    cmdOpen.onClick = [this] { cmdOpen_Click(); };
    cmdClose.cancels();
    cmdClose.onClick = [this] { Unload(); };
    setLayout(column({txtFind, expand(lvwFound), row({lblFound, stretch(), cmdOpen, cmdClose})}));
    setIcon("edit-find");
    setSize(960, 520);
    setFirstFocus(txtFind);
}

frmFind::Choice frmFind::ShowDialog() {
    choice_ = {};
    ShowModal();
    return choice_;
}

void frmFind::Form_Load() {
    const Hourglass busy;
    if (const Form* shell = Form::shell()) menus_ = menuSources(session_, *shell);
    fillFinder(session_, menus_, finder_);
    Search();
}

/// What an entry is called in the memory of what was opened.
std::string frmFind::nameOf(std::size_t entry) const {
    const Finder::View view = finder_.at(entry);
    if (view.source != kMenuFindSource) return std::to_string(view.source) + ":" + std::string(view.key);
    const MenuSource& menu = menus_[std::stoul(std::string(view.key))];
    return menu.path + ":" + menu.item;
}

std::vector<std::size_t> frmFind::recentEntries() const {
    std::vector<std::pair<std::size_t, std::size_t>> places;
    if (session_.RecentFinds.empty()) return {};
    for (std::size_t entry = 0; entry < finder_.size(); ++entry) {
        const auto at = std::find(session_.RecentFinds.begin(), session_.RecentFinds.end(), nameOf(entry));
        if (at != session_.RecentFinds.end()) places.emplace_back(at - session_.RecentFinds.begin(), entry);
    }
    std::sort(places.begin(), places.end());
    std::vector<std::size_t> entries;
    for (const auto& [place, entry] : places) entries.push_back(entry);
    return entries;
}

/// Without a text: what was opened last, then the menus.
void frmFind::Search() {
    const std::string text = txtFind.text();
    std::vector<std::size_t> entries = finder_.search(text, kShownMax);
    if (finder_.found() > 0) {
        lblFound.setText(std::to_string(finder_.found()) +
                         (finder_.found() > kShownMax ? " found, the best are shown" : " found"));
    } else if (text.find_first_not_of(' ') != std::string::npos) {
        lblFound.setText("Nothing of this name or number");
    } else {
        lblFound.setText("");
        entries = recentEntries();
        for (std::size_t entry = 0; entry < menus_.size() && entries.size() < kShownMax; ++entry) {
            if (std::find(entries.begin(), entries.end(), entry) == entries.end()) entries.push_back(entry);
        }
    }
    ShowEntries(entries);
}

void frmFind::ShowEntries(const std::vector<std::size_t>& entries) {
    std::vector<ListView::Item> items;
    for (const std::size_t entry : entries) {
        const Finder::View view = finder_.at(entry);
        const bool menu = view.source == kMenuFindSource;
        const char* kind = !menu ? recordSources()[static_cast<std::size_t>(view.source - kFirstRecordSource)].kind
                           : menus_[std::stoul(std::string(view.key))].report ? "Report"
                                                                              : "Screen";
        items.push_back(
            {std::to_string(entry), {kind, std::string(view.code), std::string(view.title), std::string(view.detail)}});
    }
    const bool any = !items.empty();
    lvwFound.setItems(std::move(items));
    if (any) lvwFound.select(0);
    cmdOpen.setEnabled(any);
}

void frmFind::txtFind_KeyDown(const std::string& key, bool& handled) {
    const int step = key == "Down" ? 1 : key == "Up" ? -1 : key == "PageDown" ? kPage : key == "PageUp" ? -kPage : 0;
    if (key == "Enter") {
        handled = true;
        if (cmdOpen.enabled()) cmdOpen_Click();
    } else if (step != 0) {
        handled = true;
        if (lvwFound.count() > 0) lvwFound.select(std::clamp(lvwFound.selected() + step, 0, lvwFound.count() - 1));
    }
}

void frmFind::cmdOpen_Click() {
    if (lvwFound.selected() < 0) return;
    const std::size_t entry = std::stoul(lvwFound.selectedKey());
    const Finder::View view = finder_.at(entry);
    choice_.made = true;
    choice_.key = view.key;
    if (view.source == kMenuFindSource) {
        choice_.menu = menus_[std::stoul(choice_.key)];
    } else {
        choice_.record = &recordSources()[static_cast<std::size_t>(view.source - kFirstRecordSource)];
    }
    const std::string name = nameOf(entry);
    std::erase(session_.RecentFinds, name);
    session_.RecentFinds.insert(session_.RecentFinds.begin(), name);
    if (session_.RecentFinds.size() > kRecentMax) session_.RecentFinds.resize(kRecentMax);
    Unload();
}

}  // namespace kv
