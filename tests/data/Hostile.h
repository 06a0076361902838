#pragma once
// Hostile texts: what typed and pasted texts must not do to a statement, for every test of a field or a composer.

#include <functional>
#include <string>
#include <vector>

#include "platform/base/Text.h"
#include "platform/data/Connection.h"
#include "platform/data/Statement.h"

namespace kv::test {

struct HostileText {
    std::string title;
    std::string text;
};

/// Texts that try to end a literal, open a comment, add a statement, or confuse a decoder.
inline std::vector<HostileText> hostileTexts() {
    using namespace std::string_literals;
    return {
        {"apostrophe", "O'Brien"},
        {"only apostrophes", "''''"},
        {"ends the literal", "x'; DROP TABLE Victim; --"},
        {"always true", "' OR '1'='1"},
        {"union", "' UNION SELECT Secret FROM Victim --"},
        {"closes a call", "', 1); DELETE FROM Victim; --"},
        {"comment marks", "/* ' */ -- ' \n DELETE FROM Victim"},
        {"open comment", "/*"},
        {"line ends", "a'\r\nGO\r\nDROP TABLE Victim\r\nGO\r\n"},
        {"semicolons", ";;';;"},
        {"backslash before it", "\\'; DROP TABLE Victim; --"},
        {"doubled before it", "''; DROP TABLE Victim; --"},
        {"typographic", "\xE2\x80\x98x\xE2\x80\x99; DROP TABLE Victim; --"},
        {"modifier apostrophe", "\xCA\xBC; DROP TABLE Victim; --"},
        {"full width", "\xEF\xBC\x87; DROP TABLE Victim; --"},
        {"prime", "\xE2\x80\xB2; DROP TABLE Victim; --"},
        {"half a character", "\xC3'; DROP TABLE Victim; --"},
        {"overlong apostrophe", "\xC0\xA7; DROP TABLE Victim; --"},
        {"zero byte", "a\0'; DROP TABLE Victim; --"s},
        {"place of a template", "{}', {} '{}"},
        {"markers of odbc", "{fn user()} ? {d '2024-01-01'}"},
        {"names", "]; DROP TABLE Victim; -- [\""},
        {"patterns", "100%_[a-z]^"},
        {"long", std::string(3000, '\'')},
        {"hex", "0x27; DROP TABLE Victim; --"},
        {"variables", "' + @@VERSION + '"},
    };
}

/// The table that hostile texts would like to change.
inline void makeVictim(Connection& connection) {
    connection.Execute("CREATE TABLE Victim (Secret VARCHAR(20), Note VARCHAR(8000))");
    connection.Execute("INSERT INTO Victim (Secret, Note) VALUES ('untouched', '')");
}

/// What stands in the way of "nothing but this value was written": empty when all is well.
/// `store` sends the statement under test, which writes its text into Victim.Note of the one row.
inline std::string harmOf(Connection& connection, const std::string& expected, const std::function<void()>& store) {
    try {
        store();
    } catch (const Error& e) {
        return "the statement failed: " + e.description;
    }
    try {
        const Recordset rows = connection.Open("SELECT Secret, Note FROM Victim");
        if (rows.recordCount() != 1) return std::to_string(rows.recordCount()) + " rows instead of one";
        if (rows["Secret"].text() != "untouched") return "the secret became " + rows["Secret"].text();
        if (rows["Note"].text() != expected) return "stored was " + rows["Note"].text();
    } catch (const Error& e) {
        return "the table is gone: " + e.description;
    }
    return {};
}

/// A statement without what stands in its literals: the same for every value, or a value has got out.
inline std::string structureOf(const std::string& statement) {
    std::string structure;
    bool inText = false;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const bool doubled = inText && statement.compare(i, 2, "''") == 0;
        if (doubled) {
            ++i;
        } else if (statement[i] == '\'') {
            inText = !inText;
            structure += '\'';
        } else if (!inText) {
            structure += statement[i];
        }
    }
    return structure + (inText ? " (open literal)" : "");
}

/// Titles of the hostile texts that change the structure of what `compose` makes of them; empty when none does.
/// For code fields and their builders: `compose` types the text into the field and gives the statement that went out.
inline std::vector<std::string> structureBreakers(const std::function<std::string(const std::string&)>& compose) {
    const std::string wanted = structureOf(compose("plain"));
    std::vector<std::string> broken;
    for (const HostileText& hostile : hostileTexts()) {
        if (structureOf(compose(hostile.text)) != wanted) broken.push_back(hostile.title);
    }
    return broken;
}

}  // namespace kv::test
