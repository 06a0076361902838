#include "platform/print/TemplateText.h"

#include <algorithm>
#include <sstream>

#include "platform/base/Paths.h"

namespace kv {
/// The parser asserts where it should refuse some broken texts; here that is a refusal too, in every kind of build.
struct TextNotRead {};
[[noreturn]] static void refuseText() { throw TextNotRead(); }
}  // namespace kv

// Inline functions of one name must be the same in the whole program: with assertions of its own this parser needs a
// namespace of its own, apart from the one that other rooms instantiate.
#undef NDEBUG
#define TOML_ASSERT(expr) ((expr) ? void() : ::kv::refuseText())
#define TOML_EXCEPTIONS 0
#define toml template_toml
#include <toml++/toml.h>

namespace kv {
namespace {

constexpr int kIncludeDepthMost = 8;

std::string listed(const std::vector<Mistake>& mistakes) {
    std::string out;
    for (const Mistake& m : mistakes) out += (out.empty() ? "" : "\n") + m.line();
    return out;
}

[[noreturn]] void fail(const std::string& file, int line, std::string text) {
    throw TemplateError({{{file, line}, std::move(text)}});
}

std::string isoOf(const toml::node& node) {
    std::ostringstream out;
    if (auto* day = node.as_date()) out << **day;
    if (auto* moment = node.as_date_time()) out << toml::date_time((*moment)->date, (*moment)->time);
    if (auto* time = node.as_time()) out << **time;
    return out.str();
}

TextNode nodeOf(const toml::node& from, const std::string& file) {
    TextNode to;
    to.place = {file, static_cast<int>(from.source().begin.line)};
    if (auto* table = from.as_table()) {
        to.kind = TextNode::Kind::Table;
        for (const auto& [key, value] : *table) {
            const int line = static_cast<int>(key.source().begin.line);
            to.members.push_back({std::string(key.str()), {file, line}, nodeOf(value, file)});
        }
        std::stable_sort(to.members.begin(), to.members.end(),
                         [](const auto& a, const auto& b) { return a.place.line < b.place.line; });
    } else if (auto* array = from.as_array()) {
        to.kind = TextNode::Kind::Array;
        for (const auto& item : *array) to.items.push_back(nodeOf(item, file));
    } else if (auto* text = from.as_string()) {
        to.kind = TextNode::Kind::Text;
        to.text = **text;
    } else if (auto* whole = from.as_integer()) {
        to.kind = TextNode::Kind::Integer;
        to.integer = **whole;
        to.number = static_cast<double>(**whole);
    } else if (auto* number = from.as_floating_point()) {
        to.kind = TextNode::Kind::Number;
        to.number = **number;
    } else if (auto* flag = from.as_boolean()) {
        to.kind = TextNode::Kind::Boolean;
        to.integer = **flag ? 1 : 0;
    } else {
        to.kind = TextNode::Kind::Date;
        to.text = isoOf(from);
    }
    return to;
}

/// Lays `over` on `under`: tables key by key, anything else replaces.
void mergeInto(TextNode& under, TextNode over) {
    if (under.kind != TextNode::Kind::Table || over.kind != TextNode::Kind::Table) {
        under = std::move(over);
        return;
    }
    under.place = over.place;
    for (TextNode::Member& member : over.members) {
        auto known = std::find_if(under.members.begin(), under.members.end(),
                                  [&](const TextNode::Member& m) { return m.key == member.key; });
        if (known == under.members.end()) {
            under.members.push_back(std::move(member));
        } else {
            known->place = member.place;
            mergeInto(known->value, std::move(member.value));
        }
    }
}

TextNode parsedText(std::string_view text, const std::string& file) {
    try {
        const toml::parse_result result = toml::parse(text, file);
        if (result) return nodeOf(result.table(), file);
        fail(file, static_cast<int>(result.error().source().begin.line), std::string(result.error().description()));
    } catch (const TextNotRead&) {
        fail(file, 0, "the text cannot be read: a key or a value is broken");
    }
}

TextNode readWithIncludes(std::string_view text, const std::string& file, const std::string& folder, int depth) {
    TextNode own = parsedText(text, file);
    const auto at = std::find_if(own.members.begin(), own.members.end(),
                                 [](const TextNode::Member& m) { return m.key == "include"; });
    if (at == own.members.end()) return own;
    const TextNode list = std::move(at->value);
    own.members.erase(at);
    if (list.kind != TextNode::Kind::Array) fail(file, list.place.line, "'include' is a list of file names");
    if (depth >= kIncludeDepthMost) fail(file, list.place.line, "includes are nested too deeply");
    TextNode merged;
    merged.kind = TextNode::Kind::Table;
    for (const TextNode& name : list.items) {
        if (name.kind != TextNode::Kind::Text) fail(file, name.place.line, "'include' is a list of file names");
        const std::string path = buildPath(folder, name.text);
        if (!fileExists(path)) fail(file, name.place.line, "the included file '" + name.text + "' does not exist");
        const std::string below = path.substr(0, path.size() - fileNameOf(path).size());
        mergeInto(merged, readWithIncludes(readTextFile(path), fileNameOf(path), below, depth + 1));
    }
    mergeInto(merged, std::move(own));
    return merged;
}

}  // namespace

std::string Mistake::line() const {
    return place.file + (place.line > 0 ? ":" + std::to_string(place.line) : "") + ": " + text;
}

void sortMistakes(std::vector<Mistake>& mistakes) {
    std::stable_sort(mistakes.begin(), mistakes.end(), [](const Mistake& a, const Mistake& b) {
        return a.place.file < b.place.file || (a.place.file == b.place.file && a.place.line < b.place.line);
    });
    mistakes.erase(std::unique(mistakes.begin(), mistakes.end(),
                               [](const Mistake& a, const Mistake& b) { return a.line() == b.line(); }),
                   mistakes.end());
}

TemplateError::TemplateError(std::vector<Mistake> found)
    : Error(1004, "Report template", listed(found)), mistakes(std::move(found)) {}

const TextNode* TextNode::find(std::string_view key) const {
    for (const Member& member : members) {
        if (member.key == key) return &member.value;
    }
    return nullptr;
}

std::string_view TextNode::kindName(Kind kind) {
    switch (kind) {
        case Kind::Missing:
            return "nothing";
        case Kind::Table:
            return "a table";
        case Kind::Array:
            return "a list";
        case Kind::Text:
            return "a text";
        case Kind::Integer:
            return "a whole number";
        case Kind::Number:
            return "a number";
        case Kind::Boolean:
            return "true or false";
        case Kind::Date:
            return "a date";
    }
    return "";
}

TextNode readTemplateText(std::string_view text, const std::string& fileName, const std::string& folder) {
    return readWithIncludes(text, fileName, folder, 0);
}

TextNode readTemplateFile(const std::string& path) {
    const std::string name = fileNameOf(path);
    return readTemplateText(readTextFile(path), name, path.substr(0, path.size() - name.size()));
}

}  // namespace kv
