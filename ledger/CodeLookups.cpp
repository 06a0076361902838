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

CodeLookup CostCenterLookup(Session& session) {
    return [&session](const std::string& typed) -> std::optional<FoundCode> {
        clsCostCenter center(session);
        if (!center.Validate(typed)) return std::nullopt;
        return FoundCode{center.Code, center.Description};
    };
}

}  // namespace kv
