// The engine's operations, told in tests/data/engine: what each does, in which order, and what a
// refusal leaves alone.

#include "support/WorldStory.h"

namespace kelvo::test {
namespace {

const int told = tellScenes<WorldStory>("Scenes", KELVO_DATA "/engine");

} // namespace
} // namespace kelvo::test
