#include "support/KernelReference.h"

#include <map>
#include <utility>

namespace kelvo::reference {

namespace {

using Incident = std::vector<std::size_t>;

Incident incidentBonds(const BondGraph& graph, std::size_t node) {
    Incident incident;
    for (std::size_t k = 0; k < graph.bonds.size(); ++k) {
        if (std::cmp_equal(graph.bonds[k].a, node) || std::cmp_equal(graph.bonds[k].b, node)) {
            incident.push_back(k);
        }
    }
    return incident;
}

class Assignment {
public:
    explicit Assignment(BondGraph graph) : graph_(std::move(graph)) {}

    tl::expected<BondGraph, GraphError> run() {
        placeSources();
        if (!propagateAll()) return tl::unexpected(error_);
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (!isStorage(kind(i))) continue;
            const std::size_t k = incidentBonds(graph_, i).front();
            if (!unset(k)) continue;
            place(k, i, kind(i) == NodeKind::C);
            if (!propagateAll()) return tl::unexpected(error_);
        }
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (kind(i) != NodeKind::R) continue;
            const std::size_t k = incidentBonds(graph_, i).front();
            if (!unset(k)) continue;
            place(k, i, false);
            if (!propagateAll()) return tl::unexpected(error_);
        }
        if (!complete()) return tl::unexpected(error_);
        return graph_;
    }

private:
    NodeKind kind(std::size_t node) const { return graph_.nodes[node].kind; }
    bool unset(std::size_t bond) const { return graph_.bonds[bond].causality == Causality::unset; }
    bool nodeSetsEffort(std::size_t bond, std::size_t node) const {
        const Bond& at = graph_.bonds[bond];
        return (std::cmp_equal(at.a, node) && at.causality == Causality::aSetsEffort) ||
               (std::cmp_equal(at.b, node) && at.causality == Causality::bSetsEffort);
    }
    /// Places the stroke so that the node sets the bond's effort, else its flow.
    void place(std::size_t bond, std::size_t node, bool setsEffort) {
        const bool isA = std::cmp_equal(graph_.bonds[bond].a, node);
        graph_.bonds[bond].causality =
            isA == setsEffort ? Causality::aSetsEffort : Causality::bSetsEffort;
    }

    void placeSources() {
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (isSource(kind(i)))
                place(incidentBonds(graph_, i).front(), i, kind(i) == NodeKind::Se);
        }
    }

    std::size_t strongBonds(std::size_t node, const Incident& incident) const {
        std::size_t strong = 0;
        for (const std::size_t k : incident) {
            if (unset(k)) continue;
            if (nodeSetsEffort(k, node) == (kind(node) == NodeKind::j1)) ++strong;
        }
        return strong;
    }

    bool propagateAll() {
        for (bool changed = true; changed;) {
            changed = false;
            for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
                if (isJunction(kind(i))) {
                    if (!junction(i, changed)) return false;
                } else if (kind(i) == NodeKind::TF || kind(i) == NodeKind::GY) {
                    twoPort(i, changed);
                }
            }
        }
        return true;
    }

    bool junction(std::size_t node, bool& changed) {
        const Incident incident = incidentBonds(graph_, node);
        const bool commonEffort = kind(node) == NodeKind::j0;
        const std::size_t strong = strongBonds(node, incident);
        if (strong >= 2) {
            error_ = GraphError::overCausal(graph_.nodes[node].id);
            return false;
        }
        Incident open;
        for (const std::size_t k : incident) {
            if (unset(k)) open.push_back(k);
        }
        if (strong == 1) {
            for (const std::size_t k : open) {
                place(k, node, commonEffort);
                changed = true;
            }
        } else if (open.size() == 1) {
            place(open.front(), node, !commonEffort);
            changed = true;
        }
        return true;
    }

    void twoPort(std::size_t node, bool& changed) {
        const Incident incident = incidentBonds(graph_, node);
        if (incident.size() != 2) return;
        for (const auto& [from, to] :
             {std::pair{incident[0], incident[1]}, std::pair{incident[1], incident[0]}}) {
            if (unset(from) || !unset(to)) continue;
            const bool gyrator = kind(node) == NodeKind::GY;
            place(to, node, nodeSetsEffort(from, node) == gyrator);
            changed = true;
            return;
        }
    }

    bool complete() {
        for (std::size_t k = 0; k < graph_.bonds.size(); ++k) {
            if (!unset(k)) continue;
            error_ = GraphError::underCausal("bond " + std::to_string(graph_.bonds[k].a) + "-" +
                                             std::to_string(graph_.bonds[k].b));
            return false;
        }
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            if (!isJunction(kind(i))) continue;
            const std::size_t strong = strongBonds(i, incidentBonds(graph_, i));
            if (strong == 1) continue;
            error_ = strong == 0 ? GraphError::underCausal(graph_.nodes[i].id)
                                 : GraphError::overCausal(graph_.nodes[i].id);
            return false;
        }
        return true;
    }

    BondGraph graph_;
    GraphError error_;
};

double sigma(const BondGraph& graph, std::size_t node, std::size_t bond) {
    const Bond& at = graph.bonds[bond];
    const bool into = (std::cmp_equal(at.b, node) && at.powerAToB) ||
                      (std::cmp_equal(at.a, node) && !at.powerAToB);
    return into ? 1.0 : -1.0;
}

/// One kind of bond variable, all efforts or all flows.
struct Variables {
    explicit Variables(std::size_t bonds) : value(bonds, 0.0), known(bonds, false) {}

    /// The first write wins. True when it was this one.
    bool set(std::size_t bond, double to) {
        if (known[bond]) return false;
        value[bond] = to;
        known[bond] = true;
        return true;
    }

    std::vector<double> value;
    std::vector<bool> known;
};

class Relaxation {
public:
    explicit Relaxation(const BondGraph& graph)
        : graph_(graph), effort(graph.bonds.size()), flow(graph.bonds.size()) {}

    void seed(const std::map<std::size_t, double>& stateOf, const Sources& sources) {
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
            const Incident incident = incidentBonds(graph_, i);
            if (incident.empty()) continue;
            const std::size_t j = incident.front();
            const Node& node = graph_.nodes[i];
            const auto source = sources.find(node.id);
            const double drive = source == sources.end() ? 0.0 : source->second;
            const auto held = stateOf.find(i);
            const double x = held == stateOf.end() ? 0.0 : held->second;
            const double p = node.param.value_or(1.0);
            switch (node.kind) {
            case NodeKind::Se:
                effort.set(j, drive);
                break;
            case NodeKind::Sf:
                flow.set(j, drive);
                break;
            case NodeKind::C:
                effort.set(j, x / p);
                break;
            case NodeKind::I:
                flow.set(j, x / p);
                break;
            default:
                break;
            }
        }
    }

    void run() {
        const std::size_t limit = 4 * graph_.bonds.size() + 8;
        for (std::size_t pass = 0; pass < limit && !graph_.nodes.empty(); ++pass) {
            bool changed = false;
            for (std::size_t i = 0; i < graph_.nodes.size(); ++i)
                changed |= visit(i);
            if (!changed) return;
        }
    }

private:
    bool visit(std::size_t node) {
        const Incident incident = incidentBonds(graph_, node);
        const double p = graph_.nodes[node].param.value_or(1.0);
        switch (graph_.nodes[node].kind) {
        case NodeKind::j0:
            return junction(node, incident, effort, flow);
        case NodeKind::j1:
            return junction(node, incident, flow, effort);
        case NodeKind::TF:
            return incident.size() == 2 && transformer(incident[0], incident[1], p);
        case NodeKind::GY:
            return incident.size() == 2 && gyrator(incident[0], incident[1], p);
        case NodeKind::R:
            return !incident.empty() && resistor(incident.front(), p);
        default:
            return false;
        }
    }

    bool junction(std::size_t node, const Incident& incident, Variables& common,
                  Variables& balanced) {
        bool changed = false;
        for (const std::size_t k : incident) {
            if (!common.known[k]) continue;
            for (const std::size_t other : incident) {
                changed |= common.set(other, common.value[k]);
            }
            break;
        }
        Incident open;
        for (const std::size_t k : incident) {
            if (!balanced.known[k]) open.push_back(k);
        }
        if (open.size() != 1) return changed;
        const std::size_t u = open.front();
        double sum = 0.0;
        for (const std::size_t k : incident) {
            if (k != u) sum += sigma(graph_, node, k) * balanced.value[k];
        }
        return balanced.set(u, -sum / sigma(graph_, node, u));
    }

    bool transformer(std::size_t b0, std::size_t b1, double m) {
        bool changed = false;
        if (effort.known[b1]) changed |= effort.set(b0, m * effort.value[b1]);
        if (effort.known[b0]) changed |= effort.set(b1, effort.value[b0] / m);
        if (flow.known[b0]) changed |= flow.set(b1, m * flow.value[b0]);
        if (flow.known[b1]) changed |= flow.set(b0, flow.value[b1] / m);
        return changed;
    }

    bool gyrator(std::size_t b0, std::size_t b1, double r) {
        bool changed = false;
        if (flow.known[b1]) changed |= effort.set(b0, r * flow.value[b1]);
        if (flow.known[b0]) changed |= effort.set(b1, r * flow.value[b0]);
        if (effort.known[b0]) changed |= flow.set(b1, effort.value[b0] / r);
        if (effort.known[b1]) changed |= flow.set(b0, effort.value[b1] / r);
        return changed;
    }

    bool resistor(std::size_t bond, double resistance) {
        bool changed = false;
        if (effort.known[bond]) changed |= flow.set(bond, effort.value[bond] / resistance);
        if (flow.known[bond]) changed |= effort.set(bond, resistance * flow.value[bond]);
        return changed;
    }

    const BondGraph& graph_;

public:
    Variables effort;
    Variables flow;
};

std::vector<double> add(const std::vector<double>& x, const std::vector<double>& k, double h) {
    std::vector<double> sum(x);
    for (std::size_t i = 0; i < x.size(); ++i)
        sum[i] = x[i] + h * k[i];
    return sum;
}

} // namespace

tl::expected<BondGraph, GraphError> assignCausality(const BondGraph& graph) {
    if (auto sound = graph.validateStructure(); !sound) return tl::unexpected(sound.error());
    return Assignment(graph).run();
}

tl::expected<StateSpace, GraphError> StateSpace::create(const BondGraph& graph) {
    auto causal = reference::assignCausality(graph);
    if (!causal) return tl::unexpected(causal.error());
    StateSpace space{std::move(*causal), {}};
    for (std::size_t i = 0; i < space.graph.nodes.size(); ++i) {
        const Node& node = space.graph.nodes[i];
        if (!isStorage(node.kind)) continue;
        space.states.push_back(
            {.nodeIdx = static_cast<std::int64_t>(i),
             .nodeID = node.id,
             .kind = node.kind == NodeKind::C ? StateKind::charge : StateKind::momentum,
             .param = node.param.value_or(1.0),
             .bond = static_cast<std::int64_t>(incidentBonds(space.graph, i).front())});
    }
    return space;
}

Eval StateSpace::derivatives(std::span<const double> state, const Sources& sources) const {
    std::map<std::size_t, double> stateOf;
    for (std::size_t k = 0; k < states.size() && k < state.size(); ++k) {
        stateOf[static_cast<std::size_t>(states[k].nodeIdx)] = state[k];
    }
    Relaxation relaxed(graph);
    relaxed.seed(stateOf, sources);
    relaxed.run();

    Eval eval;
    eval.effort = relaxed.effort.value;
    eval.flow = relaxed.flow.value;
    for (const StateVar& variable : states) {
        const auto j = static_cast<std::size_t>(variable.bond);
        const double s = sigma(graph, static_cast<std::size_t>(variable.nodeIdx), j);
        eval.dx.push_back(s * (variable.kind == StateKind::charge ? eval.flow[j] : eval.effort[j]));
        eval.storedRate += eval.effort[j] * s * eval.flow[j];
    }
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        const Incident incident = incidentBonds(graph, i);
        if (incident.empty()) continue;
        const std::size_t j = incident.front();
        if (isSource(node.kind)) {
            const Bond& bond = graph.bonds[j];
            const auto other =
                static_cast<std::size_t>(std::cmp_equal(bond.a, i) ? bond.b : bond.a);
            eval.sourcePower += eval.flow[j] * eval.effort[j] * sigma(graph, other, j);
        }
        if (node.kind == NodeKind::R) {
            eval.dissipated += eval.flow[j] * node.param.value_or(1.0) * eval.flow[j];
        }
    }
    return eval;
}

void Integrator::step(double h) {
    const std::vector<double> x = state;
    const double half = h * 0.5;
    const double atHalf = half + t;
    const double d0 = space.derivatives(x, sources(t)).dissipated;
    const std::vector<double> k1 = space.derivatives(x, sources(t)).dx;
    const std::vector<double> k2 = space.derivatives(add(x, k1, half), sources(atHalf)).dx;
    const std::vector<double> k3 = space.derivatives(add(x, k2, half), sources(atHalf)).dx;
    const std::vector<double> k4 = space.derivatives(add(x, k3, h), sources(t + h)).dx;
    for (std::size_t i = 0; i < x.size(); ++i) {
        state[i] = x[i] + (h / 6) * (k4[i] + k1[i] + k2[i] + k2[i] + k3[i] + k3[i]);
    }
    const double d1 = space.derivatives(state, sources(t + h)).dissipated;
    risk += h * (d0 + d1) * 0.5;
    t += h;
}

} // namespace kelvo::reference
