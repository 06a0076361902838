#pragma once
// Formats of values on paper and in spreadsheets: one pattern says how a cell shows its value.

#include <string>
#include <string_view>

#include "platform/data/Value.h"

namespace kv {

/// The text of a value. Number patterns are "#,##0.00", with up to three parts "positive;negative;zero", e.g.
/// "#,##0.00;(#,##0.00);-"; a "%" shows hundredths. Date patterns are those of Format(Date). An empty pattern gives the
/// usual form of the type: amounts "#,##0.00", dates "MM/dd/yyyy", yes and no. A text ignores number patterns.
std::string formatCell(const Value& value, std::string_view pattern);

/// The same pattern in a spreadsheet's words; empty for texts.
std::string spreadsheetFormat(const Value& value, std::string_view pattern);

/// True for a pattern that can draw a number or a date; `why` names what is wrong otherwise.
bool isCellFormat(std::string_view pattern, std::string& why);

}  // namespace kv
