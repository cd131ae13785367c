#pragma once

#include "base/Json.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// The organisation's criteria with their gate levels and weights. Their order is the file's and
/// breaks ties between gaps.
struct SOC2Mesh {
    struct Node {
        std::string id;
        double g = 0;         ///< gate level; met from 1.0 up, in proportion below
        std::int64_t w = 0;   ///< weight in readiness
        std::string evidence; ///< what there is; what is missing follows the marker "GAP:"

        bool operator==(const Node&) const = default;
    };

    struct Readiness {
        double value = 0; ///< sumGW / sumW, 0 where sumW is 0
        double sumGW = 0;
        std::int64_t sumW = 0; ///< held at the ends of its range where the weights exceed it
    };

    std::vector<Node> nodes;

    /// Reads {"nodes":[{"id","g","w","evidence"},…]}. A missing key, a wrong type or a weight that
    /// is not whole fails the whole file; the error says which member, in words for a person. So
    /// do weights whose sum leaves 64 bits and gate levels so far off that Σ|g·w| leaves the range
    /// of a double: with them no readiness could be told and no closure recorded. An id has at most
    /// 64 KiB, an evidence text 256 KiB.
    static tl::expected<SOC2Mesh, std::string> load(const std::filesystem::path& file);
    static tl::expected<SOC2Mesh, std::string> fromJson(const Json& document);
    Json toJson() const;

    /// Σ(g·w)/Σw, summed in node order.
    Readiness readiness() const;

    /// The nodes below 1.0, by impact (1 − g)·w, largest first; equal impact keeps file order.
    std::vector<Node> gaps() const;

    /// `gaps().front()` without the sorting; none where every criterion is met.
    const Node* highestImpactGap() const;

    /// What the evidence text says is missing, or the whole text where it does not say.
    static std::string gapText(const Node& node);

    /// A copy in which every node whose id is in `closed` has g = 1.0.
    SOC2Mesh applying(const std::set<std::string, std::less<>>& closed) const;

    /// The first node with this id, or none.
    const Node* find(std::string_view id) const;
    Node* find(std::string_view id);

    /// The number of nodes with g ≥ 1.0.
    int metCount() const;
};

} // namespace kelvo
