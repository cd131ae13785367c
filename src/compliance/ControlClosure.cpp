#include "compliance/ControlClosure.h"

namespace kelvo {

// Fixed texts: the members' names, which are hashed and replayed, see docs/decisions.md.
Json controlPayload(const ControlClosure& closure) {
    return {
        {"sourceDb", "control"},
        {"criterion", closure.criterion},
        {"gate_before", closure.gateBefore},
        {"gate_after", 1.0},
        {"owner", closure.owner},
        {"readiness_before", closure.readinessBefore},
        {"readiness_after", closure.readinessAfter},
        {"attested_at", closure.attestedAt},
        {"presence", closure.presence},
        {"tip", closure.tip},
        {"evidence_root", closure.evidenceRoot},
        {"evidence_name", closure.evidenceName},
    };
}

} // namespace kelvo
