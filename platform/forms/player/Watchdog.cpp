#include "platform/forms/player/Watchdog.h"

#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace kv {

namespace {

constexpr int kLook_ms = 250;
constexpr auto kGrace = std::chrono::milliseconds(1500);  ///< for the thread that handles events, which tells more

}  // namespace

Watchdog::Watchdog(int limit_s, std::function<void(const std::string&, const std::string&)> report)
    : limit_(limit_s), report_(std::move(report)), timer_(std::make_unique<QTimer>()) {
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { expireHere(); });
    timer_->start(kLook_ms);
    thread_ = std::thread([this] { watch(); });
}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void Watchdog::lineStarts(const std::string& place) {
    const std::lock_guard lock(mutex_);
    place_ = place;
    deadline_ = Clock::now() + limit_;
    running_ = true;
}

void Watchdog::pause() {
    const std::lock_guard lock(mutex_);
    running_ = false;
}

bool Watchdog::expired(Clock::duration grace) const { return running_ && Clock::now() > deadline_ + grace; }

std::string Watchdog::what() const {
    return "expected the line to end, found it still running after " + std::to_string(limit_.count()) + " s";
}

void Watchdog::expireHere() {
    std::string place;
    {
        const std::lock_guard lock(mutex_);
        if (!expired(Clock::duration::zero())) return;
        place = place_;
        running_ = false;
    }
    report_(place, what());
    std::fflush(nullptr);
    std::_Exit(1);
}

void Watchdog::watch() {
    std::unique_lock lock(mutex_);
    while (!ending_) {
        wake_.wait_for(lock, std::chrono::milliseconds(kLook_ms));
        if (ending_ || !expired(kGrace)) continue;
        std::fprintf(stderr, "%s: %s\n", place_.c_str(), what().c_str());
        std::fflush(nullptr);
        std::_Exit(1);
    }
}

}  // namespace kv
