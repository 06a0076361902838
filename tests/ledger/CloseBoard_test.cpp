// The state of a book's month as the cockpit tells it.

#include "ledger/CloseBoard.h"

#include <gtest/gtest.h>

#include "ledger/BatchQueries.h"
#include "ledger/ClosePreview.h"

namespace kv {
namespace {

TEST(CloseBoard, TellsTheStateThatMattersMost) {
    const struct {
        MonthFacts facts;  // batches, unposted, unbalanced, closed, reopened
        bool posting;
        bool later;
        const char* text;
        Tint tint;
    } cases[] = {
        {{0, 0, 0, false, false}, true, true, "-", Tint::Idle},
        // a month that is over wants its close, with or without batches
        {{0, 0, 0, false, false}, true, false, "open", Tint::Noted},
        {{4, 0, 0, false, false}, true, true, "open", Tint::Noted},
        {{4, 3, 0, false, false}, true, false, "3 unposted", Tint::Waiting},
        // where hospitals do not post, unposted batches stand in no way
        {{4, 3, 0, false, false}, false, false, "open", Tint::Noted},
        {{1200, 1100, 0, false, true}, true, false, "1,100 unposted", Tint::Waiting},
        {{4, 3, 2, false, true}, true, false, "2 unbalanced", Tint::Bad},
        {{4, 0, 0, false, true}, true, false, "reopened", Tint::Waiting},
        {{4, 1, 0, true, false}, true, false, "closed", Tint::Good},
    };
    for (const auto& one : cases) {
        BoardCell cell;
        cell.facts = one.facts;
        cell.state = monthState(one.facts, one.posting, one.later);
        EXPECT_EQ(cellText(cell), one.text);
        EXPECT_EQ(cellTint(cell.state), one.tint) << one.text;
    }
}

TEST(CloseBoard, TellsWhoDidWhatAndWhy) {
    BoardCell cell;
    cell.lastAt = "03/31/2024 17:30";
    cell.lastBy = "E001";
    cell.facts.closed = true;
    cell.state = MonthState::Closed;
    EXPECT_EQ(cellStory(cell), "Closed on 03/31/2024 17:30 by E001.");
    cell.facts = {2, 0, 0, false, true};
    cell.lastReason = "late charges";
    cell.state = MonthState::Reopened;
    EXPECT_EQ(cellStory(cell), "Opened again on 03/31/2024 17:30 by E001: late charges");
    cell.state = MonthState::Stale;
    EXPECT_NE(cellStory(cell).find("the ledger has changed since"), std::string::npos);
}

TEST(ClosePreview, NamesWhatTheCloseWillRefuse) {
    ClosePreview preview;
    EXPECT_EQ(troubleText(preview), "");
    EXPECT_TRUE(preview.ready());
    preview.closed = true;
    EXPECT_NE(troubleText(preview).find("replaces"), std::string::npos);
    preview.unbalanced = 1;
    preview.unposted = 2;
    EXPECT_EQ(troubleText(preview), "1 batch does not balance, 2 batches are not posted: the close will be refused.");
    EXPECT_FALSE(preview.ready());
}

TEST(BatchRange, NumbersCompareByTheirValue) {
    EXPECT_TRUE(numberBefore("9", "10"));
    EXPECT_FALSE(numberBefore("10", "9"));
    EXPECT_FALSE(numberBefore("10", "0010"));
    EXPECT_TRUE(numberBefore("JVD03-001-24", "JVD03-002-24"));
}

}  // namespace
}  // namespace kv
