#include "platform/print/StyleReader.h"

#include <algorithm>
#include <charconv>

#include "platform/base/Text.h"
#include "platform/print/CellFormat.h"

namespace kv {
namespace {

const std::vector<std::string_view> kRules = {"none", "hair", "thin", "medium", "double"};

struct BuiltIn {
    const char* name;
    double size_pt;
    bool bold;
    bool italic;
    int color;
    TextAlign align;
    PrintRule above;
    PrintRule below;
};

/// The styles that every template has; size 0 keeps that of "normal".
// clang-format off
constexpr BuiltIn kBuiltIn[] = {
    {"normal",   8.5, false, false, 0x1a1a1a, TextAlign::Auto,   PrintRule::None, PrintRule::None},
    {"company", 12,   true,  false, 0x1a1a1a, TextAlign::Left,   PrintRule::None, PrintRule::None},
    {"title",   11,   true,  false, 0x1a1a1a, TextAlign::Left,   PrintRule::None, PrintRule::None},
    {"subtitle", 9,   false, false, 0x4a4a4a, TextAlign::Left,   PrintRule::None, PrintRule::None},
    {"heading",  8,   true,  false, 0x1a1a1a, TextAlign::Auto,   PrintRule::Thin, PrintRule::Thin},
    {"detail",   0,   false, false, 0x1a1a1a, TextAlign::Auto,   PrintRule::None, PrintRule::None},
    {"group",    9,   true,  false, 0x1a1a1a, TextAlign::Left,   PrintRule::None, PrintRule::None},
    {"subtotal", 0,   true,  false, 0x1a1a1a, TextAlign::Auto,   PrintRule::Thin, PrintRule::None},
    {"grand",    0,   true,  false, 0x1a1a1a, TextAlign::Auto,   PrintRule::Thin, PrintRule::Double},
    {"carried",  0,   false, true,  0x4a4a4a, TextAlign::Auto,   PrintRule::None, PrintRule::None},
    {"figure",   0,   false, false, 0x1a1a1a, TextAlign::Right,  PrintRule::None, PrintRule::None},
    {"bold",     0,   true,  false, 0x1a1a1a, TextAlign::Auto,   PrintRule::None, PrintRule::None},
    {"small",    7,   false, false, 0x5a5a5a, TextAlign::Auto,   PrintRule::None, PrintRule::None},
    {"alert",    0,   false, false, 0xb00020, TextAlign::Auto,   PrintRule::None, PrintRule::None},
};
// clang-format on

void readStyle(PrintStyle& style, TableReader& in) {
    style.font = in.text("font", style.font);
    style.size_pt = in.number("size", style.size_pt, 3, 96);
    style.bold = in.flag("bold", style.bold);
    style.italic = in.flag("italic", style.italic);
    style.color = in.color("color", style.color);
    style.fill = in.color("fill", style.fill);
    if (in.has("align")) style.align = readAlign(in);
    if (in.has("format")) style.format = readFormat(in);
    style.above = readRule(in, "above", style.above);
    style.below = readRule(in, "below", style.below);
}

PrintStyle standardStyle(const BuiltIn& b, const PrintStyle& normal) {
    PrintStyle style = normal;
    style.name = b.name;
    if (b.size_pt > 0) style.size_pt = b.size_pt;
    style.bold = b.bold;
    style.italic = b.italic;
    style.color = b.color == 0x1a1a1a ? normal.color : b.color;
    style.align = b.align;
    style.above = b.above;
    style.below = b.below;
    return style;
}

PrintStyle* styleNamed(std::vector<PrintStyle>& styles, std::string_view name) {
    auto at = std::find_if(styles.begin(), styles.end(), [&](const PrintStyle& s) { return s.name == name; });
    return at == styles.end() ? nullptr : &*at;
}

}  // namespace

TableReader::TableReader(const TextNode* node, std::string what, std::vector<Mistake>& mistakes)
    : node_(node), what_(std::move(what)), mistakes_(mistakes) {
    if (node_ == nullptr) return;
    place_ = node_->place;
    if (node_->kind != TextNode::Kind::Table) {
        mistake(place_, what_ + " is a table, not " + std::string(TextNode::kindName(node_->kind)));
        node_ = nullptr;
    }
}

void TableReader::mistake(const TextPlace& place, std::string text) { mistakes_.push_back({place, std::move(text)}); }

const TextNode* TableReader::node(std::string_view key) {
    asked_.emplace(key);
    return node_ == nullptr ? nullptr : node_->find(key);
}

const TextNode* TableReader::typed(std::string_view key, TextNode::Kind kind, std::string_view wanted) {
    const TextNode* found = node(key);
    if (found == nullptr || found->kind == kind) return found;
    if (kind == TextNode::Kind::Number && found->kind == TextNode::Kind::Integer) return found;
    mistake(found->place, "'" + std::string(key) + "' of " + what_ + " is " + std::string(wanted) + ", not " +
                              std::string(TextNode::kindName(found->kind)));
    return nullptr;
}

std::string TableReader::text(std::string_view key, std::string standard) {
    const TextNode* found = typed(key, TextNode::Kind::Text, "a text");
    return found == nullptr ? std::move(standard) : found->text;
}

double TableReader::number(std::string_view key, double standard, double least, double most) {
    const TextNode* found = typed(key, TextNode::Kind::Number, "a number");
    if (found == nullptr) return standard;
    if (!(found->number >= least && found->number <= most)) {
        mistake(found->place, "'" + std::string(key) + "' of " + what_ + " must be from " + plainText(least) + " to " +
                                  plainText(most));
        return standard;
    }
    return found->number;
}

std::optional<double> TableReader::length(std::string_view key) {
    if (!has(key)) {
        node(key);
        return std::nullopt;
    }
    return number(key, 0, -2000, 2000);
}

int TableReader::whole(std::string_view key, int standard, int least, int most) {
    const TextNode* found = typed(key, TextNode::Kind::Integer, "a whole number");
    if (found == nullptr) return standard;
    return static_cast<int>(number(key, standard, least, most));
}

bool TableReader::flag(std::string_view key, bool standard) {
    const TextNode* found = typed(key, TextNode::Kind::Boolean, "true or false");
    return found == nullptr ? standard : found->integer != 0;
}

int TableReader::color(std::string_view key, int standard) {
    const TextNode* found = typed(key, TextNode::Kind::Text, "a colour like \"#1a1a1a\"");
    if (found == nullptr) return standard;
    if (found->text == "none") return kNoColor;
    int value = 0;
    const char* end = found->text.data() + found->text.size();
    if (found->text.size() == 7 && found->text[0] == '#') {
        const auto read = std::from_chars(found->text.data() + 1, end, value, 16);
        if (read.ec == std::errc() && read.ptr == end && value >= 0) return value;
    }
    mistake(found->place, "'" + found->text + "' is no colour; write it like \"#1a1a1a\"");
    return standard;
}

namespace {

Expression parsed(TableReader& in, const TextNode& node, bool caption) {
    Expression out;
    try {
        out = caption ? Expression::parseText(node.text) : Expression::parse(node.text);
    } catch (const ExpressionError& e) {
        in.mistake(node.place, e.text + " (character " + std::to_string(e.at + 1) + " of \"" + node.text + "\")");
    }
    out.place = node.place;
    return out;
}

}  // namespace

Expression TableReader::expression(std::string_view key) {
    const TextNode* found = node(key);
    if (found == nullptr) return {};
    if (found->kind == TextNode::Kind::Boolean) return Expression::constant(found->integer != 0);
    if (found->kind == TextNode::Kind::Integer) return Expression::constant(found->integer);
    if (found->kind == TextNode::Kind::Number) return Expression::constant(found->number);
    found = typed(key, TextNode::Kind::Text, "an expression in quotes");
    return found == nullptr ? Expression() : parsed(*this, *found, false);
}

Expression TableReader::caption(std::string_view key) {
    const TextNode* found = typed(key, TextNode::Kind::Text, "a text");
    return found == nullptr ? Expression() : parsed(*this, *found, true);
}

std::vector<const TextNode*> TableReader::list(std::string_view key) {
    std::vector<const TextNode*> out;
    const TextNode* found = node(key);
    if (found == nullptr) return out;
    if (found->kind != TextNode::Kind::Array) return {found};
    for (const TextNode& item : found->items) out.push_back(&item);
    return out;
}

int TableReader::word(std::string_view key, const std::vector<std::string_view>& words, int standard) {
    const TextNode* found = typed(key, TextNode::Kind::Text, "a word");
    if (found == nullptr) return standard;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (equalsNoCase(words[i], found->text)) return static_cast<int>(i);
    }
    std::string all;
    for (const std::string_view w : words) all += (all.empty() ? "" : ", ") + std::string(w);
    mistake(found->place, "'" + std::string(key) + "' of " + what_ + " is one of " + all);
    return standard;
}

void TableReader::finish() {
    if (node_ == nullptr) return;
    for (const TextNode::Member& member : node_->members) {
        if (!asked_.contains(member.key)) mistake(member.place, what_ + " has no '" + member.key + "'");
    }
}

TextAlign readAlign(TableReader& in) {
    return static_cast<TextAlign>(in.word("align", {"auto", "left", "right", "center"}, 0));
}

PrintRule readRule(TableReader& in, std::string_view key, PrintRule standard) {
    return static_cast<PrintRule>(in.word(key, kRules, static_cast<int>(standard)));
}

std::string readFormat(TableReader& in, std::string_view key) {
    std::string pattern = in.text(key);
    std::string why;
    if (!isCellFormat(pattern, why)) in.mistake(in.node(key)->place, why);
    return pattern;
}

std::vector<PrintStyle> readStyles(const TextNode* styles, std::vector<Mistake>& mistakes) {
    std::vector<PrintStyle> out;
    PrintStyle normal;
    normal.name = "normal";
    if (const TextNode* own = styles != nullptr ? styles->find("normal") : nullptr) {
        TableReader in(own, "the style 'normal'", mistakes);
        readStyle(normal, in);
        in.finish();
    }
    out.push_back(normal);
    for (const BuiltIn& b : kBuiltIn) {
        if (normal.name != b.name) out.push_back(standardStyle(b, normal));
    }
    if (styles == nullptr) return out;
    for (const TextNode::Member& member : styles->members) {
        if (member.key == "normal") continue;
        TableReader in(&member.value, "the style '" + member.key + "'", mistakes);
        PrintStyle style = normal;
        if (const PrintStyle* known = styleNamed(out, member.key)) style = *known;
        const std::string based = in.text("based");
        if (!based.empty()) {
            const PrintStyle* base = styleNamed(out, based);
            if (base == nullptr)
                in.mistake(in.node("based")->place, "there is no style '" + based + "' above this one");
            if (base != nullptr) style = *base;
        }
        style.name = member.key;
        readStyle(style, in);
        in.finish();
        if (PrintStyle* known = styleNamed(out, member.key)) {
            *known = style;
        } else {
            out.push_back(style);
        }
    }
    return out;
}

}  // namespace kv
