#include "core/clsUserAccess.h"

namespace kv {

void clsUserAccess::LoadSettings(Connection& connection, std::string_view UserID, std::source_location at) {
    traced("clsUserAccess.LoadSettings", at, [&] {
        Recordset rows = connection.Open("sp_Load_UserAccess '" + std::string(UserID) + "'");
        entries_.clear();
        entries_.reserve(rows.recordCount());
        for (; !rows.eof(); rows.moveNext()) {
            entries_.push_back({rows["AccessID"].text(), rows["CanAccess"].integer() != 0});
        }
    });
}

bool clsUserAccess::CanAccess(std::string_view AccessID) const {
    for (const Entry& entry : entries_) {
        if (entry.AccessID == AccessID) return entry.CanAccess;
    }
    return false;
}

}  // namespace kv
