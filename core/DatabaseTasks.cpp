#include "core/DatabaseTasks.h"

#include <filesystem>

#include "core/Installer.h"
#include "core/Session.h"
#include "core/module1.h"
#include "platform/base/Paths.h"
#include "platform/embedded/Embedded.h"
#include "platform/forms/Dialogs.h"

namespace kv {
namespace {

constexpr const char* kFiles = "Database Files (*.db)|*.db|All Files (*.*)|*.*";

/// The services of the file; on a server the user is told and gets none.
EmbeddedServices* fileOf(Session& session) {
    EmbeddedServices* file = embeddedOf(session.cn());
    if (!file) {
        MsgBox("The books are on the SQL Server " + session.ServerNameText +
                   ". Backups are made and restored there, by its administrator.",
               Icon::Information);
    }
    return file;
}

/// What a backup holds, for a person: hospital, newest batch, its last use.
std::string toldOf(const std::string& file) {
    EmbeddedOptions options;
    options.file = file;
    options.create = false;
    const std::unique_ptr<Connection> backup = openEmbedded(options);
    const Recordset sys = backup->Open("SELECT TOP 1 Company FROM dbo.SYS");
    const Recordset log = backup->Open("SELECT TOP 1 LogDate FROM dbo.UserLog ORDER BY LogID DESC");
    const Recordset batches = backup->Open("SELECT COUNT(*) AS Batches FROM dbo.vwBookBatch");
    std::string told = sys.eof() ? std::string("a hospital without a name") : sys["Company"].text();
    told += "\nbatches and vouchers: " + batches["Batches"].text();
    if (!log.eof()) told += "\nlast used: " + Format(log["LogDate"].date(), "MM/dd/yyyy HH:nn");
    return told;
}

}  // namespace

void BackUpBooks(Session& session) {
    EmbeddedServices* file = fileOf(session);
    if (!file) return;
    const std::string proposed = "hospital-" + Format(Today(), "yyyy-MM-dd") + ".db";
    const auto target = askSaveFile("Back Up the Books", proposed, {kFiles, "db"});
    if (!target) return;
    std::error_code none;
    if (std::filesystem::equivalent(*target, file->file(), none)) {
        MsgBox("A backup cannot take the place of the books themselves. Please choose another file.",
               Icon::Exclamation);
        return;
    }
    {
        const Hourglass busy;
        file->backupTo(*target);
    }
    module1::SaveUserLog(session, "Backup of the books");
    MsgBox("The books have been copied to " + *target + ".\nThe copy was read back and is sound.", Icon::Information);
}

bool RestoreBooks(Session& session) {
    EmbeddedServices* file = fileOf(session);
    if (!file) return false;
    const auto source = askOpenFile("Restore the Books", {kFiles, "db"});
    if (!source) return false;
    std::string told;
    try {
        const Hourglass busy;
        examineEmbedded(*source);
        told = toldOf(*source);
    } catch (const Error& failure) {
        MsgBox(failure.description + "\nThe books stay as they are.", Icon::Stop);
        return false;
    }
    if (!Ask("This backup will take the place of the books:\n\n" + *source + "\n" + told +
                 "\n\nWhat was entered since then will no longer be in the books. The books as they are now are kept"
                 " in a file beside them. Do you wish to proceed?",
             "Warning", Icon::Exclamation, false)) {
        return false;
    }
    std::string kept;
    {
        const Hourglass busy;
        kept = file->restoreFrom(*source);
        installDatabase(session.cn(), buildPath(programFolder(), "server"));
    }
    module1::SaveUserLog(session, "Restore of the books");
    MsgBox("The books have been restored. The books as they were before are kept in " + kept + ".", Icon::Information);
    return true;
}

}  // namespace kv
