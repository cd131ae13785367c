#pragma once

#include "base/Json.h"

#include <string>

namespace kelvo {

/// What every sealed closing of a criterion states; an operation adds keys of its own.
struct ControlClosure {
    std::string criterion{};
    double gateBefore = 0;
    std::string owner{}; ///< who is verified, or "unverified"
    double readinessBefore = 0;
    double readinessAfter = 0;
    std::string attestedAt{};   ///< ISO 8601
    std::string presence{};     ///< the granted presence check's record
    std::string tip{};          ///< the chain's tip before the closing is appended
    std::string evidenceRoot{}; ///< SHA-256, 64 lowercase hex characters
    std::string evidenceName{};
};

/// The payload with "sourceDb" = "control" and "gate_after" = 1, by which a later start recognises
/// it and closes the criterion again.
Json controlPayload(const ControlClosure& closure);

} // namespace kelvo
