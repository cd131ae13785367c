#pragma once

#include "base/Time.h"
#include "proof/Criteria.h"
#include "proof/FurtherSeals.h"
#include "proof/Standing.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// One decision of any log that belongs.
struct LoggedDecision {
    enum class Evidence {
        none,     ///< the decision has none
        kept,     ///< a file of its name is in the vault
        notKept,  ///< the line says so, and nobody supplied it since
        arriving, ///< another computer's, not here yet
        gone,     ///< the line says kept, and it is not there
    };

    /// What a closing rests on.
    enum class Means {
        document,
        attestation, ///< somebody's word
        device,      ///< a reading of the device's settings
        policy,      ///< a drafted policy that was approved
    };

    std::string log;       ///< id
    std::int64_t line = 0; ///< counted from 1
    std::int64_t run = 0;
    std::string computer;
    bool own = false;
    bool adopted = false;
    bool repeated =
        false; ///< adopted although another line has the same record; counts for nothing
    bool withdrawn = false; ///< a later note takes it back
    std::string time;       ///< its place in the order of all decisions
    std::string ts;         ///< of the line
    std::string account;
    std::string approved; ///< the sentence
    std::string file;     ///< the record's name
    std::string record;   ///< SHA-256 of its bytes
    std::string block;
    std::string kind; ///< the record's "sourceDb"; "identity", or "collapse" without any
    std::string criterion;
    bool closes = false;    ///< raises the criterion as the start-up replay has it
    std::string owner;      ///< who was verified, as the payload says
    std::string attestedAt; ///< ISO 8601, as the payload says; "" where it does not
    Means means = Means::document;
    std::shared_ptr<const FurtherSeal> further; ///< of a period, dates, note, document, hand-over
    bool byStatement = false;                   ///< evidence is a text that the record itself holds
    std::string evidenceRoot;
    std::string evidenceName;
    Evidence evidence = Evidence::none;
    std::string reason; ///< why it was not kept
};

/// What all decisions together say of the criteria.
struct ProofStanding {
    std::optional<AuditPeriod> set; ///< the last period that was sealed
    AuditPeriod period;             ///< that one, or the year that ends today
    Day today{};
    Criteria criteria; ///< of the readiness graph; none where it cannot be read
    std::vector<CriterionStanding> standings;               ///< one a criterion, in its order
    double readiness = 0;                                   ///< 0 to 1, by the levels of the logs
    double supported = 0;                                   ///< 0 to 1
    std::map<std::string, EvidenceItem, std::less<>> dates; ///< the last of each evidence's hash

    /// The standing of the first criterion of that id, or none.
    const CriterionStanding* of(std::string_view criterion) const;
};

/// The standing of all criteria at the end of `decisions`, which are in their order. Kept evidence
/// counts as there unless its hash is in `altered`.
ProofStanding standingOf(Criteria criteria, std::span<const LoggedDecision> decisions, Day today,
                         const std::set<std::string, std::less<>>& altered = {});

/// The further seal of a decision, where it is of that type and counts.
template <class Seal>
const Seal* furtherSeal(const LoggedDecision& decision) {
    if (decision.repeated || decision.withdrawn || !decision.further) return nullptr;
    return std::get_if<Seal>(decision.further.get());
}

/// The last decision of each kind that recorded a document of the report's own.
std::map<ReportDocument::Kind, const LoggedDecision*>
reportDocuments(std::span<const LoggedDecision> decisions);

} // namespace kelvo
