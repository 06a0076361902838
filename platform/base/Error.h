#pragma once
// Error: the one exception of the system, and the scopes that write the path of a failure into it.

#include <exception>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>

namespace kv {

/// A run-time error: number, source and description, as the message box shows them.
/// `line` is the line of the call that failed, until a scope has written it into the description.
class Error : public std::exception {
public:
    Error(long number, std::string source, std::string description,
          std::source_location at = std::source_location::current());

    long number = 0;
    std::string source;
    std::string description;
    unsigned line = 0;

    const char* what() const noexcept override { return description.c_str(); }

    /// Adds CR LF, "in <tag> at line <n>" with the pending line.
    void addPlace(std::string_view tag);
};

constexpr long kErrOverflow = 6;
constexpr long kErrTypeMismatch = 13;
constexpr long kErrObjectMissing = 91;

/// Runs the body of a shared routine. A failure goes on to the caller with the tag
/// "Korvane.<tag>" and the line inside the routine added; `caller` is the line that called the routine.
template <class Body>
auto traced(std::string_view tag, const std::source_location& caller, Body&& body) -> decltype(body()) {
    try {
        return std::forward<Body>(body)();
    } catch (Error& e) {
        const std::string full = "Korvane." + std::string(tag);
        e.addPlace(full);
        e.source = full;
        e.line = caller.line();
        throw;
    }
}

}  // namespace kv
