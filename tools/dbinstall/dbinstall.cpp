// dbinstall: brings a database of either kind up to the server scripts, and fills a fresh one with the demo hospital.

#include <iostream>
#include <memory>
#include <string>

#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "platform/base/CommandLine.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "platform/odbc/Odbc.h"

namespace {

constexpr const char* kUsage =
    "usage: dbinstall --data FILE | --source odbc:DSN [--plan] [--demo] [--scripts DIR]\n"
    "\n"
    "  --data FILE         the embedded database in FILE; a missing file is made\n"
    "  --source odbc:DSN   a SQL Server by the name of its data source, or odbc:Driver=...;Server=...\n"
    "  --plan              print what would be done, change nothing\n"
    "  --demo              fill a database without a chart of accounts with the demo hospital\n"
    "  --scripts DIR       another folder of scripts\n"
    "\n"
    "It can be run again at any time; scripts that stand already are left alone.\n";

struct Arguments {
    std::string file;
    std::string source;
    std::string scripts = kv::buildPath(kv::programFolder(), "server");
    bool planOnly = false;
    bool demo = false;
    bool good = true;
};

Arguments parseArguments(int argc, char** argv) {
    Arguments out;
    for (int i = 1; i < argc && out.good; ++i) {
        const std::string option = argv[i];
        std::string* value = option == "--data"      ? &out.file
                             : option == "--source"  ? &out.source
                             : option == "--scripts" ? &out.scripts
                                                     : nullptr;
        if (value && i + 1 < argc) {
            *value = argv[++i];
        } else if (option == "--plan") {
            out.planOnly = true;
        } else if (option == "--demo") {
            out.demo = true;
        } else {
            out.good = false;
        }
    }
    if (out.file.empty() == out.source.empty()) out.good = false;
    if (!out.source.empty() && !kv::startsNoCase(out.source, "odbc:")) out.good = false;
    return out;
}

std::unique_ptr<kv::Connection> connect(const Arguments& arguments) {
    if (arguments.source.empty()) {
        kv::EmbeddedOptions options;
        options.file = arguments.planOnly && !kv::fileExists(arguments.file) ? ":memory:" : arguments.file;
        return kv::openEmbedded(options);
    }
    kv::OdbcOptions options;
    const std::string name = arguments.source.substr(5);
    options.connectionString = name.find('=') == std::string::npos ? "DSN=" + name : name;
    options.defaultDatabase = "";
    return kv::openOdbc(options);
}

int run(const Arguments& arguments) {
    const std::unique_ptr<kv::Connection> connection = connect(arguments);
    if (arguments.planOnly) {
        const auto plan = kv::planInstall(*connection, arguments.scripts);
        for (const kv::InstallStep& step : plan)
            std::cout << (step.known ? "replace  " : "new      ") << step.script << '\n';
        std::cout << (plan.empty() ? "The database is up to date." : std::to_string(plan.size()) + " scripts to run.")
                  << '\n';
        return 0;
    }
    const std::size_t count = kv::installDatabase(*connection, arguments.scripts);
    std::cout << (count == 0 ? "The database is up to date." : std::to_string(count) + " scripts installed.") << '\n';
    if (arguments.demo) {
        kv::loadDemoHospital(*connection, kv::buildPath(kv::programFolder(), "demo/data"));
        std::cout << "The demo hospital stands.\n";
    }
    connection->close();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    return kv::runProgram("dbinstall", kUsage, [&] {
        const Arguments arguments = parseArguments(argc, argv);
        if (!arguments.good) throw kv::WrongUse();
        return run(arguments);
    });
}
