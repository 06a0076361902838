#pragma once
// clsUserAccess: the access table of one user. A right that has no row is denied.

#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Connection.h"

namespace kv {

class clsUserAccess {
public:
    void LoadSettings(Connection& connection, std::string_view UserID,
                      std::source_location at = std::source_location::current());
    /// Exact, case-sensitive comparison; the first match decides.
    bool CanAccess(std::string_view AccessID) const;

private:
    struct Entry {
        std::string AccessID;
        bool CanAccess = false;
    };
    std::vector<Entry> entries_;
};

}  // namespace kv
