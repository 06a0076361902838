// The file under stress: processes that die, share it, fill the disk or damage it; copies of a file in use.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <set>
#include <thread>

#include "tests/embedded/core_support.h"

namespace kv {
namespace {

constexpr int kRowsOfABatch = 5;

/// Runs `work` in a process of its own; it ends with the number that `work` gives.
template <class Work>
pid_t inProcess(Work&& work) {
    const pid_t child = fork();
    if (child != 0) return child;
    int status = 99;
    try {
        status = work();
    } catch (const Error& error) {
        std::fprintf(stderr, "child: %ld %s\n", error.number, error.description.c_str());
    } catch (...) {
        std::fprintf(stderr, "child failed\n");
    }
    ::_exit(status);
}

int exitOf(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// Writes batches from `first` on, each one transaction, and tells each number down the pipe once it is committed.
int writeBatches(const std::string& file, int first, int count, int pipe) {
    Engine db(file);
    for (int n = first; n < first + count; ++n) {
        std::string batch = "SET XACT_ABORT ON BEGIN TRAN ";
        for (int i = 0; i < kRowsOfABatch; ++i) {
            batch += "INSERT t VALUES (" + std::to_string(n) + ", " + std::to_string(i) + ", REPLICATE('x', 500)) ";
        }
        db.run(batch + "UPDATE total SET n = n + 1 COMMIT");
        if (::write(pipe, &n, sizeof n) != static_cast<ssize_t>(sizeof n)) return 1;
    }
    return 0;
}

std::set<int> told(int pipe) {
    std::set<int> numbers;
    int n = 0;
    while (::read(pipe, &n, sizeof n) == static_cast<ssize_t>(sizeof n)) numbers.insert(n);
    return numbers;
}

void prepare(const std::string& file) {
    Engine db(file);
    db.run("CREATE TABLE t (batch int, line int, text varchar(500), PRIMARY KEY (batch, line))");
    db.run("CREATE TABLE total (n int) INSERT total VALUES (0)");
}

/// Everything told is there, each batch is whole, and the file is sound.
void expectWhole(const std::string& file, const std::set<int>& committed) {
    Engine db(file);
    EXPECT_EQ(db.ask("SELECT batch FROM t GROUP BY batch HAVING COUNT(*) <> " + std::to_string(kRowsOfABatch)), "");
    EXPECT_EQ(db.ask("SELECT COUNT(DISTINCT batch) FROM t"), db.ask("SELECT n FROM total"));
    for (const int n : committed) {
        EXPECT_EQ(db.ask("SELECT COUNT(*) FROM t WHERE batch = " + std::to_string(n)), std::to_string(kRowsOfABatch));
    }
    EXPECT_TRUE(db.services().checkIntegrity().empty());
}

TEST(Files, AKilledProcessLosesNothingThatWasCommitted) {
    Scratch scratch;
    prepare(scratch.file());
    std::set<int> committed;
    for (int round = 0; round < 12; ++round) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = inProcess([&] { return writeBatches(scratch.file(), round * 100'000, 100'000, ends[1]); });
        ::close(ends[1]);
        std::this_thread::sleep_for(std::chrono::milliseconds(30 + 7 * round));
        ::kill(child, SIGKILL);
        EXPECT_EQ(exitOf(child), -SIGKILL);
        committed.merge(told(ends[0]));
        ::close(ends[0]);
    }
    EXPECT_GT(committed.size(), 12u);
    expectWhole(scratch.file(), committed);
}

TEST(Files, ProcessesThatDrawNumbersNeverShareOne) {
    constexpr int kProcesses = 4;
    constexpr int kDraws = 250;
    Scratch scratch;
    {
        Engine db(scratch.file());
        db.run("CREATE TABLE series (book varchar(2) PRIMARY KEY, n int) INSERT series VALUES ('JV', 0)");
        db.run("CREATE TABLE drawn (n int, pid int)");
        db.run(
            "CREATE PROCEDURE draw @pid int AS BEGIN SET NOCOUNT ON SET XACT_ABORT ON DECLARE @n int BEGIN TRAN "
            "UPDATE series SET @n = n = n + 1 WHERE book = 'JV' INSERT drawn VALUES (@n, @pid) COMMIT SELECT @n END");
    }
    std::vector<pid_t> children;
    for (int p = 0; p < kProcesses; ++p) {
        children.push_back(inProcess([&] {
            Engine db(scratch.file());
            for (int i = 0; i < kDraws; ++i) db.ask("EXEC draw " + std::to_string(::getpid()));
            return 0;
        }));
    }
    for (const pid_t child : children) EXPECT_EQ(exitOf(child), 0);
    Engine db(scratch.file());
    const std::string all = std::to_string(kProcesses * kDraws);
    EXPECT_EQ(db.ask("SELECT COUNT(*), COUNT(DISTINCT n), MAX(n), COUNT(DISTINCT pid) FROM drawn"),
              all + "|" + all + "|" + all + "|" + std::to_string(kProcesses));
}

TEST(Files, AFullDiskLosesNothingThatWasCommitted) {
    Scratch scratch;
    prepare(scratch.file());
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = inProcess([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{400'000, 400'000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            writeBatches(scratch.file(), 0, 10'000, ends[1]);
        } catch (const Error& error) {
            return error.number == 1105 || error.number == 823 ? 7 : 8;
        }
        return 0;
    });
    ::close(ends[1]);
    EXPECT_EQ(exitOf(child), 7);
    const std::set<int> committed = told(ends[0]);
    ::close(ends[0]);
    EXPECT_GT(committed.size(), 10u);
    expectWhole(scratch.file(), committed);
    // With room again the file is written on.
    Engine db(scratch.file());
    db.run("INSERT t VALUES (-1, 0, 'more')");
}

TEST(Files, AWriterThatWaitsTooLongIsToldSo) {
    Scratch scratch;
    prepare(scratch.file());
    Engine first(scratch.file());
    first.run("BEGIN TRAN INSERT t VALUES (1, 1, 'x')");
    EmbeddedOptions options;
    options.file = scratch.file();
    options.busyWaitMs = 100;
    const auto second = openEmbedded(options);
    EXPECT_EQ(second->Open("SELECT COUNT(*) FROM t").at(0).integer(), 0) << "readers do not wait";
    try {
        second->Execute("INSERT t VALUES (2, 2, 'y')");
        ADD_FAILURE() << "two writers at once";
    } catch (const Error& error) {
        EXPECT_EQ(error.number, 1222);
    }
    first.run("COMMIT");
    second->Execute("INSERT t VALUES (2, 2, 'y')");
    EXPECT_EQ(first.ask("SELECT COUNT(*) FROM t"), "2");
}

TEST(Files, ACopyOfAFileInUseIsWholeAndChecked) {
    Scratch scratch;
    prepare(scratch.file());
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = inProcess([&] { return writeBatches(scratch.file(), 0, 100'000, ends[1]); });
    ::close(ends[1]);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    {
        Engine db(scratch.file());
        db.services().backupTo(scratch.file("copy.db"));
        db.services().backupTo(scratch.file("copy.db"));
    }
    ::kill(child, SIGKILL);
    exitOf(child);
    ::close(ends[0]);
    expectWhole(scratch.file("copy.db"), {});
    EXPECT_FALSE(std::filesystem::exists(scratch.file("copy.db") + ".new"));
    Engine db(scratch.file());
    EXPECT_THROW(db.services().backupTo(scratch.file("nowhere/copy.db")), Error);
}

TEST(Files, ADamagedFileIsNoticedAndNamed) {
    Scratch scratch;
    prepare(scratch.file());
    {
        Engine db(scratch.file());
        for (int n = 0; n < 40; ++n) {
            db.run("INSERT t VALUES (" + std::to_string(n) + ", 0, REPLICATE('x', 500))");
        }
        db.services().checkpoint();
    }
    {
        std::fstream file(scratch.file(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(0, std::ios::end);
        const std::streamoff size = file.tellp();
        const std::string noise(8192, '\x5a');
        file.seekp(size - 3 * 8192);
        file.write(noise.data(), static_cast<std::streamsize>(noise.size()));
    }
    {
        Engine db(scratch.file());
        EXPECT_FALSE(db.services().checkIntegrity().empty());
        EXPECT_THROW(db.services().backupTo(scratch.file("copy.db")), Error);
        EXPECT_FALSE(std::filesystem::exists(scratch.file("copy.db")));
    }
    std::ofstream(scratch.file("other.db")) << std::string(5000, 'z');
    try {
        Engine db(scratch.file("other.db"));
        ADD_FAILURE() << "a file of another kind was opened";
    } catch (const Error& error) {
        EXPECT_EQ(error.number, 824);
        EXPECT_NE(error.description.find("other.db"), std::string::npos);
    }
    EmbeddedOptions options;
    options.file = scratch.file("missing.db");
    options.create = false;
    EXPECT_THROW(openEmbedded(options), Error);
}

/// What a look at the file says; empty when it is sound.
std::string saidOf(const std::string& file) {
    try {
        examineEmbedded(file);
        return {};
    } catch (const Error& error) {
        EXPECT_TRUE(error.number == 824 || error.number == 53) << error.number;
        return error.description;
    }
}

/// A sound file with 400 rows, and its bytes.
std::string soundBytes(Scratch& scratch) {
    prepare(scratch.file());
    {
        Engine db(scratch.file());
        for (int n = 0; n < 400; ++n) {
            db.run("INSERT t VALUES (" + std::to_string(n) + ", 0, REPLICATE('x', 500))");
        }
        db.services().checkpoint();
    }
    std::ifstream in(scratch.file(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(Files, ALookNamesEachKindOfDamageAndChangesNothing) {
    Scratch scratch;
    const std::string sound = soundBytes(scratch);
    EXPECT_EQ(saidOf(scratch.file()), "");
    std::string flipped = sound;
    for (std::size_t i = 0; i < 600; ++i) flipped[sound.size() / 2 + i] ^= '\xff';
    std::string foreign = sound;
    for (std::size_t at = foreign.find("kv_meta"); at != std::string::npos; at = foreign.find("kv_meta", at)) {
        foreign.replace(at, 7, "xx_meta");
    }
    const struct {
        const char* name;
        std::string bytes;
        const char* said;
    } cases[] = {
        {"empty.db", "", "is empty"},
        {"short.db", sound.substr(0, 60), "is cut off"},
        {"cut.db", sound.substr(0, sound.size() / 2), "is cut off"},
        {"cut-in-page.db", sound.substr(0, sound.size() - 100), "is cut off"},
        {"flipped.db", flipped, "is damaged"},
        {"other.db", std::string(5000, 'z'), "is not a database"},
        {"foreign.db", foreign, "another program"},
    };
    for (const auto& one : cases) {
        const std::string file = scratch.file(one.name);
        std::ofstream(file, std::ios::binary) << one.bytes;
        const std::string said = saidOf(file);
        EXPECT_NE(said.find(one.said), std::string::npos) << one.name << ": " << said;
        EXPECT_NE(said.find(file), std::string::npos) << said;
        std::ifstream in(file, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), one.bytes) << one.name << " was changed";
    }
    EXPECT_NE(saidOf(scratch.file("missing.db")).find("does not exist"), std::string::npos);
}

TEST(Files, ARestoreWhileOthersWorkReplacesEverything) {
    Scratch scratch;
    prepare(scratch.file());
    Engine db(scratch.file());
    Engine other(scratch.file());
    db.run("INSERT t VALUES (1, 1, 'kept')");
    db.run("CREATE TABLE later (a int)");
    db.services().backupTo(scratch.file("copy.db"));
    // the other one knows a catalogue of as many changes as the backup's, but not the same
    other.run("DROP TABLE later");
    other.run("CREATE TABLE another (a int)");
    other.run("DELETE FROM t");
    EXPECT_EQ(other.ask("SELECT COUNT(*) FROM another"), "0");

    const std::string kept = db.services().restoreFrom(scratch.file("copy.db"));
    EXPECT_EQ(db.ask("SELECT MAX(text) FROM t"), "kept");
    EXPECT_EQ(other.ask("SELECT MAX(text) FROM t"), "kept");
    EXPECT_EQ(other.ask("SELECT COUNT(*) FROM later"), "0");
    EXPECT_THROW(other.ask("SELECT COUNT(*) FROM another"), Error);
    EXPECT_FALSE(std::filesystem::exists(scratch.file() + ".restoring"));
    Engine before(kept);
    EXPECT_EQ(before.ask("SELECT COUNT(*) FROM t"), "0");
    EXPECT_EQ(before.ask("SELECT COUNT(*) FROM another"), "0");
}

TEST(Files, ARestoreThatCannotBeMadeChangesNothing) {
    Scratch scratch;
    const std::string sound = soundBytes(scratch);
    std::ofstream(scratch.file("cut.db"), std::ios::binary) << sound.substr(0, sound.size() / 2);
    Engine db(scratch.file());
    for (const char* backup : {"cut.db", "missing.db"}) {
        EXPECT_THROW(db.services().restoreFrom(scratch.file(backup)), Error);
    }
    db.services().backupTo(scratch.file("copy.db"));
    db.run("BEGIN TRAN");
    EXPECT_THROW(db.services().restoreFrom(scratch.file("copy.db")), Error);
    db.run("ROLLBACK");
    // a writer that does not come to its end
    db.run("DELETE FROM t WHERE batch > 300");
    EmbeddedOptions hurry;
    hurry.file = scratch.file();
    hurry.busyWaitMs = 50;
    const auto impatient = openEmbedded(hurry);
    db.run("BEGIN TRAN DELETE FROM t");
    EXPECT_THROW(embeddedOf(*impatient)->restoreFrom(scratch.file("copy.db")), Error);
    db.run("ROLLBACK");
    EXPECT_EQ(db.ask("SELECT COUNT(*) FROM t"), "301");
}

TEST(Files, ADamagedFileIsPutAsideForItsBackup) {
    Scratch scratch;
    const std::string sound = soundBytes(scratch);
    Engine(scratch.file()).services().backupTo(scratch.file("copy.db"));
    const std::string half = sound.substr(0, sound.size() / 2);
    std::ofstream(scratch.file(), std::ios::binary) << half;
    const std::string kept = replaceEmbedded(scratch.file(), scratch.file("copy.db"));
    EXPECT_EQ(Engine(scratch.file()).ask("SELECT COUNT(*) FROM t"), "400");
    std::ifstream in(kept, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), half);
    EXPECT_EQ(replaceEmbedded(scratch.file("new.db"), scratch.file("copy.db")), "");
    EXPECT_THROW(replaceEmbedded(scratch.file(), kept), Error);
    EXPECT_EQ(Engine(scratch.file()).ask("SELECT COUNT(*) FROM t"), "400");
}

}  // namespace
}  // namespace kv
