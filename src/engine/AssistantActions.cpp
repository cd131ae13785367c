#include "engine/AssistantActions.h"

#include "base/Text.h"

#include <algorithm>

namespace kelvo {

ProposedStep proposedStep(std::string_view token, const SOC2Mesh* mesh) {
    constexpr std::string_view generate = "generate:";
    if (token == "play") return {Act{Act::Kind::play}};
    if (token == "pause") return {Act{Act::Kind::pause}};
    if (token == "snapshot_os") return {Act{Act::Kind::snapshot}};
    if (token == "add_evidence") return {.addEvidence = true};
    if (!token.starts_with(generate) || mesh == nullptr) return {};
    const std::string wanted = lowerCased(trimmed(token.substr(generate.size())));
    const auto node = std::find_if(mesh->nodes.begin(), mesh->nodes.end(),
                                   [&](const auto& each) { return lowerCased(each.id) == wanted; });
    if (node == mesh->nodes.end() || !(node->g < 1.0)) return {};
    return {Act{Act::Kind::generate, node->id}};
}

std::string actionName(const Act& act) {
    switch (act.kind) {
    case Act::Kind::closeGap:
        return "Close " + act.criterion;
    case Act::Kind::generate:
        return "Generate " + act.criterion + " policy";
    case Act::Kind::play:
        return "Play";
    case Act::Kind::pause:
        return "Pause";
    case Act::Kind::throttle:
        return "Reduce exposure";
    case Act::Kind::bond:
        return "Approve & save";
    case Act::Kind::kyc:
        return "Verify identity";
    case Act::Kind::snapshot:
        return "Check this device";
    }
    return {};
}

} // namespace kelvo
