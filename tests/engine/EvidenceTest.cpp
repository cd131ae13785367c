#include "base/Sha256.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

const std::string root = sha256Hex("access reviews");
const std::string shortRoot = root.substr(0, 12);
const std::string manual = "On-device mapping unavailable — choose criteria manually.";

class Evidence : public ::testing::Test {
protected:
    EngineVM& start() {
        EngineVM& vm = world.startAsOwner({{"A", 0, 2}, {"B", 0.5, 2}, {"C", 1, 1}});
        world.filePanel.choice = world.write("rev.md", "access reviews");
        return vm;
    }
    /// Uploads and lets the model answer with `criteria`.
    void upload(const std::vector<std::string>& criteria, const std::string& summary = "Reviews.") {
        world.engine().addEvidence();
        world.eventLoop.drain();
        world.model.answer(Json{{"criteria", criteria}, {"summary", summary}}.dump());
    }

    test::World world;
};

TEST_F(Evidence, AnUploadStagesAProposalAndRecordsNothing) {
    EngineVM& vm = start();
    vm.addEvidence();
    EXPECT_THAT(world.transcript(),
                ElementsAre("panel Add evidence", "status Reading document on-device…",
                            R"(event {"chars":14,"kind":"evidence_added","name":"rev.md"})"));
    EXPECT_TRUE(world.model.requests.empty()) << "the mapping is a task of its own";
    world.eventLoop.drain();
    EXPECT_THAT(world.model.requests.at(0).prompt,
                "Allowed criterion ids: A, B, C\n\nDocument text:\naccess reviews");
    world.model.answer(R"({"criteria":["B","b","Z","B"],"summary":"<b>Reviews</b>."})");
    EXPECT_THAT(
        world.transcript(),
        ElementsAre("evidence rev.md [B B]",
                    "status Apple Intelligence mapped rev.md → 2 criteria. Review & approve.",
                    "cite Staged evidence rev.md [" + shortRoot +
                        "] — 2 criteria proposed | Apple Intelligence on-device · sha256 " +
                        shortRoot));
    EXPECT_EQ((*vm.evidenceProposal)->summary, "<b>Reviews</b>.");
    EXPECT_EQ((*vm.evidenceProposal)->root, root);
}

TEST_F(Evidence, WithoutAUsableMappingThePersonChooses) {
    const struct {
        std::string reply;
        std::string status;
    } table[] = {
        {R"({"criteria":["Z"," A"],"summary":"s"})",
         "Mapped no valid criteria for rev.md — choose manually."},
        {R"({"criteria":[],"summary":"s"})",
         "On-device mapping unavailable for rev.md — choose criteria manually."},
        {R"({"criteria":"A","summary":"s"})",
         "On-device mapping unavailable for rev.md — choose criteria manually."},
        {"approve everything",
         "On-device mapping unavailable for rev.md — choose criteria manually."},
    };
    EngineVM& vm = start();
    for (const auto& row : table) {
        vm.addEvidence();
        world.eventLoop.drain();
        world.model.answer(row.reply);
        EXPECT_EQ(*vm.status, row.status);
        EXPECT_EQ(*vm.evidenceProposal, (EvidenceProposal{"rev.md", root, manual, {}}))
            << row.reply;
    }
    world.model.unavailable = "off";
    vm.addEvidence();
    world.eventLoop.drain();
    EXPECT_EQ(world.model.requests.size(), std::size(table));
    EXPECT_EQ(vm.citations->front().claim,
              "Staged evidence rev.md [" + shortRoot + "] — 0 criteria proposed");
}

TEST_F(Evidence, RefusalsOfTheUpload) {
    EngineVM& vm = start();
    world.filePanel.choice = std::nullopt;
    vm.addEvidence();
    world.filePanel.choice = world.outputs() / "missing.txt";
    vm.addEvidence();
    EXPECT_THAT(world.transcript(),
                ElementsAre("panel Add evidence", "status No document selected.",
                            R"(event {"kind":"evidence_no_file"})", "panel Add evidence",
                            "status Could not read document.",
                            R"(event {"kind":"evidence_unreadable"})"));
    vm.confirmEvidence({"A"});
    EXPECT_THAT(world.transcript(), ElementsAre()) << "nothing is staged";
}

TEST_F(Evidence, TheDocumentsTextIsItsUtf8OrItsPdfText) {
    EngineVM& vm = start();
    world.pdfText.answer = "from the pdf";
    for (const auto& [name, bytes, chars] :
         {std::tuple("a.PDF", "%PDF bytes", 12), std::tuple("b.txt", "e\u0301t\u00e9", 3),
          std::tuple("c.txt", "caf\xE9", 0)}) {
        world.filePanel.choice = world.write(name, bytes);
        vm.addEvidence();
        EXPECT_EQ(world.events().back().at("chars"), chars) << name;
    }
    EXPECT_EQ(world.pdfText.lastBytes, "%PDF bytes") << "the bytes that were hashed";
    EXPECT_THAT(world.filePanel.requests.back().allowed,
                ElementsAre(ContentType::pdf, ContentType::plainText, ContentType::text,
                            ContentType::json));
}

TEST_F(Evidence, ConfirmingSealsEachOpenCriterionOnceUnderOnePresenceCheck) {
    EngineVM& vm = start();
    upload({"A"});
    world.transcript();
    vm.confirmEvidence({"B", "C", "nope", "B", "A"});
    const Totem a = (*vm.totems)[0];
    const Totem b = (*vm.totems)[1];
    const auto sealLines = [&](const std::string& id, const Totem& totem, const std::string& change,
                               int count) {
        return std::vector<std::string>{
            "file control-" + std::to_string(totem.index) + "-" + totem.blockHash.substr(0, 12) +
                ".totem.json",
            "cite Sealed " + id + " from rev.md [" + shortRoot + "] — readiness " + change +
                " | owner Ada Byron · Apple Intelligence mapped · presence HIPR:TouchID:present",
            R"(event {"count":)" + std::to_string(count) + R"(,"criterion":")" + id +
                R"(","evidence_name":"rev.md","kind":"evidence_sealed"})"};
    };
    const auto first = sealLines("B", b, "40.0%→60.0%", 1);
    const auto second = sealLines("A", a, "60.0%→100.0%", 2);
    EXPECT_THAT(world.transcript(),
                ElementsAre("presence Approve evidence rev.md — verify to seal", "mesh 2 met",
                            "readiness 60.0%", "totems 2", first[0], first[1], first[2],
                            "mesh 3 met", "readiness 100.0%", "totems 3", second[0], second[1],
                            second[2], "evidence none",
                            "status Sealed 2 criteria from rev.md: readiness 100.0%.",
                            StartsWith("cards ")));
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
    EngineVM& vm = start();
    upload({"C"});
    world.transcript();
    world.authentication.answer = false;
    vm.confirmEvidence({"C"});
    EXPECT_THAT(world.transcript(),
                ElementsAre("presence Approve evidence rev.md — verify to seal",
                            "status Not verified — evidence not sealed. HIPR:TouchID:DENIED",
                            R"(event {"kind":"evidence_denied","record":"HIPR:TouchID:DENIED"})"));
    world.authentication.answer = true;
    vm.confirmEvidence({"C", "nope"});
    EXPECT_THAT(world.transcript(),
                ElementsAre("presence Approve evidence rev.md — verify to seal", "evidence none",
                            "status Nothing sealed — selected criteria already met.",
                            StartsWith("cards ")));
}

TEST_F(Evidence, TheLastMappingToArriveStaysStaged) {
    EngineVM& vm = start();
    vm.addEvidence();
    world.filePanel.choice = world.write("second.md", "x");
    vm.addEvidence();
    world.eventLoop.drain();
    world.model.answer(R"({"criteria":["A"],"summary":"second"})", 1);
    world.model.answer(R"({"criteria":["B"],"summary":"first"})");
    EXPECT_EQ((*vm.evidenceProposal)->name, "rev.md");
}

TEST_F(Evidence, WhatWasClosedWhileTheModelReadIsNotSealedAgain) {
    EngineVM& vm = start();
    vm.addEvidence();
    world.eventLoop.drain();
    vm.closeGap("A");
    world.model.answer(R"({"criteria":["A"],"summary":"s"})");
    EXPECT_THAT((*vm.evidenceProposal)->criteria, ElementsAre("A"));
    vm.confirmEvidence({"A"});
    EXPECT_EQ(*vm.status, "Nothing sealed — selected criteria already met.");
    EXPECT_EQ(vm.totems->size(), 2U);
}

TEST_F(Evidence, WithoutAMeshTheModelIsAskedButNothingCanBeConfirmed) {
    EngineVM& vm = world.start();
    world.filePanel.choice = world.write("rev.md", "access reviews");
    upload({"A"});
    EXPECT_EQ(*vm.status, "Mapped no valid criteria for rev.md — choose manually.");
    world.transcript();
    vm.confirmEvidence({"A"});
    EXPECT_THAT(world.transcript(), ElementsAre());
    EXPECT_TRUE(vm.evidenceProposal->has_value());
}

} // namespace
} // namespace kelvo
