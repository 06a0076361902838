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

/// Runs one statement in a process that is killed so many microseconds after it went out: in the middle of a procedure.
/// True when it died before the statement came back.
bool diesAfter(const std::string& file, int microseconds, const std::string& statement);

}  // namespace kv
