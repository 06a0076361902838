// The functions of dates as SQLite calls them. Parts and type kinds come as numbers; views keep them, so they never
// change.

#include <array>

#include "platform/embedded/ConvertStyles.h"
#include "platform/embedded/DateTime.h"
#include "platform/embedded/Udf.h"

namespace kv::tsql {
namespace {

Moment momentArgument(const Call& call, int i) { return storedMoment(call.text(i)); }
DatePart partArgument(const Call& call, int i) { return static_cast<DatePart>(call.small(i)); }

Type typeArgument(const Call& call, int i) {
    constexpr std::array<Kind, 4> kKinds = {Kind::Date, Kind::SmallDateTime, Kind::DateTime, Kind::DateTime2};
    Type type = Type::of(kKinds[static_cast<std::size_t>(call.small(i)) & 3]);
    if (type.kind == Kind::DateTime2) type.scale = 7;
    return type;
}

void resultMoment(Call& call, Moment moment) { call.result(std::string_view(momentText(moment))); }

/// t_dateadd(part, number, date, type)
void dateAddCall(Call& call) {
    if (call.anyNull()) return call.null();
    resultMoment(call, dateAdd(partArgument(call, 0), call.integer(1), momentArgument(call, 2), typeArgument(call, 3)));
}

void dateDiffCall(Call& call) {
    if (call.anyNull()) return call.null();
    call.result(dateDiff(partArgument(call, 0), momentArgument(call, 1), momentArgument(call, 2)));
}

void datePartCall(Call& call) {
    if (call.anyNull()) return call.null();
    const std::string_view text = call.text(1);
    const auto two = [&](std::size_t at) { return (text[at] - '0') * 10 + text[at + 1] - '0'; };
    if (text.size() >= 10) {  // the parts that stand in the text as they are
        switch (partArgument(call, 0)) {
            case DatePart::Year:
                return call.result(two(0) * 100 + two(2));
            case DatePart::Month:
                return call.result(two(5));
            case DatePart::Day:
                return call.result(two(8));
            default:
                break;
        }
    }
    call.result(datePart(partArgument(call, 0), storedMoment(text)));
}

void dateNameCall(Call& call) {
    if (call.anyNull()) return call.null();
    call.result(std::string_view(dateName(partArgument(call, 0), momentArgument(call, 1))));
}

void endOfMonthCall(Call& call) {
    if (call.isNull(0)) return call.null();
    const std::int64_t months = call.count() > 1 && !call.isNull(1) ? call.integer(1) : 0;
    resultMoment(call, endOfMonth(momentArgument(call, 0), months));
}

void dateFromParts(Call& call) {
    if (call.anyNull()) return call.null();
    const std::int64_t year = call.integer(0);
    const std::int64_t month = call.integer(1);
    const std::int64_t day = call.integer(2);
    const bool sane = year > 0 && year < 10000 && month > 0 && month < 13 && day > 0 && day < 32;
    if (!sane || !dayExists(static_cast<int>(year), static_cast<int>(month), static_cast<int>(day))) {
        raise(289, {"date"});
    }
    resultMoment(call, {daysOf(static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)), 0});
}

void dateTimeFromParts(Call& call) {
    if (call.anyNull()) return call.null();
    constexpr std::array<std::int64_t, 7> kLow = {1753, 1, 1, 0, 0, 0, 0};
    constexpr std::array<std::int64_t, 7> kHigh = {9999, 12, 31, 23, 59, 59, 999};
    std::array<int, 7> part{};
    for (std::size_t i = 0; i < part.size(); ++i) {
        const std::int64_t value = call.integer(static_cast<int>(i));
        if (value < kLow[i] || value > kHigh[i]) raise(289, {"datetime"});
        part[i] = static_cast<int>(value);
    }
    if (!dayExists(part[0], part[1], part[2])) raise(289, {"datetime"});
    const int ms = ((part[3] * 60 + part[4]) * 60 + part[5]) * 1000 + part[6];
    resultMoment(call, roundedTo300({daysOf(part[0], part[1], part[2]), ms}));
}

/// Whole days first: DATEADD takes fewer milliseconds than lie between two dates.
Moment addMs(Moment moment, std::int64_t ms, const Type& type) {
    constexpr std::int64_t kDayMs = 86'400'000;
    return dateAdd(DatePart::Millisecond, ms % kDayMs, dateAdd(DatePart::Day, ms / kDayMs, moment, type), type);
}

/// datetime plus or minus days; whole days stay exact.
void addDays(Call& call) {
    if (call.anyNull()) return call.null();
    const Moment moment = momentArgument(call, 0);
    const Type type = typeArgument(call, 2);
    if (call.isInteger(1)) return resultMoment(call, dateAdd(DatePart::Day, call.integer(1), moment, type));
    const double ms = call.real(1) * 86'400'000.0;
    if (!(ms > -4e14 && ms < 4e14)) raise(517, {kindName(type.kind)});
    const auto whole = static_cast<std::int64_t>(ms < 0 ? ms - 0.5 : ms + 0.5);
    resultMoment(call, addMs(moment, whole, type));
}

/// datetime plus or minus datetime, each counted from 1900-01-01.
void addMoments(Call& call) {
    if (call.anyNull()) return call.null();
    const std::int64_t other = momentArgument(call, 1).total();
    resultMoment(call, addMs(momentArgument(call, 0), call.small(2) < 0 ? -other : other, Type::datetime()));
}

void isDate(Call& call) {
    if (call.isNull(0)) return call.result(0);
    const ReadMoment read = readMoment(call.text(0));
    const bool sane = read.fault == ReadFault::None && read.fractionDigits <= 3 && !call.text(0).empty();
    call.result(sane && read.moment.days >= kDaysMinDateTime && read.moment.days <= kDaysMax ? 1 : 0);
}

void getDate(Call& call) { call.result(std::string_view(call.shared().now())); }

constexpr std::array<Udf, 12> kUdfs = {{
    {"t_dateadd", 4, true, udf<dateAddCall>},
    {"t_datediff", 3, true, udf<dateDiffCall>},
    {"t_datepart", 2, true, udf<datePartCall>},
    {"t_datename", 2, true, udf<dateNameCall>},
    {"t_eomonth", 1, true, udf<endOfMonthCall>},
    {"t_eomonth", 2, true, udf<endOfMonthCall>},
    {"t_datefromparts", 3, true, udf<dateFromParts>},
    {"t_datetimefromparts", 7, true, udf<dateTimeFromParts>},
    {"t_dtadd", 3, true, udf<addDays>},
    {"t_dtsum", 3, true, udf<addMoments>},
    {"t_isdate", 1, true, udf<isDate>},
    {"getdate", 0, false, udf<getDate>},
}};

}  // namespace

std::span<const Udf> dateUdfs() { return kUdfs; }

}  // namespace kv::tsql
