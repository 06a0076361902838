#pragma once
// TomlText: a TOML text as it was written: tables, arrays and values, each with the file and line it came from.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Error.h"

namespace kv {

/// Where something stands in such a file.
struct TextPlace {
    std::string file;  ///< file name without its folder
    int line = 0;      ///< from 1; 0 for the file as a whole
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

/// Raised for a text that is no TOML. The description is the reason alone; where it stands is in `place`.
class TomlError : public Error {
public:
    TomlError(TextPlace where, std::string reason);
    TextPlace place;
};

/// The whole text as a table; `file` is what the places say. Raises TomlError, whatever the text is.
TextNode readToml(std::string_view text, const std::string& file);

}  // namespace kv
