#include "tests/desk/Killed.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace kv {

namespace {

constexpr int kFailed = 3;

bool died(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "the work failed instead of ending or dying";
    return WIFSIGNALED(status);
}

}  // namespace

bool diesAt(const std::string& file, int point, const std::function<void(Desk&)>& prepare,
            const std::function<void(Desk&)>& work) {
    const pid_t child = fork();
    if (child == 0) {
        Desk desk(file);
        prepare(desk);
        int count = 0;
        desk.cn().observe([&](std::string_view) {
            if (++count == point) ::raise(SIGKILL);
        });
        try {
            work(desk);
        } catch (const Error&) {
            ::_exit(kFailed);
        }
        ::_exit(0);
    }
    return died(child);
}

}  // namespace kv
