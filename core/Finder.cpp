#include "core/Finder.h"

#include <algorithm>
#include <cstring>

#include "platform/base/Text.h"

namespace kv {
namespace {

// How much a word that is found is worth, by where it stands.
constexpr int kWholeNumber = 1000;
constexpr int kNumberBegins = 600;
constexpr int kWholeTitle = 500;
constexpr int kInNumber = 300;
constexpr int kTitleBegins = 400;
constexpr int kInitials = 350;
constexpr int kInitialsBegin = 200;
constexpr int kTitleWordBegins = 250;
constexpr int kInTitle = 100;
constexpr int kDetailWordBegins = 60;
constexpr int kInDetail = 30;
constexpr int kPhrase = 150;      ///< several words that stand together in the title
constexpr int kLengthWeight = 4;  ///< characters of a title that cost one point: short names first
constexpr int kLengthCostMax = 20;
constexpr std::size_t kTextMax = 400;

bool isWordChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Small letters, and amounts without the commas that group their digits.
std::string plain(std::string_view text) {
    std::string out = LCase(text);
    std::size_t to = 0;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const bool grouping =
            out[i] == ',' && i > 0 && i + 1 < out.size() && isDigit(out[i - 1]) && isDigit(out[i + 1]);
        if (!grouping) out[to++] = out[i];
    }
    out.resize(to);
    return out;
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (std::string& word : split(text, ' ')) {
        if (!word.empty()) words.push_back(std::move(word));
    }
    return words;
}

std::string initialsOf(std::string_view lower) {
    std::string initials;
    for (std::size_t i = 0; i < lower.size(); ++i) {
        if (isWordChar(lower[i]) && (i == 0 || !isWordChar(lower[i - 1]))) initials += lower[i];
    }
    return initials;
}

std::size_t findIn(std::string_view text, std::string_view word) {
    const void* at = memmem(text.data(), text.size(), word.data(), word.size());
    return at ? static_cast<std::size_t>(static_cast<const char*>(at) - text.data()) : std::string_view::npos;
}

/// True when some word of the text begins with this one.
bool wordBegins(std::string_view text, std::string_view word, std::size_t at) {
    for (; at != std::string_view::npos; at = text.find(word, at + 1)) {
        if (at == 0 || !isWordChar(text[at - 1]) || !isWordChar(word.front())) return true;
    }
    return false;
}

std::string_view withoutZeros(std::string_view number) {
    const std::size_t at = number.find_first_not_of('0');
    return at == std::string_view::npos ? std::string_view() : number.substr(at);
}

std::string_view cut(std::string_view text) { return text.substr(0, kTextMax); }

}  // namespace

void Finder::beginSource(int source, int weight, bool initials) {
    source_ = source;
    weight_ = weight;
    initials_ = initials;
}

void Finder::add(const FindText& text) {
    Entry entry;
    entry.source = static_cast<std::int16_t>(source_);
    entry.weight = static_cast<std::int16_t>(weight_);
    entry.text = static_cast<std::uint32_t>(texts_.size());
    const std::string_view key = cut(text.key);
    const std::string_view code = cut(text.code);
    const std::string_view title = cut(text.title);
    const std::string_view detail = cut(text.detail);
    entry.key = static_cast<std::uint16_t>(key.size());
    entry.code = static_cast<std::uint16_t>(code.size());
    entry.title = static_cast<std::uint16_t>(title.size());
    entry.detail = static_cast<std::uint16_t>(detail.size());
    texts_.append(key).append(code).append(title).append(detail);

    entry.lower = static_cast<std::uint32_t>(lower_.size());
    const std::string lowerTitle = plain(title);
    lower_ += plain(code);
    entry.lowerCode = static_cast<std::uint16_t>(lower_.size() - entry.lower);
    lower_ += lowerTitle;
    entry.lowerTitle = static_cast<std::uint16_t>(lowerTitle.size());
    lower_ += '\n';
    lower_ += plain(detail);
    if (initials_) {
        const std::string initials = initialsOf(lowerTitle);
        entry.initials = static_cast<std::uint16_t>(initials.size());
        lower_ += '\n' + initials;
    }
    entry.lowerAll = static_cast<std::uint16_t>(lower_.size() - entry.lower);
    entries_.push_back(entry);
    lastText_.clear();
}

Finder::View Finder::at(std::size_t entry) const {
    const Entry& e = entries_[entry];
    const std::string_view all(texts_);
    std::size_t from = e.text;
    const auto next = [&](std::size_t length) {
        const std::string_view part = all.substr(from, length);
        from += length;
        return part;
    };
    View view;
    view.key = next(e.key);
    view.code = next(e.code);
    view.title = next(e.title);
    view.detail = next(e.detail);
    view.source = e.source;
    return view;
}

/// What the best place of a word is worth; 0 when it stands nowhere.
int Finder::scoreWord(const Entry& entry, std::string_view word) const {
    const std::string_view all(lower_.data() + entry.lower, entry.lowerAll);
    if (findIn(all, word) == std::string_view::npos) return 0;
    const std::string_view code = all.substr(0, entry.lowerCode);
    if (!code.empty()) {
        if (code == word || (isDigit(word.front()) && withoutZeros(code) == withoutZeros(word))) return kWholeNumber;
        if (code.substr(0, word.size()) == word) return kNumberBegins;
        if (findIn(code, word) != std::string_view::npos) return kInNumber;
    }
    const std::string_view initials = all.substr(all.size() - entry.initials);
    if (entry.initials > 1 && initials == word) return kInitials;
    const std::string_view title = all.substr(entry.lowerCode, entry.lowerTitle);
    const std::size_t inTitle = findIn(title, word);
    if (inTitle == 0) return kTitleBegins;
    if (wordBegins(title, word, inTitle)) return kTitleWordBegins;
    if (entry.initials > 1 && word.size() > 1 && initials.substr(0, word.size()) == word) return kInitialsBegin;
    if (inTitle != std::string_view::npos) return kInTitle;
    const std::string_view detail = all.substr(entry.lowerCode + entry.lowerTitle);
    const std::size_t inDetail = findIn(detail, word);
    // a word across the border of number and name, or a part of the initials, means nothing
    if (inDetail == std::string_view::npos || inDetail >= detail.size() - entry.initials) return 0;
    return wordBegins(detail, word, inDetail) ? kDetailWordBegins : kInDetail;
}

int Finder::score(const Entry& entry, const std::vector<std::string>& words, std::string_view whole) const {
    int sum = 0;
    for (const std::string& word : words) {
        const int worth = scoreWord(entry, word);
        if (worth == 0) return 0;
        sum += worth;
    }
    const std::string_view title(lower_.data() + entry.lower + entry.lowerCode, entry.lowerTitle);
    if (title == whole) sum += kWholeTitle;
    if (words.size() > 1 && findIn(title, whole) != std::string_view::npos) sum += kPhrase;
    return sum + entry.weight - std::min(static_cast<int>(entry.lowerTitle) / kLengthWeight, kLengthCostMax);
}

std::vector<std::size_t> Finder::search(std::string_view text, std::size_t most) {
    const std::string whole = plain(trimBlanks(text));
    const std::vector<std::string> words = wordsOf(whole);
    const bool narrower = !lastText_.empty() && whole.size() > lastText_.size() && whole.starts_with(lastText_);
    std::vector<Hit> hits;
    const auto look = [&](std::uint32_t entry) {
        const int worth = score(entries_[entry], words, whole);
        if (worth > 0) hits.push_back({entry, worth});
    };
    if (words.empty()) {
        lastText_.clear();
    } else if (narrower) {
        for (const Hit& hit : found_) look(hit.entry);
    } else {
        for (std::uint32_t entry = 0; entry < entries_.size(); ++entry) look(entry);
    }
    // entries in the order of adding, so that what is added later can be narrowed in order too
    found_ = hits;
    if (!words.empty()) lastText_ = whole;
    const std::size_t shown = std::min(most, hits.size());
    std::partial_sort(
        hits.begin(), hits.begin() + static_cast<std::ptrdiff_t>(shown), hits.end(),
        [](const Hit& a, const Hit& b) { return a.score != b.score ? a.score > b.score : a.entry < b.entry; });
    std::vector<std::size_t> best;
    for (std::size_t i = 0; i < shown; ++i) best.push_back(hits[i].entry);
    return best;
}

}  // namespace kv
