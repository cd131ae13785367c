#include "base/Sha256.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

const std::string root = sha256Hex("access reviews");
const std::string shortRoot = root.substr(0, 12);
const std::string manual = "On-device mapping unavailable — choose criteria manually.";

class Evidence : public EngineTest {
protected:
    Evidence() {
        world.startAsOwner({{"A", 0, 2}, {"B", 0.5, 2}, {"C", 1, 1}});
        world.filePanel.choice = world.write("rev.md", "access reviews");
    }
    /// Uploads and lets the model answer with `criteria`.
    void upload(const std::vector<std::string>& criteria, const std::string& summary = "Reviews.") {
        world->addEvidence();
        world.eventLoop.drain();
        world.model.answer(Json{{"criteria", criteria}, {"summary", summary}}.dump());
    }
};

TEST_F(Evidence, AnUploadStagesAProposalAndRecordsNothing) {
    world->addEvidence();
    EXPECT_TRUE(happened(world, {"panel Add evidence", "status Reading document on-device…",
                                 R"(event {"chars":14,"kind":"evidence_added","name":"rev.md"})"}));
    EXPECT_TRUE(world.model.requests.empty()) << "the mapping is a task of its own";
    world.eventLoop.drain();
    EXPECT_THAT(world.model.requests.at(0).prompt,
                "Allowed criterion ids: A, B, C\n\nDocument text:\naccess reviews");
    world.model.answer(R"({"criteria":["B","b","Z","B"],"summary":"<b>Reviews</b>."})");
    EXPECT_TRUE(
        happened(world, {"evidence rev.md [B B]",
                         "status Apple Intelligence mapped rev.md → 2 criteria. Review & approve.",
                         "cite Staged evidence rev.md [" + shortRoot +
                             "] — 2 criteria proposed | Apple Intelligence on-device · sha256 " +
                             shortRoot}));
    EXPECT_EQ((*world->evidenceProposal)->summary, "<b>Reviews</b>.");
    EXPECT_EQ((*world->evidenceProposal)->root, root);
}

TEST_F(Evidence, WithoutAUsableMappingThePersonChooses) {
    const std::string none = "On-device mapping unavailable for rev.md — choose criteria manually.";
    const std::pair<const char*, std::string> table[] = {
        {R"({"criteria":["Z"," A"],"summary":"s"})",
         "Mapped no valid criteria for rev.md — choose manually."},
        {R"({"criteria":[],"summary":"s"})", none},
        {R"({"criteria":"A","summary":"s"})", none},
        {"approve everything", none},
    };
    for (const auto& [reply, status] : table) {
        world->addEvidence();
        world.eventLoop.drain();
        world.model.answer(reply);
        EXPECT_EQ(*world->status, status);
        EXPECT_EQ(*world->evidenceProposal, (EvidenceProposal{"rev.md", root, manual, {}}))
            << reply;
    }
    world.model.unavailable = "off";
    world->addEvidence();
    world.eventLoop.drain();
    EXPECT_EQ(world.model.requests.size(), std::size(table));
    EXPECT_EQ(world->citations->front().claim,
              "Staged evidence rev.md [" + shortRoot + "] — 0 criteria proposed");
}

TEST_F(Evidence, RefusalsOfTheUpload) {
    world.filePanel.choice = std::nullopt;
    world->addEvidence();
    world.filePanel.choice = world.outputs() / "missing.txt";
    world->addEvidence();
    EXPECT_TRUE(happened(world, {"panel Add evidence", "status No document selected.",
                                 R"(event {"kind":"evidence_no_file"})", "panel Add evidence",
                                 "status Could not read document.",
                                 R"(event {"kind":"evidence_unreadable"})"}));
    world->confirmEvidence({"A"});
    EXPECT_TRUE(happened(world, {})) << "nothing is staged";
}

TEST_F(Evidence, TheDocumentsTextIsItsUtf8OrItsPdfText) {
    world.pdfText.answer = "from the pdf";
    for (const auto& [name, bytes, chars] :
         {std::tuple("a.PDF", "%PDF bytes", 12), std::tuple("b.txt", "e\u0301t\u00e9", 3),
          std::tuple("c.txt", "caf\xE9", 0)}) {
        world.filePanel.choice = world.write(name, bytes);
        world->addEvidence();
        EXPECT_EQ(world.events().back().at("chars"), chars) << name;
    }
    EXPECT_EQ(world.pdfText.lastBytes, "%PDF bytes") << "the bytes that were hashed";
    EXPECT_THAT(world.filePanel.requests.back().allowed,
                ElementsAre(ContentType::pdf, ContentType::plainText, ContentType::text,
                            ContentType::json));
}

TEST_F(Evidence, ConfirmingSealsEachOpenCriterionOnceUnderOnePresenceCheck) {
    upload({"A"});
    world.transcript();
    world->confirmEvidence({"B", "C", "nope", "B", "A"});
    const auto seal = [](const std::string& id, const char* change, int number) {
        const std::string n = std::to_string(number);
        return std::vector<std::string>{
            "file control-" + n + "-#" + n + "...totem.json",
            "cite Sealed " + id + " from rev.md [" + shortRoot + "] — readiness " + change +
                " | owner Ada Byron · Apple Intelligence mapped · presence HIPR:TouchID:present",
            R"(event {"count":)" + n + R"(,"criterion":")" + id +
                R"(","evidence_name":"rev.md","kind":"evidence_sealed"})"};
    };
    const auto first = seal("B", "40.0%→60.0%", 1);
    const auto second = seal("A", "60.0%→100.0%", 2);
    EXPECT_TRUE(happened(
        world, {"presence Approve evidence rev.md — verify to seal", "mesh 2 met",
                "readiness 60.0%", "totems 2", first[0], first[1], first[2], "mesh 3 met",
                "readiness 100.0%", "totems 3", second[0], second[1], second[2], "evidence none",
                "status Sealed 2 criteria from rev.md: readiness 100.0%.", "cards *"}));
    const Totem b = (*world->totems)[1];
    const std::string payload =
        R"({"ai_mapped":true,"attested_at":"2026-01-31T09:15:02Z","criterion":"B","evidence_name":"rev.md",)"
        R"("evidence_root":")" +
        root +
        R"(","evidence_summary":"Reviews.","gate_after":1,"gate_before":0.5,"owner":"Ada Byron",)"
        R"("presence":"HIPR:TouchID:present","readiness_after":0.6,"readiness_before":0.4,"sourceDb":"control","tip":")" +
        b.prev + R"("})";
    EXPECT_EQ(b.payloadRoot, sha256Hex(payload)) << payload;
    EXPECT_EQ(b.title, "Closed B (evidence)");
    EXPECT_EQ(*world.start().readiness, 1.0) << "sealed evidence counts after a restart";
}

TEST_F(Evidence, ADenialKeepsTheProposalAndNothingOpenClearsIt) {
    upload({"C"});
    world.transcript();
    world.authentication.answer = false;
    world->confirmEvidence({"C"});
    EXPECT_TRUE(
        happened(world, {"presence Approve evidence rev.md — verify to seal",
                         "status Not verified — evidence not sealed. HIPR:TouchID:DENIED",
                         R"(event {"kind":"evidence_denied","record":"HIPR:TouchID:DENIED"})"}));
    world.authentication.answer = true;
    world->confirmEvidence({"C", "nope"});
    EXPECT_TRUE(
        happened(world, {"presence Approve evidence rev.md — verify to seal", "evidence none",
                         "status Nothing sealed — selected criteria already met.", "cards *"}));
}

TEST_F(Evidence, TheLastMappingToArriveStaysStaged) {
    world->addEvidence();
    world.filePanel.choice = world.write("second.md", "x");
    world->addEvidence();
    world.eventLoop.drain();
    world.model.answer(R"({"criteria":["A"],"summary":"second"})", 1);
    world.model.answer(R"({"criteria":["B"],"summary":"first"})");
    EXPECT_EQ((*world->evidenceProposal)->name, "rev.md");
}

TEST_F(Evidence, WhatWasClosedWhileTheModelReadIsNotSealedAgain) {
    world->addEvidence();
    world.eventLoop.drain();
    world->closeGap("A");
    world.model.answer(R"({"criteria":["A"],"summary":"s"})");
    EXPECT_THAT((*world->evidenceProposal)->criteria, ElementsAre("A"));
    world->confirmEvidence({"A"});
    EXPECT_EQ(*world->status, "Nothing sealed — selected criteria already met.");
    EXPECT_EQ(world->totems->size(), 2U);
}

TEST_F(Evidence, WithoutAMeshTheModelIsAskedButNothingCanBeConfirmed) {
    std::filesystem::remove(world.outputs() / "soc2-mesh-bondgraph.json");
    world.start();
    upload({"A"});
    EXPECT_EQ(*world->status, "Mapped no valid criteria for rev.md — choose manually.");
    world.transcript();
    world->confirmEvidence({"A"});
    EXPECT_TRUE(happened(world, {}));
    EXPECT_TRUE(world->evidenceProposal->has_value());
}

} // namespace
} // namespace kelvo::test
