#include "ledger/BatchNumbers.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {

std::string maskDate(std::string_view mask, const Date& date) {
    std::string text = replaceAll(mask, "MM", Format(date, "MM"));
    text = replaceAll(text, "YYYY", Format(date, "yyyy"));
    return replaceAll(text, "YY", Format(date, "yy"));
}

std::string maskSeries(std::string_view mask, int series) {
    return replaceAll(replaceAll(mask, "####", Format(series, "0000")), "###", Format(series, "000"));
}

std::string GetNewBatchNum(Session& session, std::string_view BookCode, Place at) {
    return traced("module1.GetNewBatchNum", at, [&] {
        const bool ar = BookCode == "AR";
        const bool cr = BookCode == "CR";
        session.cn().Execute(call("sp_Reserve_Number").text(ar ? "AR" : cr ? "CR" : "JV"));
        const Recordset row = session.cn().Open(ar   ? "select dbo.fn_NewARNum() as Voucher from sys"
                                                : cr ? "select dbo.fn_NewCRBNum() as Voucher from sys"
                                                     : "select dbo.fn_NewJVNum() as Voucher from sys");
        return row["Voucher"].text();
    });
}

double GetNewSeriesCount(Session& session, std::string_view Type, std::string_view Year, std::string_view Month,
                         Place at) {
    return traced("module1.GetNewSeriesCount", at, [&] {
        const Recordset row =
            session.cn().Open(sql("select dbo.fn_NewSeriesNum('{}', '', '{}', '{}') as Voucher from sys")
                                  .text(Type)
                                  .text(Year)
                                  .text(Month)
                                  .str());
        const Value& drawn = row["Voucher"];
        return drawn.isNull() ? 1.0 : drawn.number();
    });
}

PrintedNumber GetNextJvNumber(Session& session, std::string_view Period, const Date& date, Place at) {
    return traced("module1.GetNextJvNumber", at, [&] {
        const clsParameters& parameters = session.Parameters;
        PrintedNumber number;
        if (parameters.UsePrintJVBatch()) {
            session.cn().Execute(sql("sp_Init_BatchNumbers '{}','', 'JV'").text(Period));
            module1::CheckErrors(session.cn());
        }
        number.JVYear = Format(date, "yyyy");
        number.JVMonth = Format(date, "MM");
        const std::string& mask =
            parameters.UsePrintJVBatch() ? parameters.PrintJVBatchFormat() : parameters.JVFormat();
        number.PrintJVBatch = maskDate(mask, date);
        if (parameters.UsePrintJVBatch()) {
            const auto series = static_cast<short>(GetNewSeriesCount(session, "JV", number.JVYear, number.JVMonth));
            number.JVSeries = Format(series, "000");
            number.PrintJVBatch = maskSeries(number.PrintJVBatch, series);
        } else {
            number.PrintJVBatch = parameters.JVPrefix() + number.PrintJVBatch;
        }
        return number;
    });
}

PrintedNumber GetInternalNumbersJV(Session& session, std::string_view Batch, Place at) {
    return traced("module1.GetInternalNumbersJV", at, [&] {
        const Recordset row = session.cn().Open(sql("select * from JV2 where Batch = '{}'").text(Batch));
        if (row.eof()) return PrintedNumber();
        return PrintedNumber{row["PrintJVBatch"].text(), row["JVYear"].text(), row["JVMonth"].text(),
                             row["JVSeries"].text()};
    });
}

}  // namespace kv
