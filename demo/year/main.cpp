// demoyear: writes a year of an invented hospital into a database of either kind; a missing file is made with the demo
// hospital first.

#include <chrono>
#include <iostream>
#include <memory>
#include <string>

#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "core/Session.h"
#include "core/module1.h"
#include "demo/year/DemoYear.h"
#include "platform/base/CommandLine.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "platform/odbc/Odbc.h"

namespace {

constexpr const char* kUsage =
    "usage: demoyear --data FILE | --source odbc:DSN [--year 2024] [--batches 5000] [--seed 1] [--months 12]\n"
    "                [--closed 12]\n"
    "\n"
    "  --data FILE         the embedded database in FILE; a missing file is made with the demo hospital\n"
    "  --source odbc:DSN   a SQL Server that carries the scripts and the demo hospital\n"
    "  --year YEAR         the year; where the year before stands to its end, it is closed and goes on\n"
    "  --batches N         about so many documents\n"
    "  --months N          write the first N months only\n"
    "  --closed N          post, close and prepare the first N months only\n";

struct Arguments {
    std::string file;
    std::string source;
    kv::DemoYearPlan plan;
    bool good = true;
};

Arguments parseArguments(int argc, char** argv) {
    Arguments out;
    for (int i = 1; i < argc && out.good; ++i) {
        const std::string option = argv[i];
        if (i + 1 >= argc) {
            out.good = false;
        } else if (option == "--data" || option == "--source") {
            (option == "--data" ? out.file : out.source) = argv[++i];
        } else {
            const int number = std::atoi(argv[++i]);
            out.good = number >= 0;
            if (option == "--seed") {
                out.plan.seed = static_cast<unsigned>(number);
            } else if (int* value = option == "--year"      ? &out.plan.year
                                    : option == "--batches" ? &out.plan.batches
                                    : option == "--months"  ? &out.plan.months
                                    : option == "--closed"  ? &out.plan.closed
                                                            : nullptr) {
                *value = number;
            } else {
                out.good = false;
            }
        }
    }
    if (out.file.empty() == out.source.empty() || out.plan.months > 12) out.good = false;
    if (!out.source.empty() && !kv::startsNoCase(out.source, "odbc:")) out.good = false;
    return out;
}

std::unique_ptr<kv::Connection> connect(const Arguments& arguments) {
    if (!arguments.source.empty()) {
        kv::OdbcOptions options;
        const std::string name = arguments.source.substr(5);
        options.connectionString = name.find('=') == std::string::npos ? "DSN=" + name : name;
        options.defaultDatabase = "ACCOUNTING";
        return kv::openOdbc(options);
    }
    const bool missing = !kv::fileExists(arguments.file);
    kv::EmbeddedOptions options;
    options.file = arguments.file;
    std::unique_ptr<kv::Connection> connection = kv::openEmbedded(options);
    if (missing) {
        kv::installDatabase(*connection, kv::buildPath(kv::programFolder(), "server"));
        kv::loadDemoHospital(*connection, kv::buildPath(kv::programFolder(), "demo/data"));
    }
    return connection;
}

int run(const Arguments& arguments) {
    const auto start = std::chrono::steady_clock::now();
    const std::unique_ptr<kv::Connection> connection = connect(arguments);
    kv::clsCurrentUser user;
    kv::Screens screens;
    kv::Session session(user, *connection, screens);
    session.EmployeeCode = "E001";
    kv::ResetGlobalVariables(session);
    kv::module1::SaveUserLog(session, "User Login");
    const kv::DemoYearTally tally = kv::DemoYear(session, arguments.plan).write();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::cout << tally.documents << " documents with " << tally.lines << " lines of " << arguments.plan.year << " in "
              << kv::Format(kv::Date().addMs(static_cast<std::int64_t>(took.count() * 1000)), "n:ss.f") << '\n';
    connection->close();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    return kv::runProgram("demoyear", kUsage, [&] {
        const Arguments arguments = parseArguments(argc, argv);
        if (!arguments.good) throw kv::WrongUse();
        return run(arguments);
    });
}
