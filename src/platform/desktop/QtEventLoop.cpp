#include "platform/desktop/QtEventLoop.h"

#include <QCoreApplication>
#include <utility>

namespace kelvo {

void QtEventLoop::post(std::function<void()> work) {
    QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

void QtEventLoop::processPending() {
    QCoreApplication::processEvents();
}

} // namespace kelvo
