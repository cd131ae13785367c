#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kelvo::kernel_detail {

/// The nodes that still have something to do, handed out in the order in which repeated full passes
/// over the node list would come to them: a node added beyond the cursor is visited in the present
/// pass, any other one in the next. The first pass starts at node 0.
///
/// Where a rule does nothing at a node whose bonds have not changed since its last visit, visiting
/// only these nodes gives what full passes give. A set of bits under layers of summary bits: adding
/// a node and finding the next one cost the number of layers, log64 of the number of nodes.
class PassQueue {
public:
    explicit PassQueue(std::size_t nodes) {
        std::size_t words = nodes;
        do {
            words = (words + 63) / 64;
            layers_.emplace_back(words, 0);
        } while (words > 1);
    }

    void add(std::size_t node) {
        for (auto& layer : layers_) {
            std::uint64_t& word = layer[node / 64];
            const bool summarised = word != 0;
            word |= bit(node);
            if (summarised) return;
            node /= 64;
        }
    }

    /// Removes the next node in pass order and returns it; none when nothing is left.
    std::optional<std::size_t> next() {
        std::size_t node = findFrom(cursor_);
        if (node == none) node = findFrom(0);
        if (node == none) return std::nullopt;
        remove(node);
        cursor_ = node + 1;
        return node;
    }

private:
    static constexpr std::size_t none = ~std::size_t{0};
    static std::uint64_t bit(std::size_t at) { return std::uint64_t{1} << (at % 64); }

    std::size_t findFrom(std::size_t at) const {
        for (std::size_t level = 0; level < layers_.size(); ++level) {
            const auto& layer = layers_[level];
            if (at / 64 >= layer.size()) return none;
            const std::uint64_t word = layer[at / 64] & (~std::uint64_t{0} << (at % 64));
            if (word == 0) {
                at = at / 64 + 1;
                continue;
            }
            at = at / 64 * 64 + static_cast<std::size_t>(std::countr_zero(word));
            while (level-- > 0) {
                at = at * 64 + static_cast<std::size_t>(std::countr_zero(layers_[level][at]));
            }
            return at;
        }
        return none;
    }

    void remove(std::size_t node) {
        for (auto& layer : layers_) {
            std::uint64_t& word = layer[node / 64];
            word &= ~bit(node);
            if (word != 0) return;
            node /= 64;
        }
    }

    std::vector<std::vector<std::uint64_t>> layers_;
    std::size_t cursor_ = 0;
};

} // namespace kelvo::kernel_detail
