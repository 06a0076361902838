#include "platform/print/Binding.h"

#include <algorithm>
#include <functional>

#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr int kFormulaDepthMost = 20;

/// What an expression may use where it stands.
struct Use {
    int scope = kScopeReport;  ///< of a total without a reach of its own
    bool totals = true;
    bool page = true;         ///< pageNumber()
    bool pages = false;       ///< pages(): known only at the end
    bool pageTotals = false;  ///< totals of the page: known only at its foot
};

const Use kRowsOnly{kScopeReport, false, false, false, false};

/// A text that is the same for expressions that are the same.
std::string keyOf(const ExprNode& node) {
    std::string key = std::to_string(static_cast<int>(node.op)) + ":" + std::to_string(node.source) + ":" +
                      std::to_string(node.slot) + ":" + (node.function != nullptr ? node.function->name : "") + ":" +
                      std::to_string(node.constant.raw().index()) + node.constant.text();
    for (const ExprNode& arg : node.args) key += "(" + keyOf(arg) + ")";
    return key;
}

std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t corner = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = corner + (a[i - 1] == b[j - 1] ? 0 : 1);
            corner = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, change});
        }
    }
    return row[b.size()];
}

class Scope : public NameScope {
public:
    Scope(const Template& report, const std::vector<KnownFields>& fields, Binding& binding)
        : report_(report), fields_(fields), binding_(binding) {}

    Use use;

    void bindName(ExprNode& node) override {
        if (auto formula = formulaOf(node.name)) {
            if (depth_ >= kFormulaDepthMost)
                throw ExpressionError{node.at, "the formula '" + node.name + "' uses itself"};
            ++depth_;
            node = *formula;
            try {
                Expression::bindTree(node, *this);
            } catch (...) {
                --depth_;
                throw;
            }
            --depth_;
            return;
        }
        if (fieldOf(node, 0, node.name)) return;
        const std::size_t dot = node.name.find('.');
        for (std::size_t s = 0; dot != std::string::npos && s < report_.sources.size(); ++s) {
            const bool named = equalsNoCase(report_.sources[s].name, node.name.substr(0, dot));
            if (named && fieldOf(node, static_cast<int>(s), node.name.substr(dot + 1))) return;
        }
        if (!fields_.empty() && !fields_[0].known && dot == std::string::npos) {
            node.op = ExprNode::Op::Field;
            node.slot = -1;
            return;
        }
        throw ExpressionError{node.at, "there is no field '" + node.name + "'" + near(node.name)};
    }

    int bindParameter(const ExprNode& node) override {
        const int at = report_.parameterIndex(node.name);
        if (at < 0) throw ExpressionError{node.at, "there is no parameter ':" + node.name + "'"};
        return at;
    }

    int bindTotal(const ExprNode& node) override {
        if (!use.totals) throw ExpressionError{node.at, "totals are not known here: rows are still being read"};
        refuseInside(node.args[0]);
        BoundTotal total;
        total.kind = node.total;
        total.scope = scopeOf(node);
        if (total.scope == kScopePage && (!use.pageTotals || node.total == TotalKind::Running)) {
            throw ExpressionError{node.at, "totals of a page are known only in the page footer"};
        }
        const std::string key = keyOf(node.args[0]);
        const auto known = std::find(keys_.begin(), keys_.end(), key);
        total.series = static_cast<int>(known - keys_.begin());
        if (known == keys_.end()) {
            keys_.push_back(key);
            binding_.series.push_back(Expression::ofNode(node.args[0]));
        }
        binding_.totals.push_back(total);
        return static_cast<int>(binding_.totals.size()) - 1;
    }

    void checkFact(const ExprNode& node) override {
        const bool ofPage = node.fact == Fact::PageNumber || node.fact == Fact::Pages;
        if (ofPage && !use.page) throw ExpressionError{node.at, "page numbers are not known here"};
        if (node.fact == Fact::Pages && !use.pages) {
            throw ExpressionError{node.at,
                                  "pages() can stand only in the text or the 'when' of an item without 'wrap'"};
        }
    }

private:
    const ExprNode* formulaOf(const std::string& name) const {
        for (const auto& [known, formula] : report_.formulas) {
            if (equalsNoCase(known, name)) return formula.root();
        }
        return nullptr;
    }

    bool fieldOf(ExprNode& node, int source, const std::string& name) {
        const auto at = static_cast<std::size_t>(source);
        if (at >= fields_.size()) return false;
        const std::vector<Field>& fields = fields_[at].fields;
        const auto known =
            std::find_if(fields.begin(), fields.end(), [&](const Field& f) { return equalsNoCase(f.name, name); });
        if (known == fields.end() && (source == 0 || fields_[at].known)) return false;
        node.op = ExprNode::Op::Field;
        node.source = source;
        node.slot = known == fields.end() ? -1 : static_cast<int>(known - fields.begin());
        return true;
    }

    std::string near(const std::string& name) const {
        std::string best;
        std::size_t least = 3;
        for (const KnownFields& source : fields_) {
            for (const Field& field : source.fields) {
                const std::size_t d = distance(UCase(name), UCase(field.name));
                if (d < least) best = field.name;
                least = std::min(least, d);
            }
        }
        return best.empty() ? best : "; is '" + best + "' meant?";
    }

    void refuseInside(const ExprNode& node) const {
        if (node.op == ExprNode::Op::Total) throw ExpressionError{node.at, "a total cannot be totalled again"};
        const bool fact = node.op == ExprNode::Op::FactOf;
        if (fact && node.fact != Fact::Now && node.fact != Fact::Today && node.fact != Fact::RowNumber) {
            throw ExpressionError{node.at, "this cannot be totalled"};
        }
        for (const ExprNode& arg : node.args) refuseInside(arg);
    }

    int scopeOf(const ExprNode& node) const {
        if (node.name.empty()) return use.scope;
        if (equalsNoCase(node.name, "report")) return kScopeReport;
        if (equalsNoCase(node.name, "page")) return kScopePage;
        const int group = report_.groupIndex(node.name);
        if (group < 0) throw ExpressionError{node.at, "there is no group '" + node.name + "'"};
        return group;
    }

    const Template& report_;
    const std::vector<KnownFields>& fields_;
    Binding& binding_;
    std::vector<std::string> keys_;
    int depth_ = 0;
};

/// Walks the expressions of a template, each with what it may use.
class Walker {
public:
    Walker(Scope& scope, std::vector<Mistake>& mistakes) : scope_(scope), mistakes_(mistakes) {}

    void one(Expression& expression, const Use& use) {
        if (expression.empty()) return;
        scope_.use = use;
        try {
            expression.bind(scope_);
        } catch (const ExpressionError& e) {
            mistakes_.push_back({expression.place, e.text + " (in \"" + expression.text() + "\")"});
        }
    }

    void band(Band& band, Use use, const Template& report) {
        one(band.when, use);
        one(band.totals, use);
        one(band.drill.key, use);
        for (BandItem& item : band.items) {
            Use text = use;
            text.pages = item.kind == BandItem::Kind::Text && !item.wrap;
            one(item.value, text);
            one(item.when, text);
            for (Condition& c : item.conditions) one(c.when, use);
            for (auto& [name, value] : item.with) {
                one(value, use);
                parameterOf(item, name, report);
            }
            for (auto& [name, value] : item.link) one(value, use);
            one(item.drill.key, use);
        }
    }

    void column(ReportColumn& column) {
        const Use use;
        one(column.heading, use);
        one(column.over, use);
        one(column.when, kRowsOnly);
        one(column.value, use);
        one(column.indent, use);
        for (Condition& c : column.conditions) one(c.when, use);
        one(column.drill.key, use);
    }

    /// Each column's total as it reads in a row of totals of this scope.
    std::vector<Expression> columnTotals(const Template& report, int scope) {
        Use use;
        use.scope = scope;
        use.pageTotals = true;
        std::vector<Expression> out;
        for (const ReportColumn& column : report.columns) {
            out.push_back(column.total);
            one(out.back(), use);
        }
        return out;
    }

private:
    void parameterOf(const BandItem& item, const std::string& name, const Template& report) {
        const auto sub = report.subreports.find(item.subreport);
        if (sub == report.subreports.end() || sub->second->parameterIndex(name) >= 0) return;
        mistakes_.push_back({item.place, "the sub-report '" + item.subreport + "' has no parameter '" + name + "'"});
    }

    Scope& scope_;
    std::vector<Mistake>& mistakes_;
};

}  // namespace

void bindRowExpressions(Template& report, const std::vector<KnownFields>& fields, std::vector<Mistake>& mistakes) {
    Binding unused;
    Scope scope(report, fields, unused);
    Walker walk(scope, mistakes);
    walk.one(report.where, kRowsOnly);
    for (SortKey& key : report.sort) walk.one(key.by, kRowsOnly);
    for (Expression& row : report.crosstab.rows) walk.one(row, kRowsOnly);
    walk.one(report.crosstab.columns, kRowsOnly);
    walk.one(report.crosstab.heading, kRowsOnly);
    walk.one(report.crosstab.value, kRowsOnly);
}

Binding bindTemplate(Template& report, const std::vector<KnownFields>& fields, std::vector<Mistake>& mistakes) {
    Binding binding;
    Scope scope(report, fields, binding);
    Walker walk(scope, mistakes);
    Use whole;
    Use foot;
    foot.scope = kScopePage;
    foot.pageTotals = true;
    walk.band(report.reportHeader, whole, report);
    walk.band(report.reportFooter, whole, report);
    walk.band(report.signature, whole, report);
    walk.band(report.pageHeader, whole, report);
    walk.band(report.pageFooter, foot, report);
    for (std::size_t g = 0; g < report.groups.size(); ++g) {
        ReportGroup& group = report.groups[g];
        Use own;
        own.scope = static_cast<int>(g);
        walk.one(group.by, kRowsOnly);
        walk.one(group.label, own);
        walk.band(group.header, own, report);
        walk.band(group.footer, own, report);
    }
    walk.band(report.detail.band, whole, report);
    for (Condition& c : report.detail.conditions) walk.one(c.when, whole);
    walk.one(report.detail.spaceBefore, whole);
    walk.one(report.detail.carriedTo, whole);
    walk.one(report.detail.carriedFrom, whole);
    for (ReportColumn& column : report.columns) walk.column(column);
    for (int reach = kScopePage; reach < static_cast<int>(report.groups.size()); ++reach) {
        binding.columnTotals[reach] = walk.columnTotals(report, reach);
    }
    return binding;
}

std::vector<Mistake> checkTemplate(const Template& report, const std::vector<std::vector<Field>>& fields) {
    std::vector<KnownFields> known;
    for (const std::vector<Field>& f : fields) known.push_back({f, !f.empty()});
    Template copy = report;
    std::vector<Mistake> mistakes;
    bindRowExpressions(copy, known, mistakes);
    bindTemplate(copy, known, mistakes);
    sortMistakes(mistakes);
    return mistakes;
}

}  // namespace kv
