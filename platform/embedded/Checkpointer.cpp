#include "platform/embedded/Checkpointer.h"

#include <sqlite3.h>

namespace kv::tsql {

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
            }
        }
        // PASSIVE takes no lock that a reader or writer waits for.
        if (db) sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        lock.lock();
    }
    lock.unlock();
    sqlite3_close(db);
}

}  // namespace kv::tsql
