#pragma once

#include "ports/Processes.h"

#include <string>
#include <vector>

namespace kelvo {

/// One security setting of this computer.
struct OSFact {
    std::string key;   ///< the setting's display name, unique within a snapshot
    std::string value; ///< its state in words; "unknown" where it cannot be read
    bool ok = false;   ///< the setting is in its secure state

    bool operator==(const OSFact&) const = default;
};

namespace OSSnapshot {

/// Reads the five settings, one command after the other, without changing any. Always five facts,
/// in a fixed order.
std::vector<OSFact> read(Processes& processes);

/// True for the three settings that protect a device at rest, without which no control can be
/// closed by device posture.
bool isRequired(const OSFact& fact);

} // namespace OSSnapshot
} // namespace kelvo
