#include "graphjson/GraphJson.h"

#include "base/JsonReader.h"

#include <utility>

namespace kelvo {

namespace {

Json nodeJson(const std::string& id, std::string_view kind, std::optional<double> param) {
    Json node{{"id", id}, {"kind", kind}};
    if (param) node["param"] = *param;
    return node;
}

Json graphJson(Json nodes, Json bonds) {
    return {{"nodes", std::move(nodes)}, {"bonds", std::move(bonds)}};
}

/// Reads a member whose text names a value of an enumeration.
template <class Value, class Lookup>
Value named(JsonReader& member, const char* key, Lookup lookup, const std::string& what) {
    const std::string text = member.string(key);
    if (const std::optional<Value> value = lookup(text)) return *value;
    member.fail(key, "\"" + text + "\" is no " + what);
    return {};
}

} // namespace

Json toJson(const BondGraph& graph) {
    Json nodes = Json::array();
    for (const Node& node : graph.nodes) {
        nodes.push_back(nodeJson(node.id, rawValue(node.kind), node.param));
    }
    Json bonds = Json::array();
    for (const Bond& bond : graph.bonds) {
        bonds.push_back({{"a", bond.a},
                         {"b", bond.b},
                         {"causality", rawValue(bond.causality)},
                         {"powerAToB", bond.powerAToB}});
    }
    return graphJson(std::move(nodes), std::move(bonds));
}

Json toJson(const ExtractedGraph& graph) {
    Json nodes = Json::array();
    for (const ExtractedGraph::N& node : graph.nodes) {
        nodes.push_back(nodeJson(node.id, node.kind, node.param));
    }
    Json bonds = Json::array();
    for (const ExtractedGraph::B& bond : graph.bonds) {
        bonds.push_back({{"from", bond.from}, {"to", bond.to}});
    }
    return graphJson(std::move(nodes), std::move(bonds));
}

tl::expected<BondGraph, std::string> readBondGraph(const Json& json) {
    BondGraph graph;
    JsonReader reader(json);
    reader.array("nodes", [&](JsonReader& member) {
        Node node{.id = member.string("id")};
        node.kind = named<NodeKind>(member, "kind", nodeKind, "element kind");
        node.param = member.optionalNumber("param");
        graph.nodes.push_back(std::move(node));
    });
    reader.array("bonds", [&](JsonReader& member) {
        Bond bond{.a = member.integer("a"), .b = member.integer("b")};
        bond.causality = named<Causality>(member, "causality", causality, "causality");
        bond.powerAToB = member.boolean("powerAToB");
        graph.bonds.push_back(bond);
    });
    if (reader.error()) return tl::unexpected(*reader.error());
    return graph;
}

tl::expected<ExtractedGraph, std::string> readExtractedGraph(const Json& json) {
    ExtractedGraph graph;
    JsonReader reader(json);
    reader.array("nodes", [&](JsonReader& member) {
        std::string id = member.string("id");
        std::string kind = member.string("kind");
        graph.nodes.push_back({std::move(id), std::move(kind), member.optionalNumber("param")});
    });
    reader.array("bonds", [&](JsonReader& member) {
        std::string from = member.string("from");
        graph.bonds.push_back({std::move(from), member.string("to")});
    });
    if (reader.error()) return tl::unexpected(*reader.error());
    return graph;
}

} // namespace kelvo
