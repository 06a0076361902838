#pragma once
// The date and period dialogs before a report. Each gives its values by reference and says whether it was confirmed.

#include <string>

#include "platform/forms/Form.h"

namespace kv {

class Session;

/// SelectDialog: the shape they share: fields, OK and Cancel.
class SelectDialog : public Form {
public:
    SelectDialog(std::string name, std::string caption);

    CommandButton cmdOption0{*this, "cmdOption0", "&OK"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Cancel"};

protected:
    bool ask();  ///< shows the dialog; true when OK was accepted
    /// Whether the fields are in order; tells the user what is not.
    virtual bool accepted() { return true; }
    void dress(const Layout& content);

private:
    bool confirmed_ = false;
};

class frmSelectReportDate : public SelectDialog {
public:
    frmSelectReportDate();
    /// A date as "yyyy-MM-dd".
    bool ShowDialog(std::string& ReportDate);

    DatePicker dtpReportDate{*this, "dtpReportDate"};
};

class frmSelectDate : public SelectDialog {
public:
    explicit frmSelectDate(Session& session);
    /// Two dates as "yyyy-MM-dd"; with `CheckDate` neither may be after the server's day.
    bool ShowDialog(std::string& StartDate, std::string& EndDate, bool CheckDate = false);

    DatePicker dtpStartDate{*this, "dtpStartDate"};
    DatePicker dtpEndDate{*this, "dtpEndDate"};

private:
    bool accepted() override;
    bool notAfterServer(DatePicker& picker);

    Session& session_;
    bool checkDate_ = false;
};

class frmSelectPeriod : public SelectDialog {
public:
    frmSelectPeriod();
    /// A period "yyyyMM".
    bool ShowDialog(std::string& Period);

    DatePicker dtpReportDate{*this, "dtpReportDate", "MMMM yyyy"};
};

/// The first day of a period "yyyyMM"; today's month where the text is no period.
Date dateOfPeriod(std::string_view period);

}  // namespace kv
