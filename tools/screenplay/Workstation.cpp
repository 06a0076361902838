#include "tools/screenplay/Workstation.h"

#include <algorithm>
#include <filesystem>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "platform/forms/Form.h"

namespace kv {

namespace {

constexpr std::size_t kRowsTold = 3;

/// What a check says of itself in its head: "-- Title: ...".
std::string titleOf(const std::string& check) {
    for (const std::string& line : split(check, '\n')) {
        if (startsNoCase(line, "-- Title:")) return std::string(trimBlanks(line.substr(9)));
    }
    return "a check without a title";
}

std::string told(const Recordset& rows) {
    std::string text;
    for (std::size_t i = 0; i < std::min(rows.recordCount(), kRowsTold); ++i) {
        std::vector<std::string> cells;
        for (std::size_t c = 0; c < rows.fields().size(); ++c) {
            cells.push_back(rows.fields()[c].name + "=" + rows.rows()[i][c].text());
        }
        text += " [" + join(cells, " ") + "]";
    }
    return text;
}

}  // namespace

bool Workstation::start() {
    Program::Options options;
    options.dataFile = dataFile_;
    options.settingsFile.clear();
    options.makeDemo = false;
    program_ = std::make_unique<Program>(options);
    program_->onConnected = [this](Connection& connection) { connection.observe(listener_); };
    return program_->Main();
}

std::unique_ptr<Connection> Workstation::connect() {
    EmbeddedOptions options;
    options.file = dataFile_;
    options.create = false;
    return openEmbedded(options);
}

ShownReport* Workstation::report() { return nullptr; }

std::vector<std::string> Workstation::unsound() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(buildPath(programFolder(), "server/checks"))) {
        if (entry.path().extension() == ".sql") files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> wrong;
    const std::unique_ptr<Connection> connection = connect();
    for (const std::string& file : files) {
        const std::string check = readTextFile(file);
        try {
            const Recordset rows = connection->Open(check);
            if (!rows.empty()) wrong.push_back("not so: " + titleOf(check) + told(rows));
        } catch (const Error& error) {
            wrong.push_back(fileNameOf(file) + ": " + error.description);
        }
    }
    return wrong;
}

}  // namespace kv
