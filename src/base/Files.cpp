#include "base/Files.h"

#include "base/Text.h"
#include "base/Uuid.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>
#include <vector>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 20;

tl::unexpected<FileError> failure(const fs::path& path, int code) {
    return tl::unexpected(systemError(path, code));
}

tl::unexpected<FileError> refusal(const fs::path& path, std::string_view why) {
    return tl::unexpected(FileError{shownFileName(path) + ": " + std::string(why)});
}

/// The number of bytes read, 0 at the end of the file, or a negative errno.
ssize_t readSome(int file, char* into, std::size_t room) {
    while (true) {
        const ssize_t got = ::read(file, into, room);
        if (got >= 0) return got;
        if (errno != EINTR) return -errno;
    }
}

constexpr std::string_view temporarySuffix = ".tmp";

int writeNew(const fs::path& path, std::string_view bytes, const FileMaking& making = {}) {
    auto file = createFile(path, making);
    if (!file) return file.error().code;
    if (const int code = writeAll(file->number(), bytes); code != 0) return code;
    if (const int code = flushToDisk(file->number()); code != 0) return code;
    return ::close(file->release()) == 0 ? 0 : errno;
}

int createAtomically(const fs::path& path, std::string_view bytes) {
    const fs::path temporary = temporaryBeside(path);
    int code = writeNew(temporary, bytes);
    if (code == 0) code = renameWithoutReplacing(temporary, path);
    ::unlink(temporary.c_str());
    return code;
}

/// Keeps the other processes that append to an open file away for a moment. One that does not get
/// its turn in time goes on without: a log must not wait for whoever holds a lock for ever.
class Turn {
public:
    explicit Turn(int file) : file_(file) {
        constexpr int tries = 50;
        for (int i = 0; i < tries && !mine_; ++i) {
            mine_ = ::flock(file_, LOCK_EX | LOCK_NB) == 0;
            if (!mine_) ::usleep(1000);
        }
    }
    ~Turn() {
        if (mine_) ::flock(file_, LOCK_UN);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    bool mine() const { return mine_; }

private:
    int file_;
    bool mine_ = false;
};

/// Whether the file's last line was torn, so that a further one would continue it. A file that may
/// be written but not read cannot be asked. In one's turn only: another's line grows in steps.
bool endsInsideLine(const fs::path& path, const struct stat& opened) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.valid() || ::fstat(file.number(), &status) != 0) return false;
    const bool same = status.st_dev == opened.st_dev && status.st_ino == opened.st_ino;
    char last = '\n';
    return same && status.st_size > 0 &&
           ::pread(file.number(), &last, 1, status.st_size - 1) == 1 && last != '\n';
}

int appendWhole(int file, std::string_view line) {
    ssize_t written = 0;
    do {
        written = ::write(file, line.data(), line.size());
    } while (written < 0 && errno == EINTR);
    if (written < 0) return errno;
    if (static_cast<std::size_t>(written) == line.size()) return 0;
    // Half a line would spoil the next one too. It is taken back unless somebody has appended
    // since.
    const off_t end = ::lseek(file, 0, SEEK_CUR);
    struct stat status {};
    if (::fstat(file, &status) != 0 || status.st_size != end) return ENOSPC;
    return ::ftruncate(file, end - written) == 0 ? ENOSPC : errno;
}

} // namespace

FileError systemError(const fs::path& path, int code) {
    return {shownFileName(path) + ": " + std::generic_category().message(code), code};
}

tl::expected<Descriptor, FileError> openRegularFile(const fs::path& path, struct stat& status) {
    // Opened without waiting for a FIFO's other end, then looked at: the check and the reading
    // concern the same file, whatever happens to the name meanwhile.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.valid() || ::fstat(file.number(), &status) != 0) return failure(path, errno);
    if (!S_ISREG(status.st_mode)) return refusal(path, "not a regular file");
    return file;
}

fs::path temporaryBeside(const fs::path& path, const FileMaking& making) {
    // Who can write to the folder must not choose what is written through.
    return path.parent_path() /
           (making.temporaryPrefix + randomUuid() + std::string(temporarySuffix));
}

tl::expected<Descriptor, FileError> createFile(const fs::path& path, const FileMaking& making) {
    Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                           making.mode.value_or(0666)));
    if (!file.valid()) return failure(path, errno);
    // A file system that knows no such rights still holds the file.
    if (making.group) (void)!::fchown(file.number(), static_cast<uid_t>(-1), *making.group);
    if (making.mode) (void)::fchmod(file.number(), *making.mode);
    return file;
}

int writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

int flushToDisk(int file) {
    // Some file systems cannot flush a folder and say so with EINVAL; there is nothing to wait for.
    return ::fsync(file) == 0 || errno == EINVAL ? 0 : errno;
}

int renameWithoutReplacing(const fs::path& temporary, const fs::path& path) {
    if (::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // Some network file systems know no such rename; a hard link refuses a taken name as well.
    return ::link(temporary.c_str(), path.c_str()) == 0 ? 0 : errno;
}

void flushFolderOf(const fs::path& path) {
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // The new file is already in place and whole; a folder that cannot be flushed changes nothing
    // that the caller could act on.
    if (opened.valid()) flushToDisk(opened.number());
}

std::string reasonInWords(const FileError& error) {
    switch (error.code) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return "the disk is full";
    case EROFS:
    case EACCES:
    case EPERM:
        return "the folder is read-only";
    case ENOENT:
    case ENOTDIR:
        return "the folder is gone";
    default:
        return error.description;
    }
}

tl::expected<std::string, FileError> readFile(const fs::path& path, std::size_t maxBytes) {
    struct stat status {};
    const auto opened = openRegularFile(path, status);
    if (!opened) return tl::unexpected(opened.error());
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > maxBytes) return refusal(path, "larger than is read");
    // The size is a hint only: a file may grow while it is read, and /proc and /sys report 0. One
    // byte more than it says lets the end show without growing the buffer.
    std::string bytes(size + 1, '\0');
    std::size_t length = 0;
    while (true) {
        const ssize_t got =
            readSome(opened->number(), bytes.data() + length, bytes.size() - length);
        if (got < 0) return failure(path, static_cast<int>(-got));
        if (got == 0) break;
        length += static_cast<std::size_t>(got);
        if (length > maxBytes) return refusal(path, "larger than is read");
        if (length == bytes.size()) bytes.resize(length + pieceSize);
    }
    bytes.resize(length);
    return bytes;
}

tl::expected<void, FileError>
readFileInPieces(const fs::path& path,
                 const std::function<bool(std::string_view piece, std::size_t fileSize)>& each) {
    struct stat status {};
    const auto opened = openRegularFile(path, status);
    if (!opened) return tl::unexpected(opened.error());
    const auto size = static_cast<std::size_t>(status.st_size);
    std::vector<char> buffer(pieceSize);
    while (true) {
        const ssize_t got = readSome(opened->number(), buffer.data(), buffer.size());
        if (got < 0) return failure(path, static_cast<int>(-got));
        if (got == 0) return {};
        if (!each({buffer.data(), static_cast<std::size_t>(got)}, size)) return {};
    }
}

tl::expected<void, FileError> writeFileAtomically(const fs::path& path, std::string_view bytes,
                                                  const FileMaking& making) {
    const fs::path temporary = temporaryBeside(path, making);
    int code = writeNew(temporary, bytes, making);
    if (code == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) code = errno;
    if (code != 0) {
        ::unlink(temporary.c_str());
        return failure(path, code);
    }
    flushFolderOf(path);
    return {};
}

tl::expected<void, FileError> appendLine(const fs::path& path, std::string_view line) {
    constexpr int flags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    // A second look, for a file that another process creates at the same moment.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const Descriptor file(::open(path.c_str(), flags));
        if (file.valid()) {
            struct stat status {};
            if (::fstat(file.number(), &status) != 0) return failure(path, errno);
            if (!S_ISREG(status.st_mode)) return refusal(path, "not a regular file");
            const Turn turn(file.number());
            const bool torn = turn.mine() && endsInsideLine(path, status);
            const int code =
                appendWhole(file.number(), torn ? "\n" + std::string(line) : std::string(line));
            if (code != 0) return failure(path, code);
            return {};
        }
        if (errno != ENOENT) return failure(path, errno);
        const int code = createAtomically(path, line);
        if (code == 0) return {};
        if (code != EEXIST) return failure(path, code);
    }
    return failure(path, ENOENT);
}

void removeLeftovers(const fs::path& folder, std::chrono::seconds age, const FileMaking& making) {
    const auto oldest = fs::file_time_type::clock::now() - age;
    std::error_code fault;
    std::vector<fs::path> leftovers;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        const std::string name = entry->path().filename().native();
        if (!name.starts_with(making.temporaryPrefix) || !name.ends_with(temporarySuffix)) continue;
        std::error_code unknown;
        const auto written = entry->last_write_time(unknown);
        if (!unknown && written < oldest && entry->is_regular_file(unknown)) {
            leftovers.push_back(entry->path());
        }
    }
    for (const fs::path& leftover : leftovers)
        ::unlink(leftover.c_str());
}

bool isPlainFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

std::string shownFileName(const fs::path& path) {
    return withControlsShown(toValidUtf8(path.filename().native()));
}

} // namespace kelvo
