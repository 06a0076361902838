#include "ledger/clsVoucher.h"

#include "core/Session.h"
#include "core/module1.h"
#include "platform/data/Statement.h"
#include "platform/forms/Dialogs.h"

namespace kv {

bool clsVoucher::InputVoucherInfo(std::string_view OldVoucher, std::string_view SubCode, std::string_view Title) {
    VendorID = SubCode;
    const auto typed =
        InputBox("Voucher that this line touches. Leave it empty to open a new one with the batch.", Title, OldVoucher);
    if (!typed) return false;
    Voucher = module1::ATrim(*typed);
    if (Voucher.empty()) return true;
    const Recordset row = session_.cn().Open(sql("select * from AP where Voucher = '{}'").text(Voucher));
    if (row.eof()) {
        MsgBox("Voucher " + Voucher + " does not exist.", Icon::Exclamation);
        return false;
    }
    VendorID = module1::WhenMissing(row, "VendorID", Value("")).text();
    return true;
}

}  // namespace kv
