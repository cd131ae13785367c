#pragma once

#include "engine/EngineVM.h"
#include "support/Fakes.h"
#include "support/TemporaryDirectory.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace kelvo::test {

/// The real engine on scripted fakes in a temporary directory, with a transcript of every
/// observable effect in the order in which it happened.
class World {
public:
    World();
    ~World();

    /// Starts the engine, or starts it anew on the same directories as a next launch would.
    EngineVM& start();
    void stop();
    EngineVM& engine() { return *engine_; }
    EngineVM* operator->() { return engine_.get(); }

    std::filesystem::path outputs() const { return directories_.outputs; }
    std::filesystem::path project() const { return directories_.project; }
    std::filesystem::path root() const { return root_.path(); }
    bool started() const { return engine_ != nullptr; }
    std::filesystem::path write(const std::filesystem::path& path, std::string_view bytes) const;

    struct Criterion {
        std::string id;
        double g = 0;
        std::int64_t w = 1;
        std::string evidence = "facts. GAP: missing";
    };
    void writeMesh(const std::vector<Criterion>& criteria) const;
    void writeRoles(const Json& roles) const;

    /// Starts with `criteria` and a verified owner; the transcript begins after that.
    EngineVM& startAsOwner(const std::vector<Criterion>& criteria);

    /// The effects since the last call, one a line:
    ///   "presence <reason>", "panel <prompt>", "notify <title>", "<property> <value>",
    ///   "cite <claim> | <source>", "event <JSON without ts>", "file <name> <content>", "cards <a>
    ///   | <h>".
    /// Ids and hashes stay as they are; take them from the engine where a test needs them.
    std::vector<std::string> transcript();

    /// All events since the log began, without their time stamps.
    std::vector<Json> events() const;
    std::vector<std::string> eventKinds() const;
    /// The names in the outputs directory, sorted.
    std::set<std::string> files() const;
    /// The record file of the totem at `index`, parsed.
    Json record(std::size_t index) const;

    FakeClock clock;
    FakeTicker ticker;
    FakeEventLoop eventLoop;
    FakeBackground background{eventLoop};
    FakeAccount account;
    FakeAuthentication authentication;
    FakeNotifications notifications;
    FakeFilePanel filePanel;
    FakePdfText pdfText;
    FakeProcesses processes;
    FakeModel model;

private:
    void observe();
    void poll();
    void note(std::string line);
    template <class T, class Show>
    void watch(const Published<T>& property, Show show);

    TemporaryDirectory root_;
    Directories directories_;
    std::unique_ptr<EngineVM> engine_;
    std::vector<Subscription> subscriptions_;
    std::vector<std::string> transcript_;
    std::set<std::string> knownFiles_;
    std::size_t knownEvents_ = 0;
};

} // namespace kelvo::test
