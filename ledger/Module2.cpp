#include "ledger/Module2.h"

#include "platform/data/Statement.h"

namespace kv::Module2 {

std::string Query_Insert_Batch(const BatchHeader& header) {
    const char* procedure = header.BookCode == "AR"   ? "sp_Insert_AR "
                            : header.BookCode == "CR" ? "sp_Insert_CRB "
                                                      : "sp_Insert_JV ";
    return procedure + sql("'{}', '{}', '{}', {}, {}, {}, '{}', '{}', '{}'")
                           .text(header.Batch)
                           .text(defaultText(header.BatchDate))
                           .text(header.BatchType)
                           .amount(header.Total)
                           .amount(header.Debit)
                           .amount(header.Credit)
                           .date(header.BatchDate, "yyyyMM")
                           .text(header.Particular)
                           .text(header.Encoder)
                           .str();
}

}  // namespace kv::Module2
