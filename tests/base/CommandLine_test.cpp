#include "platform/base/CommandLine.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/base/Error.h"

namespace kv {
namespace {

TEST(CommandLine, HowAProgramEnds) {
    struct Ending {
        std::function<int()> body;
        int status;
        const char* told;
    };
    const std::vector<Ending> endings = {
        {[] { return 0; }, 0, ""},
        {[] { return 7; }, 7, ""},
        {[]() -> int { throw WrongUse(); }, 2, "usage: x\n"},
        {[]() -> int { throw WrongUse{"which file?"}; }, 2, "x: which file?\n\nusage: x\n"},
        {[]() -> int { throw Error(53, "here", "File not found: f"); }, 1, "x: error 53: File not found: f\n"},
        {[]() -> int { throw std::runtime_error("odd"); }, 1, "x: odd\n"},
    };
    for (const Ending& ending : endings) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(runProgram("x", "usage: x\n", ending.body), ending.status) << ending.told;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), ending.told);
    }
}

}  // namespace
}  // namespace kv
