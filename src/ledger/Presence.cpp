#include "ledger/Presence.h"

#include "base/Time.h"

namespace kelvo {
namespace {

// Fixed texts, which are sealed, see docs/decisions.md.
const char* kindName(Biometry biometry) {
    switch (biometry) {
    case Biometry::fingerprint:
        return "TouchID";
    case Biometry::face:
        return "FaceID";
    case Biometry::none:
        break;
    }
    return "ownerAuth";
}

} // namespace

Presence::Result Presence::require(const std::string& reason) {
    const std::string asked = iso8601(clock_.now());
    last_ = {reason, asked, asked};
    if (const auto why = authentication_.unavailableReason()) {
        return {false, "HIPR-UNAVAILABLE: " + (why->empty() ? "no policy" : *why)};
    }
    const bool ok = authentication_.evaluate(reason);
    last_.answered = iso8601(clock_.now());
    const std::string kind = kindName(authentication_.biometry());
    return {ok, "HIPR:" + kind + (ok ? ":present" : ":DENIED")};
}

} // namespace kelvo
