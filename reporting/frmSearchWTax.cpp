#include "reporting/frmSearchWTax.h"

#include "platform/base/Text.h"

namespace kv {

frmSearchWTax::frmSearchWTax(Session& session, bool WithAccount)
    : SearchDialog(session, "frmSearchWTax", "WITHHOLDING Tax CODES") {
    txtSearchStr.placeholder("Part of the description");
    Query = std::string(
                "select TaxCode as Code, ISNULL(CAST(TaxDesc AS VARCHAR(MAX)), '') as Description, TaxPercent as "
                "Percentage") +
            (WithAccount ? ", GLCode" : "") +
            " from WTaxCode where TaxDesc like '%##%' order by cast(TaxDesc AS VARCHAR(MAX))";
}

double frmSearchWTax::Percentage() const { return numberOf(Cell("Percentage")); }

}  // namespace kv
