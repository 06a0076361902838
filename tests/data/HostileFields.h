#pragma once
// Hostile texts through fields: what a person pastes or types must neither pass a code field's rule nor change the
// structure of a statement that is made of it. For the tests of any screen.

#include "platform/forms/Control.h"
#include "platform/forms/Dialogs.h"
#include "tests/data/Hostile.h"

namespace kv::test {

/// Replaces a field's text by one paste, the way that brings in most.
inline void pasteInto(TextBox& field, const std::string& text) {
    field.setFocus();
    field.selectAll();
    setClipboard(text);
    sendKeys("{Ctrl+V}", true);
}

/// Replaces a field's text key by key; what are no characters for a keyboard is left out.
inline void typeInto(TextBox& field, const std::string& text) {
    field.setFocus();
    field.selectAll();
    sendKeys("{Delete}", true);
    for (std::size_t i = 0; i < charCount(text); ++i) {
        const std::string letter = midChars(text, i, 1);
        const bool control = letter.size() == 1 && static_cast<unsigned char>(letter[0]) < ' ';
        if (!control) sendKeys(letter, true);
    }
}

/// Titles of the hostile texts with which a field let an apostrophe in. For code fields.
inline std::vector<std::string> apostrophesIn(TextBox& field) {
    std::vector<std::string> found;
    for (const HostileText& hostile : hostileTexts()) {
        for (const auto& enter : {pasteInto, typeInto}) {
            if (enter == typeInto && hostile.text.size() > 100) continue;
            enter(field, hostile.text);
            if (field.text().find('\'') != std::string::npos) found.push_back(hostile.title);
        }
    }
    return found;
}

/// Titles of the hostile texts that, pasted into the field, change the structure of what goes out. `send` does what the
/// user does next (a button, leaving the field) on a connection whose statements go to `sent`.
inline std::vector<std::string> fieldBreakers(TextBox& field, const std::function<void()>& send,
                                              std::vector<std::string>& sent) {
    return structureBreakers([&](const std::string& text) {
        sent.clear();
        pasteInto(field, text);
        send();
        return join(sent, "\n");
    });
}

}  // namespace kv::test
