// A readiness graph that is read keeps its promises: sums that are numbers, gaps in order, a form
// that reads back the same.

#include "compliance/SOC2Mesh.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvo;
    const auto document = parseJson({reinterpret_cast<const char*>(data), size});
    if (!document) return 0;
    const auto mesh = SOC2Mesh::fromJson(*document);
    if (!mesh) return 0;
    std::set<std::string, std::less<>> all;
    for (const SOC2Mesh::Node& node : mesh->nodes) {
        all.insert(node.id);
        if (SOC2Mesh::gapText(node).size() > node.evidence.size()) std::abort();
    }
    const auto gaps = mesh->gaps();
    const auto* highest = mesh->highestImpactGap();
    if (gaps.empty() != (highest == nullptr)) std::abort();
    if (highest != nullptr && !(*highest == gaps.front())) std::abort();
    if (!std::isfinite(mesh->readiness().value)) std::abort();
    const SOC2Mesh closed = mesh->applying(all);
    if (!std::isfinite(closed.readiness().value)) std::abort();
    if (closed.metCount() != static_cast<int>(closed.nodes.size())) std::abort();
    const auto text = writeJson(mesh->toJson());
    if (!text) std::abort();
    const auto again = SOC2Mesh::fromJson(*parseJson(*text));
    if (!again || again->nodes != mesh->nodes) std::abort();
    return 0;
}
