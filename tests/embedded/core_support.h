#pragma once
// What the engine's own tests share: a database in a scratch folder, asked by text and answered by text.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "platform/base/Error.h"
#include "platform/embedded/Embedded.h"

namespace kv {

/// A folder of one test, removed when it goes.
class Scratch {
public:
    Scratch() {
        static int count = 0;
        folder_ = std::filesystem::temp_directory_path() /
                  ("kv_core_" + std::to_string(::getpid()) + "_" + std::to_string(++count));
        std::filesystem::create_directories(folder_);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::string file(const std::string& name = "test.db") const { return (folder_ / name).string(); }

private:
    std::filesystem::path folder_;
};

/// One connection to the engine.
class Engine {
public:
    explicit Engine(const std::string& file = ":memory:", bool cache = true) {
        EmbeddedOptions options;
        options.file = file;
        options.statementCache = cache;
        connection_ = openEmbedded(options);
    }

    /// All result sets as text: "|" between columns, "," between rows, ";" between sets. Raises on an error.
    std::string ask(const std::string& batch) { return text(connection_->OpenAll(batch)); }
    void run(const std::string& batch) { connection_->Execute(batch); }

    /// The numbers of all errors of a batch, and what it answered before and between them.
    std::string errors(const std::string& batch) {
        std::vector<ResultSet> sets;
        std::vector<DbError> messages;
        services().runBatch(batch, sets, messages);
        std::string out;
        for (const DbError& message : messages) {
            if (message.severity > 10) out += (out.empty() ? "" : " ") + std::to_string(message.number);
        }
        answers_ = text(sets);
        messages_ = messages;
        return out;
    }
    const std::string& answers() const { return answers_; }
    const std::vector<DbError>& messages() const { return messages_; }

    Connection& connection() { return *connection_; }
    EmbeddedServices& services() { return *embeddedOf(*connection_); }

private:
    static std::string text(const std::vector<ResultSet>& sets) {
        std::string out;
        for (std::size_t s = 0; s < sets.size(); ++s) {
            if (s) out += ";";
            for (std::size_t r = 0; r < sets[s].rows.size(); ++r) {
                if (r) out += ",";
                for (std::size_t c = 0; c < sets[s].rows[r].size(); ++c) {
                    const Value& value = sets[s].rows[r][c];
                    out += (c ? "|" : "") + (value.isNull() ? "NULL" : value.text());
                }
            }
        }
        return out;
    }

    std::unique_ptr<Connection> connection_;
    std::string answers_;
    std::vector<DbError> messages_;
};

}  // namespace kv
