// The application that the report tests need for fonts and windows, for as long as they run.
#include <gtest/gtest.h>

#include "platform/base/Date.h"
#include "platform/forms/Application.h"

namespace {

class TestApplication : public testing::Environment {
public:
    void SetUp() override {
        kv::fixClock(kv::Date(2024, 4, 5, 10, 30));
        application_ = std::make_unique<kv::Application>(count_, arguments_);
    }
    void TearDown() override { application_.reset(); }

private:
    char program_[11] = "print_test";
    char* arguments_[2] = {program_, nullptr};
    int count_ = 1;
    std::unique_ptr<kv::Application> application_;
};

const auto* const kApplication = testing::AddGlobalTestEnvironment(new TestApplication);

}  // namespace
