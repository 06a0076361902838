#pragma once
// Watchdog: ends the process when one line of a play takes too long, also while the program's own thread is stuck.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

class QTimer;

namespace kv {

class Watchdog {
public:
    /// `report` is called in the program's thread where that still handles events; it may look at windows.
    Watchdog(int limit_s, std::function<void(const std::string& place, const std::string& what)> report);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

    void lineStarts(const std::string& place);
    void pause();  ///< nothing runs

private:
    using Clock = std::chrono::steady_clock;
    void watch();
    void expireHere();
    bool expired(Clock::duration grace) const;
    std::string what() const;

    const std::chrono::seconds limit_;
    std::function<void(const std::string&, const std::string&)> report_;
    mutable std::mutex mutex_;
    std::condition_variable wake_;
    bool ending_ = false;
    bool running_ = false;
    Clock::time_point deadline_;
    std::string place_;
    std::unique_ptr<QTimer> timer_;
    std::thread thread_;
};

}  // namespace kv
