#pragma once

#include "support/Story.h"
#include "support/World.h"

namespace kelvo::test {

/// Scenes in a world: every operation of the engine, what the person, the model and the machine
/// answer, and all that the engine publishes. The words and figures are in the source.
class WorldStory : public Story {
public:
    WorldStory();

    World world;

protected:
    std::vector<std::string> happened() override;
    std::filesystem::path path(const std::string& name) const;

private:
    void tellOfTheWorld();
    void tellOfTheEngine();
    void lookAtTheEngine();
    void lookAtTheWorld();

    std::vector<std::string> during_; ///< the lines that happen while the person is asked
    int fired_ = 0;                   ///< ticks at the last "fire"
};

} // namespace kelvo::test
