#pragma once

#include "compliance/SOC2Mesh.h"
#include "engine/Records.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// The one step that an assistant's answer proposes; at most one of the two is set.
struct ProposedStep {
    std::optional<Act> action{};
    bool addEvidence = false;

    bool operator==(const ProposedStep&) const = default;
};

/// The step that an action token stands for. `token` is trimmed and lower-cased; whatever is not
/// exactly one of the known tokens, or names a criterion that the mesh does not have or has met,
/// proposes nothing.
ProposedStep proposedStep(std::string_view token, const SOC2Mesh* mesh);

/// What the confirm button of a proposed step is called.
std::string actionName(const Act& act);

} // namespace kelvo
