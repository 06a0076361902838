#pragma once
// Openings: who wants to know how long forms take to come up.

#include <functional>

namespace kv {

class Form;

/// Called once per form, when it is shown first: milliseconds of processor time from its making to its first picture.
using OpeningWatcher = std::function<void(const Form&, double ms)>;
/// Puts the one watcher in place; an empty one takes it away.
void watchOpenings(OpeningWatcher watcher);

}  // namespace kv
