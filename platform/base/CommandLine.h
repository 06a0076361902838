#pragma once
// CommandLine: how every program of the command line ends: 0 done, 1 a failure, 2 wrong use.

#include <functional>
#include <string>

namespace kv {

/// Raised for arguments that a program does not take; an empty text shows the usage alone.
struct WrongUse {
    std::string text;
};

/// Runs the body and gives the exit status. Wrong use is told with the usage, a failure with the program's name, its
/// number and description, on standard error.
int runProgram(const char* program, const char* usage, const std::function<int()>& body);

}  // namespace kv
