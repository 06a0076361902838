#include "platform/embedded/Checkpointer.h"

#include <unistd.h>

namespace kv::tsql {
namespace {

constexpr int kRounds = 4;          ///< beside the writers
constexpr int kRemainderGood = 50;  ///< pages for which another round is not worth it
constexpr int kRemainderMax = 200;  ///< pages that writers may wait for
constexpr int kSleepUs = 20;
constexpr int kTries = 500;  ///< to come between two writers

}  // namespace

Checkpointer::Checkpointer(std::string file) : file_(std::move(file)) {
    thread_ = std::thread([this] { work(); });
}

Checkpointer::~Checkpointer() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        stop_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void Checkpointer::committed(int logPages) {
    if (logPages < kPagesMin) return;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        wanted_ = true;
    }
    wake_.notify_one();
}

void Checkpointer::moveLog(sqlite3* db) {
    int pages = 0;
    int moved = 0;
    for (int round = 0; round < kRounds; ++round) {
        // PASSIVE takes no lock that a reader or writer waits for.
        if (sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_PASSIVE, &pages, &moved) != SQLITE_OK) return;
        if (pages - moved <= kRemainderGood) break;
    }
    if (pages - moved > kRemainderMax) return;
    sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_FULL, nullptr, nullptr);
}

void Checkpointer::work() {
    sqlite3* db = nullptr;
    std::unique_lock<std::mutex> lock(mutex_);
    while (true) {
        wake_.wait(lock, [this] { return wanted_ || stop_; });
        if (stop_) break;
        wanted_ = false;
        lock.unlock();
        if (!db) {
            const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
            if (sqlite3_open_v2(file_.c_str(), &db, flags, nullptr) != SQLITE_OK) {
                sqlite3_close(db);
                db = nullptr;
            } else {
                sqlite3_wal_autocheckpoint(db, 0);
                sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
                sqlite3_busy_handler(
                    db, [](void*, int tries) { return tries < kTries && usleep(kSleepUs) == 0 ? 1 : 0; }, nullptr);
            }
        }
        if (db) moveLog(db);
        lock.lock();
    }
    lock.unlock();
    sqlite3_close(db);
}

}  // namespace kv::tsql
