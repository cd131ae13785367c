#include "kernel/PassQueue.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <random>
#include <set>

namespace kelvo::kernel_detail {
namespace {

/// The next node at or after the cursor, else the first one of the next pass.
std::optional<std::size_t> nextInPass(std::set<std::size_t>& nodes, std::size_t& cursor) {
    if (nodes.empty()) return std::nullopt;
    auto found = nodes.lower_bound(cursor);
    if (found == nodes.end()) found = nodes.begin();
    const std::size_t node = *found;
    nodes.erase(found);
    cursor = node + 1;
    return node;
}

TEST(PassQueue, HandsOutNodesInTheOrderOfFullPasses) {
    for (const std::size_t nodes : {1, 63, 64, 65, 128, 4096, 4097, 300'000}) {
        std::mt19937_64 random(nodes);
        PassQueue queue(nodes);
        std::set<std::size_t> expected;
        std::size_t cursor = 0;
        for (int i = 0; i < 4000; ++i) {
            const std::size_t node = random() % nodes;
            queue.add(node);
            expected.insert(node);
            if (random() % 16 == 0) continue;
            ASSERT_EQ(queue.next(), nextInPass(expected, cursor)) << nodes;
        }
        while (!expected.empty())
            ASSERT_EQ(queue.next(), nextInPass(expected, cursor)) << nodes;
        ASSERT_EQ(queue.next(), std::nullopt);
    }
    EXPECT_EQ(PassQueue(0).next(), std::nullopt);
}

} // namespace
} // namespace kelvo::kernel_detail
