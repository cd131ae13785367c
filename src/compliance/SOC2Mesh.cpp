#include "compliance/SOC2Mesh.h"

#include "base/Files.h"
#include "base/JsonReader.h"
#include "base/Text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

namespace kelvo {
namespace {

/// A hundred thousand criteria of 150 bytes; what is larger is another kind of file.
constexpr std::size_t largestMeshFile = std::size_t{16} << 20;

/// Both texts go into the record of a closing, the id several times and each character as up to six
/// bytes; so every record that is written stays within what the next start reads.
constexpr std::size_t longestId = std::size_t{64} << 10;
constexpr std::size_t longestEvidence = std::size_t{256} << 10;

/// Wide enough for the sum of any number of 64-bit weights that memory can hold.
__extension__ using WideSum = __int128;

constexpr WideSum largestSum = std::numeric_limits<std::int64_t>::max();
constexpr WideSum smallestSum = std::numeric_limits<std::int64_t>::min();

WideSum sumOfWeights(const std::vector<SOC2Mesh::Node>& nodes) {
    WideSum sum = 0;
    for (const SOC2Mesh::Node& node : nodes)
        sum += node.w;
    return sum;
}

/// What keeps readiness from being a number. Closing a node only replaces its g by 1, so a mesh
/// without such a fault never gets one.
std::optional<std::string> faultOfSums(const std::vector<SOC2Mesh::Node>& nodes) {
    const WideSum weights = sumOfWeights(nodes);
    if (weights > largestSum || weights < smallestSum)
        return "nodes: the weights w add up to more than 64 bits hold";
    double magnitude = 0;
    for (const SOC2Mesh::Node& node : nodes)
        magnitude += std::max(1.0, std::abs(node.g)) * std::abs(static_cast<double>(node.w));
    if (!std::isfinite(magnitude)) return "nodes: the products of g and w are too large to add up";
    return std::nullopt;
}

/// What closing the node would add to Σ g·w. A level that is not a number counts as no impact, so
/// that the order stays one.
double impact(const SOC2Mesh::Node& node) {
    const double gain = (1 - node.g) * static_cast<double>(node.w);
    return std::isnan(gain) ? 0 : gain;
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
    reader.array("nodes", [&mesh](JsonReader& member) {
        SOC2Mesh::Node node{.id = member.string("id"),
                            .g = member.number("g"),
                            .w = member.integer("w"),
                            .evidence = member.string("evidence")};
        if (node.id.size() > longestId) member.fail("id", "longer than 64 KiB");
        if (node.evidence.size() > longestEvidence) member.fail("evidence", "longer than 256 KiB");
        mesh.nodes.push_back(std::move(node));
    });
    if (reader.error()) return tl::unexpected(*reader.error());
    if (auto fault = faultOfSums(mesh.nodes)) return tl::unexpected(std::move(*fault));
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
    Readiness result;
    for (const Node& node : nodes)
        result.sumGW += node.g * static_cast<double>(node.w);
    const WideSum weights = sumOfWeights(nodes);
    result.sumW = static_cast<std::int64_t>(std::clamp(weights, smallestSum, largestSum));
    if (weights != 0) result.value = result.sumGW / static_cast<double>(weights);
    return result;
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
