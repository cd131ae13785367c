#pragma once

#include "base/Time.h"
#include "proof/Criteria.h"
#include "proof/FurtherSeals.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// What the evidence of a criterion carries, beside what management decided.
enum class Standing {
    open,      ///< not met
    declared,  ///< called met in the file, and nobody sealed it
    withdrawn, ///< every closing was taken back
    missing,   ///< no day is covered, and a file is not there
    undated,   ///< no day is covered
    stale,     ///< none of the times due is covered
    partial,   ///< some are
    attested,  ///< all are, at least one only by somebody's word
    supported, ///< all are, by documents or device readings
};

/// "open", "declared", …
std::string_view nameOf(Standing standing);

/// Days from the first to the last, both among them.
struct DaySpan {
    Day from{};
    Day to{};

    bool touches(const DaySpan& other) const { return from <= other.to && other.from <= to; }
    bool operator==(const DaySpan&) const = default;
};

/// One closing of a criterion, as far as its standing is concerned.
struct Closing {
    std::size_t decision = 0; ///< its place in the list of decisions
    Day sealed{};             ///< UTC day of "attested_at"
    bool withdrawn = false;
    bool byWord = false; ///< an attestation: somebody's word
    bool there = false;  ///< the evidence's file is kept and the sealed one
    /// What the evidence speaks of: its recorded days, or the day of a statement, a reading or an
    /// approved policy. None where nothing was recorded, or what was recorded is void.
    std::optional<DaySpan> covers{};
    bool voidDates = false; ///< days were recorded that were still to come, or that are none

    /// Days between the last covered one and the seal, where they are more than 31.
    std::optional<std::int64_t> recordedLate() const;

    bool operator==(const Closing&) const = default;
};

/// A time at which a criterion's control was or will be due.
struct DueInterval {
    enum class State { notOver, missed, byWord, met };

    DaySpan days; ///< `from` is `firstDay` where any day up to `to` does
    State state = State::missed;
    std::vector<std::size_t> closings{}; ///< those that touch it, as places in the criterion's list

    bool operator==(const DueInterval&) const = default;
};

/// The first day that anything can be dated.
inline constexpr Day firstDay =
    std::chrono::year{1678} / std::chrono::January / std::chrono::day{1};

struct CriterionStanding {
    Standing standing = Standing::open;
    double level = 0; ///< 1 where there is a closing, else the file's
    std::int64_t due = 0;
    std::int64_t present = 0;
    std::optional<Day> freshUntil{};      ///< last covered day and its frequency's length
    bool ranBefore = false;               ///< an annual control that last ran before the period
    std::vector<DueInterval> intervals{}; ///< those due and those still to come, in order
    std::vector<Closing> closings{};      ///< in the order of decisions, withdrawn ones too

    bool operator==(const CriterionStanding&) const = default;
};

/// The days that count as one: 1 for daily, 7, 31, 92, 184, 366 for annual; none for once and each
/// time.
std::optional<std::int64_t> daysOf(Frequency frequency);

/// The times that are due by `today` and those of the period that are still to come. Type I: one
/// that ends at the period's day. Type II: a year's end at the last day for annual, any day up to
/// it for once; else each calendar day, ISO week, month, quarter or half year that lies wholly in
/// the period; where there is none yet, and for each time, all its days until today.
std::vector<DueInterval> dueIntervals(Frequency frequency, const AuditPeriod& period, Day today);

/// The standing of one criterion by its closings.
CriterionStanding standingOf(const Criterion& criterion, std::vector<Closing> closings,
                             const AuditPeriod& period, Day today);

/// Σ w of the supported criteria, or Σ level·w, by Σ w; 0 where Σ w is 0. `standings` are those of
/// the criteria, in their order.
double supportedShare(std::span<const Criterion> criteria,
                      std::span<const CriterionStanding> standings);
double readinessShare(std::span<const Criterion> criteria,
                      std::span<const CriterionStanding> standings);

/// The year that ends today, for as long as no period is set.
AuditPeriod lastTwelveMonths(Day today);

} // namespace kelvo
