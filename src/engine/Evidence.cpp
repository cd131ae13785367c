#include "base/Files.h"
#include "base/Sha256.h"
#include "base/Text.h"
#include "engine/EngineVM.h"
#include "intelligence/EvidenceMapper.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

constexpr const char* chooseManually = "On-device mapping unavailable — choose criteria manually.";

/// A document is read whole to be decoded; a larger file is no document.
constexpr std::size_t largestDocument = std::size_t{1} << 30;

bool isPdf(const std::filesystem::path& file) {
    return lowerCased(file.extension().native()) == ".pdf";
}

} // namespace

void EngineVM::addEvidenceNow(const Turn& turn) {
    const Exclusive exclusive(turn);
    const auto file = chooseFile(exclusive, {"Add evidence",
                                             "Select a compliance document (pdf, txt, md, json)",
                                             {ContentType::pdf, ContentType::plainText,
                                              ContentType::text, ContentType::json}});
    if (!file) return refuse("No document selected.", "evidence_no_file");
    auto bytes = readFile(*file, largestDocument);
    if (!bytes) return refuse("Could not read document.", "evidence_unreadable");

    std::string text;
    if (isPdf(*file)) {
        text = ports_.pdfText.text(*bytes);
    } else if (isValidUtf8(*bytes)) {
        text = *bytes;
    }
    Document document{.name = shownFileName(*file),
                      .evidence = keeper_->vault().stage(std::move(*bytes)),
                      .text = std::move(text)};
    if (*mesh) {
        for (const SOC2Mesh::Node& node : (*mesh)->nodes)
            document.allowed.push_back(node.id);
    }
    status.set("Reading document on-device…");
    log_.e("evidence_added", {{"name", document.name}, {"chars", characterCount(document.text)}});
    const auto work = beginModelWork("Reading " + document.name);
    start([this, work, document = std::move(document)] { mapDocument(document, work); });
}

void EngineVM::mapDocument(const Document& document, std::uint64_t work) {
    EvidenceMapper::mapEvidence(
        ports_.model, document.text, document.allowed,
        [this, work, staged = Document{document.name, document.evidence, {}, document.allowed},
         resume = resumption()](std::optional<EvidenceMapping> mapping) {
            resume([this, work, staged, mapping = std::move(mapping)] {
                endModelWork(work);
                stageEvidence(staged, mapping);
            });
        });
}

void EngineVM::stageEvidence(const Document& document,
                             const std::optional<EvidenceMapping>& mapping) {
    const std::string& name = document.name;
    const auto& allowed = document.allowed;
    EvidenceProposal proposal{name, document.evidence.root(), chooseManually, {}};
    std::string outcome =
        "On-device mapping unavailable for " + name + " — choose criteria manually.";
    if (mapping && !mapping->criteria.empty()) {
        // The model's word counts only where it names a criterion that exists, to the letter.
        std::copy_if(mapping->criteria.begin(), mapping->criteria.end(),
                     std::back_inserter(proposal.criteria), [&](const std::string& id) {
                         return std::find(allowed.begin(), allowed.end(), id) != allowed.end();
                     });
        if (proposal.criteria.empty()) {
            outcome = "Mapped no valid criteria for " + name + " — choose manually.";
        } else {
            proposal.summary = mapping->summary;
            // Fixed text, see docs/decisions.md.
            outcome = "Apple Intelligence mapped " + name + " → " +
                      std::to_string(proposal.criteria.size()) + " criteria. Review & approve.";
        }
    }
    const std::string root = abbreviated(proposal.root);
    const std::size_t count = proposal.criteria.size();
    proposedEvidence_ = document.evidence;
    evidenceProposal.set(std::move(proposal));
    status.set(std::move(outcome));
    // Fixed text, see docs/decisions.md.
    cite("Staged evidence " + name + " [" + root + "] — " + std::to_string(count) +
             " criteria proposed",
         "Apple Intelligence on-device · sha256 " + root);
}

void EngineVM::confirmEvidenceNow(const Turn& turn, const std::vector<std::string>& criteria) {
    if (!*evidenceProposal || !*mesh) return;
    const Exclusive exclusive(turn);
    const EvidenceProposal proposal = **evidenceProposal;
    const StagedEvidence evidence = *proposedEvidence_;
    const Presence::Result presence =
        provePresence(exclusive, "Approve evidence " + proposal.name + " — verify to seal");
    if (!presence.ok) {
        return refuse("Not verified — evidence not sealed. " + presence.record, "evidence_denied",
                      {{"record", presence.record}});
    }
    const std::string moment = now();
    std::size_t sealed = 0;
    for (const std::string& id : criteria) {
        const SOC2Mesh::Node* node = criterionNode(id);
        if (node == nullptr || node->g >= 1.0) continue;
        Closing closing{
            .facts = {.criterion = id,
                      .attestedAt = moment,
                      .presence = presence.record,
                      .evidenceName = proposal.name},
            .title = "Closed " + id + " (evidence)",
            .evidence = evidence,
            .extra = {{"evidence_summary", proposal.summary}, {"ai_mapped", true}},
        };
        closeCriterion(closing);
        ++sealed;
        // Fixed text, see docs/decisions.md.
        cite("Sealed " + id + " from " + proposal.name + " [" + abbreviated(proposal.root) +
                 "] — readiness " + closing.readinessChange(),
             "owner " + ownerName() + " · Apple Intelligence mapped · presence " + presence.record);
        log_.e("evidence_sealed",
               {{"criterion", id}, {"evidence_name", proposal.name}, {"count", sealed}});
    }
    proposedEvidence_.reset();
    evidenceProposal.set(std::nullopt);
    status.set(sealed == 0 ? "Nothing sealed — selected criteria already met."
                           : "Sealed " + std::to_string(sealed) + " criteria from " +
                                 proposal.name + ": readiness " + percent(*readiness) + ".");
    proposeNBA();
}

} // namespace kelvo
