#include "base/Files.h"
#include "base/Sha256.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

const std::string draft = "Vendor policy — v1";

class Policy : public EngineTest {
protected:
    void start() {
        world.startAsOwner(
            {{"A", 0, 3}, {"CC9-vendor", 0.4, 1, "We list vendors. GAP: no review"}});
    }
    void startWithDraft() {
        start();
        world->generatePolicy("CC9-vendor");
        world.eventLoop.drain();
        world.model.answer("\n" + draft + " \n");
        world.transcript();
    }
};

TEST_F(Policy, ADraftIsStagedForReview) {
    start();
    world->generatePolicy("CC9-vendor");
    world.eventLoop.drain();
    EXPECT_FALSE(world.model.requests.at(0).schema.has_value());
    EXPECT_EQ(world.model.requests[0].prompt,
              "Criterion: CC9-vendor\nDocument owner: Ada Byron\nOrganization's actual "
              "facts/architecture for this criterion:\nWe list vendors.\n\nWrite the formal "
              "document now.");
    world.model.answer("<think>hm</think>\n" + draft + " \n");
    EXPECT_TRUE(happened(
        world,
        {"status Writing policy for CC9-vendor on-device…",
         R"(event {"criterion":"CC9-vendor","kind":"policy_generate_start"})", "draft CC9-vendor",
         "status Drafted a policy for CC9-vendor from the graph. Review & approve to seal.",
         R"(cite Generated policy for CC9-vendor from graph variables (18 chars) — review pending | Apple Intelligence on-device · grounded in node evidence)",
         R"(event {"chars":18,"criterion":"CC9-vendor","kind":"policy_generated"})"}));
    EXPECT_EQ((*world->generatedDoc)->text, draft);
    world->discardGenerated();
    EXPECT_TRUE(happened(world, {"draft none"}));
}

TEST_F(Policy, UnknownCriteriaAndAnEmptyReplyAreRefused) {
    start();
    world->generatePolicy("cc9-vendor");
    EXPECT_TRUE(happened(world, {"status Unknown criterion cc9-vendor."}));
    world->generatePolicy("A");
    world.eventLoop.drain();
    world.model.answer(" \n ");
    EXPECT_EQ(*world->status, "On-device generation unavailable.");
    EXPECT_EQ(world.events().back(),
              (Json{{"kind", "policy_generate_unavailable"}, {"criterion", "A"}}));
    world.model.version = 25;
    world->generatePolicy("A");
    world.eventLoop.drain();
    EXPECT_EQ(world.model.requests.size(), 1U) << "an older model layer is not asked";
    EXPECT_FALSE(world->generatedDoc->has_value());
    World bare;
    bare.start().generatePolicy("A");
    EXPECT_EQ(*bare.engine().status, "Unknown criterion A.");
}

TEST_F(Policy, ApprovingWritesTheFileThenClosesAndSeals) {
    startWithDraft();
    const std::string sha = sha256Hex(draft);
    const std::string tip = world->chain().tip();
    const std::string artifact = "policy-CC9-vendor-" + sha.substr(0, 8) + ".txt";
    world->approveGenerated();
    const Totem& totem = world->totems->front();
    EXPECT_TRUE(happened(
        world,
        {"presence Approve generated policy for CC9-vendor — verify to seal", "file " + artifact,
         "mesh 1 met", "readiness 25.0%", "totems 2", "file control-1-#1...totem.json",
         "status Sealed generated policy for CC9-vendor: readiness 10.0%→25.0%.",
         "cite Sealed generated policy for CC9-vendor → " + artifact + " [" + sha.substr(0, 12) +
             "] — readiness 10.0%→25.0% | owner Ada Byron · generated from graph "
             "variables · presence HIPR:TouchID:present",
         R"(event {"block":"#1","criterion":"CC9-vendor","kind":"policy_generated_sealed","readiness_after":0.25})",
         "draft none", "cards *"}));
    EXPECT_EQ(*readFile(world.outputs() / artifact), draft);
    const std::string payload =
        R"({"attested_at":"2026-01-31T09:15:02Z","criterion":"CC9-vendor","evidence_name":"policy-CC9-vendor.txt",)"
        R"("evidence_root":")" +
        sha +
        R"(","evidence_summary":"generated from graph variables","gate_after":1,"gate_before":0.4,"generated":true,)"
        R"("owner":"Ada Byron","presence":"HIPR:TouchID:present","readiness_after":0.25,"readiness_before":0.1,)"
        R"("sourceDb":"control","source_variables":"We list vendors. GAP: no review","tip":")" +
        tip + R"("})";
    EXPECT_EQ(totem.payloadRoot, sha256Hex(payload)) << payload;
    EXPECT_EQ(totem.title, "Sealed generated policy CC9-vendor");
}

TEST_F(Policy, ADenialOrAnUnwritableFileLeavesNoTrace) {
    startWithDraft();
    world.authentication.answer = false;
    world->approveGenerated();
    EXPECT_TRUE(happened(
        world,
        {"presence Approve generated policy for CC9-vendor — verify to seal",
         "status Not verified — policy not sealed. HIPR:TouchID:DENIED",
         R"(event {"criterion":"CC9-vendor","kind":"policy_denied","record":"HIPR:TouchID:DENIED"})"}));
    world.authentication.answer = true;
    std::filesystem::remove_all(world.outputs());
    world->approveGenerated();
    EXPECT_THAT(*world->status, StartsWith("Could not write policy artifact: policy-CC9-vendor-"));
    EXPECT_EQ(world.events().back().at("kind"), "policy_write_failed");
    EXPECT_EQ(*world->readiness, 0.1);
    EXPECT_EQ(world->totems->size(), 1U);
    EXPECT_TRUE(world->generatedDoc->has_value());
}

TEST_F(Policy, AHostileCriterionIdLeadsNowhere) {
    world.startAsOwner({{"../../x", 0, 1}});
    world->generatePolicy("../../x");
    world.eventLoop.drain();
    world.model.answer(draft);
    world->approveGenerated();
    EXPECT_THAT(*world->status, ::testing::AllOf(StartsWith("Could not write policy artifact: "),
                                                 HasSubstr("cannot be a file name")));
    EXPECT_EQ(*world->readiness, 0.0);
}

TEST_F(Policy, AMetCriterionIsSealedAgain) {
    world.startAsOwner({{"A", 1, 1}});
    world->generatePolicy("A");
    world.eventLoop.drain();
    world.model.answer(draft);
    world->approveGenerated();
    EXPECT_EQ(world.record(1).at("gate_before"), 1);
}

} // namespace
} // namespace kelvo::test
