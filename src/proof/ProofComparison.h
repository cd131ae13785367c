#pragma once

#include "base/Sha256.h"
#include "proof/Checkpoint.h"
#include "proof/Decisions.h"
#include "proof/ProofFolders.h"
#include "proof/ProofState.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// Everything that a comparison reads besides the files: a value, so that it can be handed to
/// another thread.
struct ProofInput {
    ProofFolders folders;
    ProofState state;
    std::string computer; ///< this one's name
    std::string now;      ///< ISO 8601
    /// Records whose line waits to be written: neither unlisted nor gone.
    std::set<std::string> pending;
    /// Names of the records that readiness was replayed from; none where no readiness is known.
    std::optional<std::set<std::string>> replayed;
    /// A log of this computer that was continued elsewhere, so that this run began a new one.
    std::string left;
    /// The keeper's count of changes when this was made, see `ProofKeeper::take`.
    std::uint64_t generation = 0;
    /// The readiness graph as this run read it; none where it could not be read.
    std::shared_ptr<const std::string> graph{};
    /// Up to which line each log but the own one is read; empty for all logs whole.
    std::map<std::string, std::int64_t> until{};
};

/// A log as it was read.
struct ComparedLog {
    /// The end of one line.
    struct Mark {
        Sha256Digest head{}; ///< of all bytes up to and with the line
        std::int64_t ts = 0; ///< the line's time, seconds since 1970
    };

    std::string id; ///< "" where the first line cannot be read
    std::string fileName;
    std::string computer;
    std::string organisation;
    std::string account; ///< of its last run
    LogPosition end;
    std::string lastTs;
    bool own = false;
    bool belongs = false;  ///< of this organisation; others are told, never counted
    bool arriving = false; ///< bytes after its last line feed, in another computer's log
    std::optional<std::int64_t>
        damagedLine;         ///< counted from 1; nothing from there on proves anything
    bool unreadable = false; ///< the damaged line is none; else it does not follow the one before
    std::optional<std::int64_t> clockSetBackAt; ///< first line dated before the one above it
    std::string graph;       ///< SHA-256 of the readiness graph as its last run read it
    std::vector<Mark> marks; ///< one a line

    bool whole() const { return !damagedLine; }
    /// The hash of the first `lines` lines; none where it has fewer.
    std::optional<std::string> headAt(std::int64_t lines) const;
};

/// One member of a changed record; none where it is absent.
struct MemberDifference {
    std::string member;
    std::optional<std::string> sealed; ///< as JSON
    std::optional<std::string> now;
};

/// A criterion whose level in the readiness graph rose without a decision.
struct RaisedLevel {
    std::string criterion;
    double before = 0;
    double now = 0;
};

/// Something to look at. Which members are filled is said at each kind; `log`, `computer`,
/// `organisation` and `own` wherever a log is concerned.
struct ProofTrouble {
    /// Worst first.
    enum class Kind {
        logDamaged,       ///< `line`, `unreadable`
        ownLogLeft,       ///< the own log was continued elsewhere; a new one is begun
        logGone,          ///< known from before or from a checkpoint (`file`, where one names it)
        logRewritten,     ///< no longer begins as it did
        logShorter,       ///< `line`: how many lines it has lost
        copiesDisagree,   ///< `file`: the other copy, `line`: from which line on
        recordGone,       ///< `file`, `restorable`
        recordAltered,    ///< `file`, `restorable`, `differences`
        recordUnlisted,   ///< `file`, `counted`, `adoptable`
        recordEarlier,    ///< as unlisted, from before the log began, and it can be adopted
        recordUnreadable, ///< `file`, `reason`
        evidenceGone,     ///< `file` (record), `evidence` (hash)
        evidenceNotKept,  ///< `file`, `evidence`, `reason`
        graphChanged,     ///< since the own log's last run: `raised`
        clockAhead,       ///< `seconds`
        foreignLog,       ///< of another organisation; its records are unlisted
        notCountedYet,    ///< `count` decisions of a log that readiness has not replayed
        copyHarmless,     ///< `file`: the beginning of a log that is here, or the same
        arriving,         ///< `file` or `evidence` or the end of a log: `since`
    };

    Kind kind = Kind::logDamaged;
    std::string log;
    std::string computer;
    std::string organisation;
    bool own = false;
    std::string file;
    std::string evidence;
    std::string reason;
    std::string since;
    std::int64_t line = 0;
    std::int64_t count = 0;
    std::int64_t seconds = 0;
    bool unreadable = false;
    bool restorable = false; ///< the sealed bytes are in the vault
    bool counted = false;    ///< readiness counts it
    bool adoptable = false;
    std::vector<MemberDifference> differences;
    std::vector<RaisedLevel> raised;

    /// False for what needs nobody: something that is arriving, a harmless copy.
    bool needsLook() const;
};

/// How records, logs, vault and checkpoints stand to one another.
struct ProofComparison {
    std::string now;
    std::uint64_t generation = 0;
    std::string ownLog;
    std::vector<ComparedLog> logs;         ///< the own one first, then by id
    std::vector<LoggedDecision> decisions; ///< in order: by time, log id, line
    std::vector<ProofTrouble> troubles;    ///< worst first
    std::vector<StoredCheckpoint> checkpoints;
    std::size_t records = 0; ///< record files in the outputs folder

    std::int64_t counted = 0;   ///< decisions without the repeated ones
    std::int64_t computers = 0; ///< that have decisions or a log
    std::int64_t asSealed = 0;  ///< of the counted: record there and unchanged
    std::int64_t sinceCheckpoint = 0;
    std::optional<std::string> lastCheckpoint; ///< its time
    std::int64_t countedUnlisted = 0;          ///< records that readiness counts and no log knows

    ProofStanding standing; ///< its closings are places in `decisions`

    /// For the keeper: what to remember until the next time.
    std::map<std::string, SeenLog> seen;
    std::map<std::string, std::string> missed;

    const ComparedLog* log(std::string_view id) const;
};

/// Reads and compares the folders. Changes nothing, never fails: what cannot be read is not there.
/// Linear in the files read; memory is bounded by the logs and one record.
///
/// A record is known (a line of a log that belongs has its name and its bytes), altered (its name,
/// not its bytes) or unlisted; a name without a file is gone. What is merely not there is arriving
/// for 24 hours where there is another log. Evidence is looked up by name and size only.
ProofComparison compareProof(const ProofInput& input);

/// How one log stands to a block of a checkpoint.
struct CheckpointAnswer {
    enum class Verdict { holds, gone, anotherId, shorter, anotherContent };

    Verdict verdict = Verdict::holds;
    CheckpointBlock block;
    std::string computer;
    std::int64_t added = 0; ///< lines since, where it holds
    std::string sentence;
};

struct CheckpointCheck {
    std::vector<CheckpointAnswer> answers; ///< one a block
    std::vector<std::string> notes; ///< logs begun since; lines dated before it that were not in it

    bool holds() const;
};

CheckpointCheck checkCheckpoint(const Checkpoint& checkpoint, const ProofComparison& comparison);

} // namespace kelvo
