#pragma once

#include <tl/expected.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// The nine bond-graph elements: effort and flow source, resistor, capacitor, inertance,
/// transformer, gyrator, 0-junction (common effort) and 1-junction (common flow).
enum class NodeKind { Se, Sf, R, C, I, TF, GY, j0, j1 };

/// The kind written as `text` ("Se", "TF", "j0" …), exactly and case-sensitively; none if unknown.
std::optional<NodeKind> nodeKind(std::string_view text);
/// The short symbol of a kind, its only textual form.
std::string_view rawValue(NodeKind kind);
/// The exact number of bonds an element needs; none for junctions, which take two or more.
std::optional<int> ports(NodeKind kind);
bool isSource(NodeKind kind);
bool isStorage(NodeKind kind);
bool isJunction(NodeKind kind);

/// One element. `param` is the resistance, capacitance, inertance or modulus; the kernel computes
/// with 1.0 where it is absent and never reads that of a source or a junction.
struct Node {
    std::string id;
    NodeKind kind{};
    std::optional<double> param{};

    bool operator==(const Node&) const = default;
};

/// The causal stroke of a bond: which end imposes the effort and so receives the flow.
enum class Causality { unset, aSetsEffort, bSetsEffort };

/// The causality written as `text` ("unset", "aSetsEffort", "bSetsEffort"); none if unknown.
std::optional<Causality> causality(std::string_view text);
std::string_view rawValue(Causality causality);

/// A power bond between `nodes[a]` and `nodes[b]`. The half arrow `powerAToB` fixes the sign of
/// power only; for structure the bond has no direction. Any index can be held; validation judges
/// it.
struct Bond {
    std::int64_t a = 0;
    std::int64_t b = 0;
    Causality causality = Causality::unset;
    bool powerAToB = true;

    bool operator==(const Bond&) const = default;
};

/// Why a graph has no equations. Which payload fields count depends on `fault`; the others keep
/// their defaults, so that equality is that of fault and payload.
struct GraphError {
    enum class Fault { badIndex, selfLoop, arity, junctionDegree, overCausal, underCausal };

    static GraphError badIndex(std::int64_t index);
    static GraphError selfLoop(std::int64_t index);
    static GraphError arity(std::string id, std::int64_t needed, std::int64_t has);
    static GraphError junctionDegree(std::string id, std::int64_t degree);
    static GraphError overCausal(std::string id);
    static GraphError underCausal(std::string idOrBondLabel);

    /// The text shown to a person.
    std::string description() const;

    bool operator==(const GraphError&) const = default;

    Fault fault{};
    std::string id{};       ///< node id or bond label: arity, junctionDegree, over- and underCausal
    std::int64_t index = 0; ///< node index: badIndex, selfLoop
    std::int64_t needed = 0; ///< ports needed: arity
    std::int64_t has = 0;    ///< bonds present: arity, junctionDegree
};

/// A bond graph: elements, and bonds that refer to them by position. A plain value.
struct BondGraph {
    std::vector<Node> nodes;
    std::vector<Bond> bonds;

    /// The number of bond ends at each node, one entry a node. Ends that name no node are not
    /// counted.
    std::vector<std::int64_t> degrees() const;

    /// Checks indices and self-loops in bond order, then ports and junction degrees in node order;
    /// the first fault is the error. Parameters, causality and connectivity are not looked at.
    tl::expected<void, GraphError> validateStructure() const;

    /// A copy in which every bond has its causal stroke, by the sequential causality assignment
    /// procedure (sources, storage with integral causality preferred, resistors; see Karnopp,
    /// Margolis and Rosenberg, System Dynamics, ch. 5). Strokes present on the input stay, except
    /// those at sources. Fails with the first structural fault, or where a junction has no or more
    /// than one strong bond, or where a bond stays without stroke. Linear in the size of the graph.
    tl::expected<BondGraph, GraphError> assignCausality() const;

    /// The index of the node that imposes the effort on a bond: its `a` for `aSetsEffort`, else its
    /// `b`. -1 when there is no such bond.
    std::int64_t effortSourceNode(std::int64_t bond) const;

    bool operator==(const BondGraph&) const = default;
};

/// The constitutive laws of the three passive one-ports.
namespace Constitutive {
/// e = R·f
double resistor(double R, double flow);
/// e = q/C
double capacitorEffort(double q, double C);
/// f = p/I
double inertanceFlow(double p, double I);
} // namespace Constitutive

} // namespace kelvo
