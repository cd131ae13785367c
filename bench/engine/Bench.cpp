// One tick, one choice of the cards, one chat line, on the real engine with doubles for the ports.

#include "base/Files.h"
#include "engine/EngineVM.h"
#include "support/Fakes.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <cstdio>

#include "Table.h"

namespace kelvo::bench {
namespace {

/// The engine in a temporary directory, observed as a window would, without a transcript.
class Bench {
public:
    explicit Bench(std::size_t criteria = 0, std::size_t chatLines = 0)
        : directories_(Directories::below(root_.path())) {
        std::filesystem::create_directories(directories_.outputs);
        std::filesystem::create_directories(directories_.project);
        if (criteria > 0) writeMesh(criteria);
        if (chatLines > 0) writeChat(chatLines);
        engine_ =
            std::make_unique<EngineVM>(Ports{clock_, ticker, eventLoop, account_, authentication_,
                                             notifications_, panel_, pdf_, processes_, model},
                                       directories_);
        observe(engine_->t, engine_->risk, engine_->rate, engine_->stateLine, engine_->status,
                engine_->agentNBA, engine_->humanNBA, engine_->citations, engine_->chat);
    }

    EngineVM& engine() { return *engine_; }

    test::FakeTicker ticker;
    test::FakeEventLoop eventLoop;
    test::FakeModel model;

private:
    template <class... Properties>
    void observe(const Properties&... properties) {
        (subscriptions_.push_back(properties.observe([this] { ++heard_; }, [this] { ++heard_; })),
         ...);
    }

    void writeMesh(std::size_t criteria) const {
        SOC2Mesh mesh;
        for (std::size_t i = 0; i < criteria; ++i) {
            mesh.nodes.push_back({"CC" + std::to_string(i), static_cast<double>(i % 10) / 10,
                                  static_cast<std::int64_t>(i % 7 + 1),
                                  "What there is. GAP: what is missing"});
        }
        write(directories_.outputs / "soc2-mesh-bondgraph.json", mesh.toJson());
    }

    void writeChat(std::size_t lines) const {
        const Json line = {{"id", "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"},
                           {"role", "you"},
                           {"text", "What is the next step for the vendor review?"},
                           {"ts", "2026-01-31T09:15:02Z"}};
        write(directories_.project / "chat-history.json", Json(lines, line));
    }

    static void write(const std::filesystem::path& file, const Json& document) {
        if (!writeFileAtomically(file, writeJson(document).value())) std::abort();
    }

    test::TemporaryDirectory root_;
    Directories directories_;
    test::FakeClock clock_;
    test::FakeAccount account_;
    test::FakeAuthentication authentication_;
    test::FakeNotifications notifications_;
    test::FakeFilePanel panel_;
    test::FakePdfText pdf_;
    test::FakeProcesses processes_;
    std::unique_ptr<EngineVM> engine_;
    std::vector<Subscription> subscriptions_;
    std::size_t heard_ = 0;
};

void tick(benchmark::State& state) {
    Bench bench;
    // At half the drive the start-up graph never reaches the limit, and the loop runs on.
    bench.engine().throttle();
    bench.engine().play();
    for (auto _ : state)
        bench.ticker.fire();
    if (!*bench.engine().running) state.SkipWithError("the loop paused itself");
}

void cards(benchmark::State& state, int criteria) {
    Bench bench(static_cast<std::size_t>(criteria));
    bench.engine().verifyKYC("Owner");
    for (auto _ : state)
        bench.engine().proposeNBA();
}

/// A question of the person and the fixed answer where no model is: two lines, each followed by the
/// writing of the whole history.
void chat(benchmark::State& state, int lines) {
    Bench bench(0, static_cast<std::size_t>(lines));
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
