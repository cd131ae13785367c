#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

using TimePoint = std::chrono::system_clock::time_point;
/// A calendar day, in UTC where it comes from a moment.
using Day = std::chrono::sys_days;

/// ISO 8601 internet date-time in UTC with whole seconds, fractions cut off: 2026-01-31T09:15:02Z.
std::string iso8601(TimePoint moment);

/// Reads that one form; none for anything else, also for a day that no month has, or a year
/// that the clock cannot count to (before 1678, after 2261).
std::optional<TimePoint> parseIso8601(std::string_view text);

/// ISO 8601 calendar date: 2026-01-31.
std::string isoDay(Day day);

/// Reads that one form; none as for `parseIso8601`.
std::optional<Day> parseIsoDay(std::string_view text);

} // namespace kelvo
