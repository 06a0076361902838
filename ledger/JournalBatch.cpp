#include "ledger/JournalBatch.h"

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/Module2.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

/// A statement of a save: sent, then the connection's errors are looked at.
void send(Session& session, std::string_view statement, std::source_location at = std::source_location::current()) {
    session.cn().Execute(statement, at);
    module1::CheckErrors(session.cn(), at);
}

/// Draws what the batch needs by the rule of its book.
void drawNumbers(Session& session, JournalBatch& batch) {
    const bool journal = session.BookCode() == "JV";
    const bool keeps = !batch.isNew() && !batch.Batch.empty();
    if (keeps) return;
    batch.Batch = GetNewBatchNum(session, session.BookCode());
    if (!journal) return;
    batch.Printed = GetNextJvNumber(session, batch.Batch, module1::GetPeriod(batch.BatchDate), batch.BatchDate);
    batch.FormMode = batch.Printed.Text;
}

std::string insertLine(const Session& session, const JournalBatch& batch, const JournalLine& line, int seqNo) {
    Statement statement = sql("INSERT INTO {} ( Batch, Period, Code, Dept, BatchDate, Description, Debit, Credit")
                              .name(session.BookDetailTable());
    if (batch.HasSubCode) statement.more(", SubCode");
    statement.more(", SeqNo, Posted) VALUES ('{}', '{}', '{}', '{}', '{}', '{}', {}, {}")
        .text(batch.Batch)
        .text(module1::GetPeriod(batch.BatchDate))
        .text(line.Code)
        .text(line.Dept)
        .date(batch.BatchDate)
        .text(line.Description)
        .amount(line.Debit)
        .amount(line.Credit);
    if (batch.HasSubCode) statement.more(", '{}'").text(line.SubCode);
    return statement.more(", {}, 0)").number(seqNo).str();
}

/// A line of the AP control account touches a voucher: the one it names, or a new one named after the batch.
void saveVoucherLink(Session& session, const JournalBatch& batch, const JournalLine& line, int seqNo) {
    const std::string& book = session.BookCode();
    const std::string voucher = line.Voucher.empty() ? book + batch.Batch : line.Voucher;
    send(session, sql("sp_Insert_APCDB '{}', '{}', {}, '{}', '{}', {}")
                      .text(voucher)
                      .text(batch.Batch)
                      .amount(line.amount())
                      .text(line.Code)
                      .text(book)
                      .number(seqNo));
    if (!line.Voucher.empty()) return;
    send(session,
         sql("sp_Insert_Vouchers '{}', 'JV', '{}', '', '{}'").text(voucher).text(batch.Batch).date(batch.BatchDate));
}

void saveLines(Session& session, const JournalBatch& batch) {
    send(session, sql("Delete from {} where Batch = '{}'").name(session.BookDetailTable()).text(batch.Batch));
    send(session, sql("sp_Init_APCDB '{}','{}'").text(batch.Batch).text(session.BookCode()));
    int seqNo = 0;
    for (const JournalLine& line : batch.Lines) {
        if (!line.hasAccount()) continue;
        send(session, insertLine(session, batch, line, ++seqNo));
        if (line.Code == session.Sys.APAcct) saveVoucherLink(session, batch, line, seqNo);
    }
}

std::string groupOf(Session& session, const std::string& code) {
    const Recordset row = session.cn().Open(sql("select glgroup from acctcode where code = '{}'").text(code));
    return row.eof() ? std::string() : row["glgroup"].text();
}

std::string insertDailyRow(Session& session, const JournalBatch& batch, const JournalLine& line,
                           const std::string& table) {
    const bool debit = line.amount() > Money();
    const char* side = debit ? "D" : "C";
    const std::string day = defaultText(batch.BatchDate);
    return sql("INSERT INTO {} ( Batch, RefNum, Period, Code, DatePosted, TransDate, Side, DRCR, DrCode, CrCode, "
               "Amount, "
               "GLGroup) VALUES ('{}', '{}', '{}', '{}', '{}', '{}', '{}', '{}', '{}', '{}', {}, '{}')")
        .name(table)
        .text(batch.Batch)
        .text(session.BookCode() + batch.Batch)
        .text(module1::GetPeriod(batch.BatchDate))
        .text(line.Code)
        .text(day)
        .text(day)
        .text(side)
        .text(side)
        .text(debit ? line.Code : "")
        .text(debit ? "" : line.Code)
        .amount(debit ? line.amount() : -line.amount())
        .text(groupOf(session, line.Code))
        .str();
}

void saveDailyRows(Session& session, const JournalBatch& batch) {
    const std::string table = DailyTableOf(session.BookCode());
    if (table.empty()) return;
    send(session, sql("DELETE FROM {} WHERE Batch = '{}'").name(table).text(batch.Batch));
    for (const JournalLine& line : batch.Lines) {
        if (line.hasAccount()) send(session, insertDailyRow(session, batch, line, table));
    }
}

void saveHeader(Session& session, const JournalBatch& batch) {
    const JournalTotals totals = totalsOf(batch.Lines);
    send(session, Module2::Query_Insert_Batch({.Batch = batch.Batch,
                                               .BatchDate = batch.BatchDate,
                                               .BatchType = batch.BatchType,
                                               .Total = totals.Credit,
                                               .Debit = totals.Debit,
                                               .Credit = totals.Credit,
                                               .Particular = batch.Particular,
                                               .Encoder = session.EmployeeCode,
                                               .BookCode = session.BookCode()}));
    if (session.BookCode() == "JV") {
        send(session, sql("sp_Insert_JV2 '{}', '{}', '', '{}', '{}', '{}' ")
                          .text(batch.Batch)
                          .text(batch.Printed.Text)
                          .text(batch.Printed.Year)
                          .text(batch.Printed.Month)
                          .text(batch.Printed.Series));
    }
    if (session.UpdateAcctgLink) {
        send(session,
             sql("Update tbAcctgLink set BatchNo = '{}', Status = 'F' where BatchDate = '{}' and BatchType = '{}'")
                 .text(batch.Batch)
                 .date(batch.BatchDate)
                 .text(batch.BatchType));
    }
}

}  // namespace

JournalTotals totalsOf(const std::vector<JournalLine>& lines) {
    JournalTotals totals;
    for (const JournalLine& line : lines) {
        totals.Debit += line.Debit;
        totals.Credit += line.Credit;
    }
    return totals;
}

std::optional<JournalFault> faultOf(const std::vector<JournalLine>& lines) {
    using Kind = JournalFault::Kind;
    int number = 0;
    for (const JournalLine& line : lines) {
        ++number;
        if (!line.hasAccount() && !(line.Debit.isZero() && line.Credit.isZero())) {
            return JournalFault{Kind::AccountMissing, number,
                                "Please enter an account for line #" + std::to_string(number) + "."};
        }
    }
    if (!totalsOf(lines).difference().isZero()) {
        return JournalFault{Kind::Unbalanced, 0, "Debit Total must be equal to Credit Total "};
    }
    number = 0;
    for (const JournalLine& line : lines) {
        ++number;
        if (line.NeedsDept && line.Dept.empty()) {
            return JournalFault{Kind::DepartmentMissing, number,
                                "Please select a department for account " + line.Code + "."};
        }
    }
    return std::nullopt;
}

std::string DailyTableOf(std::string_view BookCode) {
    return BookCode == "AR" ? "tbDailyCharges" : BookCode == "CR" ? "tbDailyCollection" : "";
}

void SaveJournalBatch(Session& session, JournalBatch& batch, std::source_location at) {
    traced("JournalBatch.Save", at, [&] {
        JournalBatch saved = batch;
        Transaction save(session.cn());
        drawNumbers(session, saved);
        saveLines(session, saved);
        saveDailyRows(session, saved);
        saveHeader(session, saved);
        save.commit();
        batch = std::move(saved);
    });
}

void DropJournalBatch(Session& session, std::string_view Batch, std::source_location at) {
    traced("JournalBatch.Drop", at, [&] {
        Transaction drop(session.cn());
        if (session.BookTable() == "JV") {
            send(session, sql("UPDATE JV SET Cancelled = 1 WHERE Batch = '{}'").text(Batch));
        } else {
            for (const std::string& table :
                 {session.BookDetailTable(), session.BookTable(), DailyTableOf(session.BookCode())}) {
                send(session, sql("DELETE FROM {} WHERE Batch = '{}'").name(table).text(Batch));
            }
            send(session, sql("UPDATE tbAcctgLink SET BATCHNO = NULL, STATUS = NULL WHERE BATCHNO = '{}'").text(Batch));
        }
        drop.commit();
    });
}

}  // namespace kv
