#include "kernel/Incidence.h"
#include "kernel/Model.h"
#include "kernel/PassQueue.h"

#include <utility>

namespace kelvo {

namespace {

using kernel_detail::Incidence;
using kernel_detail::Index;
using kernel_detail::otherEnd;
using kernel_detail::PassQueue;

enum class Imposes { effort, flow };

/// One run of the sequential causality assignment procedure over a structurally valid graph.
///
/// Each junction keeps count of its strong bonds (those that fix its common variable: at a
/// 0-junction a bond whose other end imposes the effort, at a 1-junction a bond on which it imposes
/// the effort itself) and of its bonds without stroke, so that a visit that changes nothing is
/// free.
class CausalAssignment {
public:
    explicit CausalAssignment(BondGraph& graph)
        : graph_(graph), incidence_(graph), queue_(graph.nodes.size()), tally_(graph.nodes.size()) {
    }

    tl::expected<void, GraphError> run() {
        overwriteSources();
        startTallies();
        if (auto done = propagateAll(); !done) return done;
        if (auto done = placeFree(isStorage); !done) return done;
        if (auto done = placeFree([](NodeKind kind) { return kind == NodeKind::R; }); !done) {
            return done;
        }
        return checkComplete();
    }

private:
    struct Tally {
        Index strong = 0;
        Index open = 0;
    };

    NodeKind kind(std::size_t node) const { return graph_.nodes[node].kind; }
    bool isOpen(Index bond) const { return graph_.bonds[bond].causality == Causality::unset; }
    bool setsEffort(std::size_t node, Index bond) const {
        const Bond& at = graph_.bonds[bond];
        return at.causality != Causality::unset &&
               (at.causality == Causality::aSetsEffort) == (std::cmp_equal(at.a, node));
    }
    bool isStrong(std::size_t node, Index bond) const {
        return !isOpen(bond) && setsEffort(node, bond) == (kind(node) == NodeKind::j1);
    }
    bool propagates(std::size_t node) const { return ports(kind(node)) != 1; }

    void mark(std::size_t node, Index bond, Imposes what) {
        Bond& at = graph_.bonds[bond];
        const bool byA = std::cmp_equal(at.a, node) == (what == Imposes::effort);
        at.causality = byA ? Causality::aSetsEffort : Causality::bSetsEffort;
    }

    /// Gives an open bond its stroke and notes what that means at both ends.
    void place(std::size_t node, Index bond, Imposes what) {
        mark(node, bond, what);
        const std::size_t other = otherEnd(graph_.bonds[bond], node);
        for (const std::size_t end : {node, other}) {
            --tally_[end].open;
            if (isStrong(end, bond)) ++tally_[end].strong;
        }
        if (propagates(other)) queue_.add(other);
    }

    void overwriteSources() {
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (!isSource(kind(i))) continue;
            mark(i, incidence_.at(i).front(),
                 kind(i) == NodeKind::Se ? Imposes::effort : Imposes::flow);
        }
    }

    void startTallies() {
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (propagates(i)) queue_.add(i);
            for (const Index bond : incidence_.at(i)) {
                if (isOpen(bond)) ++tally_[i].open;
                if (isStrong(i, bond)) ++tally_[i].strong;
            }
        }
    }

    template <class Wanted>
    tl::expected<void, GraphError> placeFree(Wanted wanted) {
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (!wanted(kind(i))) continue;
            const Index bond = incidence_.at(i).front();
            if (!isOpen(bond)) continue;
            place(i, bond, kind(i) == NodeKind::C ? Imposes::effort : Imposes::flow);
            if (auto done = propagateAll(); !done) return done;
        }
        return {};
    }

    tl::expected<void, GraphError> propagateAll() {
        while (const auto node = queue_.next()) {
            if (!isJunction(kind(*node))) {
                passThrough(*node);
            } else if (tally_[*node].strong >= 2) {
                return tl::unexpected(GraphError::overCausal(graph_.nodes[*node].id));
            } else {
                settleJunction(*node);
            }
        }
        return {};
    }

    void settleJunction(std::size_t node) {
        const bool commonEffort = kind(node) == NodeKind::j0;
        const Tally now = tally_[node];
        const bool decided = now.strong == 1 && now.open > 0;
        const bool lastChoice = now.strong == 0 && now.open == 1;
        if (!decided && !lastChoice) return;
        const Imposes what = decided == commonEffort ? Imposes::effort : Imposes::flow;
        for (const Index bond : incidence_.at(node)) {
            if (isOpen(bond)) place(node, bond, what);
        }
    }

    /// A transformer imposes effort on exactly one of its ports, a gyrator on both or on none.
    void passThrough(std::size_t node) {
        if (tally_[node].open != 1) return;
        const auto port = incidence_.at(node);
        const Index from = isOpen(port[0]) ? port[1] : port[0];
        const Index to = isOpen(port[0]) ? port[0] : port[1];
        const bool same = kind(node) == NodeKind::GY;
        place(node, to, setsEffort(node, from) == same ? Imposes::effort : Imposes::flow);
    }

    tl::expected<void, GraphError> checkComplete() const {
        for (const Bond& bond : graph_.bonds) {
            if (bond.causality != Causality::unset) continue;
            return tl::unexpected(GraphError::underCausal("bond " + std::to_string(bond.a) + "-" +
                                                          std::to_string(bond.b)));
        }
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (!isJunction(kind(i)) || tally_[i].strong == 1) continue;
            return tl::unexpected(tally_[i].strong == 0
                                      ? GraphError::underCausal(graph_.nodes[i].id)
                                      : GraphError::overCausal(graph_.nodes[i].id));
        }
        return {};
    }

    BondGraph& graph_;
    Incidence incidence_;
    PassQueue queue_;
    std::vector<Tally> tally_;
};

} // namespace

tl::expected<BondGraph, GraphError> BondGraph::assignCausality() const {
    if (auto sound = validateStructure(); !sound) {
        return tl::unexpected(std::move(sound.error()));
    }
    BondGraph causal = *this;
    if (auto done = CausalAssignment(causal).run(); !done) {
        return tl::unexpected(std::move(done.error()));
    }
    return causal;
}

} // namespace kelvo
