#include "base/Sha256.h"
#include "intelligence/GenerableRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::HasSubstr;

TEST(Generable, DescribesEveryRecordWordForWord) {
    EXPECT_EQ(jsonSchema<GeneratedBond>(),
              R"({"type":"object","properties":{"from":{"description":"id of one endpoint )"
              R"(element","type":"string"},"to":{"description":"id of the other endpoint element",)"
              R"("type":"string"}},"required":["from","to"],"additionalProperties":false})");
    // The longer ones by their hashes: the wording is fixed.
    const std::pair<std::string, const char*> table[] = {
        {jsonSchema<GeneratedNode>(),
         "7a05efca29d8e801ff0a1bf95b523d1d9c39d3508af1f516ae9d28e4034bad31"},
        {jsonSchema<GeneratedGraph>(),
         "56c844a402cc4247185c80aed066092eac251de3a718b206873a30493a471b31"},
        {jsonSchema<SOCReply>(),
         "5328b3233e5cd868562c000612882e2771fadde2df621aa378775f45bbfaf488"},
        {jsonSchema<EvidenceMapping>(),
         "b1b21a310307aa60a21d3443919f6c350fb6ae835f4414ab424ddf74c26407dc"},
        {jsonSchema<GeneratedAssistantReply>(),
         "1bbbf414e7e14b632498a86654029b0497d7c5f027a8a2bc5b0f947ea37c8baa"},
    };
    for (const auto& [schema, hash] : table)
        EXPECT_EQ(sha256Hex(schema), hash) << schema;
}

TEST(Generable, NestsTheSchemasOfListedRecords) {
    const auto graph = Json::parse(jsonSchema<GeneratedGraph>()).at("properties");
    EXPECT_EQ(graph.at("nodes").at("items"), Json::parse(jsonSchema<GeneratedNode>()));
    EXPECT_EQ(graph.at("bonds").at("items"), Json::parse(jsonSchema<GeneratedBond>()));
    const auto mapping = Json::parse(jsonSchema<EvidenceMapping>()).at("properties");
    EXPECT_EQ(mapping.at("criteria").at("items"), (Json{{"type", "string"}}));
}

TEST(Generable, ReadsAWholeRecordAndIgnoresWhatItDoesNotHave) {
    const auto reply = readGenerable<SOCReply>(
        R"({"mood":"fine","answer":"Built.","nodes":[{"id":"s","kind":"Se","colour":3},)"
        R"({"kind":"R","id":"r","param":2.5},{"id":"c","kind":"C","param":null}],)"
        R"("bonds":[{"to":"r","from":"s"}]})");
    ASSERT_TRUE(reply.has_value()) << reply.error();
    EXPECT_EQ(reply->answer, "Built.");
    ASSERT_EQ(reply->nodes.size(), 3u);
    EXPECT_EQ(reply->nodes[0].param, std::nullopt);
    EXPECT_EQ(reply->nodes[1].id, "r");
    EXPECT_EQ(reply->nodes[1].param, 2.5);
    EXPECT_EQ(reply->nodes[2].param, std::nullopt);
    EXPECT_EQ(reply->bonds.at(0).from, "s");
    EXPECT_EQ(reply->bonds.at(0).to, "r");
}

TEST(Generable, NamesTheFieldThatIsMissingOrMistyped) {
    const std::pair<const char*, const char*> table[] = {
        {R"({"nodes":[],"bonds":[]})", "answer"},
        {R"({"answer":null,"nodes":[],"bonds":[]})", "answer"},
        {R"({"answer":["x"],"nodes":[],"bonds":[]})", "answer"},
        {R"({"answer":"x","nodes":{},"bonds":[]})", "nodes"},
        {R"({"answer":"x","nodes":[],"bonds":null})", "bonds"},
        {R"({"answer":"x","nodes":["R"],"bonds":[]})", "nodes[0]"},
        {R"({"answer":"x","nodes":[{"id":"a","kind":"R","param":"2"}],"bonds":[]})",
         "nodes[0].param"},
        {R"({"answer":"x","nodes":[{"id":"a","kind":"R","param":true}],"bonds":[]})",
         "nodes[0].param"},
        {R"({"answer":"x","nodes":[],"bonds":[{"from":"a"}]})", "bonds[0].to"},
        {R"({"answer":"x","nodes":[],"bonds":[]} and more)", ""},
        {"[]", ""},
        {"", ""},
    };
    for (const auto& [text, error] : table) {
        const auto reply = readGenerable<SOCReply>(text);
        ASSERT_FALSE(reply.has_value()) << text;
        EXPECT_THAT(reply.error(), HasSubstr(error)) << text;
    }
    EXPECT_THAT(readGenerable<EvidenceMapping>(R"({"criteria":["a",1],"summary":""})").error(),
                HasSubstr("criteria"));
}

} // namespace
} // namespace kelvo
