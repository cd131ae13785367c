// What a card's button, the assistant or an intent has the engine do.

#include "engine/EngineVM.h"

namespace kelvo {

void EngineVM::runNow(const Turn& turn, const Act& act) {
    switch (act.kind) {
    case Act::Kind::closeGap:
        return closeGapNow(turn, act.criterion);
    case Act::Kind::generate:
        return generatePolicyNow(turn, act.criterion);
    case Act::Kind::play:
        return playNow(turn);
    case Act::Kind::pause:
        return pauseNow(turn);
    case Act::Kind::throttle:
        return throttleNow(turn);
    case Act::Kind::bond:
        return bondCollapseNow(turn);
    case Act::Kind::kyc:
        return verifyDefaultRole(turn);
    case Act::Kind::snapshot:
        return snapshotOSNow(turn);
    }
}

void EngineVM::verifyDefaultRole(const Turn& turn) {
    const auto names = offeredRoles();
    if (names.empty() && *roleMap && !availableRoles().empty())
        return status.set(whyNoRole() + ". The owner names people in the role map.");
    const std::string byDefault = names.empty() ? "Owner" : names.front();
    verifyKYCNow(turn, role->value_or(byDefault));
}

} // namespace kelvo
