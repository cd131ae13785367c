#include "engine/WorkQueue.h"

#include <utility>

namespace kelvo {

WorkQueue::Exclusive::Exclusive(const Turn& turn) : queue_(turn.queue_) {
    ++queue_.holders_;
}

WorkQueue::Exclusive::~Exclusive() {
    --queue_.holders_;
    queue_.drain();
}

void WorkQueue::submit(Work work) {
    waiting_.push_back(std::move(work));
    drain();
}

void WorkQueue::drain() {
    // Work that holds and releases the queue itself must not start what comes behind it.
    if (draining_) return;
    draining_ = true;
    while (holders_ == 0 && !waiting_.empty()) {
        const Work work = std::move(waiting_.front());
        waiting_.pop_front();
        work(Turn(*this));
    }
    draining_ = false;
}

} // namespace kelvo
