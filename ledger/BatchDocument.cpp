#include "ledger/BatchDocument.h"

#include "core/MainMenu.h"
#include "core/Session.h"
#include "core/module1.h"
#include "ledger/frmJournEntry.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"
#include "reporting/ReportFrame.h"

namespace kv {
namespace {

/// The book that keeps batches of this type; nullptr for the types of other rooms.
const BookEntry* batchBook(std::string_view type) {
    // year-end adjustments are batches of the JV book
    const BookEntry* book = findBook(type == "YE" ? "JV" : type);
    return book && std::string_view(book->screen) == "frmGeneral" ? book : nullptr;
}

void openBatch(Session& session, const BookEntry& book, std::string_view batch) {
    const Recordset found = session.cn().Open(
        sql("SELECT Period, Posted, Cancelled FROM dbo.vwBookBatch WHERE Book = '{}' AND Batch = '{}'")
            .text(book.code)
            .text(batch));
    if (found.eof()) {
        MsgBox("There is no batch " + std::string(batch) + " in the " + book.name + ".", Icon::Exclamation);
        return;
    }
    const BookForAWhile selected(session, book);
    const bool entered = !found["Posted"].boolean() && !found["Cancelled"].boolean();
    if (!entered || !module1::IsBookOpen(session.cn(), book.code, found["Period"].text())) {
        module1::rptBatchJournal(session, book.code, batch, batch);
        return;
    }
    frmJournEntry entry(session);
    entry.Edit(batch);
    entry.ShowModal();
}

}  // namespace

void OpenBatchDocument(Session& session, std::string_view key) {
    const std::size_t blank = key.find(' ');
    if (blank == std::string_view::npos) return;
    const std::string_view type = key.substr(0, blank), batch = key.substr(blank + 1);
    const BookEntry* book = batchBook(type);
    if (!book) {
        MsgBox("This version opens no documents of the type " + std::string(type) + ".", Icon::Information);
    } else if (!session.UserAccess.CanAccess(rightOf(book->button))) {
        MsgBox(std::string("You have no right to open the ") + book->name + ".", Icon::Exclamation);
    } else {
        openBatch(session, *book, batch);
    }
}

}  // namespace kv
