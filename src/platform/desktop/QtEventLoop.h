#pragma once

#include "ports/EventLoop.h"

#include <QObject>

namespace kelvo {

/// The event loop of the thread that made this object.
class QtEventLoop : public EventLoop {
public:
    void post(std::function<void()> work) override;
    void processPending() override;

private:
    /// Work that is still posted when this object goes is dropped with it.
    QObject context_;
};

} // namespace kelvo
