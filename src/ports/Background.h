#pragma once

#include <functional>

namespace kelvo {

/// Work beside the engine's thread: long reading and hashing that the window must not wait for.
class Background {
public:
    virtual ~Background() = default;

    /// Runs `work` on another thread, one after the other in the order of asking, and then `done`
    /// on the engine's thread, from its event loop and never from inside this call. `work` shares
    /// nothing with the engine's thread but what its caller guards.
    virtual void run(std::function<void()> work, std::function<void()> done) = 0;
};

} // namespace kelvo
