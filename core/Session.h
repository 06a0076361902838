#pragma once
// Session: the state of one signed-in workstation that every screen reads. Every text is empty until it is set.

#include <memory>
#include <source_location>
#include <string>
#include <vector>

#include "core/Screens.h"
#include "core/clsParameters.h"
#include "core/clsUserAccess.h"
#include "platform/login/clsCurrentUser.h"

namespace kv {

class Report;

/// Copies of the single row of table SYS, read as text; NULL is the empty text.
struct SysCopies {
    std::string Company, Address1, APAcct, VATCode, Vatable, SW_CVNO, sw_CheckNo, sw_ChkPrint, sw_APVPrint, sw_APVNo;
    std::string Client, YearType, ProfitLoss, CashInBank, CSHAcct, sw_Compare, SW_BegPage, sw_link, sw_wDirect, SW_CV;
    std::string ApprovedBy, CDBClerk, CDBClerkName, PostedBy, VerifiedBy, WTax, EWTax, MonthEnd, CRBAcct, ARAcct;
    std::string APPERIOD, glperiod, CDBPERIOD, PreparedBy, apnontrade, rptpdstart, rptpdEnd, RetainedEarning, AEAcct;
    std::string payAcct, FixedAsset;
};

/// Which of a book's tables a screen works on; set by the shell before the book opens.
struct Book {
    std::string BookCode, BookName, BookTable, BookDetailTable, BookPeriod;
};

/// What the password box opens.
enum class PasswordTargets { None = 0, ProgramSettings = 1, UserSettings = 2 };

class Session {
public:
    Session(clsCurrentUser& user, Connection& connection, Screens& allScreens)
        : CurrentUser(user), Parameters(connection), screens(allScreens), connection_(connection) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Connection& cn() const { return connection_; }
    const std::string& ClientCode() const { return Sys.Client; }
    void SelectBook(Book book) { book_ = std::move(book); }
    const Book& book() const { return book_; }
    const std::string& BookCode() const { return book_.BookCode; }
    const std::string& BookName() const { return book_.BookName; }
    const std::string& BookTable() const { return book_.BookTable; }
    const std::string& BookDetailTable() const { return book_.BookDetailTable; }
    const std::string& BookPeriod() const { return book_.BookPeriod; }
    void setBookCode(std::string code) { book_.BookCode = std::move(code); }

    clsCurrentUser& CurrentUser;
    clsUserAccess UserAccess;
    clsParameters Parameters;
    Screens& screens;
    SysCopies Sys;

    std::string EmployeeCode;
    std::string ConnectionText;
    std::string ServerNameText;
    std::string ReportsFolder;
    std::string CheckFormat, CVFormat;
    std::string CurrentBatch;
    std::string CurrentPeriod;
    PasswordTargets PasswordTarget = PasswordTargets::None;
    bool UpdateAcctgLink = false;
    std::vector<std::string> RecentFinds;  ///< what "find anything" opened last, the newest first
    /// The one report that is open; each open routine replaces it, unloading the viewer releases it.
    std::shared_ptr<Report> CurrentReport;
    /// Set by a few report routines before they open a report, cleared by the open routines.
    bool ReportFlag = false;

private:
    Connection& connection_;
    Book book_;
};

struct BookEntry;
/// A book as the shell selects it, with its working period.
Book bookOf(const Session& session, const BookEntry& entry);
/// Another book is the session's as long as this lives.
class BookForAWhile {
public:
    BookForAWhile(Session& session, const BookEntry& book) : session_(session), before_(session.book()) {
        session.SelectBook(bookOf(session, book));
    }
    BookForAWhile(const BookForAWhile&) = delete;
    BookForAWhile& operator=(const BookForAWhile&) = delete;
    ~BookForAWhile() { session_.SelectBook(before_); }

private:
    Session& session_;
    Book before_;
};

/// Reads the row of SYS into the session's copies. A table without rows leaves them as they are.
void ResetGlobalVariables(Session& session, std::source_location at = std::source_location::current());
/// The server's name in a connection string: the text behind "Server=" up to the next ";". Raises Error 5 when no
/// ";" follows.
std::string GetServerName(std::string_view ConnectionString, std::source_location at = std::source_location::current());
/// Resources_<ClientCode> below the program's folder, else Resources there, else the program's folder.
std::string ResourcesFolder(const std::string& programFolder, const std::string& clientCode);

namespace modGeneral {
/// Loads the parameters again and copies the two formats that the session keeps.
void MainHospitalSettings(Session& session, std::source_location at = std::source_location::current());
}  // namespace modGeneral

}  // namespace kv
