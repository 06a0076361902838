#include "reporting/frmReceiptDetails.h"

#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

constexpr std::size_t kTitle = 2;  // the code, which is not shown, is column 0
constexpr std::size_t kFirstAmount = 3;
constexpr std::size_t kLastAmount = 5;

bool isAmountColumn(std::size_t column) { return column >= kFirstAmount && column <= kLastAmount; }

}  // namespace

frmReceiptDetails::frmReceiptDetails(Session& session) : SearchDialog(session, "frmReceiptDetails", "Receipt Items") {}

void frmReceiptDetails::SetReceipt(std::string_view Receipt) {
    Query = call("billing..spCash_SearchReceiptDetails").separator(",").text("0").text(Receipt).exact("##").str();
}

int frmReceiptDetails::codeColumn(const Recordset& /*rows*/) const { return 0; }

std::vector<ListColumn> frmReceiptDetails::columnsOf(const Recordset& rows) const {
    static constexpr int kWidths_chars[] = {0, 15, 42, 12, 12, 12};
    std::vector<ListColumn> columns = SearchDialog::columnsOf(rows);
    for (std::size_t c = 0; c < columns.size() && c < std::size(kWidths_chars); ++c) {
        columns[c].width_chars = kWidths_chars[c];
        columns[c].stretch = c == kTitle;
        if (isAmountColumn(c)) columns[c].align = Align::Right;
    }
    return columns;
}

std::string frmReceiptDetails::shownText(std::size_t column, const Value& value, DataType type) const {
    const bool amount = isAmountColumn(column) && !value.isNull() && IsNumeric(value.text());
    return amount ? Format(Money::fromDouble(numberOf(value.text())), "#,##0.00")
                  : SearchDialog::shownText(column, value, type);
}

}  // namespace kv
