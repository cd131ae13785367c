#pragma once

#include "proof/ProofFolders.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Evidence on its way into the vault: hashed, copied where that was possible, and not kept until a
/// person has approved. Copies of the handle share one temporary file, which is removed with the
/// last of them unless it was kept.
class StagedEvidence {
public:
    const std::string& root() const; ///< SHA-256 of the bytes, 64 lowercase hex characters
    std::uintmax_t size() const;
    /// Why there will be no copy, in words for a person; none where there is one, or where it is
    /// made once the person has approved.
    const std::optional<std::string>& notKept() const;

private:
    friend class Vault;
    struct State;
    explicit StagedEvidence(std::shared_ptr<State> state);
    std::shared_ptr<State> state_;
};

enum class Verification {
    same,    ///< the kept bytes have the hash of their name
    another, ///< they have not
    absent,
};

/// Bytes by their SHA-256: evidence, record files, the graph and role files of each run.
///
/// Invariants: a file gets its name by renaming a whole, flushed temporary one, so a name that is a
/// hash has the bytes of that hash unless somebody else changed them; bytes that do not have it
/// count as not there. Kept files are for reading only. A temporary file begins with ".<id8>-",
/// where id8 is the first 8 of the own log's id, and only its own computer removes it.
class Vault {
public:
    Vault(ProofFolders folders, std::string_view logId);

    /// Hashes `source` in one pass and copies it meanwhile (sharing its blocks where the file
    /// system can). `progress` gets the bytes done and the file's size after every MiB. What
    /// prevents the copy never prevents the hash: a full disk, a missing or read-only folder, less
    /// free space than twice the file is told by `notKept`. Fails where `source` cannot be read.
    tl::expected<StagedEvidence, FileError>
    stage(const std::filesystem::path& source,
          const std::function<void(std::size_t done, std::size_t size)>& progress = {});

    /// Text or bytes that are at hand; they stay in memory until they are kept.
    StagedEvidence stage(std::string bytes);

    /// Gives staged evidence its name. Once it is kept, doing so again does nothing. Where the copy
    /// could not be made it is tried anew, from the file that was hashed if its bytes still are the
    /// same. The error's words are the line's reason ("not kept: …").
    tl::expected<void, FileError> keep(const StagedEvidence& staged);

    /// Keeps bytes; answers their SHA-256.
    tl::expected<std::string, FileError> keep(std::string_view bytes);

    /// The size of the file of that name; none where there is none. Its bytes are not looked at.
    std::optional<std::uintmax_t> sizeOf(std::string_view root) const;

    /// The bytes of that hash; fails where there are none that have it.
    tl::expected<std::string, FileError> read(std::string_view root,
                                              std::size_t maxBytes = std::size_t{16} << 20) const;

    /// Hashes the kept file again.
    Verification verify(std::string_view root) const;

    /// Where `root` is or would be.
    std::filesystem::path path(std::string_view root) const;

    /// Removes what an earlier process of this log left half done, where it is an hour old.
    void removeLeftovers() const;

private:
    FileMaking making() const;

    ProofFolders folders_;
    std::string prefix_; ///< ".<id8>-"
};

} // namespace kelvo
