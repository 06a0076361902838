#include "platform/print/Prepared.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "platform/base/Text.h"

namespace kv {
namespace {

std::vector<KnownFields> knownFields(const std::vector<ResultSet>& sources) {
    std::vector<KnownFields> out;
    for (const ResultSet& s : sources) out.push_back({s.fields, true});
    return out;
}

void raise(std::vector<Mistake> mistakes) {
    if (!mistakes.empty()) throw TemplateError(std::move(mistakes));
}

struct NoCase {
    bool operator()(const Value& a, const Value& b) const { return compareValues(a, b) < 0; }
};

}  // namespace

void Series::add(Value value) {
    const bool isFloat = std::holds_alternative<double>(value.raw()) || value.isText();
    const bool counted = !value.isNull();
    counts_.push_back(counts_.back() + (counted ? 1 : 0));
    if (value.isDate() || value.isNull()) {
        units_.push_back(units_.back());
        floats_.push_back(floats_.back());
    } else {
        if (isFloat) exactness_ = Exactness::Float;
        if (value.isMoney() && exactness_ == Exactness::Whole) {
            exactness_ = Exactness::Amount;
            for (std::int64_t& sum : units_) {
                if (__builtin_mul_overflow(sum, Money::kUnitsPerOne, &sum))
                    throw Error(kErrOverflow, "Series", "Overflow");
            }
        }
        floats_.push_back(floats_.back() + value.number());
        std::int64_t units = 0;
        if (exactness_ == Exactness::Whole) units = value.integer();
        if (exactness_ == Exactness::Amount) units = value.money().units();
        std::int64_t sum = 0;
        if (__builtin_add_overflow(units_.back(), units, &sum)) throw Error(kErrOverflow, "Series", "Overflow");
        units_.push_back(sum);
    }
    values_.push_back(std::move(value));
}

Value Series::sum(std::size_t first, std::size_t last) const {
    if (exactness_ == Exactness::Float) return floats_[last] - floats_[first];
    const std::int64_t units = units_[last] - units_[first];
    if (exactness_ == Exactness::Amount) return Money::fromUnits(units);
    return units;
}

Value Series::extreme(bool least, std::size_t first, std::size_t last) const {
    Value best;
    for (std::size_t i = first; i < last; ++i) {
        const Value& v = values_[i];
        if (v.isNull()) continue;
        const int order = best.isNull() ? (least ? -1 : 1) : compareValues(v, best);
        if (least ? order < 0 : order > 0) best = v;
    }
    return best;
}

std::int64_t Series::distinct(std::size_t first, std::size_t last) const {
    std::set<Value, NoCase> seen;
    for (std::size_t i = first; i < last; ++i) {
        if (!values_[i].isNull()) seen.insert(values_[i]);
    }
    return static_cast<std::int64_t>(seen.size());
}

Value Series::total(TotalKind kind, std::size_t first, std::size_t last) const {
    first = std::min(first, values_.size());
    last = std::clamp(last, first, values_.size());
    switch (kind) {
        case TotalKind::Sum:
        case TotalKind::Running:
            return sum(first, last);
        case TotalKind::Count:
            return count(first, last);
        case TotalKind::CountDistinct:
            return distinct(first, last);
        case TotalKind::Average:
            return count(first, last) == 0 ? Value() : divideValues(sum(first, last), count(first, last));
        case TotalKind::Min:
            return extreme(true, first, last);
        case TotalKind::Max:
            return extreme(false, first, last);
        case TotalKind::First:
            return first < last ? values_[first] : Value();
        case TotalKind::Last:
            return first < last ? values_[last - 1] : Value();
    }
    return {};
}

Prepared::Prepared(Template report, std::vector<ResultSet> sources, std::vector<Value> parameters, RunFacts facts)
    : report_(std::move(report)),
      sources_(std::move(sources)),
      parameters_(std::move(parameters)),
      facts_(std::move(facts)) {
    sources_.resize(std::max(sources_.size(), std::max<std::size_t>(report_.sources.size(), 1)));
    parameters_.resize(report_.parameters.size());
    std::vector<Mistake> mistakes;
    bindRowExpressions(report_, knownFields(sources_), mistakes);
    raise(std::move(mistakes));
    orderRows();
    if (report_.crosstab.given) {
        RowContext context(*this);
        sources_[0] = pivot(report_, sources_[0], [&](const Expression& e, std::size_t row) {
            context.row = row;
            return e.evaluate(context);
        });
    }
    mistakes.clear();
    binding_ = bindTemplate(report_, knownFields(sources_), mistakes);
    raise(std::move(mistakes));
    findGroups();
    fillSeries();
}

void Prepared::orderRows() {
    std::vector<Row>& rows = sources_[0].rows;
    RowContext context(*this);
    std::vector<std::size_t> kept;
    for (context.row = 0; context.row < rows.size(); ++context.row) {
        if (report_.where.empty() || truthOf(report_.where.evaluate(context))) kept.push_back(context.row);
    }
    if (report_.sort.empty() && kept.size() == rows.size()) return;
    std::vector<std::vector<Value>> keys(rows.size());
    for (const std::size_t r : kept) {
        context.row = r;
        for (const SortKey& key : report_.sort) keys[r].push_back(key.by.evaluate(context));
    }
    std::stable_sort(kept.begin(), kept.end(), [&](std::size_t a, std::size_t b) {
        for (std::size_t k = 0; k < report_.sort.size(); ++k) {
            const int order = compareValues(keys[a][k], keys[b][k]);
            if (order != 0) return report_.sort[k].descending ? order > 0 : order < 0;
        }
        return false;
    });
    std::vector<Row> ordered;
    ordered.reserve(kept.size());
    for (const std::size_t r : kept) ordered.push_back(std::move(rows[r]));
    rows = std::move(ordered);
}

void Prepared::findGroups() {
    starts_.assign(report_.groups.size(), {});
    RowContext context(*this);
    std::vector<Value> before(report_.groups.size());
    for (std::size_t r = 0; r < rowCount(); ++r) {
        context.row = r;
        bool changed = r == 0;
        for (std::size_t g = 0; g < report_.groups.size(); ++g) {
            Value key = report_.groups[g].by.evaluate(context);
            changed = changed || compareValues(key, before[g]) != 0;
            if (changed) starts_[g].push_back(r);
            before[g] = std::move(key);
        }
    }
}

void Prepared::fillSeries() {
    series_.resize(binding_.series.size());
    RowContext context(*this);
    for (std::size_t s = 0; s < series_.size(); ++s) {
        series_[s].reserve(rowCount());
        for (context.row = 0; context.row < rowCount(); ++context.row) {
            series_[s].add(binding_.series[s].evaluate(context));
        }
    }
}

std::size_t Prepared::groupNumber(int level, std::size_t row) const {
    const auto& starts = starts_[static_cast<std::size_t>(level)];
    const auto after = std::upper_bound(starts.begin(), starts.end(), row);
    return after == starts.begin() ? 0 : static_cast<std::size_t>(after - starts.begin()) - 1;
}

RowRange Prepared::groupRange(int level, std::size_t row) const {
    const auto& starts = starts_[static_cast<std::size_t>(level)];
    if (starts.empty()) return {};
    const std::size_t number = groupNumber(level, row);
    return {starts[number], number + 1 < starts.size() ? starts[number + 1] : rowCount()};
}

bool Prepared::groupStarts(int level, std::size_t row) const { return groupRange(level, row).first == row; }
bool Prepared::groupEnds(int level, std::size_t row) const { return groupRange(level, row).last == row + 1; }

Value RowContext::field(int source, int column) const {
    const ResultSet& set = data_->source(source);
    const std::size_t at = source == 0 ? row : 0;
    if (column < 0 || at >= set.rows.size()) return {};
    return set.rows[at][static_cast<std::size_t>(column)];
}

Value RowContext::total(int slot) const {
    const BoundTotal& total = data_->total(slot);
    RowRange range{0, data_->rowCount()};
    if (over) {
        range = *over;
    } else if (total.scope == kScopePage) {
        range = page.rows;
    } else if (total.scope >= 0) {
        range = data_->groupRange(total.scope, row);
    }
    if (total.kind == TotalKind::Running) range.last = std::min(range.last, row + 1);
    return data_->series(total.series).total(total.kind, range.first, range.last);
}

Value RowContext::fact(Fact fact) const {
    switch (fact) {
        case Fact::PageNumber:
            return page.number;
        case Fact::Pages:
            // not known before the end: shown as dots until then
            return page.pages > 0 ? Value(page.pages) : Value("\xE2\x80\xA6");
        case Fact::RowNumber:
            return static_cast<std::int64_t>(row) + 1;
        case Fact::GroupRow: {
            const int deepest = static_cast<int>(data_->report().groups.size()) - 1;
            const std::size_t from = deepest < 0 ? 0 : data_->groupRange(deepest, row).first;
            return static_cast<std::int64_t>(row - from) + 1;
        }
        case Fact::ReportTitle:
            return data_->report().title;
        case Fact::Description:
            return data_->facts().description;
        case Fact::FileName:
            return data_->report().file;
        case Fact::Now:
            return data_->facts().now;
        case Fact::Today:
            return data_->facts().now.dayOnly();
        case Fact::Rows:
            return static_cast<std::int64_t>(data_->rowCount());
    }
    return {};
}

}  // namespace kv
