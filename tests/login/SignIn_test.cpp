// Who may enter, what is said to who may not, and how long wrong tries wait.
#include "platform/login/SignIn.h"

#include <gtest/gtest.h>

#include "tests/data/Hostile.h"
#include "tests/login/Desk.h"

namespace kv {
namespace {

using What = SignInAnswer::What;

class SignInTest : public testing::Test {
protected:
    void SetUp() override {
        fixClock(Date(2024, 3, 15, 9, 30));
        connection = test::openDesk();
    }
    void TearDown() override { releaseClock(); }

    SignInAnswer attempt(const char* code, const char* password) { return signIn.attempt(*connection, code, password); }
    static void pass(int seconds) { fixClock(Now().addMs(seconds * 1000LL)); }
    std::int64_t failedTries(const char* code) {
        return connection
            ->Open(sql("SELECT FailedTries FROM PASSWORD..tbPasswordMain WHERE EmployeeID = '{}'").text(code))
            .at(0)
            .integer();
    }

    std::unique_ptr<Connection> connection;
    SignIn signIn{"55"};
};

TEST_F(SignInTest, WelcomesWithCodeNameAndRights) {
    const SignInAnswer maria = attempt(" e001 ", "ledger-2024");
    EXPECT_EQ(maria.what, What::Welcome);
    EXPECT_EQ(maria.employee.code, "E001");
    EXPECT_EQ(maria.employee.name, "MARIA L. SANTOS");
    EXPECT_EQ(maria.employee.rights, "SA");
    EXPECT_EQ(maria.message, "");
    EXPECT_EQ(attempt("E002", "payable-2024").employee.name, "JOSE DE LA PEÑA");
}

TEST_F(SignInTest, SaysTheSameOfAWrongPasswordAndAnUnknownEmployee) {
    const SignInAnswer known = attempt("E001", "wrong");
    const SignInAnswer unknown = attempt("E777", "wrong");
    EXPECT_EQ(known.what, What::Wrong);
    EXPECT_EQ(unknown.what, What::Wrong);
    EXPECT_EQ(known.message, unknown.message);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(attempt("E001", "wrong").message, attempt("E777", "wrong").message) << i;
    EXPECT_EQ(attempt("", "x").what, What::CodeMissing);
    EXPECT_EQ(attempt("E001", "").what, What::PasswordMissing);
}

TEST_F(SignInTest, ThreeWrongTriesWaitAndLongerEachTime) {
    EXPECT_EQ(attempt("E001", "1").message, "The employee code or the password is wrong.");
    EXPECT_EQ(attempt("E001", "2").message, "The employee code or the password is wrong.");
    EXPECT_EQ(attempt("E001", "3").message,
              "The employee code or the password is wrong. The next try is possible in 30 seconds.");
    const SignInAnswer right = attempt("E001", "ledger-2024");  // also the right password waits
    EXPECT_EQ(right.what, What::Wait);
    EXPECT_EQ(right.message, "Too many wrong tries. Wait 30 seconds, then try again.");
    EXPECT_EQ(failedTries("E001"), 3);  // a try that is not made does not count
    pass(29);
    EXPECT_EQ(attempt("E001", "ledger-2024").message, "Too many wrong tries. Wait 1 second, then try again.");
    pass(1);
    EXPECT_EQ(attempt("E001", "4").message,
              "The employee code or the password is wrong. The next try is possible in 1 minute.");
    pass(61);
    EXPECT_EQ(attempt("E001", "ledger-2024").what, What::Welcome);
    EXPECT_EQ(failedTries("E001"), 0);
    EXPECT_EQ(attempt("E001", "1").message, "The employee code or the password is wrong.");
}

TEST_F(SignInTest, ARestartDoesNotHelp) {
    for (int i = 0; i < 3; ++i) SignIn("55").attempt(*connection, "E001", "wrong");
    EXPECT_EQ(SignIn("55").attempt(*connection, "E001", "ledger-2024").what, What::Wait);
    EXPECT_EQ(attempt("E002", "payable-2024").what, What::Welcome);  // another's tries are another's
    fixClock(Date(2023, 1, 1));  // a lock from a clock that was ahead must not hold for a year
    EXPECT_EQ(attempt("E001", "ledger-2024").what, What::Welcome);
}

TEST_F(SignInTest, EmployeesWithoutThisSystemAreToldSoOnlyWithTheirPassword) {
    EXPECT_EQ(attempt("E009", "wrong").what, What::Wrong);
    const SignInAnswer answer = attempt("E009", "ward-2024");
    EXPECT_EQ(answer.what, What::NoAccess);
    EXPECT_NE(answer.message.find("do not have access to Accounting"), std::string::npos);
    EXPECT_EQ(SignIn("10").attempt(*connection, "E002", "payable-2024").what, What::NoAccess);
}

TEST_F(SignInTest, NoTransactionStaysOpen) {
    attempt("E001", "wrong");
    attempt("E777", "wrong");
    for (int i = 0; i < 4; ++i) attempt("E002", "wrong");
    EXPECT_EQ(connection->transactionDepth(), 0);
}

TEST_F(SignInTest, HostileCodesAreUnknownCodes) {
    for (const auto& [title, text] : test::hostileTexts()) {
        EXPECT_EQ(signIn.attempt(*connection, text, "x").what, What::Wrong) << title;
    }
    EXPECT_EQ(connection->Open("SELECT COUNT(*) FROM PASSWORD..tbPasswordMain").at(0).integer(), 3);
    EXPECT_EQ(failedTries("E001"), 0);
}

TEST(SignInWait, GrowsAndEnds) {
    EXPECT_EQ(waitAfterTries_s(0), 0);
    EXPECT_EQ(waitAfterTries_s(2), 0);
    EXPECT_EQ(waitAfterTries_s(3), 30);
    EXPECT_EQ(waitAfterTries_s(4), 60);
    EXPECT_EQ(waitAfterTries_s(9), 1920);
    EXPECT_EQ(waitAfterTries_s(10), 3600);
    EXPECT_EQ(waitAfterTries_s(1'000'000), 3600);
}

}  // namespace
}  // namespace kv
