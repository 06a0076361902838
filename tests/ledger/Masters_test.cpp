// The chart's tree, the period's test, and the statements of master files.

#include <gtest/gtest.h>

#include "core/module1.h"
#include "ledger/ChartTree.h"
#include "ledger/LookupClass.h"
#include "ledger/MasterFiles.h"
#include "ledger/clsPeriod.h"
#include "platform/forms/Application.h"
#include "reporting/MasterPrint.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

TEST(ChartTree, TypesAndClassesHaveTheirFixedPlace) {
    const std::pair<std::pair<const char*, const char*>, const char*> rows[] = {
        {{"AS", "C"}, "ASC"}, {{"AS", "O"}, "ASO"}, {{"IN", "R"}, "INR"}, {{"EX", "P"}, "EXP"},
        {{"ex", "d"}, "EXD"}, {{"EQ", ""}, "EQ"},   {{"EQ", "C"}, "EQ"},  {{"LI", "X"}, "LI"},
        {{"ZZ", "C"}, "A."},  {{"", ""}, "A."},     {{"A", "A"}, "A."},   {{"AA", ""}, "A."},
    };
    for (const auto& [from, key] : rows)
        EXPECT_EQ(chartPlace(from.first, from.second), key) << from.first << from.second;
}

/// A group whose main group comes later, one with none, and two that name each other.
TEST(ChartTree, AGroupComesAfterTheOneAboveIt) {
    ResultSet rows;
    for (const char* name : {"GLGroup", "Description", "Type", "Class", "MainGroup"}) rows.fields.push_back({name});
    rows.rows = {{"1", "ONE", "AS", "C", "2"},  {"2", "TWO", "AS", "C", ""},   {"3", "THREE", "AS", "O", "9"},
                 {"4", "FOUR", "LI", "C", "5"}, {"5", "FIVE", "LI", "C", "4"}, {"6", "SIX", "LI", "C", "6"}};
    std::string order;
    for (const ChartGroup& group : chartGroups(Recordset(rows))) order += group.group + "<" + parentNode(group) + " ";
    EXPECT_EQ(order, "2<ASC 1<G-2 3<ASO 5<LIC 4<G-5 6<LIC ");
}

TEST(MasterStatements, ValuesStayValues) {
    EXPECT_EQ(masterStatement("a '{key}' b '{key2}'", {" O'X ", "{key}"}), "a 'O''X' b '{key}'");
    EXPECT_EQ(masterUpdate(termsFile(),
                           {{"txtCode", "9"}, {"txtDescription", "A'B"}, {"txtNoDays", "1,000"}, {"chkStatus", "I"}}),
              "sp_Update_Terms '9', 'A''B', 1000, 'I'");
    EXPECT_EQ(masterUpdate(equityFile(), {{"txtCode", "3101"},
                                          {"cboKind", "ISSUED"},
                                          {"txtDescription", "D"},
                                          {"txtShares", ""},
                                          {"txtParValue", "0.5"}}),
              "sp_Update_Equity '3101', 'D', 'ISSUED', NULL, 0.5");
}

TEST(MasterStatements, WhatAFieldRefuses) {
    struct {
        MasterKind kind;
        const char* value;
        bool refused;
    } rows[] = {
        {MasterKind::Whole, "12", false},      {MasterKind::Whole, "1.5", true},
        {MasterKind::Whole, "-", true},        {MasterKind::Decimal, "1,2.5", false},
        {MasterKind::Decimal, "abc", true},    {MasterKind::Date, "2/29/2024", false},
        {MasterKind::Date, "2/29/2023", true}, {MasterKind::Date, "", false},
        {MasterKind::Text, "anything", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(!masterRefusal({.kind = row.kind}, row.value).empty(), row.refused) << row.value;
    }
}

/// Another way into the same list: every screen's statement, columns, key and template fit its table.
TEST(MasterStatements, EveryScreenFitsItsTable) {
    int argc = 1;
    std::string name = "masters_test";
    char* argv[] = {name.data(), nullptr};
    const Application application(argc, argv);  // reports measure texts
    Desk desk(freshHospital(scratchFolder()));
    for (const MasterFile& file : {costCenterFile(), revenueCenterFile(), departmentFile(), equityFile(), termsFile(),
                                   classificationFile(), glGroupFile(), periodFile(), fiscalYearFile()}) {
        std::string list = file.list;
        if (!file.sorts.empty()) list.replace(list.find("{sort}"), 6, file.sorts.front().column);
        const Recordset rows = desk.cn().Open(list);
        for (const MasterColumn& column : file.columns)
            EXPECT_TRUE(rows.has(column.field)) << file.screen << column.field;
        for (const std::string& key : file.listKeys) EXPECT_TRUE(rows.has(key)) << file.screen << key;
        const Recordset row = desk.cn().Open(masterStatement(file.row, {"1", "1"}));
        for (const MasterField& field : file.fields) EXPECT_TRUE(row.has(field.column)) << file.screen << field.control;
        EXPECT_NO_THROW(exportMasterList(desk.session(), file, {.statement = list, .filter = "a'b", .sortedColumn = 0},
                                         scratchFolder() + "/" + file.screen + ".csv"))
            << file.screen;
    }
}

TEST(ClsPeriod, TodayIsOpenWhateverTheLedgerHolds) {
    Desk desk(freshHospital(scratchFolder()));
    fixClock(Date(2024, 3, 15, 23, 59));
    for (const char* book : {"AP", "JV"}) {
        for (const char* period : {"202403", "202402"}) {
            desk.cn().Execute(std::string("INSERT INTO GL (Period, BatchType, Batch, SeqNo, Code) VALUES ('") + period +
                              "', '" + book + "', '1', 1, '')");
        }
    }
    const clsPeriod period(desk.session());
    struct {
        Date date;
        int book;
        int result;
    } rows[] = {
        {Date(2024, 3, 1), 0, 0},  {Date(2024, 3, 31, 23, 59), 4, 0}, {Date(2024, 2, 29), 0, 2},
        {Date(2024, 2, 29), 1, 1}, {Date(2024, 2, 29), 2, 1},         {Date(2024, 2, 1), 3, 1},
        {Date(2024, 2, 1), 9, 2},  {Date(2024, 4, 1), 0, 1},          {Date(2024, 2, 1), -1, 2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(period.CheckPeriodDate(row.date, row.book), row.result) << Format(row.date, "yyyy-MM-dd") << row.book;
    }
    releaseClock();
}

TEST(Lookups, GroupsDepartmentsAndNames) {
    Desk desk(freshHospital(scratchFolder()));
    clsGLGroup group(desk.session());
    group.Search("606");
    EXPECT_TRUE(group.Found);
    EXPECT_EQ(group.GLGroup + group.GroupType + group.GroupClass + group.Description, "606EXCADMINISTRATIVE EXPENSES");
    group.Search("nowhere");
    EXPECT_FALSE(group.Found);
    clsDepartment department(desk.session());
    ASSERT_TRUE(department.Validate("3"));
    EXPECT_EQ(department.Code + department.Description, "3NURSING SERVICES");
    clsCostCenter center(desk.session());
    EXPECT_EQ(center.GetDescription("1010"), "LABORATORY");
    EXPECT_EQ(center.GetDescription("no'where"), "");
}

}  // namespace
}  // namespace kv
