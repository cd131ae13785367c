#pragma once

#include "ports/Clock.h"

namespace kelvo {

/// The computer's wall clock.
class SystemClock : public Clock {
public:
    TimePoint now() const override { return std::chrono::system_clock::now(); }
};

} // namespace kelvo
