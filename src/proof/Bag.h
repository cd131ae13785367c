#pragma once

#include "base/Files.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace kelvo {

/// A name that any file system and shell takes: letters, digits, ".", "-" and "_", other characters
/// as "_", no full stop in front, the last 80 characters.
std::string bagName(std::string_view name);

/// A folder of files with their hashes, laid out as BagIt 1.0 (RFC 8493) has it: what is handed
/// over lies below "data/" and in manifest-sha256.txt, what describes it beside that and in
/// tagmanifest-sha256.txt. Memory is bounded by one piece of a file.
///
/// Until `finish` it has a temporary name; one that is not finished is removed with this.
class Bag {
public:
    /// Told after every piece; false stops the writing, which is then an error.
    using Progress = std::function<bool(std::string_view path, std::uintmax_t bytes)>;

    /// Makes the folder for the bag `name` in `parent`. Fails where something has that name.
    static tl::expected<Bag, FileError> begin(const std::filesystem::path& parent,
                                              const std::string& name, Progress progress = {});
    ~Bag();
    Bag(Bag&& other) noexcept;
    Bag& operator=(Bag&&) = delete;
    Bag(const Bag&) = delete;

    /// Adds a file with these bytes; `path` is relative to the bag ("data/readiness.csv"), and its
    /// folders are made.
    tl::expected<void, FileError> add(const std::string& path, std::string_view bytes);

    /// Copies a file. Answers the SHA-256 of what was written.
    tl::expected<std::string, FileError> copy(const std::string& path,
                                              const std::filesystem::path& source);

    /// Copies the first `lines` lines of a file.
    tl::expected<std::string, FileError>
    copyLines(const std::string& path, const std::filesystem::path& source, std::int64_t lines);

    /// Takes a file out again.
    void remove(const std::string& path);

    /// Bytes and number of the files below "data/".
    std::uintmax_t payloadBytes() const;
    std::size_t payloadFiles() const;

    /// Writes both manifests, flushes and gives the folder its name. Answers the SHA-256 of the tag
    /// manifest, the package number.
    tl::expected<std::string, FileError> finish();

    /// Where the finished bag is.
    const std::filesystem::path& folder() const { return folder_; }

private:
    struct Entry {
        std::string hash;
        std::uintmax_t bytes = 0;
    };
    Bag(std::filesystem::path folder, std::filesystem::path temporary, Progress progress);
    std::string manifest(bool payload) const;

    std::filesystem::path folder_;
    std::filesystem::path temporary_; ///< empty once it is finished
    Progress progress_;
    std::map<std::string, Entry> entries_; ///< by path, hence sorted by bytes
};

} // namespace kelvo
