#pragma once

#include "kernel/Model.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

/// Bond graphs of every sort, the same for the same seed on every machine.
namespace kelvo::support {

class RandomGraphs {
    template <class Values>
    auto pick(const Values& values) {
        return *(values.begin() + static_cast<std::ptrdiff_t>(below(values.size())));
    }

public:
    explicit RandomGraphs(std::uint64_t seed) : engine_(seed) {}

    /// One of: a well-formed graph of junctions, two-ports and one-ports, as tree or with loops;
    /// the same damaged; nodes and bonds thrown together.
    BondGraph graph() {
        if (chance(10)) return thrownTogether();
        BondGraph graph = wellFormed();
        if (chance(10)) damage(graph);
        return graph;
    }

    /// Mostly plain numbers, now and then one at the edge of what a double can hold.
    double number() {
        if (chance(12)) return pick(edges_);
        if (chance(4)) return pick(plain_);
        return static_cast<double>(static_cast<std::int64_t>(below(2001)) - 1000) / 125.0;
    }

    std::size_t below(std::size_t bound) { return engine_() % bound; }
    bool chance(std::size_t oneIn) { return below(oneIn) == 0; }

private:
    static constexpr double inf = std::numeric_limits<double>::infinity();
    static constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    static constexpr double most = std::numeric_limits<double>::max();
    static constexpr double least = std::numeric_limits<double>::min();
    static constexpr double tiny = std::numeric_limits<double>::denorm_min();
    static constexpr std::array<double, 12> edges_{
        0.0, -0.0, inf, -inf, nan, most, least, tiny, 0x1p1023, -0x1p-1022, 1e-300, 1e300};
    static constexpr std::array<double, 8> plain_{1.0, -1.0, 2.0, 0.5, -4.0, 3.0, 0.1, 8.0};

    NodeKind kindOf(std::initializer_list<NodeKind> kinds) { return pick(kinds); }

    std::size_t add(BondGraph& graph, NodeKind kind) {
        Node node{.id = "n" + std::to_string(graph.nodes.size()), .kind = kind};
        if (chance(20)) node.id = "n0";
        if (!chance(8)) node.param = number();
        graph.nodes.push_back(node);
        return graph.nodes.size() - 1;
    }

    void join(BondGraph& graph, std::size_t a, std::size_t b) {
        Bond bond{.a = static_cast<std::int64_t>(a), .b = static_cast<std::int64_t>(b)};
        if (chance(2)) std::swap(bond.a, bond.b);
        bond.powerAToB = !chance(4);
        graph.bonds.push_back(bond);
    }

    /// Joins two nodes directly or through a chain of transformers and gyrators.
    void link(BondGraph& graph, std::size_t from, std::size_t to) {
        std::size_t chain = chance(2) ? 0 : 1 + below(3);
        while (chain-- > 0) {
            const std::size_t port = add(graph, kindOf({NodeKind::TF, NodeKind::GY}));
            join(graph, from, port);
            from = port;
        }
        if (from != to) join(graph, from, to);
    }

    NodeKind onePort() {
        return chance(4) ? kindOf({NodeKind::Se, NodeKind::Sf})
                         : kindOf({NodeKind::R, NodeKind::C, NodeKind::I});
    }

    BondGraph wellFormed() {
        BondGraph graph;
        if (chance(12)) {
            link(graph, add(graph, onePort()), add(graph, onePort()));
            return shuffled(graph);
        }
        std::vector<std::size_t> junctions;
        for (std::size_t count = 1 + below(5); count > 0; --count) {
            const std::size_t junction = add(graph, kindOf({NodeKind::j0, NodeKind::j1}));
            if (!junctions.empty() && !chance(15)) link(graph, pick(junctions), junction);
            junctions.push_back(junction);
        }
        for (std::size_t loops = chance(2) ? below(3) : 0; loops > 0; --loops) {
            const std::size_t a = pick(junctions);
            const std::size_t b = pick(junctions);
            if (a != b) link(graph, a, b);
        }
        for (const std::size_t junction : junctions) {
            const std::size_t ports = below(4);
            for (std::size_t i = 0; i < ports || graph.degrees()[junction] < 2; ++i) {
                join(graph, junction, add(graph, onePort()));
            }
        }
        return shuffled(graph);
    }

    /// The same graph with nodes and bonds in another order, now and then with strokes already
    /// placed.
    BondGraph shuffled(const BondGraph& graph) {
        std::vector<std::size_t> order(graph.nodes.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        shuffle(order);
        BondGraph result{.nodes = graph.nodes, .bonds = graph.bonds};
        for (std::size_t i = 0; i < order.size(); ++i)
            result.nodes[order[i]] = graph.nodes[i];
        const bool strokes = chance(6);
        for (Bond& bond : result.bonds) {
            bond.a = static_cast<std::int64_t>(order[static_cast<std::size_t>(bond.a)]);
            bond.b = static_cast<std::int64_t>(order[static_cast<std::size_t>(bond.b)]);
            if (strokes && chance(3)) {
                bond.causality = chance(2) ? Causality::aSetsEffort : Causality::bSetsEffort;
            }
        }
        shuffle(result.bonds);
        return result;
    }

    template <class Item>
    void shuffle(std::vector<Item>& items) {
        for (std::size_t i = items.size(); i > 1; --i)
            std::swap(items[i - 1], items[below(i)]);
    }

    void damage(BondGraph& graph) {
        const std::size_t at = below(graph.bonds.size());
        switch (below(4)) {
        case 0:
            graph.bonds[at].a = pick(indices_);
            break;
        case 1:
            graph.bonds[at].b = pick(indices_);
            break;
        case 2:
            graph.bonds.erase(graph.bonds.begin() + static_cast<std::ptrdiff_t>(at));
            break;
        default:
            graph.nodes[below(graph.nodes.size())].kind = onePort();
            break;
        }
    }

    BondGraph thrownTogether() {
        BondGraph graph;
        for (std::size_t count = below(6); count > 0; --count) {
            add(graph, static_cast<NodeKind>(below(9)));
        }
        for (std::size_t count = below(7); count > 0; --count) {
            join(graph, below(graph.nodes.size() + 1), below(graph.nodes.size() + 1));
        }
        return graph;
    }

    static constexpr std::array<std::int64_t, 5> indices_{-1, 0, 1,
                                                          std::numeric_limits<std::int64_t>::max(),
                                                          std::numeric_limits<std::int64_t>::min()};

    std::mt19937_64 engine_;
};

} // namespace kelvo::support
