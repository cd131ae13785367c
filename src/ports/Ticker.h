#pragma once

#include <functional>

namespace kelvo {

/// The repeating timer of the run loop.
class Ticker {
public:
    virtual ~Ticker() = default;

    /// Calls `tick` 60 times a second on the engine's thread, from its event loop and never from
    /// inside this call, until `stop`. A ticker that runs already takes the new function.
    virtual void start(std::function<void()> tick) = 0;

    /// No tick begins after this returns. Safe to call from inside a tick.
    virtual void stop() = 0;
};

} // namespace kelvo
