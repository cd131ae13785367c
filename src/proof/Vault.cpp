#include "proof/Vault.h"

#include "base/Sha256.h"
#include "proof/LineParser.h"

#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>
#include <vector>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 20;
constexpr std::chrono::hours leftoverAge{1};

/// Whether twice `size` is free where `file` is. What cannot be asked counts as free.
bool hasRoom(int file, std::uintmax_t size) {
    struct statvfs space {};
    if (::fstatvfs(file, &space) != 0) return true;
    return static_cast<std::uintmax_t>(space.f_bavail) * space.f_frsize >= 2 * size;
}

} // namespace

struct StagedEvidence::State {
    std::string root;
    std::uintmax_t size = 0;
    std::optional<std::string> notKept;
    std::optional<std::string> bytes; ///< of text; files are copied
    fs::path source;                  ///< of a file
    fs::path temporary;               ///< the copy; empty where there is none
    bool kept = false;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { discard(); }

    void discard() {
        if (!temporary.empty()) ::unlink(temporary.c_str());
        temporary.clear();
    }
};

StagedEvidence::StagedEvidence(std::shared_ptr<State> state) : state_(std::move(state)) {
}

const std::string& StagedEvidence::root() const {
    return state_->root;
}

std::uintmax_t StagedEvidence::size() const {
    return state_->size;
}

const std::optional<std::string>& StagedEvidence::notKept() const {
    return state_->notKept;
}

namespace {

/// A copy under way. The first failure ends it; hashing goes on.
class Copy {
public:
    Copy(const fs::path& temporary, const FileMaking& making, int source, std::uintmax_t size)
        : path_(temporary) {
        auto made = createFile(temporary, making);
        if (!made) {
            fail(made.error());
            return;
        }
        file_ = std::move(*made);
        if (!hasRoom(file_.number(), size)) {
            fail({"less than twice its size is free on the disk", 0});
            return;
        }
        shared_ = ::ioctl(file_.number(), FICLONE, source) == 0;
    }

    /// The file to read on: where blocks are shared the copy, whose bytes nobody changes meanwhile.
    int readFrom(int source) const { return shared_ ? file_.number() : source; }

    void add(std::string_view bytes) {
        if (!file_.valid() || shared_) return;
        if (const int code = writeAll(file_.number(), bytes); code != 0) {
            fail(systemError(path_, code));
        }
    }

    /// None when the copy is whole and on the disk.
    std::optional<FileError> finish() {
        if (!file_.valid()) return fault_;
        if (const int code = flushToDisk(file_.number()); code != 0) {
            fail(systemError(path_, code));
        }
        return fault_;
    }

private:
    void fail(FileError fault) {
        fault_ = std::move(fault);
        if (file_.valid()) ::unlink(path_.c_str());
        file_.reset();
    }

    fs::path path_;
    Descriptor file_;
    bool shared_ = false;
    std::optional<FileError> fault_;
};

} // namespace

Vault::Vault(ProofFolders folders, std::string_view logId)
    : folders_(std::move(folders)), prefix_("." + std::string(logId.substr(0, 8)) + "-") {
}

FileMaking Vault::making() const {
    const ProofRights rights = proofRights(folders_);
    return {.temporaryPrefix = prefix_, .mode = rights.kept, .group = rights.group};
}

fs::path Vault::path(std::string_view root) const {
    return folders_.vault() / root;
}

tl::expected<StagedEvidence, FileError>
Vault::stage(const fs::path& source,
             const std::function<void(std::size_t done, std::size_t size)>& progress) {
    struct stat status {};
    const auto opened = openRegularFile(source, status);
    if (!opened) return tl::unexpected(opened.error());
    const auto size = static_cast<std::size_t>(status.st_size);

    auto staged = std::make_shared<StagedEvidence::State>();
    staged->source = source;
    std::optional<Copy> copy;
    std::error_code unknown;
    if (fs::is_directory(folders_.vault(), unknown)) {
        staged->temporary = temporaryBeside(path("x"), making());
        copy.emplace(staged->temporary, making(), opened->number(), size);
    }
    const int from = copy ? copy->readFrom(opened->number()) : opened->number();
    Sha256Stream hash;
    std::vector<char> buffer(pieceSize);
    while (true) {
        const ssize_t got =
            ::pread(from, buffer.data(), buffer.size(), static_cast<off_t>(staged->size));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return tl::unexpected(systemError(source, errno));
        if (got == 0) break;
        const std::string_view piece(buffer.data(), static_cast<std::size_t>(got));
        hash.add(piece);
        if (copy) copy->add(piece);
        staged->size += piece.size();
        if (progress) progress(staged->size, size);
    }
    staged->root = hex(hash.finish());
    if (copy) {
        if (const auto fault = copy->finish()) {
            staged->temporary.clear();
            staged->notKept = reasonInWords(*fault);
        }
    }
    return StagedEvidence(std::move(staged));
}

StagedEvidence Vault::stage(std::string bytes) {
    auto staged = std::make_shared<StagedEvidence::State>();
    staged->root = sha256Hex(bytes);
    staged->size = bytes.size();
    staged->bytes = std::move(bytes);
    return StagedEvidence(std::move(staged));
}

tl::expected<void, FileError> Vault::keep(const StagedEvidence& staged) {
    StagedEvidence::State& state = *staged.state_;
    if (state.kept) return {};
    if (const auto made = makeProofFolders(folders_); !made) return made;
    if (state.bytes) {
        const auto kept = keep(*state.bytes);
        if (!kept) return tl::unexpected(kept.error());
    } else {
        if (state.temporary.empty() || ::access(state.temporary.c_str(), F_OK) != 0) {
            // Nothing was copied, or it is gone: the file itself may still be there.
            auto again = stage(state.source);
            if (!again) return tl::unexpected(again.error());
            if (again->root() != state.root) {
                return tl::unexpected(FileError{"the file was changed meanwhile"});
            }
            if (again->notKept()) return tl::unexpected(FileError{*again->notKept()});
            std::swap(state.temporary, again->state_->temporary);
        }
        if (::rename(state.temporary.c_str(), path(state.root).c_str()) != 0) {
            return tl::unexpected(systemError(path(state.root), errno));
        }
        flushFolderOf(path(state.root));
        state.temporary.clear();
    }
    state.kept = true;
    state.notKept.reset();
    return {};
}

tl::expected<std::string, FileError> Vault::keep(std::string_view bytes) {
    std::string root = sha256Hex(bytes);
    if (const auto there = readFile(path(root), bytes.size()); there && *there == bytes) {
        return root;
    }
    if (const auto made = makeProofFolders(folders_); !made) return tl::unexpected(made.error());
    const auto written = writeFileAtomically(path(root), bytes, making());
    if (!written) return tl::unexpected(written.error());
    return root;
}

std::optional<std::uintmax_t> Vault::sizeOf(std::string_view root) const {
    struct stat status {};
    if (!isHash(root) || ::stat(path(root).c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return static_cast<std::uintmax_t>(status.st_size);
}

tl::expected<std::string, FileError> Vault::read(std::string_view root,
                                                 std::size_t maxBytes) const {
    if (!isHash(root)) return tl::unexpected(FileError{"not a hash"});
    auto bytes = readFile(path(root), maxBytes);
    if (bytes && sha256Hex(*bytes) != root) {
        return tl::unexpected(FileError{"the kept file is not the one that was sealed"});
    }
    return bytes;
}

Verification Vault::verify(std::string_view root) const {
    if (!isHash(root)) return Verification::absent;
    Sha256Stream hash;
    const auto read = readFileInPieces(path(root), [&](std::string_view piece, std::size_t) {
        hash.add(piece);
        return true;
    });
    if (!read) return Verification::absent;
    return isHexOf(hash.finish(), root) ? Verification::same : Verification::another;
}

void Vault::removeLeftovers() const {
    kelvo::removeLeftovers(folders_.vault(), leftoverAge, making());
}

} // namespace kelvo
