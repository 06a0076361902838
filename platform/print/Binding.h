#pragma once
// Binding: gives every name in a template's expressions its meaning, and collects the totals they ask for.

#include "platform/print/Template.h"

namespace kv {

/// A total over the rows of its scope: which values, how, how far.
struct BoundTotal {
    TotalKind kind = TotalKind::Sum;
    int series = 0;            ///< index into the distinct expressions that are totalled
    int scope = kScopeReport;  ///< kScopePage, kScopeReport, or a group
};

struct Binding {
    std::vector<Expression> series;
    std::vector<BoundTotal> totals;
    std::map<int, std::vector<Expression>> columnTotals;  ///< by scope, one for each column
};

/// Columns of each source; `known` false: not told yet, any name is taken.
struct KnownFields {
    std::vector<Field> fields;
    bool known = false;
};

/// Binds what works on raw rows: where, sort, the cross-tab's own expressions.
void bindRowExpressions(Template& report, const std::vector<KnownFields>& fields, std::vector<Mistake>& mistakes);
/// Binds everything else.
Binding bindTemplate(Template& report, const std::vector<KnownFields>& fields, std::vector<Mistake>& mistakes);

}  // namespace kv
