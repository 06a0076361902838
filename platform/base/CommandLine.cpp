#include "platform/base/CommandLine.h"

#include <iostream>

#include "platform/base/Error.h"

namespace kv {

int runProgram(const char* program, const char* usage, const std::function<int()>& body) {
    try {
        return body();
    } catch (const WrongUse& wrong) {
        if (!wrong.text.empty()) std::cerr << program << ": " << wrong.text << "\n\n";
        std::cerr << usage;
        return 2;
    } catch (const Error& failure) {
        std::cerr << program << ": error " << failure.number << ": " << failure.description << '\n';
    } catch (const std::exception& failure) {
        std::cerr << program << ": " << failure.what() << '\n';
    }
    return 1;
}

}  // namespace kv
