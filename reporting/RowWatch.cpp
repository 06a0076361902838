#include "reporting/RowWatch.h"

#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

constexpr const char* kGone = "'{key}' was deleted at another workstation while you edited it. Save it as a new entry?";
constexpr const char* kChanged =
    "'{key}' was changed at another workstation while you edited it. Replace what was saved there?";

}  // namespace

void RowWatch::watch(std::string statement, Row row) {
    statement_ = std::move(statement);
    row_ = std::move(row);
    new_ = false;
}

void RowWatch::watchNew(bool mayExist) {
    row_.clear();
    new_ = true;
    mayExist_ = mayExist;
}

RowWatch::Clash RowWatch::look(Connection& cn, const std::string& statement) const {
    const Recordset row = cn.Open(new_ ? statement : statement_);
    if (new_) return row.eof() || mayExist_ ? Clash::None : Clash::Taken;
    if (row.eof()) return Clash::Gone;
    return row.rows().front() == row_ ? Clash::None : Clash::Changed;
}

bool RowWatch::accepts(Clash found, const std::string& key, const std::string& taken) {
    if (found == Clash::Taken) {
        MsgBox(taken, Icon::Exclamation);
        return false;
    }
    return Ask(replaceAll(found == Clash::Gone ? kGone : kChanged, "{key}", key), "Warning", Icon::Exclamation, false);
}

bool RowWatch::save(Connection& cn, const std::string& statement, const std::string& key, const std::string& taken,
                    const std::function<void()>& body) const {
    for (bool accepted = false;; accepted = true) {
        Clash found = Clash::None;
        {
            Transaction save(cn);
            if (!accepted) found = look(cn, statement);
            if (found == Clash::None) {
                body();
                save.commit();
                return true;
            }
        }
        if (!accepts(found, key, taken)) return false;
    }
}

}  // namespace kv
