#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace kelvo {

/// A place in a seal log: how many whole lines are before it, and the SHA-256 of all their bytes.
struct LogPosition {
    std::int64_t lines = 0;
    std::string head = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

    bool operator==(const LogPosition&) const = default;
};

/// What a person approved: the sentence that the prompt showed, byte for byte, and when it was
/// asked and answered (ISO 8601). One presence check for several seals repeats all three.
struct Approval {
    std::string sentence;
    std::string asked;
    std::string answered;
};

/// The first line of a log, once.
struct BeginLine {
    std::string log; ///< UUID, version 4, capitals; its first 8 digits hold a letter
    std::string organisation;
    std::string computer;
};

/// Before the first decision or supplied file of a run of the program.
struct RunLine {
    std::int64_t run = 1;
    std::string account;
    std::string program;
    std::string graph; ///< SHA-256 of the readiness graph as this run read it, or ""
    std::string roles; ///< SHA-256 of the role map, or ""
};

/// One decision: sealed by this program ("seal"), or a record from before that a person took into
/// the log ("adopt").
struct DecisionLine {
    bool adopted = false;
    std::int64_t run = 1;
    std::string account;
    std::string file;    ///< name of the record file
    std::string record;  ///< SHA-256 of the record file's bytes
    std::string block;   ///< the totem's block hash
    std::string payload; ///< the sealed bytes
    Approval approval;
    std::string evidence; ///< "kept", "none", "not kept: " and why, "kept; draft " and a hash
};

/// Evidence whose bytes were found and kept later.
struct SupplyLine {
    std::int64_t run = 1;
    std::string account;
    std::string root; ///< SHA-256 of the file
    std::string name;
    Approval approval;
};

/// After an audit package was written.
struct PackageLine {
    std::string name;
    std::string tagmanifest; ///< SHA-256
};

using SealFact = std::variant<BeginLine, RunLine, DecisionLine, SupplyLine, PackageLine>;

/// One line of a seal log.
struct SealLine {
    std::int64_t seq = 0; ///< number of lines before it
    std::string prev;     ///< SHA-256 of all bytes before it
    std::string ts;       ///< ISO 8601
    SealFact fact;
};

/// The longest line that is read or written, in bytes with its line feed.
inline constexpr std::size_t longestSealLine = std::size_t{16} << 20;

/// The line's bytes with the line feed: compact JSON, keys sorted by bytes, "/" as "\/", other
/// characters raw. Texts that are not UTF-8 have each ill-formed sequence replaced by U+FFFD. None
/// when the payload is not UTF-8 or the line would be longer than `longestSealLine`.
std::optional<std::string> sealLineText(const SealLine& line);

/// A new log's id: a random UUID, drawn until its first 8 digits hold one of A, B, C, D, F, so that
/// no spreadsheet takes them for a number.
std::string newLogId();

/// True for an id that `newLogId` could have drawn.
bool isLogId(std::string_view text);

} // namespace kelvo
