#include "reporting/frmSelectDates.h"

#include <charconv>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/forms/Dialogs.h"

namespace kv {

SelectDialog::SelectDialog(std::string name, std::string caption) : Form(std::move(name), std::move(caption)) {
    cmdOption0.primary();
    cmdOption0.onClick = [this] {
        if (!accepted()) return;
        confirmed_ = true;
        Unload();
    };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
}

void SelectDialog::dress(const Layout& content) { setLayout(column({content, buttons({cmdOption0, cmdOption1})})); }

bool SelectDialog::ask() {
    confirmed_ = false;
    ShowModal();
    return confirmed_;
}

frmSelectReportDate::frmSelectReportDate() : SelectDialog("frmSelectReportDate", "Select Report Date") {
    dress(fields({{"Report &Date :", dtpReportDate}}));
    setFirstFocus(dtpReportDate);
}

bool frmSelectReportDate::ShowDialog(std::string& ReportDate) {
    dtpReportDate.setValue(parseDate(ReportDate).value_or(Today()));
    if (!ask()) return false;
    ReportDate = Format(dtpReportDate.value(), "yyyy-MM-dd");
    return true;
}

frmSelectDate::frmSelectDate(Session& session)
    : SelectDialog("frmSelectDate", "Select Report Date"), session_(session) {
    dress(fields({{"&Start Date :", dtpStartDate}, {"&End Date :", dtpEndDate}}));
    setFirstFocus(dtpStartDate);
}

bool frmSelectDate::ShowDialog(std::string& StartDate, std::string& EndDate, bool CheckDate) {
    checkDate_ = CheckDate;
    dtpStartDate.setValue(parseDate(StartDate).value_or(Today()));
    dtpEndDate.setValue(parseDate(EndDate).value_or(Today()));
    if (!ask()) return false;
    StartDate = Format(dtpStartDate.value(), "yyyy-MM-dd");
    EndDate = Format(dtpEndDate.value(), "yyyy-MM-dd");
    return true;
}

bool frmSelectDate::notAfterServer(DatePicker& picker) {
    if (picker.value().dayOnly() <= module1::ServerDate(session_.cn()).dayOnly()) return true;
    MsgBox(
        "The date " + Format(picker.value(), "dd MMM yyyy") + " is not valid for this report. Select a different date.",
        Icon::Exclamation);
    picker.setFocus();
    return false;
}

bool frmSelectDate::accepted() {
    if (dtpStartDate.value() > dtpEndDate.value()) {
        MsgBox("The Start Date must not be greater than End Date.", Icon::Exclamation);
        return false;
    }
    return !checkDate_ || (notAfterServer(dtpStartDate) && notAfterServer(dtpEndDate));
}

frmSelectPeriod::frmSelectPeriod() : SelectDialog("frmSelectPeriod", "Select Report Period") {
    dress(fields({{"Report &Month :", dtpReportDate}}));
    setFirstFocus(dtpReportDate);
}

bool frmSelectPeriod::ShowDialog(std::string& Period) {
    dtpReportDate.setValue(dateOfPeriod(Period));
    if (!ask()) return false;
    Period = module1::GetPeriod(dtpReportDate.value());
    return true;
}

Date dateOfPeriod(std::string_view period) {
    int number = 0;
    const auto read = std::from_chars(period.data(), period.data() + period.size(), number);
    const bool plain = period.size() == 6 && read.ec == std::errc() && read.ptr == period.data() + period.size();
    if (plain && isRealDay(number / 100, number % 100, 1)) return Date(number / 100, number % 100, 1);
    return Date(Today().year(), Today().month(), 1);
}

}  // namespace kv
