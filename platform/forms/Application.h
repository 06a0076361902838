#pragma once
// Application: the toolkit's application object with theme, fonts and icons; one per process, made by app/ and tools/.

#include <memory>
#include <string>

namespace kv {

enum class Theme { Light, Dark, System };

class Application {
public:
    /// Without a display (no DISPLAY or WAYLAND_DISPLAY) everything runs offscreen at 1920 x 1080.
    Application(int& argc, char** argv);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    int exec();  ///< until the shell has been unloaded
    void setTheme(Theme theme);
    Theme theme() const;
    static bool offscreen();
    static Application* instance();

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};

/// Where sizes of windows and widths of columns are remembered; empty: nowhere (plays, tests).
void setMemoryFile(const std::string& path);

}  // namespace kv
