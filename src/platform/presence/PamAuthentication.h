#pragma once

#include "platform/presence/AttemptGuard.h"
#include "platform/presence/EnrolledFingers.h"
#include "platform/presence/PamStack.h"
#include "ports/OwnerAuthentication.h"

#include <memory>
#include <string>
#include <thread>

class QQmlEngine;

namespace kelvo {

/// Device-owner authentication by PAM: the account's own stack (password, fingerprint, security
/// key) is run on a worker thread, and a modal window of this program shows the caller's reason and
/// whatever the stack says and asks. Only the account that this process really runs as can be
/// proved. docs/presence.md says what is trusted.
///
/// For the thread of the window. Make it at start-up, before other threads: it takes variables out
/// of the environment with which a PAM module could be led to a service of somebody's making.
class PamAuthentication : public OwnerAuthentication {
public:
    /// The system's stack "kelvo-soc2" (or "other", where that service is not installed).
    PamAuthentication();
    /// Waits for a stack that still runs after its prompt was cancelled.
    ~PamAuthentication() override;
    PamAuthentication(const PamAuthentication&) = delete;
    PamAuthentication& operator=(const PamAuthentication&) = delete;

    std::optional<std::string> unavailableReason() override;
    bool evaluate(const std::string& reason) override;

    /// `fingerprint` when fprintd knows a finger of the account, otherwise `none`. Never `face`:
    /// face recognition on Linux can be fooled by a photograph.
    Biometry biometry() override;

protected:
    PamAuthentication(std::string user, std::unique_ptr<const PamStack> stack,
                      std::unique_ptr<const EnrolledFingers> fingers);

private:
    class Evaluation;

    std::string user_; ///< empty when the account is unknown to the system
    std::shared_ptr<const PamStack> stack_;
    std::unique_ptr<const EnrolledFingers> fingers_;
    std::unique_ptr<QQmlEngine> engine_;
    AttemptGuard guard_;
    std::thread worker_; ///< the latest conversation; its thread waits for the one before
    bool asking_ = false;
};

} // namespace kelvo
