#pragma once
// Prepared: a bound template with its rows in order, its groups found and its totals ready; what layout and exports
// read.

#include "platform/print/Binding.h"

namespace kv {

/// The values of one totalled expression, row by row, with exact sums up to each row.
class Series {
public:
    void reserve(std::size_t rows) { values_.reserve(rows); }
    void add(Value value);
    /// Total of rows [first, last). Without values: sums and counts 0, the rest null.
    Value total(TotalKind kind, std::size_t first, std::size_t last) const;

private:
    enum class Exactness { Whole, Amount, Float };
    Value sum(std::size_t first, std::size_t last) const;
    Value extreme(bool least, std::size_t first, std::size_t last) const;
    std::int64_t distinct(std::size_t first, std::size_t last) const;
    std::int64_t count(std::size_t first, std::size_t last) const { return counts_[last] - counts_[first]; }

    std::vector<Value> values_;
    std::vector<std::int64_t> counts_{0};  ///< values that are not null, up to each row
    std::vector<std::int64_t> units_{0};   ///< sums in whole numbers or ten-thousandths
    std::vector<double> floats_{0};
    Exactness exactness_ = Exactness::Whole;
};

/// Facts that hold for the whole run.
struct RunFacts {
    std::string description;  ///< "Printed by: ..."
    Date now;
};

struct RowRange {
    std::size_t first = 0;
    std::size_t last = 0;  ///< one past
    std::size_t size() const { return last - first; }
};

class Prepared {
public:
    /// Filters, sorts, pivots, binds and totals. Raises TemplateError when names do not fit the rows.
    Prepared(Template report, std::vector<ResultSet> sources, std::vector<Value> parameters, RunFacts facts);

    const Template& report() const { return report_; }
    Template& report() { return report_; }
    const ResultSet& rows() const { return sources_[0]; }
    std::size_t rowCount() const { return sources_[0].rows.size(); }
    const ResultSet& source(int index) const { return sources_[static_cast<std::size_t>(index)]; }
    const std::vector<Value>& parameters() const { return parameters_; }
    const RunFacts& facts() const { return facts_; }
    const std::vector<Expression>& columnTotals(int scope) const { return binding_.columnTotals.at(scope); }
    const BoundTotal& total(int slot) const { return binding_.totals[static_cast<std::size_t>(slot)]; }
    const Series& series(int index) const { return series_[static_cast<std::size_t>(index)]; }

    RowRange groupRange(int level, std::size_t row) const;
    bool groupStarts(int level, std::size_t row) const;
    bool groupEnds(int level, std::size_t row) const;
    std::size_t groupNumber(int level, std::size_t row) const;  ///< from 0

private:
    void orderRows();
    void findGroups();
    void fillSeries();

    Template report_;
    std::vector<ResultSet> sources_;
    std::vector<Value> parameters_;
    RunFacts facts_;
    Binding binding_;
    std::vector<Series> series_;
    std::vector<std::vector<std::size_t>> starts_;  ///< by level: first rows of the groups
};

/// Where the page stands while a band is evaluated.
struct PageFacts {
    int number = 0;
    int pages = 0;
    RowRange rows;
};

/// Names of a row while the report runs. Totals reach over the row's groups, the page, or a range of one's own.
class RowContext final : public EvalContext {
public:
    explicit RowContext(const Prepared& data, std::size_t at = 0) : row(at), data_(&data) {}

    std::size_t row;
    PageFacts page;
    std::optional<RowRange> over;  ///< replaces the reach of every total

    Value field(int source, int column) const override;
    Value parameter(int index) const override { return data_->parameters()[static_cast<std::size_t>(index)]; }
    Value total(int slot) const override;
    Value fact(Fact fact) const override;

private:
    const Prepared* data_;
};

/// Turns rows into one row for each row key and one column for each column key. The first row's fields stay.
ResultSet pivot(Template& report, const ResultSet& rows,
                const std::function<Value(const Expression&, std::size_t)>& at);

}  // namespace kv
