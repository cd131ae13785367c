#include "platform/presence/AttemptGuard.h"

namespace kelvo {

std::optional<std::chrono::seconds> AttemptGuard::wait(Clock::time_point now) const {
    if (failures_ < limit || now >= last_ + pause) return std::nullopt;
    return std::chrono::ceil<std::chrono::seconds>(last_ + pause - now);
}

void AttemptGuard::failed(Clock::time_point asked, Clock::time_point answered) {
    // After a pause the person has three attempts again.
    if (failures_ >= limit || answered - asked >= fast) failures_ = 0;
    if (answered - asked < fast) ++failures_;
    last_ = answered;
}

} // namespace kelvo
