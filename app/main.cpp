// The program: takes no arguments and reads nothing but its own folders.

#include "app/Program.h"
#include "platform/base/Paths.h"
#include "platform/forms/Application.h"

int main(int argc, char** argv) {
    kv::Application application(argc, argv);
    kv::Program::Options options;
    options.dataFile = kv::buildPath(kv::programFolder(), "var/hospital.db");
    kv::setMemoryFile(kv::buildPath(kv::programFolder(), "var/windows.txt"));
    kv::Program program(options);
    if (!program.Main()) return 0;
    return application.exec();
}
