#include "platform/print/BandReader.h"

#include <array>

#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr std::array<std::pair<std::string_view, BandItem::Kind>, 6> kItemKinds = {
    {{"text", BandItem::Kind::Text},
     {"line", BandItem::Kind::Line},
     {"box", BandItem::Kind::Box},
     {"image", BandItem::Kind::Image},
     {"barcode", BandItem::Kind::Barcode},
     {"subreport", BandItem::Kind::SubReport}}};
const std::vector<std::string_view> kTotalWords = {"none", "sum", "count", "average", "min", "max"};
constexpr int kLinesMost = 200;

}  // namespace

int BandReader::style(TableReader& in, std::string_view key, std::string_view standard) {
    const std::string name = in.text(key, std::string(standard));
    for (std::size_t i = 0; i < styles_.size(); ++i) {
        if (styles_[i].name == name) return static_cast<int>(i);
    }
    if (name.empty()) return -1;
    in.mistake(in.node(key)->place, "there is no style '" + name + "'");
    return -1;
}

Drill BandReader::drill(TableReader& in) {
    Drill out;
    const TextNode* node = in.node("drill");
    if (node == nullptr) return out;
    TableReader own(node, "'drill'", mistakes_);
    out.screen = own.text("screen");
    out.key = own.expression("key");
    if (out.screen.empty() || out.key.empty()) own.mistake(node->place, "'drill' needs a screen and a key");
    own.finish();
    return out;
}

std::vector<Condition> BandReader::conditions(TableReader& in) {
    std::vector<Condition> out;
    for (const TextNode* node : in.list("conditions")) {
        TableReader own(node, "a condition", mistakes_);
        Condition condition;
        condition.when = own.expression("when");
        condition.style = style(own, "style", "");
        if (condition.when.empty() || !own.has("style"))
            own.mistake(node->place, "a condition needs 'when' and 'style'");
        own.finish();
        out.push_back(std::move(condition));
    }
    return out;
}

std::vector<std::pair<std::string, Expression>> BandReader::named(TableReader& in, std::string_view key) {
    std::vector<std::pair<std::string, Expression>> out;
    const TextNode* node = in.node(key);
    if (node == nullptr) return out;
    TableReader own(node, "'" + std::string(key) + "'", mistakes_);
    for (const TextNode::Member& member : node->members) out.emplace_back(member.key, own.expression(member.key));
    return out;
}

void BandReader::placeOf(TableReader& in, BandItem& item) {
    item.x = in.length("x").value_or(0);
    const std::optional<double> y = in.length("y");
    item.y = y.value_or(0);
    item.width = in.length("width");
    item.height = in.length("height");
    item.column = in.text("column");
    item.line = in.whole("line", y ? 0 : -1, 1, kLinesMost);
    if (y && in.has("line")) in.mistake(item.place, "an item has either a 'line' or a 'y'");
}

void BandReader::textOf(TableReader& in, BandItem& item) {
    const bool caption = in.has("text");
    item.value = caption ? in.caption("text") : in.expression("value");
    if (caption && in.has("value")) in.mistake(item.place, "an item has either a 'text' or a 'value'");
    if (!caption && !in.has("value")) in.mistake(item.place, "a text item needs a 'text' or a 'value'");
    if (!caption) in.node("value");
    item.style = style(in, "style", "normal");
    item.align = readAlign(in);
    item.format = readFormat(in);
    item.wrap = in.flag("wrap");
    item.conditions = conditions(in);
    item.drill = drill(in);
}

void BandReader::subreportOf(TableReader& in, BandItem& item) {
    item.subreport = in.text("name");
    item.with = named(in, "with");
    item.link = named(in, "link");
    if (item.subreport.empty()) in.mistake(item.place, "a sub-report needs the name of its [subreport.NAME] table");
}

BandItem BandReader::item(const TextNode& node, BandItem::Kind kind) {
    static constexpr std::array<const char*, 6> kWhat = {"a text",   "a line",    "a box",
                                                         "an image", "a barcode", "a sub-report"};
    TableReader in(&node, kWhat[static_cast<std::size_t>(kind)], mistakes_);
    BandItem out;
    out.kind = kind;
    out.place = node.place;
    placeOf(in, out);
    out.when = in.expression("when");
    switch (kind) {
        case BandItem::Kind::Text:
            textOf(in, out);
            break;
        case BandItem::Kind::Line:
        case BandItem::Kind::Box:
            out.weight = in.number("weight", 0.2, 0, 10);
            out.color = in.color("color", out.color);
            out.fill = kind == BandItem::Kind::Box ? in.color("fill", kNoColor) : kNoColor;
            break;
        case BandItem::Kind::Image:
            out.value = in.has("file") ? in.caption("file") : in.expression("value");
            if (out.value.empty()) in.mistake(out.place, "an image needs a 'file'");
            break;
        case BandItem::Kind::Barcode:
            out.value = in.expression("value");
            out.barcode = static_cast<BarcodeKind>(in.word("kind", {"code39", "code128"}, 1));
            if (out.value.empty()) in.mistake(out.place, "a barcode needs a 'value'");
            break;
        case BandItem::Kind::SubReport:
            subreportOf(in, out);
            break;
    }
    const bool sized = kind == BandItem::Kind::Box || kind == BandItem::Kind::Image || kind == BandItem::Kind::Barcode;
    if (sized && (!out.width || !out.height))
        in.mistake(out.place, "a box, image or barcode needs 'width' and 'height'");
    in.finish();
    return out;
}

void BandReader::items(TableReader& in, Band& band, std::string_view key, BandItem::Kind kind) {
    for (const TextNode* node : in.list(key)) band.items.push_back(item(*node, kind));
}

/// Items without line and y follow each other, a line each.
void BandReader::checkLines(Band& band) {
    int last = 0;
    for (BandItem& it : band.items) {
        const bool flows = it.kind == BandItem::Kind::Text;
        if (it.line == -1) it.line = flows ? last + 1 : 0;
        if (it.line > last) last = it.line;
    }
}

Band BandReader::band(const TextNode* node, const std::string& what) {
    Band out;
    out.name = what;
    if (node == nullptr) return out;
    TableReader in(node, what, mistakes_);
    out.given = true;
    out.place = node->place;
    out.height = in.number("height", 0, 0, 2000);
    out.before = in.number("before", 0, 0, 500);
    out.after = in.number("after", 0, 0, 500);
    out.when = in.expression("when");
    out.newPage = static_cast<NewPage>(in.word("newPage", {"no", "before", "after"}, 0));
    out.atBottom = in.flag("atBottom");
    out.drill = drill(in);
    out.totals = in.caption("totals");
    const bool grand = what == "reportFooter";
    out.totalsStyle = style(in, "totalsStyle", grand ? "grand" : "subtotal");
    for (const auto& [key, kind] : kItemKinds) items(in, out, key, kind);
    in.finish();
    checkLines(out);
    return out;
}

/// "sum" and its like mean the column's own value; anything else is an expression with totals in it.
Expression BandReader::totalOf(TableReader& in, const ReportColumn& column) {
    const TextNode* node = in.node("total");
    if (node == nullptr) return {};
    if (node->kind == TextNode::Kind::Text) {
        for (const std::string_view word : kTotalWords) {
            if (!equalsNoCase(node->text, word)) continue;
            const std::string inner = column.value.text();
            if (word == "none" || inner.empty()) return {};
            Expression total = Expression::parse(std::string(word) + "(" + inner + ")");
            total.place = node->place;
            return total;
        }
    }
    return in.expression("total");
}

ReportColumn BandReader::column(const TextNode& node) {
    TableReader in(&node, "a column", mistakes_);
    ReportColumn out;
    out.place = node.place;
    out.name = in.text("name");
    if (out.name.empty()) in.mistake(node.place, "a column needs a 'name'");
    out.value = in.expression("value");
    if (!in.has("value") && !out.name.empty() && out.name.find(']') == std::string::npos) {
        out.value = Expression::parse("[" + out.name + "]");
        out.value.place = node.place;
    }
    out.heading = in.has("heading") ? in.caption("heading") : Expression::constant(out.name);
    out.over = in.caption("over");
    out.width = in.number("width", 0, 0, 1000);
    out.align = readAlign(in);
    out.style = style(in, "style", "");
    out.format = readFormat(in);
    out.wrap = in.flag("wrap");
    out.indent = in.expression("indent");
    out.hideRepeated = in.flag("hideRepeated");
    out.when = in.expression("when");
    out.total = totalOf(in, out);
    out.conditions = conditions(in);
    out.drill = drill(in);
    in.finish();
    return out;
}

ReportGroup BandReader::group(const TextNode& node) {
    TableReader in(&node, "a group", mistakes_);
    ReportGroup out;
    out.place = node.place;
    out.by = in.expression("by");
    out.name = in.text("name", out.by.soleName());
    if (!in.has("by")) in.mistake(node.place, "a group needs 'by': what its rows have in common");
    if (out.name.empty() && in.has("by")) in.mistake(node.place, "a group by an expression needs a 'name'");
    if (equalsNoCase(out.name, "page") || equalsNoCase(out.name, "report")) {
        in.mistake(node.place, "'page' and 'report' are no names for a group");
    }
    out.label = in.caption("label");
    out.keepTogether = in.flag("keepTogether");
    out.newPage = in.flag("newPage");
    out.repeatHeader = in.flag("repeatHeader");
    out.restartPages = in.flag("restartPages");
    out.header = band(in.node("header"), "header of " + out.name);
    out.footer = band(in.node("footer"), "footer of " + out.name);
    in.finish();
    return out;
}

Detail BandReader::detail(const TextNode* node) {
    Detail out;
    TableReader in(node, "detail", mistakes_);
    out.headings = in.text("headings", "page");
    out.headingStyle = style(in, "headingStyle", "heading");
    out.rowStyle = style(in, "rowStyle", "detail");
    out.conditions = conditions(in);
    out.rules = readRule(in, "rules", PrintRule::None);
    out.stripe = in.color("stripe", kNoColor);
    out.spaceBefore = in.expression("spaceBefore");
    out.emptyText = in.text("emptyText");
    out.carriedTo = in.caption("carriedTo");
    out.carriedFrom = in.caption("carriedFrom");
    out.carriedOver = in.text("carriedOver", "report");
    // the rest of the table is a band like the others
    if (node != nullptr && node->kind == TextNode::Kind::Table) {
        TextNode rest = *node;
        std::erase_if(rest.members, [](const TextNode::Member& m) {
            static constexpr std::array<std::string_view, 11> kOwn = {
                "headings",  "headingStyle", "rowStyle",  "conditions",  "rules",      "stripe",
                "emptyText", "spaceBefore",  "carriedTo", "carriedFrom", "carriedOver"};
            return std::find(kOwn.begin(), kOwn.end(), m.key) != kOwn.end();
        });
        out.band = band(&rest, "detail");
    }
    out.band.given = true;
    out.band.name = "detail";
    return out;
}

}  // namespace kv
