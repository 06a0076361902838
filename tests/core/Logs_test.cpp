// The two logs as screens write them.

#include <gtest/gtest.h>

#include "core/module1.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

TEST(CheckVoucherLog, SaysAddedBeforeTheFirstSaveAndEditedAfterIt) {
    Desk desk(freshHospital(scratchFolder()));
    module1::SaveCDBAuditLog(desk.session(), "000001", "1111");
    desk.cn().Execute("INSERT INTO CDB (CVNo, CVDate, Period) VALUES ('000001', '2024-03-15', '202403')");
    module1::SaveCDBAuditLog(desk.session(), "000001", "1111");
    EXPECT_EQ(
        desk.ask(
            "SELECT UserID + '|' + Book + '|' + Reference + '|' + Extra + '|' + LogText FROM AuditLog WHERE LogID = 1"),
        "E001|CDB|000001|1111|Added on CV No : 000001");
    EXPECT_EQ(desk.ask("SELECT LogText FROM AuditLog WHERE LogID = 2"), "Edited on CV No : 000001");
}

TEST(UserLog, TakesItsTextAsItStandsAndBlamesTheCallersLine) {
    Desk desk(freshHospital(scratchFolder()));
    module1::SaveUserLog(desk.session(), "Open AP");
    EXPECT_EQ(desk.ask("SELECT UserID + '|' + SystemName + '|' + LogText FROM UserLog"), "E001|ACCOUNTING|Open AP");
    unsigned line = 0;
    try {
        line = std::source_location::current().line() + 1;
        module1::SaveUserLog(desk.session(), "Opened O'Brien's book");
        FAIL() << "an apostrophe ends the text";
    } catch (const Error& failure) {
        EXPECT_EQ(failure.line, line);
    }
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM UserLog"), "1");
}

}  // namespace
}  // namespace kv
