#include "kernel/Model.h"

#include <array>
#include <utility>

namespace kelvo {

namespace {

constexpr std::array<std::pair<NodeKind, std::string_view>, 9> kindNames{{
    {NodeKind::Se, "Se"},
    {NodeKind::Sf, "Sf"},
    {NodeKind::R, "R"},
    {NodeKind::C, "C"},
    {NodeKind::I, "I"},
    {NodeKind::TF, "TF"},
    {NodeKind::GY, "GY"},
    {NodeKind::j0, "j0"},
    {NodeKind::j1, "j1"},
}};

constexpr std::array<std::pair<Causality, std::string_view>, 3> causalityNames{{
    {Causality::unset, "unset"},
    {Causality::aSetsEffort, "aSetsEffort"},
    {Causality::bSetsEffort, "bSetsEffort"},
}};

template <class Table>
auto valueNamed(const Table& table, std::string_view text)
    -> std::optional<typename Table::value_type::first_type> {
    for (const auto& [value, name] : table) {
        if (name == text) return value;
    }
    return std::nullopt;
}

template <class Table, class Value>
std::string_view nameOf(const Table& table, Value value) {
    for (const auto& [each, name] : table) {
        if (each == value) return name;
    }
    return {};
}

} // namespace

std::optional<NodeKind> nodeKind(std::string_view text) {
    return valueNamed(kindNames, text);
}

std::string_view rawValue(NodeKind kind) {
    return nameOf(kindNames, kind);
}

std::optional<int> ports(NodeKind kind) {
    switch (kind) {
    case NodeKind::TF:
    case NodeKind::GY:
        return 2;
    case NodeKind::j0:
    case NodeKind::j1:
        return std::nullopt;
    case NodeKind::Se:
    case NodeKind::Sf:
    case NodeKind::R:
    case NodeKind::C:
    case NodeKind::I:
        break;
    }
    return 1;
}

bool isSource(NodeKind kind) {
    return kind == NodeKind::Se || kind == NodeKind::Sf;
}

bool isStorage(NodeKind kind) {
    return kind == NodeKind::C || kind == NodeKind::I;
}

bool isJunction(NodeKind kind) {
    return kind == NodeKind::j0 || kind == NodeKind::j1;
}

std::optional<Causality> causality(std::string_view text) {
    return valueNamed(causalityNames, text);
}

std::string_view rawValue(Causality causality) {
    return nameOf(causalityNames, causality);
}

GraphError GraphError::badIndex(std::int64_t index) {
    return {.fault = Fault::badIndex, .index = index};
}

GraphError GraphError::selfLoop(std::int64_t index) {
    return {.fault = Fault::selfLoop, .index = index};
}

GraphError GraphError::arity(std::string id, std::int64_t needed, std::int64_t has) {
    return {.fault = Fault::arity, .id = std::move(id), .needed = needed, .has = has};
}

GraphError GraphError::junctionDegree(std::string id, std::int64_t degree) {
    return {.fault = Fault::junctionDegree, .id = std::move(id), .has = degree};
}

GraphError GraphError::overCausal(std::string id) {
    return {.fault = Fault::overCausal, .id = std::move(id)};
}

GraphError GraphError::underCausal(std::string idOrBondLabel) {
    return {.fault = Fault::underCausal, .id = std::move(idOrBondLabel)};
}

std::string GraphError::description() const {
    switch (fault) {
    case Fault::badIndex:
        return "bond references out-of-range node index " + std::to_string(index);
    case Fault::selfLoop:
        return "node " + std::to_string(index) + " bonds to itself";
    case Fault::arity:
        return "element " + id + " needs " + std::to_string(needed) + " port(s), has " +
               std::to_string(has);
    case Fault::junctionDegree:
        return "junction " + id + " degree " + std::to_string(has) + " (need ≥ 2)";
    case Fault::overCausal:
        return "junction " + id + " over-causal (>1 strong bond) — smartcard-6982 pattern";
    case Fault::underCausal:
        return "junction " + id + " under-causal (no causal stroke resolved)";
    }
    return {};
}

std::vector<std::int64_t> BondGraph::degrees() const {
    std::vector<std::int64_t> count(nodes.size(), 0);
    for (const Bond& bond : bonds) {
        for (const std::int64_t end : {bond.a, bond.b}) {
            if (end >= 0 && std::cmp_less(end, count.size()))
                ++count[static_cast<std::size_t>(end)];
        }
    }
    return count;
}

tl::expected<void, GraphError> BondGraph::validateStructure() const {
    for (const Bond& bond : bonds) {
        for (const std::int64_t end : {bond.a, bond.b}) {
            if (end < 0 || std::cmp_greater_equal(end, nodes.size())) {
                return tl::unexpected(GraphError::badIndex(end));
            }
        }
        if (bond.a == bond.b) return tl::unexpected(GraphError::selfLoop(bond.a));
    }
    const std::vector<std::int64_t> degree = degrees();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::optional<int> needed = ports(nodes[i].kind);
        if (needed && degree[i] != *needed) {
            return tl::unexpected(GraphError::arity(nodes[i].id, *needed, degree[i]));
        }
        if (!needed && degree[i] < 2) {
            return tl::unexpected(GraphError::junctionDegree(nodes[i].id, degree[i]));
        }
    }
    return {};
}

std::int64_t BondGraph::effortSourceNode(std::int64_t bond) const {
    if (bond < 0 || std::cmp_greater_equal(bond, bonds.size())) return -1;
    const Bond& at = bonds[static_cast<std::size_t>(bond)];
    return at.causality == Causality::aSetsEffort ? at.a : at.b;
}

double Constitutive::resistor(double R, double flow) {
    return R * flow;
}

double Constitutive::capacitorEffort(double q, double C) {
    return q / C;
}

double Constitutive::inertanceFlow(double p, double I) {
    return p / I;
}

} // namespace kelvo
