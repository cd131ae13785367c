#include "base/Files.h"
#include "base/Text.h"
#include "engine/EngineVM.h"

namespace kelvo {
namespace {

/// Smaller files are hashed before anybody could read a progress line.
constexpr std::size_t worthShowing = std::size_t{64} << 20;
/// Between two repaints, about what hashes in a hundredth of a second.
constexpr std::size_t repaintEvery = std::size_t{16} << 20;

} // namespace

void EngineVM::closeGap(const std::string& criterion) {
    if (deferred([this, criterion] { closeGap(criterion); })) return;
    if (criterionNode(criterion) == nullptr) return;
    const WorkQueue::Exclusive exclusive(queue_);
    const auto file = ports_.filePanel.choose(
        {"Attach evidence", "Select an evidence artifact to close " + criterion});
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
        presence_.require("Close " + criterion + " — verify to mark this criterion met");
    if (!presence.ok) {
        refuse("Not verified — " + criterion + " unchanged. " + presence.record, "close_gap_denied",
               {{"criterion", criterion}, {"record", presence.record}});
        return;
    }
    const std::string evidenceName = shownFileName(*file);
    const Closure closure = closeCriterion({
        .criterion = criterion,
        .title = "Closed " + criterion,
        .presence = presence.record,
        .evidence = *evidence,
        .evidenceName = evidenceName,
    });
    status.set("Closed " + criterion + ": readiness " + closure.change() + ".");
    cite("Closed " + criterion + " with evidence " + evidenceName + " [" +
             evidence->root().substr(0, 12) + "] — readiness " + closure.change(),
         "owner " + ownerName() + " · presence " + presence.record);
    log_.e("close_gap", {{"criterion", criterion},
                         {"gate_before", closure.gateBefore},
                         {"gate_after", 1.0},
                         {"readiness_after", closure.readinessAfter},
                         {"block", closure.totem.blockHash}});
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

void EngineVM::run(const Act& act) {
    switch (act.kind) {
    case Act::Kind::closeGap:
        return closeGap(act.criterion);
    case Act::Kind::generate:
        return generatePolicy(act.criterion);
    case Act::Kind::play:
        return play();
    case Act::Kind::pause:
        return pause();
    case Act::Kind::throttle:
        return throttle();
    case Act::Kind::bond:
        return bondCollapse();
    case Act::Kind::kyc: {
        const auto names = offeredRoles();
        if (names.empty() && *roleMap && !availableRoles().empty())
            return status.set(whyNoRole() + ". The owner names people in the role map.");
        const std::string byDefault = names.empty() ? "Owner" : names.front();
        return verifyKYC(role->value_or(byDefault));
    }
    case Act::Kind::snapshot:
        return snapshotOS();
    }
}

} // namespace kelvo
