#pragma once
// TemplateText: a report template as it was written: tables, arrays and values, each with the file and line it came
// from.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Error.h"

namespace kv {

/// Where something stands in a template or one of its includes.
struct TextPlace {
    std::string file;  ///< file name without its folder
    int line = 0;      ///< from 1; 0 for the file as a whole
};

struct Mistake {
    TextPlace place;
    std::string text;
    /// "TrialBalance.rpt:12: there is no field 'Debt'"
    std::string line() const;
};

/// By file and line, each once.
void sortMistakes(std::vector<Mistake>& mistakes);

/// All mistakes of a template. The description lists them, one a line.
class TemplateError : public Error {
public:
    explicit TemplateError(std::vector<Mistake> found);
    std::vector<Mistake> mistakes;
};

/// One node of the written tree. Members of a table keep the order in which they stand in the file.
struct TextNode {
    enum class Kind { Missing, Table, Array, Text, Integer, Number, Boolean, Date };
    struct Member;

    Kind kind = Kind::Missing;
    TextPlace place;
    std::string text;          ///< Text; dates in ISO form
    std::int64_t integer = 0;  ///< Integer, Boolean
    double number = 0;         ///< Number, Integer
    std::vector<Member> members;
    std::vector<TextNode> items;

    explicit operator bool() const { return kind != Kind::Missing; }
    const TextNode* find(std::string_view key) const;
    static std::string_view kindName(Kind kind);
};

struct TextNode::Member {
    std::string key;
    TextPlace place;
    TextNode value;
};

/// Where a file that a template names is: beside the template, else in the folder Reports next to the template's own,
/// so that a copy of a common template works unchanged in a client's folder. It need not exist.
std::string pathFromTemplate(const std::string& folder, const std::string& name);

/// Reads a template file with what it includes. `include = ["common/page.toml"]` names files as pathFromTemplate finds
/// them; tables are merged key by key, anything else in the including file replaces what the include brought.
/// Raises 53 when the file itself is missing, TemplateError for what is wrong in the text.
TextNode readTemplateFile(const std::string& path);
/// The same from a text, with the folder against which includes are looked up.
TextNode readTemplateText(std::string_view text, const std::string& fileName, const std::string& folder);

}  // namespace kv
