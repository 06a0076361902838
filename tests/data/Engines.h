#pragma once
// The engines against which the data room is held: our own, and one that is not ours.

#include <gtest/gtest.h>

#include "platform/embedded/Embedded.h"
#include "tests/odbc/SqliteDesk.h"

namespace kv::test {

struct Engine {
    const char* name;
    std::unique_ptr<Connection> (*open)();
};

inline std::unique_ptr<Connection> openInMemory() {
    EmbeddedOptions options;
    options.file = ":memory:";
    return openEmbedded(options);
}

inline const std::vector<Engine> kEngines = {{"Embedded", openInMemory},
                                             {"SqliteOverOdbc", [] { return openSqliteDesk(); }}};

inline std::string engineName(const testing::TestParamInfo<Engine>& info) { return info.param.name; }
inline void PrintTo(const Engine& engine, std::ostream* out) { *out << engine.name; }

}  // namespace kv::test
