#include "reporting/frmSelectDates.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"

namespace kv {
namespace {

using Kind = SelectPart::Kind;

constexpr SelectPart kBank{Kind::Code, "txtBank", "&Bank Account :", "cmdCashInBank", "lblBank"};

// clang-format off
const SelectShape kShapes[] = {
    {"frmSelectReportDate", "Select Report Date", {{Kind::Day, "dtpReportDate", "Report &Date :"}}},
    {"frmSelectDate", "Select Report Date",
        {{Kind::Day, "dtpStartDate", "&Start Date :"}, {Kind::Day, "dtpEndDate", "&End Date :"}}},
    {"frmSelectDateBank", "Select Report Date", {kBank, {Kind::Day, "dtpReportDate", "Report &Date :"}}},
    {"frmSelectDateRangeBank", "Select Report Date",
        {kBank, {Kind::Day, "dtpReportDateStart", "&Start Date :"}, {Kind::Day, "dtpReportDateEnd", "&End Date :"}}},
    {"frmSelectDateEntity", "Select Report Date",
        {{Kind::Code, "txtCode", "Co&de :", "cmdCode", "lblCode"},
         {Kind::Day, "dtpReportDate1", "&Start Date :"}, {Kind::Day, "dtpReportDate2", "&End Date :"}}},
    {"frmSelectDateWType", "Select Report Date",
        {{Kind::Day, "dtpStartDate", "&Start Date :"}, {Kind::Day, "dtpEndDate", "&End Date :"},
         {Kind::Choice, "cmbAPType", "&Type :"}}},
    {"frmSelectPeriod", "Select Report Period", {{Kind::Month, "dtpReportDate", "Report &Month :"}}},
    {"frmSelectPeriodRange", "Select Period",
        {{Kind::Month, "dtpStart", "&Start :"}, {Kind::Month, "dtpEnd", "&End :"}}},
    {"frmSelectPeriodRangeType", "Select Period",
        {{Kind::Month, "dtpStart", "&Start :"}, {Kind::Month, "dtpEnd", "&End :"},
         {Kind::Choice, "cmbAPType", "&Type :"}}},
    {"frmSelectPeriodBank", "Select Report Date", {kBank, {Kind::Month, "dtpReportDate", "Report &Month :"}}},
    {"frmSelectPeriodAccount", "Select Period / Account Code",
        {{Kind::Code, "txtEntity", "&Account Code :", "cmdEntity", "lblEntity"},
         {Kind::Month, "dtpPeriod", "&Period :"}}},
    {"frmSelectPeriodAccountCstCtr", "Report Options",
        {{Kind::Code, "txtAccount", "&Account Code :", "cmdAccount", "lblAccount"},
         {Kind::Code, "txtCstCtr", "&Department :", "cmdCstCtr", "lblCstCtr", true},
         {Kind::Day, "dtpStart", "&Start Date :"}, {Kind::Day, "dtpEnd", "&End Date :"}}},
    {"frmSelectRange", "Range", {{Kind::Number, "txtAPV0", "&From :"}, {Kind::Number, "txtAPV1", "&To :"}}},
    {"frmSelectQuarter", "Select Quarter",
        {{Kind::Quarter, "optQuarter", "Quarter :"}, {Kind::Year, "txtYear", "&Year :"}}},
    {"frmSelectYear", "Report Year", {{Kind::Year, "txtYear", "&Year :"}}, "", "NOTE: Enter Year to Report"},
};
// clang-format on

const SelectShape& shapeOf(std::string_view name) {
    for (const SelectShape& shape : kShapes) {
        if (name == shape.name) return shape;
    }
    throw Error(5, "SelectDialog", "There is no dialog " + std::string(name) + ".");
}

SelectShape receiptsShape() {
    return {"frmSelectPeriodRange",
            "Search O.R. Ranged",
            {{Kind::Number, "txtStart", "Start :"}, {Kind::Number, "txtEnd", "End :"}},
            "Search O.R."};
}

SelectShape miscShape(const char* miscCaption) {
    return {"frmSelectDateMisc",
            "Select Report Date",
            {{Kind::Day, "dtpStartDate", "&Start Date :"},
             {Kind::Day, "dtpEndDate", "&End Date :"},
             {Kind::Text, "txtPayee", miscCaption, "", "", true}}};
}

}  // namespace

std::vector<std::string> payeeTypes(const std::string& ClientCode) {
    if (ClientCode == "ZRY" || ClientCode == "PXNK") {
        return {"All", "Trade (COD)", "Trade (Terms)", "Non-Trade", "Doctors"};
    }
    return {"All", "Trade", "Non-Trade", "Prof Fee"};
}

frmSelectReportDate::frmSelectReportDate() : SelectDialog(shapeOf("frmSelectReportDate")) {}

frmSelectDate::frmSelectDate(Session& session) : SelectDialog(shapeOf("frmSelectDate")), session_(session) {}

bool frmSelectDate::ShowDialog(std::string& StartDate, std::string& EndDate, bool CheckDate) {
    checkDate_ = CheckDate;
    return ask({&StartDate, &EndDate});
}

bool frmSelectDate::dayAllowed(const Date& day) {
    return !checkDate_ || day <= module1::ServerDate(session_.cn()).dayOnly();
}

frmSelectDateBank::frmSelectDateBank(CodeLookup bankAccounts) : SelectDialog(shapeOf("frmSelectDateBank")) {
    setLookup(0, std::move(bankAccounts));
}

frmSelectDateRangeBank::frmSelectDateRangeBank(CodeLookup bankAccounts)
    : SelectDialog(shapeOf("frmSelectDateRangeBank")) {
    setLookup(0, std::move(bankAccounts));
}

frmSelectDateEntity::frmSelectDateEntity(CodeLookup entities) : SelectDialog(shapeOf("frmSelectDateEntity")) {
    setLookup(0, std::move(entities));
}

frmSelectDateMisc::frmSelectDateMisc(const char* miscCaption) : SelectDialog(miscShape(miscCaption)) {}

frmSelectDateWType::frmSelectDateWType(const Session& session) : SelectDialog(shapeOf("frmSelectDateWType")) {
    setChoices(2, payeeTypes(session.ClientCode()));
}

bool frmSelectDateWType::dayAllowed(const Date& day) { return day >= Date(2000, 1, 1); }

frmSelectPeriod::frmSelectPeriod() : SelectDialog(shapeOf("frmSelectPeriod")) {}

frmSelectPeriodRange::frmSelectPeriodRange(Of what)
    : SelectDialog(what == Of::Receipts ? receiptsShape() : shapeOf("frmSelectPeriodRange")) {}

frmSelectPeriodRangeType::frmSelectPeriodRangeType(const Session& session)
    : SelectDialog(shapeOf("frmSelectPeriodRangeType")) {
    setChoices(2, payeeTypes(session.ClientCode()));
}

frmSelectPeriodBank::frmSelectPeriodBank(CodeLookup bankAccounts) : SelectDialog(shapeOf("frmSelectPeriodBank")) {
    setLookup(0, std::move(bankAccounts));
}

frmSelectPeriodAccount::frmSelectPeriodAccount(CodeLookup accounts) : SelectDialog(shapeOf("frmSelectPeriodAccount")) {
    setLookup(0, std::move(accounts));
}

frmSelectPeriodAccountCstCtr::frmSelectPeriodAccountCstCtr(CodeLookup accounts, CodeLookup costCenters)
    : SelectDialog(shapeOf("frmSelectPeriodAccountCstCtr")) {
    setLookup(0, std::move(accounts));
    setLookup(1, std::move(costCenters));
}

frmSelectRange::frmSelectRange() : SelectDialog(shapeOf("frmSelectRange")) {}

frmSelectQuarter::frmSelectQuarter() : SelectDialog(shapeOf("frmSelectQuarter")) {}

int frmSelectQuarter::Quarter() const { return static_cast<int>(numberOf(quarter_)); }

int frmSelectQuarter::Year() const { return static_cast<int>(numberOf(year_)); }

void frmSelectQuarter::SetQuarter(int Quarter, int Year) {
    quarter_ = std::to_string(Quarter);
    year_ = std::to_string(Year);
}

frmSelectYear::frmSelectYear() : SelectDialog(shapeOf("frmSelectYear")) {}

}  // namespace kv
