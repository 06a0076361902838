#include "core/DocumentNumbers.h"

#include <algorithm>

#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

constexpr long kErrArgument = 5;
constexpr std::size_t kLongestPrefix = 6;

bool allDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The number by which a book's documents are shown: by its mask while that is in use, else by prefix and form.
struct PrintRule {
    const char* type;  ///< of the monthly series
    bool masked;
    const std::string& mask;
    const std::string& prefix;
    const std::string& form;
    SeriesDigits digits;
};

PrintedNumber nextPrinted(Session& session, const PrintRule& rule, std::string_view number, std::string_view period,
                          const Date& date) {
    PrintedNumber printed;
    if (rule.masked) {
        session.cn().Execute(sql("sp_Init_BatchNumbers '{}','', '{}'").text(period).text(rule.type));
        module1::CheckErrors(session.cn());
    }
    printed.Year = Format(date, "yyyy");
    printed.Month = Format(date, "MM");
    if (!rule.masked) {
        printed.Text = rule.prefix + maskDate(maskNumber(rule.form, number), date);
        return printed;
    }
    const auto series = static_cast<short>(GetNewSeriesCount(session, rule.type, printed.Year, printed.Month));
    printed.Series = Format(series, "000");
    printed.Text = maskSeries(maskDate(rule.mask, date), series, rule.digits);
    return printed;
}

/// Draws a number of a series for this workstation, at least the figure given.
long long draw(Session& session, std::string_view series, std::string_view year = {}, std::string_view month = {},
               long long atLeast = 0) {
    const Statement statement = atLeast > 0
                                    ? call("sp_Reserve_Number").text(series).text(year).text(month).number(atLeast)
                                    : call("sp_Reserve_Number").text(series);
    const Recordset row = session.cn().Open(statement);
    return row["Number"].integer();
}

/// Draws, then asks the function that gives the drawn number its form.
std::string drawnBy(Session& session, std::string_view series, std::string_view function) {
    draw(session, series);
    return session.cn().Open("select " + std::string(function) + " as Voucher from sys")["Voucher"].text();
}

/// A voucher number of the series that counts within its prefix, e.g. a period.
std::string nextOfPrefix(Session& session, std::string_view prefix) {
    if (prefix.size() > kLongestPrefix) throw Error(kErrArgument, "module1", "A number prefix has six characters.");
    const Recordset highest = session.cn().Open(sql("Select max(cast(voucher as integer)) as NextVoucher from ap where "
                                                    "Voucher like '{}%' and isnumeric(Voucher) = 1")
                                                    .text(prefix));
    const bool figures = allDigits(prefix);
    const std::string first = std::string(prefix) + "0001";
    const bool any = !highest.eof() && !highest["NextVoucher"].isNull();
    const long long next = any ? highest["NextVoucher"].integer() + 1 : figures ? std::stoll(first) : 1;
    const long long drawn =
        draw(session, "APV", prefix.substr(0, 4), prefix.substr(std::min<std::size_t>(4, prefix.size())), next);
    const std::string number = figures || any ? std::to_string(drawn) : std::string(prefix) + Format(drawn, "0000");
    if (figures && prefix.front() != '0' && !number.starts_with(prefix)) {
        throw Error(kErrArgument, "module1", "The voucher numbers of " + std::string(prefix) + " are used up.");
    }
    return any || drawn != next ? number : first;
}

PrintedNumber printedOf(const Recordset& row, const char* text, const char* year, const char* month,
                        const char* series) {
    return {row[text].text(), row[year].text(), row[month].text(), row[series].text()};
}

}  // namespace

std::string maskDate(std::string_view mask, const Date& date) {
    std::string text = replaceAll(mask, "MM", Format(date, "MM"));
    text = replaceAll(text, "YYYY", Format(date, "yyyy"));
    return replaceAll(text, "YY", Format(date, "yy"));
}

std::string maskSeries(std::string_view mask, int series, SeriesDigits digits) {
    std::string text(mask);
    if (digits == SeriesDigits::ThreeOrFour) text = replaceAll(text, "####", Format(series, "0000"));
    return replaceAll(text, "###", Format(series, "000"));
}

std::string maskNumber(std::string_view form, std::string_view number) {
    const std::size_t first = form.find('0');
    if (first == std::string_view::npos) return std::string(form);
    const std::size_t last = std::min(form.find_first_not_of('0', first), form.size());
    std::string figure(number);
    if (allDigits(number)) {
        figure.erase(0, std::min(figure.find_first_not_of('0'), figure.size()));
        if (figure.size() < last - first) figure.insert(0, last - first - figure.size(), '0');
    }
    return std::string(form.substr(0, first)) + figure + std::string(form.substr(last));
}

std::string GetNewBatchNum(Session& session, std::string_view BookCode, Place at) {
    return traced("module1.GetNewBatchNum", at, [&] {
        if (BookCode == "AR") return drawnBy(session, "AR", "dbo.fn_NewARNum()");
        if (BookCode == "CR") return drawnBy(session, "CR", "dbo.fn_NewCRBNum()");
        return drawnBy(session, "JV", "dbo.fn_NewJVNum()");
    });
}

std::string GetNewAPNo(Session& session, std::string_view Prefix, bool ForPF, Place at) {
    return traced("module1.GetNewAPNo", at, [&] {
        if (session.Sys.sw_APVNo == "0") return nextOfPrefix(session, Prefix);
        return ForPF ? drawnBy(session, "PF", "dbo.fn_NextPFVoucher()") : drawnBy(session, "AP", "dbo.fn_NewAPNum()");
    });
}

std::string GetNewAPNoByDate(Session& session, const Date& date, Place at) {
    return traced("module1.GetNewAPNoByDate", at, [&] { return GetNewAPNo(session, module1::GetPeriod(date), false); });
}

std::string GetNewCVNo(Session& session, std::string_view CVFormat, Place at) {
    return traced("module1.GetNewCVNo", at,
                  [&] { return drawnBy(session, "CV", sql("dbo.fn_NewCVNum('{}')").text(CVFormat).str()); });
}

std::string GetNewDMNum(Session& session, Place at) {
    return traced("module1.GetNewDMNum", at, [&] { return drawnBy(session, "DM", "dbo.fn_NewDMNum()"); });
}

std::string GetNextCreditMemo(Session& session, Place at) {
    return traced("module1.GetNextCreditMemo", at, [&] {
        const Recordset sys = session.cn().Open("Select * from Sys");
        const long long next = sys.eof() || sys["CreditMemo"].isNull() ? 1 : sys["CreditMemo"].integer();
        return "CM" + Format(draw(session, "CM", "", "", next), "000000");
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

PrintedNumber GetNextJvNumber(Session& session, std::string_view Batch, std::string_view Period, const Date& date,
                              Place at) {
    return traced("module1.GetNextJvNumber", at, [&] {
        const clsParameters& p = session.Parameters;
        return nextPrinted(
            session,
            {"JV", p.UsePrintJVBatch(), p.PrintJVBatchFormat(), p.JVPrefix(), p.JVFormat(), SeriesDigits::ThreeOrFour},
            Batch, Period, date);
    });
}

PrintedNumber GetNextPrintVoucher(Session& session, std::string_view Voucher, std::string_view Period, const Date& date,
                                  Place at) {
    return traced("module1.GetNextPrintVoucher", at, [&] {
        const clsParameters& p = session.Parameters;
        return nextPrinted(session,
                           {"AP", p.UsePrintVoucher(), p.PrintVoucherFormat(), p.VoucherPrefix(), p.VoucherFormat(),
                            SeriesDigits::Three},
                           Voucher, Period, date);
    });
}

PrintedNumber GetNextPrintCVNo(Session& session, std::string_view CVNo, std::string_view Period, const Date& date,
                               Place at) {
    return traced("module1.GetNextPrintCVNo", at, [&] {
        const clsParameters& p = session.Parameters;
        return nextPrinted(
            session, {"CV", p.UsePrintCVNo(), p.PrintCVNoFormat(), p.CVPrefix(), p.CVFormat(), SeriesDigits::Three},
            CVNo, Period, date);
    });
}

PrintedNumber GetInternalNumbersJV(Session& session, std::string_view Batch, Place at) {
    return traced("module1.GetInternalNumbersJV", at, [&] {
        const Recordset row = session.cn().Open(sql("select * from JV2 where Batch = '{}'").text(Batch));
        return row.eof() ? PrintedNumber() : printedOf(row, "PrintJVBatch", "JVYear", "JVMonth", "JVSeries");
    });
}

VoucherNumbers GetInternalNumbersAP(Session& session, std::string_view Display, Place at) {
    return traced("module1.GetInternalNumbersAP", at, [&] {
        const Recordset row = session.cn().Open(sql("select * from AP2 where PrintVoucher = '{}'").text(Display));
        if (row.eof()) return VoucherNumbers();
        return VoucherNumbers{row["Voucher"].text(), printedOf(row, "PrintVoucher", "APYear", "APMonth", "APSeries")};
    });
}

}  // namespace kv
