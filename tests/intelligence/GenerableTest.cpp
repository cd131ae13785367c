#include "intelligence/GenerableRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::HasSubstr;

struct Field {
    const char* name;
    const char* type;
    const char* description;
    bool required = true;
};

/// The record's schema has exactly these fields, in this order.
template <class Record>
void expectFields(const std::vector<Field>& fields) {
    const auto schema = nlohmann::ordered_json::parse(jsonSchema<Record>());
    EXPECT_EQ(schema.at("type"), "object");
    EXPECT_EQ(schema.at("additionalProperties"), false);
    EXPECT_FALSE(schema.contains("description")) << "records have no description of their own";
    ASSERT_EQ(schema.at("properties").size(), fields.size());
    auto property = schema.at("properties").begin();
    std::vector<std::string> required;
    for (const Field& field : fields) {
        EXPECT_EQ(property.key(), field.name);
        EXPECT_EQ(property.value().at("type"), field.type) << field.name;
        EXPECT_EQ(property.value().at("description"), field.description) << field.name;
        // Type and description, and for a list what it holds: no other constraint.
        EXPECT_EQ(property.value().size(), std::string(field.type) == "array" ? 3u : 2u);
        if (field.required) required.emplace_back(field.name);
        ++property;
    }
    EXPECT_EQ(schema.at("required"), required);
}

TEST(Generable, DescribesEveryRecordWordForWord) {
    expectFields<GeneratedNode>(
        {{"id", "string", "unique short id, e.g. R1, C2, mass"},
         {"kind", "string", "one of Se Sf R C I TF GY j0 j1"},
         {"param", "number",
          "element value (resistance/capacitance/inertance/modulus); omit for sources & junctions",
          false}});
    expectFields<GeneratedBond>({{"from", "string", "id of one endpoint element"},
                                 {"to", "string", "id of the other endpoint element"}});
    expectFields<GeneratedGraph>(
        {{"nodes", "array",
          "Every physical element. kind ∈ {Se,Sf,R,C,I,TF,GY,j0,j1}. R/C/I/TF/GY need a numeric "
          "param; Se/Sf/j0/j1 omit it."},
         {"bonds", "array",
          "Power bonds connecting element ids. Do NOT assign causality or direction of "
          "effort/flow."}});
    expectFields<SOCReply>(
        {{"answer", "string",
          "A short, plain-language answer for the SOC2 operator (2-4 sentences). Always present."},
         {"nodes", "array",
          "If the user described a physical or control system to model, its bond-graph elements; "
          "otherwise an empty list."},
         {"bonds", "array", "Bonds between those elements; empty if no system was described."}});
    expectFields<EvidenceMapping>(
        {{"criteria", "array",
          "The SOC 2 criterion ids — chosen ONLY from the provided list — that this document "
          "provides evidence for. Do not invent ids."},
         {"summary", "string",
          "One-sentence plain-English summary of what the document is and which controls it "
          "evidences."}});
    expectFields<GeneratedAssistantReply>(
        {{"answer", "string",
          "plain-English answer for a non-technical user; NO jargon like "
          "bondgraph/totem/dissipation/causality"},
         {"action", "string",
          "exactly one of: none, play, pause, add_evidence, snapshot_os, readiness, or "
          "generate:<criterionId> where <criterionId> is a real criterion id from the context"}});
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
    struct Case {
        const char* text;
        const char* error;
    };
    for (const auto& [text, error] : std::vector<Case>{
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
         }) {
        const auto reply = readGenerable<SOCReply>(text);
        ASSERT_FALSE(reply.has_value()) << text;
        EXPECT_THAT(reply.error(), HasSubstr(error)) << text;
    }
    EXPECT_THAT(readGenerable<EvidenceMapping>(R"({"criteria":["a",1],"summary":""})").error(),
                HasSubstr("criteria"));
}

} // namespace
} // namespace kelvo
