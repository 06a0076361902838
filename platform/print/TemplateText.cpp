#include "platform/print/TemplateText.h"

#include <algorithm>

#include "platform/base/Paths.h"

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
        return readToml(text, file);
    } catch (const TomlError& broken) {
        throw TemplateError({{broken.place, broken.description}});
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
        const std::string path = pathFromTemplate(folder, name.text);
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

std::string pathFromTemplate(const std::string& folder, const std::string& name) {
    if (name.starts_with('/')) return name;
    const std::string beside = buildPath(folder, name);
    if (fileExists(beside)) return beside;
    const std::string common = buildPath(buildPath(folder, "../Reports"), name);
    return fileExists(common) ? common : beside;
}

TextNode readTemplateText(std::string_view text, const std::string& fileName, const std::string& folder) {
    return readWithIncludes(text, fileName, folder, 0);
}

TextNode readTemplateFile(const std::string& path) {
    const std::string name = fileNameOf(path);
    return readTemplateText(readTextFile(path), name, path.substr(0, path.size() - name.size()));
}

}  // namespace kv
