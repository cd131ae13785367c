#include "compliance/SOC2Mesh.h"

#include "base/Files.h"
#include "base/JsonReader.h"
#include "base/Text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kelvo {
namespace {

/// A mesh of a hundred thousand criteria stays far below; what is larger is another kind of file.
constexpr std::size_t largestMeshFile = std::size_t{64} << 20;

std::int64_t addHeld(std::int64_t sum, std::int64_t term) {
    std::int64_t result = 0;
    if (!__builtin_add_overflow(sum, term, &result)) return result;
    using Limits = std::numeric_limits<std::int64_t>;
    return term > 0 ? Limits::max() : Limits::min();
}

double impact(const SOC2Mesh::Node& node) {
    return (1 - node.g) * static_cast<double>(node.w);
}

bool isGap(const SOC2Mesh::Node& node) {
    return node.g < 1.0;
}

} // namespace

tl::expected<SOC2Mesh, std::string> SOC2Mesh::load(const std::filesystem::path& file) {
    const auto bytes = readFile(file, largestMeshFile);
    if (!bytes) return tl::unexpected(bytes.error().description);
    const std::string name = shownFileName(file) + ": ";
    const auto document = parseJson(*bytes);
    if (!document) return tl::unexpected(name + document.error());
    auto mesh = fromJson(*document);
    if (!mesh) return tl::unexpected(name + mesh.error());
    return mesh;
}

tl::expected<SOC2Mesh, std::string> SOC2Mesh::fromJson(const Json& document) {
    SOC2Mesh mesh;
    JsonReader reader(document);
    reader.array("nodes", [&mesh](JsonReader& node) {
        mesh.nodes.push_back({.id = node.string("id"),
                              .g = node.number("g"),
                              .w = node.integer("w"),
                              .evidence = node.string("evidence")});
    });
    if (reader.error()) return tl::unexpected(*reader.error());
    return mesh;
}

Json SOC2Mesh::toJson() const {
    Json array = Json::array();
    for (const Node& node : nodes) {
        array.push_back(
            {{"id", node.id}, {"g", node.g}, {"w", node.w}, {"evidence", node.evidence}});
    }
    Json document = Json::object();
    document["nodes"] = std::move(array);
    return document;
}

SOC2Mesh::Readiness SOC2Mesh::readiness() const {
    Readiness sum;
    for (const Node& node : nodes) {
        sum.sumGW += node.g * static_cast<double>(node.w);
        sum.sumW = addHeld(sum.sumW, node.w);
    }
    if (sum.sumW != 0) sum.value = sum.sumGW / static_cast<double>(sum.sumW);
    return sum;
}

std::vector<SOC2Mesh::Node> SOC2Mesh::gaps() const {
    std::vector<Node> open;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(open), isGap);
    std::stable_sort(open.begin(), open.end(),
                     [](const Node& a, const Node& b) { return impact(a) > impact(b); });
    return open;
}

const SOC2Mesh::Node* SOC2Mesh::highestImpactGap() const {
    const Node* best = nullptr;
    for (const Node& node : nodes) {
        if (isGap(node) && (best == nullptr || impact(node) > impact(*best))) best = &node;
    }
    return best;
}

std::string SOC2Mesh::gapText(const Node& node) {
    constexpr std::string_view marker = "GAP:";
    const auto at = node.evidence.find(marker);
    if (at == std::string::npos) return node.evidence;
    return std::string(
        trimmedSpacesAndTabs(std::string_view(node.evidence).substr(at + marker.size())));
}

SOC2Mesh SOC2Mesh::applying(const std::set<std::string, std::less<>>& closed) const {
    SOC2Mesh copy = *this;
    for (Node& node : copy.nodes) {
        if (closed.contains(node.id)) node.g = 1.0;
    }
    return copy;
}

const SOC2Mesh::Node* SOC2Mesh::find(std::string_view id) const {
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [id](const Node& node) { return node.id == id; });
    return found == nodes.end() ? nullptr : &*found;
}

SOC2Mesh::Node* SOC2Mesh::find(std::string_view id) {
    return const_cast<Node*>(std::as_const(*this).find(id));
}

int SOC2Mesh::metCount() const {
    return static_cast<int>(
        std::count_if(nodes.begin(), nodes.end(), [](const Node& node) { return node.g >= 1.0; }));
}

} // namespace kelvo
