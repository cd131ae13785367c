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

std::optional<TimePoint> parseIso8601(std::string_view text) {
    constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ";
    if (text.size() != form.size()) return std::nullopt;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == 'd' ? !digit : text[i] != form[i]) return std::nullopt;
    }
    const auto number = [&](std::size_t at, std::size_t digits) {
        int value = 0;
        for (std::size_t i = at; i < at + digits; ++i)
            value = 10 * value + (text[i] - '0');
        return value;
    };
    using namespace std::chrono;
    const year_month_day date{year{number(0, 4)}, month{static_cast<unsigned>(number(5, 2))},
                              day{static_cast<unsigned>(number(8, 2))}};
    const int hour = number(11, 2);
    const int minute = number(14, 2);
    const int second = number(17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    // The clock counts nanoseconds in 64 bits, which ends in 2262.
    constexpr int firstYear = 1678;
    constexpr int lastYear = 2261;
    if (int{date.year()} < firstYear || int{date.year()} > lastYear) return std::nullopt;
    return sys_days{date} + hours{hour} + minutes{minute} + seconds{second};
}

std::string isoDay(Day day) {
    return iso8601(day).substr(0, 10);
}

std::optional<Day> parseIsoDay(std::string_view text) {
    constexpr std::size_t length = 10;
    if (text.size() != length) return std::nullopt;
    const auto moment = parseIso8601(std::string(text) + "T00:00:00Z");
    if (!moment) return std::nullopt;
    return std::chrono::floor<std::chrono::days>(*moment);
}

} // namespace kelvo
