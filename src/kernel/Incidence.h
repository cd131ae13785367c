#pragma once

#include "kernel/Model.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kelvo::kernel_detail {

/// A position in a list of nodes, bonds, values or slots.
using Index = std::uint32_t;

/// The bonds at each node in bond order, in one array.
class Incidence {
public:
    /// The graph must have passed `validateStructure`.
    explicit Incidence(const BondGraph& graph) : offset_(graph.nodes.size() + 1, 0) {
        for (const Bond& bond : graph.bonds) {
            ++offset_[static_cast<std::size_t>(bond.a) + 1];
            ++offset_[static_cast<std::size_t>(bond.b) + 1];
        }
        for (std::size_t i = 1; i < offset_.size(); ++i)
            offset_[i] += offset_[i - 1];
        bonds_.resize(2 * graph.bonds.size());
        std::vector<Index> next(offset_.begin(), offset_.end() - 1);
        for (std::size_t k = 0; k < graph.bonds.size(); ++k) {
            bonds_[next[static_cast<std::size_t>(graph.bonds[k].a)]++] = static_cast<Index>(k);
            bonds_[next[static_cast<std::size_t>(graph.bonds[k].b)]++] = static_cast<Index>(k);
        }
    }

    std::span<const Index> at(std::size_t node) const {
        return std::span(bonds_).subspan(offset_[node], offset_[node + 1] - offset_[node]);
    }
    Index degree(std::size_t node) const { return offset_[node + 1] - offset_[node]; }

private:
    std::vector<Index> offset_;
    std::vector<Index> bonds_;
};

/// The other end of a bond.
inline std::size_t otherEnd(const Bond& bond, std::size_t node) {
    return static_cast<std::size_t>(static_cast<std::size_t>(bond.a) == node ? bond.b : bond.a);
}

/// True when the power half arrow points into the node, which is an end of the bond: sigma = +1.
inline bool pointsInto(const Bond& bond, std::size_t node) {
    return (static_cast<std::size_t>(bond.b) == node) == bond.powerAToB;
}

} // namespace kelvo::kernel_detail
