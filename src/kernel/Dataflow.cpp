#include "kernel/Dataflow.h"

#include "kernel/PassQueue.h"

#include <algorithm>

namespace kelvo::kernel_detail {

namespace {

/// All efforts or all flows during the relaxation, with the number still unknown at each node.
struct Variables {
    Variables(std::size_t bonds, const Incidence& incidence, std::size_t nodes)
        : known(bonds, false), unknownAt(nodes) {
        for (std::size_t i = 0; i < nodes; ++i)
            unknownAt[i] = incidence.degree(i);
    }

    std::vector<bool> known;
    std::vector<Index> unknownAt;
};

/// The relaxation itself, run on references to values instead of numbers. The first write to a
/// variable wins; nodes are visited in the order of full passes until nothing changes.
class Relaxation {
public:
    Relaxation(Dataflow& out, const BondGraph& graph, const Incidence& incidence)
        : out_(out), graph_(graph), incidence_(incidence),
          efforts_(graph.bonds.size(), incidence, graph.nodes.size()),
          flows_(graph.bonds.size(), incidence, graph.nodes.size()), queue_(graph.nodes.size()) {
        out_.values.emplace_back();
        out_.effort.resize(graph.bonds.size());
        out_.flow.resize(graph.bonds.size());
    }

    void run(std::span<const Index> sourceSlot, std::span<const Index> stateVariable) {
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            seed(i, sourceSlot[i], stateVariable[i]);
        }
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (relaxes(i)) queue_.add(i);
        }
        while (const auto node = queue_.next())
            visit(*node);
    }

private:
    bool relaxes(std::size_t node) const {
        const NodeKind kind = graph_.nodes[node].kind;
        return !isSource(kind) && !isStorage(kind);
    }

    double param(std::size_t node) const { return graph_.nodes[node].param.value_or(1.0); }

    void seed(std::size_t node, Index sourceSlot, Index stateVariable) {
        const NodeKind kind = graph_.nodes[node].kind;
        if (!isSource(kind) && !isStorage(kind)) return;
        Ref ref = isSource(kind) ? append({.kind = Value::Kind::source, .operand = sourceSlot})
                                 : append({.kind = Value::Kind::state,
                                           .dependsOnState = true,
                                           .operand = stateVariable});
        if (isStorage(kind)) ref = quotient(ref, param(node));
        const bool fixesEffort = kind == NodeKind::Se || kind == NodeKind::C;
        set(fixesEffort ? efforts_ : flows_, incidence_.at(node).front(), ref);
    }

    void visit(std::size_t node) {
        const auto bonds = incidence_.at(node);
        switch (graph_.nodes[node].kind) {
        case NodeKind::j0:
            junction(node, efforts_, flows_);
            break;
        case NodeKind::j1:
            junction(node, flows_, efforts_);
            break;
        case NodeKind::TF:
            transformer(bonds[0], bonds[1], param(node));
            break;
        case NodeKind::GY:
            gyrator(bonds[0], bonds[1], param(node));
            break;
        case NodeKind::R:
            resistor(bonds[0], param(node));
            break;
        case NodeKind::Se:
        case NodeKind::Sf:
        case NodeKind::C:
        case NodeKind::I:
            break;
        }
    }

    void junction(std::size_t node, Variables& common, Variables& balanced) {
        const auto bonds = incidence_.at(node);
        if (common.unknownAt[node] > 0 && common.unknownAt[node] < bonds.size()) {
            const auto first =
                std::ranges::find_if(bonds, [&](Index k) { return common.known[k]; });
            const Ref shared = at(common, *first);
            for (const Index k : bonds)
                set(common, k, shared);
        }
        if (balanced.unknownAt[node] != 1) return;
        const auto open = std::ranges::find_if(bonds, [&](Index k) { return !balanced.known[k]; });
        std::vector<Ref>& terms = termScratch_;
        terms.clear();
        for (const Index k : bonds) {
            if (k == *open) continue;
            const Ref ref = at(balanced, k);
            terms.push_back(pointsInto(graph_.bonds[k], node) ? ref : -ref);
        }
        const Ref total = sum(terms);
        set(balanced, *open, pointsInto(graph_.bonds[*open], node) ? -total : total);
    }

    void transformer(Index b0, Index b1, double m) {
        if (lacks(efforts_, b0, efforts_, b1)) set(efforts_, b0, product(out_.effort[b1], m));
        if (lacks(efforts_, b1, efforts_, b0)) set(efforts_, b1, quotient(out_.effort[b0], m));
        if (lacks(flows_, b1, flows_, b0)) set(flows_, b1, product(out_.flow[b0], m));
        if (lacks(flows_, b0, flows_, b1)) set(flows_, b0, quotient(out_.flow[b1], m));
    }

    void gyrator(Index b0, Index b1, double r) {
        if (lacks(efforts_, b0, flows_, b1)) set(efforts_, b0, product(out_.flow[b1], r));
        if (lacks(efforts_, b1, flows_, b0)) set(efforts_, b1, product(out_.flow[b0], r));
        if (lacks(flows_, b1, efforts_, b0)) set(flows_, b1, quotient(out_.effort[b0], r));
        if (lacks(flows_, b0, efforts_, b1)) set(flows_, b0, quotient(out_.effort[b1], r));
    }

    void resistor(Index bond, double resistance) {
        if (lacks(flows_, bond, efforts_, bond)) {
            set(flows_, bond, quotient(out_.effort[bond], resistance));
        }
        if (lacks(efforts_, bond, flows_, bond)) {
            set(efforts_, bond, product(out_.flow[bond], resistance));
        }
    }

    static bool lacks(const Variables& wanted, Index bond, const Variables& given, Index from) {
        return !wanted.known[bond] && given.known[from];
    }

    Ref& at(const Variables& which, Index bond) {
        return &which == &efforts_ ? out_.effort[bond] : out_.flow[bond];
    }

    void set(Variables& which, Index bond, Ref to) {
        if (which.known[bond]) return;
        which.known[bond] = true;
        at(which, bond) = to;
        const Bond& ends = graph_.bonds[bond];
        for (const auto end :
             {static_cast<std::size_t>(ends.a), static_cast<std::size_t>(ends.b)}) {
            --which.unknownAt[end];
            if (relaxes(end)) queue_.add(end);
        }
    }

    Ref append(const Value& value) {
        out_.values.push_back(value);
        return {static_cast<Index>(out_.values.size() - 1), false};
    }

    bool dependsOnState(Ref ref) const { return out_.values[ref.value].dependsOnState; }

    Ref scaled(Value::Kind kind, Ref x, double c) {
        if (c == 1.0) return x;
        if (c == -1.0) return -x;
        const Ref result = append(
            {.kind = kind, .dependsOnState = dependsOnState(x), .operand = x.value, .constant = c});
        return x.negated ? -result : result;
    }

    Ref product(Ref x, double c) { return scaled(Value::Kind::product, x, c); }

    Ref quotient(Ref x, double c) { return scaled(Value::Kind::quotient, x, c); }

    /// 0.0 + term + term …; what leads and does not depend on the state becomes a sum of its own,
    /// which changes only when a source does.
    Ref sum(std::span<const Ref> terms) {
        const auto firstDynamic =
            std::ranges::find_if(terms, [&](Ref term) { return dependsOnState(term); });
        const auto leading = static_cast<std::size_t>(firstDynamic - terms.begin());
        Index start = 0;
        if (leading > 0 && leading < terms.size()) {
            start = appendSum(0, terms.first(leading), false).value;
            terms = terms.subspan(leading);
        }
        return appendSum(start, terms, firstDynamic != terms.end());
    }

    Ref appendSum(Index start, std::span<const Ref> terms, bool dynamic) {
        const auto first = static_cast<Index>(out_.terms.size());
        out_.terms.insert(out_.terms.end(), terms.begin(), terms.end());
        return append({.kind = Value::Kind::sum,
                       .dependsOnState = dynamic,
                       .operand = start,
                       .firstTerm = first,
                       .termCount = static_cast<Index>(terms.size())});
    }

    Dataflow& out_;
    const BondGraph& graph_;
    const Incidence& incidence_;
    Variables efforts_;
    Variables flows_;
    PassQueue queue_;
    std::vector<Ref> termScratch_;
};

} // namespace

Dataflow::Dataflow(const BondGraph& graph, const Incidence& incidence,
                   std::span<const Index> sourceSlot, std::span<const Index> stateVariable) {
    Relaxation(*this, graph, incidence).run(sourceSlot, stateVariable);
}

} // namespace kelvo::kernel_detail
