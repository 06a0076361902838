// The way from a key such as "JV 12" to its batch: what opens, what is refused, and the book that stays selected.

#include "ledger/BatchDocument.h"

#include <gtest/gtest.h>

#include "platform/base/Error.h"
#include "platform/forms/Form.h"
#include "platform/forms/QuietDialogs.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

class BatchDocument : public testing::Test {
protected:
    BatchDocument() {
        desk_.openBook("CR");
        session().UserAccess.LoadSettings(desk_.cn(), "E001");
    }
    Session& session() { return desk_.session(); }
    /// What opens or is said: "frmJournEntry JV" with the book that is selected then, else the text of the box.
    std::string opened(const std::string& key) {
        const DialogHooks before = dialogHooks();
        std::string seen;
        dialogHooks().message = [&](const MessageBox& box) {
            seen += box.text;
            return Answer::Yes;
        };
        dialogHooks().modal = [&](Form& form) {
            seen += std::string(form.name()) + " " + session().BookCode();
            form.Hide();
        };
        OpenBatchDocument(session(), key);
        dialogHooks() = before;
        EXPECT_EQ(session().BookCode(), "CR") << key;
        return seen;
    }
    std::string saved(const std::string& book) {
        desk_.openBook(book);
        JournalBatch batch = balancedBatch(book == "YE" ? "JV" : book, 2);
        SaveJournalBatch(session(), batch);
        desk_.openBook("CR");
        return batch.Batch;
    }
    Desk desk_{freshHospital(scratchFolder(), "documents.db")};
};

TEST_F(BatchDocument, OpensToEditWhileEnteredElseAsAPage) {
    const std::string jv = saved("JV"), ar = saved("AR");
    EXPECT_EQ(opened("JV " + jv), "frmJournEntry JV");
    EXPECT_EQ(opened("YE " + jv), "frmJournEntry JV");
    EXPECT_EQ(opened("AR " + ar), "frmJournEntry AR");
    desk_.cn().Execute("UPDATE dbo.JV SET Posted = 1 WHERE Batch = '" + jv + "'");
    EXPECT_EQ(opened("JV " + jv), "frmReportViewer JV");
}

TEST_F(BatchDocument, TellsWhatItCannotOpen) {
    const std::string jv = saved("JV");
    EXPECT_EQ(opened("nothing"), "");
    EXPECT_EQ(opened("JV 999"), "There is no batch 999 in the Journal Vouchers Book.");
    EXPECT_EQ(opened("JV 1' OR '1'='1"), "There is no batch 1' OR '1'='1 in the Journal Vouchers Book.");
    EXPECT_EQ(opened("XX 1"), "This version opens no documents of the type XX.");
    session().UserAccess.LoadSettings(desk_.cn(), "nobody");
    EXPECT_EQ(opened("JV " + jv), "You have no right to open the Journal Vouchers Book.");
}

TEST_F(BatchDocument, AScreenWithoutDocumentsIsNamed) {
    Screens screens;
    std::string key;
    screens.add({"frmA", "ledger", "A", "", "", {}, [&](Session&, std::string_view k) { key = k; }});
    screens.add({"frmB", "ledger", "B", "", "", {}});
    EXPECT_TRUE(screens.hasDocuments("frmA"));
    EXPECT_FALSE(screens.hasDocuments("frmB"));
    screens.openDocument(session(), "frmA", "7");
    EXPECT_EQ(key, "7");
    EXPECT_THROW(screens.openDocument(session(), "frmB", "7"), Error);
    EXPECT_THROW(screens.openDocument(session(), "frmC", "7"), Error);
}

}  // namespace
}  // namespace kv
