#include "platform/forms/TaskProgress.h"

#include <QApplication>
#include <QProgressDialog>

#include "platform/forms/Internal.h"

namespace kv {

namespace {
constexpr int kShownAfter_ms = 500;
}  // namespace

struct TaskProgress::Impl {
    QProgressDialog window;

    explicit Impl(const QString& label) : window(label, QStringLiteral("Cancel"), 0, 1, QApplication::activeWindow()) {
        window.setWindowModality(Qt::ApplicationModal);
        window.setMinimumDuration(kShownAfter_ms);
        window.setAutoClose(false);
        window.setAutoReset(false);
        window.setValue(0);
    }
};

TaskProgress::TaskProgress(std::string_view label) : impl_(std::make_unique<Impl>(qs(label))) {}

TaskProgress::~TaskProgress() = default;

bool TaskProgress::step(int done, int all) {
    impl_->window.setMaximum(all);
    impl_->window.setValue(done);
    return !impl_->window.wasCanceled();
}

}  // namespace kv
