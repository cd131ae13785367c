#include "proof/OwnLog.h"

#include "base/Text.h"
#include "proof/SealLog.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kelvo {
namespace {

constexpr std::size_t largestState = std::size_t{16} << 20;

} // namespace

OwnLog::OwnLog(ProofFolders folders, std::string computer, const std::string& machineId)
    : folders_(std::move(folders)), computer_(std::move(computer)),
      stateFile_(proofStateFileName(machineId)),
      lockFile_("." + stateFile_.substr(0, stateFile_.rfind('.')) + ".lock") {
    // Until the lock is taken this is only known; nothing is written, also where it is damaged.
    (void)readState();
    if (state_.log.empty()) state_.log = newLogId();
}

tl::expected<void, FileError> OwnLog::open() {
    if (open_) return {};
    if (auto locked = takeLock(); !locked) return locked;
    // Another program may have written it while this one waited for the lock.
    const std::string drawn = state_.log;
    auto known = readState();
    if (!known && known.error().code == 0) {
        // What was seen and missed may still be read from it by hand.
        const auto aside = statePath().native() + ".unreadable";
        if (::rename(statePath().c_str(), aside.c_str()) != 0) {
            return tl::unexpected(systemError(statePath(), errno));
        }
        known = {};
    }
    if (!known) return known;
    if (state_.log.empty()) state_.log = drawn;
    if (auto done = read(); !done) return done;
    open_ = true;
    return {};
}

/// No error where there is none; one without a code where it is damaged.
tl::expected<void, FileError> OwnLog::readState() {
    const auto text = readFile(statePath(), largestState);
    if (!text && text.error().code != ENOENT && text.error().code != ENOTDIR) {
        return tl::unexpected(text.error());
    }
    state_ = {};
    if (!text) return {};
    auto state = parseProofState(*text);
    if (!state) return tl::unexpected(FileError{stateFile_ + ": " + state.error()});
    state_ = std::move(*state);
    return {};
}

tl::expected<void, FileError> OwnLog::takeLock() {
    if (lock_.valid()) return {};
    const auto path = folders_.project / lockFile_;
    Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.valid()) return tl::unexpected(systemError(path, errno));
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        return tl::unexpected(FileError{"another program of this account keeps the log", errno});
    }
    lock_ = std::move(file);
    return {};
}

OwnLog::Seen OwnLog::look() const {
    struct stat status {};
    if (::stat(folders_.log(state_.log).c_str(), &status) != 0) return {};
    return {static_cast<std::uintmax_t>(status.st_size), status.st_ino, status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

void OwnLog::notice() {
    seen_ = look();
}

tl::expected<void, FileError> OwnLog::read() {
    const auto path = folders_.log(state_.log);
    hash_ = Sha256Stream();
    lastRun_ = 0;
    seen_ = look();
    stale_ = true;
    SealLogReader reader;
    auto reading = reader.read(path, [this](const SealLineView& line) {
        hash_.add(line.text);
        if (const auto* run = std::get_if<RunLine>(&line.fact)) lastRun_ = run->run;
    });
    if (!reading) {
        // Where the folder is there and the log is not, it is gone or was never begun.
        if (reading.error().code != ENOENT) return tl::unexpected(reading.error());
        reading = SealLogReading{};
    }
    stale_ = false;
    end_ = reading->end;
    goodBytes_ = reading->goodBytes;
    const bool asLeft = end_ == state_.before || end_ == state_.after;
    if (reading->damage || !asLeft) leave();
    return {};
}

void OwnLog::leave() {
    // The place that was on the disk for certain is what is remembered of it.
    if (state_.before.lines > 0) state_.seen[state_.log] = {state_.before, computer_, {}};
    // One that is gone, shorter or another at its beginning is told by what is remembered of it.
    if (end_.lines > state_.after.lines) left_ = state_.log;
    state_.log = newLogId();
    state_.before = state_.after = end_ = LogPosition{};
    goodBytes_ = 0;
    hash_ = Sha256Stream();
    lastRun_ = 0;
    notice();
}

tl::expected<void, FileError> OwnLog::readUnlessUnchanged() {
    if (!stale_ && look() == seen_) return {};
    return read();
}

tl::expected<void, FileError> OwnLog::prepare() {
    if (auto opened = open(); !opened) return opened;
    if (auto made = makeProofFolders(folders_); !made) return made;
    if (auto ready = readUnlessUnchanged(); !ready) return ready;
    if (auto cut = cutTornEnd(); !cut) {
        // Only where appending alone is allowed does the torn end stay, and the log with it.
        if (cut.error().code != EPERM) return cut;
        leave();
    }
    return {};
}

tl::expected<void, FileError> OwnLog::append(const SealFact& fact, const std::string& ts,
                                             const std::string& organisation) {
    if (stale_) return tl::unexpected(FileError{"the log cannot be read"});
    if (end_.lines == 0) {
        const BeginLine begin{state_.log, organisation, computer_};
        if (auto begun = appendLine(begin, ts); !begun) return begun;
    }
    return appendLine(fact, ts);
}

/// A power cut may have torn the last line; behind it the next would be lost with it. Fails where
/// an administrator lets nobody shorten the log.
tl::expected<void, FileError> OwnLog::cutTornEnd() {
    if (seen_.size <= goodBytes_) return {};
    const auto path = folders_.log(state_.log);
    if (::truncate(path.c_str(), static_cast<off_t>(goodBytes_)) != 0) {
        return tl::unexpected(systemError(path, errno));
    }
    notice();
    return {};
}

tl::expected<void, FileError> OwnLog::appendLine(const SealFact& fact, const std::string& ts) {
    const auto text = sealLineText({.seq = end_.lines, .prev = end_.head, .ts = ts, .fact = fact});
    if (!text) return tl::unexpected(FileError{"the sealed bytes have no place in a line"});
    hash_.add(*text);
    state_.before = end_;
    state_.after = {end_.lines + 1, hex(hash_.soFar())};
    auto written = save();
    if (written) written = write(*text);
    if (!written) {
        // What was written of it is looked at: where it is whole all the same, it counts.
        const FileError fault = written.error();
        const LogPosition wanted = state_.after;
        if (auto again = read(); !again) return again;
        if (end_ == wanted) return {};
        return tl::unexpected(fault);
    }
    end_ = state_.after;
    goodBytes_ += text->size();
    if (const auto* run = std::get_if<RunLine>(&fact)) lastRun_ = run->run;
    notice();
    return {};
}

tl::expected<void, FileError> OwnLog::write(const std::string& line) {
    const auto path = folders_.log(state_.log);
    const ProofRights rights = proofRights(folders_);
    Descriptor file(::open(path.c_str(),
                           O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                           rights.file));
    if (!file.valid()) return tl::unexpected(systemError(path, errno));
    if (goodBytes_ == 0) {
        if (rights.group) (void)!::fchown(file.number(), static_cast<uid_t>(-1), *rights.group);
        (void)::fchmod(file.number(), rights.file);
    }
    const ssize_t written = ::write(file.number(), line.data(), line.size());
    int code = written < 0 ? errno : 0;
    if (code == 0 && static_cast<std::size_t>(written) != line.size()) code = ENOSPC;
    if (code == 0) code = flushToDisk(file.number());
    if (code != 0) {
        // Half a line is taken back; where it cannot be, it is cut off before the next.
        (void)!::ftruncate(file.number(), static_cast<off_t>(goodBytes_));
        return tl::unexpected(systemError(path, code));
    }
    if (goodBytes_ == 0) flushFolderOf(path);
    return {};
}

tl::expected<void, FileError> OwnLog::save() const {
    return writeFileAtomically(statePath(), proofStateText(state_),
                               {.temporaryPrefix = ".kelvo-", .mode = 0600, .group = {}});
}

void OwnLog::remember(std::map<std::string, SeenLog> seen,
                      std::map<std::string, std::string> missed) {
    const bool there = open_ && !stale_ && end_ == state_.after && look() == seen_;
    const bool settles = there && state_.before != state_.after;
    if (seen == state_.seen && missed == state_.missed && !settles) return;
    state_.seen = std::move(seen);
    state_.missed = std::move(missed);
    if (settles) state_.before = state_.after;
    if (open_) (void)save();
}

} // namespace kelvo
