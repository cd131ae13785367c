#pragma once

#include "base/Descriptor.h"

#include <sys/stat.h>
#include <sys/types.h>
#include <tl/expected.hpp>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Why a file could not be read or written, in words for a person: "mesh.json: No such file or
/// directory".
struct FileError {
    std::string description;
    int code = 0; ///< errno, where the system refused
};

/// Why a write failed, as a person says it: "the disk is full", "the folder is read-only", "the
/// folder is gone", or else the description.
std::string reasonInWords(const FileError& error);

/// Reads a whole regular file. Anything else (a folder, a FIFO, a device) is refused without being
/// opened for good, so that no reader can block on it; so is a file of more than `maxBytes`.
tl::expected<std::string, FileError>
readFile(const std::filesystem::path& path,
         std::size_t maxBytes = std::numeric_limits<std::size_t>::max());

/// Reads a regular file piece by piece, in pieces of at most 1 MiB, for files that need not fit in
/// memory. `each` gets the piece and the file's size when it was opened; it answers false to stop,
/// which is not an error.
tl::expected<void, FileError>
readFileInPieces(const std::filesystem::path& path,
                 const std::function<bool(std::string_view piece, std::size_t fileSize)>& each);

/// What a new file is like.
struct FileMaking {
    std::string temporaryPrefix = ".kelvo-"; ///< of its name until it is whole
    std::optional<mode_t> mode;              ///< exactly; by the umask where there is none
    std::optional<gid_t> group;              ///< where the file system and the account allow it
};

/// Replaces `path` so that a crash at any moment leaves the old file or the new one, whole: a
/// temporary file beside it (".kelvo-", a random UUID, ".tmp"; never one that exists), flushed to
/// the disk, renamed over `path`, the folder flushed. On failure the temporary file is removed and
/// `path` is as it was. No folder is created.
tl::expected<void, FileError> writeFileAtomically(const std::filesystem::path& path,
                                                  std::string_view bytes,
                                                  const FileMaking& making = {});

/// Appends `line` to a regular file in one write, so that lines of several processes never mix, and
/// creates the file, as atomically as above, where there is none. Behind a line that a crash left
/// without its end, a line feed comes first. A line that does not fit whole is taken back. Never
/// waits for a FIFO's other end.
tl::expected<void, FileError> appendLine(const std::filesystem::path& path, std::string_view line);

/// Removes the temporary files that a crash left in `folder`: those named by `temporaryBeside` that
/// were last written more than `age` ago. Younger ones may be another computer's, at work.
void removeLeftovers(const std::filesystem::path& folder, std::chrono::seconds age,
                     const FileMaking& making = {});

/// "NAME: " and the system's words for an errno.
FileError systemError(const std::filesystem::path& path, int code);

/// Opens for reading what must be a regular file, without ever blocking, and says what was opened.
tl::expected<Descriptor, FileError> openRegularFile(const std::filesystem::path& path,
                                                    struct stat& status);

/// A name beside `path` for a file that is not whole yet; nobody can have prepared it.
std::filesystem::path temporaryBeside(const std::filesystem::path& path,
                                      const FileMaking& making = {});

/// Makes a file that does not exist yet, for reading and writing.
tl::expected<Descriptor, FileError> createFile(const std::filesystem::path& path,
                                               const FileMaking& making = {});

/// Writes all of `bytes`; 0 or an errno.
int writeAll(int file, std::string_view bytes);

/// Waits until the disk has the file; 0 or an errno.
int flushToDisk(int file);

/// Waits until the disk has the names of the folder that `path` is in, where that can be waited
/// for.
void flushFolderOf(const std::filesystem::path& path);

/// Gives `temporary` the name `path` unless something has that name: EEXIST then, else 0 or another
/// errno. Where it is done by a link, `temporary` remains.
int renameWithoutReplacing(const std::filesystem::path& temporary,
                           const std::filesystem::path& path);

/// True for a name that stands for one entry of a folder: not empty, not "." or "..", without "/"
/// or a NUL byte.
bool isPlainFileName(std::string_view name);

/// The last component of `path` as text that can be shown: bytes that are not UTF-8 read U+FFFD,
/// characters that would steer a terminal or turn the reading direction as `withControlsShown`.
std::string shownFileName(const std::filesystem::path& path);

} // namespace kelvo
