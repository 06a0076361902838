// A screenplay tool over the test forms: plays one file, or serves as a further workstation of such a play.
#include <cstdio>
#include <cstring>

#include "platform/forms/Application.h"
#include "platform/forms/player/Player.h"
#include "tests/forms_grid/PlayForms.h"

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const std::string counter = argv[1];
    const std::string out = argv[2];
    const std::string play = argv[3];
    kv::Application application(argc, argv);
    kv::test::PlayForms program(counter);
    kv::PlayerOptions options{.outFolder = out, .hang_s = 2};
    options.stationCommand = [&](const std::string&) {
        return std::vector<std::string>{argv[0], counter, out, "--serve"};
    };
    kv::Player player(program, std::move(options));
    return (play == "--serve" ? player.serve() : player.play(play)) ? 0 : 1;
}
