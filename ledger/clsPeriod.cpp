#include "ledger/clsPeriod.h"

#include <array>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/data/Statement.h"

namespace kv {

int clsPeriod::CheckPeriodDate(const Date& date, int BookIndex, std::source_location at) const {
    return traced("clsPeriod.CheckPeriodDate", at, [&]() -> int {
        const Date today = Today();
        const Date first(today.year(), today.month(), 1);
        if (date >= first && date < first.addMonths(1)) return ThisMonth;
        constexpr std::array<const char*, 4> kBooks = {"AP", "CD", "AR", "CR"};
        const bool listed = BookIndex >= 0 && BookIndex < static_cast<int>(kBooks.size());
        const char* book = listed ? kBooks.at(static_cast<std::size_t>(BookIndex)) : "JV";
        const Recordset rows = session_.cn().Open(sql("select top 1 * from GL where BatchType = '{}' and Period = '{}'")
                                                      .text(book)
                                                      .text(module1::GetPeriod(date)));
        return rows.eof() ? OtherMonth : Closed;
    });
}

}  // namespace kv
