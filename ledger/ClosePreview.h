#pragma once
// ClosePreview: what closing a book's month would bring into the ledger, and what stands in its way.

#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Money.h"
#include "platform/data/Connection.h"
#include "platform/forms/Lists.h"

namespace kv {

struct PreviewBatch {
    std::string batch;    ///< internal number
    std::string display;  ///< the number users see
    std::string date;     ///< "yyyy-MM-dd"
    std::string particular;
    Money debit, credit;
    bool posted = false;
    std::string trouble;  ///< empty, "unbalanced" or "not posted"
};

struct ClosePreview {
    std::vector<PreviewBatch> batches;  ///< those with trouble first
    Money debit, credit;
    int unposted = 0;
    int unbalanced = 0;
    bool closed = false;  ///< the ledger holds the month already: a close replaces it
    bool ready() const { return unposted == 0 && unbalanced == 0; }
};

ClosePreview readClosePreview(Connection& cn, std::string_view book, std::string_view period);
/// "3 batches, debit 1,250.00, credit 1,250.00".
std::string totalsText(const ClosePreview& preview);
/// What stands in the way, in a sentence; empty when nothing does and the month is open.
std::string troubleText(const ClosePreview& preview);

/// The batches as a list shows them: number, date, particulars, debit, credit, state; the key is what opens the batch.
const std::vector<ListColumn>& previewColumns();
std::vector<ListView::Item> previewItems(const ClosePreview& preview, std::string_view book);

}  // namespace kv
