#include "engine/WorkQueue.h"

#include <utility>

namespace kelvo {

WorkQueue::Exclusive::Exclusive(WorkQueue& queue) : queue_(queue) {
    ++queue_.holders_;
}

WorkQueue::Exclusive::~Exclusive() {
    --queue_.holders_;
    queue_.drain();
}

void WorkQueue::submit(std::function<void()> work) {
    waiting_.push_back(std::move(work));
    drain();
}

void WorkQueue::drain() {
    // Work that holds and releases the queue itself must not start what comes behind it.
    if (draining_) return;
    draining_ = true;
    while (holders_ == 0 && !waiting_.empty()) {
        const auto work = std::move(waiting_.front());
        waiting_.pop_front();
        work();
    }
    draining_ = false;
}

} // namespace kelvo
