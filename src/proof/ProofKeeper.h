#pragma once

#include "ports/Clock.h"
#include "proof/ProofComparison.h"
#include "proof/SealLine.h"
#include "proof/Vault.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelvo {

/// What the proof needs to know of a seal, after the record file was written, or could not be.
struct SealedDecision {
    std::string account; ///< full name
    std::string file;    ///< the record file's name
    std::string record;  ///< its bytes
    std::string block;   ///< the totem's block hash
    std::string payload; ///< the sealed bytes
    Approval approval;
    std::optional<StagedEvidence> evidence; ///< none where the decision has none
    std::optional<std::string> draft;       ///< the unedited text of a draft edited before approval
};

/// A decision of which something is not in the proof folder yet. It is lost if the process ends
/// before a `retry` succeeds; its record is then unlisted at the next start and can be adopted.
struct Unkept {
    std::string file;
    std::string approved;
    std::string since;  ///< ISO 8601
    std::string reason; ///< "the disk is full", "the folder is read-only", "the folder is gone", …
    bool line = false;  ///< its line in the log is missing
    bool record = false;
    bool evidence = false;
    /// Only the first reading of the own log is waited for: no trouble.
    bool waiting = false;
};

/// Keeps the own log and the vault. Thread-safe; files are written under one lock of this object.
///
/// Invariants:
/// - The own log is only ever appended to, in one write and one flush a line, by the one process
///   that holds the lock file in the project folder.
/// - A line is written only where the log ends at `before` or `after` of the state file. Anything
///   else (gone, set back, continued elsewhere, changed) is left alone, and the next line begins a
///   new log.
/// - Lines are written in the order of the seals. One that cannot be written waits, with all after
///   it, for `retry`.
/// - Nothing here throws, blocks a seal or changes a record of its own accord.
class ProofKeeper {
public:
    struct Setup {
        ProofFolders folders;
        std::string computer = hostName();
        std::string machineId = kelvo::machineId();
        std::string program; ///< version
    };

    ProofKeeper(Setup setup, const Clock& clock);
    ~ProofKeeper();
    ProofKeeper(const ProofKeeper&) = delete;
    ProofKeeper& operator=(const ProofKeeper&) = delete;

    /// The vault to stage evidence in.
    Vault& vault();

    /// The readiness graph and the role map as this run read them; none where one could not be
    /// read. To be called before the first seal; called later, the next seal begins a run of its
    /// own in the log.
    void runFiles(std::optional<std::string> graph, std::optional<std::string> roles);

    /// Takes the lock, reads the own log and writes the lines that wait for it. For another thread
    /// than the window's; the first comparison comes after it. Reads again when called again.
    void readOwnLog();

    /// Keeps one decision: record, evidence and draft go into the vault, then one line into the
    /// log. Answers what is not kept, or none.
    std::optional<Unkept> keep(SealedDecision decision);

    /// What is still to be kept, oldest first.
    std::vector<Unkept> unkept() const;

    /// Tries again. True when something was kept. While it is `patient`, evidence that has no room
    /// is tried again after growing pauses only: each try hashes the file.
    bool retry(bool patient = true);

    /// What a comparison of now needs.
    ProofInput input(std::optional<std::set<std::string>> replayed) const;

    /// Remembers what a comparison has seen. False where a decision was kept meanwhile: the
    /// comparison may then tell of something half done, and is to be made again.
    bool take(const ProofComparison& comparison);

    /// Takes earlier records into the own log, after a presence check on `adoptSentence`: in order
    /// of their time, index and name. Those that cannot be adopted are passed over. Answers how
    /// many were.
    tl::expected<std::size_t, FileError> adopt(const std::vector<std::string>& files,
                                               const std::string& account,
                                               const Approval& approval);

    /// Keeps evidence found later, after a presence check on `supplySentence`. Fails, changing
    /// nothing, where its hash is not `root`.
    tl::expected<void, FileError> supply(const StagedEvidence& evidence, const std::string& root,
                                         const std::string& name, const std::string& account,
                                         const Approval& approval);

    /// Writes the sealed bytes of a record that is gone or was changed. A changed file stays beside
    /// it under the name that is answered ("" where there was none).
    tl::expected<std::string, FileError> restore(const ProofComparison& comparison,
                                                 const std::string& file);

    /// Keeps a statement or a reading again from the text that its record holds.
    tl::expected<void, FileError> restoreStatement(const LoggedDecision& decision);

    /// A checkpoint of the logs as compared, stored among those issued; the last one again where no
    /// log has grown. A log that contradicts an earlier checkpoint is left out: there are never two
    /// that disagree. Fails where nothing is sealed or it cannot be stored.
    tl::expected<StoredCheckpoint, FileError> makeCheckpoint(const ProofComparison& comparison);

    /// Notes in the own log that a package of that name was written.
    tl::expected<void, FileError> packaged(const std::string& name, const std::string& number,
                                           const std::string& account);

    /// The folders that it keeps.
    const ProofFolders& folders() const;

private:
    struct State;
    /// To be called with the keeper's lock held.
    std::vector<Unkept> unkeptOf() const;

    std::unique_ptr<State> state_;
};

} // namespace kelvo
