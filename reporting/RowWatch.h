#pragma once
// RowWatch: what other workstations did to a row between its loading and its saving, and the save that asks about it.

#include <functional>
#include <string>

#include "platform/data/Connection.h"

namespace kv {

class RowWatch {
public:
    enum class Clash { None, Taken, Gone, Changed };

    /// A row as it was read; `statement` reads it again.
    void watch(std::string statement, Row row);
    /// A new row: nothing may stand under its key, unless `mayExist`.
    void watchNew(bool mayExist = false);
    bool isNew() const { return new_; }

    /// Runs `body` in a transaction when nobody changed the row; else asks first, outside of it. `statement` reads the
    /// row by the key as entered, `taken` is said to a new key that has a row. False: the user stays with the entry.
    bool save(Connection& cn, const std::string& statement, const std::string& key, const std::string& taken,
              const std::function<void()>& body) const;

private:
    Clash look(Connection& cn, const std::string& statement) const;
    static bool accepts(Clash found, const std::string& key, const std::string& taken);

    std::string statement_;
    Row row_;
    bool new_ = true;
    bool mayExist_ = false;
};

}  // namespace kv
