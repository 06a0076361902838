// The application object that the forms of a test program need, for as long as its tests run.
#include <gtest/gtest.h>

#include <memory>

#include "platform/forms/Application.h"

namespace {

class TestApplication : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<kv::Application>(argc_, argv_); }
    void TearDown() override { application_.reset(); }

private:
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    int argc_ = 1;
    std::unique_ptr<kv::Application> application_;
};

const auto* const kApplication = testing::AddGlobalTestEnvironment(new TestApplication);

}  // namespace
