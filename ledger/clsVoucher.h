#pragma once
// clsVoucher: the voucher that a line of the AP control account touches.

#include <string>
#include <string_view>

namespace kv {

class Session;

class clsVoucher {
public:
    explicit clsVoucher(Session& session) : session_(session) {}

    std::string Voucher;
    std::string VendorID;
    std::string VoucherOption;  ///< "THIS": the line opens a voucher of its own

    /// Asks for the voucher of the line; "" lets the save open one that is named after the batch. False: refused.
    bool InputVoucherInfo(std::string_view OldVoucher, std::string_view SubCode, std::string_view Title);

private:
    Session& session_;
};

}  // namespace kv
