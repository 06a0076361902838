#include "Books.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>

#include "core/DemoHospital.h"
#include "core/Installer.h"
#include "platform/base/Paths.h"
#include "platform/data/Statement.h"
#include "platform/embedded/Embedded.h"

namespace kv::server_test {

namespace {

namespace fs = std::filesystem;

const std::string& scratch() {
    static const std::string folder = [] {
        const fs::path path = fs::temp_directory_path() / ("server_test_" + std::to_string(getpid()));
        fs::create_directories(path);
        return path.string();
    }();
    return folder;
}

std::unique_ptr<Connection> openFile(const std::string& file) {
    EmbeddedOptions options;
    options.file = file;
    return openEmbedded(options);
}

/// The demo hospital is made once a program; every test gets a copy.
const std::string& freshHospital() {
    static const std::string file = [] {
        const std::string path = scratch() + "/fresh.db";
        const auto connection = openFile(path);
        installDatabase(*connection, "server");
        loadDemoHospital(*connection, "demo/data");
        embeddedOf(*connection)->checkpoint();
        connection->close();
        return path;
    }();
    return file;
}

}  // namespace

Books::Books() {
    static std::atomic<int> count{0};
    file_ = scratch() + "/test" + std::to_string(count++) + ".db";
    fs::copy_file(freshHospital(), file_);
    cn = connect();
    run("sp_SaveUserLogs 'E001', 'ACCOUNTING', 'User Login'");
}

Books::~Books() {
    cn.reset();
    for (const char* ending : {"", "-wal", "-shm"}) fs::remove(file_ + ending);
}

std::unique_ptr<Connection> Books::connect() const { return openFile(file_); }

void Books::enter(std::string_view book, std::string_view batch, std::string_view date, const std::vector<Line>& lines,
                  std::string_view type) {
    const std::string lineTable = book == "CR" ? "CRBDT" : std::string(book) + "DT";
    const std::string period = std::string(date.substr(0, 4)) + std::string(date.substr(5, 2));
    Transaction transaction(*cn);
    run(sql("Delete from {} where Batch = '{}'").name(lineTable).text(batch));
    Money debits;
    Money credits;
    int seq = 0;
    for (const Line& line : lines) {
        run(sql("INSERT INTO {} (Batch, Period, Code, Dept, BatchDate, Description, Debit, Credit, SeqNo, Posted) "
                "VALUES ('{}', '{}', '{}', '{}', '{}', 'test', {}, {}, {}, 0)")
                .name(lineTable)
                .text(batch)
                .text(period)
                .text(line.code)
                .text(line.dept)
                .text(date)
                .amount(*Money::parse(line.debit))
                .amount(*Money::parse(line.credit))
                .number(++seq));
        debits += *Money::parse(line.debit);
        credits += *Money::parse(line.credit);
    }
    run(call(book == "CR" ? "sp_Insert_CRB" : "sp_Insert_" + std::string(book))
            .text(batch)
            .text(date)
            .text(type.empty() ? book : type)
            .amount(credits)
            .amount(debits)
            .amount(credits)
            .text(period)
            .text("test batch")
            .text("E001"));
    transaction.commit();
}

std::string Books::one(std::string_view statement) {
    const Recordset found = cn->Open(statement);
    return found.empty() ? "none" : found.at(0).text();
}

std::vector<Row> Books::all(std::string_view statement) { return cn->Open(statement).rows(); }

std::vector<std::string> Books::rows(std::string_view statement) {
    std::vector<std::string> out;
    for (const Row& row : all(statement)) {
        std::string text;
        for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "|" : "") + row[i].text();
        out.push_back(text);
    }
    return out;
}

std::string Books::refused(std::string_view statement) {
    try {
        cn->Execute(statement);
        return {};
    } catch (const Error& failure) {
        return std::to_string(failure.number) + " " + failure.description;
    }
}

std::vector<Line> simple(std::string_view amount) {
    return {{"1101", std::string(amount), "0", ""}, {"1201", "0", std::string(amount), ""}};
}

std::vector<std::pair<std::string, std::string>> checkQueries() {
    std::vector<std::pair<std::string, std::string>> out;
    for (const auto& entry : fs::directory_iterator("server/checks"))
        out.emplace_back(entry.path().stem().string(), readTextFile(entry.path().string()));
    std::sort(out.begin(), out.end());
    return out;
}

}  // namespace kv::server_test
