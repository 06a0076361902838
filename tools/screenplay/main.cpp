// screenplay: plays the program's windows by the names of their controls; see docs/developers for the plays.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/base/CommandLine.h"
#include "platform/forms/Accelerators.h"
#include "platform/forms/Application.h"
#include "platform/forms/Form.h"
#include "platform/forms/Openings.h"
#include "platform/forms/player/Player.h"
#include "tools/screenplay/DemoDatabase.h"
#include "tools/screenplay/Workstation.h"

namespace {

constexpr const char* kUsage =
    "usage: screenplay [--data FILE] [--out DIR] [--keep-going] [--show] [--openings] [--accelerators] FILE.play ...\n"
    "\n"
    "  --data FILE    the database file; made with the demo hospital when it does not exist\n"
    "  --data :fresh  each play on a throwaway copy of the demo hospital (the default); a line\n"
    "                 \"# hospital: year\" in the play asks for one with the books of 2023 and 2024\n"
    "  --out DIR      where pictures, reports and files go; \".\" without it\n"
    "  --keep-going   goes on with the next play after one that failed\n"
    "  --show         on the display, where there is one\n"
    "  --openings     says how long each form took to come up\n"
    "  --accelerators fails where two controls of a form have the same Alt key\n";

constexpr const char* kFresh = ":fresh";

struct Arguments {
    std::string data = kFresh;
    std::string out = ".";
    bool keepGoing = false;
    bool show = false;
    bool openings = false;
    bool accelerators = false;
    bool serve = false;  ///< as a further workstation of a play, see Station
    std::vector<std::string> plays;
    bool good = true;
};

Arguments parseArguments(int argc, char** argv) {
    Arguments given;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        std::string* value = word == "--data" ? &given.data : word == "--out" ? &given.out : nullptr;
        if (value && i + 1 < argc)
            *value = argv[++i];
        else if (word == "--keep-going")
            given.keepGoing = true;
        else if (word == "--show")
            given.show = true;
        else if (word == "--openings")
            given.openings = true;
        else if (word == "--accelerators")
            given.accelerators = true;
        else if (word == "--serve")
            given.serve = true;
        else if (word.starts_with("-"))
            given.good = false;
        else
            given.plays.push_back(word);
    }
    given.good = given.good && given.plays.empty() == given.serve;
    return given;
}

kv::PlayerOptions playerOptions(const Arguments& given, const std::string& dataFile) {
    kv::PlayerOptions options;
    options.outFolder = given.out;
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    options.stationCommand = [=, show = given.show, out = given.out](const std::string&) {
        std::vector<std::string> command{self, "--serve", "--data", dataFile, "--out", out};
        if (show) command.emplace_back("--show");
        return command;
    };
    return options;
}

bool playOn(const Arguments& given, const std::string& dataFile, const std::string& play) {
    kv::Workstation workstation(dataFile);
    kv::Player player(workstation, playerOptions(given, dataFile));
    return given.serve ? player.serve() : player.play(play);
}

bool playOne(const Arguments& given, const std::string& play) {
    if (given.data == kFresh) {
        const kv::ThrowawayCopy copy(kv::demoTemplate(kv::demoKindOf(play)));
        return playOn(given, copy.file(), play);
    }
    kv::ensureDemo(given.data);
    return playOn(given, given.data, play);
}

/// Medians of all openings of all plays, the slowest form first.
class Openings {
public:
    void note(const kv::Form& form, double ms) { taken_ms_[form.name()].push_back(ms); }
    void print() {
        std::vector<std::pair<double, std::string>> medians;
        for (auto& [form, all] : taken_ms_) {
            const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
            std::nth_element(all.begin(), middle, all.end());
            medians.emplace_back(*middle, form);
        }
        std::sort(medians.rbegin(), medians.rend());
        std::printf("%9s %6s  form\n", "median ms", "times");
        for (const auto& [ms, form] : medians) {
            std::printf("%9.1f %6zu  %s\n", ms, taken_ms_[form].size(), form.c_str());
        }
    }

private:
    std::map<std::string, std::vector<double>> taken_ms_;
};

/// Forms on which two controls have the same Alt key.
class Accelerators {
public:
    void note(const kv::Form& form) {
        for (const std::string& line : kv::doubledAccelerators(form))
            doubled_.insert(form.name() + " has twice " + line);
    }
    bool sound() const {
        for (const std::string& line : doubled_) std::fprintf(stderr, "%s\n", line.c_str());
        return doubled_.empty();
    }

private:
    std::set<std::string> doubled_;
};

int playAll(const Arguments& given) {
    if (given.serve) return playOn(given, given.data, {}) ? 0 : 1;
    Openings openings;
    Accelerators accelerators;
    if (given.openings || given.accelerators) {
        kv::watchOpenings([&](const kv::Form& form, double ms) {
            openings.note(form, ms);
            if (given.accelerators) accelerators.note(form);
        });
    }
    std::size_t held = 0;
    for (const std::string& play : given.plays) {
        if (playOne(given, play))
            ++held;
        else if (!given.keepGoing)
            break;
    }
    kv::watchOpenings({});
    if (given.openings) openings.print();
    const std::size_t failed = given.plays.size() - held;
    if (given.plays.size() > 1) std::printf("%zu plays held, %zu did not or were not reached\n", held, failed);
    return !accelerators.sound() || failed ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    return kv::runProgram("screenplay", kUsage, [&] {
        const Arguments given = parseArguments(argc, argv);
        if (!given.good) throw kv::WrongUse();
        if (!given.show) setenv("QT_QPA_PLATFORM", "offscreen", 1);
        const kv::Application application(argc, argv);
        return playAll(given);
    });
}
