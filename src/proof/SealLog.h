#pragma once

#include "base/Files.h"
#include "base/Sha256.h"
#include "proof/SealLine.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// The first line of a log that is not as it must be; nothing from there on proves anything.
struct LogDamage {
    std::int64_t line = 1; ///< counted from 1
    /// False: it is a line, but not the one that follows (`seq` or `prev` is another).
    bool unreadable = false;
    std::string what; ///< for a person who looks closer
};

/// What a log holds, up to its last line feed or its first fault.
///
/// Invariants: line k (from 0) has `seq` k and as `prev` the SHA-256 of all bytes before it; the
/// first line is of kind begin and the only one of it. Bytes after the last line feed are no line
/// and no fault: in another computer's log they are still arriving, in the own one a power cut tore
/// them.
struct SealLogReading {
    LogPosition end;              ///< of the good lines
    std::uintmax_t goodBytes = 0; ///< their length
    std::uintmax_t bytes = 0;     ///< all that was read
    std::optional<LogDamage> damage;

    bool tornEnd() const { return !damage && bytes > goodBytes; }
};

/// A line as the reader hands it out. Valid during the call only.
struct SealLineView {
    std::int64_t seq = 0;
    std::string_view ts;
    std::string_view text;    ///< its bytes with the line feed
    const Sha256Digest& head; ///< of all bytes up to and with this line
    SealFact& fact;           ///< may be moved from; a decision's payload is left out
    std::string_view payload; ///< of a decision
};

/// Reads seal logs line by line: memory is bounded by the longest line, whatever the file holds.
class SealLogReader {
public:
    SealLogReader();
    ~SealLogReader();
    SealLogReader(const SealLogReader&) = delete;
    SealLogReader& operator=(const SealLogReader&) = delete;

    /// Calls `each` for every good line in order. Fails only where the file cannot be read.
    tl::expected<SealLogReading, FileError>
    read(const std::filesystem::path& file, const std::function<void(const SealLineView&)>& each);

    /// The same of bytes at hand.
    SealLogReading readBytes(std::string_view bytes,
                             const std::function<void(const SealLineView&)>& each);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace kelvo
