// A screenplay tool over the test forms: plays one file, or serves as a further workstation of such a play.
#include <cstdio>
#include <cstring>

#include "platform/forms/Application.h"
#include "platform/forms/player/Player.h"
#include "tests/forms_grid/PlayForms.h"

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const std::string counter = argv[1];
    const std::string out = argv[2];
    const std::string limit_s = argv[3];
    const std::string play = argv[4];
    kv::Application application(argc, argv);
    kv::test::PlayForms program(counter);
    kv::PlayerOptions options{.outFolder = out, .hang_s = std::stoi(limit_s)};
    options.stationCommand = [&](const std::string&) {
        return std::vector<std::string>{argv[0], counter, out, limit_s, "--serve"};
    };
    kv::Player player(program, std::move(options));
    return (play == "--serve" ? player.serve() : player.play(play)) ? 0 : 1;
}
