#pragma once
// ReportDialogs: frmRepPrd and frmRepDate ask the months, or the days, of a report of the books, with what it is about.

#include <string>

#include "ledger/StatementTable.h"
#include "reporting/SelectDialog.h"

namespace kv {

/// How a code of this kind is found; empty for none.
CodeLookup entityLookup(Session& session, StatementEntity entity);
/// "&Account :"; nullptr for none.
const char* entityCaption(StatementEntity entity);

/// Two periods with an entity, which may be blank for all.
class frmRepPrd : public SelectDialog {
public:
    frmRepPrd(Session& session, const char* caption, StatementEntity entity);
    /// The code of the entity and two Periods "yyyyMM".
    bool ShowDialog(std::string& Entity, std::string& Period1, std::string& Period2);

private:
    bool hasEntity_;
};

/// Two days.
class frmRepDate : public SelectDialog {
public:
    explicit frmRepDate(const char* caption);
    /// Two dates "yyyy-MM-dd".
    bool ShowDialog(std::string& StartDate, std::string& EndDate) { return ask({&StartDate, &EndDate}); }
};

}  // namespace kv
