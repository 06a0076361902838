// The interpreter's cursors: the rows of a query, copied when it is opened, and a place among them.

#include <algorithm>

#include "platform/base/Text.h"
#include "platform/embedded/Interp.h"

namespace kv::tsql {

/// A cursor of the frame that declared it. Its query sees the variables as they were at DECLARE.
struct Cursor {
    std::string name;
    const DeclareCursorStmt* declared = nullptr;
    std::vector<Datum> variables;
    bool scrolls = false;
    bool open = false;
    std::vector<OutColumn> columns;
    std::vector<std::vector<Datum>> rows;
    std::int64_t at = 0;  ///< from 1; 0 before the first row, one more than there are rows after the last
};

namespace {

constexpr int kFetched = 0;
constexpr int kNoRow = -1;

bool scrollable(const DeclareCursorStmt& stmt) {
    for (const std::string& option : stmt.options) {
        for (const std::string_view word : {"SCROLL", "STATIC", "KEYSET", "DYNAMIC"})
            if (option == word) return true;
    }
    return false;
}

/// Where a FETCH of this kind leads, from where the cursor stands.
std::int64_t placeOf(FetchDirection direction, std::int64_t count, const Cursor& cursor) {
    const auto rows = static_cast<std::int64_t>(cursor.rows.size());
    switch (direction) {
        case FetchDirection::Next:
            return cursor.at + 1;
        case FetchDirection::Prior:
            return cursor.at - 1;
        case FetchDirection::First:
            return 1;
        case FetchDirection::Last:
            return rows;
        case FetchDirection::Absolute:
            return count >= 0 ? count : rows + 1 + count;
        case FetchDirection::Relative:
            return cursor.at + count;
    }
    return 0;
}

}  // namespace

std::shared_ptr<Cursor> Interp::cursorNamed(const std::string& name) const {
    for (const std::shared_ptr<Cursor>& cursor : frame_->cursors) {
        if (equalsNoCase(cursor->name, name)) return cursor;
    }
    throw sqlError(16916, {name});
}

void Interp::declareCursor(const DeclareCursorStmt& stmt) {
    const bool variable = stmt.name[0] == '@';
    std::erase_if(frame_->cursors, [&](const auto& known) {
        if (!equalsNoCase(known->name, stmt.name)) return false;
        if (!variable) throw sqlError(16915, {stmt.name});
        return true;
    });
    auto cursor = std::make_shared<Cursor>();
    cursor->name = stmt.name;
    cursor->declared = &stmt;
    cursor->variables = frame_->variables;
    cursor->scrolls = scrollable(stmt);
    frame_->cursors.push_back(std::move(cursor));
}

void Interp::openCursor(const std::string& name) {
    const std::shared_ptr<Cursor> cursor = cursorNamed(name);
    if (cursor->open) throw sqlError(16905);
    Plan plan;
    Emitter emitter(*this, frame_->database, frame_->scope, plan);
    emitter.query(*cursor->declared->query, {});
    Running running(plan, session_.db());
    std::swap(frame_->variables, cursor->variables);
    bind(running.get(), plan, false);
    std::swap(frame_->variables, cursor->variables);
    const int count = static_cast<int>(plan.columns.size());
    while (step(running.get())) {
        std::vector<Datum>& row = cursor->rows.emplace_back();
        for (int i = 0; i < count; ++i) row.push_back(columnDatum(running.get(), i));
    }
    cursor->columns = plan.columns;
    cursor->at = 0;
    cursor->open = true;
    rowCount_ = 0;
}

void Interp::fetchCursor(const FetchCursorStmt& stmt) {
    const std::shared_ptr<Cursor> cursor = cursorNamed(stmt.name);
    const int line = static_cast<int>(stmt.pos.line);
    if (!cursor->open) throw sqlErrorAt(line, 16917);
    if (stmt.direction != FetchDirection::Next && !cursor->scrolls) throw sqlErrorAt(line, 16911);
    if (stmt.into.empty()) throw notSupported("FETCH without INTO", line, static_cast<int>(stmt.pos.column));
    if (stmt.into.size() != cursor->columns.size()) throw sqlErrorAt(line, 16924);
    const std::int64_t count = stmt.count ? evaluate(*stmt.count, Type::bigint()).integer : 0;
    const auto rows = static_cast<std::int64_t>(cursor->rows.size());
    cursor->at = std::clamp<std::int64_t>(placeOf(stmt.direction, count, *cursor), 0, rows + 1);
    const bool found = cursor->at >= 1 && cursor->at <= rows;
    fetchStatus_ = found ? kFetched : kNoRow;
    rowCount_ = found ? 1 : 0;
    if (!found) return;
    const std::vector<Datum>& row = cursor->rows[static_cast<std::size_t>(cursor->at - 1)];
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int index = frame_->scope->find(stmt.into[i]);
        if (index < 0) throw sqlErrorAt(line, 137, {stmt.into[i]});
        const Type& from = cursor->columns[i].type;
        const Type& to = frame_->scope->at(index).type;
        const bool same = row[i].isNull() || !needsConversion(from, to, ConvertMode::Variable);
        frame_->variables[static_cast<std::size_t>(index)] =
            same ? row[i] : convertDatum(row[i], from, to, ConvertMode::Variable);
    }
}

void Interp::cursorStatement(const Stmt& stmt) {
    switch (stmt.kind) {
        case StmtKind::DeclareCursor:
            return declareCursor(static_cast<const DeclareCursorStmt&>(stmt));
        case StmtKind::OpenCursor:
            return openCursor(static_cast<const CursorStmt&>(stmt).name);
        case StmtKind::FetchCursor:
            return fetchCursor(static_cast<const FetchCursorStmt&>(stmt));
        default:
            break;
    }
    const std::shared_ptr<Cursor> cursor = cursorNamed(static_cast<const CursorStmt&>(stmt).name);
    if (stmt.kind == StmtKind::CloseCursor) {
        if (!cursor->open) throw sqlError(16917);
        cursor->open = false;
        cursor->rows.clear();
        return;
    }
    std::erase(frame_->cursors, cursor);
}

}  // namespace kv::tsql
