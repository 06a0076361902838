#pragma once
// What the fuzzers share: a rule that does not hold ends the run with its name.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace kv::fuzz {

inline void hold(bool rule, const char* name, std::string_view seen) {
    if (rule) return;
    std::fprintf(stderr, "broken: %s\nseen: %.*s\n", name, static_cast<int>(seen.size()), seen.data());
    std::abort();
}

/// Cuts the input at its first line break: the line before is a choice, the rest the text.
inline std::string_view cutLine(std::string_view& input) {
    const std::size_t end = input.find('\n');
    const std::string_view line = input.substr(0, end);
    input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
    return line;
}

}  // namespace kv::fuzz
