#include "platform/login/OpenSource.h"

#include <unistd.h>

#include <filesystem>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Embedded.h"
#include "platform/odbc/Odbc.h"

namespace fs = std::filesystem;

namespace kv {
namespace {

constexpr long kErrCannotWrite = 75;

/// A file that is being made, with what the engine may have laid beside it; gone when it was not put in place.
class Unfinished {
public:
    explicit Unfinished(const std::string& target) : path_(target + ".making." + std::to_string(getpid())) { clear(); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished() { clear(); }
    const std::string& path() const { return path_; }

    /// True when the target was not there yet and is now.
    bool putInPlace(const std::string& target) const {
        std::error_code failed;
        fs::create_hard_link(path_, target, failed);  // unlike a rename it never replaces a file
        if (failed && !fileExists(target)) {
            throw Error(kErrCannotWrite, "OpenSource", "The file cannot be written: " + target);
        }
        return !failed;
    }

private:
    void clear() const {
        std::error_code none;
        for (const char* ending : {"", "-wal", "-shm", "-journal"}) fs::remove(path_ + ending, none);
    }
    std::string path_;
};

std::unique_ptr<Connection> openServer(const DataSource& source, const std::string& password) {
    SqlServerLogon logon;
    logon.server = source.server;
    logon.user = source.user;
    logon.password = password;
    logon.driver = source.driver;
    logon.options = source.options;
    OdbcOptions options;
    options.connectionString = odbcConnectionString(logon);
    return openOdbc(options);
}

}  // namespace

std::unique_ptr<Connection> openSource(const LoginOptions& options, const DataSource& source,
                                       const std::string& password) {
    if (options.open) return options.open(source, password);
    if (!source.embedded()) return openServer(source, password);
    examineEmbedded(options.embeddedFile);
    EmbeddedOptions embedded;
    embedded.file = options.embeddedFile;
    embedded.create = false;
    return openEmbedded(embedded);
}

bool prepareEmbedded(const LoginOptions& options, const LoginOptions::Progress& progress) {
    if (!options.prepare || fileExists(options.embeddedFile)) return false;
    std::error_code none;
    fs::create_directories(fs::path(options.embeddedFile).parent_path(), none);
    const Unfinished file(options.embeddedFile);
    options.prepare(file.path(), progress);
    return file.putInPlace(options.embeddedFile);
}

}  // namespace kv
