#pragma once
// Checkpointer: moves the write-ahead log into the database file on a thread and a connection of its own.

#include <sqlite3.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace kv::tsql {

/// A commit never pays for a checkpoint: it only wakes this thread when the log has grown. What is in the log is moved
/// beside the writers; only the last few pages are moved while they wait, so that the log is empty for a moment and
/// begins anew: writing over a file is much cheaper than growing it. Errors are left for the next try; the log keeps
/// what is not yet moved.
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
    void moveLog(sqlite3* db);

    static constexpr int kPagesMin = 2000;
    std::string file_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool wanted_ = false;
    bool stop_ = false;
    std::thread thread_;
};

}  // namespace kv::tsql
