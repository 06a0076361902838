#pragma once
// Recordset: the rows of one result set, copied to the client, with a cursor; updatable when it came from one table.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Value.h"

namespace kv {

class Connection;

struct Field {
    std::string name;
    DataType type = DataType::VarChar;
    int size = 0;   ///< characters of a text type; 0 where it does not apply
    int scale = 0;  ///< decimals of a decimal type
};

using Row = std::vector<Value>;

/// One result set as a driver delivers it.
struct ResultSet {
    std::vector<Field> fields;
    std::vector<Row> rows;
};

class Recordset {
public:
    Recordset() = default;
    explicit Recordset(ResultSet result) : result_(std::move(result)) {}

    const std::vector<Field>& fields() const { return result_.fields; }
    const std::vector<Row>& rows() const { return result_.rows; }
    std::size_t recordCount() const { return result_.rows.size(); }
    bool empty() const { return result_.rows.empty(); }

    bool eof() const { return at_ >= result_.rows.size(); }
    void moveNext() { ++at_; }
    void moveFirst() { at_ = 0; }

    /// Index of a field by name, letter case ignored; -1 when there is none.
    int indexOf(std::string_view name) const;
    bool has(std::string_view name) const { return indexOf(name) >= 0; }
    /// Value of the current row. Raises 3265 for an unknown field, 3021 without a current row.
    const Value& operator[](std::string_view name) const;
    const Value& at(std::size_t column) const;

    // Editing: a recordset opened by Connection::OpenTable sends UPDATE or INSERT by key at update().
    void addNew();
    void set(std::string_view name, Value value);
    void update();
    bool updatable() const { return connection_ != nullptr; }

private:
    friend class Connection;
    ResultSet result_;
    std::size_t at_ = 0;
    Connection* connection_ = nullptr;
    std::string table_;
    std::vector<std::string> keys_;
    bool adding_ = false;
    std::vector<std::pair<std::string, Value>> pending_;
};

}  // namespace kv
