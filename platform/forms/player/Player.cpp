#include "platform/forms/player/Player.h"

#include <QApplication>
#include <QTest>
#include <cstdio>
#include <map>

#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/player/Performance.h"
#include "platform/forms/player/Station.h"
#include "platform/forms/player/Watchdog.h"

namespace kv {

namespace {

constexpr const char* kFirstStation = "A";
constexpr int kActivation_ms_max = 2000;

/// "refused cell", "save report": two words are one command.
CommandBody commandOf(const PlayLine& line) {
    const std::string two = line.bare(0) + " " + line.bare(1);
    for (const auto& table : {actionCommands(), answerCommands(), recordCommands()}) {
        for (const CommandEntry& entry : table) {
            const bool isPair = entry.name.find(' ') != std::string_view::npos;
            if (entry.name == (isPair ? two : line.bare(0))) return entry.body;
        }
    }
    return nullptr;
}

/// The answer that changes least, for boxes that nobody will answer any more.
Answer refusing(const MessageBox& box) {
    switch (box.buttons) {
        case Buttons::Ok:
            return Answer::Ok;
        case Buttons::YesNo:
            return Answer::No;
        default:
            return Answer::Cancel;
    }
}

Answer agreeing(const MessageBox& box) {
    switch (box.buttons) {
        case Buttons::YesNo:
        case Buttons::YesNoCancel:
            return Answer::Yes;
        case Buttons::RetryCancel:
            return Answer::Cancel;
        default:
            return Answer::Ok;
    }
}

QtMessageHandler toolkitLog = nullptr;

/// The toolkit's test library complains of keys and clicks that a window has ignored or closed by: for a person that
/// is nothing unusual.
void silenceToolkit() {
    if (toolkitLog) return;
    toolkitLog = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& where, const QString& text) {
        if (!text.contains(QLatin1String("not accepted by receiving widget"))) toolkitLog(type, where, text);
    });
}

std::string stemOf(const std::string& file) {
    const std::string name = fileNameOf(file);
    return name.substr(0, name.find_last_of('.'));
}

}  // namespace

struct Player::Running {
    Running(PlayedProgram& program, PlayerOptions given)
        : options(std::move(given)),
          show(program, options.outFolder),
          watchdog(options.hang_s, [this](auto& place, auto& what) { tell(place, what); }) {
        silenceToolkit();
        program.observe([this](std::string_view statement) { show.record.add(statement); });
        listen();
    }
    ~Running() { dialogHooks() = DialogHooks{}; }

    using LineSource = std::function<std::optional<PlayLine>()>;
    bool run(LineSource lines);
    void close();

    // lines
    void playWhile(const std::function<bool()>& open);
    void step(const PlayLine& line);
    void perform(const PlayLine& line);
    bool performHere(const PlayLine& line);
    void clock(const PlayLine& line);
    void workstation(const PlayLine& line);
    void settleWindows() const;
    void fail(const PlayLine& line, const std::string& what);
    void tell(const std::string& place, const std::string& what) const;

    // dialogs
    void listen();
    Answer onMessage(const MessageBox& box);
    std::optional<std::string> onInput(const std::string& prompt, const std::string& title,
                                       const std::string& proposed);
    std::optional<std::string> onFile(const std::string& title);
    std::optional<PrinterChoice> onPrinter();
    void onPaper(const PaperJob& job) const;
    void onModal(Form& form);
    void playScene(Scene& scene, const std::function<bool()>& answered);

    PlayerOptions options;
    Performance show;
    Watchdog watchdog;
    LineSource source;
    PlayLine current;  ///< at this depth
    PlayLine last;     ///< started last, at whatever depth
    std::string clockLine;
    std::map<std::string, std::unique_ptr<Station>> stations;
    Station* elsewhere = nullptr;  ///< the workstation that the lines go to; nullptr: this one
    bool ended = false;
    bool failed = false;
    bool closing = false;
};

// ---- the script --------------------------------------------------------------------------------------------------

void Player::Running::playWhile(const std::function<bool()>& open) {
    const PlayLine outer = current;
    while (!failed && !ended && open()) {
        watchdog.pause();
        std::optional<PlayLine> line;
        try {
            line = source();
        } catch (const Failure& failure) {
            fail(current, failure.what());
            break;
        }
        if (!line) {
            ended = true;
            break;
        }
        current = last = *line;
        step(*line);
    }
    current = outer;
    watchdog.lineStarts(current.place());
}

void Player::Running::step(const PlayLine& line) {
    watchdog.lineStarts(line.place());
    try {
        perform(line);
    } catch (const Failure& failure) {
        fail(line, failure.what());
    } catch (const Error& error) {
        fail(line, "expected no error, found " + std::to_string(error.number) + " " + error.description);
    }
    settleWindows();
}

void Player::Running::perform(const PlayLine& line) {
    if (performHere(line)) return;
    if (elsewhere) {
        if (!elsewhere->play(line)) failed = true;  // the other has told it
        return;
    }
    const CommandBody body = commandOf(line);
    if (!body) throw Failure("there is no command " + inQuotes(line.bare(0)));
    body(show, line);
}

/// Lines that are for the play as a whole, wherever it is.
bool Player::Running::performHere(const PlayLine& line) {
    const std::string name = line.bare(0);
    if (name == "workstation")
        workstation(line);
    else if (name == "clock")
        clock(line);
    else if (name == "say")
        std::printf("%s\n", line.text(1, "the text").c_str()), std::fflush(stdout);
    else
        return false;
    return true;
}

void Player::Running::clock(const PlayLine& line) {
    line.atMost(3);
    std::string text = line.text(1, "the day");
    if (line.has(2)) text += " " + line.text(2, "the time");
    const auto now = Date::fromIso(text);
    if (!now) throw Failure("the clock is written yyyy-MM-dd HH:mm, not " + inQuotes(text));
    fixClock(*now);
    clockLine = line.source();
    for (auto& [name, station] : stations) {
        if (!station->play(line)) failed = true;
    }
}

void Player::Running::workstation(const PlayLine& line) {
    line.atMost(2);
    const std::string name = line.text(1, "the name of a workstation");
    elsewhere = nullptr;
    if (name == kFirstStation) return;
    auto known = stations.find(name);
    if (known == stations.end()) {
        const auto command = options.stationCommand ? options.stationCommand(name) : std::vector<std::string>{};
        auto station = std::make_unique<Station>(name, command, options.hang_s);
        known = stations.emplace(name, std::move(station)).first;
        const PlayLine now(line.file(), line.number(), clockLine);
        if (!now.empty() && !known->second->play(now)) failed = true;
    }
    elsewhere = known->second.get();
}

/// Lets everything queued happen. With a window manager it also waits until the window in front is active.
void Player::Running::settleWindows() const {
    settle();
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) return;
    QWidget* front = show.stage.window();
    const QPointer<QWidget> alive = front;
    const auto there = [&] { return !alive || !front->isVisible() || front->isActiveWindow(); };
    if (front) (void)QTest::qWaitFor(there, kActivation_ms_max);
}

void Player::Running::fail(const PlayLine& line, const std::string& what) {
    if (std::exchange(failed, true)) return;
    tell(line.place(), what);
}

void Player::Running::tell(const std::string& place, const std::string& what) const {
    std::fprintf(stderr, "%s: %s\n", place.c_str(), what.c_str());
    try {
        const auto colon = place.find_last_of(':');
        const std::string stem = stemOf(place.substr(0, colon)) + "-" + place.substr(colon + 1);
        const std::string controls = show.stage.controls();
        std::fprintf(stderr, "%s", controls.c_str());
        if (const QImage image = show.stage.picture(); !image.isNull()) image.save(qs(show.outPath(stem + ".png")));
        writeTextFile(show.outPath(stem + ".txt"), controls);
    } catch (const std::exception& trouble) {
        std::fprintf(stderr, "the picture could not be written: %s\n", trouble.what());
    }
    std::fflush(stderr);
}

bool Player::Running::run(LineSource lines) {
    source = std::move(lines);
    playWhile([] { return true; });
    for (auto& [name, station] : stations) {
        if (!station->finish() && !failed) {
            failed = true;
            std::fprintf(stderr, "%s: the workstation %s did not end well\n", current.place().c_str(), name.c_str());
        }
    }
    if (!failed) {
        const std::vector<std::string> wrong = show.program.unsound();
        if (!wrong.empty()) fail(last, "expected sound books at the end of the play, found " + join(wrong, "\n    "));
    }
    close();
    return !failed;
}

void Player::Running::close() {
    closing = true;
    watchdog.lineStarts("closing:0");
    show.closeConnection();
    if (Form* shell = Form::shell()) shell->Unload();
    show.program.stop();
    settle();
    watchdog.pause();
    releaseClock();
}

// ---- dialogs -----------------------------------------------------------------------------------------------------

void Player::Running::listen() {
    DialogHooks& hooks = dialogHooks();
    hooks.message = [this](const MessageBox& box) { return onMessage(box); };
    hooks.input = [this](const std::string& prompt, const std::string& title, const std::string& proposed) {
        return onInput(prompt, title, proposed);
    };
    hooks.file = [this](const std::string& title, const std::string&, bool) { return onFile(title); };
    hooks.printer = [this] { return onPrinter(); };
    hooks.paper = [this](const PaperJob& job) { onPaper(job); };
    hooks.modal = [this](Form& form) { onModal(form); };
}

void Player::Running::playScene(Scene& scene, const std::function<bool()>& answered) {
    show.stage.enter(scene);
    settleWindows();
    playWhile([&] { return !answered(); });
    if (!answered() && !failed) {
        fail(last, "expected the play to end with every window closed, found " + show.stage.describe());
    }
    show.stage.leave();
}

Answer Player::Running::onMessage(const MessageBox& box) {
    if (closing) return agreeing(box);
    if (failed) return refusing(box);
    const Reactivate back;
    const std::unique_ptr<BoxWindow> window = openBox(box);
    Scene scene{.kind = Scene::Kind::Box, .box = window.get()};
    playScene(scene, [&] { return window->answered().has_value(); });
    return window->answered().value_or(refusing(box));
}

std::optional<std::string> Player::Running::onInput(const std::string& prompt, const std::string& title,
                                                    const std::string& proposed) {
    if (closing || failed) return std::nullopt;
    const Reactivate back;
    const std::unique_ptr<InputWindow> window = openInput(prompt, title, proposed);
    Scene scene{.kind = Scene::Kind::Input, .input = window.get()};
    playScene(scene, [&] { return window->done(); });
    return window->done() ? window->result() : std::nullopt;
}

std::optional<std::string> Player::Running::onFile(const std::string& title) {
    if (closing || failed) return std::nullopt;
    Scene scene{.kind = Scene::Kind::File, .title = title};
    playScene(scene, [&] { return scene.answered; });
    return scene.file;
}

std::optional<PrinterChoice> Player::Running::onPrinter() {
    if (closing || failed) return std::nullopt;
    Scene scene{.kind = Scene::Kind::Printer};
    playScene(scene, [&] { return scene.answered; });
    return scene.printer;
}

/// What would have been printed last, for the play to look at.
void Player::Running::onPaper(const PaperJob& job) const {
    const PrinterChoice& choice = job.choice;
    writeTextFile(show.outPath("printed.txt"), job.title + ", pages " + std::to_string(choice.fromPage) + " to " +
                                                   std::to_string(choice.toPage) + ", copies " +
                                                   std::to_string(choice.copies) + "\n" + job.text);
}

void Player::Running::onModal(Form& form) {
    if (closing || failed) return form.Hide();
    const std::shared_ptr<const bool> alive = lifeOf(form);
    const auto gone = [&] { return !*alive || !form.isVisible(); };
    Scene scene{.kind = Scene::Kind::Form, .form = &form};
    settleWindows();
    if (show.signing && !show.signing->filled) {
        try {
            fillSignIn(show, form);
        } catch (const Failure& failure) {
            fail(show.signing->line, failure.what());
        }
    }
    if (!gone()) playScene(scene, gone);
    if (!gone()) form.Hide();
}

// ---- face --------------------------------------------------------------------------------------------------------

Player::Player(PlayedProgram& program, PlayerOptions options)
    : running_(std::make_unique<Running>(program, std::move(options))) {}

Player::~Player() = default;

bool Player::play(const std::string& file) {
    std::vector<PlayLine> lines;
    try {
        lines = readPlay(file);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return false;
    }
    std::size_t next = 0;
    return running_->run([&]() -> std::optional<PlayLine> {
        if (next == lines.size()) return std::nullopt;
        return lines[next++];
    });
}

bool Player::serve() {
    HandedLines lines;
    const bool held = running_->run([&] { return lines.next(); });
    if (!held) lines.failed();
    return held;
}

}  // namespace kv
