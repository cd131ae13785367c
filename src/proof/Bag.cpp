#include "proof/Bag.h"

#include "base/Sha256.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t longestName = 80;
constexpr std::string_view payloadFolder = "data/";

bool isPayload(std::string_view path) {
    return path.starts_with(payloadFolder);
}

/// A file of the bag while it is written.
class Writing {
public:
    static tl::expected<Writing, FileError> begin(const fs::path& path) {
        std::error_code fault;
        fs::create_directories(path.parent_path(), fault);
        if (fault) return tl::unexpected(systemError(path.parent_path(), fault.value()));
        auto file = createFile(path);
        if (!file) return tl::unexpected(file.error());
        return Writing(path, std::move(*file));
    }

    tl::expected<void, FileError> write(std::string_view bytes) {
        if (const int code = writeAll(file_.number(), bytes); code != 0) {
            return tl::unexpected(systemError(path_, code));
        }
        hash_.add(bytes);
        bytes_ += bytes.size();
        return {};
    }

    tl::expected<std::string, FileError> finish() {
        if (const int code = flushToDisk(file_.number()); code != 0) {
            return tl::unexpected(systemError(path_, code));
        }
        return hex(hash_.finish());
    }

    std::uintmax_t bytes() const { return bytes_; }

private:
    Writing(fs::path path, Descriptor file) : path_(std::move(path)), file_(std::move(file)) {}

    fs::path path_;
    Descriptor file_;
    Sha256Stream hash_;
    std::uintmax_t bytes_ = 0;
};

/// How much of `piece` the next `lines` lines are; `lines` becomes what is left of them.
std::size_t lengthOf(std::string_view piece, std::int64_t& lines) {
    std::size_t at = 0;
    while (lines > 0) {
        const std::size_t feed = piece.find('\n', at);
        if (feed == piece.npos) return piece.size();
        at = feed + 1;
        --lines;
    }
    return at;
}

} // namespace

std::string bagName(std::string_view name) {
    std::string safe;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_';
        // Of a character in several bytes only the first counts.
        if ((byte & 0xC0) == 0x80) continue;
        safe += plain ? c : '_';
    }
    if (safe.size() > longestName) safe.erase(0, safe.size() - longestName);
    if (safe.empty()) return "_";
    if (safe.front() == '.') safe.front() = '_';
    return safe;
}

Bag::Bag(fs::path folder, fs::path temporary, Progress progress)
    : folder_(std::move(folder)), temporary_(std::move(temporary)), progress_(std::move(progress)) {
}

Bag::Bag(Bag&& other) noexcept
    : folder_(std::move(other.folder_)), temporary_(std::exchange(other.temporary_, {})),
      progress_(std::move(other.progress_)), entries_(std::move(other.entries_)) {
}

Bag::~Bag() {
    std::error_code ignored;
    if (!temporary_.empty()) fs::remove_all(temporary_, ignored);
}

tl::expected<Bag, FileError> Bag::begin(const fs::path& parent, const std::string& name,
                                        Progress progress) {
    const fs::path folder = parent / name;
    std::error_code fault;
    if (fs::exists(fs::symlink_status(folder, fault))) {
        return tl::unexpected(systemError(folder, EEXIST));
    }
    fs::path temporary = temporaryBeside(folder);
    if (!fs::create_directory(temporary, fault)) {
        return tl::unexpected(systemError(temporary, fault ? fault.value() : EEXIST));
    }
    return Bag(folder, std::move(temporary), std::move(progress));
}

tl::expected<void, FileError> Bag::add(const std::string& path, std::string_view bytes) {
    auto writing = Writing::begin(temporary_ / path);
    if (!writing) return tl::unexpected(writing.error());
    if (auto written = writing->write(bytes); !written) return written;
    auto hash = writing->finish();
    if (!hash) return tl::unexpected(hash.error());
    entries_[path] = {std::move(*hash), bytes.size()};
    return {};
}

tl::expected<std::string, FileError> Bag::copy(const std::string& path, const fs::path& source) {
    return copyLines(path, source, -1);
}

tl::expected<std::string, FileError> Bag::copyLines(const std::string& path, const fs::path& source,
                                                    std::int64_t lines) {
    auto writing = Writing::begin(temporary_ / path);
    if (!writing) return tl::unexpected(writing.error());
    tl::expected<void, FileError> outcome;
    const bool whole = lines < 0;
    const auto read = readFileInPieces(source, [&](std::string_view piece, std::size_t) {
        outcome = writing->write(whole ? piece : piece.substr(0, lengthOf(piece, lines)));
        if (outcome && progress_ && !progress_(path, piece.size())) {
            outcome = tl::unexpected(FileError{"stopped", ECANCELED});
        }
        return outcome.has_value() && (whole || lines > 0);
    });
    if (!read) outcome = read;
    auto hash = outcome ? writing->finish() : tl::unexpected(outcome.error());
    if (!hash) {
        std::error_code ignored;
        fs::remove(temporary_ / path, ignored);
        return hash;
    }
    entries_[path] = {*hash, writing->bytes()};
    return hash;
}

void Bag::remove(const std::string& path) {
    std::error_code ignored;
    fs::remove(temporary_ / path, ignored);
    entries_.erase(path);
}

std::uintmax_t Bag::payloadBytes() const {
    std::uintmax_t sum = 0;
    for (const auto& [path, entry] : entries_)
        sum += isPayload(path) ? entry.bytes : 0;
    return sum;
}

std::size_t Bag::payloadFiles() const {
    return static_cast<std::size_t>(std::count_if(
        entries_.begin(), entries_.end(), [](const auto& each) { return isPayload(each.first); }));
}

std::string Bag::manifest(bool payload) const {
    std::string text;
    for (const auto& [path, entry] : entries_) {
        if (isPayload(path) == payload) text += entry.hash + "  " + path + "\n";
    }
    return text;
}

tl::expected<std::string, FileError> Bag::finish() {
    if (auto done = add("manifest-sha256.txt", manifest(true)); !done)
        return tl::unexpected(done.error());
    const std::string tags = "tagmanifest-sha256.txt";
    if (auto done = add(tags, manifest(false)); !done) return tl::unexpected(done.error());
    int code = renameWithoutReplacing(temporary_, folder_);
    // Where the file system knows no such rename, no hard link to a folder takes its place.
    std::error_code fault;
    if (code == EPERM && !fs::exists(fs::symlink_status(folder_, fault))) {
        fs::rename(temporary_, folder_, fault);
        code = fault.value();
    }
    if (code != 0) return tl::unexpected(systemError(folder_, code));
    flushFolderOf(folder_);
    temporary_.clear();
    return entries_.at(tags).hash;
}

} // namespace kelvo
