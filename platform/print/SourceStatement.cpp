// Statements of sources: finding and filling the parameters in them.
#include "platform/base/Text.h"
#include "platform/print/Template.h"

namespace kv {
namespace {

bool namePart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '@';
}

/// The end of a text, a quoted name or a comment that begins at `at`; `at` itself when none does.
std::size_t skipQuoted(std::string_view s, std::size_t at) {
    const auto until = [&](std::string_view mark, std::size_t from) {
        const std::size_t end = s.find(mark, from);
        return end == std::string_view::npos ? s.size() : end + mark.size();
    };
    if (s[at] == '\'' || s[at] == '"') return until(s.substr(at, 1), at + 1);
    if (s[at] == '[') return until("]", at + 1);
    if (s.substr(at).starts_with("--")) return until("\n", at);
    if (s.substr(at).starts_with("/*")) return until("*/", at + 2);
    return at;
}

/// Calls `plain` for stretches of the statement and `parameter` for each :Name outside texts and comments.
template <class Plain, class Parameter>
void walk(std::string_view s, Plain plain, Parameter parameter) {
    std::size_t from = 0;
    std::size_t at = 0;
    while (at < s.size()) {
        const std::size_t past = skipQuoted(s, at);
        if (past != at) {
            at = past;
        } else if (s[at] == ':' && at + 1 < s.size() && namePart(s[at + 1])) {
            plain(s.substr(from, at - from));
            std::size_t end = at + 1;
            while (end < s.size() && namePart(s[end])) ++end;
            parameter(s.substr(at + 1, end - at - 1));
            from = at = end;
        } else {
            ++at;
        }
    }
    plain(s.substr(from));
}

std::string literal(const Value& value) {
    if (value.isNull()) return "NULL";
    if (value.isText()) return "'" + replaceAll(value.text(), "'", "''") + "'";
    if (value.isDate()) {
        // forms that no language setting of the server reads differently
        const bool dayOnly = value.date() == value.date().dayOnly();
        return "'" + Format(value.date(), dayOnly ? "yyyyMMdd" : "yyyy-MM-ddTHH:mm:ss") + "'";
    }
    if (auto* bit = std::get_if<bool>(&value.raw())) return *bit ? "1" : "0";
    return value.text();
}

}  // namespace

std::vector<std::string> statementParameters(std::string_view statement) {
    std::vector<std::string> names;
    walk(
        statement, [](std::string_view) {}, [&](std::string_view name) { names.emplace_back(name); });
    return names;
}

std::string composeStatement(const SourceDef& source, const Template& report, const std::vector<Value>& values) {
    std::string out;
    walk(
        source.statement, [&](std::string_view part) { out += part; },
        [&](std::string_view name) {
            const int at = report.parameterIndex(name);
            out += at < 0 ? std::string(name) : literal(values[static_cast<std::size_t>(at)]);
        });
    return out;
}

}  // namespace kv
