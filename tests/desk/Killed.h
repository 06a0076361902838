#pragma once
// Killed: a workstation that dies in the middle of its work, for tests of what it leaves behind.

#include <functional>
#include <string>

#include "tests/desk/Desk.h"

namespace kv {

/// Runs `work` in a process that is killed right before its statement number `point` (from 1) goes out.
/// True when it died there, false when it came to its end first.
bool diesAt(const std::string& file, int point, const std::function<void(Desk&)>& prepare,
            const std::function<void(Desk&)>& work);

}  // namespace kv
