// The JSON forms of graphs, in tests/data/graphjson.

#include "graphjson/GraphJson.h"

#include "support/Story.h"

#include <limits>

namespace kelvo::test {
namespace {

template <class Graph>
std::string again(const tl::expected<Graph, std::string>& read) {
    return read ? writeJson(toJson(*read)).value_or("no JSON") : read.error();
}

class GraphFacts : public Facts {
public:
    GraphFacts() {
        figures["bondGraph"] = [](Rest text) { return again(readBondGraph(*parseJson(text))); };
        figures["extracted"] = [](Rest text) {
            return again(readExtractedGraph(*parseJson(text)));
        };
        figures["validated"] = [](Rest text) {
            const auto graph = readExtractedGraph(*parseJson(text)).value().validated();
            return graph ? writeJson(toJson(*graph)).value() : description(graph.error());
        };
    }
};

const int told = tellScenes<GraphFacts>("Facts", KELVO_DATA "/graphjson");

TEST(GraphJson, CannotHoldAParameterThatIsNotFinite) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(writeJson(toJson(BondGraph{{{"R", NodeKind::R, inf}}, {}})), std::nullopt);
}

} // namespace
} // namespace kelvo::test
