#pragma once
// frmSearchWTax: the search for a withholding tax code, by any part of its description.

#include "reporting/SearchDialog.h"

namespace kv {

class frmSearchWTax : public SearchDialog {
public:
    explicit frmSearchWTax(Session& session, bool WithAccount = false);

    double Percentage() const;
    /// Account of the code; empty where the codes have none of their own.
    std::string GLCode() const { return Cell("GLCode"); }
};

}  // namespace kv
