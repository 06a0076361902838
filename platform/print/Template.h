#pragma once
// Template: a report as its .rpt file declares it: sources, parameters, page, styles, bands, groups, columns,
// cross-tab. A plain value: the reader makes it, binding fills in the expressions, the layout reads it.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Recordset.h"
#include "platform/print/Barcode.h"
#include "platform/print/Expression.h"
#include "platform/print/TemplateText.h"

namespace kv {

/// Types of parameters, by the codes that callers of reports use.
enum class ParameterType { Number = 7, Currency = 8, Boolean = 9, Date = 10, Text = 12 };

struct ParameterDef {
    std::string name;
    ParameterType type = ParameterType::Text;
    std::string prompt;
    std::optional<Value> standard;  ///< used when no value is given
    std::optional<Value> sample;    ///< to try the template with
    TextPlace place;
};

struct SourceDef {
    std::string name;       ///< "main" for the first without a name
    std::string statement;  ///< with :Name where a parameter's value goes
    std::vector<Field> fields;
    bool fieldsGiven = false;
    TextPlace place;
};

enum class TextAlign { Auto, Left, Right, Center };
enum class PrintRule { None, Hair, Thin, Medium, Double };
constexpr int kNoColor = -1;

struct PrintStyle {
    std::string name;
    std::string font = "Noto Sans";
    double size_pt = 8.5;
    bool bold = false;
    bool italic = false;
    int color = 0x1a1a1a;  ///< 0xRRGGBB
    int fill = kNoColor;
    TextAlign align = TextAlign::Auto;
    std::string format;
    PrintRule above = PrintRule::None;
    PrintRule below = PrintRule::None;
};

/// The screen and the key that stand behind a row or a figure.
struct Drill {
    std::string screen;
    Expression key;
};

struct Condition {
    Expression when;
    int style = -1;
};

/// One thing placed in a band. Lengths in millimetres from the band's upper left corner.
struct BandItem {
    enum class Kind { Text, Line, Box, Image, Barcode, SubReport };
    Kind kind = Kind::Text;
    TextPlace place;
    Expression value;
    Expression when;
    int line = 0;  ///< flowing items: the text line of the band, from 1; 0 for items with a y of their own
    double x = 0;
    double y = 0;
    std::optional<double> width;
    std::optional<double> height;
    std::string column;  ///< takes x and width from this column of the table
    int style = -1;
    TextAlign align = TextAlign::Auto;
    std::string format;
    bool wrap = false;
    std::vector<Condition> conditions;
    Drill drill;
    double weight = 0.2;
    int color = 0x1a1a1a;
    int fill = kNoColor;
    BarcodeKind barcode = BarcodeKind::Code128;
    std::string subreport;
    std::vector<std::pair<std::string, Expression>> with;  ///< parameters of the sub-report
    std::vector<std::pair<std::string, Expression>> link;  ///< fields of its rows that must equal these
};

enum class NewPage { No, Before, After };

struct Band {
    bool given = false;
    std::string name;
    TextPlace place;
    double height = 0;  ///< least height
    double before = 0;
    double after = 0;
    Expression when;
    NewPage newPage = NewPage::No;
    bool atBottom = false;
    std::vector<BandItem> items;
    Drill drill;
    Expression totals;  ///< label of a row of the columns' totals; empty without one
    int totalsStyle = -1;
};

struct ReportColumn {
    std::string name;
    TextPlace place;
    Expression heading;
    Expression over;  ///< a heading above those of neighbouring columns with the same one
    Expression value;
    double width = 0;   ///< 0: shares the width that is left
    double left = 0;    ///< set by the layout
    double actual = 0;  ///< set by the layout
    TextAlign align = TextAlign::Auto;
    int style = -1;
    std::string format;
    bool wrap = false;
    Expression indent;  ///< millimetres that the text stands further in
    bool hideRepeated = false;
    Expression when;  ///< the column is shown at all
    Expression total;
    std::vector<Condition> conditions;
    Drill drill;
    bool generated = false;  ///< made by a cross-tab
};

struct ReportGroup {
    std::string name;
    TextPlace place;
    Expression by;
    Expression label;  ///< in the group tree
    bool keepTogether = false;
    bool newPage = false;
    bool repeatHeader = false;
    bool restartPages = false;
    Band header;
    Band footer;
};

struct SortKey {
    Expression by;
    bool descending = false;
};

struct Detail {
    Band band;
    std::string headings = "page";  ///< "page", "none" or the name of a group
    int headingStyle = -1;
    int rowStyle = -1;
    std::vector<Condition> conditions;  ///< of the whole row
    PrintRule rules = PrintRule::None;  ///< between rows
    int stripe = kNoColor;              ///< background of every second row
    Expression spaceBefore;             ///< millimetres of room above a row
    std::string emptyText;
    Expression carriedTo;     ///< label at the foot of a page that goes on: "Carried forward"
    Expression carriedFrom;   ///< and at the head of the next: "Brought forward"
    std::string carriedOver;  ///< the group over which sums are carried; "report" for the whole
};

struct CrossTab {
    bool given = false;
    TextPlace place;
    std::vector<Expression> rows;
    Expression columns;
    Expression heading;
    Expression value;
    TotalKind total = TotalKind::Sum;
    double width = 24;
    std::string format;
    std::string rowTotal;  ///< heading of the total column; empty without one
    bool descending = false;
};

struct PageSetup {
    double width = 210;
    double height = 297;
    double left = 15, top = 12, right = 15, bottom = 12;
    int columns = 1;
    double gap = 5;
    double printable() const { return width - left - right; }
    double columnWidth() const { return (printable() - gap * (columns - 1)) / columns; }
};

struct Template {
    std::string file;    ///< file name without folder
    std::string folder;  ///< images are looked up here; "" or ending in a separator
    std::string title;
    PageSetup page;
    std::vector<ParameterDef> parameters;
    std::vector<SourceDef> sources;
    std::vector<PrintStyle> styles;  ///< styles[0] is "normal"
    std::map<std::string, Expression> formulas;
    Expression where;
    std::vector<SortKey> sort;
    Band reportHeader, reportFooter, pageHeader, pageFooter;
    Band signature;  ///< whole, below the report's footer
    std::vector<ReportGroup> groups;
    Detail detail;
    std::vector<ReportColumn> columns;
    CrossTab crosstab;
    std::map<std::string, std::shared_ptr<const Template>> subreports;

    int styleIndex(std::string_view name) const;  ///< -1 when there is none
    int groupIndex(std::string_view name) const;
    int parameterIndex(std::string_view name) const;  ///< letter case ignored
};

/// Reads and checks a template file. Raises 53, or TemplateError with every mistake found.
Template readTemplate(const std::string& path);
Template readTemplate(const TextNode& root, const std::string& fileName, const std::string& folder);

/// What a template still gets wrong when its sources deliver these columns (by source, in the template's order).
std::vector<Mistake> checkTemplate(const Template& report, const std::vector<std::vector<Field>>& fields);

/// The statement of a source with its parameters as literals; texts and comments of the statement stay untouched.
std::string composeStatement(const SourceDef& source, const Template& report, const std::vector<Value>& values);
/// Names of the parameters in a statement, in order.
std::vector<std::string> statementParameters(std::string_view statement);

}  // namespace kv
