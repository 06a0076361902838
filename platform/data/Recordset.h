#pragma once
// Recordset: the rows of one result set, copied to the client, with a cursor; updatable when it came from one table.

#include <initializer_list>
#include <memory>
#include <source_location>
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

/// The fields of a result set. Copies share one list until one of them is changed: a driver describes a statement once
/// for all its runs.
class FieldList {
public:
    FieldList() = default;
    FieldList(std::vector<Field> fields) : list_(std::make_shared<std::vector<Field>>(std::move(fields))) {}
    FieldList(std::initializer_list<Field> fields) : FieldList(std::vector<Field>(fields)) {}

    operator const std::vector<Field>&() const { return list(); }
    std::size_t size() const { return list_ ? list_->size() : 0; }
    bool empty() const { return size() == 0; }
    const Field& operator[](std::size_t index) const { return (*list_)[index]; }
    std::vector<Field>::const_iterator begin() const { return list().begin(); }
    std::vector<Field>::const_iterator end() const { return list().end(); }
    void push_back(Field field);

private:
    const std::vector<Field>& list() const;
    std::shared_ptr<std::vector<Field>> list_;
};

/// One result set as a driver delivers it.
struct ResultSet {
    FieldList fields;
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
    /// Moving raises 3219 while changes of the row are neither saved nor cancelled.
    void moveNext();
    void moveFirst();

    /// Index of a field by name, letter case ignored; -1 when there is none.
    int indexOf(std::string_view name) const;
    bool has(std::string_view name) const { return indexOf(name) >= 0; }
    /// Value of the current row, with changes that are not saved yet. Raises 3265 for an unknown field, 3021 without
    /// a current row.
    const Value& operator[](std::string_view name) const;
    const Value& at(std::size_t column) const;

    // Editing: a recordset opened by Connection::OpenTable sends UPDATE or INSERT by key at update(). A failed update
    // keeps the changes, so that they can be corrected or cancelled. The connection must outlive the recordset.
    /// Begins a new row. Raises 3251 where the recordset cannot be written, 3219 over unsaved changes.
    void addNew();
    /// Raises 3265 for an unknown field, 3021 without a row, 3251 where the recordset cannot be written.
    void set(std::string_view name, Value value);
    /// Sends the changes and takes them over into the row. Raises the server's error; 3197 when no row has the key.
    void update(std::source_location at = std::source_location::current());
    void cancelUpdate();
    bool updatable() const { return connection_ != nullptr; }
    bool editing() const { return adding_ || !pending_.empty(); }

private:
    friend class Connection;
    using Change = std::pair<std::size_t, Value>;  ///< column and its new value
    const Value& valueAt(std::size_t column) const;
    std::size_t columnOf(std::string_view name) const;
    void refuseOpenChanges() const;
    std::string insertText() const;
    std::string updateText() const;

    ResultSet result_;
    std::size_t at_ = 0;
    Connection* connection_ = nullptr;
    std::string table_;
    std::vector<std::string> keys_;
    bool adding_ = false;
    std::vector<Change> pending_;
};

}  // namespace kv
