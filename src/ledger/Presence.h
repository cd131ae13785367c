#pragma once

#include "ports/Clock.h"
#include "ports/OwnerAuthentication.h"

#include <string>

namespace kelvo {

/// The gate before every write to the chain: asks the account's owner to prove their presence.
class Presence {
public:
    struct Result {
        bool ok = false; ///< true only when the person authenticated
        /// "HIPR:<kind>:present", "HIPR:<kind>:DENIED" or "HIPR-UNAVAILABLE: <why>", where kind is
        /// "TouchID" (fingerprint), "FaceID" (face) or "ownerAuth" (anything else).
        std::string record;
    };

    /// What the person was last asked to approve, byte for byte, and when (ISO 8601).
    struct Asked {
        std::string sentence;
        std::string asked;
        std::string answered;
    };

    Presence(OwnerAuthentication& authentication, const Clock& clock)
        : authentication_(authentication), clock_(clock) {}

    /// Blocks until the prompt with `reason` is answered.
    Result require(const std::string& reason);

    /// The last check, whatever its result; the seals that follow it were approved by it.
    const Asked& last() const { return last_; }

private:
    OwnerAuthentication& authentication_;
    const Clock& clock_;
    Asked last_;
};

} // namespace kelvo
