#include "intelligence/SiriBridge.h"

#include "intelligence/GenerableRecords.h"
#include "intelligence/ModelSession.h"

#include <utility>

namespace kelvo {
namespace {

constexpr const char* askInstructions =
    "You are a SOC2 compliance assistant. Answer the user briefly, in plain business English.\n"
    "NEVER use internal/technical jargon in `answer` — no \"bond graph\", \"totem\", \"kernel\", "
    "\"causality\",\n"
    "\"dissipation\", \"element\", \"junction\", or symbols. Talk about controls, evidence, risk, "
    "and approvals\n"
    "the way an auditor or founder would.\n"
    "Separately and silently: if the user DESCRIBES a system or control to model, fill nodes/bonds "
    "with the\n"
    "structure (Se Sf R C I TF GY j0 j1) — this is internal and never shown to the user. Never "
    "assign\n"
    "causality or solve equations. For general questions, answer plainly and leave nodes/bonds "
    "empty.";

constexpr const char* extractInstructions =
    "You translate a physical-system description into a bond-graph STRUCTURE only.\n"
    "List elements (Se Sf R C I TF GY j0 j1) and the bonds between them.\n"
    "Never assign causality, effort/flow direction, or solve equations — only structure + "
    "parameters.";

ExtractedGraph extracted(std::vector<GeneratedNode> nodes, std::vector<GeneratedBond> bonds) {
    ExtractedGraph graph;
    for (GeneratedNode& node : nodes) {
        graph.nodes.push_back({std::move(node.id), std::move(node.kind), node.param});
    }
    for (GeneratedBond& bond : bonds) {
        graph.bonds.push_back({std::move(bond.from), std::move(bond.to)});
    }
    return graph;
}

} // namespace

std::string SiriError::description() const {
    // Fixed text, see docs/decisions.md.
    return "Apple Intelligence unavailable: " + reason +
           ". Enable it in System Settings ▸ Apple Intelligence & Siri.";
}

namespace SiriBondGraph {

std::string description(const Failure& failure) {
    struct Describe {
        std::string operator()(const SiriError& error) const { return error.description(); }
        std::string operator()(const ModelFailure& error) const { return error.description; }
        std::string operator()(const GraphRejection& error) const {
            return kelvo::description(error);
        }
    };
    return std::visit(Describe{}, failure);
}

void ask(LanguageModel& model, const std::string& question,
         std::function<void(tl::expected<Answer, Failure>)> done) {
    if (const auto reason = model.unavailableReason()) {
        return done(tl::unexpected(Failure(SiriError{*reason})));
    }
    generate<SOCReply>(
        model, askInstructions, question,
        [done = std::move(done)](tl::expected<SOCReply, ModelFailure> reply) {
            if (!reply) return done(tl::unexpected(Failure(reply.error())));
            Answer answer{std::move(reply->answer), std::nullopt};
            if (!reply->nodes.empty()) {
                auto graph =
                    extracted(std::move(reply->nodes), std::move(reply->bonds)).validated();
                if (graph) answer.graph = std::move(*graph);
            }
            done(std::move(answer));
        });
}

void extract(LanguageModel& model, const std::string& text,
             std::function<void(tl::expected<BondGraph, Failure>)> done) {
    if (const auto reason = model.unavailableReason()) {
        return done(tl::unexpected(Failure(SiriError{*reason})));
    }
    generate<GeneratedGraph>(
        model, extractInstructions, text,
        [done = std::move(done)](tl::expected<GeneratedGraph, ModelFailure> reply) {
            if (!reply) return done(tl::unexpected(Failure(reply.error())));
            const auto graph =
                extracted(std::move(reply->nodes), std::move(reply->bonds)).validated();
            if (!graph) return done(tl::unexpected(Failure(graph.error())));
            auto causal = graph->assignCausality();
            if (!causal) return done(tl::unexpected(Failure(GraphRejection(causal.error()))));
            done(std::move(*causal));
        });
}

} // namespace SiriBondGraph
} // namespace kelvo
