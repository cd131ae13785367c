// The engine's operations, told in tests/data/engine: what each does, in which order, and what a
// refusal leaves alone.

#include "support/WorldStory.h"

#include <gtest/gtest.h>

namespace kelvo::test {
namespace {

class Engine : public testing::TestWithParam<Scene> {};

TEST_P(Engine, Goes) {
    WorldStory().tell(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Scenes, Engine, testing::ValuesIn(scenesIn(KELVO_STORIES "/engine")),
                         [](const auto& scene) { return nameOf(scene.param); });

} // namespace
} // namespace kelvo::test
