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
    /// Looks the exact key up and takes its row; Found tells whether there was one.
    void Search(std::string_view Text, Place at = Place::current());

    std::string SearchCaption;
    std::string Code;
    std::string Description;
    bool Found = false;

protected:
    struct Table {
        const char* name;
        const char* key;
        const char* description = "Description";
    };
    LookupClass(Session& session, const char* className, Table table, const char* caption);
    virtual ~LookupClass() = default;
    /// Copies the fields of the row; NULL is the empty text.
    virtual void take(const Recordset& row);
    Session& session() const { return session_; }
    /// Shows the search dialog over a statement; the row that was chosen is taken.
    bool pickFrom(std::string_view caption, std::string query, std::string_view Text);

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

    /// Picks among the cost centres that locations of the inventory stand for.
    bool SearchInventory(std::string_view Text = {}, Place at = Place::current());
    /// The name of a cost centre; empty for an unknown one.
    std::string GetDescription(std::string_view CostCenter, Place at = Place::current());
};

class clsGLGroup : public LookupClass {
public:
    explicit clsGLGroup(Session& session)
        : LookupClass(session, "clsGLGroup", {"GLGROUP", "GLGroup"}, "G. L. Groups") {}

    std::string GLGroup, GroupType, GroupClass;

protected:
    void take(const Recordset& row) override;
};

class clsDepartment : public LookupClass {
public:
    explicit clsDepartment(Session& session)
        : LookupClass(session, "clsDepartment", {"DEPARTMENTS", "CODE", "DEPARTMENT"}, "Department") {}
};

class clsRevenueCenter : public LookupClass {
public:
    explicit clsRevenueCenter(Session& session)
        : LookupClass(session, "clsRevenueCenter", {"RevCtr", "RevCtr"}, "Revenue Center") {}
};

}  // namespace kv
