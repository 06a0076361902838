#pragma once
// DemoBooks: the books of the demo hospital as its clerks fill them: documents saved through the program's own ways,
// with every account's balance and the vouchers that are still owed kept at hand.

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "demo/year/Economy.h"
#include "platform/base/Date.h"
#include "platform/base/Money.h"

namespace kv {

class Session;
class Connection;

struct DemoLine {
    std::string code, dept;
    Centavos amount = 0;  ///< debit positive, credit negative; a line of nothing is left out
};

struct DemoVendor {
    std::string id, name, goodsAccount;  ///< inventory account of what the vendor sells; empty for doctors and others
    bool doctor = false;
    int days = 30;  ///< of its terms
};

struct OwedVoucher {
    std::string number, account;
    const DemoVendor* vendor = nullptr;
    Centavos amount = 0;
    Date due;
};

class DemoBooks {
public:
    explicit DemoBooks(Session& session);

    /// Saves a batch of the JV, AR or CR book. Lines that come to nothing are left out; a batch without lines is none.
    void journal(const char* book, const Date& day, const std::string& particular, const std::vector<DemoLine>& lines,
                 const char* type = nullptr);
    /// Saves an AP voucher; what the lines leave open is owed on the account given.
    void voucher(const Date& day, const DemoVendor& vendor, const std::string& account, const std::string& particular,
                 std::vector<DemoLine> lines);
    /// Saves a check voucher of the bank account given, for vouchers that are owed.
    void payVouchers(const Date& day, const std::string& bank, const std::vector<OwedVoucher>& paid);
    /// Saves a check voucher for anything else.
    void check(const Date& day, const std::string& bank, const std::string& payee, const std::string& particular,
               const std::vector<DemoLine>& lines);

    /// Opening figures or other lines that stand in the ledger already.
    void know(const std::string& code, Centavos amount) { balances_[code] += amount; }
    /// The vouchers that are still owed, of years before too.
    void learnOwed();
    Centavos balance(const std::string& code) const;
    /// What income exceeds expense by, so far this year.
    Centavos profit() const;
    std::deque<OwedVoucher>& owed() { return owed_; }
    const std::vector<DemoVendor>& suppliers() const { return suppliers_; }
    const std::vector<DemoVendor>& doctors() const { return doctors_; }

    int documents() const { return documents_; }
    int lines() const { return lines_; }

private:
    void selectBook(const std::string& code);
    void learn(const std::vector<DemoLine>& lines);
    std::string titleOf(const DemoLine& line) const;
    std::string draw(const char* series, const char* ask);
    void checkLines(const std::string& number, const Date& day, const std::vector<DemoLine>& lines);
    void checkHeader(const std::string& number, const Date& day, const std::string& bank, Centavos amount,
                     const std::string& payee, const std::string& vendor, const std::string& particular);
    void loadVendors();
    void loadTitles();
    Connection& cn() const;

    Session& session_;
    std::map<std::string, std::string> titles_, departments_;
    std::map<std::string, int> banks_;  ///< bank number by its account
    std::map<std::string, Centavos> balances_;
    std::vector<DemoVendor> suppliers_, doctors_;
    std::deque<OwedVoucher> owed_;
    int documents_ = 0;
    int lines_ = 0;
};

}  // namespace kv
