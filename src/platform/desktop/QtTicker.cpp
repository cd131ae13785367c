#include "platform/desktop/QtTicker.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

constexpr qint64 nanosecondsInASecond = 1'000'000'000;
constexpr qint64 ticksInASecond = 60;

} // namespace

QtTicker::QtTicker() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setSingleShot(true);
    timer_.callOnTimeout([this] { fire(); });
}

void QtTicker::start(std::function<void()> tick) {
    tick_ = std::move(tick);
    if (timer_.isActive()) return;
    sinceStart_.start();
    ticks_ = 0;
    schedule();
}

void QtTicker::stop() {
    timer_.stop();
    tick_ = nullptr;
}

void QtTicker::schedule() {
    const qint64 now = sinceStart_.nsecsElapsed();
    ticks_ = std::max(ticks_ + 1, now * ticksInASecond / nanosecondsInASecond);
    const qint64 due = ticks_ * nanosecondsInASecond / ticksInASecond;
    timer_.start(static_cast<int>(std::max<qint64>(0, (due - now + 999'999) / 1'000'000)));
}

void QtTicker::fire() {
    if (!tick_) return;
    // Scheduled first and called through a copy: a tick may stop the ticker or start it anew.
    schedule();
    const auto tick = tick_;
    tick();
}

} // namespace kelvo
