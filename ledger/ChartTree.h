#pragma once
// ChartTree: where groups and accounts stand in the tree of the chart: its fixed nodes and the node of each group.

#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Recordset.h"

namespace kv {

/// A node that is always there. Keys of two letters are types, of three a class within a type.
struct ChartNode {
    const char* parent;
    const char* key;
    const char* text;
};
const std::vector<ChartNode>& chartNodes();

/// A group of the chart with the node it stands under.
struct ChartGroup {
    std::string group, description, type, groupClass, mainGroup;
    std::string key() const { return "G-" + group; }
    std::string text() const { return "[" + group + "] " + description; }
};

constexpr const char* kNoGroupNode = "A.";
constexpr const char* kAllNode = "AA";

/// The fixed node of a type and class; that of the type where it has no such class, "A." for an unknown type.
std::string chartPlace(std::string_view type, std::string_view groupClass);
/// Rows of GLGROUP, each below the group or fixed node it belongs to; a group comes after the one above it. Groups
/// whose main group is missing or runs in a circle stand at their fixed node.
std::vector<ChartGroup> chartGroups(const Recordset& groups);
/// The node that a group of that list stands under.
std::string parentNode(const ChartGroup& group);

/// The group of a node "G-..."; empty for a fixed node.
std::string groupOfNode(std::string_view key);

}  // namespace kv
