#include "platform/data/Recordset.h"

#include <algorithm>

#include "platform/base/Error.h"
#include "platform/base/Text.h"
#include "platform/data/Connection.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

constexpr long kErrNoCurrentRow = 3021;
constexpr long kErrRowGone = 3197;
constexpr long kErrOpenChanges = 3219;
constexpr long kErrNotUpdatable = 3251;
constexpr long kErrNoSuchField = 3265;

[[noreturn]] void fail(long number, const std::string& text) { throw Error(number, "Recordset", text); }

char foldedLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// Field names are compared once per value read, so plain letters are compared without making copies.
bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && (std::equal(a.begin(), a.end(), b.begin(),
                                               [](char x, char y) { return foldedLetter(x) == foldedLetter(y); }) ||
                                    equalsNoCase(a, b));
}

std::string bracketed(std::string_view name) { return "[" + replaceAll(name, "]", "]]") + "]"; }

}  // namespace

void FieldList::push_back(Field field) {
    if (!list_ || list_.use_count() > 1) list_ = std::make_shared<std::vector<Field>>(list());
    list_->push_back(std::move(field));
}

const std::vector<Field>& FieldList::list() const {
    static const std::vector<Field> none;
    return list_ ? *list_ : none;
}

int Recordset::indexOf(std::string_view name) const {
    for (std::size_t i = 0; i < result_.fields.size(); ++i) {
        if (sameName(result_.fields[i].name, name)) return static_cast<int>(i);
    }
    return -1;
}

std::size_t Recordset::columnOf(std::string_view name) const {
    const int column = indexOf(name);
    if (column < 0) fail(kErrNoSuchField, "The result has no field \"" + std::string(name) + "\".");
    return static_cast<std::size_t>(column);
}

const Value& Recordset::valueAt(std::size_t column) const {
    static const Value kUnset;
    for (const Change& change : pending_) {
        if (change.first == column) return change.second;
    }
    if (adding_) return kUnset;
    if (eof()) fail(kErrNoCurrentRow, "The result has no current row.");
    return result_.rows[at_][column];
}

const Value& Recordset::operator[](std::string_view name) const { return valueAt(columnOf(name)); }

const Value& Recordset::at(std::size_t column) const {
    if (column >= result_.fields.size()) {
        fail(kErrNoSuchField, "The result has no field number " + std::to_string(column) + ".");
    }
    return valueAt(column);
}

void Recordset::refuseOpenChanges() const {
    if (editing()) fail(kErrOpenChanges, "The changes of the row are neither saved nor cancelled.");
}

void Recordset::moveNext() {
    refuseOpenChanges();
    ++at_;
}

void Recordset::moveFirst() {
    refuseOpenChanges();
    at_ = 0;
}

void Recordset::addNew() {
    if (!updatable()) fail(kErrNotUpdatable, "The result cannot be written back.");
    refuseOpenChanges();
    adding_ = true;
}

void Recordset::set(std::string_view name, Value value) {
    const std::size_t column = columnOf(name);
    if (!updatable()) fail(kErrNotUpdatable, "The result cannot be written back.");
    if (!adding_ && eof()) fail(kErrNoCurrentRow, "The result has no current row.");
    const auto known =
        std::find_if(pending_.begin(), pending_.end(), [column](const Change& c) { return c.first == column; });
    if (known != pending_.end()) {
        known->second = std::move(value);
    } else {
        pending_.emplace_back(column, std::move(value));
    }
}

std::string Recordset::insertText() const {
    if (pending_.empty()) return "INSERT INTO " + table_ + " DEFAULT VALUES";
    std::string columns;
    std::string values;
    for (const auto& [column, value] : pending_) {
        const char* comma = columns.empty() ? "" : ", ";
        columns += comma + bracketed(result_.fields[column].name);
        values += comma + sqlLiteral(value);
    }
    return "INSERT INTO " + table_ + " (" + columns + ") VALUES (" + values + ")";
}

std::string Recordset::updateText() const {
    std::string changes;
    std::string condition;
    for (const auto& [column, value] : pending_) {
        changes += (changes.empty() ? "" : ", ") + bracketed(result_.fields[column].name) + " = " + sqlLiteral(value);
    }
    for (const std::string& key : keys_) {
        const std::size_t column = columnOf(key);
        const Value& old = result_.rows[at_][column];  // the key as it was read, also when it is being changed
        condition += (condition.empty() ? " WHERE " : " AND ") + bracketed(result_.fields[column].name) +
                     (old.isNull() ? " IS NULL" : " = " + sqlLiteral(old));
    }
    return "UPDATE " + table_ + " SET " + changes + condition;
}

void Recordset::update(std::source_location at) {
    if (!updatable()) fail(kErrNotUpdatable, "The result cannot be written back.");
    if (!editing()) return;
    connection_->Execute(adding_ ? insertText() : updateText(), at);
    if (adding_) {
        Row fresh(result_.fields.size());
        result_.rows.push_back(std::move(fresh));
        at_ = result_.rows.size() - 1;
    } else if (connection_->recordsAffected() == 0) {
        throw Error(kErrRowGone, "Recordset", "The row was removed by another user.", at);
    }
    for (auto& [column, value] : pending_) result_.rows[at_][column] = std::move(value);
    cancelUpdate();
}

void Recordset::cancelUpdate() {
    adding_ = false;
    pending_.clear();
}

}  // namespace kv
