#include "kernel/StateSpace.h"

#include "kernel/Literal.h"

#include <algorithm>

namespace kelvo {

namespace kernel_detail {
struct Model {
    reference::StateSpace space;
    std::vector<std::string> sourceIds;
};
} // namespace kernel_detail

StateSpace::StateSpace(std::shared_ptr<const kernel_detail::Model> model)
    : model_(std::move(model)) {
}

tl::expected<StateSpace, GraphError> StateSpace::create(const BondGraph& graph) {
    auto space = reference::StateSpace::create(graph);
    if (!space) return tl::unexpected(space.error());
    kernel_detail::Model model{std::move(*space), {}};
    for (const Node& node : model.space.graph.nodes) {
        if (isSource(node.kind) &&
            std::ranges::find(model.sourceIds, node.id) == model.sourceIds.end()) {
            model.sourceIds.push_back(node.id);
        }
    }
    return StateSpace(std::make_shared<const kernel_detail::Model>(std::move(model)));
}

const BondGraph& StateSpace::graph() const {
    return model_->space.graph;
}
const std::vector<StateVar>& StateSpace::states() const {
    return model_->space.states;
}
const std::vector<std::string>& StateSpace::sourceIds() const {
    return model_->sourceIds;
}

std::optional<std::size_t> StateSpace::sourceSlot(std::string_view id) const {
    const auto found = std::ranges::find(model_->sourceIds, id);
    if (found == model_->sourceIds.end()) return std::nullopt;
    return static_cast<std::size_t>(found - model_->sourceIds.begin());
}

Eval StateSpace::derivatives(std::span<const double> state, const Sources& sources) const {
    return model_->space.derivatives(state, sources);
}

double StateSpace::storedEnergy(std::span<const double> state) const {
    double sum = 0;
    const std::size_t n = std::min(state.size(), states().size());
    for (std::size_t k = 0; k < n; ++k)
        sum += state[k] * state[k] / (2 * states()[k].param);
    return sum;
}

} // namespace kelvo
