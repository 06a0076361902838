#pragma once
// clsAccount: an account of the chart, found by its code or picked from the search dialog.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/data/Connection.h"

namespace kv {

class Session;

class clsAccount {
public:
    explicit clsAccount(Session& session) : session_(&session) {}

    std::string AccountCode, AccountTitle, AccountDesc, AccountType, AccountClass, GLGroup;
    std::string Subsidiary, IsBankAcct, BudgetClassID, WithSubCode;
    bool Found = false;

    using Place = std::source_location;

    /// The statement of the account search. Flag 1 finds a code, 2 counts the matches (RecCount), 0 lists them,
    /// 3 lists the master accounts.
    static std::string sp_Search(int Flag, std::string_view Text, std::string_view Mode);
    /// Looks the exact code up and takes its row; Found tells whether there was one.
    void Search(std::string_view Code, std::string_view Mode, Place at = Place::current());
    /// As typed into a field: a code is taken; anything else that matches opens the search dialog; "MAS" lists the
    /// master accounts. False: nothing was chosen, or "Item does not exists." has been shown.
    bool Validate(std::string_view Text, std::string_view Mode, Place at = Place::current());

private:
    void take(const Recordset& row);
    bool pickMaster();
    bool pick(std::string_view Text, std::string_view Mode);

    Session* session_;
};

}  // namespace kv
