#pragma once
// The program's version as screens and reports show it.

#include <string>

namespace kv {

constexpr int kVersionMajor = 1;
constexpr int kVersionMinor = 0;
constexpr int kVersionRevision = 0;

inline std::string versionText() {
    return std::to_string(kVersionMajor) + ".0 rev" + std::to_string(kVersionMinor) + "." +
           std::to_string(kVersionRevision);
}

}  // namespace kv
