#include "engine/EngineVM.h"

#include "base/Text.h"
#include "base/Time.h"
#include "base/Uuid.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace kelvo {
namespace {

/// A series loop of resistor, inertance and capacitor on one effort source.
ExtractedGraph startUpGraph() {
    return {
        .nodes = {{"Se", "Se", std::nullopt},
                  {"1", "j1", std::nullopt},
                  {"R", "R", 2.0},
                  {"I", "I", 0.5},
                  {"C", "C", 1.0}},
        .bonds = {{"Se", "1"}, {"1", "R"}, {"1", "I"}, {"1", "C"}},
    };
}

EngineVM::Factory& sharedFactory() {
    static EngineVM::Factory factory;
    return factory;
}

} // namespace

Directories Directories::below(const std::filesystem::path& home) {
    return {home / "bondgraphs/bondgraph/outputs", home / "bondgraphs/kelvo-soc2-app"};
}

void EngineVM::provideShared(Factory factory) {
    sharedFactory() = std::move(factory);
}

EngineVM& EngineVM::shared() {
    static const std::unique_ptr<EngineVM> instance = [] {
        assert(sharedFactory() && "the composition root provides the shared engine first");
        return sharedFactory()();
    }();
    return *instance;
}

EngineVM::EngineVM(const Ports& ports, Directories directories)
    : ports_(ports), directories_(std::move(directories)),
      log_(directories_.project / "kelvosoc2.events.ndjson", ports.clock),
      notify_(ports.notifications), presence_(ports.authentication, ports.clock),
      keeper_(std::make_shared<ProofKeeper>(
          ProofKeeper::Setup{.folders = {directories_.outputs, directories_.project},
                             .program = KELVO_VERSION},
          ports.clock)),
      unwritten_(directories_.outputs), source_(std::make_shared<DrivenSource>()),
      life_(std::make_shared<EngineVM*>(this)) {
    load(startUpGraph());
    loadMesh();
    loadRoleMap();
    snapshotOS();
    loadChat();
    rememberFiles();
}

EngineVM::~EngineVM() {
    *source_ = DrivenSource{};
}

void EngineVM::loadNow(const Turn&, const ExtractedGraph& graph) {
    const auto validated = graph.validated();
    if (!validated) {
        status.set("REJECTED: " + description(validated.error()));
        return;
    }
    // A failed installation has said so in the status line already.
    (void)install(*validated, "graph loaded");
}

void EngineVM::siriBuiltNow(const Turn&, const BondGraph& graph, const std::string& question) {
    (void)install(graph, "Siri → \"" + question + "\"");
    reply.set("Set up a model for that. Tap Run to see how it behaves.");
}

void EngineVM::siriSayNow(const Turn&, const std::string& text) {
    reply.set(text);
}

tl::expected<void, GraphError> EngineVM::install(const BondGraph& graph, const std::string& note) {
    auto space = StateSpace::create(graph);
    if (!space) {
        status.set("REJECTED: " + space.error().description());
        return tl::unexpected(space.error());
    }
    space_ = std::move(*space);

    source_->id = "Se";
    for (const Node& node : graph.nodes) {
        if (node.kind != NodeKind::Se) continue;
        source_->id = node.id;
        break;
    }
    sim_ = makeIntegrator(*space_);
    t.set(0);
    risk.set(0);
    riskLatched_ = false;
    setDrive(1.0);
    equations.set(describeModel());
    renderState();

    const std::size_t states = space_->states().size();
    status.set("loaded " + std::to_string(graph.nodes.size()) + " nodes, " +
               std::to_string(states) + " states");
    cite(note, "kernel SCAP (Karnopp causality)");
    log_.e("graph_loaded", {{"note", note}, {"nodes", graph.nodes.size()}, {"states", states}});
    proposeNBA();
    return {};
}

Integrator EngineVM::makeIntegrator(const StateSpace& space) const {
    const auto slot = space.sourceSlot(source_->id);
    return {space, SourceFunction([source = source_, slot](double, std::span<double> values) {
                if (slot) values[*slot] = source->effort;
            })};
}

std::string EngineVM::describeModel() const {
    std::vector<std::string> variables;
    for (const StateVar& state : space_->states()) {
        variables.push_back(state.nodeID + "·" + (state.kind == StateKind::charge ? "q" : "p"));
    }
    return "STATE VARS: " + joined(variables, ", ") +
           "\n"
           "POWER: source = stored + dissipated (Tellegen)\n"
           "evaluator: causal, deterministic — kernel owns numbers\n";
}

void EngineVM::renderState() {
    std::vector<std::string> pieces;
    const auto& values = sim_->state();
    for (std::size_t i = 0; i < values.size(); ++i) {
        pieces.push_back(space_->states()[i].nodeID + "=" + fixed(values[i], 4));
    }
    stateLine.set("t=" + fixed(sim_->t(), 3) + "  " + joined(pieces, "  ") +
                  "  risk=" + fixed(sim_->risk(), 5));
}

void EngineVM::setDrive(double effort) {
    source_->effort = effort;
    drive.set(effort);
}

Presence::Result EngineVM::provePresence(const Exclusive&, const std::string& sentence) {
    return presence_.require(sentence);
}

std::optional<std::filesystem::path> EngineVM::chooseFile(const Exclusive&,
                                                          const FilePanelRequest& request) {
    return ports_.filePanel.choose(request);
}

void EngineVM::start(std::function<void()> task) {
    ports_.eventLoop.post([resume = resumption(), task = std::move(task)] { resume(task); });
}

EngineVM::Resumption EngineVM::resumption() {
    return Resumption(life_);
}

std::uint64_t EngineVM::beginModelWork(std::string title) {
    std::vector<ModelWork> work = *modelWork;
    work.push_back({++modelWorkBegun_, std::move(title)});
    modelWork.set(std::move(work));
    return modelWorkBegun_;
}

void EngineVM::endModelWork(std::uint64_t id) {
    std::vector<ModelWork> work = *modelWork;
    work.erase(std::remove_if(work.begin(), work.end(),
                              [id](const ModelWork& each) { return each.id == id; }),
               work.end());
    modelWork.set(std::move(work));
}

void EngineVM::cancelModelWork() {
    ports_.model.cancel();
}

void EngineVM::refuse(std::string statusText, std::string_view event, Json fields) {
    status.set(std::move(statusText));
    log_.e(event, std::move(fields));
}

void EngineVM::cite(std::string claim, std::string source) {
    citationRows_.push_back({randomUuid(), std::move(claim), std::move(source), now()});
    citations.set(Citations(citationRows_));
}

std::string EngineVM::now() const {
    return iso8601(ports_.clock.now());
}

std::string EngineVM::ownerName() const {
    return principal->value_or("unverified");
}

std::string EngineVM::contributorRole() const {
    return role->value_or("contributor");
}

std::string EngineVM::personName() const {
    return principal->value_or("user");
}

} // namespace kelvo
