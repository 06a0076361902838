// What keeps a journal batch from being saved.

#include "ledger/JournalBatch.h"

#include <gtest/gtest.h>

#include "ledger/Module2.h"
#include "platform/base/Error.h"

namespace kv {
namespace {

JournalLine line(const char* code, const char* dept, const char* debit, const char* credit, bool needsDept = false) {
    JournalLine made;
    made.Code = code;
    made.Dept = dept;
    made.Debit = *Money::parse(debit);
    made.Credit = *Money::parse(credit);
    made.NeedsDept = needsDept;
    return made;
}

std::string faultText(const std::vector<JournalLine>& lines) {
    const auto fault = faultOf(lines);
    return fault ? fault->message : "";
}

TEST(JournalFault, NamesTheFirstOfAccountsBalanceDepartments) {
    struct {
        const char* what;
        std::vector<JournalLine> lines;
        const char* message;
    } rows[] = {
        {"balanced", {line("1101", "", "100", "0"), line("1201", "", "0", "100")}, ""},
        {"all empty", {line("", "", "0", "0")}, ""},
        {"empty lines between", {line("1101", "", "5", "0"), line("", "", "0", "0"), line("1201", "", "0", "5")}, ""},
        {"no account", {line("1101", "", "5", "0"), line("", "", "0", "5")}, "Please enter an account for line #2."},
        {"no account goes before the balance", {line("", "", "5", "0")}, "Please enter an account for line #1."},
        {"unbalanced below the centavo",
         {line("1101", "", "100", "0"), line("1201", "", "0", "100.004")},
         "Debit Total must be equal to Credit Total "},
        {"department missing",
         {line("6101", "", "5", "0", true), line("1201", "", "0", "5")},
         "Please select a department for account 6101."},
        {"balance goes before the department",
         {line("6101", "", "5", "0", true)},
         "Debit Total must be equal to Credit Total "},
    };
    for (const auto& row : rows) EXPECT_EQ(faultText(row.lines), row.message) << row.what;
}

TEST(JournalFault, TotalsThatDoNotFitAreAnErrorNotAWrongFigure) {
    JournalLine huge = line("1101", "", "900000000000000", "0");
    EXPECT_THROW(totalsOf({huge, huge}), Error);
}

TEST(HeaderStatement, NamesTheProcedureOfTheBookAndKeepsTextText) {
    Module2::BatchHeader header{.Batch = "12",
                                .BatchDate = Date(2024, 3, 5),
                                .BatchType = "AR",
                                .Total = Money::whole(100),
                                .Debit = Money::whole(100),
                                .Credit = Money::whole(100),
                                .Particular = " St. Luke's day ",
                                .Encoder = "E003",
                                .BookCode = "AR"};
    EXPECT_EQ(Module2::Query_Insert_Batch(header),
              "sp_Insert_AR '12', '3/5/2024', 'AR', 100.00, 100.00, 100.00, '202403', 'St. Luke''s day', 'E003'");
    header.BookCode = "CR";
    EXPECT_EQ(Module2::Query_Insert_Batch(header).find("sp_Insert_CRB '12'"), 0u);
    header.BookCode = "JV";
    EXPECT_EQ(Module2::Query_Insert_Batch(header).find("sp_Insert_JV '12'"), 0u);
}

}  // namespace
}  // namespace kv
