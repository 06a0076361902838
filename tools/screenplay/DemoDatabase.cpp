#include "tools/screenplay/DemoDatabase.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "app/Program.h"
#include "core/module1.h"
#include "demo/year/DemoYear.h"
#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"

namespace fs = std::filesystem;

namespace kv {

namespace {

/// Held by one process at a time.
class FileLock {
public:
    explicit FileLock(const std::string& path) : handle_(open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0666)) {
        if (handle_ < 0 || flock(handle_, LOCK_EX) != 0)
            throw Error(75, "DemoDatabase", "Path/File access error: " + path);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock() { ::close(handle_); }

private:
    int handle_;
};

/// FNV-1a over names and contents: only to tell states apart.
class Fingerprint {
public:
    void add(std::string_view bytes) {
        for (const char c : bytes) hash_ = (hash_ ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    }
    void addFolder(const std::string& folder) {
        std::vector<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file()) files.push_back(entry.path().string());
        }
        std::sort(files.begin(), files.end());
        for (const std::string& file : files) {
            add(file);
            add(readTextFile(file));
        }
    }
    std::string text() const {
        char digits[17];
        std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash_));
        return digits;
    }

private:
    std::uint64_t hash_ = 14695981039346656037ULL;
};

fs::path thisProgram() { return fs::read_symlink("/proc/self/exe"); }

std::string stateNow() {
    Fingerprint state;
    state.addFolder(buildPath(programFolder(), "server"));
    state.addFolder(buildPath(programFolder(), "demo/data"));
    // What fills the database is part of this program.
    state.add(std::to_string(fs::file_size(thisProgram())));
    state.add(std::to_string(fs::last_write_time(thisProgram()).time_since_epoch().count()));
    return state.text();
}

/// Beside the program where that can be written, so that it goes with the build.
fs::path templateFolder() {
    const fs::path beside = thisProgram().parent_path().parent_path() / "demo";
    std::error_code trouble;
    fs::create_directories(beside, trouble);
    if (!trouble && access(beside.c_str(), W_OK) == 0) return beside;
    const fs::path elsewhere = fs::temp_directory_path() / ("korvane-demo-" + std::to_string(getuid()));
    fs::create_directories(elsewhere);
    return elsewhere;
}

/// Last year's books are thinner: they serve comparisons.
void writeYears(const std::string& file) {
    EmbeddedOptions options;
    options.file = file;
    const std::unique_ptr<Connection> connection = openEmbedded(options);
    clsCurrentUser user;
    Screens screens;
    Session session(user, *connection, screens);
    session.EmployeeCode = "E001";
    ResetGlobalVariables(session);
    module1::SaveUserLog(session, "User Login");
    DemoYear(session, {.year = 2023, .batches = 600}).write();
    DemoYear(session, {.year = 2024}).write();
    embeddedOf(*connection)->checkpoint();
    connection->close();
}

/// Under a name of its own first, so that what was broken off is never taken for the whole.
void make(const std::string& file, DemoKind kind = DemoKind::Empty) {
    const std::string unfinished = file + ".making";
    for (const char* part : {"", "-wal", "-shm"}) fs::remove(unfinished + part);
    makeHospital(unfinished, {});
    if (kind == DemoKind::Year) writeYears(unfinished);
    fs::rename(unfinished, file);
}

}  // namespace

void ensureDemo(const std::string& file) {
    if (fileExists(file)) return;
    if (const fs::path folder = fs::path(file).parent_path(); !folder.empty()) fs::create_directories(folder);
    const FileLock lock(file + ".lock");
    if (!fileExists(file)) make(file);
    fs::remove(file + ".lock");
}

DemoKind demoKindOf(const std::string& play) {
    for (const std::string& line : split(readTextFile(play), '\n')) {
        if (trimBlanks(line) == "# hospital: year") return DemoKind::Year;
    }
    return DemoKind::Empty;
}

std::string demoTemplate(DemoKind kind) {
    const fs::path folder = templateFolder();
    const std::string state = stateNow();
    const fs::path wanted = folder / (state + (kind == DemoKind::Year ? "-year.db" : ".db"));
    if (fs::exists(wanted)) return wanted.string();
    const FileLock lock((folder / "lock").string());
    if (fs::exists(wanted)) return wanted.string();
    for (const auto& entry : fs::directory_iterator(folder)) {
        const fs::path& file = entry.path();
        if (file.extension() == ".db" && !file.filename().string().starts_with(state)) fs::remove(file);
    }
    make(wanted.string(), kind);
    return wanted.string();
}

ThrowawayCopy::ThrowawayCopy(const std::string& original) {
    folder_ = (fs::temp_directory_path() / "korvane-play-XXXXXX").string();
    if (!mkdtemp(folder_.data())) throw Error(75, "DemoDatabase", "Path/File access error: " + folder_);
    file_ = buildPath(folder_, "hospital.db");
    std::error_code trouble;
    if (!fs::copy_file(original, file_, trouble)) throw Error(75, "DemoDatabase", trouble.message());
}

ThrowawayCopy::~ThrowawayCopy() {
    std::error_code none;
    fs::remove_all(folder_, none);
}

}  // namespace kv
