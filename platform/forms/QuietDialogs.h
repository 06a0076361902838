#pragma once
// QuietDialogs: while one lives, boxes are not shown but collected (each gets its refusing answer), and modal forms
// close at once unanswered. For validations that run over many cells at a time, as when a block is pasted.

#include <string>
#include <vector>

#include "platform/forms/Dialogs.h"

namespace kv {

class QuietDialogs {
public:
    QuietDialogs();
    QuietDialogs(const QuietDialogs&) = delete;
    QuietDialogs& operator=(const QuietDialogs&) = delete;
    ~QuietDialogs();

    const std::vector<std::string>& texts() const { return texts_; }
    /// A form or an input box was closed without its answer.
    bool asked() const { return asked_; }

private:
    DialogHooks before_;
    std::vector<std::string> texts_;
    bool asked_ = false;
};

}  // namespace kv
