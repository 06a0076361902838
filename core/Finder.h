#pragma once
// Finder: everything that can be found by number or name, and the ranking of what a typed text means.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// What is added to a finder; its texts are copied.
struct FindText {
    std::string_view key;     ///< what opens it, e.g. "JV 1204"; unique within a source
    std::string_view code;    ///< number, e.g. "JVD03-001-24"
    std::string_view title;   ///< name or particulars
    std::string_view detail;  ///< date, amount, menu path: found too, but last
};

class Finder {
public:
    /// Entries added from now on belong to this source; `weight` lifts them above equal matches of other sources.
    /// `initials`: they are also found by the first letters of their words.
    void beginSource(int source, int weight, bool initials = false);
    /// Entries that are added first come first among equals.
    void add(const FindText& text);
    std::size_t size() const { return entries_.size(); }

    struct View {
        std::string_view key, code, title, detail;
        int source = 0;
    };
    View at(std::size_t entry) const;

    /// The entries that hold every word of the text, the best first, at most `most`. Letter case does not matter, nor
    /// do the commas of amounts. A text without words finds nothing. While a user types on, only what was found before
    /// is searched.
    std::vector<std::size_t> search(std::string_view text, std::size_t most);
    std::size_t found() const { return found_.size(); }  ///< how many the last search found in all

private:
    struct Entry {
        std::uint32_t text = 0;   ///< where its texts begin, in texts_: key, code, title, detail
        std::uint32_t lower = 0;  ///< where they begin in small letters, in lower_: code, title, detail, initials
        std::uint16_t key = 0, code = 0, title = 0, detail = 0;  ///< lengths in texts_
        std::uint16_t lowerCode = 0, lowerTitle = 0;             ///< lengths in lower_
        std::uint16_t lowerAll = 0;
        std::uint16_t initials = 0;  ///< length of the initials at the end
        std::int16_t weight = 0;
        std::int16_t source = 0;
    };
    struct Hit {
        std::uint32_t entry = 0;
        std::int32_t score = 0;
    };
    int score(const Entry& entry, const std::vector<std::string>& words, std::string_view whole) const;
    int scoreWord(const Entry& entry, std::string_view word) const;

    std::string texts_;
    std::string lower_;
    std::vector<Entry> entries_;
    std::vector<Hit> found_;
    std::string lastText_;
    int source_ = 0;
    int weight_ = 0;
    bool initials_ = false;
};

}  // namespace kv
