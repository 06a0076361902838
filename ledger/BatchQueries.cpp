#include "ledger/BatchQueries.h"

#include <algorithm>

#include "platform/data/Statement.h"

namespace kv {
namespace {

/// The columns and tables of a book's list, up to its conditions.
std::string selectBatches(std::string_view BookCode) {
    if (BookCode == "JV") {
        return " SELECT TOP 5000 A.BATCH , A.BATCHDATE, A.PARTICULAR, ISNULL(NULLIF(B.PrintJVBatch, ''), A.BATCH ) AS "
               "DisplayBatch FROM JV A LEFT JOIN JV2 B ON A.BATCH = B.BATCH";
    }
    return std::string(" SELECT TOP 5000 A.BATCH , A.BATCHDATE, A.PARTICULAR, A.BATCH AS DisplayBatch FROM ") +
           headerTableOf(BookCode) + " A";
}

std::string notCancelled(std::string_view BookCode) {
    return BookCode == "JV" ? " AND ISNULL(A.CANCELLED, 0) = 0" : "";
}

constexpr const char* kInOrder = " ORDER BY A.BATCHDATE , A.BATCH ";

}  // namespace

const char* headerTableOf(std::string_view BookCode) {
    return BookCode == "AR" ? "AR" : BookCode == "CR" ? "CRB" : "JV";
}

std::string Query_Pending(std::string_view BookCode) {
    const std::string types =
        BookCode == "JV" ? " AND A.BATCHTYPE IN ('JV','YE')" : sql(" AND A.BATCHTYPE = '{}'").text(BookCode).str();
    return selectBatches(BookCode) + " WHERE A.POSTED = 0" + notCancelled(BookCode) + types + kInOrder;
}

std::string Query_Posting(std::string_view BookCode, std::string_view UnpostPeriod) {
    const std::string state = UnpostPeriod.empty()
                                  ? std::string(" WHERE A.POSTED = 0")
                                  : sql(" WHERE A.POSTED = 1 AND A.PERIOD = '{}'").text(UnpostPeriod).str();
    return selectBatches(BookCode) + state + notCancelled(BookCode) + kInOrder;
}

std::string Query_SetPosted(std::string_view BookCode, std::string_view Batch, std::string_view Employee) {
    const std::string update = std::string("UPDATE ") + headerTableOf(BookCode) + " SET";
    if (Employee.empty()) return update + sql(" POSTED = 0 WHERE BATCH = '{}'").text(Batch).str();
    return update + sql(" POSTED = 1, POSTEDBY = '{}', POSTEDDATE = GETDATE() WHERE BATCH = '{}'")
                        .text(Employee)
                        .text(Batch)
                        .str();
}

bool numberBefore(std::string_view number, std::string_view other) {
    const std::size_t width = std::max(number.size(), other.size());
    return std::string(width - number.size(), '0') + std::string(number) <
           std::string(width - other.size(), '0') + std::string(other);
}

std::string batchKey(std::string_view batch) { return "K" + std::string(batch); }
std::string batchOfKey(std::string_view key) { return std::string(key.substr(key.empty() ? 0 : 1)); }

}  // namespace kv
