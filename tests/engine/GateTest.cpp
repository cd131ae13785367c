// The gate before every operation: nothing runs beside a question to the person, and what was asked
// for meanwhile runs afterwards.

#include "base/Files.h"
#include "support/WorldStory.h"

#include <gmock/gmock.h>

#include <regex>

namespace kelvo::test {
namespace {

struct Gated {
    const char* operation; ///< of the engine
    const char* line;      ///< asks for it, as in a story; empty where no word does
    const char* sign;      ///< begins a line of the transcript once it has run
    void (*call)(EngineVM&) = nullptr;
};

const std::vector<Gated> table = {
    {"load",
     R"(load {"nodes":[{"id":"Se","kind":"Se"},{"id":"R","kind":"R","param":1}],"bonds":[{"from":"Se","to":"R"}]})",
     "status loaded 2 nodes"},
    {"siriBuilt", "", "reply Set up a model",
     [](EngineVM& engine) { engine.siriBuilt(engine.space()->graph(), "a loop"); }},
    {"siriSay", "say word", "reply word"},
    {"play", "play", "running true"},
    {"pause", "pause", "pending collapse"},
    {"throttle", "throttle", "drive 0.500"},
    {"bondCollapse", "bond", "pending none"},
    {"readAgain", "", "mesh 0 met", [](EngineVM& engine) { engine.readAgain(); }},
    {"closeGap", "closeGap B", "status Closed B"},
    {"run", "run kyc", "principal Ada Byron"},
    {"verifyKYC", "verify Clerk", "role Clerk"},
    {"leaveIdentity", "", "principal none", [](EngineVM& engine) { engine.leaveIdentity(); }},
    {"closeRoleControl", R"(close ["B","tidy","attest"])", "status Acknowledged: tidy"},
    {"attestRoleControl", R"(attest ["B","tidy","attest"])", "status Acknowledged: tidy"},
    {"snapshotOS", "snapshot", "facts 5"},
    {"closeRoleControlViaOS", R"(secure ["B","lock","os"])", "status Device secured"},
    {"addEvidence", "addEvidence", "panel Add evidence"},
    {"confirmEvidence", "confirm B C", "status Sealed 2"},
    {"generatePolicy", "generate C", "status Writing policy for C"},
    {"approveGenerated", "approve", "status Sealed generated policy"},
    {"discardGenerated", "discard", "draft none"},
    {"askAssistant", "ask why", "chat you: why"},
    {"runProposed", "runProposed", "running true"},
    {"adopt", "adopt CC1", "status System: 1 families"},
    {"adoptRecords", "", "status ",
     [](EngineVM& engine) { engine.adoptRecords({"stray.totem.json"}); }},
    {"restoreRecord", "", "status Could not restore",
     [](EngineVM& engine) { engine.restoreRecord("none.totem.json"); }},
    {"supplyEvidence", "", "panel Supply",
     [](EngineVM& engine) {
         engine.supplyEvidence(engine.proof->get()->decisions.front().evidenceRoot);
     }},
    {"makeCheckpoint", "", "status Checkpoint", [](EngineVM& engine) { engine.makeCheckpoint(); }},
    {"setPeriod", "period 2026-01-01 2026-12-31", "status Sealed: Audit period"},
    {"recordEvidenceDates", "dates a 2026-01-02 2026-01-03", "status Sealed: Evidence dates"},
    {"recordNote", "note exception B - late", "status Sealed: Exception"},
    {"recordDocument", "document 0", "panel Add"},
    {"handOver", "handOver out", "status Nothing was handed over"},
};

/// An engine with something for every operation to do: a staged measurement, a mapped document, a
/// draft, a proposed step, a proof.
void prepare(WorldStory& story, bool withMesh) {
    for (const char* line :
         {R"(mesh [["A"],["B"],["C"],["D"]])", "write review.txt is reviewed", "start", "begin",
          "owner", "choose review.txt", "closeGap D", "addEvidence", "drain",
          R"(answer {"criteria":["B"],"summary":"s"})", "generate B", "drain", R"(answer text)",
          "ask what", "drain", R"(answer {"answer":"Go.","action":"play"})", "pause"}) {
        story.act(line);
    }
    if (withMesh) return;
    story.act("remove outputs/soc2-mesh-bondgraph.json");
    story.act("start");
    story.act(R"(mesh [["A"]])");
}

class Gate : public testing::TestWithParam<Gated> {};

TEST_P(Gate, HoldsWhatIsAskedForWhileAPromptIsOpen) {
    const Gated& gated = GetParam();
    WorldStory story;
    World& world = story.world;
    const bool reads = std::string_view(gated.operation) == "readAgain";
    prepare(story, !reads);
    std::vector<std::string> beside;
    std::size_t asked = 0;
    world.authentication.whileAsking = [&] {
        if (++asked > 1) return;
        world.transcript();
        gated.call != nullptr ? gated.call(world.engine()) : story.act(gated.line);
        beside = world.transcript();
    };
    story.act(reads ? "owner" : "closeGap A");
    ASSERT_GE(asked, 1U);
    world.eventLoop.drain();
    EXPECT_THAT(beside, testing::IsEmpty()) << "it ran beside the question";
    EXPECT_THAT(world.transcript(), testing::Contains(testing::StartsWith(gated.sign)));
}

INSTANTIATE_TEST_SUITE_P(Operations, Gate, testing::ValuesIn(table),
                         [](const auto& each) { return std::string(each.param.operation); });

/// The names of all matches in the public part of the engine's header.
std::vector<std::string> declared(const std::string& pattern) {
    const std::string header = readFile(KELVO_SOURCE "/engine/EngineVM.h").value();
    const std::string text = header.substr(0, header.find("\nprivate:\n"));
    const std::regex form(pattern);
    std::vector<std::string> names;
    for (std::sregex_iterator each(text.begin(), text.end(), form), end; each != end; ++each)
        names.push_back((*each)[1]);
    return names;
}

TEST(GateList, HasEveryOperationAndWhatIsNoneIsSaid) {
    std::vector<std::string> gated;
    for (const Gated& each : table)
        gated.emplace_back(each.operation);
    EXPECT_THAT(declared(R"(\n    Operation<[^;]*>\s+(\w+)\{\s*\*this)"),
                testing::UnorderedElementsAreArray(gated));
    // What else changes anything asks the person nothing and touches no mesh, chain or identity.
    EXPECT_THAT(declared(R"(\n    (?:static )?[\w:<>&]+ (\w+)\([^;{]*\);)"),
                testing::UnorderedElementsAre("below", "provideShared", "shared", "proposeNBA",
                                              "cancelModelWork", "beginProof", "compareProof",
                                              "keepAgain", "verifyEvidence", "stopPackage",
                                              "resumption"));
}

} // namespace
} // namespace kelvo::test
