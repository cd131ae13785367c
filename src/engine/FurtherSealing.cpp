// Seals besides closings: they change no readiness, and go the same way through presence, chain,
// record file and log.

#include "base/Sha256.h"
#include "engine/EngineVM.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

/// Why these dates would count for nothing; none where they would not.
std::optional<std::string> faultOf(const EvidenceItem& item, Day today) {
    const auto from = parseIsoDay(item.coversFrom);
    const auto to = parseIsoDay(item.coversTo);
    if (!isHash(item.root)) return "an item names no evidence";
    if (!from || !to) return "both days are needed";
    if (*from > *to) return "the first day is after the last";
    if (*to > today) return "days that are still to come cannot be covered";
    return std::nullopt;
}

} // namespace

bool EngineVM::mayRecord(const std::string& criterion) const {
    if (mayDecide()) return true;
    if (!*principal || roleReadonly()) return false;
    const auto own = roleControls();
    return std::any_of(own.begin(), own.end(),
                       [&](const RoleMap::Control& each) { return each.criterion == criterion; });
}

bool EngineVM::sealFurther(const Exclusive& exclusive, const FurtherSeal& further,
                           const std::optional<StagedEvidence>& evidence) {
    const std::string source(sourceOf(further));
    const std::string title = furtherTitle(further);
    Json payload = furtherPayload(further);
    // What has no JSON form would be sealed as nothing at all.
    if (!writeJson(payload)) {
        refuse("A text cannot be written — nothing was sealed.", "further_refused",
               {{"source", source}});
        return false;
    }
    const Presence::Result presence = provePresence(exclusive, furtherSentence(further));
    if (!presence.ok) {
        refuse("Not verified — nothing was sealed. " + presence.record, "further_denied",
               {{"source", source}, {"record", presence.record}});
        return false;
    }
    const std::string moment = now();
    payload["owner"] = ownerName();
    payload["role"] = contributorRole();
    payload["presence"] = presence.record;
    payload["attested_at"] = moment;
    payload["tip"] = chain_.tip();
    const Totem totem = seal(payload, title, presence.record, moment, evidence);
    status.set("Sealed: " + title + ".");
    cite(title + " [" + abbreviated(totem.blockHash) + "]",
         "owner " + ownerName() + " · presence " + presence.record);
    log_.e("further_sealed", {{"source", source}, {"title", title}, {"block", totem.blockHash}});
    proposeNBA();
    return true;
}

void EngineVM::setPeriodNow(const Turn& turn, const AuditPeriod& period) {
    if (!mayDecide())
        return refuse("Only the owner sets the audit period — nothing was changed.",
                      "period_refused");
    if (period.from > period.to || (!period.type2 && period.from != period.to))
        return refuse(period.type2 ? "The period ends before it begins — nothing was changed."
                                   : "A Type I report is of one day — nothing was changed.",
                      "period_refused");
    const Exclusive exclusive(turn);
    sealFurther(exclusive, period);
}

void EngineVM::recordEvidenceDatesNow(const Turn& turn, const std::vector<EvidenceItem>& items) {
    if (items.empty()) return;
    if (!*principal || roleReadonly())
        return refuse("Read-only role — nothing was changed.", "readonly_refused");
    const Day today = std::chrono::floor<std::chrono::days>(ports_.clock.now());
    for (const EvidenceItem& item : items) {
        if (const auto fault = faultOf(item, today)) {
            return refuse("No dates were recorded: " + *fault + ".", "dates_refused",
                          {{"name", item.name}, {"error", *fault}});
        }
    }
    const Exclusive exclusive(turn);
    sealFurther(exclusive, EvidenceDates{items});
}

void EngineVM::recordNoteNow(const Turn& turn, const Note& note) {
    const bool allowed =
        note.kind == Note::Kind::exception ? mayRecord(note.criterion) : mayDecide();
    if (!allowed)
        return refuse("Not among your tasks — nothing was changed.", "note_refused",
                      {{"criterion", note.criterion}});
    const bool days = (note.from.empty() || parseIsoDay(note.from)) &&
                      (note.to.empty() || parseIsoDay(note.to)) &&
                      (note.from.empty() || note.to.empty() || note.from <= note.to);
    const bool about = note.about.empty() ? note.kind == Note::Kind::exception : isHash(note.about);
    if (criterionNode(note.criterion) == nullptr || !days || !about)
        return refuse("The note names no such criterion, record or days — nothing was changed.",
                      "note_refused", {{"criterion", note.criterion}});
    const Exclusive exclusive(turn);
    sealFurther(exclusive, note);
}

void EngineVM::recordDocumentNow(const Turn& turn, ReportDocument::Kind kind) {
    if (!mayDecide())
        return refuse("Only the owner records the report's documents — nothing was changed.",
                      "document_refused");
    const Exclusive exclusive(turn);
    const auto file =
        chooseFile(exclusive, {"Add", "Select the file: " + std::string(titleOf(kind))});
    if (!file) return status.set("No file selected — nothing was changed.");
    const auto staged = stageFile(*file);
    if (!staged) return status.set("Could not read " + shownFileName(*file) + ".");
    sealFurther(exclusive, ReportDocument{kind, staged->root(), shownFileName(*file)}, *staged);
}

} // namespace kelvo
