#include "intelligence/Assistant.h"
#include "intelligence/EvidenceMapper.h"
#include "intelligence/GenerableRecords.h"
#include "intelligence/PolicyGen.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

namespace kelvo::test {
namespace {

/// What the three compliance calls have in common: how to make one, and whether it gave a result.
struct Call {
    const char* name;
    const char* goodReply;
    std::function<void(LanguageModel&, std::function<void(bool)>)> make;
};

const std::vector<Call>& complianceCalls() {
    static const std::vector<Call> calls = {
        {"mapEvidence", R"({"criteria":[],"summary":""})",
         [](LanguageModel& model, const std::function<void(bool)>& done) {
             EvidenceMapper::mapEvidence(model, "", {}, [done](auto r) { done(r.has_value()); });
         }},
        {"PolicyGen", "text",
         [](LanguageModel& model, const std::function<void(bool)>& done) {
             PolicyGen::generate(model, "", "", "", [done](auto r) { done(r.has_value()); });
         }},
        {"Assistant", R"({"answer":"","action":""})",
         [](LanguageModel& model, const std::function<void(bool)>& done) {
             Assistant::ask(model, "", "", [done](auto r) { done(r.has_value()); });
         }},
    };
    return calls;
}

TEST(ComplianceCalls, AskNothingWhereTheModelIsTooOldOrUnavailable) {
    for (const Call& call : complianceCalls()) {
        for (const bool old : {true, false}) {
            FakeModel model;
            if (old) {
                model.version = 25;
            } else {
                model.unavailable = "modelNotReady";
            }
            std::vector<bool> results;
            call.make(model, [&](bool result) { results.push_back(result); });
            EXPECT_EQ(results, std::vector<bool>{false}) << call.name;
            EXPECT_TRUE(model.requests.empty()) << call.name;
        }
    }
}

TEST(ComplianceCalls, GiveAResultForAGoodReplyAndNoneForAFailure) {
    for (const Call& call : complianceCalls()) {
        FakeModel model;
        std::vector<bool> results;
        call.make(model, [&](bool result) { results.push_back(result); });
        EXPECT_TRUE(results.empty()) << call.name;
        model.answer(call.goodReply);
        call.make(model, [&](bool result) { results.push_back(result); });
        model.fail("refused");
        EXPECT_EQ(results, (std::vector<bool>{true, false})) << call.name;
        EXPECT_EQ(model.requests.size(), 2u) << "a session each";
    }
}

TEST(EvidenceMapper, AsksWithTheAllowedIdsAndTheDocument) {
    FakeModel model;
    std::optional<EvidenceMapping> result;
    EvidenceMapper::mapEvidence(model, "Access is reviewed.\n", {"CC6-access", "CC9-vendor-risk"},
                                [&](auto mapping) { result = std::move(mapping); });
    const ModelRequest& request = model.requests.at(0);
    EXPECT_EQ(request.instructions,
              "You are given the text of a compliance document and a list of SOC 2 criterion ids.\n"
              "Return ONLY the ids this document provides evidence for, and a one-sentence "
              "summary.\n"
              "Do not invent ids; choose only from the provided list: CC6-access, "
              "CC9-vendor-risk.");
    EXPECT_EQ(request.prompt, "Allowed criterion ids: CC6-access, CC9-vendor-risk\n\n"
                              "Document text:\nAccess is reviewed.\n");
    EXPECT_EQ(request.recordName, "EvidenceMapping");
    EXPECT_EQ(request.schema, jsonSchema<EvidenceMapping>());
    // Not filtered here, and kept in the model's order.
    model.answer(R"({"criteria":["made-up","CC6-access","CC6-access"],"summary":" S "})");
    EXPECT_EQ(result, (EvidenceMapping{{"made-up", "CC6-access", "CC6-access"}, " S "}));
}

TEST(EvidenceMapper, AsksWithoutAnyIds) {
    FakeModel model;
    EvidenceMapper::mapEvidence(model, "", {}, [](const auto&) {});
    EXPECT_TRUE(model.requests.at(0).instructions.ends_with("from the provided list: ."));
    EXPECT_EQ(model.requests.at(0).prompt, "Allowed criterion ids: \n\nDocument text:\n");
}

TEST(EvidenceMapper, SendsSixThousandCharactersAndNoMore) {
    const auto sent = [](const std::string& text) {
        FakeModel model;
        EvidenceMapper::mapEvidence(model, text, {}, [](const auto&) {});
        const std::string& prompt = model.requests.at(0).prompt;
        return prompt.substr(prompt.find("text:\n") + 6);
    };
    const std::string accented = "e\xCC\x81"; // one character of two code points
    std::string text;
    std::string expected;
    for (int i = 0; i < 6001; ++i) {
        text += accented;
        if (i < 6000) expected += accented;
    }
    EXPECT_EQ(sent(text), expected);
    EXPECT_EQ(sent(expected), expected);
}

TEST(PolicyGen, AsksWithTheFactsBeforeTheGap) {
    FakeModel model;
    std::optional<std::string> result;
    PolicyGen::generate(model, "CC9-vendor-risk", " Two vendors.\nBoth reviewed. GAP: no list",
                        "Ada Byron", [&](auto text) { result = std::move(text); });
    const ModelRequest& request = model.requests.at(0);
    EXPECT_EQ(request.instructions,
              "You are a SOC 2 compliance writer. Given a criterion id and the organization's "
              "ACTUAL facts and\n"
              "architecture for it, WRITE a concise formal policy/register/runbook document "
              "grounded ONLY in\n"
              "those facts. Do not invent controls not present in the facts. Use plain "
              "professional English.\n"
              "Output the document text only — no preamble, no commentary.");
    EXPECT_EQ(request.prompt, "Criterion: CC9-vendor-risk\nDocument owner: Ada Byron\n"
                              "Organization's actual facts/architecture for this criterion:\n"
                              "Two vendors.\nBoth reviewed.\n\nWrite the formal document now.");
    EXPECT_EQ(request.recordName, "");
    EXPECT_EQ(request.schema, std::nullopt);
    model.answer("\n\n A policy.\n \xC2\xA0");
    EXPECT_EQ(result, "A policy.");
}

TEST(PolicyGen, SendsWholeEvidenceWithoutAGapAndNoneWhereItBeginsWithOne) {
    struct Case {
        const char* evidence;
        const char* facts;
    };
    for (const auto& [evidence, facts] : std::vector<Case>{{"All done. gap: x", "All done. gap: x"},
                                                           {"GAP: everything", ""},
                                                           {" \t\n", ""},
                                                           {"A GAP: b GAP: c", "A"}}) {
        FakeModel model;
        PolicyGen::generate(model, "x", evidence, "o", [](const auto&) {});
        EXPECT_EQ(model.requests.at(0).prompt,
                  std::string("Criterion: x\nDocument owner: o\nOrganization's actual "
                              "facts/architecture for this criterion:\n") +
                      facts + "\n\nWrite the formal document now.");
    }
}

TEST(PolicyGen, GivesNoResultForATextOfNothing) {
    for (const char* reply : {"", " \n\t ", "<think>long</think>\n", "<think>endless"}) {
        FakeModel model;
        std::optional<std::string> result = "something";
        PolicyGen::generate(model, "x", "", "o", [&](auto text) { result = std::move(text); });
        model.answer(reply);
        EXPECT_EQ(result, std::nullopt) << reply;
    }
}

TEST(Assistant, AsksWithTheContextAndTheQuestion) {
    FakeModel model;
    std::optional<AssistantReply> result;
    Assistant::ask(model, "What next?", "Owner: Ada\nReadiness: 50.0% (6/13 criteria met)",
                   [&](auto reply) { result = std::move(reply); });
    const ModelRequest& request = model.requests.at(0);
    EXPECT_EQ(
        request.instructions,
        "You are the assistant for a SOC 2 compliance app called Pellum. Answer ONLY from the "
        "context\n"
        "you are given — the user's current readiness, criteria, and gaps. Be concise and plain; "
        "never use\n"
        "internal/technical jargon (no \"bond graph\", \"totem\", \"dissipation\", \"causality\"). "
        "Never invent\n"
        "compliance facts — if the context does not say it, say you don't have that information.\n"
        "If the user is asking to DO something, map it to the `action` field. The action MUST be "
        "EXACTLY\n"
        "one of these tokens (no prose, no extra words):\n"
        "  none | play | pause | add_evidence | snapshot_os | generate:<criterionId>\n"
        "When the user asks to CREATE, WRITE, DRAFT, or GENERATE a policy/document for a "
        "criterion, use\n"
        "generate:<criterionId> with a REAL criterion id copied exactly from the context (e.g.\n"
        "generate:CC9-vendor-risk). For anything else — readiness questions, explanations, or "
        "anything you\n"
        "are unsure of — set action to \"none\". The answer must always be present and plain.");
    EXPECT_EQ(request.prompt,
              "Current state:\nOwner: Ada\nReadiness: 50.0% (6/13 criteria met)\n\nUser: What "
              "next?");
    EXPECT_EQ(request.recordName, "GeneratedAssistantReply");
    EXPECT_EQ(request.schema, jsonSchema<GeneratedAssistantReply>());
    // Trimming and reading the token is the engine's.
    model.answer(R"({"answer":" Rest. ","action":" Play\n"})");
    EXPECT_EQ(result, (AssistantReply{" Rest. ", " Play\n"}));
}

} // namespace
} // namespace kelvo::test
