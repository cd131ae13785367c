#pragma once

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

    explicit Presence(OwnerAuthentication& authentication) : authentication_(authentication) {}

    /// Blocks until the prompt with `reason` is answered.
    Result require(const std::string& reason);

private:
    OwnerAuthentication& authentication_;
};

} // namespace kelvo
