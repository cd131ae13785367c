#include "kernel/StateSpaceModel.h"

#include <algorithm>
#include <utility>

namespace kelvo {

using kernel_detail::Dataflow;
using kernel_detail::Incidence;
using kernel_detail::Index;
using kernel_detail::Model;
using kernel_detail::Outputs;
using kernel_detail::Program;
using kernel_detail::Ref;

namespace {

double sigma(const Bond& bond, std::size_t node) {
    return kernel_detail::pointsInto(bond, node) ? 1.0 : -1.0;
}

Model build(BondGraph causal) {
    Model model{.graph = std::move(causal)};
    const BondGraph& graph = model.graph;
    const Incidence incidence(graph);
    std::vector<Index> sourceSlot(graph.nodes.size(), 0);
    std::vector<Index> stateVariable(graph.nodes.size(), 0);
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        if (isSource(node.kind)) {
            const Index bond = incidence.at(i).front();
            const auto [entry, isNew] = model.slotOfSource.emplace(node.id, model.sourceIds.size());
            if (isNew) model.sourceIds.push_back(node.id);
            sourceSlot[i] = static_cast<Index>(entry->second);
            const std::size_t other = kernel_detail::otherEnd(graph.bonds[bond], i);
            model.driven.push_back({bond, sigma(graph.bonds[bond], other)});
        }
        if (isStorage(node.kind)) {
            const Index bond = incidence.at(i).front();
            stateVariable[i] = static_cast<Index>(model.states.size());
            model.states.push_back(
                {.nodeIdx = static_cast<std::int64_t>(i),
                 .nodeID = node.id,
                 .kind = node.kind == NodeKind::C ? StateKind::charge : StateKind::momentum,
                 .param = node.param.value_or(1.0),
                 .bond = bond});
            model.stored.push_back({bond, sigma(graph.bonds[bond], i)});
        }
    }

    const Dataflow dataflow(graph, incidence, sourceSlot, stateVariable);
    Outputs outputs{.sourceCount = static_cast<Index>(model.sourceIds.size())};
    for (std::size_t k = 0; k < model.states.size(); ++k) {
        const auto& [bond, sign] = model.stored[k];
        const bool charge = model.states[k].kind == StateKind::charge;
        const Ref ref = charge ? dataflow.flow[bond] : dataflow.effort[bond];
        outputs.dx.push_back(sign < 0 ? -ref : ref);
    }
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        if (graph.nodes[i].kind != NodeKind::R) continue;
        outputs.losses.push_back(
            {dataflow.flow[incidence.at(i).front()], graph.nodes[i].param.value_or(1.0)});
    }
    model.program = kernel_detail::compile(dataflow, outputs);
    return model;
}

} // namespace

StateSpace::StateSpace(std::shared_ptr<const Model> model) : model_(std::move(model)) {
}

tl::expected<StateSpace, GraphError> StateSpace::create(const BondGraph& graph) {
    auto causal = graph.assignCausality();
    if (!causal) return tl::unexpected(std::move(causal.error()));
    return StateSpace(std::make_shared<const Model>(build(std::move(*causal))));
}

const BondGraph& StateSpace::graph() const {
    return model_->graph;
}

const std::vector<StateVar>& StateSpace::states() const {
    return model_->states;
}

const std::vector<std::string>& StateSpace::sourceIds() const {
    return model_->sourceIds;
}

std::optional<std::size_t> StateSpace::sourceSlot(std::string_view id) const {
    const auto found = model_->slotOfSource.find(id);
    if (found == model_->slotOfSource.end()) return std::nullopt;
    return found->second;
}

Eval StateSpace::derivatives(std::span<const double> state, const Sources& sources) const {
    const Program& program = model_->program;
    std::vector<double> slots(program.allSlots, 0.0);
    for (const auto& [id, value] : sources) {
        if (const auto slot = sourceSlot(id)) slots[Program::firstSource + *slot] = value;
    }
    const std::size_t given = std::min(state.size(), program.stateSlot.size());
    for (std::size_t k = 0; k < given; ++k)
        slots[program.stateSlot[k]] = state[k];
    program.hoisted.play(slots.data());
    program.derivative.play(slots.data());
    program.rate.play(slots.data());
    program.rest.play(slots.data());

    Eval eval;
    eval.dx.reserve(program.stateSlot.size());
    for (const Index slot : program.stateSlot) {
        eval.dx.push_back(program.dx.slots()[slot - program.firstState].read(slots.data()));
    }
    eval.effort.reserve(program.effort.size());
    eval.flow.reserve(program.flow.size());
    for (const auto at : program.effort)
        eval.effort.push_back(at.read(slots.data()));
    for (const auto at : program.flow)
        eval.flow.push_back(at.read(slots.data()));
    for (const auto& [bond, sign] : model_->stored) {
        eval.storedRate += eval.effort[bond] * sign * eval.flow[bond];
    }
    for (const auto& [bond, sign] : model_->driven) {
        eval.sourcePower += eval.flow[bond] * eval.effort[bond] * sign;
    }
    eval.dissipated = program.dissipated(slots.data());
    return eval;
}

double StateSpace::storedEnergy(std::span<const double> state) const {
    const std::vector<StateVar>& variables = model_->states;
    double sum = 0;
    for (std::size_t k = 0; k < variables.size(); ++k) {
        const double x = k < state.size() ? state[k] : 0.0;
        sum += x * x / (2 * variables[k].param);
    }
    return sum;
}

} // namespace kelvo
