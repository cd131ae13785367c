#pragma once

#include "base/Descriptor.h"
#include "base/Files.h"
#include "base/Sha256.h"
#include "proof/ProofFolders.h"
#include "proof/ProofState.h"
#include "proof/SealLine.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace kelvo {

/// The seal log that this computer and account append to, and what the project folder knows of it.
/// Not thread-safe; the keeper guards it.
///
/// Invariants:
/// - Nothing is appended without the lock file in the project folder being held.
/// - Before a line is appended, the state file says where the log ends before and after it, and is
///   on the disk. A crash at any moment leaves the log at one of the two; a torn line behind them
///   is cut off before the next.
/// - A log that is at neither is never written to again: it is left, and a new one is begun.
class OwnLog {
public:
    OwnLog(ProofFolders folders, std::string computer, const std::string& machineId);

    /// Takes the lock and reads the log; does nothing where that was done. Fails where another
    /// program holds the lock, or the project folder or the log cannot be read.
    tl::expected<void, FileError> open();
    bool isOpen() const { return open_; }

    /// Makes the log ready for a line: reads it again where somebody else touched it, leaves it
    /// where it is not as this computer left it, cuts a torn end off. `state().log` and `lastRun()`
    /// are those of the log that `append` then writes to.
    tl::expected<void, FileError> prepare();

    /// After `prepare`: appends one line in one write and flushes it; the first one is preceded by
    /// the line that begins the log. On failure the log is as it was.
    tl::expected<void, FileError> append(const SealFact& fact, const std::string& ts,
                                         const std::string& organisation);

    const ProofState& state() const { return state_; }
    const std::string& computer() const { return computer_; }
    /// The log that was continued elsewhere and left by this run; "" where there is none.
    const std::string& left() const { return left_; }
    /// The last run that the log tells of; 0 where there is none.
    std::int64_t lastRun() const { return lastRun_; }

    /// Remembers how the other logs were seen. A state that cannot be written is not lost: the next
    /// line writes it again. Once the last line was seen to be there, its absence is no crash any
    /// more.
    void remember(std::map<std::string, SeenLog> seen, std::map<std::string, std::string> missed);

private:
    std::filesystem::path statePath() const { return folders_.project / stateFile_; }
    tl::expected<void, FileError> takeLock();
    tl::expected<void, FileError> readState();
    tl::expected<void, FileError> read();
    tl::expected<void, FileError> readUnlessUnchanged();
    tl::expected<void, FileError> appendLine(const SealFact& fact, const std::string& ts);
    tl::expected<void, FileError> write(const std::string& line);
    tl::expected<void, FileError> cutTornEnd();
    tl::expected<void, FileError> save() const;
    void leave();
    void notice();

    /// What tells that nobody else touched the file since it was read or written.
    struct Seen {
        std::uintmax_t size = 0;
        std::uint64_t inode = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        bool operator==(const Seen&) const = default;
    };
    Seen look() const;

    ProofFolders folders_;
    std::string computer_;
    std::string stateFile_;
    std::string lockFile_;
    ProofState state_;
    Descriptor lock_;
    bool open_ = false;
    std::string left_;
    std::int64_t lastRun_ = 0;
    LogPosition end_;
    std::uintmax_t goodBytes_ = 0;
    Sha256Stream hash_; ///< of all good bytes
    Seen seen_;
    bool stale_ = false; ///< the last reading failed: what is held here is not the log's end
};

} // namespace kelvo
