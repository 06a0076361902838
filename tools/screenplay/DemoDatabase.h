#pragma once
// DemoDatabase: the demo hospital as a file that a play may spoil: made once per state of scripts, data and program,
// then copied.

#include <string>

namespace kv {

/// A private copy of a database file in a folder of its own, gone with the object.
class ThrowawayCopy {
public:
    /// Raises Error 75 when it cannot be written.
    explicit ThrowawayCopy(const std::string& original);
    ThrowawayCopy(const ThrowawayCopy&) = delete;
    ThrowawayCopy& operator=(const ThrowawayCopy&) = delete;
    ~ThrowawayCopy();
    const std::string& file() const { return file_; }

private:
    std::string folder_;
    std::string file_;
};

/// What a play begins with: the hospital with empty books, or with 2023 and 2024 in them, every month closed and
/// prepared.
enum class DemoKind { Empty, Year };

/// The kind that a play asks for: a line "# hospital: year" in its text asks for the books of two years.
DemoKind demoKindOf(const std::string& play);

/// The file to copy from. Makes it where this state has none yet; processes that ask at once make it once.
std::string demoTemplate(DemoKind kind);

/// Makes the file with the demo hospital when it does not exist. Two processes at once make it once.
void ensureDemo(const std::string& file);

}  // namespace kv
