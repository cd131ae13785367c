#include "engine/NextBestAction.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kelvo {
namespace {

struct Row {
    const char* name;
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

TEST(NextBestAction, IdentityComesFirstThenTheRoleThenTheGaps) {
    const SOC2Mesh mesh{{{"A", 0, 1, "x GAP: policy"}, {"B", 0, 3, "y GAP:\tlog "}}};
    const SOC2Mesh met{{{"A", 1.2, 1, ""}}};
    const SOC2Mesh ties{{{"A", 0, 2, "a"}, {"B", 0.5, 4, "b"}}};
    const RoleMap::Control os{"CC6-access", "Lock the laptop", "os"};
    const RoleMap::Control generate{"CC5-policy", "Write the policy", "generate"};
    const RoleMap::Control attest{"CC1-ethics", "Read the code", "sign"};
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
         {.verified = true,
          .tasks = RoleInputs{.readonly = true},
          .mesh = &mesh,
          .readiness = 0.4237,
          .metCount = 5},
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
        {"device task",
         {.verified = true, .tasks = RoleInputs{false, 0.25, os}},
         {"Your next task: Lock the laptop",
          "This is your responsibility for CC6-access. Check this device to complete it. Your "
          "completion: 25.0%."},
         {"Lock the laptop",
          "Your responsibility for CC6-access. Check this device (Touch ID) to mark it done. Your "
          "completion: 25.0%."}},
        {"policy task",
         {.verified = true, .tasks = RoleInputs{false, 0, generate}},
         {"Your next task: Write the policy", "This is your responsibility for CC5-policy. "
                                              "Generate to complete it. Your completion: 0.0%."},
         {"Write the policy", "Your responsibility for CC5-policy. Generate (Touch ID) to mark it "
                              "done. Your completion: 0.0%."}},
        {"any other task",
         {.verified = true, .tasks = RoleInputs{false, 0, attest}},
         {"Your next task: Read the code", "This is your responsibility for CC1-ethics. "
                                           "Acknowledge to complete it. Your completion: 0.0%."},
         {"Read the code",
          "Your responsibility for CC1-ethics. Acknowledge (Touch ID) to mark it done. Your "
          "completion: 0.0%."}},
        {"largest impact",
         {.verified = true, .mesh = &mesh, .readiness = 0.0},
         {"Close B — log (+75.0%)",
          "Closing the highest-impact criterion lifts readiness from 0.0% toward met. Read from "
          "the graph.",
          Act{Act::Kind::closeGap, "B"}},
         {"Close B (verify)",
          "log — verify with Touch ID to mark this criterion met and record it on your compliance "
          "log.",
          Act{Act::Kind::closeGap, "B"}}},
        {"equal impact keeps file order",
         {.verified = true, .mesh = &ties, .readiness = 1.0 / 3},
         {"Close A — a (+33.3%)",
          "Closing the highest-impact criterion lifts readiness from 33.3% toward met. Read from "
          "the graph.",
          Act{Act::Kind::closeGap, "A"}},
         {"Close A (verify)",
          "a — verify with Touch ID to mark this criterion met and record it on your compliance "
          "log.",
          Act{Act::Kind::closeGap, "A"}}},
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
