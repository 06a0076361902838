#pragma once
// Checkpointer: moves the write-ahead log into the database file on a thread and a connection of its own.

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace kv::tsql {

/// A commit never pays for a checkpoint: it only wakes this thread when the log has grown. Errors are left for the next
/// try; the log keeps what is not yet moved.
class Checkpointer {
public:
    explicit Checkpointer(std::string file);
    Checkpointer(const Checkpointer&) = delete;
    Checkpointer& operator=(const Checkpointer&) = delete;
    ~Checkpointer();

    /// Called with the log's size after each commit of the session.
    void committed(int logPages);

private:
    void work();

    static constexpr int kPagesMin = 1000;
    std::string file_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool wanted_ = false;
    bool stop_ = false;
    std::thread thread_;
};

}  // namespace kv::tsql
