#pragma once

#include "base/Files.h"

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Where the proof lives. `outputs` holds the sealed records and may be shared between computers
/// together with the folder "proof" beside it; `project` belongs to one computer and account and is
/// never shared.
struct ProofFolders {
    std::filesystem::path outputs;
    std::filesystem::path project;

    std::filesystem::path proof() const;       ///< beside `outputs`
    std::filesystem::path vault() const;       ///< proof/vault
    std::filesystem::path checkpoints() const; ///< proof/checkpoints
    /// proof/seals-<first 8 of the log's id>.ndjson
    std::filesystem::path log(std::string_view logId) const;
};

/// Who may read and write what is made in the proof folder: the owner alone, or the group of
/// `outputs` too where that group may write there. Others never.
struct ProofRights {
    mode_t folder = 0700;
    mode_t file = 0600;
    mode_t kept = 0400; ///< files of the vault are for reading only
    std::optional<gid_t> group;
};

ProofRights proofRights(const ProofFolders& folders);

/// Makes the proof folder and its two subfolders where they are missing. The folder that holds
/// `outputs` is never made: without it this fails and nothing is made.
tl::expected<void, FileError> makeProofFolders(const ProofFolders& folders);

} // namespace kelvo
