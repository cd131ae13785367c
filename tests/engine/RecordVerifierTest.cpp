#include "base/Files.h"
#include "support/WorldStory.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

namespace kelvo::test {
namespace {

/// The exit status of the independent checker on the world's outputs directory.
int verdict(const World& world) {
    const std::string command =
        "python3 " KELVO_VERIFIER " '" + world.outputs().string() + "' > /dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(RecordVerifier, AcceptsWhatTwoRunsSealedAndFindsWhatWasChangedRemovedOrMadeUp) {
    WorldStory story;
    story.world.writeMesh({{"A/ü\t\x01\x7F", 0.1, 1}, {"B", 0, 3}, {"C", 0, 2}});
    story.act("write évidence \"1\".txt is x");
    for (int launch = 0; launch < 2; ++launch) {
        for (const char* line :
             {"start", "owner", "play", "fire 44", "bond", "choose évidence \"1\".txt",
              "closeGap A/ü\\t\\x01\\x7f", "attest [\"B\",\"Sign / read\",\"attest\"]",
              "secure [\"C\",\"Lock\",\"os\"]", "hours 24", "account Charles Babbage"})
            story.act(line);
    }
    const World& world = story.world;
    EXPECT_EQ(world.files().size(), 9U) << "five records, three of the second run, and the mesh";
    EXPECT_EQ(verdict(world), 0);

    // The first run's closing of a criterion, in the middle of its chain.
    std::filesystem::path file;
    std::string bytes;
    for (const std::string& name : world.files()) {
        const std::string text = readFile(world.outputs() / name).value_or("");
        if (text.find("\"gate_before\" : 0.1") == std::string::npos) continue;
        file = world.outputs() / name;
        bytes = text;
    }
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string copy = bytes;
        return copy.replace(copy.find(from), from.size(), to);
    };
    for (const std::string& tampered :
         {with("\"gate_before\" : 0.1", "\"gate_before\" : 0.2"),
          with("\"appIndex\" : 2", "\"appIndex\" : 3"), with("Ada", "Eve"), std::string("{}"),
          std::string("[]"), std::string("not JSON")}) {
        world.write(file, tampered);
        EXPECT_EQ(verdict(world), 1) << tampered;
    }
    world.write(file, bytes);
    EXPECT_EQ(verdict(world), 0);
    std::filesystem::remove(file);
    EXPECT_EQ(verdict(world), 1) << "what follows hangs on nothing";
}

} // namespace
} // namespace kelvo::test
