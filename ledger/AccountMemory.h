#pragma once
// AccountMemory: accounts and departments that a work over many lines has asked for, so that each is asked for once.
// It lives as long as that work and no longer, since the chart may change.

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "ledger/clsAccount.h"

namespace kv {

class AccountMemory {
public:
    explicit AccountMemory(Session& session) : session_(session) {}

    /// By its exact code; nothing when there is none.
    const clsAccount* find(const std::string& code);
    /// The title of an account with a department; nothing when there is no such department.
    const std::string* titleWith(const std::string& account, const std::string& dept);

private:
    Session& session_;
    std::map<std::string, clsAccount> accounts_;
    std::map<std::pair<std::string, std::string>, std::optional<std::string>> titles_;
};

}  // namespace kv
