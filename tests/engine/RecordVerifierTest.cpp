#include "base/Files.h"

#include <sys/wait.h>

#include <cstdlib>

#include "EngineTest.h"

namespace kelvo::test {
namespace {

/// The exit status of the independent checker on the world's outputs directory.
int verdict(const World& world) {
    const std::string command = std::string("python3 " KELVO_VERIFIER " '") +
                                world.outputs().string() + "' > /dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class RecordVerifier : public EngineTest {
protected:
    /// Records of every kind, over two runs of the program.
    void SetUp() override {
        for (int launch = 0; launch < 2; ++launch) {
            world.startAsOwner({{"A/ü\t\x01\x7F", 0.1, 1}, {"B", 0, 3}, {"C", 0, 2}});
            world->play();
            world.ticker.fire(44);
            world->bondCollapse();
            world.filePanel.choice = world.write("évidence \"1\".txt", "x");
            world->closeGap("A/ü\t\x01\x7F");
            world->attestRoleControl({"B", "Sign / read", "attest"});
            world->closeRoleControlViaOS({"C", "Lock", "os"});
            world.clock.moment += std::chrono::hours(24);
            world.account.name = "Charles Babbage";
        }
    }

    /// The first run's closing of a criterion, in the middle of its chain.
    std::filesystem::path middleRecord() const {
        for (const std::string& name : world.files()) {
            const auto bytes = readFile(world.outputs() / name);
            if (bytes && bytes->find("\"gate_before\" : 0.1") != std::string::npos) {
                return world.outputs() / name;
            }
        }
        return {};
    }

    World world;
};

TEST_F(RecordVerifier, AcceptsEverythingThatTheEngineSealed) {
    EXPECT_EQ(world.files().size(), 9U) << "five records, three of the second run, and the mesh";
    EXPECT_EQ(verdict(world), 0);
}

TEST_F(RecordVerifier, FindsWhatWasChangedRemovedOrMadeUp) {
    const auto file = middleRecord();
    const std::string bytes = *readFile(file);
    const auto replaced = [&](const std::string& from, const std::string& to) {
        std::string copy = bytes;
        const auto at = copy.find(from);
        return at == std::string::npos ? std::string() : copy.replace(at, from.size(), to);
    };
    for (const std::string& tampered :
         {replaced("\"gate_before\" : 0.1", "\"gate_before\" : 0.2"),
          replaced("\"appIndex\" : 2", "\"appIndex\" : 3"), replaced("Ada", "Eve"),
          std::string("{}"), std::string("[]"), std::string("not JSON")}) {
        ASSERT_FALSE(tampered.empty());
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
