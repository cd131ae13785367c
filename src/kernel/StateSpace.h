#pragma once

#include "kernel/Model.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// What a state variable stands for: the charge q of a capacitor, the momentum p of an inertance.
enum class StateKind { charge, momentum };

/// One state variable and the storage element it belongs to.
struct StateVar {
    std::int64_t nodeIdx = 0; ///< the storage node's position in the graph
    std::string nodeID;
    StateKind kind{};
    double param = 1.0;    ///< capacitance or inertance, 1.0 where the node has none
    std::int64_t bond = 0; ///< the bond that the variable lives on

    bool operator==(const StateVar&) const = default;
};

/// Source values by node id: the effort of an Se, the flow of an Sf. A source without an entry
/// drives with 0; entries that name no source are ignored.
using Sources = std::map<std::string, double, std::less<>>;

/// One evaluation of a model.
struct Eval {
    std::vector<double> dx;     ///< time derivative of each state variable
    std::vector<double> effort; ///< effort on each bond, 0 where nothing determines it
    std::vector<double> flow;   ///< flow on each bond, 0 where nothing determines it
    double sourcePower = 0;     ///< power delivered by all sources
    double storedRate = 0;      ///< rate of change of the stored energy
    double dissipated = 0;      ///< power dissipated in all resistors, Σ R·f²
};

namespace kernel_detail {
struct Model;
}

/// A bond graph as a numerical model: causal strokes assigned, state variables chosen (q of each C,
/// p of each I, in node order), and its evaluation compiled.
///
/// The evaluation seeds what elements fix themselves (source values, e = q/C, f = p/I) and then
/// relaxes junction, transformer, gyrator and resistor relations in node order until nothing more
/// can be worked out. Which variables that reaches depends on structure only, so construction
/// relaxes once and records the arithmetic; every evaluation replays it with the same operations
/// on the same operands in the same order as the relaxation itself, to the last bit (of a result
/// that is not a number neither sign nor payload is fixed).
///
/// Immutable; copies share their content and are cheap. Any thread may evaluate.
class StateSpace {
public:
    /// Fails with the errors of `BondGraph::assignCausality`.
    static tl::expected<StateSpace, GraphError> create(const BondGraph& graph);

    /// The causal graph, not the one that was passed in.
    const BondGraph& graph() const;
    const std::vector<StateVar>& states() const;

    /// Evaluates the model. `state` has one entry a state variable; missing entries count as 0 and
    /// further ones are ignored.
    Eval derivatives(std::span<const double> state, const Sources& sources) const;

    /// Σ x²/(2·param) over the state variables; missing entries of `state` count as 0.
    double storedEnergy(std::span<const double> state) const;

    /// The distinct ids of the graph's sources in node order. Their positions are the source slots
    /// that a `SourceFunction` fills.
    const std::vector<std::string>& sourceIds() const;
    /// The slot of the sources with this id; none when the graph has no such source.
    std::optional<std::size_t> sourceSlot(std::string_view id) const;

private:
    friend class Integrator;
    explicit StateSpace(std::shared_ptr<const kernel_detail::Model> model);

    std::shared_ptr<const kernel_detail::Model> model_;
};

} // namespace kelvo
