#pragma once

#include "base/Files.h"
#include "proof/SealLine.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace kelvo {

/// Another computer's log as it was last read here.
struct SeenLog {
    LogPosition at;
    std::string computer;
    std::string organisation;

    bool operator==(const SeenLog&) const = default;
};

/// What this computer knows for itself, in the project folder, outside what people share.
///
/// Invariant: `before` and `after` are the own log's ends around its last append and were on the
/// disk before it; an own log whose end is neither was written by somebody else or set back.
struct ProofState {
    std::string log; ///< the own log's id
    LogPosition before;
    LogPosition after;
    std::map<std::string, SeenLog> seen;       ///< every other log, by id
    std::map<std::string, std::string> missed; ///< what is not there, and since when (ISO 8601)

    bool operator==(const ProofState&) const = default;
};

/// "proof-<first 8 of the SHA-256 of the machine id>.json": a home folder on a server serves
/// several computers.
std::string proofStateFileName(std::string_view machineId);

/// This computer's machine id (/etc/machine-id without its line end), or its host name where there
/// is none.
std::string machineId();

/// The computer's host name.
std::string hostName();

std::string proofStateText(const ProofState& state);

/// The error says which member is missing or wrong.
tl::expected<ProofState, std::string> parseProofState(std::string_view text);

} // namespace kelvo
