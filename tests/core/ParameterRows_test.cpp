// The rows of table PARAMETERS as a session takes them.

#include <gtest/gtest.h>

#include "core/Session.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

TEST(ParameterRows, OfTheHospitalAndOfAllAreReadThoseOfOthersAreNot) {
    Desk desk(freshHospital(scratchFolder()));
    desk.cn().Execute(
        "INSERT INTO PARAMETERS (Code, Client, ParamValue) VALUES ('JVPREFIX', 'OTHER', 'X-'), ('CVPREFIX', 'DEMO', "
        "'C-'), ('VoucherPrefix', '', 'V-'), ('enabledebitmemo', 'DEMO', 'N'), ('CHECKFORMAT', '', NULL), "
        "('REPORTVAT', '', NULL), ('USELISTCDB', 'OTHER', 'N')");
    clsParameters& p = desk.session().Parameters;
    p.LoadParameters("DEMO");
    EXPECT_EQ(p.JVPrefix() + p.CVPrefix() + p.VoucherPrefix(), "C-V-");
    EXPECT_FALSE(p.EnableDebitMemo());
    EXPECT_TRUE(p.UseListCDB());
    EXPECT_EQ(p.CheckFormat(), "000000");
    EXPECT_EQ(p.ReportVAT(), "") << "a value that is not there is an empty one";
    // what has gone is forgotten
    desk.cn().Execute("DELETE FROM PARAMETERS WHERE Code = 'enabledebitmemo'");
    p.LoadParameters("OTHER");
    EXPECT_TRUE(p.EnableDebitMemo());
    EXPECT_EQ(p.JVPrefix() + p.CVPrefix() + p.VoucherPrefix(), "X-V-");
}

TEST(ParameterRows, DoctorsAccountsComeFromElsewhereWhereTheyAreNotSet) {
    Desk desk(freshHospital(scratchFolder()));
    clsParameters& p = desk.session().Parameters;
    EXPECT_EQ(p.DrPayableCode() + " " + p.DrWTaxCode(), "2201 2305");
    desk.cn().Execute("DELETE FROM PARAMETERS WHERE Code IN ('DrPayableCode', 'DrWTaxCode')");
    desk.cn().Execute("INSERT INTO RevenueCode (RevenueID, CashAcct) VALUES ('MD', '2206')");
    desk.cn().Execute("UPDATE SYS SET WTax = '2307', VerifiedBy = 'V', ApprovedBy = 'A'");
    p.LoadParameters("DEMO");
    EXPECT_EQ(p.DrPayableCode() + " " + p.DrWTaxCode(), "2206 2307");
    EXPECT_EQ(p.VerifiedBy() + p.ApprovedBy(), "VA");
}

TEST(ParameterRows, AnUpdateReplacesTheRowThatCountsAndLeavesThePropertyAlone) {
    Desk desk(freshHospital(scratchFolder()));
    clsParameters& p = desk.session().Parameters;
    desk.cn().Execute(
        "INSERT INTO PARAMETERS (Code, Client, ParamValue) VALUES ('NOTEDBY', '', 'ALL'), ('CVPREFIX', 'DEMO', 'C-')");
    p.LoadParameters("DEMO");
    p.UpdateParameters("NotedBy", " O'Brien ", "Person to note");
    p.UpdateParameters("CVPrefix", "K-", "Prefix");
    p.UpdateParameters("ReviewName", "NEW", "Person to review");
    EXPECT_EQ(p.NotedBy(), "ALL");
    p.LoadParameters("DEMO");
    EXPECT_EQ(p.NotedBy() + "|" + p.CVPrefix() + "|" + p.ReviewedBy(), "O'Brien|K-|NEW");
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM PARAMETERS WHERE Code IN ('NOTEDBY', 'CVPREFIX', 'REVIEWNAME')"), "3");
    EXPECT_EQ(desk.ask("SELECT Client + '|' + Description FROM PARAMETERS WHERE Code = 'REVIEWNAME'"),
              "DEMO|Person to review");
}

}  // namespace
}  // namespace kv
