#include "tests/sql/CaseFile.h"

#include <stdexcept>

#include "platform/base/Paths.h"
#include "platform/base/Text.h"

namespace kv::sqlcases {

namespace {

class Reader {
public:
    explicit Reader(const std::string& path) : path_(path), lines_(split(readTextFile(path), '\n')) {}

    std::vector<Case> run() {
        for (; at_ < lines_.size(); ++at_) line(lines_[at_]);
        finishCase();
        return std::move(cases_);
    }

private:
    [[noreturn]] void fail(const std::string& why) const {
        throw std::runtime_error(fileNameOf(path_) + ":" + std::to_string(at_ + 1) + ": " + why);
    }

    void line(const std::string& text) {
        if (inRows_ && text.empty()) {
            inRows_ = false;
        } else if (step_.batch.empty() && (text.empty() || startsNoCase(text, "##"))) {
            return;
        } else if (startsNoCase(text, "name: ") && step_.batch.empty()) {
            finishCase();
            current_.file = fileNameOf(path_);
            current_.line = static_cast<int>(at_) + 1;
            current_.name = text.substr(6);
        } else if (current_.steps.empty() && step_.batch.empty() && head(text)) {
            return;
        } else if (text.starts_with("=>")) {
            wanted(std::string(trimBlanks(std::string_view(text).substr(2))));
        } else if (inRows_) {
            current_.steps.back().sets.back().rows.push_back(text);
        } else {
            if (step_.batch.empty()) step_.line = static_cast<int>(at_) + 1;
            step_.batch += text + "\n";
        }
    }

    bool head(const std::string& text) {
        const std::pair<const char*, std::string Case::*> kFields[] = {
            {"holds: ", &Case::holds}, {"group: ", &Case::group}, {"needs: ", &Case::needs}};
        for (const auto& [prefix, field] : kFields) {
            if (!text.starts_with(prefix)) continue;
            current_.*field = text.substr(7);
            return true;
        }
        return false;
    }

    void wanted(const std::string& text) {
        if (!step_.batch.empty()) {
            current_.steps.push_back(std::move(step_));
            step_ = {};
        }
        if (current_.steps.empty()) fail("an answer without a batch");
        Step& step = current_.steps.back();
        inRows_ = false;
        if (text == "ok") return;
        if (text.starts_with("error ")) {
            const std::size_t blank = std::min(text.find(' ', 6), text.size());
            step.error = std::stoi(text.substr(6, blank - 6));
            step.errorText = blank < text.size() ? text.substr(blank + 1) : "";
            return;
        }
        step.sets.push_back({text, {}});
        inRows_ = true;
    }

    void finishCase() {
        if (!step_.batch.empty()) fail("a batch without an answer");
        if (!current_.name.empty()) {
            if (current_.holds.empty() || current_.group.empty() || current_.steps.empty())
                fail("the case above lacks its head or its batches");
            cases_.push_back(std::move(current_));
        }
        current_ = {};
        inRows_ = false;
    }

    std::string path_;
    std::vector<std::string> lines_;
    std::size_t at_ = 0;
    Case current_;
    Step step_;
    bool inRows_ = false;
    std::vector<Case> cases_;
};

}  // namespace

std::vector<Case> readCases(const std::string& path) { return Reader(path).run(); }

}  // namespace kv::sqlcases
