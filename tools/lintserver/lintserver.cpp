// lintserver: compiles every statement of every server script and check on the embedded engine, without running it.

#include <filesystem>
#include <iostream>
#include <string>

#include "core/Installer.h"
#include "platform/base/CommandLine.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Embedded.h"

namespace {

int complain(const std::string& script, const std::vector<kv::DbError>& errors) {
    for (const kv::DbError& error : errors)
        std::cerr << script << ":" << error.line << ": Msg " << error.number << ", " << error.description << '\n';
    return static_cast<int>(errors.size());
}

int lint(const std::string& folder) {
    kv::EmbeddedOptions options;
    options.file = ":memory:";
    const auto connection = kv::openEmbedded(options);
    kv::installDatabase(*connection, folder);
    kv::EmbeddedServices& engine = *kv::embeddedOf(*connection);
    int faults = 0;
    for (const kv::InstallStep& step : kv::serverScripts(folder)) {
        connection->setDefaultDatabase(step.database);
        faults += complain(step.script, engine.compileOnly(step.text));
    }
    connection->setDefaultDatabase("ACCOUNTING");
    for (const auto& entry : std::filesystem::directory_iterator(folder + "/checks"))
        faults += complain("checks/" + entry.path().filename().string(),
                           engine.compileOnly(kv::readTextFile(entry.path().string())));
    return faults > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    return kv::runProgram("lintserver", "usage: lintserver FOLDER\n", [&] {
        if (argc != 2) throw kv::WrongUse();
        return lint(argv[1]);
    });
}
