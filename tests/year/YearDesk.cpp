#include "tests/year/YearDesk.h"

#include <algorithm>
#include <filesystem>

#include "platform/base/Paths.h"

namespace kv {

std::unique_ptr<Desk> deskOfYear(const std::string& name, const DemoYearPlan& plan) {
    auto desk = std::make_unique<Desk>(freshHospital(scratchFolder(), name));
    DemoYear(desk->session(), plan).write();
    return desk;
}

std::vector<std::string> rowsOf(Desk& desk, const std::string& statement) {
    std::vector<std::string> out;
    const Recordset found = desk.cn().Open(statement);
    for (const Row& row : found.rows()) {
        std::string text;
        for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "|" : "") + row[i].text();
        out.push_back(std::move(text));
    }
    return out;
}

std::vector<std::string> findingsOf(Desk& desk) {
    std::vector<std::string> out;
    for (const auto& entry : std::filesystem::directory_iterator("server/checks")) {
        if (!desk.cn().Open(readTextFile(entry.path().string())).empty()) out.push_back(entry.path().stem().string());
    }
    std::sort(out.begin(), out.end());
    return out;
}

}  // namespace kv
