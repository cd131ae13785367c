#pragma once

#include "kernel/Extraction.h"

#include <span>
#include <string>
#include <vector>

namespace kelvo {

/// One of the nine families of the Common Criteria, with its model as a driven, lossy, storing
/// process.
struct SOC2Template {
    std::string id; ///< "CC1" to "CC9"
    std::string title;
    int controls = 0;     ///< how many controls the family stands for
    ExtractedGraph graph; ///< owner, transformer, gap (R), process (I), accumulated control (C)
    std::string criterionText;
    std::string policy;
    std::vector<std::string> evidence; ///< expected artefacts, in display order

    bool operator==(const SOC2Template&) const = default;
};

namespace SOC2Templates {

/// How many families there are.
inline constexpr std::size_t count = 9;

/// The nine templates, CC1 to CC9. Made on first use.
const std::vector<SOC2Template>& all();

/// One graph in which a single owner source drives every family of `families` through a shared
/// 0-junction. The elements of the k-th entry carry the prefix "f<k>_"; an id that no template has
/// is skipped but counted.
ExtractedGraph compose(std::span<const std::string> families);

} // namespace SOC2Templates
} // namespace kelvo
