#include "platform/forms/player/Station.h"

#include <cstdio>
#include <iostream>

#include "platform/base/Text.h"
#include "platform/forms/Internal.h"

namespace kv {

namespace {

// What a station says about its lines stands apart from what its lines print.
constexpr const char* kReady = "\x01ready";
constexpr const char* kFailed =
    "\x01"
    "failed";

void say(const char* word) {
    std::puts(word);
    std::fflush(stdout);
}

}  // namespace

Station::Station(std::string name, const std::vector<std::string>& command, int wait_s)
    : name_(std::move(name)), wait_s_(wait_s) {
    if (command.empty()) throw Failure("there are no other workstations here");
    QStringList arguments;
    for (std::size_t i = 1; i < command.size(); ++i) arguments << qs(command[i]);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(qs(command[0]), arguments);
    if (!process_.waitForStarted() || !waitForReady()) throw Failure("the workstation " + name_ + " did not start");
}

Station::~Station() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.closeWriteChannel();
    if (!process_.waitForFinished(wait_s_ * 1000)) process_.kill();
}

bool Station::waitForReady() {
    for (;;) {
        while (process_.canReadLine()) {
            const QByteArray line = process_.readLine().trimmed();
            if (line == kReady) return true;
            if (line == kFailed) return false;
            std::printf("%s\n", line.constData());
        }
        if (!process_.waitForReadyRead(wait_s_ * 1000) && !process_.canReadLine()) return false;
    }
}

bool Station::play(const PlayLine& line) {
    const std::string handed = join({line.file(), std::to_string(line.number()), line.source()}, "\x01") + "\n";
    process_.write(handed.data(), static_cast<qint64>(handed.size()));
    return waitForReady();
}

bool Station::finish() {
    process_.closeWriteChannel();
    if (!process_.waitForFinished(wait_s_ * 1000)) return false;
    return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

std::optional<PlayLine> HandedLines::next() {
    say(kReady);
    std::string handed;
    if (!std::getline(std::cin, handed)) return std::nullopt;
    const std::vector<std::string> parts = split(handed, '\x01');
    if (parts.size() != 3) return std::nullopt;
    return PlayLine(parts[0], static_cast<int>(numberOf(parts[1])), parts[2]);
}

void HandedLines::failed() { say(kFailed); }

}  // namespace kv
