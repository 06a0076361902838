// The expression language: one row a case, and what it refuses.
#include "platform/print/Expression.h"

#include <gtest/gtest.h>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

/// A row with a few fields of each type.
class SampleRow : public EvalContext, public NameScope {
public:
    Value field(int, int column) const override { return values[static_cast<std::size_t>(column)].second; }
    Value parameter(int) const override { return "EXAMPLE"; }
    Value total(int) const override { return {}; }
    Value fact(Fact) const override { return 7; }
    void bindName(ExprNode& node) override {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (!equalsNoCase(values[i].first, node.name)) continue;
            node.op = ExprNode::Op::Field;
            node.slot = static_cast<int>(i);
            return;
        }
        throw ExpressionError{node.at, "there is no field '" + node.name + "'"};
    }
    int bindParameter(const ExprNode&) override { return 0; }
    int bindTotal(const ExprNode&) override { return 0; }
    void checkFact(const ExprNode&) override {}

    std::vector<std::pair<std::string, Value>> values = {{"Debit", *Money::parse("1200.50")},
                                                         {"Credit", *Money::parse("-0.10")},
                                                         {"Rate", 0.125},
                                                         {"Lines", 3},
                                                         {"Code", "1101"},
                                                         {"Title", "Peña's cash"},
                                                         {"Date", Date(2024, 3, 31)},
                                                         {"Nothing", Value()},
                                                         {"Odd name", true}};
};

std::string result(const std::string& text) {
    SampleRow row;
    Expression e = Expression::parse(text);
    e.bind(row);
    return e.evaluate(row).text();
}

TEST(Expression, Evaluates) {
    const std::pair<const char*, const char*> rows[] = {
        {"1 + 2 * 3", "7"},
        {"(1 + 2) * 3", "9"},
        {"7 / 2", "3.5"},
        {"7 % 4", "3"},
        {"-2 - -3", "1"},
        {"2 - 3 - 4", "-5"},
        // amounts stay exact to the fourth decimal
        {"Debit + Credit", "1200.40"},
        {"Debit * 0.12", "144.06"},
        {"Debit * 3", "3601.50"},
        {"Debit / 7", "171.50"},
        {"0.1 + 0.2 = 0.3", "True"},
        {"Debit / 0.5", "2401"},
        {"round(Debit * Rate, 2)", "150.06"},
        {"round(10.005, 2)", "10.00"},
        {"round(10.015, 2)", "10.02"},
        {"Nothing + 5", "5"},
        {"Nothing & 'x'", "x"},
        {"coalesce(Nothing, 'none')", "none"},
        {"isNull(Nothing) and not isNull(Code)", "True"},
        // text
        {"Code & '-' & Lines", "1101-3"},
        {"upper(Title)", "PEÑA'S CASH"},
        {"left(Title, 4)", "Peña"},
        {"right(Code, 2)", "01"},
        {"mid(Code, 2, 2)", "10"},
        {"len(Title)", "11"},
        {"'it''s'", "it's"},
        {"padLeft(Lines, 4, '0')", "0003"},
        {"replace(Code, '1', 'x')", "xx0x"},
        {"joinWords(', ', 'a', '', Nothing, 'b')", "a, b"},
        {"[Odd name]", "True"},
        // comparison and choice
        {"title = 'PEÑA''S CASH'", "True"},
        {"Code in ('1100', '1101')", "True"},
        {"Lines in (1, 2)", "False"},
        {"if(Debit > 1000, 'large', 'small')", "large"},
        {"case(Lines = 1, 'one', Lines = 3, 'three', 'many')", "three"},
        {"Lines <> 3 or Code = '1101' and true", "True"},
        {"if(Lines = 3, 1, 1 / 0)", "1"},
        // dates
        {"Date + 1", "4/1/2024"},
        {"date('2024-03-31') - date(2024, 1, 1)", "90"},
        {"addMonths(Date, -1)", "2/29/2024"},
        {"Date > '2024-03-30'", "True"},
        {"format(Date, 'MMMM d, yyyy')", "March 31, 2024"},
        {"periodName('202413')", "December 2024"},
        {"format(periodEnd('202402'), 'yyyy-MM-dd')", "2024-02-29"},
        // formats
        {"format(Debit, '#,##0.00')", "1,200.50"},
        {"format(Credit, '#,##0.00;(#,##0.00)')", "(0.10)"},
        {"format(0, '#,##0.00;(#,##0.00);-')", "-"},
        {"format(0.001, '0.00;(0.00);nil')", "nil"},
        {"format(-0.001, '0.00;(0.00)')", "0.00"},
        {"format(0.1234, '0.0%')", "12.3%"},
        {"inWords(Debit)", "ONE THOUSAND TWO HUNDRED PESOS AND 50/100 ONLY"},
        {"ratio(1, 0)", ""},
        {":Company & pageNumber()", "EXAMPLE7"},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(result(text), expected) << text;
    }
}

TEST(Expression, NamesItsMistakes) {
    const std::tuple<const char*, std::size_t, const char*> rows[] = {
        {"1 +", 3, "the expression ends too early"},
        {"(1 + 2", 6, "')' was expected at the end"},
        {"Debt", 0, "there is no field 'Debt'"},
        {"1 + nosuch(2)", 4, "there is no function 'nosuch'"},
        {"left(Code)", 0, "wrong number of values: left(text, n): the first n characters"},
        {"'open", 0, "the text has no closing quote"},
        {"1 ? 2", 2, "the character '?' has no meaning here"},
        {"1 2", 2, "'2' was not expected here"},
        {"if(1, 2)", 0, "if() takes a condition and two values"},
        {"sum(Debit, page)", 11, "the reach of a total is a quoted name of a group, 'page' or 'report'"},
        {"1.2.3", 0, "'1.2.3' is no number"},
        {"a : b", 2, "a parameter's name must follow ':'"},
    };
    for (const auto& [text, at, message] : rows) {
        try {
            (void)result(text);
            ADD_FAILURE() << text << " was taken";
        } catch (const ExpressionError& e) {
            EXPECT_EQ(e.text, message) << text;
            EXPECT_EQ(e.at, at) << text;
        }
    }
    EXPECT_THROW((void)Expression::parse(std::string(5000, '(')), ExpressionError);
    EXPECT_THROW((void)result("1 / 0"), Error);
    EXPECT_THROW((void)result("900000000000000 * 9000000000000"), Error);
}

TEST(Expression, FillsTexts) {
    const std::pair<const char*, const char*> rows[] = {
        {"plain", "plain"},
        {"Page {pageNumber()} of {3}", "Page 7 of 3"},
        {"{Debit|#,##0.00} on {Date|MMM d}", "1,200.50 on Mar 31"},
        {"{{not}} {'}'}", "{not} }"},
        {"{Debit}", "1,200.50"},
        {"", ""},
    };
    for (const auto& [text, expected] : rows) {
        SampleRow row;
        Expression e = Expression::parseText(text);
        e.bind(row);
        EXPECT_EQ(e.evaluate(row).text(), expected) << text;
    }
    EXPECT_THROW((void)Expression::parseText("{Debit"), ExpressionError);
}

}  // namespace
}  // namespace kv
