// Files as they come: what is refused with which words, what is repaired, and that a failing store leaves nothing.

#include "ledger/MasterImports.h"

#include <gtest/gtest.h>

#include "tests/desk/Desk.h"

namespace kv {
namespace {

const ImportKind& kindOf(const std::string& title) {
    for (const ImportKind& kind : importKinds()) {
        if (kind.title == title) return kind;
    }
    throw Error(5, "test", "no kind " + title);
}

std::string faultsOf(Connection& cn, const std::string& title, const std::string& bytes, bool replace = false) {
    std::string all;
    for (const ImportFault& fault : previewImport(cn, kindOf(title), bytes, replace).faults) {
        all += std::to_string(fault.line) + "|" + fault.column + "|" + fault.reason + "\n";
    }
    return all;
}

class Imports : public ::testing::Test {
protected:
    Desk desk{freshHospital(scratchFolder())};
    Connection& cn = desk.cn();
};

TEST_F(Imports, EachFaultIsNamedByLineColumnAndReason) {
    struct Case {
        const char* title;
        std::string file;
        const char* faults;
    };
    const std::string tooLong(101, 'X');
    const Case cases[] = {
        {"Cost centers", "", "1||The file is empty.\n"},
        {"Cost centers", "\xEF\xBB\xBF", "1||The file is empty.\n"},
        {"Cost centers", "Code,Name\r\n", "1||The file has no row below its heading.\n"},
        {"Cost centers", "Code,Dept\r\n1,2\r\n", "1|Description|The heading lacks this column.\n"},
        {"Cost centers", "Code,Name,Code\r\n1,2,3\r\n", "1|CstCtr|The heading has this column twice.\n"},
        {"Cost centers", "Code,Name\r\n9901,A,B\r\n", "2||The row has 3 fields, the heading has 2.\n"},
        {"Cost centers", "Code,Name\r\n9901,\"A\r\n9902,B\r\n", "2||A quote is never closed.\n"},
        {"Cost centers", "Code,Name\n\n9901,\"A\nB\"\n9901,C\n",
         "3|Description|The text has more than one line.\n5|CstCtr|'9901' stands in line 3 already.\n"},
        {"Cost centers", "Code,Name\n990100000011,A\n", "2|CstCtr|The text has 12 characters, 10 are possible.\n"},
        {"Cost centers", "Code,Name\n9'1," + tooLong + "\n",
         "2|CstCtr|A code cannot hold an apostrophe.\n2|Description|The text has 101 characters, 100 are possible.\n"},
        {"Cost centers", "Code,Name,DeptCode\n9901,A,77\n", "2|DeptCode|There is no department '77'.\n"},
        {"Cost centers", "Code,Name\n9901, \n1010,A\n",
         "2|Description|Nothing stands here.\n3|CstCtr|'1010' already exists.\n"},
        {"Chart of accounts", "Code,Title,Group,Type\n6999,A,606,AS\n6998,B,606,XX\n",
         "2|Type|The group 606 is of type EX.\n3|Type|'XX' is none of AS, LI, EQ, IN, EX.\n"},
        {"Chart of accounts", "Code,Title,Group,Subsidiary\n6999,A,606,2\n", "2|Subsidiary|0 or 1 is expected.\n"},
        {"GL groups", "Group,Title,Type,Class,MainGroup\n700,A,EX,Z,\n701,B,EX,C,702\n702,C,EX,C,701\n703,D,EX,C,703\n",
         "2|Class|The type EX has no class 'Z'.\n3|MainGroup|There is no group '702'.\n"
         "5|MainGroup|There is no group '703'.\n"},
        {"Vendors", "VendorID,Company,VatRate,APTerm\nX1,,,\nX2,A,101,\nX3,A,x,99\n",
         "2|Company|Neither a company nor a last name stands here.\n"
         "3|VatRate|A percentage from 0 to 100 is expected.\n4|VatRate|A percentage from 0 to 100 is expected.\n"
         "4|APTerm|There is no terms '99'.\n"},
        {"Vendors", "\xFF\xFEV\0e\0", "1||The file is UTF-16. Save it as CSV UTF-8.\n"},
    };
    for (const Case& one : cases) EXPECT_EQ(faultsOf(cn, one.title, one.file), one.faults) << one.file;
}

TEST_F(Imports, WhatSpreadsheetsWriteIsTaken) {
    // a mark at the start, CR LF, quotes, a cleared row, small letters in a code, Windows letters
    const std::string file =
        "\xEF\xBB\xBF\"Vendor ID\",Company,last_name,Active\r\nx1,\"A, \"\"B\"\"\",,yes\r\n,,,\r\n x2 ,,D,N";
    ImportPreview preview = previewImport(cn, kindOf("Vendors"), file, false);
    ASSERT_TRUE(preview.faults.empty()) << preview.faults.front().reason;
    ASSERT_EQ(preview.rows.size(), 2U);
    EXPECT_EQ(preview.rows[0].values["Company"], "A, \"B\"");
    EXPECT_EQ(preview.rows[1].line, 4);
    ASSERT_TRUE(storeImport(desk.session(), kindOf("Vendors"), file, false, preview));
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM VEND WHERE VendorID = 'X1' AND Active = 1"), "1");
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM VEND WHERE VendorID = 'X2' AND Active = 0"), "1");
    preview = previewImport(cn, kindOf("Vendors"),
                            "VendorID,Company\nX3,PE\xD1"
                            "A \x96 SONS\n",
                            false);
    EXPECT_EQ(preview.rows.at(0).values["Company"], "PEÑA – SONS");
}

TEST_F(Imports, AColumnThatTheFileLacksStaysAsItIsStored) {
    cn.Execute("sp_Update_AcctCode '6999', 'OLD', '', '', 'B1', '', '606', 1, '1010', ''");
    const std::string file = "Code,Title,Group\n6999,NEW,606\n";
    const ImportPreview preview = previewImport(cn, kindOf("Chart of accounts"), file, true);
    ASSERT_TRUE(storeImport(desk.session(), kindOf("Chart of accounts"), file, true, preview));
    EXPECT_EQ(
        desk.ask("SELECT Description + '|' + BudgetClassID + '|' + DefaultDept FROM AcctCode WHERE Code = '6999' AND "
                 "Subsidiary = 1"),
        "NEW|B1|1010");
}

TEST_F(Imports, AGroupMayStandBelowOneOfTheSameFile) {
    const std::string file = "Group,Title,Type,Class,MainGroup\n700,A,EX,C,\n701,B,EX,C,700\n";
    const ImportPreview preview = previewImport(cn, kindOf("GL groups"), file, false);
    ASSERT_TRUE(storeImport(desk.session(), kindOf("GL groups"), file, false, preview));
    EXPECT_EQ(desk.ask("SELECT MainGroup FROM GLGROUP WHERE GLGroup = '701'"), "700");
}

TEST_F(Imports, AFailureInTheMiddleLeavesNothing) {
    const std::string file = "Code,Name\n9901,A\n9902,B\n9903,C\n";
    const ImportPreview preview = previewImport(cn, kindOf("Cost centers"), file, false);
    int sent = 0;
    cn.observe([&](std::string_view statement) {
        if (statement.starts_with("sp_Update_CstCtr") && ++sent == 2) throw Error(5, "test", "the server goes away");
    });
    EXPECT_THROW(storeImport(desk.session(), kindOf("Cost centers"), file, false, preview), Error);
    cn.observe({});
    EXPECT_EQ(sent, 2);
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM CstCtr WHERE CstCtr LIKE '99%'"), "0");
    EXPECT_EQ(desk.ask("SELECT COUNT(*) FROM UserLog WHERE LogText LIKE 'Imported%'"), "0");
}

}  // namespace
}  // namespace kv
