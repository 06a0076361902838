// report: checks a report template, and runs one from the command line into PDF, spreadsheet, csv, pictures or text.

#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "platform/base/CommandLine.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "platform/forms/Application.h"
#include "platform/odbc/Odbc.h"
#include "platform/print/Report.h"

namespace {

constexpr const char* kUsage =
    "usage: report FILE.rpt... [--check]\n"
    "       report FILE.rpt (--data FILE | --source odbc:DSN) [NAME=VALUE]... [output]...\n"
    "\n"
    "  --check             read the templates and name every mistake by file and line\n"
    "  --data FILE         the embedded database in FILE\n"
    "  --source odbc:DSN   a SQL Server by its data source name, or by a whole connection string\n"
    "  --database NAME     the default database; ACCOUNTING without it\n"
    "  NAME=VALUE          a parameter's value, e.g. @Period=202403\n"
    "  --pdf FILE  --xlsx FILE  --rows FILE (xlsx, heading and rows only)  --csv FILE  --png STEM  --list FILE (what "
    "stands\n"
    "                      where); without an output the report is printed as text\n"
    "\n"
    "Exit status: 0 done, 1 mistakes or a failure, 2 wrong use.\n";

struct Options {
    std::vector<std::string> templates;
    bool check = false;
    std::string data, source, database = "ACCOUNTING";
    std::vector<std::pair<std::string, std::string>> values;
    std::map<std::string, std::string> outputs;  ///< option without dashes -> file
};

Options optionsOf(int argc, char** argv) {
    Options out;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const auto next = [&] {
            if (++i >= argc) throw kv::WrongUse{word + " needs a value"};
            return std::string(argv[i]);
        };
        const std::size_t equals = word.find('=');
        if (word == "--check") {
            out.check = true;
        } else if (word == "--data") {
            out.data = next();
        } else if (word == "--source") {
            out.source = next();
        } else if (word == "--database") {
            out.database = next();
        } else if (word == "--pdf" || word == "--xlsx" || word == "--rows" || word == "--csv" || word == "--png" ||
                   word == "--list") {
            out.outputs[word.substr(2)] = next();
        } else if (word.starts_with("--")) {
            throw kv::WrongUse{"there is no option " + word};
        } else if (equals != std::string::npos && equals > 0) {
            out.values.emplace_back(word.substr(0, equals), word.substr(equals + 1));
        } else {
            out.templates.push_back(word);
        }
    }
    if (out.templates.empty()) throw kv::WrongUse{"which template?"};
    out.check = out.check || (out.data.empty() && out.source.empty());
    if (!out.check && out.templates.size() > 1) throw kv::WrongUse{"one template at a time"};
    return out;
}

std::unique_ptr<kv::Connection> open(const Options& options) {
    if (!options.data.empty()) {
        return kv::openEmbedded({.file = options.data, .create = false, .defaultDatabase = options.database});
    }
    if (!options.source.starts_with("odbc:")) throw kv::WrongUse{"--source is odbc:DSN"};
    const std::string name = options.source.substr(5);
    const bool whole = name.find('=') != std::string::npos;
    return kv::openOdbc({.connectionString = whole ? name : "DSN=" + name, .defaultDatabase = options.database});
}

int check(const Options& options) {
    int status = 0;
    for (const std::string& path : options.templates) {
        try {
            const auto report = kv::Report::load(path);
            std::cout << report->fileName() << ": " << report->title() << " (";
            const char* apart = "";
            for (const kv::ParameterDef& p : report->parameters()) std::cout << std::exchange(apart, ", ") << p.name;
            std::cout << ")\n";
        } catch (const kv::Error& e) {
            std::cerr << e.description << "\n";
            status = 1;
        }
    }
    return status;
}

void write(kv::Report& report, const std::map<std::string, std::string>& outputs) {
    for (const auto& [kind, file] : outputs) {
        if (kind == "pdf") {
            report.savePdf(file);
        } else if (kind == "xlsx" || kind == "rows") {
            report.saveXlsx(file, kind == "xlsx" ? kv::XlsxKind::Report : kv::XlsxKind::Tabular);
        } else if (kind == "csv") {
            report.saveCsv(file);
        } else if (kind == "png") {
            report.savePng(file);
        } else {
            report.layout();
            kv::writeTextFile(file, kv::pageList(report.document()));
        }
    }
    if (outputs.empty()) std::cout << report.text();
}

int run(const Options& options) {
    const auto report = kv::Report::load(options.templates[0]);
    for (const auto& [name, value] : options.values) report->setValue(name, kv::Value(value));
    for (std::size_t i = 0; i < report->parameters().size(); ++i) {
        const std::optional<kv::Value>& sample = report->parameters()[i].sample;
        if (!report->hasValue(i) && sample) report->setValue(i, *sample);
    }
    report->setDescription("Print date: " + kv::defaultText(kv::Now()));
    const auto connection = open(options);
    report->run(*connection);
    write(*report, options.outputs);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    return kv::runProgram("report", kUsage, [&] {
        const Options options = optionsOf(argc, argv);
        const kv::Application application(argc, argv);
        return options.check ? check(options) : run(options);
    });
}
