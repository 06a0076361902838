#include "platform/forms/Application.h"

#include <unistd.h>
#include <QPalette>
#include <cstdio>
#include <cstdlib>

#include "platform/forms/AppEvents.h"
#include "platform/forms/Theme.h"

// The icons lie in a static library: nothing else would keep them in the program.
static void bringIcons() { Q_INIT_RESOURCE(icons); }

namespace kv {

namespace {

Application* theApplication = nullptr;

constexpr const char* kScreen =
    R"({"synchronousWindowSystemEvents":true,"windowFrameMargins":false,"screens":[{"name":"room","x":0,"y":0,)"
    R"("width":1920,"height":1080,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})";

/// Lines of the toolkit about what an offscreen screen cannot do say nothing to anybody.
void logLine(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (text.startsWith(QLatin1String("This plugin")) || text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME")))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(text));
    if (type == QtFatalMsg) std::abort();
}

bool isSet(const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
}

/// Without a display, or where offscreen is asked for: a screen of its own size, told to the toolkit by a file that is
/// read once. Gives the file's name, empty when there is a display.
std::string prepareScreen() {
    const bool asked = isSet("QT_QPA_PLATFORM");
    const bool offscreen = asked ? std::string(std::getenv("QT_QPA_PLATFORM")) == "offscreen"
                                 : !isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY");
    if (!offscreen) return {};
    std::string path = (isSet("TMPDIR") ? std::string(std::getenv("TMPDIR")) : std::string("/tmp")) + "/korvane-XXXXXX";
    const int file = mkstemp(path.data());
    const std::string_view screen(kScreen);
    const bool written = file >= 0 && write(file, screen.data(), screen.size()) == static_cast<ssize_t>(screen.size());
    if (file >= 0) close(file);
    qputenv("QT_QPA_PLATFORM", written ? QByteArray("offscreen:configfile=") + path.c_str() : QByteArray("offscreen"));
    return file >= 0 ? path : std::string();
}

}  // namespace

struct Application::Impl {
    std::unique_ptr<AppEvents> events;
    Theme theme = Theme::Light;
};

Application::Application(int& argc, char** argv) : impl_(std::make_unique<Impl>()) {
    qInstallMessageHandler(logLine);
    const std::string screen = prepareScreen();
    impl_->events = std::make_unique<AppEvents>(argc, argv);
    if (!screen.empty()) {
        unlink(screen.c_str());
        qputenv("QT_QPA_PLATFORM", "offscreen");  // for programs that this one starts
    }
    bringIcons();
    QApplication::setQuitOnLastWindowClosed(false);
    if (offscreen()) QApplication::setCursorFlashTime(0);  // pictures do not depend on the moment
    dressApplication(*impl_->events);
    theApplication = this;
}

Application::~Application() { theApplication = nullptr; }

int Application::exec() {
    if (!Form::shell()) return 0;
    return QApplication::exec();
}

void Application::setTheme(Theme theme) {
    impl_->theme = theme;
    applyTheme(theme == Theme::Dark || (theme == Theme::System && desktopIsDark()));
}

Theme Application::theme() const { return impl_->theme; }

bool Application::offscreen() { return QGuiApplication::platformName() == QLatin1String("offscreen"); }

Application* Application::instance() { return theApplication; }

namespace {
int& hourglasses() {
    static int count = 0;
    return count;
}
}  // namespace

Hourglass::Hourglass() {
    if (hourglasses()++ == 0) QApplication::setOverrideCursor(Qt::WaitCursor);
}

Hourglass::~Hourglass() {
    if (--hourglasses() == 0) QApplication::restoreOverrideCursor();
}

}  // namespace kv
