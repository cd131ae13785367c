#pragma once

#include "base/Files.h"
#include "ledger/RecordFile.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kelvo {

/// Decisions that were sealed and whose record is not on the disk: kept in memory, written again
/// when asked, lost with the process unless one of the two ways out below succeeds.
class UnwrittenRecords {
public:
    struct Entry {
        SealedRecord record;
        std::string title;  ///< of the totem
        std::string since;  ///< ISO 8601
        std::string reason; ///< of the last failure, in words: "the disk is full"

        bool operator==(const Entry&) const = default;
    };

    explicit UnwrittenRecords(std::filesystem::path directory) : directory_(std::move(directory)) {}

    void add(SealedRecord record, std::string title, std::string since, const FileError& failure);

    /// Writes each again, oldest first. Answers those that are on the disk now.
    std::vector<SealedRecord> retry();

    /// Writes a copy of each into another folder, which must exist. They stay unwritten. The error
    /// is that of the first copy that could not be made.
    tl::expected<void, FileError> saveCopies(const std::filesystem::path& folder) const;

    /// Oldest first.
    const std::vector<Entry>& entries() const { return entries_; }

private:
    std::filesystem::path directory_;
    std::vector<Entry> entries_;
};

} // namespace kelvo
