#pragma once
// frmReceiptDetails: the search for an item of an official receipt. It returns the item's code, which is not shown.

#include "reporting/SearchDialog.h"

namespace kv {

class frmReceiptDetails : public SearchDialog {
public:
    explicit frmReceiptDetails(Session& session);
    /// Lists the items of this receipt.
    void SetReceipt(std::string_view Receipt);

protected:
    int codeColumn(const Recordset& rows) const override;
    std::vector<ListColumn> columnsOf(const Recordset& rows) const override;
    std::string shownText(std::size_t column, const Value& value, DataType type) const override;
};

}  // namespace kv
