#pragma once

#include "base/Time.h"

namespace kelvo {

/// The wall clock behind every time stamp.
class Clock {
public:
    virtual ~Clock() = default;
    virtual TimePoint now() const = 0;
};

} // namespace kelvo
