#include "platform/print/Report.h"

#include <chrono>
#include <optional>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/print/Layouter.h"

namespace kv {
namespace {

constexpr long kErrReport = 1004;
constexpr std::size_t kKnownMost = 64;

Value converted(const Value& value, const ParameterDef& def) {
    if (value.isNull()) return value;
    switch (def.type) {
        case ParameterType::Number: {
            if (value.isText() && !IsNumeric(value.text())) {
                throw Error(kErrTypeMismatch, "Report", "'" + value.text() + "' is no number for '" + def.name + "'");
            }
            const double number = value.number();
            const bool whole =
                number == static_cast<double>(static_cast<std::int64_t>(std::clamp(number, -9e15, 9e15)));
            return whole ? Value(static_cast<std::int64_t>(number)) : Value(number);
        }
        case ParameterType::Currency:
            return value.isText() ? Money::fromDouble(numberOf(value.text())) : value.money();
        case ParameterType::Boolean:
            return value.boolean();
        case ParameterType::Date:
            return value.isDate() ? value : Value(value.date());
        case ParameterType::Text:
            return value.text();
    }
    return value;
}

/// The default database of a connection, put back at the end.
class OtherDatabase {
public:
    OtherDatabase(Connection& connection, const std::string& name) : connection_(connection) {
        if (name.empty()) return;
        before_ = connection.defaultDatabase();
        connection.setDefaultDatabase(name);
    }
    OtherDatabase(const OtherDatabase&) = delete;
    OtherDatabase& operator=(const OtherDatabase&) = delete;
    ~OtherDatabase() {
        if (before_) connection_.setDefaultDatabase(*before_);
    }

private:
    Connection& connection_;
    std::optional<std::string> before_;
};

int fieldAt(const ResultSet& set, const std::string& name) {
    for (std::size_t i = 0; i < set.fields.size(); ++i) {
        if (equalsNoCase(set.fields[i].name, name)) return static_cast<int>(i);
    }
    return -1;
}

}  // namespace

std::unique_ptr<Report> Report::load(const std::string& path) { return std::make_unique<Report>(readTemplate(path)); }

std::unique_ptr<Report> Report::fromText(std::string_view text, const std::string& fileName,
                                         const std::string& folder) {
    return std::make_unique<Report>(readTemplate(readTemplateText(text, fileName, folder), fileName, folder));
}

Report::Report(Template report) : template_(std::move(report)), values_(template_.parameters.size()) {
    for (const auto& [name, sub] : template_.subreports) subreports_[name] = std::make_unique<Report>(*sub);
}

Report::~Report() = default;

bool Report::hasValue(std::size_t index) const {
    return index < values_.size() && (values_[index] || template_.parameters[index].standard);
}

Value Report::value(std::size_t index) const {
    if (!hasValue(index)) return {};
    const ParameterDef& def = template_.parameters[index];
    return values_[index] ? *values_[index] : converted(*def.standard, def);
}

void Report::setValue(std::size_t index, const Value& value) {
    if (index >= values_.size())
        throw Error(9, "Report", "The report has no parameter number " + std::to_string(index));
    values_[index] = converted(value, template_.parameters[index]);
}

void Report::setValue(std::string_view name, const Value& value) {
    const int at = template_.parameterIndex(name);
    if (at < 0) throw Error(5, "Report", "The report has no parameter '" + std::string(name) + "'");
    setValue(static_cast<std::size_t>(at), value);
}

std::vector<std::string> Report::subreportNames() const {
    std::vector<std::string> names;
    for (const auto& [name, report] : subreports_) names.push_back(name);
    return names;
}

Report& Report::openSubreport(std::string_view name) {
    for (auto& [known, report] : subreports_) {
        if (equalsNoCase(known, name)) return *report;
    }
    throw Error(5, "Report", template_.file + " has no sub-report '" + std::string(name) + "'");
}

std::vector<Value> Report::valuesOrDefaults() const {
    std::vector<Value> out;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const ParameterDef& def = template_.parameters[i];
        if (!values_[i] && !def.standard) {
            throw Error(kErrReport, "Report", template_.file + " needs a value for '" + def.prompt + "'");
        }
        out.push_back(value(i));
    }
    return out;
}

ResultSet Report::readSource(const SourceDef& source, const std::vector<Value>& values) {
    if (const auto own = ownRows_.find(source.name); own != ownRows_.end()) return own->second;
    if (connection_ == nullptr) {
        ResultSet empty;
        empty.fields = source.fields;
        return empty;
    }
    const std::string statement = composeStatement(source, template_, values);
    if (const auto known = known_.find(statement); known != known_.end()) return known->second;
    const OtherDatabase other(*connection_, database_);
    std::vector<ResultSet> sets = connection_->OpenAll(statement);
    ResultSet rows;
    for (ResultSet& set : sets) {
        if (set.fields.empty()) continue;
        rows = std::move(set);
        break;
    }
    return rows;
}

std::vector<ResultSet> Report::readSources(const std::vector<Value>& values) {
    std::vector<ResultSet> out;
    for (const SourceDef& source : template_.sources) out.push_back(readSource(source, values));
    return out;
}

void Report::prepare(std::vector<ResultSet> rows, std::vector<Value> values) {
    layouter_.reset();
    data_ = std::make_shared<Prepared>(template_, std::move(rows), std::move(values), RunFacts{description_, Now()});
    layouter_ = std::make_unique<Layouter>(data_, [this](const BandItem& item, const RowContext& at,
                                                         const Prepared& outer) { return rowsFor(item, at, outer); });
}

void Report::run(Connection& connection) {
    connection_ = &connection;
    std::vector<Value> values = valuesOrDefaults();
    std::vector<ResultSet> rows = readSources(values);
    prepare(std::move(rows), std::move(values));
}

void Report::setRows(std::string_view source, ResultSet rows) { ownRows_[std::string(source)] = std::move(rows); }

void Report::runOnRows() {
    connection_ = nullptr;
    std::vector<Value> values = valuesOrDefaults();
    std::vector<ResultSet> rows = readSources(values);
    prepare(std::move(rows), std::move(values));
}

const Prepared& Report::data() const {
    if (!data_) throw Error(kErrObjectMissing, "Report", template_.file + " has not been run");
    return *data_;
}

/// Finds the report that owns the item's sub-report, then its rows for this place.
std::shared_ptr<const Prepared> Report::rowsFor(const BandItem& item, const RowContext& outer,
                                                const Prepared& outerData) {
    const auto own = subreports_.find(item.subreport);
    const bool mine = own != subreports_.end() && outerData.report().subreports.contains(item.subreport);
    if (mine) {
        Report& sub = *own->second;
        sub.connection_ = connection_;
        if (sub.database_.empty()) sub.database_ = database_;
        return sub.subreportRows(item, outer, outerData);
    }
    for (auto& [name, sub] : subreports_) {
        if (auto rows = sub->rowsFor(item, outer, outerData)) return rows;
    }
    return nullptr;
}

/// Values come from the place (`with`), from what the caller bound, from the outer report's parameter of that name.
std::shared_ptr<const Prepared> Report::subreportRows(const BandItem& item, const RowContext& context,
                                                      const Prepared& outer) {
    const std::vector<std::optional<Value>> bound = values_;
    for (const auto& [name, value] : item.with) setValue(name, value.evaluate(context));
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const int same = outer.report().parameterIndex(template_.parameters[i].name);
        if (!values_[i] && same >= 0) setValue(i, outer.parameters()[static_cast<std::size_t>(same)]);
    }
    std::vector<Value> values = valuesOrDefaults();
    values_ = bound;
    std::vector<ResultSet> rows = readSources(values);
    if (connection_ != nullptr && known_.size() < kKnownMost) {
        for (std::size_t s = 0; s < rows.size(); ++s) {
            known_.try_emplace(composeStatement(template_.sources[s], template_, values), rows[s]);
        }
    }
    for (const auto& [field, key] : item.link) {
        const int at = fieldAt(rows[0], field);
        if (at < 0) throw TemplateError({{item.place, "the sub-report's rows have no field '" + field + "'"}});
        const Value wanted = key.evaluate(context);
        std::erase_if(rows[0].rows,
                      [&](const Row& r) { return compareValues(r[static_cast<std::size_t>(at)], wanted) != 0; });
    }
    return std::make_shared<Prepared>(template_, std::move(rows), std::move(values), outer.facts());
}

bool Report::layout(const Progress& progress) {
    (void)data();
    constexpr int kSlice_ms = 50, kWhole = 1000;
    while (layoutFor(kSlice_ms)) {
        if (progress && !progress(static_cast<int>(this->progress() * kWhole), kWhole)) return false;
    }
    return true;
}

bool Report::layoutFor(int ms_max) {
    (void)data();
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms_max);
    while (layouter_->step()) {
        if (std::chrono::steady_clock::now() >= until) return true;
    }
    return false;
}

bool Report::complete() const { return layouter_ && layouter_->complete(); }
double Report::progress() const { return layouter_ ? layouter_->progress() : 0; }
int Report::pages() const { return layouter_ ? layouter_->finishedPages() : 0; }

const Document& Report::document() const {
    (void)data();
    return layouter_->document();
}

std::vector<Found> Report::find(std::string_view text) const {
    std::vector<Found> out;
    if (text.empty()) return out;
    for (int p = 0; p < pages(); ++p) {
        const std::vector<TextRun>& runs = document().pages[static_cast<std::size_t>(p)].runs;
        for (std::size_t r = 0; r < runs.size(); ++r) {
            if (!runs[r].hidden && containsNoCase(runs[r].text, text)) out.push_back({p, r});
        }
    }
    return out;
}

bool Report::savePdf(const std::string& path, const Progress& progress) {
    return layout(progress) && writePdf(document(), path, progress);
}

std::vector<std::string> Report::savePng(const std::string& stem, double dotsPerInch) {
    layout();
    return writePng(document(), stem, dotsPerInch);
}

bool Report::print(const PrintJob& job, const Progress& progress) {
    return layout(progress) && printPages(document(), job, progress);
}

void Report::saveCsv(const std::string& path) const { writeTextFile(path, tableCsv(data())); }

std::string Report::text() {
    if (!template_.columns.empty()) return tableText(data());
    layout();
    std::string out;
    for (const PaperPage& page : document().pages) {
        if (!out.empty()) out += "\f";
        out += joinedText(page, textLines(page)) + "\n";
    }
    return out;
}

}  // namespace kv
