// The gathered log: what SQLite counts on while pages wait in memory, with a cache so small that open transactions
// write.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/embedded/LogFile.h"

namespace kv::tsql {
namespace {

/// A connection through the layer, or plain.
class Db {
public:
    explicit Db(const std::string& file, bool gathers = true) {
        sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                        gathers ? gatheringFiles() : nullptr);
        run("PRAGMA journal_mode=WAL");
        run("PRAGMA synchronous=FULL");
        run("PRAGMA cache_size=10");
        sqlite3_wal_autocheckpoint(db_, 0);
    }
    Db(const Db&) = delete;
    Db& operator=(const Db&) = delete;
    ~Db() { sqlite3_close(db_); }

    void run(const std::string& sql) {
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message), SQLITE_OK) << message << " in " << sql;
        sqlite3_free(message);
    }
    std::string ask(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
        std::string text;
        if (sqlite3_step(statement) == SQLITE_ROW) {
            text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        }
        sqlite3_finalize(statement);
        return text;
    }
    /// Rows of a page each.
    void fill(int from, int count) {
        for (int i = from; i < from + count; ++i) {
            run("INSERT INTO t VALUES (" + std::to_string(i) + ", hex(randomblob(1500)))");
        }
    }

private:
    sqlite3* db_ = nullptr;
};

class GatheredLog : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() / ("kv-log-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder_);
        file_ = (folder_ / "t.db").string();
        Db(file_).run("CREATE TABLE t (n INTEGER PRIMARY KEY, x TEXT)");
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// What a stranger finds, who knows nothing of the layer.
    std::string found() {
        Db plain(file_, false);
        return plain.ask("SELECT count(*) FROM t") + " " + plain.ask("PRAGMA integrity_check");
    }

    std::filesystem::path folder_;
    std::string file_;
};

TEST_F(GatheredLog, RolledBackPagesAreNeverWrittenOverAnotherWritersCommit) {
    Db first(file_);
    Db second(file_);
    first.run("BEGIN IMMEDIATE");
    first.fill(1000, 100);
    first.run("ROLLBACK");
    second.run("BEGIN IMMEDIATE");
    second.fill(0, 200);
    second.run("COMMIT");
    EXPECT_EQ(found(), "200 ok");
    // whatever the first still held would be written now
    EXPECT_EQ(first.ask("SELECT count(*) FROM t"), "200");
    first.run("INSERT INTO t VALUES (200, 'last')");
    EXPECT_EQ(found(), "201 ok");
    EXPECT_EQ(second.ask("SELECT x FROM t WHERE n = 200"), "last");
}

TEST_F(GatheredLog, ATransactionReadsBackWhatLeftItsCacheAndSavepointsUndoIt) {
    Db db(file_);
    db.run("BEGIN IMMEDIATE");
    db.fill(0, 60);
    db.run("SAVEPOINT s");
    db.fill(60, 60);
    db.run("UPDATE t SET x = 'changed' WHERE n < 30");
    EXPECT_EQ(db.ask("SELECT count(*) FROM t WHERE length(x) = 3000"), "90");
    db.run("ROLLBACK TO s");
    EXPECT_EQ(db.ask("SELECT count(*) || ' ' || min(length(x)) FROM t"), "60 3000");
    EXPECT_EQ(found(), "0 ok");
    db.run("COMMIT");
    EXPECT_EQ(found(), "60 ok");
    db.run("PRAGMA wal_checkpoint(TRUNCATE)");
    db.fill(60, 5);
    EXPECT_EQ(found(), "65 ok");
}

TEST_F(GatheredLog, WhatWasCommittedIsThereWhenTheProcessDies) {
    const pid_t child = fork();
    if (child == 0) {
        Db db(file_);
        db.fill(0, 30);
        db.run("BEGIN IMMEDIATE");
        db.fill(30, 50);
        db.run("COMMIT");
        db.run("BEGIN IMMEDIATE");
        db.fill(80, 50);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(found(), "80 ok");
}

}  // namespace
}  // namespace kv::tsql
