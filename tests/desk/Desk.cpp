#include "tests/desk/Desk.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "app/Program.h"
#include "platform/embedded/Embedded.h"

namespace fs = std::filesystem;

namespace kv {

const std::string& scratchFolder() {
    struct Folder {
        std::string path = (fs::temp_directory_path() / ("kv_desk_" + std::to_string(::getpid()))).string();
        pid_t owner = ::getpid();
        Folder() { fs::create_directories(path); }
        Folder(const Folder&) = delete;
        Folder& operator=(const Folder&) = delete;
        ~Folder() {
            std::error_code none;
            if (::getpid() == owner) fs::remove_all(path, none);  // not in a forked child
        }
    };
    static const Folder folder;
    return folder.path;
}

std::string freshHospital(const std::string& folder, const std::string& name) {
    static const std::string original = [] {
        std::string file = scratchFolder() + "/original.db";
        makeHospital(file, {});
        return file;
    }();
    const std::string copy = folder + "/" + name;
    for (const char* tail : {"", "-wal", "-shm"}) fs::remove(copy + tail);
    fs::copy_file(original, copy);
    return copy;
}

Desk::Desk(const std::string& file, const std::string& employee) {
    EmbeddedOptions options;
    options.file = file;
    connection_ = openEmbedded(options);
    session_ = std::make_unique<Session>(user_, *connection_, screens_);
    session_->EmployeeCode = employee;
    ResetGlobalVariables(*session_);
    session_->Parameters.LoadParameters(session_->ClientCode());
}

Desk::~Desk() = default;

void Desk::openBook(const std::string& code) {
    for (const BookEntry& book : bookEntries()) {
        if (code == book.code) session_->SelectBook({book.code, book.name, book.table, book.detailTable, "202403"});
    }
}

std::string Desk::ask(const std::string& statement) {
    const Recordset rows = connection_->Open(statement);
    return rows.eof() ? "none" : rows.at(0).text();
}

JournalBatch balancedBatch(const std::string& book, int lines, const Date& day) {
    JournalBatch batch;
    batch.FormMode = "NEW";
    batch.BatchDate = day;
    batch.Particular = "Lines of a test";
    batch.BatchType = book;
    batch.HasSubCode = book == "JV";
    for (int i = 0; i < lines; ++i) {
        JournalLine line;
        line.Code = i % 2 == 0 ? "1101" : "1201";
        line.Description = i % 2 == 0 ? "CASH ON HAND" : "A/R - ADMITTED PATIENTS";
        (i % 2 == 0 ? line.Debit : line.Credit) = Money::fromUnits(1'000'000 + (i / 2) * 12'500);
        batch.Lines.push_back(line);
    }
    return batch;
}

}  // namespace kv
