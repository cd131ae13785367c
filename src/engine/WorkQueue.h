#pragma once

#include <concepts>
#include <deque>
#include <functional>
#include <optional>

namespace kelvo {

class WorkQueue;

/// Leave to work on the engine: only its queue gives one, and only while nobody is being asked
/// anything. Whoever has a turn came through the gate, so what must not run beside a question takes
/// one as its first argument. A turn is good until the work that got it returns.
class Turn {
public:
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    friend class WorkQueue;
    explicit Turn(WorkQueue& queue) : queue_(queue) {}

    WorkQueue& queue_;
};

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
        explicit Exclusive(const Turn& turn);
        /// Releases the queue; where nobody holds it any more, runs what has arrived meanwhile.
        ~Exclusive();
        Exclusive(const Exclusive&) = delete;
        Exclusive& operator=(const Exclusive&) = delete;

    private:
        WorkQueue& queue_;
    };

    using Work = std::function<void(const Turn&)>;

    bool held() const { return holders_ > 0; }

    /// Runs `work` at once, also in the middle of other work, where nobody holds the queue. False
    /// where somebody does: then nothing was run.
    template <std::invocable<const Turn&> Now>
    bool runNow(Now&& work) {
        if (held()) return false;
        work(Turn(*this));
        return true;
    }

    /// Runs `work` now, or after what was submitted before it once the queue is no longer held.
    void submit(Work work);
    void submit(std::invocable auto work) {
        submit(Work([work = std::move(work)](const Turn&) { work(); }));
    }

private:
    void drain();

    std::deque<Work> waiting_;
    int holders_ = 0;
    bool draining_ = false;
};

} // namespace kelvo
