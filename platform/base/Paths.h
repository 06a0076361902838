#pragma once
// Paths: where the program's own files (server scripts, report templates, demo data) are.

#include <string>
#include <string_view>

namespace kv {

/// The folder that holds "server" and "Reports": the one of the executable or the nearest one above it.
const std::string& programFolder();
bool fileExists(const std::string& path);
bool folderExists(const std::string& path);
std::string buildPath(std::string_view folder, std::string_view name);
/// The part after the last "/" or "\".
std::string fileNameOf(std::string_view path);
/// Whole file; raises Error 53 when it cannot be read.
std::string readTextFile(const std::string& path);
/// A name beside the file that is free, by the time, e.g. "login.toml.damaged-20240331-173000".
std::string freeNameBeside(const std::string& path, std::string_view what);
/// Writes beside the target and moves it into place, so that a failure leaves the old file. Raises Error 75.
void writeTextFile(const std::string& path, std::string_view text);

}  // namespace kv
