#pragma once
// TaskProgress: a window with a bar and Cancel over long work that holds the program. It shows only when the work
// lasts.

#include <memory>
#include <string_view>

namespace kv {

class TaskProgress {
public:
    /// `label` says what is being done: "Saving 515 pages".
    explicit TaskProgress(std::string_view label);
    TaskProgress(const TaskProgress&) = delete;
    TaskProgress& operator=(const TaskProgress&) = delete;
    ~TaskProgress();

    /// Lets the screen catch up. False once the user has cancelled.
    bool step(int done, int all);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace kv
