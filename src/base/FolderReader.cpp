#include "base/FolderReader.h"

#include "base/Text.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace kelvo {
namespace {

constexpr std::size_t pieceSize = std::size_t{64} << 10;

} // namespace

FolderReader::FolderReader(const std::filesystem::path& folder)
    : folder_(folder), opened_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
}

void FolderReader::eachName(const std::function<void(std::string_view name)>& each) const {
    // The stream owns the descriptor that it reads from.
    const int own = opened_.valid() ? ::openat(opened_.number(), ".", O_RDONLY | O_CLOEXEC) : -1;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(own < 0 ? nullptr : ::fdopendir(own),
                                                     ::closedir);
    if (!stream) {
        if (own >= 0) ::close(own);
        return;
    }
    while (const dirent* entry = ::readdir(stream.get())) {
        bool regular = entry->d_type == DT_REG;
        if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            struct stat status {};
            // One that may not be looked at is listed, so that reading it tells why.
            regular = ::fstatat(own, entry->d_name, &status, 0) != 0 ? errno == EACCES
                                                                     : S_ISREG(status.st_mode);
        }
        if (regular) each(entry->d_name);
    }
}

tl::expected<std::string_view, FileError> FolderReader::read(const std::string& name,
                                                             std::size_t maxBytes) {
    const auto failure = [&](int code) {
        return tl::unexpected(systemError(folder_ / name, code));
    };
    // Neither opening nor reading waits for anybody, so what a listed name stands for by now need
    // not be asked. A read that leaves room has met the end.
    const Descriptor file(
        ::openat(opened_.number(), name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.valid()) return failure(errno);
    std::size_t length = 0;
    while (true) {
        if (length == buffer_.size()) buffer_.resize(2 * length + pieceSize);
        const std::size_t room = buffer_.size() - length;
        const ssize_t got = ::read(file.number(), buffer_.data() + length, room);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return failure(errno);
        length += static_cast<std::size_t>(got);
        if (length > maxBytes) {
            return tl::unexpected(FileError{shownFileName(name) + ": larger than is read"});
        }
        if (static_cast<std::size_t>(got) < room) return std::string_view(buffer_.data(), length);
    }
}

} // namespace kelvo
