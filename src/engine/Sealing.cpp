#include "base/Sha256.h"
#include "base/Text.h"
#include "engine/EngineVM.h"
#include "ledger/RecordFile.h"

namespace kelvo {
void EngineVM::bondCollapseNow(const Turn& turn) {
    if (!*pending) return;
    const Exclusive exclusive(turn);
    const PendingMeasurement measurement = **pending;
    // Fixed text, see docs/decisions.md.
    status.set("HIPR — awaiting Touch ID…");
    log_.e("hipr_request", {{"title", measurement.title}});
    const Presence::Result presence =
        provePresence(exclusive, "BOND — collapse PENDING→FINAL, seal totem to chain");
    if (!presence.ok) {
        refuse("HIPR DENIED — no chain write. " + presence.record, "hipr_denied",
               {{"record", presence.record}});
        return;
    }
    const std::string asOf = now();
    const Totem totem = appendTotem(measurement.payload, measurement.title, presence.record, asOf);
    pending.set(std::nullopt);
    const std::string outcome = writeForBouncer(totem, measurement.payload, asOf);

    const std::string block = abbreviated(totem.blockHash);
    const bool verified = chain_.verify();
    status.set("FINAL — totem " + block + " idx " + std::to_string(totem.index) +
               ". verify=" + (verified ? "true" : "false") + ". " + outcome);
    cite("measurement collapsed → FINAL", "HIPR " + presence.record + " · block " + block);
    log_.e("final", {{"index", totem.index},
                     {"blockHash", totem.blockHash},
                     {"verify", chain_.verify()},
                     {"record", presence.record}});
    cite("Checkpointed system state: " + std::to_string(adopted->size()) + " families",
         "1 approval · totem " + block);
    log_.e("checkpoint", {{"approvals", chain_.blocks().size()}, {"block", totem.blockHash}});
    proposeNBA();
}

Totem EngineVM::appendTotem(std::string_view payload, const std::string& title,
                            const std::string& presence, const std::string& asOf) {
    Totem totem = chain_.append(payload, title, presence, asOf);
    totems.set(Totems(chain_.blocks()));
    return totem;
}

std::string EngineVM::writeForBouncer(const Totem& totem, std::string_view payload,
                                      const std::string& asOf,
                                      const std::optional<StagedEvidence>& evidence) {
    const RecordWriting writing = writeRecordFile(directories_.outputs, totem, payload, asOf);
    keepRecord(totem, payload, writing, evidence);
    return writing.outcome;
}

Totem EngineVM::seal(const Json& payload, const std::string& title, const std::string& presence,
                     const std::string& asOf, const std::optional<StagedEvidence>& evidence) {
    // A payload without a JSON form is sealed as no bytes at all: the decision was made and counts.
    const std::string bytes = writeJson(payload).value_or("");
    Totem totem = appendTotem(bytes, title, presence, asOf);
    writeForBouncer(totem, bytes, asOf, evidence);
    return totem;
}

} // namespace kelvo
