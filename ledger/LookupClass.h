#pragma once
// LookupClass: the lookup that cost centres, GL groups, departments and revenue centres share: a key is taken, the
// beginning of a description opens the search dialog.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/data/Connection.h"

namespace kv {

class Session;

class LookupClass {
public:
    using Place = std::source_location;

    /// As typed into a field. False: nothing was chosen, or "Item does not exists." has been shown.
    bool Validate(std::string_view Text, Place at = Place::current());

    std::string SearchCaption;
    std::string Code;
    std::string Description;

protected:
    struct Table {
        const char* name;
        const char* key;
    };
    LookupClass(Session& session, const char* className, Table table, const char* caption);
    virtual ~LookupClass() = default;
    /// Copies the fields of the row; NULL is the empty text.
    virtual void take(const Recordset& row);

private:
    std::string rowStatement(std::string_view key) const;
    bool pick(std::string_view Text);

    Session& session_;
    std::string className_;
    Table table_;
};

class clsCostCenter : public LookupClass {
public:
    explicit clsCostCenter(Session& session)
        : LookupClass(session, "clsCostCenter", {"CstCtr", "CstCtr"}, "Cost Center") {}
};

}  // namespace kv
