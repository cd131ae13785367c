#include "base/Files.h"
#include "base/Text.h"
#include "engine/EngineVM.h"
#include "proof/ProofWords.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

/// A comparison that a seal overtook is made again; a person who seals faster than files are read
/// is waited for by the next change.
constexpr int comparisonsInARow = 3;

/// As large as the readers of readiness graph and role map accept.
constexpr std::size_t largestListFile = std::size_t{16} << 20;

} // namespace

// --- Keeping what was sealed -----------------------------------------------------------------

void EngineVM::rememberFiles() {
    const auto bytesOf = [this](const char* name) -> std::optional<std::string> {
        auto bytes = readFile(directories_.outputs / name, largestListFile);
        return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
    };
    keeper_->runFiles(bytesOf("soc2-mesh-bondgraph.json"), bytesOf("roles-bondgraph.json"));
    filesAtStart_ = recordFileNames(directories_.outputs);
}

Approval EngineVM::approval() const {
    const Presence::Asked& asked = presence_.last();
    return {asked.sentence, asked.asked, asked.answered};
}

void EngineVM::keepRecord(const Totem& totem, std::string_view payload,
                          const RecordWriting& writing,
                          const std::optional<StagedEvidence>& evidence) {
    // What has no form on the disk has none in the proof.
    if (!writing.record || writing.record->file.empty()) return;
    sealedFiles_.insert(writing.record->file);
    (void)keeper_->keep({.account = ports_.account.fullName(),
                         .file = writing.record->file,
                         .record = writing.record->bytes,
                         .block = totem.blockHash,
                         .payload = std::string(payload),
                         .approval = approval(),
                         .evidence = evidence,
                         .draft = std::nullopt});
    if (writing.failure) {
        unwritten_.add(*writing.record, totem.title, now(), *writing.failure);
        // Behind the operation's own event lines, which come in their order.
        start([this, file = writing.record->file, why = writing.failure->description] {
            log_.e("record_unwritten", {{"file", file}, {"error", why}});
        });
    }
    showUnkept();
    compareProof();
}

void EngineVM::showUnkept() {
    unkept.set(keeper_->unkept());
    unwritten.set(unwritten_.entries());
}

void EngineVM::keepAgain(bool now) {
    if (unwritten_.entries().empty() && keeper_->unkept().empty()) return;
    const std::vector<SealedRecord> written = unwritten_.retry();
    for (const SealedRecord& record : written)
        log_.e("record_written", {{"file", record.file}});
    const bool kept = keeper_->retry(!now);
    showUnkept();
    if (kept || !written.empty()) compareProof();
}

tl::expected<void, FileError> EngineVM::saveUnwritten(const std::filesystem::path& folder) const {
    return unwritten_.saveCopies(folder);
}

// --- Comparing -------------------------------------------------------------------------------

void EngineVM::beginProof() {
    if (proofBegun_) return;
    proofBegun_ = true;
    comparing_ = true;
    ports_.background.run([keeper = keeper_] { keeper->readOwnLog(); },
                          [resume = resumption(), this] {
                              resume([this] {
                                  comparing_ = false;
                                  showUnkept();
                                  compareProof();
                              });
                          });
}

void EngineVM::compareProof() {
    if (!proofBegun_) return;
    if (comparing_) {
        compareAgain_ = true;
        return;
    }
    comparing_ = true;
    compareAgain_ = false;
    startComparison(comparisonsInARow);
}

void EngineVM::startComparison(int tries) {
    std::set<std::string> replayed = filesAtStart_;
    replayed.insert(sealedFiles_.begin(), sealedFiles_.end());
    const auto input = std::make_shared<ProofInput>(
        keeper_->input(*mesh ? std::optional(std::move(replayed)) : std::nullopt));
    const auto result = std::make_shared<ProofComparison>();
    ports_.background.run([input, result] { *result = ::kelvo::compareProof(*input); },
                          [this, result, tries, resume = resumption()] {
                              resume([this, result, tries] { takeComparison(result, tries); });
                          });
}

void EngineVM::takeComparison(const std::shared_ptr<const ProofComparison>& result, int tries) {
    const bool current = keeper_->take(*result);
    if (!current && tries > 1) return startComparison(tries - 1);
    comparing_ = false;
    proof.set(result);
    if (compareAgain_ || !current) compareProof();
}

// --- What the person does about it -----------------------------------------------------------

bool EngineVM::mayDecide() const {
    return principal->has_value() && *role == "Owner" && !roleReadonly();
}

void EngineVM::adoptRecordsNow(const Turn& turn, const std::vector<std::string>& files) {
    if (!mayDecide())
        return refuse("Only the owner adopts records — nothing was changed.", "adopt_refused");
    const Exclusive exclusive(turn);
    const Presence::Result presence = provePresence(exclusive, adoptSentence(files.size()));
    if (!presence.ok) {
        return refuse("Not verified — nothing was adopted. " + presence.record, "adopt_denied",
                      {{"record", presence.record}});
    }
    const auto taken = keeper_->adopt(files, ports_.account.fullName(), approval());
    if (!taken) {
        return refuse("Nothing was adopted: " + taken.error().description, "adopt_failed",
                      {{"error", taken.error().description}});
    }
    status.set("Adopted " + std::to_string(*taken) +
               (*taken == 1 ? " earlier record" : " earlier records") + " into the log.");
    log_.e("records_adopted", {{"count", *taken}});
    compareProof();
}

void EngineVM::restoreRecordNow(const Turn&, const std::string& file) {
    if (!*principal || roleReadonly())
        return refuse("Read-only role — nothing was changed.", "readonly_refused");
    const ProofComparison* known = proof->get();
    if (known == nullptr) return;
    const auto restored = keeper_->restore(*known, file);
    if (!restored) {
        return refuse("Could not restore " + file + ": " + restored.error().description,
                      "restore_failed", {{"file", file}, {"error", restored.error().description}});
    }
    status.set("Restored " + file + " as it was sealed." +
               (restored->empty() ? "" : " The changed file is kept as " + *restored + "."));
    log_.e("record_restored", {{"file", file}, {"changed_file", *restored}});
    compareProof();
}

void EngineVM::supplyEvidenceNow(const Turn& turn, const std::string& root) {
    if (!*principal || roleReadonly())
        return refuse("Read-only role — nothing was changed.", "readonly_refused");
    const LoggedDecision* decision = decisionWith(root);
    if (decision == nullptr) return;
    const std::string name = decision->evidenceName;
    // What the record itself holds need not be looked for.
    if (decision->byStatement && keeper_->restoreStatement(*decision)) {
        status.set("Kept " + name + " again, from its record.");
        log_.e("evidence_restored", {{"name", name}, {"root", root}});
        return compareProof();
    }
    const Exclusive exclusive(turn);
    const auto file = chooseFile(exclusive, {"Supply the file", "Select the file " + name});
    if (!file) return status.set("No file selected — nothing was changed.");
    const auto staged = stageFile(*file);
    if (!staged) return status.set("Could not read " + shownFileName(*file) + ".");
    if (staged->root() != root) {
        return refuse("That is another file: its hash is not the sealed one. Nothing was changed.",
                      "supply_refused", {{"name", name}, {"root", staged->root()}});
    }
    const Presence::Result presence = provePresence(exclusive, supplySentence(name));
    if (!presence.ok) {
        return refuse("Not verified — nothing was changed. " + presence.record, "supply_denied",
                      {{"record", presence.record}});
    }
    const auto supplied =
        keeper_->supply(*staged, root, name, ports_.account.fullName(), approval());
    if (!supplied) {
        return refuse("Could not keep " + name + ": " + supplied.error().description,
                      "supply_failed", {{"error", supplied.error().description}});
    }
    status.set("Kept " + name + ": it is the file that was sealed.");
    log_.e("evidence_supplied", {{"name", name}, {"root", root}});
    compareProof();
}

const LoggedDecision* EngineVM::decisionWith(const std::string& root) const {
    const ProofComparison* known = proof->get();
    if (known == nullptr) return nullptr;
    const auto found =
        std::find_if(known->decisions.begin(), known->decisions.end(),
                     [&](const LoggedDecision& each) { return each.evidenceRoot == root; });
    return found == known->decisions.end() ? nullptr : &*found;
}

void EngineVM::verifyEvidence(const std::string& root) {
    const auto result = std::make_shared<Verification>(Verification::absent);
    ports_.background.run(
        [keeper = keeper_, root, result] { *result = keeper->vault().verify(root); },
        [this, root, result, resume = resumption()] {
            resume([this, root, result] { showLook(root, *result); });
        });
}

void EngineVM::showLook(const std::string& root, Verification result) {
    auto looks = *evidenceLooks;
    const bool good = result == Verification::same;
    looks[root] = {now(), good};
    evidenceLooks.set(std::move(looks));
    log_.e("evidence_verified", {{"root", root}, {"same", good}});
    if (!good) compareProof();
}

std::filesystem::path EngineVM::keptFile(const std::string& root) const {
    return keeper_->vault().path(root);
}

// --- Checkpoints -----------------------------------------------------------------------------

void EngineVM::makeCheckpointNow(const Turn&) {
    if (!mayDecide()) return refuse("Only the owner makes a checkpoint.", "checkpoint_refused");
    const ProofComparison* known = proof->get();
    if (known == nullptr) return;
    const auto made = keeper_->makeCheckpoint(*known);
    if (!made) {
        return refuse("No checkpoint was made: " + made.error().description,
                      "log_checkpoint_failed", {{"error", made.error().description}});
    }
    status.set("Checkpoint of the log made: " + std::to_string(made->checkpoint.lines()) +
               " lines.");
    log_.e("log_checkpoint", {{"lines", made->checkpoint.lines()}, {"file", made->fileName}});
    checkpoint.set(*made);
    compareProof();
}

tl::expected<void, FileError> EngineVM::storeSignature(const std::string& checkpointFile,
                                                       const std::string& signature) const {
    const std::string name = checkpointFile + ".sig";
    if (!isPlainFileName(name)) return tl::unexpected(FileError{"no file name: " + name});
    const ProofFolders folders{directories_.outputs, directories_.project};
    return writeFileAtomically(folders.checkpoints() / name, signature);
}

} // namespace kelvo
