#pragma once

#include "base/Files.h"
#include "engine/EngineVM.h"
#include "support/Fakes.h"
#include "support/TemporaryDirectory.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace kelvo::bench {

/// The engine in a temporary directory, observed as a window would, without a transcript.
class BenchEngine {
public:
    explicit BenchEngine(std::size_t criteria = 0, std::size_t chatLines = 0)
        : directories_(Directories::below(root_.path())) {
        std::filesystem::create_directories(directories_.outputs);
        std::filesystem::create_directories(directories_.project);
        if (criteria > 0) writeMesh(criteria);
        if (chatLines > 0) writeChat(chatLines);
        engine_ = std::make_unique<EngineVM>(Ports{clock_, ticker, eventLoop, account_,
                                                   authentication_, notifications_, panel_, pdf_,
                                                   processes_, model, background_},
                                             directories_);
        observe(engine_->t, engine_->risk, engine_->rate, engine_->stateLine, engine_->status,
                engine_->agentNBA, engine_->humanNBA, engine_->citations, engine_->chat);
    }

    EngineVM& engine() { return *engine_; }

    test::FakeTicker ticker;
    test::FakeEventLoop eventLoop;
    test::FakeBackground background_{eventLoop};
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

} // namespace kelvo::bench
