// Runs every case of tests/sql/*.case, each under three settings: plainly, without the statement cache, and with the
// database file closed and opened again between the batches. Arguments name the files to run.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "tests/sql/CaseFile.h"
#include "tools/sqlconsole/Csv.h"

namespace kv::sqlcases {
namespace {

enum class Setting { Plain, NoCache, Reopened };

std::string cellText(const Value& value, const Field& field) {
    if (value.isText()) {
        const std::string text = value.text();
        return text.empty() ? "''" : replaceAll(replaceAll(text, "|", "\\|"), "\n", "\\n");
    }
    return console::csvCell(value, field, false);
}

WantedSet shown(const ResultSet& result) {
    WantedSet out;
    for (std::size_t i = 0; i < result.fields.size(); ++i) out.header += (i > 0 ? "|" : "") + result.fields[i].name;
    for (const Row& row : result.rows) {
        std::string& text = out.rows.emplace_back();
        for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "|" : "") + cellText(row[i], result.fields[i]);
    }
    return out;
}

std::string whole(const WantedSet& set) {
    std::string text = set.header + "\n";
    for (const std::string& row : set.rows) text += row + "\n";
    return text;
}

/// The first error among the messages, or an empty one.
DbError firstError(const std::vector<DbError>& messages) {
    for (const DbError& message : messages)
        if (message.severity > 10) return message;
    return {};
}

class CaseTest : public testing::Test {
public:
    CaseTest(const Case& tested, Setting setting) : case_(tested), setting_(setting) {}

    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() / ("kv-sql-cases-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder_);
        options_.file = setting_ == Setting::Reopened ? (folder_ / "case.db").string() : ":memory:";
        options_.statementCache = setting_ != Setting::NoCache;
        connection_ = openEmbedded(options_);
    }

    void TearDown() override {
        connection_.reset();
        std::filesystem::remove_all(folder_);
    }

    void TestBody() override {
        for (const Step& step : case_.steps) {
            SCOPED_TRACE(case_.file + ":" + std::to_string(step.line) + " " + case_.holds);
            run(step);
            if (setting_ == Setting::Reopened) reopen();
        }
    }

private:
    void run(const Step& step) {
        const std::vector<ResultSet> results = connection_->Attempt(step.batch);
        const DbError error = firstError(connection_->errors());
        EXPECT_EQ(error.number, step.error) << error.description;
        if (step.error != 0) {
            EXPECT_EQ(error.description.substr(0, step.errorText.size()), step.errorText);
        }
        std::string got, wanted;
        for (const ResultSet& result : results) got += "=> " + whole(shown(result));
        for (const WantedSet& set : step.sets) wanted += "=> " + whole(set);
        EXPECT_EQ(got, wanted) << step.batch;
    }

    void reopen() {
        const std::string database = connection_->defaultDatabase();
        connection_.reset();
        connection_ = openEmbedded(options_);
        connection_->setDefaultDatabase(database);
    }

    const Case& case_;
    Setting setting_;
    EmbeddedOptions options_;
    std::filesystem::path folder_;
    std::unique_ptr<Connection> connection_;
};

std::vector<std::string> caseFiles(int argc, char** argv) {
    std::vector<std::string> files(argv + 1, argv + argc);
    if (!files.empty()) return files;
    const char* source = std::getenv("KV_SOURCE");
    for (const auto& entry : std::filesystem::directory_iterator(std::string(source ? source : ".") + "/tests/sql"))
        if (entry.path().extension() == ".case") files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

void registerCase(const Case& tested) {
    const std::pair<Setting, const char*> kSettings[] = {
        {Setting::Plain, "plain"}, {Setting::NoCache, "no_cache"}, {Setting::Reopened, "reopened"}};
    std::string name = tested.group + "_" + tested.name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    for (const auto& [setting, label] : kSettings) {
        if (setting == Setting::Reopened && tested.needs == "session") continue;
        testing::RegisterTest(label, name.c_str(), nullptr, nullptr, tested.file.c_str(), tested.line,
                              [&tested, setting = setting] { return new CaseTest(tested, setting); });
    }
}

}  // namespace
}  // namespace kv::sqlcases

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::vector<kv::sqlcases::Case> cases;
    try {
        for (const std::string& file : kv::sqlcases::caseFiles(argc, argv)) {
            std::vector<kv::sqlcases::Case> more = kv::sqlcases::readCases(file);
            std::move(more.begin(), more.end(), std::back_inserter(cases));
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    for (const auto& tested : cases) kv::sqlcases::registerCase(tested);
    if (cases.empty()) {
        std::fprintf(stderr, "no case found\n");
        return 1;
    }
    return RUN_ALL_TESTS();
}
