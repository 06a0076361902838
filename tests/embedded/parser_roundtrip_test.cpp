// Every text that must survive: it parses, prints back, and parses again to the same tree.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Parser.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

/// Words that the printed form adds, leaves out or says in another way.
bool isNoise(const std::string& word) {
    static const char* const kNoise[] = {
        "ALL",        "AND",        "ANY",     "AS",      "ASC",    "BEGIN",  "BETWEEN",     "CASE",
        "CLUSTERED",  "CONSTRAINT", "CURRENT", "DEFAULT", "ELSE",   "END",    "EXEC",        "EXECUTE",
        "FIRST",      "FOR",        "FROM",    "IIF",     "INNER",  "INTO",   "NEXT",        "NONCLUSTERED",
        "NULL",       "ON",         "ONLY",    "OUT",     "OUTER",  "OUTPUT", "PRECISION",   "PROC",
        "PROCEDURE",  "ROW",        "ROWS",    "SOME",    "THEN",   "TRAN",   "TRANSACTION", "WHEN",
        "WITH",       "WORK",       "DOUBLE",  "FLOAT",   "COLUMN", "OPTION", "RECOMPILE",   "MAXRECURSION",
        "FILLFACTOR", "PRIMARY",    "NO",      "ACTION",  "AFTER",  "UPDATE", "FOREIGN"};
    return std::any_of(std::begin(kNoise), std::end(kNoise), [&](const char* n) { return word == n; });
}

/// What a text says: its names, variables and literals and most of its keywords, counted.
std::map<std::string, int> wordsOf(std::string_view text) {
    const LexedBatch lexed = lex(text);
    std::map<std::string, int> words;
    for (const Token& token : lexed.tokens) {
        std::string word;
        if (token.kind == TokenKind::Literal) {
            word = UCase(lexed.literals[static_cast<std::size_t>(token.literal)].text);
        } else if (token.kind == TokenKind::Quoted || token.kind == TokenKind::Word) {
            word = UCase(unquoteName(token.text));
        } else if (token.kind == TokenKind::Variable || token.kind == TokenKind::System) {
            word = UCase(token.text);
        }
        if (!word.empty() && !isNoise(word)) ++words[word];
    }
    return words;
}

/// Words that stand more often in one of the two.
std::string difference(const std::map<std::string, int>& before, const std::map<std::string, int>& after) {
    std::string out;
    for (const auto& [word, count] : before) {
        const auto found = after.find(word);
        if (found == after.end() || found->second < count) out += " lost " + word;
    }
    return out;
}

void survives(const ScriptBatch& batch, const std::string& where) {
    SCOPED_TRACE(where + " line " + std::to_string(batch.firstLine));
    std::string printed;
    try {
        printed = print(parseBatch(batch.text).statements);
        EXPECT_EQ(difference(wordsOf(batch.text), wordsOf(printed)), "") << printed;
        EXPECT_EQ(print(parseBatch(printed).statements), printed);
    } catch (const SqlError& e) {
        ADD_FAILURE() << e.number << " line " << e.line << ": " << e.text << "\n" << printed;
    }
}

std::size_t survivesAll(const std::string& folder) {
    std::size_t batches = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".sql") continue;
        const std::string script = readTextFile(entry.path().string());
        for (const ScriptBatch& batch : splitScript(script)) {
            survives(batch, entry.path().string());
            ++batches;
        }
    }
    return batches;
}

std::string sourceFolder() {
    const char* folder = std::getenv("KV_SOURCE");
    return folder ? folder : ".";
}

TEST(RoundTrip, StatementsOfTheScreensAndOfTheLanguage) {
    EXPECT_GT(survivesAll(sourceFolder() + "/tests/embedded/corpus"), 400u);
}

TEST(RoundTrip, ServerScripts) { EXPECT_GT(survivesAll(sourceFolder() + "/server"), 50u); }

}  // namespace
}  // namespace kv::tsql
