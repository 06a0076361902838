// What a workstation remembers of windows and columns: lines of key=value in a file of the user's.

#include <map>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Application.h"
#include "platform/forms/Internal.h"

namespace kv {

namespace {

struct Memory {
    std::string path;
    std::map<std::string, std::string, std::less<>> values;
};

Memory& memory() {
    static Memory one;
    return one;
}

}  // namespace

void setMemoryFile(const std::string& path) {
    Memory& m = memory();
    m.path = path;
    m.values.clear();
    if (path.empty() || !fileExists(path)) return;
    try {
        for (const std::string& line : split(readTextFile(path), '\n'))
            if (const auto at = line.find('='); at != std::string::npos && at > 0)
                m.values[line.substr(0, at)] = line.substr(at + 1);
    } catch (const Error&) {
        m.values.clear();  // an unreadable memory is an empty one: only sizes are lost
    }
}

std::string remembered(std::string_view key) {
    const auto it = memory().values.find(key);
    return it == memory().values.end() ? std::string() : it->second;
}

void remember(std::string_view key, std::string_view value) {
    Memory& m = memory();
    if (m.path.empty() || value.find('\n') != std::string_view::npos || remembered(key) == value) return;
    m.values[std::string(key)] = value;
    std::string text;
    for (const auto& [name, what] : m.values) text += name + "=" + what + "\n";
    try {
        writeTextFile(m.path, text);
    } catch (const Error&) {
        m.path.clear();  // a place that cannot be written is not tried again
    }
}

}  // namespace kv
