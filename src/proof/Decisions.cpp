#include "proof/Decisions.h"

#include <algorithm>
#include <chrono>
#include <unordered_map>
#include <utility>

namespace kelvo {
namespace {

/// The days that were recorded last for a piece of evidence.
struct Recorded {
    const EvidenceItem* item = nullptr;
    Day at{}; ///< when they were
};
using RecordedDates = std::unordered_map<std::string_view, Recorded>;

Day dayOf(const LoggedDecision& decision) {
    auto moment = parseIso8601(decision.attestedAt);
    if (!moment) moment = parseIso8601(decision.time);
    return moment ? std::chrono::floor<std::chrono::days>(*moment) : Day();
}

RecordedDates recordedDates(std::span<const LoggedDecision> decisions) {
    RecordedDates dates;
    for (const LoggedDecision& decision : decisions) {
        const auto* seal = furtherSeal<EvidenceDates>(decision);
        if (seal == nullptr) continue;
        for (const EvidenceItem& item : seal->items)
            dates[item.root] = {&item, dayOf(decision)};
    }
    return dates;
}

/// What was recorded, unless it speaks of days that were still to come when it was recorded or when
/// the evidence was sealed: nothing is evidence of the future.
std::optional<DaySpan> recordedSpan(const Recorded& recorded, Day sealed) {
    const auto from = parseIsoDay(recorded.item->coversFrom);
    const auto to = parseIsoDay(recorded.item->coversTo);
    if (!from || !to || *from > *to || *to > std::min(sealed, recorded.at)) return std::nullopt;
    return DaySpan{*from, *to};
}

Closing closingOf(const LoggedDecision& decision, std::size_t place, const RecordedDates& dates,
                  const std::set<std::string, std::less<>>& altered) {
    Closing closing{.decision = place,
                    .sealed = dayOf(decision),
                    .withdrawn = decision.withdrawn,
                    .byWord = decision.means == LoggedDecision::Means::attestation,
                    .there = decision.evidence == LoggedDecision::Evidence::kept &&
                             !altered.contains(decision.evidenceRoot)};
    const auto recorded = dates.find(decision.evidenceRoot);
    if (recorded != dates.end()) {
        closing.covers = recordedSpan(recorded->second, closing.sealed);
        closing.voidDates = !closing.covers;
    } else if (decision.means != LoggedDecision::Means::document) {
        closing.covers = DaySpan{closing.sealed, closing.sealed};
    }
    return closing;
}

} // namespace

const CriterionStanding* ProofStanding::of(std::string_view criterion) const {
    const auto found = std::find_if(criteria.list.begin(), criteria.list.end(),
                                    [&](const Criterion& each) { return each.id == criterion; });
    if (found == criteria.list.end()) return nullptr;
    return &standings[static_cast<std::size_t>(found - criteria.list.begin())];
}

ProofStanding standingOf(Criteria criteria, std::span<const LoggedDecision> decisions, Day today,
                         const std::set<std::string, std::less<>>& altered) {
    ProofStanding result;
    result.today = today;
    result.criteria = std::move(criteria);
    const RecordedDates dates = recordedDates(decisions);
    for (const auto& [root, recorded] : dates)
        result.dates.emplace(root, *recorded.item);
    std::unordered_map<std::string_view, std::vector<Closing>> closings;
    for (std::size_t i = 0; i < decisions.size(); ++i) {
        const LoggedDecision& decision = decisions[i];
        if (const auto* period = furtherSeal<AuditPeriod>(decision)) result.set = *period;
        if (!decision.closes || decision.repeated) continue;
        closings[decision.criterion].push_back(closingOf(decision, i, dates, altered));
    }
    result.period = result.set.value_or(lastTwelveMonths(today));
    for (const Criterion& criterion : result.criteria.list) {
        result.standings.push_back(
            standingOf(criterion, closings[criterion.id], result.period, today));
    }
    result.readiness = readinessShare(result.criteria.list, result.standings);
    result.supported = supportedShare(result.criteria.list, result.standings);
    return result;
}

std::map<ReportDocument::Kind, const LoggedDecision*>
reportDocuments(std::span<const LoggedDecision> decisions) {
    std::map<ReportDocument::Kind, const LoggedDecision*> found;
    for (const LoggedDecision& decision : decisions) {
        if (const auto* document = furtherSeal<ReportDocument>(decision)) {
            found[document->kind] = &decision;
        }
    }
    return found;
}

} // namespace kelvo
