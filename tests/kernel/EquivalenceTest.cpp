#include "kernel/StateSpace.h"
#include "support/FamilyGraphs.h"
#include "support/KernelComparison.h"
#include "support/RandomGraphs.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace kelvo {
namespace {

using support::RandomGraphs;

std::string sketch(const BondGraph& graph) {
    std::string text;
    for (const Node& node : graph.nodes) {
        text += node.id + ":" + std::string(rawValue(node.kind));
        if (node.param) text += "(" + std::to_string(*node.param) + ")";
        text += " ";
    }
    for (const Bond& bond : graph.bonds) {
        text += std::to_string(bond.a) + (bond.powerAToB ? ">" : "<") + std::to_string(bond.b) +
                (bond.causality == Causality::unset ? " " : "! ");
    }
    return text;
}

/// How often each outcome came up, so that a run that no longer reaches the hard cases is noticed.
struct Tally {
    int sound = 0, structure = 0, overCausal = 0, underCausal = 0, derivativeCausality = 0,
        unreached = 0, notFinite = 0;
};

bool unreached(const StateSpace& space) {
    // A one in every state and source leaves no variable at 0 by chance that the graph reaches
    // often.
    Sources ones;
    for (const std::string& id : space.sourceIds())
        ones[id] = 1.0;
    const Eval eval = space.derivatives(std::vector<double>(space.states().size(), 1.0), ones);
    return std::ranges::count(eval.effort, 0.0) + std::ranges::count(eval.flow, 0.0) > 0;
}

void count(const tl::expected<BondGraph, GraphError>& causal, Tally& tally) {
    if (causal) {
        ++tally.sound;
        for (std::size_t i = 0; i < causal->nodes.size(); ++i) {
            const NodeKind kind = causal->nodes[i].kind;
            if (!isStorage(kind)) continue;
            const auto bond = std::ranges::find_if(causal->bonds, [&](const Bond& each) {
                return std::cmp_equal(each.a, i) || std::cmp_equal(each.b, i);
            });
            const bool setsEffort =
                std::cmp_equal(causal->effortSourceNode(bond - causal->bonds.begin()), i);
            if (setsEffort != (kind == NodeKind::C)) {
                ++tally.derivativeCausality;
                return;
            }
        }
        return;
    }
    switch (causal.error().fault) {
    case GraphError::Fault::overCausal:
        ++tally.overCausal;
        break;
    case GraphError::Fault::underCausal:
        ++tally.underCausal;
        break;
    default:
        ++tally.structure;
        break;
    }
}

/// Compares everything that can be asked of one graph.
void expectSame(const BondGraph& graph, RandomGraphs& random, Tally& tally) {
    const auto found = support::difference(
        graph, [&] { return random.number(); }, 0.01);
    ASSERT_EQ(found, std::nullopt) << sketch(graph);
    count(graph.assignCausality(), tally);
    const auto space = StateSpace::create(graph);
    if (!space) return;
    if (unreached(*space)) ++tally.unreached;
    const Eval eval =
        space->derivatives(std::vector<double>(space->states().size(), random.number()), {});
    if (!std::isfinite(eval.sourcePower + eval.storedRate + eval.dissipated)) ++tally.notFinite;
}

class RandomGraph : public testing::TestWithParam<std::uint64_t> {};

TEST_P(RandomGraph, MeansTheSameToTheCompiledKernelAndToTheLiteralOne) {
    RandomGraphs random(GetParam());
    Tally tally;
    for (int i = 0; i < 4000 && !HasFatalFailure(); ++i)
        expectSame(random.graph(), random, tally);
    EXPECT_GT(tally.sound, 1500);
    EXPECT_GT(tally.structure, 250);
    EXPECT_GT(tally.overCausal, 50);
    EXPECT_GT(tally.underCausal, 10);
    EXPECT_GT(tally.derivativeCausality, 100);
    EXPECT_GT(tally.unreached, 100);
    EXPECT_GT(tally.notFinite, 100);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomGraph, testing::Range<std::uint64_t>(1, 10));

/// Calls `each` with every structurally sound graph of `nodes` nodes and at most `maxBonds` bonds,
/// bonds being pairs in non-decreasing order and running from the lower index to the higher.
template <class Each>
void enumerate(std::size_t nodes, std::size_t maxBonds, Each each) {
    std::vector<Bond> pairs;
    for (std::size_t a = 0; a < nodes; ++a) {
        for (std::size_t b = a + 1; b < nodes; ++b) {
            pairs.push_back({static_cast<std::int64_t>(a), static_cast<std::int64_t>(b)});
        }
    }
    std::size_t tuples = 1;
    for (std::size_t i = 0; i < nodes; ++i)
        tuples *= 9;
    BondGraph graph;
    graph.nodes.resize(nodes);
    const auto extend = [&](const auto& self, std::size_t firstPair) -> void {
        const std::vector<std::int64_t> degree = graph.degrees();
        for (std::size_t tuple = 0; tuple < tuples; ++tuple) {
            std::size_t rest = tuple;
            bool sound = true;
            for (std::size_t i = 0; i < nodes && sound; ++i, rest /= 9) {
                graph.nodes[i] = {.id = "n" + std::to_string(i),
                                  .kind = static_cast<NodeKind>(rest % 9),
                                  .param = 2.0 + static_cast<double>(i)};
                const auto needed = ports(graph.nodes[i].kind);
                sound = needed ? degree[i] == *needed : degree[i] >= 2;
            }
            if (sound) each(graph);
        }
        if (graph.bonds.size() == maxBonds) return;
        for (std::size_t p = firstPair; p < pairs.size(); ++p) {
            graph.bonds.push_back(pairs[p]);
            self(self, p);
            graph.bonds.pop_back();
        }
    };
    extend(extend, 0);
}

TEST(SmallGraph, MeansTheSameToTheCompiledKernelAndToTheLiteralOne) {
    RandomGraphs random(4711);
    Tally tally;
    for (const auto& [nodes, bonds] : {std::pair{1, 1}, {2, 4}, {3, 5}, {4, 4}}) {
        enumerate(static_cast<std::size_t>(nodes), static_cast<std::size_t>(bonds),
                  [&](BondGraph& graph) {
                      if (HasFatalFailure()) return;
                      for (Bond& bond : graph.bonds)
                          bond.powerAToB = random.chance(2);
                      expectSame(graph, random, tally);
                  });
    }
    EXPECT_GT(tally.sound, 4000);
    EXPECT_GT(tally.underCausal, 100);
    EXPECT_GT(tally.overCausal, 100);
}

BondGraph validated(const ExtractedGraph& graph) {
    return graph.validated().value();
}

/// Sf – j0 – j1 – j0 … – R with a storage element at each junction, numbered so that causality and
/// values travel against the order of the nodes: the worst case for full passes.
BondGraph ladder(std::size_t rungs, bool reversed) {
    BondGraph graph;
    const auto add = [&](NodeKind kind, double param) {
        graph.nodes.push_back(
            {.id = std::to_string(graph.nodes.size()), .kind = kind, .param = param});
        return static_cast<std::int64_t>(graph.nodes.size() - 1);
    };
    std::int64_t last = add(NodeKind::Sf, 0);
    for (std::size_t i = 0; i < rungs; ++i) {
        const std::int64_t junction = add(i % 2 == 0 ? NodeKind::j0 : NodeKind::j1, 0);
        graph.bonds.push_back({last, junction});
        const double param = 1.0 + static_cast<double>(i % 7) / 8;
        graph.bonds.push_back({junction, add(i % 2 == 0 ? NodeKind::R : NodeKind::I, param)});
        last = junction;
    }
    graph.bonds.push_back({last, add(NodeKind::C, 3)});
    if (reversed) {
        std::ranges::reverse(graph.nodes);
        const auto top = static_cast<std::int64_t>(graph.nodes.size()) - 1;
        for (Bond& bond : graph.bonds)
            bond = {top - bond.a, top - bond.b};
    }
    return graph;
}

/// One junction with many resistors and storage elements: long sums.
BondGraph star(NodeKind junction, std::size_t arms) {
    BondGraph graph{.nodes = {{.id = "j", .kind = junction}}, .bonds = {}};
    constexpr std::array kinds{NodeKind::R, NodeKind::C, NodeKind::R, NodeKind::I};
    for (std::size_t i = 0; i < arms; ++i) {
        graph.nodes.push_back({.id = std::to_string(i),
                               .kind = kinds[i % kinds.size()],
                               .param = 0.3 + static_cast<double>(i)});
        graph.bonds.push_back({0, static_cast<std::int64_t>(i + 1)});
    }
    return graph;
}

TEST(LargeGraph, MeansTheSameToTheCompiledKernelAndToTheLiteralOne) {
    RandomGraphs random(99);
    Tally tally;
    for (const std::size_t count : {1, 2, 9, 23}) {
        expectSame(validated(support::familiesComposed(count)), random, tally);
    }
    expectSame(validated(support::startupGraph()), random, tally);
    for (const bool reversed : {false, true})
        expectSame(ladder(70, reversed), random, tally);
    expectSame(star(NodeKind::j0, 150), random, tally);
    expectSame(star(NodeKind::j1, 150), random, tally);
    EXPECT_EQ(tally.sound, 9);
}

} // namespace
} // namespace kelvo
