#pragma once
// Accelerators: the Alt keys of a form, and where two of its controls mean the same one.

#include <string>
#include <vector>

namespace kv {

class Form;

/// A line per Alt key that stands more than once among what the form shows: "Alt+D: Date:, Delete Row".
std::vector<std::string> doubledAccelerators(const Form& form);

}  // namespace kv
