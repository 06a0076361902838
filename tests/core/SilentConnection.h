#pragma once
#include "platform/data/Connection.h"

namespace kv {

/// A connection that answers nothing; properties alone are tried on it.
class SilentConnection : public Connection {
public:
    int transactionDepth() const override { return 0; }
    std::string connectionString() const override { return {}; }
    void setDefaultDatabase(const std::string&) override {}
    std::string defaultDatabase() const override { return {}; }
    void setCommandTimeout(int) override {}
    bool isOpen() const override { return true; }
    void close() override {}

protected:
    bool run(std::string_view, std::vector<ResultSet>&, std::vector<DbError>&) override { return true; }
};

}  // namespace kv
