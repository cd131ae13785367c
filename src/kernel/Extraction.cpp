#include "kernel/Extraction.h"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace kelvo {

namespace {

bool needsParam(NodeKind kind) {
    return !isSource(kind) && !isJunction(kind);
}

} // namespace

ExtractionError ExtractionError::unknownKind(std::string kind) {
    return {.fault = Fault::unknownKind, .kind = std::move(kind)};
}

ExtractionError ExtractionError::duplicateID(std::string id) {
    return {.fault = Fault::duplicateID, .id = std::move(id)};
}

ExtractionError ExtractionError::danglingBond(std::string id) {
    return {.fault = Fault::danglingBond, .id = std::move(id)};
}

ExtractionError ExtractionError::missingParam(std::string id, std::string kind) {
    return {.fault = Fault::missingParam, .id = std::move(id), .kind = std::move(kind)};
}

ExtractionError ExtractionError::empty() {
    return {.fault = Fault::empty};
}

std::string ExtractionError::description() const {
    switch (fault) {
    case Fault::unknownKind:
        return "unknown element kind '" + kind + "' — not a bond-graph element";
    case Fault::duplicateID:
        return "duplicate node id '" + id + "'";
    case Fault::danglingBond:
        return "bond references unknown node id '" + id + "'";
    case Fault::missingParam:
        return "element " + id + " (" + kind + ") requires a parameter value";
    case Fault::empty:
        return "extracted graph has no nodes";
    }
    return {};
}

std::string description(const GraphRejection& rejection) {
    return std::visit([](const auto& error) { return error.description(); }, rejection);
}

tl::expected<BondGraph, GraphRejection> ExtractedGraph::validated() const {
    if (nodes.empty()) return tl::unexpected<GraphRejection>(ExtractionError::empty());

    std::unordered_map<std::string_view, std::int64_t> indexOf;
    indexOf.reserve(nodes.size());
    for (const N& node : nodes) {
        if (!indexOf.emplace(node.id, static_cast<std::int64_t>(indexOf.size())).second) {
            return tl::unexpected<GraphRejection>(ExtractionError::duplicateID(node.id));
        }
    }

    BondGraph graph;
    graph.nodes.reserve(nodes.size());
    for (const N& node : nodes) {
        const std::optional<NodeKind> kind = nodeKind(node.kind);
        if (!kind) return tl::unexpected<GraphRejection>(ExtractionError::unknownKind(node.kind));
        if (needsParam(*kind) && !node.param) {
            return tl::unexpected<GraphRejection>(
                ExtractionError::missingParam(node.id, node.kind));
        }
        graph.nodes.push_back({node.id, *kind, node.param});
    }

    graph.bonds.reserve(bonds.size());
    for (const B& bond : bonds) {
        const auto from = indexOf.find(bond.from);
        if (from == indexOf.end()) {
            return tl::unexpected<GraphRejection>(ExtractionError::danglingBond(bond.from));
        }
        const auto to = indexOf.find(bond.to);
        if (to == indexOf.end()) {
            return tl::unexpected<GraphRejection>(ExtractionError::danglingBond(bond.to));
        }
        graph.bonds.push_back({from->second, to->second});
    }

    if (auto sound = graph.validateStructure(); !sound) {
        return tl::unexpected<GraphRejection>(std::move(sound.error()));
    }
    return graph;
}

} // namespace kelvo
