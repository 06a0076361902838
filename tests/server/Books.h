#pragma once
// Books: a fresh demo hospital for one test, with the statements that screens send put short.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Money.h"
#include "platform/data/Connection.h"

namespace kv::server_test {

/// One line of a batch: account, department, debit, credit.
struct Line {
    std::string code;
    std::string debit;
    std::string credit;
    std::string dept;
};

class Books : public ::testing::Test {
protected:
    Books();
    ~Books() override;

    /// A further connection to the same file.
    std::unique_ptr<Connection> connect() const;
    const std::string& file() const { return file_; }

    /// Saves a batch as the entry screen does: lines, header, in one transaction. Date as yyyy-MM-dd.
    void enter(std::string_view book, std::string_view batch, std::string_view date, const std::vector<Line>& lines,
               std::string_view type = "");
    void run(std::string_view statement) { cn->Execute(statement); }
    /// First column of the first row as text; "none" where there is no row.
    std::string one(std::string_view statement);
    std::vector<Row> all(std::string_view statement);
    /// Rows as "a|b|c", for short results.
    std::vector<std::string> rows(std::string_view statement);
    /// The error that a statement meets: "number text"; empty when it succeeds.
    std::string refused(std::string_view statement);

    std::unique_ptr<Connection> cn;

private:
    std::string file_;
};

/// A balanced batch of one amount: cash on hand against admitted patients.
std::vector<Line> simple(std::string_view amount);

/// The queries of server/checks by file name without the ending.
std::vector<std::pair<std::string, std::string>> checkQueries();

}  // namespace kv::server_test
