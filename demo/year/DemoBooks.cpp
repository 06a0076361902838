#include "demo/year/DemoBooks.h"

#include <algorithm>

#include "core/MainMenu.h"
#include "core/Session.h"
#include "core/module1.h"
#include "ledger/JournalBatch.h"
#include "platform/data/Statement.h"

namespace kv {

namespace {

Money moneyOf(Centavos amount) { return Money::fromUnits(amount * (Money::kUnitsPerOne / 100)); }
Money debitOf(const DemoLine& line) { return line.amount > 0 ? moneyOf(line.amount) : Money(); }
Money creditOf(const DemoLine& line) { return line.amount < 0 ? moneyOf(-line.amount) : Money(); }

std::vector<DemoLine> withoutNothings(std::vector<DemoLine> lines) {
    std::erase_if(lines, [](const DemoLine& line) { return line.amount == 0; });
    return lines;
}

Centavos sumOf(const std::vector<DemoLine>& lines) {
    Centavos sum = 0;
    for (const DemoLine& line : lines) sum += line.amount;
    return sum;
}

}  // namespace

DemoBooks::DemoBooks(Session& session) : session_(session) {
    loadTitles();
    loadVendors();
}

Connection& DemoBooks::cn() const { return session_.cn(); }

void DemoBooks::loadTitles() {
    Recordset accounts = cn().Open("SELECT A.Code, A.Description FROM dbo.AcctCode AS A");
    for (; !accounts.eof(); accounts.moveNext()) titles_[accounts["Code"].text()] = accounts["Description"].text();
    Recordset centers = cn().Open("SELECT C.CstCtr, C.Description FROM dbo.CstCtr AS C");
    for (; !centers.eof(); centers.moveNext()) departments_[centers["CstCtr"].text()] = centers["Description"].text();
    Recordset banks = cn().Open("SELECT B.BankID, B.Acct FROM dbo.BANK AS B");
    for (; !banks.eof(); banks.moveNext()) banks_[banks["Acct"].text()] = static_cast<int>(banks["BankID"].integer());
}

void DemoBooks::loadVendors() {
    Recordset rows = cn().Open(
        "SELECT V.VendorID, W.Vendor, V.Class, ISNULL(T.NoDays, 30) AS NoDays, A.AcctCode "
        "FROM dbo.VEND AS V INNER JOIN dbo.vwVENDOR AS W ON W.VendorID = V.VendorID "
        "LEFT JOIN dbo.TERMS AS T ON T.TermsID = V.APTerm LEFT JOIN dbo.APTYPE AS A ON A.Code = V.APType "
        "WHERE V.Active = 1 ORDER BY V.VendorID");
    for (; !rows.eof(); rows.moveNext()) {
        DemoVendor vendor{rows["VendorID"].text(), rows["Vendor"].text(), rows["AcctCode"].text(),
                          rows["Class"].text() == "D", static_cast<int>(rows["NoDays"].integer())};
        if (!vendor.goodsAccount.starts_with("13")) vendor.goodsAccount.clear();
        (vendor.doctor ? doctors_ : suppliers_).push_back(std::move(vendor));
    }
}

void DemoBooks::learnOwed() {
    std::map<std::string, const DemoVendor*> byId;
    for (const auto* list : {&suppliers_, &doctors_}) {
        for (const DemoVendor& vendor : *list) byId[vendor.id] = &vendor;
    }
    Recordset rows = cn().Open(
        "SELECT A.Voucher, A.Acct, A.VendorID, A.Balance, A.DueDate FROM dbo.AP AS A "
        "WHERE A.Cancelled = 0 AND A.Balance > 0 ORDER BY A.VoucherDate, A.Voucher");
    for (; !rows.eof(); rows.moveNext()) {
        owed_.push_back({rows["Voucher"].text(), rows["Acct"].text(), byId.at(rows["VendorID"].text()),
                         rows["Balance"].money().units() / (Money::kUnitsPerOne / 100), rows["DueDate"].date()});
    }
}

void DemoBooks::selectBook(const std::string& code) {
    if (session_.BookCode() == code) return;
    for (const BookEntry& book : bookEntries()) {
        if (code == book.code) session_.SelectBook({book.code, book.name, book.table, book.detailTable, ""});
    }
}

Centavos DemoBooks::balance(const std::string& code) const {
    const auto found = balances_.find(code);
    return found == balances_.end() ? 0 : found->second;
}

Centavos DemoBooks::profit() const {
    Centavos sum = 0;
    for (const auto& [code, amount] : balances_) sum -= code >= "4" ? amount : 0;
    return sum;
}

void DemoBooks::learn(const std::vector<DemoLine>& lines) {
    for (const DemoLine& line : lines) balances_[line.code] += line.amount;
    lines_ += static_cast<int>(lines.size());
    ++documents_;
}

std::string DemoBooks::titleOf(const DemoLine& line) const {
    const std::string& title = titles_.at(line.code);
    return line.dept.empty() ? title : title + " - " + departments_.at(line.dept);
}

void DemoBooks::journal(const char* book, const Date& day, const std::string& particular,
                        const std::vector<DemoLine>& lines, const char* type) {
    const std::vector<DemoLine> kept = withoutNothings(lines);
    if (kept.empty()) return;
    selectBook(book);
    JournalBatch batch;
    batch.FormMode = "NEW";
    batch.BatchDate = day;
    batch.Particular = particular;
    batch.BatchType = type ? type : book;
    batch.HasSubCode = std::string_view(book) == "JV";
    for (const DemoLine& line : kept) {
        JournalLine saved;
        saved.Code = line.code;
        saved.Dept = line.dept;
        saved.Description = titleOf(line);
        saved.Debit = debitOf(line);
        saved.Credit = creditOf(line);
        batch.Lines.push_back(std::move(saved));
    }
    SaveJournalBatch(session_, batch);
    learn(kept);
}

std::string DemoBooks::draw(const char* series, const char* ask) {
    cn().Execute(call("sp_Reserve_Number").text(series));
    return cn().Open("select dbo." + std::string(ask) + " as Number from sys")["Number"].text();
}

void DemoBooks::voucher(const Date& day, const DemoVendor& vendor, const std::string& account,
                        const std::string& particular, std::vector<DemoLine> lines) {
    lines = withoutNothings(std::move(lines));
    const Centavos owed = sumOf(lines);
    if (owed <= 0) return;
    lines.push_back({account, "", -owed});
    const std::string number = draw("AP", "fn_NewAPNum()");
    const Date due = day.addDays(vendor.days);
    int seqNo = 0;
    for (const DemoLine& line : lines) {
        cn().Execute(sql("INSERT INTO APDT (Voucher, SeqNo, Code, ACCT, Dept, Description, Debit, Credit, Period) "
                         "VALUES ('{}', {}, '{}', '{}', '{}', '{}', {}, {}, '{}')")
                         .text(number)
                         .number(++seqNo)
                         .text(line.code)
                         .text(line.code)
                         .text(line.dept)
                         .text(titleOf(line))
                         .amount(debitOf(line))
                         .amount(creditOf(line))
                         .text(module1::GetPeriod(day)));
    }
    cn().Execute(sql("INSERT INTO AP (Voucher, VendorID, Payee, VoucherDate, DueDate, Amount, Balance, Particular, "
                     "Period, Encoder, Acct, Trade) VALUES ('{}', '{}', '{}', '{}', '{}', {}, {}, '{}', '{}', '{}', "
                     "'{}', {})")
                     .text(number)
                     .text(vendor.id)
                     .text(vendor.name)
                     .date(day)
                     .date(due)
                     .amount(moneyOf(owed))
                     .amount(moneyOf(owed))
                     .text(particular)
                     .text(module1::GetPeriod(day))
                     .text(session_.EmployeeCode)
                     .text(account)
                     .flag(account == session_.Sys.APAcct));
    owed_.push_back({number, account, &vendor, owed, due});
    learn(lines);
}

void DemoBooks::checkLines(const std::string& number, const Date& day, const std::vector<DemoLine>& lines) {
    int seqNo = 0;
    for (const DemoLine& line : lines) {
        cn().Execute(sql("INSERT INTO CDBDT (CVNo, SeqNo, Code, Dept, Description, Debit, Credit, Period) VALUES "
                         "('{}', {}, '{}', '{}', '{}', {}, {}, '{}')")
                         .text(number)
                         .number(++seqNo)
                         .text(line.code)
                         .text(line.dept)
                         .text(titleOf(line))
                         .amount(debitOf(line))
                         .amount(creditOf(line))
                         .text(module1::GetPeriod(day)));
    }
}

void DemoBooks::checkHeader(const std::string& number, const Date& day, const std::string& bank, Centavos amount,
                            const std::string& payee, const std::string& vendor, const std::string& particular) {
    cn().Execute(sql("INSERT INTO CDB (CVNo, CVDate, CVAmt, Particular, VendorID, Payee, Period, Encoder, BankId) "
                     "VALUES ('{}', '{}', {}, '{}', '{}', '{}', '{}', '{}', {})")
                     .text(number)
                     .date(day)
                     .amount(moneyOf(amount))
                     .text(particular)
                     .text(vendor)
                     .text(payee)
                     .text(module1::GetPeriod(day))
                     .text(session_.EmployeeCode)
                     .number(banks_.at(bank)));
}

void DemoBooks::payVouchers(const Date& day, const std::string& bank, const std::vector<OwedVoucher>& paid) {
    if (paid.empty()) return;
    const std::string number = draw("CV", "fn_NewCVNum('000000')");
    std::vector<DemoLine> lines;
    std::string list;
    for (const OwedVoucher& one : paid) {
        lines.push_back({one.account, "", one.amount});
        list += (list.empty() ? "" : ", ") + one.number;
        cn().Execute(sql("sp_Insert_APCDB '{}', '{}', {}, '{}', 'CD', {}")
                         .text(one.number)
                         .text(number)
                         .amount(moneyOf(one.amount))
                         .text(one.account)
                         .number(lines.size()));
        cn().Execute(sql("UPDATE AP SET Paid = Amount, Balance = 0 WHERE Voucher = '{}'").text(one.number));
    }
    const Centavos amount = sumOf(lines);
    lines.push_back({bank, "", -amount});
    checkLines(number, day, lines);
    const DemoVendor& vendor = *paid.front().vendor;
    checkHeader(number, day, bank, amount, vendor.name, vendor.id, "Payment of vouchers " + list);
    learn(lines);
}

void DemoBooks::check(const Date& day, const std::string& bank, const std::string& payee, const std::string& particular,
                      const std::vector<DemoLine>& lines) {
    std::vector<DemoLine> kept = withoutNothings(lines);
    const Centavos amount = sumOf(kept);
    if (amount <= 0) return;
    kept.push_back({bank, "", -amount});
    const std::string number = draw("CV", "fn_NewCVNum('000000')");
    checkLines(number, day, kept);
    checkHeader(number, day, bank, amount, payee, "", particular);
    learn(kept);
}

}  // namespace kv
