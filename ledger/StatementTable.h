#pragma once
// StatementTable: the statements and reports of the ledger as data: where each stands in the menu, what it asks, which
// template it opens and with which values.

#include <string>
#include <string_view>
#include <vector>

#include "reporting/ReportFrame.h"

namespace kv {

class Session;

/// The dialog that asks for the values.
enum class StatementDialog { EntPeriod, RepPrd, RepDate, SelectPeriod, SelectDate };
/// What txtEntity stands for; blank takes all of them.
enum class StatementEntity { None, Account, Department, Division, Group };
/// How the values reach the template.
enum class StatementBinding { Position, Name };

/// What the user chose. Periods as yyyyMM, days as yyyy-MM-dd; of a single period both are the same.
struct StatementChoice {
    std::string period1, period2;
    std::string date1, date2;
    std::string entity;
};

/// A value of the template: its name there, and its text with facts in braces ("As of {pdEnd|MMMM d, yyyy}").
struct StatementValue {
    const char* name;
    const char* text;
};

struct StatementRow {
    const char* entry;    ///< of the menu
    const char* section;  ///< the sub-menu it stands in
    const char* caption;  ///< of the menu
    const char* file;     ///< template
    const char* title;    ///< caption of the viewer
    const char* routine;  ///< what a failure names
    StatementDialog dialog;
    int mode;  ///< of frmEntPeriod, frmRepPrd and frmRepDate
    StatementEntity entity;
    StatementBinding binding;
    const std::vector<StatementValue>* values;
    const char* range;  ///< what {range} stands for in the values
    /// Values that only a routine can tell, behind the others.
    void (*more)(Session& session, const StatementChoice& choice, ReportParamsDictionary& values) = nullptr;
};

/// In the order of the menu; rows of one section stand together.
const std::vector<StatementRow>& statementRows();
/// nullptr when there is none.
const StatementRow* findStatement(std::string_view entry);
/// The report behind a mode of a dialog; nullptr when there is none.
const StatementRow* findStatement(StatementDialog dialog, int mode);

}  // namespace kv
