// An extracted graph, a bond graph of any indices and strokes, or a validated one made from bytes:
// validation, causality, state space and steps, held against the literal procedures.

#include "kernel/Extraction.h"
#include "support/KernelComparison.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <bit>
#include <cstdlib>
#include <string>
#include <vector>

namespace kelvo {
namespace {

double number(FuzzedDataProvider& bytes) {
    constexpr std::array plain{1.0, 2.0, 0.5, -1.0, 3.0, 0.0};
    const auto choice = bytes.ConsumeIntegral<std::uint8_t>();
    if (choice < plain.size()) return plain[choice];
    return std::bit_cast<double>(bytes.ConsumeIntegral<std::uint64_t>());
}

std::optional<double> param(FuzzedDataProvider& bytes) {
    if (bytes.ConsumeBool()) return std::nullopt;
    return number(bytes);
}

std::string id(FuzzedDataProvider& bytes, std::size_t nodes) {
    return std::to_string(bytes.ConsumeIntegralInRange<std::size_t>(0, nodes));
}

ExtractedGraph extracted(FuzzedDataProvider& bytes) {
    constexpr std::array kinds{"Se", "Sf", "R", "C", "I", "TF", "GY", "j0", "j1", "se", ""};
    ExtractedGraph graph;
    const auto nodes = bytes.ConsumeIntegralInRange<std::size_t>(0, 20);
    for (std::size_t i = 0; i < nodes; ++i) {
        const std::string name =
            bytes.ConsumeProbability<double>() < 0.02 ? id(bytes, nodes) : std::to_string(i);
        graph.nodes.push_back({name, bytes.PickValueInArray(kinds), param(bytes)});
    }
    const auto bonds = bytes.ConsumeIntegralInRange<std::size_t>(0, 24);
    for (std::size_t i = 0; i < bonds; ++i) {
        std::string from = id(bytes, nodes);
        graph.bonds.push_back({std::move(from), id(bytes, nodes)});
    }
    return graph;
}

BondGraph handMade(FuzzedDataProvider& bytes) {
    BondGraph graph;
    const auto nodes = bytes.ConsumeIntegralInRange<std::size_t>(0, 12);
    for (std::size_t i = 0; i < nodes; ++i) {
        graph.nodes.push_back({.id = id(bytes, 3),
                               .kind = static_cast<NodeKind>(bytes.ConsumeIntegralInRange(0, 8)),
                               .param = param(bytes)});
    }
    const auto top = static_cast<std::int64_t>(nodes);
    const auto end = [&] {
        return bytes.ConsumeIntegral<std::uint8_t>() == 255
                   ? bytes.ConsumeIntegral<std::int64_t>()
                   : bytes.ConsumeIntegralInRange<std::int64_t>(0, top);
    };
    const auto bonds = bytes.ConsumeIntegralInRange<std::size_t>(0, 16);
    for (std::size_t i = 0; i < bonds; ++i) {
        Bond bond{.a = end(), .b = end()};
        bond.causality = static_cast<Causality>(bytes.ConsumeIntegralInRange(0, 2));
        bond.powerAToB = bytes.ConsumeBool();
        graph.bonds.push_back(bond);
    }
    return graph;
}

void compare(const BondGraph& graph, FuzzedDataProvider& bytes) {
    const double h = number(bytes);
    if (support::difference(
            graph, [&] { return number(bytes); }, h))
        std::abort();
    const auto space = StateSpace::create(graph);
    if (!space) return;
    Integrator run(*space, support::movingSources({}));
    run.state().resize(bytes.ConsumeIntegralInRange<std::size_t>(0, space->states().size() + 2));
    run.step(h);
    (void)run.dissipation();
}

} // namespace
} // namespace kelvo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    if (bytes.ConsumeBool()) {
        kelvo::compare(kelvo::handMade(bytes), bytes);
        return 0;
    }
    const auto graph = kelvo::extracted(bytes).validated();
    if (graph) {
        kelvo::compare(*graph, bytes);
    } else if (kelvo::description(graph.error()).empty()) {
        std::abort();
    }
    return 0;
}
