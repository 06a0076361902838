#include "platform/odbc/OdbcConnection.h"

#include <array>

#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/odbc/Fetch.h"
#include "platform/odbc/Wide.h"

namespace kv {
namespace odbc {
namespace {

constexpr const char* kSource = "Korvane ODBC";
constexpr long kErrNoBegin = 3902;
constexpr long kErrNoBeginForRollback = 3903;
constexpr int kErrorsMax = 100;  ///< a batch that fails over and over again is left after this many errors

// One session speaks like every other, whatever the logon's language or the driver's defaults are. A month comes
// before its day in texts; a failed statement takes its whole transaction with it; waiting for a lock ends with the
// server's own words shortly before the command's time-out.
constexpr std::string_view kSessionSettings =
    "SET LANGUAGE us_english; SET DATEFORMAT mdy; SET DATEFIRST 7; "
    "SET ANSI_NULLS ON; SET ANSI_PADDING ON; SET ANSI_WARNINGS ON; SET ARITHABORT ON; SET CONCAT_NULL_YIELDS_NULL ON; "
    "SET QUOTED_IDENTIFIER ON; SET NUMERIC_ROUNDABORT OFF; SET IMPLICIT_TRANSACTIONS OFF; SET XACT_ABORT ON; "
    "SET TEXTSIZE 2147483647; SET LOCK_TIMEOUT ";
constexpr int kLockTimeoutShare_ms = 900;  ///< of each second of the command's time-out

SQLPOINTER asPointer(SQLULEN value) { return reinterpret_cast<SQLPOINTER>(value); }

DbError failure(long number, std::string text) {
    DbError error;
    error.number = number;
    error.source = kSource;
    error.description = std::move(text);
    return error;
}

[[noreturn]] void raise(const DbError& error) { throw Error(error.number, error.source, error.description); }

/// Whether a driver answers the question for more results behind an error only with the refusal to be asked.
bool nothingMore(SQLHSTMT statement) {
    const auto told = diagnosticsOf(SQL_HANDLE_STMT, statement);
    return told.empty() || told.front().state == "HY010" || told.front().state == "24000";
}

/// The value of a key of a connection string, without braces; keys are compared without letter case.
std::string settingOf(const std::string& text, std::string_view key) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t equals = text.find('=', at);
        if (equals == std::string::npos) break;
        const bool braced = equals + 1 < text.size() && text[equals + 1] == '{';
        const std::size_t from = braced ? text.find("};", equals) : equals;
        const std::size_t end = std::min(text.find(';', from == std::string::npos ? equals : from), text.size());
        if (equalsNoCase(trimBlanks(std::string_view(text).substr(at, equals - at)), key)) {
            std::string value = text.substr(equals + 1, end - equals - 1);
            if (braced && value.size() >= 2) value = value.substr(1, value.size() - 2);
            return value;
        }
        at = end + 1;
    }
    return {};
}

}  // namespace

OdbcConnection::OdbcConnection(const OdbcOptions& options) : options_(options), environment_(SQL_NULL_HANDLE) {
    SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0);
}

void OdbcConnection::open() {
    Link fresh(environment_.get());
    const auto login = static_cast<SQLULEN>(options_.loginTimeout_s);
    SQLSetConnectAttrW(fresh.get(), SQL_ATTR_LOGIN_TIMEOUT, asPointer(login), SQL_IS_UINTEGER);
    std::vector<SQLWCHAR> text = toWide(options_.connectionString);
    const SQLRETURN code = SQLDriverConnectW(fresh.get(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()),
                                             nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(code)) {
        const auto told = diagnosticsOf(Link::kind, fresh.get());
        if (told.empty()) raise(failure(kErrServerLost, "The server does not answer."));
        for (const Diagnostic& one : told) {  // a refused logon says more than the driver's word that it failed
            if (one.error.number == 18456 || one.error.number == 4060) raise(asError(one));
        }
        const Diagnostic& first = told.front();
        if (!first.tellsLostServer() && !first.tellsTimeout() && first.error.number != 0) raise(asError(first));
        raise(failure(kErrServerLost, "The server does not answer: " + first.error.description));
    }
    link_ = std::move(fresh);
    open_ = true;
    lost_ = false;
    counted_ = 0;
    sqlServer_ = containsNoCase(infoText(SQL_DBMS_NAME), "SQL Server");
    serverName_ = infoText(SQL_SERVER_NAME);
    chooseCarrier();
    prepareSession();
}

void OdbcConnection::chooseCarrier() {
    // a letter whose lower half is an apostrophe's, and one that fits into no code page
    constexpr std::string_view kProbe = "\xC4\xA7\xE2\x82\xB1";
    for (const Carrier carrier : {Carrier::Utf16, Carrier::Utf8}) {
        carrier_ = carrier;
        std::vector<ResultSet> results;
        Messages dropped;
        const std::string probe =
            std::string("SELECT ") + (sqlServer_ ? "N" : "") + "'" + std::string(kProbe) + "' AS p";
        const bool good = send(probe, results, dropped) && !results.empty() && !results[0].rows.empty();
        if (good && results[0].rows[0][0].text() == kProbe) return;
    }
    raise(failure(kErrServerLost, "The ODBC driver cannot carry every letter; use a Unicode driver."));
}

void OdbcConnection::prepareSession() {
    if (!sqlServer_) return;
    const auto send_ = [this](std::string_view statement) {
        std::vector<ResultSet> dropped;
        Messages messages;
        if (send(statement, dropped, messages)) return;
        for (const DbError& message : messages) {
            if (message.severity > 10) raise(message);
        }
    };
    send_(std::string(kSessionSettings) + std::to_string(options_.commandTimeout_s * kLockTimeoutShare_ms));
    if (!options_.defaultDatabase.empty()) send_("USE " + sqlName(options_.defaultDatabase));
}

std::string OdbcConnection::infoText(SQLUSMALLINT what) const {
    std::array<SQLWCHAR, 256> text{};
    SQLSMALLINT bytes = 0;
    const auto room = static_cast<SQLSMALLINT>((text.size() - 1) * sizeof(SQLWCHAR));
    if (!SQL_SUCCEEDED(SQLGetInfoW(link_.get(), what, text.data(), room, &bytes)) || bytes < 0) return {};
    return fromWide(text.data(), static_cast<std::size_t>(std::min(bytes, room)) / sizeof(SQLWCHAR));
}

std::string OdbcConnection::connectionString() const {
    // what screens and logs may see: never a password, and the first "Server" is the key they look for
    const std::string named = settingOf(options_.connectionString, "Server");
    return "Provider=ODBC;Server=" + (named.empty() ? serverName_ : named) + ";Database=" + options_.defaultDatabase +
           ";User ID=" + settingOf(options_.connectionString, "UID") + ";";
}

void OdbcConnection::setDefaultDatabase(const std::string& name) {
    if (sqlServer_ && isOpen()) Execute("USE " + sqlName(name));
    options_.defaultDatabase = name;
}

int OdbcConnection::transactionDepth() const {
    if (!isOpen()) return 0;
    if (!sqlServer_) return counted_;
    // only the server knows: procedures, failed statements and time-outs change the count as well
    const StatementHandle statement(link_.get());
    ResultSet count;
    const bool good = SQL_SUCCEEDED(execute(statement.get(), "SELECT @@TRANCOUNT", carrier_)) &&
                      fetchResult(statement.get(), count, carrier_) && !count.rows.empty();
    return good ? static_cast<int>(count.rows[0][0].integer()) : 0;
}

DbError OdbcConnection::asError(const Diagnostic& diagnostic) {
    DbError error = diagnostic.error;
    error.source = kSource;
    if (diagnostic.tellsLostServer()) {
        lost_ = open_;
        error.number = kErrServerLost;
        error.severity = 20;
        error.description = "The connection to the server was lost; what was not saved is undone. (" +
                            diagnostic.error.description + ")";
    } else if (diagnostic.tellsTimeout()) {
        error.number = kErrTimeout;
        error.description = "The server did not finish the statement within " +
                            std::to_string(options_.commandTimeout_s) + " seconds; it was stopped. (" +
                            diagnostic.error.description + ")";
    }
    return error;
}

bool OdbcConnection::collect(SQLHSTMT statement, SQLRETURN code, Messages& messages) {
    bool failed = code == SQL_ERROR || code == SQL_INVALID_HANDLE;
    const auto told = diagnosticsOf(SQL_HANDLE_STMT, statement);
    for (const Diagnostic& one : told) {
        messages.push_back(asError(one));
        failed = failed || messages.back().severity > 10;
    }
    if (failed && told.empty()) messages.push_back(failure(kErrServerLost, "The driver failed without a message."));
    if (failed && !lost_) {
        SQLUINTEGER dead = 0;
        SQLGetConnectAttrW(link_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
        lost_ = dead == SQL_CD_TRUE;
    }
    return failed;
}

bool OdbcConnection::readResult(SQLHSTMT statement, std::vector<ResultSet>& results) {
    SQLSMALLINT columns = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(statement, &columns))) return false;
    if (columns > 0) return fetchResult(statement, results.emplace_back(), carrier_);
    SQLLEN rows = -1;
    if (SQL_SUCCEEDED(SQLRowCount(statement, &rows)) && rows >= 0) setAffected(rows);
    return true;
}

bool OdbcConnection::send(std::string_view text, std::vector<ResultSet>& results, Messages& messages) {
    const StatementHandle statement(link_.get());
    if (!statement) {
        messages.push_back(failure(kErrServerLost, "The connection to the server is closed."));
        return false;
    }
    const auto limit = static_cast<SQLULEN>(options_.commandTimeout_s);
    SQLSetStmtAttrW(statement.get(), SQL_ATTR_QUERY_TIMEOUT, asPointer(limit), SQL_IS_UINTEGER);
    // texts of users may hold "{" and "?": they are no escapes of ODBC
    SQLSetStmtAttrW(statement.get(), SQL_ATTR_NOSCAN, asPointer(SQL_NOSCAN_ON), SQL_IS_UINTEGER);
    bool good = true;
    int errors = 0;
    SQLRETURN code = execute(statement.get(), text, carrier_);
    if (code == SQL_NO_DATA) setAffected(0);  // an UPDATE or DELETE that found no row
    if (code == SQL_NO_DATA) code = SQLMoreResults(statement.get());
    // every result is read to its end, also behind an error: leaving one would stop the rest of the batch
    while (code != SQL_NO_DATA && !lost_) {
        if (code != SQL_SUCCESS && collect(statement.get(), code, messages)) good = false;
        if (SQL_SUCCEEDED(code) && !readResult(statement.get(), results)) {
            collect(statement.get(), SQL_ERROR, messages);
            good = false;
            break;
        }
        if (!SQL_SUCCEEDED(code) && ++errors >= kErrorsMax) break;
        const SQLRETURN next = SQLMoreResults(statement.get());
        if (next == SQL_ERROR && !SQL_SUCCEEDED(code) && nothingMore(statement.get())) break;
        code = next;
    }
    return good;
}

bool OdbcConnection::signOnAgain(Messages& messages) {
    try {
        close();
        open();
        return true;
    } catch (const Error& e) {
        lost_ = true;
        messages.push_back(failure(kErrServerLost, e.description));
        return false;
    }
}

bool OdbcConnection::run(std::string_view statement, std::vector<ResultSet>& results, Messages& messages) {
    if (!open_ && !lost_) {
        messages.push_back(failure(kErrServerLost, "The connection to the server is closed."));
        return false;
    }
    if (lost_) {
        if (!signOnAgain(messages)) return false;
    }
    if (!sqlServer_) {
        if (const auto done = runCounted(statement, messages)) return *done;
    }
    return send(statement, results, messages);
}

std::optional<bool> OdbcConnection::runCounted(std::string_view statement, Messages& messages) {
    const std::string text = UCase(trimBlanks(statement));
    if (text == "BEGIN TRAN") {
        if (counted_ == 0) {
            SQLSetConnectAttrW(link_.get(), SQL_ATTR_AUTOCOMMIT, asPointer(SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
        }
        ++counted_;
        return true;
    }
    if (text == "COMMIT TRAN") {
        if (counted_ > 1) {
            --counted_;
            return true;
        }
        if (counted_ == 1) return endCounted(SQL_COMMIT, messages);
        messages.push_back(
            failure(kErrNoBegin, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."));
        return false;
    }
    if (text == "ROLLBACK TRAN") {
        if (counted_ > 0) return endCounted(SQL_ROLLBACK, messages);
        messages.push_back(failure(kErrNoBeginForRollback,
                                   "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."));
        return false;
    }
    return std::nullopt;
}

bool OdbcConnection::endCounted(SQLSMALLINT how, Messages& messages) {
    const SQLRETURN code = SQLEndTran(SQL_HANDLE_DBC, link_.get(), how);
    if (!SQL_SUCCEEDED(code)) {
        for (const Diagnostic& one : diagnosticsOf(Link::kind, link_.get())) messages.push_back(asError(one));
        return false;
    }
    counted_ = 0;
    SQLSetConnectAttrW(link_.get(), SQL_ATTR_AUTOCOMMIT, asPointer(SQL_AUTOCOMMIT_ON), SQL_IS_UINTEGER);
    return true;
}

void OdbcConnection::close() {
    if (!open_) return;
    if (!lost_) {
        if (sqlServer_) {
            RollbackTrans();
        } else if (counted_ > 0) {
            SQLEndTran(SQL_HANDLE_DBC, link_.get(), SQL_ROLLBACK);
        }
    }
    SQLDisconnect(link_.get());
    link_ = Link();
    open_ = false;
    lost_ = false;
    counted_ = 0;
}

}  // namespace odbc

std::unique_ptr<Connection> openOdbc(const OdbcOptions& options) {
    auto connection = std::make_unique<odbc::OdbcConnection>(options);
    connection->open();
    return connection;
}

}  // namespace kv
