#include "compliance/SOC2Mesh.h"

#include "base/Files.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace kelvo {
namespace {

using ::testing::HasSubstr;

SOC2Mesh meshOf(std::vector<SOC2Mesh::Node> nodes) {
    return {std::move(nodes)};
}

std::vector<std::string> idsOf(const std::vector<SOC2Mesh::Node>& nodes) {
    std::vector<std::string> ids;
    ids.reserve(nodes.size());
    for (const auto& node : nodes)
        ids.push_back(node.id);
    return ids;
}

std::string refusalOf(std::string_view text) {
    const test::TemporaryDirectory folder;
    const auto file = folder.path() / "mesh.json";
    EXPECT_TRUE(writeFileAtomically(file, text));
    const auto mesh = SOC2Mesh::load(file);
    return mesh ? "accepted" : mesh.error();
}

constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

TEST(SOC2Mesh, ReadinessIsTheWeightedMeanGateLevel) {
    const std::tuple<SOC2Mesh, double, double, std::int64_t> table[] = {
        {meshOf({{"a", 0, 3, ""}, {"b", 0.5, 2, ""}, {"c", 1, 5, ""}}), 0.6, 6, 10},
        {meshOf({}), 0, 0, 0},
        {meshOf({{"a", 1, 2, ""}, {"b", 0.5, -2, ""}}), 0, 1, 0},
        {meshOf({{"a", 1.2, 10, ""}}), 1.2, 12, 10},
        {meshOf({{"a", 1, -4, ""}, {"b", 0, 2, ""}}), 2, -4, -2},
    };
    for (const auto& [mesh, value, sumGW, sumW] : table) {
        EXPECT_DOUBLE_EQ(mesh.readiness().value, value);
        EXPECT_DOUBLE_EQ(mesh.readiness().sumGW, sumGW);
        EXPECT_EQ(mesh.readiness().sumW, sumW);
    }
}

TEST(SOC2Mesh, WeightsBeyond64BitsAreHeldAtTheEndsAndDivideExactly) {
    const auto above = meshOf({{"a", 1, most, ""}, {"b", 1, most, ""}, {"c", 0, 2, ""}});
    EXPECT_EQ(above.readiness().sumW, most);
    EXPECT_DOUBLE_EQ(above.readiness().value, 1.0);
    EXPECT_EQ(meshOf({{"a", 1, least, ""}, {"b", 1, -1, ""}}).readiness().sumW, least);
    EXPECT_EQ(meshOf({{"a", 1, most, ""}, {"b", 1, 1, ""}, {"c", 1, -6, ""}}).readiness().sumW,
              most - 5)
        << "only the whole sum counts, not the way to it";
}

TEST(SOC2Mesh, GapsFallByImpactAndEqualImpactKeepsFileOrder) {
    const double infinite = std::numeric_limits<double>::infinity();
    const std::pair<SOC2Mesh, std::vector<std::string>> table[] = {
        {meshOf({{"A", 0, 2, ""},
                 {"B", 0.5, 4, ""},
                 {"C", 0, 2, ""},
                 {"D", 1, 9, ""},
                 {"E", 0.999, 1, ""},
                 {"F", 1.2, 7, ""},
                 {"G", 0.25, 4, ""}}),
         {"G", "A", "B", "C", "E"}},
        {meshOf({{"less", 0, 1, ""},
                 {"first", 0, 3, ""},
                 {"second", -1, 1, ""},
                 {"again", 0, 3, ""},
                 {"negative", 0, -1, ""}}),
         {"first", "again", "second", "less", "negative"}},
        {meshOf({{"none", std::nan(""), 1, ""},
                 {"zero times infinite", -infinite, 0, ""},
                 {"largest", -infinite, 1, ""},
                 {"negative", -infinite, -1, ""}}),
         {"largest", "zero times infinite", "negative"}},
        {meshOf({{"met", 1, 1, ""}}), {}},
    };
    for (const auto& [mesh, ids] : table) {
        EXPECT_EQ(idsOf(mesh.gaps()), ids);
        const SOC2Mesh::Node* highest = mesh.highestImpactGap();
        EXPECT_EQ(highest == nullptr ? "" : highest->id, ids.empty() ? "" : ids.front());
    }
    EXPECT_EQ(table[0].first.metCount(), 2);
}

TEST(SOC2Mesh, GapTextIsWhatFollowsTheFirstMarker) {
    const std::pair<const char*, const char*> table[] = {
        {"policy exists. GAP:  no annual review ", "no annual review"},
        {"complete", "complete"},
        {"gap: x", "gap: x"},
        {" GAP:\tone GAP: two\t", "one GAP: two"},
        {"GAP:", ""},
        {"GAP: \n line breaks stay \n ", "\n line breaks stay \n"},
        {"GAP:\u00A0no-break space stays", "\u00A0no-break space stays"},
    };
    for (const auto& [evidence, text] : table)
        EXPECT_EQ(SOC2Mesh::gapText({"id", 0, 1, evidence}), text);
}

TEST(SOC2Mesh, ReplayClosesEveryNodeOfAnIdAndLookingUpFindsTheFirst) {
    const auto mesh = meshOf({{"A", 0, 1, "x"}, {"B", 1.5, 1, ""}, {"A", 0.5, 1, "y"}});
    const auto closed = mesh.applying({"A", "unknown"});
    EXPECT_EQ(closed.nodes, meshOf({{"A", 1, 1, "x"}, {"B", 1.5, 1, ""}, {"A", 1, 1, "y"}}).nodes);
    EXPECT_EQ(mesh.nodes[0].g, 0);
    EXPECT_EQ(mesh.find("A"), &mesh.nodes[0]);
    EXPECT_EQ(mesh.find("a"), nullptr);
}

TEST(SOC2Mesh, AFileGivesItsNodesInOrderAndOtherKeysAreIgnored) {
    const test::TemporaryDirectory folder;
    const auto file = folder.path() / "mesh.json";
    ASSERT_TRUE(writeFileAtomically(
        file, R"({"made":"by hand","nodes":[{"id":"é/1","g":1,"w":3.0,"evidence":"GAP: x","n":[]},
                 {"id":"é/1","g":-2.5,"w":-9223372036854775808,"evidence":""}]})"));
    const auto mesh = SOC2Mesh::load(file);
    ASSERT_TRUE(mesh) << mesh.error();
    EXPECT_EQ(mesh->nodes, meshOf({{"é/1", 1, 3, "GAP: x"}, {"é/1", -2.5, least, ""}}).nodes);
    EXPECT_EQ(SOC2Mesh::fromJson(mesh->toJson())->nodes, mesh->nodes);
    EXPECT_EQ(meshOf({}).toJson(), (Json{{"nodes", Json::array()}}));
}

TEST(SOC2Mesh, AFileWithAFaultIsRefusedWholeAndTheMemberNamed) {
    const std::pair<const char*, const char*> table[] = {
        {R"([{"g":1,"w":1,"evidence":""}])", "mesh.json: nodes[0].id: missing"},
        {R"([{"id":"a","w":1,"evidence":""}])", "mesh.json: nodes[0].g: missing"},
        {R"([{"id":"a","g":1,"evidence":""}])", "mesh.json: nodes[0].w: missing"},
        {R"([{"id":"a","g":1,"w":1}])", "mesh.json: nodes[0].evidence: missing"},
        {R"([{"id":"a","g":1,"w":1,"evidence":""},{"id":7,"g":1,"w":1,"evidence":""}])",
         "mesh.json: nodes[1].id: expected a string"},
        {R"([{"id":"a","g":true,"w":1,"evidence":""}])", "nodes[0].g: expected a number"},
        {R"([{"id":"a","g":null,"w":1,"evidence":""}])", "nodes[0].g: expected a number"},
        {R"([{"id":"a","g":"1","w":1,"evidence":""}])", "nodes[0].g: expected a number"},
        {R"([{"id":"a","g":1,"w":1.5,"evidence":""}])", "nodes[0].w: expected an integer"},
        {R"([{"id":"a","g":1,"w":9223372036854775808,"evidence":""}])",
         "nodes[0].w: expected an integer"},
        {R"([{"id":"a","g":1,"w":1,"evidence":[]}])", "nodes[0].evidence: expected a string"},
        {R"([7])", "nodes[0]: expected an object"},
        {R"({})", "nodes: expected an array"},
        {R"([{"id":"a","g":1,"w":9223372036854775807,"evidence":""},
             {"id":"b","g":1,"w":1,"evidence":""}])",
         "the weights w add up to more than 64 bits hold"},
        {R"([{"id":"a","g":1e308,"w":1000,"evidence":""}])", "too large to add up"},
        {R"([{"id":"a","g":1e999,"w":1,"evidence":""}])", "number overflow"},
        {R"([{"id":"a","g":NaN,"w":1,"evidence":""}])", "mesh.json: "},
    };
    for (const auto& [nodes, fault] : table)
        EXPECT_THAT(refusalOf(std::string("{\"nodes\":") + nodes + "}"), HasSubstr(fault)) << nodes;
    const auto withTexts = [](std::size_t id, std::size_t evidence) {
        return refusalOf(*writeJson(
            meshOf({{std::string(id, 'i'), 0, 1, std::string(evidence, 'e')}}).toJson()));
    };
    EXPECT_EQ(withTexts(1 << 16, 1 << 18), "accepted");
    EXPECT_THAT(withTexts((1 << 16) + 1, 0), HasSubstr("nodes[0].id: longer than 64 KiB"));
    EXPECT_THAT(withTexts(0, (1 << 18) + 1), HasSubstr("nodes[0].evidence: longer than 256 KiB"));
    EXPECT_THAT(refusalOf("{}"), HasSubstr("mesh.json: nodes: missing"));
    EXPECT_THAT(refusalOf("[]"), HasSubstr("expected an object"));
    for (const char* text : {"", "{\"nodes\":[]} x", "{\"nodes\":[],\"\xFF\":1}"})
        EXPECT_THAT(refusalOf(text), HasSubstr("mesh.json: "));
    EXPECT_THAT(refusalOf(std::string(100'000, '[')), HasSubstr("nested deeper"));
}

TEST(SOC2Mesh, AFileOfAHundredMegabytesOrNoFileAtAllIsRefusedInWords) {
    const test::TemporaryDirectory folder;
    const auto file = folder.path() / "mesh.json";
    EXPECT_EQ(SOC2Mesh::load(file).error(), "mesh.json: No such file or directory");
    ASSERT_TRUE(writeFileAtomically(file, "{"));
    std::filesystem::resize_file(file, 100'000'000);
    EXPECT_THAT(SOC2Mesh::load(file).error(), HasSubstr("mesh.json: larger"));
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_THAT(SOC2Mesh::load(file).error(), HasSubstr("not a regular file"));
}

} // namespace
} // namespace kelvo
