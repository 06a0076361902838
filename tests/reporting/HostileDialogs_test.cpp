// Hostile texts through every kind of field of the reporting room: search boxes, code fields, free texts, grid cells.

#include <gtest/gtest.h>

#include "core/Session.h"
#include "ledger/CodeLookups.h"
#include "ledger/clsAccount.h"
#include "reporting/ctlGrid.h"
#include "reporting/frmSearchAcct.h"
#include "reporting/frmSearchVend.h"
#include "reporting/frmSelectDates.h"
#include "tests/data/HostileFields.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

using namespace std::string_literals;
using Titles = std::vector<std::string>;

class HostileDialogs : public testing::Test {
protected:
    void SetUp() override {
        before = dialogHooks();
        dialogHooks().message = [](const MessageBox&) { return Answer::Ok; };
        desk.cn().observe([this](std::string_view statement) { sent.emplace_back(statement); });
    }
    void TearDown() override { dialogHooks() = before; }
    /// Runs in the dialog; a search that it opens is given up.
    void inside(const std::function<void(Form&)>& work) {
        dialogHooks().modal = [work, first = true](Form& form) mutable {
            if (std::exchange(first, false)) work(form);
            form.Unload();
        };
    }
    static TextBox& box(Form& form, const char* name) { return dynamic_cast<TextBox&>(*form.control(name)); }

    DialogHooks before;
    std::vector<std::string> sent;
    Desk desk{freshHospital(scratchFolder(), "hostile.db")};
};

TEST_F(HostileDialogs, SearchBoxes) {
    frmSearchVend vendors(desk.session());
    vendors.SetMode("I", true);
    frmSearchAcct accounts(desk.session());
    accounts.SearchMasters();
    frmSearchAcct byProcedure(desk.session());
    byProcedure.Query = clsAccount::sp_Search(0, "##", "ALL");
    for (SearchDialog* dialog : {static_cast<SearchDialog*>(&vendors), static_cast<SearchDialog*>(&accounts),
                                 static_cast<SearchDialog*>(&byProcedure)}) {
        Titles broken{"never ran"};
        inside([&](Form&) {
            broken = test::fieldBreakers(
                dialog->txtSearchStr, [] {}, sent);
        });
        dialog->ShowDialog();
        EXPECT_EQ(broken, Titles()) << dialog->Query;
    }
}

TEST_F(HostileDialogs, CodeFieldsTakeNoApostropheAndLookUpOnlyValues) {
    std::string account, department, start, end;
    for (const char* name : {"txtAccount", "txtCstCtr"}) {
        frmSelectPeriodAccountCstCtr dialog(AccountLookup(desk.session()), CostCenterLookup(desk.session()));
        Titles apostrophes{"never ran"};
        Titles broken{"never ran"};
        inside([&](Form& form) {
            apostrophes = test::apostrophesIn(box(form, name));
            // what goes out first is the look-up of the exact text; how many match decides what follows. Of some texts
            // the field takes nothing.
            std::string plain;
            broken = test::fieldBreakers(
                box(form, name),
                [&] {
                    form.validateActive();
                    if (plain.empty()) plain = sent.front();
                    sent = {sent.empty() ? plain : sent.front()};
                },
                sent);
        });
        dialog.ShowDialog(account, department, start, end);
        EXPECT_EQ(apostrophes, Titles()) << name;
        EXPECT_EQ(broken, Titles()) << name;
    }
}

TEST_F(HostileDialogs, AFreeTextComesBackAsItWasPasted) {
    for (const test::HostileText& hostile : test::hostileTexts()) {
        if (hostile.text.size() > 50 || hostile.text.find_first_of("\r\n\0"s) != std::string::npos) continue;
        frmSelectDateMisc dialog;
        std::string start, end, misc, shown;
        dialogHooks().modal = [&](Form& form) {
            test::pasteInto(box(form, "txtPayee"), hostile.text);
            shown = box(form, "txtPayee").text();
            dialog.cmdOption0.press();
        };
        ASSERT_TRUE(dialog.ShowDialog(start, end, misc)) << hostile.title;
        EXPECT_EQ(misc, trimBlanks(shown)) << hostile.title;
        EXPECT_EQ(misc.find('\'') != std::string::npos, hostile.text.find('\'') != std::string::npos) << hostile.title;
    }
}

/// Lines whose first column is looked up as the journal's is, and whose second is a free text that a save would quote.
class frmHostileLines : public Form {
public:
    explicit frmHostileLines(Session& session) : Form("frmHostileLines", "Lines"), session_(session) {
        grd.FormatString("|<Code|<Particulars|>Amount");
        grd.SetColumnFilter(1, EntryFilter::UpperCase);
        grd.SetColumnFilter(3, EntryFilter::SignedNumber);
        grd.SetRows(2);
        grd.onValidateEntry = [this](bool& cancel) {
            if (grd.Col() == 1) session_.cn().Open(clsAccount::sp_Search(1, grd.TextEntry(), "ALL"));
            if (grd.Col() != 1) session_.cn().Open(sql("SELECT {} AS T").text(grd.TextEntry()).str());
            cancel = false;
        };
        setLayout(column({expand(grd)}));
    }
    ctlGrid grd{*this, "grd"};

private:
    Session& session_;
};

TEST_F(HostileDialogs, GridCellsByOnePasteAndByABlock) {
    frmHostileLines form(desk.session());
    form.Show();
    for (const int col : {1, 2, 3}) {
        for (const bool block : {false, true}) {
            const auto breakers = test::structureBreakers([&](const std::string& text) {
                form.grd.SetText(1, col, "");
                form.grd.setFocus();
                form.grd.moveTo(1, col);
                sent.clear();
                const std::string oneLine = replaceAll(replaceAll(text, "\r", " "), "\n", " ");
                setClipboard(block ? "\"" + replaceAll(oneLine, "\"", "\"\"") + "\"\t" : oneLine);
                sendKeys("{Ctrl+V}", true);
                form.grd.commit();
                form.grd.closeEditor();
                // a figure takes nothing of most texts, and what does not go out changes no statement
                if (sent.empty()) return std::string(col == 3 ? "SELECT '' AS T" : "nothing went out");
                return sent.front();
            });
            EXPECT_EQ(breakers, Titles()) << "column " << col << (block ? " in a block" : "");
        }
    }
    form.Unload();
}

}  // namespace
}  // namespace kv
