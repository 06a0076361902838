// What a play expects: each form of "expect" finds out what stands there; the frame compares, or turns it round.
#include <QApplication>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Lists.h"
#include "platform/forms/player/Performance.h"

namespace kv {

namespace {

/// The outcome of one expectation, in the words of the failure that it may become.
struct Finding {
    bool held = false;
    std::string expected;
    std::string found;
};

Finding compared(const std::string& what, const std::string& pattern, const std::string& found) {
    return {matches(pattern, found), what + " " + inQuotes(pattern), inQuotes(found)};
}

Finding contained(const std::string& what, const std::string& pattern, const std::string& found) {
    constexpr std::size_t kShown_max = 2000;
    const std::string shown = found.size() > kShown_max ? found.substr(0, kShown_max) + "..." : found;
    return {holds(pattern, found), what + " that contains " + inQuotes(pattern), inQuotes(shown)};
}

void mustSay(const PlayLine& line, std::size_t at, const char* word) {
    if (line.bare(at) != word) throw Failure("the line lacks the word " + std::string(word));
}

// ---- windows -----------------------------------------------------------------------------------------------------

Finding form(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 1);
    const std::string& wanted = line.word(at, "the name of a form");
    static constexpr std::pair<const char*, Scene::Kind> kOthers[] = {{"message", Scene::Kind::Box},
                                                                      {"input", Scene::Kind::Input},
                                                                      {"file", Scene::Kind::File},
                                                                      {"printer", Scene::Kind::Printer}};
    const Scene* scene = show.stage.asking();
    for (const auto& [name, kind] : kOthers) {
        if (wanted == name) return {scene && scene->kind == kind, "a " + wanted + " in front", show.stage.describe()};
    }
    const Form* front = scene ? nullptr : Form::active();
    return {front && front->name() == wanted, "the form " + wanted, show.stage.describe()};
}

Finding caption(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 1);
    const std::string& wanted = line.pattern(at, "the caption");
    const BoxWindow* box = show.stage.box();
    return compared("the caption", wanted, box ? box->box().title : show.stage.form().caption());
}

Finding answer(Performance& show, const PlayLine& line, std::size_t at) {
    if (!show.answer) {
        line.atMost(at + 1);
        return {line.bare(at) == "none", "an answer", "that the dialog was cancelled"};
    }
    bool held = line.size() == at + show.answer->size() && line.bare(at) != "none";
    std::vector<std::string> found;
    std::vector<std::string> wanted;
    for (const std::string& value : *show.answer) found.push_back(inQuotes(value));
    for (std::size_t i = at; line.has(i); ++i) {
        wanted.push_back(inQuotes(line.word(i, "a value")));
        held = held && matches(line.word(i, "a value"), (*show.answer)[i - at]);
    }
    return {held, "the answer " + join(wanted, " "), join(found, " ")};
}

// ---- controls ----------------------------------------------------------------------------------------------------

/// The column of a list by number: sub-items from 1.
Finding listCell(const ListView& list, const PlayLine& line, std::size_t at) {
    line.atMost(at + 4);
    const int column = line.number(at + 2, "the sub-item");
    const std::string& wanted = line.pattern(at + 3, "the text");
    const std::string what = "sub-item " + std::to_string(column) + " of " + list.name();
    const int row = findListRow(list, line, at + 1);
    if (row < 0) return {false, what + " " + inQuotes(wanted), "no row " + inQuotes(line.word(at + 1, ""))};
    return compared(what, wanted, oneLineEnd(list.cell(row, column)));
}

Finding gridCell(const Grid& grid, const PlayLine& line, std::size_t at) {
    line.atMost(at + 4);
    const int row = line.number(at + 1, "the row");
    const int col = line.number(at + 2, "the column");
    const std::string& wanted = line.pattern(at + 3, "the text");
    const std::string what =
        "cell " + std::to_string(row) + " " + std::to_string(col) + " of " + grid.name() + " to be";
    if (row < 0 || row >= grid.rows() || col < 0 || col >= grid.cols()) {
        return {false, what + " " + inQuotes(wanted), "no such cell in " + std::to_string(grid.rows() - 1) + " rows"};
    }
    const bool editing = grid.editorOpen() && grid.row() == row && grid.col() == col;
    return compared(what, wanted, oneLineEnd(editing ? grid.editorText() : grid.cell(row, col)));
}

Finding text(Performance& show, const PlayLine& line, std::size_t at) {
    const Control& control = show.stage.control(line.word(at, "what is expected"));
    const auto* list = dynamic_cast<const ListView*>(&control);
    const auto* grid = dynamic_cast<const Grid*>(&control);
    if (list && line.size() > at + 2) return listCell(*list, line, at);
    if (grid && line.size() > at + 2) return gridCell(*grid, line, at);
    line.atMost(at + 2);
    const std::string& wanted = line.pattern(at + 1, "the text");
    const std::string found = oneLineEnd(control.text());
    Finding finding = compared(control.name() + " to be", wanted, found);
    // A caption may be written without its marks of quick keys.
    finding.held = finding.held || matches(wanted, replaceAll(found, "&", ""));
    return finding;
}

Finding rows(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 2);
    const Control& control = show.stage.control(line.word(at, "the name of a list"), {"ListView", "Grid", "ComboBox"});
    const int wanted = line.number(at + 1, "the number of rows");
    const int found = rowsOf(control);
    return {found == wanted, std::to_string(wanted) + " rows in " + control.name(), std::to_string(found)};
}

struct State {
    std::string_view name;
    std::string_view opposite;  ///< what is found when it does not hold
    bool (*of)(const Control& control);
};

constexpr State kStates[] = {
    {"enabled", "disabled", [](const Control& c) { return isAble(c); }},
    {"disabled", "enabled", [](const Control& c) { return !isAble(c); }},
    {"visible", "hidden", [](const Control& c) { return isShown(c); }},
    {"hidden", "visible", [](const Control& c) { return !isShown(c); }},
    {"checked", "unchecked", [](const Control& c) { return isChecked(c).value_or(false); }},
    {"unchecked", "checked", [](const Control& c) { return !isChecked(c).value_or(true); }},
    {"focus", "without the focus", [](const Control& c) { return holdsFocus(c); }},
    {"locked", "not locked", [](const Control& c) { return isLocked(c); }},
};

Finding rowTick(const ListView& list, const PlayLine& line, std::size_t at, const State& state) {
    line.atMost(at + 2);
    const int row = findListRow(list, line, at + 1);
    if (row < 0) throw Failure("there is no row " + inQuotes(line.word(at + 1, "")) + " in " + list.name());
    const bool wanted = state.name == "checked";
    return {list.checked(row) == wanted, list.name() + " to have the row " + std::string(state.name),
            std::string(state.opposite)};
}

Finding toolbarState(const Toolbar& bar, const std::string& key, const State& state) {
    const bool shown = isShown(bar) && bar.buttonVisible(key);
    const bool able = shown && bar.buttonEnabled(key);
    const bool held = state.name == "enabled"    ? able
                      : state.name == "disabled" ? !able
                      : state.name == "visible"  ? shown
                      : state.name == "hidden"   ? !shown
                                                 : false;
    return {held, "the toolbar button " + key + " " + std::string(state.name), std::string(state.opposite)};
}

Finding stateOf(Performance& show, const PlayLine& line, std::size_t at, const State& state) {
    const std::string& name = line.word(at, "the name of a control");
    if (const Toolbar* bar = show.stage.toolbarWith(name)) return toolbarState(*bar, name, state);
    const Control& control = show.stage.control(name);
    const bool ticks = state.name == "checked" || state.name == "unchecked";
    if (const auto* list = dynamic_cast<const ListView*>(&control); list && ticks) {
        return rowTick(*list, line, at, state);
    }
    line.atMost(at + 1);
    if (ticks && !isChecked(control)) throw Failure(control.name() + " is a " + control.kind() + ", it has no check");
    std::string found(state.opposite);
    if (state.name == "focus") {
        const Control* owner = controlOf(control.form().widget()->focusWidget());
        found = owner ? "the focus in " + owner->name() : "the focus in no control";
    }
    return {state.of(control), control.name() + " " + std::string(state.name), found};
}

// ---- statements --------------------------------------------------------------------------------------------------

/// The ways in which a value may be written in a play; the first is how it is told.
std::vector<std::string> textsOf(const Value& value) {
    const auto& raw = value.raw();
    if (const auto* bit = std::get_if<bool>(&raw)) return {*bit ? "1" : "0", value.text()};
    if (const auto* money = std::get_if<Money>(&raw)) return {value.text(), Format(*money, "0.0000")};
    if (const auto* date = std::get_if<Date>(&raw)) {
        const bool midnight = *date == date->dayOnly();
        return {Format(*date, midnight ? "yyyy-MM-dd" : "yyyy-MM-dd HH:mm:ss"), value.text()};
    }
    return {oneLineEnd(value.text())};
}

Finding sql(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 2);
    const std::string statement = line.text(at, "the statement");
    const std::string& wanted = line.pattern(at + 1, "the value");
    const std::string named = line.bare(at + 1);
    const Recordset rows = show.connection().Open(statement);
    const bool none = rows.empty() || rows.fields().empty();
    if (none || rows.at(0).isNull()) {
        const std::string found = none ? "none" : "NULL";
        return {named == found, (named.empty() ? inQuotes(wanted) : named) + " from the statement", found};
    }
    const std::vector<std::string> texts = textsOf(rows.at(0));
    Finding finding = compared("from the statement", wanted, texts.front());
    for (const std::string& text : texts) finding.held = finding.held || matches(wanted, text);
    finding.held = finding.held && named != "none" && named != "NULL";
    return finding;
}

Finding refusedSql(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 2);
    const std::string statement = line.text(at, "the statement");
    const int wanted = line.has(at + 1) ? line.number(at + 1, "the number of the error") : 0;
    const std::string expected = "a refused statement" + (wanted ? " with " + std::to_string(wanted) : std::string());
    Connection& connection = show.connection();
    std::string found = "it went through, and was taken back";
    bool held = false;
    connection.BeginTrans();
    try {
        connection.Execute(statement);
    } catch (const Error& error) {
        held = !wanted || error.number == wanted;
        found = std::to_string(error.number) + " " + error.description;
    }
    connection.RollbackTrans();
    return {held, expected, found};
}

Finding sent(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 1);
    const std::string& wanted = line.pattern(at, "the statement");
    const std::string last = show.record.tail();
    return {show.record.findNext(wanted), "the statement " + inQuotes(wanted), "the last ones sent:" + last};
}

Finding unsent(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 1);
    const std::string& wanted = line.pattern(at, "the statement");
    return {!show.record.hasAny(wanted), "no statement " + inQuotes(wanted), "one was sent:" + show.record.tail()};
}

// ---- reports and files -------------------------------------------------------------------------------------------

Finding report(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 3);
    const std::string& title = line.pattern(at, "the title of the report");
    ShownReport* report = show.program.report();
    if (!report) return {false, "the report " + inQuotes(title), "no report shown"};
    if (!matches(title, report->title()) || !line.has(at + 1)) {
        return compared("the report", title, report->title());
    }
    mustSay(line, at + 1, "contains");
    const std::string& wanted = line.pattern(at + 2, "the text in it");
    return contained("the report " + inQuotes(title), wanted, oneLineEnd(report->text()));
}

Finding file(Performance& show, const PlayLine& line, std::size_t at) {
    line.atMost(at + 3);
    const std::string name = line.text(at, "the name of a file");
    const std::string path = show.outPath(name);
    if (!fileExists(path)) return {false, "the file " + inQuotes(name), "no such file"};
    if (!line.has(at + 1)) return {true, "the file " + inQuotes(name), "it"};
    mustSay(line, at + 1, "contains");
    return contained("the file " + inQuotes(name), line.pattern(at + 2, "the text in it"),
                     oneLineEnd(readTextFile(path)));
}

Finding clipboardText(Performance&, const PlayLine& line, std::size_t at) {
    line.atMost(at + 2);
    mustSay(line, at, "contains");
    return contained("a clipboard", line.pattern(at + 1, "the text in it"), oneLineEnd(clipboard()));
}

Finding look(Performance& show, const PlayLine& line, std::size_t at) {
    using Look = Finding (*)(Performance&, const PlayLine&, std::size_t);
    static constexpr std::pair<const char*, Look> kLooks[] = {
        {"form", form},     {"caption", caption}, {"rows", rows},
        {"sql", sql},       {"sent", sent},       {"unsent", unsent},
        {"report", report}, {"file", file},       {"clipboard", clipboardText},
        {"answer", answer},
    };
    const std::string word = line.bare(at);
    if (word == "refused") {
        mustSay(line, at + 1, "sql");
        return refusedSql(show, line, at + 2);
    }
    for (const auto& [name, find] : kLooks) {
        if (word == name) return find(show, line, at + 1);
    }
    for (const State& state : kStates) {
        if (word == state.name) return stateOf(show, line, at + 1, state);
    }
    return text(show, line, at);
}

}  // namespace

void expect(Performance& show, const PlayLine& line) {
    const bool turned = line.bare(1) == "not";
    const Finding finding = look(show, line, turned ? 2 : 1);
    if (finding.held == turned) {
        throw Failure(turned ? "expected anything but " + finding.expected + ", found it"
                             : "expected " + finding.expected + ", found " + finding.found);
    }
}

}  // namespace kv
