#include "platform/base/Paths.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/base/Date.h"
#include "platform/base/Error.h"

namespace fs = std::filesystem;

namespace kv {

const std::string& programFolder() {
    static const std::string found = [] {
        std::error_code none;
        const fs::path home = fs::read_symlink("/proc/self/exe", none).parent_path();
        for (fs::path at = home; !at.empty() && at != at.root_path(); at = at.parent_path()) {
            if (fs::is_directory(at / "server", none) && fs::is_directory(at / "Reports", none)) return at.string();
        }
        return home.string();
    }();
    return found;
}

bool fileExists(const std::string& path) {
    std::error_code none;
    return fs::is_regular_file(path, none);
}

bool folderExists(const std::string& path) {
    std::error_code none;
    return fs::is_directory(path, none);
}

std::string buildPath(std::string_view folder, std::string_view name) {
    return folder.empty() ? std::string(name) : (fs::path(folder) / fs::path(name)).string();
}

std::string fileNameOf(std::string_view path) {
    const std::size_t mark = path.find_last_of("/\\");
    return std::string(mark == std::string_view::npos ? path : path.substr(mark + 1));
}

std::string readTextFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    if (in) text << in.rdbuf();
    if (!in) throw Error(53, "Paths", "File not found: " + path);
    return text.str();
}

std::string freeNameBeside(const std::string& path, std::string_view what) {
    const std::string name = path + "." + std::string(what) + "-" + Format(Now(), "yyyyMMdd-HHnnss");
    std::string free = name;
    std::error_code none;
    for (int i = 2; fs::exists(fs::symlink_status(free, none)); ++i) free = name + "-" + std::to_string(i);
    return free;
}

void writeTextFile(const std::string& path, std::string_view text) {
    const std::string beside = path + ".writing";
    std::error_code failed;
    {
        std::ofstream out(beside, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        out.flush();
        if (!out) failed = std::make_error_code(std::errc::io_error);
    }
    if (!failed) fs::rename(beside, path, failed);
    if (failed) {
        std::error_code none;
        fs::remove(beside, none);
        throw Error(75, "Paths", "The file cannot be written: " + path);
    }
}

}  // namespace kv
