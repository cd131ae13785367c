#include "engine/NextBestAction.h"

#include "base/Text.h"

#include <cmath>

namespace kelvo {
namespace {

/// Below this first state value (the inertance's momentum on the start-up graph) a driven model
/// counts as settled.
constexpr double steadyBand = 0.01;

// Fixed texts: every title and detail of the cards below, see docs/decisions.md.

Cards identityCards() {
    return {
        .agent = {"First: who is accountable?",
                  "Establish the owner responsible for compliance before anything else. This "
                  "grounds every later approval."},
        .human = {"Verify your identity",
                  "Confirm who you are with Touch ID. This is the first record on your compliance "
                  "log — everything else builds on it.",
                  Act{Act::Kind::kyc}},
    };
}

Cards readOnlyCards(const CardInputs& inputs) {
    return {
        .agent = {"Verify readiness (read-only)",
                  "Re-solve the org graph and confirm each criterion's met/gap state. No changes."},
        .human = {"Review readiness",
                  "You have read-only access. Readiness is " + percent(inputs.readiness) + " (" +
                      std::to_string(inputs.metCount) + "/13 met). Re-solve to verify."},
    };
}

Cards roleCompleteCards() {
    return {
        .agent = {"You're all set",
                  "Every responsibility for your role is complete. Your completion: 100%."},
        .human = {"All your responsibilities are complete",
                  "Nothing left for your role. Your completion: 100%."},
    };
}

std::string verbOf(const RoleMap::Control& control) {
    if (control.close == "os") return "Check this device";
    if (control.close == "generate") return "Generate";
    return "Acknowledge";
}

Cards roleTaskCards(const RoleMap::Control& next, double completion) {
    const std::string verb = verbOf(next);
    const std::string share = percent(completion);
    return {
        .agent = {"Your next task: " + next.task,
                  "This is your responsibility for " + next.criterion + ". " + verb +
                      " to complete it. Your completion: " + share + "."},
        .human = {next.task, "Your responsibility for " + next.criterion + ". " + verb +
                                 " (Touch ID) to mark it done. Your completion: " + share + "."},
    };
}

Cards roleCards(const RoleInputs& tasks, const CardInputs& inputs) {
    if (tasks.readonly) return readOnlyCards(inputs);
    if (!tasks.next) return roleCompleteCards();
    return roleTaskCards(*tasks.next, tasks.completion);
}

Cards readinessCards(const CardInputs& inputs) {
    const SOC2Mesh::Node* gap = inputs.mesh->highestImpactGap();
    if (gap == nullptr) {
        return {
            .agent = {"All criteria met — solve = 100%.",
                      "Every Trust Services Criterion is met. Readiness solves to 100%."},
            .human = {"All criteria met", "Nothing to close. Readiness = 100%."},
        };
    }
    const auto sumW = static_cast<double>(inputs.mesh->readiness().sumW);
    const double gain = static_cast<double>(gap->w) * 100 * (1 - gap->g) / sumW;
    const std::string text = SOC2Mesh::gapText(*gap);
    const Act close{Act::Kind::closeGap, gap->id};
    return {
        .agent = {"Close " + gap->id + " — " + text + " (+" + fixed(gain, 1) + "%)",
                  "Closing the highest-impact criterion lifts readiness from " +
                      percent(inputs.readiness) + " toward met. Read from the graph.",
                  close},
        .human = {"Close " + gap->id + " (verify)",
                  text + " — verify with Touch ID to mark this criterion met and record it on your "
                         "compliance log.",
                  close},
    };
}

Cards awaitingApprovalCards() {
    return {
        .agent = {"AWAIT HIPR",
                  "measurement staged · agent blocked until human presence (no-cloning)"},
        .human = {"Approve & seal",
                  "Press BOND (Touch ID) to record this state on the chain — or PLAY to keep "
                  "running.",
                  Act{Act::Kind::bond}},
    };
}

Cards steadyCards() {
    return {
        .agent = {"STEADY → propose SEAL", "I·p≈0, C charged — system settled. checkpoint state.",
                  Act{Act::Kind::pause}},
        .human = {"Approve & seal steady state",
                  "System reached steady state. BOND (Touch ID) to checkpoint it on the chain.",
                  Act{Act::Kind::bond}},
    };
}

Cards throttleCards(const SimulationInputs& inputs) {
    return {
        .agent = {"THROTTLE Se ↓",
                  "dissipation rate " + fixed(inputs.rate, 3) + " ≥ " + fixed(rateLimit, 2) +
                      " → cut source to cool it (cumulative risk " + fixed(inputs.risk, 3) + ")",
                  Act{Act::Kind::throttle}},
        .human = {"Reduce risk?",
                  "Agent proposes lowering drive to cool the dissipation rate. Approve the "
                  "throttle, or BOND to seal now.",
                  Act{Act::Kind::throttle}},
    };
}

Cards monitorCards(bool running) {
    return {
        .agent = {running ? "INTEGRATE forward" : "PLAY to evolve",
                  "RK4 over totem-time · within risk limit · reversible (PENDING)",
                  Act{Act::Kind::play}},
        .human = {"Monitor", "Within safe limits. No approval needed — watching."},
    };
}

} // namespace

Cards simulationCards(const SimulationInputs& inputs) {
    if (inputs.pending) return awaitingApprovalCards();
    if (std::abs(inputs.firstState) <= steadyBand && inputs.drive > 0) return steadyCards();
    if (inputs.rate >= rateLimit && inputs.drive > 0) return throttleCards(inputs);
    return monitorCards(inputs.running);
}

Cards chooseCards(const CardInputs& inputs) {
    if (!inputs.verified) return identityCards();
    if (inputs.tasks) return roleCards(*inputs.tasks, inputs);
    if (inputs.mesh != nullptr) return readinessCards(inputs);
    return simulationCards(inputs.simulation);
}

} // namespace kelvo
