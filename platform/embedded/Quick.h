#pragma once
// Quick: conditions on variables and constants, answered without a statement of SQLite.

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/embedded/Plan.h"

namespace kv::tsql {

/// SQL's three truth values.
enum class Truth : std::uint8_t { False, True, Unknown };

/// What a condition is answered from.
class QuickValues {
public:
    virtual ~QuickValues() = default;
    virtual const Datum& variable(int index) const = 0;
    /// A literal of the running batch.
    virtual std::string_view literal(int index) const = 0;
    virtual std::int64_t system(SystemValue value) const = 0;
    /// Any other condition, by a statement.
    virtual Truth ask(const Expr& condition) const = 0;
};

/// A condition as procedures are full of them: IF @Book = 'JV', IF @@ROWCOUNT = 0, IF ISNULL(@Code, '') NOT IN (..).
/// Where one side of an AND or OR needs a statement, the other side is tried first: it often decides alone.
class QuickCondition {
public:
    virtual ~QuickCondition() = default;
    virtual Truth test(const QuickValues& values) const = 0;
};

/// The quick form of a condition; null where it needs more than comparisons between values of one kind.
std::unique_ptr<QuickCondition> quickCondition(const Expr& condition, const VariableScope& scope);

}  // namespace kv::tsql
