// Users and rights, parameters, the account search, and the master files.

#include "Books.h"
#include "platform/data/Statement.h"

namespace kv::server_test {

using Masters = Books;

TEST_F(Masters, RightsAndUsersOfTheDemoHospital) {
    EXPECT_EQ(one("SELECT COUNT(*) AS N FROM ACCESS WHERE UserID = 'E001' AND CanAccess = 1"),
              one("SELECT COUNT(*) AS N FROM ACCESSTYPES"));
    std::string rights;
    for (const Row& row : all("sp_Load_UserAccess 'E003'"))
        if (row[1].integer() == 1) rights += row[0].text() + " ";
    EXPECT_EQ(rights, "AR CRB JV HLINK ");
    EXPECT_EQ(cn->Open("sp_Load_UserAccess 'E005'").recordCount(), 0U);
    EXPECT_EQ(rows("sp_CheckUser 'e005'"), (std::vector<std::string>{"RAMOS|LIZA|MAE"}));
    EXPECT_EQ(cn->Open("sp_CheckUser 'E006'").recordCount(), 0U) << "an employee without this system";
    EXPECT_EQ(cn->Open("sp_CheckUser 'E999'").recordCount(), 0U);
}

TEST_F(Masters, TheUserLogKnowsWhoWorksOnWhichConnection) {
    const auto other = connect();
    EXPECT_EQ(other->Open("SELECT dbo.fn_SessionUser() AS U").at(0).text(), "");
    other->Execute("ACCOUNTING..sp_SaveUserLogs 'E003', 'ACCOUNTING', 'Open JV'");
    EXPECT_EQ(other->Open("SELECT dbo.fn_SessionUser() AS U").at(0).text(), "E003");
    EXPECT_EQ(one("SELECT dbo.fn_SessionUser() AS U"), "E001");
    EXPECT_EQ(rows("SELECT UserID, SystemName, LogText FROM UserLog ORDER BY LogID").back(), "E003|ACCOUNTING|Open JV");
}

TEST_F(Masters, AParameterIsReplacedWhereItStands) {
    const char* read = "SELECT Client, ParamValue, Description FROM PARAMETERS WHERE Code = 'CVPREFIX' ORDER BY Client";
    run("sp_Update_Parameters 'CVPrefix','CV-','Prefix'");
    run("sp_Update_Parameters 'CVPREFIX','CK-','Prefix of checks'");
    EXPECT_EQ(rows(read), (std::vector<std::string>{"DEMO|CK-|Prefix of checks"}));
    run("UPDATE PARAMETERS SET Client = '' WHERE Code = 'CVPREFIX'");
    run("sp_Update_Parameters 'CVPREFIX','','none'");
    EXPECT_EQ(rows(read), (std::vector<std::string>{"||none"})) << "no second row beside the common one";
    run("INSERT INTO PARAMETERS (Code, Client, ParamValue) VALUES ('CVPREFIX', 'OTHER', 'X')");
    run("sp_Update_Parameters 'CVPREFIX','N-','none'");
    EXPECT_EQ(rows(read), (std::vector<std::string>{"|N-|none", "OTHER|X|"}));
    EXPECT_EQ(refused("sp_Update_Parameters '','x',''").substr(0, 5), "50001");
}

TEST_F(Masters, TheAccountSearchHasFourFlags) {
    struct Case {
        const char* statement;
        std::size_t count;
        const char* first;
    };
    const Case table[] = {
        {"sp_Search_Acct '1','1101','ALL'", 1, "1101"},
        {"sp_Search_Acct '1','110','ALL'", 0, ""},
        {"sp_Search_Acct '1','1100','ALL'", 0, ""},  // a master account takes no lines
        {"sp_Search_Acct '1','1111','BANK'", 1, "1111"},
        {"sp_Search_Acct '1','1101','BANK'", 0, ""},
        {"sp_Search_Acct '1','4101','EX'", 0, ""},
        {"sp_Search_Acct '2','petty cash','ALL'", 1, "2"},
        {"sp_Search_Acct '2','EXAMPLE BANK','ALL'", 1, "5"},  // a part of the title
        {"sp_Search_Acct '2','111','ALL'", 1, "6"},           // the beginning of a code
        {"sp_Search_Acct '2','no such','ALL'", 1, "0"},
        {"sp_Search_Acct '2','_','ALL'", 1, "0"},  // no wildcard but %
        {"sp_Search_Acct '2','[a-z]','ALL'", 1, "0"},
        {"sp_Search_Acct '0','PETTY','ALL'", 2, "PETTY CASH FUND - ADMINISTRATION"},
        {"sp_Search_Acct '3','CASH','ALL'", 1, "CASH AND CASH EQUIVALENTS"},
    };
    for (const Case& one : table) {
        const Recordset found = cn->Open(one.statement);
        ASSERT_EQ(found.recordCount(), one.count) << one.statement;
        if (one.count > 0) {
            EXPECT_EQ(found.at(0).text(), one.first) << one.statement;
        }
    }
    EXPECT_EQ(
        cn->Open("sp_Search_Acct '0','','ALL'").recordCount() + cn->Open("sp_Search_Acct '3','%','ALL'").recordCount(),
        std::stoul(one("SELECT COUNT(*) AS N FROM AcctCode")));
    const Recordset found = cn->Open("sp_Search_Acct '1','6101','ALL'");
    for (const char* column : {"Code", "Description", "Type", "Subsidiary", "IsBankAcct", "Class", "GLGroup"})
        EXPECT_TRUE(found.has(column)) << column;
    EXPECT_EQ(refused("sp_Search_Acct '7','x','ALL'").substr(0, 5), "50001");
}

TEST_F(Masters, TitlesCarryTheCostCentre) {
    EXPECT_EQ(one("select dbo.fn_AccountTitle( '1101','') as Description from [SYS]"), "CASH ON HAND");
    EXPECT_EQ(one("select dbo.fn_AccountTitle( '1101','1010') as Description from [SYS]"), "CASH ON HAND - LABORATORY");
    EXPECT_EQ(one("select dbo.fn_AccountTitle( '1101','9999') as Description from [SYS]"), "CASH ON HAND");
    EXPECT_EQ(one("select dbo.fn_AccountTitle( '0000','1010') as Description from [SYS]"), "");
}

TEST_F(Masters, AnAccountTakesTypeAndClassFromItsGroup) {
    run("sp_Update_AcctCode '6999', 'NEW EXPENSE', '', '', '', '', '606', 1, '1010', ''");
    run("sp_Update_AcctVend '6999', 'V0001'");
    Recordset account = cn->Open("sp_Load_Acct '6999'");
    EXPECT_EQ(account["Type"].text() + account["Class"].text() + account["GLDescription"].text(),
              "EXCADMINISTRATIVE EXPENSES");
    EXPECT_EQ(account["DefaultDeptDesc"].text() + "/" + account["Company"].text(),
              "LABORATORY/FIRST GENERIC PHARMA SUPPLY INC");
    run("sp_Update_GLGroup '606', 'ADMINISTRATION', 'EX', 'P', ''");
    EXPECT_EQ(one("SELECT Class FROM AcctCode WHERE Code = '6999'"), "P");
    run("UPDATE AcctCode SET IsBankAcct = 1 WHERE Code = '6999'");
    run("sp_Update_AcctCode '6999', 'RENAMED', '', '', '', '', '606', 0, '', ''");
    EXPECT_EQ(rows("SELECT Description, Subsidiary, IsBankAcct FROM AcctCode WHERE Code = '6999'"),
              (std::vector<std::string>{"RENAMED|0|True"}));
}

TEST_F(Masters, WrongMastersAreRefused) {
    enter("JV", "1", "2024-03-15", simple("1.00"));
    run("sp_Update_GLGroup '1011', 'X', 'AS', 'C', '101'");
    run("sp_Update_GLGroup '1012', 'X', 'AS', 'C', '1011'");
    const std::pair<const char*, const char*> table[] = {
        {"sp_Update_AcctCode '', 'X', '', '', '', '', '606', 0", "50001"},
        {"sp_Update_AcctCode '6999', ' ', '', '', '', '', '606', 0", "50001"},
        {"sp_Update_AcctCode '6999', 'X', '', '', '', '', '999', 0", "50002"},
        {"sp_Update_AcctCode '1999', 'X', '', '', '', '', '101', 1", "50007"},
        {"sp_Update_AcctCode '1101', 'X', '', '', '', 'MAS', '101', 0", "50008"},
        {"sp_Update_GLGroup '606', 'X', 'EX', 'C', '606'", "50002"},
        {"sp_Update_GLGroup '606', 'X', 'ZZ', 'C', ''", "50001"},
        {"sp_Update_GLGroup '101', 'X', 'AS', 'C', '1012'", "50002"},  // below one of its own groups
        {"sp_Update_GLGroup '606', 'X', 'AS', 'C', ''", "50007"},      // its accounts have departments
        {"sp_Update_CstCtr '', 'X', '', ''", "50001"},
        {"sp_Update_Terms 20, ''", "50001"},
    };
    for (const auto& [statement, number] : table) EXPECT_EQ(refused(statement).substr(0, 5), number) << statement;
}

TEST_F(Masters, WhatIsUsedIsKnown) {
    enter("JV", "1", "2024-03-15", {{"1105", "1.00", "0", ""}, {"1121", "0", "1.00", ""}});
    const auto used = [&](const std::string& code) { return cn->Open("sp_VerifyAcct '" + code + "'").recordCount(); };
    EXPECT_EQ(used("1105"), 1U) << "a line";
    EXPECT_EQ(used("1114"), 1U) << "a bank";
    EXPECT_EQ(used("3203"), 1U) << "a setting";
    EXPECT_EQ(used("1301"), 1U) << "a payable type";
    EXPECT_EQ(used("1104"), 0U);
    EXPECT_GT(cn->Open("sp_VerifyGLGroup '101'").recordCount(), 0U);
    run("sp_Update_GLGroup '999', 'EMPTY', 'AS', 'C', '101'");
    EXPECT_EQ(cn->Open("sp_VerifyGLGroup '999'").recordCount(), 0U);
    EXPECT_EQ(rows("sp_VerifyGLGroup '101'").back(), "999|EMPTY");
}

TEST_F(Masters, CostCentresAndTermsInUseAreKnown) {
    enter("JV", "1", "2024-03-15", {{"6101", "1.00", "0", "1010"}, {"1121", "0", "1.00", ""}});
    run("INSERT INTO INVENTORY.dbo.tbInvLocation (LocationID, Location) VALUES ('MAIN', 'MAIN STOCK ROOM')");
    run("INSERT INTO CSTCTRLOCATION (LocationID, CstCtr) VALUES ('MAIN', '1020')");
    run("INSERT INTO CSTCTRLOCATION (LocationID, CstCtr) VALUES ('GONE', '1030')");
    EXPECT_EQ(rows("sp_VerifyCstCtr '1010'"), (std::vector<std::string>{"journal voucher"}));
    EXPECT_EQ(rows("sp_VerifyCstCtr '1020'"), (std::vector<std::string>{"inventory location"}));
    EXPECT_EQ(cn->Open("sp_VerifyCstCtr '1040'").recordCount(), 0U);
    EXPECT_EQ(rows("sp_VerifyTerms '4'").front(), "vendor");
    run("sp_Update_Terms 88, 'NEW', 8, 'A'");
    EXPECT_EQ(cn->Open("sp_VerifyTerms '88'").recordCount(), 0U);
    // found by either name; a location that the inventory no longer has keeps its cost centre
    EXPECT_EQ(rows("sp_Search_Inv_Location 'main'"),
              (std::vector<std::string>{"BLOOD BANK|1020|MAIN STOCK ROOM|MAIN"}));
    EXPECT_EQ(rows("sp_Search_Inv_Location 'RADIO'"), (std::vector<std::string>{"RADIOLOGY|1030||GONE"}));
    EXPECT_EQ(cn->Open("sp_Search_Inv_Location ''").recordCount(), 2U);
}

/// One call makes the row, the second replaces it.
TEST_F(Masters, EveryUpdateCreatesThenReplaces) {
    struct Case {
        const char* first;
        const char* second;
        const char* read;
        const char* expected;
    };
    const Case table[] = {
        {"sp_Update_CstCtr @CODE='9', @DESCRIPTION='A', @DIVISION='', @DEPTCODE='1'", "sp_Update_CstCtr '9','B','','2'",
         "SELECT Description, DeptCode FROM CstCtr WHERE CstCtr = '9'", "B|2"},
        {"sp_Update_RevCtr '9','A'", "sp_Update_RevCtr '9','B'", "SELECT Description FROM RevCtr WHERE RevCtr = '9'",
         "B"},
        {"sp_Update_Departments '9','A'", "sp_Update_Departments '9','B'",
         "SELECT DEPARTMENT FROM DEPARTMENTS WHERE CODE = '9'", "B"},
        {"sp_Update_Equity '3101','A'", "sp_Update_Equity '3101','B'", "SELECT Description, Kind FROM EQUITY",
         "B|ISSUED"},
        {"sp_Update_Terms 20,'A',5,'A'", "sp_Update_Terms 20,'B',6,'I'",
         "SELECT Terms, NoDays, Status FROM TERMS WHERE TermsID = 20", "B|6|I"},
        {"sp_Update_AcctClass '1','A','A',''", "sp_Update_AcctClass '1','B','I','2'",
         "SELECT Classification, Status, PaymentID FROM AcctCodeClass", "B|I|2"},
        {"sp_Update_PayableType '30','A','A','0','1301','2101','',''",
         "sp_Update_PayableType '30','B','I','0','','2101','',''",
         "SELECT Description, Status, AcctCode, APAcct FROM APTYPE WHERE Code = 30", "B|I||2101"},
    };
    for (const Case& one : table) {
        run(one.first);
        run(one.second);
        EXPECT_EQ(rows(one.read), (std::vector<std::string>{one.expected})) << one.first;
    }
}

TEST_F(Masters, VendorsShowOneName) {
    EXPECT_EQ(one("SELECT Vendor FROM vwVENDOR WHERE VendorID = 'V0001'"), "FIRST GENERIC PHARMA SUPPLY INC");
    run("INSERT INTO VEND (VendorID, LastName, FirstName, MiddleName) VALUES ('X1', 'CRUZ', 'ANA', '')");
    EXPECT_EQ(one("SELECT Vendor FROM vwVENDOR WHERE VendorID = 'X1'"), "CRUZ, ANA");
}

}  // namespace kv::server_test
