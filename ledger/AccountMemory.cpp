#include "ledger/AccountMemory.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/LookupClass.h"

namespace kv {

const clsAccount* AccountMemory::find(const std::string& code) {
    const auto [at, fresh] = accounts_.try_emplace(code, session_);
    if (fresh) at->second.Search(code, "ALL");
    return at->second.Found ? &at->second : nullptr;
}

const std::string* AccountMemory::titleWith(const std::string& account, const std::string& dept) {
    const auto [at, fresh] = titles_.try_emplace({account, dept});
    if (fresh) {
        clsCostCenter center(session_);
        center.Search(dept);
        if (center.Found) at->second = module1::GetAcctName(session_.cn(), account, center.Code);
    }
    return at->second ? &*at->second : nullptr;
}

}  // namespace kv
