#pragma once

#include "ports/Ticker.h"

#include <QElapsedTimer>
#include <QTimer>

namespace kelvo {

/// Sixty ticks a second from Qt's event loop. The n-th tick is due n/60 s after the start, so that
/// the timer's whole milliseconds do not add up; ticks that a busy program misses are dropped.
class QtTicker : public Ticker {
public:
    QtTicker();

    void start(std::function<void()> tick) override;
    void stop() override;

private:
    void schedule();
    void fire();

    QTimer timer_;
    QElapsedTimer sinceStart_;
    qint64 ticks_ = 0;
    std::function<void()> tick_;
};

} // namespace kelvo
