#pragma once
// TableReader and styles: how the parts of a template are read from its written tree, each mistake kept by its line.

#include <set>

#include "platform/print/Template.h"

namespace kv {

/// Reads the members of one table and remembers which it was asked for; the rest are mistakes.
class TableReader {
public:
    TableReader(const TextNode* node, std::string what, std::vector<Mistake>& mistakes);
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;
    ~TableReader() = default;

    const TextNode* node(std::string_view key);
    bool has(std::string_view key) const { return node_ != nullptr && node_->find(key) != nullptr; }
    std::string text(std::string_view key, std::string standard = {});
    double number(std::string_view key, double standard, double least, double most);
    std::optional<double> length(std::string_view key);  ///< millimetres, -2000 to 2000
    int whole(std::string_view key, int standard, int least, int most);
    bool flag(std::string_view key, bool standard = false);
    int color(std::string_view key, int standard);
    Expression expression(std::string_view key);
    Expression caption(std::string_view key);                 ///< a text with {parts}
    std::vector<const TextNode*> list(std::string_view key);  ///< an array, or one thing by itself
    /// One of a few words; the index, `standard` when it is missing.
    int word(std::string_view key, const std::vector<std::string_view>& words, int standard);
    void mistake(const TextPlace& place, std::string text);
    const TextPlace& place() const { return place_; }
    /// Names the members that nobody asked for.
    void finish();

private:
    const TextNode* typed(std::string_view key, TextNode::Kind kind, std::string_view wanted);
    const TextNode* node_;
    std::string what_;
    TextPlace place_;
    std::vector<Mistake>& mistakes_;
    std::set<std::string, std::less<>> asked_;
};

TextAlign readAlign(TableReader& in);
PrintRule readRule(TableReader& in, std::string_view key, PrintRule standard);
std::string readFormat(TableReader& in, std::string_view key = "format");

/// All styles of a template: the built-in ones with what `[style.NAME]` tables change, "normal" first.
std::vector<PrintStyle> readStyles(const TextNode* styles, std::vector<Mistake>& mistakes);

}  // namespace kv
