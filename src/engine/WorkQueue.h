#pragma once

#include <deque>
#include <functional>

namespace kelvo {

/// The one gate for work that is not the person's own click. While the person is being asked
/// something (a presence prompt, a file panel), the event loop keeps running so that the window
/// repaints; what arrives then waits here and runs afterwards, in order of arrival.
///
/// Used on the engine's thread only.
class WorkQueue {
public:
    /// Holds the queue from the question to the end of the operation that asked it. Holding nests.
    class [[nodiscard]] Exclusive {
    public:
        explicit Exclusive(WorkQueue& queue);
        /// Releases the queue; where nobody holds it any more, runs what has arrived meanwhile.
        ~Exclusive();
        Exclusive(const Exclusive&) = delete;
        Exclusive& operator=(const Exclusive&) = delete;

    private:
        WorkQueue& queue_;
    };

    bool held() const { return holders_ > 0; }

    /// Runs `work` now, or after what was submitted before it once the queue is no longer held.
    void submit(std::function<void()> work);

private:
    void drain();

    std::deque<std::function<void()>> waiting_;
    int holders_ = 0;
    bool draining_ = false;
};

} // namespace kelvo
