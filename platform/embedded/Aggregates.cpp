// The aggregates that SQLite does not have: exact sums and averages, usable as window functions, and deviations.

#include <cmath>
#include <cstring>

#include "platform/embedded/Decimal.h"
#include "platform/embedded/Udf.h"

namespace kv::tsql {
namespace {

/// Sum of units and count of rows; what leaves a window is taken away again. The scales come with the arguments, since
/// the last callback sees none.
struct ExactState {
    Int128 units;
    std::int64_t count;
    std::int32_t scale;
    std::int32_t outScale;
};

/// SQLite gives zeroed memory, aligned to 8 bytes only.
class State {
public:
    State(sqlite3_context* context, bool create)
        : memory_(sqlite3_aggregate_context(context, create ? sizeof(ExactState) : 0)) {
        if (memory_) std::memcpy(&state_, memory_, sizeof state_);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ExactState* operator->() { return &state_; }
    void keep() {
        if (memory_) std::memcpy(memory_, &state_, sizeof state_);
    }

private:
    void* memory_;
    ExactState state_{};
};

Int128 unitsArgument(sqlite3_value* value, int scale) {
    if (sqlite3_value_type(value) == SQLITE_INTEGER) return rescaled(sqlite3_value_int64(value), 0, scale);
    return unitsOf(sqlite3_value_double(value), scale);
}

/// (value [, scale [, scale of the result]]); a DISTINCT sum comes without a scale and is made with ten decimals.
void add(sqlite3_context* context, int count, sqlite3_value** values, int sign) {
    guarded(context, [&] {
        State state(context, true);
        if (sqlite3_value_type(values[0]) != SQLITE_NULL) {
            state->scale = count > 1 ? sqlite3_value_int(values[1]) : 10;
            state->outScale = count > 2 ? sqlite3_value_int(values[2]) : state->scale;
            state->units += sign * unitsArgument(values[0], state->scale);
            state->count += sign;
        }
        state.keep();
    });
}

void step(sqlite3_context* context, int count, sqlite3_value** values) { add(context, count, values, 1); }
void inverse(sqlite3_context* context, int count, sqlite3_value** values) { add(context, count, values, -1); }

void giveUnits(sqlite3_context* context, Int128 units, int scale) {
    if (scale > 0) return sqlite3_result_double(context, fromUnits(units, scale) + 0.0);
    if (units > INT64_MAX || units < INT64_MIN) raise(8115, {"expression", "numeric"});
    sqlite3_result_int64(context, static_cast<std::int64_t>(units));
}

void sumValue(sqlite3_context* context) {
    guarded(context, [&] {
        State state(context, false);
        if (state->count == 0) return sqlite3_result_null(context);
        const Int128 limit = (Int128{kUnitsMax} << 2) * (state->scale < 10 ? 1 : 1'000'000);
        if (state->scale > 0 && (state->units > limit || state->units < -limit)) raise(8115, {"expression", "numeric"});
        giveUnits(context, state->units, state->scale);
    });
}

/// An average is cut, not rounded.
void averageValue(sqlite3_context* context) {
    guarded(context, [&] {
        State state(context, false);
        if (state->count == 0) return sqlite3_result_null(context);
        Int128 wide = 0;
        if (__builtin_mul_overflow(state->units, powerOfTen(state->outScale - state->scale), &wide)) {
            raise(8115, {"expression", "numeric"});
        }
        giveUnits(context, wide / state->count, state->outScale);
    });
}

// ------------------------------------------------------------------------------------------------ deviations

/// Welford's running mean and sum of squared distances.
struct SpreadState {
    std::int64_t count;
    double mean;
    double squares;
};

void spreadStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto* state = static_cast<SpreadState*>(sqlite3_aggregate_context(context, sizeof(SpreadState)));
    if (!state || sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    const double value = sqlite3_value_double(values[0]);
    const double distance = value - state->mean;
    state->mean += distance / static_cast<double>(++state->count);
    state->squares += distance * (value - state->mean);
}

template <bool Population, bool Root>
void spreadFinal(sqlite3_context* context) {
    const auto* state = static_cast<SpreadState*>(sqlite3_aggregate_context(context, 0));
    const std::int64_t least = Population ? 1 : 2;
    if (!state || state->count < least) return sqlite3_result_null(context);
    const double variance = state->squares / static_cast<double>(state->count - (Population ? 0 : 1));
    sqlite3_result_double(context, Root ? std::sqrt(variance) : variance);
}

}  // namespace

void registerAggregates(sqlite3* db, FunctionContext& context) {
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_window_function(db, "dsum", 1, kFlags, &context, step, sumValue, sumValue, inverse, nullptr);
    sqlite3_create_window_function(db, "dsum", 2, kFlags, &context, step, sumValue, sumValue, inverse, nullptr);
    sqlite3_create_window_function(db, "davg", 3, kFlags, &context, step, averageValue, averageValue, inverse, nullptr);
    struct SpreadRow {
        const char* name;
        void (*final)(sqlite3_context*);
    };
    constexpr SpreadRow kSpreads[] = {
        {"t_stdev", spreadFinal<false, true>},
        {"t_stdevp", spreadFinal<true, true>},
        {"t_var", spreadFinal<false, false>},
        {"t_varp", spreadFinal<true, false>},
    };
    for (const SpreadRow& row : kSpreads) {
        sqlite3_create_function_v2(db, row.name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, &context, nullptr, spreadStep,
                                   row.final, nullptr);
    }
}

}  // namespace kv::tsql
