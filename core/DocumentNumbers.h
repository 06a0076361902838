#pragma once
// DocumentNumbers: how documents are numbered: the internal key of each kind, and the number that users see, by a mask
// with a monthly series or by a prefix and a form.
//
// Every internal number is drawn (sp_Reserve_Number) before the database's function is asked for it, so two
// workstations never get the same. The best place is inside the transaction of the save: what rolls back gives its
// number back.

#include <source_location>
#include <string>
#include <string_view>

#include "platform/base/Date.h"

namespace kv {

class Session;

/// The number of a document that users see, and the parts it was made of; the series is empty without a mask.
struct PrintedNumber {
    std::string Text, Year, Month, Series;
};

/// A voucher's internal number beside its printed one.
struct VoucherNumbers {
    std::string Voucher;
    PrintedNumber Printed;
};

/// How a mask writes the series.
enum class SeriesDigits { Three, ThreeOrFour };

/// Replaces the tokens MM, YYYY and YY of a mask by the parts of the date.
std::string maskDate(std::string_view mask, const Date& date);
/// Replaces "####" (where the book has it), then "###", by the series; the digits widen where it needs more.
std::string maskSeries(std::string_view mask, int series, SeriesDigits digits);
/// Replaces the first run of zeros by the number in at least so many digits; a number that is no figure stands as it
/// is.
std::string maskNumber(std::string_view form, std::string_view number);

using Place = std::source_location;

/// The next batch number of the AR, CR or, for any other code, the JV book.
std::string GetNewBatchNum(Session& session, std::string_view BookCode, Place at = Place::current());
/// The next voucher number: of the running series (ForPF: of professional fees), or, where SYS.sw_APVNo is "0", of the
/// series of the prefix, usually a period. Raises Error 5 for a prefix over six characters and when its numbers are
/// used up.
std::string GetNewAPNo(Session& session, std::string_view Prefix, bool ForPF = false, Place at = Place::current());
/// The same for the period of the date.
std::string GetNewAPNoByDate(Session& session, const Date& date, Place at = Place::current());
/// The next internal check voucher number, as wide as the format ("000000").
std::string GetNewCVNo(Session& session, std::string_view CVFormat, Place at = Place::current());
std::string GetNewDMNum(Session& session, Place at = Place::current());
/// "CM" and the figure that SYS.CreditMemo says comes next, or a later one when another workstation has drawn that.
std::string GetNextCreditMemo(Session& session, Place at = Place::current());

/// The count of this workstation in a monthly series, drawn by sp_Init_BatchNumbers; Type is "AP", "CV" or "JV".
double GetNewSeriesCount(Session& session, std::string_view Type, std::string_view Year, std::string_view Month,
                         Place at = Place::current());
/// The printed number of a new document: its internal number, the period and the date go in.
PrintedNumber GetNextJvNumber(Session& session, std::string_view Batch, std::string_view Period, const Date& date,
                              Place at = Place::current());
PrintedNumber GetNextPrintVoucher(Session& session, std::string_view Voucher, std::string_view Period, const Date& date,
                                  Place at = Place::current());
PrintedNumber GetNextPrintCVNo(Session& session, std::string_view CVNo, std::string_view Period, const Date& date,
                               Place at = Place::current());

/// The printed number that a batch was saved with; empty texts where it has none.
PrintedNumber GetInternalNumbersJV(Session& session, std::string_view Batch, Place at = Place::current());
/// The voucher behind a printed number; empty texts where there is none.
VoucherNumbers GetInternalNumbersAP(Session& session, std::string_view Display, Place at = Place::current());

}  // namespace kv
