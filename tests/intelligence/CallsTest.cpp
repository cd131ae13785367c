#include "base/Sha256.h"
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
    const char* goodReply;
    std::function<void(LanguageModel&, std::function<void(bool)>)> make;
};

const Call complianceCalls[] = {
    {R"({"criteria":[],"summary":""})",
     [](LanguageModel& model, const std::function<void(bool)>& done) {
         EvidenceMapper::mapEvidence(model, "", {}, [done](auto r) { done(r.has_value()); });
     }},
    {"text",
     [](LanguageModel& model, const std::function<void(bool)>& done) {
         PolicyGen::generate(model, "", "", "", [done](auto r) { done(r.has_value()); });
     }},
    {R"({"answer":"","action":""})",
     [](LanguageModel& model, const std::function<void(bool)>& done) {
         Assistant::ask(model, "", "", [done](auto r) { done(r.has_value()); });
     }},
};

TEST(ComplianceCalls, GiveAResultForAGoodReplyAndAskNothingOfAModelThatIsOldOrUnavailable) {
    for (const Call& call : complianceCalls) {
        SCOPED_TRACE(call.goodReply);
        FakeModel model;
        std::vector<bool> results;
        const auto note = [&](bool result) { results.push_back(result); };
        call.make(model, note);
        EXPECT_TRUE(results.empty());
        model.answer(call.goodReply);
        call.make(model, note);
        model.fail("refused");
        EXPECT_EQ(results, (std::vector<bool>{true, false}));
        EXPECT_EQ(model.requests.size(), 2u) << "a session each";
        model.unavailable = "modelNotReady";
        call.make(model, note);
        model.unavailable = std::nullopt;
        model.version = 25;
        call.make(model, note);
        EXPECT_EQ(results, (std::vector<bool>{true, false, false, false}));
        EXPECT_EQ(model.requests.size(), 2u);
    }
}

/// The instructions are fixed texts; this tells one from any other.
std::string hashOf(const ModelRequest& request) {
    return sha256Hex(request.instructions);
}

TEST(EvidenceMapper, AsksWithTheAllowedIdsAndTheDocument) {
    FakeModel model;
    std::optional<EvidenceMapping> result;
    EvidenceMapper::mapEvidence(model, "Access is reviewed.\n", {"CC6-access", "CC9-vendor-risk"},
                                [&](auto mapping) { result = std::move(mapping); });
    const ModelRequest& request = model.requests.at(0);
    EXPECT_TRUE(request.instructions.ends_with(
        "choose only from the provided list: CC6-access, CC9-vendor-risk."));
    EXPECT_EQ(hashOf(request), "e2e168a411a0bac284891971d36539b482cdae5c6d4c18fb1bebc97dc993cb15")
        << request.instructions;
    EXPECT_EQ(request.prompt, "Allowed criterion ids: CC6-access, CC9-vendor-risk\n\n"
                              "Document text:\nAccess is reviewed.\n");
    EXPECT_EQ(request.recordName, "EvidenceMapping");
    EXPECT_EQ(request.schema, jsonSchema<EvidenceMapping>());
    // Not filtered here, and kept in the model's order.
    model.answer(R"({"criteria":["made-up","CC6-access","CC6-access"],"summary":" S "})");
    EXPECT_EQ(result, (EvidenceMapping{{"made-up", "CC6-access", "CC6-access"}, " S "}));
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
    EXPECT_EQ(hashOf(request), "0bb78f7aebde3e70b26b12e55b783a1331bf940f92c4a1b7717738df38915459")
        << request.instructions;
    EXPECT_EQ(request.prompt, "Criterion: CC9-vendor-risk\nDocument owner: Ada Byron\n"
                              "Organization's actual facts/architecture for this criterion:\n"
                              "Two vendors.\nBoth reviewed.\n\nWrite the formal document now.");
    EXPECT_EQ(request.recordName, "");
    EXPECT_EQ(request.schema, std::nullopt);
    model.answer("\n\n A policy.\n \xC2\xA0");
    EXPECT_EQ(result, "A policy.");
}

TEST(PolicyGen, SendsWholeEvidenceWithoutAGapAndNoneWhereItBeginsWithOne) {
    const std::pair<const char*, std::string> table[] = {{"All done. gap: x", "All done. gap: x"},
                                                         {"GAP: everything", ""},
                                                         {" \t\n", ""},
                                                         {"A GAP: b GAP: c", "A"}};
    for (const auto& [evidence, facts] : table) {
        FakeModel model;
        PolicyGen::generate(model, "x", evidence, "o", [](const auto&) {});
        EXPECT_TRUE(model.requests.at(0).prompt.ends_with("criterion:\n" + facts +
                                                          "\n\nWrite the formal document now."))
            << evidence;
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
    EXPECT_EQ(hashOf(request), "8654c4f4dfb6d4196220777c4073beeb26d26b6305ebc26a41052f2c90f87d8c")
        << request.instructions;
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
