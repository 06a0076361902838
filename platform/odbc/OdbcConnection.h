#pragma once
// OdbcConnection: one session of a server through unixODBC.

#include <optional>

#include "platform/odbc/Handles.h"
#include "platform/odbc/Odbc.h"
#include "platform/odbc/Wide.h"

namespace kv::odbc {

class OdbcConnection : public Connection {
public:
    explicit OdbcConnection(const OdbcOptions& options);
    ~OdbcConnection() override { OdbcConnection::close(); }

    int transactionDepth() const override;
    std::string connectionString() const override;
    void setDefaultDatabase(const std::string& name) override;
    std::string defaultDatabase() const override { return options_.defaultDatabase; }
    void setCommandTimeout(int seconds) override { options_.commandTimeout_s = seconds; }
    bool isOpen() const override { return open_ && !lost_; }
    void close() override;

    /// Signs on; raises the server's error.
    void open();

protected:
    bool run(std::string_view statement, std::vector<ResultSet>& results, std::vector<DbError>& messages) override;

private:
    using Messages = std::vector<DbError>;

    bool send(std::string_view statement, std::vector<ResultSet>& results, Messages& messages);
    bool readResult(SQLHSTMT statement, std::vector<ResultSet>& results);
    /// Takes over what stands at the statement; true when an error is among it.
    bool collect(SQLHSTMT statement, SQLRETURN code, Messages& messages);
    DbError asError(const Diagnostic& diagnostic);
    bool signOnAgain(Messages& messages);
    void prepareSession();
    void chooseCarrier();
    /// Transactions of a server that counts none of its own (every one but SQL Server).
    std::optional<bool> runCounted(std::string_view statement, Messages& messages);
    bool endCounted(SQLSMALLINT how, Messages& messages);
    std::string infoText(SQLUSMALLINT what) const;

    OdbcOptions options_;
    Environment environment_;
    Link link_;
    bool open_ = false;
    bool lost_ = false;
    bool sqlServer_ = false;
    std::string serverName_;  ///< as the driver tells it, for connection strings that name a data source only
    Carrier carrier_ = Carrier::Utf16;
    int counted_ = 0;
};

}  // namespace kv::odbc
