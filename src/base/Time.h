#pragma once

#include <chrono>
#include <string>

namespace kelvo {

using TimePoint = std::chrono::system_clock::time_point;

/// ISO 8601 internet date-time in UTC with whole seconds, fractions cut off: 2026-01-31T09:15:02Z.
std::string iso8601(TimePoint moment);

} // namespace kelvo
