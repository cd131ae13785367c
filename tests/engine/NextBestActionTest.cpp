#include "engine/NextBestAction.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kelvo {
namespace {

struct Row {
    std::string name;
    CardInputs inputs;
    NBA agent;
    NBA human;
};

void expectCards(const Row& row) {
    const Cards cards = chooseCards(row.inputs);
    for (const auto& [side, got, want] : {std::tuple("agent", cards.agent, row.agent),
                                          std::tuple("human", cards.human, row.human)}) {
        EXPECT_EQ(got.title, want.title) << row.name << ", " << side;
        EXPECT_EQ(got.detail, want.detail) << row.name << ", " << side;
        EXPECT_EQ(got.action, want.action) << row.name << ", " << side;
    }
}

const NBA awaiting{"AWAIT HIPR",
                   "measurement staged · agent blocked until human presence (no-cloning)"};
const NBA approve{
    "Approve & seal",
    "Press BOND (Touch ID) to record this state on the chain — or PLAY to keep running.",
    Act{Act::Kind::bond}};
const NBA steady{"STEADY → propose SEAL", "I·p≈0, C charged — system settled. checkpoint state.",
                 Act{Act::Kind::pause}};
const NBA approveSteady{
    "Approve & seal steady state",
    "System reached steady state. BOND (Touch ID) to checkpoint it on the chain.",
    Act{Act::Kind::bond}};
const NBA reduce{
    "Reduce risk?",
    "Agent proposes lowering drive to cool the dissipation rate. Approve the throttle, "
    "or BOND to seal now.",
    Act{Act::Kind::throttle}};
const NBA monitor{"Monitor", "Within safe limits. No approval needed — watching."};

NBA evolve(const std::string& title) {
    return {title, "RK4 over totem-time · within risk limit · reversible (PENDING)",
            Act{Act::Kind::play}};
}

NBA throttle(const std::string& rate, const std::string& risk) {
    return {"THROTTLE Se ↓",
            "dissipation rate " + rate + " ≥ 0.30 → cut source to cool it (cumulative risk " +
                risk + ")",
            Act{Act::Kind::throttle}};
}

CardInputs simulation(SimulationInputs inputs) {
    return {.verified = true, .simulation = inputs};
}

TEST(NextBestAction, WithoutAMeshTheSimulationSpeaks) {
    const Row table[] = {
        {"pending wins whatever the rate",
         simulation({.pending = true, .firstState = 0, .rate = 9, .drive = 1}), awaiting, approve},
        {"at rest and driven",
         simulation({.running = true, .firstState = -0.01, .rate = 9, .drive = 1}), steady,
         approveSteady},
        {"at rest, not driven", simulation({.firstState = 0, .rate = 9, .drive = 0}),
         evolve("PLAY to evolve"), monitor},
        {"at the limit",
         simulation({.firstState = 0.011, .rate = 0.3, .risk = 1.23456, .drive = 0.125}),
         throttle("0.300", "1.235"), reduce},
        {"below the limit",
         simulation({.running = true, .firstState = 1, .rate = 0.2999, .drive = 1}),
         evolve("INTEGRATE forward"), monitor},
        {"a rate that is not a number is below it",
         simulation({.firstState = std::nan(""), .rate = std::nan(""), .drive = 1}),
         evolve("PLAY to evolve"), monitor},
    };
    for (const Row& row : table)
        expectCards(row);
}

Row task(const RoleMap::Control& control, double share, const std::string& verb,
         const std::string& percent) {
    const std::string criterion = control.criterion + ". " + verb;
    const std::string completion = " Your completion: " + percent + ".";
    return {control.close,
            {.verified = true, .tasks = RoleInputs{false, share, control}},
            {"Your next task: " + control.task,
             "This is your responsibility for " + criterion + " to complete it." + completion},
            {control.task,
             "Your responsibility for " + criterion + " (Touch ID) to mark it done." + completion}};
}

Row gap(const SOC2Mesh& mesh, double readiness, const std::string& id, const std::string& need,
        const std::string& lift, const std::string& from) {
    const Act close{Act::Kind::closeGap, id};
    return {"the largest impact",
            {.verified = true, .mesh = &mesh, .readiness = readiness},
            {"Close " + id + " — " + need + " (+" + lift + ")",
             "Closing the highest-impact criterion lifts readiness from " + from +
                 " toward met. Read from the graph.",
             close},
            {"Close " + id + " (verify)",
             need + " — verify with Touch ID to mark this criterion met and record it on your "
                    "compliance log.",
             close}};
}

TEST(NextBestAction, IdentityComesFirstThenTheRoleThenTheGaps) {
    const SOC2Mesh mesh{{{"A", 0, 1, "x GAP: policy"}, {"B", 0, 3, "y GAP:\tlog "}}};
    const SOC2Mesh met{{{"A", 1.2, 1, ""}}};
    const SOC2Mesh ties{{{"A", 0, 2, "a"}, {"B", 0.5, 4, "b"}}};
    const RoleInputs reader{.readonly = true};
    const Row table[] = {
        {"nobody verified",
         {.verified = false, .tasks = RoleInputs{}, .mesh = &mesh},
         {"First: who is accountable?",
          "Establish the owner responsible for compliance before anything else. This grounds every "
          "later approval."},
         {"Verify your identity",
          "Confirm who you are with Touch ID. This is the first record on your compliance log — "
          "everything else builds on it.",
          Act{Act::Kind::kyc}}},
        {"read-only role",
         {.verified = true, .tasks = reader, .mesh = &mesh, .readiness = 0.4237, .metCount = 5},
         {"Verify readiness (read-only)",
          "Re-solve the org graph and confirm each criterion's met/gap state. No changes."},
         {"Review readiness",
          "You have read-only access. Readiness is 42.4% (5/13 met). Re-solve to verify."}},
        {"role done",
         {.verified = true, .tasks = RoleInputs{}, .mesh = &mesh},
         {"You're all set",
          "Every responsibility for your role is complete. Your completion: 100%."},
         {"All your responsibilities are complete",
          "Nothing left for your role. Your completion: 100%."}},
        task({"CC6-access", "Lock the laptop", "os"}, 0.25, "Check this device", "25.0%"),
        task({"CC5-policy", "Write the policy", "generate"}, 0, "Generate", "0.0%"),
        task({"CC1-ethics", "Read the code", "sign"}, 0, "Acknowledge", "0.0%"),
        gap(mesh, 0.0, "B", "log", "75.0%", "0.0%"),
        gap(ties, 1.0 / 3, "A", "a", "33.3%", "33.3%"),
        {"all met",
         {.verified = true, .mesh = &met, .readiness = 1},
         {"All criteria met — solve = 100%.",
          "Every Trust Services Criterion is met. Readiness solves to 100%."},
         {"All criteria met", "Nothing to close. Readiness = 100%."}},
    };
    for (const Row& row : table)
        expectCards(row);
}

} // namespace
} // namespace kelvo
