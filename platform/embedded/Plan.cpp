#include "platform/embedded/Plan.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace kv::tsql {
namespace {

constexpr std::size_t kPoolMax = 4;
constexpr std::size_t kVariantsMax = 64;

/// Variables that a statement list declares, in the order of the text.
class Declarations : public Walker {
public:
    explicit Declarations(VariableScope& scope) : scope_(scope) {}

protected:
    bool enter(const Stmt& statement) override {
        if (const auto* declare = as<DeclareStmt>(&statement)) {
            for (const Declaration& item : declare->items) {
                VariableInfo info;
                info.name = item.name;
                info.table = item.table.get();
                info.cursor = !item.table && item.type.name == "cursor";
                if (!info.table && !info.cursor) info.type = resolveType(item.type, TypePlace::Declaration);
                scope_.add(std::move(info));
            }
        }
        return true;
    }

private:
    VariableScope& scope_;
};

class VariableUses : public Walker {
public:
    explicit VariableUses(const VariableScope& scope) : scope_(scope) {}

protected:
    bool enter(const Expr& expr) override {
        if (const auto* variable = as<VariableExpr>(&expr)) need(variable->name, variable->pos);
        return true;
    }
    bool enter(const SelectBody& body) override {
        for (const SelectItem& item : body.items) {
            if (!item.variable.empty()) need(item.variable, item.pos);
        }
        return true;
    }
    bool enter(const TableRef& ref) override {
        if (const auto* variable = as<VariableRef>(&ref)) needTable(variable->name, variable->pos);
        return true;
    }
    bool enter(const Stmt& statement) override {
        if (const auto* set = as<SetVariableStmt>(&statement)) need(set->name, set->pos);
        if (const auto* update = as<UpdateStmt>(&statement)) {
            for (const Assignment& a : update->assignments) {
                if (!a.variable.empty()) need(a.variable, a.pos);
            }
            if (update->target.isVariable()) needTable(update->target.name, update->pos);
        }
        if (const auto* insert = as<InsertStmt>(&statement)) {
            if (insert->target.isVariable()) needTable(insert->target.name, insert->pos);
        }
        if (const auto* del = as<DeleteStmt>(&statement)) {
            if (del->target.isVariable()) needTable(del->target.name, del->pos);
        }
        if (const auto* exec = as<ExecStmt>(&statement)) {
            if (!exec->resultVariable.empty()) need(exec->resultVariable, exec->pos);
        }
        if (const auto* fetch = as<FetchCursorStmt>(&statement)) {
            for (const std::string& name : fetch->into) need(name, fetch->pos);
        }
        return true;
    }

private:
    void need(const std::string& name, const Pos& pos) const {
        if (scope_.find(name) < 0) throw sqlErrorAt(static_cast<int>(pos.line), 137, {name});
    }
    void needTable(const std::string& name, const Pos& pos) const {
        const int at = scope_.find(name);
        if (at < 0 || !scope_.at(at).table) throw sqlErrorAt(static_cast<int>(pos.line), 1087, {name});
    }
    const VariableScope& scope_;
};

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return c - 'A' + 10;
}

std::string bytesOfHex(std::string_view text) {
    if (text.size() >= 2) text.remove_prefix(2);
    std::string digits(text);
    if (digits.size() % 2) digits.insert(digits.begin(), '0');
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(hexDigit(digits[i]) * 16 + hexDigit(digits[i + 1]));
    }
    return bytes;
}

double realOf(std::string_view text) { return std::strtod(std::string(text).c_str(), nullptr); }

Datum integerOf(std::string_view text) {
    std::int64_t value = 0;
    const auto done = std::from_chars(text.data(), text.data() + text.size(), value);
    if (done.ec != std::errc()) throw sqlError(1007, {text});
    return Datum::of(value);
}

}  // namespace

Statement Plan::acquire(sqlite3* db) {
    if (pool_.empty()) return Statement(db, sql);
    Statement statement = std::move(pool_.back());
    pool_.pop_back();
    return statement;
}

void Plan::release(Statement&& statement) {
    if (!statement) return;
    statement.reset();
    if (pool_.size() < kPoolMax) pool_.push_back(std::move(statement));
}

int VariableScope::find(std::string_view name) const {
    const auto at = byName_.find(lowered(name));
    return at == byName_.end() ? -1 : at->second;
}

int VariableScope::add(VariableInfo info) {
    const int index = static_cast<int>(list_.size());
    if (!byName_.emplace(lowered(info.name), index).second) throw sqlError(134, {info.name});
    list_.push_back(std::move(info));
    return index;
}

void declareVariables(const StmtList& statements, VariableScope& scope) { Declarations(scope).walk(statements); }
void checkVariables(const StmtList& statements, const VariableScope& scope) { VariableUses(scope).walk(statements); }

Type resolveType(const TypeName& name, TypePlace place, int position) {
    std::optional<int> first;
    std::optional<int> second;
    if (name.length == TypeName::kMax) first = kMaxLength;
    if (name.length >= 0) first = name.length;
    if (name.scale >= 0) second = name.scale;
    const std::optional<Type> type =
        name.userSchema.empty() ? typeByName(name.name, first, second, place) : std::nullopt;
    const int line = static_cast<int>(name.pos.line);
    if (!type && place == TypePlace::Cast) throw sqlErrorAt(line, 243, {name.name});
    if (!type) throw sqlErrorAt(line, 2715, {position, name.name});
    return *type;
}

Datum literalDatum(LiteralKind kind, std::string_view text) {
    switch (kind) {
        case LiteralKind::Null:
            return Datum::null();
        case LiteralKind::String:
        case LiteralKind::NString:
            return Datum::of(std::string(text));
        case LiteralKind::Int:
        case LiteralKind::BigInt:
            return integerOf(text);
        case LiteralKind::Decimal:
            if (storageOf(decimalLiteralType(text)) == Storage::Integer) {
                return integerOf(text.substr(0, text.find('.')));
            }
            // up to 15 digits every decimal has a double of its own; more must prove it
            return text.size() <= 16 ? Datum::of(realOf(text)) : numberLiteral(text, decimalLiteralType(text));
        case LiteralKind::Money:
            return text.size() <= 12 ? Datum::of(realOf(text)) : numberLiteral(text, Type::money());
        case LiteralKind::Float:
            return Datum::of(realOf(text));
        case LiteralKind::Binary:
            return Datum::bytes(bytesOfHex(text));
    }
    return Datum::null();
}

Type literalType(LiteralKind kind, std::string_view text) {
    const auto length = static_cast<int>(std::max<std::size_t>(text.size(), 1));
    switch (kind) {
        case LiteralKind::Null:
            return {};
        case LiteralKind::String:
            return Type::varchar(length > 8000 ? kMaxLength : length);
        case LiteralKind::NString:
            return Type::nvarchar(length > 4000 ? kMaxLength : length);
        case LiteralKind::Int:
        case LiteralKind::BigInt:
            return integerLiteralType(text);
        case LiteralKind::Decimal:
            return decimalLiteralType(text);
        case LiteralKind::Float:
            return Type::floating();
        case LiteralKind::Money:
            return Type::money();
        case LiteralKind::Binary:
            return Type::text(Kind::VarBinary, std::max(1, (length - 1) / 2));
    }
    return {};
}

std::shared_ptr<CompiledBatch> BatchCache::find(std::string_view key, const std::vector<Literal>& literals) {
    const auto at = entries_.find(key);
    if (at == entries_.end()) return nullptr;
    at->second.used = ++clock_;
    for (const auto& variant : at->second.variants) {
        const bool same = std::all_of(variant->pins.begin(), variant->pins.end(), [&](const Pin& pin) {
            return literals[static_cast<std::size_t>(pin.index)].text == pin.text;
        });
        if (same) return variant;
    }
    return nullptr;
}

void BatchCache::put(const std::string& key, std::shared_ptr<CompiledBatch> batch) {
    if (entries_.size() >= capacity_ && !entries_.count(key)) {
        // Half of the entries go at once, so that a stream of new texts does not search for the oldest each time.
        std::vector<std::uint64_t> ages;
        for (const auto& [text, entry] : entries_) ages.push_back(entry.used);
        std::nth_element(ages.begin(), ages.begin() + static_cast<long>(ages.size() / 2), ages.end());
        const std::uint64_t limit = ages[ages.size() / 2];
        std::erase_if(entries_, [limit](const auto& item) { return item.second.used < limit; });
    }
    Entry& entry = entries_[key];
    entry.used = ++clock_;
    if (entry.variants.size() >= kVariantsMax) entry.variants.erase(entry.variants.begin());
    entry.variants.push_back(std::move(batch));
}

}  // namespace kv::tsql
