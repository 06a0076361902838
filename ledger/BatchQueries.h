#pragma once
// BatchQueries: the statements behind the lists of a book's batches.

#include <string>
#include <string_view>

namespace kv {

/// Unposted batches of the book, at most 5000: Batch, BatchDate, Particular, DisplayBatch.
std::string Query_Pending(std::string_view BookCode);
/// Batches to post (Period empty) or to unpost in a period.
std::string Query_Posting(std::string_view BookCode, std::string_view UnpostPeriod);
/// Marks one batch posted by an employee, or unposted (no employee).
std::string Query_SetPosted(std::string_view BookCode, std::string_view Batch, std::string_view Employee);
/// The header table of the AR, CR or JV book.
const char* headerTableOf(std::string_view BookCode);

/// Whether a batch number comes before another one: numbers of unequal length compare filled up from the left.
bool numberBefore(std::string_view number, std::string_view other);

/// Keys of list rows are "K" and the batch, so that a number can be a key.
std::string batchKey(std::string_view batch);
std::string batchOfKey(std::string_view key);

}  // namespace kv
