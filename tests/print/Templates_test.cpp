// Every template of the house, printed from a year of the demo hospital: its sources deliver the fields that it
// declares, its pages keep the margins and look as pages of this house do, its ways to screens lead somewhere. A
// template that is added is tried without a line here; where it needs a value of its own, its parameter says a
// `sample`.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "app/Program.h"
#include "platform/base/Text.h"
#include "tests/print/Samples.h"
#include "tests/year/YearDesk.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

Desk& year() {
    static const std::unique_ptr<Desk> desk = deskOfYear("templates.db", {.batches = 400, .months = 3, .closed = 3});
    return *desk;
}

/// What the screens give to parameters of such names.
Value usual(const ParameterDef& parameter) {
    static const std::tuple<const char*, Value> kByName[] = {
        {"range", "For the month of March 2024"},
        {"title", "Title of the report"},
        {"hospital", "EXAMPLE HOSPITAL"},
        {"company", "EXAMPLE HOSPITAL"},
        {"address", "1 SAMPLE STREET"},
        {"addr", "1 SAMPLE STREET"},
        {"startbatch", "1"},
        {"endbatch", "9"},
        {"batchtype", "JV"},
        {"book", "JV"},
        {"period", "202403"},
        {"pd", "202403"},
        {"year", "2024"},
        {"start", Date(2024, 3, 1)},
        {"from", Date(2024, 3, 1)},
        {"date", Date(2024, 3, 31)},
    };
    for (const auto& [part, value] : kByName) {
        if (containsNoCase(parameter.name, part)) return value;
    }
    return parameter.type == ParameterType::Text ? Value("") : Value(0);
}

void bindUsual(Report& report) {
    for (std::size_t i = 0; i < report.parameters().size(); ++i) {
        const ParameterDef& parameter = report.parameters()[i];
        if (parameter.sample) {
            report.setValue(i, *parameter.sample);
        } else if (!parameter.standard) {
            report.setValue(i, usual(parameter));
        }
    }
    for (const std::string& name : report.subreportNames()) bindUsual(report.openSubreport(name));
}

/// Text, number or date: what a field is, however wide.
char familyOf(DataType type) {
    switch (type) {
        case DataType::Char:
        case DataType::VarChar:
        case DataType::VarWChar:
        case DataType::Guid:
            return 't';
        case DataType::Date:
        case DataType::DateTime:
            return 'd';
        default:
            return 'n';
    }
}

void expectFields(const SourceDef& source, const std::vector<Field>& delivered, const std::string& where) {
    EXPECT_TRUE(source.fieldsGiven) << where << " declares no columns";
    for (const Field& field : source.fields) {
        const auto same = [&](const Field& f) { return equalsNoCase(f.name, field.name); };
        const auto found = std::find_if(delivered.begin(), delivered.end(), same);
        if (found == delivered.end()) {
            ADD_FAILURE() << where << " does not deliver " << field.name;
        } else if (found->type != DataType::Empty) {
            EXPECT_EQ(familyOf(found->type), familyOf(field.type))
                << where << " delivers another type of " << field.name;
        }
    }
}

void expectSources(Report& report, const std::string& where) {
    const Prepared& data = report.data();
    for (std::size_t s = 0; s < report.definition().sources.size(); ++s) {
        // a cross-tab's own rows have its columns in place of the source's
        if (s == 0 && report.definition().crosstab.given) continue;
        expectFields(report.definition().sources[s], data.source(static_cast<int>(s)).fields, where);
    }
    for (const std::string& name : report.subreportNames()) {
        Report& sub = report.openSubreport(name);
        sub.run(year().cn());
        expectSources(sub, where + ", " + name);
    }
}

void expectPage(const Report& report, std::size_t page, const std::string& where) {
    const PageSetup& setup = report.definition().page;
    static const std::regex minus(R"(-[0-9,]*[0-9]\.[0-9][0-9])");
    for (const TextRun& run : report.document().pages[page].runs) {
        if (run.hidden) continue;
        const std::string at = where + ", page " + std::to_string(page + 1) + ": " + run.text;
        EXPECT_GE(run.x, setup.left - 0.1) << at;
        // a closing bracket may hang out by a millimetre
        EXPECT_LE(run.x + run.width, setup.width - setup.right + 1.2) << at;
        EXPECT_LE(run.y + run.height, setup.height - setup.bottom + 0.5) << at;
        EXPECT_EQ(run.text.find("###"), std::string::npos) << at;
        EXPECT_FALSE(std::regex_search(run.text, minus)) << at << " (below zero stands in brackets)";
    }
}

void expectPages(Report& report, const std::string& where) {
    report.setDescription("Printed by: Ana Cruz; Print date: 4/5/2024 10:30:00; HALCYRA 1.0");
    report.run(year().cn());
    ASSERT_TRUE(report.layout()) << where;
    ASSERT_GE(report.pages(), 1) << where;
    for (std::size_t p = 0; p < report.document().pages.size(); ++p) expectPage(report, p, where);
    if (!report.definition().pageHeader.given) return;  // a form: its page says nothing else
    const PaperPage& first = report.document().pages.front();
    const std::string text = joinedText(first, textLines(first));
    EXPECT_NE(text.find(report.title()), std::string::npos) << where << " does not show its title";
    EXPECT_NE(text.find("Printed by: "), std::string::npos) << where;
    EXPECT_NE(text.find("Page 1 of "), std::string::npos) << where;
}

void expectDrills(const Report& report, const std::string& where) {
    static const Screens screens = [] {
        Screens all;
        registerScreens(all);
        return all;
    }();
    for (const PaperPage& page : report.document().pages) {
        for (const PageLink& link : page.links) {
            if (!screens.hasDocuments(link.screen)) {
                ADD_FAILURE() << where << " leads to " << link.screen << ", which opens no documents";
                return;
            }
        }
    }
}

TEST(Templates, PrintFromTheDemoHospital) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator("Reports")) {
        if (entry.path().extension() != ".rpt") continue;
        ++count;
        const std::string name = entry.path().filename();
        try {
            const auto report = Report::load(entry.path());
            EXPECT_FALSE(report->title().empty()) << name;
            bindUsual(*report);
            expectPages(*report, name);
            expectDrills(*report, name);
            expectSources(*report, name);
            EXPECT_FALSE(report->text().empty()) << name;
        } catch (const Error& e) {
            ADD_FAILURE() << name << ": " << e.description;
        }
    }
    EXPECT_GE(count, 6);
}

}  // namespace
}  // namespace kv
