// Plays a story on the real engine, without a window and with a double for the person's presence,
// and prints all that happens. For demonstrations only; the shipped program has no such double.

#include "support/WorldStory.h"

#include <cstdio>
#include <utility>

namespace kelvo::test {
namespace {

class Told : public WorldStory {
public:
    void play(const Scene& scene) {
        std::printf("== %s\n", scene.title.c_str());
        for (const std::string& line : scene.lines) {
            std::printf("\n%s\n", line.c_str());
            act(line);
            std::string last;
            for (const std::string& effect : happened()) {
                if (effect != std::exchange(last, effect)) std::printf("    %s\n", effect.c_str());
            }
        }
    }
};

} // namespace
} // namespace kelvo::test

int main() {
    std::printf("Presence is simulated in this demonstration. Nobody was asked anything.\n\n");
    for (const auto& scene : kelvo::test::scenesIn(KELVO_DATA "/shows/engine"))
        kelvo::test::Told().play(scene);
    return 0;
}
