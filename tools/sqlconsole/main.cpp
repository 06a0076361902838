// sqlconsole: runs T-SQL from standard input against an embedded file or a SQL Server.

#include <iostream>
#include <iterator>
#include <string>

#include "platform/base/CommandLine.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "platform/embedded/Lexer.h"
#include "platform/odbc/Odbc.h"
#include "tools/sqlconsole/Csv.h"

namespace {

constexpr const char* kUsage =
    "usage: sqlconsole [--data FILE | --source odbc:DSN] [--database NAME] [--csv] < batches.sql\n"
    "       sqlconsole --data FILE --backup COPY\n"
    "       sqlconsole --data FILE --restore COPY\n"
    "\n"
    "  --data FILE         the embedded database in FILE; a missing file starts empty\n"
    "  --source odbc:DSN   a SQL Server by the name of its data source, or odbc:Driver=...;Server=...\n"
    "  --database NAME     the database to start in (ACCOUNTING)\n"
    "  --csv               comma-separated result sets, the only format\n"
    "  --backup COPY       copies the embedded database while it is in use, reads the copy back, and ends\n"
    "  --restore COPY      checks the copy and puts it in the place of what FILE holds, also while FILE is in use; "
    "what\n"
    "                      stood there is kept beside it, a damaged or missing FILE is replaced\n"
    "\n"
    "A line with GO ends a batch. Without --data and --source the database is a private one in memory.\n"
    "Errors go to standard error; after one the next batch runs in the same session. Exit status 1 if there was any.\n";

constexpr int kSeverityInformationMax = 10;
constexpr long kErrMissing = 53;
constexpr long kErrDamaged = 824;

struct Arguments {
    std::string file = ":memory:";
    std::string source;
    std::string database = "ACCOUNTING";
    std::string backup;
    std::string restore;
    bool good = true;
};

Arguments parseArguments(int argc, char** argv) {
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--csv") continue;
        std::string* value = option == "--data"       ? &arguments.file
                             : option == "--source"   ? &arguments.source
                             : option == "--database" ? &arguments.database
                             : option == "--backup"   ? &arguments.backup
                             : option == "--restore"  ? &arguments.restore
                                                      : nullptr;
        if (!value || i + 1 >= argc) {
            arguments.good = false;
            return arguments;
        }
        *value = argv[++i];
    }
    arguments.good = arguments.source.empty() || kv::startsNoCase(arguments.source, "odbc:");
    if (!arguments.restore.empty() && arguments.file == ":memory:") arguments.good = false;
    return arguments;
}

std::unique_ptr<kv::Connection> connect(const Arguments& arguments) {
    if (arguments.source.empty()) {
        kv::EmbeddedOptions options;
        options.file = arguments.file;
        options.defaultDatabase = arguments.database;
        options.create = arguments.backup.empty() && arguments.restore.empty();
        return kv::openEmbedded(options);
    }
    kv::OdbcOptions options;
    const std::string name = arguments.source.substr(5);
    options.connectionString = name.find('=') == std::string::npos ? "DSN=" + name : name;
    options.defaultDatabase = arguments.database;
    return kv::openOdbc(options);
}

/// Prints a message as the server's own tools do; true for an error.
bool report(const kv::DbError& message, int firstLine) {
    const bool error = message.severity > kSeverityInformationMax;
    if (error) {
        std::cerr << "Msg " << message.number << ", Level " << message.severity << ", State " << message.state;
        if (!message.procedure.empty()) std::cerr << ", Procedure " << message.procedure;
        // Inside a procedure the line counts from its own start, elsewhere from the script's.
        std::cerr << ", Line " << (message.procedure.empty() ? message.line + firstLine - 1 : message.line) << '\n';
    }
    std::cerr << message.description << '\n';
    return error;
}

bool runScript(kv::Connection& connection, const std::string& script) {
    bool good = true;
    for (const kv::tsql::ScriptBatch& batch : kv::tsql::splitScript(script)) {
        for (int turn = 0; turn < batch.repeat; ++turn) {
            for (const kv::ResultSet& result : connection.Attempt(batch.text)) kv::console::writeCsv(std::cout, result);
            std::cout.flush();
            for (const kv::DbError& message : connection.errors())
                if (report(message, batch.firstLine)) good = false;
        }
    }
    return good;
}

int backUp(kv::Connection& connection, const std::string& copy) {
    kv::EmbeddedServices* services = kv::embeddedOf(connection);
    if (!services) {
        std::cerr << "A SQL Server is backed up by its own means.\n";
        return 2;
    }
    services->backupTo(copy);
    std::cout << "Copied and verified: " << copy << '\n';
    return 0;
}

/// Nothing of the file when it is missing or damaged; raises any other failure.
std::unique_ptr<kv::Connection> openSound(const Arguments& arguments) {
    try {
        kv::examineEmbedded(arguments.file);
        return connect(arguments);
    } catch (const kv::Error& error) {
        if (error.number != kErrMissing && error.number != kErrDamaged) throw;
        std::cout << error.description << '\n';
        return nullptr;
    }
}

int restore(const Arguments& arguments) {
    const auto connection = openSound(arguments);
    const std::string kept = connection ? kv::embeddedOf(*connection)->restoreFrom(arguments.restore)
                                        : kv::replaceEmbedded(arguments.file, arguments.restore);
    std::cout << "Restored and verified: " << arguments.file << '\n';
    if (!kept.empty()) std::cout << "What stood there is kept: " << kept << '\n';
    std::cout << "Bring it up to the scripts of this version: dbinstall --data " << arguments.file << '\n';
    return 0;
}

int run(const Arguments& arguments) {
    // a failure outside a statement is told as the statements' own are
    try {
        if (!arguments.restore.empty()) return restore(arguments);
        const auto connection = connect(arguments);
        if (!arguments.backup.empty()) return backUp(*connection, arguments.backup);
        const std::string script((std::istreambuf_iterator<char>(std::cin)), {});
        return runScript(*connection, script) ? 0 : 1;
    } catch (const kv::Error& e) {
        std::cerr << "Msg " << e.number << ", Level 20, State 1, Line 0\n" << e.description << '\n';
        return 1;
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    return kv::runProgram("sqlconsole", kUsage, [&] {
        const Arguments arguments = parseArguments(argc, argv);
        if (!arguments.good) throw kv::WrongUse();
        return run(arguments);
    });
}
