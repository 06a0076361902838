// Feeds template texts to the reader, and what is taken to the layout with a few awkward rows. Refusals are fine,
// crashes and hangs are not.
#include <cstdint>
#include <cstdlib>

#include "platform/base/Error.h"
#include "platform/forms/Application.h"
#include "platform/print/Report.h"

namespace {

/// Rows with the columns that the template declares, else a few of our own.
kv::ResultSet rowsFor(const kv::SourceDef& source) {
    kv::ResultSet set;
    set.fields = source.fields;
    if (set.fields.empty())
        set.fields = {{"Code", kv::DataType::VarChar, 0, 0}, {"Debit", kv::DataType::Currency, 0, 0}};
    const kv::Value values[] = {
        "1101", kv::Money::fromUnits(-1), kv::Value(), 0.5, kv::Date(2024, 2, 29), true, "\xF1 {", 7};
    for (std::size_t r = 0; r < 12; ++r) {
        kv::Row row;
        for (std::size_t c = 0; c < set.fields.size(); ++c) row.push_back(values[(r / 2 + c) % 8]);
        set.rows.push_back(std::move(row));
    }
    return set;
}

void layOut(kv::Report& report) {
    for (std::size_t i = 0; i < report.parameters().size(); ++i) {
        if (!report.hasValue(i)) report.setValue(i, kv::Value());
    }
    for (const kv::SourceDef& source : report.definition().sources) report.setRows(source.name, rowsFor(source));
    report.runOnRows();
    for (int slice = 0; slice < 20 && report.layoutFor(50); ++slice) {
    }
    (void)report.text();
    (void)kv::tableCsv(report.data());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static kv::Application application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        kv::Report report(kv::readTemplate(kv::readTemplateText(text, "fuzz.rpt", "Reports/"), "fuzz.rpt", "Reports/"));
        layOut(report);
    } catch (const kv::Error&) {
        return 0;  // a refusal with a message
    }
    return 0;
}
