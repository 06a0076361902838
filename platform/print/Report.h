#pragma once
// Report: a template being printed: its parameters are given, its sources run, its pages laid out and put out.
//
//     auto report = Report::load(path);
//     report->setValue(0, Company);             // positional, or by name
//     report->openSubreport("Documents").setValue("CVNo", number);
//     report->setDescription("Printed by: ...");
//     report->run(connection);
//     report->layout();                          // or layoutFor(20) again and again while a viewer shows page 1
//     report->savePdf("/tmp/tb.pdf");

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Connection.h"
#include "platform/print/PageOutput.h"
#include "platform/print/TableOutput.h"

namespace kv {

class Layouter;

/// A place where a text was found.
struct Found {
    int page = 0;  ///< from 0
    std::size_t run = 0;
};

class Report {
public:
    /// Raises 53 when the file is missing, TemplateError with every mistake in it.
    static std::unique_ptr<Report> load(const std::string& path);
    /// From the text of a template that no file holds; includes are looked up in `folder`.
    static std::unique_ptr<Report> fromText(std::string_view text, const std::string& fileName,
                                            const std::string& folder);
    explicit Report(Template report);
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    ~Report();

    const Template& definition() const { return template_; }
    const std::string& fileName() const { return template_.file; }
    const std::string& title() const { return template_.title; }

    /// Parameters in the template's order, with names, types (7 number, 8 currency, 9 boolean, 10 date, 12 text) and
    /// prompts.
    const std::vector<ParameterDef>& parameters() const { return template_.parameters; }
    bool hasValue(std::size_t index) const;
    /// The value bound, else the template's default, else null.
    Value value(std::size_t index) const;
    /// Binds a value, converted to the parameter's type. Raises 9 for an index or 5 for a name that is not there,
    /// 13 for what cannot be converted.
    void setValue(std::size_t index, const Value& value);
    void setValue(std::string_view name, const Value& value);

    std::vector<std::string> subreportNames() const;
    /// The sub-report of that name, whose own parameters can be given then. Raises 5 when there is none.
    Report& openSubreport(std::string_view name);

    /// The "Printed by" line.
    void setDescription(std::string text) { description_ = std::move(text); }
    const std::string& description() const { return description_; }
    /// Sources run with this default database instead of the connection's own.
    void setDatabase(std::string name) { database_ = std::move(name); }

    /// Runs the sources. The connection must live until the layout is complete: sub-reports read as they are laid out.
    /// Raises 1004 when a parameter has neither a value nor a default.
    void run(Connection& connection);
    /// Rows of the caller's own instead of a source's.
    void setRows(std::string_view source, ResultSet rows);
    /// Takes the rows given by setRows; without a connection.
    void runOnRows();
    /// The rows as bound, filtered and sorted. Valid after run.
    const Prepared& data() const;

    /// Lays out to the end. False when `progress` stopped it; what is laid out so far stays.
    bool layout(const Progress& progress = {});
    /// Lays out for about `ms`; true when there is more to do.
    bool layoutFor(int ms_max);
    bool complete() const;
    double progress() const;  ///< 0 to 1
    int pages() const;        ///< pages that can be shown
    const Document& document() const;
    /// All places of a text in the finished pages, letter case ignored.
    std::vector<Found> find(std::string_view text) const;

    // outputs; those of pages lay out to the end first
    bool savePdf(const std::string& path, const Progress& progress = {});
    std::vector<std::string> savePng(const std::string& stem, double dotsPerInch = 144);
    bool print(const PrintJob& job, const Progress& progress = {});
    bool saveXlsx(const std::string& path, XlsxKind kind = XlsxKind::Report, const Progress& progress = {}) const {
        return writeXlsx(data(), path, kind, progress);
    }
    void saveCsv(const std::string& path) const;
    /// As aligned text for a terminal; forms without columns as their pages' texts.
    std::string text();

private:
    std::vector<Value> valuesOrDefaults() const;
    std::vector<ResultSet> readSources(const std::vector<Value>& values);
    ResultSet readSource(const SourceDef& source, const std::vector<Value>& values);
    void prepare(std::vector<ResultSet> rows, std::vector<Value> values);
    std::shared_ptr<const Prepared> subreportRows(const BandItem& item, const RowContext& context,
                                                  const Prepared& outer);
    std::shared_ptr<const Prepared> rowsFor(const BandItem& item, const RowContext& outer, const Prepared& outerData);

    Template template_;
    std::vector<std::optional<Value>> values_;
    std::map<std::string, std::unique_ptr<Report>, std::less<>> subreports_;
    std::map<std::string, ResultSet, std::less<>> ownRows_;
    std::map<std::string, ResultSet> known_;  ///< rows by statement, for sub-reports that repeat
    std::string description_;
    std::string database_;
    Connection* connection_ = nullptr;
    std::shared_ptr<const Prepared> data_;
    std::unique_ptr<Layouter> layouter_;
};

}  // namespace kv
