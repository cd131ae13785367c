#include "platform/desktop/QtBackground.h"

#include <utility>

namespace kelvo {

QtBackground::QtBackground() {
    pool_.setMaxThreadCount(1);
}

QtBackground::~QtBackground() {
    pool_.clear();
    pool_.waitForDone();
}

void QtBackground::run(std::function<void()> work, std::function<void()> done) {
    pool_.start([this, work = std::move(work), done = std::move(done)]() mutable {
        work();
        QMetaObject::invokeMethod(&context_, std::move(done), Qt::QueuedConnection);
    });
}

} // namespace kelvo
