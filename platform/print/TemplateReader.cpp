#include <array>
#include <set>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/print/BandReader.h"
#include "platform/print/Template.h"

namespace kv {
namespace {

struct Paper {
    const char* name;
    double width_mm;
    double height_mm;
};
constexpr std::array<Paper, 6> kPapers = {{{"A4", 210, 297},
                                           {"Letter", 215.9, 279.4},
                                           {"Legal", 215.9, 355.6},
                                           {"Folio", 215.9, 330.2},
                                           {"A5", 148, 210},
                                           {"A3", 297, 420}}};

const std::vector<std::string_view> kTypeWords = {"number", "currency", "boolean", "date", "text"};
constexpr std::array<ParameterType, 5> kTypes = {ParameterType::Number, ParameterType::Currency, ParameterType::Boolean,
                                                 ParameterType::Date, ParameterType::Text};

/// Types of a source's columns as templates name them.
struct FieldType {
    const char* name;
    DataType type;
};
constexpr std::array<FieldType, 6> kFieldTypes = {{{"text", DataType::VarChar},
                                                   {"number", DataType::Double},
                                                   {"integer", DataType::Integer},
                                                   {"currency", DataType::Currency},
                                                   {"date", DataType::DateTime},
                                                   {"boolean", DataType::Boolean}}};

constexpr int kSubreportDepthMost = 5;

Template readFile(const std::string& path, int depth);
Template checked(const TextNode& root, const std::string& file, const std::string& folder, int depth);

class Reader {
public:
    Reader(const TextNode& root, std::string file, std::string folder, std::vector<Mistake>& mistakes, int depth,
           const Template* parent = nullptr)
        : in_(&root, parent == nullptr ? "the template" : "the sub-report", mistakes),
          mistakes_(mistakes),
          depth_(depth) {
        out_.file = std::move(file);
        out_.folder = std::move(folder);
        out_.styles = parent == nullptr ? readStyles(in_.node("style"), mistakes) : parent->styles;
        if (parent != nullptr) out_.page = parent->page;
        if (parent != nullptr) out_.formulas = parent->formulas;
    }

    /// Names of fields are judged where the sources say what there is; what else is wrong does not keep them from it.
    void checkFields(const Template& read) {
        if (!sourcesSound_) return;
        std::vector<std::vector<Field>> fields;
        for (const SourceDef& source : read.sources) fields.push_back(source.fields);
        const std::vector<Mistake> names = checkTemplate(read, fields);
        mistakes_.insert(mistakes_.end(), names.begin(), names.end());
    }

    Template read() {
        out_.title = in_.text("title", out_.title);
        page(in_.node("page"));
        for (const TextNode* node : in_.list("parameter")) parameter(*node);
        const std::size_t before = mistakes_.size();
        for (const TextNode* node : in_.list("source")) source(*node);
        if (out_.sources.empty()) in_.mistake(in_.place(), "the template has no [source]");
        sourcesSound_ = mistakes_.size() == before;
        formulas(in_.node("formula"));
        out_.where = in_.expression("where");
        sort();
        BandReader bands(out_.styles, mistakes_);
        out_.reportHeader = bands.band(in_.node("reportHeader"), "reportHeader");
        out_.reportFooter = bands.band(in_.node("reportFooter"), "reportFooter");
        out_.signature = bands.band(in_.node("signature"), "signature");
        out_.pageHeader = bands.band(in_.node("pageHeader"), "pageHeader");
        out_.pageFooter = bands.band(in_.node("pageFooter"), "pageFooter");
        for (const TextNode* node : in_.list("group")) out_.groups.push_back(bands.group(*node));
        for (const TextNode* node : in_.list("column")) out_.columns.push_back(bands.column(*node));
        out_.detail = bands.detail(in_.node("detail"));
        crosstab(in_.node("crosstab"));
        subreports(in_.node("subreport"));
        in_.finish();
        checkNames();
        checkWidths();
        return std::move(out_);
    }

private:
    void page(const TextNode* node) {
        if (node == nullptr) return;
        TableReader in(node, "page", mistakes_);
        PageSetup& page = out_.page;
        paper(in, in.text("size", "A4"));
        if (in.word("orientation", {"portrait", "landscape"}, 0) == 1) std::swap(page.width, page.height);
        if (const TextNode* margins = in.node("margins")) {
            const std::array<double*, 4> sides = {&page.left, &page.top, &page.right, &page.bottom};
            const bool good = margins->items.size() == 4;
            if (!good) in.mistake(margins->place, "'margins' are four numbers: left, top, right, bottom");
            for (std::size_t i = 0; good && i < 4; ++i) *sides[i] = margins->items[i].number;
        }
        page.columns = in.whole("columns", 1, 1, 20);
        page.gap = in.number("gap", page.gap, 0, 100);
        in.finish();
        const double high = page.height - page.top - page.bottom;
        const bool sound = page.left >= 0 && page.top >= 0 && page.right >= 0 && page.bottom >= 0;
        if (!sound || page.columnWidth() < 10 || high < 10)
            in.mistake(node->place, "the margins leave no room on the page");
    }

    void paper(TableReader& in, const std::string& size) {
        for (const Paper& p : kPapers) {
            if (!equalsNoCase(p.name, size)) continue;
            out_.page.width = p.width_mm;
            out_.page.height = p.height_mm;
            return;
        }
        const std::vector<std::string> sides = split(LCase(size), 'x');
        const double width = sides.size() == 2 && IsNumeric(sides[0]) ? numberOf(sides[0]) : 0;
        const double height = sides.size() == 2 && IsNumeric(sides[1]) ? numberOf(sides[1]) : 0;
        if (width < 20 || width > 2000 || height < 20 || height > 2000) {
            in.mistake(in.node("size")->place,
                       "'" + size + "' is no paper; use A3, A4, A5, Letter, Legal, Folio or \"203x89\" in millimetres");
            return;
        }
        out_.page.width = width;
        out_.page.height = height;
    }

    static Value valueOf(const TextNode& node) {
        switch (node.kind) {
            case TextNode::Kind::Integer:
                return node.integer;
            case TextNode::Kind::Number:
                return node.number;
            case TextNode::Kind::Boolean:
                return node.integer != 0;
            case TextNode::Kind::Date:
                return Date::fromIso(node.text) ? Value(*Date::fromIso(node.text)) : Value();
            default:
                return node.text;
        }
    }

    void parameter(const TextNode& node) {
        TableReader in(&node, "a parameter", mistakes_);
        ParameterDef def;
        def.place = node.place;
        def.name = in.text("name");
        def.type = kTypes[static_cast<std::size_t>(in.word("type", kTypeWords, 4))];
        def.prompt = in.text("prompt", def.name);
        if (const TextNode* standard = in.node("default")) def.standard = valueOf(*standard);
        if (const TextNode* sample = in.node("sample")) def.sample = valueOf(*sample);
        if (def.name.empty()) in.mistake(node.place, "a parameter needs a 'name'");
        if (out_.parameterIndex(def.name) >= 0) in.mistake(node.place, "the parameter '" + def.name + "' stands twice");
        in.finish();
        out_.parameters.push_back(std::move(def));
    }

    void source(const TextNode& node) {
        TableReader in(&node, "a source", mistakes_);
        SourceDef def;
        def.place = node.place;
        def.name = in.text("name", "main");
        def.statement = in.text("statement");
        if (trimBlanks(def.statement).empty()) in.mistake(node.place, "a source needs a 'statement'");
        def.fieldsGiven = in.has("columns");
        for (const TextNode* column : in.list("columns")) field(in, def, *column);
        for (const SourceDef& other : out_.sources) {
            if (equalsNoCase(other.name, def.name))
                in.mistake(node.place, "the source '" + def.name + "' stands twice");
        }
        in.finish();
        out_.sources.push_back(std::move(def));
    }

    /// "Debit currency"; without a type it is a text.
    void field(TableReader& in, SourceDef& def, const TextNode& column) {
        Field field;
        const std::size_t blank = column.text.rfind(' ');
        field.name = column.text.substr(0, blank);
        const std::string type = blank == std::string::npos ? "text" : column.text.substr(blank + 1);
        for (const FieldType& known : kFieldTypes) {
            if (known.name != type) continue;
            field.type = known.type;
            def.fields.push_back(field);
            return;
        }
        in.mistake(column.place, "'" + column.text +
                                     "' is not a column; write \"Debit currency\" with one of text, "
                                     "number, integer, currency, date, boolean");
    }

    void formulas(const TextNode* node) {
        if (node == nullptr) return;
        TableReader in(node, "formula", mistakes_);
        for (const TextNode::Member& member : node->members) out_.formulas[member.key] = in.expression(member.key);
    }

    void sort() {
        for (const TextNode* node : in_.list("sort")) {
            SortKey key;
            std::string text = node->text;
            if (text.ends_with(" desc")) {
                key.descending = true;
                text.resize(text.size() - 5);
            }
            try {
                key.by = Expression::parse(text);
            } catch (const ExpressionError& e) {
                in_.mistake(node->place, e.text);
            }
            key.by.place = node->place;
            out_.sort.push_back(std::move(key));
        }
    }

    void crosstab(const TextNode* node) {
        if (node == nullptr) return;
        TableReader in(node, "crosstab", mistakes_);
        CrossTab& tab = out_.crosstab;
        tab.given = true;
        tab.place = node->place;
        for (const TextNode* row : in.list("rows")) {
            try {
                tab.rows.push_back(Expression::parse(row->text));
                tab.rows.back().place = row->place;
            } catch (const ExpressionError& e) {
                in.mistake(row->place, e.text);
            }
        }
        tab.columns = in.expression("columns");
        tab.heading = in.has("heading") ? in.expression("heading") : tab.columns;
        tab.value = in.expression("value");
        static constexpr std::array<TotalKind, 5> kKinds = {TotalKind::Sum, TotalKind::Count, TotalKind::Average,
                                                            TotalKind::Min, TotalKind::Max};
        tab.total = kKinds[static_cast<std::size_t>(in.word("total", {"sum", "count", "average", "min", "max"}, 0))];
        tab.width = in.number("width", tab.width, 5, 500);
        tab.format = readFormat(in);
        tab.rowTotal = in.text("rowTotal");
        tab.descending = in.flag("descending");
        if (tab.rows.empty() || tab.columns.empty() || tab.value.empty()) {
            in.mistake(node->place, "a cross-tab needs 'rows', 'columns' and 'value'");
        }
        in.finish();
    }

    void subreports(const TextNode* node) {
        if (node == nullptr) return;
        if (depth_ >= kSubreportDepthMost) {
            in_.mistake(node->place, "sub-reports are nested too deeply");
            return;
        }
        TableReader in(node, "subreport", mistakes_);
        for (const TextNode::Member& member : node->members) {
            in.node(member.key);
            const TextNode* file = member.value.find("file");
            try {
                if (file != nullptr) {
                    out_.subreports[member.key] =
                        std::make_shared<Template>(readFile(pathFromTemplate(out_.folder, file->text), depth_ + 1));
                } else {
                    Reader own(member.value, out_.file, out_.folder, mistakes_, depth_ + 1, &out_);
                    const auto sub = std::make_shared<Template>(own.read());
                    own.checkFields(*sub);
                    out_.subreports[member.key] = sub;
                }
            } catch (const TemplateError& e) {
                mistakes_.insert(mistakes_.end(), e.mistakes.begin(), e.mistakes.end());
            } catch (const Error& e) {
                mistakes_.push_back({member.place, e.description});
            }
        }
    }

    void checkNames() {
        for (const SourceDef& source : out_.sources) {
            for (const std::string& name : statementParameters(source.statement)) {
                if (out_.parameterIndex(name) < 0) {
                    mistakes_.push_back(
                        {source.place, "the statement asks for ':" + name + "', which is no parameter"});
                }
            }
        }
        std::set<std::string> seen;
        for (const ReportGroup& group : out_.groups) {
            if (!seen.insert(UCase(group.name)).second)
                mistakes_.push_back({group.place, "two groups are named '" + group.name + "'"});
        }
        std::set<std::string> names;
        for (const ReportColumn& column : out_.columns) {
            if (!names.insert(UCase(column.name)).second) {
                mistakes_.push_back({column.place, "two columns are named '" + column.name + "'"});
            }
        }
        const std::string& headings = out_.detail.headings;
        if (headings != "page" && headings != "none" && out_.groupIndex(headings) < 0) {
            mistakes_.push_back({out_.detail.band.place, "'headings' is page, none or the name of a group"});
        }
        if (out_.detail.carriedOver != "report" && out_.groupIndex(out_.detail.carriedOver) < 0) {
            mistakes_.push_back({out_.detail.band.place, "'carriedOver' is report or the name of a group"});
        }
        checkItems(out_.reportHeader);
        checkItems(out_.reportFooter);
        checkItems(out_.signature);
        checkItems(out_.pageHeader);
        checkItems(out_.pageFooter);
        checkItems(out_.detail.band);
        for (const ReportGroup& group : out_.groups) {
            checkItems(group.header);
            checkItems(group.footer);
        }
    }

    void checkItems(const Band& band) {
        for (const BandItem& item : band.items) {
            if (!item.column.empty() && !names(item.column)) {
                mistakes_.push_back({item.place, "there is no column '" + item.column + "'"});
            }
            const bool sub = item.kind == BandItem::Kind::SubReport;
            if (sub && !item.subreport.empty() && !out_.subreports.contains(item.subreport)) {
                mistakes_.push_back({item.place, "there is no [subreport." + item.subreport + "]"});
            }
            const bool onPage = &band == &out_.pageHeader || &band == &out_.pageFooter;
            if (sub && onPage) mistakes_.push_back({item.place, "a page header or footer cannot hold a sub-report"});
        }
    }

    bool names(const std::string& column) const {
        for (const ReportColumn& c : out_.columns) {
            if (equalsNoCase(c.name, column)) return true;
        }
        return false;
    }

    void checkWidths() {
        double fixed = 0;
        bool hiding = false;
        for (const ReportColumn& column : out_.columns) {
            fixed += column.width;
            hiding = hiding || !column.when.empty();
        }
        const double room = out_.page.columnWidth();
        if (!out_.columns.empty() && !hiding && fixed > room + 0.01) {
            mistakes_.push_back({out_.columns.front().place, "the columns are " + Format(fixed - room, "0.0") +
                                                                 " mm wider than the page (" + Format(room, "0.0") +
                                                                 " mm)"});
        }
    }

    TableReader in_;
    std::vector<Mistake>& mistakes_;
    int depth_;
    bool sourcesSound_ = false;
    Template out_;
};

Template checked(const TextNode& root, const std::string& file, const std::string& folder, int depth) {
    std::vector<Mistake> mistakes;
    Reader reader(root, file, folder, mistakes, depth);
    Template out = reader.read();
    reader.checkFields(out);
    sortMistakes(mistakes);
    if (!mistakes.empty()) throw TemplateError(std::move(mistakes));
    return out;
}

Template readFile(const std::string& path, int depth) {
    const std::string name = fileNameOf(path);
    return checked(readTemplateFile(path), name, path.substr(0, path.size() - name.size()), depth);
}

}  // namespace

int Template::styleIndex(std::string_view name) const {
    for (std::size_t i = 0; i < styles.size(); ++i) {
        if (styles[i].name == name) return static_cast<int>(i);
    }
    return -1;
}

int Template::groupIndex(std::string_view name) const {
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (equalsNoCase(groups[i].name, name)) return static_cast<int>(i);
    }
    return -1;
}

int Template::parameterIndex(std::string_view name) const {
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (equalsNoCase(parameters[i].name, name)) return static_cast<int>(i);
    }
    return -1;
}

Template readTemplate(const TextNode& root, const std::string& fileName, const std::string& folder) {
    return checked(root, fileName, folder, 0);
}

Template readTemplate(const std::string& path) { return readFile(path, 0); }

}  // namespace kv
