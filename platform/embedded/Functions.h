#pragma once
// Functions: the scalar functions, aggregates, operators and conversions of T-SQL, as the emitter writes them for
// SQLite and as SQLite calls them.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/Conversions.h"
#include "platform/embedded/SqlError.h"
#include "platform/embedded/Types.h"

struct sqlite3;

namespace kv::tsql {

/// An argument that the emitter has written already.
struct CallArgument {
    std::string sql;
    Type type;
    bool dirty = false;   ///< an exact sum not yet rounded (see CallResult)
    std::string literal;  ///< text of a literal argument (a style, a length), or a bare word (a date part)
    bool isLiteral = false;
};

/// What comes back: SQL for SQLite with its static type. `dirty` results of + - on exact numbers are rounded once where
/// they are consumed: comparison, function argument, output, assignment; see `settled`.
struct CallResult {
    std::string sql;
    Type type;
    bool dirty = false;
};

/// Gives argument `index` as SQL of the type wanted; the emitter's own rule for slots and dirty values.
using ArgumentAs = std::function<std::string(std::size_t index, const Type& wanted)>;

struct FunctionInfo;

/// The function of a name in any letter case, or null: then it is a user's function or error 195.
const FunctionInfo* findFunction(std::string_view name);
std::string_view functionName(const FunctionInfo& info);
bool isDeterministic(const FunctionInfo& info);
/// True where argument 0 is a date part (a bare word, given in CallArgument::literal).
bool takesDatePart(const FunctionInfo& info);
/// True for functions whose value is taken once per statement from a slot (GETDATE and its like).
bool isStatementClock(const FunctionInfo& info);

/// Writes the call. Checks the count of arguments (174, 189), their types (8116, 206) and date parts (155).
CallResult emitCall(const FunctionInfo& info, const std::vector<CallArgument>& args, const ArgumentAs& as);

/// Writes `a op b` for + - * / % and, on integers, & | ^ by the rules of T-SQL: text joins, exact numbers keep their
/// scale, integer division and modulo know error 8134, datetimes take numbers of days.
CallResult emitArithmetic(char op, const std::vector<CallArgument>& args, const ArgumentAs& as);
/// Writes `-a`.
CallResult emitNegation(const CallArgument& arg, const ArgumentAs& as);
/// A dirty expression made canonical: r4(x), rd(x,s), or a range check for integers. Idempotent in value.
std::string settled(const std::string& sql, const Type& type);

/// CONVERT(type, value, style): `style` is the SQL of the style, or the literal in it; also CAST (no style).
/// Styles are checked here when they are literal: error 281.
CallResult emitConvert(const Type& target, const CallArgument& value, const ArgumentAs& as,
                       const std::optional<CallArgument>& style, bool tryOnly);

/// `text LIKE pattern [ESCAPE c]`; for a plain column and a literal pattern with a fixed start it adds the index range.
std::string emitLike(const CallArgument& text, bool plainColumn, const CallArgument& pattern, const ArgumentAs& as,
                     const CallArgument* escape);

/// An aggregate in two halves: an OVER clause goes between them.
struct AggregateSql {
    std::string before;
    std::string after;
    Type type;
};
bool isAggregate(std::string_view name);
/// `star` is COUNT(*); STRING_AGG takes two arguments. Raises 8117 for types the aggregate does not take.
AggregateSql emitAggregate(std::string_view name, bool distinct, bool star, const std::vector<CallArgument>& args,
                           const ArgumentAs& as);

/// A number for @@SPID that no other open connection of the computer has: from the process and its connections.
int newSessionId();

/// What the functions of one connection share. It must outlive the connection's use.
class FunctionContext {
public:
    const int sessionId = newSessionId();
    /// The error that a function met; the interpreter prefers it over SQLite's own code and clears it.
    std::optional<SqlError> pending;
    /// The statement's GETDATE(), 23 characters; empty means the clock is read (column defaults outside of a
    /// statement).
    std::string statementNow;
    /// Hook for the tests and for a fixed workstation clock; by default kv::Now().
    std::function<Date()> clock;

    std::string now() const;  ///< statementNow or the clock, rounded to 1/300 s
};

/// Registers every function, aggregate and the collation CI on a connection.
void registerFunctions(sqlite3* db, FunctionContext& context);

}  // namespace kv::tsql
