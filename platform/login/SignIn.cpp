#include "platform/login/SignIn.h"

#include <algorithm>
#include <optional>

#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/login/Passwords.h"

namespace kv {
namespace {

constexpr int kFreeTries = 2;
constexpr int kFirstWait_s = 30;
constexpr int kLongestWait_s = 3600;
constexpr const char* kStamp = "yyyy-MM-ddTHH:nn:ss.fff";

std::string counted(int number, const char* unit) {
    return std::to_string(number) + " " + unit + (number == 1 ? "" : "s");
}

std::string inWords(int seconds) {
    if (seconds < 60) return counted(seconds, "second");
    const int minutes = seconds / 60;
    const int rest = seconds % 60;
    return counted(minutes, "minute") + (rest == 0 ? "" : " " + counted(rest, "second"));
}

/// Seconds until a lock ends, rounded up. A lock beyond the longest wait comes from a wrong clock and does not hold.
int remaining_s(const Date& lockedUntil) {
    const std::int64_t left_ms = lockedUntil.msSince1900() - Now().msSince1900();
    const std::int64_t left_s = (left_ms + 999) / 1000;
    return left_ms <= 0 || left_s > kLongestWait_s ? 0 : static_cast<int>(left_s);
}

SignInAnswer refused(SignInAnswer::What what, std::string message) { return {what, std::move(message), {}}; }

SignInAnswer waiting(int seconds) {
    return refused(SignInAnswer::What::Wait, "Too many wrong tries. Wait " + inWords(seconds) + ", then try again.");
}

SignInAnswer wrong(int tries) {
    std::string message = "The employee code or the password is wrong.";
    const int wait = waitAfterTries_s(tries);
    if (wait > 0) message += " The next try is possible in " + inWords(wait) + ".";
    return refused(SignInAnswer::What::Wrong, message);
}

std::string fullName(const Recordset& row) {
    const std::string middle = row["MiddleName"].text();
    std::string name = row["FirstName"].text() + " ";
    if (!middle.empty()) name += UCase(midChars(middle, 0, 1)) + ". ";
    return std::string(trimBlanks(name + row["LastName"].text()));
}

/// Counts the try and notes how long the next one has to wait should this one be wrong; nothing when it may not be
/// made yet, with the employee's row as it stands.
std::optional<int> countTry(Connection& connection, const std::string& code, Recordset& row) {
    Transaction transaction(connection);
    connection.Execute(
        sql("UPDATE PASSWORD..tbPasswordMain SET FailedTries = FailedTries + 1 WHERE EmployeeID = '{}'").text(code));
    row = connection.Open(sql("select top 1 * from PASSWORD..tbPasswordMain where EmployeeID = '{}'").text(code));
    if (row.empty()) return 0;
    if (!row["LockedUntil"].isNull() && remaining_s(row["LockedUntil"].date()) > 0) return std::nullopt;
    const int tries = static_cast<int>(row["FailedTries"].integer());
    if (const int wait = waitAfterTries_s(tries); wait > 0) {
        connection.Execute(sql("UPDATE PASSWORD..tbPasswordMain SET LockedUntil = '{}' WHERE EmployeeID = '{}'")
                               .date(Now().addMs(wait * 1000LL), kStamp)
                               .text(code));
    }
    transaction.commit();
    return tries;
}

}  // namespace

int waitAfterTries_s(int tries) {
    if (tries <= kFreeTries) return 0;
    const int doublings = std::min(tries - kFreeTries - 1, 10);
    return std::min(kFirstWait_s << doublings, kLongestWait_s);
}

SignInAnswer SignIn::attempt(Connection& connection, std::string_view typedCode, std::string_view password) {
    const std::string code = UCase(trimBlanks(typedCode));
    if (code.empty()) return refused(SignInAnswer::What::CodeMissing, "Enter your employee code.");
    if (password.empty()) return refused(SignInAnswer::What::PasswordMissing, "Enter your password.");
    Recordset row;
    const auto tries = countTry(connection, code, row);
    if (row.empty()) return attemptUnknown(code, password);
    if (!tries) return waiting(remaining_s(row["LockedUntil"].date()));
    if (!verifyPassword(row["PasswordHash"].text(), password)) return wrong(*tries);
    connection.Execute(
        sql("UPDATE PASSWORD..tbPasswordMain SET FailedTries = 0, LockedUntil = NULL WHERE EmployeeID = '{}'")
            .text(code));
    if (!mayEnter(connection, row)) {
        return refused(SignInAnswer::What::NoAccess,
                       "You do not have access to Accounting. Please ask the administrator of the users.");
    }
    return {SignInAnswer::What::Welcome, {}, {row["EmployeeID"].text(), fullName(row), row["UserRights"].text()}};
}

SignInAnswer SignIn::attemptUnknown(const std::string& code, std::string_view password) {
    Tries& tries = unknown_[code];
    if (const int left = remaining_s(tries.lockedUntil); left > 0) return waiting(left);
    verifyNothing(password);
    ++tries.failed;
    tries.lockedUntil = Now().addMs(waitAfterTries_s(tries.failed) * 1000LL);
    return wrong(tries.failed);
}

bool SignIn::mayEnter(Connection& connection, const Recordset& row) const {
    if (row.has("DeptCode")) {
        const auto systems = split(row["DeptCode"].text(), ';');
        const bool named = std::any_of(systems.begin(), systems.end(),
                                       [this](const std::string& one) { return trimBlanks(one) == deptCode_; });
        if (!named) return false;
    }
    return !connection.Open(call("sp_CheckUser").text(row["EmployeeID"].text())).empty();
}

}  // namespace kv
