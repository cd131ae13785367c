// One tick, one choice of the cards, one chat line, on the real engine with doubles for the ports.

#include "base/Files.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <cstdio>

#include "BenchEngine.h"
#include "Table.h"

namespace kelvo::bench {
namespace {

void tick(benchmark::State& state) {
    BenchEngine bench;
    // At half the drive the start-up graph never reaches the limit, and the loop runs on.
    bench.engine().throttle();
    bench.engine().play();
    for (auto _ : state)
        bench.ticker.fire();
    if (!*bench.engine().running) state.SkipWithError("the loop paused itself");
}

void cards(benchmark::State& state, int criteria) {
    BenchEngine bench(static_cast<std::size_t>(criteria));
    bench.engine().verifyKYC("Owner");
    for (auto _ : state)
        bench.engine().proposeNBA();
}

/// A question of the person and the fixed answer where no model is: two lines, each followed by the
/// writing of the whole history.
void chat(benchmark::State& state, int lines) {
    BenchEngine bench(0, static_cast<std::size_t>(lines));
    bench.model.unavailable = "none here";
    for (auto _ : state) {
        bench.engine().askAssistant("What is the next step?");
        bench.eventLoop.drain();
    }
}

/// What any writer of such a history must do: as many bytes, flushed and renamed, twice.
void chatFileAlone(benchmark::State& state, int lines) {
    const test::TemporaryDirectory root;
    const std::string bytes(static_cast<std::size_t>(lines) * 150, 'x');
    for (auto _ : state) {
        for (int line = 0; line < 2; ++line) {
            auto written = writeFileAtomically(root.path() / "chat.json", bytes);
            benchmark::DoNotOptimize(written);
        }
    }
}

constexpr std::array<int, 2> meshSizes{13, 10'000};
constexpr std::array<int, 2> chatSizes{10, 10'000};

std::string sized(const char* what, int size) {
    return std::string(what) + ", " + std::to_string(size);
}

void addAll() {
    benchmark::RegisterBenchmark("tick", tick);
    for (const int size : meshSizes) {
        benchmark::RegisterBenchmark(sized("cards", size).c_str(), cards, size);
    }
    for (const int size : chatSizes) {
        benchmark::RegisterBenchmark(sized("chat", size).c_str(), chat, size)->Iterations(10);
        benchmark::RegisterBenchmark(sized("file", size).c_str(), chatFileAlone, size)
            ->Iterations(10);
    }
}

void print(const Collector& results) {
    constexpr double frame = 1e9 / 60;
    const double oneTick = results.fastest("tick");
    std::printf("One tick, start-up graph, no mesh, observed: %s, %.3f%% of a 60 Hz frame\n",
                duration(oneTick).c_str(), 100 * oneTick / frame);
    std::printf("\nThe choice of both cards\n");
    for (const int size : meshSizes) {
        const double time = results.fastest(sized("cards", size));
        std::printf("  %6d criteria %12s  %8.3f%% of a 60 Hz frame\n", size, duration(time).c_str(),
                    100 * time / frame);
    }
    std::printf("\nA question and its answer in the chat, processor time\n");
    for (const int size : chatSizes) {
        const double time = results.fastest(sized("chat", size));
        const double alone = results.fastest(sized("file", size));
        std::printf("  %6d lines before %12s  %8.2f times writing the file alone\n", size,
                    duration(time).c_str(), time / alone);
    }
}

} // namespace
} // namespace kelvo::bench

int main(int argc, char** argv) {
    using namespace kelvo::bench;
    return measure(argc, argv, addAll, print);
}
