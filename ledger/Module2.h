#pragma once
// Module2: the builders of the books' header statements.

#include <string>
#include <string_view>

#include "platform/base/Date.h"
#include "platform/base/Money.h"

namespace kv::Module2 {

struct BatchHeader {
    std::string Batch;
    Date BatchDate;
    std::string BatchType;
    Money Total, Debit, Credit;
    std::string Particular;
    std::string Encoder;
    std::string BookCode;
};

/// The statement that writes a batch's header: sp_Insert_AR, sp_Insert_CRB or sp_Insert_JV by the book.
std::string Query_Insert_Batch(const BatchHeader& header);

}  // namespace kv::Module2
