// Drives the real engine, without a window and with a double for the person's presence, from PLAY
// through the automatic pause, a denied and an approved BOND, and prints what a person would see.
// For tests and demonstrations only; the shipped program has no such double.

#include "base/Files.h"
#include "support/World.h"

#include <cstdio>

namespace {

using kelvo::EngineVM;
using kelvo::test::World;

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
}

void report(const EngineVM& vm, const std::string& step) {
    say("\n== " + step);
    say("status: " + *vm.status);
    say("state:  " + *vm.stateLine);
    say("agent:  " + vm.agentNBA->title + " | " + vm.agentNBA->detail);
    say("human:  " + vm.humanNBA->title + " | " + vm.humanNBA->detail);
}

int fail(const std::string& why) {
    say("DEMONSTRATION FAILED: " + why);
    return 1;
}

} // namespace

int main() {
    World world;
    EngineVM& vm = world.start();
    say("Presence is simulated in this demonstration. Nobody was asked anything.");
    report(vm, "start");

    vm.play();
    report(vm, "PLAY");
    const int ticks = world.ticker.fire(1000);
    report(vm, "after " + std::to_string(ticks) + " ticks");
    if (*vm.running || !*vm.pending) return fail("the run did not pause itself at the rate limit");

    world.authentication.answer = false;
    vm.bondCollapse();
    report(vm, "BOND, presence denied (simulated)");
    if (!*vm.pending || !vm.totems->empty()) return fail("a denial changed something");

    world.authentication.answer = true;
    vm.bondCollapse();
    report(vm, "BOND, presence granted (simulated)");
    if (vm.totems->size() != 1 || *vm.pending) return fail("the approval sealed nothing");

    say("\n== provenance, newest first");
    for (const kelvo::Citation& citation : *vm.citations) {
        say(citation.asOf + "  " + citation.claim + "\n                      " + citation.source);
    }
    for (const std::string& name : world.files()) {
        const auto bytes = kelvo::readFile(world.outputs() / name);
        if (!bytes) return fail(bytes.error().description);
        say("\n== record file " + name + "\n" + *bytes);
    }
    return 0;
}
