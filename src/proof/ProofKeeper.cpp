#include "proof/ProofKeeper.h"

#include "base/Json.h"
#include "base/Text.h"
#include "base/Time.h"
#include "proof/LineParser.h"
#include "proof/OwnLog.h"
#include "proof/RecordRebuild.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <mutex>
#include <tuple>
#include <utility>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

/// A large file that has no room is hashed anew at each try, hence seldom.
constexpr std::chrono::seconds firstPause{5};
constexpr std::chrono::seconds longestPause{3600};

/// A decision on its way into the vault and the log.
struct Pending {
    SealedDecision decision;
    std::string recordHash;
    Unkept status;
    std::string evidence;    ///< what its line says of the evidence
    std::uint64_t place = 0; ///< in the order of the seals
    bool logged = false;
    TimePoint nextTry{}; ///< of the evidence
    std::chrono::seconds pause = firstPause;

    bool done() const { return logged && !status.record && !status.evidence; }
};

/// A record that can be adopted.
struct Adoptable {
    std::string file;
    std::string bytes;
    RebuiltRecord record;
};

/// What a line says of evidence that is in the vault.
std::string keptWords(const SealedDecision& decision) {
    std::string words = decision.evidence ? "kept" : "none";
    if (decision.draft) words += "; draft " + sha256Hex(*decision.draft);
    return words;
}

tl::unexpected<FileError> failure(std::string words) {
    return tl::unexpected(FileError{std::move(words)});
}

/// Where a changed record is put aside: beside it, and no longer a record by its name.
fs::path asideOf(const fs::path& file, const std::string& moment) {
    std::string stamp = moment;
    std::erase_if(stamp, [](char c) { return c == '-' || c == ':'; });
    return fs::path(file.native() + ".changed-" + stamp);
}

bool sameLogs(const Checkpoint& a, const Checkpoint& b) {
    return a.blocks.size() == b.blocks.size() &&
           std::equal(a.blocks.begin(), a.blocks.end(), b.blocks.begin(),
                      [](const CheckpointBlock& x, const CheckpointBlock& y) {
                          return x.log == y.log && x.lines == y.lines && x.sha256 == y.sha256;
                      });
}

} // namespace

struct ProofKeeper::State {
    State(Setup given, const Clock& time)
        : setup(std::move(given)), clock(time), log(setup.folders, setup.computer, setup.machineId),
          vault(setup.folders, log.state().log) {}

    std::string now() const { return iso8601(clock.now()); }

    /// Puts into the vault what is not there, and the lines into the log as far as they can be
    /// written. True when something was kept.
    bool work(bool patient = true);
    bool keepBytes(Pending& pending);
    bool keepEvidence(Pending& pending, bool patient);
    bool writeLine(Pending& pending);
    tl::expected<void, FileError> append(const SealFact& fact);
    tl::expected<void, FileError> ensureRun(const std::string& account);
    std::string keepRunFile(const std::shared_ptr<const std::string>& bytes);
    std::optional<Adoptable> adoptable(const std::string& file, TimePoint latest) const;
    std::string adoptedEvidence(const RebuiltRecord& record);

    const Setup setup;
    const Clock& clock;
    mutable std::mutex mutex; ///< guards all that follows
    OwnLog log;
    Vault vault;
    std::shared_ptr<const std::string> graph; ///< shared with comparisons on other threads
    std::shared_ptr<const std::string> roles;
    std::string organisation;
    std::string runOfLog; ///< the log that knows of this run
    std::int64_t run = 0;
    std::deque<Pending> queue;
    std::uint64_t generation = 0;
    std::uint64_t sealed = 0;
    std::set<std::pair<std::string, std::string>> adopted; ///< names and records, in this process
    bool begun = false;                                    ///< the own log was to be read
};

ProofKeeper::ProofKeeper(Setup setup, const Clock& clock)
    : state_(std::make_unique<State>(std::move(setup), clock)) {
}

ProofKeeper::~ProofKeeper() = default;

Vault& ProofKeeper::vault() {
    return state_->vault;
}

void ProofKeeper::runFiles(std::optional<std::string> graph, std::optional<std::string> roles) {
    const std::scoped_lock lock(state_->mutex);
    if (graph) state_->organisation = LineParser().organisationOf(*graph);
    const auto shared = [](std::optional<std::string>& bytes) {
        return bytes ? std::make_shared<const std::string>(std::move(*bytes)) : nullptr;
    };
    state_->graph = shared(graph);
    state_->roles = shared(roles);
    // What is decided from now on rests on these files, which the log has not been told of.
    state_->runOfLog.clear();
}

void ProofKeeper::readOwnLog() {
    const std::scoped_lock lock(state_->mutex);
    state_->begun = true;
    state_->vault.removeLeftovers();
    (void)state_->log.open();
    state_->work();
}

std::optional<Unkept> ProofKeeper::keep(SealedDecision decision) {
    const std::scoped_lock lock(state_->mutex);
    State& state = *state_;
    ++state.generation;
    Pending pending;
    pending.status = {.file = decision.file,
                      .approved = decision.approval.sentence,
                      .since = state.now(),
                      .reason = {},
                      .line = true,
                      .record = true,
                      .evidence = decision.evidence.has_value()};
    pending.recordHash = sha256Hex(decision.record);
    pending.evidence = keptWords(decision);
    pending.decision = std::move(decision);
    const std::uint64_t place = pending.place = ++state.sealed;
    state.queue.push_back(std::move(pending));
    state.work();
    // Others may still wait behind which this one was kept.
    if (state.queue.empty() || state.queue.back().place != place) return std::nullopt;
    return unkeptOf().back();
}

std::vector<Unkept> ProofKeeper::unkeptOf() const {
    std::vector<Unkept> left;
    for (const Pending& each : state_->queue) {
        Unkept status = each.status;
        status.waiting = !state_->begun && !status.record && !status.evidence;
        left.push_back(std::move(status));
    }
    return left;
}

std::vector<Unkept> ProofKeeper::unkept() const {
    const std::scoped_lock lock(state_->mutex);
    return unkeptOf();
}

bool ProofKeeper::retry(bool patient) {
    const std::scoped_lock lock(state_->mutex);
    const bool kept = state_->work(patient);
    if (kept) ++state_->generation;
    return kept;
}

// --- The queue ---------------------------------------------------------------------------------

bool ProofKeeper::State::work(bool patient) {
    bool kept = false;
    for (Pending& each : queue) {
        if (each.status.record) kept = keepBytes(each) || kept;
        if (each.status.evidence) kept = keepEvidence(each, patient) || kept;
    }
    // In the order of the seals: behind one that cannot be written, none is.
    for (Pending& each : queue) {
        if (each.logged) continue;
        if (!begun || !writeLine(each)) break;
        kept = true;
    }
    std::erase_if(queue, [](const Pending& each) { return each.done(); });
    return kept;
}

bool ProofKeeper::State::keepBytes(Pending& pending) {
    auto fault = vault.keep(pending.decision.record);
    if (fault && pending.decision.draft) fault = vault.keep(*pending.decision.draft);
    pending.status.record = !fault;
    if (!fault) pending.status.reason = reasonInWords(fault.error());
    return fault.has_value();
}

bool ProofKeeper::State::keepEvidence(Pending& pending, bool patient) {
    const TimePoint moment = clock.now();
    if (patient && moment < pending.nextTry) return false;
    const auto kept = vault.keep(*pending.decision.evidence);
    pending.status.evidence = !kept;
    if (kept) {
        if (!pending.logged) pending.evidence = keptWords(pending.decision);
        return true;
    }
    pending.nextTry = moment + pending.pause;
    pending.pause = std::min(2 * pending.pause, longestPause);
    pending.status.reason = reasonInWords(kept.error());
    if (!pending.logged) pending.evidence = "not kept: " + pending.status.reason;
    return false;
}

bool ProofKeeper::State::writeLine(Pending& pending) {
    const SealedDecision& decision = pending.decision;
    auto written = ensureRun(decision.account);
    if (written) {
        written = append(DecisionLine{.adopted = false,
                                      .run = run,
                                      .account = decision.account,
                                      .file = decision.file,
                                      .record = pending.recordHash,
                                      .block = decision.block,
                                      .payload = decision.payload,
                                      .approval = decision.approval,
                                      .evidence = pending.evidence});
    }
    pending.logged = written.has_value();
    pending.status.line = !pending.logged;
    if (!written) pending.status.reason = reasonInWords(written.error());
    return pending.logged;
}

tl::expected<void, FileError> ProofKeeper::State::append(const SealFact& fact) {
    auto appended = log.append(fact, now(), organisation);
    if (appended) ++generation;
    return appended;
}

std::string ProofKeeper::State::keepRunFile(const std::shared_ptr<const std::string>& bytes) {
    if (!bytes) return "";
    // One that cannot be kept now is told by its hash alone, and kept by a later run.
    (void)vault.keep(*bytes);
    return sha256Hex(*bytes);
}

tl::expected<void, FileError> ProofKeeper::State::ensureRun(const std::string& account) {
    // First, since the log may turn out not to be the one that knows of this run.
    if (auto ready = log.prepare(); !ready) return ready;
    // A run that left its log tells the new one of itself, too.
    if (runOfLog == log.state().log) return {};
    run = log.lastRun() + 1;
    auto told = append(RunLine{.run = run,
                               .account = account,
                               .program = setup.program,
                               .graph = keepRunFile(graph),
                               .roles = keepRunFile(roles)});
    if (told) runOfLog = log.state().log;
    return told;
}

// --- Comparing ---------------------------------------------------------------------------------

ProofInput ProofKeeper::input(std::optional<std::set<std::string>> replayed) const {
    const std::scoped_lock lock(state_->mutex);
    const State& state = *state_;
    ProofInput input{.folders = state.setup.folders,
                     .state = state.log.state(),
                     .computer = state.log.computer(),
                     .now = state.now(),
                     .pending = {},
                     .replayed = std::move(replayed),
                     .left = state.log.left(),
                     .generation = state.generation,
                     .graph = state.graph};
    for (const Pending& each : state.queue) {
        if (!each.logged) input.pending.insert(each.decision.file);
    }
    return input;
}

bool ProofKeeper::take(const ProofComparison& comparison) {
    const std::scoped_lock lock(state_->mutex);
    if (comparison.generation != state_->generation) return false;
    state_->log.remember(comparison.seen, comparison.missed);
    return true;
}

// --- What the person does ------------------------------------------------------------------------

std::optional<Adoptable> ProofKeeper::State::adoptable(const std::string& file,
                                                       TimePoint latest) const {
    if (!isPlainFileName(file)) return std::nullopt;
    auto bytes = readFile(setup.folders.outputs / file, largestRecord);
    if (!bytes) return std::nullopt;
    auto record = rebuildRecord(file, *bytes);
    if (!record) return std::nullopt;
    const auto sealedAt = parseIso8601(record->totem.asOf);
    if (!sealedAt || *sealedAt > latest) return std::nullopt;
    return Adoptable{file, std::move(*bytes), std::move(*record)};
}

/// A statement or a reading is in its record; a file is kept if it was kept for another.
std::string ProofKeeper::State::adoptedEvidence(const RebuiltRecord& record) {
    if (record.evidenceRoot.empty()) return "none";
    const bool stated = sha256Hex(record.evidenceSummary) == record.evidenceRoot;
    if (stated && vault.keep(record.evidenceSummary)) return "kept";
    if (vault.sizeOf(record.evidenceRoot)) return "kept";
    return "not kept: sealed before files were kept";
}

tl::expected<std::size_t, FileError> ProofKeeper::adopt(const std::vector<std::string>& files,
                                                        const std::string& account,
                                                        const Approval& approval) {
    const std::scoped_lock lock(state_->mutex);
    State& state = *state_;
    ++state.generation;
    state.work();
    std::vector<Adoptable> records;
    for (const std::string& file : files) {
        auto record = state.adoptable(file, state.clock.now());
        // The comparison that the person saw may be from before the last adoption.
        if (record && !state.adopted.contains({file, sha256Hex(record->bytes)})) {
            records.push_back(std::move(*record));
        }
    }
    std::sort(records.begin(), records.end(), [](const Adoptable& a, const Adoptable& b) {
        return std::tie(a.record.totem.asOf, a.record.totem.index, a.file) <
               std::tie(b.record.totem.asOf, b.record.totem.index, b.file);
    });
    for (std::size_t done = 0; done < records.size(); ++done) {
        const Adoptable& each = records[done];
        auto kept = state.vault.keep(each.bytes);
        auto told = kept ? state.ensureRun(account) : tl::unexpected(kept.error());
        if (told) {
            told = state.append(DecisionLine{.adopted = true,
                                             .run = state.run,
                                             .account = account,
                                             .file = each.file,
                                             .record = *kept,
                                             .block = each.record.totem.blockHash,
                                             .payload = each.record.payload,
                                             .approval = approval,
                                             .evidence = state.adoptedEvidence(each.record)});
        }
        if (!told && done == 0) return tl::unexpected(told.error());
        if (!told) return done;
        state.adopted.emplace(each.file, *kept);
    }
    return records.size();
}

tl::expected<void, FileError> ProofKeeper::supply(const StagedEvidence& evidence,
                                                  const std::string& root, const std::string& name,
                                                  const std::string& account,
                                                  const Approval& approval) {
    if (evidence.root() != root) return failure("its hash is not the sealed one");
    const std::scoped_lock lock(state_->mutex);
    State& state = *state_;
    ++state.generation;
    if (auto kept = state.vault.keep(evidence); !kept) return kept;
    if (auto told = state.ensureRun(account); !told) return told;
    return state.append(SupplyLine{
        .run = state.run, .account = account, .root = root, .name = name, .approval = approval});
}

tl::expected<std::string, FileError> ProofKeeper::restore(const ProofComparison& comparison,
                                                          const std::string& file) {
    const auto last = std::find_if(comparison.decisions.rbegin(), comparison.decisions.rend(),
                                   [&](const LoggedDecision& each) { return each.file == file; });
    if (last == comparison.decisions.rend() || !isPlainFileName(file)) {
        return failure("no log knows it");
    }
    const std::scoped_lock lock(state_->mutex);
    State& state = *state_;
    ++state.generation;
    const auto bytes = state.vault.read(last->record, largestRecord);
    if (!bytes) return tl::unexpected(bytes.error());
    const fs::path place = state.setup.folders.outputs / file;
    std::string changed;
    std::error_code unknown;
    if (fs::exists(fs::symlink_status(place, unknown))) {
        const fs::path aside = asideOf(place, state.now());
        if (const int code = renameWithoutReplacing(place, aside); code != 0) {
            return tl::unexpected(systemError(place, code));
        }
        changed = aside.filename().native();
    }
    const auto written = writeFileAtomically(place, *bytes);
    if (!written) return tl::unexpected(written.error());
    return changed;
}

tl::expected<void, FileError> ProofKeeper::restoreStatement(const LoggedDecision& decision) {
    const std::scoped_lock lock(state_->mutex);
    State& state = *state_;
    const auto bytes = state.vault.read(decision.record, largestRecord);
    if (!bytes) return tl::unexpected(bytes.error());
    const auto record = parseJson(*bytes);
    if (!record || !record->is_object()) return failure("its record cannot be read");
    const auto summary = record->find("evidence_summary");
    if (summary == record->end() || !summary->is_string() ||
        sha256Hex(summary->get<std::string>()) != decision.evidenceRoot) {
        return failure("its record does not hold it");
    }
    ++state.generation;
    const auto kept = state.vault.keep(summary->get<std::string>());
    if (!kept) return tl::unexpected(kept.error());
    return {};
}

// --- Checkpoints ---------------------------------------------------------------------------------

tl::expected<StoredCheckpoint, FileError>
ProofKeeper::makeCheckpoint(const ProofComparison& comparison) {
    const std::scoped_lock lock(state_->mutex);
    State& state = *state_;
    const ComparedLog* own = comparison.log(comparison.ownLog);
    // Never before the own log's last line: a clock may have been set back.
    const std::string at = std::max(state.now(), own == nullptr ? "" : own->lastTs);
    Checkpoint checkpoint;
    for (const ComparedLog& log : comparison.logs) {
        if (!log.belongs || log.end.lines == 0) continue;
        const bool contradicts =
            std::any_of(comparison.checkpoints.begin(), comparison.checkpoints.end(),
                        [&](const StoredCheckpoint& stored) {
                            const CheckpointBlock* block = stored.checkpoint.blockOf(log.id);
                            return block != nullptr && log.headAt(block->lines) != block->sha256;
                        });
        if (contradicts) continue;
        checkpoint.blocks.push_back(
            {log.id, log.end.lines, log.end.head, withControlsShown(log.organisation), at});
    }
    if (checkpoint.blocks.empty()) return failure("nothing is sealed yet");
    if (!comparison.checkpoints.empty() &&
        sameLogs(comparison.checkpoints.back().checkpoint, checkpoint)) {
        return comparison.checkpoints.back();
    }
    if (const auto made = makeProofFolders(state.setup.folders); !made) {
        return tl::unexpected(made.error());
    }
    const ProofRights rights = proofRights(state.setup.folders);
    StoredCheckpoint stored{checkpointFileName(checkpoint), std::move(checkpoint)};
    const auto written = writeFileAtomically(
        state.setup.folders.checkpoints() / stored.fileName, checkpointText(stored.checkpoint),
        {.temporaryPrefix = ".kelvo-", .mode = rights.file, .group = rights.group});
    if (!written) return tl::unexpected(written.error());
    return stored;
}

tl::expected<void, FileError> ProofKeeper::packaged(const std::string& name,
                                                    const std::string& number,
                                                    const std::string& account) {
    const std::scoped_lock lock(state_->mutex);
    if (auto told = state_->ensureRun(account); !told) return told;
    return state_->append(PackageLine{.name = name, .tagmanifest = number});
}

const ProofFolders& ProofKeeper::folders() const {
    return state_->setup.folders;
}

} // namespace kelvo
