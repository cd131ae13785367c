#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(StartUp, InstallsTheSeriesLoopAndGoesOnWithoutAnyFile) {
    test::World world;
    const EngineVM& vm = world.start();
    EXPECT_EQ(*vm.equations, "STATE VARS: I·p, C·q\n"
                             "POWER: source = stored + dissipated (Tellegen)\n"
                             "evaluator: causal, deterministic — kernel owns numbers\n");
    EXPECT_EQ(*vm.stateLine, "t=0.000  I=0.0000  C=0.0000  risk=0.00000");
    EXPECT_THAT(*vm.status, ::testing::StartsWith("Could not load readiness graph: "));
    ASSERT_EQ(vm.citations->size(), 1U);
    const Citation& citation = vm.citations->front();
    EXPECT_EQ(citation.claim, "graph loaded");
    EXPECT_EQ(citation.source, "kernel SCAP (Karnopp causality)");
    EXPECT_EQ(citation.asOf, "2026-01-31T09:15:02Z");
    EXPECT_EQ(vm.seID(), "Se");
    EXPECT_EQ(*vm.drive, 1.0);
    EXPECT_EQ(vm.humanNBA->title, "Verify your identity");
    EXPECT_EQ(vm.osFacts->size(), 5U);
    EXPECT_THAT(world.eventKinds(), ElementsAre("graph_loaded", "mesh_load_failed",
                                                "rolemap_load_failed", "os_snapshot"));
    EXPECT_EQ(
        world.events()[0],
        (Json{{"kind", "graph_loaded"}, {"note", "graph loaded"}, {"nodes", 5}, {"states", 2}}));
    EXPECT_EQ(world.events()[3], (Json{{"kind", "os_snapshot"}, {"count", 5}, {"ok", 5}}));
}

TEST(StartUp, ReadsMeshRolesAndChatInThatOrder) {
    test::World world;
    world.writeMesh({{"CC1-a", 1, 3}, {"CC6-b", 0.5, 1}});
    world.writeRoles(
        {{{"role", "Owner"}, {"readonly", false}}, {{"role", "Auditor"}, {"readonly", true}}});
    world.write(
        world.project() / "chat-history.json",
        R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","role":"you","text":"hi","ts":"2026-01-30T00:00:00Z"}])");
    const EngineVM& vm = world.start();
    std::vector<std::string> claims;
    for (const Citation& each : *vm.citations)
        claims.push_back(each.claim);
    EXPECT_THAT(claims, ElementsAre("Loaded role map: 2 roles (Owner, Auditor)",
                                    "Replayed 0 sealed gap-closes → readiness 87.5%",
                                    "Loaded SOC 2 readiness graph: 2 criteria, readiness 87.5%",
                                    "graph loaded"));
    EXPECT_THAT(world.eventKinds(), ElementsAre("graph_loaded", "mesh_loaded", "mesh_replayed",
                                                "rolemap_loaded", "os_snapshot"));
    EXPECT_EQ(world.events()[1],
              (Json{{"kind", "mesh_loaded"}, {"criteria", 2}, {"readiness", 0.875}}));
    EXPECT_EQ(*vm.status, "loaded 5 nodes, 2 states");
    ASSERT_EQ(vm.chat->size(), 1U);
    EXPECT_EQ(vm.chat->front().text, "hi");
}

TEST(StartUp, AChatHistoryThatDoesNotDecodeIsNoHistory) {
    for (const char* text :
         {"", "{}", "[1]", "[]", R"([{"id":"x","role":"you","text":"","ts":""}])",
          R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","role":"you","ts":""}])"}) {
        test::World world;
        world.write(world.project() / "chat-history.json", text);
        EXPECT_TRUE(world.start().chat->empty()) << text;
    }
}

TEST(StartUp, WithoutItsDirectoriesTheEngineStillRuns) {
    test::World world;
    std::filesystem::remove_all(world.outputs());
    std::filesystem::remove_all(world.project());
    EngineVM& vm = world.start();
    vm.play();
    world.ticker.fire(3);
    EXPECT_NEAR(*vm.t, 0.03, 1e-12);
    EXPECT_FALSE(std::filesystem::exists(world.project())) << "no directory is created";
}

TEST(Load, ARejectedGraphLeavesTheRunningModelAlone) {
    const struct {
        ExtractedGraph graph;
        std::string status;
    } table[] = {
        {{}, "REJECTED: extracted graph has no nodes"},
        {{.nodes = {{"a", "X"}}, .bonds = {}},
         "REJECTED: unknown element kind 'X' — not a bond-graph element"},
        {{.nodes = {{"R1", "R"}}, .bonds = {}},
         "REJECTED: element R1 (R) requires a parameter value"},
        {{.nodes = {{"J", "j1"}}, .bonds = {}}, "REJECTED: junction J degree 0 (need ≥ 2)"},
        {{.nodes = {{"s", "Se"}, {"z", "Se"}, {"J", "j0"}}, .bonds = {{"s", "J"}, {"z", "J"}}},
         "REJECTED: junction J over-causal (>1 strong bond) — smartcard-6982 pattern"},
    };
    test::World world;
    EngineVM& vm = world.start();
    vm.play();
    world.ticker.fire(5);
    world.transcript();
    const std::string stateLine = *vm.stateLine;
    for (const auto& row : table) {
        vm.load(row.graph);
        EXPECT_THAT(world.transcript(), ElementsAre("status " + row.status));
        EXPECT_EQ(*vm.stateLine, stateLine);
    }
}

TEST(Load, InstallingRestartsTimeButNotTheLoop) {
    test::World world;
    EngineVM& vm = world.start();
    vm.throttle();
    vm.play();
    world.ticker.fire(5);
    world.transcript();
    vm.load({.nodes = {{"src", "Sf"}, {"drive", "Se"}, {"r", "R", 2.0}, {"q", "R", 1.0}},
             .bonds = {{"src", "r"}, {"drive", "q"}}});
    EXPECT_EQ(vm.seID(), "drive");
    EXPECT_EQ(*vm.t, 0);
    EXPECT_EQ(*vm.drive, 1.0);
    EXPECT_TRUE(*vm.running);
    EXPECT_EQ(*vm.stateLine, "t=0.000    risk=0.00000");
    EXPECT_THAT(
        world.transcript(),
        ElementsAre("drive 1.000", "status loaded 4 nodes, 0 states",
                    "cite graph loaded | kernel SCAP (Karnopp causality)",
                    R"(event {"kind":"graph_loaded","nodes":4,"note":"graph loaded","states":0})",
                    ::testing::StartsWith("cards ")));
    world.ticker.fire();
    EXPECT_EQ(*vm.rate, 1.0);
}

TEST(Voice, ABuiltGraphIsInstalledAndAnswered) {
    test::World world;
    EngineVM& vm = world.start();
    BondGraph graph;
    graph.nodes = {{"s", NodeKind::Se, {}}, {"r", NodeKind::R, 2.0}};
    graph.bonds = {{0, 1}};
    world.transcript();
    vm.siriBuilt(graph, "a heater");
    EXPECT_EQ(vm.citations->front().claim, "Siri → \"a heater\"");
    EXPECT_EQ(*vm.reply, "Set up a model for that. Tap Run to see how it behaves.");
    graph.bonds.clear();
    vm.siriBuilt(graph, "nothing");
    EXPECT_EQ(*vm.status, "REJECTED: element s needs 1 port(s), has 0");
    EXPECT_EQ(world.transcript().back(),
              "reply Set up a model for that. Tap Run to see how it behaves.");
}

} // namespace
} // namespace kelvo
