#pragma once
// LogFile: SQLite's write-ahead log written in few large pieces instead of two writes a page.

namespace kv::tsql {

/// The name of the file layer for sqlite3_open_v2; registered at the first call. It is SQLite's own but for the log:
/// pages that follow each other are gathered until the log is synced, read or cut. Nothing waits in memory that anybody
/// may count on: a commit syncs the log before it shows its pages, and they are written at the latest before the index
/// of the log tells of them or the right to write goes to somebody else.
const char* gatheringFiles();

}  // namespace kv::tsql
