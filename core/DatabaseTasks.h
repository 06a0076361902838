#pragma once
// DatabaseTasks: backup and restore of the books from the File menu.

namespace kv {

class Session;

/// Copies the books into a file that the user names, while everybody works, and reads the copy back. On a SQL Server it
/// says where backups are made.
void BackUpBooks(Session& session);
/// Puts a backup that the user names in the place of the books, after telling what it holds. True when it did: the
/// session then has to be read anew. Screens must be closed before.
bool RestoreBooks(Session& session);

}  // namespace kv
