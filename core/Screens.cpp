#include "core/Screens.h"

#include <algorithm>

#include "core/Session.h"
#include "platform/base/Error.h"

namespace kv {

void Screens::add(ScreenEntry entry) {
    const auto place = std::lower_bound(entries_.begin(), entries_.end(), entry.name,
                                        [](const ScreenEntry& e, const std::string& name) { return e.name < name; });
    entries_.insert(place, std::move(entry));
}

void Screens::addCommand(std::string name, std::function<void(Session&)> run) {
    commands_.push_back({std::move(name), std::move(run)});
}

const ScreenEntry* Screens::find(std::string_view name) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const ScreenEntry& e) { return e.name == name; });
    return found == entries_.end() ? nullptr : &*found;
}

const ScreenEntry& Screens::needed(std::string_view name) const {
    const ScreenEntry* entry = find(name);
    if (!entry) throw Error(kErrObjectMissing, "Screens", "This version has no screen " + std::string(name) + ".");
    return *entry;
}

void Screens::showModal(Session& session, std::string_view name) {
    const std::unique_ptr<Form> form = needed(name).make(session);
    form->ShowModal();
}

void Screens::show(Session& session, std::string_view name) {
    sweep();
    if (Form* there = open(name)) {
        there->Show();
        return;
    }
    modeless_.push_back(needed(name).make(session));
    modeless_.back()->Show();
}

void Screens::openDocument(Session& session, std::string_view screen, std::string_view key) const {
    const ScreenEntry& entry = needed(screen);
    if (!entry.openDocument) {
        throw Error(kErrObjectMissing, "Screens", "The screen " + entry.name + " opens no document by its number.");
    }
    entry.openDocument(session, key);
}

bool Screens::hasDocuments(std::string_view screen) const {
    const ScreenEntry* entry = find(screen);
    return entry && entry->openDocument;
}

void Screens::runCommand(Session& session, std::string_view name) const {
    for (const Command& command : commands_) {
        if (command.name == name) return command.run(session);
    }
    throw Error(kErrObjectMissing, "Screens", "This version has no command " + std::string(name) + ".");
}

bool Screens::hasCommand(std::string_view name) const {
    return std::any_of(commands_.begin(), commands_.end(), [&](const Command& c) { return c.name == name; });
}

Form* Screens::open(std::string_view name) const {
    for (const auto& form : modeless_) {
        if (form->loaded() && form->name() == name) return form.get();
    }
    return nullptr;
}

void Screens::sweep() {
    std::erase_if(modeless_, [](const std::unique_ptr<Form>& form) { return !form->loaded(); });
}

void Screens::unload(std::string_view name) {
    for (const auto& form : modeless_) {
        if (form->name() == name && form->loaded()) form->Unload();
    }
    sweep();
}

void Screens::unloadOthers(std::string_view first, std::string_view second) {
    for (const auto& form : modeless_) {
        if (form->loaded() && form->name() != first && form->name() != second) form->Unload();
    }
    sweep();
}

void Screens::unloadAll() {
    for (const auto& form : modeless_) {
        if (form->loaded()) form->Unload();
    }
    modeless_.clear();
}

void ManualUnloadForm(Session& session, std::string_view FormName) {
    for (Form* form : Form::openForms()) {
        if (form->name() == FormName) form->Unload();
    }
    session.screens.sweep();
}

}  // namespace kv
