#pragma once
// The date and period dialogs before a report. Each takes its values by reference, shows itself with them and gives the
// new ones back when it was confirmed. A blank value starts with today.

#include <string>
#include <vector>

#include "reporting/SelectDialog.h"

namespace kv {

class Session;

class frmSelectReportDate : public SelectDialog {
public:
    frmSelectReportDate();
    /// A date "yyyy-MM-dd".
    bool ShowDialog(std::string& ReportDate) { return ask({&ReportDate}); }
};

class frmSelectDate : public SelectDialog {
public:
    explicit frmSelectDate(Session& session);
    /// Two dates "yyyy-MM-dd"; with `CheckDate` neither may be after the server's day.
    bool ShowDialog(std::string& StartDate, std::string& EndDate, bool CheckDate = false);

private:
    bool dayAllowed(const Date& day) override;
    Session& session_;
    bool checkDate_ = false;
};

class frmSelectDateBank : public SelectDialog {
public:
    explicit frmSelectDateBank(CodeLookup bankAccounts);
    bool ShowDialog(std::string& Bank, std::string& ReportDate) { return ask({&Bank, &ReportDate}); }
    std::string BankName() const { return codeName(0); }
};

class frmSelectDateRangeBank : public SelectDialog {
public:
    explicit frmSelectDateRangeBank(CodeLookup bankAccounts);
    bool ShowDialog(std::string& Bank, std::string& StartDate, std::string& EndDate) {
        return ask({&Bank, &StartDate, &EndDate});
    }
    std::string BankName() const { return codeName(0); }
};

class frmSelectDateEntity : public SelectDialog {
public:
    explicit frmSelectDateEntity(CodeLookup entities);
    bool ShowDialog(std::string& Code, std::string& StartDate, std::string& EndDate) {
        return ask({&Code, &StartDate, &EndDate});
    }
    std::string EntityName() const { return codeName(0); }
};

/// A range of days and a third value, which may be blank.
class frmSelectDateMisc : public SelectDialog {
public:
    explicit frmSelectDateMisc(const char* miscCaption = "&Payee :");
    bool ShowDialog(std::string& StartDate, std::string& EndDate, std::string& Misc) {
        return ask({&StartDate, &EndDate, &Misc});
    }
};

/// A range of days and a type of payees.
class frmSelectDateWType : public SelectDialog {
public:
    explicit frmSelectDateWType(const Session& session);
    bool ShowDialog(std::string& StartDate, std::string& EndDate, std::string& Type) {
        return ask({&StartDate, &EndDate, &Type});
    }

private:
    bool dayAllowed(const Date& day) override;
};

class frmSelectPeriod : public SelectDialog {
public:
    frmSelectPeriod();
    /// A Period "yyyyMM".
    bool ShowDialog(std::string& Period) { return ask({&Period}); }
};

/// Two Periods; or the numbers of two receipts.
class frmSelectPeriodRange : public SelectDialog {
public:
    enum class Of { Periods, Receipts };
    explicit frmSelectPeriodRange(Of what = Of::Periods);
    bool ShowDialog(std::string& Start, std::string& End) { return ask({&Start, &End}); }
};

class frmSelectPeriodRangeType : public SelectDialog {
public:
    explicit frmSelectPeriodRangeType(const Session& session);
    bool ShowDialog(std::string& StartPeriod, std::string& EndPeriod, std::string& Type) {
        return ask({&StartPeriod, &EndPeriod, &Type});
    }
};

class frmSelectPeriodBank : public SelectDialog {
public:
    explicit frmSelectPeriodBank(CodeLookup bankAccounts);
    bool ShowDialog(std::string& Bank, std::string& Period) { return ask({&Bank, &Period}); }
    std::string BankName() const { return codeName(0); }
};

class frmSelectPeriodAccount : public SelectDialog {
public:
    explicit frmSelectPeriodAccount(CodeLookup accounts);
    bool ShowDialog(std::string& Account, std::string& Period) { return ask({&Account, &Period}); }
    std::string AccountName() const { return codeName(0); }
};

/// An account, one of its departments or all of them, and a range of days.
class frmSelectPeriodAccountCstCtr : public SelectDialog {
public:
    frmSelectPeriodAccountCstCtr(CodeLookup accounts, CodeLookup costCenters);
    bool ShowDialog(std::string& Account, std::string& CstCtr, std::string& StartDate, std::string& EndDate) {
        return ask({&Account, &CstCtr, &StartDate, &EndDate});
    }
    std::string AccountName() const { return codeName(0); }
    std::string CstCtrName() const { return codeName(1); }
};

/// The numbers of the first and the last document.
class frmSelectRange : public SelectDialog {
public:
    frmSelectRange();
    bool ShowDialog(std::string& From, std::string& To) { return ask({&From, &To}); }
};

class frmSelectQuarter : public SelectDialog {
public:
    frmSelectQuarter();
    /// What was chosen is read from the properties after it has closed.
    bool ShowDialog() { return ask({&quarter_, &year_}); }
    int Quarter() const;
    int Year() const;
    void SetQuarter(int Quarter, int Year);

private:
    std::string quarter_, year_;
};

class frmSelectYear : public SelectDialog {
public:
    frmSelectYear();
    bool ShowDialog(std::string& Year) { return ask({&Year}); }
};

/// The types of payees that the client's reports tell apart.
std::vector<std::string> payeeTypes(const std::string& ClientCode);

}  // namespace kv
