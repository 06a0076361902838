#pragma once
// EntryFilter: what may be typed into a column of the editable grid, and how a cell is written back on leaving it.

#include <string>
#include <string_view>

namespace kv {

enum class EntryFilter : int {
    Free = 0,
    UpperCase = 1,
    SignedNumber = 2,
    PositiveNumber = 3,
    DateText = 4,
};

/// The part of `typed` (one key, or a pasted text) that the filter takes; `kept` is what stands in the editor beside
/// it.
std::string filterKeys(EntryFilter filter, std::string_view typed, std::string_view kept);

/// The text as it is written back: numbers by the number format, dates in the short form, anything else as typed.
std::string writtenBack(EntryFilter filter, const std::string& text);

/// Why a text cannot stand in the column, in the words that the user reads; empty when it can. Numbers have at most
/// twelve digits before the point: up to there every centavo is kept.
std::string entryFault(EntryFilter filter, std::string_view text);

/// A cell of a spreadsheet as it would be typed here: numbers without their grouping, "(12.50)" and "12.50-" with the
/// sign in front, "-" as nothing, dates in the short form.
std::string pastedEntry(EntryFilter filter, std::string_view text);

}  // namespace kv
