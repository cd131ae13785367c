#pragma once

#include <chrono>
#include <optional>

namespace kelvo {

/// Stops asking after three fast failures in a row, as a guessing hand or a broken reader makes
/// them, and lets the person try again after a pause. Never locks anybody out for good.
class AttemptGuard {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr int limit = 3;
    static constexpr std::chrono::seconds fast{10};  ///< a failure that comes sooner is a fast one
    static constexpr std::chrono::seconds pause{30}; ///< how long nobody is asked then

    /// How long nobody is asked from `now` on, rounded up; none when the person may be asked.
    std::optional<std::chrono::seconds> wait(Clock::time_point now) const;

    /// One prompt was shown at `asked` and failed at `answered`. Cancelled prompts do not count.
    void failed(Clock::time_point asked, Clock::time_point answered);
    void proved() { failures_ = 0; }

private:
    int failures_ = 0;
    Clock::time_point last_{};
};

} // namespace kelvo
