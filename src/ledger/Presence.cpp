#include "ledger/Presence.h"

namespace kelvo {
namespace {

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
    if (const auto why = authentication_.unavailableReason()) {
        return {false, "HIPR-UNAVAILABLE: " + (why->empty() ? "no policy" : *why)};
    }
    const bool ok = authentication_.evaluate(reason);
    const std::string kind = kindName(authentication_.biometry());
    return {ok, "HIPR:" + kind + (ok ? ":present" : ":DENIED")};
}

} // namespace kelvo
