#pragma once

#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kelvo::test {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

/// `text` with each `from` replaced.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

/// Whether just these effects happened since the last look, in this order. "#0" stands for the hash
/// of block 0, "#0.." for its first twelve digits, and a final "*" for any rest of a line.
inline ::testing::AssertionResult happened(World& world, const std::vector<std::string>& expected) {
    std::vector<std::string> lines = world.transcript();
    const auto fits = [&](std::string line, const std::string& pattern) {
        for (const Totem& block : world->chain().blocks()) {
            const std::string mark = "#" + std::to_string(block.index);
            line = replaced(replaced(line, block.blockHash, mark), block.blockHash.substr(0, 12),
                            mark + "..");
        }
        return pattern.ends_with('*') ? line.starts_with(pattern.substr(0, pattern.size() - 1))
                                      : line == pattern;
    };
    if (std::ranges::equal(lines, expected, fits)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << ::testing::PrintToString(lines);
}

/// A world of the test's own, in which nothing runs yet.
class EngineTest : public ::testing::Test {
protected:
    World world;
};

/// A world in which the engine has just started, without any file.
class RunningEngineTest : public EngineTest {
protected:
    RunningEngineTest() { world.start(); }
};

} // namespace kelvo::test
