#include "support/World.h"

#include "base/Files.h"
#include "base/Text.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace kelvo::test {
namespace {

std::string show(bool value) {
    return value ? "true" : "false";
}

std::string show(const std::optional<std::string>& value) {
    return value.value_or("none");
}

} // namespace

World::World() : directories_(Directories::below(root_.path())) {
    std::filesystem::create_directories(directories_.outputs);
    std::filesystem::create_directories(directories_.project);
    processes.secure();
    authentication.onAsk = [this](const std::string& reason) { note("presence " + reason); };
    filePanel.onAsk = [this](const FilePanelRequest& request) { note("panel " + request.prompt); };
    notifications.onPost = [this](const Notification& posted) { note("notify " + posted.title); };
}

World::~World() = default;

EngineVM& World::start() {
    stop();
    const Ports ports{clock,     ticker,  eventLoop, account, authentication, notifications,
                      filePanel, pdfText, processes, model,   background};
    engine_ = std::make_unique<EngineVM>(ports, directories_);
    observe();
    transcript();
    return *engine_;
}

void World::stop() {
    subscriptions_.clear();
    engine_.reset();
}

std::filesystem::path World::write(const std::filesystem::path& path,
                                   std::string_view bytes) const {
    std::filesystem::path whole = path.is_absolute() ? path : root_.path() / path;
    std::ofstream(whole, std::ios::binary) << bytes;
    return whole;
}

void World::writeMesh(const std::vector<Criterion>& criteria) const {
    Json nodes = Json::array();
    for (const Criterion& each : criteria) {
        nodes.push_back(
            {{"id", each.id}, {"g", each.g}, {"w", each.w}, {"evidence", each.evidence}});
    }
    write(outputs() / "soc2-mesh-bondgraph.json", Json{{"nodes", nodes}}.dump());
}

void World::writeRoles(const Json& roles) const {
    Json document = Json::object();
    document["roles"] = roles;
    write(outputs() / "roles-bondgraph.json", document.dump());
}

EngineVM& World::startAsOwner(const std::vector<Criterion>& criteria) {
    writeMesh(criteria);
    start();
    engine_->verifyKYC("Owner");
    transcript();
    return *engine_;
}

std::vector<std::string> World::transcript() {
    poll();
    return std::exchange(transcript_, {});
}

std::vector<Json> World::events() const {
    std::vector<Json> all;
    std::ifstream file(project() / "kelvosoc2.events.ndjson");
    for (std::string line; std::getline(file, line);) {
        Json event = Json::parse(line);
        event.erase("ts");
        all.push_back(std::move(event));
    }
    return all;
}

std::vector<std::string> World::eventKinds() const {
    std::vector<std::string> kinds;
    for (const Json& event : events())
        kinds.push_back(event.at("kind").get<std::string>());
    return kinds;
}

std::set<std::string> World::files() const {
    std::set<std::string> names;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(outputs(), missing)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

Json World::record(std::size_t index) const {
    const Totem& totem = engine_->chain().blocks()[index];
    const std::string ending =
        "-" + std::to_string(totem.index) + "-" + totem.blockHash.substr(0, 12) + ".totem.json";
    for (const std::string& name : files()) {
        if (!name.ends_with(ending)) continue;
        const auto bytes = readFile(outputs() / name);
        if (bytes) return Json::parse(*bytes);
    }
    throw std::runtime_error("no record file ends with " + ending);
}

void World::note(std::string line) {
    poll();
    transcript_.push_back(std::move(line));
}

/// Files and events have no announcement; what is new of them happened before what is noted next.
void World::poll() {
    for (const std::string& name : files()) {
        if (!knownFiles_.insert(name).second) continue;
        const std::string text = readFile(outputs() / name).value_or("");
        const Json document = Json::parse(text, nullptr, false);
        transcript_.push_back("file " + name + " " +
                              (document.is_discarded() ? text : document.dump()));
    }
    const auto all = events();
    for (; knownEvents_ < all.size(); ++knownEvents_) {
        transcript_.push_back("event " + all[knownEvents_].dump());
    }
}

template <class T, class Show>
void World::watch(const Published<T>& property, Show shown) {
    subscriptions_.push_back(
        property.observe([this] { poll(); }, [this, &property, shown] { note(shown(*property)); }));
}

void World::observe() {
    EngineVM& vm = *engine_;
    watch(vm.status, [](const auto& text) { return "status " + text; });
    watch(vm.running, [](bool value) { return "running " + show(value); });
    watch(vm.totems, [](const auto& rows) { return "totems " + std::to_string(rows.size()); });
    watch(vm.citations, [](const auto& rows) {
        return "cite " + rows.front().claim + " | " + rows.front().source;
    });
    watch(vm.pending, [](const auto& staged) {
        return "pending " + (staged ? staged->title : std::string("none"));
    });
    watch(vm.humanNBA,
          [&vm](const NBA& card) { return "cards " + vm.agentNBA->title + " | " + card.title; });
    watch(vm.drive, [](double value) { return "drive " + fixed(value, 3); });
    watch(vm.reply, [](const auto& text) { return "reply " + text; });
    watch(vm.chat,
          [](const auto& rows) { return "chat " + rows.back().role + ": " + rows.back().text; });
    watch(vm.assistantBusy, [](bool value) { return "busy " + show(value); });
    watch(vm.proposedAction,
          [&vm](const auto&) { return "proposed " + show(vm.proposedActionName()); });
    watch(vm.principal, [](const auto& name) { return "principal " + show(name); });
    watch(vm.role, [](const auto& name) { return "role " + show(name); });
    watch(vm.mesh, [&vm](const auto&) { return "mesh " + std::to_string(vm.metCount()) + " met"; });
    watch(vm.readiness, [](double value) { return "readiness " + percent(value); });
    watch(vm.evidenceProposal, [](const auto& proposal) {
        return "evidence " + (proposal
                                  ? proposal->name + " [" + joined(proposal->criteria, " ") + "]"
                                  : std::string("none"));
    });
    watch(vm.generatedDoc, [](const auto& draft) {
        return "draft " + (draft ? draft->criterion : std::string("none"));
    });
    watch(vm.osFacts, [](const auto& facts) { return "facts " + std::to_string(facts.size()); });
    watch(vm.progress, [](const auto& work) {
        return "progress " +
               (work ? work->title + " " + percent(work->share) : std::string("none"));
    });
}

} // namespace kelvo::test
