#pragma once

#include <functional>

namespace kelvo {

/// The event loop of the engine's thread.
class EventLoop {
public:
    virtual ~EventLoop() = default;

    /// Runs `work` later, on the engine's thread, in the order of posting; never from inside this
    /// call.
    virtual void post(std::function<void()> work) = 0;

    /// Handles what waits and returns, so that the window repaints in the middle of long work.
    virtual void processPending() = 0;
};

} // namespace kelvo
