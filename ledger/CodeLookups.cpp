#include "ledger/CodeLookups.h"

#include "core/Session.h"
#include "ledger/LookupClass.h"
#include "ledger/clsAccount.h"

namespace kv {

CodeLookup AccountLookup(Session& session, std::string Mode) {
    return [&session, mode = std::move(Mode)](const std::string& typed) -> std::optional<FoundCode> {
        clsAccount account(session);
        if (!account.Validate(typed, mode)) return std::nullopt;
        const bool master = typed == "MAS";  // the masters have no title of their own in the lookup
        return FoundCode{account.AccountCode, master ? account.AccountDesc : account.AccountTitle};
    };
}

namespace {

/// A lookup class by its own rule: a key is taken, the beginning of a description searched.
template <class Lookup>
CodeLookup lookupBy(Session& session) {
    return [&session](const std::string& typed) -> std::optional<FoundCode> {
        Lookup lookup(session);
        if (!lookup.Validate(typed)) return std::nullopt;
        return FoundCode{lookup.Code, lookup.Description};
    };
}

}  // namespace

CodeLookup CostCenterLookup(Session& session) { return lookupBy<clsCostCenter>(session); }
CodeLookup DivisionLookup(Session& session) { return lookupBy<clsDepartment>(session); }
CodeLookup GroupLookup(Session& session) { return lookupBy<clsGLGroup>(session); }

}  // namespace kv
