#pragma once
// Play: a screenplay file as lines of words, and how its texts are compared.

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// Why a line of a play does not hold; the player adds file and line.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Word {
    std::string text;  ///< "\"", "\n" and "\t" are resolved; "\*" and "\\" still stand, for comparing
    bool quoted = false;
};

/// One command of a play with the place where it stands.
class PlayLine {
public:
    PlayLine() = default;
    /// Raises Failure for an open quote.
    PlayLine(std::string file, int number, std::string source);

    const std::string& file() const { return file_; }
    int number() const { return number_; }
    const std::string& source() const { return source_; }
    std::string place() const { return file_ + ":" + std::to_string(number_); }
    bool empty() const { return words_.empty(); }
    std::size_t size() const { return words_.size(); }
    bool has(std::size_t index) const { return index < words_.size(); }
    bool quoted(std::size_t index) const { return has(index) && words_[index].quoted; }
    /// A bare word that stands for itself, as "cancel"; empty where there is none or a text in quotes.
    std::string bare(std::size_t index) const;

    // these raise Failure where the word is missing or of another kind
    const std::string& word(std::size_t index, std::string_view what) const;     ///< a name or key
    std::string text(std::size_t index, std::string_view what) const;            ///< a text to type or write
    const std::string& pattern(std::size_t index, std::string_view what) const;  ///< a text to compare
    int number(std::size_t index, std::string_view what) const;
    /// The number in "#2"; -1 for anything else.
    int ordinal(std::size_t index) const;
    void atMost(std::size_t words) const;

private:
    std::string file_;
    int number_ = 0;
    std::string source_;
    std::vector<Word> words_;
};

/// All lines of a play that are commands, with the files that it includes in their places.
/// Raises Failure, with the place in its text, for a file that cannot be read, an open quote, a ring of includes.
std::vector<PlayLine> readPlay(const std::string& file);

/// Compares a text of a play with a found one: "*" stands for any run of characters, "\*" for a star.
bool matches(std::string_view pattern, std::string_view found);
/// The pattern anywhere in the found text.
bool holds(std::string_view pattern, std::string_view found);
/// The text as it is typed: "\*" is a star, "\\" a backslash.
std::string plainText(const std::string& word);

}  // namespace kv
