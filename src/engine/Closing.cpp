// Closing a criterion: what every operation that meets one has in common. The operations differ
// around it and each spells out its own steps.

#include "base/Text.h"
#include "engine/EngineVM.h"

#include <cassert>

namespace kelvo {

std::string EngineVM::Closing::readinessChange() const {
    return percent(facts.readinessBefore) + "→" + percent(facts.readinessAfter);
}

void EngineVM::closeCriterion(Closing& closing) {
    ControlClosure& facts = closing.facts;
    assert(criterionNode(facts.criterion) != nullptr && "the operation has looked");
    SOC2Mesh raised = **mesh;
    SOC2Mesh::Node& node = *raised.find(facts.criterion);
    facts.gateBefore = node.g;
    facts.readinessBefore = *readiness;
    node.g = 1.0;
    showMesh(std::move(raised));
    facts.readinessAfter = *readiness;

    facts.owner = ownerName();
    if (facts.attestedAt.empty()) facts.attestedAt = now();
    facts.tip = chain_.tip();
    facts.evidenceRoot = closing.evidence.root();
    Json payload = controlPayload(facts);
    payload.update(closing.extra);
    closing.totem =
        seal(payload, closing.title, facts.presence, facts.attestedAt, closing.evidence);
}

} // namespace kelvo
