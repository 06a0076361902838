// Any text as a date: both readers agree with their own printing, and no text leaves the calendar.

#include <cstdint>

#include "platform/base/Date.h"
#include "platform/base/Error.h"
#include "platform/embedded/Conversions.h"
#include "platform/embedded/ConvertStyles.h"
#include "platform/embedded/DateTime.h"
#include "platform/embedded/FormatFunction.h"
#include "platform/embedded/SqlError.h"
#include "tests/fuzz/Fuzz.h"

namespace {

using namespace kv::tsql;
using kv::fuzz::hold;

void engineReader(std::string_view text) {
    const Type types[] = {Type::datetime(), Type::date(), Type::of(Kind::SmallDateTime),
                          Type{Kind::DateTime2, 0, 7, 0}};
    for (const DayOrder order : {DayOrder::Mdy, DayOrder::Dmy, DayOrder::Ymd}) {
        for (const Type& type : types) {
            std::string stored;
            try {
                stored = dateFromText(text, type, order);
            } catch (const SqlError& error) {
                hold(error.number == 241 || error.number == 242 || error.number == 295, "only date errors", text);
                continue;
            }
            hold(stored.size() == 23, "a stored date has 23 characters", stored);
            const Moment moment = storedMoment(stored);
            hold(moment.days >= kDaysMin && moment.days <= kDaysMax, "a stored date is in the calendar", stored);
            hold(momentText(moment) == stored, "a stored date prints as it is", stored);
            hold(dateFromText(stored, type) == stored, "a stored date reads back", stored);
            if (type.kind == Kind::DateTime) {
                hold(dateFromText(momentInStyle(moment, type, 121), type) == stored, "style 121 reads back", stored);
                hold(dateFromText(momentInStyle(moment, type, 126), type) == stored, "style 126 reads back", stored);
                hold(dateFromText(momentInStyle(moment, type, 109), type) == stored, "style 109 reads back", stored);
            }
        }
    }
}

void baseReader(std::string_view text) {
    const auto date = kv::parseDate(text);
    if (!date) return;
    const std::string iso = kv::Format(*date, "yyyy-MM-dd HH:nn:ss.fff");
    hold(kv::Date::fromIso(iso) == date, "an ISO text reads back", iso);
    hold(kv::parseDate(kv::defaultText(*date)).has_value(), "the default text of a date is a date", iso);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view text = kv::fuzz::cutLine(input);
    engineReader(text);
    baseReader(text);
    try {
        kv::Format(kv::Date(2024, 3, 5, 14, 7, 9, 45), input);
        const std::string stored = "2024-03-05 14:07:09.043";
        formatted(Cell{Storage::Text, 0, 0, stored}, Type::datetime(), input);
    } catch (const SqlError& error) {
        hold(error.number == 40001, "FORMAT refuses what it does not know", input);
    }
    return 0;
}
