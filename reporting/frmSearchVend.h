#pragma once
// frmSearchVend: the search for a supplier of the inventory, or over a caller's statement for a vendor. It returns code
// and name, and opens the vendor master.

#include "reporting/SearchDialog.h"

namespace kv {

class frmSearchVend : public SearchDialog {
public:
    explicit frmSearchVend(Session& session);

    /// "I": the suppliers of the inventory, only the active ones with `ActiveList`. Any other mode: the caller's Query.
    void SetMode(std::string_view Mode, bool ActiveList = false);

    /// Shown where the user may keep vendors.
    CommandButton cmdBuild{*this, "cmdBuild", "&Vendors..."};

protected:
    Layout buttonRow() override;
    std::vector<ListColumn> columnsOf(const Recordset& rows) const override;

private:
    void cmdBuild_Click();
};

}  // namespace kv
