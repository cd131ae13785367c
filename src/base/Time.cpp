#include "base/Time.h"

#include <array>
#include <cstdio>

namespace kelvo {

std::string iso8601(TimePoint moment) {
    using namespace std::chrono;
    const auto day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss time{floor<seconds>(moment - day)};
    std::array<char, 40> text{};
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace kelvo
