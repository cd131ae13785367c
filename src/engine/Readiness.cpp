#include "base/Text.h"
#include "compliance/ClosureReplay.h"
#include "engine/EngineVM.h"

namespace kelvo {

void EngineVM::loadMesh() {
    auto loaded = SOC2Mesh::load(directories_.outputs / "soc2-mesh-bondgraph.json");
    if (!loaded) {
        refuse("Could not load readiness graph: " + loaded.error(), "mesh_load_failed",
               {{"error", loaded.error()}});
        return;
    }
    const double asFiled = loaded->readiness().value;
    cite("Loaded SOC 2 readiness graph: " + std::to_string(loaded->nodes.size()) +
             " criteria, readiness " + percent(asFiled),
         "kernel SOC2Mesh.solve · Σ(g·w)/Σw");
    log_.e("mesh_loaded", {{"criteria", loaded->nodes.size()}, {"readiness", asFiled}});

    std::set<std::string, std::less<>> ids;
    for (const SOC2Mesh::Node& node : loaded->nodes)
        ids.insert(node.id);
    const auto closed = sealedClosures(directories_.outputs, ids);
    // Nobody sees the mesh before the sealed closures are on it.
    showMesh(loaded->applying(closed));
    cite("Replayed " + std::to_string(closed.size()) + " sealed gap-closes → readiness " +
             percent(*readiness),
         "kernel SOC2Mesh.applying · reconstructed from sovereign totems");
    log_.e("mesh_replayed", {{"closed", closed.size()}, {"readiness", *readiness}});
    proposeNBA();
}

void EngineVM::readAgainNow(const Turn&) {
    if (*mesh) return;
    loadMesh();
    if (!*mesh) return;
    if (!*roleMap) loadRoleMap();
    rememberFiles();
    const std::size_t count = (*mesh)->nodes.size();
    status.set(std::to_string(count) +
               (count == 1 ? " criterion is ready." : " criteria are ready.") +
               (*principal ? "" : " Verify who you are to begin."));
    proposeNBA();
    compareProof();
}

int EngineVM::metCount() const {
    return *mesh ? (*mesh)->metCount() : 0;
}

const SOC2Mesh::Node* EngineVM::criterionNode(std::string_view id) const {
    return *mesh ? (*mesh)->find(id) : nullptr;
}

CardInputs EngineVM::cardInputs() const {
    CardInputs inputs;
    inputs.verified = principal->has_value();
    inputs.mesh = *mesh ? &**mesh : nullptr;
    inputs.readiness = *readiness;
    inputs.metCount = metCount();
    if (*role && **role != "Owner" && !roleControls().empty()) {
        inputs.tasks = RoleInputs{roleReadonly(), roleReadiness(), nextRoleControl()};
    }
    const auto& state = sim_->state();
    inputs.simulation = {
        .pending = pending->has_value(),
        .running = *running,
        .firstState = state.empty() ? 0 : state.front(),
        .rate = *rate,
        .risk = *risk,
        .drive = *drive,
    };
    return inputs;
}

void EngineVM::showMesh(SOC2Mesh changed) {
    const double solved = changed.readiness().value;
    mesh.set(std::move(changed));
    readiness.set(solved);
}

void EngineVM::proposeNBA() {
    Cards cards = chooseCards(cardInputs());
    agentNBA.set(std::move(cards.agent));
    humanNBA.set(std::move(cards.human));
}

} // namespace kelvo
