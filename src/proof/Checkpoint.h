#pragma once

#include "base/Files.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// One log's part of a checkpoint: six lines of text that fix the log's first `lines` lines.
struct CheckpointBlock {
    std::string log; ///< the log's id
    std::int64_t lines = 0;
    std::string sha256; ///< of these lines with their line feeds
    std::string of;     ///< the organisation in the log's first line
    std::string at;     ///< ISO 8601

    bool operator==(const CheckpointBlock&) const = default;
};

/// A block for each log: the own one first, then by id.
struct Checkpoint {
    std::vector<CheckpointBlock> blocks;

    std::int64_t lines() const; ///< of all blocks
    const std::string& at() const;
    const CheckpointBlock* blockOf(std::string_view log) const;

    bool operator==(const Checkpoint&) const = default;
};

/// The blocks with an empty line between them, a line feed at the end of each line, nothing else.
std::string checkpointText(const Checkpoint& checkpoint);

/// Reads what somebody pasted: CR, "> " in front and blanks at line ends are dropped, blocks are
/// looked for one by one, and what stands between or after them is passed over. The error is a
/// sentence: the first line where there is no block at all ("This is not a checkpoint: its first
/// line is “…”."), or the line of a block that cannot be read.
tl::expected<Checkpoint, std::string> parseCheckpoint(std::string_view text);

/// "<lines of all blocks, 6 digits>-<first 12 of the SHA-256 of the file>.txt"
std::string checkpointFileName(const Checkpoint& checkpoint);

/// A checkpoint that was issued, by any computer.
struct StoredCheckpoint {
    std::string fileName;
    Checkpoint checkpoint;
};

/// The checkpoints in a folder, oldest first. Files that are none, or whose name is not theirs, are
/// passed over, and so is a folder that cannot be listed.
std::vector<StoredCheckpoint> storedCheckpoints(const std::filesystem::path& folder);

/// A message for the person's own mail program. Nothing is sent by us.
struct CheckpointMail {
    std::string subject; ///< "Kelvo seal log checkpoint, 23 lines"
    std::string body;    ///< the blocks; empty where the file is to be attached
    std::string url;     ///< "mailto:?subject=…&body=…", percent-encoded
    bool attach = false; ///< the text is too long for such an address
};

CheckpointMail checkpointMail(const Checkpoint& checkpoint);

/// A hash as it is printed: eight groups of eight digits.
std::vector<std::string> groupsOfEight(std::string_view hash);

} // namespace kelvo
