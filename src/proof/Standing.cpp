#include "proof/Standing.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelvo {
namespace {

using namespace std::chrono;

constexpr std::array<std::string_view, 9> standings = {"open",    "declared", "withdrawn",
                                                       "missing", "undated",  "stale",
                                                       "partial", "attested", "supported"};

/// A document that was recorded later than this after the days it speaks of is pointed out.
constexpr days late{31};

bool byCalendar(Frequency frequency) {
    switch (frequency) {
    case Frequency::semiannual:
    case Frequency::quarterly:
    case Frequency::monthly:
    case Frequency::weekly:
    case Frequency::daily:
        return true;
    case Frequency::once:
    case Frequency::annual:
    case Frequency::event:
        break;
    }
    return false;
}

unsigned monthsOf(Frequency frequency) {
    if (frequency == Frequency::semiannual) return 6;
    return frequency == Frequency::quarterly ? 3 : 1;
}

/// The first day of the calendar unit that `day` is in. Weeks begin on Monday (ISO 8601).
Day beginOfUnit(Frequency frequency, Day day) {
    if (frequency == Frequency::daily) return day;
    if (frequency == Frequency::weekly) return day - (weekday{day} - Monday);
    const year_month_day date{day};
    const unsigned size = monthsOf(frequency);
    const unsigned first = (static_cast<unsigned>(date.month()) - 1) / size * size + 1;
    return date.year() / month{first} / 1;
}

/// The first day of the unit after the one that begins on `begin`.
Day nextUnit(Frequency frequency, Day begin) {
    if (frequency == Frequency::daily) return begin + days{1};
    if (frequency == Frequency::weekly) return begin + days{7};
    const year_month_day date{begin};
    const year_month after = date.year() / date.month() + months{monthsOf(frequency)};
    return after / 1;
}

std::vector<DueInterval> calendarIntervals(Frequency frequency, const AuditPeriod& period,
                                           Day last) {
    std::vector<DueInterval> intervals;
    bool anyDue = false;
    Day begin = beginOfUnit(frequency, period.from);
    if (begin < period.from) begin = nextUnit(frequency, begin);
    while (begin <= period.to) {
        const Day next = nextUnit(frequency, begin);
        const Day end = next - days{1};
        if (end > period.to) break;
        const bool over = end <= last;
        anyDue = anyDue || over;
        intervals.push_back(
            {.days = {begin, end},
             .state = over ? DueInterval::State::missed : DueInterval::State::notOver});
        begin = next;
    }
    if (anyDue) return intervals;
    // Nothing was over yet: what has passed of the period is asked for as a whole.
    std::erase_if(intervals, [last](const DueInterval& each) { return each.days.from <= last; });
    intervals.insert(intervals.begin(), DueInterval{.days = {period.from, last}});
    return intervals;
}

void judge(DueInterval& interval, const std::vector<Closing>& closings) {
    bool met = false;
    for (std::size_t i = 0; i < closings.size(); ++i) {
        const Closing& closing = closings[i];
        if (closing.withdrawn || !closing.there || !closing.covers) continue;
        if (!closing.covers->touches(interval.days)) continue;
        interval.closings.push_back(i);
        met = met || !closing.byWord;
    }
    if (interval.state == DueInterval::State::notOver || interval.closings.empty()) return;
    interval.state = met ? DueInterval::State::met : DueInterval::State::byWord;
}

Standing judged(const CriterionStanding& result, bool byWord) {
    if (result.level < 1) return Standing::open;
    const auto& closings = result.closings;
    if (closings.empty()) return Standing::declared;
    const auto counts = [](const Closing& each) { return !each.withdrawn; };
    if (std::none_of(closings.begin(), closings.end(), counts)) return Standing::withdrawn;
    const bool covered = std::any_of(closings.begin(), closings.end(), [&](const Closing& each) {
        return counts(each) && each.there && each.covers;
    });
    const bool missing = std::any_of(closings.begin(), closings.end(), [&](const Closing& each) {
        return counts(each) && !each.there;
    });
    if (!covered) return missing ? Standing::missing : Standing::undated;
    if (result.present == 0) return Standing::stale;
    if (result.present < result.due) return Standing::partial;
    return byWord ? Standing::attested : Standing::supported;
}

double share(std::span<const Criterion> criteria, std::span<const CriterionStanding> results,
             double (*worth)(const CriterionStanding&)) {
    double sum = 0;
    double weights = 0;
    for (std::size_t i = 0; i < criteria.size() && i < results.size(); ++i) {
        const auto weight = static_cast<double>(criteria[i].weight);
        sum += worth(results[i]) * weight;
        weights += weight;
    }
    return weights == 0 ? 0 : sum / weights;
}

} // namespace

std::string_view nameOf(Standing standing) {
    return standings[static_cast<std::size_t>(standing)];
}

std::optional<std::int64_t> Closing::recordedLate() const {
    if (!covers || sealed - covers->to <= late) return std::nullopt;
    return (sealed - covers->to).count();
}

std::optional<std::int64_t> daysOf(Frequency frequency) {
    switch (frequency) {
    case Frequency::annual:
        return 366;
    case Frequency::semiannual:
        return 184;
    case Frequency::quarterly:
        return 92;
    case Frequency::monthly:
        return 31;
    case Frequency::weekly:
        return 7;
    case Frequency::daily:
        return 1;
    case Frequency::once:
    case Frequency::event:
        break;
    }
    return std::nullopt;
}

std::vector<DueInterval> dueIntervals(Frequency frequency, const AuditPeriod& period, Day today) {
    const Day last = std::min(today, period.to);
    const auto length = daysOf(frequency);
    if (period.type2 && byCalendar(frequency)) return calendarIntervals(frequency, period, last);
    DueInterval only{.days = {firstDay, last}};
    if (length) only.days.from = last - days{*length - 1};
    if (period.type2 && frequency == Frequency::event) only.days.from = period.from;
    return {only};
}

CriterionStanding standingOf(const Criterion& criterion, std::vector<Closing> closings,
                             const AuditPeriod& period, Day today) {
    CriterionStanding result;
    result.closings = std::move(closings);
    result.level = result.closings.empty() ? criterion.level : 1;
    result.intervals = dueIntervals(criterion.frequency, period, today);
    bool byWord = false;
    for (DueInterval& interval : result.intervals) {
        judge(interval, result.closings);
        if (interval.state == DueInterval::State::notOver) continue;
        ++result.due;
        if (interval.state != DueInterval::State::missed) ++result.present;
        byWord = byWord || interval.state == DueInterval::State::byWord;
    }
    std::optional<Day> covered;
    for (const Closing& each : result.closings) {
        if (each.withdrawn || !each.there || !each.covers) continue;
        covered = std::max(covered.value_or(each.covers->to), each.covers->to);
    }
    const auto length = daysOf(criterion.frequency);
    if (covered && length) result.freshUntil = *covered + days{*length};
    result.ranBefore =
        criterion.frequency == Frequency::annual && covered && *covered < period.from;
    result.standing = judged(result, byWord);
    return result;
}

double supportedShare(std::span<const Criterion> criteria,
                      std::span<const CriterionStanding> results) {
    return share(criteria, results, [](const CriterionStanding& each) {
        return each.standing == Standing::supported ? 1.0 : 0.0;
    });
}

double readinessShare(std::span<const Criterion> criteria,
                      std::span<const CriterionStanding> results) {
    return share(criteria, results, [](const CriterionStanding& each) { return each.level; });
}

AuditPeriod lastTwelveMonths(Day today) {
    const year_month_day date{today};
    const year_month_day before = date - years{1};
    // A year before 29 February is its 28th.
    const Day same =
        before.ok() ? Day{before} : Day{before.year() / before.month() / std::chrono::last};
    return {.type2 = true, .from = same + days{1}, .to = today, .categories = {}, .firm = {}};
}

} // namespace kelvo
