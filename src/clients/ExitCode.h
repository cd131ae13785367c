#pragma once

#include "platform/bus/IntentClient.h"

namespace kelvo {

/// What both clients end with; docs/voice.md lists them for people.
enum ExitCode {
    exitDone = 0,
    exitFailed = 1,
    exitUsage = 2,
    exitUnreachable = 3,
    exitNotUnderstood = 4,
    exitBusy = 5
};

inline int exitCodeOf(CallFailure::Kind kind) {
    switch (kind) {
    case CallFailure::Kind::failed:
        return exitFailed;
    case CallFailure::Kind::badRequest:
        return exitUsage;
    case CallFailure::Kind::unreachable:
        return exitUnreachable;
    case CallFailure::Kind::notUnderstood:
    case CallFailure::Kind::questionNeeded:
        return exitNotUnderstood;
    case CallFailure::Kind::busy:
        return exitBusy;
    }
    return exitFailed;
}

} // namespace kelvo
