#pragma once
// BatchDocument: opens the batch behind a key such as "JV 2024-10002", wherever the key stands: a report, a check, a
// search.

#include <string_view>

namespace kv {

class Session;

/// Opens a batch of the JV, AR or CR book: to edit while it is entered and its month open, else as a page. The key is
/// the book or the type of the batch, a blank, and the batch's number. Tells the user when there is no such batch or
/// the book is not theirs. The session's book is the one before when it returns.
void OpenBatchDocument(Session& session, std::string_view key);

}  // namespace kv
