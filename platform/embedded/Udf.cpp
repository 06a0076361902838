#include "platform/embedded/Udf.h"

#include <array>

#include "platform/base/Date.h"
#include "platform/embedded/DateTime.h"
#include "platform/embedded/Lateral.h"

namespace kv::tsql {

std::string FunctionContext::now() const {
    if (!statementNow.empty()) return statementNow;
    const Date date = clock ? clock() : Now();
    return momentText(roundedTo300(Moment::ofTotal(date.msSince1900())));
}

Cell Call::cell(int i) const {
    switch (sqlite3_value_type(values_[i])) {
        case SQLITE_INTEGER:
            return {Storage::Integer, integer(i), 0, {}};
        case SQLITE_FLOAT:
            return {Storage::Real, 0, real(i), {}};
        case SQLITE_TEXT:
            return {Storage::Text, 0, 0, text(i)};
        case SQLITE_BLOB:
            return {Storage::Blob, 0, 0, blob(i)};
        default:
            return {};
    }
}

void Call::result(const Datum& datum) {
    switch (datum.storage) {
        case Storage::Integer:
            return result(datum.integer);
        case Storage::Real:
            return result(datum.real);
        case Storage::Text:
            return result(std::string_view(datum.text));
        case Storage::Blob:
            return resultBytes(datum.text);
        default:
            null();
    }
}

void reportError(sqlite3_context* context, SqlError error) {
    sqlite3_result_error(context, error.text.c_str(), static_cast<int>(error.text.size()));
    static_cast<FunctionContext*>(sqlite3_user_data(context))->pending = std::move(error);
}

void registerFunctions(sqlite3* db, FunctionContext& context) {
    const std::array<std::span<const Udf>, 5> groups = {likeUdfs(), textUdfs(), mathUdfs(), dateUdfs(), systemUdfs()};
    for (const std::span<const Udf> group : groups) {
        for (const Udf& function : group) {
            const int flags = SQLITE_UTF8 | (function.deterministic ? SQLITE_DETERMINISTIC : 0);
            sqlite3_create_function_v2(db, function.name, function.arguments, flags, &context, function.entry, nullptr,
                                       nullptr, nullptr);
        }
    }
    registerAggregates(db, context);
    registerCollation(db);
    registerLateral(db, context);
}

}  // namespace kv::tsql
