#pragma once

#include "kernel/Incidence.h"
#include "kernel/Model.h"

#include <span>
#include <vector>

namespace kelvo::kernel_detail {

/// A value with a sign. Negation is exact, so it travels with the reference at no cost.
struct Ref {
    Index value = 0;
    bool negated = false;

    Ref operator-() const { return {value, !negated}; }
};

/// One value of a relaxed graph, computed from values of lower index.
struct Value {
    enum class Kind { zero, source, state, product, quotient, sum };

    Kind kind = Kind::zero;
    bool dependsOnState = false;
    Index operand = 0;   ///< source slot or state variable; x of x·c and x/c; the start of a sum
    double constant = 0; ///< c of x·c and x/c
    Index firstTerm = 0; ///< sum: start + term + term …, added left to right
    Index termCount = 0;
};

/// What the relaxation of a graph computes, as a graph of values: which effort and which flow is
/// known in the end and by what arithmetic. It depends on structure and parameters only.
///
/// Value 0 is the number 0.0; what the relaxation does not reach refers to it.
struct Dataflow {
    /// Relaxes a causal graph. `sourceSlot` and `stateVariable` have one entry a node, meaningful
    /// at sources and at storage elements.
    Dataflow(const BondGraph& graph, const Incidence& incidence, std::span<const Index> sourceSlot,
             std::span<const Index> stateVariable);

    std::span<const Ref> termsOf(const Value& sum) const {
        return std::span(terms).subspan(sum.firstTerm, sum.termCount);
    }

    std::vector<Value> values;
    std::vector<Ref> terms;
    std::vector<Ref> effort; ///< one a bond
    std::vector<Ref> flow;   ///< one a bond
};

} // namespace kelvo::kernel_detail
