#pragma once

#include "base/Files.h"
#include "ledger/TotemChain.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace kelvo {

/// The document of a sealed record: every member of the payload (none where it is no JSON object),
/// "sourceDb" and "title" where it lacks them, and the totem's own members, which replace any of
/// the payload's.
Json recordDocument(const Totem& totem, std::string_view payload, const std::string& asOf);

/// "<sourceDb>-<index>-<first 12 characters of the block hash>.totem.json"; "collapse" stands for a
/// sourceDb that is no text.
std::string recordFileName(const Json& document, const Totem& totem);

/// A record as it is, or is to be, on the disk.
struct SealedRecord {
    std::string file; ///< name in the outputs folder
    std::string bytes;

    bool operator==(const SealedRecord&) const = default;
};

/// What became of the writing of a record.
struct RecordWriting {
    /// "→ outputs (bouncer will seal)", "outputs: encode-failed" or "outputs: " and the write
    /// error.
    std::string outcome;
    /// None where the document has no JSON form; its file name is "" where it has no valid one.
    std::optional<SealedRecord> record{};
    std::optional<FileError> failure{}; ///< of the disk; writing the same again may succeed later
};

/// The names in `directory` that a record file has ("….totem.json"). Nothing is opened; a directory
/// that cannot be listed has none.
std::set<std::string> recordFileNames(const std::filesystem::path& directory);

/// Writes the record of `totem` into `directory`, atomically. The directory is not created; a
/// sourceDb that cannot be part of a file name is a write error.
RecordWriting writeRecordFile(const std::filesystem::path& directory, const Totem& totem,
                              std::string_view payload, const std::string& asOf);

} // namespace kelvo
