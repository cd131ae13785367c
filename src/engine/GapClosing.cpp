#include "base/Files.h"
#include "base/Sha256.h"
#include "base/Text.h"
#include "engine/EngineVM.h"

namespace kelvo {
namespace {

/// Smaller files are hashed before anybody could read a progress line.
constexpr std::size_t worthShowing = std::size_t{64} << 20;
/// Between two repaints, about what hashes in a hundredth of a second.
constexpr std::size_t repaintEvery = std::size_t{16} << 20;

} // namespace

void EngineVM::closeGapNow(const Turn& turn, const std::string& criterion) {
    if (criterionNode(criterion) == nullptr) return;
    const Exclusive exclusive(turn);
    const auto file = chooseFile(
        exclusive, {"Attach evidence", "Select an evidence artifact to close " + criterion});
    if (!file) {
        refuse("Evidence required to close " + criterion + " — no artifact selected.",
               "close_gap_no_evidence", {{"criterion", criterion}});
        return;
    }
    const auto evidence = stageFile(*file);
    if (!evidence) {
        refuse("Evidence required to close " + criterion + " — could not read artifact.",
               "close_gap_evidence_unreadable", {{"criterion", criterion}});
        return;
    }
    const Presence::Result presence =
        provePresence(exclusive, "Close " + criterion + " — verify to mark this criterion met");
    if (!presence.ok) {
        refuse("Not verified — " + criterion + " unchanged. " + presence.record, "close_gap_denied",
               {{"criterion", criterion}, {"record", presence.record}});
        return;
    }
    const std::string evidenceName = shownFileName(*file);
    Closing closing{.facts = {.criterion = criterion,
                              .presence = presence.record,
                              .evidenceName = evidenceName},
                    .title = "Closed " + criterion,
                    .evidence = *evidence};
    closeCriterion(closing);
    status.set("Closed " + criterion + ": readiness " + closing.readinessChange() + ".");
    cite("Closed " + criterion + " with evidence " + evidenceName + " [" +
             abbreviated(evidence->root()) + "] — readiness " + closing.readinessChange(),
         "owner " + ownerName() + " · presence " + presence.record);
    log_.e("close_gap", {{"criterion", criterion},
                         {"gate_before", closing.facts.gateBefore},
                         {"gate_after", 1.0},
                         {"readiness_after", closing.facts.readinessAfter},
                         {"block", closing.totem.blockHash}});
    proposeNBA();
}

std::optional<StagedEvidence> EngineVM::stageFile(const std::filesystem::path& file) {
    std::size_t shown = 0;
    const std::string title = "Reading " + shownFileName(file);
    const auto staged = keeper_->vault().stage(file, [&](std::size_t done, std::size_t size) {
        if (size < worthShowing || done - shown < repaintEvery) return;
        shown = done;
        const double share = static_cast<double>(done) / static_cast<double>(size);
        progress.set(Progress{title, std::min(share, 1.0)});
        ports_.eventLoop.processPending();
    });
    if (*progress) progress.set(std::nullopt);
    if (!staged) return std::nullopt;
    return *staged;
}

} // namespace kelvo
