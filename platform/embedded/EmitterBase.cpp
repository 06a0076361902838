#include "platform/embedded/Emitter.h"

namespace kv::tsql {

char operatorChar(BinaryOp op) {
    static constexpr char kChars[] = {'+', '-', '*', '/', '%', '&', '|', '^'};
    return kChars[static_cast<int>(op)];
}

Emitter::Emitter(EmitHost& host, std::string database, const VariableScope* variables, Plan& plan)
    : host_(host), database_(std::move(database)), variables_(variables), plan_(plan) {
    plan_.version = host.catalog().version();
    plan_.database = database_;
}

int Emitter::addSlot(Slot slot) {
    plan_.slots.push_back(std::move(slot));
    return static_cast<int>(plan_.slots.size()) - 1;
}

std::string Emitter::newAlias(const char* prefix) { return prefix + std::to_string(++aliases_); }

SqlError Emitter::refuse(std::string_view construct, const Pos& pos) const {
    return notSupported(construct, static_cast<int>(pos.line), static_cast<int>(pos.column));
}

Em Emitter::settle(Em em) const {
    if (!em.dirty) return em;
    em.sql = settled(em.sql, em.type);
    em.dirty = false;
    return em;
}

std::string Emitter::collatedSql(const Em& em) const {
    if (!em.type.isText() || em.collated) return em.sql;
    return "(" + em.sql + ") COLLATE CI";
}

/// The one place where a type becomes another: a literal or variable is converted when it is bound, what fits already
/// stays, the rest is wrapped.
Em Emitter::to(Em em, const Type& type, ConvertMode mode, const std::string& where) {
    em = settle(std::move(em));
    if (type.isNull()) return em;
    if (em.type.isNull()) {
        em.type = type;
        return em;
    }
    if (em.slot >= 0 && conditional_ == 0) {
        Slot& slot = plan_.slots[static_cast<std::size_t>(em.slot)];
        if (!needsConversion(em.type, type, mode)) return em;
        requireConvertible(em.type, type, mode == ConvertMode::Cast);
        slot.convert = true;
        slot.mode = mode;
        slot.want = type;
        slot.where = where;
        em.type = type;
        em.slot = -1;
        return em;
    }
    if (!needsConversion(em.type, type, mode)) {
        return em;
    }
    if (em.constant) {
        try {
            Datum converted = convertDatum(*em.constant, em.type, type, mode, where);
            em.sql = datumSql(converted);
            em.constant = std::move(converted);
            em.type = type;
            return em;
        } catch (const SqlError&) {
            // It fails when the statement runs, as it would on the server: a branch that is not taken must not.
            em.constant.reset();
        }
    }
    em.sql = conversionSql(em.sql, em.type, type, mode, where);
    em.type = type;
    em.slot = -1;
    em.column = false;
    em.collated = !type.isText();
    em.constant.reset();
    return em;
}

std::string Emitter::literalNow(const LiteralExpr& expr, bool pin) {
    if (expr.index < 0) return expr.text;
    if (pin && !expr.pinned) host_.pin(expr.index);
    return host_.literalText(expr.index);
}

Em Emitter::constantValue(const Expr& expr, const Type& type) {
    ++inline_;
    Em em = to(ex(expr), type, ConvertMode::Column);
    --inline_;
    return em;
}

std::string Emitter::tableCondition(const Expr& expr, const Object& table) {
    ++inline_;
    expansion_ = false;
    Scope scope;
    Source source = tableSourceColumns(std::make_shared<Object>(table));
    source.alias = table.name;
    source.sqlAlias.clear();  // the table's own text names its columns alone
    scope.sources.push_back(std::move(source));
    scope_ = &scope;
    std::string sql = cond(expr);
    scope_ = nullptr;
    expansion_ = true;
    --inline_;
    return sql;
}

Type Emitter::value(const Expr& expr, const Type* type) {
    Em em = ex(expr);
    em = type ? to(std::move(em), *type, ConvertMode::Variable) : settle(std::move(em));
    plan_.sql = "SELECT " + em.sql;
    plan_.columns = {{"", em.type, em.nullable, false}};
    return em.type;
}

void Emitter::condition(const Expr& expr) {
    plan_.sql = "SELECT " + cond(expr);
    plan_.columns = {{"", Type::bit(), true, false}};
}

ObjectPtr Emitter::target(const ObjectName& name, bool views) {
    if (!name.server.empty()) throw refuse("a four-part name", name.pos);
    ObjectPtr found;
    if (name.isTemporary() || name.isVariable()) {
        found = host_.localTable(name.name);
        if (found) plan_.locals.push_back({name.name, found->physical, found->id});
        if (!found && name.isVariable()) throw sqlErrorAt(static_cast<int>(name.pos.line), 1087, {name.name});
    } else {
        found = host_.catalog().find(name.database.empty() ? database_ : name.database, name.name);
        if (found && found->type != ObjectType::Table && !(views && found->type == ObjectType::View)) found = nullptr;
    }
    if (!found) throw sqlErrorAt(static_cast<int>(name.pos.line), 208, {name.text()});
    return found;
}

}  // namespace kv::tsql
