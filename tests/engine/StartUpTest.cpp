#include "EngineTest.h"

namespace kelvo::test {
namespace {

class StartUp : public EngineTest {};

TEST_F(StartUp, InstallsTheSeriesLoopAndGoesOnWithoutAnyFile) {
    world.start();
    EXPECT_EQ(*world->equations, "STATE VARS: I·p, C·q\n"
                                 "POWER: source = stored + dissipated (Tellegen)\n"
                                 "evaluator: causal, deterministic — kernel owns numbers\n");
    EXPECT_EQ(*world->stateLine, "t=0.000  I=0.0000  C=0.0000  risk=0.00000");
    EXPECT_THAT(*world->status, StartsWith("Could not load readiness graph: "));
    ASSERT_EQ(world->citations->size(), 1U);
    const Citation& citation = world->citations->front();
    EXPECT_EQ(citation.claim, "graph loaded");
    EXPECT_EQ(citation.source, "kernel SCAP (Karnopp causality)");
    EXPECT_EQ(citation.asOf, "2026-01-31T09:15:02Z");
    EXPECT_EQ(world->seID(), "Se");
    EXPECT_EQ(*world->drive, 1.0);
    EXPECT_EQ(world->humanNBA->title, "Verify your identity");
    EXPECT_EQ(world->osFacts->size(), 5U);
    EXPECT_THAT(world.eventKinds(), ElementsAre("graph_loaded", "mesh_load_failed",
                                                "rolemap_load_failed", "os_snapshot"));
    EXPECT_EQ(
        world.events()[0],
        (Json{{"kind", "graph_loaded"}, {"note", "graph loaded"}, {"nodes", 5}, {"states", 2}}));
    EXPECT_EQ(world.events()[3], (Json{{"kind", "os_snapshot"}, {"count", 5}, {"ok", 5}}));
}

TEST_F(StartUp, ReadsMeshRolesAndChatInThatOrder) {
    world.writeMesh({{"CC1-a", 1, 3}, {"CC6-b", 0.5, 1}});
    world.writeRoles(
        {{{"role", "Owner"}, {"readonly", false}}, {{"role", "Auditor"}, {"readonly", true}}});
    world.write(
        world.project() / "chat-history.json",
        R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","role":"you","text":"hi","ts":"2026-01-30T00:00:00Z"}])");
    world.start();
    std::vector<std::string> claims;
    for (const Citation& each : *world->citations)
        claims.push_back(each.claim);
    EXPECT_THAT(claims, ElementsAre("Loaded role map: 2 roles (Owner, Auditor)",
                                    "Replayed 0 sealed gap-closes → readiness 87.5%",
                                    "Loaded SOC 2 readiness graph: 2 criteria, readiness 87.5%",
                                    "graph loaded"));
    EXPECT_THAT(world.eventKinds(), ElementsAre("graph_loaded", "mesh_loaded", "mesh_replayed",
                                                "rolemap_loaded", "os_snapshot"));
    EXPECT_EQ(world.events()[1],
              (Json{{"kind", "mesh_loaded"}, {"criteria", 2}, {"readiness", 0.875}}));
    EXPECT_EQ(*world->status, "loaded 5 nodes, 2 states");
    ASSERT_EQ(world->chat->size(), 1U);
    EXPECT_EQ(world->chat->front().text, "hi");
}

TEST_F(StartUp, AChatHistoryThatDoesNotDecodeIsNoHistory) {
    for (const char* text :
         {"", "{}", "[1]", "[]", R"([{"id":"x","role":"you","text":"","ts":""}])",
          R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","role":"you","ts":""}])"}) {
        world.write(world.project() / "chat-history.json", text);
        EXPECT_TRUE(world.start().chat->empty()) << text;
    }
}

TEST_F(StartUp, WithoutItsDirectoriesTheEngineStillRuns) {
    std::filesystem::remove_all(world.outputs());
    std::filesystem::remove_all(world.project());
    world.start();
    world->play();
    world.ticker.fire(3);
    EXPECT_NEAR(*world->t, 0.03, 1e-12);
    EXPECT_FALSE(std::filesystem::exists(world.project())) << "no directory is created";
}

class Load : public RunningEngineTest {};

TEST_F(Load, ARejectedGraphLeavesTheRunningModelAlone) {
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
    world.start();
    world->play();
    world.ticker.fire(5);
    world.transcript();
    const std::string stateLine = *world->stateLine;
    for (const auto& row : table) {
        world->load(row.graph);
        EXPECT_TRUE(happened(world, {"status " + row.status}));
        EXPECT_EQ(*world->stateLine, stateLine);
    }
}

TEST_F(Load, InstallingRestartsTimeButNotTheLoop) {
    world->throttle();
    world->play();
    world.ticker.fire(5);
    world.transcript();
    world->load({.nodes = {{"src", "Sf"}, {"drive", "Se"}, {"r", "R", 2.0}, {"q", "R", 1.0}},
                 .bonds = {{"src", "r"}, {"drive", "q"}}});
    EXPECT_EQ(world->seID(), "drive");
    EXPECT_EQ(*world->t, 0);
    EXPECT_EQ(*world->drive, 1.0);
    EXPECT_TRUE(*world->running);
    EXPECT_EQ(*world->stateLine, "t=0.000    risk=0.00000");
    EXPECT_TRUE(happened(
        world, {"drive 1.000", "status loaded 4 nodes, 0 states",
                "cite graph loaded | kernel SCAP (Karnopp causality)",
                R"(event {"kind":"graph_loaded","nodes":4,"note":"graph loaded","states":0})",
                "cards *"}));
    world.ticker.fire();
    EXPECT_EQ(*world->rate, 1.0);
}

class Voice : public RunningEngineTest {};

TEST_F(Voice, ABuiltGraphIsInstalledAndAnswered) {
    BondGraph graph;
    graph.nodes = {{"s", NodeKind::Se, {}}, {"r", NodeKind::R, 2.0}};
    graph.bonds = {{0, 1}};
    world.transcript();
    world->siriBuilt(graph, "a heater");
    EXPECT_EQ(world->citations->front().claim, "Siri → \"a heater\"");
    EXPECT_EQ(*world->reply, "Set up a model for that. Tap Run to see how it behaves.");
    graph.bonds.clear();
    world->siriBuilt(graph, "nothing");
    EXPECT_EQ(*world->status, "REJECTED: element s needs 1 port(s), has 0");
    EXPECT_EQ(world.transcript().back(),
              "reply Set up a model for that. Tap Run to see how it behaves.");
}

} // namespace
} // namespace kelvo::test
