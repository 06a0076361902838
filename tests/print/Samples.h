#pragma once
// Small fixed data sets for the report tests.

#include <memory>
#include <string>

#include "platform/print/Report.h"

namespace kv::samples {

ResultSet trialBalance();
/// `batches` batches of 2 to 5 lines; the third one is cancelled.
ResultSet batchJournal(int batches);
ResultSet userLogs();
/// `accounts` accounts with a beginning balance and `lines` lines each, as the detailed ledger reads them.
ResultSet generalLedger(int accounts, int lines);

/// A report from the folder Reports with the usual values given.
std::unique_ptr<Report> report(const std::string& file);
std::unique_ptr<Report> fromText(const std::string& text);
Money money(const char* text);

}  // namespace kv::samples
