#include "base/Files.h"
#include "base/Sha256.h"
#include "base/Text.h"
#include "engine/EngineVM.h"
#include "intelligence/PolicyGen.h"

#include <utility>

namespace kelvo {

void EngineVM::generatePolicyNow(const Turn&, const std::string& criterion) {
    const SOC2Mesh::Node* node = criterionNode(criterion);
    if (node == nullptr) return status.set("Unknown criterion " + criterion + ".");
    status.set("Writing policy for " + criterion + " on-device…");
    log_.e("policy_generate_start", {{"criterion", criterion}});
    const std::string owner = principal->value_or("owner");
    const auto work = beginModelWork("Writing the policy for " + criterion);
    start([this, work, criterion, evidence = node->evidence, owner] {
        PolicyGen::generate(
            ports_.model, criterion, evidence, owner,
            [this, work, criterion, resume = resumption()](std::optional<std::string> text) {
                resume([this, work, criterion, text = std::move(text)] {
                    endModelWork(work);
                    stagePolicy(criterion, text);
                });
            });
    });
}

void EngineVM::stagePolicy(const std::string& criterion, const std::optional<std::string>& text) {
    if (!text) {
        return refuse("On-device generation unavailable.", "policy_generate_unavailable",
                      {{"criterion", criterion}});
    }
    const std::size_t characters = characterCount(*text);
    generatedDoc.set(GeneratedDoc{criterion, *text});
    status.set("Drafted a policy for " + criterion + " from the graph. Review & approve to seal.");
    // Fixed text, see docs/decisions.md.
    cite("Generated policy for " + criterion + " from graph variables (" +
             std::to_string(characters) + " chars) — review pending",
         "Apple Intelligence on-device · grounded in node evidence");
    log_.e("policy_generated", {{"criterion", criterion}, {"chars", characters}});
}

void EngineVM::discardGeneratedNow(const Turn&) {
    generatedDoc.set(std::nullopt);
}

void EngineVM::approveGeneratedNow(const Turn& turn) {
    if (!*generatedDoc) return;
    const GeneratedDoc draft = **generatedDoc;
    const SOC2Mesh::Node* node = criterionNode(draft.criterion);
    if (node == nullptr) return;
    const Exclusive exclusive(turn);
    const Presence::Result presence = provePresence(
        exclusive, "Approve generated policy for " + draft.criterion + " — verify to seal");
    if (!presence.ok) {
        return refuse("Not verified — policy not sealed. " + presence.record, "policy_denied",
                      {{"criterion", draft.criterion}, {"record", presence.record}});
    }
    const StagedEvidence evidence = keeper_->vault().stage(draft.text);
    const std::string& sha = evidence.root();
    const std::string artifact = "policy-" + draft.criterion + "-" + sha.substr(0, 8) + ".txt";
    if (const auto written = writeArtifact(artifact, draft.text); !written) {
        return refuse("Could not write policy artifact: " + written.error().description,
                      "policy_write_failed",
                      {{"criterion", draft.criterion}, {"error", written.error().description}});
    }
    Closing closing{
        .facts = {.criterion = draft.criterion,
                  .presence = presence.record,
                  .evidenceName = "policy-" + draft.criterion + ".txt"},
        .title = "Sealed generated policy " + draft.criterion,
        .evidence = evidence,
        .extra = {{"evidence_summary", "generated from graph variables"},
                  {"generated", true},
                  {"source_variables", node->evidence}},
    };
    closeCriterion(closing);
    status.set("Sealed generated policy for " + draft.criterion + ": readiness " +
               closing.readinessChange() + ".");
    cite("Sealed generated policy for " + draft.criterion + " → " + artifact + " [" +
             abbreviated(sha) + "] — readiness " + closing.readinessChange(),
         "owner " + ownerName() + " · generated from graph variables · presence " +
             presence.record);
    log_.e("policy_generated_sealed", {{"criterion", draft.criterion},
                                       {"block", closing.totem.blockHash},
                                       {"readiness_after", closing.facts.readinessAfter}});
    generatedDoc.set(std::nullopt);
    proposeNBA();
}

tl::expected<void, FileError> EngineVM::writeArtifact(const std::string& name,
                                                      const std::string& text) const {
    // The name carries a criterion id from a file; it must not lead out of the folder.
    if (!isPlainFileName(name)) {
        return tl::unexpected(FileError{"\"" + name + "\" cannot be a file name"});
    }
    return writeFileAtomically(directories_.outputs / name, text);
}

} // namespace kelvo
