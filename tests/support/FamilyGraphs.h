#pragma once

#include "kernel/Extraction.h"

#include <array>
#include <cstddef>
#include <string>

/// The graphs that the kernel is measured and tested on most: the start-up model and control
/// families joined at one owner.
namespace kelvo::support {

struct FamilyParams {
    const char* id;
    double controls; ///< modulus of the transformer and capacitance
    double gap;      ///< resistance
};

inline constexpr std::array<FamilyParams, 9> families{{{"CC1", 5, 0.6},
                                                       {"CC2", 3, 0.4},
                                                       {"CC3", 4, 0.6},
                                                       {"CC4", 3, 0.5},
                                                       {"CC5", 4, 0.5},
                                                       {"CC6", 8, 0.8},
                                                       {"CC7", 5, 0.7},
                                                       {"CC8", 4, 0.5},
                                                       {"CC9", 3, 0.4}}};

/// Se – 1 with R 2.0, I 0.5 and C 1.0.
inline ExtractedGraph startupGraph() {
    return {.nodes = {{"Se", "Se"}, {"1", "j1"}, {"R", "R", 2.0}, {"I", "I", 0.5}, {"C", "C", 1.0}},
            .bonds = {{"Se", "1"}, {"1", "R"}, {"1", "I"}, {"1", "C"}}};
}

/// `count` families, cycling through the nine, on one owner's 0-junction: 2 + 5·count nodes.
inline ExtractedGraph familiesComposed(std::size_t count) {
    ExtractedGraph graph{.nodes = {{"owner", "Se"}, {"owner_j0", "j0"}},
                         .bonds = {{"owner", "owner_j0"}}};
    for (std::size_t k = 1; k <= count; ++k) {
        const FamilyParams& family = families[(k - 1) % families.size()];
        const std::string prefix = std::string("f").append(std::to_string(k)).append("_");
        const std::string id = family.id;
        const std::string tf = prefix + "TF_" + id;
        const std::string junction = prefix + "1_" + id;
        const std::string gap = prefix + "R_" + id + "gap";
        const std::string process = prefix + "I_" + id + "proc";
        const std::string control = prefix + "C_" + id;
        graph.nodes.insert(graph.nodes.end(), {{tf, "TF", family.controls},
                                               {junction, "j1"},
                                               {gap, "R", family.gap},
                                               {process, "I", 1.0},
                                               {control, "C", family.controls}});
        graph.bonds.insert(graph.bonds.end(), {{"owner_j0", tf},
                                               {tf, junction},
                                               {junction, gap},
                                               {junction, process},
                                               {junction, control}});
    }
    return graph;
}

} // namespace kelvo::support
