#include "graphjson/GraphJson.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace kelvo {
namespace {

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();

const BondGraph bondGraph{{{"R", NodeKind::R, 2.0}, {"1/é", NodeKind::j1}},
                          {{1, 2}, {lowest, 0, Causality::bSetsEffort, false}}};
const char* const bondGraphText =
    R"({"bonds":[{"a":1,"b":2,"causality":"unset","powerAToB":true},)"
    R"({"a":-9223372036854775808,"b":0,"causality":"bSetsEffort","powerAToB":false}],)"
    R"("nodes":[{"id":"R","kind":"R","param":2},{"id":"1\/é","kind":"j1"}]})";

const ExtractedGraph extractedGraph{{{"R", "R", 0.1}, {"x", "no kind"}}, {{"R", "nowhere"}}};
const char* const extractedGraphText =
    R"({"bonds":[{"from":"R","to":"nowhere"}],)"
    R"("nodes":[{"id":"R","kind":"R","param":0.1},{"id":"x","kind":"no kind"}]})";

TEST(GraphJson, IsWrittenFromTheFieldNames) {
    EXPECT_EQ(writeJson(toJson(bondGraph)), bondGraphText);
    EXPECT_EQ(writeJson(toJson(extractedGraph)), extractedGraphText);
    EXPECT_EQ(writeJson(toJson(BondGraph{})), R"({"bonds":[],"nodes":[]})");
}

TEST(GraphJson, IsReadWithoutValidation) {
    EXPECT_EQ(readBondGraph(parseJson(bondGraphText).value()), bondGraph);
    EXPECT_EQ(readExtractedGraph(parseJson(extractedGraphText).value()), extractedGraph);
    const auto null = readExtractedGraph(
        parseJson(R"({"nodes":[{"id":"","kind":"","param":null}],"bonds":[]})").value());
    EXPECT_EQ(null, (ExtractedGraph{{{"", ""}}, {}}));
}

TEST(GraphJson, CannotHoldAParameterThatIsNotFinite) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(writeJson(toJson(BondGraph{{{"R", NodeKind::R, inf}}, {}})), std::nullopt);
}

std::string bond(const std::string& members) {
    return R"({"nodes":[],"bonds":[{)" + members + "}]}";
}

template <class Graph>
std::string errorOf(const tl::expected<Graph, std::string>& read) {
    return read ? "read" : read.error();
}

TEST(GraphJson, NamesTheMemberThatCannotBeRead) {
    const std::pair<std::string, const char*> bondGraphs[] = {
        {R"([])", "expected an object"},
        {R"({"bonds":[]})", "nodes: missing"},
        {R"({"nodes":[]})", "bonds: missing"},
        {R"({"nodes":{},"bonds":[]})", "nodes: expected an array"},
        {R"({"nodes":[1],"bonds":[]})", "nodes[0]: expected an object"},
        {R"({"nodes":[{"kind":"R"}],"bonds":[]})", "nodes[0].id: missing"},
        {R"({"nodes":[{"id":"R","kind":"r"}],"bonds":[]})",
         "nodes[0].kind: \"r\" is no element kind"},
        {R"({"nodes":[{"id":"R","kind":"R","param":true}],"bonds":[]})",
         "nodes[0].param: expected a number"},
        {bond(R"("a":0.5,"b":1)"), "bonds[0].a: expected an integer"},
        {bond(R"("a":0,"b":9223372036854775808)"), "bonds[0].b: expected an integer"},
        {bond(R"("a":0,"b":1,"causality":"a","powerAToB":true)"),
         "bonds[0].causality: \"a\" is no causality"},
        {bond(R"("a":0,"b":1,"causality":"unset")"), "bonds[0].powerAToB: missing"},
        {bond(R"("a":0,"b":1,"causality":"unset","powerAToB":1)"),
         "bonds[0].powerAToB: expected true or false"},
    };
    for (const auto& [text, error] : bondGraphs)
        EXPECT_EQ(errorOf(readBondGraph(parseJson(text).value())), error);
    const std::pair<const char*, const char*> extractedGraphs[] = {
        {R"("nodes")", "expected an object"},
        {R"({"nodes":[{"id":1,"kind":"R"}],"bonds":[]})", "nodes[0].id: expected a string"},
        {R"({"nodes":[{"id":"a"}],"bonds":[]})", "nodes[0].kind: missing"},
        {R"({"nodes":[],"bonds":[{"from":"a","to":"b"},{"from":"a"}]})", "bonds[1].to: missing"},
    };
    for (const auto& [text, error] : extractedGraphs)
        EXPECT_EQ(errorOf(readExtractedGraph(parseJson(text).value())), error);
}

} // namespace
} // namespace kelvo
