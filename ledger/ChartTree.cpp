#include "ledger/ChartTree.h"

#include <algorithm>
#include <map>
#include <set>

#include "platform/base/Text.h"

namespace kv {
namespace {

/// Adds a group behind the one above it. A group that is being placed already closes a circle and goes to the top.
class Placing {
public:
    explicit Placing(std::map<std::string, ChartGroup> all) : all_(std::move(all)) {}

    std::vector<ChartGroup> take() {
        for (auto& [code, group] : all_) place(code);
        return std::move(placed_);
    }

private:
    bool place(const std::string& code) {
        if (done_.contains(code)) return true;
        if (!open_.insert(code).second) return false;
        ChartGroup& group = all_.at(code);
        if (!group.mainGroup.empty() && (!all_.contains(group.mainGroup) || !place(group.mainGroup))) {
            group.mainGroup.clear();
        }
        done_.insert(code);
        placed_.push_back(group);
        return true;
    }

    std::map<std::string, ChartGroup> all_;
    std::set<std::string> open_, done_;
    std::vector<ChartGroup> placed_;
};

}  // namespace

const std::vector<ChartNode>& chartNodes() {
    static const std::vector<ChartNode> nodes = {
        {"", "AA", "All Accounts"},
        {"", "AS", "ASSET"},
        {"AS", "ASC", "CURRENT"},
        {"AS", "ASO", "NON-CURRENT"},
        {"", "LI", "LIABILITY"},
        {"LI", "LIC", "CURRENT"},
        {"LI", "LIO", "NON-CURRENT"},
        {"", "IN", "INCOME"},
        {"IN", "INR", "OPERATIONS / ROUTINE"},
        {"IN", "INS", "NON-OPERATIONS / SPECIAL"},
        {"IN", "INO", "OTHER"},
        {"", "EX", "EXPENSE"},
        {"EX", "EXC", "GENERAL"},
        {"EX", "EXD", "DISCOUNT"},
        {"EX", "EXP", "OPERATING"},
        {"EX", "EXO", "OTHER"},
        {"", "EQ", "EQUITY"},
        {"", "A.", "(no group specified)"},
    };
    return nodes;
}

std::string chartPlace(std::string_view type, std::string_view groupClass) {
    const auto there = [](std::string_view key) {
        return std::any_of(chartNodes().begin(), chartNodes().end(),
                           [&](const ChartNode& node) { return equalsNoCase(node.key, key); });
    };
    const std::string node = UCase(std::string(type) + std::string(groupClass));
    if (type.size() == 2 && !groupClass.empty() && there(node)) return node;
    return type.size() == 2 && type != kAllNode && there(type) ? UCase(type) : kNoGroupNode;
}

std::vector<ChartGroup> chartGroups(const Recordset& groups) {
    std::map<std::string, ChartGroup> all;
    const auto text = [&](const Row& row, const char* column) {
        return row.at(static_cast<std::size_t>(groups.indexOf(column))).text();
    };
    for (const Row& row : groups.rows()) {
        all[text(row, "GLGroup")] = {text(row, "GLGroup"), text(row, "Description"), text(row, "Type"),
                                     text(row, "Class"), std::string(trimBlanks(text(row, "MainGroup")))};
    }
    return Placing(std::move(all)).take();
}

std::string parentNode(const ChartGroup& group) {
    return group.mainGroup.empty() ? chartPlace(group.type, group.groupClass) : "G-" + group.mainGroup;
}

std::string groupOfNode(std::string_view key) {
    return key.starts_with("G-") ? std::string(key.substr(2)) : std::string();
}

}  // namespace kv
