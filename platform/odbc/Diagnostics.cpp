#include <array>

#include "platform/base/Text.h"
#include "platform/odbc/Handles.h"
#include "platform/odbc/Odbc.h"
#include "platform/odbc/Wide.h"

namespace kv {

std::string withoutDriverNames(std::string_view message) {
    // a message of the server itself may begin with a bracket, so nothing behind "[SQL Server]" is taken off
    while (message.size() > 2 && message.front() == '[') {
        const std::size_t end = message.find(']');
        if (end == std::string_view::npos) break;
        const std::string_view name = message.substr(1, end - 1);
        message.remove_prefix(end + 1);
        if (name == "SQL Server") break;
    }
    return std::string(trimBlanks(message));
}

namespace odbc {
namespace {

// fields of a record that Microsoft's driver adds; FreeTDS behind unixODBC refuses them, and line 1 stands
constexpr SQLSMALLINT kFieldState = -1150;
constexpr SQLSMALLINT kFieldSeverity = -1151;
constexpr SQLSMALLINT kFieldProcedure = -1153;
constexpr SQLSMALLINT kFieldLine = -1154;

constexpr int kSeverityInformation = 0;
constexpr int kSeverityError = 16;
constexpr SQLSMALLINT kMessageMax = 4096;

int numberField(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record, SQLSMALLINT field, int otherwise) {
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN got = SQLGetDiagFieldW(kind, handle, record, field, &number, SQL_IS_INTEGER, &length);
    return SQL_SUCCEEDED(got) ? static_cast<int>(number) : otherwise;
}

std::string textField(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record, SQLSMALLINT field) {
    std::array<SQLWCHAR, 260> text{};
    SQLSMALLINT bytes = 0;
    const auto room = static_cast<SQLSMALLINT>((text.size() - 1) * sizeof(SQLWCHAR));
    if (!SQL_SUCCEEDED(SQLGetDiagFieldW(kind, handle, record, field, text.data(), room, &bytes)) || bytes < 0)
        return {};
    return fromWide(text.data(), static_cast<std::size_t>(std::min(bytes, room)) / sizeof(SQLWCHAR));
}

}  // namespace

bool Diagnostic::tellsLostServer() const {
    // FreeTDS names a broken line only by numbers of its own: dead process, failed write, unexpected end, closed
    const bool brokenLine = error.number == 20003 || error.number == 20004 || error.number == 20006 ||
                            error.number == 20017 || error.number == 20047;
    const bool shutDown = state.starts_with("57P0");                  // PostgreSQL's word for it
    const bool noLine = state.starts_with("08") && state != "08004";  // 08004: it answers, and says no
    return noLine || state == "HYT01" || shutDown || brokenLine;
}

std::vector<Diagnostic> diagnosticsOf(SQLSMALLINT kind, SQLHANDLE handle) {
    std::vector<Diagnostic> found;
    std::vector<SQLWCHAR> text(kMessageMax);
    for (SQLSMALLINT record = 1;; ++record) {
        std::array<SQLWCHAR, 6> state{};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN got =
            SQLGetDiagRecW(kind, handle, record, state.data(), &native, text.data(), kMessageMax, &length);
        if (!SQL_SUCCEEDED(got)) break;
        const auto shown = static_cast<std::size_t>(std::min<SQLSMALLINT>(length, kMessageMax - 1));
        Diagnostic one;
        one.state = fromWide(state.data(), 5);
        const bool information = one.state.starts_with("01") || one.state.starts_with("00");
        one.error.number = native;
        one.error.description = withoutDriverNames(fromWide(text.data(), shown));
        one.error.severity = information ? kSeverityInformation : kSeverityError;
        if (kind == SQL_HANDLE_STMT) {
            const int severity = numberField(kind, handle, record, kFieldSeverity, one.error.severity);
            // a driver may know the field and give nothing: the kind of the state decides between error and none
            if ((severity > 10) != information) one.error.severity = severity;
            one.error.state = numberField(kind, handle, record, kFieldState, 1);
            one.error.line = numberField(kind, handle, record, kFieldLine, 1);
            one.error.procedure = textField(kind, handle, record, kFieldProcedure);
        }
        found.push_back(std::move(one));
    }
    return found;
}

}  // namespace odbc
}  // namespace kv
