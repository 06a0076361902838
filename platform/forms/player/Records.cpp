// The commands of a play on data, reports, files and pictures, and what it keeps of the statements sent.
#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/player/Performance.h"

namespace kv {

void StatementRecord::forget() {
    statements_.clear();
    next_ = 0;
}

bool StatementRecord::findNext(std::string_view pattern) {
    for (std::size_t i = next_; i < statements_.size(); ++i) {
        if (!matches(pattern, oneLineEnd(statements_[i]))) continue;
        next_ = i + 1;
        return true;
    }
    return false;
}

bool StatementRecord::hasAny(std::string_view pattern) const {
    for (const std::string& statement : statements_) {
        if (matches(pattern, oneLineEnd(statement))) return true;
    }
    return false;
}

std::string StatementRecord::tail() const {
    constexpr std::size_t kShown = 12;
    std::string text;
    for (std::size_t i = statements_.size() > kShown ? statements_.size() - kShown : 0; i < statements_.size(); ++i) {
        text += "\n    " + std::string(i + 1 == next_ ? "> " : "  ") + statements_[i];
    }
    return text.empty() ? " none" : text;
}

Connection& Performance::connection() {
    if (!own_) own_ = program.connect();
    return *own_;
}

std::string Performance::outPath(const std::string& name) const {
    const std::string path = QFileInfo(qs(name)).isAbsolute() ? name : buildPath(outFolder, name);
    if (!QDir().mkpath(QFileInfo(qs(path)).absolutePath())) throw Failure("the folder of " + path + " cannot be made");
    return path;
}

namespace {

void sql(Performance& show, const PlayLine& line) {
    line.atMost(2);
    show.connection().Execute(line.text(1, "the statement"));
}

void forget(Performance& show, const PlayLine& line) {
    line.atMost(1);
    show.record.forget();
}

void saveReport(Performance& show, const PlayLine& line) {
    line.atMost(3);
    const std::string path = show.outPath(line.text(2, "the name of a file"));
    ShownReport* report = show.program.report();
    if (!report) throw Failure("expected a report to save, found none shown");
    report->save(path);
    if (!fileExists(path)) throw Failure("expected the file " + path + ", found none written");
}

/// A file for the program to read, its lines ended as spreadsheets end them.
void writeFile(Performance& show, const PlayLine& line) {
    line.atMost(3);
    writeTextFile(show.outPath(line.text(1, "the name of a file")),
                  replaceAll(line.text(2, "the text of the file"), "\n", "\r\n"));
}

void setClipboardText(Performance&, const PlayLine& line) {
    line.atMost(2);
    setClipboard(line.text(1, "the text"));
}

void shot(Performance& show, const PlayLine& line) {
    line.atMost(2);
    const std::string path = show.outPath(line.text(1, "the name of a picture"));
    if (!show.stage.picture().save(qs(path))) throw Failure("the picture " + path + " cannot be written");
}

void controls(Performance& show, const PlayLine& line) {
    line.atMost(1);
    std::fputs(show.stage.controls().c_str(), stdout);
    std::fflush(stdout);
}

constexpr CommandEntry kCommands[] = {
    {"sql", sql},           {"forget", forget}, {"save report", saveReport}, {"clipboard", setClipboardText},
    {"controls", controls}, {"shot", shot},     {"expect", expect},          {"file", writeFile},
};

}  // namespace

std::span<const CommandEntry> recordCommands() { return kCommands; }

}  // namespace kv
